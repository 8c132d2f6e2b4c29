#!/usr/bin/env python3
"""Emacs corrects buffers through `lemara -a`: emacs_test.py PATH-OF-LEMARA.

Needs Emacs (Debian package emacs-nox). The tables are those of the build. What is asked and
expected stands in emacs_ispell.el.
"""
import os
import subprocess
import sys
import tempfile

SCRIPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "emacs_ispell.el")


def main():
    lemara = os.path.abspath(sys.argv[1])
    with open(SCRIPT, encoding="utf-8") as file:
        wanted = file.read().count("(ert-deftest ")
    with tempfile.TemporaryDirectory(prefix="lemara-emacs-") as home:
        result = subprocess.run(
            ["emacs", "-Q", "--batch", "-l", SCRIPT, "-f", "ert-run-tests-batch-and-exit"],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=250, cwd=home,
            env={"HOME": home, "XDG_DATA_HOME": home, "LC_ALL": "C.UTF-8", "TERM": "dumb",
                 "PATH": os.path.dirname(lemara) + ":/usr/bin:/bin"})
    told = result.stdout.decode("utf-8", "replace")
    print(told)
    passed = f"Ran {wanted} tests, {wanted} results as expected, 0 unexpected"
    return 0 if result.returncode == 0 and passed in told and wanted > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
