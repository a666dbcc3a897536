"""The cases, as data: what is measured, with what, how often.

A group is measured together: in every round each of its contenders takes its turn, "plotix" first. A group has more
than one case where one run answers more than one figure.
"""
import dataclasses
import os

from contenders import Command, DecadeBenchmark, GoogleBenchmark, Peer, TextFile
from starting import ProgramStart

MILLION = 1_000_000


@dataclasses.dataclass
class Case:
    name: str
    figure: str = "ms"  # which figure of a round it is; in milliseconds
    extra: bool = False  # measured only when it is named, or with --extras


@dataclasses.dataclass
class Group:
    cases: list
    contenders: dict  # name → Contender; "plotix" is ours
    rounds: int = 5
    cores: int = None  # how many processors each program gets; None: all


def pan(plots, millions, window, size, names, signal=None):
    """`signal` is another one than the random walks; such cases are extras."""
    share = {"full": "1", "1%": "0.01"}[window]
    points, (width, height) = millions * MILLION, size.split("x")
    name = f"pan/{plots}x{millions}M/{window}/{size}"
    if signal:
        name += f"/{signal}"
    task = ["pan", str(plots), str(points), share, width, height] + ([signal] if signal else [])
    peers = peers_drawing(names, *task, gigabytes=1 + 40e-9 * plots * points)
    return group_of(name, "bench_frames", peers, extra=bool(signal))


def peers_drawing(names, *task, gigabytes):
    made = {
        "qcustomplot": lambda: Peer("peer_qcustomplot", *task, gigabytes=gigabytes),
        "qcustomplot-fast": lambda: Peer("peer_qcustomplot", *task, "fast", gigabytes=gigabytes),
        "qwt": lambda: Peer("peer_qwt", *task, gigabytes=gigabytes),
    }
    return {name: made[name]() for name in names}


def group_of(name, program, peers, extra=False):
    """Of drawing: on one processor."""
    return Group([Case(name, extra=extra)], {"plotix": GoogleBenchmark(program, name), **peers}, cores=1)


def archive(name, peers, cores=1, rounds=5, tail=None):
    """`tail` is a second case that the same runs answer, with its figure."""
    full = f"archive/{name}"
    contenders = {peer: GoogleBenchmark("bench_archive", f"{peer}/{full}") for peer in peers}
    cases = [Case(full)] + ([Case(f"{full}/{tail[0]}", tail[1])] if tail else [])
    return Group(cases, {"plotix": GoogleBenchmark("bench_archive", full), **contenders}, rounds, cores)


def fetched_rows(*more):
    return Peer("peer_qcustomplot", "fetch", "DATA/rows.sqlite", "5", "1920", "1080", *more, gigabytes=5,
                prepared_by=GoogleBenchmark("bench_archive", "sqlite-rows/archive/window1%/10Mx5"))


def picture(plots):
    name = f"png/1200x600/{plots}"
    return group_of(name, "bench_frames", {"qimage": GoogleBenchmark("bench_frames", f"qimage/{name}")})


def figures(what, extra=False):
    """Of ten lines; beside it the same by going through the records."""
    name = f"statistics/10x10M/{what}"
    return group_of(name, "bench_statistics", {"records": GoogleBenchmark("bench_statistics", f"records/{name}")},
                    extra=extra)


def formula(text, beside=None, extra=False):
    """`beside`: the same as muParser writes it."""
    name = f"formula/{text}/10M"
    peers = {"muparser": Peer("peer_muparser", "formula", beside, str(10 * MILLION), gigabytes=1)} if beside else {}
    return group_of(name, "bench_formulas", peers, extra)


def point(what, extra=False):
    """A move of the pointer over ten lines, with the value line."""
    return group_of(f"point/10x10M/{what}", "bench_frames", {}, extra=extra)


def decade(size, what, extra):
    """Of ten properties with a record a second: ten years, or one."""
    name = f"decade/10x{size}/{what}"
    return Group([Case(name, extra=extra)], {"plotix": DecadeBenchmark("bench_decade", name)}, rounds=3)


def cluster(what, beside=True, rounds=3, tail=None):
    """On a server of the program's own; beside the server's own columns over the same connection."""
    name = f"cluster/{what}"
    peers = {"own-columns": GoogleBenchmark("bench_cluster", f"own-columns/{name}")} if beside else {}
    cases = [Case(name)] + ([Case(f"{name}/{tail[0]}", tail[1])] if tail else [])
    return Group(cases, {"plotix": GoogleBenchmark("bench_cluster", name), **peers}, rounds)


