"""A headless Chromium, driven over WebDriver's own protocol, and a server whose connection can be
lost."""

import base64
import contextlib
import functools
import http.server
import json
import pathlib
import re
import subprocess
import tempfile
import threading
import time
import urllib.request

FLAGS = ("--headless=new --no-sandbox --disable-gpu --disable-quic --no-first-run "
         "--disable-background-networking --disable-component-update --disable-sync "
         "--use-angle=swiftshader --enable-unsafe-swiftshader --mute-audio "
         "--autoplay-policy=user-gesture-required").split()
KEYS = {"Escape": "\ue00c", "Enter": "\ue007", "Backspace": "\ue003", "F1": "\ue031", "F8": "\ue038"}


class Browser:
    """Keeps its profile in `profile`, so that the next one there finds what this one has stored."""

    def __init__(self, profile, size=(1280, 800)):
        self.downloads = tempfile.mkdtemp(prefix="downloads", dir=profile)
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        for line in self.driver.stdout:
            port = re.search(r"started successfully on port (\d+)", line)
            if port:
                break
        self.root = f"http://127.0.0.1:{port.group(1)}/session"
        flags = [*FLAGS, f"--user-data-dir={profile}/chromium", f"--window-size={size[0]},{size[1]}"]
        options = {"args": flags, "prefs": {"download.default_directory": self.downloads}}
        session = self.ask("POST", "", {"capabilities": {"alwaysMatch": {
            "goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL"}}}})
        self.root += "/" + session["sessionId"]
        self.console = []

    def close(self):
        self.ask("DELETE", "")
        self.driver.terminate()
        self.driver.communicate()

    def ask(self, method, path, body=None):
        data = None if method == "GET" else json.dumps(body or {}).encode()
        request = urllib.request.Request(self.root + path, data, {"Content-Type": "application/json"},
                                         method=method)
        with urllib.request.urlopen(request, timeout=120) as answer:
            return json.load(answer)["value"]

    def visit(self, address):
        self.ask("POST", "/url", {"url": address})

    def reload(self):
        self.ask("POST", "/refresh")

    def run(self, script, *arguments):
        return self.ask("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def lines(self):
        """All that the page has said so far, as (level, text)."""
        for entry in self.ask("POST", "/se/log", {"type": "browser"}):
            text = re.sub(r'^\S+ \d+:\d+ ', "", entry["message"])
            with contextlib.suppress(ValueError):
                text = json.loads(text)
            self.console.append((entry["level"], text))
        return self.console

    def wait(self, what, done, seconds=60):
        """Polls until `done` answers something true, which it returns."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            answer = done()
            if answer:
                return answer
            time.sleep(0.05)
        raise AssertionError(f"waited {seconds} s for {what}; the page said {self.lines()[-12:]}")

    def wait_for_line(self, pattern, seconds=60):
        return self.wait(f"a line like {pattern}", lambda: next(
            (match for _, text in self.lines() if (match := re.search(pattern, text))), None), seconds)

    def keys(self, *steps):
        """Key events: "a" presses and releases, "+a" presses, "-a" releases; numbers are pauses, ms."""
        actions = []
        for step in steps:
            if isinstance(step, (int, float)):
                actions.append({"type": "pause", "duration": int(step)})
                continue
            hold = len(step) > 1 and step[0] in "+-"
            name = step[1:] if hold else step
            kinds = {"+": ["keyDown"], "-": ["keyUp"]}[step[0]] if hold else ["keyDown", "keyUp"]
            for kind in kinds:
                actions.append({"type": kind, "value": KEYS.get(name, name)})
                if not hold:
                    actions.append({"type": "pause", "duration": 60})
        self.ask("POST", "/actions", {"actions": [{"type": "key", "id": "keys", "actions": actions}]})

    def click(self, x, y):
        """Moves the mouse to a place on the page, and presses and releases its left button."""
        self.ask("POST", "/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": [
            {"type": "pointerMove", "x": x, "y": y}, {"type": "pointerDown", "button": 0},
            {"type": "pause", "duration": 60}, {"type": "pointerUp", "button": 0}]}]})

    def element(self, path):
        """The address of the element that an XPath finds."""
        found = self.ask("POST", "/element", {"using": "xpath", "value": path})
        return f"/element/{next(iter(found.values()))}"

    def press(self, path):
        """A press of the mouse on an element, as a player does it: some things want that."""
        self.ask("POST", self.element(path) + "/click")

    def resize(self, width, height):
        self.ask("POST", "/window/rect", {"width": width, "height": height})

    def picture(self, path):
        pathlib.Path(path).write_bytes(base64.b64decode(self.ask("GET", "/screenshot")))


class Server(http.server.ThreadingHTTPServer):
    """Serves `site` on the loopback address; breaks off what matches `lost` in the middle, and does
    not know what matches `gone`."""

    def __init__(self, site):
        super().__init__(("127.0.0.1", 0), functools.partial(Handler, directory=str(site)))
        self.lost = self.gone = None
        self.address = f"http://127.0.0.1:{self.server_port}/"
        threading.Thread(target=self.serve_forever, daemon=True).start()


class Handler(http.server.SimpleHTTPRequestHandler):
    def do_GET(self):
        if self.server.gone and re.search(self.server.gone, self.path):
            return self.send_error(404)
        return super().do_GET()

    def copyfile(self, source, outputfile):
        if self.server.lost and re.search(self.server.lost, self.path):
            outputfile.write(source.read(1000))
            self.close_connection = True
            return
        super().copyfile(source, outputfile)

    def log_message(self, *_):
        pass
