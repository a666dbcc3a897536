#!/usr/bin/env python3
"""What readers of trends expect, each by mouse and by keyboard alone, in the program's own window.

usage: read_trend.py PROGRAM SITE FOLDER     SITE: that of the demonstration, PROGRAM makes it; pictures go to FOLDER

Whatever is clicked is found by the name that the program tells the accessibility bus, and menus are walked with arrow
keys until the item has the focus. Facts come from what the site stores within seconds, from what accessible texts say,
and from comparing pictures.
"""
import os
import sqlite3
import subprocess
import sys
import time

import pyatspi

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import stored_trend

MENU_KEYS = {"File": "alt+f", "Edit": "alt+e", "View": "alt+v", "Trend": "alt+t"}


class Failure(Exception):
    pass


def wait_for(what, seconds=15, step=0.15):
    """The first answer of `what` that is true."""
    end = time.time() + seconds
    while True:
        try:
            answer = what()
        except Exception:  # widgets go while they are looked at
            answer = None
        if answer or time.time() > end:
            return answer
        time.sleep(step)


def hand(*words):
    subprocess.run(["xdotool", *map(str, words)], check=True)


def extents(item):
    return item.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)


def shows(item):
    box = extents(item)
    return box.width > 1 and box.height > 1 and item.getState().contains(pyatspi.STATE_SHOWING)


def children(item):
    return [child for child in item if child]


def search(item, role, name, deep=14):
    """The first part of this role and name, down to a depth; tables are not searched."""
    for child in children(item):
        if child.getRoleName() in role and child.name == name and shows(child):
            return child
        if deep and child.getRoleName() not in ("table", "tree", "list", "menu bar"):
            found = search(child, role, name, deep - 1)
            if found:
                return found
    return None


def width_of_png(path):
    """Nothing while there is no whole file."""
    if not os.path.exists(path):
        return None
    with open(path, "rb") as file:
        head = file.read(24)
    return int.from_bytes(head[16:20], "big") if head[:8] == b"\x89PNG\r\n\x1a\n" and len(head) == 24 else None


