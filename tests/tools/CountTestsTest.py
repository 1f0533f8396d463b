"""What tools/count_tests.py makes of the reports that ctest really writes."""

import os
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "count_tests.py")

PROJECT = """
cmake_minimum_required(VERSION 3.25)
project(Counted NONE)
enable_testing()
add_test(NAME succeeds COMMAND "${CMAKE_COMMAND}" -E true)
add_test(NAME fails COMMAND "${CMAKE_COMMAND}" -E false)
add_test(NAME hasNoProgram COMMAND "${CMAKE_BINARY_DIR}/no-such-program")
add_test(NAME takesTooLong COMMAND "${CMAKE_COMMAND}" -E sleep 20)
set_tests_properties(takesTooLong PROPERTIES TIMEOUT 1)
add_test(NAME isSwitchedOff COMMAND "${CMAKE_COMMAND}" -E true)
set_tests_properties(isSwitchedOff PROPERTIES DISABLED ON)
add_test(NAME skipsItself COMMAND "${CMAKE_COMMAND}" -E echo SKIPPED)
set_tests_properties(skipsItself PROPERTIES SKIP_REGULAR_EXPRESSION SKIPPED)
"""

# What a program of GoogleTest prints, from its first line to its last.
PROGRAM = """[==========] Running 4 tests from 1 test suite.
[ RUN      ] Lamp.Shines
[       OK ] Lamp.Shines (0 ms)
[ RUN      ] Lamp.IsRed
LampTest.cpp:7: Failure
[  FAILED  ] Lamp.IsRed, where GetParam() = "dim" (1 ms)
[ RUN      ] Lamp.Turns
an unfinished line[       OK ] Lamp.Turns (12 ms)
[ RUN      ] Lamp.Floats
LampTest.cpp:12: Skipped
[  SKIPPED ] Lamp.Floats (0 ms)
[==========] 4 tests from 1 test suite ran. (13 ms total)
[  PASSED  ] 2 tests.
[  SKIPPED ] 1 test, listed below:
[  SKIPPED ] Lamp.Floats
[  FAILED  ] 1 test, listed below:
[  FAILED  ] Lamp.IsRed, where GetParam() = "dim"
"""
UNTIL_A_CRASH = PROGRAM[:PROGRAM.index("an unfinished")]
WELL = "[==========] Running 1 test from 1 test suite.\n[ RUN      ] Lamp.Shines\n[       OK ] Lamp.Shines (0 ms)\n"


def count(report):
    return subprocess.run([sys.executable, TOOL, report], check=True, capture_output=True, text=True)


def count_program(output, status):
    """What the tool makes of one program that printed `output` and ended with `status`."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in (("output", output), ("CMakeLists.txt", f"""
cmake_minimum_required(VERSION 3.25)
project(Counted NONE)
enable_testing()
add_test(NAME program COMMAND sh -c "cat output; exit {status}" WORKING_DIRECTORY "${{CMAKE_SOURCE_DIR}}")
""")):
            with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                file.write(text)
        report = os.path.join(folder, "report.xml")
        subprocess.run(["cmake", "-G", "Ninja", "-S", folder, "-B", folder], check=True, capture_output=True)
        subprocess.run(["ctest", "--test-dir", folder, "--output-junit", report, "--test-output-size-passed", "9999999",
                        "--test-output-size-failed", "9999999"], check=False, capture_output=True)
        return count(report)


class CountTests(unittest.TestCase):
    def test_passed_failed_and_not_run_are_told_apart(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "CMakeLists.txt"), "w", encoding="utf-8") as file:
                file.write(PROJECT)
            build = os.path.join(folder, "build")
            report = os.path.join(folder, "report.xml")
            subprocess.run(["cmake", "-G", "Ninja", "-S", folder, "-B", build], check=True, capture_output=True)
            subprocess.run(["ctest", "--test-dir", build, "--output-junit", report], check=False, capture_output=True)
            counted = count(report)
        self.assertEqual(counted.stdout, "1 3 2\n")
        self.assertIn("Did not run: skipsItself\n", counted.stderr)

    def test_each_test_of_a_program_counts(self):
        counted = count_program(PROGRAM, 1)
        self.assertEqual(counted.stdout, "2 1 1\n")
        self.assertIn("LampTest.cpp:7: Failure", counted.stderr)
        self.assertNotIn("unfinished", counted.stderr)
        self.assertIn("Did not run: Lamp.Floats\n", counted.stderr)

    def test_the_tests_that_a_crash_prevents_have_failed(self):
        counted = count_program(UNTIL_A_CRASH, 139)
        self.assertEqual(counted.stdout, "1 3 0\n")
        self.assertIn("Lamp.Turns", counted.stderr)

    def test_a_program_that_leaves_its_tests_out_has_failed_whatever_it_returns(self):
        self.assertEqual(count_program(UNTIL_A_CRASH, 0).stdout, "1 3 0\n")

    def test_a_program_that_fails_after_its_last_test_has_failed(self):
        self.assertEqual(count_program(WELL, 0).stdout, "1 0 0\n")
        self.assertEqual(count_program(WELL, 23).stdout, "1 1 0\n")

    def test_what_a_failed_program_printed_last_is_shown(self):
        for output in ("beginning\nlast words\n", WELL + "last words\n"):
            counted = count_program(output, 1)
            self.assertEqual(counted.stdout.split()[1], "1")
            self.assertIn("program: ", counted.stderr)
            self.assertIn("last words\n", counted.stderr)

    def test_long_output_is_counted_to_its_end(self):
        self.assertEqual(count_program(WELL.replace("[       OK", "noise\n" * 50000 + "[       OK"), 0).stdout, "1 0 0\n")

    def test_a_report_that_is_missing_is_no_success(self):
        counted = subprocess.run([sys.executable, TOOL, "no-such-report"], check=False, capture_output=True, text=True)
        self.assertNotEqual(counted.returncode, 0)
        self.assertEqual(counted.stdout, "")


if __name__ == "__main__":
    unittest.main()
