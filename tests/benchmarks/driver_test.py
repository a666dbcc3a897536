"""The driver of ./bench: which cases are measured, how rounds become medians, and what is written of them.

Contenders are made up; nothing is timed.  python3 driver_test.py
"""
import json
import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "benchmarks" / "driver"))
sys.dont_write_bytecode = True

import cases  # noqa: E402
import contenders  # noqa: E402
import documents  # noqa: E402
import rounds  # noqa: E402
import tables  # noqa: E402

NAMES = """pan/10x10M/full/1920x1080 pan/10x10M/full/1200x600 pan/10x10M/1%/1920x1080 pan/1x10M/full/1920x1080
pan/1x1M/full/1920x1080 pan/1x100M/full/1920x1080 load/10M archive/read/10Mx5 archive/window1%/10Mx5
archive/overview/10Mx5 archive/ingest/10Mx5 archive/commit1 archive/commit1/p99.9 archive/statistics/10Mx5
archive/cold/10Mx5 fetch-to-frame/10Mx5 compare/4M point/10x10M/line point/10x10M/1920x1080 statistics/10x10M/full statistics/10x10M/30% statistics/10x10M/median
png/1200x600/1 png/1200x600/10 formula/a-b/10M formula/(a-b)*0.001+b/10M
formula/mean(a,1h)/10M import/10Mx2
decade/10x31M/first-frame/warm decade/10x31M/first-frame/cold decade/10x31M/pan decade/10x31M/table decade/10x31M/zoom
cluster/read/10Mx5/5 cluster/read/10Mx5/5/MB cluster/read/10Mx5/1 cluster/ingest/10Mx5 cluster/far/columns/10Mx5 cluster/far/pages/10Mx5
cluster/live/100000/10 cluster/live/100000/10/p99 cluster/live/100000/100 cluster/live/100000/100/p99 start""".split()


class MadeUp(contenders.Contender):
    """Answers the figures it was given, one a round, and notes its turns in `turns`."""

    def __init__(self, *figures, turns=None, lacks=None):
        self.figures, self.turns, self.lacks, self.stopped = list(figures), turns, lacks, False

    def missing(self, where):
        return self.lacks

    def round(self):
        if self.turns is not None:
            self.turns.append(self)
        figure = self.figures.pop(0)
        if isinstance(figure, Exception):
            raise figure
        return figure if isinstance(figure, dict) else {"ms": figure}

    def stop(self):
        self.stopped = True


def group(contenders_by_name, *names, count=3):
    return cases.Group([cases.Case(name) for name in names or ("case",)], contenders_by_name, rounds=count, cores=1)


class DriverTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.where = contenders.Surroundings(folder.name, folder.name, folder.name)
        self.silence = rounds.say
        rounds.say = lambda text: None
        self.addCleanup(lambda: setattr(rounds, "say", self.silence))

    def measure(self, **made_up):
        return rounds.measure(group(made_up, count=3), self.where)

    def result(self, **made_up):
        return self.measure(**made_up)[0]


class CasesTest(DriverTest):
    def names(self, groups):
        return [case.name for each in groups for case in each.cases]

    def test_every_case_is_measured_once_and_extras_on_request(self):
        self.assertEqual(self.names(cases.chosen(cases.all_groups(), [], False)), NAMES)
        self.assertGreater(len(self.names(cases.chosen(cases.all_groups(), [], True))), len(NAMES))

    def test_named_cases_alone_are_chosen(self):
        picked = cases.chosen(cases.all_groups(), ["start", "archive/commit1/p99.9"], False)
        self.assertEqual(self.names(picked), ["archive/commit1/p99.9", "start"])

    def test_an_unknown_name_is_refused(self):
        with self.assertRaises(KeyError):
            cases.chosen(cases.all_groups(), ["start", "stop"], False)


