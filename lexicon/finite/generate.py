#!/usr/bin/env python3
"""Writes verbs_finite.lexc, the finite verb forms, out of the stems in paradigms.txt.

usage: generate.py OUTDIR

A form is a row of morphs: stem, dative, -ke, plural of zuek, ergative. Two shapes come out of it: the free one (dut)
and the one that stands before -n, -la and their kin (duda-). What follows the verb is in verbs_suffixes.lexc.
"""

import os
import re
import sys

PERSONS = ["NI", "HI", "HURA", "GU", "ZU", "ZUEK", "HAIEK"]
PERSON_CLASS = {"NI": 1, "GU": 1, "HI": 2, "ZU": 2, "ZUEK": 2, "HURA": 3, "HAIEK": 3}

# Ending (free shape, shape before a suffix) of the dative and of the ergative; hi has two genders.
NI_ENDINGS = [("NI", "", "t", "da"), ("HI", "TOKA", "k", "a"), ("HI", "NOKA", "n", "na"), ("HURA", "", "o", "o"),
              ("GU", "", "gu", "gu"), ("ZU", "", "zu", "zu"), ("ZUEK", "", "zue", "zue"), ("HAIEK", "", "e", "e")]
NK_ENDINGS = [("NI", "", "t", "da"), ("HI", "TOKA", "k", "a"), ("HI", "NOKA", "n", "na"), ("HURA", "", "", ""),
              ("GU", "", "gu", "gu"), ("ZU", "", "zu", "zu"), ("ZUEK", "", "zue", "zue"), ("HAIEK", "", "te", "te")]
# Ergative as a prefix of the past, and whether -te follows.
NK_PREFIXES = [("NI", "n", False), ("HI", "h", False), ("HURA", "z", False), ("GU", "gen", False), ("ZU", "zen", False),
               ("ZUEK", "zen", True), ("HAIEK", "z", True)]

KE = {"A2", "A4", "B4", "B5", "B7", "B8"}
FINAL_N = {"A3", "B1", "B3", "B5", "B8"}
UNREAL = {"B2", "B4", "B6", "B7"}  # third person l-
ONLY_BA = {"B2", "B6"}             # the condition, which never stands without ba-
SUBJUNCTIVE = {"A3", "B3"}


class Form:
    """A finite form: tags, and its shapes. Allocutive forms, which stand in main clauses only, have no bound one."""

    def __init__(self, lemma, category, tense, agreement, free, bound):
        self.lemma, self.category, self.tense, self.agreement = lemma, category, tense, agreement
        self.free, self.bound = free, bound

    def tags(self):
        return [self.category, self.tense] + self.agreement


class Verb:
    def __init__(self, lemma, category, options):
        self.lemma, self.category = lemma, category
        self.link = "link=e" in options
        self.nohi = "nohi" in options


class Stem:
    """A stem as the description writes it: 'zaitu*+te', 'da|de', '-'."""

    def __init__(self, text):
        self.te = text.endswith("+te")
        text = text[:-3] if self.te else text
        self.star = text.endswith("*")
        text = text[:-1] if self.star else text
        self.free, _, self.bound = text.partition("|")

    def missing(self):
        return self.free == "-"


def linked(text, link):
    """`text` as it stands before -n and -la."""
    if text.endswith("r"):
        return text + "re"
    if text[-1] not in "aeiou":
        return text + "e"
    return text + "e" if link and text[-1] != "e" else text


def dative_on(stem, ending):
    """-o and -e keep their -i- behind -a: dieza + io, daki + o."""
    return "i" + ending if stem.endswith("a") and ending in ("o", "e") else ending


def compose(verb, tense, stem_text, stem, dative, ergative, te_last):
    """Free and bound shape. `dative`, `ergative`: (free, bound) endings or None."""
    morphs = [(stem_text, stem.bound or stem_text)]
    pending_z = stem.star

    def add(free, bound):
        nonlocal pending_z
        if pending_z and free in ("te", "ke"):
            free, bound = "z" + free, "z" + bound
            pending_z = False
        morphs.append((free, bound))

    if dative:
        add(dative_on(stem_text, dative[0]), dative_on(stem_text, dative[1]))
    if tense in KE:
        add("ke", "ke")
    if stem.te:
        add("te", "te")
    if ergative and ergative[0]:
        add(*ergative)
    if te_last:
        add("te", "te")
    inner = "".join(bound for _, bound in morphs[:-1])
    free = inner + morphs[-1][0]
    if len(morphs) == 1 and stem.bound:
        bound = stem.bound
    elif len(morphs) == 1:
        bound = linked(stem_text, verb.link)
    elif morphs[-1][0] in ("ke", "zke"):
        bound = inner + morphs[-1][1] + "e"
    else:
        bound = inner + morphs[-1][1]
    return (bound + "n" if tense in FINAL_N else free), bound


