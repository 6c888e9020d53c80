#!/usr/bin/env python3
"""A small sign: a headline, a clock that is updated every second, and a logo. At the end the clock goes, and
the headline says goodbye. The same as sign.c, with nothing but the shared library and ctypes.

    python3 sign.py 127.0.0.1 5005 logo.png 10
"""
import ctypes
import sys
import time
from ctypes import c_bool, c_int8, c_int32, c_uint8, c_uint16, c_uint32

HEADLINE, CLOCK, LOGO = 1, 2, 3
RED, GREEN = 1, 2


class Record(ctypes.LittleEndianStructure):
    _pack_ = 1  # as the header has it


class PingData(Record):
    _fields_ = [("ControllerType", c_uint16), ("FirmwareVersion", c_uint8 * 8), ("ScreenParaStatus", c_uint8),
                ("uAddress", c_uint16), ("Baudrate", c_uint8), ("ScreenWidth", c_uint16),
                ("ScreenHeight", c_uint16), ("Color", c_uint8), ("CurrentBrigtness", c_uint8),
                ("CurrentOnOffStatus", c_uint8), ("ScanConfNumber", c_uint16), ("reversed", c_uint8 * 9),
                ("ipAdder", c_uint8 * 20)]


class Sound(Record):
    _fields_ = [("SoundFlag", c_int8), ("SoundPerson", c_int8), ("SoundVolum", c_int8), ("SoundSpeed", c_int8),
                ("SoundDataMode", c_int8), ("SoundReplayTimes", c_int32), ("SoundReplayDelay", c_int32),
                ("SoundReservedParaLen", c_int8), ("Soundnumdeal", c_int8), ("Soundlanguages", c_int8),
                ("Soundwordstyle", c_int8), ("SoundDataLen", c_uint32), ("SoundData", ctypes.c_char_p)]


class AreaHeader(Record):
    _fields_ = [("AreaType", c_uint8), ("AreaX", c_uint16), ("AreaY", c_uint16), ("AreaWidth", c_uint16),
                ("AreaHeight", c_uint16), ("BackGroundFlag", c_uint8), ("Transparency", c_uint8),
                ("AreaEqual", c_uint8), ("stSoundData", Sound)]


class PageHeader(Record):
    _fields_ = [("PageStyle", c_uint8), ("DisplayMode", c_uint8), ("ClearMode", c_uint8), ("Speed", c_uint8),
                ("StayTime", c_uint16), ("RepeatTime", c_uint8), ("ValidLen", c_uint16),
                ("CartoonFrameRate", c_uint8), ("BackNotValidFlag", c_uint8), ("arrMode", c_uint32),
                ("fontSize", c_uint16), ("color", c_uint32), ("fontBold", c_bool), ("fontItalic", c_bool),
                ("tdirection", c_uint32), ("txtSpace", c_uint16), ("Halign", c_uint8), ("Valign", c_uint8)]


assert ctypes.sizeof(PingData) == 52 and ctypes.sizeof(AreaHeader) == 41
assert ctypes.sizeof(PageHeader) == 31


class Failed(Exception):
    """A call of the library did not return 0."""


def page_header(width, color=RED):
    return PageHeader(DisplayMode=1, StayTime=300, RepeatTime=1, ValidLen=width, fontSize=9, color=color,
                      Halign=1, Valign=1)


class Sign:
    def __init__(self, ip, port):
        self.library = ctypes.CDLL("libqm_sdkDual.so.1")
        self.ip, self.port = ip.encode(), port
        screen = PingData()
        self.call("cmd_tcpPing", self.ip, c_uint16(port), ctypes.byref(screen))
        self.color, self.width, self.height = screen.Color, screen.ScreenWidth, screen.ScreenHeight

    def call(self, name, *arguments):
        status = getattr(self.library, name)(*arguments)
        if status != 0:
            self.library.qm_last_error.restype = ctypes.c_char_p
            raise Failed(f"{name}: status {status}: {self.library.qm_last_error().decode(errors='replace')}")

    def show(self, number, x, y, width, height, color, text):
        area = AreaHeader(AreaX=x, AreaY=y, AreaWidth=width, AreaHeight=height)
        page = page_header(width, color)
        self.call("dynamicArea_AddAreaTxtDetails_6G", self.ip, c_uint32(self.port), c_uint32(self.color),
                  c_uint8(number), ctypes.byref(area), ctypes.byref(page), b"DejaVu Sans", text.encode())

    def show_logo(self, path):
        page = page_header(16)
        self.call("dynamicArea_AddAreaPic_6G", self.ip, c_uint32(self.port), c_uint32(self.color), c_uint8(LOGO),
                  c_uint16(self.width - 16), c_uint16(0), c_uint16(16), c_uint16(16), ctypes.byref(page),
                  path.encode())

    def remove(self, number):
        self.call("dynamicArea_DelArea_6G", self.ip, c_uint32(self.port), c_int8(number))


def main(ip="127.0.0.1", port="5005", logo="logo.png", seconds="10"):
    sign = Sign(ip, int(port))
    if sign.width < 48 or sign.height < 32:
        sys.exit("the sign needs a screen of 48 x 32 pixels or more")
    sign.show(HEADLINE, 0, 0, sign.width - 16, 16, RED, "Open")
    sign.show_logo(logo)
    for i in range(int(seconds)):
        if i:
            time.sleep(1)
        sign.show(CLOCK, 0, 16, sign.width, 16, GREEN, time.strftime("%H:%M:%S"))
    sign.remove(CLOCK)
    sign.show(HEADLINE, 0, 0, sign.width - 16, 16, RED, "Closed")
    print("status 0")


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except Failed as failure:
        print(failure)
        sys.exit(2)
