"""Ovin itself beside a menu bar, as its user has it: real clicks and keys, and assistive programs that are not its own.

Started with the paths of ovin-items, status-item and ovin.
"""

import os
import re
import signal
import subprocess
import time
import unittest

from gi.repository import Gio, GLib

from OvinTest import (ApplicationTestCase, Atspi, BAR_HEIGHT, BOUND, OVIN, accessible, activeWindow, askForOwnMenu,
                      awaitAccessible, awaited,
                      becomes, buttonsOf, click, colours, entryNamed, geometry, isSanitized, main, memoryOf, pidOf, placeOf, press, run,
                      windowsOf)

# A settings portal whose user wants dark colours.
DARK_PORTAL = """
from gi.repository import Gio, GLib
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
PORTAL = Gio.DBusNodeInfo.new_for_xml('''<node><interface name="org.freedesktop.portal.Settings"><method name="Read">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method></interface></node>''')
answer = lambda *call: call[-1].return_value(GLib.Variant("(v)", (GLib.Variant("v", GLib.Variant("u", 1)),)))
bus.register_object("/org/freedesktop/portal/desktop", PORTAL.interfaces[0], answer)
Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, None, None)
GLib.MainLoop().run()
"""


class TheLedge(ApplicationTestCase):
    COUNT = 30

    def setUp(self):
        super().setUp()
        self.ovin = self.startShown()  # first, so that the bar has room for it: the newest items are left out
        for number in range(1, self.COUNT + 1):
            self.startItem("--name", f"App {number:02}", "--title", f"Item {number:02}", "--pixmap", "#c01090",
                           "--menu", "Alpha,Beta", "--item-is-menu", "false")
        self.addCleanup(run, "xrandr", "--output", "DUMMY0", "--primary")

    def itemOf(self, button):
        return self.items[int(re.match(r"App (\d+) — Item \1$", button.get_name())[1]) - 1]

    def testOthersReadItsButtonsAndPressThem(self):
        def openWhole():
            self.openLedge(self.ovin)
            found = buttonsOf("Ovin")
            if all(re.match(r"App (\d\d) — Item \1$", button.get_name()) for button in found):
                return found
            # A title that was not told in time is missing until the next opening.
            click(*awaited(self.slot))
            self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)))
            return None

        found = awaited(openWhole)
        self.assertGreater(len(found), 3)
        item = self.itemOf(found[1])
        press(found[1])
        self.assertTrue(becomes(lambda: item.events() == ["activate"]), item.lines())
        self.assertEqual([other.events() for other in self.items if other is not item], [[]] * (self.COUNT - 1))
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "the ledge stays open")

    def rightClick(self, isWanted):
        """Right-clicks a button of the open ledge; its name."""
        self.openLedge(self.ovin)
        wanted = lambda: [(button.get_name(), button) for button in buttonsOf("Ovin") if isWanted(button.get_name())]
        name, button = awaited(wanted)[0]
        click(*placeOf(lambda: button), 3)
        return name

    def testARightClickOnAButtonOpensTheItemsMenuAndPressesNothing(self):
        name = self.rightClick(lambda name: re.match(r"App (\d\d) — Item \1$", name))
        item = self.items[int(re.match(r"App (\d+)", name)[1]) - 1]
        entry = awaited(lambda: entryNamed("Beta"))
        self.assertIsNotNone(entry, "no menu opens")
        self.assertEqual(len(windowsOf(self.ovin.pid)), 1, "the ledge stays open beside the menu")
        press(entry)
        self.assertTrue(becomes(lambda: item.events() == ["menu Beta"]), item.lines())

    def testARightClickAsksAProgramThatDrawsItsMenuItself(self):
        item = self.startItem("--name", "Drawing", "--title", "Own menu", "--pixmap", "#c01090")
        self.rightClick(lambda name: name == "Drawing — Own menu")
        self.assertTrue(becomes(lambda: item.events() == ["context-menu"]), item.lines())
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "the ledge stays open")

    def testOnlyTheButtonBelowThePointerIsLitThoughOneWasHeldDownWhenTheLedgeClosed(self):
        def areas():
            self.openLedge(self.ovin)
            found = [button.get_extents(Atspi.CoordType.SCREEN) for button in buttonsOf("Ovin")[:2]]
            return [(area.x, area.y, area.width, area.height) for area in found]

        def pointAt(area):
            run("xdotool", "mousemove", str(area[0] + area[2] // 2), str(area[1] + area[3] // 2))

        first, second = awaited(areas)
        pointAt(first)
        time.sleep(0.6)  # presses do nothing for the time of a double click
        run("xdotool", "mousedown", "1", "key", "Escape")
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "the ledge stays open")
        run("xdotool", "mouseup", "1", "mousemove", "300", "500")
        areas()
        plain = colours(first)
        pointAt(first)
        self.assertTrue(becomes(lambda: colours(first) != plain), "the button below the pointer is not lit")
        pointAt(second)
        self.assertTrue(becomes(lambda: colours(first) == plain), "another button stays lit")

    def testAProgramWithoutADesktopEntryShowsTheIconOfItsItem(self):
        place = geometry(self.openLedge(self.ovin))
        self.assertIn((0xC0, 0x10, 0x90), colours(place))

    @unittest.skipIf(isSanitized(), "sanitizers keep memory that has been given back")
    def testPicturesWithoutMeasureTakeNoMemoryThatStays(self):
        self.openLedge(self.ovin)
        before = memoryOf(self.ovin.pid)
        for number in range(3):
            self.startItem("--name", f"Huge {number}", "--pixmap", "#102030", "--huge-pictures", "60")

        def isListed():
            click(300, 500)
            time.sleep(0.6)  # a click on the item right after such a press counts as the same one
            self.openLedge(self.ovin)
            return becomes(lambda: any(button.get_name().startswith("Huge 2") for button in buttonsOf("Ovin")), 2)

        # A busy machine takes its time for so much, and the ledge reads the list anew only when it opens.
        for _ in range(2):
            self.assertTrue(becomes(isListed))
        # Messages of sixty mebibytes have to be received, but only one picture of each is kept.
        self.assertTrue(becomes(lambda: memoryOf(self.ovin.pid) < before + 60), (before, memoryOf(self.ovin.pid)))

    @unittest.skipIf(isSanitized(), "sanitizers keep memory that has been given back")
    def testLongTextsTakeNoMemoryThatStays(self):
        self.openLedge(self.ovin)
        before = memoryOf(self.ovin.pid)
        for number in range(8):
            self.startItem("--name", f"Long {number}", "--huge", "300000")

        def isListed():
            click(300, 500)
            time.sleep(0.6)  # a click on the item right after such a press counts as the same one
            self.openLedge(self.ovin)
            return becomes(lambda: sum(button.get_name().startswith("Long") for button in buttonsOf("Ovin")) == 8, 2)

        self.assertTrue(becomes(isListed))
        for item in self.items[-8:]:
            item.end()
        click(300, 500)
        time.sleep(4)  # the list is read anew
        self.assertLess(memoryOf(self.ovin.pid), before + 8)

    def testItStaysAboveAFullScreenWindowAndTakesNoFocus(self):
        window = self.startWindow("Full screen")
        run("wmctrl", "-i", "-r", str(window), "-b", "add,fullscreen")
        self.assertTrue(becomes(lambda: geometry(window)[3] == 900), geometry(window))
        # The bar lies below, and a second start of the program opens the ledge as well.
        self.assertEqual(run(OVIN).returncode, 0)
        self.assertTrue(becomes(lambda: windowsOf(self.ovin.pid)), "no ledge opens")
        place = geometry(windowsOf(self.ovin.pid)[0])
        self.assertTrue(becomes(lambda: (0xC0, 0x10, 0x90) in colours(place)), "it is covered")
        self.assertEqual(activeWindow(), window)
        self.assertEqual(int(run("xdotool", "getwindowfocus").stdout), window, "the ledge has taken the focus")

    def testAnyPressOutsideClosesIt(self):
        for x, y, button in ((300, 500, 1), (300, 500, 3), (300, BAR_HEIGHT // 2, 1)):
            self.openLedge(self.ovin)
            click(x, y, button)
            self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), (x, y, button))
            time.sleep(0.6)  # a click on the item right after such a press counts as the same one

    def testEscapeClosesItThoughAnotherProgramHasTheKeyboard(self):
        window = self.startWindow("Other")
        self.openLedge(self.ovin)
        run("xdotool", "key", "Escape")
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "Escape does not close it")
        self.assertEqual(activeWindow(), window)
        self.openLedge(self.ovin)

    def testAClickOnTheItemClosesItAgain(self):
        self.openLedge(self.ovin)
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)))
        time.sleep(0.3)
        self.assertFalse(self.isOpen(self.ovin), "the click that closed it has opened it again")

    def testNothingHappensBeforeTheButtonIsReleased(self):
        x, y = awaited(self.slot)
        run("xdotool", "mousemove", str(x), str(y), "mousedown", "1")
        try:
            time.sleep(0.4)
            self.assertFalse(self.isOpen(self.ovin))
        finally:
            run("xdotool", "mouseup", "1")
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))

    def testItOpensOnTheScreenOfTheBar(self):
        run("xrandr")
        run("xrandr", "--addmode", "DUMMY1", "1920x1080")
        run("xrandr", "--output", "DUMMY1", "--mode", "1920x1080", "--right-of", "DUMMY0", "--primary")
        self.addCleanup(run, "xrandr", "--output", "DUMMY1", "--off")
        self.addCleanup(run, "xrandr", "--output", "DUMMY0", "--primary")
        self.assertTrue(becomes(lambda: (self.slot() or (0,))[0] > 1440), self.slot())
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))
        x, _, width, _ = geometry(windowsOf(self.ovin.pid)[0])
        self.assertGreaterEqual(x, 1440)
        self.assertLessEqual(x + width, 1440 + 1920)

    def testATooWideOneScrollsSideways(self):
        for number in range(40):
            self.startItem("--name", f"Wide {number}", "--title", "Wide", "--pixmap", "#101010", "--status", "Active")
        place = geometry(self.openLedge(self.ovin))
        self.assertTrue(becomes(lambda: geometry(windowsOf(self.ovin.pid)[0])[2] >= 1300), place)
        first = lambda: placeOf(lambda: next(iter(buttonsOf("Ovin")), None))
        before = awaited(first)
        x, y, width, height = geometry(windowsOf(self.ovin.pid)[0])
        run("xdotool", "mousemove", str(x + width // 2), str(y + height // 2), "click", "--repeat", "3", "7")
        self.assertTrue(becomes(lambda: (first() or before)[0] < before[0]), (before, first()))
        run("xdotool", "click", "--repeat", "6", "6")
        self.assertTrue(becomes(lambda: first() == before), (before, first()))


class TheLedgesPlace(ApplicationTestCase):
    """Beside bars that others wrote: a window with the properties of one, and a click as such a bar reports it."""

    def setUp(self):
        super().setUp()
        self.ovin = self.startShown()
        self.startItem("--name", "App", "--title", "Item", "--pixmap", "#c01090")

    def startBar(self, x, y, width, height, strut):
        program = subprocess.Popen(["xev", "-name", "Foreign bar", "-geometry", f"{width}x{height}+{x}+{y}", "-event", "focus"],
                                   stdout=subprocess.DEVNULL)
        self.addCleanup(program.wait, BOUND)
        self.addCleanup(program.kill)
        window, = awaited(lambda: run("xdotool", "search", "--onlyvisible", "--name", "Foreign bar").stdout.split())
        # A window manager looks at the type of a window when the window is shown.
        run("xdotool", "windowunmap", "--sync", window)
        run("xprop", "-id", window, "-f", "_NET_WM_WINDOW_TYPE", "32a", "-set", "_NET_WM_WINDOW_TYPE",
            "_NET_WM_WINDOW_TYPE_DOCK")
        run("xprop", "-id", window, "-f", "_NET_WM_STRUT_PARTIAL", "32c", "-set", "_NET_WM_STRUT_PARTIAL",
            ",".join(map(str, strut)))
        run("xdotool", "windowmap", "--sync", window, "windowmove", "--sync", window, str(x), str(y))
        self.assertTrue(becomes(lambda: geometry(window) == (x, y, width, height)), geometry(window))

    def clickIn(self, x, y):
        """The place of the ledge after the item was clicked in a bar."""
        run("xdotool", "mousemove", str(x), str(y))
        items = run("gdbus", "call", "--session", "--dest", "org.kde.StatusNotifierWatcher", "--object-path",
                    "/StatusNotifierWatcher", "--method", "org.freedesktop.DBus.Properties.Get",
                    "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems").stdout
        for service, path in re.findall(r"'([^'/@]+)@?(/[^']+)'", items):
            item = ("gdbus", "call", "--session", "--dest", service, "--object-path", path, "--method")
            if "Ovin.Control" in run(*item, "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem", "Id").stdout:
                run(*item, "org.kde.StatusNotifierItem.Activate", str(x), str(y))
        return geometry(awaited(lambda: windowsOf(self.ovin.pid))[0])

    def testAMonitorThatCoversTheScreenIsNoBar(self):
        slot = awaited(self.slot)
        self.startBar(0, 0, 1440, 900, (0,) * 12)
        self.assertEqual(self.clickIn(*slot)[1], BAR_HEIGHT + 6)

    def testItStandsAboveABarAtTheBottom(self):
        self.startBar(0, 820, 1440, 80, (0, 0, 0, 80, 0, 0, 0, 0, 0, 0, 0, 1439))
        x, y, width, height = self.clickIn(500, 885)
        self.assertEqual(y + height, 820 - 6)
        self.assertAlmostEqual(x + width / 2, 500, delta=1)

    def testItStandsBesideABarAtTheSide(self):
        self.startBar(0, 28, 80, 872, (80, 0, 0, 0, 28, 899, 0, 0, 0, 0, 0, 0))
        x, y, _, height = self.clickIn(25, 400)
        self.assertEqual(x, 80 + 6)
        self.assertAlmostEqual(y + height / 2, 400, delta=1)

    def testItCoversNoBarThatReservesNothing(self):
        self.startBar(200, 820, 700, 80, (0,) * 12)
        _, y, _, height = self.clickIn(880, 880)
        self.assertEqual(y + height, 820 - 6)

    def testWithTwoScreensItStandsAtTheBarOfItsOwn(self):
        run("xrandr")
        run("xrandr", "--addmode", "DUMMY1", "1920x1080")
        run("xrandr", "--output", "DUMMY1", "--mode", "1920x1080", "--right-of", "DUMMY0")
        self.addCleanup(run, "xrandr", "--output", "DUMMY1", "--off")
        # The first screen ends 180 pixels above the lower edge of the X screen, from which the bar's room is measured.
        self.startBar(0, 820, 1440, 80, (0, 0, 0, 260, 0, 0, 0, 0, 0, 0, 0, 1439))
        x, y, width, height = self.clickIn(1400, 885)
        self.assertEqual((x + width, y + height), (1440 - 8, 820 - 6))
        click(500, 500)
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)))
        time.sleep(0.6)  # a click on the item right after such a press counts as the same one
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))
        self.assertEqual(geometry(windowsOf(self.ovin.pid)[0])[1], BAR_HEIGHT + 6)


