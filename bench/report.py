"""Reads the JSON of qm_bench on standard input and prints one row a peer: work, ours, peer, ratio, mark."""

import json
import sys

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def medians(benchmarks):
    """The work's name -> its contenders as they were registered, each name -> median."""
    works = {}
    for entry in sorted(benchmarks, key=lambda entry: entry["family_index"]):
        if entry.get("aggregate_name") == "median":
            work, contender = entry["run_name"].split("/")[:2]
            works.setdefault(work, {})[contender] = entry
    return works


def cost(entry):
    """Bytes of memory; processor time where there is a speed, so that other load counts less; else real time."""
    if "bytes" in entry:
        return entry["bytes"]
    time = entry["cpu_time" if "bytes_per_second" in entry else "real_time"]
    return time * NANOSECONDS[entry["time_unit"]]


def shown(entry):
    if "bytes_per_second" in entry:
        return f"{entry['bytes_per_second'] / 1e9:.3g} GB/s"
    if "bytes" in entry:
        return f"{entry['bytes'] / 1e6:.3g} MB"
    return f"{cost(entry) / 1e6:.2f} ms"


def rows(works):
    for work, contenders in works.items():
        ours = contenders.pop("ours", None)
        if ours is None:  # filtered out
            continue
        for name, peer in contenders.items():
            ratio = cost(peer) / cost(ours)
            mark = peer.get("mark")
            verdict = "" if mark is None else f"{mark:.3g} {'met' if ratio >= mark else 'missed'}"
            yield work, shown(ours), f"{name}: {shown(peer)}", f"{ratio:.3g}", verdict


def main():
    try:
        results = json.load(sys.stdin)
    except json.JSONDecodeError:
        sys.exit("qm_bench gave no complete results")
    table = [("work", "ours", "peer", "ratio", "mark"), *rows(medians(results["benchmarks"]))]
    widths = [max(len(row[i]) for row in table) for i in range(5)]
    table.insert(1, tuple("-" * width for width in widths))
    for row in table:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |")
    machine = results["context"]
    print(f"\nMedians; ratio: cost of the peer / cost of ours. {machine['num_cpus']} CPUs at", end=" ")
    print(f"{machine['mhz_per_cpu']} MHz, load at the start {machine['load_avg'][0]:.2f}.")


main()
