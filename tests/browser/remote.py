#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""remote.py KELVO-REMOTE-SIM BROADCASTS SCREENSHOTS: uses the page of kelvo-remote-sim in headless Chromium as a person
does who has a keyboard only, and checks it in both sizes, light and dark. Two stations of the default broadcast get
names that are markup and right-to-left text. Draws the picture for the README. Exit status 1 if a check fails."""
import json
import os
import pathlib
import re
import socket
import subprocess
import sys
import tempfile
import time
import urllib.request

from chromium import SIZES, Chromium

MARKUP, ARABIC = "<script>alert(1)", "راديو"
KEYS = {"Tab": 9, "Enter": 13, "End": 35, "ArrowLeft": 37}
NAMED = {"button", "link", "slider", "searchbox", "progressbar", "image", "table", "list", "region", "group"}

# What Tab should reach, in this order.
REACHABLE = """[...document.querySelectorAll('a[href], button, input')].filter(e => e.offsetParent)
  .map(e => e.id || e.textContent)"""
# The focused element, and what is wrong with it.
FOCUSED = """(() => {
  const element = document.activeElement;
  const box = element.getBoundingClientRect();
  const top = document.elementFromPoint(box.x + box.width / 2, box.y + box.height / 2);
  const wrong = [];
  if (box.width < 44 || box.height < 44) wrong.push(`is ${box.width} by ${box.height}`);
  if (!element.contains(top)) wrong.push('is covered');
  if (getComputedStyle(element).outlineStyle == 'none') wrong.push('has no outline');
  return {name: element == document.body ? '' : element.id || element.textContent, wrong};
})()"""


class Radio:
    """kelvo-remote-sim on a board of its own."""

    def __init__(self, program, broadcast, folder):
        with socket.socket() as probe:
            probe.bind(("127.0.0.1", 0))
            self.address = f"127.0.0.1:{probe.getsockname()[1]}"
        self.program, self.origin = [program, "--listen", self.address], f"http://{self.address}/"
        self.trace = folder / "trace.txt"
        (folder / "broadcast.json").write_text(json.dumps(broadcast))
        self.environment = {name: value for name, value in os.environ.items() if not name.startswith("KELVO_")} | {
            "STATE_DIRECTORY": str(folder), "KELVO_SIM_BROADCAST": str(folder / "broadcast.json"),
            "KELVO_SIM_STATE": str(folder / "board.json"), "KELVO_SIM_TRACE": str(self.trace)}

    def start(self, realtime=False):
        self.process = subprocess.Popen([*self.program, "--interval", "200"], stdout=subprocess.DEVNULL,
                                        env=self.environment | {"KELVO_SIM_REALTIME": str(int(realtime))})
        host, port = self.address.split(":")
        await_true(lambda: not socket.socket().connect_ex((host, int(port))), "the program listens")

    def stop(self):
        self.process.terminate()
        self.process.wait()

    def link(self):
        output = subprocess.run([*self.program, "--pair"], env=self.environment, stdout=subprocess.PIPE, text=True,
                                check=True)
        return re.search(rf"{self.origin}pair\?key=[0-9a-f]+", output.stdout)[0]

    def await_command(self, command, *data):
        """Waits until the chip has got the command; `data` are bytes of it."""
        line = f"spi {command} .*{' '.join(f'{byte:02x}' for byte in data)}"
        await_true(lambda: re.search(line, self.trace.read_text()), line)


def await_true(condition, what):
    end = time.monotonic() + 30
    while not condition():
        if time.monotonic() > end:
            sys.exit(f"remote.py: waits in vain: {what}")
        time.sleep(0.05)


class Person:
    """Looks at the page and presses keys."""

    def __init__(self, browser):
        self.browser = browser

    def awaits(self, expression):
        await_true(lambda: self.browser.evaluate(expression), expression)

    def sees(self, name, text):
        self.awaits(f"document.getElementById('{name}').textContent.includes({json.dumps(text)})")

    def presses(self, key):
        text = {"text": "\r"} if key == "Enter" else {}
        for kind in ("keyDown", "keyUp"):
            self.browser.call("Input.dispatchKeyEvent", type=kind, key=key, code=key,
                              windowsVirtualKeyCode=KEYS[key], **text)

    def goes_to(self, name):
        for _ in range(200):
            if name in self.browser.evaluate(FOCUSED)["name"]:
                return
            self.presses("Tab")
        sys.exit(f"remote.py: Tab does not reach {name}")

    def does(self, name):
        self.goes_to(name)
        self.presses("Enter")

    def plays(self, station):
        self.does(station)
        self.sees("playing", station)
        self.awaits(f"document.querySelector('[aria-current]').textContent.startsWith({json.dumps(station)})")

    def searches(self, text):
        self.goes_to("search")
        self.browser.evaluate("document.activeElement.select()")
        self.browser.call("Input.insertText", text=text)


def hostile(broadcasts):
    """The default broadcast with the names."""
    broadcast = json.loads((broadcasts / "default.json").read_text())
    services = next(e for e in broadcast["ensembles"] if e["index"] == 33)["lists"][0]["services"]
    services[3] |= {"label": MARKUP}
    services[4] |= {"label": ARABIC.encode().decode("latin-1"), "charset": 15}
    return broadcast


def cancel(radio, person):
    """The program was started in real time, so that there is something to cancel."""
    person.browser.load(radio.link())
    person.does("find")
    person.sees("step", "of 41")
    person.presses("Enter")
    person.awaits("document.activeElement.id == 'find' && stations.length == 0")
    person.browser.load("about:blank")


def use(radio, person):
    """From the link of --pair to a station, the volume, a stop, FM and back."""
    person.browser.load(radio.link())
    person.sees("hint", "every block")
    person.does("find")
    person.sees("list", "Radio Quellberg")
    person.searches("quellberg")
    person.plays("Radio Quellberg")
    radio.await_command("DAB_TUNE_FREQ", 0xB0, 0, 33)
    radio.await_command("START_DIGITAL_SERVICE", 0x81, 0, 0, 0, 0xB5, 0x43)
    person.goes_to("volume")
    person.presses("End")
    person.presses("ArrowLeft")
    radio.await_command("SET_PROPERTY", 0x13, 0, 0, 3, 62)
    person.sees("level", "62")
    person.does("stop")
    person.sees("playing", "Nothing plays")
    radio.await_command("STOP_DIGITAL_SERVICE", 0x82)
    person.does("boot-fm")
    person.sees("detail", "FM")
    person.does("seek-up")
    person.sees("playing", "88.20 MHz")
    person.searches("")
    for name in (MARKUP, ARABIC):
        person.plays(name)
    person.searches("quellberg")
    person.plays("Radio Quellberg")
    person.does("mark")
    person.sees("ranges", "2 now")
    person.does("tone")
    person.awaits("document.getElementById('tone').ariaPressed == 'true'")


def reconnect(radio, person):
    radio.stop()
    person.sees("connection", "lost")
    radio.start()
    person.awaits("!document.getElementById('connection').hasChildNodes() && sample")


def check(browser, person):
    """Returns what is wrong with the page as it is displayed, as lines."""
    wrong = browser.check()
    for node in browser.call("Accessibility.getFullAXTree")["nodes"]:
        role, name = node.get("role", {}).get("value"), node.get("name", {}).get("value")
        if not node["ignored"] and role in NAMED and not name:
            wrong.append(f"a {role} without a name")
    while browser.evaluate(FOCUSED)["name"]:  # behind the last element Tab leaves the page
        person.presses("Tab")
    for name in browser.evaluate(REACHABLE):
        person.presses("Tab")
        focused = browser.evaluate(FOCUSED)
        if focused["name"] != name:
            wrong.append(f"Tab reaches {focused['name']} before {name}")
        wrong += [f"{name} {what}" for what in focused["wrong"]]
    person.presses("Tab")
    browser.evaluate("document.activeElement.blur(); scrollTo(0, 0)")
    return wrong


def check_all(radio, browser, broadcasts, screenshots):
    person, wrong = Person(browser), []
    browser.show_as("telephone", "light")
    cancel(radio, person)
    radio.stop()
    radio.start()
    use(radio, person)
    if "--pair" not in refusal(radio.origin):
        wrong.append("the refusal does not say how to pair")
    for device in SIZES:
        for scheme in ("light", "dark"):
            browser.show_as(device, scheme)
            wrong += [f"{device}, {scheme}: {line}" for line in check(browser, person)]
            browser.save(screenshots / f"remote-{device}-{scheme}.png")
    wrong += browser.complaints(radio.origin)
    reconnect(radio, person)
    person.plays("Radio Quellberg")
    house = json.loads((broadcasts / "house.json").read_text())
    draw_picture(browser, person, house["ensembles"][0]["fading"], screenshots / "remote.png")
    return wrong


# Five minutes of a walk with the antenna pass at once: samples of each second, between the points of a table.
WALK = """(fading => {
  source.close();
  forget();
  const at = s => {
    const next = fading.find(point => point.at_s > s), last = fading[fading.indexOf(next) - 1];
    const share = (s - last.at_s) / (next.at_s - last.at_s);
    return name => Math.round(last[name] + share * (next[name] - last[name]));
  };
  const slower = 8, seconds = 300;
  for (let s = 0; s < seconds; ++s) {
    if (s == 110) mark();
    const value = at(s / slower);
    takeSample({...sample, rssi: value('rssi'), snr: value('snr'), fic_quality: value('fic_quality')});
    for (const point of [...points, ...marks]) point.at -= 1000;
  }
  drawHistory();
})"""


def draw_picture(browser, person, fading, file):
    """The page for the README."""
    browser.show_as("telephone", "light", height=880)
    person.does("tone")
    person.searches("quell")
    browser.evaluate(f"{WALK}({json.dumps(fading)}); document.activeElement.blur(); scrollTo(0, 0)")
    browser.save(file)


def refusal(url):
    try:
        return urllib.request.urlopen(url).read().decode()
    except urllib.error.HTTPError as error:
        return error.read().decode()


def main():
    program, broadcasts, screenshots = sys.argv[1], *map(pathlib.Path, sys.argv[2:])
    screenshots.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
        radio = Radio(program, hostile(broadcasts), pathlib.Path(folder))
        radio.start(realtime=True)
        browser = Chromium(f"{folder}/profile")
        try:
            browser.open_tab()
            wrong = check_all(radio, browser, broadcasts, screenshots)
        finally:
            browser.close()
            radio.stop()
    print("\n".join(wrong) or f"the page of kelvo-remote, nothing wrong; screenshots in {screenshots}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
