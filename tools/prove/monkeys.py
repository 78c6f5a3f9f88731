#!/usr/bin/env python3
"""Lets seeded monkeys loose on the real program, one after another.

  monkeys.py BUILD SECONDS [SEED]   SEED is the first one's; the others count on from it
  monkeys.py BUILD memory           a player instead: the memory after 50 rounds and after 5

BUILD is a folder of a build with the stage. Monkeys share one set of records; each starts the
program anew, at the intro, the menu, in a race or between two computers. A seed that fails is
printed and replays the same run: monkeys.py BUILD 0 SEED.
"""

import pathlib
import re
import sys
import tempfile
import time

from stage import Build, play, small_game

STARTS = ((), ("-menu",), ("-fast",), ("-fast", "-race=1", "1"), ("-ai2", "-race=1", "1"),
          ("-menu", "-win"))
FRAMES = 1500
MOST_GROWTH_KIB = 2048


def monkey(build, folder, seed):
    """What went wrong, and the frames' count by what was printed."""
    with tempfile.TemporaryDirectory(prefix="brindle-home-") as home:
        return play(build, folder, home, *STARTS[seed % len(STARTS)], monkey=f"{seed} {FRAMES}")


def let_loose(build, seconds, seed):
    """Whether all were well; at least one."""
    deadline = time.monotonic() + seconds
    first, seen = seed, {}
    with small_game() as folder:
        while True:
            ended = monkey(build, folder, seed)
            fault = ended.fault() or ("ends early" if ended.status == 1 else "")
            for line in ended.out:
                kind = re.sub(r"[\d.]+", "N", line)
                seen[kind] = seen.get(kind, 0) + 1
            if fault:
                print("\n    ".join([f"BAD seed {seed}: {fault}", *ended.out[-5:], *ended.err[:60]]))
                return False
            seed += 1
            if time.monotonic() >= deadline:
                break
    print(f"{seed - first} from seed {first}, {FRAMES} frames each: all well; they raced "
          f"{sum(n for line, n in seen.items() if 'finished the race' in line)} times to the end, "
          f"drove {sum(n for line, n in seen.items() if ' lap N' in line)} laps")
    return True


def memory(build):
    """Whether 50 rounds from menu to race take no more memory than 5."""
    one = "1 Space *45 +F *30 +X *40 -X -F G T F7 Backspace *80 Escape *20 "
    rounds = 5 * one + "memory " + 45 * one + "memory Escape"
    with small_game() as folder, tempfile.TemporaryDirectory(prefix="brindle-home-") as home:
        ended = play(build, folder, home, "-menu", script=rounds)
    kib = [int(line.split()[1]) for line in ended.out if line.startswith("memory:")]
    grown = kib[1] - kib[0] if len(kib) == 2 else None
    print(f"{kib} KiB after 5 and 50 rounds; {ended.fault() or 'ended well'}")
    return not ended.fault() and grown is not None and grown <= MOST_GROWTH_KIB


def main():
    build = Build(pathlib.Path(sys.argv[1]).resolve())
    if sys.argv[2] == "memory":
        return 0 if memory(build) else 1
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 1
    return 0 if let_loose(build, float(sys.argv[2]), seed) else 1


if __name__ == "__main__":
    sys.exit(main())
