"""The real program on the stage (stage.h): without a screen, without waiting, the same each time."""

import contextlib
import os
import pathlib
import resource
import signal
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tools/robot"))
from tracks import open_field, png, ring  # pylint: disable=wrong-import-position

FINISHED_GAME = ROOT / "build/release/game"
SANITIZER_STATUS = 99
# Of the processor's time, so that a busy machine is not taken for a program that hangs; and by the
# clock for one that sleeps.
PATIENCE_CPU_S = 60
PATIENCE_S = 1800


class Build:
    """A build of the program, with the library that puts it on the stage."""

    def __init__(self, folder):
        self.program = folder / "game/brindle-run"
        self.ghost_tool = folder / "game/brindle-ghost"
        self.stage = folder / "tools/prove/libstage.so"


@contextlib.contextmanager
def small_game():
    """A folder with the finished game's art, a blip of each sound, and tracks that load at once."""
    with tempfile.TemporaryDirectory(prefix="brindle-stage-") as name:
        folder = pathlib.Path(name)
        (folder / "art").symlink_to(FINISHED_GAME / "art")
        for kind in ("music", "sounds"):
            (folder / kind).mkdir()
            for file in (FINISHED_GAME / kind).iterdir():
                (folder / kind / file.name).write_bytes(file.read_bytes()[:16000])
        (folder / "tracks").mkdir()
        for name, content in (("1_Ring.trk", ring()), ("1_Ring.png", png((70, 90, 70), 250, 200)),
                              ("2_Field.trk", open_field()), ("2_Field.png", png((60, 60, 90)))):
            (folder / "tracks" / name).write_bytes(content)
        yield folder


class Ended:
    """How a run went."""

    def __init__(self, status, out, err):
        self.status, self.out, self.err = status, out, err

    def fault(self):
        """What no run may end with; empty if it has not."""
        if self.status in (None, -signal.SIGXCPU):
            return "hangs"
        if self.status == SANITIZER_STATUS:
            return "sanitizer: " + next((l for l in self.err if "ERROR" in l or "error:" in l), "?")
        if self.status not in (0, 1):
            return f"ends with {self.status}"
        return ""


def limit_time():
    resource.setrlimit(resource.RLIMIT_CPU, (PATIENCE_CPU_S, PATIENCE_CPU_S + 5))


def play(build, folder, home, *arguments, environment=None, **stage):
    """Runs the program to its end; stage holds the variables of stage.h, in lower case."""
    environment = {
        **{k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")},
        "SDL_VIDEODRIVER": "dummy", "SDL_RENDER_DRIVER": "software", "SDL_AUDIODRIVER": "dummy",
        "XDG_DATA_HOME": str(home), "LD_PRELOAD": str(build.stage),
        "ASAN_OPTIONS": f"exitcode={SANITIZER_STATUS}:allocator_may_return_null=1:malloc_context_size=3",
        "UBSAN_OPTIONS": "print_stacktrace=1", "TSAN_OPTIONS": f"exitcode={SANITIZER_STATUS}",
        **(environment or {}),
        **{"BRINDLE_" + name.upper(): str(value) for name, value in stage.items()}}
    with subprocess.Popen([build.program, *arguments], cwd=folder, env=environment, text=True,
                          errors="replace", stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE,
                          preexec_fn=limit_time) as process:  # pylint: disable=subprocess-popen-preexec-fn
        try:
            out, err = process.communicate(timeout=PATIENCE_S)
        except subprocess.TimeoutExpired:
            process.kill()
            out, err = process.communicate()
            return Ended(None, out.splitlines(), err.splitlines())
        return Ended(process.returncode, out.splitlines(), err.splitlines())
