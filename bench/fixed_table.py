#!/usr/bin/env python3
"""Writes a table of a fixed shape: fixed_table.py NAME FILE. The jobs of bench/instructions run
on such tables, so that the lexicon may grow without changing their counts.

A few hundred stems share endings that branch and meet again, as those of a real lexicon do.
"""
import sys

STEMS = """etxe mendi zuhaitz egunkari liburu ikasle handi gorri zuri donostia bilbo hizkuntza euskara
urte lagun gizon ur sagar kale bide""".split()
VERBS = "du naiz ditu egin egiten ikusi joan etorri eta ere baina".split()
VOWELS, CONSONANTS = "aeiou", "bdgklmnprstxz"
ENDINGS = [("", "<ABS><MG>"), ("a", "<ABS><NUMS>"), ("ak", "<ABS><NUMP>"), ("ak", "<ERG><NUMS>"),
           ("ek", "<ERG><NUMP>"), ("ari", "<DAT><NUMS>"), ("ei", "<DAT><NUMP>"),
           ("aren", "<GEN><NUMS>"), ("en", "<GEN><NUMP>"), ("arekin", "<SOZ><NUMS>"),
           ("ekin", "<SOZ><NUMP>"), ("an", "<INE><NUMS>"), ("etan", "<INE><NUMP>"), ("tik", "<ABL>"),
           ("ra", "<ALA>"), ("n", "<INE>"), ("ko", "<GEL>")]


class Table:
    def __init__(self):
        self.lines, self.states = [], 1

    def state(self):
        self.states += 1
        return self.states - 1

    def arc(self, source, upper, lower, target):
        field = upper if upper == lower else f"{upper}:{lower or '<>'}"
        self.lines.append(f"{source}\t{field}\t{target}")

    def text(self, source, upper, lower, last):
        """A path to `last`, symbol by symbol."""
        for i in range(max(len(upper), len(lower))):
            target = last if i + 1 == max(len(upper), len(lower)) else self.state()
            self.arc(source, upper[i:i + 1], lower[i:i + 1], target)
            source = target


def stems():
    result = [(s, "<IZE><ARR>") for s in STEMS] + [(v, "<ADI>") for v in VERBS]
    for a in CONSONANTS:
        for b in VOWELS:
            for c in CONSONANTS:
                result.append((a + b + c + "o", "<IZE><ARR>"))
    return result


def main():
    name, path = sys.argv[1:]
    table = Table()
    end = None
    if name == "eumorfo":
        case, end = table.state(), table.state()
        trie = {"": 0}
        for stem, tags in stems():
            for n in range(1, len(stem) + 1):
                if stem[:n] not in trie:
                    trie[stem[:n]] = table.state()
                    table.arc(trie[stem[:n - 1]], stem[n - 1], stem[n - 1], trie[stem[:n]])
            inside = table.state()
            table.arc(trie[stem], tags, "", inside)
            table.arc(inside, "", "", case)
            table.arc(inside, "<0A>", "", end)
        for ending, tags in ENDINGS:
            after = table.state()
            table.arc(case, tags, ending[:1], after)
            if ending[1:]:
                table.text(after, "", ending[1:], end)
            else:
                table.arc(after, "", "", end)
    elif name == "hp":
        end = table.state()
        for number in range(1, 26):
            inside = table.state()
            table.arc(0, f"<hp{number}>", f"<hp{number}>", inside)
            for ending, tags in ENDINGS:
                after = table.state()
                table.arc(inside, tags, "", after)
                if ending:
                    table.text(after, "", ending, end)
                else:
                    table.arc(after, "", "", end)
    else:
        end = table.state()
        for digit in "0123456789":
            table.arc(0, digit, digit, end)
            table.arc(end, digit, digit, end)
    table.lines.append(f"final: {end}")
    table.lines.append(f"final: {table.states - 1}" if end != table.states - 1 else "")
    with open(path, "w", encoding="latin-1") as out:
        out.write("\n".join(line for line in table.lines if line) + "\n")


if __name__ == "__main__":
    main()
