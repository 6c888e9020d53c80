"""The simulator's page in a real browser: page_test.py SIMULATOR QMCTL EXAMPLES [unittest's arguments]"""
import http.server
import os
import pathlib
import shutil
import sys
import threading
import time
import unittest

from simulator import Simulator, wait_for
from webdriver import Browser

SKIPPED = 77
MARKUP = "<img src=x onerror=document.title='caught'><b>bold</b>"

# The colours of the middles of all cells of a canvas, as hexadecimal digits.
MIDDLES = """
const [selector, width, height] = arguments, canvas = document.querySelectorAll(selector)[arguments[3] ?? 0];
const { data } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
const middle = (at, whole, count) => Math.floor(((at + 0.5) * whole) / count);
let colors = "";
for (let y = 0; y < height; ++y)
  for (let x = 0; x < width; ++x) {
    const at = 4 * (middle(y, canvas.height, height) * canvas.width + middle(x, canvas.width, width));
    for (const value of data.slice(at, at + 3)) colors += value.toString(16).padStart(2, "0");
  }
return colors;
"""
UNREACHED = """
return [...document.querySelectorAll("a[href], button, select, input, summary, canvas, pre, #entries")]
  .filter((one) => one.checkVisibility() && !one.closest("#entries li") && !one.dataset.reached)
  .map((one) => one.outerHTML.slice(0, 80));
"""


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def start(self, *options, **places):
        self.simulator = Simulator(*options, **places)
        self.addCleanup(self.simulator.stop)
        return self.simulator

    def show(self, *options):
        self.start(*options)
        self.browser.resize(1280, 800)
        self.browser.open(self.simulator.url)
        self.wait_until_live()

    def wait_until_live(self):
        wait_for("the page is live", lambda: self.browser.text("#link") == "Live")
        wait_for("it is filled", lambda: self.browser.text("#controller") or self.browser.text("#tiles"))

    def send(self, *arguments, controller=0):
        self.assertEqual(self.simulator.send(*arguments, controller=controller), 0, arguments)

    def middles(self, selector="#screen", nth=0):
        return self.browser.run(MIDDLES, selector, *self.simulator.controllers[nth]["size"], nth)

    def wait_for_same_pixels(self, nth=0, selector="#screen"):
        wait_for("the canvas holds the simulator's pixels",
                 lambda: self.middles(selector, nth) == self.simulator.pixels(nth))

    def tearDown(self):
        errors = self.browser.errors()
        self.browser.open("about:blank")
        self.assertEqual(errors, [])


