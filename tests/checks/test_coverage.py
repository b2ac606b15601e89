#!/usr/bin/env python3
"""Lets the coverage table read small reports that are counted by hand, and look at a small program."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
from pathlib import PurePosixPath

SCRIPTS = pathlib.Path(__file__).parents[2] / "scripts"
sys.path.insert(0, str(SCRIPTS))
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

    def test_the_percentage_of_nothing_is_whole(self):
        self.assertEqual(100, coverage.percentage(0, 0))
        self.assertEqual(12.5, coverage.percentage(1, 8))


# Of the lines with code 4 run, and 1 does not.
HEADER = "inline int half(int number)\n{\n    return number / 2;\n}\n"
SOURCE = """#include "base/half.h"
int main(int count, char **)
{
    return count > 1 ? half(count)
                     : 0;
}
"""
RULES = """rule compile
  command = clang++ -I../src -fprofile-instr-generate -fcoverage-mapping -MD -MF $out.d -c $in -o $out
  depfile = $out.d
  deps = gcc
rule link
  command = clang++ -fprofile-instr-generate $in -o $out
build src/main.o: compile ../src/main.cpp
build program: link src/main.o
"""


class WholeRun(unittest.TestCase):
    """The script on a program that was built, and of which some lines ran."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.build = self.root / "build"
        self.write("src/base/half.h", HEADER)
        self.write("src/main.cpp", SOURCE)
        self.write("build/build.ninja", RULES)
        self.compile("src/main.o")
        subprocess.run(["ninja", "-C", self.build], check=True, capture_output=True)
        subprocess.run([self.build / "program"], check=True,
                       env={**os.environ, "LLVM_PROFILE_FILE": str(self.build / "profiles/one.profraw")})

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def compile(self, *objects):
        commands = [{"directory": str(self.build), "file": "main.cpp", "command": f"clang++ -c main.cpp -o {path}"}
                    for path in (*objects, "tests/tst_a.o")]
        self.write("build/compile_commands.json", json.dumps(commands))

    def run_script(self, least):
        done = subprocess.run([sys.executable, SCRIPTS / "coverage.py", self.root, self.build, str(least)],
                              check=False, capture_output=True, text=True)
        self.assertNotIn("Traceback", done.stderr)
        return done.returncode, done.stdout + done.stderr

    def expect_refusal(self, reason):
        code, output = self.run_script(0)
        self.assertEqual(1, code, output)
        self.assertIn(reason, output)

    def test_the_limit_decides(self):
        code, output = self.run_script(55)
        self.assertEqual(0, code, output)
        self.assertIn("src/base/half.h: 2-4", output)
        self.assertNotIn("src/main.cpp:", output)
        code, output = self.run_script(95)
        self.assertEqual(1, code)
        self.assertIn("Fewer than 95 % of the lines ran", output)

    def test_a_source_that_changed_is_not_taken(self):
        self.write("src/main.cpp", "\n\n" + SOURCE)
        self.expect_refusal("src/main.cpp changed since it was built")

    def test_a_header_that_changed_is_not_taken(self):
        self.write("src/base/half.h", "\n" + HEADER)
        self.expect_refusal("src/base/half.h changed since it was built")

    def test_a_source_that_is_gone_is_not_taken(self):
        (self.root / "src/base/half.h").unlink()
        self.expect_refusal("src/base/half.h changed since it was built")

    def test_objects_of_earlier_builds_do_not_count(self):
        self.write("build/src/older.o", "what was compiled of a source that is gone")
        self.assertEqual(0, self.run_script(55)[0])

    def test_an_object_that_is_not_built_is_told(self):
        self.compile("src/main.o", "src/other.o")
        self.expect_refusal("src/other.o is not built")

    def test_nothing_ran(self):
        (self.build / "profiles/one.profraw").unlink()
        self.expect_refusal("No program of this build has run")

    def test_counters_that_cannot_be_read_are_no_result(self):
        self.write("build/profiles/one.profraw", "no counters")
        self.expect_refusal("The counters cannot be read")


if __name__ == "__main__":
    unittest.main()
