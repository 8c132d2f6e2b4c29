;;; emacs_ispell.el --- Emacs corrects buffers through `lemara -a'  -*- lexical-binding: t; coding: utf-8 -*-

;; Run by tests/tools/emacs_test.py, with `lemara' on the path. The set-up is the one that
;; docs/command-line.md gives.

(require 'ert)
(require 'cl-lib)
(require 'ispell)
(require 'flyspell)

(setq ispell-program-name "lemara")
(setq ispell-local-dictionary-alist
      '(("eu" "[[:alpha:]]" "[^[:alpha:]]" "[-]" t ("-d" "eu") nil utf-8)))
(setq ispell-dictionary "eu")
(setq ispell-silently-savep t)

(defvar asked nil "The words that ispell asked about, the last one first.")

(defmacro with-first-choice (&rest body)
  "Run BODY, taking the first proposal where ispell would ask."
  `(let ((asked nil))
     (cl-letf (((symbol-function 'ispell-command-loop)
                (lambda (miss _guess word _start _end)
                  (push word asked)
                  (car miss))))
       ,@body)))

(defun corrected (text &rest where)
  "TEXT after a correction of all, or of the region WHERE, by the first proposals."
  (with-temp-buffer
    (insert text)
    (with-first-choice
     (if where (apply #'ispell-region where) (ispell-buffer))
     (list (buffer-string) (reverse asked)))))

(ert-deftest emacs-takes-it-for-an-ispell ()
  (should (string-match-p "International Ispell Version [0-9.]+" (ispell-check-version t)))
  (should-not (bound-and-true-p ispell-really-aspell))
  (should-not (bound-and-true-p ispell-really-hunspell))
  (should-not (bound-and-true-p ispell-really-enchant)))

(ert-deftest a-buffer-is-corrected ()
  (should (equal (corrected "Liburo on bat, eta etxxea.\nZuzen dago.\n")
                 '("Liburu on bat, eta etxea.\nZuzen dago.\n" ("Liburo" "etxxea")))))

(ert-deftest words-are-found-behind-anything ()
  ;; Positions count characters: quotes, letters beyond U+FFFF and other scripts in front.
  (should (equal (corrected "“Etxe haundi” 𝒳 日本 слово… «liburo» – etxxea\n\t^liburo *etxxea\n")
                 '("“Etxe handi” 𝒳 日本 слово… «liburu» – etxea\n\t^liburu *etxea\n"
                   ("haundi" "liburo" "etxxea" "liburo" "etxxea")))))

(ert-deftest lines-that-look-like-commands-are-text ()
  ;; A handle and a hashtag are no words; "%" and "&" are part of one, and then there is no
  ;; proposal.
  (should (equal (corrected "*liburo\n!liburo\n%liburo\n~liburo\n&liburo\n+liburo\n@liburo\n#liburo\n")
                 '("*liburu\n!liburu\n%liburo\n~liburu\n&liburo\n+liburu\n@liburo\n#liburo\n"
                   ("liburo" "liburo" "%liburo" "liburo" "&liburo" "liburo")))))

(ert-deftest a-region-leaves-the-rest-alone ()
  (should (equal (corrected "liburo liburo liburo\n" 8 15)
                 '("liburo liburu liburo\n" ("liburo")))))

(ert-deftest a-word-at-point ()
  (with-temp-buffer
    (insert "Ñabarra da, 𝒳 eta etxxea da.")
    (with-first-choice
     (search-backward "xxea")
     (ispell-word)
     (should (equal (buffer-string) "Ñabarra da, 𝒳 eta etxea da."))
     (search-backward "eta")
     (ispell-word)
     (should (equal asked '("etxxea"))))))

(ert-deftest words-are-added-and-kept ()
  (should (equal (cadr (corrected "gradxolari\n")) '("gradxolari")))
  (ispell-send-string "*gradxolari\n")
  (setq ispell-pdict-modified-p t)
  (ispell-pdict-save t t)
  (should (equal (corrected "gradxolari eta gradxolariak\n")
                 '("gradxolari eta gradxolariak\n" nil)))
  (ispell-kill-ispell t)
  (should (equal (cadr (corrected "gradxolariak\n")) nil)))

(ert-deftest words-are-accepted-for-the-session ()
  (ispell-send-string "@zzyyxx\n")
  (should (equal (cadr (corrected "zzyyxx\n")) nil))
  (ispell-kill-ispell t)
  (should (equal (cadr (corrected "zzyyxx\n")) '("zzyyxx"))))

(defun marked-by-flyspell (text)
  "The words of TEXT that flyspell marks."
  (with-temp-buffer
    (insert text)
    (let ((flyspell-issue-message-flag nil))
      (flyspell-buffer))
    (mapcar (lambda (overlay)
              (buffer-substring-no-properties (overlay-start overlay) (overlay-end overlay)))
            (sort (cl-remove-if-not #'flyspell-overlay-p
                                    (overlays-in (point-min) (point-max)))
                  (lambda (a b) (< (overlay-start a) (overlay-start b)))))))

(ert-deftest flyspell-marks-words ()
  (should (equal (marked-by-flyspell "Etxe haundi bat 𝒳 eta liburo bat.\n")
                 '("haundi" "liburo"))))

(ert-deftest flyspell-marks-words-of-large-buffers ()
  ;; Beyond `flyspell-large-region' characters Emacs asks for a list of words, `lemara -l'.
  (let ((text (concat (apply #'concat (make-list 100 "Etxe zaharra da, “bai”. ")) "liburo bat, haundi bat.\n")))
    (should (> (length text) flyspell-large-region))
    (should (equal (marked-by-flyspell text) '("liburo" "haundi")))))

;;; emacs_ispell.el ends here
