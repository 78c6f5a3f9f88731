"""Every key of the race screen: what it prints, and what it shows where it prints nothing."""

import re
import unittest

from robot import BLUE_HUD, RED_HUD, Game, near
from tracks import png, track

ONE_VIEW = (300, 300, 40, 40)
OTHER_VIEW = (940, 300, 40, 40)
TOAST = (340, 190, 600, 52)
OSD = (4, 34, 160, 40)
PINK = (250, 60, 200)
ROAD = (60, 60, 64)
KERB = (230, 230, 230)

# Long and low: 320 thousandths of it fit into a split view, 640 into a solo view.
FIELD = {
    "tracks/1_field.trk": track(2000, 400),
    "tracks/1_field.png": png(PINK),
    "tracks/2_kerbs.trk": track(400, 400, "w"),
    "tracks/3_broken.trk": b"400 400\n...\n",
}

TOGGLES = [
    ("g", "ghost: on", "ghost: off"),
    ("k", "sound effects: off", "sound effects: on"),
    ("m", "music: off", "music: on"),
    ("p", "panning: on (smooth)", "panning: off (snap)"),
    ("t", "track view: raster", "track view: image"),
    ("F3", "P1 reverse-turn-swap: off", "P1 reverse-turn-swap: on"),
    ("F4", "P2 reverse-turn-swap: off", "P2 reverse-turn-swap: on"),
    ("F5", "P1 accelerate inverted: on", "P1 accelerate inverted: off"),
    ("F6", "P2 accelerate inverted: on", "P2 accelerate inverted: off"),
    ("F7", "ghost sprite: alternative", "ghost sprite: original"),
    ("F9", "vsync: off", "vsync: on"),
]


def zoom(before, after, lowest):
    factor = 2 ** (after * 0.25)
    return f"zoom: level {before} -> {after} (factor {factor:.3f}, range [{lowest}, 8])"


class Keys(unittest.TestCase):
    def race(self, *args):
        return Game("-fast", *args, without=("tracks", "music"), files=FIELD)

    def expect(self, game, presses):
        """Presses each key and waits for its line; in the end no other line has been printed."""
        before = len(game.lines)
        for key, line in presses:
            game.press(key)
            if line is not None:
                game.wait_line(f"^{re.escape(line)}$")
        self.assertEqual(game.lines[before:], [line for _, line in presses if line is not None])

    def test_settings_print_their_lines(self):
        with self.race() as game:
            game.wait_race()
            # From a standing start a car whose accelerator is inverted drives away from the line.
            self.expect(game, [("l", "flying start: off")])
            for key, first, second in TOGGLES:
                self.expect(game, [(key, first), (key, second)])
            self.expect(game, [("BackSpace", "race restarted"), ("n", "music: next track"),
                               ("shift+g", "ghost: saved personal best (on)"),
                               ("g", "ghost: off"), ("l", "flying start: on"),
                               ("space", None), ("0", None), ("q", None),
                               ("BackSpace", "race restarted")])
            self.assertEqual(game.interrupt(), 0)

    def test_volume_and_zoom_stop_at_their_bounds(self):
        with self.race() as game:
            game.wait_race()
            falling = [25, 20, 15, 10, 5, 0, 0]
            rising = [*range(5, 101, 5), 100]
            self.expect(game, [("F11", f"music volume: {v}%") for v in falling]
                        + [("F12", f"music volume: {v}%") for v in rising]
                        + [("F10", "music volume: 30%")])
            self.expect(game, [("Prior", zoom(n, n + 1, -7)) for n in range(8)] + [("Prior", None)]
                        + [("Next", zoom(n, n - 1, -7)) for n in range(8, -7, -1)]
                        + [("Next", None)])
            # A solo view has a bound of its own; the next zoom key obeys it.
            self.expect(game, [("F1", "view: P1 solo"), ("Next", zoom(-7, -3, -3)),
                               ("F1", "view: split"), ("Prior", zoom(-3, -2, -7))])
            # Another track starts at normal size, and this one fits the view.
            self.expect(game, [("2", None), ("Next", None), ("Prior", zoom(0, 1, 0))])

    def test_slots(self):
        with self.race() as game:
            game.wait_race()
            game.wait_picture(lambda p: p.share(ONE_VIEW, near(PINK)) > 0.9)
            self.expect(game, [("3", "track 3 failed to load"), ("4", "no track in slot 4"),
                               ("t", "track view: raster")])
            game.wait_picture(lambda p: p.share(ONE_VIEW, near(ROAD)) > 0.9)
            game.press("2")
            game.wait_picture(lambda p: p.share(ONE_VIEW, near(KERB)) > 0.9)
            self.expect(game, [("t", "track view: no .png for this track"), ("2", None)])
            # A track that is loaded anew shows its picture again.
            game.press("1")
            game.wait_picture(lambda p: p.share(OTHER_VIEW, near(PINK)) > 0.9)

    def test_views(self):
        with self.race() as game:
            game.wait_race()
            for key, line, left, right in (
                    ("F1", "view: P1 solo", RED_HUD, None), ("F2", "view: P2 solo", BLUE_HUD, None),
                    ("F2", "view: split", RED_HUD, BLUE_HUD),
                    ("F2", "view: P2 solo", BLUE_HUD, None), ("F1", "view: P1 solo", RED_HUD, None),
                    ("F1", "view: split", RED_HUD, BLUE_HUD)):
                self.expect(game, [(key, line)])
                game.wait_picture(lambda p, l=left, r=right: p.hud_colors() == (l, r))

    def test_words_over_the_race(self):
        with self.race() as game:
            game.wait_race()
            game.press("F8")
            game.wait_picture(lambda p: p.count(OSD, near((180, 230, 180))) > 10)

            def shows(key, rect, color):
                game.press(key)
                return game.display.screenshot().count(rect, near(color)) > 10

            # They go by themselves: a slow screenshot may come too late, so the key is pressed again.
            self.assertTrue(any(shows("F9", OSD, (240, 80, 70)) for _ in range(20)))
            self.assertTrue(any(shows("n", TOAST, (255, 220, 110)) for _ in range(20)))
            game.wait_picture(lambda p: p.count(TOAST, near((255, 220, 110))) == 0)


if __name__ == "__main__":
    unittest.main()
