#!/usr/bin/env python3
"""The game in a real browser, from its page's load to a record that is there the next time.

A site with one small track is put together from the programs in BRINDLE_WEB_DIR (build/web/game) and
the data in BRINDLE_GAME_DIR (build/release/game).
"""

import os
import pathlib
import re
import subprocess
import tempfile
import time
import unittest

import browser
import robot
import tracks

ROOT = pathlib.Path(robot.ROOT)
PROGRAMS = pathlib.Path(os.environ.get("BRINDLE_WEB_DIR", ROOT / "build/web/game")).resolve()
GAME = pathlib.Path(robot.GAME_DIR).resolve()
FIELD = (70, 120, 80)
HEATH = (120, 90, 110)  # what the field becomes when the site is updated
FLAG = "Pixie"  # who red is until somebody gives another name
ONLY_PRESENTS = """data:text/html,<body style="margin:0"><canvas width=1280 height=720></canvas><script>
const gl = document.querySelector("canvas").getContext("webgl"); let frames = 0;
(function frame() { gl.clearColor(Math.random(), 0, 0, 1); gl.clear(gl.COLOR_BUFFER_BIT); ++frames;
requestAnimationFrame(frame); })();</script>"""


def menu(picture):
    """Is it the menu, fully come up from black, with the field as its only track?"""
    is_field = robot.near(FIELD, 5)
    return picture.share(robot.THUMB, is_field) > 0.9 and picture.count(robot.SKY, is_field) == 0


def lay_out_game(folder):
    for kind in ("art", "music", "sounds"):
        (folder / kind).symlink_to(GAME / kind)
    (folder / "tracks").mkdir()
    (folder / "tracks/1_Field.trk").write_bytes(tracks.open_field())


def make_site(game, site, version, colour):
    (game / "tracks/1_Field.png").write_bytes(tracks.png(colour, 400, 400))
    subprocess.run(["python3", ROOT / "packaging/web/make_site.py", PROGRAMS, game, site, version],
                   check=True)


class WebTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.game, cls.site = cls.folder / "game", cls.folder / "site"
        cls.game.mkdir()
        lay_out_game(cls.game)
        make_site(cls.game, cls.site, "0.0.0", FIELD)
        cls.server = browser.Server(cls.site)
        cls.addClassCleanup(cls.server.server_close)
        cls.addClassCleanup(cls.server.shutdown)

    def open_browser(self):
        """A browser that knows nothing yet, its page as large as the game's own picture."""
        profile = tempfile.mkdtemp(dir=self.folder)
        page = browser.Browser(profile)
        self.addCleanup(page.close)
        page.visit(self.server.address)
        width, height = page.run("return [innerWidth, document.querySelector('main').clientHeight]")
        outer = page.ask("GET", "/window/rect")
        page.resize(outer["width"] + 1280 - width, outer["height"] + 720 - height)
        return page

    def screenshot(self, page):
        path = self.folder / "screen.png"
        page.picture(path)
        rgb = subprocess.run(["convert", path, "-crop", "1280x720+0+0", "-depth", "8", "rgb:-"],
                             check=True, capture_output=True).stdout
        return robot.Screenshot(rgb)

    def wait_picture(self, page, what, wanted):
        return page.wait(what, lambda: wanted(self.screenshot(page)))

    def to_menu(self, page):
        self.wait_intro(page)
        page.keys(" ")
        self.wait_picture(page, "the menu", menu)

    def wait_intro(self, page):
        page.wait("the title", lambda: page.run("return page.frames > 20"))
        self.wait_picture(page, "the title's sun",
                          lambda p: p.share((300, 310, 60, 20), lambda r, g, b: r > 200 and g > 150) > 0.8)

    def start_race(self, page):
        page.keys("1", " ")
        self.wait_race(page)

    def wait_race(self, page):
        page.wait("the race", lambda: page.run(
            "return Boolean(page.shelf.fetched.get('tracks/1_Field.png'))"))

    def drive_lap(self, page):
        """A lap in a circle, by the keys of red; its time. In a race: the circle leads over the line
        however slow the browser is, for both keys are down when the car starts."""
        self.to_menu(page)
        page.keys("r")
        self.start_race(page)
        page.keys("+f", "+x")
        seconds = page.wait_for_line(r"^P1 lap 1: (\d+\.\d{3}) s {2}\(best\)$")[1]
        page.keys("-x", "-f")
        page.wait("the record to be kept", lambda: page.run(
            "return page.records.text().includes('Pixie') && page.records.keeping === null"))
        return seconds

    def laps(self, page):
        return page.run("return page.records.list()")

    def errors(self, page):
        return [text for level, text in page.lines() if level == "SEVERE"]

    def frames_per_second(self, page, counter, seconds=4):
        page.run(f"window.mark = [{counter}, performance.now()]")
        time.sleep(seconds)
        return page.run(f"return 1000 * ({counter} - mark[0]) / (performance.now() - mark[1])")

    def test_a_record_is_there_the_next_time(self):
        page = self.open_browser()
        seconds = self.drive_lap(page)
        race = self.frames_per_second(page, "page.frames")
        page.visit(self.server.address)
        self.wait_intro(page)
        [lap] = self.laps(page)
        self.assertEqual((lap["name"], lap["slot"], f"{lap['seconds']:.3f}"), (FLAG, 1, seconds))
        self.assertIn(lap["ghost"], page.run("return page.game.FS.readdir('/libsdl/BrindleRun')"))
        self.assertEqual(self.errors(page), [])

        self.addCleanup(make_site, self.game, self.site, "0.0.0", FIELD)
        make_site(self.game, self.site, "0.0.1", HEATH)
        page.reload()
        self.wait_intro(page)
        self.assertIn("0.0.1", page.run("return document.querySelector('footer').textContent"))
        self.assertEqual(self.laps(page), [lap])
        self.assertEqual(self.errors(page), [])

        page.visit(ONLY_PRESENTS)
        floor = self.frames_per_second(page, "frames")
        print(f"race {race:.1f} frames a second, a page that only presents {floor:.1f}: "
              f"frame time {floor / race:.2f} times as long")

    def test_ghosts_and_reports_are_files(self):
        page = self.open_browser()
        seconds = self.drive_lap(page)
        lap = self.download(page, "Save ghost", f"{FLAG} - Field.lap")
        report = self.download(page, "Report (PDF)", f"{FLAG}_highscores.pdf")
        self.assertTrue(report.read_bytes().startswith(b"%PDF-"))

        friend = self.open_browser()
        self.wait_intro(friend)
        self.assertEqual(self.laps(friend), [])
        broken = self.folder / "broken.lap"
        broken.write_bytes(lap.read_bytes()[:-9])
        self.assertIn("broken.lap", self.open_ghost(friend, broken))
        self.assertEqual(self.laps(friend), [])
        self.assertIn(f"{FLAG} on Field: {seconds} s", self.open_ghost(friend, lap))
        friend.visit(self.server.address)
        self.wait_intro(friend)
        self.assertEqual([f"{one['seconds']:.3f}" for one in self.laps(friend)], [seconds])
        self.assertEqual(self.errors(page) + self.errors(friend), [])

    def download(self, page, label, name):
        if not page.run("return byId('records').open"):
            page.press("//button[@id='show-records']")
        page.press(f"//dialog[@id='records']//button[.='{label}']")
        path = pathlib.Path(page.downloads) / name
        page.wait(f"{name} among the downloads", path.exists)
        return path

    def open_ghost(self, page, path):
        page.press("//button[@id='show-records']")
        page.ask("POST", page.element("//dialog[@id='records']//input") + "/value", {"text": str(path)})
        said = page.wait("an answer", lambda: page.run(
            "const text = document.querySelector('#records output').textContent;"
            "return text.startsWith('One moment') ? '' : text"))
        page.run("byId('records').close()")
        return said

    def test_a_lost_connection_loses_nothing(self):
        self.server.lost = r"game-.*\.gz"
        for trouble in ("lost", "gone"):
            self.addCleanup(setattr, self.server, trouble, None)
        page = self.open_browser()
        line = "return byId('line').textContent"
        page.wait("the page to tell", lambda: "could not be loaded: the connection was lost" in page.run(line))
        self.server.lost, self.server.gone = None, r"game-.*\.gz"
        page.press("//button[.='Try again']")
        page.wait("the page to tell", lambda: "as if there were a newer version" in page.run(line))
        self.server.lost, self.server.gone = r"1-field-.*\.jpg", None
        page.press("//button[.='Load it anew']")
        self.to_menu(page)
        page.keys("1", " ")
        page.wait("the game to ask", lambda: "Fetching Field failed: the connection was lost." ==
                  page.run("return document.querySelector('#waiting[open] p')?.textContent"))
        self.server.lost = None
        page.press("//dialog[@id='waiting']//button[.='Try again']")
        self.wait_race(page)
        page.keys("+f")
        page.wait_for_line("^P1 flying start: clock running$")
        page.keys("-f")
        unexpected = [text for text in self.errors(page) if not re.search("net::ERR|status of 404", text)]
        self.assertEqual(unexpected, [])

    def test_the_window_resized_and_left_and_played_again(self):
        page = self.open_browser()
        self.to_menu(page)
        page.resize(1000, 640)
        page.wait("a picture of the new size", lambda: page.run(
            "const c = byId('canvas'); return c.width === c.clientWidth && c.height === c.clientHeight"
            " && c.width <= 1000"))
        page.keys("Escape")
        page.wait("the farewell", lambda: page.run("return byId('answer').textContent") == "Play again")
        page.resize(1280, 800)
        page.run("window.shown = page.frames")
        page.press("//button[.='Play again']")
        page.wait("the game once more", lambda: page.run("return page.frames > shown + 20"))
        self.assertEqual(self.errors(page), [])

    def test_the_mouse_is_held_by_a_click_in_the_menu_and_free_in_a_race(self):
        page = self.open_browser()
        self.to_menu(page)
        held = "return document.pointerLockElement === byId('canvas')"
        self.assertFalse(page.run(held))
        page.click(200, 700)
        page.wait("the mouse to be held", lambda: page.run(held))
        self.start_race(page)
        page.wait("the mouse to be free", lambda: not page.run(held))
        page.click(200, 700)
        page.keys("+f")
        page.wait_for_line("^P1 flying start: clock running$")
        page.keys("-f", "Escape")
        self.wait_picture(page, "the menu", menu)
        self.assertEqual(self.errors(page), [])

    def test_a_pad_starts_the_race(self):
        page = self.open_browser()
        self.wait_intro(page)
        page.run("""
            window.pad = {id: "Pad (STANDARD GAMEPAD)", index: 0, connected: true, mapping: "standard",
                timestamp: 1, axes: [0, 0, 0, 0],
                buttons: Array.from({length: 17}, () => ({pressed: false, touched: false, value: 0}))};
            navigator.getGamepads = () => [pad];
            const event = new Event("gamepadconnected"); event.gamepad = pad; dispatchEvent(event);""")
        hold = """const button = pad.buttons[arguments[0]]; button.pressed = arguments[1];
            button.value = Number(arguments[1]); pad.timestamp = performance.now();"""
        page.run(hold, 0, True)
        self.wait_picture(page, "the menu", menu)
        page.run(hold, 0, False)
        page.keys("1")
        page.run(hold, 9, True)
        self.wait_race(page)
        page.run(hold, 9, False)
        page.run(hold, 7, True)
        page.wait_for_line("^P1 flying start: clock running$")
        self.assertEqual(self.errors(page), [])


if __name__ == "__main__":
    unittest.main()
