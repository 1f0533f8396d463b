"""Organizing with the real program beside a menu bar: however it ends, the display is put back.

Started with the paths of ovin-items, status-item and ovin.
"""

import os
import signal
import subprocess
import time
import unittest

from Organizing import (COUNT, DISPLAY_KEY, MODE_KEY, ORGANIZE, REFUSED, SERVER_KEY, TITLE, USUAL, OrganizeTestCase, clickOn,
                        dragWithSuper, drawn, isOnRecord, mode, place, readDefaults, show, slots, width)
from OvinTest import BOUND, GUIDE_WAS_SHOWN, SETTINGS, awaited, becomes, buttonsOf, click, main, processOf, run, writeSettings


class TheSession(OrganizeTestCase):
    def testTheDisplayIsWiderTheCardIsThereAndEveryItemIsDrawn(self):
        self.startInCrowd()
        self.assertLess(len(drawn()), COUNT + 1, "the bar has room for everything")
        self.organize()
        self.assertTrue(becomes(lambda: len(drawn()) == COUNT + 1), drawn())
        self.assertEqual(sorted(readDefaults()), ["OvinHasShownGuide", DISPLAY_KEY, MODE_KEY, SERVER_KEY])

    def testAnOptionWaitsForASessionThatIsSlowToTellWhetherTheBarCanBeRead(self):
        pid = processOf("org.a11y.Bus")
        os.kill(pid, signal.SIGSTOP)
        try:
            self.startOvin("--organize")
            time.sleep(3)
            self.assertEqual(mode(), USUAL)
        finally:
            os.kill(pid, signal.SIGCONT)
        self.assertTrue(becomes(lambda: width() > 1440), "nothing is organized")
        self.assertTrue(becomes(lambda: self.own(TITLE)))

    def testDoneEndsIt(self):
        self.organizing()
        self.clickDone()
        self.assertPutBack()

    def testTheCloseButtonEndsIt(self):
        self.organizing()
        window = run("xdotool", "search", "--onlyvisible", "--name", TITLE).stdout.split()[0]
        run("wmctrl", "-i", "-c", window)
        self.assertPutBack()

    def testALeftClickOnTheItemEndsIt(self):
        ovin = self.organizing()
        click(*awaited(self.slot))
        self.assertPutBack()
        self.assertFalse(self.isOpen(ovin), "the ledge has opened")

    def testItsEntryInTheMenuEndsIt(self):
        self.organizing()
        self.choose("Done Organizing")
        self.assertPutBack()

    def testQuittingEndsIt(self):
        ovin = self.organizing()
        self.choose("Quit Ovin")
        self.assertEnds(ovin)
        self.assertPutBack()

    def testEverySignalEndsIt(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            ovin = self.organizing()
            ovin.send_signal(number)
            self.assertEnds(ovin)
            self.assertPutBack()
            self.awaitGone()

    def testAnEndBeforeItIsReportedShowsNoCard(self):
        delays = []
        for _ in range(3):
            ovin = self.startInCrowd()
            self.choose(ORGANIZE)
            self.assertTrue(becomes(lambda: width() > 1440))
            began = time.monotonic()
            ovin.terminate()
            self.assertEnds(ovin)
            delays.append(time.monotonic() - began)
            self.assertPutBack()
            self.awaitGone()
        print(f"ended {', '.join(f'{delay:.2f}' for delay in delays)} s after the display was seen to be wider")

    def testDoneAtOnceEndsIt(self):
        self.startInCrowd()
        self.choose(ORGANIZE)
        self.assertTrue(becomes(lambda: width() > 1440))
        click(*awaited(self.slot))
        self.assertPutBack()
        time.sleep(2.5)  # longer than it takes to settle and to look whether all items fit
        self.assertEqual(mode(), USUAL)
        self.assertIsNone(self.own(TITLE), "a card has come after the end")

    def testASuperDragReordersAndTheOrderStays(self):
        self.organizing()
        self.assertTrue(becomes(lambda: len(drawn()) == COUNT + 1), drawn())
        first = drawn()[0]
        bar = {name: element for _, name, element in slots()}
        dragWithSuper(bar[first], bar[drawn()[-1]])
        self.assertTrue(becomes(lambda: drawn() and drawn().index(first) >= COUNT - 2), drawn())
        order = [name for name in drawn() if name.startswith("Item")]
        self.clickDone()
        self.assertPutBack()
        self.assertTrue(becomes(lambda: first in drawn()), drawn())
        left = [name for name in drawn() if name.startswith("Item")]
        self.assertEqual(left, [name for name in order if name in left])
        self.assertLess(len(left), COUNT)

    def testTheLedgeShowsWhatIsMissingAfterwards(self):
        ovin = self.organizing()
        self.clickDone()
        self.assertPutBack()
        self.assertTrue(becomes(lambda: len(drawn()) < COUNT + 1))
        self.openLedge(ovin)
        missing = {name for _, name, _ in slots()} - set(drawn())
        listed = lambda: {button.get_name().split(" — ")[-1] for button in buttonsOf("Ovin")}
        self.assertTrue(becomes(lambda: listed() == missing), (listed(), missing))

    def testItCanBeDoneAgain(self):
        self.startInCrowd()
        for _ in range(3):
            self.organize()
            self.clickDone()
            self.assertPutBack()

    def testTheGuideBeginsItToo(self):
        self.startInCrowd()
        self.choose("How This Works")
        self.assertTrue(becomes(lambda: self.own("Some icons are out of sight.")))
        run("xdotool", "key", "End")
        self.assertTrue(becomes(lambda: self.own(ORGANIZE)))
        time.sleep(0.5)  # it scrolls there
        clickOn(self.own(ORGANIZE))
        self.awaitCard()
        self.assertGreater(width(), 1440)
        self.clickDone()
        self.assertPutBack()

    def testTheEnvironmentBeginsItAtTheStart(self):
        ovin = self.startOvin(OVIN_TEST_ORGANIZE="1")
        self.awaitCard()
        self.assertGreater(width(), 1440)
        ovin.terminate()
        self.assertEnds(ovin)
        self.assertPutBack()

    def testWhereEverythingFitsNothingChanges(self):
        self.startInCrowd()
        show("DUMMY0", "--mode", "2560x1600")
        self.assertTrue(becomes(lambda: len(drawn()) == COUNT + 1), drawn())
        self.choose(ORGANIZE)
        self.assertTrue(becomes(lambda: self.own("Everything already fits")), "no alert comes")
        self.assertEqual(mode(), "2560x1600")
        self.assertFalse(isOnRecord())


class WhatIsOwed(OrganizeTestCase):
    def kill(self, ovin):
        ovin.kill()
        ovin.wait(BOUND)
        self.awaitGone()

    def testARelaunchPaysWhatAKillLeft(self):
        ovin = self.organizing()
        wide = mode()
        self.kill(ovin)
        time.sleep(0.5)
        self.assertEqual(mode(), wide)
        self.assertTrue(isOnRecord())
        self.startInCrowd()
        self.assertPutBack()

    def testAThirdModeThatWasChosenByHandIsReplacedByTheUsualOne(self):
        self.organizing()
        show("DUMMY0", "--mode", "1680x1050")
        time.sleep(0.3)
        self.pressDone()
        self.assertPutBack()

    def testTheUsualModeThatWasChosenByHandStays(self):
        self.organizing()
        show("DUMMY0", "--mode", USUAL)
        time.sleep(0.3)
        self.assertTrue(isOnRecord())
        self.pressDone()
        self.assertPutBack()

    def testAModeThatWasChosenByHandAfterAKillIsReplacedOnce(self):
        ovin = self.organizing()
        self.kill(ovin)
        show("DUMMY0", "--mode", "1680x1050")
        self.startInCrowd()
        self.assertPutBack()
        show("DUMMY0", "--mode", "1680x1050")
        time.sleep(1)
        self.assertEqual(mode(), "1680x1050")

    def useSecond(self):
        """A second display that is the main one."""
        for each in ("1280x800", "1920x1080", "1920x1200", "2560x1600"):
            run("xrandr", "--addmode", "DUMMY1", each)
        show("DUMMY1", "--mode", "1280x800", "--right-of", "DUMMY0", "--primary")

    def organizeOnSecond(self):
        ovin = self.startInCrowd()
        self.useSecond()
        self.assertTrue(becomes(lambda: (self.slot() or (0,))[0] > 1440), self.slot())
        self.choose(ORGANIZE)
        self.awaitCard()
        self.assertGreater(width("DUMMY1"), 1280)
        self.assertEqual(mode("DUMMY0"), USUAL)
        return ovin

    def unplugSecond(self):
        show("DUMMY1", "--off")
        show("DUMMY0", "--primary")
        self.assertTrue(becomes(lambda: (self.slot() or (1440,))[0] < 1440), self.slot())

    def testADisplayThatComesBackIsPutBackThen(self):
        ovin = self.organizeOnSecond()
        wide = mode("DUMMY1")
        self.unplugSecond()
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: self.own(TITLE) is None))
        self.assertTrue(isOnRecord())
        self.assertEqual(place("DUMMY0"), USUAL + "+0+0")
        show("DUMMY1", "--mode", wide, "--right-of", "DUMMY0")
        self.assertTrue(becomes(lambda: mode("DUMMY1") == "1280x800" and not isOnRecord()), (mode("DUMMY1"), readDefaults()))
        self.assertEqual(place("DUMMY0"), USUAL + "+0+0")
        # Nothing more is put back: the mode that is chosen from now on stays.
        show("DUMMY1", "--mode", wide)
        time.sleep(1)
        self.assertEqual(mode("DUMMY1"), wide)
        ovin.terminate()
        self.assertEnds(ovin)
        self.assertIn("Ovin: the widened display is unavailable; will retry restoring it", ovin.stderr.read())

    def testWhileItIsAwayOrganizingIsRefused(self):
        self.organizeOnSecond()
        self.unplugSecond()
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: self.own(TITLE) is None))
        record = readDefaults()
        self.choose(ORGANIZE)
        self.assertTrue(becomes(lambda: self.own(REFUSED)), "no alert comes")
        self.assertEqual(mode(), USUAL)
        self.assertEqual(readDefaults(), record)

    def testADisplayThatIsThereAgainAtALaterLaunchIsPutBackThen(self):
        ovin = self.organizeOnSecond()
        wide = mode("DUMMY1")
        self.unplugSecond()
        ovin.terminate()
        self.assertEnds(ovin)
        self.assertTrue(isOnRecord())
        self.awaitGone()
        show("DUMMY1", "--mode", wide, "--right-of", "DUMMY0")
        self.startInCrowd()
        self.assertTrue(becomes(lambda: mode("DUMMY1") == "1280x800" and not isOnRecord()), (mode("DUMMY1"), readDefaults()))
        self.assertEqual(place("DUMMY0"), USUAL + "+0+0")


