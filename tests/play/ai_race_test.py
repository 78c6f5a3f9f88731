"""Races driven by the computer, from the countdown to game over and back."""

import re
import unittest

from robot import Game, menu_of, near, winner
from tracks import png, ring

COUNTS = ((270, 350, 100, 90), (910, 350, 100, 90))  # below the cars, which start high up there
TOAST, RESULT = (340, 190, 600, 52), (300, 480, 680, 125)
GAME_OVER = (395, 262, 495, 84)
HINT = (450, 392, 380, 22)
GREEN = (60, 250, 60)
RING = {"tracks/1_ring.trk": ring(), "tracks/1_ring.png": png(GREEN, 200, 150)}


def count(p):
    """A number of the countdown in each view."""
    return all(p.count(rect, near((238, 185, 35), 40)) > 100 for rect in COUNTS)


def no_count(p):
    return all(p.count(rect, near((238, 185, 35), 40)) == 0 for rect in COUNTS)


def result(p):
    return p.count(RESULT, near((225, 228, 238), 30)) > 500


def game_over(p):
    """Red words over a view that has gone dark."""
    return (p.share(GAME_OVER, lambda r, g, b: r > 180 and g < 110 and b < 110) > 0.2
            and p.count(HINT, near((220, 220, 235), 40)) > 100
            and p.share((20, 600, 100, 100), lambda r, g, b: r + g + b < 240) == 1)


class AiRace(unittest.TestCase):
    def test_both_cars_race_from_countdown_to_game_over_and_rematch(self):
        with Game("-ai2", "-race=1", without=("tracks",), files=RING) as game:
            game.wait_picture(count)
            game.wait_picture(no_count)
            game.press("9")
            game.wait_line("^no track in slot 9$")
            game.wait_picture(lambda p: p.count(TOAST, near((255, 220, 110), 40)) > 200)
            first = game.wait_line(r"^P([12]) finished the race$")[1]
            second = "2" if first == "1" else "1"
            game.wait_line(f"^P{second} finished the race$")
            game.wait_picture(lambda p: game_over(p) and result(p))
            race = [re.sub(r"\d+\.\d{3}", "T", line) for line in game.lines[2:] if line[0] == "P"]
            self.assertEqual(race, [f"P{first} lap 1: T s  (best)", f"P{first} finished the race",
                                    f"P{second} lap 1: T s  (best)", f"P{second} finished the race"])
            self.assertEqual(game.errors, [])
            game.press("BackSpace")
            game.wait_line("^race restarted$")
            game.wait_picture(lambda p: count(p) and not result(p))
            self.assertEqual(game.interrupt(), 0)

    def test_game_over_by_escape_its_keys_and_the_limit_of_time(self):
        with Game("-ai", "-race=1", without=("tracks",), files=RING) as game:
            game.wait_line(r"^P1 finished the race$")
            game.wait_picture(winner)
            game.press("Escape")
            game.wait_picture(game_over)
            before = len(game.lines)
            # Only the ways out live here, also after game over has come up in full.
            game.press("g", "m", "t", "l", "F1", "F11", "1", "Prior", "BackSpace")
            game.wait_line(r"^race restarted$")
            self.assertEqual(game.lines[before:], ["race restarted"])
            # Nobody drives the blue car: it has 20 seconds from the winner's finish.
            game.wait_line(r"^P1 finished the race$")
            game.wait_line(r"^P2 out of time — race over$")
            game.wait_picture(game_over)
            game.press("space")
            game.wait_picture(menu_of(GREEN))
            game.press("1", "Return")
            game.wait_race()
            game.press("l")  # the menu began with a practice, which has a flying start
            game.wait_line("^flying start: off$")
            game.press("Escape")
            game.wait_picture(menu_of(GREEN))
            game.press("Escape")
            self.assertEqual(game.wait_exit(), 0)


if __name__ == "__main__":
    unittest.main()
