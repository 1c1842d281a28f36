# SPDX-License-Identifier: GPL-3.0-or-later
# Included by the scripts and sessions that use the simulated board.

# clean_environment: removes the caller's settings of the programs.
clean_environment() { unset $(env | sed -n 's/^\(KELVO_[A-Z_]*\)=.*/\1/p') ARGP_HELP_FMT POSIXLY_CORRECT; }

# with_members MEMBERS: a broadcast from standard input, with further members before its own.
with_members() { printf '{%s' "$1"; sed '1s/^{/,/'; }
fixed_time='"time": {"year": 2026, "month": 3, "day": 7, "hour": 9, "minute": 5}'
