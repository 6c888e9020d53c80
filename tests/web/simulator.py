"""The simulator with its page, qmctl for it, and what its screen shows."""
import http.client
import json
import os
import struct
import subprocess
import time
import zlib


def keep_seed(target, sent):
    """Keeps what is sent as an input for fuzz/, as tests/support/seeds.h does."""
    root = os.environ.get("QM_SEEDS")
    if not root or len(sent) > 16384: return
    folder = os.path.join(root, target)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, f"{zlib.crc32(sent)}-{len(sent)}"), "wb") as seed: seed.write(sent)


def wait_for(what, happens, seconds=15):
    """Returns what `happens` returns as soon as that is true."""
    end = time.monotonic() + seconds
    while not (result := happens()):
        if time.monotonic() > end: raise AssertionError(f"waited {seconds} s in vain: {what}")
        time.sleep(0.02)
    return result


class Simulator:
    binary = qmctl = None

    def __init__(self, *options, web="127.0.0.1:0", port=0):
        command = [self.binary, "--web", web, "--port", str(port), *options]
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        for line in self.process.stdout:
            if line.startswith("Screen: "): break
        else:
            raise AssertionError(f"did not start: {command}")
        self.url = line.split()[1]
        self.controllers = self.get("controllers")

    def stop(self):
        if self.process.poll() is None: self.process.terminate()
        self.process.wait(10)
        self.process.stdout.close()

    def asked(self, method, path, body=b"", headers=()):
        """Status and body."""
        connection = http.client.HTTPConnection(self.url.split("/")[2], timeout=30)
        try:
            connection.request(method, path, body, dict(headers))
            with connection.getresponse() as answer: return answer.status, answer.read()
        finally:
            connection.close()
            sent = {"Host": "127.0.0.1:5080", "Content-Length": len(body)} | dict(headers)
            lines = [f"{method} {path} HTTP/1.1", *(f"{name}: {value}" for name, value in sent.items())]
            keep_seed("http", b"\0" + "\r\n".join([*lines, "", ""]).encode() + body)

    def request(self, path, body=None, headers=None):
        """Status and body; posts the body when there is one."""
        method, data = ("GET", b"") if body is None else ("POST", json.dumps(body).encode())
        return self.asked(method, "/" + path, data, {"Content-Type": "application/json"} | (headers or {}))

    def get(self, name, controller=0):
        return json.loads(self.request(f"api/{name}?controller={controller}")[1])

    def pixels(self, controller=0):
        return pixels_of(self.request(f"api/screen.png?controller={controller}")[1])

    def send(self, *arguments, controller=0):
        """qmctl's exit status."""
        about = self.controllers[controller]
        command = [self.qmctl, "-c", f"{about['address']}:{about['port']}", *arguments]
        return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=60).returncode


def pixels_of(png):
    """Hexadecimal digits of all colours of a PNG of 8-bit RGB(A), row by row."""
    chunks, at = {}, 8
    while at < len(png):
        length, kind = struct.unpack_from(">I4s", png, at)
        chunks[kind] = chunks.get(kind, b"") + png[at + 8 : at + 8 + length]
        at += 12 + length
    width, height, depth, color = struct.unpack_from(">IIBB", chunks[b"IHDR"])
    size = {2: 3, 6: 4}[color]
    assert depth == 8, depth
    data, stride, above, rows = zlib.decompress(chunks[b"IDAT"]), width * size + 1, bytes(width * size), []
    for start in range(0, height * stride, stride):
        above = unfiltered(data[start], bytearray(data[start + 1 : start + stride]), above, size)
        rows += [above[at : at + 3].hex() for at in range(0, len(above), size)]
    return "".join(rows)


def unfiltered(kind, row, above, size):
    for i in range(len(row)):
        left, up, corner = (row[i - size], above[i], above[i - size]) if i >= size else (0, above[i], 0)
        nearest = min((left, up, corner), key=lambda value: abs(left + up - corner - value))
        row[i] = (row[i] + (0, left, up, (left + up) // 2, nearest)[kind]) & 0xFF
    return row
