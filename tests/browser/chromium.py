# SPDX-License-Identifier: GPL-3.0-or-later
"""Headless Chromium, and what is checked of every page that it displays."""
import base64
import json
import os
import subprocess
import sys

SIZES = {"telephone": (360, 740), "desk": (1280, 800)}

# Lists what is wrong with the displayed page, one line each. The contrast of a text is that to its nearest background;
# 4.5 is the contrast ratio that WCAG asks for.
CHECK = """(() => {
  const wrong = [];
  const root = document.documentElement;
  if (document.body && root.scrollWidth > root.clientWidth) wrong.push(`${root.scrollWidth} px wide in ${root.clientWidth}`);
  const channels = color => (color.match(/[\\d.]+/g) || [0, 0, 0, 0]).map(Number);
  const luminance = color => channels(color).slice(0, 3).map(c => c / 255)
    .map(c => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4)
    .reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
  const background = element => {
    for (; element; element = element.parentElement) {
      const color = getComputedStyle(element).backgroundColor;
      if ((channels(color)[3] ?? 1) > 0) return color;
    }
    return 'rgb(255, 255, 255)';
  };
  const seen = document.createTreeWalker(root, NodeFilter.SHOW_TEXT);
  let texts = 0;
  for (let node; (node = seen.nextNode());) {
    const element = node.parentElement;
    if (!node.data.trim() || element.closest('style, script, title, desc, head, .words, [hidden]')) continue;
    if (element.closest(root.clientWidth < 640 ? '.long' : '.short')) continue;
    texts += 1;
    const style = getComputedStyle(element);
    const svg = element.localName == 'text';
    const badge = element.matches('.number') && element.previousElementSibling;
    const behind = badge ? getComputedStyle(badge).fill : background(element);
    const [a, b] = [luminance(svg ? style.fill : style.color), luminance(behind)];
    const contrast = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    const name = JSON.stringify(node.data.trim().slice(0, 40));
    if (contrast < 4.5) wrong.push(`contrast ${contrast.toFixed(1)} of ${name}`);
    const range = document.createRange();
    range.selectNodeContents(node);
    const box = range.getBoundingClientRect();
    if (box.width == 0 || box.height == 0 || style.visibility != 'visible') wrong.push(`${name} is not visible`);
    const limit = document.body ? root.clientWidth : root.getBoundingClientRect().right;
    if (!element.closest('.chart') && box.right > limit + 1) wrong.push(`${name} ends at ${box.right} of ${limit}`);
  }
  for (const level of document.querySelectorAll('.level')) {
    const length = level.getAttribute('width');
    const width = level.getBoundingClientRect().width;
    const whole = level.previousSibling.getBoundingClientRect().width;
    if (!(Math.abs(length.endsWith('%') ? 100 * width / whole - parseInt(length) : width - length) < 1))
      wrong.push(`a bar of ${length} is ${width} of ${whole}`);
  }
  const two = document.querySelector('.two');
  if (two && two.scrollWidth > two.parentElement.clientWidth) wrong.push('two places do not fit beside each other');
  for (const mark of document.querySelectorAll('.best .mark'))
    for (const text of mark.parentElement.querySelectorAll('text'))
      if (text.getBoundingClientRect().right > mark.getBoundingClientRect().right - 3)
        wrong.push(`${JSON.stringify(text.textContent)} touches the frame`);
  if (texts < 5) wrong.push(`${texts} texts only`);
  return wrong;
})()"""


class Chromium:
    """Chromium's DevTools protocol over its pipe: JSON messages that end with a zero byte."""

    def __init__(self, profile):
        to_browser, self.output = os.pipe()
        self.input, from_browser = os.pipe()

        def keep():  # the browser reads from 3 and writes to 4
            read, write = os.dup(to_browser), os.dup(from_browser)
            os.dup2(read, 3)
            os.dup2(write, 4)

        self.process = subprocess.Popen(
            ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
             "--disable-background-networking", "--disable-component-update", "--disable-sync", "--hide-scrollbars",
             f"--user-data-dir={profile}", "--remote-debugging-pipe", "about:blank"],
            preexec_fn=keep, close_fds=False, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.buffer, self.last, self.events, self.session = b"", 0, [], None

    def receive(self):
        while b"\0" not in self.buffer:
            data = os.read(self.input, 1 << 16)
            if not data:
                sys.exit("chromium has ended")
            self.buffer += data
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def close(self):
        self.process.terminate()
        self.process.wait()

    def call(self, method, **parameters):
        self.last += 1
        message = {"id": self.last, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        os.write(self.output, json.dumps(message).encode() + b"\0")
        while (answer := self.receive()).get("id") != self.last:
            self.events.append(answer)
        if "error" in answer:
            sys.exit(f"{method}: {answer['error']['message']}")
        return answer["result"]

    def wait_for(self, method):
        while not any(event.get("method") == method for event in self.events):
            self.events.append(self.receive())

    def open_tab(self):
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(f"{domain}.enable")

    def show_as(self, device, scheme, height=None):
        width, usual = SIZES[device]
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height or usual, deviceScaleFactor=1,
                  mobile=device == "telephone")
        features = {"prefers-color-scheme": scheme, "prefers-reduced-motion": "reduce"}
        self.call("Emulation.setEmulatedMedia", features=[{"name": name, "value": features[name]} for name in features])

    def load(self, url):
        self.events.clear()
        self.call("Page.navigate", url=url)
        self.wait_for("Page.loadEventFired")

    def evaluate(self, expression):
        return self.call("Runtime.evaluate", expression=expression, returnByValue=True)["result"].get("value")

    def check(self):
        """Returns what is wrong with the displayed page, as lines."""
        wrong = self.evaluate(CHECK)
        return ["no answer"] if wrong is None else wrong

    def save(self, file, **options):
        file.write_bytes(base64.b64decode(self.call("Page.captureScreenshot", **options)["data"]))

    def complaints(self, origin):
        """Returns the console's messages since the page was loaded, and requests to anything but `origin`."""
        wrong = []
        for event in self.events:
            method, parameters = event.get("method"), event.get("params", {})
            if method == "Network.requestWillBeSent" and not parameters["request"]["url"].startswith(origin):
                wrong.append(f"requests {parameters['request']['url']}")
            if method in ("Log.entryAdded", "Runtime.consoleAPICalled", "Runtime.exceptionThrown",
                          "Page.javascriptDialogOpening"):
                wrong.append(f"{method}: {json.dumps(parameters)[:200]}")
        return wrong
