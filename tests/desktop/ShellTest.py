"""Ovin from its first start to its last: guide, windows, menu, start at login, and what goes wrong while the ledge is open.

Started with the paths of ovin-items, status-item and ovin.
"""

import os
import re
import signal
import time

from OvinTest import (ApplicationTestCase, BAR_HEIGHT, BOUND, GUIDE_WAS_SHOWN, OVIN, accessible, awaited, askForOwnMenu, becomes, buttonsOf, click,
                      entryNamed, geometry, main, press, readSettings, run, setAccessibility, windowsOf,
                      writeSettings)

COUNT = 40
AUTOSTART = os.path.join(os.environ["XDG_CONFIG_HOME"], "autostart", "org.ovin.Ovin.desktop")


def isShown(name):
    return accessible("Ovin", name) is not None


def key(name):
    run("xdotool", "key", name)


class TheStart(ApplicationTestCase):
    def testTheFirstStartShowsTheGuideAndTheSecondDoesNot(self):
        writeSettings()
        first = self.startShown()
        self.assertTrue(becomes(lambda: isShown("Some icons are out of sight.")), "there is no guide")
        self.assertIn(GUIDE_WAS_SHOWN, readSettings())
        first.terminate()
        self.assertEnds(first)
        second = self.startShown()
        time.sleep(1)
        self.assertFalse(windowsOf(second.pid), "there is a window")

    def testSettingsOfEarlierVersionsAreRemovedAndOthersKept(self):
        writeSettings(GUIDE_WAS_SHOWN, "OvinEngineState\ts\told", "OvinSpacerRotation\ti\t3", "Other\ti\t5")
        self.startShown()
        self.assertTrue(becomes(lambda: sorted(readSettings()) == sorted([GUIDE_WAS_SHOWN, "Other\ti\t5"])), readSettings())

    def testEveryPreviewShowsItsWindowAndNoItem(self):
        for variable, value, text in (("OVIN_TEST_ABOUT", "", "Made by Vorda"), ("OVIN_TEST_GUIDE", "end", "Good manners."),
                                      ("OVIN_TEST_ARRANGE_WINDOW", "abc", "Organize your menu bar")):
            preview = self.startOvin(**{variable: value})
            self.assertTrue(becomes(lambda: isShown(text)), f"{variable} shows nothing")
            self.assertIsNone(self.slot(), f"{variable} has an item in the bar")
            preview.terminate()
            self.assertEnds(preview)

    def testWithoutRoomForSettingsItStartsAllTheSame(self):
        folder = os.path.join(os.environ["OVIN_DESKTOP_DIR"], "no-folder")
        with open(folder, "w", encoding="utf-8"):
            pass
        process = self.startOvin(XDG_CONFIG_HOME=folder)
        self.assertTrue(becomes(lambda: self.slot() is not None))
        self.assertIsNone(process.poll())


class TheQuestionForAccessibility(ApplicationTestCase):
    AGREED, REFUSED = "OvinMayEnableAccessibility\tb\t1", "OvinMayEnableAccessibility\tb\t0"

    def setUp(self):
        super().setUp()
        self.startItem("--title", "One")

    def isOn(self):
        return "true" in run("gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
                             "--method", "org.freedesktop.DBus.Properties.Get", "org.a11y.Status", "IsEnabled").stdout

    def question(self):
        return run("xdotool", "search", "--onlyvisible", "--name", "^Accessibility$").stdout.split()

    def answer(self, key):
        self.assertTrue(becomes(self.question), "nothing is asked")
        run("xdotool", "windowactivate", "--sync", *self.question(), "key", key)
        self.assertTrue(becomes(lambda: not self.question()))

    def end(self, ovin):
        ovin.terminate()
        self.assertEnds(ovin)

    def testBesideABarThatCanBeReadItIsAskedOnce(self):
        setAccessibility(False)
        ovin = self.startShown()
        click(*awaited(self.slot))
        self.answer("Escape")
        self.assertIn(self.REFUSED, readSettings())
        self.openLedge(ovin)
        click(300, 500)
        self.assertTrue(becomes(lambda: not self.isOpen(ovin)))
        self.end(ovin)
        self.openLedge(self.startShown())

    def testWhoWantsToOrganizeAfterARefusalIsAskedAgain(self):
        writeSettings(GUIDE_WAS_SHOWN, self.REFUSED)
        setAccessibility(False)
        self.startShown()
        self.assertEqual(self.startOvin("--organize").wait(BOUND), 0)
        self.answer("Return")
        self.assertTrue(becomes(lambda: self.AGREED in readSettings()), readSettings())
        self.assertTrue(becomes(self.isOn))

    def testWhatWasAgreedToIsSwitchedOnAgainWithoutAQuestion(self):
        writeSettings(GUIDE_WAS_SHOWN, self.AGREED)
        setAccessibility(False)
        ovin = self.startShown()
        self.assertTrue(becomes(self.isOn), "it stays off")

        # The bar tells its layout a moment later. Two clicks open the ledge anew.
        def isBarRead():
            click(*awaited(self.slot))
            return becomes(lambda: isShown("No icon is out of sight"), 2)

        self.assertTrue(becomes(isBarRead), "the bar is not read")
        self.assertFalse(self.question())
        self.assertIsNone(ovin.poll())

    def testWhoSwitchesItOffMeanwhileHasItStayOff(self):
        writeSettings(GUIDE_WAS_SHOWN, self.AGREED)
        ovin = self.startShown()
        setAccessibility(False)
        self.assertTrue(becomes(lambda: self.REFUSED in readSettings()), readSettings())
        self.end(ovin)
        self.startShown()
        time.sleep(1)
        self.assertFalse(self.isOn())