class Program:
    def __init__(self, program, site, folder):
        self.site, self.folder, self.count = site, folder, 0
        self.desktop = pyatspi.Registry.getDesktop(0)
        self.process = subprocess.Popen([program])
        self.application = wait_for(lambda: next(a for a in self.desktop if a and a.name == "plotix"), 120)
        self.window = wait_for(lambda: next(w for w in self.application if "Demonstration" in w.name), 120)
        if not self.window:
            raise Failure("no window")
        wait_for(lambda: self.trend().get("tables"), 60)
        time.sleep(1.5)

    # Looking.
    @property
    def graph(self):
        """That of the trend shown: each has its own."""
        return self.find(("filler",), "Graph")

    def trend(self):
        return stored_trend.first_trend(self.site)

    def chosen(self, part):
        return self.trend().get("reading", {}).get(part, {})

    def dates(self):
        dates = self.trend()["dataClusterViewController"]
        return dates["fromDate"], dates["toDate"]

    def find(self, roles, name, inside=None):
        found = wait_for(lambda: search(inside or self.window, roles, name), 8)
        if not found:
            raise Failure(f"there is no “{name}”")
        return found

    def dialog(self, title):
        found = wait_for(lambda: next(w for w in self.application if title in w.name and shows(w)), 8)
        if not found:
            raise Failure(f"no window “{title}” opened")
        time.sleep(0.4)
        return found

    def picture(self, name):
        time.sleep(0.5)
        self.count += 1
        path = os.path.join(self.folder, f"{self.count:02}-{name}.png")
        box = extents(self.window)
        subprocess.run(["import", "-window", "root", "-crop",
                        f"{box.width}x{box.height}+{box.x}+{box.y}", "+repage", path], check=True)
        return path

    def graph_picture(self):
        box = extents(self.graph)
        path = os.path.join(self.folder, "graph.ppm")
        subprocess.run(["import", "-window", "root", "-crop", f"{box.width}x{box.height}+{box.x}+{box.y}", path],
                       check=True)
        with open(path, "rb") as file:
            return file.read()

    # Doing.
    def point_at(self, item, x=0.5, y=0.5):
        box = extents(item)
        hand("mousemove", int(box.x + x * box.width), int(box.y + y * box.height))

    def click(self, item, x=0.5, y=0.5, button=1):
        self.point_at(item, x, y)
        time.sleep(0.1)
        hand("click", button)
        time.sleep(0.2)

    def drag(self, x0, y0, x1, y1, item=None):
        box = extents(item or self.graph)
        at = lambda x, y: (int(box.x + x * box.width), int(box.y + y * box.height))
        hand("mousemove", *at(x0, y0))
        hand("mousedown", 1)
        for step in range(1, 11):
            hand("mousemove", *at(x0 + (x1 - x0) * step / 10, y0 + (y1 - y0) * step / 10))
            time.sleep(0.03)
        hand("mouseup", 1)

    def with_key(self, key, act):
        hand("keydown", key)
        act()
        hand("keyup", key)

    def drag_below_the_plots(self, fromX, toX):
        """Along the labels of time, which stand above the overview."""
        self.drag(fromX, 0.8, toX, 0.8)

    def still(self):
        """Waits until what is stored no longer changes: storing comes every two seconds."""
        before = None
        while before != self.dates():
            before = self.dates()
            time.sleep(2.3)

    def property_names(self):
        with sqlite3.connect(f"file:{self.site}?mode=ro", uri=True) as database:
            return [name for name, in database.execute("SELECT name FROM property")]

    def has_completion(self):
        return any(w.getRoleName() == "list" and shows(w) for w in children(self.application))

    def follows(self):
        bar = next(child for child in children(self.window) if child.getRoleName() == "menu bar")
        view = next(child for child in children(bar) if child.name == "View")
        return self.item_of(view, "Follow").getState().contains(pyatspi.STATE_CHECKED)

    def trend_count(self):
        with sqlite3.connect(f"file:{self.site}?mode=ro", uri=True) as database:
            return database.execute("SELECT count(*) FROM plugin").fetchone()[0]

    def key(self, *names):
        for name in names:
            hand("key", "--clearmodifiers", name)
            time.sleep(0.12)

    def type(self, text):
        hand("type", "--delay", 40, "--", text)

    def reach_by_keys(self, item):
        for _ in range(30):
            if item.getState().contains(pyatspi.STATE_FOCUSED):
                return
            self.key("Tab")
        raise Failure(f"Tab does not reach “{item.name}”")

    def press_by_keys(self, button):
        self.reach_by_keys(button)
        self.key("space")

    def focus_graph(self):
        """By the key that goes from region to region."""
        for _ in range(8):
            if self.graph.getState().contains(pyatspi.STATE_FOCUSED):
                return
            self.key("F6")
        raise Failure("F6 does not reach the graph")

    def properties(self):
        return self.find(("tree",), "Properties")

    def tick_by_mouse(self, row):
        """Rows of properties stand below their agent's, each as high."""
        box = extents(self.properties())
        hand("mousemove", box.x + 18, int(box.y + 36 + 22 * row))
        hand("click", 1)
        time.sleep(0.3)

    def tick_by_keys(self, row):
        for _ in range(8):
            if self.properties().getState().contains(pyatspi.STATE_FOCUSED):
                break
            self.key("F6")
        self.key("Home", *["Down"] * (row + 1), "space")

    def item_of(self, menu, name):
        popup = next(child for child in children(menu) if child.getRoleName() == "popup menu")
        return next(child for child in children(popup) if child.name == name)

    def menu_by_mouse(self, *names):
        bar = next(child for child in children(self.window) if child.getRoleName() == "menu bar")
        item = next(child for child in children(bar) if child.name == names[0])
        self.click(item)
        for name in names[1:]:
            above = item
            item = wait_for(lambda: (lambda found: shows(found) and found)(self.item_of(above, name)), 6)
            if not item:
                raise Failure(f"the menu shows no “{name}”")
            self.click(item)
        time.sleep(0.3)

    def menu_by_keys(self, *names):
        bar = next(child for child in children(self.window) if child.getRoleName() == "menu bar")
        item = next(child for child in children(bar) if child.name == names[0])
        hand("mousemove", 1390, 890)  # out of the way
        self.key(MENU_KEYS[names[0]])
        for name in names[1:]:
            above = item
            item = wait_for(lambda: (lambda found: shows(found) and found)(self.item_of(above, name)), 6)
            if not item:
                raise Failure(f"the menu shows no “{name}”")
            for _ in range(60):
                states = item.getState()
                if states.contains(pyatspi.STATE_FOCUSED) or states.contains(pyatspi.STATE_SELECTED):
                    break
                self.key("Down")
            else:
                raise Failure(f"the arrow keys do not reach “{name}”")
            self.key("Return" if name == names[-1] else "Right")
        time.sleep(0.3)

    def expect(self, what, text, seconds=12):
        if not wait_for(what, seconds):
            raise Failure(text)


