"""What the measurements of the whole program share: Ovin and status items as real processes of a private desktop."""

import os
import re
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "desktop"))
from PrivateDesktop import becomes, registered  # noqa: E402

BOUND = 60.0  # seconds; reached only by what is broken
COLOUR = "c01090"
DISCOVERY = re.compile(r"discovery: (\d+) undrawn items")
LATENCY = re.compile(r"^\d+\.\d+$")


# An assistive program that listens makes all programs tell it what they show, so this one ends before anything is measured.
FIND_SLOT = """
import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

def below(element):
    yield element
    for index in range(element.get_child_count()):
        child = element.get_child_at_index(index)
        if child is not None:
            yield from below(child)

desktop = Atspi.get_desktop(0)
for program in (desktop.get_child_at_index(index) for index in range(desktop.get_child_count())):
    if program is None or program.get_name() != "MenuBarAgent":
        continue
    for element in below(program):
        place = element.get_extents(Atspi.CoordType.SCREEN)
        if element.get_name() == "Ovin" and place.width > 0:
            print(place.x + place.width // 2, place.y + place.height // 2)
            raise SystemExit
"""


def slot():
    """The middle of Ovin's place in the menu bar; None while it has none."""
    result = subprocess.run(["/usr/bin/python3", "-c", FIND_SLOT], capture_output=True, text=True, check=False, timeout=BOUND)
    return tuple(map(int, result.stdout.split())) or None


class Session:
    """Ovin with a log of its discoveries, and items that it has no room for."""

    def __init__(self, ovin, statusItem):
        if "OVIN_DESKTOP_PIDS" not in os.environ:
            sys.exit("to be run within desktop/private-desktop")
        self.statusItem = statusItem
        self.items = []
        self.log = open(os.path.join(os.environ["OVIN_DESKTOP_DIR"], "ovin-log"), "w+", encoding="utf-8")
        # First, so that the bar has room for it: the newest items are left out.
        self.ovin = subprocess.Popen([ovin], stderr=self.log, env=dict(os.environ, OVIN_DEBUG="1"))
        self.place = None

        def isShown():
            self.place = slot()
            return self.place is not None

        if not becomes(isShown, BOUND):
            sys.exit("the bar does not show Ovin's item")

    def discoveries(self):
        """The number of undrawn items that each discovery has found."""
        self.log.seek(0)
        return [int(count) for count in DISCOVERY.findall(self.log.read())]

    def startItems(self, count):
        """Starts so many programs more with an item each."""
        reader, writer = os.pipe()
        first = len(self.items) + 1
        for number in range(first, first + count):
            self.items.append(subprocess.Popen(
                [self.statusItem, "--name", f"App {number:03}", "--title", f"Item {number:03}", "--pixmap", "#" + COLOUR,
                 "--menu", "Alpha,Beta", "--item-is-menu", "false", "--ready-fd", str(writer)],
                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, pass_fds=[writer]))
        os.close(writer)
        if registered(reader, count, BOUND) < count:
            sys.exit("the items do not register")
        os.close(reader)

    def showUndrawn(self, count):
        """Starts items until Ovin's own list has so many."""
        missing = count
        while missing > 0:
            before = len(self.discoveries())
            self.startItems(missing)
            if not becomes(lambda: len(self.discoveries()) > before, BOUND):
                sys.exit("Ovin discovers nothing")
            time.sleep(3)  # any discovery that was to follow has
            missing = count - self.discoveries()[-1]

    def click(self, probe, clicks, hold=0, pause=0, colour=COLOUR):
        """The times, in milliseconds, of a series of openings, and the number of clicks that nothing followed."""
        result = subprocess.run([probe, *map(str, self.place), colour, str(clicks), str(hold), str(pause)],
                                capture_output=True, text=True, check=False)
        if result.returncode != 0:
            sys.exit(result.stderr or "the probe fails")
        lines = result.stdout.split()
        return sorted(float(line) for line in lines if LATENCY.match(line)), lines.count("lost")

    def clickOnly(self, probe, clicks, hold=0, pause=0):
        subprocess.run([probe, *map(str, self.place), "rapid", str(clicks), str(hold), str(pause)], check=True)

    @staticmethod
    def closeByOthers():
        """A press outside, and long enough after it for a click on the item to be another one."""
        subprocess.run(["xdotool", "mousemove", "300", "500", "click", "1"], check=True)
        time.sleep(1)

    def endItems(self):
        for process in self.items:
            process.kill()
        for process in self.items:
            process.wait()
        self.items = []

    def end(self):
        self.ovin.kill()
        self.ovin.wait()
        self.endItems()
