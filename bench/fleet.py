"""What qmctl costs with one controller and with many: fleet.py SIMULATOR QMCTL. Prints one row a mark."""
import json
import math
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).parent.parent
sys.path.insert(0, str(ROOT / "tests/web"))

from rows import show
from simulator import Simulator

COUNTS, JOBS, ALL, MANY = (10, 100, 1000), (32, 64, 256), 1000, 32
CONNECTIONS = 2  # of a text: who the controller is, and the area
TIMES = 5, 10  # ms that the protocol prescribes after connecting and after closing
GENERATIONS = {5: "0x0051", 6: "0x0262"}


def seconds_of(work):
    begin = time.monotonic()
    work()
    return time.monotonic() - begin


def rest(connections, more=0):
    """As long as the connections, one after the other, have to rest, and more milliseconds."""
    for _ in range(connections):
        for milliseconds in TIMES: time.sleep(milliseconds / 1000)
    time.sleep(more / 1000)


class Crowd:
    """Controllers in one process, and lists of them by how many they are."""

    def __init__(self, folder):
        self.simulator = Simulator("--count", str(ALL))
        self.lists = {count: folder / f"{count}" for count in COUNTS}
        places = [f"{one['address']}:{one['port']}\n" for one in self.simulator.controllers]
        for count, path in self.lists.items(): path.write_text("".join(places[:count]))

    def text(self, count, jobs):
        """qmctl, as it begins to send the same text to all."""
        command = [Simulator.qmctl, "--controllers", self.lists[count], "--jobs", str(jobs), "text", "Hello"]
        return subprocess.Popen(command, stdout=subprocess.DEVNULL)

    def cost(self, count, jobs):
        """Seconds, and those of the processor."""
        begin, process = time.monotonic(), self.text(count, jobs)
        _, status, used = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode: raise AssertionError(f"{count} controllers, {jobs} jobs: {process.returncode}")
        return time.monotonic() - begin, used.ru_utime + used.ru_stime

    def peak(self, jobs):
        """Megabytes; looked for in a run of its own, since looking takes time."""
        process, most = self.text(ALL, jobs), 0
        while process.poll() is None:
            status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
            if "VmHWM:" in status: most = int(status.partition("VmHWM:")[2].split()[0]) / 1000
            time.sleep(0.005)
        return most


def waves(count, jobs):
    return math.ceil(count / jobs)


def crowd(folder, rounds=5):
    """All sizes and their rests in turns, so that a disturbance hits each."""
    many = Crowd(folder)
    kinds = [(count, MANY) for count in COUNTS] + [(ALL, jobs) for jobs in JOBS if jobs != MANY]
    costs, rests = {kind: [] for kind in kinds}, {kind: [] for kind in kinds}
    for _ in range(rounds):
        for kind in kinds:
            costs[kind].append(many.cost(*kind))
            rests[kind].append(seconds_of(lambda: rest(CONNECTIONS * waves(*kind))))
    peaks = {jobs: many.peak(jobs) for jobs in JOBS}
    many.simulator.stop()
    ours = {kind: statistics.median(wall for wall, _ in costs[kind]) for kind in kinds}
    for kind in kinds:
        peer, work = statistics.median(rests[kind]), f"text to {kind[0]:,} controllers, {kind[1]} jobs"
        yield work, f"{ours[kind]:.3g} s", f"prescribed rests: {peer:.3g} s", peer / ours[kind], None
        if kind == (ALL, MANY): yield work, f"{ours[kind]:.3g} s", "1.5 s", 1.5 / ours[kind], 1
    for jobs, peak in peaks.items():
        yield f"text to {ALL:,} controllers, {jobs} jobs", f"{peak:.0f} MB", "100 MB", 100 / peak, 1
    exponent = math.log10(ours[ALL, MANY] / ours[100, MANY])
    yield "growth of the time, 100 to 1,000 controllers", f"exponent {exponent:.3g}", "1.05", 1.05 / exponent, 1
    share = statistics.median(used for _, used in costs[ALL, MANY])
    yield (f"processor a controller, {MANY} jobs", f"{share * 1000 / ALL:.2g} ms",
           f"time a controller: {ours[ALL, MANY] * 1000 / ALL:.2g} ms", ours[ALL, MANY] / share, None)


def apply_again(folder):
    """The second apply of a sign, of which all can be asked for."""
    playlist = {"playlist": [str(ROOT / "examples/shops/welcome.json")], "prune": True}
    signs = {"playlist": playlist, "and settings": playlist | {"brightness": 8, "clock": "now"}}
    for name, sign in signs.items():
        path = folder / "sign.json"
        path.write_text(json.dumps(sign))
        for generation, kind in GENERATIONS.items():
            simulator, asked = Simulator("--type", kind), []
            for _ in range(2):
                before = len(simulator.get("log"))
                if simulator.send("apply", str(path)): raise AssertionError(f"generation {generation}: {name}")
                asked = [entry["peer"] for entry in simulator.get("log")[before:]]
            simulator.stop()
            connections = len(set(asked))
            work = f"apply with nothing to do: {name}, generation {generation}"
            yield work, f"{connections} connections", "4 connections", 4 / connections, 1


def one_shot(count=41):
    simulator, ours, peer = Simulator(), [], []
    place = f"127.0.0.1:{simulator.controllers[0]['port']}"
    text = lambda: subprocess.check_call([Simulator.qmctl, "-c", place, "text", "Hello"], stdout=subprocess.DEVNULL)
    text()
    connections = len({entry["peer"] for entry in simulator.get("log")})
    if connections != CONNECTIONS: raise AssertionError(f"a text made {connections} connections")
    for _ in range(count):
        ours.append(seconds_of(text))
        peer.append(seconds_of(lambda: rest(CONNECTIONS, 12)))
    simulator.stop()
    ours, peer = statistics.median(ours) * 1000, statistics.median(peer) * 1000
    yield "qmctl text, from its start to its end", f"{ours:.1f} ms", f"rests and 12 ms: {peer:.1f} ms", peer / ours, 1


def main():
    Simulator.binary, Simulator.qmctl = sys.argv[1:]
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for rows in crowd(folder), apply_again(folder), one_shot(): show(rows)


main()