def both_ways(program, title):
    """The two menus, to be walked in turns."""
    return ((f"{title} by mouse", program.menu_by_mouse), (f"{title} by keys", program.menu_by_keys))


def ranges(p):
    before = p.dates()
    p.click(p.find(("push button",), "Quick range"))
    p.key("Down", "Return")
    p.expect(lambda: p.dates() != before, "a quick range chosen by mouse did not change the dates")
    before = p.dates()
    p.find(("push button",), "Quick range").queryComponent().grabFocus()
    p.key("space", "Down", "Down", "Return")
    p.expect(lambda: p.dates() != before, "a quick range chosen by keys did not change the dates")
    p.picture("relative-range")
    date = lambda: p.find(("spin button",), "From date")
    for way, choose in (("mouse", lambda: p.click(date(), 0.3)), ("keys", lambda: date().queryComponent().grabFocus())):
        before = p.dates()
        choose()
        p.key("ctrl+a")
        p.type("yesterday" if way == "mouse" else "-3d")
        p.key("Return")
        p.expect(lambda: p.dates()[0] != before[0], f"a date typed after {way} was not taken")
        p.picture(f"absolute-range-{way}")


def looks(p):
    for (title, menu), style in zip(both_ways(p, "steps"), ("Steps: Hold the Last Value", "Points Only")):
        before = p.graph_picture()
        menu("View", "Look", "Look of Lines", "Air Temperature", style)
        hand("mousemove", 1390, 890)
        p.expect(lambda: p.graph_picture() != before, f"{title}: the line looks as before")
        p.picture(title)


def lanes(p):
    for (title, menu), name, kind in zip(both_ways(p, "lanes"), ("Lane per Property", "Lane per Unit"),
                                         ("lane-per-property", "lane-per-unit")):
        menu("View", "Arrangement", name)
        p.expect(lambda: p.chosen("arrangement").get("kind") == kind, f"{title}: no {name}")
        p.picture(title)
    p.menu_by_keys("View", "Arrangement", "Lanes…")
    p.dialog("Lanes")
    p.picture("lanes-dialog")
    p.key("Escape")
    p.menu_by_mouse("View", "Arrangement", "Automatic")


def length(dates):
    return dates[1] - dates[0]


def zooms(p):
    ways = {
        "box by mouse": lambda: p.with_key("ctrl", lambda: p.drag(0.3, 0.3, 0.6, 0.6)),
        "box from the menu": lambda: (p.menu_by_keys("View", "Move", "Zoom to a Box"), p.drag(0.3, 0.3, 0.6, 0.6)),
        "axis by mouse": lambda: p.drag_below_the_plots(0.3, 0.5),
        "wheel": lambda: (p.point_at(p.graph, 0.5, 0.3), hand("click", 4), hand("click", 4)),
        "plus": lambda: (p.focus_graph(), p.key("equal", "equal")),  # plus needs Shift, which holds the time
        "time alone by keys": lambda: (p.key("ctrl+t"), p.focus_graph(), p.key("equal", "equal"), p.key("ctrl+t")),
    }
    for title, zoom in ways.items():
        p.key("ctrl+0")
        p.still()
        before = p.dates()
        zoom()
        p.expect(lambda: length(p.dates()) < 0.9 * length(before), f"{title} did not zoom the time")
        p.picture(f"zoom {title}")


