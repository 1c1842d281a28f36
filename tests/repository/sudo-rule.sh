#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
# sudo-rule.sh MANUAL README: checks with sudo that its rule in the manual allows every command line of the README
# and of the manual except the scan, and no scan, however it is written. Exit status 77 (skipped) without sudo or root.
# Only this script's own processes see the rule: it is mounted over /etc/sudoers in a mount namespace. It names another
# program there, since sudo requires one that exists.
if [ "${3-}" != inside ]; then
  command -v sudo >/dev/null && [ "$(id -u)" = 0 ] && unshare -m true 2>/dev/null || exit 77
  exec unshare -m bash "$0" "$1" "$2" inside
fi
set -eu
rule=$(sed -n '/^anna ALL/{N;p;q}' "$1" | sed 's/^anna/nobody/; s/\\-/-/g; s/\\(ha/^/; s/\\e/\\/; s,/usr/bin/kelvo,/usr/bin/true,')
[ -n "$rule" ] || { echo "$1: no rule"; exit 1; }
file=$(mktemp)
trap 'rm -f "$file"' EXIT
echo "$rule" >"$file"
chmod 440 "$file"
visudo -cqf "$file"
mount --bind "$file" /etc/sudoers

status=0
allowed() { [ -n "$(sudo -n -l -U nobody /usr/bin/true "$@" 2>/dev/null)" ]; }
expect() {  # yes|no ARGUMENT...
  answer=no
  if allowed "${@:2}"; then answer=yes; fi
  [ "$answer" = "$1" ] || { echo "kelvo ${*:2}: allowed: $answer, expected: $1"; status=1; }
}

lines=0
while read -ra words; do
  case " ${words[*]} " in *" -u "*) wanted=no ;; *) wanted=yes ;; esac
  expect $wanted "${words[@]}"
  lines=$((lines + 1))
done < <(sed -nE 's/^(\.Dl )?sudo kelvo +([^#|<]*).*/\2/p' "$1" "$2")
[ "$lines" -ge 15 ] || { echo "only $lines command lines found"; status=1; }

expect yes -b D -f 33 -p -e 17333 -c 12 -l 20
expect yes -dj
for disguise in -u -du -ud -l20u --fu --full_scan "-l 20 -u" "-l 20u" "-d u" $'-d\n-u' $'-d\n' " -u" "-c 1 -u" "-b Du" -b=u \
  --f --fu=1 -fu33 "-d -- -u" "-?u" -Vu; do
  expect no "$disguise"
  expect no -d "$disguise"
  expect no "$disguise" -d
done
expect no -l 20 -u
expect no -l "20 -u"
expect no
exit $status
