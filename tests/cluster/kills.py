#!/usr/bin/env python3
"""Collectors killed between any two steps.

    kills.py PROGRAMS KILLS FOLDER PORT…     the ports of a cluster's replicas, or of one server

Some collectors write, each to a site of its own, through a network of ours that counts their statements and kills them
(-9): before a statement leaves, once it has left, or once its answer has come back but before they get it. Whichever of
these was done least often comes next. Each time the collector starts again, looks whether what it was told is there, does
once more what it had begun, and goes on; after every tenth all replicas are asked by a checker as well. Prints how often
each step was met.

Others notice a dead collector's turn after 40 seconds; that is waited for one time in twenty, else done for them at once.
Every tenth time a collector's clock goes three days ahead, so that compacting has something to sweep.
"""
import asyncio
import collections
import os
import random
import sys
import time
import urllib.parse
import urllib.request

from proxy import Link, Lost

COLLECTORS = 6
MOMENTS = {"before": "before it left", "forwarded": "once it had left", "answered": "before its answer arrived"}
STEPS = ["asks whose turn it is", "claims the turn", "renews its claim", "gives the turn back", "reads young records",
         "reads chunks", "reads amendments", "inserts young records", "inserts amendments", "inserts chunks",
         "commits a batch", "sweeps"]
LONGEST = 15  # seconds until the collector is killed wherever it is
PATIENCE = 180


class Failure(Exception):
    pass


def free_port():
    import socket
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        return one.getsockname()[1]


class Counts:
    def __init__(self, wanted):
        self.wanted, self.begun = wanted, 0
        self.steps, self.operations = collections.Counter(), collections.Counter()
        self.checks = self.waited = 0

    def take(self):
        if self.begun >= self.wanted:
            return False
        self.begun += 1
        return True

    def rarest(self):
        least = [(self.steps[step, moment] + random.random(), step, moment) for step in STEPS for moment in MOMENTS]
        return min(least)[1:]


