#!/usr/bin/env python3
"""Corrects files with `lemara fix`: fix_test.py PATH-OF-LEMARA.

With questions on a terminal (a pseudo-terminal of this test) and without.
"""
import os
import stat

from command_line_test import path_records, word
from world import Terminal, World, main


class Fix(World):
    # haundi is to be written handi; zaldu is handi or gorri, as its readings go
    TABLE = path_records([
        word("etxe", "<IZE>", "<ARR>"), word("etxea", "<IZE>", "<ARR>", "<ABS>"),
        word("ñabar", "<ADJ>"), word("baso bat", "<IZE>"), word("handi", "<ADJ>"),
        list("haundi") + ["[h=handi]:<>", "<ADJ>:<>"], word("gorri", "<IZE>"),
        list("zaldu") + ["[h=handi]:<>", "<ADJ>:<>"],
        list("zaldu") + ["[h=gorri]:<>", "<IZE>:<>"],
        list("gexto") + ["[e=ñabar]:<>", "<ADJ>:<>"],
        list("baxo bat") + ["[h=baso bat]:<>", "<IZE>:<>"],
        word(".", "<PUNT>")])

    def setUp(self):
        super().setUp()
        self.write("eumorfo.sare", self.TABLE)

    # --- without questions ---

    def better(self, text, *arguments):
        return self.lemara_run("fix", "--yes-better", *arguments, "-", text=text)

    def test_the_table(self):
        kinds = self.lemara_run("check", "--format", "jsonl", text=b"haundi zaldu gexto").out
        self.assertEqual(kinds.count(b'"kind":"better-form"'), 2)
        self.assertEqual(kinds.count(b'"kind":"use-instead"'), 1)
        self.assertIn(b'"forms":["handi"]', kinds)
        self.assertIn(b'"forms":["handi","gorri"]', kinds)

    def test_sure_forms(self):
        for label, before, after, status, counts in [
            ("nothing", b"", b"", 0, None),
            ("all is right", b"etxe\n", b"etxe\n", 0, None),
            ("a better form", b"etxe haundi.\n", b"etxe handi.\n", 0, "1 corrected"),
            ("one to use instead", b"gexto", "ñabar".encode(), 0, "1 corrected"),
            ("two better forms", b"zaldu haundi", b"zaldu handi", 1, "1 corrected, 1 left"),
            ("an unknown word", b"etxxea", b"etxxea", 1, "0 corrected, 1 left"),
            ("case", b"Haundi HAUNDI", b"Handi HANDI", 0, "2 corrected"),
            ("a byte order mark", "\ufeffhaundi\r\n".encode(), "\ufeffhandi\r\n".encode(), 0,
             "1 corrected"),
            ("line ends", b"haundi\r\nhaundi\rhaundi\n\n", b"handi\r\nhandi\rhandi\n\n", 0,
             "3 corrected"),
            ("beyond the first plane", "𝒳 «haundi» слово".encode(), "𝒳 «handi» слово".encode(),
             0, "1 corrected"),
        ]:
            with self.subTest(label):
                err = f"lemara fix: standard input: {counts}\n" if counts else ""
                self.expect(self.better(before), status, after, err)

    def test_bytes_that_are_no_utf8_stay(self):
        result = self.better(b"\xff haundi \xc3\n\x80haundi")
        self.assertEqual(result.out.split()[1], b"handi")
        self.assertEqual(result.out.replace(b"handi", b"haundi"),
                         b"\xff haundi \xc3\n\x80haundi")
        self.assertIn("standard input: not UTF-8 at byte 1; such bytes stay as they are",
                      result.err)

    def test_latin_1(self):
        result = self.better("ñabar haundi gexto ñ\n".encode("latin-1"), "--encoding", "latin-1")
        self.assertEqual(result.out, "ñabar handi ñabar ñ\n".encode("latin-1"))

    def test_a_form_over_two_lines(self):
        result = self.better(b"baxo\r\nbat haundi\n", "--paragraphs", "blank")
        self.expect(result, 0, b"baso\r\nbat handi\n",
                    "lemara fix: standard input: 2 corrected\n")

    def test_files(self):
        self.write("a.txt", b"haundi\n")
        self.write("b.txt", b"zaldu\n")
        os.chmod(self.path("a.txt"), 0o640)
        os.makedirs(self.path("links"))
        os.symlink("../a.txt", self.path("links/a"))
        before = os.stat(self.path("b.txt"))
        self.expect(self.lemara_run("fix", "--yes-better", "links/a", "b.txt"), 1, b"",
                    "lemara fix: links/a: 1 corrected\nlemara fix: b.txt: 0 corrected, 1 left\n")
        self.assertEqual(self.read("a.txt"), b"handi\n")
        self.assertEqual(os.readlink(self.path("links/a")), "../a.txt")
        self.assertEqual(stat.S_IMODE(os.stat(self.path("a.txt")).st_mode), 0o640)
        after = os.stat(self.path("b.txt"))  # without a correction it isn't written
        self.assertEqual((before.st_ino, before.st_mtime_ns), (after.st_ino, after.st_mtime_ns))
        self.assertEqual(sorted(os.listdir(self.folder.name)),
                         ["a.txt", "b.txt", "eumorfo.sare", "hp.sare", "links", "sareak.cfg"])

    def test_a_diff(self):
        text = b"etxe\nhaundi etxe haundi\nzaldu\nhaundi"
        self.write("a.txt", text)
        result = self.lemara_run("fix", "--yes-better", "--dry-run", "a.txt")
        self.expect(result, 1, b"--- a.txt\n+++ a.txt\n"
                               b"@@ -2 +2 @@\n-haundi etxe haundi\n+handi etxe handi\n"
                               b"@@ -4 +4 @@\n-haundi\n\\ No newline at end of file\n"
                               b"+handi\n\\ No newline at end of file\n",
                    "lemara fix: a.txt: 3 corrected, 1 left\n")
        self.assertEqual(self.read("a.txt"), text)

    def test_what_cant_be_corrected(self):
        self.write("nul", b"a\0haundi")
        self.write("a.txt", b"haundi")
        os.mkfifo(self.path("pipe"))
        no = "lemara fix: "
        self.expect(self.lemara_run("fix", "--yes-better", "none", ".", "pipe", "nul", "a.txt"),
                    2, b"", no + "none: cannot open: No such file or directory\n" +
                    no + ".: is a directory\n" + no + "pipe: not a regular file\n" +
                    no + "nul: not a text: it holds NUL bytes\n" + no + "a.txt: 1 corrected\n")
        self.assertEqual(self.read("a.txt"), b"handi")

    def test_nobody_to_ask(self):
        self.write("a.txt", b"haundi")
        self.expect(self.lemara_run("fix", "a.txt"), 2, b"", "lemara fix: no terminal to ask "
                    "on; --yes-better corrects without questions\n")
        self.expect(self.lemara_run("fix", "-"), 2, b"", "lemara fix: standard input can't be "
                    "asked about; --yes-better corrects it\n")
        self.expect(self.lemara_run("fix"), 2, b"",
                    "lemara fix: FILE is required; see lemara fix --help\n")

    # --- on a terminal ---

    def fix(self, text, *arguments):
        self.write("a.txt", text)
        return Terminal(self, "fix", *arguments, "a.txt")

    def test_a_number(self):
        terminal = self.fix("Ñabar etxxea da.\n".encode(), "--most", "3")
        shown = terminal.answer("1")
        self.assertEqual(shown, "\na.txt:1:7: etxxea → etxea\n  Ñabar etxxea da.\n"
                                "        ^~~~~~\n  1  etxea\nnumber, r, a, A, d, s, q, x or ")
        terminal.answer("a")  # da is unknown here
        self.assertEqual(terminal.finish(), (0, "a\nlemara fix: a.txt: 1 corrected\n"))
        self.assertEqual(self.read("a.txt"), "Ñabar etxea da.\n".encode())

    def test_what_is_no_answer(self):
        terminal = self.fix(b"etxxea\n")
        for line in ("2", "0", "99999999999999999999", "-1", "?", "rr", "é"):
            terminal.answer(line)
            terminal.wait_for("NUMBER  take that form")
        terminal.answer("")
        terminal.answer("  1 ")
        self.assertEqual(terminal.finish()[0], 0)
        self.assertEqual(self.read("a.txt"), b"etxea\n")

    def test_a_typed_replacement(self):
        terminal = self.fix(b"zzzzzz zzzzzz etxxea\n")
        terminal.answer("r")
        terminal.answer("", "(empty: none): ")
        terminal.answer("r")
        terminal.answer("ñabar", "(empty: none): ")
        terminal.answer("r")
        terminal.answer("kkk", "(empty: none): ")
        terminal.answer("n", '"kkk" has findings, too; take it? (y/n): ')
        terminal.answer("r")
        terminal.answer("kkk", "(empty: none): ")
        terminal.answer("y", "(y/n): ")
        terminal.answer("1")
        self.assertEqual(terminal.finish()[0], 0)
        self.assertEqual(self.read("a.txt"), "ñabar kkk etxea\n".encode())

    def test_accepted_once_and_everywhere(self):
        self.write("b.txt", b"kkk Kkk zzz\n")
        self.write("a.txt", b"zzz zzz kkk kkk\n")
        terminal = Terminal(self, "fix", "a.txt", "b.txt")
        asked = []
        for answer in ("a", "a", "A", "a"):
            asked.append(terminal.answer(answer).split(": ")[1].split(" ")[0])
        self.assertEqual(asked, ["zzz", "zzz", "kkk", "zzz"])
        self.assertEqual(terminal.finish(), (0, "a\n"))

    def test_the_dictionary(self):
        terminal = self.fix(b"Bloga bloga blog etxxea\n")
        terminal.answer("d")
        terminal.answer("b", "its base form [Bloga]: ")
        terminal.wait_for("a word needs two letters")
        terminal.answer("d")
        terminal.answer("blog", "its base form [Bloga]: ")
        self.assertIn("etxxea", terminal.answer("a"))
        self.assertEqual(terminal.finish()[0], 0)
        self.assertEqual(self.read("data/lemara/hiztegia.txt"), b"blog\t<ARR>\t\t\tHP\n")

    def test_skip_stop_and_leave(self):
        for key, first, second, status in [
            ("s", b"etxea zzz\n", b"etxea\n", 1), ("q", b"etxea zzz\n", b"etxxea\n", 1),
            ("x", b"etxxea zzz\n", b"etxxea\n", 1), ("\x04", b"etxea zzz\n", b"etxxea\n", 1),
        ]:
            with self.subTest(key):
                self.write("b.txt", b"etxxea\n")
                self.write("a.txt", b"etxxea zzz\n")
                terminal = Terminal(self, "fix", "a.txt", "b.txt")
                terminal.answer("1")
                terminal.answer(key)
                if key == "s":
                    terminal.answer("1")
                self.assertEqual(terminal.finish()[0], status)
                self.assertEqual((self.read("a.txt"), self.read("b.txt")), (first, second))

    def test_an_interrupt_writes_nothing(self):
        terminal = self.fix(b"etxxea zzz\n")
        terminal.answer("1")
        terminal.wait_for("?: ")
        self.assertEqual(terminal.kill(), -2)
        self.assertEqual(self.read("a.txt"), b"etxxea zzz\n")

    def test_a_file_that_has_changed(self):
        for label, change in [
            ("written", lambda: self.write("a.txt", b"new!!!\n")),
            ("replaced", lambda: (self.write("b.txt", b"etxxea\n"),
                                  os.replace(self.path("b.txt"), self.path("a.txt")))),
            ("removed", lambda: os.unlink(self.path("a.txt"))),
        ]:
            with self.subTest(label):
                terminal = self.fix(b"etxxea\n")
                terminal.wait_for("?: ")
                change()
                now = self.read("a.txt") if label != "removed" else None
                os.write(terminal.side, b"1\n")
                status, said = terminal.finish()
                self.assertEqual(status, 2)
                self.assertIn("a.txt: has changed since it was read; nothing was written", said)
                self.assertEqual(self.read("a.txt") if now is not None else None, now)
                self.assertEqual([name for name in os.listdir(self.folder.name)
                                  if name.startswith("a.txt.")], [])

    def test_a_dry_run_with_questions(self):
        terminal = self.fix(b"etxxea\n", "--dry-run")
        terminal.answer("1")
        self.assertIn("--- a.txt\n+++ a.txt\n@@ -1 +1 @@\n-etxxea\n+etxea\n",
                      terminal.finish()[1])
        self.assertEqual(self.read("a.txt"), b"etxxea\n")


if __name__ == "__main__":
    main()
