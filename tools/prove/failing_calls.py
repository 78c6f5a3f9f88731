#!/usr/bin/env python3
"""Lets one call after another of a session fail, and looks at how the program takes it.

  failing_calls.py BUILD MOST KIND...   at most MOST calls of each KIND; all kinds by default

BUILD is a folder of a build with the stage. The session types a name, drives two best laps, looks
at ghosts and help, races to game over and leaves by the menu. Whichever call fails: the program
ends by itself, no sanitizer has a word to say, it says nothing twice, no old record is lost, none
is torn, and a new one is only missing where that was told.
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
FRAME_BYTES = 56
OLD_TABLE = "[Old]\n2: 1.500 Old.Field.trace\n"
OLD_NAMES = "Old\nBo\n"


def trace(frames):
    return struct.pack("<II", 10, frames) + bytes(FRAME_BYTES * frames)


def lay_down_records(home):
    records = home / "BrindleRun"
    records.mkdir()
    (records / "best_lap_times.txt").write_text(OLD_TABLE)
    (records / "last_player_names.txt").write_text(OLD_NAMES)
    (records / "Old.Field.trace").write_bytes(trace(150))


def is_whole_trace(content):
    return len(content) >= 8 and len(content) == 8 + FRAME_BYTES * struct.unpack("<II", content[:8])[1]


def records_fault(build, folder, home):
    """What is wrong with the records once the next start has set them right, and whether the
    session's lap is among them."""
    subprocess.run([build.ghost_tool, "list"], cwd=folder, env={**os.environ, "XDG_DATA_HOME": str(home)},
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    records = home / "BrindleRun"
    table = (records / "best_lap_times.txt").read_text()
    if "[Old]\n2: 1.500 Old.Field.trace\n" not in table:
        return "the old record is gone", False
    if not re.fullmatch(r"(\n?\[\w+\]\n(\d: \d+\.\d{3} \w+\.Field\.trace\n)+)+", table):
        return f"a torn table: {table!r}", False
    if len((records / "last_player_names.txt").read_text().splitlines()) != 2:
        return "torn names", False
    for file in records.glob("*.trace"):
        if not is_whole_trace(file.read_bytes()):
            return f"{file.name} is torn", False
    if list(records.glob("*.new")):
        return "a neighbour stays", False
    return "", "Ann]" in table and len(list(records.glob("*.trace"))) > 1


def session(build, folder, fail=""):
    """What is wrong with a session in which that call fails, what it said, how often it called."""
    with tempfile.TemporaryDirectory(prefix="brindle-home-") as name:
        home = pathlib.Path(name)
        lay_down_records(home)
        ended = play(build, folder, home, "-menu", script=SESSION, size="320 180", fail=fail,
                     calls=home / "calls")
        fault = ended.fault()
        said = [line for line in ended.err if line]
        if not fault and len(set(said)) < len(said):
            fault = "says twice: " + next(line for line in said if said.count(line) > 1)
        if not fault:
            fault, saved = records_fault(build, folder, home)
            if not fault and not saved and not said:
                fault = "lost the lap without a word"
        calls = {}
        if (home / "calls").exists():
            calls = {kind: int(count) for kind, count in
                     (line.split() for line in (home / "calls").read_text().splitlines())}
        return fault, ended, calls


def sample(count, most):
    """Numbers from 1 to count: all, or so many of them in equal steps."""
    return range(1, count + 1) if count <= most else sorted(
        {1 + i * (count - 1) // (most - 1) for i in range(most)})


def main():
    build, most = Build(pathlib.Path(sys.argv[1]).resolve()), int(sys.argv[2])
    kinds = sys.argv[3:] or KINDS
    with small_game() as folder, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        fault, ended, calls = session(build, folder)
        if fault or ended.err or "P1 ghost saved" not in "\n".join(ended.out):
            sys.exit("\n".join([f"without any failure: {fault}", *ended.out, *ended.err]))
        bad = 0
        for kind in kinds:
            numbers = sample(calls[kind], most)
            fails = [f"{kind} {number}" for number in numbers]
            told = 0
            for fail, (fault, ended, _) in zip(
                    fails, workers.map(lambda fail: session(build, folder, fail), fails)):
                told += bool(ended.err)
                if fault:
                    bad += 1
                    print("\n    ".join([f"BAD {fail}: {fault}", *ended.err[:40]]), flush=True)
            print(f"failing calls: {kind}: {len(fails)} of {calls[kind]} tried, {told} told of",
                  flush=True)
    print(f"failing calls: {bad} bad")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
