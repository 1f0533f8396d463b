"""Windows on a desktop, as a person and an assistive program meet them: keys, clicks, focus, stacking and places.

Started with the path of sample_windows; further arguments go to unittest.
"""

import contextlib
import os
import re
import signal
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "desktop"))
from PrivateDesktop import BOUND, Lines, becomes, pidOf  # noqa: E402

SAMPLES = os.path.abspath(sys.argv[1])
# As sample_windows numbers its buttons.
DONE, MORE, CANCEL, SITE, LICENCE, DISCLOSE = range(1, 7)
ROLE_NAMES = ("push button", "button", "link")


def run(*command, check=True):
    return subprocess.run(command, capture_output=True, text=True, timeout=BOUND, check=check).stdout.strip()


class Samples:
    """The program that shows windows, and what it has said."""

    def __init__(self):
        self.process = subprocess.Popen([SAMPLES], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.lines = Lines(self.process.stdout)
        assert self.hears("ready")

    def say(self, line):
        self.process.stdin.write(line.encode() + b"\n")
        self.process.stdin.flush()

    def hears(self, expected, bound=BOUND):
        """Whether the program says this in the end, whatever it says before."""
        while (line := self.lines.next(bound)) is not None:
            if line == expected:
                return True
        return False

    def all(self):
        """What the program says until it answers a question that this puts to it now."""
        self.say("mark")
        lines = []
        while (line := self.lines.next()) not in ("what?", None):
            lines.append(line)
        return lines

    def end(self):
        """Its exit status."""
        self.say("quit")
        try:
            return self.process.wait(BOUND)
        finally:
            self.process.kill()
            self.process.stdin.close()
            self.process.stdout.close()


def windowNamed(title):
    found = run("xdotool", "search", "--onlyvisible", "--name", f"^{title}$", check=False).split()
    return int(found[0]) if found else None


def activeWindow():
    match = re.search(r"# (0x[0-9a-f]+)", run("xprop", "-root", "_NET_ACTIVE_WINDOW", check=False))
    return int(match[1], 16) if match else None


def stacking():
    """The windows from the lowest to the topmost."""
    return [int(window, 16) for window in re.findall(r"0x[0-9a-f]+", run("xprop", "-root", "_NET_CLIENT_LIST_STACKING"))]


def prop(window, name):
    return run("xprop", "-id", str(window), name)


def frameExtents(window):
    """Left, right, top, bottom; None until the window manager has told."""
    numbers = re.findall(r"\d+", prop(window, "_NET_FRAME_EXTENTS").partition("=")[2])
    return [int(number) for number in numbers] if numbers else None


def clientGeometry(window):
    """x, y, width, height of what is inside the frame."""
    lines = run("xwininfo", "-id", str(window))
    return [int(re.search(rf"{name}: +(-?\d+)", lines)[1])
            for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]


def frameGeometry(window):
    left, right, top, bottom = frameExtents(window)
    x, y, width, height = clientGeometry(window)
    return [x - left, y - top, width + left + right, height + top + bottom]


def key(name):
    run("xdotool", "key", name)


def click(x, y):
    run("xdotool", "mousemove", str(x), str(y), "click", "1")


def drag(start, end):
    """Drags step by step, because the window manager begins to move a window only when the pointer has gone some way."""
    middle = [(one + other) // 2 for one, other in zip(start, end)]
    for step in (("mousemove", *start), ("mousedown", 1), ("mousemove", *middle), ("mousemove", *end), ("mouseup", 1)):
        run("xdotool", *map(str, step))
        time.sleep(0.05)


@contextlib.contextmanager
def stoppedWindowManager():
    """Stops the window manager, as if it were busy with something else: windows get no frame meanwhile."""
    os.kill(pidOf("window manager"), signal.SIGSTOP)
    try:
        yield
    finally:
        os.kill(pidOf("window manager"), signal.SIGCONT)


class WindowsTestCase(unittest.TestCase):
    def setUp(self):
        self.samples = Samples()
        self.addCleanup(self.endSamples)

    def endSamples(self):
        if self.samples.process.poll() is None:
            self.assertEqual(self.samples.end(), 0)

    def assertBecomes(self, condition, message=None):
        self.assertTrue(becomes(condition), message)

    def shown(self, command, title):
        """Shows a window; its id."""
        self.samples.say(command)
        self.assertTrue(self.samples.hears("shown " + command.split()[0]))
        self.assertBecomes(lambda: windowNamed(title) and frameExtents(windowNamed(title)), title)
        return windowNamed(title)

    def shownAndActive(self, command, title):
        window = self.shown(command, title)
        self.assertBecomes(lambda: activeWindow() == window, "it has no focus")
        return window

    def otherProgram(self):
        """A program of others that has the focus."""
        other = Samples()
        self.addCleanup(other.end)
        other.say("about")
        self.assertTrue(other.hears("shown about"))
        self.assertBecomes(lambda: windowNamed("Sample about"))
        window = windowNamed("Sample about")
        self.assertBecomes(lambda: activeWindow() == window)
        return window


class InformationWindows(WindowsTestCase):
    def testItStandsInTheCentreAndHasATitleButNoButtons(self):
        window = self.shownAndActive("guide", "Sample guide")
        x, y, width, height = frameGeometry(window)
        screenWidth, screenHeight = map(int, run("xdotool", "getdisplaygeometry").split())
        self.assertAlmostEqual(x + width / 2, screenWidth / 2, delta=20)
        self.assertAlmostEqual(y + height / 2, screenHeight / 2, delta=40)
        flags, functions = (int(word, 16) for word in re.findall(r"0x[0-9a-f]+", prop(window, "_MOTIF_WM_HINTS"))[:2])
        self.assertTrue(flags & 1, "the functions do not count")
        self.assertTrue(functions & 4, "it cannot be moved")
        self.assertFalse(functions & 0b111000, "minimise, maximise or close")
        self.assertIn("Sample guide", prop(window, "_NET_WM_NAME"))

    def testItComesToTheFrontAlthoughTheUserWorksInAnotherProgram(self):
        page = self.shownAndActive("guide", "Sample guide")
        other = self.otherProgram()
        # The user has just done something in the other program.
        x, y, width, _ = clientGeometry(other)
        click(x + width // 2, y + 5)
        key("a")
        self.assertBecomes(lambda: stacking().index(other) > stacking().index(page))
        self.samples.say("guide")
        self.assertBecomes(lambda: activeWindow() == page, "it has no focus")
        self.assertBecomes(lambda: stacking().index(page) > stacking().index(other), "it is not in front")
        # The same when it has been put away in between.
        click(*clientGeometry(other)[:2])
        self.samples.say("close guide")
        self.assertBecomes(lambda: windowNamed("Sample guide") is None)
        self.assertBecomes(lambda: activeWindow() == other)
        self.samples.say("guide")
        self.assertBecomes(lambda: activeWindow() == page and stacking().index(page) > stacking().index(other))

    def testItReturnsToWhereTheUserLeftIt(self):
        window = self.shownAndActive("about", "Sample about")
        run("xdotool", "windowmove", str(window), "80", "90")
        self.assertBecomes(lambda: abs(frameGeometry(window)[0] - 80) < 30)
        time.sleep(0.2)  # until the toolkit has heard of it as well
        before = frameGeometry(window)
        for _ in range(3):
            self.samples.say("close about")
            self.assertBecomes(lambda: windowNamed("Sample about") is None)
            self.shownAndActive("about", "Sample about")
            self.assertBecomes(lambda: frameGeometry(window) == before, (before, frameGeometry(window)))

    def testEscapeClosesNothingUnlessAButtonHasIt(self):
        window = self.shownAndActive("guide", "Sample guide")
        key("Escape")
        key("q")
        self.assertEqual(self.samples.all(), [])
        self.assertEqual(windowNamed("Sample guide"), window)
        self.shownAndActive("everything", "Sample everything")
        key("Escape")
        self.assertTrue(self.samples.hears(f"clicked everything {CANCEL}"))

    def testReturnPressesItsButtonOnceAndThePageMayGoThen(self):
        self.shownAndActive("guide", "Sample guide")
        key("Return")
        self.assertTrue(self.samples.hears(f"clicked guide {DONE}"))
        self.assertTrue(self.samples.hears("dropped guide"))
        self.assertBecomes(lambda: windowNamed("Sample guide") is None)
        self.assertEqual(self.samples.all(), [])

    def testTabReachesEveryButtonAndSpaceAndReturnPressIt(self):
        self.shownAndActive("guide", "Sample guide")
        for press in ("space", "Return"):
            key("Tab")
            if press == "Return":
                key("shift+Tab")
            key(press)
            self.assertTrue(self.samples.hears(f"clicked guide {MORE}"))
        key("Tab")
        key("space")
        self.assertTrue(self.samples.hears(f"clicked guide {DONE}"))

    def testAClickPressesALink(self):
        window = self.shownAndActive("about", "Sample about")
        x, y, width, height = clientGeometry(window)
        click(x + width // 2 - 40, y + height - 38)
        self.assertTrue(self.samples.hears(f"clicked about {SITE}"))

    def testAnAlertHasTheFocusAndGoesWithReturnOneAfterTheOther(self):
        self.shownAndActive("guide", "Sample guide")
        self.samples.say("alert One text")
        self.assertBecomes(lambda: activeWindow() == windowNamed("Ovin"))
        first = windowNamed("Ovin")
        self.samples.say("alert Two text")
        self.assertBecomes(lambda: activeWindow() not in (first, None) and "Ovin" in prop(activeWindow(), "WM_NAME"))
        second = activeWindow()
        key("Return")
        self.assertBecomes(lambda: second not in stacking())
        self.assertBecomes(lambda: activeWindow() == first)
        key("Return")
        self.assertBecomes(lambda: windowNamed("Ovin") is None)
        self.assertEqual(self.samples.all(), [])

    def testTheProgramEndsWhileItsWindowsAreOpen(self):
        self.shownAndActive("guide", "Sample guide")
        self.shown("card", "Sample card")
        self.samples.say("alert One text")
        self.assertBecomes(lambda: windowNamed("Ovin"))
        self.assertEqual(self.samples.end(), 0)


class FloatingPanels(WindowsTestCase):
    def testItTakesNoFocusAndStaysAboveAllWindowsOnAllDesktops(self):
        other = self.otherProgram()
        card = self.shown("card 60 80", "Sample card")
        time.sleep(0.3)
        self.assertEqual(activeWindow(), other)
        self.assertIn("_NET_WM_STATE_ABOVE", prop(card, "_NET_WM_STATE"))
        self.assertIn("4294967295", prop(card, "_NET_WM_DESKTOP"))
        x, y, _, _ = clientGeometry(other)
        click(x + 5, y + 5)
        self.samples.say("guide")
        self.assertBecomes(lambda: activeWindow() == windowNamed("Sample guide"))
        self.assertGreater(stacking().index(card), stacking().index(other))

    def testAPageIsNotHiddenBehindIt(self):
        card = self.shown("card 60 80", "Sample card")
        guide = self.shownAndActive("guide", "Sample guide")
        above = lambda one, other: stacking().index(one) > stacking().index(other)
        self.assertBecomes(lambda: above(guide, card))
        x, y, _, _ = frameGeometry(card)
        click(x + 30, y + 6)
        self.assertBecomes(lambda: above(card, guide), "a click on the card does not bring it forward")
        self.samples.say("drop card")
        self.assertBecomes(lambda: "ABOVE" not in prop(guide, "_NET_WM_STATE"), "the page stays above all others")
        # A card that comes later does not hide the page for good either.
        card = self.shown("card 60 80", "Sample card")
        self.samples.say("guide")
        self.assertBecomes(lambda: above(guide, card))

    def testAnAlertIsAboveItAndLeavesItsButtonsAlone(self):
        self.samples.say("alert One text")
        self.assertBecomes(lambda: windowNamed("Ovin"))
        card = self.shown("card 60 80", "Sample card")
        self.samples.say("alert Two text")
        self.assertBecomes(lambda: len([window for window in stacking() if "Ovin" in prop(window, "WM_NAME")]) == 2)
        self.assertBecomes(lambda: "Ovin" in prop(stacking()[-1], "WM_NAME"))
        # With the keyboard, because the alert may lie over them.
        x, y, _, _ = frameGeometry(card)
        click(x + 30, y + 6)
        self.assertBecomes(lambda: activeWindow() == card, "the card cannot be used")
        key("Return")
        self.assertTrue(self.samples.hears(f"clicked card {DONE}"), "an alert takes its keys")

    def testItsFrameStandsWhereItWasTold(self):
        card = self.shown("card 60 80", "Sample card")
        self.assertBecomes(lambda: frameGeometry(card)[:2] == [60, 80], frameGeometry(card))

    def testItKeepsItsCornerWhenItIsReplacedAlsoAfterItWasMoved(self):
        card = self.shown("card 60 80", "Sample card")
        before = clientGeometry(card)
        self.samples.say("expand")
        self.assertBecomes(lambda: clientGeometry(card)[3] > before[3])
        self.assertEqual(frameGeometry(card)[:2], [60, 80])
        # By its title bar, as a user does.
        x, y, width, _ = frameGeometry(card)
        grip = x + width // 2, y + 6
        drag(grip, (grip[0] + 200, grip[1] + 100))
        self.assertBecomes(lambda: frameGeometry(card)[:2] == [260, 180])
        for command in ("expand 1", "expand 1.3", "expand 1"):
            before = clientGeometry(card)
            self.samples.say(command)
            self.assertBecomes(lambda: clientGeometry(card)[2:] != before[2:])
            time.sleep(0.1)
            self.assertEqual(frameGeometry(card)[:2], [260, 180])

    def testItKeepsItsCornerWhenItIsReplacedBeforeItHasAFrame(self):
        for _ in range(3):
            with stoppedWindowManager():
                self.samples.say("card 60 80\nexpand 1\nsync")
                self.assertTrue(self.samples.hears("synced"))
            self.assertBecomes(lambda: windowNamed("Sample card") and frameExtents(windowNamed("Sample card")))
            card = windowNamed("Sample card")
            time.sleep(0.3)  # for what the toolkit and the window manager have still to tell each other
            self.assertEqual(frameGeometry(card)[:2], [60, 80])
            self.samples.say("drop card")
            self.assertTrue(self.samples.hears("dropped card"))

    def testItCanBeOperatedByTheKeyboardOnceItWasClicked(self):
        self.otherProgram()
        card = self.shown("card 60 80", "Sample card")
        x, y, width, height = clientGeometry(card)
        click(x + width - 5, y + 5)
        self.assertBecomes(lambda: activeWindow() == card)
        key("Tab")
        for _ in range(3):  # the triangle keeps the keyboard although each press replaces it
            key("space")
            self.assertTrue(self.samples.hears(f"clicked card {DISCLOSE}"))
            self.assertTrue(self.samples.hears("replaced card"))
        key("Escape")
        self.assertTrue(self.samples.hears(f"clicked card {CANCEL}"))
        self.assertEqual(windowNamed("Sample card"), card)

    def testItsCloseButtonIsHeardOfAndItMayGoThen(self):
        card = self.shown("card 60 80", "Sample card")
        x, y, width, _ = frameGeometry(card)
        click(x + width - 18, y + 14)
        self.assertTrue(self.samples.hears("closed card"))
        self.assertBecomes(lambda: windowNamed("Sample card") is None)
        self.shown("card 60 80", "Sample card")

    def testItGoesSilently(self):
        self.shown("card", "Sample card")
        self.samples.say("drop card")
        self.assertTrue(self.samples.hears("dropped card"))
        self.assertBecomes(lambda: windowNamed("Sample card") is None)
        self.assertEqual(self.samples.all(), [])


class AccessibilityBus:
    """The accessibility bus, asked one question at a time."""

    def __init__(self):
        answer = run("gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus", "--method",
                     "org.a11y.Bus.GetAddress")
        self.address = re.search(r"'(.*)'", answer)[1]

    def call(self, element, method, *arguments):
        return run("gdbus", "call", "--address", self.address, "--dest", element[0], "--object-path", element[1], "--method",
                   "org.a11y.atspi." + method, *arguments, check=False)

    def property(self, element, interface, name):
        answer = run("gdbus", "call", "--address", self.address, "--dest", element[0], "--object-path", element[1], "--method",
                     "org.freedesktop.DBus.Properties.Get", "org.a11y.atspi." + interface, name, check=False)
        match = re.search(r"<'(.*)'>|<\"(.*)\">", answer)
        return (match[1] or match[2] or "") if match else ""

    def children(self, element):
        return re.findall(r"\('([^']+)', (?:objectpath )?'([^']+)'\)", self.call(element, "Accessible.GetChildren"))

    def below(self, element):
        for child in self.children(element):
            yield child
            yield from self.below(child)

    def window(self, title):
        desktop = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        for application in self.children(desktop):
            for window in self.children(application):
                if self.property(window, "Accessible", "Name") == title:
                    return window
        return None

    def role(self, element):
        match = re.search(r"'(.*)'", self.call(element, "Accessible.GetRoleName"))
        return match[1] if match else ""

    def buttons(self, window):
        """Name and element of everything in a window that can be pressed."""
        return [(self.property(element, "Accessible", "Name"), element) for element in self.below(window)
                if self.role(element) in ROLE_NAMES]


class AssistivePrograms(WindowsTestCase):
    def testEveryButtonHasANameAndCanBePressed(self):
        bus = AccessibilityBus()
        for command, names, clicks in (
                ("about", ["Licence", "Web site"], {"Web site": SITE, "Licence": LICENCE}),
                ("guide", ["Done", "More…"], {"More…": MORE, "Done": DONE}),
                ("card 60 80", ["Cancel", "Details", "Done"], {"Cancel": CANCEL, "Done": DONE})):
            name = command.split()[0]
            self.shown(command, "Sample " + name)
            self.assertBecomes(lambda: bus.window("Sample " + name))
            buttons = dict(bus.buttons(bus.window("Sample " + name)))
            self.assertEqual(sorted(buttons), names)
            for button, tag in clicks.items():
                self.assertIn("true", bus.call(buttons[button], "Action.DoAction", "0"))
                self.assertTrue(self.samples.hears(f"clicked {name} {tag}"), button)

    def testPicturesAndTextAreCalledWhatTheyAre(self):
        bus = AccessibilityBus()
        self.shown("about", "Sample about")
        self.assertBecomes(lambda: bus.window("Sample about"))
        parts = {(bus.role(element), bus.property(element, "Accessible", "Name")) for element in
                 bus.below(bus.window("Sample about"))}
        self.assertIn(("label", "The program"), parts)
        self.assertIn(("link", "Web site"), parts)
        self.assertIn(("graphic", "Icon"), parts)


if __name__ == "__main__":
    signal.signal(signal.SIGPIPE, signal.SIG_IGN)
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=1)
