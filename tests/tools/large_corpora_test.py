#!/usr/bin/env python3
"""The line filters, alone and cut into parts: large_corpora_test.py PATH-OF-LEMARA.

GNU parallel (Debian package parallel) and any other cut between lines must give the bytes that
one process gives. The tables are those of the build.
"""
import json
import os
import random
import subprocess
import sys
import tempfile
import unittest

LEMARA = ""
FILTERS = [[name, "--jsonl", "--exit-zero"] for name in
           ("check", "analyze", "valid", "suggest", "lookup")] + \
          [["generate", "--jsonl", "--exit-zero", "-", "ARR"]]
WORDS = ["etxe", "haundia", "liburo", "nahiz eta", "“", "”", "слово", "n\u0303abar", "𝒳", ".", ",",
         "www.adibidea.eus", "\ufeff", "\0", "\r", "Bilbo", "\udcff", "zer", "dut", "?", "\t"]


def corpus(seed, lines):
    noise = random.Random(seed)
    text = "".join(" ".join(noise.choice(WORDS) for _ in range(noise.choice([0, 1, 1, 3, 12]))) + "\n"
                   for _ in range(lines))
    return text.encode("utf-8", "surrogateescape")


class LargeCorpora(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="lemara-corpora-")
        self.addCleanup(folder.cleanup)
        self.environment = {"XDG_DATA_HOME": folder.name, "HOME": folder.name, "LC_ALL": "C.UTF-8",
                            "PATH": os.path.dirname(LEMARA) + ":/usr/bin:/bin"}

    def run_program(self, arguments, text):
        result = subprocess.run(arguments, input=text, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, timeout=300, env=self.environment)
        self.assertEqual(result.returncode, 0, result.stderr.decode("utf-8", "replace")[:2000])
        return result.stdout

    def test_a_line_for_each_line(self):
        text = corpus(1, 400)
        for arguments in FILTERS:
            with self.subTest(arguments[0]):
                out = self.run_program([LEMARA, *arguments], text)
                records = [json.loads(line) for line in out.decode().split("\n")[:-1]]
                self.assertEqual(len(records), text.count(b"\n"))
                self.assertTrue(all(isinstance(record, dict) for record in records))

    def test_gnu_parallel_gives_the_same_bytes(self):
        text = corpus(2, 3000)
        self.assertGreater(len(text), 5 * 10000)
        for arguments in FILTERS[:3]:
            with self.subTest(arguments[0]):
                alone = self.run_program([LEMARA, *arguments], text)
                cut = self.run_program(["parallel", "--will-cite", "--pipe", "--keep-order",
                                        "--block", "10k", "--jobs", "3", LEMARA, *arguments], text)
                self.assertEqual(cut, alone)
        for arguments in FILTERS[:2]:
            with self.subTest(arguments[0] + " in threads"):
                self.assertEqual(self.run_program([LEMARA, *arguments, "--jobs", "3"], text),
                                 self.run_program([LEMARA, *arguments], text))

    def test_any_cut_between_lines_gives_the_same_bytes(self):
        text = corpus(4, 60)
        lines = [line + b"\n" for line in text.split(b"\n")[:-1]]
        cuts = sorted(random.Random(3).sample(range(1, len(lines)), 3))
        parts = [b"".join(lines[a:b]) for a, b in zip([0] + cuts, cuts + [len(lines)])]
        for arguments in FILTERS:
            with self.subTest(arguments[0]):
                each = [self.run_program([LEMARA, *arguments], part) for part in parts]
                self.assertEqual(b"".join(each), self.run_program([LEMARA, *arguments], text))


if __name__ == "__main__":
    LEMARA = os.path.abspath(sys.argv.pop(1))
    unittest.main()
