"""The workflows call what there is: presets and scripts of the project. That they run is for their machines to show."""

import glob
import json
import os
import re
import subprocess
import sys
import unittest

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
CALLS = {"configurePresets": r"\bcmake --preset (\S+)", "buildPresets": r"\bcmake --build --preset (\S+)",
         "testPresets": r"\bctest --preset (\S+)"}


def text_of(*path):
    with open(os.path.join(TOP, *path), encoding="utf-8") as file:
        return file.read()


def tests_of_this_build(*options):
    done = subprocess.run(["ctest", "--test-dir", BUILD, "-N", *options], check=True, capture_output=True, text=True)
    return re.findall(r"Test +#\d+: (.*)", done.stdout)


class Workflows(unittest.TestCase):
    def setUp(self):
        self.texts = {os.path.basename(path): text_of(path) for path in glob.glob(f"{TOP}/.github/workflows/*.yml")}
        self.assertEqual(sorted(self.texts), ["linux.yml", "macos.yml"])

    def test_every_preset_that_they_call_is_there(self):
        presets = json.loads(text_of("CMakePresets.json"))
        for kind, call in CALLS.items():
            called = [name for text in self.texts.values() for name in re.findall(call, text)]
            self.assertTrue(called, kind)
            self.assertLessEqual(set(called), {preset["name"] for preset in presets[kind] if not preset.get("hidden")})

    def test_every_script_that_they_run_is_there(self):
        run = r"run: ((?:packaging|tools|\.ci)/[\w./]+)"
        scripts = [path for text in self.texts.values() for path in re.findall(run, text)]
        self.assertEqual(sorted(scripts), [".ci/run", "packaging/macos/make_disk_image"])
        for path in scripts:
            self.assertTrue(os.access(os.path.join(TOP, path), os.X_OK), path)

    def test_the_contracts_of_a_mac_are_told_from_the_others_by_their_names(self):
        """Every world's are called alike, so those of the world in memory show whether a pattern finds them all."""
        expected = [name for name in tests_of_this_build() if "/Memory" in name]
        self.assertGreater(len(expected), 100)
        patterns = re.findall(r"--(?:tests|exclude)-regex '([^']*)'", self.texts["macos.yml"])
        self.assertEqual(len(patterns), 2)
        for pattern in patterns:
            self.assertEqual(tests_of_this_build("-R", pattern.replace("Mac", "Memory")), expected)


if __name__ == "__main__":
    BUILD = sys.argv.pop(1)
    unittest.main()
