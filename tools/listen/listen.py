#!/usr/bin/env python3
"""listen.py GAME_DIR LOUDNESS_TOOL: plays the game, records what comes out of its mixer, and tells
how loud every screen is.

Three sessions run side by side, in real time: the menu up to the start of a race, a race of two
computer drivers up to its results, and the winner's celebration by itself.
"""

import array
import os
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "robot"))
from robot import Display

RATE = 22050
SPREAD = 4.0  # dB between the quietest and the loudest of what is to be alike
EFFECT = 6.0  # dB by which the loudest 400 ms of an effect may exceed the screens
TRUE_PEAK = -1.0
PATIENCE = 180  # seconds for anything that a session waits for


class Session:
    """The program with records of its own, its sound going to a file as fast as it plays."""

    def __init__(self, game, *args, display=None):
        self.home = tempfile.TemporaryDirectory(prefix="brindle-listen-")
        self.path = os.path.join(self.home.name, "sound.raw")
        environment = {**os.environ, "SDL_VIDEODRIVER": "x11" if display else "dummy",
                       "DISPLAY": display.name if display else "", "SDL_RENDER_DRIVER": "software",
                       "SDL_AUDIODRIVER": "disk", "SDL_DISKAUDIOFILE": self.path,
                       "XDG_DATA_HOME": self.home.name}
        self.process = subprocess.Popen(
            [os.path.join(game, "brindle-run"), *args], cwd=game, env=environment, text=True,
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.begun = None

    def now(self):
        """Seconds recorded so far."""
        return os.path.getsize(self.path) / 2 / RATE if os.path.exists(self.path) else 0.0

    def wait_until(self, seconds):
        """Until so much is recorded, or all that the program had to play."""
        deadline = time.monotonic() + PATIENCE
        while self.now() < seconds and self.process.poll() is None:
            if self.begun is None and self.now() > 0:
                self.begun = time.monotonic() - self.now()
            if time.monotonic() > deadline:
                raise RuntimeError("the recording does not grow")
            time.sleep(0.02)

    def wait_line(self, word):
        """When a line with this word was printed, in seconds of the recording."""
        for line in self.process.stdout:
            if word in line:
                return self.now()
        raise RuntimeError(f"the program ended before it printed {word!r}")

    def wait_file(self, name):
        """When it wrote a file into the folder of its records."""
        deadline = time.monotonic() + PATIENCE
        while not os.path.exists(os.path.join(self.home.name, name)):
            if time.monotonic() > deadline or self.process.poll() is not None:
                raise RuntimeError(f"the program never wrote {name}")
            time.sleep(0.02)
        return self.now()

    def wait_sound(self, level=1):
        """When a sample first reached a level, of 32767."""
        while True:
            self.wait_until(self.now() + 0.2)
            samples = array.array("h")
            with open(self.path, "rb") as file:
                data = file.read()
            samples.frombytes(data[:len(data) // 2 * 2])
            for at, sample in enumerate(samples):
                if sample >= level:
                    return at / RATE
            if self.process.poll() is not None:
                raise RuntimeError("the program ended without a sound")

    def check_pace(self):
        """A machine that is too busy to play in real time tells nothing about levels."""
        pace = self.now() / (time.monotonic() - self.begun)
        if not 0.85 < pace < 1.15:
            raise RuntimeError(f"this machine is too busy: sound came at {pace:.0%} of its pace")

    def close(self):
        self.check_pace()
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


def listen_to_menu(game, pieces):
    display = Display()
    session = Session(game, "-menu", display=display)
    first = session.wait_sound()
    session.wait_until(first + 12)
    menu = session.now()
    display.press("1", "space")
    race = session.wait_file("BrindleRun/last_player_names.txt")
    # The door falls 1.95 s before a race, the starter begins 1.5 s before it.
    pieces.update({"menu": (session, first + 2, menu), "car door": (session, race - 2, race - 1.5),
                   "engine start": (session, race - 1.5, race - 0.05)})
    session.close()
    display.close()


def listen_to_race(game, pieces):
    session = Session(game, "-ai2", "-race=1", "7")
    # Beeps are louder than cars that stand, and GO is the loudest beep, three seconds after the first.
    first = session.wait_sound(4000)
    go = session.wait_sound(6000)
    finish = session.wait_line("finished the race")
    # The celebration lasts 8 s; the music of the results comes up meanwhile.
    last = session.wait_line("finished the race")
    session.wait_until(max(finish + 8, last + 4) + 9)
    pieces.update({"countdown": (session, first, first + 2), "GO": (session, go, go + 0.9),
                   "race": (session, go + 2, finish - 0.2),
                   "results": (session, max(finish + 8, last + 4), session.now())})
    session.close()


def listen_to_celebration(game, pieces):
    session = Session(game, "-finish")
    first = session.wait_sound()
    session.process.wait(PATIENCE)
    pieces.update({"chime": (session, first, first + 0.5),
                   "crowd": (session, first + 1, first + 5.9),
                   "fanfare": (session, first + 8.3, session.now() - 2)})
    session.close()


ALIKE = ("menu", "engine start", "race", "crowd", "fanfare", "results")
SCREENS = ("menu", "race", "results")
EFFECTS = ("car door", "engine start", "chime", "crowd", "fanfare")
# The mixer's own tones, of a level that no file sets.
TONES = ("countdown", "GO")


def measured(tool, piece):
    session, first, last = piece
    line = subprocess.run([tool, session.path, f"{first}", f"{last - first}"], check=True,
                          capture_output=True, text=True).stdout
    return [float(word) for word in line.split()]


def record(game):
    """Every piece by its name: a session, and from when to when in its recording."""
    pieces, faults = {}, []

    def run(listen):
        try:
            listen(game, pieces)
        except (RuntimeError, OSError, subprocess.SubprocessError) as fault:
            faults.append(f"{listen.__name__}: {fault}")

    threads = [threading.Thread(target=run, args=(listen,))
               for listen in (listen_to_menu, listen_to_race, listen_to_celebration)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if faults:
        sys.exit("\n".join(faults))
    return pieces


def main(game, tool):
    game = os.path.abspath(game)
    levels = {name: measured(tool, piece) for name, piece in record(game).items()}
    print(f"{'heard':14}{'LUFS':>8}{'loudest 400 ms':>16}{'true peak dB':>14}")
    for name in dict.fromkeys(ALIKE + EFFECTS + TONES):
        whole, loudest, peak = levels[name]
        print(f"{name:14}{whole:8.1f}{loudest:16.1f}{peak:14.1f}")

    alike = [levels[name][0] for name in ALIKE]
    screens = sum(levels[name][0] for name in SCREENS) / len(SCREENS)
    louder = max(levels[name][1] for name in EFFECTS) - screens
    peak = max(level[2] for level in levels.values())
    good = True
    for is_good, told in (
            (max(alike) - min(alike) <= SPREAD, f"alike within {max(alike) - min(alike):.1f} dB"),
            (louder <= EFFECT, f"effects at most {louder:.1f} dB over the screens' {screens:.1f}"),
            (min(alike) > -40, "nothing missing"),
            (peak < TRUE_PEAK, f"true peak {peak:.1f} dB")):
        print("ok   " if is_good else "WRONG", told)
        good = good and is_good
    return 0 if good else 1


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
