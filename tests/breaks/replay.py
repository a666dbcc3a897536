#!/usr/bin/env python3
"""Breaks the code on purpose and sees whether a test notices.

    tests/breaks/replay.py                      every break must be noticed by the test it names
    tests/breaks/replay.py --only WORD          those whose name, list or source contains WORD
    tests/breaks/replay.py --search             run every test with each break, and say which notice

The breaks are written down in *.breaks, several to a file:

    == the busy state goes on after a refusal
    in plugins/PlotixPlugIn/KTVPlotixPlugIn_Acquisition.cpp
    test TrendAcquisition.RefusedRangeEndsTheBusyStateBeforeTheSheet
    -    m_dataCluster->refreshComplete(this);
    +    ;

"-" is a piece of the source that stands there once, "+" what is run instead. Both are statements. Where an expression is
broken, "<" and ">" stand for "-" and "+"; where neither fits, "-" and "=", in which BROKEN says whether this break is
the chosen one. "program NAME" names another test program than the one of the plug-in.

All breaks are built into one copy of the sources (build/breaks), each behind a switch, and chosen one at a time by the
environment; two that touch the same lines are built one after the other. The copy is thrown away by nobody: the next
replay builds what has changed.
"""

import argparse
import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
COPY = ROOT / "build" / "breaks" / "source"
BUILD = COPY / "build" / "release"
SWITCH = """#ifndef PLOTIX_BROKEN
#define PLOTIX_BROKEN
#include <cstdlib>
#include <cstring>
inline bool plotixBroken(const char* name)
{
    const char* chosen = std::getenv("PLOTIX_BREAK");
    return chosen && std::strcmp(chosen, name) == 0;
}
#endif
"""
SECONDS = 120  # a test that a break makes hang has noticed it


class Break:
    def __init__(self, name, listed):
        self.name, self.listed = name, listed
        self.file, self.tests, self.program = "", [], "test_plugins_plotixplugin"
        self.lines = {mark: [] for mark in "-+<>="}

    def piece(self, marks):
        return "\n".join(line for mark in marks for line in self.lines[mark])

    def apply(self, text):
        """The text with this break behind its switch; None when the piece does not stand there once."""
        switch = f'plotixBroken("{self.name}")'
        old = self.piece("-<")
        if text.count(old) != 1:
            return None
        if self.lines["<"]:
            new = f'({switch} ? ({self.piece(">")}) : ({old}))'
        elif self.lines["="]:
            new = self.piece("=").replace("BROKEN", switch)
        else:
            new = f'{{ if ({switch}) {{\n{self.piece("+")}\n}} else {{\n{old}\n}} }}'
        return text.replace(old, new)


def read_breaks():
    found = []
    for path in sorted(pathlib.Path(__file__).parent.glob("*.breaks")):
        for line in path.read_text().splitlines():
            if line.startswith("== "):
                found.append(Break(line[3:], path.stem))
            elif line.startswith("in "):
                found[-1].file = line[3:]
            elif line.startswith("test "):
                found[-1].tests += line[5:].split()
            elif line.startswith("program "):
                found[-1].program = line[8:]
            elif line[:1] in found[-1].lines if found and line else False:
                found[-1].lines[line[0]].append(line[1:])
    return found


def copy_sources(texts):
    """Brings the copy up to date, touching only files whose content differs. `texts` replaces the content of some."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=ROOT, check=True,
                            capture_output=True).stdout.decode().split("\0")
    wanted = {name for name in listed if name and (ROOT / name).is_file()}
    for name in wanted:
        content = texts[name].encode() if name in texts else (ROOT / name).read_bytes()
        target = COPY / name
        if not target.exists() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            shutil.copymode(ROOT / name, target)
    for folder, folders, files in os.walk(COPY):
        if folder == str(COPY) and "build" in folders:
            folders.remove("build")
        for target in (pathlib.Path(folder, file) for file in files):
            if target.relative_to(COPY).as_posix() not in wanted:
                target.unlink()


def build(texts, programs):
    copy_sources(texts)
    if not BUILD.exists():
        subprocess.run(["cmake", "--preset", "release"], cwd=COPY, check=True, stdout=subprocess.DEVNULL)
    done = subprocess.run(["ninja", "-C", str(BUILD), "-k0", "-j2", *programs], capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit("\n".join(re.findall(r"^.*error:.*$", done.stdout, re.M)) or done.stdout[-3000:])


def run(program, pattern, name):
    environment = dict(os.environ, PLOTIX_BREAK=name)
    try:
        done = subprocess.run([str(BUILD / "bin" / program), f"--gtest_filter={pattern}"], env=environment, text=True,
                              capture_output=True, timeout=SECONDS, errors="replace")
    except subprocess.TimeoutExpired:
        return None, "hangs"
    return done.returncode, done.stdout


def check(one, search):
    """What is to be said about this break; None when it is noticed as it should be."""
    if search:
        code, output = run(one.program, "*", one.name)
        failed = sorted(set(re.findall(r"^\[  FAILED  \] (\S+?),? ", output + " ", re.M)))
        if code == 0:
            return f"NOT NOTICED  {one.name}"
        last = re.findall(r"^\[ RUN      \] (\S+)", output, re.M)[-1:]
        return f"noticed      {one.name}: {' '.join(failed[:6]) or ' '.join(['ends in', *last])}"
    for pattern in one.tests:
        code, output = run(one.program, pattern, "")
        if code != 0 or "[  PASSED  ] 0 tests" in output:
            return f"NO SUCH TEST {one.name}: {pattern} does not pass unbroken"
        code, _ = run(one.program, pattern, one.name)
        if code == 0:
            return f"NOT NOTICED  {one.name}: {pattern} passes"
    return None if one.tests else f"NO TEST      {one.name}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--only", default="")
    parser.add_argument("--search", action="store_true")
    parser.add_argument("-j", type=int, default=4)
    options = parser.parse_args()
    waiting = [one for one in read_breaks() if any(options.only in text for text in (one.name, one.listed, one.file))]
    if not waiting:
        sys.exit(f"There is no break with {options.only} in its name, its list or its source.")
    complaints = 0
    while waiting:
        texts, now, later = {}, [], []
        for one in waiting:
            plain = (ROOT / one.file).read_text() if (ROOT / one.file).is_file() else ""
            text = one.apply(texts.get(one.file, SWITCH + plain))
            if text is not None:
                texts[one.file] = text
                now.append(one)
            elif one.apply(plain) is not None:
                later.append(one)
            else:
                complaints += 1
                print(f"NO PLACE     {one.name}: the piece does not stand once in {one.file}")
        build(texts, sorted({one.program for one in now}))
        with concurrent.futures.ThreadPoolExecutor(options.j) as pool:
            for said in pool.map(lambda one: check(one, options.search), now):
                if said:
                    complaints += not said.startswith("noticed")
                    print(said, flush=True)
        print(f"{len(now)} breaks tried, {len(later)} to come", flush=True)
        waiting = later
    sys.exit(complaints > 0)


if __name__ == "__main__":
    main()