class TheStatusItem(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        self.ovin = self.startShown()

    def openMenu(self):
        """Ovin's own menu; the bar draws the one of a right click itself."""
        x, y = awaited(self.slot)
        self.assertTrue(askForOwnMenu(x, y))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)), "no menu opens")
        return x, windowsOf(self.ovin.pid)[0]

    def testTheMenuOpensAtTheItemAndInsideTheScreen(self):
        slot, window = self.openMenu()
        x, y, width, height = geometry(window)
        self.assertGreaterEqual(y, BAR_HEIGHT)
        self.assertLessEqual(x, slot)
        self.assertGreaterEqual(x + width, slot)
        self.assertLessEqual(x + width, 1440)

    def testEscapeAndAPressOutsideCloseTheMenu(self):
        self.openMenu()
        run("xdotool", "key", "Escape")
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "Escape does not close it")
        self.openMenu()
        click(400, 500)
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "a press outside does not close it")
        self.assertIsNone(self.ovin.poll())

    def testTheKeyboardChoosesAnEntry(self):
        self.openMenu()
        run("xdotool", "key", "Up", "Return")
        self.assertEnds(self.ovin)

    def testTheShortcutOfAnEntryWorksInTheMenu(self):
        self.openMenu()
        run("xdotool", "key", "ctrl+q")
        self.assertEnds(self.ovin)

    def testOthersFindTheEntriesAndPressOne(self):
        self.openMenu()
        entry = awaitAccessible("Ovin", "Quit Ovin")
        self.assertIsNotNone(entry, "the entry cannot be reached")
        press(entry)
        self.assertEnds(self.ovin)

    def testARightClickOpensTheMenuThatTheBarDraws(self):
        click(*awaited(self.slot), 3)
        search = ("xdotool", "search", "--onlyvisible", "--class", "MenuBarAgent")
        self.assertTrue(becomes(lambda: len(run(*search).stdout.split()) == 2), "no menu opens")
        self.assertFalse(self.isOpen(self.ovin))
        run("xdotool", "key", "Down", "Return")  # the first entry
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)), "the ledge does not open")

    def testASecondRequestReplacesTheMenu(self):
        _, first = self.openMenu()
        self.assertTrue(askForOwnMenu(*awaited(self.slot)))
        self.assertTrue(becomes(lambda: len(windowsOf(self.ovin.pid)) == 1 and windowsOf(self.ovin.pid) != [first]))
        run("xdotool", "key", "Escape")
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)))

    def testOthersPressItByWayOfTheBar(self):
        press(accessible("MenuBarAgent", "Ovin"))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))

    def testAMiddleClickAndTheWheelDoNothing(self):
        for button in ("2", "4", "5"):
            click(*awaited(self.slot), button)
        time.sleep(0.5)
        self.assertFalse(self.isOpen(self.ovin))
        self.assertIsNone(self.ovin.poll())

    def testABarThatStartsAgainShowsItAgain(self):
        agent = pidOf("menu bar agent")
        os.kill(agent, signal.SIGKILL)
        self.assertTrue(becomes(lambda: accessible("MenuBarAgent") is None))
        # This program serves the other tests too, and ends with the desktop.
        TheStatusItem.successor = subprocess.Popen([os.environ["OVIN_MENU_BAR_AGENT"]])
        self.assertTrue(becomes(lambda: self.slot() is not None), "it does not come back")
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))


