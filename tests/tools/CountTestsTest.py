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


class CountTests(unittest.TestCase):
    def test_passed_failed_and_not_run_are_told_apart(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "CMakeLists.txt"), "w", encoding="utf-8") as file:
                file.write(PROJECT)
            build = os.path.join(folder, "build")
            report = os.path.join(folder, "report.xml")
            subprocess.run(["cmake", "-G", "Ninja", "-S", folder, "-B", build], check=True, capture_output=True)
            subprocess.run(["ctest", "--test-dir", build, "--output-junit", report], check=False, capture_output=True)
            counted = subprocess.run([sys.executable, TOOL, report], check=True, capture_output=True, text=True)
        self.assertEqual(counted.stdout, "1 3 2\n")

    def test_a_report_that_is_missing_is_no_success(self):
        counted = subprocess.run([sys.executable, TOOL, "no-such-report"], check=False, capture_output=True, text=True)
        self.assertNotEqual(counted.returncode, 0)
        self.assertEqual(counted.stdout, "")


if __name__ == "__main__":
    unittest.main()