class Collector:
    def __init__(self, number, programs, folder, servers, counts):
        self.number, self.servers, self.counts = number, servers, counts
        self.program, self.plotix = os.path.join(programs, "cluster_writer"), os.path.join(programs, "plotix")
        self.clock = os.path.realpath(os.path.join(programs, "wrong_clock.so"))
        self.journal, self.said = os.path.join(folder, f"journal{number}"), os.path.join(folder, f"said{number}")
        self.site = f"kills{number}"
        self.process, self.target, self.skip, self.killed, self.days = None, None, 0, None, 0

    def address(self, ports):
        hosts = ",".join(f"127.0.0.1:{port}" for port in ports)
        return f"clickhouse://{hosts}/plotix/{self.site}"

    async def start(self):
        environment = dict(os.environ, PLOTIX_DATA_HOME=os.path.dirname(self.journal), QT_QPA_PLATFORM="offscreen")
        made = await asyncio.create_subprocess_exec(self.plotix, "store", "create", self.address(self.servers),
                                                    env=environment, stdout=asyncio.subprocess.DEVNULL)
        if await made.wait() != 0:
            raise Failure("a site cannot be made")
        self.links = [await Link(free_port(), server, self.watch).start() for server in self.servers]

    async def watch(self, statement, moment):
        if self.process is None or self.killed:
            raise Lost  # of one that was killed
        is_it = (statement.step, moment) == self.target
        if is_it and self.skip > 0:
            self.skip -= 1
        elif is_it or (time.monotonic() > self.until and moment == "before"):
            self.killed = statement.step, moment
            self.process.kill()
            raise Lost

    async def run(self):
        while self.counts.take():
            await self.live_and_die()
            self.count()
            while any(link.busy for link in self.links):  # what had left arrives
                await asyncio.sleep(0.01)
            if random.random() < 0.05:
                self.counts.waited += 1
            else:
                await asyncio.to_thread(self.release)
            if random.random() < 0.1:
                await self.check()
        await self.check()

    async def live_and_die(self):
        self.target, self.skip, self.killed = self.counts.rarest(), random.randrange(3), None
        self.until = time.monotonic() + LONGEST
        for link in self.links:  # a claim is renewed every second: by who takes longer
            link.delay = 0.1 if self.target[0] == "renews its claim" else 0
        environment = dict(os.environ)
        if self.target[0] == "sweeps" or random.random() < 0.1:
            self.days += 3
        if self.days:
            environment.update(LD_PRELOAD=self.clock, PLOTIX_CLOCK_WRONG=str(self.days * 86400))
        with open(self.said, "a", encoding="utf-8") as said:
            self.process = await asyncio.create_subprocess_exec(
                self.program, self.address([link.listen for link in self.links]), "write", str(self.number),
                self.journal, env=environment, stdout=asyncio.subprocess.DEVNULL, stderr=said)
        try:
            await asyncio.wait_for(self.process.wait(), PATIENCE)
        except asyncio.TimeoutError:
            self.process.kill()
            raise Failure(f"collector {self.number} did nothing for {PATIENCE} s: {self.last_said()}") from None
        if not self.killed:
            raise Failure(f"collector {self.number} ended: {self.last_said()}")

    def last_said(self):
        with open(self.said, encoding="utf-8") as said:
            return (said.read().splitlines() or ["without a word"])[-1]

    def count(self):
        self.counts.steps[self.killed] += 1
        lines = []
        if os.path.exists(self.journal):
            with open(self.journal, encoding="utf-8") as journal:
                lines = journal.read().splitlines()
        last = lines[-1].split()[0] if lines else "done"
        self.counts.operations["looking what is there" if last == "done" else last] += 1

    def ask(self, statement):
        settings = {"select_sequential_consistency": 1, "insert_quorum": 2} if len(self.servers) > 1 else {}
        for attempt in range(50):
            try:
                url = f"http://127.0.0.1:{random.choice(self.servers)}/?{urllib.parse.urlencode(settings)}"
                with urllib.request.urlopen(url, statement.encode(), 60) as answer:
                    return answer.read().decode()
            except urllib.error.HTTPError as error:
                problem = error.read().decode()
                time.sleep(0.1)
        raise Failure(problem)

    def release(self):
        """As others do with a turn that was not renewed for long."""
        table = f"plotix.{self.site}_turn"
        claims = self.ask(f"SELECT claim FROM {table} GROUP BY claim HAVING min(state) = 1").split()
        for claim in claims:
            self.ask(f"INSERT INTO {table} (day, claim, renewed, state) VALUES ({int(time.time() / 86400)}, {claim}, 1, 0)")

    async def check(self):
        for server in self.servers:
            checker = await asyncio.create_subprocess_exec(
                self.program, self.address([server]), "check", str(self.number), self.journal,
                stdout=asyncio.subprocess.PIPE, stderr=asyncio.subprocess.PIPE)
            said, problem = await checker.communicate()
            if checker.returncode != 0:
                raise Failure(f"collector {self.number}, replica at {server}: {problem.decode().strip()}")
            self.counts.checks += 1
        self.held = said.decode().split()


async def main(programs, kills, folder, servers):
    counts = Counts(kills)
    collectors = [Collector(number + 1, programs, folder, servers, counts) for number in range(min(COLLECTORS, kills))]
    begin = time.monotonic()
    try:
        for collector in collectors:
            await collector.start()
        await asyncio.gather(*(collector.run() for collector in collectors))
    except Failure as failure:
        print(f"FAILED after {sum(counts.steps.values())} kills: {failure}")
        return 1
    finally:
        for collector in collectors:
            if collector.process and collector.process.returncode is None:
                collector.process.kill()
                await collector.process.wait()
    steps = STEPS + sorted({step for step, _ in counts.steps} - set(STEPS))
    print(f"{'collector killed as it':26}" + "".join(f"{title:>27}" for title in MOMENTS.values()))
    for step in steps:
        print(f"{step:26}" + "".join(f"{counts.steps[step, moment]:27}" for moment in MOMENTS))
    print("while it was about to: " + ", ".join(f"{what} {count}" for what, count in counts.operations.most_common()))
    operations, records = (sum(int(collector.held[i]) for collector in collectors) for i in (0, 1))
    print(f"{sum(counts.steps.values())} kills in {time.monotonic() - begin:.0f} s, turns waited for {counts.waited}, replicas "
          f"compared {counts.checks}; {operations} operations acknowledged, {records} records at the end on each replica: "
          "nothing lost, nothing twice, every removal kept")
    missing = [step for step in STEPS if not any(counts.steps[step, moment] for moment in MOMENTS)]
    if missing and kills >= 200:
        print("FAILED: no collector was killed as it " + ", ".join(missing))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(asyncio.run(main(sys.argv[1], int(sys.argv[2]), sys.argv[3], [int(port) for port in sys.argv[4:]])))