class WhatIsRefused(OrganizeTestCase):
    def assertRefused(self, text, expected=USUAL):
        self.choose(ORGANIZE)
        self.assertTrue(becomes(lambda: self.own(text)), "no alert comes")
        self.assertIsNotNone(self.own("Can’t widen this display"))
        self.assertEqual(mode(), expected)
        self.assertFalse(isOnRecord())
        run("xdotool", "key", "Return")
        self.assertTrue(becomes(lambda: self.own(text) is None), "the alert stays")
        self.assertIsNone(self.own(TITLE))

    def testMirroredDisplays(self):
        self.startInCrowd()
        run("xrandr", "--addmode", "DUMMY1", USUAL)
        show("DUMMY1", "--mode", USUAL, "--same-as", "DUMMY0")
        self.assertTrue(becomes(lambda: mode("DUMMY1") == USUAL))
        self.assertRefused("Your displays are mirrored, and mirrored displays change resolution together. Turn mirroring off in "
                           "your desktop’s display settings, then try again.")

    def testADisplayWithoutAWiderMode(self):
        self.startInCrowd()
        self.startItem("--items", "80", "--title", "More")  # they do not fit the widest mode either
        show("DUMMY0", "--mode", "3024x1964")
        self.assertTrue(becomes(lambda: len(slots()) == COUNT + 81 and len(drawn()) < COUNT + 81 and self.slot()))
        self.assertRefused("This display has no wider resolution, so some items stay out of reach. An external display, or "
                           "quitting a few menu bar apps, makes room.", "3024x1964")

    def testSettingsThatCannotBeWritten(self):
        self.startInCrowd()
        before = readDefaults()
        # A folder in the place of the file that is written aside keeps even root from writing.
        os.makedirs(os.path.join(SETTINGS + ".new", "inside"))
        self.assertRefused(REFUSED)
        self.assertEqual(readDefaults(), before)

    @unittest.skipIf(os.geteuid() == 0, "root may write everywhere")
    def testAFolderThatIsReadOnly(self):
        self.startInCrowd()
        folder = os.path.dirname(SETTINGS)
        os.chmod(folder, 0o500)
        self.addCleanup(os.chmod, folder, 0o700)
        self.assertRefused(REFUSED)


