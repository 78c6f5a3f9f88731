"""Plays the real program: an X server without a screen, keys, mouse and pads, what it prints and shows.

For the play tests, the measurements and the proofs. Nothing here guesses a time: who plays waits for
a line that the program prints, or for a picture to come true, and fails when it does not within a
generous limit.

The environment says where the game is (BRINDLE_GAME_DIR, else the release build's) and, for pads,
which library brings them (BRINDLE_VIRTUAL_PADS, made from piped_pads.cpp).
"""

import os
import queue
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
GAME_DIR = os.environ.get("BRINDLE_GAME_DIR", os.path.join(ROOT, "build/release/game"))
VIRTUAL_PADS = os.environ.get("BRINDLE_VIRTUAL_PADS", "")
PATIENCE_S = 40.0
WIDTH, HEIGHT = 1280, 720

# The head-up display's marks of the two players.
RED_HUD, BLUE_HUD = (220, 70, 70), (80, 130, 230)
# Where the menu shows the thumbnail of the only track, and bare sky beside it.
THUMB, SKY = (600, 520, 80, 60), (340, 520, 60, 60)
WINNER = (85, 138, 470, 84)


def near(color, tolerance=12):
    """A test of a pixel: is it this colour, give or take what blending and rounding leave?"""
    return lambda r, g, b: max(abs(r - color[0]), abs(g - color[1]), abs(b - color[2])) <= tolerance


def shows(rect, color):
    """A test of a picture: rect is of this colour, and no shade darker.

    Scaling rounds a level off here and there, but a screen that has not yet fully come up from
    black, and hears no keys, does not show the very colour anywhere.
    """
    return lambda p: p.share(rect, near(color, 2)) > 0.9 and p.share(rect, near(color, 0)) > 0.2


def menu_of(color):
    """A test of a picture: the menu with one track, whose thumbnail is of this colour."""
    return lambda p: shows(THUMB, color)(p) and p.count(SKY, near(color)) == 0


def winner(p):
    """A test of a picture: the winner's golden letters in the left view."""
    return p.share(WINNER, lambda r, g, b: r > 200 and 130 < g < 210 and b < 90) > 0.1


class Screenshot:
    """The pixels of the whole screen."""

    def __init__(self, rgb):
        self.rgb = rgb

    def pixel(self, x, y):
        at = 3 * (y * WIDTH + x)
        return tuple(self.rgb[at : at + 3])

    def pixels(self, rect):
        x, y, w, h = rect
        return [self.pixel(i, j) for j in range(y, y + h) for i in range(x, x + w)]

    def count(self, rect, wanted):
        """How many pixels of rect = (x, y, w, h) satisfy wanted(r, g, b)."""
        return sum(1 for pixel in self.pixels(rect) if wanted(*pixel))

    def share(self, rect, wanted):
        return self.count(rect, wanted) / (rect[2] * rect[3])

    def difference(self, other, rect):
        """The share of the pixels of rect that are not alike in both pictures."""
        pairs = zip(self.pixels(rect), other.pixels(rect))
        return sum(1 for mine, theirs in pairs if mine != theirs) / (rect[2] * rect[3])

    def hud_colors(self):
        """Whose head-up display begins at the left edge, and whose at the divider (or None)."""
        marks = (self.pixel(x, 15) for x in (12, 652))
        return tuple(next((c for c in (RED_HUD, BLUE_HUD) if near(c, 25)(*mark)), None)
                     for mark in marks)


class Display:
    """An X server of the player's own, under a number that it finds for itself.

    Its keys do not repeat: on a busy machine a press may last as long as a key that is held.
    """

    def __init__(self):
        ready, told = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(told), "-screen", "0", f"{WIDTH}x{HEIGHT}x24", "-r",
             "-nolisten", "tcp", "-noreset"], stderr=subprocess.DEVNULL, pass_fds=(told,))
        os.close(told)
        with open(ready, encoding="ascii") as numbers:
            self.name = ":" + numbers.readline().strip()
        if self.name == ":":
            raise RuntimeError("Xvfb did not come up")

    def close(self):
        self.server.terminate()
        self.server.wait()

    def xdotool(self, *args):
        subprocess.run(["xdotool", *args], check=True, env={**os.environ, "DISPLAY": self.name})

    def press(self, *keys):
        for key in keys:
            self.xdotool("key", key)

    def screenshot(self):
        return Screenshot(subprocess.run(
            ["import", "-display", self.name, "-window", "root", "-depth", "8", "rgb:-"],
            check=True, capture_output=True).stdout)