class TheMenu(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        self.ovin = self.startShown()

    def choose(self, entry):
        self.assertTrue(becomes(lambda: entryNamed(entry) is None), "the menu before is still there")
        askForOwnMenu(*awaited(self.slot))
        found = awaited(lambda: entryNamed(entry))
        self.assertIsNotNone(found, f"{entry} is not in the menu")
        press(found)

    def testTheAboutWindowIsOperatedByKeys(self):
        self.choose("About Ovin")
        self.assertTrue(becomes(lambda: isShown("Made by Vorda")))
        self.assertTrue(becomes(lambda: run("xdotool", "getactivewindow", "getwindowname").stdout == "About Ovin\n"))
        key("Escape")
        self.assertTrue(becomes(lambda: not windowsOf(self.ovin.pid)))
        self.choose("About Ovin")
        self.assertTrue(becomes(lambda: windowsOf(self.ovin.pid)), "it does not come back")

    def testTheGuideIsOperatedByOthers(self):
        self.choose("How This Works")
        self.assertTrue(becomes(lambda: isShown("The ledge.")))
        press(accessible("Ovin", "Done"))
        self.assertTrue(becomes(lambda: not windowsOf(self.ovin.pid)))

    def testStartingAtLoginIsAnEntryOfTheDesktop(self):
        self.choose("Launch at Login")
        self.assertTrue(becomes(lambda: os.path.exists(AUTOSTART)))
        self.assertEqual(run("desktop-file-validate", AUTOSTART).stdout, "")
        self.assertTrue(becomes(lambda: not windowsOf(self.ovin.pid)))
        self.choose("Launch at Login")
        self.assertTrue(becomes(lambda: not os.path.exists(AUTOSTART)))

    def testUpdatesAreLeftToTheSystemWhichItSays(self):
        self.choose("Check for Updates…")
        self.assertTrue(becomes(lambda: windowsOf(self.ovin.pid)))
        key("Return")
        self.assertTrue(becomes(lambda: not windowsOf(self.ovin.pid)))


class CommandsFromOutside(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        self.ovin = self.startShown()

    def tell(self, option):
        self.assertEqual(self.startOvin(option).wait(BOUND), 0, option)

    def testOptionsTellTheOvinThatRunsWhatToDo(self):
        self.tell("--about")
        self.assertTrue(becomes(lambda: isShown("Made by Vorda")))
        self.tell("--launch-at-login")
        self.assertTrue(becomes(lambda: os.path.exists(AUTOSTART)))
        self.tell("--launch-at-login")
        self.assertTrue(becomes(lambda: not os.path.exists(AUTOSTART)))
        self.tell("--quit")
        self.assertEnds(self.ovin)
        self.assertEqual(self.startOvin("--quit", DISPLAY="").wait(BOUND), 0, "nobody runs who could be told to end")

    def testAnOptionStartsOvinWhereNoneRuns(self):
        self.tell("--quit")
        self.assertEnds(self.ovin)
        other = self.startOvin("--about")
        self.assertTrue(becomes(lambda: isShown("Made by Vorda")))
        self.assertIsNone(other.poll())

    def testTwoOptionsAtOnceAreAMistake(self):
        self.assertEqual(self.startOvin("--about", "--quit").wait(BOUND), 2)
        self.assertIsNone(self.ovin.poll())

    def ask(self, path, method, *arguments):
        return run("gdbus", "call", "--session", "--dest", "org.ovin.Ovin", "--object-path", path, "--method", method, *arguments)

    def testTheDesktopActivatesItsActions(self):
        activate = "org.freedesktop.Application.ActivateAction"
        for action, answer in (("no-such-action", 0), ("about", 0)):
            self.assertEqual(self.ask("/org/ovin/Ovin", activate, action, "[]", "{}").returncode, answer)
        self.assertTrue(becomes(lambda: isShown("Made by Vorda")))
        self.ask("/org/ovin/Ovin", activate, "quit", "[]", "{}")
        self.assertEnds(self.ovin)

    def testEveryActionOfTheDesktopEntryIsAnOption(self):
        entry = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "resources", "org.ovin.Ovin.desktop")
        with open(entry, encoding="utf-8") as file:
            options = re.findall(r"^Exec=ovin (--.+)$", file.read(), re.MULTILINE)
        self.assertEqual(len(options), 7)
        text = run(OVIN, "--help").stdout
        for option in options:
            self.assertIn(option + " ", text)


class TheOpenLedge(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        self.ovin = self.startShown()
        for number in range(1, COUNT + 1):
            self.startItem("--name", f"App {number:02}", "--title", f"Item {number:02}", "--pixmap", "#c01090")

    def itemOf(self, button):
        return self.items[int(re.match(r"App (\d+)", button.get_name())[1]) - 1]

    def testAnItemWhoseProgramDiesBeforeTheClickDoesNoHarm(self):
        self.openLedge(self.ovin)
        button = buttonsOf("Ovin")[0]
        item = self.itemOf(button)
        # Nothing tells Ovin in time: the ledge shows the item as before.
        os.kill(self.ovin.pid, signal.SIGSTOP)
        item.end()
        os.kill(self.ovin.pid, signal.SIGCONT)
        press(button)
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "the ledge stays open")
        time.sleep(1)
        self.assertIsNone(self.ovin.poll(), "Ovin has ended")
        self.openLedge(self.ovin)

    def testAStoppedProgramIsClickedWithoutWaiting(self):
        self.openLedge(self.ovin)
        button = buttonsOf("Ovin")[0]
        item = self.itemOf(button)
        item.stop()
        press(button)
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "the ledge stays open")
        time.sleep(0.6)
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin), 2), "Ovin waits for the program")

    def testItsScreenIsUnplugged(self):
        run("xrandr")
        run("xrandr", "--addmode", "DUMMY1", "1920x1080")
        run("xrandr", "--output", "DUMMY1", "--mode", "1920x1080", "--right-of", "DUMMY0", "--primary")
        self.addCleanup(run, "xrandr", "--output", "DUMMY0", "--primary")
        self.addCleanup(run, "xrandr", "--output", "DUMMY1", "--off")
        self.assertTrue(becomes(lambda: (self.slot() or (0,))[0] > 1440), self.slot())
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: self.isOpen(self.ovin)))
        run("xrandr", "--output", "DUMMY0", "--primary", "--output", "DUMMY1", "--off")
        self.assertTrue(becomes(lambda: (self.slot() or (1440,))[0] < 1440), self.slot())
        click(300, 500)
        self.assertTrue(becomes(lambda: not self.isOpen(self.ovin)), "it cannot be closed any more")
        time.sleep(0.6)
        x, y, width, _ = geometry(self.openLedge(self.ovin))
        self.assertEqual((x + width, y), (1440 - 8, BAR_HEIGHT + 6))

    def testClicksThatComeFasterThanItOpensLeaveItUsable(self):
        x, y = awaited(self.slot)
        run("xdotool", "mousemove", str(x), str(y), "click", "--repeat", "51", "--delay", "3", "1")

        # A busy machine may still be dealing with the clicks, which open and close the ledge meanwhile.
        def isUsable():
            if self.isOpen(self.ovin):
                click(300, 500)
            if not becomes(lambda: not self.isOpen(self.ovin), 2):
                return False
            time.sleep(0.6)
            click(x, y)
            return becomes(lambda: self.isOpen(self.ovin) and buttonsOf("Ovin"), 2)

        self.assertTrue(becomes(isUsable))
        self.assertIsNone(self.ovin.poll(), "Ovin has ended")


if __name__ == "__main__":
    main()
