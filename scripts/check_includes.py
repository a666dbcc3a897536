#!/usr/bin/env python3
"""Checks which way includes point.

Every folder of the sources is a room; ALLOWED says which rooms it may include. Fails on an edge that is not
there, on a Qt module a room must not use, and on a cycle between files. Usage: check_includes.py [ROOT]
"""
import pathlib
import re
import sys

PLUGIN = "plugins/PlotixPlugIn"
HOST = PLUGIN + "/host"
LOGIC = PLUGIN + "/logic"
KIT = {"plotkit/model", "plotkit/layout", "plotkit/raster", "plotkit/render", "plotkit/widget"}
CORE = {"base", HOST, "hostapp/core"}
DOCUMENT = CORE | {"records/store", "hostapp/document"}
SITE = DOCUMENT | {"hostapp/print", "hostapp/web", "hostapp/site"}
EXCHANGE = {"hostapp/exchange", "hostapp/exchange/formats"}
LIVE = {"hostapp/live", "hostapp/live/sources"}

# Folders whose subfolders are rooms of one kind, each known by the folder above it alone: what such a room may include.
KINDS = {
    "hostapp/exchange/formats": CORE | {"hostapp/exchange"},
    "hostapp/live/sources": CORE | {"hostapp/live"},
}

ALLOWED = {
    "base": set(),
    "base/png": {"base"},
    "storage": {"base"},
    "records/columns": {"base"},
    "records/store": {"base", "records/columns"},
    "records/sqlite": {"base", "storage", "records/columns", "records/store"},
    "plotkit/model": {"base"},
    "plotkit/raster": {"base"},
    "plotkit/layout": {"base", "plotkit/model"},
    "plotkit/render": {"base", "plotkit/model", "plotkit/layout", "plotkit/raster"},
    "plotkit/widget": {"base", "plotkit/model", "plotkit/layout", "plotkit/render"},
    HOST: {"base", "base/png"},
    LOGIC: {"base", "plotkit/model"},
    PLUGIN: {"base", HOST, LOGIC} | KIT,
    "hostapp/core": {"base", HOST},
    "hostapp/document": CORE | {"storage", "records/store"},
    "hostapp/exchange": DOCUMENT,
    "hostapp/exchange/formats": DOCUMENT | {"hostapp/exchange"},
    "hostapp/live": DOCUMENT,
    "hostapp/live/sources": CORE | {"hostapp/live"},
    "hostapp/demo": DOCUMENT,
    "hostapp/print": CORE,
    "hostapp/web": CORE,
    "hostapp/site": SITE - {"hostapp/site"},
    "hostapp/window": SITE | EXCHANGE | LIVE,
    "hostapp/cli": SITE | EXCHANGE | LIVE | {"hostapp/demo"},
    "hostapp/app": SITE | EXCHANGE | LIVE | {"hostapp/demo", "hostapp/window", "hostapp/cli"},
}

# The one file that says which store keeps the records; it alone sees a store of records as what it is.
ALSO_ALLOWED = {
    "hostapp/document/RecordKeeping.cpp": {"records/sqlite"},
}

# Qt modules a room must not use: values stay free of widgets.
FORBIDDEN_QT = {
    "base": {"QtGui", "QtWidgets", "QtPrintSupport"},
    "base/png": {"QtGui", "QtWidgets", "QtPrintSupport"},
    "storage": {"QtGui", "QtWidgets", "QtPrintSupport"},
    "records/columns": {"QtGui", "QtWidgets", "QtPrintSupport"},
    "records/store": {"QtGui", "QtWidgets", "QtPrintSupport"},
    "records/sqlite": {"QtGui", "QtWidgets", "QtPrintSupport"},
    "plotkit/model": {"QtWidgets", "QtPrintSupport"},
    "plotkit/layout": {"QtWidgets", "QtPrintSupport"},
    "plotkit/raster": {"QtWidgets", "QtPrintSupport"},
    LOGIC: {"QtWidgets", "QtPrintSupport"},
    "hostapp/site": {"QtWidgets", "QtPrintSupport"},
    "hostapp/cli": {"QtWidgets", "QtPrintSupport"},
}

TOPS = ("base", "storage", "records", "plotkit", "plugins", "hostapp")

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


def check(root):
    problems, graph = [], {}
    files = [p for top in TOPS for p in sorted((root / top).rglob("*"))
             if p.suffix in (".h", ".cpp")]
    for path in files:
        name = path.relative_to(root).as_posix()
        room = room_of(name)
        if room is None:
            problems.append(f"{name}: stands in a folder that is no room; add the folder to ALLOWED or move the file")
            continue
        for number, kind, target in includes(path):
            module = target.split("/")[0]
            if module in FORBIDDEN_QT.get(room, ()):
                problems.append(f"{name}:{number}: {room} must not use {module}")
            if kind != '"' or module not in TOPS:
                continue  # a library's header, or one the build generates
            graph.setdefault(name, set()).add(target)
            target_room = room_of(target)
            if not may_include(room, target_room) and target_room not in ALSO_ALLOWED.get(name, set()):
                problems.append(f"{name}:{number}: {room} must not include {target_room or target}")
    cycle = find_cycle(graph)
    if cycle:
        problems.append("include cycle: " + " -> ".join(cycle))
    return len(files), problems


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).resolve().parent.parent)
    count, problems = check(root)
    for problem in problems:
        print(problem)
    if count == 0:
        print(f"no sources under {root}")
        return 1
    print(f"{count} files, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
