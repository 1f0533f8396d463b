"""A test file that no target builds fails the configuration: seen on a small project that uses cmake/OvinTests.cmake."""

import os
import subprocess
import tempfile
import unittest

MODULES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "cmake")

# Nothing is compiled here, so neither a compiler nor the test library is looked for.
PROJECT = """
cmake_minimum_required(VERSION 3.25)
project(Small NONE)
list(APPEND CMAKE_MODULE_PATH "${{CMAKE_SOURCE_DIR}}/modules" "{modules}")
include(OvinTests)
add_subdirectory(tests)
"""


def configure(files):
    with tempfile.TemporaryDirectory() as folder:
        for path, content in {**files, "modules/FindGTest.cmake": ""}.items():
            os.makedirs(os.path.dirname(os.path.join(folder, path)), exist_ok=True)
            with open(os.path.join(folder, path), "w", encoding="utf-8") as file:
                file.write(content)
        with open(os.path.join(folder, "CMakeLists.txt"), "w", encoding="utf-8") as file:
            file.write(PROJECT.format(modules=os.path.realpath(MODULES)))
        command = ["cmake", "-G", "Ninja", "-S", folder, "-B", os.path.join(folder, "build")]
        return subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)


class ForgottenTests(unittest.TestCase):
    def test_a_project_whose_tests_are_all_built_is_configured(self):
        result = configure({
            "tests/CMakeLists.txt": "add_subdirectory(part)\novin_check_tests_are_built()\n",
            "tests/part/CMakeLists.txt": "ovin_count_as_built(ATest.cpp BTest.py)\n",
            "tests/part/ATest.cpp": "",
            "tests/part/BTest.py": "",
        })
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_a_stray_test_file_fails_the_configuration(self):
        for stray in ["tests/StrayTest.cpp", "tests/part/StrayTest.cpp", "tests/other/StrayTest.cpp",
                      "tests/part/StrayTest.py"]:
            with self.subTest(stray=stray):
                result = configure({
                    "tests/CMakeLists.txt": "add_subdirectory(part)\novin_check_tests_are_built()\n",
                    "tests/part/CMakeLists.txt": "ovin_count_as_built(ATest.cpp)\n",
                    "tests/part/ATest.cpp": "",
                    stray: "",
                })
                self.assertNotEqual(result.returncode, 0)
                self.assertIn("No target builds these test files:", result.stderr)
                self.assertIn(stray, result.stderr)
                self.assertNotIn("ATest.cpp", result.stderr)

    def test_a_test_file_is_stray_even_when_nothing_is_built(self):
        result = configure({"tests/CMakeLists.txt": "ovin_check_tests_are_built()\n", "tests/StrayTest.cpp": ""})
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("tests/StrayTest.cpp", result.stderr)


if __name__ == "__main__":
    unittest.main()