class OneInASession(ApplicationTestCase):
    def testASecondStartOpensTheLedgeOfTheFirst(self):
        first = self.startShown()
        self.assertFalse(self.isOpen(first))
        self.assertEqual(run(OVIN).returncode, 0)
        self.assertTrue(becomes(lambda: self.isOpen(first)))

    def testOfTwoThatStartAtOnceOneStays(self):
        for _ in range(5):
            both = [self.startOvin(), self.startOvin()]
            self.assertTrue(becomes(lambda: any(process.poll() is not None for process in both)), "both stay")
            ended, stays = sorted(both, key=lambda process: process.poll() is None)
            self.assertEqual(ended.returncode, 0)
            time.sleep(0.2)
            self.assertIsNone(stays.poll())
            stays.terminate()
            self.assertEnds(stays)

    def testOneThatHangsIsNotWaitedForWithoutEnd(self):
        first = self.startShown()
        os.kill(first.pid, signal.SIGSTOP)
        try:
            began = time.monotonic()
            second = run(OVIN)
            self.assertEqual((second.returncode, second.stderr), (1, "ovin: another Ovin is running and does not answer\n"))
            self.assertLess(time.monotonic() - began, 15)
        finally:
            os.kill(first.pid, signal.SIGCONT)

    def testOneThatIsEndingIsSucceeded(self):
        first = self.startShown()
        os.kill(first.pid, signal.SIGSTOP)
        second = self.startOvin()
        time.sleep(0.3)  # the second waits for an answer by now
        os.kill(first.pid, signal.SIGKILL)
        os.kill(first.pid, signal.SIGCONT)
        first.wait(BOUND)
        self.assertTrue(becomes(lambda: self.slot() is not None))
        self.assertIsNone(second.poll())
        self.assertEqual(run(OVIN).returncode, 0)
        self.assertTrue(becomes(lambda: self.isOpen(second)))

    def testAPreviewStandsBesideIt(self):
        self.startShown()
        preview = self.startOvin(OVIN_TEST_ABOUT="1")
        time.sleep(1)
        self.assertIsNone(preview.poll())

    def testItExplainsItselfAndItsMistakes(self):
        self.assertIn("Usage:", run(OVIN, "--help").stdout)
        self.assertRegex(run(OVIN, "--version").stdout, r"^Ovin \d+\.\d+\.\d+\n$")
        for mistake in ("--nonsense", "extra"):
            result = run(OVIN, mistake)
            self.assertEqual((result.returncode, result.stdout), (2, ""))
            self.assertIn("Usage:", result.stderr)


