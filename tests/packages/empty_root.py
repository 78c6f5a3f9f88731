"""A Debian system with next to nothing in it, and a player who has an account there.

Needs root, debootstrap, and a mount namespace of its own, with which its mounts end (see
scripts/test-packages).
"""

import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path += [os.path.join(ROOT, "tools/robot"), os.path.join(ROOT, "tests/play")]

import robot  # noqa: E402
from menu_test import PRACTICE_ARROW, RACE_ARROW, intro, lit, red_button  # noqa: E402
from robot import Display, Game  # noqa: E402
from tracks import open_field, png  # noqa: E402

robot.PATIENCE_S = 150.0  # a track may be painted meanwhile
ROOTS = os.path.join(ROOT, "build/roots")
HOME = "/home/player"
PREFERENCES = HOME + "/.local/share/BrindleRun"
# What packages of any kind leave behind: journals, caches and what dpkg keeps for the next time.
PASSING = ("home/player/", "tmp/", "var/log/", "var/cache/", "var/lib/apt/", "var/lib/dpkg/")


def base_of(suite):
    """The empty system as an archive, made once."""
    archive = os.path.join(ROOTS, suite + ".tar")
    if not os.path.exists(archive):
        print(f"Making an empty root of {suite}", flush=True)
        os.makedirs(ROOTS, exist_ok=True)
        with tempfile.TemporaryDirectory(prefix="brindle-root-") as root:
            subprocess.run(["debootstrap", "--variant=minbase", suite, root,
                            "http://deb.debian.org/debian"], check=True, stdout=subprocess.DEVNULL)
            subprocess.run(["tar", "-C", root, "-cf", archive + ".new", "."], check=True)
        os.rename(archive + ".new", archive)
    return archive


class EmptyRoot:
    def __init__(self, suite):
        self.path = tempfile.mkdtemp(prefix="brindle-root-")
        subprocess.run(["tar", "-C", self.path, "-xf", base_of(suite)], check=True)
        os.chmod(self.path, 0o755)  # the player's, too
        shutil.copy("/etc/resolv.conf", self.file("/etc/resolv.conf"))
        os.makedirs(self.file("/tmp/.X11-unix"))
        os.makedirs("/tmp/.X11-unix", exist_ok=True)
        self.mounts = [self.file("/tmp/.X11-unix"), self.file("/proc")]
        subprocess.run(["mount", "--bind", "/tmp/.X11-unix", self.mounts[0]], check=True)
        subprocess.run(["mount", "-t", "proc", "proc", self.mounts[1]], check=True)
        with open(self.file("/etc/dpkg/dpkg.cfg.d/hasty"), "w", encoding="ascii") as file:
            file.write("force-unsafe-io\n")
        self.run("useradd", "--create-home", "player")

    def close(self):
        for mount in self.mounts:
            subprocess.run(["umount", mount], check=True)
        shutil.rmtree(self.path)

    def file(self, path):
        return self.path + path

    def read(self, path):
        with open(self.file(path), encoding="utf-8") as file:
            return file.read()

    def write(self, path, text):
        """Into a file that is there, whose owner stays."""
        with open(self.file(path), "w", encoding="utf-8") as file:
            file.write(text)

    def run(self, *command):
        """As root; what it printed."""
        done = subprocess.run(["chroot", self.path, *command], text=True, capture_output=True,
                              env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LANG": "C.UTF-8",
                                   "DEBIAN_FRONTEND": "noninteractive"})
        if done.returncode != 0:
            raise AssertionError(f"{command} failed:\n{done.stdout}{done.stderr}")
        return done.stdout

    def install(self, *packages):
        self.run("apt-get", "update", "-q")
        return self.run("apt-get", "install", "-y", "-q", *packages)

    def as_player(self, *command, folder=HOME, display=None):
        """The words that start a command as the player would, with nothing else in its environment."""
        screen = [f"DISPLAY={display}"] if display else []
        return ["chroot", "--userspec=player:player", self.path, "env", "-i", f"--chdir={folder}",
                f"HOME={HOME}", "PATH=/usr/local/bin:/usr/bin:/bin:/usr/local/games:/usr/games",
                "LANG=C.UTF-8", "SDL_AUDIODRIVER=dummy", *screen, *command]

    def play(self, *command, folder=HOME):
        """Runs a command as the player to its end."""
        return subprocess.run(self.as_player(*command, folder=folder), text=True,
                              capture_output=True, timeout=300)

    def files(self):
        """All that lies in the root, apart from the player's own and from what always passes."""
        found = subprocess.run(["find", ".", "-xdev", "-printf", "%P\n"], cwd=self.path, check=True,
                               capture_output=True, text=True).stdout.splitlines()
        return {name for name in found if not name.startswith(PASSING)}

    def put_field(self, slot):
        """Gives the player an own track on which a car laps by itself while it turns."""
        owner = [int(self.run("id", flag, "player")) for flag in ("-u", "-g")]
        for end, content in (("trk", open_field()), ("png", png((255, 120, 200), 200, 150))):
            path = self.file(f"{PREFERENCES}/game/tracks/{slot}_Field.{end}")
            with open(path, "wb") as file:
                file.write(content)
            shutil.chown(path, *owner)


