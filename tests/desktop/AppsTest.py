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

from DesktopTest import BOUND, OVIN_ITEMS, becomes, isAlive, main, ovinItems, pidOf, processOf, setAccessibility

# Their commands, and their names in their desktop entries.
PROGRAMS = {
    "copyq": "CopyQ",
    "diodon": "Diodon",
    "fcitx5": "Fcitx 5",
    "flameshot": "Flameshot",
    "keepassxc": "KeePassXC",
    "pasystray": "PulseAudio System Tray",
    "psensor": "Psensor",
    "qbittorrent": "qBittorrent",
    "qlipper": "Qlipper",
    "redshift-gtk -l 0:0 -m dummy": "Redshift",
    "remmina --icon": "remmina",  # its entry starts it by way of a script
    "solaar --window=hide": "Solaar",
    "transmission-gtk --minimized": "Transmission",
    "transmission-qt --minimized": "Transmission (Qt)",
    "xpad": "Xpad",
}
# What some of them want to be told before they show an item, as files of their own.
SETTINGS = {
    "keepassxc/keepassxc.ini": "[General]\nUpdateCheckMessageShown=true\n[GUI]\nShowTrayIcon=true\nCheckForUpdates=false\n",
    "qBittorrent/qBittorrent.conf": "[LegalNotice]\nAccepted=true\n",  # it asks otherwise, before it does anything else
    "transmission/settings.json": '{"show-notification-area-icon": true, "user-has-given-informed-consent": true}\n',
}
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
        for name, content in SETTINGS.items():
            path = os.path.join(os.environ["XDG_CONFIG_HOME"], name)
            os.makedirs(os.path.dirname(path))
            with open(path, "w", encoding="utf-8") as file:
                file.write(content)
        with open(os.path.join(os.environ["OVIN_DESKTOP_DIR"], "logs", "programs"), "wb") as log:
            cls.programs = [subprocess.Popen(command.split(), stdout=log, stderr=log) for command in PROGRAMS]

    @classmethod
    def tearDownClass(cls):
        for program in cls.programs:
            program.kill()
            program.wait(BOUND)

    def assertFindsAll(self):
        def findsAll():
            names = found() or []
            return len(names) == len(PROGRAMS) and set(PROGRAMS.values()) == set(names)

        self.assertTrue(becomes(findsAll, STARTING), found())

    # The names of the methods are in the order in which they run.

    def test1TheirItemsAreFoundWhereTheBarHasNoRoom(self):
        self.assertFindsAll()
        time.sleep(1)  # one of them takes its item back and registers it again
        self.assertFindsAll()

    def test2OneThatHidesIsFoundAloneWhereTheBarDrawsAll(self):
        show("1440x900")
        self.assertTrue(becomes(lambda: len(found() or PROGRAMS) == 1), found())  # without a device solaar has nothing to show

    def test3AllAreFoundWithoutABar(self):
        agent = pidOf("menu bar agent")
        os.kill(agent, signal.SIGKILL)
        self.assertTrue(becomes(lambda: not isAlive(agent)))
        # A watcher that stays, as Ovin does: some take longer to register than a look lasts.
        watcher = subprocess.Popen([OVIN_ITEMS, "--stay"], stdout=subprocess.DEVNULL)
        self.addClassCleanup(watcher.wait, BOUND)
        self.addClassCleanup(watcher.kill)
        # Otherwise the looks become the watcher in its place, one after the other, and each takes the items away with it.
        self.assertTrue(becomes(lambda: processOf("org.kde.StatusNotifierWatcher") == watcher.pid), "it is not the watcher")
        self.assertFindsAll()

    def test4APressOpensTheWindow(self):
        window = lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "copyq"], capture_output=True,
                                        timeout=BOUND, check=False).stdout
        self.assertEqual(window(), b"")
        self.assertEqual(ovinItems("--press", str(found().index("CopyQ") + 1)).returncode, 0)
        self.assertTrue(becomes(window), "the program does not show its window")


if __name__ == "__main__":
    main()