class RoundsTest(DriverTest):
    def test_the_median_counts(self):
        result = self.result(plotix=MadeUp(5.0, 1.0, 2.0), qwt=MadeUp(30.0, 90.0, 40.0))
        self.assertEqual((result.plotix.median, result.peers["qwt"].median), (2.0, 40.0))
        self.assertEqual(result.plotix.spread, 1.0)

    def test_contenders_take_turns(self):
        turns = []
        ours, other = MadeUp(1, 1, 1, turns=turns), MadeUp(2, 2, 2, turns=turns)
        self.measure(plotix=ours, qwt=other)
        self.assertEqual(turns, [ours, other] * 3)

    def test_who_is_missing_or_fails_is_left_out(self):
        failing = MadeUp(1, contenders.Failed("broke"))
        result = self.result(plotix=MadeUp(1, 1, 1), qwt=MadeUp(lacks="not built"), kst=failing)
        self.assertEqual(result.peers, {})
        self.assertTrue(failing.stopped)

    def test_without_our_own_figure_there_is_no_result(self):
        self.assertEqual(self.measure(plotix=MadeUp(contenders.Failed("broke")), qwt=MadeUp(1, 1, 1)), [])
        self.assertEqual(self.measure(plotix=MadeUp(lacks="not built"), qwt=MadeUp()), [])

    def test_one_run_answers_two_cases(self):
        both = cases.Group([cases.Case("commit"), cases.Case("tail", "p99.9_ms")],
                           {"plotix": MadeUp({"ms": 1, "p99.9_ms": 9})}, rounds=1)
        self.assertEqual([each.plotix.median for each in rounds.measure(both, self.where)], [1, 9])


class GoogleBenchmarkTest(unittest.TestCase):
    def text(self, **figures):
        return json.dumps({"benchmarks": [{"name": "a", "time_unit": "ms", "real_time": 2.5, "iterations": 3, **figures}]})

    def test_real_time_is_the_figure_and_counters_stand_beside_it(self):
        self.assertEqual(contenders.figures_of(self.text(stayed=0.5), "a"), {"ms": 2.5, "stayed": 0.5})

    def test_errors_and_missing_names_are_failures(self):
        for text in ("", self.text(error_occurred=True, error_message="broke"), self.text(time_unit="ns")):
            with self.assertRaises(contenders.Failed):
                contenders.figures_of(text, "a")


class TablesTest(DriverTest):
    def setUp(self):
        super().setUp()
        self.results = [self.result(plotix=MadeUp(2, 2, 2), qwt=MadeUp(500, 500, 500), qcustomplot=MadeUp(3, 3, 3)),
                        self.result(plotix=MadeUp(0.0123, 0.0123, 0.0123))]

    def test_json_holds_medians_in_milliseconds(self):
        self.assertEqual(json.loads(tables.as_json(self.results)),
                         [{"case": "case", "unit": "ms", "plotix": 2, "peers": {"qcustomplot": 3, "qwt": 500}},
                          {"case": "case", "unit": "ms", "plotix": 0.0123, "peers": {}}])

    def test_text_has_a_line_for_every_peer(self):
        lines = tables.as_text(self.results).splitlines()
        self.assertEqual([line.split()[-1] for line in lines], ["ratio", "1.50×", "250×", "0%"])

    def test_markdown_names_machine_date_and_command(self):
        run = tables.record(self.results, "A machine", "2020-02-29", "./bench", [0.1, 0.2], ["file a: 1 MB"])
        text = tables.as_markdown(json.loads(json.dumps(run)))
        for part in ("A machine. 2020-02-29, `./bench`", "| `case` | 1 | 2.00 | QCustomPlot 3.00 (**1.50×**), Qwt 500 (**250×**) |",
                     "| `case` | 1 | 0.0123 | – |", "- file a: 1 MB"):
            self.assertIn(part, text)


class DocumentsTest(unittest.TestCase):
    def test_the_table_replaces_what_stands_between_the_marks(self):
        text = f"before\n{documents.BEGIN}\nold\n{documents.END}\nafter\n"
        once = documents.with_table(text, "new")
        self.assertEqual(once, f"before\n{documents.BEGIN}\n\nnew\n\n{documents.END}\nafter\n")
        self.assertEqual(documents.with_table(once, "new"), once)

    def test_the_documents_have_their_marks(self):
        for name in documents.DOCUMENTS:
            documents.with_table((ROOT / name).read_text(encoding="utf-8"), "table")

    def test_missing_marks_are_refused(self):
        with self.assertRaises(ValueError):
            documents.with_table("nothing here", "table")


if __name__ == "__main__":
    unittest.main()
