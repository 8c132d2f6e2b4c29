#!/usr/bin/env python3
"""Holds the data of tests/language against compiled networks, by foma's flookup.

    check_language.py OUTDIR [FILE...]

OUTDIR is that of build.sh. Without FILE all of tests/language is read:

    right.txt           sentences: each token known, none with nothing but a better form
    vocabulary.txt      the same for words of everyday life
    pairs.tsv           wrong word TAB right word TAB kind, see the head of that file
    declension_*.tsv    form TAB lemma TAB tags: the analysis exists, and the generation gives the form back

Of a pair of kind `proposal` only this much is seen here: the wrong word is unknown, the right one is known. Whether the
one is proposed for the other is the business of the tests that ask the library itself.

Prints one line for each row that fails. Exit status: 0 all hold, 1 some fail, 2 wrong usage.
"""
import glob
import os
import re
import subprocess
import sys

PUNCTUATION = set("!\"'()*+,-./:;=?[]_{}\u00a1\u00bf")
GROUP = re.compile(r"\[([a-z])=([^\]]*)\]")
LONGEST_RUN = {"eumorfo": 5, "zenbakiak": 7}


def flookup(network, words, inverse=False):
    """Maps each word to its list of results."""
    words = sorted(set(words))
    command = ["flookup"] + (["-i"] if inverse else []) + [network]
    text = subprocess.run(command, input="\n".join(words) + "\n", capture_output=True, text=True, check=True).stdout
    found = {word: [] for word in words}
    for line in text.split("\n"):
        fields = line.split("\t")
        if len(fields) > 1 and fields[1] != "+?":
            found[fields[0]].append(fields[1])
    return found


def lemma(analysis):
    return re.sub(r"<.*", "", GROUP.sub("", analysis))


def fits_case(token, analysis):
    """A name is read off a capital only, a symbol only as it is written."""
    if re.match("[a-z]", token) and (re.match("[A-Z]", analysis) or re.search("<(PIB|LIB|IZB)>", analysis)):
        return False
    return not re.search("<(SNB|SIG)>", analysis) or token.startswith(lemma(analysis))


def tokens(sentence):
    """(text, blank follows) of each token; the dot behind a digit goes, unless it ends the sentence."""
    result, word = [], ""

    def close(blank):
        nonlocal word
        if word:
            result.append([word, blank])
            word = ""

    for i, c in enumerate(sentence):
        following = sentence[i + 1:i + 2]
        last = i == len(sentence) - 1
        inner_dot = c == "." and word and not last and following != " " and following not in PUNCTUATION
        if c == " ":
            if word:
                close(True)
            else:
                result[-1][1] = True
        elif inner_dot:
            word += c
        elif c == "." and i > 0 and sentence[i - 1].isdigit() and not last:
            pass
        elif c in PUNCTUATION:
            close(False)
            result.append([c, False])
        else:
            word += c
    close(False)
    return result


class Networks:
    def __init__(self, outdir):
        self.path = {name: os.path.join(outdir, name + ".foma") for name in LONGEST_RUN}
        self.known = {name: {} for name in LONGEST_RUN}

    def read(self, words):
        """Looks words up in all networks at once, for `analyses`."""
        for name in LONGEST_RUN:
            new = {word.lower() for word in words} - self.known[name].keys()
            if new:
                self.known[name].update(flookup(self.path[name], new))

    def analyses(self, word, length=1):
        return [a for name, longest in LONGEST_RUN.items() if length <= longest
                for a in self.known[name][word.lower()] if fits_case(word, a)]

    def forms(self, analyses):
        return flookup(self.path["eumorfo"], analyses, inverse=True)


def run_text(run):
    return "".join(text + (" " if blank else "") for text, blank in run).rstrip(" ")


def rows(path, columns):
    for number, line in enumerate(open(path, encoding="utf-8"), 1):
        line = line.rstrip("\n")
        if line and not line.startswith("#"):
            fields = line.split("\t")
            if len(fields) != columns:
                sys.exit(f"{path}:{number}: {columns} columns wanted")
            yield f"{os.path.basename(path)}:{number}", fields


