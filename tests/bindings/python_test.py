"""The Python package, over the small tables of the golden files (LEMARA_TABLES)."""

import os
import tempfile
import threading
import unittest

import lemara


class CheckerTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = os.path.join(self.folder.name, "hiztegia.txt")
        self.checker = lemara.Checker(dictionary=self.path)

    def test_checks_text(self):
        text = "\u201cbozo\u201d \U0001d4b3 etxeak,\namigoak"
        findings = self.checker.check(text)
        self.assertEqual(
            [(f.kind, f.token, f.forms) for f in findings],
            [("unknown", "bozo", ["pozo"]), ("better-form", "amigoak", ["lagunak"])],
        )
        for finding in findings:
            span = finding.span
            self.assertEqual(text[span.start : span.end], finding.token)
            self.assertEqual(
                text.encode()[span.start_byte : span.end_byte].decode(), finding.token
            )
            self.assertEqual(
                text.encode("utf-16-le")[2 * span.start_utf16 : 2 * span.end_utf16].decode(
                    "utf-16-le"
                ),
                finding.token,
            )
        self.assertEqual((findings[1].span.line, findings[1].span.column), (2, 1))

    def test_options(self):
        check = self.checker.check
        self.assertEqual(check("bozo", most_forms=0)[0].forms, [])
        self.assertEqual(check("bozo", accepted={"bozo"}), [])
        self.assertEqual(check("\u041c\u0438\u0440"), [])
        self.assertEqual(check("\u041c\u0438\u0440", report_foreign=True)[0].kind, "foreign")
        self.assertEqual(len(check("zer\nmoduz")), 2)
        self.assertEqual(check("zer\nmoduz", paragraphs="blank"), [])
        self.assertEqual(check("bozo", seconds=10, seconds_per_word=5)[0].complete, True)
        with self.assertRaises(ValueError):
            check("bozo", paragraphs="pages")

    def test_analyses_and_generates(self):
        tokens = self.checker.analyze("Etxeak bozo.")
        self.assertEqual([t.text for t in tokens], ["Etxeak", "bozo", "."])
        self.assertEqual([t.known for t in tokens], [True, False, True])
        self.assertEqual({r.lemma for r in tokens[0].readings}, {"etxe"})
        self.assertEqual({r.case_class for r in tokens[0].readings}, {1})
        self.assertIn("etxeak", [f.form for f in self.checker.generate("etxe", "IZE")])

    def test_hands_out_one_by_one(self):
        taken = []
        self.checker.check_each("bozo amigoak", taken.append)
        self.assertEqual([f.token for f in taken], ["bozo", "amigoak"])
        taken.clear()
        self.checker.check_each("bozo amigoak", lambda f: taken.append(f) or False)
        self.assertEqual(len(taken), 1)
        self.checker.analyze_each("Etxeak bozo.", lambda t: taken.append(t) or len(taken) < 3)
        self.assertEqual([t.text for t in taken[1:]], ["Etxeak", "bozo"])
        with self.assertRaises(ZeroDivisionError):
            self.checker.check_each("bozo", lambda finding: 1 // 0)

    def test_tells_all_of_a_token(self):
        token = self.checker.analyze("\U0001d4b3 \u201camigoak\u201d")[2]
        self.assertEqual((token.text, token.folded), ("amigoak", "amigoak"))
        self.assertEqual((token.span.column, token.span.column_utf16), (4, 5))
        self.assertEqual((token.readings[0].better, token.readings[0].source), ("lagun", ""))

    def test_renders(self):
        render = self.checker.render
        self.assertIn("etxe\\+Ize+Arr", render("Etxeak bozo."))
        self.assertIn("\"<EBUK>\"", render("Etxeak bozo.", "cg3"))
        self.assertIn("<frm>bozo</frm>", render("Etxeak bozo.", "ikute"))
        self.assertNotEqual(render("Etxeak bozo.", "zuzenlex"), render("Etxeak bozo.", "ikute"))
        self.assertIn('pzk="1"', render("bozo", "zuzenlex"))
        self.assertIn('pzk="7"', render("bozo", "zuzenlex", number=7))
        self.assertNotIn("pozo", render("bozo", "markup"))
        self.assertIn("<sugg>pozo</sugg>", render("bozo", "markup", True))
        with self.assertRaisesRegex(ValueError, "zuzenlex"):
            render("bozo", "pdf")

    def test_tells_what_is_in_use(self):
        tables = os.environ["LEMARA_TABLES"]
        self.assertEqual(self.checker.configuration, os.path.join(tables, "sareak.cfg"))
        self.assertEqual(self.checker.dictionary, self.path)
        self.assertIn("eumorfo.sare", [os.path.basename(path) for path in self.checker.tables])
        found, looked = lemara.find_configuration()
        self.assertEqual((found, looked), (self.checker.configuration, [found]))
        self.assertTrue(lemara.default_dictionary().endswith("lemara/hiztegia.txt"))

    def test_answers_about_words(self):
        self.assertTrue(self.checker.valid("etxe"))
        self.assertFalse(self.checker.valid("bozo"))
        self.assertEqual(self.checker.suggest("bozo"), ["pozo"])
        self.assertEqual(self.checker.lemmas("etxeak"), ["etxe"])

    def test_keeps_words(self):
        self.checker.add_word("zapaburu")
        self.assertTrue(self.checker.valid("Zapaburuak"))
        self.assertTrue(lemara.Checker(dictionary=self.path).valid("zapaburu"))
        self.assertEqual([(w.word, w.word_class) for w in self.checker.words()],
                         [("zapaburu", "ARR")])
        self.assertEqual(self.checker.export_words(), "1\nzapaburu\n")
        added, there, refused = self.checker.import_words("zapaburu\nzopo\nx\n")
        self.assertEqual((added, there, len(refused)), (1, 1, 1))
        self.assertTrue(refused[0].startswith("line 3: x: "))
        self.checker.add_word("zubi", "ARR", better="lagun")
        self.assertEqual([(w.better, w.instead) for w in self.checker.words()][-1],
                         ("lagun", ""))
        self.checker.remove_word("zapaburu")
        self.assertFalse(self.checker.valid("zapaburu"))
        with self.assertRaisesRegex(lemara.Error, "no such word"):
            self.checker.remove_word("zapaburu")

    def test_tells_what_is_wrong(self):
        with self.assertRaisesRegex(lemara.Error, "no/such.cfg: cannot open"):
            lemara.Checker(config="no/such.cfg")

    def test_serves_many_threads(self):
        text = "etxeak bozo amigoak " * 500
        counts = []

        def work():
            counts.append(len(self.checker.check(text)))

        threads = [threading.Thread(target=work) for _ in range(4)]
        for thread in threads:
            thread.start()
        self.checker.add_word("zapaburu")
        for thread in threads:
            thread.join()
        self.assertEqual(counts, [1000] * 4)

    def test_version_and_stubs(self):
        self.assertRegex(lemara.__version__, r"^\d+\.\d+\.\d+$")
        with open(os.path.join(os.path.dirname(lemara.__file__), "__init__.pyi")) as stubs:
            text = stubs.read()
        for name in (n for n in dir(lemara.Checker) if not n.startswith("_")):
            self.assertIn("def %s(" % name, text)


if __name__ == "__main__":
    unittest.main()
