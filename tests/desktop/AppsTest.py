"""Programs of others, as tools/packages-apps names them: discovery finds the items of all, and a press reaches one.
Runs with the bar at a size that leaves no room for any item.

Their items have to be registered while a menu bar is there, because some never register late.
"""

import json
import os
import signal
import subprocess
import time
import unittest

from DesktopTest import BOUND, becomes, isAlive, main, ovinItems, pidOf, setAccessibility

# Their commands, and their names in their desktop entries.
PROGRAMS = {"copyq": "CopyQ", "flameshot": "Flameshot", "qbittorrent": "qBittorrent", "pasystray": "PulseAudio System Tray",
            "psensor": "Psensor"}
STARTING = 60.0  # seconds, on a machine that has other things to do


def found():
    result = ovinItems("--json")
    return [item["application"] for item in json.loads(result.stdout)] if result.returncode == 0 else None


def show(mode):
    subprocess.run(["xrandr", "--output", "DUMMY0", "--mode", mode], check=True, timeout=BOUND)


class ProgramsOfOthers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        setAccessibility(True)
        folder = os.path.join(os.environ["XDG_CONFIG_HOME"], "qBittorrent")
        os.makedirs(folder)
        with open(os.path.join(folder, "qBittorrent.conf"), "w", encoding="utf-8") as file:
            file.write("[LegalNotice]\nAccepted=true\n")  # it asks otherwise, before it does anything else
        with open(os.path.join(os.environ["OVIN_DESKTOP_DIR"], "logs", "programs"), "wb") as log:
            cls.programs = [subprocess.Popen([name], stdout=log, stderr=log) for name in PROGRAMS]

    @classmethod
    def tearDownClass(cls):
        for program in cls.programs:
            program.kill()
            program.wait(BOUND)

    def assertFindsAll(self):
        names = sorted(PROGRAMS.values(), key=str.lower)
        self.assertTrue(becomes(lambda: found() == names, STARTING), found())

    # The names of the methods are in the order in which they run.

    def test1TheirItemsAreFoundWhereTheBarHasNoRoom(self):
        self.assertFindsAll()
        time.sleep(1)  # one of them takes its item back and registers it again
        self.assertFindsAll()

    def test2NoneIsFoundWhereTheBarDrawsAll(self):
        show("1440x900")
        self.assertTrue(becomes(lambda: found() == []), found())

    def test3AllAreFoundWithoutABar(self):
        agent = pidOf("menu bar agent")
        os.kill(agent, signal.SIGKILL)
        self.assertTrue(becomes(lambda: not isAlive(agent)))
        self.assertFindsAll()

    def test4APressOpensTheWindow(self):
        window = lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "copyq"], capture_output=True,
                                        timeout=BOUND, check=False).stdout
        self.assertEqual(window(), b"")
        self.assertEqual(ovinItems("--press", str(found().index("CopyQ") + 1)).returncode, 0)
        self.assertTrue(becomes(window), "the program does not show its window")


if __name__ == "__main__":
    main()