class Game:
    """The program in a folder of its own that borrows the game's assets, with records of its own.

    Or, by start_in, in another folder, from where it finds the assets itself. Another program, with
    more in its environment, may stand for the one of GAME_DIR.
    """

    def __init__(self, *args, without=(), files=None, records=None, sound="dummy", start_in=None,
                 pads=False, layout="us", program=None, environment=None):
        self.folder = tempfile.mkdtemp(prefix="brindle-play-")
        self.home = tempfile.mkdtemp(prefix="brindle-home-")
        for name in {"art", "music", "sounds", "tracks"}.difference(without):
            os.symlink(os.path.join(GAME_DIR, name), os.path.join(self.folder, name))
        for folder, content_of in ((self.folder, files or {}), (self.pref_file(""), records or {})):
            for name, content in content_of.items():
                path = os.path.join(folder, name)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "wb") as file:
                    file.write(content)
        self.display = Display()
        if layout != "us":
            subprocess.run(["setxkbmap", "-display", self.display.name, layout], check=True)
        environment = {**os.environ, "DISPLAY": self.display.name, "SDL_AUDIODRIVER": sound,
                       "SDL_VIDEODRIVER": "x11", "XDG_DATA_HOME": self.home, **(environment or {})}
        environment.pop("WAYLAND_DISPLAY", None)
        if pads:
            pipe = os.path.join(self.home, "pads")
            os.mkfifo(pipe)
            self.pads = os.open(pipe, os.O_RDWR)
            environment.update(LD_PRELOAD=VIRTUAL_PADS, BRINDLE_PADS=pipe)
        self._start([*(program or [os.path.join(GAME_DIR, "brindle-run")]), *args],
                    start_in or self.folder, environment)

    def _start(self, command, folder, environment):
        self.lines, self.errors, self.fresh = [], [], queue.Queue()
        self.process = subprocess.Popen(
            command, cwd=folder, env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
            text=True, bufsize=1)
        self.readers = [threading.Thread(target=self._read, args=of, daemon=True)
                        for of in ((self.process.stdout, self.lines, self.fresh),
                                   (self.process.stderr, self.errors, queue.Queue()))]
        for reader in self.readers:
            reader.start()

    def _read(self, stream, into, fresh):
        with stream:
            for line in stream:
                into.append(line.rstrip("\n"))
                fresh.put(into[-1])
        fresh.put(None)

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        if kind is not None:
            sys.stderr.write("\n  ".join(["stdout:", *self.lines, "stderr:", *self.errors]) + "\n")
        self.process.kill()
        self.wait_exit()
        self.display.close()
        shutil.rmtree(self.folder, ignore_errors=True)
        shutil.rmtree(self.home, ignore_errors=True)

    def pref_file(self, name):
        return os.path.join(self.home, "BrindleRun", name)

    # --- what it prints and shows

    def wait_line(self, pattern):
        """The next line on standard output, from the last one waited for on, that matches."""
        deadline = time.monotonic() + PATIENCE_S
        while True:
            try:
                line = self.fresh.get(timeout=max(0.01, deadline - time.monotonic()))
            except queue.Empty:
                raise AssertionError(f"no line like {pattern!r} in time") from None
            if line is None:
                raise AssertionError(f"the program ended before a line like {pattern!r}")
            match = re.search(pattern, line)
            if match:
                return match

    def wait_picture(self, holds):
        """The first screenshot for which holds(screenshot) is true."""
        deadline = time.monotonic() + PATIENCE_S
        while True:
            picture = self.display.screenshot()
            if holds(picture):
                return picture
            if self.process.poll() is not None:
                raise AssertionError("the program ended before it showed what was waited for")
            if time.monotonic() > deadline:
                raise AssertionError("the picture did not come true in time")

    def wait_race(self):
        """The first screenshot of a race in split view."""
        return self.wait_picture(lambda p: p.hud_colors() == (RED_HUD, BLUE_HUD))

    def wait_exit(self):
        """Its exit status, once all that it has printed has been read."""
        status = self.process.wait(PATIENCE_S)
        for reader in self.readers:
            reader.join()
        return status

    # --- what players do

    def press(self, *keys):
        self.display.press(*keys)

    def hold(self, *keys):
        self.display.xdotool("keydown", *keys)

    def release(self, *keys):
        self.display.xdotool("keyup", *keys)

    def type_text(self, text):
        self.display.xdotool("type", text)

    def click_at(self, x, y):
        """Brings the menu's cursor to a point from the corner that stops it, and clicks there."""
        self.display.xdotool("mousemove_relative", "--", "-4000", "-4000")
        # Four logical pixels for each that the mouse moves.
        self.display.xdotool("mousemove_relative", "--", str(x // 4), str(y // 4))
        self.display.xdotool("click", "1")

    def pad(self, *lines):
        """Plugs in, moves or pulls out virtual pads: lines for virtual_pads.h."""
        os.write(self.pads, "".join(line + "\n" for line in lines).encode())

    def tap(self, name, *buttons):
        """Presses buttons of a pad and lets them go again."""
        for button in buttons:
            self.pad(f"button {name} {button} 1", f"button {name} {button} 0")

    def interrupt(self):
        """Ctrl-C at the console, a quit event: the exit status that it leads to."""
        self.process.send_signal(signal.SIGINT)
        return self.wait_exit()
