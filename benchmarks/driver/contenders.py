"""What is measured: programs of ours and of others, each behind the same four operations.

A contender is missing or not (`missing` says what it lacks), is started once, does a round whenever it is asked, and is
stopped. A round answers figures by name; "ms" is the one of the case, others are counters beside it.
"""
import json
import os
import re
import resource
import shutil
import statistics
import subprocess
import time

ROUND_SECONDS = 0.3  # a round repeats quick work for about so long
PATIENCE_SECONDS = 180  # a program that takes longer for a round hangs


class Failed(Exception):
    """A program did not do its work; the text says which and how."""


class Surroundings:
    """Where programs and data stand, and on which processors programs run."""

    def __init__(self, programs, peers, data):
        self.programs, self.peers, self.data = programs, peers, data
        self.processors = os.sched_getaffinity(0)

    def program(self, name):
        return os.path.join(self.peers if name.startswith("peer_") else self.programs, name)

    def file(self, name):
        return os.path.join(self.data, name)

    def environment(self, **more):
        plain = dict(os.environ, QT_QPA_PLATFORM="offscreen", PLOTIX_BENCH_DATA=self.data, LC_ALL="C.UTF-8",
                     XDG_RUNTIME_DIR=self.data, PLOTIX_DATA_HOME=self.file("home"), XDG_CONFIG_HOME=self.file("config"))
        return dict(plain, **more)

    def pin(self, cores):
        """For a child process: the last `cores` processors, where interrupts are fewest; None: all."""
        chosen = sorted(self.processors)[-cores:] if cores else self.processors
        return lambda: os.sched_setaffinity(0, chosen)


class Contender:
    cores = None

    def missing(self, where):
        return None

    def start(self, where):
        self.where = where

    def round(self):
        raise NotImplementedError

    def stop(self):
        pass


class GoogleBenchmark(Contender):
    """One benchmark of one of our programs; a process a round, because its data are made in a second."""

    def __init__(self, program, benchmark):
        self.program, self.benchmark = program, benchmark

    def missing(self, where):
        return None if os.access(where.program(self.program), os.X_OK) else f"{self.program} is not built"

    def round(self):
        # Names may carry endings such as /manual_time, and signs that a pattern would mistake.
        wanted = "^" + re.sub(r"([.()*+])", r"[\1]", self.benchmark) + "(/manual_time|/real_time|/iterations:[0-9]+)*$"
        command = [self.where.program(self.program), f"--benchmark_filter={wanted}", "--benchmark_format=json",
                   f"--benchmark_min_time={ROUND_SECONDS}"]
        ran = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                             timeout=PATIENCE_SECONDS, env=self.where.environment(),
                             preexec_fn=self.where.pin(self.cores))
        if ran.returncode != 0:
            raise Failed(f"{self.program} ended with status {ran.returncode}: {ran.stderr.strip()[-300:]}")
        return figures_of(ran.stdout, self.benchmark)


class DecadeBenchmark(GoogleBenchmark):
    """Of the site of ten years, which takes minutes to make and is kept: PLOTIX_DECADE says where."""

    def missing(self, where):
        made = os.environ.get("PLOTIX_DECADE", "")
        if "x308M/" in self.benchmark and not os.path.exists(made):
            return "PLOTIX_DECADE names no file (bench_decade --make FILE)"
        return super().missing(where)


def figures_of(text, benchmark):
    """The figures in what a Google Benchmark program printed as JSON."""
    found = json.loads(text)["benchmarks"] if text.strip() else []
    if len(found) != 1:
        raise Failed(f"{benchmark}: {len(found)} benchmarks of that name")
    if found[0].get("error_occurred"):
        raise Failed(f"{benchmark}: {found[0]['error_message']}")
    if found[0]["time_unit"] != "ms":
        raise Failed(f"{benchmark}: measured in {found[0]['time_unit']}")
    known = {"family_index", "per_family_instance_index", "repetitions", "repetition_index", "threads", "iterations"}
    figures = {key: value for key, value in found[0].items() if isinstance(value, (int, float)) and key not in known}
    figures["ms"] = figures.pop("real_time")
    return figures