def third_unreal(text, tense, third):
    return "l" + text[1:] if third and tense in UNREAL and text.startswith("z") else text


def clash(first, second):
    """Two arguments of the same first or second person go with a reflexive, not with agreement."""
    return PERSON_CLASS[first] == PERSON_CLASS[second] != 3


def gender(*names):
    return [n for n in names if n]


def forms_nr(verb, tense, stems):
    for person, stem in zip(PERSONS, stems):
        if stem.missing():
            continue
        text = third_unreal(stem.free, tense, person in ("HURA", "HAIEK"))
        free, bound = compose(verb, tense, text, stem, None, None, False)
        yield Form(verb.lemma, verb.category, tense, ["NR_" + person], free, bound)


def forms_nr_ni(verb, tense, stems):
    for person, stem in zip(PERSONS, stems):
        if stem.missing():
            continue
        text = third_unreal(stem.free, tense, person in ("HURA", "HAIEK"))
        for to, hika, free_end, bound_end in NI_ENDINGS:
            if clash(person, to):
                continue
            free, bound = compose(verb, tense, text, stem, (free_end, bound_end), None, False)
            yield Form(verb.lemma, verb.category, tense, ["NR_" + person, "NI_" + to] + gender(hika), free, bound)


def imperative_subjects(stem_text):
    """Ergative endings of the imperative and the stem for each: the third person takes b-."""
    for by, hika, free_end, bound_end in NK_ENDINGS:
        if by in ("HI", "ZU", "ZUEK"):
            yield by, hika, free_end, bound_end, stem_text
        if by in ("HURA", "HAIEK"):
            yield by, hika, free_end, bound_end, "b" + stem_text


def forms_nr_nk(verb, tense, stems):
    for person, stem in zip(PERSONS, stems):
        if stem.missing():
            continue
        subjects = [(b, h, f, e, stem.free) for b, h, f, e in NK_ENDINGS]
        if tense == "C":
            subjects = imperative_subjects(stem.free)
        for by, hika, free_end, bound_end, text in subjects:
            if clash(person, by) or (verb.nohi and by == "HI"):
                continue
            if tense == "C" and person in ("NI", "GU") and by in ("HURA", "HAIEK"):
                continue
            free, bound = compose(verb, tense, text, stem, None, (free_end, bound_end), False)
            yield Form(verb.lemma, verb.category, tense, ["NR_" + person, "NK_" + by] + gender(hika), free, bound)


def forms_pfx_nk(verb, tense, stems):
    for person, stem in zip(["HURA", "HAIEK"], stems):
        if stem.missing():
            continue
        for by, prefix, te in NK_PREFIXES:
            text = third_unreal(prefix + stem.free, tense, by in ("HURA", "HAIEK"))
            free, bound = compose(verb, tense, text, stem, None, None, te)
            yield Form(verb.lemma, verb.category, tense, ["NR_" + person, "NK_" + by], free, bound)


def forms_nr_ni_nk(verb, tense, stems):
    for person, stem in zip(["HURA", "HAIEK"], stems):
        if stem.missing():
            continue
        subjects = [(b, h, f, e, stem.free) for b, h, f, e in NK_ENDINGS]
        if tense == "C":
            subjects = list(imperative_subjects(stem.free))
        for to, to_hika, to_free, to_bound in NI_ENDINGS:
            for by, by_hika, by_free, by_bound, text in subjects:
                if clash(to, by):
                    continue
                free, bound = compose(verb, tense, text, stem, (to_free, to_bound), (by_free, by_bound), False)
                agreement = ["NR_" + person, "NI_" + to] + gender(to_hika) + ["NK_" + by] + gender(by_hika)
                yield Form(verb.lemma, verb.category, tense, agreement, free, bound)


