#!/usr/bin/env python3
"""Compares the tags that the lexicon declares with docs/tagset_ud.tsv.

    check_tagset.py [NETWORK.foma...]
    check_tagset.py --tables

Fails if a declared tag has no row, a row no declared tag, a row not five fields, or docs/tagset.md other tables than
the rows give. With compiled networks each example must have an analysis with the tag of its row. --tables writes the
tables of docs/tagset.md to standard output.
"""
import os
import re
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
DOCS = os.path.join(HERE, "..", "docs")
UPOS = set("ADJ ADP ADV AUX CCONJ DET INTJ NOUN NUM PART PRON PROPN PUNCT SCONJ SYM VERB X _".split())
FEATS = re.compile(r"_|[A-Z][A-Za-z]*(\[[a-z]+\])?=[A-Z0-9][A-Za-z0-9]*(\|[A-Z][A-Za-z]*(\[[a-z]+\])?=[A-Z0-9][A-Za-z0-9]*)*")


def declared_tags():
    tags = set()
    for name in ("symbols.lexc", "symbols.extra"):
        path = os.path.join(HERE, name)
        if os.path.exists(path):
            for line in open(path, encoding="utf-8"):
                tags.update(re.findall(r"%<([^ <>%]+)%>", re.sub(r"(?<!%)!.*", "", line)))
    return {tag for tag in tags if not re.fullmatch(r"hp\d+", tag)}


def rows():
    for line in open(os.path.join(DOCS, "tagset_ud.tsv"), encoding="utf-8"):
        if not line.startswith("# "):
            yield line.rstrip("\n").split("\t")


def tables():
    text = ""
    for line in open(os.path.join(DOCS, "tagset_ud.tsv"), encoding="utf-8"):
        cells = line.rstrip("\n").split("\t")
        if len(cells) == 5 and not line.startswith("# "):
            example = "" if cells[4] == "_" else cells[4]
            text += f"| `<{cells[0]}>` | {cells[3]} | {example} |\n"
        elif len(cells) == 1 and not line.rstrip().endswith((".", ";")):
            text += f"\n### {line[2:]}\n| tag | meaning | example |\n|---|---|---|\n"
    return text


def analyses(forms, networks):
    found = {form: [] for form in forms}
    for network in networks:
        text = "".join(form.lower() + "\n" for form in forms)
        lines = subprocess.run(["flookup", network], input=text, capture_output=True, text=True, check=True).stdout
        by_lower = {}
        for line in lines.split("\n"):
            cells = line.split("\t")
            if len(cells) > 1 and cells[1] != "+?":
                by_lower.setdefault(cells[0], []).append(cells[1])
        for form in forms:
            found[form] += by_lower.get(form.lower(), [])
    return found


def main():
    if sys.argv[1:] == ["--tables"]:
        print(tables(), end="")
        return
    problems = []
    declared = declared_tags()
    table = list(rows())
    for row in table:
        if len(row) != 5 or not all(row):
            problems.append(f"row without five fields: {row}")
        elif row[1] not in UPOS or not FEATS.fullmatch(row[2]):
            problems.append(f"{row[0]}: no such UPOS or features: {row[1]} {row[2]}")
    table = [row for row in table if len(row) == 5]
    listed = [row[0] for row in table]
    problems += [f"{tag}: no row in docs/tagset_ud.tsv" for tag in sorted(declared - set(listed))]
    problems += [f"{tag}: a row, but not declared" for tag in sorted(set(listed) - declared)]
    problems += [f"{tag}: two rows" for tag in sorted({t for t in listed if listed.count(t) > 1})]
    if tables() not in open(os.path.join(DOCS, "tagset.md"), encoding="utf-8").read():
        problems.append("docs/tagset.md: its tables differ from docs/tagset_ud.tsv")

    networks = sys.argv[1:]
    for network in networks:
        if not os.path.exists(network):
            sys.exit(f"check_tagset.py: no file {network}")
    if networks:
        examples = [row for row in table if row[4] != "_"]
        found = analyses(sorted({row[4] for row in examples}), networks)
        for row in examples:
            if not any(f"<{row[0]}>" in analysis for analysis in found[row[4]]):
                problems.append(f"{row[0]}: its example {row[4]} has no analysis with it")
    if problems:
        sys.exit("\n".join(problems))
    print(f"{len(listed)} tags, each with a row" + (" and a working example" if networks else ""))


main()
