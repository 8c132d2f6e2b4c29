#!/usr/bin/env python3
"""Reads what `lemara analyze` writes for other programs as they read it: outside_formats_test.py
PATH-OF-LEMARA. `--format cg3` goes through vislcg3 and cg-conv (Debian package cg3),
`--format conllu` through a validator of the format's rules. The tables are those of the build.
"""
import json
import os
import random
import re
import subprocess
import sys
import tempfile
import unicodedata
import unittest

LEMARA = ""
# Signs, quotes, scripts, addresses, units over line ends, and what tokens must not break.
TEXT = """“Etxe haundia” ikusi dut… « Bai », esan zuen: ‘ez’ – eta joan egin zen.
EAEko Eusko Jaurlaritzaren etxea, 1998an; 3.000,5 eta III. mendea (hala ere) bada!
Liburo "zaharra" www.adibidea.eus gizon@adibidea.eus слово 日本 𝒳 n\u0303abar e\u0301 \\ \\\\ a\\b
<a> "<b>" </c> & | # _ = ; : @ % $$ {p=1} [x] ~ ^ ` ´ €5 %3 10:30 1/2 A4 -ko etxe-ko d'Or\u00ad

Nahiz eta hori\u00a0egia izan,\tez dator. Bada…bai."Bai"(ez)
\ufeff¿Zer? ¡A! … .. .... ?! -- — ' " '' ""
"""


def analyzed(format_, text=TEXT, *options):
    with tempfile.TemporaryDirectory(prefix="lemara-formats-") as folder:
        result = subprocess.run([LEMARA, "analyze", "--format", format_, *options],
                                input=text.encode(), stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, timeout=120,
                                env={"XDG_DATA_HOME": folder, "PATH": os.environ["PATH"]})
    if result.returncode != 0 or result.stderr:
        raise AssertionError((result.returncode, result.stderr.decode()))
    return result.stdout.decode()


def tokens_of(text=TEXT, *options):
    return [json.loads(line) for line in analyzed("jsonl", text, *options).splitlines()]


def noise_text(seed):
    """Words, signs and blanks in any order."""
    noise = random.Random(seed)
    pieces = TEXT.split() + list("\"'<>\\\t\n .,;:-/*#“”«»") + ["nahiz eta", "hala\nere", "\r\n"]
    return "".join(noise.choice(pieces) + noise.choice(["", " ", " ", "\n"])
                   for _ in range(3000))