def forms_pfx_ni_nk(verb, tense, stems):
    for person, stem in zip(["HURA", "HAIEK"], stems):
        if stem.missing():
            continue
        for to, hika, to_free, to_bound in NI_ENDINGS:
            for by, prefix, te in NK_PREFIXES:
                if clash(to, by):
                    continue
                text = third_unreal(prefix + stem.free, tense, by in ("HURA", "HAIEK"))
                free, bound = compose(verb, tense, text, stem, (to_free, to_bound), None, te)
                agreement = ["NR_" + person, "NI_" + to] + gender(hika) + ["NK_" + by]
                yield Form(verb.lemma, verb.category, tense, agreement, free, bound)


def hika(verb, tense, agreement, before, after):
    """The two allocutive forms of a word: the mark of the hearer stands between `before` and `after`; -a-, -na- inside
    the word, -k, -n at its end. The past ends in -n behind the mark."""
    for gender_tag, inner, final in (("TOKA", "a", "k"), ("NOKA", "na", "n")):
        if tense in FINAL_N:
            text = before + inner + after + "n"
        else:
            text = before + (inner + after if after else final)
        yield Form(verb.lemma, verb.category, tense, agreement + ["ALOK", gender_tag], text, "")


def forms_hika_nr(verb, tense, stems):
    """dago -> zagok; consonants take -e-: zatorrek."""
    for person, stem in zip(PERSONS, stems):
        if not stem.missing():
            text = stem.free + "ke" if tense in KE else linked(stem.free, False)
            yield from hika(verb, tense, ["NR_" + person], text, "")


def forms_hika_nr_ni(verb, tense, stems):
    """zaio -> zaiok, zait -> zaidak."""
    for person, stem in zip(PERSONS, stems):
        if stem.missing():
            continue
        for to, gender_tag, _, bound_end in NI_ENDINGS:
            if to in ("NI", "HURA", "GU", "HAIEK") and not clash(person, to):
                ke = "ke" if tense in KE else ""
                text = third_unreal(stem.free, tense, person in ("HURA", "HAIEK"))
                yield from hika(verb, tense, ["NR_" + person, "NI_" + to], text + dative_on(text, bound_end) + ke, "")


# Ergative of allocutive forms: ending behind the mark in the present, -te- in front of it for haiek; prefix in the past.
HIKA_SUBJECTS = [("NI", "n", "", "t"), ("HURA", "z", "", ""), ("GU", "gen", "", "gu"), ("HAIEK", "z", "te", "")]


def hika_nk(verb, tense, agreement, stem, stem_text):
    for by, prefix, te, ending in HIKA_SUBJECTS:
        if any(clash(a.split("_")[1], by) for a in agreement):
            continue
        past = tense[0] == "B"
        tail = ("ke" if tense in KE else "") + te
        body = stem_text + ("z" if stem.star else "") + tail if tail else linked(stem_text, False)
        text = third_unreal(prefix + body, tense, by in ("HURA", "HAIEK")) if past else body
        yield from hika(verb, tense, agreement + ["NK_" + by], text, "" if past else ending)


def forms_hika_nk(verb, tense, stems):
    """dut -> diat, du -> dik, dute -> ditek; nuen -> nian; luke -> likek."""
    for person, stem in zip(["HURA", "HAIEK"], stems):
        if not stem.missing():
            yield from hika_nk(verb, tense, ["NR_" + person], stem, stem.free)


def forms_hika_nr_nk(verb, tense, stems):
    """nau -> naik, naute -> naitek, gaituzte -> gaitiztek: a first person as absolutive, which is the prefix."""
    for person, stem in zip(PERSONS, stems):
        if stem.missing():
            continue
        for by, te in (("HURA", ""), ("HAIEK", "te")):
            tail = ("ke" if tense in KE else "") + te
            text = stem.free + ("z" if tail and stem.star else "") + tail
            yield from hika(verb, tense, ["NR_" + person, "NK_" + by], text, "")


def forms_hika_ni_nk(verb, tense, stems):
    """diot -> zioat, dio -> ziok, dit -> zidak."""
    for person, stem in zip(["HURA", "HAIEK"], stems):
        for to, _, _, bound_end in NI_ENDINGS:
            if to in ("NI", "HURA", "GU", "HAIEK") and not stem.missing():
                text = stem.free + dative_on(stem.free, bound_end)
                yield from hika_nk(verb, tense, ["NR_" + person, "NI_" + to], stem, text)


