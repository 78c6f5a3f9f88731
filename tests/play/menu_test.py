"""From the intro through the menu into a race and out again, by keyboard and by mouse."""

import os
import unittest

from driver import GAME_DIR, Game, near
from tracks import open_field, png

PINK, GREEN, YELLOW, KEY_CAP = (250, 60, 200), (60, 250, 60), (255, 215, 70), (46, 64, 108)
FIELD = {"tracks/1_field.trk": open_field(), "tracks/1_field.png": png(PINK, 200, 150),
         "tracks/6_hidden.trk": open_field(), "tracks/6_hidden.png": png(GREEN, 200, 150),
         "tracks/8_blind.trk": open_field()}

INTRO_WORDS = (370, 645, 540, 45)
START_BUTTON = (520, 320, 240, 38)
PRACTICE_ARROW, RACE_ARROW = (288, 336, 14, 18), (288, 373, 14, 18)
FIVE_LAPS = (470, 372, 14, 18)
THUMB_ALONE, THUMB_OF_TWO, EXTRA_THUMB = (600, 520, 80, 60), (470, 520, 60, 60), (660, 520, 150, 60)
KEYBOARD = (400, 250, 480, 150)


def shows(rect, color, at_least=0.9):
    # Close: keys are not heard until a screen has fully come up from black.
    return lambda p: p.share(rect, near(color, 3)) >= at_least


def lit(rect):
    return lambda p: p.count(rect, near(YELLOW, 40)) > 3


def red_button(p):
    return p.share(START_BUTTON, lambda r, g, b: r > 100 and r > 2 * b and r > 2 * g) > 0.2


def lines_of_start(game):
    return [line.split(":")[0] for line in game.lines] == ["display", "renderer"]


class Menu(unittest.TestCase):
    def open(self, *args, **kwargs):
        return Game(*args, without=("tracks",), files=FIELD, **kwargs)

    def names(self, game):
        with open(game.pref_file("last_player_names.txt"), encoding="utf-8") as file:
            return file.read()

    def test_by_keyboard_to_a_lap_with_a_record(self):
        with self.open() as game:
            game.wait_picture(lambda p: p.count(INTRO_WORDS, near((255, 230, 60), 40)) > 100)
            game.press("space")
            menu = game.wait_picture(shows(THUMB_ALONE, PINK))
            self.assertTrue(lit(PRACTICE_ARROW)(menu))
            self.assertFalse(red_button(menu))
            game.press("r", "r")
            game.wait_picture(lambda p: lit(RACE_ARROW)(p) and lit(FIVE_LAPS)(p))
            game.press("F1", "ctrl+k")
            game.type_text("Ann 1 pq")  # none of these letters chooses a mode or a track
            game.press("Return", "F2", "ctrl+BackSpace")
            game.type_text("0123456789abcdefg")
            game.press("Return", "Return", "p", "1")
            game.wait_picture(lambda p: red_button(p) and lit(PRACTICE_ARROW)(p))
            game.press("Return")
            game.wait_race()
            self.assertEqual(self.names(game), "Ann 1 pq\n0123456789abcd\n")
            game.hold("f")
            game.wait_line(r"^P1 flying start: clock running$")
            game.hold("x")
            frames = game.wait_line(r"^P1 ghost saved: Ann_1_pq\.field\.trace \((\d+) frames\)$")[1]
            seconds = game.wait_line(r"^P1 lap 1: (\d+\.\d{3}) s  \(best\)$")[1]
            game.release("f", "x")
            game.press("Escape")
            game.wait_picture(shows(THUMB_ALONE, PINK))
            game.press("Escape")
            self.assertEqual(game.wait_exit(), 0)
            self.assertEqual(game.errors, [])
            with open(game.pref_file("best_lap_times.txt"), encoding="utf-8") as file:
                self.assertIn(f"[Ann 1 pq]\n1: {seconds} Ann_1_pq.field.trace\n", file.read())
            size = os.path.getsize(game.pref_file("Ann_1_pq.field.trace"))
            self.assertEqual(size, 8 + 56 * int(frames))

    def test_by_mouse(self):
        with self.open() as game:
            game.wait_picture(lambda p: p.count(INTRO_WORDS, near((255, 230, 60), 40)) > 100)
            game.click_at(640, 360)
            game.wait_picture(shows(THUMB_ALONE, PINK))
            game.click_at(324, 380)
            game.wait_picture(lit(RACE_ARROW))
            game.click_at(476, 380)
            game.wait_picture(lit(FIVE_LAPS))
            game.click_at(940, 344)
            game.press("BackSpace")
            game.click_at(940, 380)
            game.type_text("s")
            game.click_at(640, 552)
            game.wait_picture(red_button)
            game.click_at(640, 340)
            game.wait_race()
            self.assertEqual(self.names(game), "Pixi\nGadgets\n")
            game.press("l")  # a race had a standing start
            game.wait_line("^flying start: on$")

    def test_help(self):
        with self.open("-menu") as game:
            game.wait_picture(shows(THUMB_ALONE, PINK))
            for key, back in (("question", "a"), ("slash", "Escape")):
                game.press(key)
                game.wait_picture(shows(KEYBOARD, KEY_CAP, 0.2))
                game.press("Tab", "F11", "F11", back)
                game.wait_picture(shows(THUMB_ALONE, PINK))
            game.click_at(1256, 696)
            game.wait_picture(shows(KEYBOARD, KEY_CAP, 0.2))
            game.click_at(640, 360)
            game.wait_picture(shows(THUMB_ALONE, PINK))
            # Without a window manager nothing comes of it, but the window and the menu stay.
            game.press("F11", "F11", "1")
            game.wait_picture(red_button)
            game.press("Escape")
            self.assertEqual(game.wait_exit(), 0)
            self.assertEqual(self.names(game), "Pixie\nGadget\n")

    def test_hidden_track_comes_and_goes(self):
        with self.open("-menu") as game:
            game.wait_picture(shows(THUMB_ALONE, PINK))
            game.press("7", "8", "Return", "6")
            game.wait_picture(lambda p: shows(THUMB_OF_TWO, PINK)(p) and shows(EXTRA_THUMB, GREEN)(p)
                              and red_button(p))
            game.press("1")
            game.wait_picture(shows(THUMB_ALONE, PINK))
            game.press("6", "space")
            game.wait_race()
            game.wait_picture(shows((100, 600, 60, 60), GREEN))
            self.assertTrue(lines_of_start(game))

    def test_menu_opens_and_leaves_without_art_and_tracks(self):
        fonts = os.path.join(GAME_DIR, "art/fonts")
        files = {}
        for name in os.listdir(fonts):
            with open(os.path.join(fonts, name), "rb") as file:
                files["art/fonts/" + name] = file.read()
        with Game("-menu", without=("art", "tracks", "sounds", "music"), files=files) as game:
            game.wait_picture(lambda p: p.pixel(640, 710)[2] > 60)
            game.press("1", "6", "Return", "space", "Escape")
            self.assertEqual(game.wait_exit(), 0)
            self.assertTrue(lines_of_start(game))
            for thing in ("car art red2", "car art blue2", "menu header image",
                          "cursor art/mouse2b.png", "start button art/start_racing4.png"):
                self.assertTrue(any(e.startswith(thing + ": ") for e in game.errors), thing)


if __name__ == "__main__":
    unittest.main()
