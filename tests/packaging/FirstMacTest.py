"""tools/first_mac on a Mac that is a stand-in: what it says of each row, and that it leaves nothing behind."""

import concurrent.futures
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import first_mac_tools

HERE = os.path.dirname(os.path.abspath(__file__))
TOP = os.path.dirname(os.path.dirname(HERE))
STAND_IN = os.path.join(HERE, "first_mac_tools.py")
FIRST = {"mode": 1, "owed": False, "widest": 2560, "dark": False, "settings": {}, "login": False, "guides": 0, "front": 5,
         "asked": False, "allowed": {"trusted": True, "events": True, "pictures": True}, "ovin": {}, "items": {}}
PATIENT, IMPATIENT = "20", "1.5"


class StandIn:
    """A Mac of its own, with a copy of the project's files that the kit needs."""

    def __init__(self, folder, **state):
        self.folder = folder
        os.makedirs(self.path("tmp"))
        os.mkdir(self.path("tools"))
        for name in [*first_mac_tools.PROGRAMS, *first_mac_tools.TOOLS]:
            os.symlink(STAND_IN, self.path("tools", name))
        for name in ("tools/first_mac", "tools/mac_kit", "docs/macos.md", "packaging/macos"):
            copy = shutil.copytree if os.path.isdir(os.path.join(TOP, name)) else shutil.copy
            os.makedirs(os.path.dirname(self.path("project", name)), exist_ok=True)
            copy(os.path.join(TOP, name), self.path("project", name))
        self.write_state({**FIRST, **state})

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def write_state(self, state):
        with open(self.path("state"), "w", encoding="utf-8") as file:
            json.dump(state, file)

    def state(self):
        with open(self.path("state"), encoding="utf-8") as file:
            return json.load(file)

    def start(self, *arguments, fault="", patience=PATIENT):
        environment = {**os.environ, "MAC_STATE": self.path("state"), "MAC_FAULT": fault, "TMPDIR": self.path("tmp"),
                       "PATH": self.path("tools") + os.pathsep + os.environ["PATH"]}
        return subprocess.Popen([sys.executable, "-B", self.path("project", "tools", "first_mac"), "--patience", patience,
                                 *arguments], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True)

    def run(self, *arguments, **more):
        process = self.start(*arguments, **more)
        output = process.communicate(timeout=240)[0]
        return process.returncode, output

    def page(self):
        with open(self.path("project", "build", "first-mac", "page.md"), encoding="utf-8") as file:
            return file.read()

    def commands(self):
        with open(self.path("project", "build", "first-mac", "commands.log"), encoding="utf-8") as file:
            return file.read()

    def results(self):
        """Of each row its result and what was seen."""
        found = re.findall(r"^\| `([a-z-]+)` \| .+? \| (?:\*\*)?(passed|failed|not tried)(?:\*\*)? \| (.*) \|$", self.page(),
                           re.MULTILINE)
        return {name: (result, seen) for name, result, seen in found}

    def programs(self):
        """Those that still run, of whichever kind."""
        state = self.state()
        return [pid for pid in [*state["ovin"], *state["items"]] if first_mac_tools.is_alive(pid)]

    def leftovers(self):
        state = self.state()
        changed = {name: state[name] for name in ("mode", "dark", "settings", "login") if state[name] != FIRST[name]}
        return [*changed.items(), *self.programs(), *os.listdir(self.path("tmp"))]


def rows():
    with open(os.path.join(TOP, "docs", "macos.md"), encoding="utf-8") as file:
        return re.findall(r"^\| `([a-z-]+)` \|", file.read(), re.MULTILINE)


