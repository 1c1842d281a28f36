#!/bin/bash
# SPDX-License-Identifier: GPL-3.0-or-later
# over_kernel.sh CRAM SOURCE_DIR SESSION: runs a session of the simulated board with a kernel between board and program.
# over_kernel.sed adapts the expected text to the differences.
set -eu
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
mkdir -p "$work/tests/sessions"
ln -s "$2/docs" "$2/scripts" "$2/simulator" "$work"
ln -s "$2/tests/expected" "$work/tests"
cp "$2/tests/sessions/setup.sh" "$work/tests/sessions"
sed -f "$2/tests/sessions/over_kernel.sed" "$2/tests/sessions/$3.t" >"$work/tests/sessions/$3.t"
"$1" --shell=/bin/bash "$work/tests/sessions/$3.t"
