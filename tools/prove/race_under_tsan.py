#!/usr/bin/env python3
"""A race between two computers, with sound, under the thread sanitizer: from the countdown over the
celebration to game over and the menu.

  race_under_tsan.py BUILD     a folder of a build with BRINDLE_SANITIZE=thread

Simulated time goes by frames, so the race is as short as the machine is quick, and at the script's
end the program is told to close: it cannot last. Sound is mixed meanwhile by the clock's time, into
a file, and in small pieces, so that both threads meet as often as can be.
"""

import pathlib
import sys
import tempfile

from stage import Build, play, small_game

FRAMES = 700  # of 50 ms: a lap of the ring, the 20 s that a late car has, the celebration
# Only from game over does Space lead to the menu, where Escape ends the program.
SCRIPT = f"*{FRAMES} memory Space *40 memory Escape *10 memory"
LEAST_SOUND = 2 * 44100  # bytes: a second


def race(build, folder, home):
    sound = pathlib.Path(home) / "sound"
    ended = play(build, folder, home, "-ai2", "-race=1", "1", size="160 90",
                 script=SCRIPT,
                 environment={"SDL_AUDIODRIVER": "disk", "SDL_DISKAUDIOFILE": str(sound),
                              "SDL_DISKAUDIODELAY": "2"})
    return ended, sound.stat().st_size if sound.exists() else 0


def main():
    build = Build(pathlib.Path(sys.argv[1]).resolve())
    with small_game() as folder, tempfile.TemporaryDirectory(prefix="brindle-home-") as home:
        ended, sound = race(build, folder, home)
    ends = sum("finished the race" in line or "out of time" in line for line in ended.out)
    reports = sum("ThreadSanitizer" in line for line in ended.err)
    in_menu = sum(line.startswith("memory:") for line in ended.out) == 2
    well = ended.status == 0 and ends == 2 and in_menu and reports == 0 and sound >= LEAST_SOUND
    print("\n".join([*([] if well else ended.out[-20:]), *ended.err]))
    print(f"{ends} cars came to the end{', to game over and the menu' if in_menu else ''}, while "
          f"{sound / 44100:.0f} s of sound were mixed; {reports} reports, exit status {ended.status}")
    return 0 if well else 1


if __name__ == "__main__":
    sys.exit(main())
