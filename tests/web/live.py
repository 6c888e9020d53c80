"""A reader of the simulator's WebSocket."""
import base64
import json
import os
import socket
import struct
import time

from simulator import keep_seed


class Refused(Exception):
    """The answer's status in place of a WebSocket."""


class Live:
    def __init__(self, url, query="controller=0", room=None, **headers):
        """room: bytes of messages that wait in the reader's own buffer."""
        host = url.split("/")[2]
        address, port = host.split(":")
        self.socket = socket.socket()
        self.socket.settimeout(15)
        if room: self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, room)
        self.socket.connect((address, int(port)))
        headers = {"Host": host, "Upgrade": "websocket", "Connection": "Upgrade", "Sec-WebSocket-Version": 13,
                   "Sec-WebSocket-Key": base64.b64encode(os.urandom(16)).decode()} | headers
        lines = [f"GET /api/live?{query} HTTP/1.1", *(f"{name}: {value}" for name, value in headers.items())]
        self.socket.sendall("\r\n".join([*lines, "", ""]).encode())
        self.input, self.messages, self.pixels = self.socket.makefile("rb"), 0, {}
        self.state, self.log = None, []
        status = int(self.input.readline().split()[1])
        while self.input.readline() not in (b"\r\n", b""): pass
        if status == 101: return
        self.close()
        raise Refused(status)

    def close(self):
        self.input.close()
        self.socket.close()

    def send(self, payload, opcode=2):
        frame = struct.pack(">BBH4x", 0x80 | opcode, 0x80 | 126, len(payload)) + payload
        self.socket.sendall(frame)
        keep_seed("websocket", b"\0" + frame)

    def take(self):
        """Takes one message; False at the end of the connection."""
        head = self.input.read(2)
        if len(head) < 2 or head[0] & 15 == 8: return False
        length = head[1] & 127
        if length >= 126: length = int.from_bytes(self.input.read(2 if length == 126 else 8), "big")
        payload, opcode = self.input.read(length), head[0] & 15
        self.messages += opcode in (1, 2)
        if opcode == 2: self.take_picture(payload)
        if opcode == 1:
            message = json.loads(payload)
            self.state = message.get("state", self.state)
            self.log += message.get("log", [])
        return True

    def take_until(self, what, happens, seconds=15):
        end = time.monotonic() + seconds
        while not happens():
            if time.monotonic() > end or not self.take(): raise AssertionError(f"did not come: {what}")

    def take_picture(self, message):
        """Keeps the hexadecimal digits of each controller's pixels."""
        at, number = (1, 0) if message[0] == 1 else (3, int.from_bytes(message[1:3], "little"))
        self.width, self.height, x, y, w, h, depth = struct.unpack_from("<6HB", message, at)
        at += 13
        palette, bits = [], depth
        if depth <= 8:
            count = int.from_bytes(message[at : at + 2], "little")
            palette = [message[at + 2 + 3 * i :][:3].hex() for i in range(count)]
            at += 2 + 3 * count
        pixels = self.pixels.setdefault(number, ["000000"] * (self.width * self.height))
        stride = (w * bits + 7) // 8
        assert len(message) == at + stride * h, "as long as the part asks for"
        for row in range(h):
            digits = f"{int.from_bytes(message[at + row * stride :][:stride], 'big'):0{8 * stride}b}"
            values = [int(digits[bits * i :][:bits], 2) for i in range(w)]
            colors = [palette[v] if palette else f"{v:06x}" for v in values]
            start = (y + row) * self.width + x
            pixels[start : start + w] = colors

    def shows(self, pixels, controller=0):
        return "".join(self.pixels.get(controller, [])) == pixels
