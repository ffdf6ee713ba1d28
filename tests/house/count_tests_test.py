#!/usr/bin/env python3
"""The last line of ./test counts every test once, and no failure is lost."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

COUNT_TESTS = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "count-tests"

PASSED = """[==========] Running 3 tests from 2 test suites.
[       OK ] A.One (0 ms)
[       OK ] A.Two (0 ms)
[       OK ] B.One (0 ms)
[==========] 3 tests from 2 test suites ran. (1 ms total)
[  PASSED  ] 3 tests.
"""
FAILED = """[==========] Running 3 tests from 1 test suite.
[  PASSED  ] 1 test.
[  FAILED  ] 2 tests, listed below:
[  FAILED  ] A.One
[  FAILED  ] A.Two

 2 FAILED TESTS
"""
CRASHED = """[==========] Running 3 tests from 1 test suite.
[ RUN      ] A.One
[       OK ] A.One (0 ms)
[ RUN      ] A.Two
"""


def case(status, output):
    return f'<testcase name="x" status="{status}"><system-out>{output}</system-out></testcase>'


class Counting(unittest.TestCase):
    def counted(self, *files):
        with tempfile.TemporaryDirectory() as folder:
            paths = []
            for number, (ending, text) in enumerate(files):
                paths.append(pathlib.Path(folder) / f"{number}{ending}")
                paths[-1].write_text(text, encoding="utf-8")
            return subprocess.run([sys.executable, COUNT_TESTS, *paths], check=True,
                                  capture_output=True, text=True).stdout

    def ctest(self, *cases):
        return ".xml", "<testsuite>" + "".join(cases) + "</testsuite>"

    def test_counts_every_test_of_a_program(self):
        self.assertEqual(self.counted(self.ctest(case("run", PASSED), case("run", PASSED))),
                         "6 0\n")

    def test_counts_passed_and_failed_tests_of_one_program(self):
        self.assertEqual(self.counted(self.ctest(case("fail", FAILED))), "1 2\n")

    def test_a_program_that_crashed_is_a_failure_beside_what_passed_before(self):
        self.assertEqual(self.counted(self.ctest(case("fail", CRASHED))), "1 1\n")

    def test_a_program_that_failed_after_its_tests_is_a_failure(self):
        self.assertEqual(self.counted(self.ctest(case("fail", PASSED))), "3 1\n")

    def test_any_other_program_counts_as_one(self):
        self.assertEqual(self.counted(self.ctest(case("run", "fine"), case("fail", ""))), "1 1\n")

    def test_counts_what_unittest_ran(self):
        text = "Ran 5 tests in 1.0s\n\nFAILED (failures=1, errors=2)\nRan 7 tests in 1.0s\n\nOK\n"
        self.assertEqual(self.counted((".log", text)), "9 3\n")

    def test_skipped_tests_do_not_count(self):
        self.assertEqual(self.counted((".log", "Ran 5 tests in 1.0s\n\nOK (skipped=2)\n")), "3 0\n")


if __name__ == "__main__":
    unittest.main()
