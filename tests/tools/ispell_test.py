#!/usr/bin/env python3
"""Talks to `lemara -a` and the list modes as editors do: ispell_test.py PATH-OF-LEMARA."""
import os
import subprocess
import sys
import tempfile
import unittest

from command_line_test import path_records, word

LEMARA = ""
TABLE = path_records([word(w, "<IZE>") for w in ("etxe", "etxea", "ñabar", "mendi", "baso bat")] +
                     [word(".", "<PUNT>")])
HP = path_records([["<hp4>", "<MG>:<>"], ["<hp4>", "<ABS>:a"]])


class Ispell(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="lemara-ispell-")
        self.addCleanup(self.folder.cleanup)
        for name, data in (("eumorfo.sare", TABLE), ("hp.sare", HP),
                           ("sareak.cfg", b"eumorfo.sare\nhp.sare\n")):
            with open(os.path.join(self.folder.name, name), "wb") as file:
                file.write(data)

    def run_lemara(self, *arguments, text=b"", locale="C"):
        environment = {"XDG_DATA_HOME": self.folder.name, "LC_ALL": locale}
        return subprocess.run([LEMARA, *arguments, "--config", "sareak.cfg"], input=text,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60,
                              cwd=self.folder.name, env=environment)

    def talk(self, text, *options, locale="C", encoding="utf-8"):
        """The answer behind the banner."""
        result = self.run_lemara("-a", *options, text=text.encode(encoding), locale=locale)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        banner, answer = result.stdout.decode(encoding).split("\n", 1)
        self.assertRegex(banner, r"\A@\(#\) International Ispell Version \d+\.\d+\.\d+")
        self.assertNotIn("but really", banner)
        for line in answer.split("\n"):
            self.assertNotRegex(line, "^[A-Za-z\r]")
        return answer

    def test_banner(self):
        result = self.run_lemara("-vv")
        self.assertRegex(result.stdout.decode(), r"\A@\(#\) International Ispell Version [^\n]*\n\Z")
        self.assertEqual(result.returncode, 0)

    def test_conversations(self):
        for label, lines, answer in [
            ("good, proposals, none", "etxe etxxea zzzzzz\n",
             "*\n& etxxea 1 5: etxea\n# zzzzzz 12\n\n"),
            ("terse and back", "!\netxe etxxea\n%\netxe\n", "& etxxea 1 5: etxea\n\n*\n\n"),
            ("a caret counts", "^*etxxea\n^^etxxea\n",
             "& etxxea 1 2: etxea\n\n& etxxea 1 2: etxea\n\n"),
            ("accepted for the session", "zzzzzz\n@zzzzzz\nzzzzzz\n", "# zzzzzz 0\n\n*\n\n"),
            ("an empty line", "\n", "\n"),
            ("no word", "12 . ?\n", "\n"),
            ("no last line feed", "etxe", "*\n\n"),
            ("a line end of Windows", "etxe etxxea\r\n", "*\n& etxxea 1 5: etxea\n\n"),
            ("verbose", "`\netxe\n%\netxe\n", "* etxe\n\n*\n\n"),
            ("commands without an answer", "+tex\n-\n~utf8\n#\n$$ra a,b\n$$cs x,y\n$$pp\n", ""),
            ("word characters", "$$wc\n", "'-\n"),
            ("characters, not bytes or units", "ñabar 𝒳 etxxea 日本 etxxea\n",
             "*\n& etxxea 1 8: etxea\n& etxxea 1 18: etxea\n\n"),
            ("a combining mark is a character", "n\u0303abar etxxea\n",
             "*\n& etxxea 1 7: etxea\n\n"),
            ("addresses have no line", "http://zz.zz zz@zz.eus etxe\n", "*\n\n"),
            ("a NUL separates", "etxe\0etxxea\n", "*\n& etxxea 1 5: etxea\n\n"),
            ("a byte order mark is a character", "\ufeffetxxea\n", "& etxxea 1 1: etxea\n\n"),
            ("a slash is text", "/etxe\n", "*\n\n"),
            ("an underscore is text", "_etxxea\n", "& etxxea 1 1: etxea\n\n"),
            ("a proposal with a blank is one", "baso\n", "& baso 1 0: baso bat\n\n"),
            ("paths have no line", "/home/zz/etxxea.txt zz/zz.txt etxe\n", "*\n\n"),
            ("offsets behind other scripts", "日本 etxxea 𝒳 etxxea\n",
             "& etxxea 1 3: etxea\n& etxxea 1 12: etxea\n\n"),
            ("a caret counts for all words", "^etxxea zzzzzz\n",
             "& etxxea 1 1: etxea\n# zzzzzz 8\n\n"),
            ("what follows a mark is ignored", "!x\n%x\n`x\n+x\n-x\n~x\n#x\n%\netxe\n", "*\n\n"),
            ("settings of others are never fatal", "$$cr zz\n$$cs\n$$ps\n$$pp\n$$zz\n$$\n", ""),
            ("blanks alone", "  \t \n", "\n"),
            ("commands behind a caret are text", "^*zz\n^@zz\n^#zz\n^!zz\n^~zz\n^$$l\n^`zz\n^-zz\n",
             "# zz 2\n\n\n\n# zz 2\n\n# zz 2\n\n# $$l 1\n\n# zz 2\n\n# zz 2\n\n"),
            ("the vector", "etxe etxxea zzzzzz\n!\netxe etxxea\n%\netxe\n^*etxxea\n^^etxxea\n"
             "@zzzzzz\nzzzzzz\n\n",
             "*\n& etxxea 1 5: etxea\n# zzzzzz 12\n\n& etxxea 1 5: etxea\n\n*\n\n"
             "& etxxea 1 2: etxea\n\n& etxxea 1 2: etxea\n\n*\n\n\n"),
        ]:
            with self.subTest(label):
                self.assertEqual(self.talk(lines), answer)

    def test_the_language(self):
        result = self.run_lemara("-a", text=b"$$l\n")
        self.assertEqual(result.stdout.decode().split("\n", 1)[1], "eu\n")

    def test_bytes_that_are_not_utf_8(self):
        result = self.run_lemara("-a", text=b"etxe \xff\xfe etxxea\n")
        self.assertEqual(result.stdout.split(b"\n", 1)[1], b"*\n& etxxea 1 8: etxea\n\n")
        # Each byte is a character that separates, also two that begin like one character.
        result = self.run_lemara("-a", text=b"etxe\xffetxxea \xe2\x82 etxxea\n")
        self.assertEqual(result.stdout.split(b"\n", 1)[1],
                         b"*\n& etxxea 1 5: etxea\n& etxxea 1 15: etxea\n\n")

    def test_a_long_line_has_one_block(self):
        answer = self.talk("etxe " * 20000 + "etxxea\n")
        self.assertEqual(answer, "*\n" * 20000 + "& etxxea 1 100000: etxea\n\n")

    def test_words_that_are_added(self):
        self.assertEqual(self.talk("blog\n*blog\n&GETZ\nbloga getza\n#\n"),
                         "# blog 0\n\n*\n*\n\n")
        self.assertEqual(self.talk("bloga getza Getz\n"), "*\n*\n*\n\n")
        self.assertEqual(self.talk("bloga\n", "--no-dictionary"), "# bloga 0\n\n")

    def test_another_dictionary(self):
        self.assertEqual(self.talk("*blog\nbloga\n", "-p", "other.txt"), "*\n\n")
        self.assertTrue(os.path.exists(os.path.join(self.folder.name, "other.txt")))
        self.assertEqual(self.talk("bloga\n"), "# bloga 0\n\n")

    def test_latin_1(self):
        for options, locale in ((("-i", "iso-8859-1"), "C"), (("--encoding=latin1",), "C"),
                                ((), "eu_ES.ISO-8859-1")):
            self.assertEqual(self.talk("ñabar ñxxxxx\n", *options, locale=locale,
                                       encoding="latin-1"), "*\n# ñxxxxx 6\n\n")

    def test_options_of_emacs(self):
        self.assertEqual(self.talk("etxe\n", "-m", "-B", "-d", "eu", "-W", "3", "-T", "tex"),
                         "*\n\n")
        self.assertEqual(self.talk("etxe\n", "-C", "-S", "-t", "-n", "-H", "-w", "ab", "-W3",
                                   "--encoding=utf-8", "-i", "utf-8", "-p", "other.txt"), "*\n\n")

    def test_an_unknown_dictionary(self):
        result = self.run_lemara("-a", "-d", "en_US")
        self.assertEqual((result.returncode, result.stdout), (1, b""))
        self.assertEqual(result.stderr, b"lemara: no dictionary en_US; there is eu\n")

    def test_lists(self):
        text = "etxe zzz etxxea\nmendi.\nzzz\n".encode()
        for options, out in [(("-l",), b"zzz\netxxea\nzzz\n"), (("-G",), b"etxe\nmendi\n"),
                             (("-l", "-G"), b"etxe\nmendi\n"),
                             (("-L",), b"etxe zzz etxxea\nzzz\n")]:
            result = self.run_lemara(*options, text=text)
            self.assertEqual((result.stdout, result.returncode, result.stderr), (out, 0, b""))
        with open(os.path.join(self.folder.name, "a.txt"), "wb") as file:
            file.write(text)
        result = self.run_lemara("-l", "a.txt", "no.txt")
        self.assertEqual((result.stdout, result.returncode), (b"zzz\netxxea\nzzz\n", 2))
        self.assertEqual(result.stderr,
                         b"lemara: no.txt: cannot open: No such file or directory\n")

    def test_usage(self):
        for arguments in (("-x",), ("-m",), ("-a", "-d")):
            result = self.run_lemara(*arguments) if arguments[-1] != "-d" else subprocess.run(
                [LEMARA, *arguments], capture_output=True, check=False)
            self.assertEqual((result.returncode, result.stdout), (2, b""))
            self.assertIn(b"see lemara --help", result.stderr)


if __name__ == "__main__":
    LEMARA = os.path.abspath(sys.argv.pop(1))
    unittest.main()
