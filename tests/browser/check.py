#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""check.py SCREENSHOTS FILE...: opens HTML and SVG files in headless Chromium, as on a telephone and on a desk, light
and dark, and checks them. Saves a screenshot of each. Exit status 1 if a check fails."""
import pathlib
import sys
import tempfile

from chromium import SIZES, Chromium


def check(browser, file, screenshots, device, scheme):
    """Returns what is wrong with `file`, as lines."""
    url = file.resolve().as_uri()
    browser.show_as(device, scheme)
    browser.load(url)
    wrong = browser.check()
    browser.save(screenshots / f"{file.name}-{device}-{scheme}.png", captureBeyondViewport=True)
    wrong += browser.complaints(url)
    return [f"{file.name}, {device}, {scheme}: {line}" for line in wrong]


def main():
    screenshots = pathlib.Path(sys.argv[1])
    screenshots.mkdir(parents=True, exist_ok=True)
    wrong = []
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        browser = Chromium(profile)
        try:
            browser.open_tab()
            for file in map(pathlib.Path, sys.argv[2:]):
                for device in SIZES:
                    for scheme in ("light", "dark"):
                        wrong += check(browser, file, screenshots, device, scheme)
        finally:
            browser.close()
    print("\n".join(wrong) or f"{len(sys.argv) - 2} files, nothing wrong; screenshots in {screenshots}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
