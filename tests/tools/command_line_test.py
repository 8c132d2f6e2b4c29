#!/usr/bin/env python3
"""Runs the command `lemara` as users do: command_line_test.py PATH-OF-LEMARA.

Every subcommand, exit status and message, over small tables that are written here. The tables
that come with the command play no part.
"""
import json
import os
import random
import re
import resource
import subprocess
import sys
import tempfile
import unittest

LEMARA = ""


def path_records(paths):
    """A table that accepts each path (a list of symbol fields) with states of its own."""
    records, state = [], 0
    for fields in paths:
        source = 0
        for field in fields:
            state += 1
            records.append(f"{source}\t{field}\t{state}")
            source = state
        records.append(f"final: {source}")
    return ("\n".join(records) + "\n").encode("latin-1")


def word(letters, *tags):
    return list(letters) + [tag + ":<>" for tag in tags]


EUMORFO = path_records([
    word("etxe", "<IZE>", "<ARR>"),
    word("etxea", "<IZE>", "<ARR>", "<ABS>"),
    word("ñabar", "<ADJ>"),
    word("eta gero", "<LOT>"),
    word("baso bat", "<IZE>"),
    # haundi is to be written handi
    list("haundi") + ["[h=handi]:<>", "<ADJ>:<>"],
    word("handi", "<ADJ>"),
    word(".", "<PUNT>"),
    word("*", "<PUNT>"),
    word("'", "<PUNT>"),
    word('"', "<PUNT>"),
])
# A word of class <hp4> (it ends in a consonant) takes nothing or -a.
HP = path_records([["<hp4>", "<MG>:<>"], ["<hp4>", "<ABS>:a"]])


class Result:
    def __init__(self, process):
        self.status = process.returncode
        self.out = process.stdout
        self.err = process.stderr.decode("utf-8", "backslashreplace")


class Folder(unittest.TestCase):
    """A folder with small tables. Has no tests of its own."""
    maxDiff = None

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="lemara-test-")
        self.addCleanup(self.folder.cleanup)
        self.write("eumorfo.sare", EUMORFO)
        self.write("hp.sare", HP)
        self.write("sareak.cfg", b"// two tables\neumorfo.sare\n\nhp.sare\n")

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def write(self, name, data):
        with open(self.path(name), "wb") as file:
            file.write(data)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()


