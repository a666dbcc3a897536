"""Measures groups: every round each contender takes its turn, so that a slow minute of the machine meets them all."""
import dataclasses
import os
import statistics
import subprocess
import sys
import time

from contenders import Failed

NOT_DONE = (Failed, OSError, ValueError, subprocess.SubprocessError)
SLOW_MS = 2000  # work that takes longer is repeated three times, whatever the group says
SLOW_ROUNDS = 3


@dataclasses.dataclass
class Measured:
    """One contender's figure of one case: all rounds."""
    rounds: list

    @property
    def median(self):
        return statistics.median(self.rounds)

    @property
    def spread(self):
        """Half of what lies between the best and the worst round, as a share of the median."""
        return (max(self.rounds) - min(self.rounds)) / 2 / self.median if self.median else 0.0


@dataclasses.dataclass
class Result:
    case: str
    cores: int  # None: all
    plotix: Measured
    peers: dict  # name → Measured
    counters: dict  # contender → its last round's other figures


def say(text):
    print(text, file=sys.stderr, flush=True)


def measure(group, where, rounds=None):
    """The results of a group's cases, or none when our own part of it failed."""
    present = started(group, where)
    if "plotix" not in present:  # nothing to compare with
        for contender in present.values():
            contender.stop()
        return []
    rounds_left = {name: rounds or group.rounds for name in present}
    figures = {name: [] for name in present}
    try:
        while any(rounds_left.values()):
            os.sync()  # what one has written is not the next one's burden
            for name in [name for name, left in rounds_left.items() if left]:
                begin = time.monotonic()
                try:
                    figures[name].append(present[name].round())
                except NOT_DONE as failure:
                    say(f"  {name}: {failure}")
                    rounds_left[name], figures[name] = 0, []
                    continue
                rounds_left[name] -= 1
                slow = min(figures[name][-1]["ms"], 1e3 * (time.monotonic() - begin)) > SLOW_MS
                if slow and len(figures[name]) >= SLOW_ROUNDS:
                    rounds_left[name] = 0
    finally:
        for contender in present.values():
            contender.stop()
    return [result for result in (result_of(case, group, figures) for case in group.cases) if result]


def started(group, where):
    present = {}
    for name, contender in group.contenders.items():
        lacks = contender.missing(where)
        if lacks is None:
            contender.cores = group.cores
            try:
                contender.start(where)
                present[name] = contender
            except NOT_DONE as failure:
                lacks = str(failure)
                contender.stop()
        if lacks:
            say(f"  {name}: left out, {lacks}")
    return present


def result_of(case, group, figures):
    measured = {name: Measured([each[case.figure] for each in rounds]) for name, rounds in figures.items() if rounds}
    ours = measured.pop("plotix", None)
    if ours is None:
        return None
    counters = {name: rounds[-1] for name, rounds in figures.items() if rounds}
    return Result(case.name, group.cores, ours, measured, counters)