class Cg3(unittest.TestCase):
    maxDiff = None
    # What stands behind a genitive is no verb stem; MAP shows which cohorts a rule can name.
    GRAMMAR = '''DELIMITERS = "<EBUK>" ;
LIST STEM = (ADI ADOIN) ;
SECTION
SELECT (IZE GEN) ;
REMOVE STEM IF (-1 (GEN)) ;
ADD (@QUOTE) TARGET ("\\"") ;
ADD (@UNIT) TARGET ("nahiz eta") ;
ADD (@FORM) TARGET ("<слово>") ;
ADD (@CAPITAL) TARGET (HAS_MAI) IF (-1 (>>>)) ;
'''

    def cg(self, program, *arguments, text, told=""):
        result = subprocess.run([program, *arguments], input=text.encode(), timeout=120,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertEqual((result.returncode, result.stderr.decode()), (0, told))
        return result.stdout.decode()

    def disambiguated(self, text):
        with tempfile.TemporaryDirectory(prefix="lemara-cg3-") as folder:
            grammar = os.path.join(folder, "grammar.cg3")
            with open(grammar, "w", encoding="utf-8") as file:
                file.write(self.GRAMMAR)
            return self.cg("vislcg3", "-g", grammar, text=text)

    @staticmethod
    def cohorts(text):
        """(form, readings) of each cohort but the delimiters."""
        found = []
        for line in text.split("\n"):
            if line.startswith('"<'):
                found.append((line[2:-2], []))
            elif line.startswith("\t"):
                found[-1][1].append(line.strip())
        return [cohort for cohort in found if cohort[0] != "EBUK"]

    def test_a_grammar_disambiguates(self):
        text = "Etxearen hori nahiz eta слово “hori”"
        before = self.cohorts(analyzed("cg3", text))
        self.assertGreater(len(before[1][1]), 1)
        self.assertTrue(any(" ADOIN" in reading for reading in before[1][1]))
        after = self.cohorts(self.disambiguated(analyzed("cg3", text)))
        self.assertEqual([form for form, _ in after], [form for form, _ in before])
        self.assertEqual(len(after[0][1]), 1)
        self.assertRegex(after[0][1][0], r'^"etxe" <id=\d+> IZE ARR GEN NUMS HAS_MAI')
        self.assertFalse(any(" ADOIN" in reading for reading in after[1][1]))
        self.assertTrue(any(" ADOIN" in reading for reading in after[5][1]))
        marks = [[tag for tag in readings[0].split() if tag.startswith("@")]
                 for _, readings in after]
        self.assertEqual(marks, [["@CAPITAL"], [], ["@UNIT"], ["@FORM"], ["@QUOTE"], [],
                                 ["@QUOTE"]])

    def test_the_readings_lead_back(self):
        text = "Etxearen hori dator."
        tokens = tokens_of(text)
        after = self.cohorts(self.disambiguated(analyzed("cg3", text)))
        self.assertEqual(len(after), len(tokens))
        for (form, readings), token in zip(after, tokens):
            self.assertEqual(form, token["text"])
            for reading in readings:
                number = int(re.search(r"<id=(\d+)>", reading).group(1))
                analysis = token["readings"][number - 1]
                self.assertTrue(reading.startswith(f'"{analysis["lemma"]}" '))
                for tag in analysis["tags"]:
                    self.assertIn(f" {tag}", reading)

    def test_nothing_is_lost_or_complained_of(self):
        for text in [TEXT] + [noise_text(seed) for seed in range(3)]:
            for options in ((), ("--values",), ("--paragraphs", "blank")):
                stream = analyzed("cg3", text, *options)
                told = self.cohorts(stream)
                self.assertGreater(len(told), 60)
                self.assertEqual([form for form, _ in told],
                                 [" ".join(token["text"].split()) for token in
                                  tokens_of(text, *options)])
                for line in stream.split("\n"):
                    self.assertRegex(line, r'^("<.+>"|\t".+" [^ ].*|\{p=\d+ s=\d+( z=[\d,]+)?\})$|^$')
                same = "\n".join(line for line in stream.split("\n") if line)
                for reader in (self.cg("cg-conv", text=stream), self.disambiguated(stream)):
                    self.assertEqual([form for form, _ in self.cohorts(reader)],
                                     [form for form, _ in told])
                converted = self.cg("cg-conv", text=stream)
                self.assertEqual("\n".join(line for line in converted.split("\n") if line), same)


UPOS = set("ADJ ADP ADV AUX CCONJ DET INTJ NOUN NUM PART PRON PROPN PUNCT SCONJ SYM VERB X".split())
FEATURE = re.compile(r"^[A-Z][A-Za-z0-9]*(\[[a-z0-9]+\])?=[A-Z0-9][A-Za-z0-9]*(,[A-Z0-9][A-Za-z0-9]*)*$")


def conllu_trouble(document):
    """What a text breaks of the rules of CoNLL-U."""
    trouble, ids = [], set()

    def wrong(number, what):
        trouble.append(f"line {number}: {what}")

    if not document.endswith("\n\n") and document:
        wrong(0, "no empty line at the end")
    if "\r" in document:
        wrong(0, "a carriage return")
    comments, words, text = [], [], ""
    for number, line in enumerate(document.split("\n")[:-1], 1):
        if not line:
            named = dict(c[2:].split(" = ", 1) for c in comments if " = " in c)
            if not words:
                wrong(number, "no words")
            if named.get("sent_id", "") in ids | {""}:
                wrong(number, "no sent_id of its own")
            ids.add(named.get("sent_id"))
            if named.get("text") != text.rstrip(" ") or "  " in text:
                wrong(number, f"text {named.get('text')!r} is not {text!r}")
            comments, words, text = [], [], ""
            continue
        if line.startswith("#") and not words:
            comments.append(line)
            continue
        columns = line.split("\t")
        if len(columns) != 10:
            wrong(number, f"{len(columns)} columns")
            continue
        for position, column in enumerate(columns):
            if not column:
                wrong(number, f"column {position + 1} is empty")
            if column != column.strip() or (position not in (2, 9) and re.search(r"\s", column)):
                wrong(number, f"white space in column {position + 1}")
        id_, form, _, upos, _, features, head, deprel, deps, misc = columns
        if id_ != str(len(words) + 1):
            wrong(number, f"id {id_}")
        if unicodedata.normalize("NFC", form) != form:
            wrong(number, f"{form!r} is not in NFC")
        if upos not in UPOS:
            wrong(number, f"UPOS {upos}")
        listed = [] if features == "_" else features.split("|")
        names = [feature.split("=")[0].lower() for feature in listed]
        if names != sorted(set(names)) or not all(map(FEATURE.match, listed)):
            wrong(number, f"features {features}")
        if (head, deprel, deps) != ("_", "_", "_"):
            wrong(number, "a dependency")
        properties = misc.split("|")
        if not all(re.match(r"^\w+=[^|]+$", item) for item in properties):
            wrong(number, f"MISC {misc}")
        words.append(form)
        text += form + ("" if "SpaceAfter=No" in properties else " ")
    if words or comments:
        wrong(0, "no empty line behind the last sentence")
    return trouble


class ConllU(unittest.TestCase):
    maxDiff = None

    def test_the_validator_finds_mistakes(self):
        good = "# sent_id = 1\n# text = a b\n1\ta\t_\tX\t_\tA=B|C=D\t_\t_\t_\t_=1\n" \
               "2\tb\t_\tX\t_\t_\t_\t_\t_\tT=1:2\n\n"
        self.assertEqual(conllu_trouble(good), [])
        for old, new in [("\n\n", "\n"), ("2\tb", "3\tb"), ("A=B|C=D", "C=D|A=B"), ("= a b", "= ab"),
                         ("\tX\t_\t_", "\tY\t_\t_"), ("\tb\t", "\tb b\t"), ("\t_=1", "\t"),
                         ("\ta\t", "\tn\u0303\t"), ("# sent_id = 1\n", ""), ("T=1:2", "SpaceAfter")]:
            self.assertNotEqual(conllu_trouble(good.replace(old, new)), [], (old, new))
        self.assertNotEqual(conllu_trouble(good + good), [])

    def test_the_format_is_kept(self):
        for text in [TEXT] + [noise_text(seed) for seed in range(4)]:
            for options in ((), ("--paragraphs", "blank"), ("--jobs", "2")):
                document = analyzed("conllu", text, *options)
                self.assertEqual(conllu_trouble(document), [])

    def test_words_stand_where_they_are_said_to(self):
        for text in [TEXT, noise_text(9)]:
            tokens = tokens_of(text, "--paragraphs", "blank")
            parts = [part for token in tokens for part in token["text"].split()]
            lines = [line.split("\t") for line in
                     analyzed("conllu", text, "--paragraphs", "blank").split("\n")
                     if line[:1].isdigit()]
            ranges = [re.search(r"TokenRange=(\d+):(\d+)", line[9]).groups() for line in lines]
            self.assertEqual([text[int(begin):int(end)] for begin, end in ranges], parts)
            self.assertEqual([line[1] for line in lines],
                             [unicodedata.normalize("NFC", part) for part in parts])
            # SpaceAfter is what stands in the text.
            for line, (_, end) in zip(lines, ranges):
                behind = re.match("[\u00ad\u200b\ufeff]*(.?)", text[int(end):], re.S).group(1)
                self.assertEqual("SpaceAfter=No" in line[9], not behind.isspace())

    def test_the_first_reading_is_chosen(self):
        tokens = tokens_of("Hori etxearen bada hala ere.")
        lines = [line.split("\t") for line in
                 analyzed("conllu", "Hori etxearen bada hala ere.").split("\n")
                 if line[:1].isdigit()]
        for line, token in zip(lines[:3], tokens):
            reading = token["readings"][0]
            self.assertEqual((line[2], line[4]), (reading["lemma"], "+".join(reading["tags"])))
            rest = len(token["readings"]) - 1
            self.assertEqual(f"Alts={rest}|" in line[9], rest > 0)
        self.assertEqual((lines[1][3], lines[1][5]), ("NOUN", "Case=Gen|Number=Sing"))
        self.assertEqual([line[1:3] for line in lines[3:5]], [["hala", "hala"], ["ere", "ere"]])
        self.assertIn("Unit=2", lines[3][9])


if __name__ == "__main__":
    LEMARA = os.path.abspath(sys.argv.pop(1))
    unittest.main()
