"""What the race says on the screen, from the countdown to the rematch, and where there is none."""

import os
import subprocess
import unittest

from robot import GAME_DIR, Game, near
from tracks import png, ring

RING = {"tracks/1_ring.trk": ring(), "tracks/1_ring.png": png((70, 90, 70))}
COUNTS = ((270, 100, 100, 90), (910, 100, 100, 90))
TOAST = (340, 190, 600, 52)
RESULT = (300, 415, 680, 190)


def counts(p):
    """A number of the countdown in each view."""
    return all(p.count(rect, near((238, 185, 35), 40)) > 100 for rect in COUNTS)


def no_counts(p):
    return all(p.count(rect, near((238, 185, 35), 40)) == 0 for rect in COUNTS)


def toast(p):
    return p.count(TOAST, near((255, 220, 110), 40)) > 200


def result(p):
    return p.count(RESULT, near((225, 228, 238), 30)) > 500


class Screens(unittest.TestCase):
    def test_race_is_told_from_countdown_to_rematch(self):
        with Game("-ai2", "-race=1", without=("tracks", "music"), files=RING) as game:
            game.wait_picture(counts)
            game.wait_picture(no_counts)
            game.press("9")
            game.wait_line("^no track in slot 9$")
            game.wait_picture(toast)
            game.wait_line(r"^P[12] finished the race$")
            game.wait_line(r"^P[12] (finished the race|out of time — race over)$")
            game.wait_picture(result)
            game.press("BackSpace")
            game.wait_line("^race restarted$")
            game.wait_picture(lambda p: counts(p) and not result(p))
            self.assertEqual(game.interrupt(), 0)

    def test_ends_where_there_is_no_display(self):
        bare = {name: value for name, value in os.environ.items()
                if name not in ("DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER")}
        run = subprocess.run([os.path.join(GAME_DIR, "brindle-run"), "-fast"], cwd=GAME_DIR,
                             env={**bare, "SDL_AUDIODRIVER": "dummy"}, timeout=60,
                             capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 1)
        self.assertIn("Window: there is no display\n", run.stderr)


if __name__ == "__main__":
    unittest.main()