def text_import():
    text = TextFile("station.tsv", 10 * MILLION)
    site = ["import.plotix", "import.plotix-wal", "import.plotix-shm"]
    ours = Command("plotix", "import", "DATA/station.tsv", "--site", "DATA/import.plotix", "--agent", "Station",
                   text=text, scrap=site)
    kst = Command("kst2", "DATA/station.tsv", "-f", "1", "-x", "1", "-y", "2", "--png", "DATA/kst.png", text=text,
                  scrap=["kst.png"], succeeds=lambda where: os.path.exists(where.file("kst.png")))
    return Group([Case("import/10Mx2")], {"plotix": ours, "kst": kst}, rounds=3)

def all_groups():
    both = ["qcustomplot", "qcustomplot-fast"]
    return [
        pan(10, 10, "full", "1920x1080", both),
        pan(10, 10, "full", "1200x600", both),
        pan(10, 10, "1%", "1920x1080", both),
        pan(1, 10, "full", "1920x1080", both + ["qwt"]),
        pan(1, 1, "full", "1920x1080", both + ["qwt"]),
        pan(1, 100, "full", "1920x1080", both),
        group_of("load/10M", "bench_frames", peers_drawing(
            both + ["qwt"], "load", str(10 * MILLION), "1920", "1080", gigabytes=2)),
        archive("read/10Mx5", ["sqlite-rows", "memcpy"]),
        archive("window1%/10Mx5", ["sqlite-rows"]),
        archive("overview/10Mx5", ["sqlite-rows"], rounds=3),
        archive("ingest/10Mx5", ["sqlite-rows"], cores=None, rounds=3),
        archive("commit1", ["sqlite-rows", "sqlite-rows-16k"], cores=None, tail=("p99.9", "p99.9_ms")),
        archive("statistics/10Mx5", ["sqlite-rows"]),
        archive("cold/10Mx5", ["sqlite-rows", "memcpy"]),
        Group([Case("fetch-to-frame/10Mx5")],
              {"plotix": GoogleBenchmark("bench_fetch", "fetch-to-frame/10Mx5"), "qcustomplot": fetched_rows(),
               "qcustomplot-fast": fetched_rows("fast")}, rounds=3),
        Group([Case("compare/4M")],
              {name: GoogleBenchmark("bench_fetch", case)
               for name, case in (("plotix", "compare/4M"), ("another-line", "another-line/compare/4M"))}, rounds=3),
        point("line"),
        point("1920x1080"),
        figures("full"),
        figures("30%"),
        figures("median"),
        picture(1),
        picture(10),
        formula("a-b", "a-b"),
        formula("(a-b)*0.001+b", "(a-b)*0.001+b"),
        formula("mean(a,1h)"),
        *[formula(text, extra=True) for text in ("maximum(a,1h)", "integral(a)", "daily_mean(a)")],
        text_import(),
        *[decade(size, what, extra=size == "308M") for size in ("31M", "308M")
          for what in ("first-frame/warm", "first-frame/cold", "pan", "table", "zoom")],
        cluster("read/10Mx5/5", tail=("MB", "MB_on_disk")),
        cluster("read/10Mx5/1"),
        cluster("ingest/10Mx5"),
        cluster("far/columns/10Mx5", beside=False),
        cluster("far/pages/10Mx5", beside=False),
        cluster("live/100000/10", beside=False, rounds=1, tail=("p99", "p99_ms")),
        cluster("live/100000/100", beside=False, rounds=1, tail=("p99", "p99_ms")),
        Group([Case("start")], {"plotix": ProgramStart()}),
        pan(10, 10, "full", "1920x1080", both, "noisy"),
        pan(10, 10, "1%", "1920x1080", both, "noisy"),
        *[group_of(name, "bench_frames", {}, extra=True)
          for name in ("zoom/10x10M/1920x1080", "recolor/10x10M/1920x1080", "resize/10x10M/1920x1080",
                       "png/1200x600/1/drawn", "png/1200x600/10/drawn")],
    ]

def chosen(groups, names, extras):
    """The groups with a case of that name, or all that are no extras; raises KeyError for a name nobody has."""
    known = {case.name for group in groups for case in group.cases}
    for name in names:
        if name not in known:
            raise KeyError(name)
    picked = []
    for group in groups:
        cases = [case for case in group.cases if (case.name in names if names else extras or not case.extra)]
        if cases:
            picked.append(dataclasses.replace(group, cases=cases))
    return picked
