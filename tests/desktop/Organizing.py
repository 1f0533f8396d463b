"""What the tests of organizing share: Ovin beside a bar that has no room for all items, the settings, the display's mode.

Started with the paths of ovin-items, status-item and ovin.
"""

import os
import re
import subprocess
import time

from OvinTest import (BOUND, GUIDE_WAS_SHOWN, OVIN, SETTINGS, ApplicationTestCase, Atspi, GLib, Item, accessible,
                      askForOwnMenu, awaited, becomes, children, click, descendant, entryNamed, geometry, middle, placeOf,
                      readSettings, run, setAccessibility, writeSettings)

USUAL = "1440x900"
COUNT = 56
MODE_KEY, DISPLAY_KEY = "OvinOriginalDisplayModeID", "OvinOriginalDisplayID"
SERVER_KEY = "OvinOriginalDisplayServer"
ORDER = os.path.join(os.path.dirname(SETTINGS), "menu-bar-order")  # the bar's own
ORGANIZE = "Organize Menu Bar…"
TITLE = "Organize your menu bar"
REFUSED = "The resolution could not be changed. Nothing was altered."


def place(output="DUMMY0"):
    """WIDTHxHEIGHT+X+Y of an output; None while it is off."""
    found = re.search(rf"^{output} connected (?:primary )?(\d+x\d+\+\d+\+\d+)", run("xrandr").stdout, re.M)
    return found and found[1]


def mode(output="DUMMY0"):
    found = place(output)
    return found and found.split("+")[0]


def width(output="DUMMY0"):
    found = mode(output)
    return int(found.split("x")[0]) if found else 0


def show(output, *options):
    subprocess.run(["xrandr", "--output", output, *options], check=True, timeout=30)


def readDefaults():
    """Each value with the letter of its type, as in "i 94", by its key."""
    return {key: f"{kind} {value}" for key, kind, value in (line.split("\t") for line in readSettings())}


def isOnRecord():
    return MODE_KEY in readDefaults()


def slots():
    """The items in the bar, drawn or not, from left to right: (x, name, accessible)."""
    found = []

    def collect(element):
        for child in children(element):
            # The bar's own expander is no item, and describes none.
            if child.get_role() == Atspi.Role.PUSH_BUTTON and child.get_description():
                found.append((child.get_extents(Atspi.CoordType.SCREEN).x, child.get_name(), child))
            collect(child)

    bar = accessible("MenuBarAgent")
    try:
        if bar is not None:
            collect(bar)
    except GLib.Error:
        return []  # items came or went meanwhile
    return sorted(found, key=lambda slot: slot[0])


def drawn():
    """The names of the items that have a place of their own, from left to right."""
    found = slots()
    places = [x for x, _, _ in found]
    return [name for x, name, _ in found if places.count(x) == 1]


def clickOn(element, button=1):
    click(*middle(element), button)


def dragWithSuper(element, target):
    x, y = middle(element)
    area = target.get_extents(Atspi.CoordType.SCREEN)
    run("xdotool", "mousemove", str(x), str(y), "keydown", "super", "mousedown", "1")
    for step in range(1, 9):
        run("xdotool", "mousemove", str(int(x + (area.x + area.width * 0.75 - x) * step / 8)), str(y))
        time.sleep(0.03)
    run("xdotool", "mouseup", "1", "keyup", "super")


