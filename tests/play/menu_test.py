"""From the intro through the menu into a race and out again, by keyboard and by mouse."""

import os
import unittest

from robot import GAME_DIR, Game, menu_of, near, shows
from tracks import open_field, png, ring, track

PINK, GREEN, YELLOW, KEY_CAP = (250, 60, 200), (60, 250, 60), (255, 215, 70), (46, 64, 108)
FIELD = {"tracks/1_field.trk": open_field(), "tracks/1_field.png": png(PINK, 200, 150),
         "tracks/6_hidden.trk": open_field(), "tracks/6_hidden.png": png(GREEN, 200, 150),
         "tracks/8_blind.trk": open_field()}

INTRO_WORDS = (370, 645, 540, 45)
START_BUTTON = (520, 320, 240, 38)
PRACTICE_ARROW, RACE_ARROW = (288, 336, 14, 18), (288, 373, 14, 18)
FIVE_LAPS = (466, 374, 14, 18)
THUMB_OF_TWO, EXTRA_THUMB = (470, 520, 60, 60), (660, 520, 150, 60)
KEYBOARD = (400, 250, 480, 150)

alone = menu_of(PINK)


def intro(p):
    return p.count(INTRO_WORDS, near((255, 230, 60), 40)) > 100


def help_page(p):
    """In full: it hears no keys while it comes up from black."""
    return p.share(KEYBOARD, near(KEY_CAP, 0)) > 0.3


def of_two(p):
    return shows(THUMB_OF_TWO, PINK)(p) and shows(EXTRA_THUMB, GREEN)(p)


def lit(*rects):
    return lambda p: all(p.count(rect, near(YELLOW, 40)) > 3 for rect in rects)


def red_button(p):
    return p.share(START_BUTTON, lambda r, g, b: r > 100 and r > 2 * b and r > 2 * g) > 0.2


def lines_of_start(game):
    return [line.split(":")[0] for line in game.lines] == ["display", "renderer"]


