"""Ovin on desktops that others wrote: as good a guest there as on the private desktop's own.

    DesktopsOfOthersTest.py OVIN_ITEMS STATUS_ITEM OVIN [--pictures FOLDER] [--dark] [DESKTOP...]

Starts each desktop on a private desktop of its own, two at a time, goes through the checks below under it and prints what
came of each. A desktop that cannot run here is skipped, which is said. Pictures and logs go to FOLDER.
"""

import argparse
import json
import os
import re
import signal
import subprocess
import sys
import time
import unittest
from concurrent.futures import ThreadPoolExecutor

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
UNDER = "--under"  # the option by which this program starts itself on a private desktop
DESKTOP_BOUND = 300  # seconds for all checks of a desktop

if UNDER in sys.argv:  # what is imported next takes the first three arguments only
    arguments = sys.argv
    sys.argv = arguments[:4]
    import OvinTest
    from OvinTest import (GUIDE_WAS_SHOWN, OVIN, Atspi, Item, accessible, awaited, buttonsOf, children, geometry,
                          heedSignals, middle, press, setAccessibility, windowsOf, writeSettings)
    sys.argv = arguments

import DesktopsOfOthers  # noqa: E402
from DesktopsOfOthers import (DESKTOPS, WATCHER, Unavailable, becomes, call, ownerPid, property_,  # noqa: E402
                              registeredItems, run)

# Faults that are known, as {check: (why, desktops)}. Such a check must fail: once it passes, it has to leave this list.
KNOWN = {
    "testAClickOpensTheLedgeAtTheBar": ("in a session of KWin for Wayland a click reaches nothing in the panel's right third; why is not "
                                        "known", "kwin"),
    "testItHandsOverToABarThatStartsLater": ("its service asks for the list of items once, a millisecond after it connects",
                                             "mate-indicators"),
}
ITEM = "org.kde.StatusNotifierItem"
COLOURS = ("#c01090", "#10b0c0", "#60c010")
PATIENCE = 10.0  # seconds for what is to come
BRIEF = 3.0  # … where it is known not to come
LONGEST_GRACE = 60.0  # seconds for which Ovin leaves the list of items to a program that has given it up
STILL = 0.5  # seconds in which what must not happen would

desktop = None
pictures = ""


def knownFault(check):
    """Why a check fails under this desktop as far as is known; None where it ought to pass."""
    why, desktops = KNOWN.get(check, (None, ""))
    return why if desktop.name in desktops.split() else None


def under(condition):
    """Marks a check that makes sense on some desktops only."""
    def mark(check):
        check.condition = condition
        return check
    return mark


def channels(colour):
    return tuple(int(colour[at:at + 2], 16) for at in (1, 3, 5))


def contrast(one, other):
    """As accessibility guidelines define it, 1 to 21."""
    def luminance(colour):
        linear = [part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in (c / 255 for c in colour)]
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]
    dark, light = sorted((luminance(one), luminance(other)))
    return (light + 0.05) / (dark + 0.05)


def overlap(one, other):
    return (one[0] < other[0] + other[2] and other[0] < one[0] + one[2] and
            one[1] < other[1] + other[3] and other[1] < one[1] + one[3])


def textsOf(application):
    """All texts in a program's windows and menus; a ledge that has closed has its buttons still."""
    def below(element):
        for child in children(element):
            yield child.get_name()
            yield from below(child)

    try:
        element = accessible(application)
        return [text for text in below(element) if text] if element is not None else []
    except OvinTest.GLib.Error:
        return []


