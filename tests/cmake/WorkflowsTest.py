"""The workflows call what there is: presets and scripts of the project. That they run is for their machines to show."""

import glob
import json
import os
import re
import unittest

TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
CALLS = {"configurePresets": r"\bcmake --preset (\S+)", "buildPresets": r"\bcmake --build --preset (\S+)"}


def text_of(*path):
    with open(os.path.join(TOP, *path), encoding="utf-8") as file:
        return file.read()


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
        self.assertEqual(sorted(scripts), [".ci/run", "packaging/macos/make_disk_image", "tools/first_mac"])
        for path in scripts:
            self.assertTrue(os.access(os.path.join(TOP, path), os.X_OK), path)


if __name__ == "__main__":
    unittest.main()
