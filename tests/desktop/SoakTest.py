"""Ovin for a long time on a desktop where everything changes at random: programs start, stop, hang and send nonsense, screens
and their modes change, the ledge is opened, items are pressed, the display is widened, and Ovin itself is killed.

At quiet moments nothing may be missing, nothing may have grown, and the display has to be in its own mode.

Started with the paths of ovin-items, status-item and ovin, and the minutes that it takes (1). OVIN_SOAK_SEED repeats a run, as
far as machines repeat anything.
"""

import collections
import os
import random
import signal
import subprocess
import sys
import time

MINUTES = float(sys.argv.pop(4)) if len(sys.argv) > 4 else 1.0
SEED = int(os.environ.get("OVIN_SOAK_SEED", time.time_ns() % 1_000_000))

from Organizing import (COUNT, ORGANIZE, TITLE, USUAL, OrganizeTestCase, clickOn, drawn, isOnRecord, mode,  # noqa: E402
                        readDefaults, show)
from OvinTest import (BOUND, OVIN, GLib, Item, accessible, becomes, buttonsOf, click, isSanitized, main, run,  # noqa: E402
                      windowsOf)

MOST_PROGRAMS = 30
MODES = ("1280x800", USUAL, "1680x1050", "1920x1080")
ROUND = 45.0  # seconds between two quiet moments, at most
KILLING = 0.25  # the last part of the time, in which Ovin is killed as well: what it had kept until then is gone with it
# The toolkit keeps what it has drawn, fonts for example, up to a limit of its own, and memory comes in pieces. A leak of a KiB
# for each thing that is done would still exceed this within the hour.
GROWTH = 6 * 1024  # KiB
ODD = (["--garbage"], ["--huge", "300000"], ["--huge-pictures", "3"], ["--missing"], ["--answer-after", "400"],
       ["--stop-answering"], ["--vanish-after", "300"], ["--vanish-after", "300", "--keep-connection"])
WELL = ([], ["--menu", "Alpha,Beta,-,Gamma"], ["--menu", "Alpha", "--item-is-menu", "true"], ["--pixmap", "#c01090"], ["--no-getall"],
        ["--reregister"], ["--tooltip", "A tool tip"], ["--answer-after", "20"])


class Program:
    def __init__(self, title, options, isWell):
        self.title, self.options, self.isWell, self.isStopped = title, options, isWell, False
        self.item = Item(["--id", title, "--title", title, *options])

    def isRunning(self):
        return self.item.process.poll() is None

    def send(self, number):
        if self.isRunning():
            os.kill(self.item.pid, number)


