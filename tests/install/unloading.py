"""Loads a library, lets it draw a text and unloads it, again and again, as hosts of plug-ins do: memory must not grow."""
import _ctypes
import ctypes
import pathlib
import struct
import sys

GROWTH = 1 << 20  # bytes, in all rounds
ROUNDS = 30


def resident():
    pages = pathlib.Path("/proc/self/statm").read_text(encoding="ascii").split()[1]
    return int(pages) * 4096


def draw_and_unload(path):
    library = ctypes.CDLL(path)
    area = struct.pack("<BHHHH32x", 0, 0, 0, 64, 16)
    page = struct.pack("<15xHI10x", 12, 1)  # 12 points, red
    files = ctypes.create_string_buffer(34)
    results = [library.program_addProgram_G6(bytes(29)), library.program_addArea_G6(0, area),
               library.program_picturesAreaAddTxt_G6(0, "Hello 你好".encode(), b"DejaVu Sans", page),
               library.program_IntegrateProgramFile_G6(files), library.program_freeBuffer_G6(files),
               library.program_deleteProgram_G6()]
    _ctypes.dlclose(library._handle)
    return results


def main():
    path = sys.argv[1]
    for _ in range(3):
        draw_and_unload(path)
    before = resident()
    for _ in range(ROUNDS):
        results = draw_and_unload(path)
        if any(results):
            sys.exit(f"a call failed: {results}")
    growth = resident() - before
    print(f"{growth} bytes in {ROUNDS} rounds")
    if growth > GROWTH:
        sys.exit("unloading the library leaves memory behind")


if __name__ == "__main__":
    main()
