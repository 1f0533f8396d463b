"""Several programs over one user's settings: Ovin in two sessions at the same time or one after the other, and a preview beside
it. What is owed to a display of one is paid by that one, and by nobody else.

Started with the paths of ovin-items, status-item and ovin; with --beside in front, in the second session of one of the tests.
"""

import fcntl
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
from Organizing import COUNT, DISPLAY_KEY, MODE_KEY, TITLE, USUAL, isOnRecord, mode, readDefaults, show, slots  # noqa: E402

QUESTION = "How does this work?"
LEFT_ALONE = "Ovin: a display of another session is widened; that session will restore it"


def isNamed(name="org.ovin.Ovin"):
    return "true" in run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/", "--method",
                         "org.freedesktop.DBus.NameHasOwner", name).stdout


def record():
    """What is owed; a build that looks for updates remembers when, besides."""
    return {key: value for key, value in readDefaults().items() if key.startswith("OvinOriginal")}


def isUnlocked():
    """Whether nobody is changing the settings. Their folder is locked meanwhile."""
    folder = os.open(os.path.dirname(SETTINGS), os.O_RDONLY)
    try:
        fcntl.flock(folder, fcntl.LOCK_EX | fcntl.LOCK_NB)
        return True
    except BlockingIOError:
        return False
    finally:
        os.close(folder)


def letTheBarBeRead():
    setAccessibility(True)
    if not becomes(lambda: len(slots()) >= COUNT):
        raise AssertionError(f"{len(slots())} items in the bar")


def beside():
    """What the second session does; its only output is the mode of its display in the end."""
    environment = dict(os.environ, XDG_CONFIG_HOME=SHARED)
    if ROLE == "starts":
        ovin = startBeside(environment)
        # Ovin deals with the record before it can be asked to open the ledge.
        becomes(lambda: isNamed() and subprocess.run([OVIN], env=environment, timeout=BOUND, check=False).returncode == 0)
        ovin.terminate()
    elif ROLE == "organizes":
        letTheBarBeRead()
        ovin = startBeside(environment, OVIN_TEST_ORGANIZE="1")
        becomes(lambda: mode() != USUAL)
        ovin.kill()
    else:
        ovin = loseTheBus(environment)
    # The same at its launch and at its end.
    print(mode(), *sorted(set(ovin.communicate(timeout=BOUND)[1].splitlines())), sep="|")


def startBeside(environment, **more):
    return subprocess.Popen([OVIN], env=dict(environment, **more), stderr=subprocess.PIPE, text=True)


def loseTheBus(environment):
    """Organizes on a bus that is not the desktop's, which would end with it, and ends that bus."""
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True)
    environment = dict(environment, DBUS_SESSION_BUS_ADDRESS=bus.stdout.readline().strip())
    subprocess.run(["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus", "--method",
                    "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", "<true>"], env=environment,
                   stdout=subprocess.DEVNULL, check=True)
    programs = ([os.environ["OVIN_MENU_BAR_AGENT"]], [os.environ["OVIN_STATUS_ITEM"], "--items", str(COUNT)])

    def organize():
        """Until the bar can be read, organizing is refused."""
        ovin = startBeside(environment, OVIN_TEST_ORGANIZE="1")
        if becomes(lambda: mode() != USUAL, 3):
            return ovin
        ovin.kill()
        ovin.wait(BOUND)
        return None

    ovin = None
    while ovin is None:
        # A bar that starts while the accessibility bus does may never come to be read.
        others = [subprocess.Popen(program, env=environment, stdout=subprocess.DEVNULL) for program in programs]
        ovin = next(filter(None, (organize() for _ in range(4))), None)
        for other in others if ovin is None else []:
            other.kill()
            other.wait(BOUND)
    bus.kill()
    becomes(lambda: mode() == USUAL)
    return ovin


class Sessions(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        letTheBarBeRead()
        show("DUMMY0", "--mode", USUAL, "--primary")
        self.addCleanup(show, "DUMMY0", "--mode", USUAL)

    def runBeside(self, role):
        """A whole session of its own, with these settings; returns the mode that it ended in and what Ovin said in it."""
        options = ["--bare"] if role == "losesItsBus" else ["--items", "60"]
        said = subprocess.run([os.path.join(ROOT, "desktop", "private-desktop"), *options, "--", sys.executable, "-B", HERE,
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

    def testTheEndOfTheSessionBusEndsOrganizing(self):
        self.assertEqual(self.runBeside("losesItsBus")[0], USUAL)
        self.assertFalse(isOnRecord())

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
        # The change can be seen before it is on the disk, and stopped in between the preview would refuse all others theirs.
        self.assertTrue(becomes(isUnlocked))
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
