"""Drives the real program: an X server without a screen, keys and mouse, what it prints and shows.

Nothing here guesses a time: a test waits for a line that the program prints, or for a picture to
come true, and fails when it does not within a generous limit.
"""

import os
import queue
import random
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

GAME_DIR = os.environ["BRINDLE_GAME_DIR"]
PATIENCE_S = 40.0

# The head-up display's marks of the two players.
RED_HUD, BLUE_HUD = (220, 70, 70), (80, 130, 230)


def near(color, tolerance=12):
    """A test of a pixel: is it this colour, give or take what blending and rounding leave?"""
    return lambda r, g, b: max(abs(r - color[0]), abs(g - color[1]), abs(b - color[2])) <= tolerance


class Screenshot:
    """The pixels of the whole screen; positions and sizes are in real pixels."""

    def __init__(self, width, height, rgb):
        self.width, self.height, self.rgb = width, height, rgb

    def pixel(self, x, y):
        at = 3 * (y * self.width + x)
        return tuple(self.rgb[at : at + 3])

    def count(self, rect, wanted):
        """How many pixels of rect = (x, y, w, h) satisfy wanted(r, g, b)."""
        x, y, w, h = rect
        return sum(
            1 for j in range(y, y + h) for i in range(x, x + w) if wanted(*self.pixel(i, j))
        )

    def share(self, rect, wanted):
        return self.count(rect, wanted) / (rect[2] * rect[3])

    def hud_colors(self):
        """Whose head-up display begins at the left edge, and whose at the divider (or None)."""

        def mark(x):
            pixel = self.pixel(x * self.width // 1280, 15 * self.height // 720)
            return next((c for c in (RED_HUD, BLUE_HUD) if near(c, 25)(*pixel)), None)

        return mark(12), mark(652)

    def difference(self, other, rect):
        """The share of the pixels of rect that are not alike in both pictures."""
        x, y, w, h = rect
        changed = sum(
            1
            for j in range(y, y + h)
            for i in range(x, x + w)
            if self.pixel(i, j) != other.pixel(i, j)
        )
        return changed / (w * h)


class Display:
    """An X server of the test's own, under a number that its lock file keeps to itself."""

    def __init__(self, width=1280, height=720):
        self.width, self.height = width, height
        number = 100 + os.getpid() % 1000
        while not self._start(number):
            number += 1
        self.name = f":{number}"

    def _start(self, number):
        """True once the server listens; false if it ended, as it does when the number is taken."""
        self.server = subprocess.Popen(
            ["Xvfb", f":{number}", "-screen", "0", f"{self.width}x{self.height}x24",
             "-nolisten", "tcp", "-noreset"], stderr=subprocess.DEVNULL)
        deadline = time.monotonic() + PATIENCE_S
        while self.server.poll() is None:
            if self._listens(number):
                return True
            if time.monotonic() > deadline:
                self.close()
                raise RuntimeError("Xvfb did not come up")
            time.sleep(0.02)
        return False

    def _listens(self, number):
        try:
            with open(f"/tmp/.X{number}-lock", encoding="ascii") as lock:
                if int(lock.read() or 0) != self.server.pid:
                    return False
            with socket.socket(socket.AF_UNIX) as client:
                client.connect(f"/tmp/.X11-unix/X{number}")
            return True
        except OSError:
            return False

    def close(self):
        self.server.terminate()
        self.server.wait()

    def screenshot(self):
        raw = subprocess.run(
            ["import", "-display", self.name, "-window", "root", "-depth", "8", "rgb:-"],
            check=True, capture_output=True).stdout
        return Screenshot(self.width, self.height, raw)


class Game:
    """The program in a folder of its own that borrows the game's assets, with records of its own."""

    def __init__(self, *args, display=None, without=(), files=None, records=None,
                 env=None, home=None):
        self.own_display = display is None
        self.display = display or Display()
        self.folder = tempfile.mkdtemp(prefix="brindle-play-")
        self.own_home = home is None
        self.home = home or tempfile.mkdtemp(prefix="brindle-home-")
        for name in ("art", "music", "sounds", "tracks"):
            if name not in without:
                os.symlink(os.path.join(GAME_DIR, name), os.path.join(self.folder, name))
        for folder, content_of in ((self.folder, files),
                                   (os.path.join(self.home, "BrindleRun"), records)):
            for name, content in (content_of or {}).items():
                path = os.path.join(folder, name)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "wb") as file:
                    file.write(content)
        self.lines, self.errors = [], []
        self.fresh = queue.Queue()
        environment = {**os.environ, "DISPLAY": self.display.name, "SDL_AUDIODRIVER": "dummy",
                       "SDL_VIDEODRIVER": "x11", "XDG_DATA_HOME": self.home, **(env or {})}
        environment.pop("WAYLAND_DISPLAY", None)
        self.process = subprocess.Popen(
            [os.path.join(GAME_DIR, "brindle-run"), *args], cwd=self.folder, env=environment,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, bufsize=1)
        self.line_reader = threading.Thread(
            target=self._read, args=(self.process.stdout, self.lines, True), daemon=True)
        self.line_reader.start()
        self.error_reader = threading.Thread(
            target=self._read, args=(self.process.stderr, self.errors, False), daemon=True)
        self.error_reader.start()

    def _read(self, stream, into, wake):
        for line in stream:
            into.append(line.rstrip("\n"))
            if wake:
                self.fresh.put(into[-1])
        if wake:
            self.fresh.put(None)

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        if kind is not None:
            sys.stderr.write("stdout:\n  " + "\n  ".join(self.lines) + "\n")
            sys.stderr.write("stderr:\n  " + "\n  ".join(self.errors) + "\n")
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.line_reader.join()
        self.error_reader.join()
        self.process.stdout.close()
        self.process.stderr.close()
        if self.own_display:
            self.display.close()
        shutil.rmtree(self.folder, ignore_errors=True)
        if self.own_home:
            shutil.rmtree(self.home, ignore_errors=True)

    # --- what it prints and shows

    def wait_line(self, pattern, seconds=PATIENCE_S):
        """The next line on standard output, from the last one waited for on, that matches."""
        deadline = time.monotonic() + seconds
        while True:
            try:
                line = self.fresh.get(timeout=max(0.01, deadline - time.monotonic()))
            except queue.Empty:
                raise AssertionError(f"no line like {pattern!r} within {seconds} s") from None
            if line is None:
                raise AssertionError(f"the program ended before a line like {pattern!r}")
            match = re.search(pattern, line)
            if match:
                return match

    def wait_picture(self, holds, seconds=PATIENCE_S):
        """The first screenshot for which holds(screenshot) is true."""
        deadline = time.monotonic() + seconds
        while True:
            picture = self.display.screenshot()
            if holds(picture):
                return picture
            if self.process.poll() is not None:
                raise AssertionError("the program ended before it showed what was waited for")
            if time.monotonic() > deadline:
                raise AssertionError(f"the picture did not come true within {seconds} s")

    def wait_race(self):
        """The first screenshot of a race in split view."""
        return self.wait_picture(lambda p: p.hud_colors() == (RED_HUD, BLUE_HUD))

    def wait_exit(self, seconds=PATIENCE_S):
        status = self.process.wait(seconds)
        self.line_reader.join()
        self.error_reader.join()
        return status

    def pref_file(self, name):
        return os.path.join(self.home, "BrindleRun", name)

    # --- what players do

    def _xdotool(self, *args):
        subprocess.run(["xdotool", *args], check=True,
                       env={**os.environ, "DISPLAY": self.display.name})

    def press(self, *keys):
        for key in keys:
            self._xdotool("key", key)

    def hold(self, *keys):
        self._xdotool("keydown", *keys)

    def release(self, *keys):
        self._xdotool("keyup", *keys)

    def type_text(self, text):
        self._xdotool("type", text)

    def move_mouse(self, dx, dy):
        self._xdotool("mousemove_relative", "--", str(dx), str(dy))

    def click_at(self, x, y):
        """Brings the menu's cursor to a point from the corner that stops it, and clicks there."""
        self.move_mouse(-4000, -4000)
        self.move_mouse(x // 4, y // 4)  # four logical pixels for each that the mouse moves
        self._xdotool("click", "1")

    def interrupt(self):
        """Ctrl-C at the console: a quit event."""
        self.process.send_signal(signal.SIGINT)
