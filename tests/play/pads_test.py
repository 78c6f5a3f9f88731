"""Pads without a setup, in the real program: plugged in, driven, felt, pulled out, handed over."""

import unittest

from robot import Game, menu_of, near
from menu_test import PINK, RACE_ARROW, intro, lit
from tracks import open_field, png

FIELD = {"tracks/1_field.trk": open_field(), "tracks/1_field.png": png(PINK, 200, 150)}
GAME_OVER = (300, 230, 680, 140)
alone = menu_of(PINK)


class Pads(unittest.TestCase):
    def test_two_pads_race_and_find_their_players_again(self):
        mappings = {"gamecontrollerdb.txt": b"0300cafe0000000000000000000000ff,Odd Pad,platform:Linux,a:b3,x:b2,\n"}
        with Game("-fast", "-race=99", "1", without=("tracks",), files={**FIELD, **mappings},
                  pads=True) as game:
            game.wait_line("^pads: 1 mappings from gamecontrollerdb.txt$")
            game.wait_race()
            game.pad("plug One pad", "plug Two pad", "plug Three stick")
            for name, side in (("One", "red"), ("Two", "blue"), ("Three", "nobody")):
                game.wait_line(f'^pad: "{name}" drives {side}$')
            # A stick and a trigger, a D-pad and a button: a circle, by way of the field's wall.
            game.pad("axis One leftx 20000", "axis One righttrigger 20000",
                     "button Two dpright 1", "button Two a 1")
            game.wait_line("^P[12] lap 1: ")
            game.wait_line("^P[12] lap [12]: ")
            self.assertTrue({"P1", "P2"} <= {line[:2] for line in game.lines if " lap 1" in line})
            game.pad("button One x 1")  # the handbrake: a skid is felt
            game.wait_line(r"^rumble One 0 [1-9]\d+$")
            game.pad("button One x 0", "axis One leftx 0", "axis One righttrigger -32768")
            game.wait_line("^rumble One 0 0$")
            game.pad("unplug One", "unplug Two", "plug Two pad", "plug One pad")
            for name, side in (("Two", "blue"), ("One", "red")):
                game.wait_line(f'^pad: "{name}" drives {side}$')
            game.tap("One", "back")  # two pads: nobody is handed over in mid-race
            game.pad("unplug Two")
            game.tap("One", "back", "y")
            self.assertEqual(game.wait_line('^pad: "One" drives (.*)$')[1], "blue")
            game.wait_line("^race restarted$")
            # The spare one, of which SDL knows no names, takes the seat that is free.
            game.tap("Three", "1")
            self.assertEqual(game.wait_line('^pad: "Three" drives (.*)$')[1], "red")
            game.pad("axis Three 0 20000", "button Three 0 1")
            game.wait_line("^P1 lap 1: ")


    def test_a_whole_evening_by_pad_alone(self):
        with Game(without=("tracks",), files=FIELD, pads=True) as game:
            game.wait_picture(intro)
            game.pad("plug One pad")
            game.tap("One", "a")
            game.wait_picture(alone)
            # The only track; over the start button to the red name, a letter, and back to a race.
            game.tap("One", "a", "dpup", "dpright", "a", "a", "b", "dpleft", "dpleft", "dpdown", "a")
            game.wait_picture(lit(RACE_ARROW))
            game.tap("One", "start")
            game.wait_race()
            game.pad("axis One leftx 20000", "axis One righttrigger 32767")
            game.wait_line("^P1 finished the race$")
            game.tap("One", "start")
            game.wait_picture(lambda p: p.count(GAME_OVER, near((225, 55, 55), 8)) > 500)
            game.tap("One", "dpright", "a")
            game.wait_line("^race restarted$")
            game.tap("One", "start")
            game.wait_picture(alone)
            game.tap("One", "b", "b")
            self.assertEqual((game.wait_exit(), game.errors), (0, []))
            with open(game.pref_file("last_player_names.txt"), encoding="utf-8") as names:
                self.assertEqual(names.read(), "PixieA\nGadget\n")

    def test_a_file_that_names_a_device_leaves_other_pads_alone(self):
        conf = b"[red]\nright = Q\n[blue]\ndevice = js7\n"
        with Game("-fast", "-race=3", "1", without=("tracks",), files={**FIELD, "input.conf": conf},
                  pads=True) as game:
            game.wait_race()
            game.pad("plug One pad")
            game.tap("One", "y", "start", "back")
            game.press("BackSpace")
            game.wait_line("^race restarted$")
            self.assertEqual([line for line in game.lines if "pad" in line.lower()], [])
            game.hold("f", "q")  # a circle by a key of one's own
            game.wait_line("^P1 lap 1: ")


if __name__ == "__main__":
    unittest.main()