def pans(p):
    for title, pan in (("mouse", lambda: p.drag(0.6, 0.3, 0.4, 0.3)),
                       ("keys", lambda: (p.focus_graph(), p.key("Left", "Left")))):
        p.still()
        before = p.dates()
        pan()
        p.expect(lambda: p.dates()[0] != before[0], f"no pan by {title}")
        p.still()
        if abs(length(p.dates()) - length(before)) > 1:
            raise Failure(f"a pan by {title} changed the length")


def back_and_forward(p):
    for title, menu in both_ways(p, "back"):
        p.key("ctrl+0")
        p.still()
        whole = p.dates()
        p.point_at(p.graph, 0.5, 0.3)
        hand("click", "--repeat", 3, 4)
        p.still()
        near = p.dates()
        menu("View", "Move", "Back")
        p.expect(lambda: abs(p.dates()[0] - whole[0]) < 1, f"{title} did not bring the view before")
        menu("View", "Move", "Forward")
        p.expect(lambda: abs(p.dates()[0] - near[0]) < 1, f"{title}: not forward again")


def value_line(p):
    p.key("ctrl+0")
    p.point_at(p.graph, 0.45, 0.3)  # the menu before left the pointer where it stood
    p.point_at(p.graph, 0.5, 0.3)
    p.picture("value-line-at-pointer")
    p.click(p.graph, 0.5, 0.3)
    p.expect(lambda: p.chosen("valueLine").get("held"), "a click did not hold the value line")
    held = p.chosen("valueLine")["held"]
    p.focus_graph()
    p.key("period", "period")
    p.expect(lambda: p.chosen("valueLine").get("held", 0) > held, "the keys did not move the value line")
    p.expect(lambda: "°C" in p.graph.description, f"the graph says “{p.graph.description}”")
    p.menu_by_keys("View", "Values", "Next Maximum")
    p.expect(lambda: p.chosen("valueLine").get("held", 0) > held, "the next maximum was not gone to")
    p.picture("value-line-at-maximum")
    p.focus_graph()
    p.key("Escape")
    p.expect(lambda: not p.chosen("valueLine").get("held"), "Escape did not let the line go")


def statistics(p):
    p.click(p.find(("check box",), "Statistics of visible"))
    p.expect(lambda: p.chosen("statistics").get("over") == "visible", "the button did not choose what is visible")
    p.picture("statistics-of-visible")
    for (title, menu), name in zip(both_ways(p, "statistics"),
                                   ("Statistics of Everything Fetched", "Statistics of What Is Visible")):
        before = p.chosen("statistics").get("over")
        menu("View", "Table", name)
        p.expect(lambda: p.chosen("statistics").get("over") != before, f"{title} did not choose {name}")


def answers(p):
    """What was it at 14:35 last Tuesday; how much more than the week before; when was the maximum; how long above 6 °C."""
    for title, menu in both_ways(p, "answers"):
        menu("View", "Values", "Go to Time…")
        p.dialog("Go to Time")
        p.type("last Tuesday 14:35")
        p.key("Return")
        p.expect(lambda: "2:35" in p.graph.description and "°C" in p.graph.description,
                 f"{title}: the graph says “{p.graph.description}”")
        menu("View", "Compare", "A Week Earlier")
        p.expect(lambda: "against a week earlier" in p.graph.description,
                 f"{title}: the graph says “{p.graph.description}”")
        menu("View", "Values", "Go to Maximum of", "Air Temperature")
        p.expect(lambda: "°C, maximum" in p.graph.description, f"{title}: the graph says “{p.graph.description}”")
        menu("View", "Table", "Time Above a Limit…")
        p.dialog("Time Above a Limit")
        p.type("6")
        p.key("Return")
        p.expect(lambda: "aboveLimit" in p.chosen("statistics").get("columns", []), f"{title}: no column for the time")
        p.picture(title)
        menu("View", "Compare", "Compare with Nothing")
        menu("View", "Table", "Remove All Limits")
        menu("View", "Table", "Columns", "Time Above Limit")
        menu("View", "Values", "Hold the Value Line")
        p.expect(lambda: "aboveLimit" not in p.chosen("statistics").get("columns", []), f"{title}: the column stayed")