class TheColours(ApplicationTestCase):
    """Of what is shown already, when the user chooses others for the desktop."""

    def setUp(self):
        super().setUp()
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)

    def tellColorScheme(self, number):
        change = ("org.freedesktop.appearance", "color-scheme", GLib.Variant("u", number))
        self.bus.emit_signal(None, "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings", "SettingChanged",
                             GLib.Variant("(ssv)", change))

    def bePortal(self):
        def ask(member, arguments):
            self.bus.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", member, arguments, None, 0, -1)

        name = "org.freedesktop.portal.Desktop"
        ask("RequestName", GLib.Variant("(su)", (name, 0)))
        self.addCleanup(ask, "ReleaseName", GLib.Variant("(s)", (name,)))
        self.addCleanup(self.tellColorScheme, 0)  # the bar follows it too

    def writeKdeColours(self, window, text):
        path = os.path.join(os.environ["XDG_CONFIG_HOME"], "kdeglobals")
        with open(path, "w", encoding="utf-8") as file:
            for group in ("Button", "Selection", "Tooltip", "View", "Window"):
                file.write(f"[Colors:{group}]\nBackgroundNormal={window}\nForegroundNormal={text}\n")
        self.addCleanup(lambda: os.path.exists(path) and os.unlink(path))

    def testTheOpenLedgeFollowsTheSettingsOfTheDesktop(self):
        ovin = self.startShown()
        for number in range(30):
            self.startItem("--name", f"App {number}", "--title", f"Item {number}", "--pixmap", "#c01090")
        place = geometry(self.openLedge(ovin))
        light = colours(place)
        self.tellColorScheme(1)
        time.sleep(1)
        self.assertTrue(colours(place) == light, "anybody can change them")
        self.bePortal()
        for number, isDark in ((1, True), (0, False), (1, True), (2, False)):
            self.tellColorScheme(number)
            self.assertTrue(becomes(lambda: ((0x24, 0x24, 0x26) in colours(place)) == isDark), (number, colours(place)))
        self.assertTrue(becomes(lambda: colours(place) == light), "its first colours do not come back")
        self.assertTrue(self.isOpen(ovin))

    def testAPortalThatStartsLaterIsAskedForTheColours(self):
        about = self.startOvin(OVIN_TEST_ABOUT="")
        self.assertTrue(becomes(lambda: windowsOf(about.pid)))
        place = geometry(windowsOf(about.pid)[0])
        self.assertTrue(becomes(lambda: (239, 239, 239) in colours(place)))
        self.addCleanup(self.tellColorScheme, 0)  # the bar follows it too
        portal = subprocess.Popen(["/usr/bin/python3", "-c", DARK_PORTAL])
        self.addCleanup(portal.wait, BOUND)
        self.addCleanup(portal.kill)
        self.assertTrue(becomes(lambda: (0x24, 0x24, 0x26) in colours(place)), "it stays light")

    def testAWindowFollowsTheColoursOfKde(self):
        self.writeKdeColours("42,46,50", "239,240,241")
        about = self.startOvin(OVIN_TEST_ABOUT="", XDG_CURRENT_DESKTOP="KDE", KDE_SESSION_VERSION="5")
        self.assertTrue(becomes(lambda: windowsOf(about.pid)))
        place = geometry(windowsOf(about.pid)[0])
        self.assertTrue(becomes(lambda: (42, 46, 50) in colours(place)), "the first colours are others")
        self.writeKdeColours("250,240,230", "20,20,20")
        self.bus.emit_signal(None, "/KGlobalSettings", "org.kde.KGlobalSettings", "notifyChange",
                             GLib.Variant("(ii)", (0, 0)))
        self.assertTrue(becomes(lambda: (250, 240, 230) in colours(place)), "the colours stay")
        self.assertNotIn((42, 46, 50), colours(place))


