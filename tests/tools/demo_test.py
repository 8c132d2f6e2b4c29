#!/usr/bin/env python3
"""What scripts/demo shows is what the README says: demo_test.py PATH-OF-LEMARA.

Runs the commands of scripts/demo, but for the build, with the command and tables of this build.
"""
import os
import re
import subprocess
import sys
import unittest

LEMARA = ""
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def text_of(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as file:
        return file.read()


class Demo(unittest.TestCase):
    maxDiff = None

    def outputs(self):
        for line in text_of("scripts/demo").splitlines():
            if not line.startswith("show "):
                continue
            program, *arguments = line.split()[1:]
            self.assertTrue(program.endswith("/tools/lemara"))
            result = subprocess.run([LEMARA, *arguments], cwd=ROOT, stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE, timeout=60)
            self.assertEqual(result.returncode, 1)
            yield result.stdout.decode(), result.stderr.decode()

    def test_the_readme_shows_it(self):
        (findings, summary), (markup, told) = self.outputs()
        self.assertEqual(told, "")
        shown = "\n".join(line[4:] for line in text_of("README.md").splitlines()
                          if line.startswith("    "))
        self.assertEqual(len(findings.splitlines()), 2)
        self.assertIn(findings, shown)
        summary = re.match(r"lemara check: 2 findings in \d+ words of 1 file, ", summary).group()
        self.assertIn(summary, shown)
        blocks = re.findall("<tok.*?</tok>", shown, re.S)
        self.assertEqual(len(blocks), 2)
        for block in blocks:
            self.assertIn(block, markup)

    def test_findings_stand_where_they_are_said_to(self):
        findings, _ = next(self.outputs())
        lines = text_of("examples/gutuna.txt").split("\n")
        for finding in findings.splitlines():
            _, line, column, rest = finding.split(":", 3)
            self.assertTrue(lines[int(line) - 1][int(column) - 1:].startswith(rest.split()[0]))

    def test_the_letter_is_written_as_people_write(self):
        letter = text_of("examples/gutuna.txt")
        for sign in "“”«»’…–":
            self.assertIn(sign, letter)


if __name__ == "__main__":
    LEMARA = os.path.abspath(sys.argv.pop(1))
    unittest.main()