BUILDERS = {"HIKA-NR": forms_hika_nr, "HIKA-NR-NI": forms_hika_nr_ni, "HIKA-NK": forms_hika_nk,
            "HIKA-NR-NK": forms_hika_nr_nk,
            "HIKA-NI-NK": forms_hika_ni_nk, "NR": forms_nr, "NR-NI": forms_nr_ni, "NR-NK": forms_nr_nk, "PFX-NK": forms_pfx_nk,
            "NR-NI-NK": forms_nr_ni_nk, "PFX-NI-NK": forms_pfx_ni_nk}


def filtered(forms, options):
    """Carries out the options of a line: ni=P, only=P, no3, no-ken."""
    for form in forms:
        by = next((a[3:] for a in form.agreement if a.startswith("NK_")), "")
        if "ni" in options:
            if clash(options["ni"], by):
                continue
            form.agreement.insert(1, "NI_" + options["ni"])
        if "only" in options and by != options["only"]:
            continue
        if "no-ken" in options and form.free.endswith("ken"):
            continue
        if "no3" in options and by in ("HURA", "HAIEK"):
            continue
        yield form


def read_paradigms(path):
    """All forms that the description gives, in its order."""
    forms, verb = [], None
    with open(path, encoding="utf-8") as lines:
        for number, line in enumerate(lines, 1):
            line = line.split("#")[0].strip()
            if not line:
                continue
            head, colon, tail = line.partition(":")
            words = head.split()
            if not colon:
                verb = Verb(words[0], words[1], words[2:])
            elif verb and words[0] in BUILDERS:
                stems = [Stem(text) for text in tail.split()]
                options = dict(w.partition("=")[::2] for w in words[1:] if not re.fullmatch("[ABC][0-9]?", w))
                for tense in words[1:]:
                    if re.fullmatch("[ABC][0-9]?", tense):
                        forms.extend(filtered(BUILDERS[words[0]](verb, tense, stems), options))
            else:
                sys.exit(f"{path}:{number}: can't read: {line}")
    return forms


def entry(upper, lower, target):
    return f"{upper}:{lower} {target} ;"


def tags_text(form):
    return "".join(f"%<{t}%>" for t in form.tags())


def lexicons(forms):
    """LEXICON name -> lines. ba- and bait- lead back into the lexicons of plain forms; ^B stands where bait- melts with
    the first consonant of the form."""
    out = {"VerbsFinite": [" FinFree ;", " FinBound ;", " FinOther ;", " FinHika ;", " FinOdd ;",
                           "ba%<AUR%>%<PRT%>:ba FinHika ;",
                           "ba%<AUR%>%<PRT%>:ba FinFree ;", "ba%<AUR%>%<PRT%>:ba FinBound ;",
                           "ba%<AUR%>%<MEN%>%<BALD%>:ba FinFree ;", "ba%<AUR%>%<MEN%>%<BALD%>:ba FinCondition ;",
                           "bait%<AUR%>%<MEN%>%<KAUS%>:bait^B FinFree ;"],
           "FinFree": [], "FinBound": [], "FinOther": [], "FinHika": [], "FinCondition": []}
    for form in forms:
        upper = form.lemma + tags_text(form)
        if not form.bound:
            out["FinHika"].append(entry(upper, form.free, "#"))
        elif form.tense in ONLY_BA:
            out["FinCondition"].append(entry(upper, form.free, "#"))
        elif form.tense == "C":
            out["FinOther"].append(entry(upper, form.free, "#"))
        elif form.tense in SUBJUNCTIVE:
            out["FinOther"].append(entry(upper, form.free, "#"))
            out["FinOther"].append(entry(upper, form.bound, "FIN_SUBJ"))
        else:
            out["FinFree"].append(entry(upper, form.free, "#"))
            out["FinBound"].append(entry(upper, form.bound, "FIN_MEN"))
    return out


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__.split("\n\n")[1])
    here = os.path.dirname(os.path.abspath(__file__))
    forms = read_paradigms(os.path.join(here, "paradigms.txt"))
    os.makedirs(sys.argv[1], exist_ok=True)
    path = os.path.join(sys.argv[1], "verbs_finite.lexc")
    with open(path, "w", encoding="utf-8") as out:
        out.write("! Generated by finite/generate.py; don't edit.\n")
        for name, lines in lexicons(forms).items():
            out.write(f"\nLEXICON {name}\n" + "\n".join(dict.fromkeys(lines)) + "\n")


if __name__ == "__main__":
    main()
