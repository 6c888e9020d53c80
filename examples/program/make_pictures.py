#!/usr/bin/env python3
"""Draws the pictures of shop.json beside this file, without any library.

    python3 make_pictures.py
"""
import pathlib
import struct
import zlib

BLACK, RED, GREEN, YELLOW = (0, 0, 0), (255, 0, 0), (0, 255, 0), (255, 255, 0)
INK = {".": BLACK, "r": RED, "g": GREEN, "y": YELLOW}

CUP = """
............................
.......y......y......y......
......y......y......y.......
......y......y......y.......
.......y......y......y......
........y......y......y.....
........y......y......y.....
.......y......y......y......
............................
...rrrrrrrrrrrrrrrrrr.......
...rggggggggggggggggr.......
...rrrrrrrrrrrrrrrrrrrrr....
...rrrrrrrrrrrrrrrrrrrrrr...
...rrrrrryyrrryyrrrrr..rrr..
...rrrrryyyyryyyyrrrr...rr..
...rrrrryyyyyyyyyrrrr...rr..
...rrrrryyyyyyyyyrrrr...rr..
...rrrrrryyyyyyyrrrrr..rrr..
....rrrrrryyyyyrrrrrrrrrr...
....rrrrrrryyyrrrrrrrrrr....
.....rrrrrrryrrrrrrr........
.....rrrrrrrrrrrrrrr........
......rrrrrrrrrrrrr.........
.......rrrrrrrrrrr..........
.yyyyyyyyyyyyyyyyyyyyyyy....
..yyyyyyyyyyyyyyyyyyyyy.....
............................
............................
"""

BORDER = """
rrrryyyy
yyyyrrrr
"""


def rows_of(drawing):
    return [[INK[c] for c in line] for line in drawing.split()]


def background():
    """Dotted lines between the areas: where no area lies, the background shows."""
    rows = [[BLACK] * 128 for _ in range(32)]
    for y in range(3, 30, 3):
        rows[y][31] = GREEN
    for x in range(34, 125, 3):
        rows[16][x] = GREEN
    return rows


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(rows):
    lines = b"".join(b"\0" + bytes(value for pixel in row for value in pixel) for row in rows)
    header = struct.pack(">IIBBBBB", len(rows[0]), len(rows), 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines, 9)) +
            chunk(b"IEND", b""))


if __name__ == "__main__":
    folder = pathlib.Path(__file__).parent
    for name, rows in {"cup": rows_of(CUP), "border": rows_of(BORDER), "background": background()}.items():
        (folder / f"{name}.png").write_bytes(png(rows))
