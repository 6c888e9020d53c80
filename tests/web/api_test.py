"""What scripts and pages get from the simulator: api_test.py SIMULATOR QMCTL [unittest's arguments]"""
import http.client
import json
import os
import select
import shutil
import socket
import sys
import tempfile
import time
import unittest

from live import Live, Refused
from simulator import Simulator, wait_for

JSON = {"Content-Type": "application/json"}


class Api(unittest.TestCase):
    def start(self, *options):
        self.simulator = Simulator(*options)
        self.addCleanup(self.simulator.stop)
        return self.simulator

    def live(self, *arguments, **options):
        live = Live(self.simulator.url, *arguments, **options)
        self.addCleanup(live.close)
        return live

    def send(self, *arguments, controller=0):
        self.assertEqual(self.simulator.send(*arguments, controller=controller), 0, arguments)

    def asked(self, method, path, body=b"", headers=()):
        """Status, and the error or the object."""
        status, answer = self.simulator.asked(method, path, body, headers)
        return status, json.loads(answer)


class Pictures(Api):
    def test_reader_has_exactly_the_pixels(self):
        for color, kind, colors in (("single", "0x0262", ["red"]), ("double", "0x0262", ["red", "yellow"]),
                                    ("full", "0x0166", ["#102030", "#405060", "#708090", "#A0B0C0", "#D0E0F0"])):
            with self.subTest(color):
                simulator = self.start("--size", "50x20", "--color", color, "--type", kind)
                live = self.live()
                live.take_until("the first picture", lambda: live.pixels)
                self.assertTrue(live.shows(20 * 50 * "000000"))
                for area, text_color in enumerate(colors):
                    rect = f"{3 + 9 * area},{area},9,16"
                    self.send("text", "--area", str(area), "--rect", rect, "--color", text_color, "M")
                    pixels = simulator.pixels()
                    live.take_until("the picture", lambda: live.shows(pixels))

    def test_running_text_comes_sixty_times_a_second_at_most(self):
        self.start("--size", "64x16")
        self.send("text", "--mode", "left", "--speed", "0", "--repeat", "255", "a long way to run for a text")
        live = self.live()
        live.take_until("pictures", lambda: live.messages > 30)
        before, begin = live.messages, time.monotonic()
        while time.monotonic() < begin + 2: live.take()
        pictures = (live.messages - before) / (time.monotonic() - begin)
        self.assertLessEqual(pictures, 60 + 4 + 1, "pictures, states and a rounded one")
        self.assertGreater(pictures, 10)

    def test_stalled_reader_gets_the_latest_picture_and_no_queue(self):
        simulator = self.start("--size", "512x128", "--type", "0x0166", "--color", "full")
        stalled = self.live(room=4096)
        self.send("text", "--mode", "left", "--speed", "0", "--repeat", "255", "--size", "80", "running far")
        begin = time.monotonic()
        for _ in range(14): self.send("power", "on")
        self.send("text", "at rest")
        pixels, drained = simulator.pixels(), time.monotonic() - begin
        stalled.take_until("the picture", lambda: stalled.shows(pixels))
        self.assertLess(stalled.messages, 10 + 40 * drained, "not all that there was")

    def test_wall_has_every_screen(self):
        simulator = self.start("--size", "32x16", "--count", "3")
        wall = self.live("wall")
        for number in range(3): self.send("text", str(number), controller=number)
        for number in range(3):
            pixels = simulator.pixels(number)
            wall.take_until(f"screen {number}", lambda: wall.shows(pixels, number))

    def test_recording_lasts_as_long_as_it_was(self):
        file = f"{tempfile.mkdtemp()}/all.gif"
        self.addCleanup(shutil.rmtree, os.path.dirname(file))
        begin = time.monotonic()
        simulator = self.start("--size", "64x16", "--record", file)
        self.send("text", "--mode", "left", "--speed", "20", "--repeat", "255", "a long way to run for a text")
        status, gif = simulator.request("api/recording.gif?seconds=2")
        self.assertEqual(status, 200)
        self.assert_gif_lasts(gif, 2, time.monotonic() - begin)
        simulator.stop()
        with open(file, "rb") as all_of_it: self.assert_gif_lasts(all_of_it.read(), 2, time.monotonic() - begin)

    def test_recordings_end_when_told_and_with_their_readers(self):
        simulator = self.start()
        host, port = simulator.url.split("/")[2].split(":")
        ask = f"GET /api/recording.gif?seconds=60 HTTP/1.1\r\nHost: {host}:{port}\r\n\r\n".encode()

        def recorded():
            peer = socket.create_connection((host, int(port)), timeout=15)
            self.addCleanup(peer.close)
            peer.sendall(ask)
            return peer
        for peer in [recorded() for _ in range(8)]: peer.close()
        wait_for("there is room", lambda: simulator.request("api/recording.gif?seconds=1")[0] == 200)
        peer = recorded()
        def ended():
            simulator.request("api/recording", {})
            return select.select([peer], [], [], 0.1)[0]
        wait_for("the recording ends", ended)
        self.assertRegex(peer.recv(4096), rb"(?s)^HTTP/1.1 200 .*\r\n\r\nGIF89a")

    def assert_gif_lasts(self, gif, least, most):
        self.assertEqual((gif[:10], gif[-1:]), (b"GIF89a" + bytes((64, 0, 16, 0)), b";"))
        delays = [int.from_bytes(gif[at + 4 : at + 6], "little")
                  for at in range(len(gif)) if gif.startswith(b"\x21\xF9\x04\x04", at)]
        self.assertGreater(len(delays), 10)
        self.assertTrue(least - 0.1 <= sum(delays) / 100 <= most + 0.1, "as long as what was shown")
        self.assertGreaterEqual(min(delays), 2, "viewers slow down what is faster")


