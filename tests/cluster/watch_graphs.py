#!/usr/bin/env python3
"""Watches parts of a virtual screen, and how soon they change after a record was stored.

    watch_graphs.py SCREEN RECORDED SEEN "LEFT TOP WIDTH HEIGHT"…    until it is ended: a line for each record stored, and
                                                                    for each part that has changed, with the time
    watch_graphs.py --judge SEEN FIRST TITLE                        of the lines from FIRST on: how long after each record
                                                                    every part changed; fails where it was more than 2 s, or than PLOTIX_SHOWN_WITHIN

SCREEN is the file in which the virtual screen keeps its picture.
"""
import collections
import os
import struct
import sys
import time
import zlib

LONGEST = float(os.environ.get("PLOTIX_SHOWN_WITHIN", "2"))


def parts_of(screen, areas):
    """A sum of the pixels of each."""
    with open(screen, "rb") as file:
        data = file.read()
    head = struct.unpack(">25I", data[:100])
    header, bytes_per_line, colours = head[0], head[12], head[19]
    pixels = header + colours * 12
    for left, top, width, height in areas:
        total = 0
        for row in range(top, top + height):
            at = pixels + row * bytes_per_line + left * 4
            total = zlib.crc32(data[at:at + width * 4], total)
        yield total


def watch(screen, recorded, seen, areas):
    before, records = [None] * len(areas), None
    while True:
        with open(recorded, encoding="utf-8") as file:
            now = sum(line.startswith("stored") for line in file)
        with open(seen, "a", encoding="utf-8") as out:
            if records is not None and now > records:
                out.write(f"{time.monotonic():.3f} stored\n")
            for part, total in enumerate(parts_of(screen, areas)):
                if before[part] not in (None, total):
                    out.write(f"{time.monotonic():.3f} changed {part}\n")
                before[part] = total
        records = now
        time.sleep(0.1)


def judge(seen, first, title):
    with open(seen, encoding="utf-8") as file:
        lines = [line.split() for line in file.read().splitlines()[first:]]
    changes = collections.defaultdict(list)
    for words in lines:
        if words[1] == "changed":
            changes[words[2]].append(float(words[0]))
    stored = [float(words[0]) for words in lines if words[1] == "stored"]
    end = float(lines[-1][0])
    stored = [each for each in stored if each + LONGEST <= end]
    if not stored or not changes:
        print(f"{title}: {len(stored)} records, {len(changes)} graphs that changed")
        return 1
    worst, usual = {}, {}
    for part in ("0", "1"):
        # A picture of the record itself may be taken just before its line is read.
        waits = [min((change - each for change in changes[part] if change >= each - 0.3), default=99) for each in stored]
        worst[part], usual[part] = max(0, *waits), max(0, sorted(waits)[len(waits) // 2])
    print(f"{title}: {len(stored)} records, shown after " + " and ".join(f"{wait:.1f} s" for wait in usual.values()) +
          ", at the latest after " + " and ".join(f"{wait:.1f} s" for wait in worst.values()))
    return 0 if max(worst.values()) <= LONGEST else 1


if __name__ == "__main__":
    if sys.argv[1] == "--judge":
        sys.exit(judge(sys.argv[2], int(sys.argv[3]), sys.argv[4]))
    watch(sys.argv[1], sys.argv[2], sys.argv[3], [tuple(map(int, area.split())) for area in sys.argv[4:]])
