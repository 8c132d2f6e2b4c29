#!/usr/bin/env python3
"""Holds the paradigms of the network "hp" against the main network.

    check_hp.py EUMORFO.att HP.att

For a word of each class: the forms and tags that hp gives for its stems must be the very set that the main network
gives for its lemma. Elided nouns, and what only the main network makes (degrees, diminutives), are left out.
"""
import collections
import sys

# lemma, word class, (paradigm class, stem)...
WORDS = [
    ("etxe", "<IZE><ARR>", ("<hp1>", "etxe")),
    ("neska", "<IZE><ARR>", ("<hp3>", "neska"), ("<hp2>", "nesk")),
    ("lagun", "<IZE><ARR>", ("<hp4>", "lagun")),
    ("txakur", "<IZE><ARR>", ("<hp6>", "txakur"), ("<hp5>", "txakurr")),
    ("handi", "<ADJ><IZO>", ("<hp1>", "handi")),
    ("zuhur", "<ADJ><IZO>", ("<hp6>", "zuhur"), ("<hp5>", "zuhurr")),
    ("Amaia", "<IZE><PIB>", ("<hp8>", "Amaia")),
    ("Mikel", "<IZE><PIB>", ("<hp9>", "Mikel")),
    ("Gaspar", "<IZE><PIB>", ("<hp10>", "Gaspar"), ("<hp11>", "Gasparr")),
    ("Bilbo", "<IZE><LIB>", ("<hp12>", "Bilbo")),
    ("Irun", "<IZE><LIB>", ("<hp25>", "Irun")),
    ("Gasteiz", "<IZE><LIB>", ("<hp13>", "Gasteiz")),
    ("Eibar", "<IZE><LIB>", ("<hp14>", "Eibar"), ("<hp15>", "Eibarr")),
    ("Zarautz", "<IZE><LIB>", ("<hp19>", "Zarautz"), ("<hp18>", "Zarauz")),
    ("Osakidetza", "<IZE><IZB>", ("<hp16>", "Osakidetza")),
    ("hartu", "<ADI><ADI_IZE>", ("<hp20>", "hartze")),
    ("hartu", "<ADI><PART>", ("<hp21>", "hartu")),
    ("hartu", "<ADI><ADOIN>", ("<hp24>", "har")),
    ("joan", "<ADI><PART>", ("<hp22>", "joan")),
    ("hil", "<ADI><PART>", ("<hp23>", "hil")),
]
# Classes whose paradigm in hp serves several kinds of word, so that it holds more forms than one of them has.
WIDER = {"<hp13>"}
LEFT_OUT = ("<ELI_IZE>", "<GRA>", "<DIM>", "<AUG>", "<Rare>", "<ALDAERA>")


class Table:
    def __init__(self, path):
        self.arcs, self.final = collections.defaultdict(list), set()
        for line in open(path, encoding="utf-8"):
            cells = line.rstrip("\n").split("\t")
            if len(cells) == 4 or len(cells) == 5:
                upper, lower = ("" if c == "@0@" else c for c in cells[2:4])
                self.arcs[cells[0]].append((cells[1], upper, lower))
            elif cells[0]:
                self.final.add(cells[0])

    def forms(self, target):
        """Pairs of form and of what follows `target` on the upper side."""
        found, queue = set(), [("0", "", "")]
        while queue:
            state, upper, lower = queue.pop()
            if state in self.final and upper.startswith(target):
                found.add((lower, upper[len(target):]))
            for to, up, low in self.arcs[state]:
                new = upper + up
                if new.startswith(target) or target.startswith(new):
                    if not any(tag in new for tag in LEFT_OUT):
                        queue.append((to, new, lower + low))
        return found


def main():
    main_table, hp = Table(sys.argv[1]), Table(sys.argv[2])
    problems, count = [], 0
    for lemma, tags, *stems in WORDS:
        expected = main_table.forms(lemma + tags)
        given = set()
        for paradigm, stem in stems:
            given |= {(stem.lower() + form[len(paradigm):], rest) for form, rest in hp.forms(paradigm)}
        count += len(expected)
        if not expected:
            problems.append(f"{lemma}{tags}: not in the main network")
        for form, rest in sorted(expected - given):
            problems.append(f"{lemma}{tags}{rest} {form}: not in hp")
        if not any(paradigm in WIDER for paradigm, _ in stems):
            for form, rest in sorted(given - expected):
                problems.append(f"{lemma}{tags}{rest} {form}: only in hp")
    if problems:
        sys.exit("\n".join(problems))
    print(f"{len(WORDS)} words, {count} forms: hp and the main network agree")


main()
