#!/bin/sh
# Compiles the lexicon: build.sh OUTDIR [-s FILE.lexc]...
#
# Writes OUTDIR/eumorfo.foma (binary, for flookup) and OUTDIR/{eumorfo,hp,zenbakiak}.att (UTF-8, AT&T text, upper side
# first). -s leaves out a source file of lexicon/, which is handy while somebody else is halfway through it.
# Any error or warning of foma that tells of a broken lexicon ends the build with status 1.
set -eu
export LC_ALL=C.UTF-8

[ $# -ge 1 ] || { echo "usage: build.sh OUTDIR [-s FILE.lexc]..." >&2; exit 2; }
command -v foma >/dev/null || { echo "build.sh: foma is not installed" >&2; exit 2; }
out=$1; shift
skip=" "
while [ $# -gt 0 ]; do
    case $1 in
    -s) skip="$skip$2 "; shift 2 ;;
    *) echo "build.sh: unknown argument $1" >&2; exit 2 ;;
    esac
done
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$out"
out=$(cd "$out" && pwd)

# Word classes of root.lexc and endings that hp takes from the verbs; one that no file defines gets an empty lexicon.
expected="Nouns Adjectives Adverbs PersonNames PlaceNames OtherNames Determiners Pronouns Numerals VerbsNonfinite
VerbsFinite Connectives Interjections Postpositions Abbreviations Acronyms Symbols Multiword Deviant
ADIZE_DEK PART_DEK_V PART_DEK_N PART_DEK_L ADOIN_DEK"

# The finite verbs are generated from their paradigm description.
if [ -x "$here/verbs/generate.sh" ]; then "$here/verbs/generate.sh" "$out"; fi

sources() {  # source files of the main network but symbols and root, in a fixed order
    for f in "$here"/*.lexc "$out"/generated/*.lexc; do
        [ -e "$f" ] || continue
        case "$skip" in *" $(basename "$f") "*) continue ;; esac
        case $(basename "$f") in symbols.lexc | root.lexc) ;; *) echo "$f" ;; esac
    done
}

assemble() {  # assemble ROOTFILE FILE... : one lexc text
    cat "$here/symbols.lexc"
    [ ! -e "$here/symbols.extra" ] || cat "$here/symbols.extra"
    for f in "$@"; do printf '\n'; cat "$f"; done
    for name in $expected; do
        cat "$@" | grep -Eq "^LEXICON[[:space:]]+$name([[:space:]]|\$)" || printf '\nLEXICON %s\n' "$name"
    done
}

undeclared() {  # tags that a source uses and no Multichar_Symbols line declares; foma would cut them into letters
    cat "$here/symbols.lexc" "$here"/symbols.extr[a] 2>/dev/null | sed 's/!.*//' | grep -o '%<[^ <>]*%>' | sort -u >"$out/declared"
    for f in "$@"; do
        sed 's/^!.*//; s/[[:space:]]!.*//' "$f" | grep -o '%<[^ <>%]*%>' | sort -u | comm -13 "$out/declared" - |
            sed "s|^|$(basename "$f"): undeclared tag |"
    done
}

compile() {  # compile NAME: NAME.lexc -> NAME.foma, NAME.att
    cat >"$out/$1.script" <<END
read lexc $out/$1.lexc
define Lexicon
source $here/rules.foma
print size
save stack $out/$1.foma
write att > $out/$1.att
END
    rm -f "$out/$1.foma" "$out/$1.att"
    foma -q -f "$out/$1.script" >"$out/$1.log" 2>&1 || true
    if grep -Ei 'error|not defined|undefined|unknown|warning' "$out/$1.log" | grep -Ev 'defined but not used' >&2 ||
        [ ! -s "$out/$1.att" ]; then
        echo "build.sh: $1 failed; see $out/$1.log" >&2
        exit 1
    fi
    echo "$1: $(grep -E 'states' "$out/$1.log" | tail -1), $(wc -c <"$out/$1.att") bytes of AT&T text"
}

missing=$(undeclared $(sources))
if [ -n "$missing" ]; then
    echo "$missing" >&2
    echo "build.sh: declare these in symbols.lexc or symbols.extra" >&2
    exit 1
fi

assemble "$here/root.lexc" $(sources) >"$out/eumorfo.lexc"
compile eumorfo
assemble "$here/hp/root.lexc" $(sources) >"$out/hp.lexc"
compile hp
if [ -e "$here/zenbakiak/root.lexc" ]; then
    assemble "$here/zenbakiak/root.lexc" $(sources) >"$out/zenbakiak.lexc"
    compile zenbakiak
fi