class Menu(unittest.TestCase):
    def open(self, *args):
        return Game(*args, without=("tracks",), files=FIELD)

    def record(self, game, name):
        with open(game.pref_file(name), encoding="utf-8") as file:
            return file.read()

    def test_by_keyboard_to_a_lap_with_a_record(self):
        with self.open() as game:
            game.wait_picture(intro)
            game.press("space")
            menu = game.wait_picture(alone)
            self.assertTrue(lit(PRACTICE_ARROW)(menu))
            self.assertFalse(red_button(menu))
            game.press("r", "r")
            game.wait_picture(lit(RACE_ARROW, FIVE_LAPS))
            game.press("F1", "ctrl+k")
            game.type_text("Ann 1 pq")  # none of these letters chooses a mode or a track
            game.press("Return", "F2", "ctrl+BackSpace")
            game.type_text("0123456789abcdefg")
            game.press("Escape", "Return", "p", "1")
            game.wait_picture(lambda p: red_button(p) and lit(PRACTICE_ARROW)(p))
            game.press("r", "Return")
            game.wait_race()
            self.assertEqual(self.record(game, "last_player_names.txt"),
                             "Ann 1 pq\n0123456789abcd\n")
            game.hold("f", "x")  # before the lights go out: a circle that always is the same
            frames = game.wait_line(r"^P1 ghost saved: Ann_1_pq\.field\.trace \((\d+) frames\)$")[1]
            seconds = game.wait_line(r"^P1 lap 1: (\d+\.\d{3}) s  \(best\)$")[1]
            game.release("f", "x")
            game.press("Escape")
            game.wait_picture(alone)
            game.press("Escape")
            self.assertEqual((game.wait_exit(), game.errors), (0, []))
            self.assertIn(f"[Ann 1 pq]\n1: {seconds} Ann_1_pq.field.trace\n",
                          self.record(game, "best_lap_times.txt"))
            size = os.path.getsize(game.pref_file("Ann_1_pq.field.trace"))
            self.assertEqual(size, 8 + 56 * int(frames))

    def test_by_mouse(self):
        with self.open() as game:
            game.wait_picture(intro)
            game.click_at(640, 360)
            game.wait_picture(alone)
            game.click_at(324, 380)
            game.wait_picture(lit(RACE_ARROW))
            game.click_at(472, 382)
            game.wait_picture(lit(FIVE_LAPS))
            game.click_at(940, 344)
            game.press("BackSpace")
            game.click_at(940, 380)
            game.type_text("s")
            game.click_at(640, 552)
            game.wait_picture(red_button)
            game.click_at(640, 340)
            game.wait_race()
            self.assertEqual(self.record(game, "last_player_names.txt"), "Pixi\nGadgets\n")
            game.press("l")  # a race had a standing start
            game.wait_line("^flying start: on$")

    def test_help(self):
        with self.open("-menu") as game:
            game.wait_picture(alone)
            for key, back in (("question", "a"), ("slash", "Escape")):
                game.press(key)
                game.wait_picture(help_page)
                game.press("Tab", "Alt_L", "F11", "F11")
                self.assertTrue(help_page(game.display.screenshot()))
                game.press(back)
                game.wait_picture(alone)
            game.click_at(1256, 696)
            game.wait_picture(help_page)
            game.click_at(640, 360)
            game.wait_picture(alone)
            # Without a window manager nothing comes of it, but the window and the menu stay.
            game.press("F11", "F11", "1")
            game.wait_picture(red_button)
            game.press("Escape")
            self.assertEqual(game.wait_exit(), 0)
            self.assertEqual(self.record(game, "last_player_names.txt"), "Pixie\nGadget\n")

    def test_help_shows_keys_as_printed(self):
        # Where "Q", "Y" and "Z" of a US keyboard are drawn.
        q, y, z = (266, 262, 32, 32), (454, 262, 32, 32), (294, 337, 32, 32)
        pages = {}
        for layout in ("us", "de", "fr"):
            with Game("-menu", without=("tracks",), files=FIELD, layout=layout) as game:
                game.wait_picture(alone)
                game.press("question")  # with Shift on another key each time
                pages[layout] = game.wait_picture(help_page)
        changed = {layout: [pages[layout].difference(pages["us"], key) > 0.02 for key in (q, y, z)]
                   for layout in pages}
        self.assertEqual(changed, {"us": [False, False, False], "de": [False, True, True],
                                   "fr": [True, False, True]})

    def test_switches_hold_for_race_after_race_and_keep_no_records(self):
        ring_only = {"tracks/1_ring.trk": ring(), "tracks/1_ring.png": png(PINK, 200, 150)}
        with Game("-menu", without=("tracks",), files=ring_only) as game:
            game.wait_picture(alone)
            game.press("b", "F3", "F4", "1")
            for _ in range(2):
                game.press("Return")
                game.wait_line("^P[12] lap 2: ")  # nobody has touched a key
                game.press("Escape")
                game.wait_picture(alone)
                game.press("1")
            self.assertFalse(os.path.exists(game.pref_file("best_lap_times.txt")))

    def test_hidden_track_comes_and_goes(self):
        with self.open("-menu") as game:
            game.wait_picture(alone)
            game.press("7", "8", "Return", "6")
            game.wait_picture(lambda p: of_two(p) and red_button(p))
            game.press("1")
            game.wait_picture(alone)
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

    def test_failed_tracks_are_named_and_none_are_asked_for(self):
        def gold(rect):
            return lambda p: p.count(rect, near((255, 215, 80), 40)) > 40

        with Game("-menu", without=("tracks",)) as game:
            game.wait_picture(gold((480, 556, 320, 30)))
        files = {"tracks/1_a.trk": track(300, 200), "tracks/1_a.png": png(PINK),
                 "tracks/2_b.trk": b"5 5\n", "tracks/2_b.png": png(GREEN)}
        with Game("-menu", without=("tracks",), files=files) as game:
            game.wait_picture(lambda p: p.pixel(640, 710)[2] > 60)
            game.press("2", "Return")
            game.wait_race()
            game.wait_picture(gold((400, 180, 480, 80)))  # it is named there, and on the menu
            game.press("Escape")
            game.wait_picture(gold((560, 388, 160, 24)))


if __name__ == "__main__":
    unittest.main()
