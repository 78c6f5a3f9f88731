#!/usr/bin/env python3
"""A race between two computers, with sound, under the thread sanitizer: from the countdown over the
celebration to game over's music.

  race_under_tsan.py BUILD     a folder of a build with BRINDLE_SANITIZE=thread
"""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

from stage import SANITIZER_STATUS, Build, small_game

SOUND_AFTERWARDS = 12 * 44100  # bytes: 12 s after the last car's finish, in which game over comes up


def wait_for_sound(file, size, process):
    """Sound is written as it would be played: its length tells the time."""
    while file.stat().st_size < size and process.poll() is None:
        time.sleep(0.05)


def race(build, folder, home):
    """How many cars came to the end, how the program ended, and what it said."""
    sound = pathlib.Path(home) / "sound"
    environment = {**os.environ, "SDL_VIDEODRIVER": "dummy", "SDL_RENDER_DRIVER": "software",
                   "SDL_AUDIODRIVER": "disk", "SDL_DISKAUDIOFILE": str(sound),
                   "XDG_DATA_HOME": home, "TSAN_OPTIONS": f"exitcode={SANITIZER_STATUS}"}
    with subprocess.Popen([build.program, "-ai2", "-race=1", "1"], cwd=folder, env=environment,
                          text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
        ends = 0
        for line in process.stdout:
            ends += "finished the race" in line or "out of time" in line
            if ends == 2:
                wait_for_sound(sound, sound.stat().st_size + SOUND_AFTERWARDS, process)
                process.send_signal(signal.SIGINT)
                break
        _, said = process.communicate(timeout=60)
        return ends, process.returncode, said


def main():
    build = Build(pathlib.Path(sys.argv[1]).resolve())
    with small_game() as folder, tempfile.TemporaryDirectory(prefix="brindle-home-") as home:
        ends, status, said = race(build, folder, home)
    print(said, end="")
    print(f"tsan: {ends} cars at the end of their race, exit status {status}, "
          f"{said.count('ThreadSanitizer')} reports")
    return 0 if (ends, status, "ThreadSanitizer" in said) == (2, 0, False) else 1


if __name__ == "__main__":
    sys.exit(main())
