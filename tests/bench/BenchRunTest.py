"""bench/run without benchmarks: how figures are judged and shown, and what becomes of the run when one of them fails."""

import contextlib
import importlib.machinery
import importlib.util
import io
import json
import os
import sys
import tempfile
import unittest
from unittest import mock

ROOT = os.path.realpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
BENCH = os.path.join(ROOT, "bench")
sys.path.insert(0, BENCH)
sys.dont_write_bytecode = True

import GrowthPicture  # noqa: E402
import Judgement  # noqa: E402
import Pieces  # noqa: E402
import Report  # noqa: E402
from Judgement import Reference, Row  # noqa: E402


def load():
    """bench/run as a module, each time a new one."""
    loader = importlib.machinery.SourceFileLoader("bench_run", os.path.join(BENCH, "run"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("bench_run", loader))
    loader.exec_module(module)
    return module


MACHINE = {"processor": "Some", "cores": 2, "virtual": False, "memory": "4.0 GiB", "system": "Debian", "kernel": "6.1",
           "compiler": "GCC 12"}


class Limits(unittest.TestCase):
    def test_a_limit_is_kept_up_to_itself(self):
        self.assertIs(Row("a", 16.0, atMost=16.0).isKept, True)
        self.assertIs(Row("a", 16.01, atMost=16.0).isKept, False)

    def test_a_limit_in_multiples_is_one_of_the_reference(self):
        self.assertIs(Row("a", 30.0, reference=Reference("b", 10.0), atMostTimes=3).isKept, True)
        self.assertIs(Row("a", 30.1, reference=Reference("b", 10.0), atMostTimes=3).isKept, False)

    def test_a_reference_of_nothing_keeps_no_limit(self):
        self.assertIs(Row("a", 1.0, reference=Reference("b", 0.0), atMostTimes=3).isKept, False)
        self.assertIs(Row("a", 1.0, atMostTimes=3).isKept, False)

    def test_what_has_to_be_exact_is_neither_more_nor_less(self):
        self.assertEqual([Row("a", count, unit="", exactly=1).isKept for count in (0, 1, 2)], [False, True, False])
        self.assertIs(Row("a", 0, unit="", exactly=0).isKept, True)

    def test_without_a_limit_there_is_nothing_to_keep(self):
        self.assertIsNone(Row("a", 1.0, reference=Reference("b", 1.0)).isKept)


class Table(unittest.TestCase):
    def test_a_row_shows_figure_reference_ratio_limit_and_load(self):
        row = Row("click", 12.345, reference=Reference("bare", 5.0), atMost=16.0)
        self.assertEqual(Judgement.line(row, "0.1 → 0.2"),
                         "| click | bare: 5.00 ms | 12.3 ms | 2.47 | 16.0 ms | yes | 0.1 → 0.2 |\n")

    def test_a_limit_that_is_not_kept_stands_out(self):
        row = Row("memory", 40.0, unit="MiB", reference=Reference("bare", 20.0), atMostTimes=1.3)
        self.assertIn("| 2.00 | 1.3 × | **no** |", Judgement.line(row, ""))

    def test_a_row_without_reference_and_limit_has_empty_cells(self):
        self.assertEqual(Judgement.line(Row("a", 1.0), ""), "| a |  | 1.00 ms |  |  |  |  |\n")

    def test_all_lines_have_as_many_cells_as_the_head(self):
        lines = Judgement.HEAD + Judgement.line(Row("a", 1.0), "x") + Judgement.failureLine("b", "c|d\ne", "x")
        self.assertEqual({line.count("|") for line in lines.splitlines()}, {8})

    def test_quantities_have_the_digits_that_count(self):
        self.assertEqual([Judgement.quantity(value, "ms") for value in (0.5, 9.876, 98.76, 275, 50300.0)],
                         ["0.500 ms", "9.88 ms", "98.8 ms", "275.0 ms", "50.3 s"])
        self.assertEqual(Judgement.quantity(3, ""), "3")
        self.assertEqual([Judgement.ratioText(value) for value in (None, 0.0123, 1.234)], ["", "0.012", "1.23"])


class Document(unittest.TestCase):
    def test_only_what_is_between_the_markers_is_replaced(self):
        document = f"before\n{Report.BEGIN}\nold\n{Report.END}\nafter\n"
        once = Report.withSection(document, "new\n")
        self.assertEqual(once, f"before\n{Report.BEGIN}\n\nnew\n\n{Report.END}\nafter\n")
        self.assertEqual(Report.withSection(once, "new\n"), once)

    def test_a_document_without_its_markers_is_left_alone(self):
        for document in ("", Report.BEGIN, Report.END, f"{Report.END}{Report.BEGIN}", f"{Report.BEGIN}{Report.END}{Report.BEGIN}",
                         f"{Report.BEGIN}{Report.END}{Report.BEGIN}{Report.END}"):
            self.assertIsNone(Report.withSection(document, "new"), document)

    def test_the_benchmarks_have_a_place_for_the_table(self):
        with open(os.path.join(ROOT, "docs", "benchmarks.md"), encoding="utf-8") as file:
            self.assertIsNotNone(Report.withSection(file.read(), "new"))


def source(*names):
    text = ""
    for name in names:
        with open(os.path.join(BENCH, name), encoding="utf-8") as file:
            text += file.read()
    return text


class EachPiece(unittest.TestCase):
    def test_names_are_its_own(self):
        names = [piece.name for piece in Pieces.PIECES]
        self.assertEqual(len(names), len(set(names)))

    def test_programs_that_commands_start_are_built_or_there(self):
        targets = load().TARGETS
        for piece in Pieces.PIECES:
            for isQuick in (False, True):
                command = [str(word) for word in piece.command("/build", "/out.json", isQuick)]
                self.assertIn("/out.json", " ".join(command), piece.name)
                for word in command:
                    if word.startswith("/build/"):
                        self.assertIn(os.path.basename(word), targets)
                    elif word.startswith(ROOT):
                        self.assertTrue(os.access(word, os.X_OK), word)

    def test_quick_commands_differ_where_there_is_something_to_save(self):
        differ = [piece.name for piece in Pieces.PIECES
                  if piece.command("b", "o", True) != piece.command("b", "o", False)]
        self.assertTrue({"stand-ins", "desktop", "stopped", "idle-ovin", "ledge-100", "start", "crowd"} <= set(differ))

    def test_benchmarks_are_asked_for_by_names_that_exist(self):
        text = source("DiscoveryBench.cpp", "DesktopBench.cpp")
        for name in ("discoveryOf400Applications", "discoveryOf400ApplicationsWithAnAgent", "discoveryOfManyApplications",
                     "serialScanOfManyApplications", "discoveryWithHungApplications", "discoveryWithMoreAndMoreHung",
                     "serialScanWithMoreAndMoreHung", "geometrySnapshot", "theSameRequestsAlone"):
            self.assertIn(f"BENCHMARK({name})", text)
            self.assertIn(name, source("Pieces.py", "GrowthPicture.py"))
        for name in ("reference: the items' properties", "reference: the bar's slots", "reference: both at once",
                     "reference: one program after the other", "scan of the items", "snapshot of the bar",
                     "whole discovery"):
            self.assertIn(f'"{name}"', text)
            self.assertIn(f'"{name}"', source("Pieces.py"))

    def test_a_program_that_reads_no_bar_is_compared_with_the_items_alone(self):
        time = lambda median: {"median_ms": median, "slowest_ms": median}
        bare = {"reference: the items' properties": time(10.0), "reference: one program after the other": time(50.0),
                "scan of the items": time(12.0), "whole discovery": time(14.0)}
        rows = Pieces.answeringRows("")(bare)
        self.assertEqual([row.isKept for row in rows], [False, True, None])
        rows = Pieces.answeringRows("")({**bare, "reference: the bar's slots": time(10.0),
                                         "reference: both at once": time(11.0), "snapshot of the bar": time(14.0)})
        self.assertEqual([row.isKept for row in rows], [True, None, True, False, None])

    def test_only_watched_programs_have_to_sleep(self):
        group = lambda other, watched: {"processes": 1, "clock": 3, "other": other, "watched": watched}
        rows = Pieces.idleRows({"seconds": 60, "groups": {"ovin": group(0, True), "X server": group(6, False),
                                                          "menu bar agent": group(1, True)}})
        self.assertEqual([(row.measurement, row.isKept) for row in rows],
                         [("60 s of nothing: wake-ups of ovin", True),
                          ("60 s of nothing: wake-ups of menu bar agent", False)])

    def test_clicks_that_nothing_follows_break_a_limit(self):
        figures = {"clicks": 60, "median_ms": 5.0, "p99_ms": 8.0, "lost": 0}
        isKept = lambda figures: all(row.isKept is not False for row in Pieces.ledgeRows("10 items")(figures))
        self.assertTrue(isKept(figures))
        self.assertFalse(isKept({**figures, "lost": 1}))
        self.assertFalse(isKept({**figures, "p99_ms": 8.1}))


class Growth(unittest.TestCase):
    def test_curves_are_in_seconds_and_in_the_order_of_the_arguments(self):
        one = lambda name, count, median: {"name": f"{name}/{count}/iterations:3/manual_time", "fastest_ms": median / 2,
                                           "median_ms": median, "slowest_ms": 2 * median}
        curves = GrowthPicture.curves({"benchmarks": [one("discoveryOfManyApplications", 100, 10.0),
                                                      one("discoveryOfManyApplications", 20, 8.0),
                                                      one("serialScanOfManyApplications", 20, 40.0),
                                                      one("serialScanWithMoreAndMoreHung", 200, 50000.0)]})
        self.assertEqual(curves["applications"]["discovery"], [(20, 0.004, 0.008, 0.016), (100, 0.005, 0.01, 0.02)])
        self.assertEqual(curves["applications"]["serial"], [(20, 0.02, 0.04, 0.08)])
        self.assertEqual(curves["hung"], {"discovery": [], "serial": [(200, 25.0, 50.0, 100.0)]})


def piece(name, script, rows=lambda figures: [Row("it", figures["value"], atMost=10.0)], bound=60):
    """A measurement that is a few lines of Python; they find the file for their figures in sys.argv[1]."""
    command = lambda _build, output, _quick: [sys.executable, "-c", script, output]
    return Pieces.Piece(name, "Group", f"what {name} is", command, rows, bound)


def writes(value, status=0):
    return f"import sys; open(sys.argv[1], 'w').write('{{\"value\": {value}}}'); sys.exit({status})"


FAILS = "import sys; print('no display'); sys.exit(3)"


class WholeRun(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.machine = MACHINE

    def run_pieces(self, pieces, *arguments):
        """(exit status, what was printed)"""
        module = load()
        module.PIECES, module.OUTPUT, module.BUILD = tuple(pieces), self.folder, self.folder
        module.DOCUMENT = os.path.join(self.folder, "benchmarks.md")
        output = io.StringIO()
        with mock.patch.object(module.Machine, "describe", lambda _: self.machine), contextlib.redirect_stdout(output):
            status = module.main(["--no-build", *arguments])
        return status, output.getvalue()

    def results(self):
        with open(os.path.join(self.folder, "results.json"), encoding="utf-8") as file:
            return json.load(file)

    def table(self):
        with open(os.path.join(self.folder, "table.md"), encoding="utf-8") as file:
            return file.read()

    def test_the_status_is_0_when_every_limit_is_kept(self):
        status, output = self.run_pieces([piece("a", writes(10)), piece("b", writes(1))])
        self.assertEqual(status, 0, output)
        self.assertIn("2 of 2 limits kept.", self.table())

    def test_the_status_is_1_when_a_limit_is_not_kept(self):
        status, output = self.run_pieces([piece("a", writes(11)), piece("b", writes(1))])
        self.assertEqual(status, 1)
        self.assertIn("A LIMIT IS NOT KEPT", output)
        self.assertEqual([row["kept"] for row in self.results()["rows"]], [False, True])

    def test_a_measurement_that_fails_does_not_end_the_others(self):
        status, output = self.run_pieces([piece("a", FAILS), piece("b", writes(1))])
        self.assertEqual(status, 1)
        self.assertIn("failed: exit status 3: no display", output)
        self.assertIn("| what a is | | failed: exit status 3: no display | | | **no** |", self.table())
        self.assertIn("| it |  | 1.00 ms |", self.table())
        self.assertIn("1 of 1 limits kept, 1 measurements failed.", self.table())

    def test_each_way_to_fail_is_a_failure(self):
        ways = {"No such file": Pieces.Piece("a", "Group", "a", lambda *_: ["/not/there"], lambda _: [], 60),
                "exit status 0": piece("a", "pass"), "cannot be read: JSON": piece("a", "import sys; open(sys.argv[1], 'w').write('{')"),
                "cannot be read: KeyError": piece("a", writes(1), lambda figures: [Row("it", figures["else"])]),
                "not done after 0.2 s": piece("a", "import time; time.sleep(20)", bound=0.2),
                "exit status -9": piece("a", "import os; os.kill(os.getpid(), 9)"),
                "exit status 3": piece("a", writes(1, status=3)),
                "exit status 1 with every limit kept": piece("a", writes(1, status=1))}
        for way, one in ways.items():
            with self.subTest(way):
                status, _ = self.run_pieces([one])
                self.assertEqual(status, 1)
                self.assertIn(way, self.results()["pieces"]["a"]["error"])

    def test_a_status_of_1_with_a_limit_that_is_not_kept_is_no_failure(self):
        self.run_pieces([piece("a", writes(11, status=1))])
        self.assertIsNone(self.results()["pieces"]["a"]["error"])

    def test_figures_of_an_earlier_run_are_not_taken_for_new_ones(self):
        self.run_pieces([piece("a", writes(1))])
        self.assertEqual(self.run_pieces([piece("a", "pass")])[0], 1)

    def test_one_measurement_joins_the_others(self):
        self.run_pieces([piece("a", writes(1)), piece("b", writes(2))])
        status, _ = self.run_pieces([piece("a", FAILS), piece("b", writes(3))], "--only", "b")
        self.assertEqual(status, 0)
        self.assertEqual([row["measured"] for row in self.results()["rows"]], [1, 3])

    def test_a_whole_run_begins_afresh(self):
        self.run_pieces([piece("a", writes(1)), piece("b", writes(2))])
        self.run_pieces([piece("b", writes(3))])
        self.assertEqual(list(self.results()["pieces"]), ["b"])

    def test_figures_of_another_machine_are_dropped(self):
        pieces = [piece("a", writes(1)), piece("b", writes(2))]
        self.run_pieces(pieces)
        self.machine = {**MACHINE, "cores": 64}
        self.run_pieces(pieces, "--only", "b")
        self.assertEqual(list(self.results()["pieces"]), ["b"])
        self.assertIn("64 cores", self.table())
        self.assertIn("Not measured: a.", self.table())

    def test_names_up_to_a_dash_choose_a_family(self):
        pieces = [piece(name, writes(1)) for name in ("ledge-10", "ledge-100", "ledger", "start")]
        self.run_pieces(pieces, "--only", "ledge", "--only", "st*")
        self.assertEqual(list(self.results()["pieces"]), ["ledge-10", "ledge-100", "start"])

    def test_an_unknown_name_is_refused(self):
        with self.assertRaises(SystemExit) as refused, contextlib.redirect_stderr(io.StringIO()):
            self.run_pieces([piece("a", writes(1))], "--only", "b")
        self.assertEqual(refused.exception.code, 2)

    def test_a_report_measures_nothing(self):
        self.assertEqual(self.run_pieces([piece("a", FAILS)], "--report")[0], 2)
        self.run_pieces([piece("a", writes(1))])
        self.machine = None
        status, _ = self.run_pieces([piece("a", FAILS)], "--report")
        self.assertEqual(status, 0)
        self.assertIn("| it |  | 1.00 ms |", self.table())

    def test_the_table_is_written_into_the_document(self):
        path = os.path.join(self.folder, "benchmarks.md")
        with open(path, "w", encoding="utf-8") as file:
            file.write(f"# Title\n{Report.BEGIN}\n{Report.END}\nprose\n")
        status, _ = self.run_pieces([piece("a", writes(1))], "--write-docs")
        self.assertEqual(status, 0)
        with open(path, encoding="utf-8") as file:
            text = file.read()
        self.assertTrue(text.startswith("# Title\n") and text.endswith("prose\n"))
        self.assertIn("a machine with 2 cores (Some) and 4.0 GiB", text)
        self.assertLessEqual(max(map(len, text.partition("|")[0].splitlines())), 125)
        self.assertIn("| it |  | 1.00 ms |", text)

    def test_a_document_without_a_place_for_the_table_is_a_failure(self):
        with open(os.path.join(self.folder, "benchmarks.md"), "w", encoding="utf-8") as file:
            file.write("prose\n")
        self.assertEqual(self.run_pieces([piece("a", writes(1))], "--write-docs")[0], 1)

    def test_few_repetitions_are_told(self):
        self.run_pieces([piece("a", writes(1))], "--quick")
        self.assertIn("With few repetitions: a.", self.table())


if __name__ == "__main__":
    unittest.main()
