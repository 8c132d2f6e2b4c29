#!/bin/sh
# Compiles the lexicon: build.sh OUTDIR [-s FILE.lexc]...
#
# Writes OUTDIR/{eumorfo,hp,zenbakiak}.foma (binary, for flookup) and .att (UTF-8, AT&T text, upper side first).
# -s leaves out a source file of lexicon/, which is handy while somebody else is halfway through it.
# Whatever assemble.py or foma finds wrong ends the build with status 1.
set -eu
export LC_ALL=C.UTF-8

[ $# -ge 1 ] || { echo "usage: build.sh OUTDIR [-s FILE.lexc]..." >&2; exit 2; }
for tool in foma python3; do
    command -v $tool >/dev/null || { echo "build.sh: $tool is not installed" >&2; exit 2; }
done
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

# The finite verbs are generated from their paradigm description.
if [ -e "$here/finite/generate.py" ]; then python3 "$here/finite/generate.py" "$out/generated"; fi

sources=
for f in "$here"/*.lexc "$out"/generated/*.lexc; do
    [ -e "$f" ] || continue
    case $(basename "$f") in symbols.lexc | root.lexc) continue ;; esac
    case "$skip" in *" $(basename "$f") "*) continue ;; esac
    sources="$sources $f"
done
symbols="$here/symbols.lexc"
[ ! -e "$here/symbols.extra" ] || symbols="$symbols $here/symbols.extra"

compile() {  # compile NAME ROOT [SOURCE...]: writes NAME.foma and NAME.att
    name=$1 root=$2; shift 2
    rm -f "$out/$name".*
    python3 "$here/assemble.py" "$root" "$out" "$name" $symbols -- "$@" $sources
    [ "$name" != eumorfo ] || echo "source $here/names.foma" >>"$out/$name.script"
    cat >>"$out/$name.script" <<END
source $here/rules.foma
$([ "$name" != eumorfo ] || echo "source $here/quotes.foma")
print size
save stack $out/$name.foma
write att > $out/$name.att
END
    foma -q -f "$out/$name.script" >"$out/$name.log" 2>&1 || true
    if grep -Ei 'error|not defined|undefined|unknown|warning|full|syntax' "$out/$name.log" >&2 || [ ! -s "$out/$name.att" ]; then
        echo "build.sh: foma failed on $name; see $out/$name.log" >&2
        exit 1
    fi
    if awk -F'\t' '$4 ~ /^\^[A-Z0-9]$/ { bad = 1 } END { exit !bad }' "$out/$name.att"; then
        echo "build.sh: $name holds a mark that no rule resolved, such as ^1 behind a letter that it doesn't cut" >&2
        exit 1
    fi
    echo "$name: $(grep -E '[0-9] states' "$out/$name.log" | tail -1), $(wc -c <"$out/$name.att") bytes of AT&T text"
}

compile eumorfo "$here/root.lexc"
compile hp "$here/hp/root.lexc"
[ ! -e "$here/zenbakiak/root.lexc" ] || compile zenbakiak "$here/zenbakiak/root.lexc"
