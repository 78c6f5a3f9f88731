"""The portable archive, where there are none of the libraries that it needs."""

import glob
import os
import subprocess
import unittest

from empty_root import HOME, PREFERENCES, ROOT, EmptyRoot, follow_the_page, race_a_lap

ARCHIVE, = glob.glob(os.path.join(ROOT, "build/packages/brindle-run-*-linux-x86_64.tar.xz"))
FOLDER = f"{HOME}/{os.path.basename(ARCHIVE).removesuffix('.tar.xz')}"
PROGRAMS = [f"{FOLDER}/brindle-{name}" for name in ("run", "track", "ghost")]
# What every system has that shows windows by X: its libraries and the drivers for OpenGL.
X_CLIENT = ("libgl1", "libx11-6", "libxext6", "libxcursor1", "libxi6", "libxrandr2", "libxss1")
LARGEST = 70 * 2**20


class Archive(unittest.TestCase):
    def unpacked(self, suite):
        root = EmptyRoot(suite)
        self.addCleanup(root.close)
        subprocess.run(["tar", "-C", root.file(HOME), "-xf", ARCHIVE], check=True)
        return root

    def check_libraries(self, root):
        """Each comes from the archive or is a part of the C library, and has its licence there."""
        for line in root.play("ldd", *PROGRAMS).stdout.splitlines():
            self.assertNotIn("not found", line)
            name = line.split()[0]
            self.assertTrue(f"{FOLDER}/lib/" in line or name.startswith(
                (HOME, "linux-vdso", "libc.so", "libm.so", "/lib64/ld-linux")), line)
        for name in ("libsdl2", "libsdl2-image", "libsdl2-ttf", "libmpg123-0", "freetype", "harfbuzz",
                     "zlib", "libpng1.6", "libjpeg-turbo", "LGPL-2.1", "fonts-sora", "brindle-run"):
            self.assertTrue(os.path.getsize(root.file(f"{FOLDER}/licences/{name}")) > 300, name)

    def check_racing(self, suite):
        root = self.unpacked(suite)
        self.check_libraries(root)
        blind = root.play(PROGRAMS[0])
        self.assertEqual((blind.returncode, blind.stderr), (1, "Window: there is no display\n"))
        root.install("--no-install-recommends", *X_CLIENT)
        follow_the_page(root, f"{FOLDER}/making-a-track.md", PROGRAMS[1])
        root.put_field(2)
        seconds = race_a_lap(root, 2, PROGRAMS[0])
        self.assertIn(f"2: {seconds} ", root.read(PREFERENCES + "/best_lap_times.txt"))
        self.assertIn("Field", root.play(PROGRAMS[2], "list").stdout)

    def test_size(self):
        self.assertLessEqual(os.path.getsize(ARCHIVE), LARGEST)

    def test_on_the_oldest_system(self):
        self.check_racing("bookworm")

    def test_on_a_younger_system(self):
        self.check_racing("trixie")


if __name__ == "__main__":
    unittest.main()