class TheEnd(ApplicationTestCase):
    def testEverySignalEndsItWell(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            ovin = self.startShown()
            for _ in range(3):
                ovin.send_signal(number)
            self.assertEnds(ovin)

    def testAnIgnoredSignalStaysIgnored(self):
        ovin = subprocess.Popen(["nohup", OVIN], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(ovin.wait, BOUND)
        self.addCleanup(ovin.kill)
        self.assertTrue(becomes(lambda: self.slot() is not None))
        ovin.send_signal(signal.SIGHUP)
        time.sleep(0.5)
        self.assertIsNone(ovin.poll())
        ovin.terminate()
        self.assertEnds(ovin)

    def testASignalEndsItWithItsMenuOpen(self):
        ovin = self.startShown()
        self.assertTrue(askForOwnMenu(*awaited(self.slot)))
        self.assertTrue(becomes(lambda: self.isOpen(ovin)))
        ovin.terminate()
        self.assertEnds(ovin)

    def testItEndsWithTheSessionBus(self):
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(bus.stdout.close)
        self.addCleanup(bus.wait, BOUND)
        self.addCleanup(bus.kill)
        address = bus.stdout.readline().strip()
        ovin = self.startOvin(DBUS_SESSION_BUS_ADDRESS=address)
        owned = lambda: "true" in run("gdbus", "call", "--address", address, "--dest", "org.freedesktop.DBus", "--object-path",
                                      "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner",
                                      "org.kde.StatusNotifierWatcher").stdout
        self.assertTrue(becomes(owned))
        bus.kill()
        self.assertEnds(ovin)
        self.assertIn("Ovin: the session bus is gone\n", ovin.stderr.read())

    def testUnderWaylandWithoutAnXServerItSaysSo(self):
        ovin = self.startOvin(WAYLAND_DISPLAY="wayland-0", XDG_SESSION_TYPE="wayland", DISPLAY="",
                              QT_QPA_PLATFORM="wayland")
        self.assertEnds(ovin, 1)
        self.assertEqual(ovin.stderr.read(),
                         "ovin: under Wayland Ovin needs XWayland, and there is none in this session\n")

    def testWithoutADisplayItSaysSo(self):
        ovin = self.startOvin(DISPLAY="", QT_QPA_PLATFORM="")
        self.assertEnds(ovin, 1)
        self.assertEqual(ovin.stderr.read(), "ovin: there is no X display\n")

    def testItTakesTheXServerWhateverTheSessionTellsTheToolkit(self):
        # There is no such Wayland display, so Ovin would end on it.
        wayland = {"WAYLAND_DISPLAY": "wayland-0", "XDG_SESSION_TYPE": "wayland"}
        for platform, session in (("", wayland), ("wayland", wayland), ("wayland;xcb", wayland), ("wayland-egl", wayland),
                                  ("wayland", {}), ("wayland;xcb", {})):
            ovin = self.startOvin(QT_QPA_PLATFORM=platform, **session)
            self.assertTrue(becomes(lambda: self.slot() is not None), (platform, session))
            ovin.terminate()
            self.assertEnds(ovin)
            self.assertEqual(ovin.stderr.read(), "")
            self.assertTrue(becomes(lambda: self.slot() is None))

    def testUnderWaylandThePlatformOfTheCommandLineIsObeyed(self):
        ovin = self.startOvin("-platform", "wayland", WAYLAND_DISPLAY="wayland-0", XDG_SESSION_TYPE="wayland")
        self.assertNotEqual(ovin.wait(BOUND), 0)
        self.assertIn("Qt platform plugin", ovin.stderr.read())

    def testWithoutASessionBusItSaysSo(self):
        ovin = self.startOvin(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent/bus")
        self.assertEnds(ovin, 1)
        self.assertIn("there is no session bus", ovin.stderr.read())


if __name__ == "__main__":
    main()
