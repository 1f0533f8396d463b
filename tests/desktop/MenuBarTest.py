"""What discovery finds beside a menu bar that draws as many items as fit."""

import os
import random
import re
import signal
import subprocess
import time

from DesktopTest import BOUND, DesktopTestCase, OVIN_ITEMS, becomes, isAlive, main, ovinItems, pidOf, setAccessibility

COUNT = 30
FEW = 8  # fewer than ever fit
NARROW, WIDE = "1440x900", "2560x1600"


def show(mode):
    subprocess.run(["xrandr", "--output", "DUMMY0", "--mode", mode], check=True, timeout=BOUND)


class TheMenuBar(DesktopTestCase):
    def setUp(self):
        super().setUp()
        self.addCleanup(show, NARROW)
        self.agent = pidOf("menu bar agent")

    def tearDown(self):
        self.assertTrue(isAlive(self.agent), "the menu bar has crashed")

    def startNamedItems(self, count):
        names = [f"App {number:02}" for number in range(1, count + 1)]
        for name in names:
            self.startItem("--name", name, "--title", f"Item of {name}")
            self.awaitRegistrations()  # one after the other, so that the bar has an order to keep
        return names

    def testWithoutAccessibilityItSaysSo(self):
        setAccessibility(False)
        self.addCleanup(setAccessibility, True)
        result = ovinItems()
        self.assertEqual(result.returncode, 4)
        self.assertIn("accessibility is switched off", result.stderr)

    def slots(self):
        """The slots of the bar: name, left edge and width."""
        line = next(line for line in self.discoveryLog() if "DEBUG frames" in line)
        return [(name.strip(), int(x), int(width)) for name, x, width in re.findall(r"(\D.*?)@(-?\d+)\+(\d+)", line.split(": ")[1])]

    def namesOfUndrawn(self):
        """The items that the bar piles up because it does not draw them: another item begins before their end."""
        slots = [slot for slot in self.slots() if slot[0].startswith("App")]
        covered = lambda one: any(other is not one and other[1] < one[1] + one[2] and one[1] < other[1] + other[2] for other in slots)
        return sorted(slot[0] for slot in slots if covered(slot))

    def testOnlyWhatItDoesNotDrawIsFound(self):
        names = self.startNamedItems(COUNT)
        found = lambda: [item["application"] for item in self.find()]
        self.assertTrue(becomes(lambda: len(self.slots()) >= COUNT + 1), "the bar does not hold all items")
        self.assertTrue(becomes(lambda: found() == self.namesOfUndrawn() and 0 < len(found()) < COUNT), found())
        titles = lambda: [item["title"] for item in self.find()]
        self.assertTrue(becomes(lambda: titles() == [f"Item of {name}" for name in found()]), titles())
        for item in self.find():
            self.assertIn(item["application"], names)
            self.assertIsNone(item["label"])
            self.assertIn(item["process"], [started.pid for started in self.items])

    def testAWiderModeDrawsEverythingAndTheOldOneLessAgain(self):
        self.startNamedItems(COUNT)
        found = lambda: [item["process"] for item in self.find()]
        self.assertTrue(becomes(lambda: 0 < len(found()) < COUNT))
        before = found()
        show(WIDE)
        self.assertTrue(becomes(lambda: found() == []), found())
        self.assertEqual(self.scannedCount(), COUNT)
        show(NARROW)
        self.assertTrue(becomes(lambda: found() == before), (before, found()))

    def testNothingIsFoundWhereEverythingFits(self):
        self.startNamedItems(FEW)
        self.assertTrue(becomes(lambda: self.scannedCount() == FEW and self.find() == []))
        self.assertIn("Every item fits in the menu bar", ovinItems().stdout)

    def testABarThatIsGoneLeavesEveryItemUndrawn(self):
        self.startNamedItems(FEW)
        self.assertTrue(becomes(lambda: self.scannedCount() == FEW and self.find() == []))
        os.kill(self.agent, signal.SIGSTOP)
        try:
            began = time.monotonic()
            self.assertEqual(ovinItems("--json").returncode, 0)  # it hangs: nobody knows what is drawn
            self.assertLess(time.monotonic() - began, 10)
        finally:
            os.kill(self.agent, signal.SIGCONT)
        self.assertTrue(becomes(lambda: self.find() == []))

    def testMisbehavingProgramsAreFoundAndHideNobody(self):
        misbehaviours = (["--garbage"], ["--missing"], ["--no-getall"], ["--interface", "freedesktop"], ["--huge", "1000000"],
                         ["--answer-after", "3000"], ["--reregister"], ["--stop-answering"], ["--garbage", "--huge", "100000"])
        for options in misbehaviours:
            self.startItem("--name", "Odd", *options)
        self.startItems([f"Good {number}" for number in range(COUNT)], "--name", "Good")
        self.awaitRegistrations()
        total = COUNT + len(misbehaviours)
        self.assertTrue(becomes(lambda: self.scannedCount() == total), self.discoveryLog())
        self.assertTrue(becomes(lambda: 0 < len(self.find()) < total))
        for item in self.items[:3]:
            item.stop()
        self.assertEqual(self.scannedCount(), total)

    def testAThousandItemsOfOneProgramHideNobody(self):
        self.startItems(["Good 1", "Good 2"], "--name", "Good")
        self.startItem("--items", "1000", "--title", "Many", "--name", "Many")
        self.awaitRegistrations()
        self.assertTrue(becomes(lambda: self.scannedCount() == 1002), self.discoveryLog()[-2:])
        # A busy machine may always take longer than a bound to read so many slots; then nobody knows what is drawn.
        isUnknown = lambda: any("geometry unavailable" in line for line in self.discoveryLog())
        self.assertTrue(becomes(lambda: 900 < len(self.find()) < 1002 or isUnknown()))

    def testProgramsMayComeAndGoInTheMiddleOfScans(self):
        choice = random.Random(1)
        lasting = self.startItems([f"Good {number}" for number in range(COUNT)], "--name", "Good")
        self.awaitRegistrations()
        for _ in range(12):
            passing = [self.startItem("--vanish-after", str(choice.randrange(60)), "--menu", "A",
                                      *choice.choice(([], ["--keep-connection"], ["--items", "20"]))) for _ in range(6)]
            scan = subprocess.Popen([OVIN_ITEMS, "--json"], stdout=subprocess.PIPE, text=True)
            time.sleep(choice.random() / 50)
            for item in passing[:3]:
                item.process.kill()
            output = scan.communicate(timeout=BOUND)[0]
            self.assertEqual(scan.returncode, 0, output)
        for item in self.items[len(lasting):]:
            item.process.kill()
            item.process.wait(BOUND)
        self.assertTrue(becomes(lambda: self.scannedCount() == COUNT), self.discoveryLog())

    def testStoppedProgramsCostOneBound(self):
        stopped = self.startItems([f"Stopped {number}" for number in range(20)], "--name", "Stopped")
        self.startItems([f"Good {number:02}" for number in range(60)], "--name", "Good")
        self.awaitRegistrations()
        self.assertTrue(becomes(lambda: self.scannedCount() == 80))
        usual = self.duration()
        for item in stopped:
            item.stop()
        # One bound is 0.25 s, and one for each stopped program would be 5 s. A busy machine lengthens everything.
        best = self.duration()
        self.assertGreaterEqual(best, 0.25, "nobody has waited for the stopped programs")
        self.assertLess(best, 0.5 + 3 * usual)


if __name__ == "__main__":
    main()