class Control(Api):
    def test_state_and_log_follow_live(self):
        self.start()
        live = self.live()
        self.send("power", "off")
        live.take_until("the state", lambda: live.state and not live.state["power"])
        live.take_until("the log", lambda: any("screen on/off" in entry["command"] for entry in live.log))
        entry = next(entry for entry in live.log if "screen on/off" in entry["command"])
        self.assertEqual((entry["status"], entry["bytes"][:18], entry["bytes"][-2:]), (0, 8 * "A5" + "FE", "5A"))
        self.assertRegex(entry["peer"], r"^127\.0\.0\.1:\d+$")
        self.simulator.request("api/fault", {"fault": "delay"})
        live.take_until("the fault", lambda: live.state["fault"]["fault"] == "delay")
        live.take_until("its line", lambda: live.log[-1]["command"] == "fault: delay")
        self.simulator.request("api/clock", {"clock": "2026-12-31 23:59:50", "rate": 0})
        with socket.create_connection(("127.0.0.1", self.simulator.controllers[0]["port"])) as peer:
            peer.sendall(bytes.fromhex("A5 A5 01 5B 02 5A"))
        live.take_until("a bad frame", lambda: live.log[-1]["bytes"] == "A5A5015B025A")
        self.assertIn("the clock is set to 2026-12-31 23:59:50 and runs at 0 times its speed",
                      [entry["command"] for entry in live.log])
        self.assertRegex(entry["time"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}$")

    def test_posts_change_the_controller_they_name(self):
        simulator = self.start("--count", "2")
        post = lambda what, body: simulator.request(f"api/{what}?controller=1", body)
        self.assertEqual(post("power", {"power": False}), (200, b"{}"))
        self.assertEqual([simulator.get("state", n)["power"] for n in range(2)], [True, False])
        self.assertEqual(post("reset", {})[0], 200)
        self.assertEqual([simulator.get("state", n)["resets"] for n in range(2)], [0, 1])
        self.assertEqual(post("clock", {"clock": "2026-12-31 23:59:50", "rate": 3600})[0], 200)
        wait_for("the year ends", lambda: simulator.get("state", 1)["clock"].startswith("2027-01-01"))
        self.assertEqual(post("fault", {"fault": "nack"})[0], 200)
        self.assertEqual([simulator.send("ping", controller=n) for n in range(2)], [0, 2])
        self.assertEqual(simulator.get("state", 1)["fault"], {"fault": "nack", "after": 0, "delay": 200})
        self.assertEqual(post("fault", {"fault": "none"})[0], 200)
        self.send("ping", controller=1)

    def test_what_is_posted_outlives_a_restart(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        before = self.start("--store", folder)
        self.assertEqual(before.request("api/reset", {})[0], 200)
        before.stop()
        self.assertEqual(self.start("--store", folder).get("state")["resets"], 1)

    def test_refusals_say_why(self):
        self.start()
        host = self.simulator.url.split("/")[2]
        port = host.split(":")[1]
        rows = [
            (400, "POST", "/api/power", b"{", JSON), (400, "POST", "/api/power", b'{"power": 1}', JSON),
            (400, "POST", "/api/power", b"[" * 60000, JSON), (400, "POST", "/api/reset", b'{"now": 1}', JSON),
            (400, "POST", "/api/clock", b"{}", JSON),
            (400, "POST", "/api/clock", b'{"clock": "2026-02-30 00:00:00"}', JSON),
            (400, "POST", "/api/clock", b'{"rate": -1}', JSON), (400, "POST", "/api/fault", b'{"fault": "fire"}', JSON),
            (400, "POST", "/api/fault", b'{"fault": "delay", "delay": 1e9}', JSON),
            (400, "GET", "/api/state?controller=x", b"", {}), (400, "GET", "/api/recording.gif?seconds=61", b"", {}),
            (403, "GET", "/", b"", {"Host": "example.com"}),
            (403, "GET", "/api/state", b"", {"Host": f"example.com:{port}"}),
            (403, "GET", "/api/state", b"", {"Origin": "http://example.com"}),
            (403, "GET", "/api/state", b"", {"Origin": "null"}),
            (403, "POST", "/api/reset", b"{}", JSON | {"Origin": f"http://localhost:{port}"}),
            (404, "GET", "/api/nothing", b"", {}), (404, "GET", "/../api.cpp", b"", {}),
            (404, "GET", "/api/state?controller=1", b"", {}),
            (405, "GET", "/api/reset", b"", {}), (405, "POST", "/api/state", b"{}", JSON),
            (405, "DELETE", "/", b"", {}),
            (404, "GET", "/api/state?controller=99999999999", b"", {}), (426, "GET", "/api/live", b"", {}),
            (413, "POST", "/api/reset", b" " * 65537, JSON), (413, "POST", "/api/reset", b" " * (1 << 20), JSON),
            (415, "POST", "/api/reset", b"{}", {}), (415, "POST", "/api/reset", b"{}", {"Content-Type": "text/plain"}),
        ]
        for status, *request in rows:
            with self.subTest(status, request=str(request)[:100]):
                answered, body = self.asked(*request)
                self.assertEqual(answered, status)
                self.assertTrue(body["error"])
        for headers in {"Host": f"localhost:{port}"}, {"Origin": f"http://{host}"}:
            self.assertEqual(self.asked("GET", "/api/state", b"", headers)[0], 200, headers)
        self.assertEqual(self.simulator.get("state")["resets"], 0)
        self.assertIn("line 1, column 2", self.asked("POST", "/api/power", b"{bad", JSON)[1]["error"])
        for kind in "Application/JSON", "application/json ; charset=utf-8":
            self.assertEqual(self.asked("POST", "/api/power", b'{"power": true}', {"Content-Type": kind})[0], 200)

    def test_requests_beyond_the_ordinary(self):
        self.start()
        host = self.simulator.url.split("/")[2]
        line = f"HTTP/1.1\r\nHost: {host}\r\n"
        go_on, error = rb"^HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 OK\r\n", rb'(?s)^HTTP/1.1 400 .*\r\n\r\n{"error":'
        for asked, body, answer in (
                (f"HEAD / {line}", "", rb"(?s)^HTTP/1.1 200 .*\r\nContent-Length: [1-9](?!.*<html).*\r\n\r\n$"),
                (f"GET / {line}Host: {host}\r\n", "", error),
                (f"GET / {line}Origin: http://{host}\r\nOrigin: http://x\r\n", "", error),
                (f"GET /api/live {line}Connection: upgrade\r\nUpgrade: websocket\r\n", "", error),
                (f"POST /api/reset {line}Content-Type: application/json\r\nContent-Length: 2\r\n"
                 "Expect: 100-continue\r\n", "{}", go_on)):
            with self.subTest(asked), socket.create_connection(host.split(":"), timeout=15) as peer:
                peer.sendall(f"{asked}\r\n".encode())
                got = b""
                if body:
                    got = peer.recv(4096)
                    peer.sendall(body.encode())
                peer.shutdown(socket.SHUT_WR)
                while part := peer.recv(65536): got += part
                self.assertRegex(got, answer)
                self.assertNotIn(b"Beast", got)

    def test_foreign_pages_cannot_listen(self):
        self.start()
        for headers in {"Origin": "http://example.com"}, {"Host": "example.com"}:
            with self.assertRaises(Refused) as refused: self.live("controller=0", **headers)
            self.assertEqual(refused.exception.args, (403,))


class Hostility(Api):
    def test_nonsense_ends_its_connection_alone(self):
        self.start()
        host, port = self.simulator.url.split("/")[2].split(":")
        get = b"GET / HTTP/1.1\r\nHost: x\r\n"
        for nonsense in (bytes(range(256)) * 64, get + b"X: " + b"y" * 20000, get + b"Content-Length: -1\r\n\r\n",
                         get + b"Transfer-Encoding: chunked\r\n\r\nFFFFFFFFFFFFFFFF\r\n", b"\r\n" * 9000):
            with self.subTest(nonsense[:60]), socket.create_connection((host, int(port)), timeout=15) as peer:
                try:
                    peer.sendall(nonsense)
                    self.assertRegex(peer.recv(65536), rb"^(HTTP/1.1 (400|413)|$)")
                except ConnectionError:
                    pass
        for payload, opcode in (b"x" * 2000, 2), (b"\xFF\xFE", 1), (b"x", 7):
            with self.subTest(opcode):
                live = self.live()
                live.send(payload, opcode)
                while live.take(): pass
        self.assertTrue(self.simulator.get("state"))

    def test_idle_connections_end_soon(self):
        self.start()
        connection = http.client.HTTPConnection(self.simulator.url.split("/")[2], timeout=15)
        self.addCleanup(connection.close)
        for _ in range(2):
            connection.request("GET", "/api/state")
            self.assertEqual(connection.getresponse().read()[:1], b"{")
        begin = time.monotonic()
        self.assertEqual(connection.sock.recv(1), b"")
        self.assertLess(time.monotonic() - begin, 10)

    def test_connections_are_limited_and_free_again(self):
        self.start()
        host, port = self.simulator.url.split("/")[2].split(":")
        peers = [socket.create_connection((host, int(port)), timeout=15) for _ in range(256)]
        for peer in peers: self.addCleanup(peer.close)
        with socket.create_connection((host, int(port)), timeout=15) as one_more:
            self.assertRegex(one_more.recv(4096), rb"^HTTP/1.1 503 ")
        for peer in peers: peer.close()

        def answered():
            try:
                return self.simulator.get("state")
            except OSError:
                return None
        wait_for("there is room again", answered)


if __name__ == "__main__":
    Simulator.binary, Simulator.qmctl = sys.argv[1:3]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
