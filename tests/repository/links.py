#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""links.py FOLDER...: every relative link of the Markdown files below each folder leads to something that is there."""
import pathlib
import re
import subprocess
import sys

LINK = re.compile(r"\]\(([^)#\s]*)(?:#([^)\s]*))?\)")


def anchors(page):
    """The names of a page's headings, as they are made for links."""
    headings = re.findall(r"^#+ +(.*)$", page.read_text(), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).strip().replace(" ", "-") for heading in headings}


def pages(folder):
    if (folder / ".git").exists():
        names = subprocess.run(["git", "ls-files", "*.md"], cwd=folder, check=True, capture_output=True, text=True)
        return [folder / name for name in names.stdout.split()]
    return list(folder.rglob("*.md"))


broken = []
count = 0
for folder in map(pathlib.Path, sys.argv[1:]):
    for page in pages(folder):
        for target, anchor in LINK.findall(page.read_text()):
            if re.match(r"[a-z]+:", target):
                continue
            count += 1
            linked = page.parent / target if target else page
            if not linked.exists() or (anchor and anchor not in anchors(linked)):
                broken.append(f"{page}: {target}{'#' + anchor if anchor else ''}")
print("\n".join(broken) or f"{count} links")
sys.exit(1 if broken or not count else 0)