class BadRecords(OrganizeTestCase):
    """Whoever edits the settings, or another program, can leave anything there."""

    def launch(self, **record):
        writeSettings(GUIDE_WAS_SHOWN, *(f"{key}\t{value[0]}\t{value[2:]}" for key, value in record.items()))
        return self.startOvin()

    def assertStays(self, ovin):
        self.assertTrue(becomes(lambda: self.slot() is not None), "it does not start")
        self.assertIsNone(ovin.poll())

    def testAModeThatTheDisplayDoesNotHaveIsKeptAndTold(self):
        ovin = self.launch(OvinOriginalDisplayModeID="i 2147483647", OvinOriginalDisplayID="i 7")
        self.assertStays(ovin)
        self.assertTrue(isOnRecord())
        self.assertEqual(mode(), USUAL)
        ovin.terminate()
        self.assertEnds(ovin)
        self.assertIn("the widened display is unavailable; will retry restoring it", ovin.stderr.read())
        self.assertEqual(mode(), USUAL)

    def testADisplayThatNobodyKnowsIsWaitedFor(self):
        for display in ("i 4294967295", "i 0", "s nonsense", "b 0"):
            ovin = self.launch(OvinOriginalDisplayModeID="i 70", OvinOriginalDisplayID=display)
            self.assertStays(ovin)
            self.assertTrue(isOnRecord(), display)
            self.assertEqual(mode(), USUAL)
            ovin.terminate()
            self.assertEnds(ovin)
            self.awaitGone()

    def testANumberInAnyTypeIsUnderstood(self):
        ovin = self.organizing()
        ovin.kill()
        ovin.wait(BOUND)
        record = readDefaults()
        wide = mode()
        modeNumber, display = record[MODE_KEY][2:], record[DISPLAY_KEY][2:]
        for kinds in ("s", "d"):
            show("DUMMY0", "--mode", wide)
            self.awaitGone()
            ovin = self.launch(OvinOriginalDisplayModeID=f"{kinds} {modeNumber}", OvinOriginalDisplayID=f"{kinds} {display}")
            self.assertStays(ovin)
            self.assertPutBack()
            ovin.terminate()
            self.assertEnds(ovin)

    def testWhatIsNoNumberOfAModeEndsTheProgramWithAWordOfWhatToDo(self):
        for record in ({MODE_KEY: "i 2147483648", DISPLAY_KEY: "i 7"}, {MODE_KEY: "i 70", DISPLAY_KEY: "i -1"},
                       {MODE_KEY: "d 1e300", DISPLAY_KEY: "i 7"}):
            for _ in range(2):  # at every launch
                ovin = self.launch(**record)
                self.assertEnds(ovin, -signal.SIGABRT)
                key = MODE_KEY if record[DISPLAY_KEY] == "i 7" else DISPLAY_KEY
                self.assertRegex(ovin.stderr.read(),
                                 rf"Ovin: fatal: {key} is out of range: -?\d+; remove it from {SETTINGS}, and choose the "
                                 r"display's mode by hand")
                self.assertEqual(mode(), USUAL)
        # The advice of that line helps.
        ovin = self.launch()
        self.assertStays(ovin)

    def testSettingsThatAreNoFileAreToldAndLeftAlone(self):
        os.remove(SETTINGS)
        os.makedirs(os.path.join(SETTINGS, "inside"))
        ovin = self.startOvin()
        self.assertTrue(becomes(lambda: self.slot() is not None))
        ovin.terminate()
        self.assertEnds(ovin)
        self.assertIn(f"Ovin: the settings cannot be read, and are left as they are: {SETTINGS}", ovin.stderr.read())
        self.assertTrue(os.path.isdir(os.path.join(SETTINGS, "inside")))


if __name__ == "__main__":
    main()
