"""The two Debian packages, from an empty root to an empty root."""

import configparser
import glob
import gzip
import os
import re
import shlex
import shutil
import subprocess
import tempfile
import unittest

from empty_root import (HOME, PREFERENCES, ROOT, EmptyRoot, GameInRoot, follow_the_page, race_a_lap,
                        start_and_leave)
from robot import near

PACKAGES = sorted(glob.glob(os.path.join(ROOT, "build/packages/*.deb")))
NEXT = "99.0.0"


def field(package, name):
    return subprocess.run(["dpkg-deb", "--field", package, name], check=True, capture_output=True,
                          text=True).stdout.strip()


def needed(packages):
    """What the packages depend on and recommend, apart from each other."""
    wishes = ", ".join(filter(None, (field(p, f) for p in packages for f in ("Depends", "Recommends"))))
    return ", ".join(wish for wish in wishes.split(", ") if not wish.startswith("brindle-run"))


def next_version(folder):
    """The packages as a later version would be that has only two of the tracks."""
    for package in PACKAGES:
        tree = f"{folder}/{field(package, 'Package')}"
        subprocess.run(["dpkg-deb", "--raw-extract", package, tree], check=True)
        with open(tree + "/DEBIAN/control", "r+", encoding="utf-8") as file:
            control = file.read().replace(field(package, "Version"), NEXT)
            file.seek(0)
            file.write(control)
        for track in glob.glob(tree + "/usr/share/games/brindle-run/tracks/[3-9]_*"):
            os.remove(track)
        subprocess.run(["dpkg-deb", "-Znone", "--root-owner-group", "--build", tree, folder],
                       check=True, stdout=subprocess.DEVNULL)
    return sorted(glob.glob(folder + "/*.deb"))


class Packages(unittest.TestCase):
    def setUp(self):
        self.root = EmptyRoot("bookworm")
        self.addCleanup(self.root.close)
        self.own = self.root.file(PREFERENCES)

    def install(self, packages):
        for package in packages:
            shutil.copy(package, self.root.file("/tmp"))
        told = self.root.run("apt-get", "install", "-y",
                             *("/tmp/" + os.path.basename(package) for package in packages))
        self.assertRegex(told, r"(2 newly installed|2 upgraded, 0 newly installed), 0 to remove")

    def exec_line(self):
        entry = configparser.ConfigParser(interpolation=None)
        entry.read_string(self.root.read("/usr/share/applications/brindle-run.desktop"))
        return shlex.split(entry["Desktop Entry"]["Exec"])

    def records(self):
        return self.root.read(PREFERENCES + "/best_lap_times.txt")

    def tracks(self):
        folder = self.own + "/game/tracks"
        return {name for name in os.listdir(folder) if name.endswith(".trk")}

    def check_manual(self):
        """It has every option that the program tells of."""
        with gzip.open(self.root.file("/usr/share/man/man6/brindle-run.6.gz"), "rt") as file:
            page = file.read().replace("\\-", "-")
        told = self.root.play(*self.exec_line(), "-help").stdout
        options = re.findall(r"(?:^  |, )(-+[a-z][a-z0-9-]*)", told, re.M)
        self.assertGreater(len(options), 12)
        self.assertEqual([option for option in options if option not in page], [])

    def check_own_tracks(self):
        """They hide the game's of their slot until they go. One stays, in slot 9."""
        follow_the_page(self.root, "/usr/share/doc/brindle-run/making-a-track.md", "brindle-track")
        self.assertEqual({name for name in self.tracks() if name[0] == "1"}, {"1_My Track.trk"})
        for end in ("trk", "png"):
            os.remove(f"{self.own}/game/tracks/1_My Track.{end}")
        start_and_leave(self.root, *self.exec_line())
        self.assertEqual({name for name in self.tracks() if name[0] == "1"}, {"1_Coast Road.trk"})
        built = self.root.play("brindle-track", "build", "My Track.course").stdout
        self.assertIn("It takes the place of Paper Circuit", built)

    def check_sharing(self):
        """A lap goes out and in again, and does not go where the player may not write."""
        name = re.search(r"^\[(.*)\]$", self.records(), re.M)[1]
        for path, status in (("/root/a.lap", 1), (HOME + "/a.lap", 0), (HOME + "/a.lap", 1)):
            told = self.root.play("brindle-ghost", "export", name, "Field", path)
            self.assertEqual(told.returncode, status, told.stderr)
        self.assertIn("stays", self.root.play("brindle-ghost", "import", HOME + "/a.lap").stdout)

    def check_without_data(self):
        """A box says what is missing, and a click on its button ends the game."""
        data = self.root.file("/usr/share/games/brindle-run")
        os.rename(data, data + ".away")
        with GameInRoot(self.root, *self.exec_line()) as game:
            game.wait_picture(lambda p: p.share((610, 240, 60, 20), near((56, 54, 53))) == 1.0)
            game.display.xdotool("mousemove", "640", "300", "click", "1")
            self.assertEqual(game.wait_exit(), 1)
            self.assertRegex(game.errors[-1], "no game data: install the package brindle-run-data")
        os.rename(data + ".away", data)

    def test_lintian_has_nothing_to_say(self):
        told = subprocess.run(["lintian", "--fail-on", "error,warning", *PACKAGES], text=True,
                              capture_output=True)
        self.assertEqual((told.returncode, told.stdout), (0, ""))

    def test_from_installing_to_removing(self):
        self.root.run("apt-get", "update", "-q")
        self.root.run("apt-get", "satisfy", "-y", "-q", needed(PACKAGES))
        before = self.root.files()
        self.install(PACKAGES)
        start_and_leave(self.root, *self.exec_line())
        self.assertEqual({name[0] for name in self.tracks()}, set("123456789"))
        self.check_manual()
        self.check_own_tracks()
        self.root.put_field(1)
        seconds = race_a_lap(self.root, 1, *self.exec_line())
        self.assertIn(f"1: {seconds} ", self.records())
        self.check_sharing()
        self.check_without_data()

        with tempfile.TemporaryDirectory(prefix="brindle-next-") as folder:
            self.install(next_version(folder))
        self.assertIn(f"1: {seconds} ", self.records())
        start_and_leave(self.root, *self.exec_line())
        own = {"1_Field.trk", "9_My Track.trk"}
        self.assertEqual({name for name in self.tracks() if name[0] != "2"}, own)
        race_a_lap(self.root, 1, *self.exec_line())

        kept = {name: os.path.getsize(name) for name in glob.glob(self.own + "/*.t*")}
        self.assertEqual(len(kept), 3)  # laps, names, a ghost
        self.root.run("apt-get", "purge", "-y", "-q", "brindle-run", "brindle-run-data")
        self.assertEqual(self.root.files(), before)
        self.assertEqual({name: os.path.getsize(name) for name in glob.glob(self.own + "/*.t*")}, kept)
        self.assertLessEqual(own, self.tracks())


if __name__ == "__main__":
    unittest.main()