class Checks(unittest.TestCase):
    def setUp(self):
        self.patience = BRIEF if knownFault(self.id().rpartition(".")[2]) else PATIENCE
        setAccessibility(True)
        writeSettings(GUIDE_WAS_SHOWN)
        self.items = []
        self.programs = []
        self.addCleanup(self.endAll)
        desktop.point(300, 400)
        # Some bars take their time to forget items.
        if not desktop.isReady() or not self.becomes(self.isEmpty):
            self.assertTrue(desktop.restartBar(), "the desktop does not get ready again. " + desktop.describe())
            self.assertBecomes(self.isEmpty, lambda: f"the bar still has {registeredItems()}")

    def isEmpty(self):
        """Whether no item of an earlier check is there any more."""
        return not registeredItems() and not (desktop.drawsItems and desktop.hasPictures and
                                              any(desktop.shows(channels(colour)) for colour in COLOURS))

    def endAll(self):
        for program in self.programs:
            program.terminate()
        for item in self.items:
            item.end()
        for program in self.programs:
            try:
                program.wait(5)
            except subprocess.TimeoutExpired:
                program.kill()
                program.wait()

    def becomes(self, condition):
        return becomes(condition, self.patience)

    def assertBecomes(self, condition, message):
        if not self.becomes(condition):
            self.fail(message() if callable(message) else message)

    # Ovin and other programs with items

    def startOvin(self, *arguments, **environment):
        variables = {**os.environ, **desktop.clientEnvironment(), **environment}
        with open(os.path.join(DesktopsOfOthers.FOLDER, "logs", "ovin"), "ab") as log:
            program = subprocess.Popen([OVIN, *arguments], env={name: value for name, value in variables.items() if value},
                                       stdin=subprocess.DEVNULL, stderr=log, preexec_fn=heedSignals)
        self.programs.append(program)
        return program

    def command(self, *arguments):
        """Runs Ovin once more, to its end; its exit status."""
        program = self.startOvin(*arguments)
        try:
            return program.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            return None

    def startItem(self, status="Active"):
        number = len(self.items) + 1
        colour = COLOURS[number - 1]
        options = ["--name", f"App {number}", "--id", f"item-{number}", "--title", f"Item {number}", "--pixmap", colour,
                   "--menu", "Alpha,Beta", "--item-is-menu", "false", "--status", status]
        if desktop.wantsIconFiles:
            path = os.path.join(DesktopsOfOthers.FOLDER, f"icon-{number}.svg")
            with open(path, "w", encoding="utf-8") as file:
                file.write(f'<svg xmlns="http://www.w3.org/2000/svg" width="22" height="22"><rect width="22" height="22" '
                           f'fill="{colour}"/></svg>')
            options += ["--icon", path]
        item = Item(options)
        self.items.append(item)
        return item

    def startItems(self, *statuses):
        """Starts an item of each status and waits until they are registered, and drawn if they are Active."""
        for status in statuses:
            self.startItem(status)
        self.awaitItems(*statuses)

    def awaitItems(self, *statuses):
        for item in self.items:
            self.assertBecomes(lambda item=item: self.isRegistered(item.pid), "an item is not registered")
        if desktop.drawsItems and desktop.hasPictures:
            for status, colour in zip(statuses, COLOURS):
                if status == "Active":
                    self.assertBecomes(lambda colour=colour: desktop.shows(channels(colour)), lambda colour=colour: (
                        self.keepPicture("missing"), f"the bar does not draw {colour}; registered are {registeredItems()}")[1])

    def isRegistered(self, pid):
        return any(ownerPid(re.split("[@/]", address)[0]) == pid for address in registeredItems())

    def addressOf(self, pid):
        """The name and path of a program's item."""
        for address in registeredItems():
            name, path = re.match(r"([^@/]*)@?(/.*)?$", address).groups()
            if ownerPid(name) == pid:
                return name, path or "/StatusNotifierItem"
        return None

    def startWith(self, *statuses, **environment):
        """Starts an item of each status, and Ovin after them, or before where only Ovin keeps a list of items."""
        if desktop.watcher:
            self.startItems(*statuses)
            return self.startRegistered(**environment)
        ovin = self.startRegistered(**environment)
        self.startItems(*statuses)
        return ovin

    def startRegistered(self, **environment):
        ovin = self.startOvin(**environment)
        self.assertBecomes(lambda: self.isRegistered(ovin.pid), "Ovin's item is not registered")
        return ovin

    def startShown(self):
        """Starts Ovin; returns the program, and the area in which the bar draws its item."""
        if not desktop.hasPictures:
            x, y, width, height = desktop.barArea()
            return self.startRegistered(), (x + width - 60, y, 20, height)
        before = desktop.quietPicture()
        ovin = self.startRegistered()
        self.assertBecomes(lambda: before.difference(desktop.picture(), desktop.barArea()), "the bar does not draw Ovin's item")
        self.before, self.after = before, desktop.quietPicture()
        # Other icons may have made room for it.
        area, known = desktop.barArea(), before.icons(desktop.barArea())
        new = [place for points, place in self.after.icons(area).items() if points not in known]
        self.assertEqual(len(new), 1, f"there is not one new icon in the bar, but {new}")
        return ovin, new[0]

    # Its windows

    def ledge(self, ovin):
        """The area of the ledge; None while it is not open. Menus are higher, and windows have frames."""
        for window in windowsOf(ovin.pid):
            area = DesktopsOfOthers.areaOf(window)
            if area and 8 < area[3] < 100 and "Override Redirect State: yes" in run("xwininfo", "-id", window):
                return area
        return None

    def awaitLedge(self, ovin):
        self.assertBecomes(lambda: self.ledge(ovin), lambda: f"no ledge opens; Ovin shows {self.windowTitles(ovin)}")
        # While the list is still being read, a text says so.
        self.becomes(lambda: buttonsOf("Ovin") or "Loading…" not in textsOf("Ovin"))
        return self.ledge(ovin)

    def windowTitles(self, ovin):
        return [run("xdotool", "getwindowname", window).strip() for window in windowsOf(ovin.pid)]

    def openLedge(self, ovin):
        """As a second start does."""
        self.assertEqual(self.command(), 0)
        return self.awaitLedge(ovin)

    def listed(self):
        """The numbers of the items that the ledge lists."""
        names = [button.get_name() for button in buttonsOf("Ovin")]
        return sorted(int(found[1]) for found in (re.match(r"App (\d)", name) for name in names) if found)

    def assertLists(self, ovin, numbers):
        """That the ledge comes to list these items, also while it stays open."""
        self.openLedge(ovin)
        self.assertBecomes(lambda: self.listed() == numbers, lambda: f"the ledge lists {self.listed()}")

    def clickOnItem(self, ovin, area, count=1):
        x, y = area[0] + area[2] // 2, area[1] + area[3] // 2
        if count == 1 and not desktop.clickActivates:
            desktop.point(x, y)
            name, path = self.addressOf(ovin.pid)
            call(name, path, ITEM + ".Activate", OvinTest.GLib.Variant("(ii)", (x, y)))
        else:
            desktop.click(x, y, count=count)

    def keepPicture(self, kind):
        if desktop.hasPictures:
            desktop.picture().save(os.path.join(pictures, f"{desktop.name}-{kind}.png"))

    # The checks

    @under(lambda: desktop.drawsItems and desktop.hasPictures)
    def testTheBarShowsItsItem(self):
        ovin, area = self.startShown()
        self.assertLess(max(area[2:]), 50)
        ovin.terminate()
        self.assertBecomes(lambda: not self.before.difference(desktop.picture(), desktop.barArea()), "it stays after its end")

    @under(lambda: desktop.drawsItems and desktop.hasPictures)
    def testItsItemCanBeMadeOut(self):
        _, area = self.startShown()
        points = [pixel for _, row in self.before.rows(area) for pixel in row]
        background = max(set(points), key=points.count)
        isOrange = lambda colour: colour[0] - colour[2] > 60 and colour[0] > colour[1] > colour[2]
        drawn = {pixel for _, row in self.after.rows(area) for pixel in row if not isOrange(pixel)}
        best = max(contrast(pixel, background) for pixel in drawn)
        self.keepPicture("bar")
        self.assertGreaterEqual(best, 3, f"on {background}")

    @under(lambda: desktop.watcher)
    def testItHandsOverToABarThatStartsLater(self):
        desktop.endBar()
        self.assertBecomes(lambda: ownerPid(WATCHER) is None, "the bar does not end")
        ovin = self.startOvin()
        self.assertBecomes(lambda: ownerPid(WATCHER) == ovin.pid, "nobody keeps the list of items")
        for _ in range(2):
            self.startItem()
        for item in self.items:
            self.assertBecomes(lambda item=item: self.isRegistered(item.pid), "an item is not registered with Ovin")
        desktop.startBar()
        self.assertBecomes(desktop.isReady, lambda: "the bar does not get ready. " + desktop.describe())
        self.awaitItems("Active", "Active")
        self.assertBecomes(lambda: self.isRegistered(ovin.pid), "Ovin's item is not registered")
        ovin.terminate()
        self.assertEqual(ovin.wait(PATIENCE), 0)
        time.sleep(STILL)
        self.assertTrue(desktop.watcherIsItsOwn(), "after Ovin's end the bar has lost its list")
        self.awaitItems("Active", "Active")

    @under(lambda: desktop.drawsItems)
    def testItsEndLeavesAllOtherItemsInTheBar(self):
        ovin = self.startWith("Active")
        self.startItems("Active", "Active")
        ovin.terminate()
        self.assertEqual(ovin.wait(PATIENCE), 0)
        time.sleep(STILL)
        self.assertTrue(desktop.watcherIsItsOwn())
        self.awaitItems("Active", "Active", "Active")

    @under(lambda: desktop.drawsItems)
    def testABarThatStartsAgainHasAllItems(self):
        ovin = self.startRegistered()
        self.startItems("Active", "Active")
        for _ in range(2):
            self.assertTrue(desktop.restartBar(self.patience), "the bar does not get ready. " + desktop.describe())
            self.awaitItems("Active", "Active")
            self.assertBecomes(lambda: self.isRegistered(ovin.pid), "Ovin's item is not registered")

    @under(lambda: desktop.name == "gnome")
    def testItServesWhileTheBarIsSwitchedOff(self):
        ovin = self.startWith("Active")
        desktop.endBar()
        self.addCleanup(desktop.startBar)
        self.assertTrue(becomes(lambda: ownerPid(WATCHER) == ovin.pid, LONGEST_GRACE + self.patience),
                        "nobody keeps the list of items")
        self.assertLists(ovin, [1])
        self.keepPicture("switched-off")
        desktop.startBar()
        self.assertBecomes(desktop.isReady, lambda: "the bar does not get ready. " + desktop.describe())
        self.awaitItems("Active")
        self.assertBecomes(lambda: self.isRegistered(ovin.pid), "Ovin's item is not registered")
        self.assertLists(ovin, [])

    def assertAtTheBar(self, ledge):
        bar = desktop.barArea()
        self.assertFalse(overlap(ledge, bar), f"the ledge {ledge} is over the bar {bar}")
        gap = {"top": ledge[1] - (bar[1] + bar[3]), "bottom": bar[1] - (ledge[1] + ledge[3]),
               "left": ledge[0] - (bar[0] + bar[2])}[desktop.edge]
        self.assertTrue(0 <= gap <= 24, f"the ledge {ledge} is away from the bar {bar}")
        self.assertTrue(0 <= ledge[0] and ledge[0] + ledge[2] <= DesktopsOfOthers.WIDTH, ledge)

    @under(lambda: desktop.drawsItems)
    def testAClickOpensTheLedgeAtTheBar(self):
        self.startItems("Passive", "Passive")
        ovin, area = self.startShown()
        self.clickOnItem(ovin, area)
        ledge = self.awaitLedge(ovin)
        self.becomes(lambda: len(self.listed()) == 2)
        self.keepPicture("ledge")
        self.assertAtTheBar(ledge)

    @under(lambda: desktop.takesDisplays)
    def testWithTwoDisplaysTheLedgeIsAtTheBarToo(self):
        size = f"{DesktopsOfOthers.WIDTH}x{DesktopsOfOthers.HEIGHT}"
        run("xrandr", "--addmode", "DUMMY1", size)
        self.addCleanup(run, "xrandr", "--output", "DUMMY1", "--off")
        run("xrandr", "--output", "DUMMY1", "--mode", size, "--right-of", "DUMMY0")
        self.startItems("Passive")
        ovin, area = self.startShown()
        self.clickOnItem(ovin, area)
        ledge = self.awaitLedge(ovin)
        self.keepPicture("displays")
        self.assertAtTheBar(ledge)

    @under(lambda: desktop.drawsItems and not desktop.isWayland)
    def testADoubleClickPressesNobodyElse(self):
        self.startItems("Passive")
        ovin, area = self.startShown()
        self.clickOnItem(ovin, area, count=2)
        time.sleep(STILL)
        desktop.escape()  # indicators open their menu at a click, and that would keep the keys from the next check
        self.assertEqual(self.items[0].events(), [])
        self.assertIsNone(ovin.poll())

    def testTheLedgeListsWhatNobodyDraws(self):
        ovin = self.startWith("Active", "Passive", "Active")
        ledge = self.openLedge(ovin)
        if desktop.drawsItems:
            wanted = ([2], []) if desktop.drawsPassive else ([2],)
        else:
            wanted = ([1, 2, 3],)
        self.assertBecomes(lambda: self.listed() in wanted, lambda: f"{self.listed()} and not {wanted[0]}: {textsOf('Ovin')}")
        self.keepPicture("list")
        if desktop.barArea():
            self.assertFalse(overlap(ledge, desktop.barArea()), f"the ledge {ledge} is over the bar")

    @under(lambda: desktop.drawsItems and not desktop.drawsPassive)
    def testItemsOfProgramsThatHangAreWhereTheyWere(self):
        ovin = self.startWith("Active", "Passive")
        self.assertLists(ovin, [2])
        desktop.escape()
        self.assertBecomes(lambda: not self.ledge(ovin), "it stays open")
        for item in self.items:
            os.kill(item.pid, signal.SIGSTOP)
            self.addCleanup(os.kill, item.pid, signal.SIGCONT)
        self.openLedge(ovin)
        # Longer than a discovery waits for them.
        time.sleep(1)
        self.assertEqual(self.listed(), [2])

    def testAnItemOfTheLedgeIsPressedAndARightClickOpensItsMenu(self):
        ovin = self.startWith("Passive")

        def click(button):
            self.assertLists(ovin, [1])
            time.sleep(STILL)  # the second press of a double click does nothing
            item = next(found for found in buttonsOf("Ovin") if found.get_name().startswith("App 1"))
            desktop.click(*middle(item), button)
            self.assertBecomes(lambda: not self.listed(), "the ledge stays open")

        click(1)
        self.assertBecomes(lambda: "activate" in self.items[0].events(), lambda: f"{self.items[0].events()}")
        click(3)
        self.assertBecomes(lambda: "Beta" in textsOf("Ovin"), "no menu opens")
        self.keepPicture("item-menu")
        press(OvinTest.descendant(accessible("Ovin"), "Beta"))
        self.assertBecomes(lambda: "menu Beta" in self.items[0].events(), lambda: f"{self.items[0].events()}")

    @under(lambda: desktop.canHide)
    def testTheLedgeListsWhatTheBarIsToldToHide(self):
        ovin = self.startWith("Active", "Active")
        self.addCleanup(desktop.hide)
        desktop.hide("item-2")
        self.assertBecomes(lambda: not desktop.shows(channels(COLOURS[1])), "the bar does not hide it")

        self.assertLists(ovin, [2])
        desktop.hide()
        self.assertLists(ovin, [])

    @under(lambda: desktop.canShow)
    def testTheLedgeLeavesOutWhatTheBarIsToldToShow(self):
        ovin = self.startWith("Passive", "Passive")
        self.addCleanup(desktop.show)
        self.addCleanup(desktop.hide)
        desktop.hide("item-2")  # to show it counts more
        desktop.show("item-2")
        self.assertBecomes(lambda: desktop.shows(channels(COLOURS[1])), "the bar does not show it")
        self.assertLists(ovin, [1])

    def assertLedgeIsTheBar(self, ovin):
        """That it lists the item that no bar draws any more, and has a button for Ovin's menu when it opens next."""
        self.assertLists(ovin, [1])
        desktop.click(300, 400)
        self.openLedge(ovin)
        names = [button.get_name() for button in buttonsOf("Ovin")]
        self.assertTrue(any("Ovin" in name for name in names), names)

    @under(lambda: desktop.canLoseTray)
    def testABarWithoutATrayCountsAsNone(self):
        self.patience = 20.0  # Plasma may take ten seconds to write its file
        ovin = self.startWith("Active")
        self.assertLists(ovin, [])
        desktop.removeTray()
        self.addCleanup(lambda: desktop.hasTray() or desktop.addTray())
        self.assertBecomes(lambda: not desktop.shows(channels(COLOURS[0])), "the bar still draws it")
        self.assertLedgeIsTheBar(ovin)
        self.keepPicture("no-tray")
        desktop.addTray()
        self.awaitItems("Active")
        self.assertLists(ovin, [])

    @under(lambda: desktop.canLoseTray)
    def testAWatcherWithoutABarCountsAsNone(self):
        ovin = self.startWith("Active")
        desktop.bar.pop().end()
        self.assertTrue(desktop.watcherIsItsOwn())
        self.assertLedgeIsTheBar(ovin)
        desktop.restartBar()
        self.awaitItems("Active")
        self.assertLists(ovin, [])

    @under(lambda: desktop.drawsItems)
    def testItsMenuIsReachedFromTheBar(self):
        ovin, area = self.startShown()
        name, path = self.addressOf(ovin.pid)
        menu = property_(name, path, ITEM, "Menu")
        if menu not in (None, "", "/", "/NO_DBUSMENU"):
            call(name, menu, "com.canonical.dbusmenu.AboutToShow", OvinTest.GLib.Variant("(i)", (0,)))
            _, layout = call(name, menu, "com.canonical.dbusmenu.GetLayout",
                             OvinTest.GLib.Variant("(iias)", (0, -1, [])))
            labels = [entry[1].get("label", "").replace("_", "") for entry in layout[2]]
            for label in ("Organize Menu Bar…", "About Ovin", "Quit Ovin"):
                self.assertIn(label, labels)
            self.assertBecomes(lambda: property_(name, path, ITEM, "IconName"), "the item names no icon")
        before = desktop.hasPictures and desktop.quietPicture()
        x, y = area[0] + area[2] // 2, area[1] + area[3] // 2
        desktop.click(x, y, desktop.menuButton)
        if menu in (None, "", "/", "/NO_DBUSMENU"):
            self.assertBecomes(lambda: windowsOf(ovin.pid), "Ovin opens no menu")
            place = DesktopsOfOthers.areaOf(windowsOf(ovin.pid)[0])
            self.assertLess(abs(x - place[0]), place[2] + 40, f"the pointer is at {x},{y}, the menu at {place}")
        elif before:
            nearby = (max(0, x - 250), max(0, y - 250), 500, 500)
            changed = lambda: before.difference(desktop.picture(), nearby) or (0, 0, 0, 0)
            # The bar's own menus are lower than Ovin's seven entries.
            self.assertBecomes(lambda: changed()[2] > 60 and changed()[3] > 130, lambda: f"no menu opens, only {changed()}")
        self.keepPicture("menu")
        desktop.escape()
        desktop.click(300, 400)

    @under(lambda: not desktop.drawsItems)
    def testWithoutABarTheLedgeHasAButtonForItsMenu(self):
        ovin = self.startWith("Active")
        # The list that comes in replaces all buttons, and a press on one that is gone is lost.
        self.assertLists(ovin, [1])
        own = lambda: [button for button in buttonsOf("Ovin") if "Ovin" in button.get_name()]
        self.assertBecomes(own, lambda: f"the ledge has only {[button.get_name() for button in buttonsOf('Ovin')]}")
        own()[0].do_action(0)
        self.assertBecomes(lambda: "Quit Ovin" in textsOf("Ovin"), "its button opens no menu")
        self.keepPicture("menu")

    @under(lambda: not desktop.drawsItems)
    def testWithoutABarItIsTheHost(self):
        self.startRegistered()
        self.assertTrue(property_(WATCHER, "/StatusNotifierWatcher", WATCHER, "IsStatusNotifierHostRegistered"))

    def testAccessibilityIsNotAskedFor(self):
        setAccessibility(False)
        ovin = self.startWith("Passive")
        self.openLedge(ovin)
        self.assertBecomes(lambda: self.listed() == [1], lambda: f"{self.listed()}")
        self.assertNotIn("Accessibility", self.windowTitles(ovin))
        self.assertFalse(property_("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Status", "IsEnabled"))

    def testOrganizeChangesNoModeAndSaysWhy(self):
        mode = lambda: re.search(r"current \d+ x \d+", run("xrandr"))[0]
        usual = mode()
        ovin = self.startWith("Active", "Active", OVIN_TEST_ORGANIZE="1")
        words = lambda: [text for text in textsOf("Ovin") if len(text) > 20]
        self.assertBecomes(lambda: words() or mode() != usual, "nothing is said")
        said = words()
        time.sleep(STILL)
        self.keepPicture("organize")
        changed = mode()
        ovin.terminate()
        ovin.wait(PATIENCE)
        if not self.becomes(lambda: mode() == usual):
            run("xrandr", "--output", "DUMMY0", "--mode", "1280x800")
        self.assertEqual(changed, usual)
        self.assertNotRegex(" ".join(said), "macOS|⌘|refused")
        self.assertTrue(said)

    def testASecondStartOpensTheLedge(self):
        ovin = self.startWith("Passive")
        self.assertIsNone(self.ledge(ovin))
        ledge = self.openLedge(ovin)
        self.keepPicture("second-start")
        area = desktop.barArea()
        if area:
            self.assertFalse(overlap(ledge, area), f"the ledge {ledge} is over the bar {area}")

    def testItIsEndedFromTheCommandLine(self):
        ovin = self.startRegistered()
        self.assertEqual(self.command("--quit"), 0)
        self.assertBecomes(lambda: ovin.poll() is not None, "it runs on")
        self.assertEqual(ovin.returncode, 0)
        self.assertEqual(self.command("--quit"), 0, "the end of what does not run is no mistake")

    @under(lambda: desktop.hasKeys)
    def testEscapeClosesTheLedge(self):
        ovin = self.startWith("Passive")
        self.openLedge(ovin)
        desktop.escape()
        self.assertBecomes(lambda: not self.ledge(ovin), "it stays open")
        self.assertIsNone(ovin.poll())

    def testAClickElsewhereClosesTheLedge(self):
        ovin = self.startWith("Passive")
        with desktop.window():
            for x, y in ((300, 400), (900, 600)):
                self.openLedge(ovin)
                desktop.click(x, y)
                self.assertBecomes(lambda: not self.ledge(ovin), f"a press at {x}, {y} leaves it open")
                time.sleep(STILL)
        self.assertIsNone(ovin.poll())

    @under(lambda: desktop.isWayland)
    def testItRunsThroughXWayland(self):
        ovin = self.startRegistered(QT_QPA_PLATFORM="wayland")
        self.command()
        self.assertBecomes(lambda: self.ledge(ovin), "it has no window there")


