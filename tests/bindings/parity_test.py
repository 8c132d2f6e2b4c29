"""Each operation of lemara::Checker, and each field of what it answers, is there in C and in
Python, under its name.

Arguments: the folder of the headers, the type stubs of the Python package."""

import os
import re
import sys

include, stubs = sys.argv[1:]


def body_of(text, opening):
    start = text.index(opening)
    return text[start:text.index("\n};", start)]


with open(os.path.join(include, "lemara", "checker.h"), encoding="utf-8") as file:
    cpp = re.sub(r"//.*", "", file.read())
with open(os.path.join(include, "lemara", "lemara.h"), encoding="utf-8") as file:
    c = re.sub(r"/\*.*?\*/", "", file.read(), flags=re.S)
with open(stubs, encoding="utf-8") as file:
    python = file.read()

missing = []


def expect(where, what, there):
    if not there:
        missing.append("%s: no %s" % (where, what))


public = body_of(cpp, "Checker {\npublic:").split("private:")[0]
operations = set(re.findall(r"(\w+)\([^;]*?\)\s*(?:const)?;", public)) - {"Checker"}
free = {"find_configuration", "default_dictionary", "version"}
assert len(operations) > 14 and "render" in operations, operations
for name in sorted(operations | free):
    expect("lemara.h", "lemara_" + name, re.search(r"\blemara_%s\(" % name, c))
    if name not in ("open", "version"):
        expect("Python", name, re.search(r"\bdef %s\(" % name, python))

# C++ name -> where its fields are in C and in Python, and the fields under other names.
STRUCTURES = {
    "Finding": ("lemara_finding", "Finding", {}),
    "Reading": ("lemara_reading", "Reading", {}),
    "Token": ("lemara_token", "Token", {"readings": "reading_count"}),
    "PersonalWord": ("lemara_personal_word", "PersonalWord", {}),
    "CheckOptions": ("lemara_check_options", "Checker",
                     {"time_per_word": "ms_per_word", "time_in_all": "ms_in_all"}),
}
IN_PYTHON = {"time_per_word": "seconds_per_word", "time_in_all": "seconds"}
for name, (in_c, in_python, other) in STRUCTURES.items():
    body = body_of(cpp, "struct %s {" % name)
    fields = re.findall(r"(\b[a-z]\w*)(?:\s*=[^;]*|\{[^;]*\})?;", body)
    assert fields, name
    c_body = c[c.index("typedef struct %s {" % in_c):c.index("} %s;" % in_c)]
    start = python.index("class %s" % in_python)
    python_body = python[start:(python + "\nclass ").index("\nclass ", start)]
    for field in fields:
        expect(in_c, field, re.search(r"\b%s;" % other.get(field, field), c_body))
        known = IN_PYTHON.get(field, field)
        expect("Python's " + in_python, known, re.search(r"\b%s\b" % known, python_body))

print("\n".join(missing) or "%d operations, %d structures" % (len(operations | free),
                                                             len(STRUCTURES)))
sys.exit(1 if missing else 0)
