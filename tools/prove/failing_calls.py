#!/usr/bin/env python3
"""Lets one call after another of a session fail, and looks at how the program takes it.

  failing_calls.py BUILD MOST KIND...   at most MOST calls of each KIND; all kinds by default

BUILD is a folder of a build with the stage. The session types a name, drives two best laps, looks
at ghosts and help, races to game over and leaves by the menu. Whichever call fails:

  - the program ends by itself, and well: only without a window, a font of the race or memory it may
    give up, and then with a line that says so;
  - no sanitizer has a word to say;
  - nothing is told twice, and whatever goes otherwise than in a session without failures is told;
  - the old record, its ghost and the names are whole, and so is every new one; the table names the
    best lap that the console was told of, unless it was told why not.

A name that cannot be read or kept is not told of, on purpose: the next menu has another, and who
drives then is another, too. Told is what stands on the console, or on the screen as not saved.
"""

import concurrent.futures
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile

from stage import Build, play, small_game

SESSION = ("*3 F1 =Ann Return 2 Space *42 +F *20 +X *46 G *2 +Left_Shift G -Left_Shift T F7 F8 *3 "
           "-F -X Escape *3 / *10 Right *3 Escape *10 pad:plug_one_pad *3 pad:unplug_one "
           "2 R F2 =Bo Return Space *42 *70 +F +X *170 Escape *50 Space *5 size:400,300 *3 Escape")
KINDS = ("open", "read", "write", "close", "rename", "sync", "malloc", "texture", "surface", "font",
         "screen", "device")
MAY_GIVE_UP = ("malloc", "screen")
FRAME_BYTES = 56
OLD_TABLE = "[Old]\n2: 1.500 Old.Field.trace\n"
OLD_NAMES = "Old\nBo\n"
NEW_GHOST = "OldAnn.Field.trace"
NEW_NAMES = "OldAnn\nBoBo\n"
WHOLE_NAMES = r"(Old|Pixie)(Ann)?\n(Bo|Gadget)(Bo)?\n"  # Pixie and Gadget: the file did not open


def trace(frames):
    return struct.pack("<II", 10, frames) + bytes(FRAME_BYTES * frames)


def lay_down_records(home):
    records = home / "BrindleRun"
    records.mkdir()
    (records / "best_lap_times.txt").write_text(OLD_TABLE)
    (records / "last_player_names.txt").write_text(OLD_NAMES)
    (records / "Old.Field.trace").write_bytes(trace(150))


def content(path):
    return path.read_bytes() if path.exists() else b""


def frames_of(ghost):
    """How many frames a whole ghost has; nothing for one that is torn."""
    frames = struct.unpack("<II", ghost[:8])[1] if len(ghost) >= 8 else -1
    return frames if len(ghost) == 8 + FRAME_BYTES * frames else None


def new_record_fault(table, ghost, names_kept, ended):
    """What is wrong with the table's and the ghost's new lap, by what the program printed."""
    out = "\n".join(ended.out)
    laps = [float(lap) for lap in re.findall(r"P1 lap \d+: (\d+\.\d{3}) s", out)]
    entry = re.search(r"\[OldAnn\]\n2: (\d+\.\d{3}) (\S+)\n", table)
    if entry and (float(entry[1]) not in laps or entry[2] != NEW_GHOST):
        return f"the table has a lap that nobody drove: {entry[0]!r}"
    if ghost and frames_of(ghost) not in [int(n) for n in re.findall(r"\((\d+) frames\)", out)]:
        return f"the ghost has {frames_of(ghost)} frames"
    if ended.err or not laps or not names_kept:
        return ""
    if not entry or float(entry[1]) > min(laps):
        return "lost the lap without a word"
    return "" if ghost else "lost the ghost without a word"