def checkNames(kind):
    """The checks that make sense under a desktop."""
    global desktop
    desktop = kind
    names = unittest.defaultTestLoader.getTestCaseNames(Checks)
    return [name for name in names if getattr(getattr(Checks, name), "condition", lambda: True)()]


def sentence(name):
    """The name of a check as people write: testTheBarShowsItsItem is "the bar shows its item"."""
    return re.sub(r"(?<!X)(?=[A-Z])", " ", name.removeprefix("test")).lower().strip().replace("xway", "XWay")


def outcome(name, result):
    """How a check ended, and why."""
    known = knownFault(name)
    faults = result.failures + result.errors
    if result.skipped:
        return "skipped", result.skipped[0][1]
    if faults:
        return ("known" if known else "failed"), (known or faults[0][1])
    if known:
        return "failed", f"it passes, and has to leave the list of known faults: {known}"
    return "passed", ""


def installResources():
    """Icons and desktop entry, as a package brings them: bars look them up by name."""
    script = os.path.join(os.path.dirname(os.path.dirname(OVIN)), "resources", "cmake_install.cmake")
    prefix = os.path.join(os.environ["HOME"], ".local")
    subprocess.run(["cmake", f"-DCMAKE_INSTALL_PREFIX={prefix}", "-P", script], check=True, stdout=subprocess.DEVNULL)


