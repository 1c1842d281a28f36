#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
# options.sh PROGRAM MANUAL COMPLETION: the program's help, the manual and the completion have the same options, and
# agree on which of them take an argument.
set -eu
help=$("$1" --help | sed -nE 's/^ +((-.), )?--([a-z0-9_]+)(=?).*/\2 --\3\4/p' | sort)
manual=$(sed -n '/^\.Sh OPTIONS/,/^\.Sh ORDER/p' "$2" |
  sed -nE 's/^\.It //; s/\\&//g; s/^(Fl (.) .*, )?Fl -([a-z0-9_]+)( Ns (=))?.*/-\2 --\3\5/p' | sed 's/^- / /' | sort)
[ "$(wc -l <<<"$help")" -ge 17 ] || { echo "no options found in the help of $1"; exit 1; }
diff <(echo "$help") <(echo "$manual") || { echo "< $1 --help   > $2"; exit 1; }

source "$3"
complete_words() {  # the words of a command line; the last one is to be completed
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
  _kelvo
  printf '%s\n' "${COMPREPLY[@]}"
}
offered=$(complete_words kelvo - | sort)
diff <(tr " " "\n" <<<"$help" | grep . | sort) <(echo "$offered") || { echo "< $1 --help   > $3"; exit 1; }

# After an option that takes an argument, the completion does not offer options.
while read -r short long; do
  after=$(complete_words kelvo "$short" -)
  [[ $long == *= && $after == *--help* || $long != *= && $after != *--help* ]] || continue
  echo "$3: after $short it offers:" ${after:-nothing}
  exit 1
done < <(grep '^-' <<<"$help")

# The index of a block is its place among the frequencies that a scan visits.
for case in 5B:1 10N:21 11D:29 12c:33 13F:40; do
  index=$(complete_words kelvo -f "${case%:*}")
  [ "$index" = "${case#*:}" ] || { echo "$3: -f ${case%:*} is completed to '$index'"; exit 1; }
done

# A number is an index or the beginning of a block, in the order of the indexes; 5A, which cannot be tuned, is not offered.
offers() {  # TYPED OFFERED
  offered=$(complete_words kelvo -f "$1" | paste -sd ' ')
  [ "$offered" = "$2" ] || { echo "$3: -f $1 offers '$offered'"; exit 1; }
}
offers 12 "12 (8A) 30 (12A) 31 (12N) 32 (12B) 33 (12C) 34 (12D)" "$3"
offers 5 "1 (5B) 2 (5C) 3 (5D) 5 (6B)" "$3"
[ "$(complete_words kelvo -f "" | sed -n '1p;$p' | paste -sd ' ')" = "1 (5B) 40 (13F)" ] || { echo "$3: -f"; exit 1; }
