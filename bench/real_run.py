#!/usr/bin/env python3
"""Measures the real program under an X server without a screen: time from process start to the
first frame, frame intervals, peak memory. Build the target present_clock and the game first.

    bench/real_run.py BUILD_DIR startup [REPEATS]
    bench/real_run.py BUILD_DIR pacing [SECONDS, a multiple of 10]
    bench/real_run.py BUILD_DIR memory
    bench/real_run.py BUILD_DIR session

session plays an evening: menu, race, game over, menu, another track, practice, and prints the
longest frame of each stretch, by the clock and in CPU time, which a busy machine changes little; the
loading in between, on a dark screen, is told apart.

Each figure is the best of its repeats, for other programs only ever make it worse; the load
average is printed beside it.
"""

import array
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "tools" / "robot"))
from robot import Display
from tracks import open_field

FRAME_MS = 1000.0 / 60.0


class Run:
    """One run of the game, with records of its own."""

    def __init__(self, build, display, args, folder=None, lines=subprocess.DEVNULL):
        self.home = tempfile.TemporaryDirectory(prefix="brindle-bench-")
        self.log = Path(self.home.name) / "frames"
        env = {**os.environ, "DISPLAY": display.name, "SDL_AUDIODRIVER": "dummy",
               "XDG_DATA_HOME": self.home.name, "BRINDLE_PRESENT_LOG": str(self.log),
               "LD_PRELOAD": str(build / "bench" / "libpresent_clock.so")}
        env.pop("WAYLAND_DISPLAY", None)
        self.began_ns = time.clock_gettime_ns(time.CLOCK_MONOTONIC)
        self.process = subprocess.Popen([build / "game" / "brindle-run", *args],
                                        cwd=folder or build / "game", env=env, stdout=lines,
                                        stderr=subprocess.DEVNULL, text=True)

    def clocks(self):
        """For each frame, in ns: the moment at which it was shown, the CPU time of the main thread
        and of all threads, those that draw in software among them."""
        stamps = array.array("q")
        if self.log.exists():
            raw = self.log.read_bytes()
            stamps.frombytes(raw[: len(raw) // 24 * 24])
        return list(zip(stamps[::3], stamps[1::3], stamps[2::3]))

    def frames(self):
        return [moment for moment, _, _ in self.clocks()]

    def wait_frames(self, count, patience_s=60.0):
        deadline = time.monotonic() + patience_s
        while len(self.frames()) < count:
            if self.process.poll() is not None or time.monotonic() > deadline:
                raise RuntimeError("the game shows no frames")
            time.sleep(0.005)

    def peak_mib(self):
        for line in Path(f"/proc/{self.process.pid}/status").read_text().splitlines():
            if line.startswith("VmHWM"):
                return int(line.split()[1]) / 1024
        raise RuntimeError("no VmHWM")

    def cpu_s(self):
        fields = Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def close(self):
        self.process.kill()
        self.process.wait()
        self.home.cleanup()


def open_display(build):
    """A display that shares memory with programs, as displays do on a desktop. Some refuse it, for
    reasons of their own: then a program takes 40 MiB more, and each frame goes through a socket.
    """
    for attempts_left in reversed(range(10)):
        display = Display()
        run = Run(build, display, ["-winner"])
        run.wait_frames(3)
        shares = "/SYSV" in Path(f"/proc/{run.process.pid}/maps").read_text()
        run.close()
        if not shares and attempts_left == 0:
            print("no display shares memory: expect 40 MiB more")
        elif not shares:
            display.close()
            continue
        return display


def first_frame(build, display, args):
    run = Run(build, display, args)
    run.wait_frames(1)
    cpu = run.cpu_s()
    elapsed = (run.frames()[0] - run.began_ns) / 1e9
    run.close()
    return elapsed, cpu


def startup(build, display, repeats=10):
    # The floor: the same libraries, window and renderer, and a screen that loads next to nothing.
    cases = (("floor: -winner", ["-winner"]), ("intro", []), ("menu", ["-menu"]),
             ("race", ["-fast"]))
    thumbs = build / "game" / ".cache" / "thumbs"
    cold = []
    for _ in range(3):
        shutil.rmtree(thumbs, ignore_errors=True)
        cold.append(first_frame(build, display, ["-menu"]))
    elapsed, cpu = min(cold)
    print(f"first frame menu, no thumbnails in the cache {elapsed:6.3f} s (CPU so far {cpu:.2f} s)")
    for _, args in cases:
        first_frame(build, display, args)  # warms the thumbnails and the file cache
    best = {name: min(first_frame(build, display, args) for _ in range(repeats))
            for name, args in cases}
    floor = best["floor: -winner"][0]
    for name, (elapsed, cpu) in best.items():
        print(f"first frame {name:15} {elapsed:6.3f} s  {elapsed / floor:5.2f} floors  "
              f"(CPU so far {cpu:.2f} s)")


def pacing(build, display, seconds=60):
    run = Run(build, display, ["-fast", "-race=3", "-ai2"])
    run.wait_frames(2)
    start = time.monotonic()
    cpu = run.cpu_s()
    for _ in range(seconds // 10):
        time.sleep(10)
        print(f"after {time.monotonic() - start:3.0f} s: peak memory {run.peak_mib():.0f} MiB")
    cpu = run.cpu_s() - cpu
    stamps = run.frames()
    run.close()
    print(f"{len(stamps)} frames in {time.monotonic() - start:.1f} s, "
          f"CPU {100 * cpu / seconds:.0f} % of a core")
    show_spans("all", stamps)
    # Other programs only ever make it worse: the best stretch tells what the game is good for.
    slices = [[s for s in stamps if k <= (s - stamps[0]) / 10e9 < k + 1]
              for k in range(seconds // 10)]
    show_spans("best 10 s", min(slices, key=lambda part: sorted_spans(part)[-1]))


def sorted_spans(stamps):
    return sorted((b - a) / 1e6 for a, b in zip(stamps, stamps[1:]))


def show_spans(what, stamps):
    spans = sorted_spans(stamps)
    print(f"{what}: {1000 * len(spans) / sum(spans):.1f} frames/s")
    for share in (0.5, 0.9, 0.99, 0.999, 1.0):
        span = spans[min(len(spans) - 1, int(share * len(spans)))]
        print(f"interval, {100 * share:5.1f} % within {span:7.2f} ms  {span / FRAME_MS:.2f} frames")


def memory(build, display):
    cases = [("menu", ["-menu"]), ("intro", [])]
    cases += [(f"race on track {slot}", ["-fast", "-ai2", str(slot)]) for slot in range(1, 10)]
    for name, args in cases:
        run = Run(build, display, args)
        run.wait_frames(60)
        print(f"peak memory, {name:16} {run.peak_mib():6.1f} MiB")
        run.close()


class Player:
    """Presses keys and waits for what the game prints."""

    def __init__(self, run, display):
        self.run = run
        self.display = display
        self.marks = []

    def key(self, *keys, how="key"):
        self.display.xdotool(how, *keys)

    def line(self, part):
        while part not in (line := self.run.process.stdout.readline()):
            if not line:
                raise RuntimeError(f"the game ended before {part!r}")

    def mark(self, name):
        self.marks.append((name, time.clock_gettime_ns(time.CLOCK_MONOTONIC)))


def session_folder(build):
    """Two tracks: a field in which a car that only steers left does laps, and one of the game's."""
    folder = tempfile.TemporaryDirectory(prefix="brindle-session-")
    top, game = Path(folder.name), build / "game"
    for name in ("art", "music", "sounds"):
        (top / name).symlink_to(game / name)
    (top / "tracks").mkdir()
    (top / "tracks" / "1_field.trk").write_bytes(open_field())
    for end in ("trk", "png"):
        (top / "tracks" / f"2_oval.{end}").symlink_to(game / "tracks" / f"7_Oval.{end}")
    (top / "tracks" / "1_field.png").symlink_to(game / "tracks" / "7_Oval.png")
    return folder


def play_session(player):
    def launch(*keys):
        time.sleep(3)
        player.key(*keys)
        player.mark("loading")
        time.sleep(5)

    player.mark("menu")
    launch("r", "1", "Return")
    player.mark("race")
    player.key("f", "x", how="keydown")
    player.line("P1 finished")
    player.key("f", "x", how="keyup")
    player.mark("game over")
    player.key("Escape")
    time.sleep(4)
    player.mark("loading")
    player.key("space")
    time.sleep(4)
    player.mark("menu")
    launch("2", "Return")
    player.mark("practice")
    time.sleep(5)
    player.mark("end")


def session(build, display):
    with session_folder(build) as folder:
        (Path(folder) / ".cache").mkdir()
        for warm in (True, False):
            run = Run(build, display, ["-menu"], folder, subprocess.PIPE)
            run.wait_frames(60)
            if warm:
                run.close()
        player = Player(run, display)
        play_session(player)
        frames = run.clocks()
        run.close()
    for (name, begin), (_, end) in zip(player.marks, player.marks[1:]):
        part = [frame for frame in frames if begin <= frame[0] <= end]
        for what, stamps in zip((name, "  CPU, main", "  CPU, all"), zip(*part)):
            spans = sorted_spans(stamps)
            print(f"{what:11} {len(spans):5} frames, longest {spans[-1]:7.2f} ms, "
                  f"then {spans[-2]:6.2f} ms, half within {spans[len(spans) // 2]:5.2f} ms")


def main():
    build = Path(sys.argv[1]).resolve()
    what = {"startup": startup, "pacing": pacing, "memory": memory,
            "session": session}[sys.argv[2]]
    display = open_display(build)
    print(f"load average {os.getloadavg()[0]:.1f}")
    what(build, display, *map(int, sys.argv[3:]))
    print(f"load average {os.getloadavg()[0]:.1f}")
    display.close()


main()
