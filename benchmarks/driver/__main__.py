"""./bench: measures Plotix beside what people use otherwise. `./bench --help` tells the rest."""
import argparse
import contextlib
import datetime
import json
import pathlib
import shutil
import signal
import sys
import tempfile
import time

import documents
import machine
import tables
from cases import all_groups, chosen
from contenders import Surroundings
from rounds import measure, say

ROOT = pathlib.Path(__file__).resolve().parents[2]
LAST_RUN = ROOT / "build" / "bench" / "last-run.json"


def parse(words):
    parser = argparse.ArgumentParser(
        prog="./bench", description="Measures Plotix and what people use otherwise on the same data, taking turns, and "
        "prints medians and ratios. Drawing and reading run on one core, everything else on all.")
    parser.add_argument("cases", nargs="*", metavar="CASE", help="only these cases (see --list)")
    parser.add_argument("--list", action="store_true", help="name the cases and end")
    parser.add_argument("--check", action="store_true", help=argparse.SUPPRESS)  # only whether the words make sense
    parser.add_argument("--install-peers", action="store_true",
                        help="install the Debian packages of what is compared with, and end")
    parser.add_argument("--extras", action="store_true", help="measure the additional cases too")
    parser.add_argument("--rounds", type=int, metavar="N", help="rounds a case (default: 5, slow work 3)")
    parser.add_argument("--json", metavar="FILE", help="write the medians to FILE")
    parser.add_argument("--markdown", action="store_true", help="print the table of the last run, measuring nothing")
    parser.add_argument("--write-tables", action="store_true",
                        help="put the table of the last run into " + " and ".join(documents.DOCUMENTS))
    parser.add_argument("--all-cores", action="store_true", help="do not keep any case to one core")
    parser.add_argument("--programs", metavar="FOLDER", help="measure the programs there, building nothing")
    parser.add_argument("--peers", metavar="FOLDER", default=str(ROOT / "build" / "bench-peers" / "bin"),
                        help="where the programs to compare with stand")
    return parser.parse_args(words)


@contextlib.contextmanager
def data_folder():
    """Beside the build, since a temporary folder may be memory. Gone afterwards: the next run shall measure its own."""
    base = ROOT / "build"
    base.mkdir(exist_ok=True)
    folder = tempfile.mkdtemp(prefix="bench-data-", dir=base)
    try:
        yield folder
    finally:
        shutil.rmtree(folder, ignore_errors=True)


def run(options):
    groups = chosen(all_groups(), options.cases, options.extras)
    begin, load, results = time.monotonic(), [machine.load()], []
    with data_folder() as data:
        where = Surroundings(options.programs or str(ROOT / "build" / "bench" / "bin"), options.peers, data)
        for group in groups:
            if options.all_cores:
                group.cores = None
            say(", ".join(case.name for case in group.cases))
            results += measure(group, where, options.rounds)
        told = tables.notes(results, where)
    load.append(machine.load())
    print(machine.described())
    print(f"{datetime.datetime.now().astimezone():%Y-%m-%d %H:%M %Z}, {time.monotonic() - begin:.0f} s, "
          f"load before {load[0]:.2f}, after {load[1]:.2f}\n")
    print(tables.as_text(results))
    print("\n".join(told))
    if options.json:
        pathlib.Path(options.json).write_text(tables.as_json(results), encoding="utf-8")
    command = " ".join(["./bench", *options.cases] + ["--extras"] * options.extras + ["--all-cores"] * options.all_cores)
    kept = tables.record(results, machine.described(), f"{datetime.date.today()}", command, load, told)
    LAST_RUN.parent.mkdir(parents=True, exist_ok=True)
    LAST_RUN.write_text(json.dumps(kept, indent=1), encoding="utf-8")
    wanted = sum(len(group.cases) for group in groups)
    if len(results) < wanted:
        say(f"{wanted - len(results)} of {wanted} cases could not be measured")
    return 0 if len(results) == wanted else 1


def last_table():
    if not LAST_RUN.exists():
        raise SystemExit("There is no run yet; start ./bench first.")
    return tables.as_markdown(json.loads(LAST_RUN.read_text(encoding="utf-8")))


def main(words):
    options = parse(words)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))  # whoever is running is ended on the way out
    try:
        if options.list:
            for group in all_groups():
                for case in group.cases:
                    print(case.name + (" (extra)" if case.extra else ""))
        elif options.check:
            chosen(all_groups(), options.cases, options.extras)
        elif options.write_tables:
            documents.write_tables(ROOT, last_table())
        elif options.markdown:
            print(last_table(), end="")
        else:
            return run(options)
    except KeyError as unknown:
        raise SystemExit(f"There is no case {unknown}; ./bench --list names them.") from None
    except ValueError as problem:
        raise SystemExit(str(problem)) from None
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
