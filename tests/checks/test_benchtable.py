#!/usr/bin/env python3
"""Lets the table of the benchmarks read small files of numbers."""

import pathlib
import re
import subprocess
import unittest

TABLE = pathlib.Path(__file__).parents[2] / "bench" / "table.awk"
NOTHING_MISSED = "0 of 1 rows miss an agreed limit, 0 an aim; 0 programs failed."


def number(value="3", worst="", most="", least="", there="", ratio="", aim="", judged="", name="time"):
    bare = "bare program" if there else ""
    return "\t".join(["number", name, value, "ms", worst, most, least, bare, there, ratio, aim, judged])


class Table(unittest.TestCase):
    def table(self, *lines):
        """Exit code and lines of the table."""
        done = subprocess.run(["awk", "-f", TABLE], input="".join(line + "\n" for line in lines), check=False,
                              capture_output=True, text=True)
        self.assertEqual("", done.stderr)
        return done.returncode, done.stdout.splitlines()

    def row(self, line):
        """Exit code and the cells of the row of this number."""
        code, lines = self.table("program\tone\t1", line)
        return code, re.split("  +", lines[2])

    def expect_verdict(self, verdict, **fields):
        code, cells = self.row(number(**fields))
        self.assertEqual((verdict, verdict in ("missed", "failed")), (cells[-1], code != 0), fields)

    def test_limits(self):
        self.expect_verdict("holds", most="3")
        self.expect_verdict("missed", most="2.9")
        self.expect_verdict("holds", least="3")
        self.expect_verdict("missed", least="3.1")
        self.expect_verdict("holds", there="2", ratio="1.5")
        self.expect_verdict("missed", there="2", ratio="1.4")
        self.expect_verdict("missed", most="2", there="2", ratio="1.5")
        self.expect_verdict("missed", ratio="1.5", there="0")  # nothing stands beside it

    def test_an_aim_does_not_make_the_command_fail(self):
        self.expect_verdict("missed (aim)", most="2", aim="aim")
        self.expect_verdict("holds (aim)", most="3", aim="aim")

    def test_a_number_without_a_limit_has_no_verdict(self):
        code, lines = self.table("program\tone\t1", number())
        self.assertEqual((0, NOTHING_MISSED), (code, lines[-1]))

    def test_the_worst_decides_where_the_limit_is_for_it(self):
        self.expect_verdict("holds", worst="31", most="30")
        self.expect_verdict("missed", worst="31", most="30", judged="worst")
        self.expect_verdict("holds", worst="30", most="30", judged="worst")
        self.expect_verdict("missed", most="30", judged="worst")  # nobody told the worst
        _, cells = self.row(number(worst="4", most="30", judged="worst"))
        self.assertIn("worst <= 30 ms", cells)

    def test_what_is_no_number_fails(self):
        for value in ("", "nan", "-nan", "inf", "-1", "x"):
            self.expect_verdict("failed", value=value, most="30")
        self.expect_verdict("failed", worst="nan", most="30")
        self.expect_verdict("failed", there="-0.1", ratio="1.5")
        self.expect_verdict("holds", value="1.5e-05", most="30")

    def test_a_program_tells_all_its_numbers(self):
        for owed, told in ((2, 1), (1, 0), (1, 2)):
            code, lines = self.table(f"program\tone\t{owed}", *[number(most="9")] * told, "program\ttwo\t1",
                                     number(most="9"))
            self.assertEqual(1, code)
            self.assertTrue(any(line.startswith(f"one told {told} of {owed} numbers") for line in lines), lines)
            self.assertIn("1 programs failed", lines[-1])
        code, _ = self.table("program\tone\t1", number(most="9"), "program\ttwo\t2", number(), number())
        self.assertEqual(0, code)

    def test_the_last_program_is_counted_too(self):
        code, lines = self.table("program\tone\t1")
        self.assertEqual(1, code)
        self.assertIn("1 programs failed", lines[-1])

    def test_nothing_measured_is_a_failure(self):
        self.assertEqual(1, self.table()[0])

    def test_a_program_that_ended_early_is_told(self):
        code, lines = self.table("program\tone\t1", number(), "failed\tone")
        self.assertEqual(1, code)
        self.assertTrue(any(line.startswith("one did not reach its end") for line in lines), lines)


if __name__ == "__main__":
    unittest.main()
