#!/usr/bin/env python3
"""Checks which way includes point.

Every folder of the sources is a room; ALLOWED says which rooms it may include. Fails on an edge that is not
there, on a Qt module a room must not use, on a cycle between files, on a cycle of units (a header with its source)
across rooms, and where more than MOST_IN_CYCLES of all units stand in cycles inside their room.
Usage: check_includes.py [--units] [ROOT]; --units lists the cycles of units.
"""
import pathlib
import re
import sys

PLUGIN = "plugins/PlotixPlugIn"
HOST = PLUGIN + "/host"
LOGIC = PLUGIN + "/logic"
READING = PLUGIN + "/reading"
VALUES = READING + "/values"
FIGURES = READING + "/figures"
KIT = {"plotkit/model", "plotkit/layout", "plotkit/raster", "plotkit/render", "plotkit/widget"}
CORE = {"base", HOST, "hostapp/core"}
DOCUMENT = CORE | {"records/store", "hostapp/formulas", "hostapp/document"}
SITE = DOCUMENT | {"hostapp/print", "hostapp/web", "hostapp/site"}
EXCHANGE = {"hostapp/exchange", "hostapp/exchange/formats"}
LIVE = {"hostapp/live", "hostapp/live/sources"}

READ = {"base", HOST, LOGIC, READING + "/trend", VALUES, FIGURES} | KIT

# Folders whose subfolders are rooms of one kind, each known by the folder above it alone: what such a room may include.
KINDS = {
    "hostapp/exchange/formats": CORE | {"hostapp/exchange", "hostapp/exchange/tables"},
    "hostapp/live/sources": CORE | {"hostapp/live"},
    READING: READ,
    "records": {"base", "storage", "records/columns", "records/store"},
}

ALLOWED = {
    "base": set(),
    "base/vectors": set(),
    "base/png": {"base", "base/vectors"},
    "storage": {"base"},
    "records/columns": {"base", "base/vectors"},
    "records/store": {"base", "records/columns"},
    "plotkit/model": {"base", "base/vectors"},
    "plotkit/raster": {"base", "base/vectors"},
    "plotkit/layout": {"base", "base/vectors", "plotkit/model"},
    "plotkit/render": {"base", "plotkit/model", "plotkit/layout", "plotkit/raster"},
    "plotkit/widget": {"base", "plotkit/model", "plotkit/layout", "plotkit/render"},
    HOST: {"base", "base/png"},
    LOGIC: {"base", "base/vectors", "plotkit/model"},
    READING + "/trend": {"base", HOST, LOGIC} | KIT,
    VALUES: {"base", HOST, LOGIC, READING + "/trend", "plotkit/model"},
    FIGURES: {"base", "base/vectors", HOST},
    READING: READ,
    PLUGIN: READ | {READING},
    "hostapp/core": {"base", HOST},
    "hostapp/formulas": CORE,
    "hostapp/document": CORE | {"storage", "records/store", "hostapp/formulas"},
    "hostapp/exchange": DOCUMENT,
    "hostapp/exchange/tables": CORE | {"hostapp/exchange"},
    "hostapp/exchange/formats": DOCUMENT | {"hostapp/exchange"},
    "hostapp/live": DOCUMENT,
    "hostapp/live/sources": CORE | {"hostapp/live"},
    "hostapp/demo": DOCUMENT,
    "hostapp/print": CORE,
    "hostapp/web": CORE,
    "hostapp/site": (SITE - {"hostapp/site"}) | {"base/png"},
    "hostapp/window": SITE | EXCHANGE | LIVE | {"hostapp/window/importing", "hostapp/window/computing",
                                                     "hostapp/window/annotating", "hostapp/window/moments"},
    "hostapp/window/importing": DOCUMENT | EXCHANGE,
    "hostapp/window/computing": DOCUMENT,
    "hostapp/window/annotating": DOCUMENT | {"hostapp/window/moments"},
    "hostapp/window/moments": {"base"},
    "hostapp/cli": SITE | EXCHANGE | LIVE | {"hostapp/demo"},
    "hostapp/app": SITE | EXCHANGE | LIVE | {"hostapp/demo", "hostapp/window", "hostapp/cli"},
}

# Files that see the rooms of a kind as what they are: those that say which store keeps the records.
ALSO_ALLOWED = {
    "hostapp/document/RecordKeeping.cpp": "records",
    "hostapp/document/KeptTables.cpp": "records",
    "hostapp/document/ServerSites.cpp": "records",
    "hostapp/document/TableServers.cpp": "records",
    # Tables of other people's are asked for over the same connection as our own.
    "records/tables/ClickHouseTables.cpp": "records",
}

# What a room may know of the toolkit is said where it is built, by KNOWS; the build fences off what lies above.
ABOVE = {
    "Core": {"QtGui", "QtWidgets", "QtPrintSupport"},
    "Gui": {"QtWidgets", "QtPrintSupport"},
    "Widgets": {"QtPrintSupport"},
    "Print": set(),
}

TOPS = ("base", "storage", "records", "plotkit", "plugins", "hostapp")

