"""Several programs over one user's settings: Ovin in two sessions at the same time or one after the other, and a preview beside
it. What is owed to a display of one is paid by that one, and by nobody else.

Started with the paths of ovin-items, status-item and ovin; with --beside in front, in the second session of one of the tests.
"""

import os
import signal
import subprocess
import sys

HERE = os.path.abspath(__file__)
ROOT = os.path.join(os.path.dirname(HERE), "..", "..")
IS_BESIDE = sys.argv[1] == "--beside"
if IS_BESIDE:
    ROLE, SHARED = sys.argv[2:4]
    del sys.argv[1:4]
ARGUMENTS = sys.argv[1:4]

from OvinTest import (BOUND, GUIDE_WAS_SHOWN, OVIN, SETTINGS, ApplicationTestCase, accessible, becomes,  # noqa: E402
                      descendant, main, run, setAccessibility)
from Organizing import DISPLAY_KEY, MODE_KEY, TITLE, USUAL, isOnRecord, mode, readDefaults, show  # noqa: E402

QUESTION = "How does this work?"
LEFT_ALONE = "Ovin: a display of another session is widened; that session will restore it"


def isNamed(name="org.ovin.Ovin"):
    return "true" in run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/", "--method",
                         "org.freedesktop.DBus.NameHasOwner", name).stdout


def record():
    """What is owed; a build that looks for updates remembers when, besides."""
    return {key: value for key, value in readDefaults().items() if key.startswith("OvinOriginal")}


def beside():
    """What the second session does; its only output is the mode of its display in the end."""
    setAccessibility(True)
    environment = dict(os.environ, XDG_CONFIG_HOME=SHARED)
    if ROLE == "organizes":
        environment["OVIN_TEST_ORGANIZE"] = "1"
    ovin = subprocess.Popen([OVIN], env=environment, stderr=subprocess.PIPE, text=True)
    if ROLE == "organizes":
        becomes(lambda: mode() != USUAL)
        ovin.kill()
    else:
        # Ovin deals with the record before it can be asked to open the ledge.
        becomes(lambda: isNamed() and subprocess.run([OVIN], env=environment, timeout=BOUND, check=False).returncode == 0)
        ovin.terminate()
    # The same at its launch and at its end.
    print(mode(), *sorted(set(ovin.communicate(timeout=BOUND)[1].splitlines())), sep="|")


class Sessions(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        show("DUMMY0", "--mode", USUAL, "--primary")
        self.addCleanup(show, "DUMMY0", "--mode", USUAL)

    def runBeside(self, role):
        """A whole session of its own, with these settings; returns the mode that it ended in and what Ovin said in it."""
        said = subprocess.run([os.path.join(ROOT, "desktop", "private-desktop"), "--bare", "--", sys.executable, "-B", HERE,
                               "--beside", role, os.path.dirname(os.path.dirname(SETTINGS)), *ARGUMENTS],
                              stdout=subprocess.PIPE, text=True, timeout=10 * BOUND, check=True).stdout
        return said.strip().split("|")

    def organize(self):
        ovin = self.startOvin(OVIN_TEST_ORGANIZE="1")
        self.assertTrue(becomes(lambda: mode() != USUAL and isOnRecord()), (mode(), readDefaults()))
        return ovin

    def assertPaidBy(self, ovin):
        self.assertTrue(becomes(lambda: mode() == USUAL and not isOnRecord()), (mode(), readDefaults()))
        self.assertIsNone(ovin.poll())

    def testASecondSessionLeavesWhatTheFirstOneOwes(self):
        ovin = self.organize()
        owed, wide = record(), mode()
        self.assertEqual(self.runBeside("starts"), [USUAL, LEFT_ALONE])
        self.assertEqual((record(), mode()), (owed, wide))
        ovin.kill()
        ovin.wait(BOUND)
        self.assertEqual(self.runBeside("starts"), [USUAL, LEFT_ALONE])
        self.assertEqual((record(), mode()), (owed, wide))
        self.assertPaidBy(self.startOvin())

    def testWhatASessionOwedThatHasEndedIsNoBurdenForTheNextOne(self):
        self.assertNotEqual(self.runBeside("organizes")[0], USUAL)
        self.assertTrue(isOnRecord())
        ovin = self.startOvin()
        self.assertPaidBy(ovin)
        ovin.terminate()
        ovin.wait(BOUND)
        self.organize()

    def testNumbersThatAnEarlierServerGaveMeanNothing(self):
        with open(SETTINGS, "a", encoding="utf-8") as file:
            file.write(f"{MODE_KEY}\ti\t95\n{DISPLAY_KEY}\ti\t78\n")
        ovin = self.startOvin()
        self.assertTrue(becomes(isNamed))
        self.assertEqual(subprocess.run([OVIN], timeout=BOUND, check=False).returncode, 0)
        self.assertEqual(mode(), USUAL)
        ovin.terminate()
        self.assertIn("unavailable", ovin.communicate(timeout=BOUND)[1])

    def testAPreviewBesideTheProgramNeitherLosesTheRecordNorBringsItBack(self):
        def toggle(window):
            self.assertTrue(becomes(lambda: accessible("Ovin", TITLE)))
            before = readDefaults().get("OvinArrangeCardCollapsed")
            descendant(accessible("Ovin", TITLE), QUESTION).do_action(0)
            self.assertTrue(becomes(lambda: readDefaults().get("OvinArrangeCardCollapsed") != before), readDefaults())

        preview = self.startOvin(OVIN_TEST_ARRANGE_WINDOW="1")
        toggle(preview)
        self.assertFalse(isNamed("org.kde.StatusNotifierWatcher"), "a preview takes other programs' items")
        preview.send_signal(signal.SIGSTOP)  # two cards could not be told apart
        ovin = self.organize()
        owed = record()
        ovin.kill()
        ovin.wait(BOUND)
        preview.send_signal(signal.SIGCONT)
        toggle(preview)
        self.assertEqual(record(), owed)
        self.assertPaidBy(self.startOvin())
        toggle(preview)
        self.assertFalse(isOnRecord())


if __name__ == "__main__":
    beside() if IS_BESIDE else main()
