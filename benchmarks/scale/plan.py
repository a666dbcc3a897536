#!/usr/bin/env python3
"""What a site of many sensors needs: inserts and parts, servers, disks, network; and what would break first.

    plan.py [--sensors N] [--agents N] [--every SECONDS] [--years N] [--shards N] [--replicas N] [--records-an-insert N]

Agents are placed on shards as a whole. A shard takes one insert at a time: its replicas agree on each. What an insert
costs is measured (see Measured); how long records wait for their turn is simulated, second by second.
"""
import argparse
import dataclasses
import heapq
import math
import random
import sys

SECONDS_A_DAY, DAYS_A_YEAR = 86_400, 365.25
CHUNK = 16_384  # records that are packed together
SIMULATED = 120  # seconds
TARGET = 3.0  # seconds until a record is acknowledged, for 99 of 100


@dataclasses.dataclass
class Measured:
    """On two cores that did other work as well, servers of 2018 all on them. See docs/scale.md, which says what of this
    is measured and what is taken from elsewhere."""
    insert: float = 0.005  # seconds that a collector needs to append a record of few properties, on one server
    agreeing: float = 0.020  # and more where replicas have to agree
    insert_a_value: float = 6e-6  # and for each value
    spread: float = 0.5  # of the logarithm of that time
    packed: float = 1.8  # bytes a value, in chunks
    young: float = 4.0  # bytes a value on disk, as a row
    young_sent: float = 17.0  # bytes a value as a row on the network
    keeper: int = 90  # requests to the keeper for an append to three replicas, with asking whose turn it is
    keeper_rate: float = 10_000.0  # requests that a keeper takes in a second; not measured
    parts_rate: float = 60.0  # parts a second that a server merges away in the long run, of one table; not measured
    disk: float = 8e12  # bytes of one disk
    network: float = 110e6  # bytes a second of one gigabit


@dataclasses.dataclass
class Site:
    sensors: int = 100_000
    agents: int = 1_000
    every: float = 1.0
    years: float = 10.0
    shards: int = 4
    replicas: int = 3
    records_an_insert: int = 1

    @property
    def values_a_second(self):
        return self.sensors / self.every

    @property
    def values(self):
        return self.values_a_second * SECONDS_A_DAY * DAYS_A_YEAR * self.years

    @property
    def inserts_a_second(self):
        """Of a shard."""
        return self.agents / self.shards / (self.every * self.records_an_insert)

    @property
    def values_an_insert(self):
        return self.sensors / self.agents * self.records_an_insert


def insert_seconds(site, measured):
    agreeing = measured.agreeing if site.replicas > 1 else 0
    return measured.insert + agreeing + measured.insert_a_value * site.values_an_insert


def usage(site, measured):
    """The share of each thing that is used; 1 is all of it. By name."""
    sent = site.values_a_second / site.shards * measured.young_sent * site.replicas
    return {
        "a shard's turn to insert": site.inserts_a_second * insert_seconds(site, measured),
        "merging of parts": site.inserts_a_second / measured.parts_rate,
        "the keeper": (site.inserts_a_second * site.shards * measured.keeper / measured.keeper_rate
                       if site.replicas > 1 else 0),
        "a shard's network": sent / measured.network,
    }


def sizes(site, measured):
    """Bytes, by name."""
    young = min(CHUNK, site.values / site.sensors) * site.sensors  # an agent's records before they are packed
    return {
        "packed, once": site.values * measured.packed,
        "packed, on a replica": site.values * measured.packed / site.shards,
        "packed, on all": site.values * measured.packed * site.replicas,
        "young records, at most, on a replica": young * measured.young / site.shards,
        "a day, once": site.values_a_second * SECONDS_A_DAY * measured.packed,
    }


def breaks_first(site, measured):
    return max(usage(site, measured).items(), key=lambda each: each[1])


def shards_needed(site, measured, most=0.6):
    """So many that no more than this share of anything is used; nothing where more shards do not help."""
    for shards in range(1, 1001):
        if max(usage(dataclasses.replace(site, shards=shards), measured).values()) <= most:
            return shards
    return None


def waits(site, measured, seconds=SIMULATED, seed=1):
    """How long each insert of a shard waits from when its first record was made until it is acknowledged. Agents come
    spread over their period, each again after it."""
    draw = random.Random(seed)
    period = site.every * site.records_an_insert
    agents = max(1, round(site.agents / site.shards))
    due = [(period * (1 + index / agents), index) for index in range(agents)]
    heapq.heapify(due)
    free, waited = 0.0, []
    mean = insert_seconds(site, measured)
    middle = math.log(mean) - measured.spread ** 2 / 2  # so that the mean is the one given
    while due[0][0] < seconds:
        at, index = heapq.heappop(due)
        free = max(free, at) + (draw.lognormvariate(middle, measured.spread) if measured.spread else mean)
        waited.append(free - at + (site.records_an_insert - 1) * site.every)
        heapq.heappush(due, (at + period, index))
    return waited


def percentile(values, share):
    return sorted(values)[min(len(values) - 1, int(share * len(values)))]


def told(size):
    for unit, name in ((1e12, "TB"), (1e9, "GB"), (1e6, "MB")):
        if size >= unit:
            return f"{size / unit:.1f} {name}"
    return f"{size:.0f} B"


def report(site, measured):
    yield (f"{site.sensors} sensors in {site.agents} agents every {site.every:g} s for {site.years:g} years: "
           f"{site.values:.3g} values")
    yield (f"{site.shards} shards of {site.replicas} replicas, {site.records_an_insert} records an insert: "
           f"{site.inserts_a_second:.1f} inserts a second and shard, each of {site.values_an_insert:.0f} values and "
           f"{insert_seconds(site, measured) * 1000:.0f} ms")
    for name, share in usage(site, measured).items():
        yield f"  {name:40}{share:8.0%}" + ("   too much" if share > 1 else "")
    for name, size in sizes(site, measured).items():
        yield f"  {name:40}{told(size):>10}"
    disks = math.ceil(sizes(site, measured)["packed, on a replica"] * 1.5 / measured.disk)
    yield f"  {'disks of a replica, a third of them free':40}{disks:8}"
    waited = waits(site, measured)
    late = percentile(waited, 0.99)
    yield f"  acknowledged after {percentile(waited, 0.5):.2f} s, 99 of 100 within {late:.2f} s" + (
        "" if late <= TARGET else f": more than {TARGET:g} s")
    what, share = breaks_first(site, measured)
    yield f"first to break: {what}" + (" already" if share > 1 else f", at {1 / share:.1f} times as many sensors")
    needed = shards_needed(site, measured)
    yield f"shards for using no more than 60 % of anything: {needed}" if needed else (
        "no number of shards is enough: put more records into an insert, or fewer agents")


def main(words):
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    for name in ("sensors", "agents", "shards", "replicas", "records-an-insert"):
        parser.add_argument(f"--{name}", type=int, default=getattr(Site, name.replace("-", "_")))
    parser.add_argument("--every", type=float, default=Site.every, metavar="SECONDS")
    parser.add_argument("--years", type=float, default=Site.years)
    options = vars(parser.parse_args(words))
    if min(options.values()) <= 0:
        raise SystemExit("Every number must be more than 0.")
    for line in report(Site(**options), Measured()):
        print(line)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
