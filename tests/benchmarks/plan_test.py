#!/usr/bin/env python3
"""The arithmetic of benchmarks/scale/plan.py."""
import dataclasses
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "benchmarks" / "scale"))
import plan

EVEN = plan.Measured(insert=0.004, agreeing=0.006, insert_a_value=0, spread=0)


def site(**fields):
    return plan.Site(**{"sensors": 1000, "agents": 50, "shards": 1, **fields})


class Plan(unittest.TestCase):
    def test_values_are_counted_over_all_years(self):
        self.assertAlmostEqual(site(years=2).values, 1000 * 2 * 365.25 * 86_400)

    def test_shards_and_longer_inserts_share_the_inserts(self):
        self.assertEqual(site().inserts_a_second, 50)
        self.assertEqual(site(shards=5).inserts_a_second, 10)
        self.assertEqual(site(records_an_insert=10).inserts_a_second, 5)

    def test_a_shard_is_used_by_how_long_its_inserts_take(self):
        self.assertAlmostEqual(plan.usage(site(), EVEN)["a shard's turn to insert"], 0.5)

    def test_values_in_an_insert_cost(self):
        dear = dataclasses.replace(EVEN, insert_a_value=0.001)
        self.assertAlmostEqual(plan.insert_seconds(site(), dear), 0.01 + 20 * 0.001)

    def test_replicas_have_all_of_their_shard(self):
        sizes = plan.sizes(site(shards=2, replicas=3), EVEN)
        self.assertAlmostEqual(sizes["packed, on all"], 6 * sizes["packed, on a replica"])

    def test_a_server_alone_agrees_with_nobody_and_has_no_keeper(self):
        self.assertAlmostEqual(plan.insert_seconds(site(replicas=1), EVEN), 0.004)
        self.assertEqual(plan.usage(site(replicas=1), EVEN)["the keeper"], 0)

    def test_young_records_are_those_of_a_chunk_at_most(self):
        sizes = plan.sizes(site(), EVEN)
        self.assertAlmostEqual(sizes["young records, at most, on a replica"], 16_384 * 1000 * EVEN.young)

    def test_a_shard_with_time_left_acknowledges_at_once(self):
        self.assertAlmostEqual(max(plan.waits(site(), EVEN)), 0.01)

    def test_an_overloaded_shard_falls_behind_for_ever(self):
        waited = plan.waits(site(agents=200), EVEN, seconds=101)  # twice what it can do
        self.assertAlmostEqual(waited[-1], 100 * (1 - 0.5) * 2, delta=1.5)

    def test_the_first_record_of_a_longer_insert_waits_for_the_last(self):
        self.assertAlmostEqual(min(plan.waits(site(records_an_insert=3), EVEN)), 2.01)

    def test_uneven_inserts_have_the_same_mean(self):
        uneven = dataclasses.replace(EVEN, spread=0.5)
        waited = plan.waits(site(agents=1), uneven, seconds=5000)
        self.assertAlmostEqual(sum(waited) / len(waited), 0.01, delta=0.0005)

    def test_so_many_shards_are_needed_as_keep_everything_in_bounds(self):
        ample = dataclasses.replace(EVEN, keeper=1, keeper_rate=1000)
        self.assertEqual(plan.shards_needed(site(agents=500), ample), 14)  # 500 parts a second, 60 and no more than 60 %

    def test_no_number_of_shards_relieves_the_keeper_of_all(self):
        self.assertIsNone(plan.shards_needed(site(agents=1000), dataclasses.replace(EVEN, keeper=1, keeper_rate=1000)))

    def test_what_breaks_first_is_what_is_used_most(self):
        self.assertEqual(plan.breaks_first(site(), plan.Measured(insert=1))[0], "a shard's turn to insert")
        self.assertEqual(plan.breaks_first(site(), plan.Measured(insert=1e-9, agreeing=0, keeper_rate=1))[0], "the keeper")


if __name__ == "__main__":
    unittest.main()
