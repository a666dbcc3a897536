#!/usr/bin/env python3
"""A minute of a person's at a long site, step by step, with how long the window takes to show what each one does.

usage: a_minute.py place PROGRAM SITE FIGURE                   makes the trend that FIGURE shows; says where its graph is
       a_minute.py steps PROGRAM SITE FOLDER SCREEN X Y W H    takes the steps; pictures go to FOLDER

SCREEN is the file that the X server keeps its picture in: looking at it asks the server for nothing. A step has been
shown when the graph has changed for the last time: what is there then is still there when the program has had nothing
to do for half a second. The time runs from before the hand is told to move until then; beside it stands how
long the program's threads worked, which other programs change little.
"""
import mmap
import os
import subprocess
import sys
import threading
import time
import zlib

STILL = 0.5  # seconds without a change, and without work
MOST_TICKS = 3  # that are no work: a caret that blinks
LONGEST = 60


def hand(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def place(program, site, figure):
    """In a session with the accessibility bus, which the steps do without."""
    sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
    import pyatspi
    from read_trend import extents, search, wait_for

    process = subprocess.Popen([program, "open", figure, "--site", site])
    desktop = pyatspi.Registry.getDesktop(0)
    application = wait_for(lambda: next(a for a in desktop if a and a.name == "plotix"), 60)
    graph = wait_for(lambda: next(found for found in (search(w, ("filler",), "Graph") for w in application) if found), 60)
    before, box = None, extents(graph)
    while before != (box.x, box.y, box.width, box.height):
        before = (box.x, box.y, box.width, box.height)
        time.sleep(3)  # what is shown is stored every two seconds
        box = extents(graph)
    print(*before)
    process.terminate()
    return process.wait()


class Screen:
    """The picture of an X server, as a file in memory."""

    def __init__(self, path, box):
        with open(path, "rb") as file:
            self.bytes = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        field = lambda at: int.from_bytes(self.bytes[at:at + 4], "big")
        self.first, self.line = field(0) + 12 * field(76), field(48)
        self.x, self.y, self.width, self.height = box

    def row(self, y):
        begin = self.first + (self.y + y) * self.line + 4 * self.x
        return self.bytes[begin:begin + 4 * self.width]

    def sum(self):
        sum = 0
        for y in range(self.height):
            sum = zlib.crc32(self.row(y), sum)
        return sum


class Minute:
    def __init__(self, screen, folder):
        self.screen, self.folder, self.steps, self.process = screen, folder, [], None

    def ticks(self):
        """Hundredths of a second that the program has worked."""
        if not self.process:
            return 0
        with open(f"/proc/{self.process.pid}/stat") as file:
            fields = file.read().rpartition(")")[2].split()
        return int(fields[11]) + int(fields[12])

    def measured(self, act, is_there=lambda: True):
        """`is_there`: what must be so before the step can have been shown."""
        seen, before = self.screen.sum(), self.ticks()
        begin = time.monotonic()
        threading.Thread(target=act).start()
        first, last, quiet, worked = None, None, begin, self.ticks()
        while not last or time.monotonic() - quiet < STILL or not is_there():
            now_seen, now = self.screen.sum(), time.monotonic()
            if now_seen != seen:
                seen, last = now_seen, now
                first = first or now
            if last == now or self.ticks() > worked + MOST_TICKS:
                quiet, worked = now, self.ticks()
            if now - begin > LONGEST:
                raise SystemExit("FAILED: a step changed nothing")
            time.sleep(0.001)
        return first - begin, last - begin, (self.ticks() - before) / 100

    def take(self, name, act, is_there=lambda: True):
        self.add(name, self.measured(act, is_there))

    def take_slowest(self, name, times, act):
        all_of_them = [self.measured(act) for _ in range(times)]
        slowest = max(range(times), key=lambda turn: all_of_them[turn][1])
        self.add(f"{name}, slowest of {times}: no. {slowest + 1}", all_of_them[slowest])

    def add(self, name, seconds):
        self.steps.append((name, *seconds))
        path = os.path.join(self.folder, f"{len(self.steps):02}-{name.replace(' ', '-').replace(':', '')}.png")
        subprocess.run(["import", "-window", "root", path], check=True)

    def print(self):
        print(f"{'seconds':<34} {'first sign':>10} {'shown':>7} {'work':>6}")
        for name, first, last, work in self.steps:
            print(f"{name:<34} {first:>10.3f} {last:>7.3f} {work:>6.2f}")

    def longest(self):
        return max(last for _, _, last, _ in self.steps)


def spike(screen):
    """Where a line reaches furthest down in the middle lane: the lowest pixel that is as bright as lines are. Nothing
    where there is no line."""
    for y in range(int(0.49 * screen.height), int(0.33 * screen.height), -1):
        row = screen.row(y)
        for x in range(int(0.1 * screen.width), int(0.9 * screen.width)):
            blue, green, red = row[4 * x:4 * x + 3]
            if max(red, green, blue) - min(red, green, blue) > 90:
                return screen.x + x, screen.y + y
    return None


def steps(program, site, folder, path, box):
    screen = Screen(path, box)
    minute = Minute(screen, folder)

    def open_site():
        minute.process = subprocess.Popen([program, site])

    hand("mousemove", 2, 2)
    minute.take("open", open_site, lambda: spike(screen))
    hand("key", "ctrl+t")  # the wheel zooms the time alone: a spike is to be seen with what is about it
    hand("mousemove", *spike(screen))
    time.sleep(1)
    for notch in range(1, 4):
        minute.take(f"zoom in {notch}", lambda: hand("click", 4))
    hand("mousemove", *spike(screen))
    time.sleep(1)
    minute.take_slowest("zoom in", 12, lambda: hand("click", 4))
    hand("mousemove", *spike(screen))
    time.sleep(1)
    minute.take("zoom in 12 at once", lambda: hand("click", "--repeat", 12, "--delay", 10, 4))
    x, y = spike(screen)
    minute.take("read beside the spike", lambda: hand("mousemove", x + 25, y - 10))
    minute.take("read the spike", lambda: hand("mousemove", x, y))
    minute.take("hold the reading", lambda: hand("click", 1))
    minute.take("next record", lambda: hand("key", "period"))
    minute.take("back", lambda: hand("key", "alt+Left"))
    minute.take_slowest("back again", 12, lambda: hand("key", "alt+Left"))
    minute.take("next property", lambda: hand("key", "l"))
    minute.take("its next maximum", lambda: hand("key", "m"))
    minute.take("everything", lambda: hand("key", "Home"))
    minute.print()
    minute.process.terminate()
    minute.process.wait()
    limit = float(os.environ.get("PLOTIX_STEP_LIMIT", "0"))
    if limit and minute.longest() > limit:
        raise SystemExit(f"FAILED: a step took {minute.longest():.3f} s, more than {limit} s")


if __name__ == "__main__":
    if sys.argv[1] == "place":
        sys.exit(0 if place(*sys.argv[2:5]) in (0, -15) else 1)
    steps(*sys.argv[2:6], tuple(int(number) for number in sys.argv[6:10]))