class Peer(Contender):
    """A program that keeps its data in memory and works once for every line it is sent."""

    def __init__(self, program, *arguments, gigabytes=0.0, prepared_by=None):
        self.program, self.arguments = program, arguments
        self.gigabytes, self.prepared_by = gigabytes, prepared_by
        self.process = None

    def missing(self, where):
        if not os.access(where.program(self.program), os.X_OK):
            return f"{self.program} is not built (./bench --install-peers)"
        if self.gigabytes > available_gigabytes():
            return f"{self.program} needs {self.gigabytes:.0f} GB of memory here"
        return None

    def start(self, where):
        super().start(where)
        if self.prepared_by:
            self.prepared_by.cores = self.cores
            self.prepared_by.start(where)
            self.prepared_by.round()
        arguments = [argument.replace("DATA", where.data) for argument in self.arguments]
        self.process = subprocess.Popen([where.program(self.program), *arguments], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                                        env=where.environment(), preexec_fn=where.pin(self.cores))
        self.extra = dict(pair.split("=") for pair in self._line().split()[1:])
        self._frame()  # the first one fills caches

    def round(self):
        begin, frames = time.monotonic(), []
        while not frames or time.monotonic() - begin < ROUND_SECONDS:
            frames.append(self._frame())
        return {"ms": statistics.median(frames), **{key: float(value) for key, value in self.extra.items()}}

    def stop(self):
        if self.process:
            self.process.stdin.close()
            self.process.wait()
            self.process = None

    def _frame(self):
        self.process.stdin.write("next\n")
        self.process.stdin.flush()
        return float(self._line())

    def _line(self):
        line = self.process.stdout.readline()
        if not line:
            raise Failed(f"{self.program} {' '.join(self.arguments)} ended with status {self.process.wait()}")
        return line


class TextFile(Contender):
    """Makes the text file that imports read; shared by those who read it."""

    def __init__(self, name, rows):
        self.name, self.rows = name, rows

    def prepare(self, where):
        if not os.path.exists(where.file(self.name)):
            subprocess.run([where.program("bench_text"), where.file(self.name), str(self.rows)], check=True)


class Command(Contender):
    """A whole process, from its start to its end. `scrap` names what each run makes and the next must not find."""

    def __init__(self, program, *arguments, text=None, scrap=(), succeeds=lambda where: True):
        self.program, self.arguments = program, arguments
        self.text, self.scrap, self.succeeds = text, scrap, succeeds

    def missing(self, where):
        found = os.access(where.program(self.program), os.X_OK) or shutil.which(self.program)
        return None if found else f"{self.program} is not installed"

    def start(self, where):
        super().start(where)
        ours = where.program(self.program)
        self.command = [ours if os.access(ours, os.X_OK) else self.program]
        self.command += [argument.replace("DATA", where.data) for argument in self.arguments]
        if self.text:
            self.text.prepare(where)

    def round(self):
        self.stop()
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        begin = time.monotonic()
        ran = subprocess.run(self.command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                             timeout=PATIENCE_SECONDS, env=self.where.environment(),
                             preexec_fn=self.where.pin(self.cores))
        elapsed = time.monotonic() - begin
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        if ran.returncode != 0 or not self.succeeds(self.where):
            raise Failed(f"{self.program} ended with status {ran.returncode}: {ran.stderr.strip()[-300:]}")
        processor = after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime
        return {"ms": 1e3 * elapsed, "processor_ms": 1e3 * processor}

    def stop(self):
        for name in self.scrap:
            path = self.where.file(name)
            if os.path.exists(path):
                os.remove(path)


def available_gigabytes():
    with open("/proc/meminfo", encoding="ascii") as lines:
        for line in lines:
            if line.startswith("MemAvailable:"):
                return int(line.split()[1]) / 1e6
    return 0.0
