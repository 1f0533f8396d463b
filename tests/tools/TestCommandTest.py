"""The options of ./test. What it does without any is seen each time that it runs."""

import os
import subprocess
import tempfile
import unittest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")


def run(*arguments):
    with tempfile.TemporaryDirectory() as elsewhere:
        return subprocess.run([os.path.realpath(os.path.join(ROOT, "test")), *arguments], cwd=elsewhere,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)


class TestCommand(unittest.TestCase):
    def test_help_is_given_and_nothing_is_run(self):
        result = run("--help")
        self.assertEqual(result.returncode, 0)
        self.assertTrue(result.stdout.startswith("Usage: ./test"), result.stdout)
        for option in ("--with-apps", "--with-desktops"):
            self.assertIn(option, result.stdout)
        self.assertNotIn("Packages ...", result.stdout)

    def test_an_unknown_option_is_refused_and_nothing_is_run(self):
        result = run("--all", "--bogus")
        self.assertEqual(result.returncode, 2)
        self.assertIn("unknown option: --bogus", result.stderr)
        self.assertEqual(result.stdout, "")

    def test_an_option_without_its_number_is_refused_and_nothing_is_run(self):
        for arguments in (["--soak"], ["--soak", "long"], ["--fuzz", "0"], ["--fuzz", "-1"]):
            result = run("--all", *arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertIn(arguments[0] + " needs a number", result.stderr)
            self.assertEqual(result.stdout, "")


if __name__ == "__main__":
    unittest.main()