class CommandLine(Folder):
    def run_bare(self, *arguments, text=b"", **options):
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("env", {"XDG_DATA_HOME": self.path("data"), "PATH": os.environ["PATH"]})
        return Result(subprocess.run([LEMARA, *arguments], input=text, stderr=subprocess.PIPE,
                                     cwd=self.folder.name, timeout=60, **options))

    def run_command(self, command, *arguments, text=b"", **options):
        return self.run_bare(command, "--config", "sareak.cfg", *arguments, text=text, **options)

    def expect(self, result, status, out, err=""):
        self.assertEqual((result.err, result.out.decode("utf-8", "backslashreplace"),
                          result.status), (err, out, status))

    # --- check ---

    TEXT = "Etxe haundia “etxxea”.\r\n\tzzzzzz 𝒳 n\u0303abar etxxea http://zz.zz слово\n"

    def test_findings_for_people(self):
        self.write("letter.txt", self.TEXT.encode())
        told = ("letter.txt:1:6: haundia (has a better form)\n"
                "letter.txt:1:15: etxxea → etxea\n"
                "letter.txt:2:2: zzzzzz (unknown)\n"
                "letter.txt:2:18: etxxea → etxea\n")
        table = path_records([
            word("etxe", "<IZE>"), word("etxea", "<IZE>"), word("ñabar", "<ADJ>"),
            list("haundia") + ["[h=handi]:<>", "<ADJ>:<>"], word(".", "<PUNT>"),
            word('"', "<PUNT>")])
        self.write("eumorfo.sare", table)
        self.expect(self.run_command("check", "letter.txt"), 1, told)

    def check_text(self, *arguments, **options):
        return self.run_command("check", *arguments, **options)

    def assert_places(self, text, record, token):
        bytes_, points, units = (slice(*record[name]) for name in
                                 ("bytes", "codePoints", "utf16"))
        self.assertEqual(text.encode()[bytes_].decode(), token)
        self.assertEqual(text[points], token)
        self.assertEqual(text.encode("utf-16-le")[2 * units.start:2 * units.stop]
                         .decode("utf-16-le"), token)

    def test_positions(self):
        self.write("letter.txt", self.TEXT.encode())
        result = self.check_text("--format", "jsonl", "letter.txt")
        for line in result.out.decode().splitlines():
            finding = json.loads(line)
            token = finding["token"]
            self.assert_places(self.TEXT, finding, token)
            row = self.TEXT.split("\n")[finding["line"] - 1]
            self.assertTrue(row[finding["column"] - 1:].startswith(token))
        self.assertEqual(result.status, 1)

    def test_a_right_text_is_quiet(self):
        for name in ("text", "jsonl", "github"):
            self.expect(self.check_text("--format", name, text="Ñabar etxea.\n".encode()), 0, "")
        self.expect(self.check_text(), 0, "")

    def test_a_right_text_as_a_document(self):
        for name in ("json", "sarif"):
            result = self.check_text("--format", name, text=b"etxe\n")
            self.assertEqual((result.status, result.err), (0, ""))
            document = json.loads(result.out)
            self.assertEqual(document.get("findings", []), [])

    def test_json(self):
        self.write("a.txt", b"etxe\netxxea")
        self.write("b.txt", b"etxxea")
        document = json.loads(self.check_text("--format", "json", "a.txt", "b.txt").out)
        self.assertEqual(document["findings"][0], {
            "file": "a.txt", "kind": "unknown", "token": "etxxea", "line": 2, "column": 1,
            "columnUtf16": 1, "bytes": [5, 11], "codePoints": [5, 11], "utf16": [5, 11], "forms": ["etxea"],
            "complete": True})
        self.assertEqual(document["findings"][1]["file"], "b.txt")
        self.assertEqual(document["findings"][1]["bytes"][0], 0)

    def test_sarif(self):
        self.write("a b.txt", b"etxe\n etxxea")
        document = json.loads(self.check_text("--format", "sarif", "a b.txt").out)
        self.assertEqual(document["version"], "2.1.0")
        run = document["runs"][0]
        result = run["results"][0]
        rules = [rule["id"] for rule in run["tool"]["driver"]["rules"]]
        self.assertIn(result["ruleId"], rules)
        location = result["locations"][0]["physicalLocation"]
        region = {"startLine": 2, "startColumn": 2, "endLine": 2, "endColumn": 8}
        self.assertEqual(location["artifactLocation"]["uri"], "a%20b.txt")
        self.assertEqual(location["region"], region)
        change = result["fixes"][0]["artifactChanges"][0]["replacements"][0]
        self.assertEqual(change, {"deletedRegion": region, "insertedContent": {"text": "etxea"}})

    def test_github(self):
        self.write("a,b:c%.txt", b"etxxea")
        self.expect(self.check_text("--format", "github", "a,b:c%.txt"), 1,
                    "::warning file=a%2Cb%3Ac%25.txt,line=1,col=1,endLine=1,endColumn=7,"
                    "title=Unknown word::etxxea → etxea\n")

    def test_a_record_for_each_line(self):
        result = self.check_text("--jsonl", text=b"etxxea\n\netxe\r\nzz etxxea")
        records = [json.loads(line) for line in result.out.decode().splitlines()]
        self.assertEqual([[(f["token"], f["bytes"][0]) for f in record["findings"]]
                          for record in records],
                         [[("etxxea", 0)], [], [], [("zz", 0), ("etxxea", 3)]])

    def test_no_proposals_and_few(self):
        self.expect(self.check_text("--no-suggest", text=b"etxxea"), 1,
                    "standard input:1:1: etxxea (unknown)\n")
        self.expect(self.check_text("--most", "0", text=b"etxxea"), 1,
                    "standard input:1:1: etxxea (unknown)\n")

    def test_fail_fast(self):
        self.expect(self.check_text("--fail-fast", text=b"etxe\nzzzzzz etxxea\nzz\n"), 1,
                    "standard input:2:1: zzzzzz (unknown)\n")

    def test_foreign_words(self):
        text = "etxe слово\n".encode()
        self.expect(self.check_text(text=text), 0, "")
        self.expect(self.check_text("--foreign", text=text), 1,
                    "standard input:1:6: слово (foreign)\n")

    def test_units_over_a_line_end(self):
        self.expect(self.check_text("--paragraphs", "blank", text=b"etxe\nbaso\nbat zz\n"), 1,
                    "standard input:3:5: zz (unknown)\n")
        result = self.check_text(text=b"baso\nbat\n")
        self.expect(result, 1, "standard input:1:1: baso → baso bat (only with other words)\n"
                               "standard input:2:1: bat (unknown)\n")

    def test_jobs_give_the_same_bytes(self):
        noise = random.Random(3)
        words = ["etxe", "etxxea", "zz", "ñabar", "haundi", "𝒳", "\ufeff", ".", "\r", "\r\n"]
        text = "".join(noise.choice(words) + noise.choice(" \n") for _ in range(200000)).encode()
        self.assertGreater(len(text), 3 * 2 ** 18)
        for format_ in ("text", "json"):
            one = self.check_text("--format", format_, "--no-suggest", text=text)
            three = self.check_text("--format", format_, "--no-suggest", "--jobs", "3", text=text)
            self.assertEqual(one.status, 1)
            self.assertEqual(one.out, three.out)
        # And chunks count on from each other: the same as Python counts in the whole text.
        whole = text.decode()
        findings = json.loads(one.out)["findings"]
        for finding in findings[::len(findings) // 20]:
            self.assert_places(whole, finding, finding["token"])
            begin = finding["codePoints"][0]
            before = whole[:begin]
            self.assertEqual(finding["line"], 1 + len(re.findall("\r\n|\r|\n", before)))
            self.assertEqual(finding["column"], begin + 1 -
                             max(m.end() for m in re.finditer("\r\n|\r|\n|^\ufeff|\\A", before)))

    def test_a_summary(self):
        result = self.check_text("--summary", text=b"etxe zz 12, etxxea.\n")
        self.assertRegex(result.err,
                         r"\Alemara check: 2 findings in 3 words of 1 file, \d+\.\d{3} s\n\Z")

    def test_the_line_below(self):
        text = "\tñabar “etxxea” \x1bñabar\n".encode()
        result = self.check_text("--color", "always", text=text)
        plain = re.sub("\x1b\\[[0-9;]*m", "", result.out.decode())
        self.assertEqual(plain, "standard input:1:9: etxxea → etxea\n"
                                "   ñabar “etxxea” \\x1Bñabar\n"
                                "          ^~~~~~\n")

    def test_files_that_cant_be_checked(self):
        self.write("a.txt", b"etxxea\n")
        self.write("nul.txt", b"etxxea\0\n")
        result = self.check_text("no.txt", "a.txt", ".", "nul.txt", "/dev/zero", "a.txt")
        self.expect(result, 2, "a.txt:1:1: etxxea → etxea\n" * 2,
                    "lemara check: no.txt: cannot open: No such file or directory\n"
                    "lemara check: .: is a directory\n"
                    "lemara check: nul.txt: not a text: a NUL byte at byte 7\n"
                    "lemara check: /dev/zero: not a text: a NUL byte at byte 1\n")

    def test_what_is_not_utf_8_is_passed_over(self):
        text = b"etxe\netxe \xff\xe2\x82 etxxea\nma\xf1a\n"
        result = self.check_text("--format", "json", text=text)
        self.assertEqual(result.err, "lemara check: standard input:2: not UTF-8 at byte 6; what "
                         "is no UTF-8 is passed over (--encoding latin-1?)\n")
        finding = json.loads(result.out)["findings"][0]
        self.assertEqual((finding["token"], finding["line"], finding["column"]),
                         ("etxxea", 2, 9))
        self.assertEqual([finding[name][0] for name in ("bytes", "codePoints", "utf16")],
                         [14, 13, 13])

    def test_findings_in_latin_1(self):
        result = self.check_text("--encoding", "latin-1", "--format", "jsonl",
                                 text="ñabar etxxeñ\n".encode("latin-1"))
        finding = json.loads(result.out)
        self.assertEqual((finding["token"], finding["bytes"]), ("etxxeñ", [6, 12]))

    def test_check_refuses_what_it_cant_use(self):
        self.write("c.cfg", b"eumorfo.sare\nxx.sare\n")
        result = self.run_bare("check", "--config", "c.cfg", text=b"etxe\n")
        self.assertEqual((result.status, result.out), (2, b""))
        self.assertIn("lemara check: c.cfg:2: no such table: xx.sare", result.err)
        self.refused(b"", "check", "--config", "sareak.cfg", "--dictionary", "x.hp",
                     err="lemara check: x.hp: cannot open: No such file or directory\n")

    # --- check --format zuzenlex ---

    def run_markup(self, *arguments, **options):
        return self.run_command("check", "--format", "zuzenlex", *arguments, **options)

    def markup(self, *tokens):
        lines = ["<p>", '<es ezk="1" pzk="0">']
        for number, (form, blank, verdict) in enumerate(tokens, 1):
            lines += [f'<tok h="{number}" z="{"32" if blank else "0"}">', f"\t<frm>{form}</frm>",
                      verdict, "</tok>"]
        return "\n".join(lines + ["</es>", "</p>", ""])

    OK = '\t<prop k="ok"/>'
    UNKNOWN = '\t<prop k="ezz"/>'
    EMPTY = '\t<prop k="ezz">\n\t</prop>'
    HANDI = "\t<prop>\n\t\t<hobe>handi</hobe>\n\t</prop>"

    def test_a_right_text(self):
        self.expect(self.run_markup( text="Ñabar etxea.\n".encode()), 0,
                    self.markup(("Ñabar", True, self.OK), ("etxea", False, self.OK),
                                (".", False, self.OK)))

    def test_an_unknown_word(self):
        self.expect(self.run_markup( "--no-suggest", text=b"etxe zzz\n"), 1,
                    self.markup(("etxe", True, self.OK), ("zzz", False, self.UNKNOWN)))
        self.expect(self.run_markup( "-", text=b"zzzzz"), 1,
                    self.markup(("zzzzz", False, self.EMPTY)))

    def test_a_better_form(self):
        self.expect(self.run_markup( text=b"haundi\n"), 1,
                    self.markup(("haundi", False, self.HANDI)))

    def test_proposals(self):
        result = self.run_markup( text=b"etxxea\n")
        self.assertEqual(result.status, 1)
        self.assertIn(b"\t\t<sugg>etxea</sugg>\n", result.out)

    def test_typographic_text(self):
        text = "\ufeff“etxea” ‘etxe’ n\u0303abar\u00a0etxe\u00ada\n"
        self.expect(self.run_markup( text=text.encode()), 0, self.markup(
            ('"', False, self.OK), ("etxea", False, self.OK), ('"', True, self.OK),
            ("'", False, self.OK), ("etxe", False, self.OK), ("'", True, self.OK),
            ("ñabar", True, self.OK), ("etxea", False, self.OK)))

    def test_angle_quotes_are_quotes(self):
        quote = ('"', False, self.OK)
        for encoding in ("utf-8", "latin-1"):
            result = self.run_markup("--encoding", encoding, text="«etxea»\n".encode(encoding))
            self.assertEqual(result.out.decode(), self.markup(quote, ("etxea", False, self.OK),
                                                              quote))

    def test_a_character_beyond_latin_1(self):
        self.expect(self.run_markup( text="etxe €\n".encode()), 0,
                    self.markup(("etxe", True, self.OK), ("*", False, self.OK)),
                    'lemara check: standard input:1: "€" is beyond what the tables can hold; '
                    'read as "*"\n')

    def test_text_that_is_not_utf_8(self):
        self.write("letter.txt", b"etxe\nma\xf1a\netxea\n")
        self.expect(self.run_markup("letter.txt"), 1,
                    "".join(self.markup((form, False, self.OK)) for form in ("etxe", "*", "etxea")),
                    "lemara check: letter.txt:2: not UTF-8 at byte 3; what is no UTF-8 is passed "
                    "over (--encoding latin-1?)\n"
                    'lemara check: letter.txt:2: "ma\\xF1a" is beyond what the tables can hold; '
                    'read as "*"\n')

    def test_latin_1(self):
        result = self.run_markup( "--encoding", "latin-1", text=b"\xf1abar\n")
        self.assertEqual(result.out,
                         self.markup(("ñabar", False, self.OK)).encode("latin-1"))
        self.assertEqual(result.status, 0)

    def test_paragraphs(self):
        text = b"\n etxe\r\netxea\n\n \nhandi"
        each = [self.markup((form, False, self.OK)) for form in ("etxe", "etxea", "handi")]
        self.expect(self.run_markup( text=text), 0, "".join(each))
        self.expect(self.run_markup( "--paragraphs", "blank", text=text), 0,
                    self.markup(("etxe", True, self.OK), ("etxea", False, self.OK)) + each[2])

    def test_several_files(self):
        self.write("a.txt", b"etxe")
        self.write("b.txt", b"etxea")
        self.expect(self.run_markup( "a.txt", "-", "b.txt", text=b"handi"), 0, "".join(
            self.markup((form, False, self.OK)) for form in ("etxe", "handi", "etxea")))

    def test_no_text(self):
        self.expect(self.run_markup(), 0, "")

    def test_a_dictionary(self):
        self.write("my.hp", "//\nblog\t<ARR>\t\t\tHP\n".encode("latin-1"))
        self.assertEqual(self.run_markup( text=b"bloga\n").status, 1)
        self.expect(self.run_markup( "--dictionary", "my.hp", text=b"blog Bloga\n"), 0,
                    self.markup(("blog", True, self.OK), ("Bloga", False, self.OK)))

    def test_a_mark_up_in_threads_or_to_the_first_finding(self):
        noise = random.Random(11)
        text = "".join(noise.choice(["etxe", "zz", "ñabar."]) + noise.choice(" \n")
                       for _ in range(20000)).encode()
        for command in ("check --format zuzenlex --no-suggest", "analyze"):
            name, *options = command.split()
            one = self.run_command(name, *options, text=text)
            three = self.run_command(name, *options, "--jobs", "3", text=text)
            self.assertGreater(len(one.out), 10 ** 6 // 4)
            self.assertEqual((one.out, one.status), (three.out, three.status))
        self.expect(self.run_markup("--fail-fast", "--no-suggest", text=b"etxe\nzz\netxe\n"), 1,
                    self.markup(("etxe", False, self.OK)) + self.markup(("zz", False, self.UNKNOWN)))
        for option in ("--jsonl", "--summary"):
            self.expect(self.run_markup(option, text=b"etxe"), 2, "",
                        f"lemara check: {option} does not go with --format zuzenlex\n")

    def test_on_a_terminal(self):
        """What is told on a terminal: the line and a mark below the word, in colour."""
        plain = "standard input:1:6: etxxea → etxea\r\n  etxe etxxea\r\n       ^~~~~~\r\n"
        for colours in (True, False):
            terminal, end = os.openpty()
            environment = {"XDG_DATA_HOME": self.path("data"), "TERM": "xterm",
                           **({} if colours else {"NO_COLOR": "1"})}
            result = self.run_command("check", text=b"etxe etxxea\n", stdout=end, env=environment)
            os.close(end)
            told = os.read(terminal, 4096).decode()
            os.close(terminal)
            self.assertEqual((result.status, result.err), (1, ""))
            self.assertEqual("\x1b[" in told, colours)
            self.assertEqual(re.sub("\x1b\\[[0-9;]*m", "", told), plain)

    def test_files_that_cant_be_marked_up(self):
        self.write("a.txt", b"etxe\n")
        self.expect(self.run_markup("no.txt", "a.txt"), 2, self.markup(("etxe", False, self.OK)),
                    "lemara check: no.txt: cannot open: No such file or directory\n")

    # --- analyze ---

    def test_multext(self):
        self.expect(self.run_command("analyze", text=b"etxea\n\nhaundi zz\n"), 0,
                    "{p=1 s=1 z=1}\tEOS\netxea\tBOS\t=\\+Ize+Arr+Abs\n\n\n"
                    "{p=2 s=1 z=2}\tEOS\nhaundi\tBOS\t=\\+Adj\nzz\tEOS\t=\\+Ezzg\n\n\n")
        self.expect(self.run_command("analyze", "--format", "multext", "--values",
                                     text=b"haundi\n"), 0,
                    "{p=1 s=1 z=1}\tEOS\nhaundi\tBOS\t=\\+Adj<h=handi>\n\n\n")

    def test_cg3(self):
        text = "Ñabar “etxea” слово\n\nzz haundi\n".encode()
        frame = '"<EBUK>"\n\t"EBUK" EBUK\n'
        self.expect(self.run_command("analyze", "--format", "cg3", text=text), 0,
                    "{p=1 s=1 z=2,3}\n" + frame +
                    '"<Ñabar>"\n\t"ñabar" <id=1> ADJ HAS_MAI\n'
                    '"<“>"\n\t""" <id=1> PUNT DEN_MAI\n'
                    '"<etxea>"\n\t"etxea" <id=1> IZE ARR ABS\n'
                    '"<”>"\n\t""" <id=1> PUNT DEN_MAI\n'
                    '"<слово>"\n\t"слово" EZZG <foreign>\n' + frame +
                    "{p=2 s=1}\n" + frame +
                    '"<zz>"\n\t"zz" EZZG\n"<haundi>"\n\t"haundi" <id=1> ADJ\n' + frame)
        out = self.run_command("analyze", "--format", "cg3", "--values", text=text).out
        self.assertIn(b'"haundi" <id=1> ADJ <h=handi>\n', out)

    def test_cg3_of_the_engine(self):
        self.expect(self.run_command("analyze", "--format", "cg3-lemara", text="ñabar\n".encode()),
                    0, '{p=1 s=1 z=1}\n"<EBUK>"\n\t"EBUK" EBUK\n<"ñabar">\n'
                    '\t"ñabar" <id=1> ADJ\n"<EBUK>"\n\t"EBUK" EBUK\n')

    def test_conllu(self):
        self.write("a b.txt", "\nÑabar eta\ngero.etxe\n".encode())
        self.write("c.txt", "“etxe”\n".encode())
        self.expect(self.run_command("analyze", "--format", "conllu", "--paragraphs", "blank",
                                     "a b.txt", "c.txt"), 0,
                    "# newdoc id = a b.txt\n# newpar\n# sent_id = 1\n# text = Ñabar eta gero.etxe\n"
                    "1\tÑabar\tñabar\tADJ\tADJ\t_\t_\t_\t_\tTokenRange=1:6\n"
                    "2\teta\t_\tX\t_\t_\t_\t_\t_\tTokenRange=7:10\n"
                    "3\tgero.etxe\t_\tX\t_\t_\t_\t_\t_\tTokenRange=11:20\n\n"
                    "# newdoc id = c.txt\n# newpar\n# sent_id = 2\n# text = “etxe”\n"
                    '1\t“\t"\tPUNCT\tPUNT\t_\t_\t_\t_\tTokenRange=0:1|SpaceAfter=No\n'
                    "2\tetxe\tetxe\tNOUN\tIZE+ARR\t_\t_\t_\t_\tTokenRange=1:5|SpaceAfter=No\n"
                    '3\t”\t"\tPUNCT\tPUNT\t_\t_\t_\t_\tTokenRange=5:6\n\n')

    def test_tokens_as_json(self):
        self.write("letter.txt", self.TEXT.encode())
        document = json.loads(self.run_command("analyze", "--format", "json", "letter.txt").out)
        lines = self.run_command("analyze", "--format", "jsonl", "letter.txt").out.decode()
        self.assertEqual(document["tokens"], [json.loads(line) for line in lines.splitlines()])
        tokens = document["tokens"]
        self.assertEqual([token["text"] for token in tokens],
                         ["Etxe", "haundia", "“", "etxxea", "”", ".", "zzzzzz", "𝒳", "n\u0303abar",
                          "etxxea", "http://zz.zz", "слово"])
        for token in tokens:
            self.assert_places(self.TEXT, token, token["text"])
        self.assertEqual([token["paragraph"] for token in tokens], [0] * 6 + [1] * 6)
        self.assertEqual(tokens[0]["readings"], [
            {"lemma": "etxe", "tags": ["IZE", "ARR"], "network": "eumorfo",
             "analysis": "etxe<IZE><ARR>"}])
        self.assertEqual(self.run_command("analyze", "--format", "json", text=b"").out,
                         b'{"version":"' + document["version"].encode() + b'","tokens":[\n\n]}\n')

    def test_a_record_of_tokens_for_each_line(self):
        result = self.run_command("analyze", "--jsonl", text="etxe zz\n\n\ufeffñabar".encode())
        records = [json.loads(line) for line in result.out.decode().splitlines()]
        self.assertEqual([[(token["text"], token["bytes"], token["line"])
                           for token in record["tokens"]] for record in records],
                         [[("etxe", [0, 4], 1), ("zz", [5, 7], 1)], [], [("ñabar", [3, 9], 1)]])

    def test_analysing_chunks_in_threads_gives_the_same_bytes(self):
        noise = random.Random(5)
        words = ["etxe", "ñabar", "zz", "haundi", "𝒳", "\ufeff", ".", "\r", "\r\n", "eta gero"]
        text = "".join(noise.choice(words) + noise.choice(" \n") for _ in range(30000)).encode()
        self.assertGreater(len(text), 4 * 2 ** 15)
        for format_ in ("cg3", "conllu", "jsonl"):
            one = self.run_command("analyze", "--format", format_, text=text)
            three = self.run_command("analyze", "--format", format_, "--jobs", "3", text=text)
            self.assertEqual((one.status, one.err), (0, ""))
            self.assertEqual(one.out, three.out)
        whole = text.decode()
        paragraph, before = -1, None
        for line in one.out.decode().splitlines():
            token = json.loads(line)
            self.assert_places(whole, token, token["text"])
            begin = token["codePoints"][0]
            number = 1 + len(re.findall("\r\n|\r|\n", whole[:begin])) if token["line"] % 50 == 0 \
                else token["line"]
            self.assertEqual(token["line"], number)
            paragraph += token["line"] != before
            self.assertEqual(token["paragraph"], paragraph)
            before = token["line"]

    def test_analysing_what_is_not_utf_8(self):
        result = self.run_command("analyze", "--format", "conllu", text=b"etxe \xff\n")
        self.assertEqual(result.status, 1)
        self.assertIn("\n2\t\ufffd\t_\tSYM\t", result.out.decode())
        self.assertIn("standard input:1: not UTF-8 at byte 6", result.err)

    def test_analysing_latin_1(self):
        text = "ñabar etxea\n".encode("latin-1")
        token = json.loads(self.run_command("analyze", "--encoding", "latin-1", "--format", "jsonl",
                                            text=text).out.splitlines()[1])
        self.assertEqual((token["text"], token["bytes"]), ("etxea", [6, 11]))
        self.assertIn("ñabar\tBOS".encode("latin-1"),
                      self.run_command("analyze", "--encoding", "latin-1", text=text).out)

    def test_files_that_cant_be_analysed(self):
        self.write("a.txt", b"etxe\n")
        for format_, start in (("multext", b"{p=1"), ("jsonl", b'{"file":"a.txt"')):
            result = self.run_command("analyze", "--format", format_, "no.txt", "a.txt")
            self.assertEqual((result.status, result.err),
                             (2, "lemara analyze: no.txt: cannot open: No such file or directory\n"))
            self.assertTrue(result.out.startswith(start))

    def test_ikute(self):
        self.expect(self.run_command("analyze", "--format", "ikute", text=b"zz\n"), 0,
                    '<es eid="1" pid="1" >\n\t<tok hid=">\n\t\t<frm>zz</frm>\n\t</tok>\n</es>\n')

    def test_zuzenlex(self):
        self.expect(self.run_command("analyze", "--format", "zuzenlex", text=b"haundi\n"), 0,
                    '<p>\n<es ezk="1" pzk="1">\n<tok h="1 z="0><frm>haundi</frm>\n<prop>\n'
                    "<hobe>handi</hobe><hizt>eumorfo</hizt></prop>\n</tok>\n</es>\n</p>\n")

    def test_the_engines_own_lines_stay_out(self):
        # An unknown "]" makes the engine speak, and so does its end.
        self.expect(self.run_command("analyze", text=b"etxe ] etxe\n"), 0,
                    "{p=1 s=1 z=3}\tEOS\netxe\tBOS\t=\\+Ize+Arr\n]\t\t\n"
                    "etxe\tEOS\t=\\+Ize+Arr\n\n\n")

    # --- words ---

    def test_valid(self):
        self.expect(self.run_command("valid", "etxea", "Ñabar", "zz"), 1,
                    "etxea\tvalid\nÑabar\tvalid\nzz\tunknown\n")
        self.expect(self.run_command("valid", text="etxe\n\nñabar\n".encode()), 0,
                    "etxe\tvalid\nñabar\tvalid\n")
        self.expect(self.run_command("valid", "-", text=b"handi"), 0, "handi\tvalid\n")
        self.expect(self.run_command("valid", "baso"), 1, "baso\tunknown\n")
        self.expect(self.run_command("valid", "--deep", "baso"), 0, "baso\tvalid\n")

    def test_a_word_that_is_not_utf_8(self):
        self.expect(self.run_command("valid", text=b"etxe\n\xf1\n"), 1, "etxe\tvalid\n",
                    "lemara valid: standard input:2: not UTF-8 at byte 1; word passed over\n")

    def test_suggest(self):
        self.expect(self.run_command("suggest", "etxxea"), 0, "etxxea\tetxea\n")
        self.expect(self.run_command("suggest", "zzzzzz"), 1, "zzzzzz\n")

    def test_generate(self):
        self.expect(self.run_command("generate", "etxe", "IZE"), 0,
                    "etxe\tetxe<IZE><ARR>\n")
        self.expect(self.run_command("generate", "etxe", "<IZE>"), 0,
                    "etxe\tetxe<IZE><ARR>\n")
        self.expect(self.run_command("generate", "etxe", "ADI"), 1, "")
        self.expect(self.run_command("generate", "-", "ADJ", text=b"handi\n"), 0,
                    "handi\thandi<ADJ>\n")

    def test_generate_of_several_words(self):
        self.expect(self.run_command("generate", "etxe", "etxea", "IZE"), 0,
                    "etxe\tetxe<IZE><ARR>\netxea\tetxea<IZE><ARR><ABS>\n")

    # A blank line, a word in Latin-1, and one that the tables can't hold.
    LINES = "etxea\n\nzz\nma\u00f1a\nслово\n".encode().replace("\u00f1".encode(), b"\xf1") + \
            "‘etxe’\r\nn\u0303abar".encode()

    def records(self, command, *arguments, text, status):
        result = self.run_command(command, "--jsonl", *arguments, text=text)
        self.assertEqual(result.status, status)
        return [json.loads(line) for line in result.out.decode().splitlines()]

    def test_words_as_records(self):
        no_word = {"word": "", "error": "no word"}
        no_text = {"word": "ma\ufffda", "error": "not UTF-8 at byte 3"}
        self.assertEqual(self.records("valid", text=self.LINES, status=1), [
            {"word": "etxea", "valid": True}, no_word, {"word": "zz", "valid": False}, no_text,
            {"word": "слово", "valid": True, "foreign": True}, {"word": "‘etxe’", "valid": False},
            {"word": "n\u0303abar", "valid": True}])
        self.assertEqual(self.records("suggest", text="etxxea\n\nслово\n".encode(), status=1), [
            {"word": "etxxea", "forms": ["etxea"]}, no_word, {"word": "слово", "forms": []}])
        self.assertEqual(self.records("generate", "-", "ADJ", text="ñabar\nzz\n".encode(), status=1),
                         [{"word": "ñabar", "forms": [{"form": "ñabar", "analysis": "ñabar<ADJ>"}]},
                          {"word": "zz", "forms": []}])
        self.assertEqual(self.records("lookup", text=b"etx\nqq\n", status=1), [
            {"word": "etx", "entries": [{"form": "etxe", "analysis": "etxe<IZE>"},
                                        {"form": "etxea", "analysis": "etxea<IZE>"}]},
            {"word": "qq", "entries": []}])

    def test_words_as_a_document(self):
        result = self.run_command("valid", "--json", "etxea", "zz")
        self.assertEqual((result.status, result.err), (1, ""))
        self.assertEqual(json.loads(result.out)["words"], [
            {"word": "etxea", "valid": True}, {"word": "zz", "valid": False}])
        self.assertEqual(json.loads(self.run_command("suggest", "--json").out)["words"], [])

    def test_no_word_depends_on_another(self):
        lines = self.LINES.split(b"\n")
        for command, arguments in (("valid", ()), ("suggest", ()), ("lookup", ()),
                                   ("generate", ("-", "IZE"))):
            whole = self.run_command(command, "--jsonl", *arguments, text=self.LINES).out
            each = [self.run_command(command, "--jsonl", *arguments, text=line + b"\n").out
                    for line in lines]
            self.assertEqual(whole, b"".join(each))

    def test_status_zero_on_request(self):
        for command, arguments in (("valid", ("zz",)), ("suggest", ("zzzzzz",)), ("lookup", ("q",)),
                                   ("generate", ("zz", "ADI"))):
            self.assertEqual(self.run_command(command, *arguments).status, 1)
            self.assertEqual(self.run_command(command, "--exit-zero", *arguments).status, 0)

    def test_words_in_latin_1(self):
        text = "ñabar\nzñ\n".encode("latin-1")
        self.assertEqual(self.run_command("valid", "--encoding", "latin-1", text=text).out,
                         "ñabar\tvalid\nzñ\tunknown\n".encode("latin-1"))
        result = self.run_command("valid", "--encoding", "latin-1", "--jsonl", text=text)
        self.assertEqual(json.loads(result.out.splitlines()[1]), {"word": "zñ", "valid": False})

    def test_generate_an_unknown_word(self):
        self.expect(self.run_command("generate", "blog", "ARR"), 0,
                    "blog\tblog<IZE><ARR><hp4><MG>\nbloga\tblog<IZE><ARR><hp4><ABS>\n")

    def test_lookup(self):
        self.expect(self.run_command("lookup", "etx"), 0,
                    "etxe\tetxe<IZE>\netxea\tetxea<IZE>\n")
        self.expect(self.run_command("lookup", "baso "), 0, "baso bat\tbaso bat<IZE>\n")
        self.expect(self.run_command("lookup", "q"), 1, "")

    # --- dict ---

    def dict(self, *arguments, **options):
        return self.run_bare("dict", arguments[0], "--config", "sareak.cfg", *arguments[1:],
                             **options)

    def test_words_are_kept(self):
        self.expect(self.dict("list"), 0, "")
        self.expect(self.dict("add", "blog", "ñog"), 0, "")
        self.expect(self.dict("list"), 0, "blog\tARR\nñog\tARR\n")
        self.expect(self.run_command("check", text=b"bloga\n"), 0, "")
        self.expect(self.run_command("check", "--no-dictionary", "--no-suggest", text=b"bloga\n"),
                    1, "standard input:1:1: bloga (unknown)\n")
        self.expect(self.dict("add", "--class", "ARR", "--better", "etxe", "etsog"), 0, "")
        self.expect(self.dict("remove", "blog"), 0, "")
        self.expect(self.dict("list"), 0, "ñog\tARR\netsog\tARR\tbetter: etxe\n")
        result = self.dict("remove", "blog")
        self.assertEqual((result.status, result.out), (1, b""))
        self.assertIn("lemara dict remove: ", result.err)

    def test_words_that_are_refused(self):
        for entry in ("b", "слово", ""):
            result = self.dict("add", "--dictionary", "new.txt", entry)
            self.assertEqual((result.status, result.out), (1, b""), entry)
            self.assertIn("lemara dict add: ", result.err)
        result = self.dict("add", "--class", "XYZ", "blog")
        self.assertEqual(result.status, 1)

    def test_another_dictionary(self):
        self.expect(self.dict("add", "--dictionary", "my.hp", "blog"), 0, "")
        self.assertTrue(self.read("my.hp").startswith(b"blog\t<ARR>"))
        self.expect(self.run_command("check", "--dictionary", "my.hp", text=b"bloga"), 0, "")
        self.expect(self.run_command("valid", "--dictionary", "my.hp", "bloga"), 0,
                    "bloga\tvalid\n")

    def test_lists_in_and_out(self):
        result = self.dict("import", "-", text="3\nblog/A\nñog\nслово\n".encode())
        self.assertEqual((result.status, result.out), (1, b""))
        self.assertIn("lemara dict import: 2 added, 0 were there, 1 refused\n", result.err)
        self.expect(self.dict("export"), 0, "2\nblog\nñog\n")
        self.expect(self.dict("export", "words.txt"), 0, "")
        result = self.dict("import", "words.txt")
        self.expect(result, 0, "", "lemara dict import: 0 added, 2 were there, 0 refused\n")

    # --- doctor ---

    def test_doctor(self):
        result = self.run_command("doctor")
        self.assertEqual((result.status, result.err), (0, ""))
        out = result.out.decode()
        self.assertIn("\nconfiguration   sareak.cfg\n", out)
        self.assertIn(f"eumorfo.sare (text, {len(EUMORFO)} bytes)\n", out)
        self.assertIn("hiztegia.txt (not made yet)\n", out)
        self.write("eumorfo.sare", path_records([word("zzz", "<IZE>")]))
        self.assertEqual(self.run_command("doctor").status, 1)
        self.write("eumorfo.sare", b"")
        result = self.run_command("doctor")
        self.assertEqual(result.status, 2)
        self.assertIn("eumorfo.sare", result.err)

    # --- coverage ---

    def coverage(self, *rows):
        head = f"{'':26}{'tokens':>10}{'known':>10}{'share':>10}{'types':>10}{'known':>10}" \
               f"{'share':>10}\n"
        names = ("words", "  beginning in lower case", "  capitalised", "  all capitals",
                 "  with digits", "numbers", "punctuation")
        return head + "".join(f"{name:26}" + "".join(f"{cell:>10}" for cell in row) + "\n"
                              for name, row in zip(names, rows))

    def test_coverage(self):
        none = (0, 0, "-", 0, 0, "-")
        text = "etxe etxe baso bat zz Zz ZZ zz z3 12, etxe.\n\nÑabar .\n".encode()
        # "baso bat" is one token; and no table here knows numbers.
        known = self.coverage((10, 5, "50.00 %", 7, 3, "42.86 %"),
                              (6, 4, "66.67 %", 3, 2, "66.67 %"),
                              (2, 1, "50.00 %", 2, 1, "50.00 %"),
                              (1, 0, "0.00 %", 1, 0, "0.00 %"),
                              (1, 0, "0.00 %", 1, 0, "0.00 %"),
                              (1, 0, "0.00 %", 1, 0, "0.00 %"),
                              (3, 2, "66.67 %", 2, 1, "50.00 %"))
        self.write("a.txt", text)
        result = self.run_command("coverage", "a.txt")
        self.expect(result, 0, known + "\n2\tzz\n1\t,\n1\t12\n1\tZZ\n1\tZz\n1\tz3\n")
        self.expect(self.run_command("coverage", "--top", "1", "-", text=text), 0,
                    known + "\n2\tzz\n")
        self.expect(self.run_command("coverage", "--top", "0", "-", text=text), 0, known)
        self.expect(self.run_command("coverage"), 0, self.coverage(*[none] * 7))

    def test_words_in_angle_quotes_are_covered(self):
        for encoding in ("utf-8", "latin-1"):
            result = self.run_command("coverage", "--encoding", encoding,
                                      text="«etxea» `etxe´\n".encode(encoding))
            self.assertRegex(result.out.decode().split("\n")[1],
                             r"^words +2 +2 +100.00 % +2 +2 +100.00 %$")

    def test_coverage_of_lines_that_cant_be_read(self):
        result = self.run_command("coverage", text="etxe\n".encode() + b"\xff\n\xff\n")
        self.assertEqual(result.status, 1)
        self.assertEqual(result.err, "lemara coverage: standard input:2: not UTF-8 at byte 1; "
                         "line passed on unchecked\nlemara coverage: 1 more of the kind\n")
        self.assertIn(f"{'words':26}{1:10}{1:10}", result.out.decode())

    # --- files that can't be used ---

    def refused(self, text, *arguments, err, **options):
        self.expect(self.run_bare(*arguments, text=text, **options), 2, "", err)

    def test_configurations(self):
        name = "lemara analyze: "
        for label, lines, err in [
            ("a missing table", b"eumorfo.sare\n//\n\nzenbakiak.sare\n",
             "c.cfg:4: no such table: zenbakiak.sare (looked for in the working folder)"),
            ("a folder", b"eumorfo.sare\n.\n", None),
            ("a folder as a table", b"eumorfo.sare\nfolder.sare\n", "c.cfg:2: folder.sare: is a directory"),
            ("a device as a table", b"/dev/zero\n", None),
            ("an indented path is a comment", b" eumorfo.sare\n",
             'c.cfg: no network "eumorfo"; list a table with that file name'),
            ("nothing", b"", 'c.cfg: no network "eumorfo"; list a table with that file name'),
            ("no main network", b"hp.sare\n",
             'c.cfg: no network "eumorfo"; list a table with that file name'),
            ("a blank behind the path", b"eumorfo.sare \n",
             "c.cfg:1: no such table: eumorfo.sare  (looked for in the working folder)"),
            ("a short name", b"eumorfo.sare\na.sare\n",
             "c.cfg:2: the name of a table needs two characters before its first dot: a.sare"),
            ("text that is no table", b"eumorfo.sare\nword.sare\n",
             "c.cfg:2: word.sare: is no table; see lemara table check"),
            ("an empty table", b"eumorfo.sare\nempty.sare\n",
             "c.cfg:2: empty.sare: is no table; see lemara table check"),
            ("eleven tables", b"eumorfo.sare\n" * 11,
             "c.cfg:11: too many tables; at most 10 are loaded"),
            ("binary", b"eumorfo.sare\n\0\n", "c.cfg: not a text file: it holds NUL bytes"),
        ]:
            with self.subTest(label):
                os.makedirs(self.path("folder.sare"), exist_ok=True)
                self.write("word.sare", b"hello\n")
                self.write("empty.sare", b"")
                self.write("a.sare", EUMORFO)
                self.write("c.cfg", lines)
                result = self.run_bare("analyze", "--config", "c.cfg", text=b"etxe\n")
                self.assertEqual((result.out, result.status), (b"", 2))
                if err is not None:
                    self.assertEqual(result.err, name + err + "\n")

    def test_configurations_that_work(self):
        for label, lines in [
            ("ten tables and comments", b"eumorfo.sare\n" * 10 + b"// end\n"),
            ("line ends of Windows", b"eumorfo.sare\r\nhp.sare\r\n"),
            ("no line feed at the end", b"eumorfo.sare"),
            ("an absolute path", self.path("eumorfo.sare").encode() + b"\n"),
        ]:
            with self.subTest(label):
                self.write("c.cfg", lines)
                self.expect(self.run_bare("valid", "--config", "c.cfg", "etxe"), 0,
                            "etxe\tvalid\n")

    def test_endless_files(self):
        self.write("c.cfg", b"eumorfo.sare\n//\n/dev/urandom\n")
        self.refused(b"", "analyze", "--config", "c.cfg",
                     err="lemara analyze: c.cfg:3: /dev/urandom: not a regular file\n")
        self.refused(b"", "analyze", "--config", "/dev/urandom",
                     err="lemara analyze: /dev/urandom: not a regular file\n")
        self.refused(b"", "analyze", "--config", "sareak.cfg", "--dictionary", "/dev/zero",
                     err="lemara analyze: /dev/zero: not a regular file\n")

    def test_any_bytes_as_text(self):
        noise = random.Random(7)
        for encoding in ("utf-8", "latin-1"):
            text = bytes(noise.randrange(1, 256) for _ in range(20000))
            result = self.run_markup("--no-suggest", "--encoding", encoding, text=text)
            self.assertEqual(result.status, 1)
        self.assertEqual(self.run_markup(text=b"etxe " * 20000).status, 0)

    def test_missing_files(self):
        no_file = ": cannot open: No such file or directory\n"
        self.refused(b"", "analyze", "--config", "x.cfg", err="lemara analyze: x.cfg" + no_file)
        self.refused(b"", "analyze", "--config", ".", err="lemara analyze: .: is a directory\n")
        self.refused(b"", "analyze", "--config", "sareak.cfg", "x.txt",
                     err="lemara analyze: x.txt" + no_file)
        self.refused(b"", "analyze", "--config", "sareak.cfg", ".",
                     err="lemara analyze: .: is a directory\n")
        self.refused(b"", "valid", "--config", "sareak.cfg", "--dictionary", "x.hp", "etxe",
                     err="lemara valid: x.hp" + no_file)

    def test_a_table_that_cant_be_read(self):
        self.write("c.cfg", b"eumorfo.sare\n/proc/self/mem\n")
        self.refused(b"", "analyze", "--config", "c.cfg", err=(
            "lemara analyze: c.cfg:2: /proc/self/mem: cannot read: Input/output error\n"))

    def test_dictionaries(self):
        self.write("my.hp", "blog\t<ARR>\n//\nñiko\t<ARR>\n".encode())
        self.expect(self.run_command("valid", "--dictionary", "my.hp", "ñiko", "bloga"), 1,
                    "ñiko\tunknown\nbloga\tvalid\n")
        self.write("my.hp", b"a\0b\t<ARR>\n")
        self.expect(self.run_command("valid", "--dictionary", "my.hp", "etxe"), 0,
                    "etxe\tvalid\n",
                    "lemara valid: my.hp: not a text file: it holds NUL bytes\n")

    def test_dictionary_lines_that_are_passed_over(self):
        self.write("my.hp", b"blog\nblog\t<ARR\nblog\t<ARR>\r\nb\t<ARR>\n")
        self.expect(self.run_command("valid", "--dictionary", "my.hp", "bloga"), 0,
                    "bloga\tvalid\n",
                    "lemara valid: my.hp:1: no word class; line passed over\n"
                    "lemara valid: my.hp:2: no word class; line passed over\n"
                    "lemara valid: my.hp:4: a word needs two letters; line passed over\n")

    def test_a_dictionary_without_hp(self):
        self.write("c.cfg", b"eumorfo.sare\n")
        self.write("my.hp", b"blog\t<ARR>\n")
        self.refused(b"", "valid", "--config", "c.cfg", "--dictionary", "my.hp", "etxe",
                     err='lemara valid: no network "hp", which a personal dictionary needs; list '
                         "a table with that file name in the configuration\n")

    # --- wrong usage ---

    def test_usage(self):
        for arguments, err in [
            ((), "lemara: A subcommand is required; see lemara --help"),
            (("chekc",), "lemara: unknown command chekc; see lemara --help"),
            (("check", "--limti"), "lemara check: unknown option --limti; "
                                   "see lemara check --help"),
            (("generate", "etxe"), "lemara generate: TAG is required; see lemara generate --help"),
            (("table",), "lemara table: A subcommand is required; see lemara table --help"),
            (("table", "chekc"), "lemara table: unknown command chekc; see lemara table --help"),
            (("table", "check"), "lemara table check: FILE is required; "
                                 "see lemara table check --help"),
            (("table", "text", "a", "b"), "lemara table text: unexpected argument b; "
                                          "see lemara table text --help"),
        ]:
            with self.subTest(arguments):
                self.refused(b"", *arguments, err=err + "\n")

    def test_a_bad_value(self):
        self.refused(b"", "analyze", "--format", "xml",
                     err="lemara analyze: --format: xml is none of cg3, cg3-lemara, conllu, ikute, "
                         "json, jsonl, multext, zuzenlex; see lemara analyze --help\n")
        self.expect(self.run_command("check", "--format", "JSONL", text=b"etxe"), 0, "")

    def test_help_and_version(self):
        result = self.run_bare("--version")
        self.assertRegex(result.out.decode(), r"\Alemara \d+\.\d+\.\d+\n\Z")
        self.assertEqual((result.status, result.err), (0, ""))
        for command in ([], ["check"], ["analyze"], ["valid"], ["suggest"], ["generate"],
                        ["lookup"], ["coverage"], ["dict"],
                        ["dict", "add"], ["dict", "remove"], ["dict", "list"],
                        ["dict", "import"], ["dict", "export"], ["doctor"], ["table"], ["table", "convert"], ["table", "check"],
                        ["table", "stats"], ["table", "compile"], ["table", "text"]):
            with self.subTest(command):
                result = self.run_bare(*command, "--help")
                self.assertEqual((result.status, result.err), (0, ""))
                self.assertIn("Usage: " + " ".join(["lemara", *command]), result.out.decode())
                self.assertIn("Example", result.out.decode())

    # --- writing ---

    def test_a_full_disk(self):
        with open("/dev/full", "wb") as full:
            for arguments in (("valid", "--config", "sareak.cfg", "etxe"),
                              ("table", "stats", "hp.sare"), ("--version",), ("--help",)):
                with self.subTest(arguments):
                    result = self.run_bare(*arguments, stdout=full)
                    self.assertEqual(result.status, 2)
                    self.assertIn("cannot write standard output: No space left on device",
                                  result.err)

    def test_a_closed_pipe(self):
        reading, writing = os.pipe()
        os.close(reading)
        result = self.run_command("analyze", text=b"etxe\n", stdout=writing)
        os.close(writing)
        self.assertEqual(result.status, 2)
        self.assertEqual(result.err, "lemara analyze: cannot write standard output: Broken pipe\n")

    def test_no_standard_output(self):
        result = self.run_command("analyze", text=b"etxe\n", stdout=None,
                                  preexec_fn=lambda: os.close(1))
        self.assertEqual(result.status, 2)
        self.assertIn("cannot write standard output", result.err)

    # --- tables ---

    def test_convert(self):
        self.write("w.att", "0\t1\tÑ\tÑ\n1\t2\t<IZE>\t@0@\n2\n".encode())
        self.expect(self.run_bare("table", "convert", "--lower", "w.att", "-o", "w.sare"), 0, "")
        self.assertEqual(self.read("w.sare"), b"0\t\xd1:\xf1\t1\n1\t<IZE>:<>\t2\nfinal: 2\n")
        result = self.run_bare("table", "convert", "--lower", "-", "-o", "-",
                               text=self.read("w.att"))
        self.assertEqual((result.out, result.status), (self.read("w.sare"), 0))

    def test_convert_keeps_the_old_table_if_it_fails(self):
        self.write("w.sare", b"old")
        self.write("w.att", "0\t1\tÑ\tÑ\n1\n".encode())
        self.expect(self.run_bare("table", "convert", "w.att", "-o", "w.sare"), 2, "",
                    'lemara table convert: w.att:1: arc 0 -> 1 "Ñ:Ñ": capital on the lower side, '
                    "where no word would match; --lower lowers it\n")
        self.assertEqual(self.read("w.sare"), b"old")
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4, 4))  # noqa: E731
        result = self.run_bare("table", "convert", "--lower", "w.att", "-o", "w.sare",
                               preexec_fn=limit)
        self.assertNotEqual(result.status, 0)
        self.assertEqual(self.read("w.sare"), b"old")

    def test_convert_tells_the_first_refusals(self):
        self.write("w.att", "".join(f"0\t1\t{chr(0x430 + i)}\ta\n" for i in range(25)).encode() +
                   b"1\n")
        result = self.run_bare("table", "convert", "w.att", "-o", "w.sare")
        self.assertEqual(result.status, 2)
        self.assertEqual(len(result.err.splitlines()), 21)
        self.assertIn("w.att: 5 more of the kind\n", result.err)
        self.assertFalse(os.path.exists(self.path("w.sare")))

    def test_convert_notes_weights(self):
        self.expect(self.run_bare("table", "convert", "-", "-o", "-", text=b"0\t1\ta\ta\t1.5\n1\n"),
                    0, "0\ta\t1\nfinal: 1\n", "lemara table convert: standard input:1: a table has "
                    "no weights; they are left out\n")

    def test_convert_files(self):
        self.refused(b"", "table", "convert", "x.att", "-o", "x.sare",
                     err="lemara table convert: x.att: cannot open: No such file or directory\n")
        self.refused(b"0\n", "table", "convert", "-", "-o", ".",
                     err="lemara table convert: .: is a directory\n")
        self.refused(b"0\n", "table", "convert", "-", "-o", "no/x.sare",
                     err="lemara table convert: no/x.sare: cannot write: "
                         "No such file or directory\n")
        self.refused(b"0\n", "table", "convert", "-", "-o", "/dev/full",
                     err="lemara table convert: /dev/full: cannot write: "
                         "No space left on device\n")

    def test_convert_writes_through_a_link(self):
        self.write("real.sare", b"old")
        os.chmod(self.path("real.sare"), 0o640)
        os.symlink("real.sare", self.path("link.sare"))
        self.expect(self.run_bare("table", "convert", "-", "-o", "link.sare", text=b"0\n"), 0, "")
        self.assertTrue(os.path.islink(self.path("link.sare")))
        self.assertEqual(self.read("real.sare"), b"final: 0\n")
        self.assertEqual(os.stat(self.path("real.sare")).st_mode & 0o777, 0o640)

    def test_table_check(self):
        self.expect(self.run_bare("table", "check", "eumorfo.sare", "hp.sare"), 0, "")
        self.write("bad.sare", b"0\tA\t1\n0\tb\t7\n\nfinal: 1\n")
        self.expect(self.run_bare("table", "check", "bad.sare"), 1, (
            'bad.sare:1: capital in the lower symbol "A"; words are lowered before they are '
            "compared\n"
            "bad.sare:2: no word ends behind state 7\n"
            "bad.sare:2: the target 7 is outside the count of 2 states\n"
            "bad.sare:3: line of 0 bytes; the loader passes over lines shorter than 5\n"
            "bad.sare:4: the last record names state 1 and must name the highest, 7\n"))
        self.refused(b"", "table", "check", "hp.sare", "x.sare",
                     err="lemara table check: x.sare: cannot open: No such file or directory\n")

    def test_table_stats(self):
        result = self.run_bare("table", "stats", "-", text=HP)
        self.assertEqual(result.status, 0)
        self.assertIn("standard input\n", result.out.decode())
        self.assertIn("  states                5\n", result.out.decode())
        self.assertIn("  longest analysis      10 bytes\n", result.out.decode())

    # --- compiled tables ---

    def compile(self):
        for name in ("eumorfo", "hp"):
            self.expect(self.run_bare("table", "compile", name + ".sare", "-o", name + ".sarec"),
                        0, "")
        self.write("compiled.cfg", b"eumorfo.sarec\nhp.sarec\n")

    def test_compiled_tables_answer_like_their_text(self):
        self.compile()
        self.write("my.hp", b"blog\t<ARR>\n")
        for arguments, text in [
            (("check", "--format", "zuzenlex"), "Ñabar etxxea haundi.\n".encode()),
            (("analyze", "--dictionary", "my.hp"), b"etxea bloga zz\n"),
            (("generate", "blog", "ARR"), b""),
            (("lookup", "etx"), b""),
        ]:
            with self.subTest(arguments):
                plain = self.run_command(arguments[0], *arguments[1:], text=text)
                result = self.run_bare(arguments[0], "--config", "compiled.cfg", *arguments[1:],
                                       text=text)
                self.assertNotEqual(plain.out, b"")
                self.expect(result, plain.status, plain.out.decode())

    def test_a_compiled_table_is_known_by_its_bytes(self):
        self.compile()
        os.rename(self.path("eumorfo.sarec"), self.path("eumorfo.sare"))
        self.expect(self.run_command("valid", "etxe"), 0, "etxe\tvalid\n")

    def test_a_damaged_compiled_table(self):
        self.compile()
        image = self.read("eumorfo.sarec")
        told = "eumorfo.sarec: unusable compiled table: "
        for label, bytes_, why in [
            ("a byte flipped", image[:100] + bytes([image[100] ^ 1]) + image[101:],
             "damaged: its checksum is wrong"),
            ("cut", image[:-1], f"of {len(image) - 1} bytes where its header says {len(image)}"),
            ("the header alone", image[:20], "cut short in its header"),
        ]:
            with self.subTest(label):
                self.write("eumorfo.sarec", bytes_)
                self.refused(b"", "valid", "--config", "compiled.cfg", "etxe",
                             err="lemara valid: compiled.cfg:1: " + told + why + "\n")
                self.expect(self.run_bare("table", "check", "eumorfo.sarec"), 1,
                            told + why + "\n")
                self.refused(b"", "table", "stats", "eumorfo.sarec",
                             err="lemara table stats: " + told + why + "\n")

    def test_any_byte_flipped(self):
        self.compile()
        image = self.read("hp.sarec")
        self.write("one.cfg", b"eumorfo.sare\nhp.sarec\n")
        noise = random.Random(11)
        for _ in range(40):
            at = noise.randrange(8, len(image))  # before that it is no compiled table at all
            self.write("hp.sarec", image[:at] + bytes([image[at] ^ 1 << noise.randrange(8)]) +
                       image[at + 1:])
            result = self.run_bare("valid", "--config", "one.cfg", "etxe")
            self.assertEqual((result.status, result.out), (2, b""), at)
            self.assertIn("hp.sarec: unusable compiled table: ", result.err)

    def test_compiled_and_back(self):
        self.compile()
        self.expect(self.run_bare("table", "check", "eumorfo.sarec", "hp.sarec"), 0, "")
        self.expect(self.run_bare("table", "text", "hp.sarec", "-o", "back.sare"), 0, "")
        again = self.run_bare("table", "compile", "back.sare", "-o", "-")
        self.assertEqual(again.out, self.read("hp.sarec"))
        stats = self.run_bare("table", "stats", "hp.sarec").out.decode()
        self.assertIn("  form                  compiled\n", stats)
        self.assertIn("  states                5\n", stats)

    def test_compile_files(self):
        name = "lemara table compile: "
        self.compile()
        self.write("word.sare", b"hello\n")
        self.write("bad.sare", b"0\tA\t1\nfinal: 1\n")
        self.refused(b"", "table", "compile", "hp.sarec", "-o", "x",
                     err=name + "hp.sarec: is a compiled table already\n")
        self.refused(b"", "table", "compile", "word.sare", "-o", "x",
                     err=name + "word.sare: no table; it holds no record\n")
        self.expect(self.run_bare("table", "compile", "bad.sare", "-o", "bad.sarec"), 1, "",
                    name + "bad.sare: compiled, but it has 1 defect; lemara table check lists "
                    "them\n")
        self.expect(self.run_bare("table", "check", "bad.sarec"), 1, 'bad.sarec: capital in the '
                    'lower symbol "A"; words are lowered before they are compared\n')
        self.assertFalse(os.path.exists(self.path("x")))
        self.refused(b"", "table", "text", "hp.sare", "-o", "x", err="lemara table text: "
                     "hp.sare: unusable compiled table: not a compiled table\n")

    def test_compile_keeps_the_old_table_if_it_fails(self):
        self.write("old.sarec", b"old")
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (64, 64))  # noqa: E731
        result = self.run_bare("table", "compile", "hp.sare", "-o", "old.sarec",
                               preexec_fn=limit)
        self.assertNotEqual(result.status, 0)
        self.assertEqual(self.read("old.sarec"), b"old")


if __name__ == "__main__":
    LEMARA = os.path.abspath(sys.argv.pop(1))
    unittest.main()