def runUnder(name, results, only):
    """Starts a desktop and goes through its checks. The file of results has a line for each."""
    global desktop
    Atspi.init()
    Atspi.set_timeout(2000, 5000)
    desktop = DESKTOPS[name]()
    names = checkNames(desktop)
    with open(results, "w", encoding="utf-8") as file:
        def tell(*what):
            file.write(json.dumps(what) + "\n")
            file.flush()
        try:
            installResources()
            began = time.monotonic()
            desktop.start()
            tell("ready", "", "", round(time.monotonic() - began, 1))
        except Unavailable as reason:
            for check in names:
                tell(check, "skipped", str(reason), 0)
            return
        for check in names:
            if only and check not in only:
                continue
            began = time.monotonic()
            result = unittest.TestResult()
            Checks(check).run(result)
            tell(check, *outcome(check, result), round(time.monotonic() - began, 1))


def startOn(kind, programs, folder, only, isDark):
    """Goes through a desktop's checks on a private desktop; (check, status, reason, seconds) of each."""
    results, log = os.path.join(folder, kind.name + ".json"), os.path.join(folder, kind.name + ".log")
    command = [os.path.join(ROOT, "desktop", "private-desktop"), *kind.options, *(["--dark"] if isDark else []), "--size",
               f"{DesktopsOfOthers.WIDTH}x{DesktopsOfOthers.HEIGHT}", "--", "/usr/bin/python3", "-B", os.path.abspath(__file__),
               *programs, UNDER, kind.name, "--results", results, "--pictures", folder,
               *(part for check in only for part in ("--only", check))]
    with open(log, "wb") as output:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output)
        try:
            process.wait(DESKTOP_BOUND)
        except subprocess.TimeoutExpired:
            process.send_signal(signal.SIGTERM)
            process.wait()
    found = {}
    if os.path.exists(results):
        with open(results, encoding="utf-8") as file:
            found = {line[0]: line for line in map(json.loads, file)}
        os.unlink(results)
    for check in [name for name in checkNames(kind) if not only or name in only]:
        # What has not come to its end has failed, whatever ended the program.
        found.setdefault(check, [check, "failed", f"it was not reached; see {log}", 0])
    return found