def statements(course):
    """A course's lines without remarks and blanks."""
    return {" ".join(line.split("#")[0].split()) for line in course.splitlines()}


class GameInRoot(Game):
    """The game (or what starts it) in an empty root, as a plain user."""

    def __init__(self, root, *command, folder="/"):
        self.folder = self.home = tempfile.mkdtemp(prefix="brindle-play-")
        self.display = Display()
        self._start(root.as_player(*command, folder=folder, display=self.display.name), "/",
                    dict(os.environ))


def start_and_leave(root, *command):
    """From the title picture to the menu and out."""
    with GameInRoot(root, *command) as game:
        game.wait_picture(intro)
        game.press("space")
        game.wait_picture(lit(PRACTICE_ARROW))
        game.press("Escape")
        assert (game.wait_exit(), game.errors) == (0, []), game.errors


def race_a_lap(root, slot, *command):
    """From the title picture over the menu to a lap on the field in `slot`; its time."""
    with GameInRoot(root, *command) as game:
        game.wait_picture(intro)
        game.press("space")
        game.wait_picture(lit(PRACTICE_ARROW))
        game.press(str(slot), "r")
        game.wait_picture(lambda p: red_button(p) and lit(RACE_ARROW)(p))
        game.press("Return")
        game.wait_race()
        game.hold("f", "x")
        seconds = game.wait_line(r"^P1 lap 1: (\d+\.\d{3}) s")[1]
        game.release("f", "x")
        game.press("Escape")
        game.wait_picture(lit(PRACTICE_ARROW))
        game.press("Escape")
        assert (game.wait_exit(), game.errors) == (0, []), game.errors
    return seconds


def follow_the_page(root, page, brindle_track):
    """docs/making-a-track.md word for word: to races on a track of one's own, which ends in slot 1."""
    text = root.read(page)
    new, *tries, build = [[brindle_track, *shlex.split(words)] for words in
                          re.findall(r'brindle-track ((?:new|try|build) "[^`\n]*)', text)]
    _, _, heart, fault, dress = re.findall(r"```\n(.*?)```", text, re.S)[:5]
    done = root.play(*new)
    assert done.returncode == 0, done.stderr
    for words in tries:
        with GameInRoot(root, *words, folder=HOME) as game:
            game.wait_line(r"^Press 9 in the menu to race on it\.$")
            game.wait_race()
            assert (game.interrupt(), game.errors) == (0, []), game.errors

    course = root.read(f"{HOME}/My Track.course")
    assert statements(heart + dress) <= statements(course), statements(heart + dress)
    root.write(f"{HOME}/My Track.course", course.replace("900 820 radius 90", "900 820 radius 160"))
    broken = root.play(*build)
    assert (broken.returncode, broken.stderr.strip()) == (1, fault.strip()), broken.stderr
    root.write(f"{HOME}/My Track.course", course)
    assert "Press 1 in the menu" in root.play(*build).stdout
