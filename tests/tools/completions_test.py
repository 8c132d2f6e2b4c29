#!/usr/bin/env python3
"""Completes command lines in bash, zsh and fish: completions_test.py PATH-OF-LEMARA."""
import os
import pty
import subprocess

from world import Terminal, World, main


class Completions(World):
    def setUp(self):
        super().setUp()
        self.write("letter one.txt", b"")
        self.write("letter.txt", b"")
        for shell in ("bash", "zsh", "fish"):
            result = self.lemara_run("help", "--completion", shell)
            self.assertEqual((result.status, result.err), (0, ""))
            self.write("_lemara" if shell == "zsh" else "lemara." + shell, result.out)

    def run_shell(self, *command):
        result = subprocess.run(command, capture_output=True, cwd=self.folder.name, timeout=60,
                                env={"PATH": os.environ["PATH"], "HOME": self.folder.name,
                                     "LC_ALL": "C.UTF-8"})
        self.assertEqual((result.stderr.decode(), result.returncode), ("", 0))
        return result.stdout.decode()

    def in_bash(self, *words):
        """What bash offers for the last of the words."""
        return sorted(self.run_shell(
            "bash", "--norc", "-c", "source ./lemara.bash; COMP_WORDS=(\"$@\"); "
            "COMP_CWORD=$(($# - 1)); _lemara; printf '%s\\n' \"${COMPREPLY[@]}\"",
            "bash", *words).split("\n")[:-1])

    def in_fish(self, *words):
        line = " ".join(words)
        self.write("ask.fish", f"source ./lemara.fish\ncomplete -C '{line}'\n".encode())
        offered = self.run_shell("fish", "--no-config", "ask.fish")
        return sorted(row.split("\t")[0] for row in offered.split("\n")[:-1])

    CASES = [
        ("commands", ("lemara", "ch"), ["check"]),
        ("commands of a command", ("lemara", "dict", "re"), ["remove"]),
        ("the one of two that is meant", ("lemara", "table", "check", "--j"), []),
        ("options", ("lemara", "check", "--no-d"), ["--no-dictionary"]),
        ("options of a command's command", ("lemara", "dict", "add", "--cl"), ["--class"]),
        ("values", ("lemara", "check", "--format", "js"), ["json", "jsonl"]),
        ("values of a format", ("lemara", "analyze", "--format", "co"), ["conllu"]),
        ("values of an encoding", ("lemara", "valid", "--encoding", "l"), ["latin-1"]),
        ("files", ("lemara", "check", "letter.t"), ["letter.txt"]),
        ("files behind an option", ("lemara", "fix", "--dictionary", "letter.t"), ["letter.txt"]),
        ("a file with the name of a command", ("lemara", "check", "dict", "--jso"), ["--jsonl"]),
        ("words have no completion", ("lemara", "valid", "lett"), []),
        ("a command that isn't shown", ("lemara", "hel"), []),
    ]

    def test_bash(self):
        for label, words, offered in self.CASES:
            with self.subTest(label):
                self.assertEqual([word for word in self.in_bash(*words) if word], offered)
        self.assertEqual(self.in_bash("lemara", "check", "--format", "=", "js"),
                         ["json", "jsonl"])
        self.assertEqual(len(self.in_bash("lemara", "check", "--format", "=")), 6)
        self.assertEqual(self.in_bash("lemara", "check", "lett"),
                         ["letter one.txt", "letter.txt"])
        self.assertEqual(self.in_bash("lemara", "dict", ""),
                         ["add", "export", "import", "list", "remove"])

    def test_fish(self):
        for label, words, offered in self.CASES:
            with self.subTest(label):
                self.assertEqual(self.in_fish(*words), offered)
        self.assertEqual(self.in_fish("lemara", "dict", ""),
                         ["add", "export", "import", "list", "remove"])

    def test_zsh(self):
        self.write(".zshrc", b"PS1='ready> '\nfpath=($PWD $fpath)\nautoload -U compinit\n"
                             b"compinit -D -u\nunsetopt beep\nbindkey '^I' complete-word\n"
                             b"lemara() { print -r -- \"<$*>\" }\n")
        for label, words, offered in self.CASES:
            if len(offered) != 1:
                continue
            with self.subTest(label):
                typed = " ".join(words[1:])
                wanted = " ".join((*words[1:-1], offered[0]))
                self.assertEqual(self.complete_in_zsh("lemara " + typed), wanted)

    def complete_in_zsh(self, line):
        """The words behind the first one when TAB has completed the line and RETURN ran it."""
        shell = Terminal.__new__(Terminal)
        shell.process, shell.side = pty.fork()
        if shell.process == 0:
            os.chdir(self.folder.name)
            os.execvpe("zsh", ["zsh", "-i"], {
                "PATH": os.environ["PATH"], "HOME": self.folder.name, "TERM": "dumb",
                "ZDOTDIR": self.folder.name, "LC_ALL": "C.UTF-8"})
        shell.seen = ""
        shell.wait_for("ready> ", 15)
        os.write(shell.side, line.encode() + b"\t\n")
        shell.wait_for("\n<", 15)
        words = shell.wait_for(">", 15)
        os.write(shell.side, b"exit\n")
        shell.finish()
        return words.strip()

    def test_syntax(self):
        self.run_shell("bash", "-n", "lemara.bash")
        self.run_shell("zsh", "-n", "_lemara")
        self.run_shell("fish", "-n", "lemara.fish")


if __name__ == "__main__":
    main()
