"""What tools/check_forgotten.py finds, on a small tree with a compilation database of its own."""

import json
import os
import subprocess
import sys
import tempfile
import unittest

TOOL = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "check_forgotten.py")


def check(files, compiled):
    with tempfile.TemporaryDirectory() as folder:
        root = os.path.realpath(folder)
        build = os.path.join(root, "build", "dev")
        os.makedirs(build)
        for path, content in files.items():
            os.makedirs(os.path.dirname(os.path.join(root, path)), exist_ok=True)
            with open(os.path.join(root, path), "w", encoding="utf-8") as file:
                file.write(content)
        with open(os.path.join(build, "compile_commands.json"), "w", encoding="utf-8") as file:
            json.dump([{"directory": build, "file": os.path.join(root, path)} for path in compiled], file)
        run = subprocess.run([sys.executable, "-B", TOOL, build, root], capture_output=True, text=True, check=False)
        return run.returncode, run.stdout + run.stderr


class CheckForgotten(unittest.TestCase):
    def test_a_tree_whose_sources_are_all_compiled_is_accepted(self):
        code, output = check({"info/A.cpp": "", "tests/A.cpp": "", "info/A.h": ""}, ["info/A.cpp", "tests/A.cpp"])
        self.assertEqual(code, 0, output)

    def test_a_source_that_nothing_compiles_is_found(self):
        code, output = check({"info/A.cpp": "", "info/B.cpp": ""}, ["info/A.cpp"])
        self.assertEqual(code, 1)
        self.assertIn("info/B.cpp: no target compiles it", output)

    def test_what_is_built_elsewhere_is_left_out(self):
        code, output = check({"info/A.cpp": "", "platform/macos/A.cpp": "", "bench/A.cpp": ""}, ["info/A.cpp"])
        self.assertEqual(code, 0, output)

    def test_a_test_that_is_switched_off_is_found(self):
        code, output = check({"tests/A.cpp": "TEST(A, DISABLED_B) {}\n"}, ["tests/A.cpp"])
        self.assertEqual(code, 1)
        self.assertIn("tests/A.cpp: DISABLED_B is switched off", output)

    def test_a_test_in_python_that_never_runs_is_found(self):
        never = "class A(unittest.TestCase):\n    @unittest.skip(\"a known fault\")\n    def testB(self):\n        pass\n"
        code, output = check({"tests/a/ATest.py": never, "tests/A.cpp": ""}, ["tests/A.cpp"])
        self.assertEqual(code, 1)
        self.assertIn("tests/a/ATest.py: @unittest.skip( is switched off", output)

    def test_a_test_in_python_that_runs_where_it_can_is_accepted(self):
        sometimes = "class A(unittest.TestCase):\n    @unittest.skipIf(isRoot, \"root\")\n    def testB(self):\n        pass\n"
        code, output = check({"tests/ATest.py": sometimes, "tests/A.cpp": ""}, ["tests/A.cpp"])
        self.assertEqual(code, 0, output)

    def test_a_build_that_compiles_nothing_is_refused(self):
        code, _ = check({}, [])
        self.assertEqual(code, 1)


if __name__ == "__main__":
    unittest.main()