class Picture(Page):
    def test_canvas_holds_exactly_the_pixels(self):
        for color, kind in ("single", "0x0262"), ("double", "0x0262"), ("three", "0x0262"), ("full", "0x0166"):
            with self.subTest(color):
                self.show("--size", "96x48", "--color", color, "--type", kind)
                self.send("picture", "--fit", "stretch", f"{EXAMPLES}/program/background.png")
                self.send("text", "--area", "1", "--rect", "0,0,96,16", "--size", "12", "--color", "yellow", "Exact")
                for zoom in "1", "3", "8", "fit":
                    self.browser.choose("#zoom", zoom)
                    self.wait_for_same_pixels()
                self.assertNotEqual(set(self.middles()), {"0"})
                self.browser.click("#dots")
                self.wait_for_same_pixels()

    def test_text_appears_with_the_command(self):
        self.show()
        self.assertEqual(set(self.middles()), {"0"})
        self.send("text", "Hello")
        wait_for("LEDs shine", lambda: set(self.middles()) != {"0"})
        self.assertIn("dynamic areas, area 0", self.browser.text("#entries"))
        self.wait_for_same_pixels()

    def test_running_text_moves_stands_and_steps(self):
        self.show()
        self.send("text", "--mode", "left", "A long text that runs and runs and runs")
        seen = set()
        wait_for("it moves", lambda: seen.add(self.middles()) or len(seen) > 3)
        self.browser.click("#pause")
        self.browser.run("return new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)))")
        standing = self.middles()
        time.sleep(0.5)
        self.assertEqual(self.middles(), standing)
        self.browser.click("#back")
        wait_for("the picture before", lambda: self.middles() != standing)
        self.browser.click("#step")
        wait_for("the next picture", lambda: self.middles() == standing)
        self.browser.choose("#speed", "0.1")
        time.sleep(0.5)
        self.assertEqual(self.middles(), standing)
        self.browser.click("#pause")
        wait_for("it moves slowly", lambda: self.middles() != standing)
        self.assertRegex(self.browser.text("#now"), r"−\d+\.\d s")
        self.browser.click("#now")
        wait_for("the present", lambda: self.browser.text("#now") == "Live")

    def test_picture_stands_however_long_one_looks_at_it(self):
        self.show("--size", "1024x512")
        self.send("text", "--mode", "left", "A long text that runs and runs and runs")
        wait_for("LEDs shine", lambda: set(self.middles()) != {"0"})
        self.browser.click("#pause")
        self.browser.run("return new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done)))")
        standing = self.middles()
        wait_for("more has come than is kept", lambda: self.browser.text("#now").startswith("−8"))
        self.assertEqual(self.middles(), standing)
        self.browser.click("#pause")
        wait_for("it goes on from there", lambda: self.middles() != standing)

    def test_page_comes_back_after_a_restart(self):
        self.show()
        web = self.simulator.url.split("/")[2]
        self.simulator.stop()
        wait_for("the page has noticed", lambda: self.browser.text("#link") == "Reconnecting")
        self.start("--size", "64x32", web=web)
        self.send("text", "Back")
        self.wait_until_live()
        self.assertIn("64 × 32", self.browser.text("#facts"))
        wait_for("LEDs shine", lambda: set(self.middles()) != {"0"})
        self.wait_for_same_pixels()
        self.assertTrue(all("ERR_CONNECTION" in error for error in self.browser.errors()))

    def test_pointing_names_column_row_colour_and_area(self):
        self.show("--size", "64x32")
        self.send("text", "--area", "3", "--rect", "8,8,32,16", "--size", "9", "x")
        wait_for("the outline", lambda: self.browser.text("#outlines") == "3")
        self.browser.click("#areas")
        box, area = self.browser.run("""return [...document.querySelectorAll("#screen, #outlines div")]
            .map((one) => one.getBoundingClientRect()).map(({ x, y, width }) => [x, y, width])""")
        cell = box[2] / 64
        self.assertAlmostEqual(area[0], box[0] + 8 * cell, delta=1)
        self.assertAlmostEqual(area[2], 32 * cell, delta=1)
        self.browser.point(box[0] + 9.5 * cell, box[1] + 8.5 * cell)
        self.assertEqual(self.browser.text("#readout"), "Column 9, row 8 · #000000 · dynamic area 3")
        self.browser.run("document.querySelector('#screen').focus()")
        self.browser.press(*["ArrowRight"] * 40)
        self.assertEqual(self.browser.text("#readout"), "Column 49, row 8 · #000000 · no area")

    def test_pictures_are_kept(self):
        self.show("--size", "32x16")
        self.send("text", "Keep")
        self.wait_for_same_pixels()
        self.browser.choose("#zoom", "1")
        self.browser.click("#dots")
        self.browser.choose("#seconds", "60")
        folder = pathlib.Path(self.browser.downloads)
        for button, ending, begin in ("#save", "png", b"\x89PNG"), ("#record", "gif", b"GIF89a"):
            self.browser.click(button)
            if ending == "gif": self.browser.click(button)  # which ends it
            file = wait_for(ending, lambda: next(iter(folder.glob(f"screen-*.{ending}")), None))
            self.assertEqual(file.read_bytes()[: len(begin)], begin)


