"""The archive for Windows, unpacked and played under Wine beside the same game built for this machine.

    scripts/test windows [-v] [Windows.test_...]

The environment may say which archive (BRINDLE_ZIP), which game of this machine (BRINDLE_GAME_DIR) and
which build folder of its tools (BRINDLE_NATIVE_BUILD); SHOTS is a folder for screenshots.
"""

import glob
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import zipfile

from robot import GAME_DIR, ROOT, Game
from tracks import open_field, png

BUILD = pathlib.Path(ROOT, "build")
NATIVE = pathlib.Path(os.environ.get("BRINDLE_NATIVE_BUILD", BUILD / "release"))
PREFIX = BUILD / "wine"
USER = "Žofie Ωmega"  # no code page of Windows has both
ROAMING = PREFIX / "drive_c/users" / USER / "AppData/Roaming"
RECORDS = ROAMING / "BrindleRun"
WINE = {"WINEPREFIX": str(PREFIX), "WINEDEBUG": "-all", "SDL_VIDEODRIVER": "windows"}
SOAK_S = "60"
# A track of the player's own.
FIELD = {"game/tracks/9_Føld.trk": open_field(),
         "game/tracks/9_Føld.png": png((220, 40, 150), 200, 150)}


def run(*command, cwd=None, **more):
    """Its exit status and all lines that it says."""
    done = subprocess.run([str(word) for word in command], cwd=cwd, capture_output=True, text=True,
                          timeout=300, env={**os.environ, **more}, check=False)
    return done.returncode, (done.stdout + done.stderr).splitlines()


def wine(*command, cwd=None):
    return run("wine", *command, cwd=cwd, **WINE)


def end_wine():
    """Its server stays a while for whoever comes next, with what it knows of display and files."""
    subprocess.run(["wineserver", "-k", "-w"], env={**os.environ, **WINE}, check=False)


class Windows(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        archives = glob.glob(str(BUILD / "packages/brindle-run-*-windows-x86_64.zip"))
        archive = os.environ.get("BRINDLE_ZIP") or max(archives, key=os.path.getmtime)
        cls.place = tempfile.TemporaryDirectory(prefix="brindle ünd Ωmega ")
        with zipfile.ZipFile(archive) as packed:
            packed.extractall(cls.place.name)
        (cls.folder,) = pathlib.Path(cls.place.name).iterdir()
        if not (PREFIX / "system.reg").exists():
            run("wineboot", "-i", **WINE)
        folders = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders"
        wine("reg", "add", folders, "/v", "AppData", "/f", "/d",
             rf"C:\users\{USER}\AppData\Roaming")

    @classmethod
    def tearDownClass(cls):
        end_wine()
        cls.place.cleanup()

    def setUp(self):
        end_wine()
        shutil.rmtree(ROAMING, ignore_errors=True)
        ROAMING.mkdir(parents=True)

    def game(self, *args, guard=()):
        """The unpacked game; `guard` is a command that runs it."""
        return Game("-win", *args, start_in=self.folder, environment=WINE,
                    program=[*guard, "wine", str(self.folder / "brindle-run.exe")])

    def ghost(self, *words):
        return wine(self.folder / "brindle-ghost.exe", *words, cwd="/")

    @staticmethod
    def put(folder, files):
        for name, content in files.items():
            (folder / name).parent.mkdir(parents=True, exist_ok=True)
            (folder / name).write_bytes(content)

    def keep(self, game, name):
        if "SHOTS" in os.environ:
            picture = os.path.join(os.environ["SHOTS"], name + ".png")
            run("import", "-display", game.display.name, "-window", "root", picture)

    def test_help_says_the_same(self):
        here = run(pathlib.Path(GAME_DIR, "brindle-run"), "-help")
        self.assertEqual(wine(self.folder / "brindle-run.exe", "-help"), here)
        self.assertEqual(self.ghost("export", "Ōsaka", "нет", "x"), (1, ['brindle-ghost: there is no track "нет"']))

    def test_races_are_the_same(self):
        tracks = sorted((self.folder / "tracks").glob("*.trk"))
        here = run(NATIVE / "tools/race_soak/race_soak", SOAK_S, *tracks)
        there = wine(BUILD / "windows/tools/race_soak/race_soak.exe", SOAK_S, *tracks)
        for mine, theirs in zip(here[1], there[1]):
            print(*(re.search(r"(\w+)\.trk: (\w{16})", line).groups() for line in (mine, theirs)))
        self.assertEqual((here[0], len(here[1])), (0, len(tracks)))
        self.assertEqual(there, here)

    def test_records_are_improved_and_laps_travel(self):
        # A slow lap of another day, and what a sudden end has left beside it.
        old = b"[Red]\n9: 500.000 Red.F__ld.trace\n"
        self.put(RECORDS, {**FIELD, "best_lap_times.txt": old[:9],
                           "best_lap_times.txt.77.new": old, "last_player_names.txt": b"Red\nBlue\n"})
        with self.game("-fast", "9") as game:
            game.wait_race()
            game.hold("f", "x")  # a circle; the first is the slowest
            times = [float(game.wait_line(rf"^P1 lap {lap}: ([0-9.]+) s").group(1))
                     for lap in (1, 2, 3)]
            game.release("f", "x")
            self.keep(game, "record")
            self.assertEqual(game.errors, [])
        best = min(times)
        self.assertLess(best, times[0])
        status, lines = self.ghost("list")
        self.assertEqual((status, len(lines)), (0, 1))
        self.assertRegex(lines[0], rf"^Red +9  Føld +{best:.3f} s  ghost$")
        self.assertEqual(sorted(file.suffix for file in RECORDS.iterdir() if file.is_file()),
                         [".trace", ".txt", ".txt"])
        self.laps_travel(best)

    def laps_travel(self, best):
        """The record goes to this machine, and what that makes of it to a Windows without records."""
        (trace,) = RECORDS.glob("*.trace")
        driven = trace.read_bytes()
        with tempfile.TemporaryDirectory() as home:
            lap, again = pathlib.Path(home, "łap"), pathlib.Path(home, "again")
            self.put(pathlib.Path(home, "BrindleRun"), FIELD)
            here = [pathlib.Path(GAME_DIR, "brindle-ghost")], {"XDG_DATA_HOME": home}
            told = (0, [f"Red on Føld: {best:.3f} s, now Red's record and the best of all."])
            self.assertEqual(self.ghost("export", "Red", "Føld", lap)[0], 0)
            self.assertEqual(run(*here[0], "import", lap, **here[1]), told)
            self.assertEqual(run(*here[0], "export", "Red", "Føld", again, **here[1])[0], 0)
            shutil.rmtree(RECORDS)
            self.put(RECORDS, FIELD)
            self.assertEqual(self.ghost("import", again), told)
        self.assertEqual(trace.read_bytes(), driven)

    def test_plays_from_a_folder_that_cannot_be_written(self):
        guard = ["unshare", "--mount", "sh", "-c", 'mount --bind "$0" "$0" && '
                 'mount -o remount,ro,bind "$0" && cd "$0" && exec "$@"', str(self.folder)]
        if os.geteuid() != 0:
            run("chmod", "-R", "a-w", self.folder)
            guard = []
        before = sorted(self.folder.rglob("*"))
        with self.game("-ai2", "1", guard=guard) as game:
            game.wait_race()
            game.press("F8")
            game.wait_line(r"^P[12] lap 1: ")
            self.keep(game, "race")
            self.assertEqual(game.errors, [])
        self.assertEqual(sorted(self.folder.rglob("*")), before)
        run("chmod", "-R", "u+w", self.folder)


if __name__ == "__main__":
    unittest.main()
