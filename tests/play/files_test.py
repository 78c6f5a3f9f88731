"""The program against the files it is given: records, tracks, arguments, gamepads."""

import os
import shutil
import subprocess
import tempfile
import unittest

from robot import GAME_DIR, PATIENCE_S, Game, near, winner
from tracks import png, ring, track

TABLE = b"[Gadget]\n1: 41.250 Gadget.ring.trace\n3: 63.118\n\n[Pixie (7)]\n2: 40.982\n"
BROKEN_TABLE = b"\xff\xfe\x00[\n1: 2.0\n[Gadget\n[Gadget]\n1: fast\nx: 3\n1: 41.250 lost.trace\n[" + b"A" * 500
TRACKS = {"tracks/1_ring.trk": ring(), "tracks/1_ring.png": png((200, 220, 200), 1000, 800),
          "tracks/2_old_harbour.trk": track(400, 300)}


def run_without_display(folder, *args, **environment):
    hidden = {name: value for name, value in os.environ.items()
              if name not in ("DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER")}
    return subprocess.run(["./brindle-run", *args], cwd=folder, capture_output=True, text=True,
                          timeout=PATIENCE_S,
                          env={**hidden, "SDL_AUDIODRIVER": "dummy", **environment})


class Report(unittest.TestCase):
    def report(self, *args, table=TABLE):
        """Runs the report to its end; the game's folder is there until the test is over."""
        game = Game(*args, without=("art", "tracks", "music", "sounds"), files=TRACKS, records={
            "best_lap_times.txt": table} if table else {})
        self.addCleanup(game.__exit__, None)
        status = game.wait_exit()
        return game, status

    def text(self, path):
        subprocess.run(["qpdf", "--check", path], check=True, capture_output=True)
        return subprocess.run(["pdftotext", "-layout", path, "-"], check=True, capture_output=True,
                              text=True).stdout

    def test_name_in_the_file_name_and_on_paper(self):
        game, status = self.report("-highscores=Pixie (7)")
        self.assertEqual((status, game.lines),
                         (0, ['Wrote Pixie__7__highscores.pdf (1 track) for "Pixie (7)"']))
        self.assertRegex(self.text(os.path.join(game.folder, "Pixie__7__highscores.pdf")),
                         r"(?s)Pixie \(7\) — Brindle Run High Scores.*old harbour")
        game, status = self.report("-highscores=Gadget", "-o", "laps.pdf")
        self.assertEqual((status, game.lines, game.errors),
                         (0, ['Wrote laps.pdf (2 tracks) for "Gadget"'], []))
        self.assertIn("63.118 s", self.text(os.path.join(game.folder, "laps.pdf")))

    def test_what_makes_it_fail(self):
        for args, table, complaint in (
                ([], None, r"^highscore-pdf: cannot read .*best_lap_times\.txt$"),
                (["-o", "no/such/folder.pdf"], BROKEN_TABLE,
                 r"^highscore-pdf: cannot write no/such/folder\.pdf$")):
            with self.subTest(args=args):
                game, status = self.report("-highscores=Gadget", *args, table=table)
                self.assertEqual((status, game.lines, len(game.errors)), (1, [], 1))
                self.assertRegex(game.errors[0], complaint)


class Files(unittest.TestCase):
    def test_broken_tracks_and_records(self):
        broken = {
            "tracks/1_empty.trk": b"", "tracks/2_short.trk": b"500 400\n....\n",
            "tracks/3_binary.trk": bytes(range(256)) * 40,
            "tracks/4_huge.trk": b"1000000000 1000000000\n...\n",
            "tracks/5_wide.trk": b"2147483647 1\n*!\n",
            "tracks/6_unmarked.trk": b"4 1\n....\n", "tracks/6_unmarked.png": b"no picture",
            "tracks/7_good.trk": track(400, 300), "tracks/7_good.png": b"\x89PNG\r\n\x1a\nrubbish",
        }
        with Game("-fast", "4", without=("tracks",), files=broken,
                  records={"best_lap_times.txt": BROKEN_TABLE}) as game:
            game.wait_race()
            for slot in (1, 2, 3, 4, 5, 6):
                game.press(str(slot))
                game.wait_line(f"^track {slot} failed to load$")
            game.press("t")
            game.wait_line(r"^track view: no \.png for this track$")
            self.assertEqual(game.interrupt(), 0)
            self.assertIn("track 4 not found, picking default", game.errors)
            # Once when a first track is looked for, once at its key.
            self.assertEqual(
                game.errors.count("load_track(tracks/6_unmarked.trk): missing '*' or '!'"), 2)

    def test_sound_that_does_not_come_up(self):
        with Game("-fast", sound="no-such-driver") as game:
            game.wait_race()
            self.assertRegex(game.errors[-2], "^Audio disabled: ")
            self.assertEqual(game.errors[-1], "continuing without audio")
            game.hold("f")
            game.wait_line("^P1 flying start: clock running$")

    def test_joysticks_that_are_not_there(self):
        conf = b"[RED]\ndevice = js7 ; mine\nturn=hat0\n[blue]\ndevice=pad\n[other]\ndevice=js3\n"
        with Game("-fast", files={"input.conf": conf}) as game:
            game.wait_race()
            self.assertEqual(game.errors, [
                "gamepad: joystick 7 not connected (0 attached) — keyboard still works",
                'gamepad: bad device "pad" (want e.g. js0) — keyboard still works'])
            game.hold("f")
            game.wait_line("^P1 flying start: clock running$")