def report(kind, found):
    """Prints what came of a desktop's checks."""
    ready = found.pop("ready", None)
    print(f"{kind.name}:" + (f" ready after {ready[3]} s" if ready else ""))
    reasons = {reason for _, status, reason, _ in found.values() if status == "skipped"}
    for reason in reasons:
        print(f"  did not run here: {reason}")
    for check, status, reason, seconds in found.values():
        print(f"  {status:8}{sentence(check)} ({seconds} s)" + (f": {reason}" if status == "known" else ""))
        if status == "failed":
            print("".join(f"  | {line}\n" for line in reason.splitlines()), end="")
    sys.stdout.flush()


def table(found):
    """What came of all checks as a table in Markdown: a row for each check, a column for each desktop."""
    signs = {"passed": "✓", "failed": "✗", "known": "✗", "skipped": "?"}
    lines = ["| " + " | ".join(["", *found]) + " |", "|---|" + ":-:|" * len(found)]
    for check in unittest.defaultTestLoader.getTestCaseNames(Checks):
        cells = [signs[found[kind][check][1]] if check in found[kind] else "" for kind in found]
        lines.append(f"| {sentence(check)} | " + " | ".join(cells) + " |")
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(allow_abbrev=False)
    parser.add_argument("programs", nargs=3)
    parser.add_argument("--pictures", default=os.path.join(ROOT, "build", "test-logs", "desktops"))
    parser.add_argument(UNDER)
    parser.add_argument("--results")
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--dark", action="store_true", help="dark colours, as far as private-desktop gives them")
    parser.add_argument("--table", help="a file in which a table of what came of each check replaces the one that is there")
    parser.add_argument("desktops", nargs="*")
    options = parser.parse_intermixed_args()
    if options.under:
        global pictures
        pictures = options.pictures
        return runUnder(options.under, options.results, options.only)
    os.makedirs(options.pictures, exist_ok=True)
    kinds = [DESKTOPS[name] for name in options.desktops or DESKTOPS]
    programs = list(map(os.path.abspath, options.programs))
    counts = dict.fromkeys(("passed", "failed", "known", "skipped"), 0)
    results = {}
    start = lambda kind: startOn(kind, programs, options.pictures, options.only, options.dark)
    with ThreadPoolExecutor(options.jobs) as pool:
        for kind, found in zip(kinds, pool.map(start, kinds)):
            report(kind, found)
            results[kind.name] = found
            for _, status, _, _ in found.values():
                counts[status] += 1
    print(", ".join(f"{count} {status}" for status, count in counts.items()))
    if options.table:
        with open(options.table, encoding="utf-8") as file:
            text = file.read()
        with open(options.table, "w", encoding="utf-8") as file:
            file.write(re.sub(r"(\|  \|.*\n)(\|.*\n)+", lambda _: table(results), text, count=1))
    sys.exit(1 if counts["failed"] else 0)


if __name__ == "__main__":
    main()
