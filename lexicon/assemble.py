#!/usr/bin/env python3
"""Cuts the lexc sources of one network into parts that foma can read one by one.

    assemble.py ROOT OUTDIR NAME SYMBOLS... -- SOURCE...

foma's lexc reader runs out of stack on some 28,000 entries in one text, so each line of `LEXICON Root` becomes a text
of its own (a line that leads to a list of nothing but continuations is cut once more), with the lexicons that it
reaches and no others. Writes OUTDIR/NAME.<n>.lexc and OUTDIR/NAME.script, which reads them all and unites them.

Ends with status 1 and a message for each lexicon that is named and not defined, each one that is defined twice, each
tag that no Multichar_Symbols line declares (foma would cut it into letters), each bare 0 among letters (foma would
drop it), and each character that Latin-1 lacks. A word class of ROOT that no file
defines yet is left out.
"""
import os
import re
import sys

HEAD = re.compile(r"LEXICON\s+(\S+)")
ENTRY_END = re.compile(r"(?:^|\s)(\S+)\s*;\s*$")
TAG = re.compile(r"%<[^ <>%]*%>")
ENDING = re.compile(r"(\s*)((?:%<[^ <>%]*%>)+):(\S+)(\s.*)", re.S)
LETTER = re.compile(r"%.|\^.|.")


def strip_comment(line):
    """The line without its comment; `%!` is a literal exclamation mark."""
    return re.sub(r"(?<!%)!.*", "", line).rstrip("\n")


def read_lexicons(path, lexicons, problems):
    name = None
    for number, raw in enumerate(open(path, encoding="utf-8"), 1):
        line = strip_comment(raw)
        if not line.strip():
            continue
        where = f"{os.path.basename(path)}:{number}"
        head = HEAD.match(line)
        if head:
            name = head.group(1)
            if name in lexicons:
                problems.append(f"{where}: lexicon {name} is defined twice")
            lexicons[name] = []
            line = line[head.end():]
            if not line.strip():
                continue
        entry = ENTRY_END.search(line)
        if name is None or not entry:
            problems.append(f"{where}: not an entry: {line.strip()}")
            continue
        text = line[:entry.start(1)].strip()
        if any(len(side) > 1 and re.search(r"(?<!%)0", side) for side in re.split(r"(?<!%):", text)):
            problems.append(f"{where}: a zero among letters is empty in lexc; write %0: {line.strip()}")
        if any(ord(character) > 255 for character in line):
            problems.append(f"{where}: not in Latin-1: {line.strip()}")
        lexicons[name].append((line, entry.group(1), where))


def reachable(entries, lexicons):
    seen, queue = [], [target for _, target, _ in entries]
    while queue:
        name = queue.pop()
        if name == "#" or name in seen:
            continue
        seen.append(name)
        queue += [target for _, target, _ in lexicons[name]]
    return sorted(seen)


def is_bare(line):
    """True for a line that is a continuation and nothing else."""
    return len(line.split()) == 2 or re.fullmatch(r"\s*\S+;\s*", line)


def tags_last(line):
    """The entry of an ending with its tags against its last letters; foma would put them against the first ones.

    The generation ends a path of an elided noun with the last tag of its target: letters behind that tag would be lost.
    """
    parts = ENDING.fullmatch(line)
    if not parts:
        return line
    indent, tags, letters, rest = parts.groups()
    return indent + "0" * (len(LETTER.findall(letters)) - len(TAG.findall(tags))) + tags + ":" + letters + rest


def main():
    root, outdir, name = sys.argv[1:4]
    rest = sys.argv[4:]
    cut = rest.index("--")
    symbol_files, sources = rest[:cut], rest[cut + 1:]

    symbols = "".join(open(f, encoding="utf-8").read() + "\n" for f in symbol_files)
    declared = set(TAG.findall("\n".join(strip_comment(l) for l in symbols.split("\n"))))
    lexicons, problems = {}, []
    read_lexicons(root, lexicons, problems)
    for source in sources:
        read_lexicons(source, lexicons, problems)

    top = lexicons.pop("Root")
    skipped = [target for _, target, _ in top if target not in lexicons and target != "#"]
    top = [entry for entry in top if entry[1] not in skipped]
    if skipped:
        print(f"{name}: no file defines {', '.join(skipped)}")

    for entries in [top, *lexicons.values()]:
        for line, target, where in entries:
            if target != "#" and target not in lexicons:
                problems.append(f"{where}: lexicon {target} is not defined")
            for tag in TAG.findall(line):
                if tag not in declared:
                    problems.append(f"{where}: tag {tag.replace('%', '')} is not declared in symbols.lexc or symbols.extra")
    if problems:
        sys.exit("\n".join(sorted(set(problems))))

    parts = []
    for entry in top:
        below = lexicons.get(entry[1], [])
        if is_bare(entry[0]) and all(target[0].isupper() and len(line.split()) <= 3 for line, target, _ in below) \
                and len(below) < 20:
            parts += [[e] for e in below]
        else:
            parts.append([entry])

    script = []
    for i, part in enumerate(parts):
        path = os.path.join(outdir, f"{name}.{i}.lexc")
        with open(path, "w", encoding="utf-8") as out:
            out.write(symbols + "\nLEXICON Root\n" + "".join(e[0] + "\n" for e in part))
            for lexicon in reachable(part, lexicons):
                out.write(f"\nLEXICON {lexicon}\n" + "".join(tags_last(e[0]) + "\n" for e in lexicons[lexicon]))
        script.append(f"read lexc {path}\ndefine Part{i}\n")
    script.append("regex " + " | ".join(f"Part{i}" for i in range(len(parts))) + " ;\ndefine Lexicon\n")
    with open(os.path.join(outdir, f"{name}.script"), "w", encoding="utf-8") as out:
        out.writelines(script)


main()