def check_sentences(path, networks):
    sentences = [(where, tokens(fields[0])) for where, fields in rows(path, 1)]
    runs = set()
    for _, sentence in sentences:
        for i in range(len(sentence)):
            runs.update(run_text(sentence[i:j]) for j in range(i + 1, min(i + 7, len(sentence)) + 1))
    networks.read(runs)
    for where, sentence in sentences:
        i = 0
        while i < len(sentence):
            for j in range(min(i + 7, len(sentence)), i, -1):
                text = run_text(sentence[i:j])
                found = networks.analyses(text, j - i)
                if found:
                    break
            if not found:
                yield f"{where}: unknown: {text}"
            elif all(GROUP.search(a) for a in found if "<Rare>" not in a):
                yield f"{where}: has a better form only: {text}: {found[0]}"
            i = j


def check_pairs(path, networks):
    pairs = list(rows(path, 3))
    networks.read([word for _, (wrong, right, _) in pairs for word in (wrong, right)])
    wanted = {}  # wrong word -> analyses of its better forms
    for _, (wrong, _, kind) in pairs:
        for analysis in networks.analyses(wrong):
            group = GROUP.search(analysis)
            tail = GROUP.sub("", analysis[analysis.find("<"):])
            for better in group.group(2).split("/") if group else []:
                wanted.setdefault(wrong, {}).setdefault(better + tail, better)
    forms = networks.forms([a for better in wanted.values() for a in better])
    for where, (wrong, right, kind) in pairs:
        found = [a for a in networks.analyses(wrong) if "<Rare>" not in a]
        if kind == "proposal":
            if found:
                yield f"{where}: {wrong} is known: {found[0]}"
            if not any("MAT" not in a for a in networks.analyses(right)):
                yield f"{where}: {right} is unknown"
            continue
        clean = [a for a in found if not GROUP.search(a)]
        letter = {"better": "h", "use": "e"}.get(kind)
        if clean:
            yield f"{where}: {wrong} has a right reading: {clean[0]}"
        elif not any(GROUP.search(a).group(1) == letter for a in found):
            yield f"{where}: {wrong} is not deviant in the way of `{kind}`"
        else:
            given = [form for a, better in wanted[wrong].items() for form in forms[a] or [better]]
            if right.lower() not in [form.lower() for form in given]:
                yield f"{where}: {wrong} gives {', '.join(sorted(set(given)))}, not {right}"


def check_tables(path, networks):
    table = list(rows(path, 3))
    networks.read([form for _, (form, _, _) in table])
    forms = networks.forms([lemma + tags for _, (_, lemma, tags) in table])
    for where, (form, lemma, tags) in table:
        if lemma + tags not in networks.analyses(form):
            yield f"{where}: {form} has no analysis {lemma + tags}"
        if form.lower() not in forms[lemma + tags]:
            yield f"{where}: {lemma + tags} gives {', '.join(forms[lemma + tags]) or 'nothing'}, not {form}"


def main():
    if len(sys.argv) < 2:
        print("usage: check_language.py OUTDIR [FILE...]", file=sys.stderr)
        return 2
    here = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tests", "language")
    paths = sys.argv[2:] or [os.path.join(here, "right.txt"), os.path.join(here, "vocabulary.txt"), os.path.join(here, "pairs.tsv")] + \
        sorted(glob.glob(os.path.join(here, "declension_*.tsv")))
    networks = Networks(sys.argv[1])
    failed = 0
    for path in paths:
        name = os.path.basename(path)
        check = check_sentences if name.endswith(".txt") else check_pairs if name.startswith("pairs") else check_tables
        total = sum(1 for line in open(path, encoding="utf-8") if line.strip() and not line.startswith("#"))
        problems = list(check(path, networks))
        print("\n".join(problems + [f"{name}: {total} rows, {len(problems)} problems"]))
        failed += len(problems)
    return 1 if failed else 0


sys.exit(main())
