#!/usr/bin/env python3
"""The manual pages say what --help says, and the tools that show them have no complaint:
manual_test.py PATH-OF-LEMARA.

LEMARA_BUILD names the build folder, whose installation is looked at.
"""
import os
import re
import subprocess
import tempfile

from world import World, main


def options_in(text):
    """The names of all options that a help text lists: "--config", "-o"."""
    names = []
    for line in text.split("\n"):
        match = re.match(r"  (-\S+)", line)
        if match:
            names += match.group(1).split(",")
    return names


def names_below(text, title):
    """The first words of the lines below a title of a help text."""
    found, below = [], False
    for line in text.split("\n"):
        if line.startswith(title):
            below = True
        elif not line:
            below = False
        elif below and re.match(r"  \S", line):
            found.append(line.split()[0])
    return found


class Manual(World):
    def help_of(self, path):
        result = self.lemara_run(*path, "--help")
        self.assertEqual((result.status, result.err), (0, ""))
        return result.out.decode()

    def all_commands(self, path=()):
        """(path, help) of all commands that --help shows, from the first one on."""
        text = self.help_of(path)
        yield path, text
        for name in names_below(text, "Subcommands:"):
            yield from self.all_commands((*path, name))

    def page(self, path):
        result = self.lemara_run("help", "--man", *path)
        self.assertEqual((result.status, result.err), (0, ""))
        self.assertTrue(result.out.isascii())
        return result.out

    def shown(self, page):
        process = subprocess.run(["groff", "-man", "-Tascii", "-ww", "-P-cbou"], input=page,
                                 capture_output=True, check=True)
        self.assertEqual(process.stderr, b"")
        return process.stdout.decode()

    def test_there_are_commands(self):
        paths = [path for path, _ in self.all_commands()]
        self.assertGreater(len(paths), 20)
        self.assertIn(("table", "check"), paths)
        self.assertNotIn(("help",), paths)

    def test_every_help_has_an_example_of_its_command(self):
        for path, text in self.all_commands():
            with self.subTest(path):
                examples = re.split(r"\nExamples?:\n", text)
                self.assertEqual(len(examples), 2)
                name = " ".join(("lemara", *path))
                self.assertRegex(examples[1], rf"(?m)^  (.*[|] |)?{name}( |$)")
                self.assertIn("Exit status: " if path not in [("dict",), ("table",)] else "", text)

    def test_every_option_of_the_help_is_told(self):
        for path, text in self.all_commands():
            for line in text.split("\n"):
                if re.match(r"  -\S+", line):
                    with self.subTest((path, line)):
                        self.assertRegex(line, r"^  \S+( [A-Z]+)?( REQUIRED)? {2,}\S.{5,}")

    def test_the_pages_say_what_the_help_says(self):
        for path, text in self.all_commands():
            with self.subTest(path):
                page = " ".join(self.shown(self.page(path)).replace("-\n", "-").split())
                options = options_in(text)
                self.assertIn("--help", options)
                for name in options:
                    self.assertRegex(page, rf"(^| ){name}[ ,]")
                for name in names_below(text, "Positionals:"):
                    self.assertIn(f" {name} ", page.split("ARGUMENTS")[1])
                for name in names_below(text, "Subcommands:"):
                    self.assertIn(f" {'-'.join(('lemara', *path, name))}(1) ",
                                  page.split("COMMANDS")[1])
                for line in re.split(r"\nExamples?:\n", text)[1].strip().split("\n"):
                    self.assertIn(" ".join(line.split()), page)
                for section in ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXAMPLES"):
                    self.assertIn(f" {section} ", page)

    def test_signs_stay_what_a_shell_wants(self):
        text = self.shown(self.page(("coverage",)))
        self.assertIn("lemara coverage --top 1000 *.txt | grep -v '^1[[:space:]]'", text)
        self.assertIn(r"printf 'Kaixo, mundua!\n' | lemara check", self.shown(self.page(())))

    def test_man_has_no_complaint(self):
        for path, _ in self.all_commands():
            self.write("page.1", self.page(path))
            result = subprocess.run(["man", "--warnings", "-l", self.path("page.1")],
                                    capture_output=True, check=True,
                                    env={"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8"})
            self.assertEqual(result.stderr, b"")
            self.assertIn(b"SYNOPSIS", result.stdout)

    def test_help_of_a_command(self):
        self.assertEqual(self.lemara_run("help", "dict", "add").out.decode(),
                         self.help_of(("dict", "add")))
        self.expect(self.lemara_run("help", "chekc"), 2, b"",
                    "lemara help: no command lemara chekc; see lemara --help\n")

    def test_all_is_installed(self):
        with tempfile.TemporaryDirectory(prefix="lemara-test-") as prefix:
            subprocess.run(["cmake", "--install", os.environ["LEMARA_BUILD"], "--prefix", prefix], check=True,
                           stdout=subprocess.DEVNULL)
            found = {}
            for folder, _, names in os.walk(prefix):
                for name in names:
                    with open(os.path.join(folder, name), "rb") as file:
                        found[os.path.relpath(os.path.join(folder, name), prefix)] = file.read()
            for path, _ in self.all_commands():
                name = "-".join(("lemara", *path))
                self.assertEqual(found.get(f"share/man/man1/{name}.1"), self.page(path))
            for place, shell in [("bash-completion/completions/lemara", "bash"),
                                 ("zsh/site-functions/_lemara", "zsh"),
                                 ("fish/vendor_completions.d/lemara.fish", "fish")]:
                self.assertEqual(found.get("share/" + place),
                                 self.lemara_run("help", "--completion", shell).out)


if __name__ == "__main__":
    main()