class Soak(OrganizeTestCase):
    def setUp(self):
        super().setUp()
        run("xrandr", "--addmode", "DUMMY1", "1920x1080")
        self.chance = random.Random(SEED)
        self.counts, self.lately = collections.Counter(), collections.deque(maxlen=30)
        self.programs, self.started = [], 0
        self.addCleanup(lambda: [program.item.end() for program in self.programs])
        self.log = open(os.path.join(os.environ["OVIN_DESKTOP_DIR"], "soak.log"), "w+", encoding="utf-8", errors="replace")
        self.addCleanup(self.log.close)

    def tearDown(self):
        """What was there at the end, for whoever looks for the cause of a failure."""
        self.log.seek(0)
        print(f"mode {mode()}, {readDefaults()}\nbar: {drawn()}\nthe last things done: {' '.join(self.lately)}\n"
              f"log: {''.join(self.log.readlines()[-20:])}")
        if "OVIN_SOAK_PICTURE" in os.environ:
            run("scrot", "-o", os.environ["OVIN_SOAK_PICTURE"])
        super().tearDown()

    def startOvin(self, *arguments, **environment):
        """Starts Ovin with its log in a file, because nobody reads a pipe for so long."""
        process = subprocess.Popen([OVIN, *arguments], env=dict(os.environ, **environment), stderr=self.log)
        self.addCleanup(process.wait, BOUND)
        self.addCleanup(process.kill)
        return process

    # --- What happens ---------------------------------------------------------------------------------------------------

    def start(self, kinds, isWell):
        if len(self.programs) < MOST_PROGRAMS:
            self.started += 1
            self.programs.append(Program(f"Soak {self.started:05}", self.chance.choice(kinds), isWell))

    def startWell(self):
        self.start(WELL, True)

    def startOdd(self):
        self.start(ODD, False)

    def endOne(self):
        if self.programs:
            program = self.programs.pop(self.chance.randrange(len(self.programs)))
            program.item.end()

    def stopOne(self):
        if self.programs:
            program = self.chance.choice(self.programs)
            program.send(signal.SIGSTOP)
            program.isStopped = True

    def continueOne(self):
        stopped = [program for program in self.programs if program.isStopped]
        if stopped:
            program = self.chance.choice(stopped)
            program.send(signal.SIGCONT)
            program.isStopped = False

    def clickOnOvin(self):
        place = self.slot()
        if place is not None:
            click(*place)

    def clickOften(self):
        for _ in range(self.chance.randrange(2, 8)):
            self.clickOnOvin()

    def clickElsewhere(self):
        click(self.chance.randrange(100, 900), self.chance.randrange(400, 700), self.chance.choice((1, 1, 3)))

    def pressInLedge(self):
        if not buttonsOf("Ovin"):
            self.clickOnOvin()
            becomes(lambda: buttonsOf("Ovin"), 1)
        found = buttonsOf("Ovin")
        if found:
            clickOn(self.chance.choice(found))
            time.sleep(0.2)
            run("xdotool", "key", "Escape")  # for a menu that has opened

    def lookAtMenu(self):
        place = self.slot()
        if place is not None:
            click(*place, 3)
            time.sleep(0.2)
            run("xdotool", "key", "Escape")

    def read(self, entry):
        self.choose(entry)
        time.sleep(0.3)
        run("xdotool", "key", "Escape")

    def readAWindow(self):
        self.read(self.chance.choice(("About Ovin", "How This Works")))

    def changeMode(self):
        show("DUMMY0", "--mode", self.chance.choice(MODES))
        time.sleep(0.3)

    def plug(self):
        if self.chance.random() < 0.5:
            show("DUMMY1", "--mode", "1920x1080", self.chance.choice(("--right-of", "--left-of", "--below")), "DUMMY0")
        else:
            show("DUMMY1", "--off")
        time.sleep(0.3)

    def organizeAWhile(self):
        """Done or closed, the display has to be as it was."""
        self.quieten()
        self.organize()
        time.sleep(self.chance.uniform(0, 1))
        if self.chance.random() < 0.7:
            self.clickDone()
        else:
            self.choose("Done Organizing")
        self.assertPutBack()

    def kill(self):
        """Organizing or not."""
        self.quieten()
        if self.chance.random() < 0.7:
            self.choose(ORGANIZE)
            time.sleep(self.chance.uniform(0, 1.5))
        self.ovin.kill()
        self.ovin.wait(BOUND)
        self.assertTrue(mode() == USUAL or isOnRecord(), "the display is widened, and nothing says so")
        self.assertTrue(becomes(lambda: accessible("MenuBarAgent", "Ovin") is None))
        self.ovin = self.startOvin()
        self.assertTrue(becomes(lambda: "Ovin" in drawn()), "the bar does not show Ovin's item again")
        self.assertPutBack()

    def warmUp(self):
        """Everything once: what is loaded for it stays."""
        self.read("About Ovin")
        self.read("How This Works")
        self.plug()
        self.changeMode()
        self.organizeAWhile()
        self.startWell()
        self.startOdd()
        self.assertNothingIsMissing()

    # --- Quiet moments --------------------------------------------------------------------------------------------------

    def quieten(self):
        """Nothing is open, nobody is stopped, and the screens are as in the beginning."""
        for program in self.programs:
            program.send(signal.SIGCONT)
            program.isStopped = False
        for program in [one for one in self.programs if not one.isWell or not one.isRunning()]:
            program.item.end()
            self.programs.remove(program)
        show("DUMMY1", "--off")
        show("DUMMY0", "--mode", USUAL, "--pos", "0x0", "--primary")

        def isClosed():
            if windowsOf(self.ovin.pid):
                run("xdotool", "key", "Escape")
                click(300, 600)
                time.sleep(0.6)  # a click on Ovin's item right after such a press counts as the same one
            return not windowsOf(self.ovin.pid)

        self.assertTrue(becomes(isClosed), "something of Ovin's stays open")
        self.assertTrue(becomes(lambda: "Ovin" in drawn()), drawn())

    def missing(self):
        """The titles that neither the bar nor the open ledge has."""
        wanted = {f"Item {number:02}" for number in range(COUNT)} | {program.title for program in self.programs}
        inBar = set(drawn())
        names = [button.get_name() for button in buttonsOf("Ovin")]
        inLedge = " ".join(names)
        # On a busy machine a title may always come too late; then the ledge has the item without its title.
        untitled = sum(" — " not in name for name in names)
        return sorted(title for title in wanted - inBar if title not in inLedge)[untitled:]

    def assertNothingIsMissing(self):
        self.quieten()
        # The ledge reads the list anew when it opens, so it is opened until it shows everything.
        def isComplete():
            if not windowsOf(self.ovin.pid):
                self.clickOnOvin()
            if becomes(lambda: buttonsOf("Ovin") and not self.missing(), 3):
                return True
            click(300, 600)
            time.sleep(0.6)
            return False

        self.assertTrue(becomes(isComplete), self.missing())
        self.quieten()

    def measure(self):
        """Memory in KiB, threads and open files, with nobody there but the crowd."""
        while self.programs:
            self.programs.pop().item.end()
        time.sleep(3)  # Ovin looks for items some time after programs have come or gone
        with open(f"/proc/{self.ovin.pid}/status", encoding="utf-8") as file:
            values = dict(line.split(":", 1) for line in file)
        files = len(os.listdir(f"/proc/{self.ovin.pid}/fd"))
        return int(values["VmRSS"].split()[0]), int(values["Threads"]), files

    # --------------------------------------------------------------------------------------------------------------------

    def soak(self, actions, until):
        """Until that time, with quiet moments; what was measured at them."""
        names, weights = zip(*actions.items())
        measured = []
        while time.monotonic() < until:
            end = min(until, time.monotonic() + ROUND)
            while time.monotonic() < end:
                name = self.chance.choices(names, weights)[0]
                self.lately.append(name)
                try:
                    getattr(self, name)()
                except GLib.Error:
                    pass  # what was looked at has gone meanwhile
                self.counts[name] += 1
                self.assertIsNone(self.ovin.poll(), f"Ovin has ended in {name}")
                time.sleep(self.chance.uniform(0, 0.2))
            self.assertNothingIsMissing()
            measured.append(self.measure())
            print(f"{sum(self.counts.values())} things done; KiB, threads, files: {measured[-1]}", flush=True)
        return measured

    def testNothingBreaksGrowsOrIsMissing(self):
        print(f"OVIN_SOAK_SEED={SEED}, {MINUTES:g} minutes", flush=True)
        usual = {"startWell": 8, "startOdd": 5, "endOne": 8, "stopOne": 3, "continueOne": 3, "clickOnOvin": 6, "clickOften": 2,
                 "clickElsewhere": 4, "pressInLedge": 8, "lookAtMenu": 2, "readAWindow": 1, "changeMode": 2, "plug": 2,
                 "organizeAWhile": 1}
        self.ovin = self.startInCrowd()
        self.warmUp()
        begin = time.monotonic()
        measured = self.soak(usual, begin + MINUTES * 60 * (1 - KILLING))
        self.soak({**usual, "kill": 4}, begin + MINUTES * 60)
        print(f"done: {dict(sorted(self.counts.items()))}")

        # Memory goes up and down with what has just been shown. A leak lifts even the lowest values.
        memory = [kibibytes for kibibytes, _, _ in measured]
        half = len(memory) // 2
        if half > 0 and not isSanitized():
            self.assertLess(min(memory[half:]), max(memory[:half]) + GROWTH, measured)
        for _, threads, files in measured[1:]:
            self.assertLessEqual(threads, measured[0][1] + 2, measured)
            self.assertLessEqual(files, measured[0][2] + 4, measured)
        self.assertEqual((mode(), isOnRecord()), (USUAL, False), readDefaults())
        self.assertIsNone(self.own(TITLE))
        self.ovin.terminate()
        self.assertEnds(self.ovin)
        self.log.seek(0)
        strange = [line for line in self.log if not line.startswith("Ovin: ")]
        self.assertEqual(strange, [])


if __name__ == "__main__":
    main()
