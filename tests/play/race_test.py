"""Two people race: the real program, real keys, a real track."""

import unittest

from robot import Game

LEFT_VIEW = (20, 60, 600, 600)
RIGHT_VIEW = (660, 60, 600, 600)


class Race(unittest.TestCase):
    def test_flying_start_and_cars_that_move(self):
        with Game("-fast", "1") as game:
            game.wait_line(r"^display: 1280x720 pts \(1280x720 px\)")
            game.wait_line(r"^renderer: backend='\w+' output=1280x720 \(logical 1280x720")
            before = game.wait_picture(lambda p: p.count(LEFT_VIEW, lambda r, g, b: r + g + b > 60))
            game.hold("f", "KP_Enter")
            game.wait_line(r"^P[12] flying start: clock running$")
            game.wait_line(r"^P[12] flying start: clock running$")
            after = game.display.screenshot()
            self.assertGreater(after.difference(before, LEFT_VIEW), 0.2)
            self.assertGreater(after.difference(before, RIGHT_VIEW), 0.2)
            self.assertEqual((game.interrupt(), game.errors), (0, []))

    def test_built_in_track_without_any_files(self):
        with Game("-fast", without=("tracks", "music", "sounds")) as game:
            game.wait_line(r"^renderer:")
            game.hold("f")
            game.wait_line(r"^P1 flying start: clock running$")
            game.press("t")
            game.wait_line(r"^track view: no \.png for this track$")
            self.assertEqual(game.interrupt(), 0)

    def test_missing_race_font_stops_the_program(self):
        with Game("-fast", without=("art",)) as game:
            self.assertNotEqual(game.wait_exit(), 0)
            self.assertRegex(
                game.errors[-1],
                r"^FATAL: cannot open font art/fonts/Montserrat-Black\.otf: .+")


if __name__ == "__main__":
    unittest.main()