class OrganizeTestCase(ApplicationTestCase):
    """Ovin's item has a place at the clock, which the bar remembers, and others fill the bar."""

    slotCount = COUNT + 1

    @classmethod
    def setUpClass(cls):
        setAccessibility(True)
        writeSettings(GUIDE_WAS_SHOWN)
        ovin = subprocess.Popen([OVIN])
        try:
            if not becomes(lambda: accessible("MenuBarAgent", "Ovin")):
                raise AssertionError("the bar does not show Ovin's item")
            cls.startCrowd()
            cls.letTheBarRemember()
        finally:
            ovin.terminate()
            ovin.wait(30)

    @classmethod
    def letTheBarRemember(cls):
        """Moves an item, because the bar keeps its order only after that. Otherwise a restarted Ovin would be the newest
        item, for which there is no room."""
        def drag():
            last = slots()[-3:]
            dragWithSuper(last[0][2], last[1][2])
            return becomes(lambda: os.path.exists(ORDER), 3)

        if not becomes(drag):
            raise AssertionError("the bar does not remember the order of its items")

    @classmethod
    def startCrowd(cls):
        cls.crowd = Item(["--items", str(COUNT), *sum((["--title", f"Item {number:02}"] for number in range(COUNT)), [])])
        if not becomes(lambda: len(slots()) == cls.slotCount):
            raise AssertionError(f"{len(slots())} items in the bar")

    @classmethod
    def tearDownClass(cls):
        cls.crowd.end()

    def setUp(self):
        super().setUp()
        self.resetDisplays()
        self.addCleanup(self.resetDisplays)

    def resetDisplays(self):
        show("DUMMY0", "--mode", USUAL, "--pos", "0x0", "--primary")
        show("DUMMY1", "--off")

    def own(self, name):
        """The element of Ovin's with that name."""
        return accessible("Ovin", name)

    def startInCrowd(self, **environment):
        """Starts Ovin and waits until the bar shows its item, and some others have no room."""
        process = self.startOvin(**environment)
        self.assertTrue(becomes(lambda: len(slots()) == self.slotCount), f"{len(slots())} items")
        self.assertTrue(becomes(lambda: "Ovin" in drawn()), drawn())
        return process

    def awaitGone(self):
        """Until the bar has forgotten Ovin's item: a new one takes its place only then."""
        self.assertTrue(becomes(lambda: len(slots()) == self.slotCount - 1), "the bar still has Ovin's item")

    def done(self):
        """The card's button; the guide has one of this name too."""
        card = self.own(TITLE)
        return card and descendant(card, "Done")

    def clickDone(self):
        """Clicks on the card's button until the card goes: its warning may just then move the button away, and a
        person aims again. A click that has hit the button has to be enough."""
        def isGone():
            return not run("xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}$").stdout

        def hits():
            aim = placeOf(self.done)
            if aim is None:
                return isGone()
            click(*aim)
            self.assertTrue(becomes(lambda: isGone() or placeOf(self.done) not in (aim, None)), "nothing comes of the click")
            return isGone()

        self.assertTrue(becomes(hits), "the button cannot be clicked")

    def pressDone(self):
        """As assistive programs do: where the screen has shrunk meanwhile, the button need not be on it any more."""
        self.done().do_action(0)

    def choose(self, entry):
        def opens():
            if "Ovin" in drawn() or "Done organizing" in drawn():
                askForOwnMenu(*awaited(self.slot))
            # The next click would close the menu again, so the menu has to be seen before that, however slowly it is looked
            # at.
            return awaited(lambda: entryNamed(entry), BOUND / 3)

        found = awaited(opens)
        if found is None:
            windows = run("xdotool", "search", "--onlyvisible", "--class", "ovin").stdout.split()
            programs = [program.get_name() for program in children(Atspi.get_desktop(0))]
            self.fail(f"there is no entry {entry}; drawn are {drawn()}, Ovin's windows {list(map(geometry, windows))}, programs "
                      f"that can be looked at {programs}")
        clickOn(found)

    def awaitCard(self):
        self.assertTrue(becomes(lambda: self.own(TITLE)), "no card comes")

    def organize(self):
        self.choose(ORGANIZE)
        self.awaitCard()
        self.assertGreater(width(), 1440)
        self.assertTrue(isOnRecord())

    def organizing(self):
        """Starts Ovin and organizes."""
        process = self.startInCrowd()
        self.organize()
        return process

    def assertPutBack(self):
        self.assertTrue(becomes(lambda: mode() == USUAL and not isOnRecord()), (mode(), readDefaults()))
        self.assertTrue(becomes(lambda: self.own(TITLE) is None), "the card stays")
