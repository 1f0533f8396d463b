"""Ovin itself beside a menu bar, as its user has it: real clicks and keys, and assistive programs that are not its own.

Started with the paths of ovin-items, status-item and ovin.
"""

import os
import re
import signal
import subprocess
import sys
import time
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

OVIN = os.path.abspath(sys.argv.pop(3))

from DesktopTest import BOUND, Item, becomes, main, pidOf, setAccessibility  # noqa: E402

BAR_HEIGHT = 28


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, timeout=BOUND, check=False)


def click(x, y, button=1):
    run("xdotool", "mousemove", str(x), str(y), "click", str(button))


def isSanitized():
    with open(OVIN, "rb") as file:
        content = file.read()
    return b"__asan_init" in content or b"__tsan_init" in content


def memoryOf(pid):
    """In mebibytes."""
    with open(f"/proc/{pid}/status", encoding="utf-8") as file:
        return int(re.search(r"VmRSS:\s+(\d+) kB", file.read())[1]) // 1024


def activeWindow():
    return run("xprop", "-root", "_NET_ACTIVE_WINDOW").stdout


def windowsOf(pid):
    return run("xdotool", "search", "--onlyvisible", "--pid", str(pid)).stdout.split()


def geometry(window):
    text = run("xdotool", "getwindowgeometry", "--shell", window).stdout
    return tuple(int(re.search(rf"{name}=(-?\d+)", text)[1]) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def colours(area):
    """The colours, as (red, green, blue), that the screen shows in an area."""
    path = os.path.join(os.environ["OVIN_DESKTOP_DIR"], "screen.ppm")
    subprocess.run(["scrot", "-o", "-a", ",".join(map(str, area)), path], check=True, timeout=BOUND)
    with open(path, "rb") as file:
        data = file.read()
    header = re.match(rb"P6\s+(?:#[^\n]*\n)?\d+\s+\d+\s+255\s", data)
    body = data[header.end():]
    return {tuple(body[i:i + 3]) for i in range(0, len(body), 3)}


def children(element):
    element.clear_cache()  # asked of the program anew
    found = [element.get_child_at_index(index) for index in range(element.get_child_count())]
    return [child for child in found if child is not None]


def descendant(element, name):
    for child in children(element):
        found = child if child.get_name() == name else descendant(child, name)
        if found is not None:
            return found
    return None


def accessible(application, name=None):
    """An application, or the first element of this name in it; None while there is none."""
    while GLib.MainContext.default().iteration(False):
        pass  # news of programs that have come and gone
    try:
        for program in children(Atspi.get_desktop(0)):
            if program.get_name() == application:
                return descendant(program, name) if name is not None else program
    except GLib.Error:
        pass  # it went while it was looked at
    return None


def awaitAccessible(*path):
    becomes(lambda: accessible(*path) is not None)
    return accessible(*path)


def press(element):
    element.do_action(0)


def buttonsOf(application):
    """The buttons of an application; none while it cannot be looked at."""
    def below(element):
        return [button for child in children(element)
                for button in ([child] if child.get_role() == Atspi.Role.PUSH_BUTTON else below(child))]

    element = accessible(application)
    try:
        return below(element) if element is not None else []
    except GLib.Error:
        return []


class ApplicationTestCase(unittest.TestCase):
    def setUp(self):
        setAccessibility(True)
        self.items = []
        self.addCleanup(self.endItems)
        run("xdotool", "mousemove", "700", "600")

    def endItems(self):
        for item in self.items:
            item.end()

    def startItem(self, *options):
        self.items.append(Item(options))
        item = self.items[-1]
        self.assertTrue(becomes(lambda: any(line.startswith("registered") for line in item.lines())))
        return item

    def startOvin(self, *arguments, **environment):
        process = subprocess.Popen([OVIN, *arguments], env=dict(os.environ, **environment), stderr=subprocess.PIPE, text=True)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.wait, BOUND)
        self.addCleanup(process.kill)
        return process

    def startShown(self):
        """Starts Ovin and waits until the bar shows its item."""
        process = self.startOvin()
        self.assertTrue(becomes(lambda: self.slot() is not None), "the bar does not show Ovin's item")
        return process

    def slot(self):
        """The middle of Ovin's place in the bar."""
        element = accessible("MenuBarAgent", "Ovin")
        if element is None or element.get_state_set().contains(Atspi.StateType.INVALID):
            return None
        place = element.get_extents(Atspi.CoordType.SCREEN)
        return (place.x + place.width // 2, place.y + place.height // 2) if place.width > 0 else None

    def openLedge(self, process):
        click(*self.slot())
        self.assertTrue(becomes(lambda: windowsOf(process.pid)), "no ledge opens")
        # Where the list is still being read, it is shown in place of a text that says so.
        self.assertTrue(becomes(lambda: buttonsOf("Ovin")), "the ledge stays empty")
        return windowsOf(process.pid)[0]

    def isOpen(self, process):
        return bool(windowsOf(process.pid))

    def assertEnds(self, process, status=0):
        try:
            self.assertEqual(process.wait(BOUND), status)
        except subprocess.TimeoutExpired:
            self.fail("Ovin does not end")


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
        self.openLedge(self.ovin)
        found = buttonsOf("Ovin")
        self.assertGreater(len(found), 3)
        for button in found:
            self.assertRegex(button.get_name(), r"^App (\d\d) — Item \1$")
        item = self.itemOf(found[1])
        press(found[1])
        self.assertTrue(becomes(lambda: item.events() == ["activate"]), item.lines())
        self.assertEqual([other.events() for other in self.items if other is not item], [[]] * (self.COUNT - 1))
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "the ledge stays open")

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

        # So much takes a busy machine its time, and the ledge lists anew only what it is opened for.
        for _ in range(2):
            self.assertTrue(becomes(isListed))
        # Messages of sixty mebibytes have to be received, but one of each is worth keeping.
        self.assertTrue(becomes(lambda: memoryOf(self.ovin.pid) < before + 60), (before, memoryOf(self.ovin.pid)))

    def testItStaysAboveAFullScreenWindowAndTakesNoFocus(self):
        window = subprocess.Popen(["xev", "-name", "Full screen", "-event", "focus"], stdout=subprocess.DEVNULL)
        self.addCleanup(window.wait, BOUND)
        self.addCleanup(window.kill)
        self.assertTrue(becomes(lambda: run("xdotool", "search", "--onlyvisible", "--name", "Full screen").stdout))
        number = run("xdotool", "search", "--onlyvisible", "--name", "Full screen").stdout.split()[0]
        slot = self.slot()
        run("xdotool", "windowactivate", number)
        self.assertTrue(becomes(lambda: int(number) == int(activeWindow().split()[-1], 16)), activeWindow())
        run("wmctrl", "-i", "-r", number, "-b", "add,fullscreen")
        self.assertTrue(becomes(lambda: geometry(number)[3] == 900), geometry(number))
        active = activeWindow()
        # The bar lies below, and a second start of the program opens the ledge as well.
        self.assertEqual(run(OVIN).returncode, 0)
        self.assertTrue(becomes(lambda: windowsOf(self.ovin.pid)), slot)
        place = geometry(windowsOf(self.ovin.pid)[0])
        self.assertTrue(becomes(lambda: (0xC0, 0x10, 0x90) in colours(place)), "it is covered")
        self.assertEqual(activeWindow(), active)
        self.assertEqual(int(run("xdotool", "getwindowfocus").stdout), int(number), "the ledge has taken the focus")

    def testAnyPressOutsideClosesIt(self):
        for x, y, button in ((300, 500, 1), (300, 500, 3), (300, BAR_HEIGHT // 2, 1)):
            self.openLedge(self.ovin)
            click(x, y, button)
            self.assertTrue(becomes(lambda: not self.isOpen(self.ovin), 5), (x, y, button))
            time.sleep(0.6)  # a click on the item right after such a press counts as the same one

    def testAClickOnTheItemClosesItAgain(self):
        self.openLedge(self.ovin)
        click(*self.slot())
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin), 5))
        time.sleep(0.3)
        self.assertFalse(self.isOpen(self.ovin), "the click that closed it has opened it again")

    def testNothingHappensBeforeTheButtonIsReleased(self):
        x, y = self.slot()
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
        self.assertTrue(becomes(lambda: self.slot() and self.slot()[0] > 1440), self.slot())
        click(*self.slot())
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))
        x, _, width, _ = geometry(windowsOf(self.ovin.pid)[0])
        self.assertGreaterEqual(x, 1440)
        self.assertLessEqual(x + width, 1440 + 1920)

    def testATooWideOneScrollsSideways(self):
        for number in range(40):
            self.startItem("--name", f"Wide {number}", "--title", "Wide", "--pixmap", "#101010", "--status", "Active")
        place = geometry(self.openLedge(self.ovin))
        self.assertTrue(becomes(lambda: geometry(windowsOf(self.ovin.pid)[0])[2] >= 1300), place)
        first = lambda: buttonsOf("Ovin")[0].get_extents(Atspi.CoordType.SCREEN).x
        before = first()
        x, y, width, height = geometry(windowsOf(self.ovin.pid)[0])
        run("xdotool", "mousemove", str(x + width // 2), str(y + height // 2), "click", "--repeat", "3", "7")
        self.assertTrue(becomes(lambda: first() < before, 5), (before, first()))
        run("xdotool", "click", "--repeat", "6", "6")
        self.assertTrue(becomes(lambda: first() == before, 5), (before, first()))


class TheStatusItem(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        self.ovin = self.startShown()

    def openMenu(self):
        x, y = self.slot()
        click(x, y, 3)
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
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin), 5), "Escape does not close it")
        self.openMenu()
        click(400, 500)
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin), 5), "a press outside does not close it")
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

    def testASecondRequestReplacesTheMenu(self):
        _, first = self.openMenu()
        accessible("MenuBarAgent", "Ovin").do_action(1)  # as if clicked on with the right button
        self.assertTrue(becomes(lambda: len(windowsOf(self.ovin.pid)) == 1 and windowsOf(self.ovin.pid) != [first]))
        run("xdotool", "key", "Escape")
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin), 5))

    def testOthersPressItByWayOfTheBar(self):
        press(accessible("MenuBarAgent", "Ovin"))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))

    def testAMiddleClickAndTheWheelDoNothing(self):
        for button in ("2", "4", "5"):
            click(*self.slot(), button)
        time.sleep(0.5)
        self.assertFalse(self.isOpen(self.ovin))
        self.assertIsNone(self.ovin.poll())

    def testABarThatStartsAgainShowsItAgain(self):
        agent = pidOf("menu bar agent")
        os.kill(agent, signal.SIGKILL)
        self.assertTrue(becomes(lambda: accessible("MenuBarAgent") is None))
        # It serves the other tests too, and ends with the desktop.
        TheStatusItem.successor = subprocess.Popen([os.environ["OVIN_MENU_BAR_AGENT"]])
        self.assertTrue(becomes(lambda: self.slot() is not None), "it does not come back")
        click(*self.slot())
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
        click(*self.slot(), 3)
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
        self.assertIn("The session bus is gone", ovin.stderr.read())

    def testWithoutASessionBusItSaysSo(self):
        ovin = self.startOvin(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent/bus")
        self.assertEnds(ovin, 1)
        self.assertIn("there is no session bus", ovin.stderr.read())


if __name__ == "__main__":
    Atspi.init()
    Atspi.set_timeout(2000, 5000)
    main()