MOST_IN_CYCLES = 0.04

INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]')


def includes(path):
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match.group(1), match.group(2)


def room_of(name):
    """The longest room that holds the file, or None for files outside every room."""
    folder = pathlib.PurePosixPath(name).parent
    return str(folder) if str(folder) in ALLOWED or str(folder.parent) in KINDS else None


def may_include(room, target):
    """Whether files of one room may include files of the other, which may be None."""
    if target is None:
        return False
    above = str(pathlib.PurePosixPath(target).parent)
    if target not in ALLOWED and above in KINDS:
        return room in (target, above)
    return room == target or target in ALLOWED.get(room, KINDS.get(str(pathlib.PurePosixPath(room).parent), ()))


def is_of_kind(room, kind):
    return kind is not None and room not in ALLOWED and room is not None and room.startswith(kind + "/")


def find_cycle(graph):
    state, stack = {}, []

    def visit(node):
        state[node] = "open"
        stack.append(node)
        for target in sorted(graph.get(node, ())):
            if state.get(target) == "open":
                return stack[stack.index(target):] + [target]
            if target not in state:
                cycle = visit(target)
                if cycle:
                    return cycle
        state[node] = "done"
        stack.pop()
        return None

    for node in sorted(graph):
        if node not in state:
            cycle = visit(node)
            if cycle:
                return cycle
    return None


def unit_of(name):
    return str(pathlib.PurePosixPath(name).with_suffix(""))


def unit_cycles(files, graph):
    """The sets of units that include each other, each sorted; Tarjan's strongly connected components."""
    units = {unit_of(name): set() for name in files}
    for name, targets in graph.items():
        units[unit_of(name)] |= {unit_of(t) for t in targets if unit_of(t) != unit_of(name) and unit_of(t) in units}
    order, low, stack, cycles = {}, {}, [], []

    def visit(unit):
        order[unit] = low[unit] = len(order)
        stack.append(unit)
        for target in sorted(units[unit]):
            if target not in order:
                visit(target)
                low[unit] = min(low[unit], low[target])
            elif target in stack:
                low[unit] = min(low[unit], order[target])
        if low[unit] == order[unit]:
            members = stack[stack.index(unit):]
            del stack[stack.index(unit):]
            if len(members) > 1:
                cycles.append(sorted(members))

    for unit in sorted(units):
        if unit not in order:
            visit(unit)
    return len(units), cycles


def judge_cycles(count, cycles):
    problems = []
    for members in cycles:
        if len({str(pathlib.PurePosixPath(unit).parent) for unit in members}) > 1:
            problems.append("units of several rooms include each other: " + ", ".join(members))
    inside = sum(len(members) for members in cycles)
    if inside > MOST_IN_CYCLES * count:
        problems.append(f"{inside} of {count} units include each other, more than {MOST_IN_CYCLES:.0%}: "
                        + "; ".join(", ".join(members) for members in cycles))
    return problems


def modules_above(root, room):
    """The toolkit's modules that no source of the room may use."""
    build = root / room / "CMakeLists.txt"
    words = re.findall(r"\bKNOWS (\w+)", build.read_text(encoding="utf-8")) if build.exists() else []
    return set.intersection(*(ABOVE[word] for word in words)) if words else set()


def check(root):
    problems, graph = [], {}
    files = [p for top in TOPS for p in sorted((root / top).rglob("*"))
             if p.suffix in (".h", ".cpp")]
    above = {}
    for path in files:
        name = path.relative_to(root).as_posix()
        room = room_of(name)
        if room is None:
            problems.append(f"{name}: stands in a folder that is no room; add the folder to ALLOWED or move the file")
            continue
        for number, kind, target in includes(path):
            module = target.split("/")[0]
            if module in above.setdefault(room, modules_above(root, room)):
                problems.append(f"{name}:{number}: {room} must not use {module}")
            if kind != '"' or module not in TOPS:
                continue  # a library's header, or one the build generates
            graph.setdefault(name, set()).add(target)
            target_room = room_of(target)
            if not may_include(room, target_room) and not is_of_kind(target_room, ALSO_ALLOWED.get(name)):
                problems.append(f"{name}:{number}: {room} must not include {target_room or target}")
    cycle = find_cycle(graph)
    if cycle:
        problems.append("include cycle: " + " -> ".join(cycle))
    count, cycles = unit_cycles([path.relative_to(root).as_posix() for path in files], graph)
    problems += judge_cycles(count, cycles)
    return len(files), problems, (count, cycles)


def main():
    arguments = [word for word in sys.argv[1:] if word != "--units"]
    root = pathlib.Path(arguments[0] if arguments else pathlib.Path(__file__).resolve().parent.parent)
    count, problems, (units, cycles) = check(root)
    if "--units" in sys.argv:
        print(f"{units} units, {sum(map(len, cycles))} of them in cycles")
        for members in cycles:
            print("  " + ", ".join(members))
    for problem in problems:
        print(problem)
    if count == 0:
        print(f"no sources under {root}")
        return 1
    print(f"{count} files, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