def records_fault(build, folder, home, ended):
    """What is wrong with the records once the next start has set them right."""
    subprocess.run([build.ghost_tool, "list"], cwd=folder, env={**os.environ, "XDG_DATA_HOME": str(home)},
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    records = home / "BrindleRun"
    table = content(records / "best_lap_times.txt").decode(errors="replace")
    if OLD_TABLE not in table:
        return "the old record is gone"
    if not re.fullmatch(r"(\n?\[\w+\]\n(\d: \d+\.\d{3} \w+\.Field\.trace\n)+)+", table):
        return f"a torn table: {table!r}"
    if content(records / "Old.Field.trace") != trace(150):
        return "the old ghost is gone"
    names = content(records / "last_player_names.txt").decode(errors="replace")
    if not re.fullmatch(WHOLE_NAMES, names):
        return f"torn names: {names!r}"
    ghost = content(records / NEW_GHOST)
    if ghost and frames_of(ghost) is None:
        return "a torn ghost"
    if list(records.glob("*.new")):
        return "a neighbour stays"
    return new_record_fault(table, ghost, names == NEW_NAMES, ended)


def manners_fault(ended, fail):
    """What is wrong with how the program took it."""
    if ended.fault():
        return ended.fault()
    said = [line for line in ended.err if line]
    fatal = any(line.startswith("FATAL: cannot open font") for line in said)
    if ended.status != 0 and fail.split()[0] not in MAY_GIVE_UP and not fatal:
        return "gives up"
    if ended.status != 0 and not said:
        return "gives up without a word"
    if len(set(said)) < len(said):
        return "says twice: " + next(line for line in said if said.count(line) > 1)
    return ""


def laps_of(lines):
    return [line for line in lines if " lap " in line]


def silence_fault(ended, usual):
    """Whether the program did not do what it usually does, and did not say so. A file that need not
    be read takes no time, and then the same keys may drive other laps."""
    if usual is None or ended.out == usual or any(ended.err) or laps_of(ended.out) != laps_of(usual):
        return ""
    return "does otherwise without a word: " + next(
        (line for line in ended.out + usual if (line in usual) != (line in ended.out)), "?")


def session(build, folder, fail="none 0", usual=None):
    """What is wrong with a session in which that call fails, how it went, how often it called what.
    `usual` is what the program prints without a failure."""
    with tempfile.TemporaryDirectory(prefix="brindle-home-") as name:
        home = pathlib.Path(name)
        lay_down_records(home)
        ended = play(build, folder, home, "-menu", script=SESSION, size="320 180", fail=fail,
                     calls=home / "calls")
        counts = [line.split(" ", 1) for line in content(home / "calls").decode().splitlines()]
        ended.err += [text for kind, text in counts if kind == "shown"]
        names_kept = content(home / "BrindleRun/last_player_names.txt") == NEW_NAMES.encode()
        fault = (manners_fault(ended, fail) or records_fault(build, folder, home, ended)
                 or (names_kept and silence_fault(ended, usual)))
        return fault, ended, {kind: int(count) for kind, count in counts if kind != "shown"}


def sample(count, most):
    """Numbers from 1 to count: all, or so many of them in equal steps."""
    return range(1, count + 1) if count <= most else sorted(
        {1 + i * (count - 1) // (most - 1) for i in range(most)})


def main():
    build, most = Build(pathlib.Path(sys.argv[1]).resolve()), int(sys.argv[2])
    kinds = sys.argv[3:] or KINDS
    with small_game() as folder, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        fault, usual, calls = session(build, folder)
        if fault or usual.err or "P1 ghost saved" not in "\n".join(usual.out):
            sys.exit("\n".join([f"without any failure: {fault}", *usual.out, *usual.err]))
        bad, summary = 0, []
        for kind in kinds:
            fails = [f"{kind} {number}" for number in sample(calls[kind], most)]
            told = 0
            for fail, (fault, ended, _) in zip(fails, workers.map(
                    lambda fail: session(build, folder, fail, usual.out), fails)):
                told += bool(ended.err)
                if fault:
                    bad += 1
                    print("\n    ".join([f"BAD {fail}: {fault}", *ended.err[:40]]), flush=True)
            print(f"failing calls: {kind}: {len(fails)} of {calls[kind]} tried, {told} told of",
                  flush=True)
            summary.append(f"{kind} {len(fails)} of {calls[kind]}")
    print(f"{bad} bad of {', '.join(summary)}")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
