#!/usr/bin/env python3
"""Checks a compiled network against tables of expected analyses, with foma's flookup.

usage: check_analyses.py NETWORK.foma TABLE.tsv...

A row is a form, a tab and an analysis that the network must give for it, one among others. An analysis "-" says that the
form must not be known, unless as a deviant one ("[h=", "[e=") or, in lower case, as a name. Empty lines and lines that begin with "# " are skipped. Exit status 1 if a row fails.
"""

import subprocess
import sys


def rows(path):
    with open(path, encoding="utf-8") as lines:
        for number, line in enumerate(lines, 1):
            line = line.rstrip("\n")
            if line and not line.startswith("# "):
                form, tab, analysis = line.partition("\t")
                if not tab:
                    sys.exit(f"{path}:{number}: no tab")
                yield f"{path}:{number}", form, analysis


def lookup(network, forms):
    """Form -> set of analyses."""
    result = subprocess.run(["flookup", network], input="\n".join(forms) + "\n", capture_output=True, text=True, check=True)
    found = {form: set() for form in forms}
    for line in result.stdout.splitlines():
        form, tab, analysis = line.partition("\t")
        if tab and analysis != "+?":
            found[form].add(analysis)
    return found


def failure(form, analysis, found):
    if analysis == "-":
        found = [a for a in found if "[h=" not in a and "[e=" not in a and not ("A" <= a[0] <= "Z" and form.islower())]
        return f"{form} is known: {', '.join(sorted(found))}" if found else ""
    if analysis not in found:
        return f"{form}: no {analysis}; found {', '.join(sorted(found)) or 'nothing'}"
    return ""


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__.split("\n\n")[1])
    table = [row for path in sys.argv[2:] for row in rows(path)]
    found = lookup(sys.argv[1], sorted({form.lower() for _, form, _ in table}))
    failures = [(place, text) for place, form, analysis in table if (text := failure(form, analysis, found[form.lower()]))]
    for place, text in failures:
        print(f"{place}: {text}")
    print(f"{len(table) - len(failures)} passed, {len(failures)} failed")
    sys.exit(1 if failures or not table else 0)


if __name__ == "__main__":
    main()
