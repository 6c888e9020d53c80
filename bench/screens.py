"""What it costs to look at simulated screens: screens.py SIMULATOR QMCTL. Prints one row a mark."""
import multiprocessing
import os
import pathlib
import select
import shutil
import socket
import statistics
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests/web"))

from live import Live
from rows import show
from simulator import Simulator, wait_for
from webdriver import Browser

RUNNING = "text", "--mode", "left", "--speed", "5", "--repeat", "255", "--size", "40", "Flight QM 214 to Lisbon"
SCREEN = "--size", "256x128", "--type", "0x0166", "--color", "full"
TICKS = os.sysconf("SC_CLK_TCK")


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def share_of_a_core(process, seconds, meanwhile=time.sleep):
    before, begin = processor_seconds(process), time.monotonic()
    meanwhile(seconds)
    return (processor_seconds(process) - before) / (time.monotonic() - begin)


def megabytes(process):
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    return int(status.partition("VmRSS:")[2].split()[0]) / 1000


class Readers:
    """Take what comes, and count its bytes, in a process of their own."""

    def __init__(self, simulator, count):
        self.count = multiprocessing.Value("q")
        self.process = multiprocessing.Process(target=self.read, args=(simulator.url, count), daemon=True)
        self.process.start()

    def read(self, url, count):
        sockets = [Live(url).socket for _ in range(count)]
        while True:
            for one in select.select(sockets, [], [])[0]: self.count.value += len(one.recv(1 << 16))

    def stop(self):
        self.process.terminate()
        self.process.join()


def one_reader():
    simulator = Simulator(*SCREEN)
    simulator.send(*RUNNING)
    readers = Readers(simulator, 1)
    time.sleep(2)
    before, begin = readers.count.value, time.monotonic()
    core = share_of_a_core(simulator.process, 10)
    megabytes_a_second = (readers.count.value - before) / (time.monotonic() - begin) / 1e6
    readers.stop()
    simulator.stop()
    yield "running text on 256 x 128, one reader", f"{core:.1%} of a core", "10% of a core", 0.1 / core, 1
    yield "running text on 256 x 128, one reader", f"{megabytes_a_second:.2g} MB/s", "1 MB/s", 1 / megabytes_a_second, 1


def answer_time(simulator, frame, count=3000):
    """Microseconds, the median."""
    times = []
    with socket.create_connection(("127.0.0.1", simulator.controllers[0]["port"]), timeout=15) as host:
        for _ in range(count):
            begin = time.perf_counter()
            host.sendall(frame)
            while not host.recv(4096).endswith(b"\x5A"): pass
            times.append(time.perf_counter() - begin)
            time.sleep(0.001)
    return statistics.median(times) * 1e6


def many_readers():
    simulator = Simulator(*SCREEN)
    simulator.send(*RUNNING)
    frame = bytes.fromhex(simulator.get("log")[0]["bytes"])
    stalled, alone, beside = None, [], []
    for _ in range(3):
        alone.append(answer_time(simulator, frame))
        stalled, readers = Live(simulator.url, room=4096), Readers(simulator, 49)
        time.sleep(1)
        beside.append(answer_time(simulator, frame))
        readers.stop()
        stalled.close()
    simulator.stop()
    ours, peer = statistics.median(beside), statistics.median(alone)
    yield "answer beside 50 readers, one stalled", f"{ours:.0f} us", f"without them: {peer:.0f} us", peer / ours, 0.909


# Notes the time of every picture that differs from the one before.
WATCH = """window.seen = [];
           const canvas = document.querySelector("#screen"), context = canvas.getContext("2d");
           let last = "";
           (function look() {
               const now = context.getImageData(0, canvas.height >> 1, canvas.width, 8).data.join();
               if (now !== last) seen.push(Date.now());
               last = now;
               requestAnimationFrame(look);
           })();"""


def browser():
    if not shutil.which("chromedriver"): return
    simulator, page, times = Simulator("--size", "64x16"), Browser(), []
    page.open(simulator.url)
    page.run(WATCH)
    for number in range(25):
        known = wait_for("a picture", lambda: page.run("return seen.length"))
        simulator.send("text", "--color", "red" if number % 2 else "green", "WWWW")
        done = time.time()
        wait_for("a new picture", lambda: page.run("return seen.length") > known)
        times.append(max(0, page.run("return seen[arguments[0]]", known) - 1000 * done))
    page.close()
    simulator.stop()
    milliseconds = statistics.median(times)
    yield "from qmctl's 0 to the pixel in a browser", f"{milliseconds:.0f} ms", "50 ms", 50 / max(milliseconds, 1), 1


def many_controllers():
    simulator = Simulator("--count", "1000")
    time.sleep(5)
    core, memory = share_of_a_core(simulator.process, 20), megabytes(simulator.process)
    simulator.stop()
    yield "1,000 controllers, idle", f"{core:.2%} of a core", "5% of a core", 0.05 / max(core, 1e-4), 1
    yield "1,000 controllers, idle", f"{memory:.0f} MB", "500 MB", 500 / memory, 1


def main():
    Simulator.binary, Simulator.qmctl = sys.argv[1:]
    show((*one_reader(), *many_readers(), *browser(), *many_controllers()))


main()
