#!/usr/bin/env python3
"""Runs the examples of the documentation: docs_test.py PATH-OF-LEMARA FILE...

Every name that `--format` of check and analyze takes must be in some example.

An example is an indented block that begins with "$ COMMAND"; what follows in the block is the
output of COMMAND; empty lines at its end don't count. The tables are those that come with the command.
"""
import os
import re
import subprocess
import sys
import tempfile

MARK = "    $ "


def examples_in(path):
    """(line number, command, output) of each example."""
    with open(path, encoding="utf-8") as file:
        lines = file.read().split("\n")
    found, number = [], 0
    while number < len(lines):
        line = lines[number]
        number += 1
        if not line.startswith(MARK):
            continue
        start, shown = number, []
        while number < len(lines) and not lines[number].startswith(MARK) and \
                (lines[number].startswith("    ") or not lines[number]):
            shown.append(lines[number][4:])
            number += 1
        while shown and not shown[-1]:
            shown.pop()
        found.append((start, line[len(MARK):], "\n".join(shown)))
    return found


def output_of(command, lemara, folder):
    environment = {"PATH": os.path.dirname(lemara) + ":/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                   "HOME": folder, "XDG_DATA_HOME": os.path.join(folder, "data")}
    result = subprocess.run(["bash", "-c", command], stdout=subprocess.PIPE, cwd=folder,
                            stderr=subprocess.STDOUT, env=environment, timeout=60)
    return result.stdout.decode().rstrip("\n")


def formats_of(lemara, command):
    """What `--format` takes, from the message on a wrong one."""
    told = subprocess.run([lemara, command, "--format", "none"], stderr=subprocess.PIPE).stderr
    return re.search("is none of (.*);", told.decode()).group(1).split(", ")


def formats_without_example(lemara, commands):
    for command in ("analyze", "check"):
        for name in formats_of(lemara, command):
            shown = [c for c in commands if re.search(
                rf"lemara {command} (.* )?--format {name}\b(?!-)", c)]
            usual = name in ("text", "multext") and \
                any(re.search(rf"lemara {command}(?!.*--format)", c) for c in commands)
            if not shown and not usual:
                yield f"no example of lemara {command} --format {name}"


def main():
    lemara, paths = os.path.abspath(sys.argv[1]), sys.argv[2:]
    wrong, commands = 0, []
    for path in paths:
        examples = examples_in(path)
        commands += [command for _, command, _ in examples]
        if not examples:
            print(f"{path}: no examples")
            wrong += 1
        with tempfile.TemporaryDirectory(prefix="lemara-docs-") as folder:
            for line, command, shown in examples:
                got = output_of(command, lemara, folder)
                if got != shown:
                    print(f"{path}:{line}: {command}\n--- shown\n{shown}\n--- got\n{got}")
                    wrong += 1
    for trouble in formats_without_example(lemara, commands):
        print(trouble)
        wrong += 1
    print(f"{wrong} wrong")
    return 1 if wrong or not paths else 0


if __name__ == "__main__":
    sys.exit(main())