class StartedElsewhere(unittest.TestCase):
    def test_races_in_a_folder_of_the_players_own(self):
        ring_here = {"game/tracks/1_Mine.trk": ring(), "game/input.conf": b"[red]\ndevice = js9\n"}
        with Game("-fast", "1", start_in="/", records=ring_here) as game:
            game.wait_race()
            self.assertEqual(game.errors, [
                "gamepad: joystick 9 not connected (0 attached) — keyboard still works"])
            game.press("t")
            game.wait_line(r"^track view: no \.png for this track$")
            self.assertEqual(game.interrupt(), 0)
            tracks = os.listdir(game.pref_file("game/tracks"))
            self.assertEqual([t for t in tracks if t[0] == "1"], ["1_Mine.trk"])
            self.assertEqual(sorted(t[0] for t in tracks if t.endswith(".png")), list("23456789"))
            self.assertTrue(os.path.samefile(game.pref_file("game/art"),
                                             os.path.join(GAME_DIR, "art")))

    def test_says_so_where_no_data_are_found(self):
        with tempfile.TemporaryDirectory() as bare:
            shutil.copy(os.path.join(GAME_DIR, "brindle-run"), bare)
            # Without a display there is nobody to close the message box for.
            ended = run_without_display(bare, SDL_VIDEODRIVER="dummy",
                                        SDL_RENDER_DRIVER="software", XDG_DATA_HOME=bare)
            self.assertEqual(ended.returncode, 1)
            self.assertRegex(ended.stderr, r"^FATAL: cannot open font art/fonts/.*\n"
                                           r"Brindle Run found no game data: install .*\n$")
            self.assertFalse(os.path.exists(os.path.join(bare, "BrindleRun", "game")))


    def test_ends_where_there_is_no_display(self):
        ended = run_without_display(GAME_DIR, "-fast")
        self.assertEqual(ended.returncode, 1)
        self.assertIn("Window: there is no display\n", ended.stderr)


class OneShots(unittest.TestCase):
    def test_gamepad_test_without_any(self):
        with Game("-gamepad-test", "-o", without=("art", "tracks", "music", "sounds")) as game:
            self.assertEqual((game.wait_exit(), game.lines, game.errors), (
                0, ["gamepad-test: 0 joystick(s) attached", "  (plug one in and rerun)"],
                ["ignoring unrecognised argument: -o"]))

    def leaves_by_escape(self, option, picture):
        with Game(option) as game:
            game.wait_picture(picture)
            game.press("Escape")
            self.assertEqual((game.wait_exit(), game.errors), (0, []))

    def test_winner(self):
        self.leaves_by_escape("-winner",
                              lambda p: winner(p) and near((38, 86, 50))(*p.pixel(900, 500)))

    def test_ghost(self):
        self.leaves_by_escape("-test-ghost", lambda p: near((115, 115, 115))(*p.pixel(640, 600))
                              and p.pixel(320, 110) != p.pixel(640, 600))

    def test_finish_plays_to_its_end(self):
        with Game("-finish", without=("art", "sounds")) as game:
            self.assertEqual(game.wait_exit(), 0)
            self.assertEqual(len([e for e in game.errors if "no samples" in e]), 3)


if __name__ == "__main__":
    unittest.main()