class FirstMac(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="ovin-first-mac-test-")
        self.addCleanup(folder.cleanup)
        self.folder = os.path.realpath(folder.name)

    def mac(self, name="mac", **state):
        return StandIn(os.path.join(self.folder, name), **state)

    def wait(self, condition):
        end = time.monotonic() + 30
        while not condition():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.05)

    def testWhereEverythingHoldsEveryRowPasses(self):
        mac = self.mac()
        code, output = mac.run()
        self.assertEqual({name: seen for name, seen in mac.results().items() if seen[0] != "passed"}, {}, output)
        self.assertEqual(list(mac.results()), rows())
        self.assertEqual(code, 0)
        self.assertIn(f"{len(rows())} passed, 0 failed, 0 not tried.", mac.page())
        self.assertIn("0.0, a stand-in", mac.page())
        pictures = re.findall(r"!\[(.+?)\]", mac.page())
        self.assertEqual(len(pictures), 8)
        for name in pictures:
            self.assertTrue(os.path.exists(mac.path("project", "build", "first-mac", name)))
        self.assertEqual(mac.leftovers(), [])
        self.checkPresets(mac)
        self.assertLess(mac.commands().index("$ osascript"), mac.commands().index("$ lipo"))  # Asks before rows are tried.

    def checkPresets(self, mac):
        """Those that the kit has called are there."""
        calls = re.findall(r"^\$ (cmake|cmake --build|ctest) --preset (\S+)", mac.commands(), re.MULTILINE)
        with open(os.path.join(TOP, "CMakePresets.json"), encoding="utf-8") as file:
            presets = json.load(file)
        kinds = {"cmake": "configurePresets", "cmake --build": "buildPresets", "ctest": "testPresets"}
        self.assertEqual({command for command, _ in calls}, set(kinds))
        for command, name in calls:
            self.assertIn(name, [preset["name"] for preset in presets[kinds[command]]])

    def testEachRowFailsWhereItsMacDoes(self):
        def fail(row):
            mac = self.mac(row)
            code, output = mac.run("--only", row, fault=row, patience=IMPATIENT)
            return row, code, mac.results(), output, mac.leftovers()

        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            for row, code, results, output, leftovers in pool.map(fail, rows()):
                with self.subTest(row=row):
                    self.assertEqual(results[row][0], "failed", output)
                    self.assertEqual([name for name in results if results[name][0] == "failed"], [row])
                    self.assertEqual(code, 1)
                    settings = {first_mac_tools.IDENTIFIER: {"OvinHasShownGuide": "true"}}
                    self.assertEqual(leftovers, [("settings", settings)] if row == "left-behind" else [])

    def testWhatIsLeftBehindIsSeen(self):
        for fault, row, seen in (("items left", "launches", "programs with items"),
                                 ("appearance left", "appearance", "another one"),
                                 ("login item left", "login-item", "login item")):
            with self.subTest(fault=fault):
                mac = self.mac(row)
                mac.run("--only", row, "left-behind", fault=fault, patience=IMPATIENT)
                self.assertEqual(mac.results()["left-behind"][0], "failed")
                self.assertIn(seen, mac.results()["left-behind"][1])

    def testAWindowThatTheScreenCutsOffFails(self):
        for row in ("guide", "card"):
            with self.subTest(row=row):
                mac = self.mac(row)
                self.assertEqual(mac.run("--only", row, fault=f"{row} below the screen")[0], 1)
                self.assertIn("not all on the display", mac.results()[row][1])

    def testWithoutABuildNothingElseIsTried(self):
        mac = self.mac()
        self.assertEqual(mac.run(fault="build")[0], 1)
        results = mac.results()
        self.assertIn(r"ninja: build stopped: \<private> \*", results.pop("build")[1])
        self.assertEqual(set(results.values()), {("not tried", "It was not built.")})

    def testWithoutPermissionsRowsAreNotTriedAndNothingFails(self):
        for missing, name, row in (("trusted", "Accessibility", "item"), ("events", "clicks", "menu"),
                                   ("pictures", "screen recording", "appearance")):
            with self.subTest(missing=missing):
                mac = self.mac(missing, allowed={**FIRST["allowed"], missing: False})
                code, output = mac.run("--only", row, "bundle")
                self.assertEqual(mac.results()["bundle"][0], "passed", output)
                self.assertEqual(mac.results()[row][0], "not tried")
                self.assertIn(name, mac.results()[row][1])
                self.assertTrue(mac.state()["asked"])
                self.assertEqual(code, 0)
                self.assertEqual(mac.run("--only", row, "--expect", missing)[0], 1)
                self.assertEqual(mac.results()[row][0], "failed")
                self.assertIn(name, mac.results()[row][1])

    def testAnExpectedPermissionThatOvinDoesNotGetFails(self):
        mac = self.mac()
        code, _ = mac.run("--only", "item", "--expect", "trusted", fault=first_mac_tools.NO_TRUST, patience=IMPATIENT)
        self.assertEqual(code, 1)
        self.assertEqual(mac.results()["item"][0], "failed")
        self.assertIn("Ovin may not", mac.results()["item"][1])

    def testWhatThisMacCannotShowIsNotTried(self):
        for fault, row, reason in (("no scripts", "appearance", "Apple events"), ("no log", "log", "cannot be read"),
                                   ("", "constraints", "No other row"),
                                   (first_mac_tools.NO_TRUST, "item", "Ovin may not"),
                                   (first_mac_tools.NO_TRUST, "launches", "Ovin may not")):
            with self.subTest(row=row):
                mac = self.mac(row)
                self.assertEqual(mac.run("--only", row, fault=fault, patience=IMPATIENT)[0], 0)
                self.assertEqual(mac.results()[row][0], "not tried")
                self.assertIn(reason, mac.results()[row][1])
        mac = self.mac("no log")
        self.assertEqual(mac.run("--only", "about", "constraints", fault="no log")[0], 0)
        self.assertIn("cannot be read", mac.results()["constraints"][1])
        mac = self.mac(widest=1440)
        self.assertEqual(mac.run("--only", "organize")[0], 0)
        self.assertIn("wider than its 1440 points", mac.results()["organize"][1])

    def testAMessageAboutConstraintsInOvinsOwnLogFails(self):
        mac = self.mac()
        code, _ = mac.run("--only", "about", "constraints", fault="constraints in Ovin's own log")
        self.assertEqual(code, 1)
        self.assertEqual(mac.results()["about"][0], "passed")
        self.assertEqual(mac.results()["constraints"], ("failed", "Unable to simultaneously satisfy constraints."))

    def testAMessageAboutConstraintsInTheSystemsLogOfTestsFails(self):
        for name in ("macos_tests", "mac_contract_tests"):
            with self.subTest(name=name):
                mac = self.mac(name)
                mac.run("--only", "constraints", fault=f"constraints in {name}")
                self.assertEqual(mac.results()["constraints"][0], "failed")

    def testWhoeverKillsTheKitFindsEverythingAsItWas(self):
        for number in (signal.SIGKILL, signal.SIGTERM, signal.SIGINT):
            with self.subTest(number=number):
                mac = self.mac(number.name)
                kit = mac.start("--only", "organize", fault="organize")  # Waits for the display to be put back.
                self.wait(lambda mac=mac: mac.state()["mode"] == 2)
                kit.send_signal(number)
                kit.communicate(timeout=60)
                self.assertNotEqual(kit.returncode, 0)
                self.wait(lambda mac=mac: not mac.leftovers())

    def testTheAppearanceIsPutBackToo(self):
        mac = self.mac()
        kit = mac.start("--only", "appearance")
        self.wait(lambda: mac.state()["dark"])
        kit.kill()
        kit.communicate(timeout=60)
        self.wait(lambda: not mac.leftovers())

    def testRowsAndProbesAreTheSame(self):
        for before, after in (("| `menu` |", "| `unheard-of` |"), ("| `menu` |", "| menu |")):
            with self.subTest(after=after):
                mac = self.mac(after.strip("| `"))
                page = mac.path("project", "docs", "macos.md")
                with open(page, encoding="utf-8") as file:
                    text = file.read()
                with open(page, "w", encoding="utf-8") as file:
                    file.write(text.replace(before, after))
                code, output = mac.run("--only", "bundle")
                self.assertEqual(code, 2)
                self.assertIn("'menu'", output)
        code, output = self.mac().run("--only", "no-such-row")
        self.assertEqual(code, 2)
        self.assertIn("no-such-row", output)


if __name__ == "__main__":
    unittest.main()
