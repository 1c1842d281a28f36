#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""manual.py PAGE...: every message that a manual page lists is in the rendered page as it was written, and the page is
headed as one of this project. A word such as No is a macro: it disappears and takes others with it. Skipped without
mandoc."""
import pathlib
import re
import shutil
import subprocess
import sys

MARKUP = re.compile(r"^(Li|Ar|Pq|Po|Pc|Ns|Fl|Ev|Pa)$")


def plain(text):
    """Without blanks, brackets and escapes, which rendering changes."""
    return re.sub(r"[\s()]", "", text.replace(r"\&", "").replace(r"\-", "-").replace(r"\(dq", '"'))


if not shutil.which("mandoc"):
    sys.exit(77)
wrong = []
count = 0
for page in map(pathlib.Path, sys.argv[1:]):
    shown = subprocess.run(["mandoc", "-T", "ascii", "-O", "width=1000", page], check=True, capture_output=True, text=True)
    text = re.sub(r".\x08", "", shown.stdout)
    if not text.rstrip().splitlines()[-1].startswith("kelvo "):
        wrong.append(f"{page}: the last line does not name the project")
    for line in re.findall(r"^\.It ((?:Li|Ar) .*)", page.read_text(), re.M):
        count += 1
        message = " ".join(word for word in line.split() if not MARKUP.match(word))
        if plain(message) not in plain(text):
            wrong.append(f"{page}: not rendered as written: {message}")
print("\n".join(wrong) or f"{count} messages")
sys.exit(1 if wrong or count < 50 else 0)
