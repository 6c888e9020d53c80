"""Rows of the table, as what measures from outside prints them."""


def show(rows):
    """Each row: the work, ours, the limit or peer, how many times better than that ours is, and the mark or None."""
    for work, ours, peer, ratio, mark in rows:
        verdict = "" if mark is None else f"{mark:.3g} {'met' if ratio >= mark else 'missed'}"
        print(f"| {work:55} | {ours:15} | {peer:30} | {ratio:5.3g} | {verdict:9} |", flush=True)
