#!/usr/bin/env python3
"""What a site document holds of its first trend, one fact a line.

usage: stored_trend.py SITE FACT      FACT: range (two dates, seconds since 1970), keys,
panel, or one a row: names, units, shown, points, maxima
The state of a trend is CBOR; what is needed of it is read here, so that the program is not its own witness.
"""
import sqlite3
import struct
import sys


def read_count(data, place, extra):
    if extra < 24:
        return extra, place
    size = 1 << (extra - 24)
    return int.from_bytes(data[place:place + size], "big"), place + size


def read_float(data, place, extra):
    form = {25: ">e", 26: ">f", 27: ">d"}[extra]
    size = struct.calcsize(form)
    return struct.unpack(form, data[place:place + size])[0], place + size


def read(data, place):
    """The item at a place, and the place behind it."""
    major, extra = data[place] >> 5, data[place] & 31
    place += 1
    if major == 7:
        return ({20: False, 21: True, 22: None, 23: None}[extra], place) if extra < 24 else read_float(data, place, extra)
    if extra == 31:
        return read_open(data, place, major)
    count, place = read_count(data, place, extra)
    if major in (0, 1):
        return (count if major == 0 else -1 - count), place
    if major in (2, 3):
        text = data[place:place + count]
        return (text if major == 2 else text.decode()), place + count
    if major == 6:
        return read(data, place)
    items = []
    for _ in range(count if major == 4 else 2 * count):
        item, place = read(data, place)
        items.append(item)
    return (items if major == 4 else dict(zip(items[::2], items[1::2]))), place


def read_open(data, place, major):
    items = []
    while data[place] != 0xFF:
        item, place = read(data, place)
        items.append(item)
    return (items if major == 4 else dict(zip(items[::2], items[1::2]))), place + 1


def first_trend(site):
    with sqlite3.connect(f"file:{site}?mode=ro", uri=True) as database:
        state, = database.execute("SELECT state FROM plugin ORDER BY id LIMIT 1").fetchone()
    return read(bytes(state), 0)[0][2]


def facts(trend):
    dates = trend["dataClusterViewController"]
    rows = trend["infoTableArray"]
    answer = {
        "range": f"{dates['fromDate']} {dates['toDate']}",
        "keys": " ".join(column[0] for column in trend["tables"][1:]),
        "panel": "shown" if trend["propertyDetailsShowing"] else "hidden",
    }
    for name, key in {"names": "tableName", "units": "unit", "shown": "show", "points": "points",
                      "maxima": "maximum"}.items():
        answer[name] = "|".join(str(row[key]) for row in rows)
    return answer


if __name__ == "__main__":
    print(facts(first_trend(sys.argv[1]))[sys.argv[2]])
