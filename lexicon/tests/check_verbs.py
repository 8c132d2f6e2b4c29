#!/usr/bin/env python3
"""Checks that each verb of verbs_nonfinite.lexc and verbs_compound.lexc ends as its class asks, and is listed once.

usage: check_verbs.py

Exit status 1 if a line fails.
"""

import os
import re
import sys

# Class -> what the participle must end in, and must not.
ENDINGS = {"TU": ("[td]u", "[zs]tu"), "TUT": ("tu", "[zs]tu"), "ZTU": ("[zs]tu", ""), "TZTU": ("ztu", ""), "TSTU": ("stu", ""),
           "SI": ("[zs]i", "t[zs]i"), "TZI": ("tzi", ""), "TSI": ("tsi", ""), "TXI": ("txi", ""), "I": ("[lrn]i", "rri"),
           "RRI": ("rri", ""), "N": ("n", ""), "L": ("l", ""), "0": ("[eiou]", "[td]u"), "V": ("[eiou]", "[td]u"), "A": ("a", "")}


def verbs(path):
    """Place, participle and class of each verb line."""
    with open(path, encoding="utf-8") as lines:
        for number, line in enumerate(lines, 1):
            match = re.match(r"((?:[a-zñ]|% )+) ADI_([A-Z]+|0)0? ;", line)
            if match and match[2] in ENDINGS:
                yield f"{os.path.basename(path)}:{number}", match[1], match[2]


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    seen, failed = {}, 0
    for name in ("verbs_nonfinite.lexc", "verbs_compound.lexc"):
        for place, verb, cls in verbs(os.path.join(here, "..", name)):
            must, must_not = ENDINGS[cls]
            wrong = not re.search(f"({must})$", verb) or (must_not and re.search(f"({must_not})$", verb))
            if wrong or verb in seen:
                print(f"{place}: {verb} ADI_{cls}: {'wrong class' if wrong else 'also at ' + seen[verb]}")
                failed += 1
            seen[verb] = place
    print(f"{len(seen)} verbs, {failed} failed")
    sys.exit(1 if failed or not seen else 0)


if __name__ == "__main__":
    main()
