"""Compiles and runs every program of docs/embedding.md; what it prints must be what stands below.

Arguments: the document, the headers, the library's folder, a C++ compiler, a C compiler. Python
programs run in this interpreter's like, with its environment."""

import os
import re
import subprocess
import sys
import tempfile

document, include, library, cxx, cc = sys.argv[1:]

with open(document, encoding="utf-8") as file:
    blocks = re.findall(r"^```(\w+)\n(.*?)^```$", file.read(), re.S | re.M)


def program_of(language, source, folder):
    """The command that runs a block."""
    path = os.path.join(folder, "program." + {"python": "py"}.get(language, language))
    with open(path, "w", encoding="utf-8") as out:
        out.write(source)
    if language == "python":
        return [sys.executable, path]
    compiler = [cxx, "-std=c++17"] if language == "cpp" else [cc, "-std=c99"]
    binary = os.path.join(folder, "program")
    subprocess.check_call(
        compiler
        + ["-Wall", "-Wextra", "-Werror", "-pedantic", "-I", include, path, "-o", binary]
        + ["-L", library, "-llemara", "-Wl,-rpath," + library]
    )
    return [binary]


programs = wrong = 0
for (language, source), (answer, expected) in zip(blocks, blocks[1:]):
    if language == "text":
        continue
    if answer != "text":
        sys.exit("no answer stands below a program in " + language)
    programs += 1
    with tempfile.TemporaryDirectory() as folder:
        run = subprocess.run(program_of(language, source, folder), stdout=subprocess.PIPE,
                             cwd=folder)
    printed = run.stdout.decode("utf-8")
    if run.returncode != 0 or printed != expected:
        wrong += 1
        print("%s program, status %d, printed:\n%s" % (language, run.returncode, printed))
        print("the document says:\n" + expected)

print("%d programs, %d wrong" % (programs, wrong))
sys.exit(wrong > 0 or programs < 6)
