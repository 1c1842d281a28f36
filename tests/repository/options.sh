#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
# options.sh PROGRAM SOURCE_DIR: an option of the program is in all places that list options: manual (synopsis, options,
# order of actions, rule for sudo), README, completion, a session of the bytes on the wire, the fault sweep and the
# measured bus costs.
set -eu
manual_page=$2/packaging/man/man1/kelvo.1
completion=$2/packaging/bash-completion/kelvo
help=$("$1" --help | sed -nE 's/^ +((-.), )?--([a-z0-9_]+)(=?).*/\2 --\3\4/p' | sort)
manual=$(sed -n '/^\.Sh OPTIONS/,/^\.Sh ORDER/p' "$manual_page" |
  sed -nE 's/^\.It //; s/\\&//g; s/^(Fl (.) .*, )?Fl -([a-z0-9_]+)( Ns (=))?.*/-\2 --\3\5/p' | sed 's/^- / /' | sort)
[ "$(wc -l <<<"$help")" -ge 17 ] || { echo "no options found in the help of $1"; exit 1; }
diff <(echo "$help") <(echo "$manual") || { echo "< $1 --help   > $manual_page"; exit 1; }

source "$completion"
complete_words() {  # the words of a command line; the last one is to be completed
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
  _kelvo
  printf '%s\n' "${COMPREPLY[@]}"
}
offered=$(complete_words kelvo - | sort)
diff <(tr " " "\n" <<<"$help" | grep . | sort) <(echo "$offered") || { echo "< $1 --help   > $completion"; exit 1; }

# After an option that takes an argument, the completion does not offer options.
while read -r short long; do
  after=$(complete_words kelvo "$short" -)
  [[ $long == *= && $after == *--help* || $long != *= && $after != *--help* ]] || continue
  echo "$completion: after $short it offers:" ${after:-nothing}
  exit 1
done < <(grep '^-' <<<"$help")

# Also when its letter ends a group of letters.
flags=$(sed -nE 's/^-(.) .*[^=]$/\1/p' <<<"$help" | grep '[a-z]')
for letter in $flags; do
  after=$(complete_words kelvo "-${letter}l" -)
  [ -z "$after" ] || { echo "$completion: after -${letter}l it offers:" $after; exit 1; }
done

# lists_all FILE EXCEPT: the letters on standard input are those of the program's options, except the letters EXCEPT.
letters=$(sed -nE 's/^-([a-z]) .*/\1/p' <<<"$help")
lists_all() {
  diff <(grep -v "[$2]" <<<"$letters") <(grep '[a-z]' | sort -u) || { echo "< options of $1   > $3"; exit 1; }
}
in_lines() { grep -oE -- ' "?-[a-z]\b' | tr -d ' "-'; }
section() { sed -n "/^\.Sh $1/,/^\.Sh/p" "$manual_page"; }
of_macros() { grep -oE '^\.(Op |Pq )?Fl [a-z ,]+' | sed -E 's/.*Fl //; s/ .*//' | grep -o .; }
section SYNOPSIS | of_macros | lists_all "$1" - "the synopsis of $manual_page"
section ORDER | grep -oE '^\.Pq Fl [a-z ,]+|^\.Fl .$' | sed 's/.*Fl//' | grep -o '[a-z]' |
  lists_all "$1" j "the order of actions in $manual_page"
sed -n 's/^| `\([^|]*\) |.*/ \1/p' "$2/README.md" | in_lines | lists_all "$1" j "the options in $2/README.md"
sed -n 's/^ *\\(ha//p' "$manual_page" | grep -o . | lists_all "$1" u "the rule for sudo in $manual_page"
sed -n '/lines\[\] = {/,/^};/p' "$2/tests/sweep/sweep.cpp" | in_lines | lists_all "$1" - "$2/tests/sweep/sweep.cpp"
# The shutdown sends nothing.
grep 'row("' "$2/bench/bus.cpp" | in_lines | lists_all "$1" k "$2/bench/bus.cpp"
grep -hoE '\$ (wire|boot) [^|]*' "$2/tests/sessions/wire.t" "$2/tests/sessions/boot.t" | in_lines |
  lists_all "$1" - "the sessions boot.t and wire.t"

# The index of a block is its place among the frequencies that a scan visits.
for case in 5B:1 10N:21 11D:29 12c:33 13F:40; do
  index=$(complete_words kelvo -f "${case%:*}")
  [ "$index" = "${case#*:}" ] || { echo "$completion: -f ${case%:*} is completed to '$index'"; exit 1; }
done

# A number is an index or the beginning of a block, in the order of the indexes; 5A, which cannot be tuned, is not offered.
offers() {  # TYPED OFFERED
  offered=$(complete_words kelvo -f "$1" | paste -sd ' ')
  [ "$offered" = "$2" ] || { echo "$completion: -f $1 offers '$offered'"; exit 1; }
}
offers 12 "12 (8A) 30 (12A) 31 (12N) 32 (12B) 33 (12C) 34 (12D)" "$completion"
offers 5 "1 (5B) 2 (5C) 3 (5D) 5 (6B)" "$completion"
[ "$(complete_words kelvo -f "" | sed -n '1p;$p' | paste -sd ' ')" = "1 (5B) 40 (13F)" ] || { echo "$completion: -f"; exit 1; }
