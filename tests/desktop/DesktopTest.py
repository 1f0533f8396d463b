"""What the tests of this folder share: status items and ovin-items as real processes of the private desktop around them.

Started with the paths of ovin-items and status-item; further arguments go to unittest.
"""

import json
import os
import re
import signal
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "desktop"))
from PrivateDesktop import BOUND, becomes, pidOf  # noqa: E402

OVIN_ITEMS, STATUS_ITEM = map(os.path.abspath, sys.argv[1:3])


def setAccessibility(enabled):
    subprocess.run(["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus", "--method",
                    "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", f"<{str(enabled).lower()}>"],
                   check=True, stdout=subprocess.DEVNULL, timeout=BOUND)


def processOf(name):
    """The process that owns a name on the session bus; None while nobody does."""
    answer = subprocess.run(["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/", "--method",
                             "org.freedesktop.DBus.GetConnectionUnixProcessID", name],
                            capture_output=True, text=True, timeout=BOUND, check=False).stdout
    return int(answer.split()[1].rstrip(",)")) if answer else None


def isAlive(pid):
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
            return file.read().rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def ovinItems(*arguments, **environment):
    """Runs ovin-items to its end."""
    return subprocess.run([OVIN_ITEMS, *arguments], env=dict(os.environ, **environment), capture_output=True, text=True,
                          timeout=3 * BOUND, check=False)


class Item:
    """A status-item program. What it prints is in a file, so that it never waits for a reader."""

    def __init__(self, options):
        self.output = open(os.path.join(os.environ["OVIN_DESKTOP_DIR"], f"item-{time.monotonic_ns()}"), "w+b")
        self.process = subprocess.Popen([STATUS_ITEM, *options], stdin=subprocess.DEVNULL, stdout=self.output)
        self.pid = self.process.pid

    def lines(self):
        self.output.seek(0)
        return self.output.read().decode().splitlines()

    def events(self):
        """What has happened to the item since it registered, without the positions of clicks."""
        return [re.sub(r"( -?\d+){2}", "", line) for line in self.lines() if not line.startswith("registered")]

    def stop(self):
        os.kill(self.pid, signal.SIGSTOP)

    def end(self):
        self.process.kill()
        self.process.wait(BOUND)
        self.output.close()


class DesktopTestCase(unittest.TestCase):
    def setUp(self):
        setAccessibility(True)
        self.items = []
        self.addCleanup(self.endItems)

    def endItems(self):
        for item in self.items:
            item.end()
        self.assertTrue(becomes(lambda: self.find() == []), "items of programs that have ended are found")

    def startItem(self, *options):
        self.items.append(Item(options))
        return self.items[-1]

    def startItems(self, titles, *options):
        return [self.startItem("--title", title, *options) for title in titles]

    def awaitRegistrations(self, count=1):
        registered = lambda item: sum(line.startswith("registered") for line in item.lines()) >= count
        self.assertTrue(becomes(lambda: all(map(registered, self.items))), "items do not register")

    def find(self, **environment):
        """What discovery finds."""
        result = ovinItems("--json", **environment)
        self.assertEqual(result.returncode, 0, result.stderr)
        return json.loads(result.stdout)

    def titles(self):
        return [item["title"] for item in self.find()]

    def assertFinds(self, titles):
        """Waits until exactly these items are found, in this order."""
        if not becomes(lambda: self.titles() == titles):
            self.assertEqual(self.titles(), titles)

    def numberOf(self, title):
        found = []
        self.assertTrue(becomes(lambda: found.append(self.titles()) or title in found[-1]), title)
        return found[-1].index(title) + 1

    def discoveryLog(self):
        """The lines that discovery writes to the log for a developer."""
        return ovinItems("--json", OVIN_DEBUG="1", OVIN_DEBUG_FRAMES="1").stderr.splitlines()

    def scannedCount(self):
        """How many items discovery has found, drawn ones included."""
        return int(next(re.search(r"discovery: (\d+) items from", line)[1] for line in self.discoveryLog() if "items from" in line))

    def findAndTime(self):
        """What discovery finds, and how many seconds that took by its own account."""
        result = ovinItems("--json", OVIN_DEBUG="1")
        self.assertEqual(result.returncode, 0, result.stderr)
        return json.loads(result.stdout), float(re.search(r"undrawn items, ([\d.]+)s", result.stderr)[1])

    def duration(self):
        """The shortest that discovery takes; other work of the machine lengthens most."""
        return min(self.findAndTime()[1] for _ in range(3))


def main():
    unittest.main(module="__main__", argv=[sys.argv[0], *sys.argv[3:]], verbosity=1)