def pictures(p):
    """A PNG of a chosen width: at 144 dots an inch a point is two pixels."""
    for (title, menu), width in zip(both_ways(p, "export"), (300, 450)):
        file = os.path.join(p.folder, f"{title}.png")
        if os.path.exists(file):  # of a run before: the program would ask whether to replace it
            os.remove(file)
        menu("File", "Export Picture…")
        dialog = p.dialog("Picture")
        field = p.find(("spin button",), "Width", dialog)
        p.reach_by_keys(field) if title.endswith("keys") else p.click(field, 0.3)
        p.key("ctrl+a")
        p.type(str(width))
        p.picture(title)
        button = p.find(("push button",), "Export…", dialog)
        p.press_by_keys(button) if title.endswith("keys") else p.click(button)
        p.dialog("Save")
        p.key("ctrl+a")
        p.type(file)
        p.key("Return")
        p.expect(lambda: width_of_png(file) == 2 * width, f"{title}: no picture of {2 * width} pixels")


def views(p):
    for (title, menu), tick, row in zip(both_ways(p, "new trend"), (p.tick_by_mouse, p.tick_by_keys), (2, 3)):
        before = p.trend_count()
        tick(row)
        menu("Trend", "New Trend from Ticked Properties")
        p.expect(lambda: p.trend_count() > before, f"{title}: none was made")
        p.picture(title)
        if search(p.window, ("text",), "") is not None:
            p.key("Escape")  # its name is being edited
        tick(row)
    p.key("ctrl+z", "ctrl+z")


def formulas(p):
    for (title, menu), name, formula in zip(both_ways(p, "computed"), ("Spread", "Rise"),
                                            ('"Air Temperature" - "Dew Point"', "mean(Pressure, 1 h)")):
        menu("Edit", "New Computed Property…")
        p.dialog("Computed")
        p.type(name)
        p.key("Tab")
        p.type(formula)
        p.picture(title)
        button = p.find(("push button",), "OK", p.dialog("Computed"))
        p.press_by_keys(button) if title.endswith("keys") else p.click(button)
        p.expect(lambda: name in p.property_names(), f"{title}: no property {name}")


def live(p):
    """Recording makes a trend and follows it; following ends and goes on by both ways."""
    p.menu_by_mouse("File", "Record This Computer")
    p.expect(p.follows, "a recording is not followed")
    for title, menu in both_ways(p, "follow"):
        before = p.graph_picture()
        p.expect(lambda: p.graph_picture() != before, f"{title}: the view stands still")
        menu("View", "Follow")
        p.expect(lambda: not p.follows(), f"{title}: the trend is still followed")
        time.sleep(2)
        before = p.graph_picture()
        time.sleep(3)
        if p.graph_picture() != before:
            raise Failure(f"{title}: the view still moves")
        p.picture(f"{title} paused")
        menu("View", "Follow")
        p.expect(p.follows, f"{title}: the trend is not followed again")
    p.menu_by_keys("File", "Record This Computer")


PARTS = {"ranges": ranges, "looks": looks, "lanes": lanes, "zooms": zooms, "pans": pans,
         "back and forward": back_and_forward, "value line": value_line, "statistics": statistics, "answers": answers,
         "pictures": pictures, "views": views, "formulas": formulas, "live": live}


def main():
    program = Program(sys.argv[1], sys.argv[2], sys.argv[3])
    program.picture("opened")
    wanted = sys.argv[4:] or list(PARTS)
    failed = []
    for name in wanted:
        try:
            PARTS[name](program)
            print(f"{name}: done")
        except Exception as failure:
            program.picture(f"failed-{name}")
            print(f"FAILED: {name}: {failure!r}")
            failed.append(name)
            program.key("Escape", "Escape", "Escape")
    program.process.terminate()
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
