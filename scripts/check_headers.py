#!/usr/bin/env python3
"""Checks that every header compiles alone, as the first and only include of a source of its room.

So no header leans on what somebody else includes before it. Flags and precompiled header are the room's own, without
code being made: that takes a fifth of the time. --bare leaves the precompiled header out, which then must not hide a
missing include of the standard library's or the toolkit's either. A header without "#pragma once" is a part of a
source file, included several times over, and left out. Usage: check_headers.py [--bare] BUILD [HEADER…]
"""
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
ROOMS = ("base", "storage", "records", "plotkit", "plugins", "hostapp", "tests")


# Flags that take a value, and are not for a header: what is compiled, into what.
OF_THE_SOURCE = ("-c", "-o")
OF_THE_PRECOMPILED_HEADER = ("-include", "-Winvalid-pch", "-fpch-preprocess")


def flags_of_rooms(build, dropped):
    """Folder -> the compiler and the flags that sources are compiled with, once for each target made there."""
    flags = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        folder = words[words.index("-o") + 1].split("/CMakeFiles/")[0]
        compiler = next(i for i, word in enumerate(words) if re.search(r"\+\+(-\d+)?$", word))
        kept = [word for before, word in list(zip([""] + words, words))[compiler:]
                if word not in dropped and not (before in dropped and before in ("-c", "-o", "-include"))]
        if kept not in flags.setdefault(folder, []):
            flags[folder].append(kept)
    return flags


def fault_of(header, flags):
    """What the compiler says of a header on its own; empty when it compiles."""
    room = next((str(folder) for folder in header.parents if str(folder) in flags), None)
    if room is None:
        return f"{header}: no source of its room is compiled"
    said = ""
    for command in flags[room]:
        # Through standard input, so that the header is included and not the main file, which may not say "pragma once".
        run = subprocess.run(command + ["-fsyntax-only", "-x", "c++", "-"], cwd=ROOT, text=True,
                             input=f'#include "{header}"\n', stderr=subprocess.PIPE)
        if run.returncode == 0:
            return ""
        said = run.stderr
    return f"{header} does not compile alone:\n{said}"


def main():
    words = [word for word in sys.argv[1:] if word != "--bare"]
    dropped = OF_THE_SOURCE + (OF_THE_PRECOMPILED_HEADER if "--bare" in sys.argv else ())
    flags = flags_of_rooms(pathlib.Path(words[0]).resolve(), dropped)
    headers = [pathlib.Path(name) for name in words[1:]] or sorted(
        file.relative_to(ROOT) for room in ROOMS for file in (ROOT / room).rglob("*.h")
        if re.search("^#pragma once", file.read_text(encoding="utf-8"), re.MULTILINE))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [fault for fault in pool.map(lambda header: fault_of(header, flags), headers) if fault]
    print("\n".join(faults) or f"{len(headers)} headers compile alone")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
