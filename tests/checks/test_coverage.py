#!/usr/bin/env python3
"""Lets the coverage table read small reports that are counted by hand."""

import pathlib
import sys
import tempfile
import unittest
from pathlib import PurePosixPath

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "scripts"))
import coverage

REPORT = """SF:/work/src/link/frame.cpp
FN:1,first
DA:1,7
DA:2,0
DA:3,0
DA:5,0
DA:6,1
DA:9,0
end_of_record
SF:/work/build/../src/link/frame.h
DA:4,1
end_of_record
SF:/work/build/src/link/moc_frame.cpp
DA:1,0
end_of_record
SF:/usr/include/string.h
DA:1,0
end_of_record
SF:/work/src/base/gui/fonts.cpp
DA:8,12
end_of_record
"""


class Coverage(unittest.TestCase):
    def setUp(self):
        self.counts = coverage.counts_by_source(REPORT, pathlib.Path("/work/src"))

    def test_only_written_sources_of_the_product_count(self):
        self.assertEqual({"link/frame.cpp", "link/frame.h", "base/gui/fonts.cpp"},
                         {path.as_posix() for path in self.counts})

    def test_folders_are_summed_up(self):
        totals = coverage.totals_by_folder(self.counts)
        self.assertEqual([("base/gui", (1, 1)), ("link", (7, 3)), ("in all", (8, 4))], list(totals.items()))

    def test_lines_that_did_not_run_are_named(self):
        self.assertEqual("2-5, 9", coverage.uncovered_ranges(self.counts[PurePosixPath("link/frame.cpp")]))
        self.assertEqual("", coverage.uncovered_ranges(self.counts[PurePosixPath("link/frame.h")]))

    def test_a_source_that_is_reported_twice_counts_once(self):
        twice = "SF:/work/src/a.h\nDA:1,0\nDA:2,0\nend_of_record\nSF:/work/src/a.h\nDA:1,4\nend_of_record\n"
        counts = coverage.counts_by_source(twice, pathlib.Path("/work/src"))
        self.assertEqual({PurePosixPath("a.h"): {1: 4, 2: 0}}, counts)

    def test_what_macros_of_qt_fill_does_not_count(self):
        with tempfile.TemporaryDirectory() as folder:
            sources = pathlib.Path(folder)
            (sources / "a.h").write_text("class A\n{\n    Q_OBJECT\n    int one() { return 1; }\n")
            counts = coverage.without_generated({pathlib.Path("a.h"): {3: 0, 4: 0}}, sources)
        self.assertEqual({pathlib.Path("a.h"): {4: 0}}, counts)

    def test_a_source_that_became_shorter_is_not_taken(self):
        with tempfile.TemporaryDirectory() as folder:
            sources = pathlib.Path(folder)
            (sources / "a.cpp").write_text("int a = 1;\n")
            with self.assertRaises(SystemExit):
                coverage.without_generated({pathlib.Path("a.cpp"): {2: 1}}, sources)

    def test_the_percentage_of_nothing_is_whole(self):
        self.assertEqual(100, coverage.percentage(0, 0))
        self.assertEqual(12.5, coverage.percentage(1, 8))


if __name__ == "__main__":
    unittest.main()