class Around(Page):
    def test_texts_from_the_wire_stay_text(self):
        self.show()
        self.send("say", MARKUP)
        wait_for("the text", lambda: self.browser.text("#spoken q") == MARKUP)
        self.assertEqual(self.browser.run("return document.querySelectorAll('main img, main b').length"), 0)
        self.assertNotEqual(self.browser.run("return document.title"), "caught")

    def test_what_is_selected_stays(self):
        self.show()
        self.send("say", "Copy this")
        wait_for("the text", lambda: self.browser.text("#spoken q"))
        self.browser.run("document.querySelector('#everything').parentElement.open = true")
        wait_for("everything", lambda: self.browser.text("#everything"))
        for level, place in (3, "#spoken q"), (4, "#everything"):
            self.browser.run("getSelection().selectAllChildren(document.querySelector(arguments[0]))", place)
            selected = self.browser.run("return String(getSelection())")
            self.send("brightness", str(level))
            wait_for("a state", lambda: f"{level} of 15" in self.browser.text("#controller"))
            self.assertEqual(self.browser.run("return String(getSelection())"), selected)

    def test_log_opens_to_hex_and_filters(self):
        self.show()
        self.send("brightness", "8")
        self.send("text", "Hello")
        wait_for("commands", lambda: "dynamic areas" in self.browser.text("#entries"))
        shown = lambda: self.browser.run("return [...document.querySelectorAll('#entries li')]"
                                         ".filter((one) => one.checkVisibility()).map((one) => one.dataset.kind)")
        self.assertIn("Settings", shown())
        self.assertNotIn("Handshakes", shown())
        self.browser.click(".chip:nth-child(1)")
        self.assertNotIn("Settings", shown())
        self.browser.click(".chip:nth-child(1)")
        self.browser.run("document.querySelector('#entries').focus()")
        self.browser.press("ArrowDown", "Enter")
        wait_for("bytes", lambda: self.browser.text("#entries details[open] pre").startswith("0000  a5"))

    def test_programs_files_and_areas_are_told(self):
        self.show()
        self.send("program", "send", f"{EXAMPLES}/program/shop.json")
        self.send("text", "--area", "7", "Over it")
        wait_for("the program", lambda: self.browser.text("#now-playing") == "P001")
        wait_for("the area", lambda: self.browser.text("#dynamic td") == "7")
        self.assertIn("P001", self.browser.text("#files"))

    def test_controls_control(self):
        self.show()
        self.browser.click("#power")
        wait_for("the screen is off", lambda: not self.simulator.get("state")["power"])
        wait_for("the page says so", lambda: "The screen is off" in self.browser.text("#playing"))
        self.browser.choose("#clock", "2026-12-31 23:59:50")
        self.browser.run("document.querySelector('#clock-rate').focus()")
        self.browser.choose("#clock-rate", "60")
        self.browser.click("#clock-form button")
        wait_for("the new year", lambda: self.browser.text("#clock-text").startswith("2027-01-01"))
        self.assertTrue(self.simulator.get("state")["clock"].startswith("2027-01-01"))
        self.browser.choose("#fault", "nack")
        wait_for("every command is refused", lambda: self.simulator.send("brightness", "3") == 2)
        wait_for("the log says so", lambda: "refused" in self.browser.text("#entries .badge.bad"))
        self.browser.choose("#fault", "none")
        wait_for("no command is refused", lambda: self.simulator.send("brightness", "3") == 0)
        restarts = self.simulator.get("state")["resets"]
        self.browser.click("#reset")
        wait_for("a restart", lambda: self.simulator.get("state")["resets"] == restarts + 1)

    def test_refusals_are_told_in_words(self):
        self.show()
        self.browser.run("document.querySelector('#clock').pattern = '.*'")
        self.browser.choose("#clock", "yesterday")
        self.browser.click("#clock-form button")
        wait_for("the reason", lambda: self.browser.text("#clock-result.bad"))
        self.assertTrue(all("400" in error for error in self.browser.errors()))

    def test_foreign_origin_is_refused(self):
        self.start()
        quiet = type("Quiet", (http.server.BaseHTTPRequestHandler,), {"log_message": lambda *_: None})
        foreign = http.server.HTTPServer(("127.0.0.1", 0), quiet)
        threading.Thread(target=foreign.serve_forever, daemon=True).start()
        self.addCleanup(foreign.server_close)
        self.addCleanup(foreign.shutdown)
        self.browser.open(f"http://127.0.0.1:{foreign.server_port}/")
        socket = self.browser.run("""const socket = new WebSocket(arguments[0]);
            return new Promise((tell) => { socket.onopen = () => tell("open"); socket.onerror = () => tell("refused"); })
            """, self.simulator.url.replace("http", "ws") + "api/live?controller=0")
        self.assertEqual(socket, "refused")
        self.browser.run("""return fetch(arguments[0] + "api/power", { method: "POST", mode: "no-cors",
            body: '{"power": false}' }).then(() => null, () => null)""", self.simulator.url)
        self.assertTrue(self.simulator.get("state")["power"])
        self.browser.errors()  # of the refusals

    def test_many_controllers_show_on_one_wall(self):
        self.show("--count", "20", "--size", "48x16")
        wait_for("20 screens", lambda: self.browser.run("return document.querySelectorAll('#tiles canvas').length") == 20)
        for nth, text in (3, "Four"), (19, "Last"):
            self.send("text", text, controller=nth)
            wait_for("LEDs shine", lambda: set(self.middles("#tiles canvas", nth)) != {"0"})
            self.wait_for_same_pixels(nth, "#tiles canvas")
        for width in 360, 2560, 1280:
            self.browser.resize(width, 800)
            wait_for("tiles have their size", lambda: self.browser.run(
                "return [...document.querySelectorAll('#tiles canvas')].slice(0, 4).every((one) =>"
                " one.clientWidth === one.width && one.width > 0.5 * one.parentElement.clientWidth)"))
        name = self.simulator.controllers[3]["name"]
        self.assertIn(name, self.browser.text("#tiles li:nth-child(4)"))
        self.browser.click("#tiles li:nth-child(4) a")
        wait_for("it is large", lambda: self.browser.text("#title") == name)
        wait_for("its picture", lambda: self.middles() == self.simulator.pixels(3))
        self.browser.click("#to-wall")
        wait_for("the wall", lambda: self.browser.text("#title") == "All screens")
        self.assertIn("controller=3", self.browser.run("return document.activeElement.href ?? ''"))

    def test_keyboard_alone_reaches_everything(self):
        self.show()
        self.send("text", "Hello")
        wait_for("a command", lambda: self.browser.text("#entries"))
        self.browser.run("addEventListener('focusin', ({ target }) => (target.dataset.reached = '1'))")
        for _ in range(12): self.browser.press(*["Tab"] * 6)
        self.assertEqual(self.browser.run(UNREACHED), [])
        self.assertEqual(self.browser.run("return [...document.querySelectorAll('button, select, input, canvas, meter')]"
                                          ".filter((one) => !one.ariaLabel && !one.labels?.length && !one.textContent.trim()"
                                          " && !one.hasAttribute('aria-labelledby')).map((one) => one.outerHTML)"), [])

    def test_page_fits_every_window(self):
        for size in "128x32", "64x512":
            self.show("--size", size)
            self.send("text", "Fits")
            for window in (360, 740), (1100, 500), (1366, 625), (1280, 800), (2560, 1440):
                with self.subTest(size=size, window=window):
                    self.browser.resize(*window)
                    self.wait_for_same_pixels()
                    right, log, over, panels = self.browser.run("""
                        const [page, screen, room, log, panels] = ["html", "#screen", "#room", "#log", "#panels"]
                            .map((one) => document.querySelector(one));
                        return [Math.max(page.scrollWidth, screen.getBoundingClientRect().right), log.clientHeight,
                            room.scrollHeight - room.clientHeight,
                            panels.scrollHeight > panels.clientHeight && page.scrollHeight > innerHeight]""")
                    self.assertLessEqual(right, window[0])
                    self.assertGreater(log, 200)
                    self.assertEqual(over, 0)
                    self.assertFalse(panels, "two scroll bars side by side")


if __name__ == "__main__":
    Simulator.binary, Simulator.qmctl, EXAMPLES = (os.path.abspath(path) for path in sys.argv[1:4])
    if not shutil.which("chromedriver"):
        print("skipped: chromedriver is missing; scripts/setup --tests installs it")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1] + sys.argv[4:], verbosity=2)
