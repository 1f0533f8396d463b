"""Ovin for a long time on a desktop where everything changes at random: programs start, stop, hang and send nonsense, screens
and their modes change, the ledge is opened, items are pressed, the display is widened, and Ovin itself is killed. Beside it
programs that mean it harm do what they can: menus of thousands, floods of signals, forgeries, items without number, icons that
never end.

At quiet moments nothing may be missing, nothing may have grown, and the display has to be in its own mode. The ledge opens as
quickly as ever, and the main thread is never silent for long.

Started with the paths of ovin-items, status-item and ovin, and the minutes that it takes (1). OVIN_SOAK_SEED repeats a run, as
far as machines repeat anything.
"""

import collections
import contextlib
import os
import random
import signal
import subprocess
import sys
import tempfile
import time

MINUTES = float(sys.argv.pop(4)) if len(sys.argv) > 4 else 1.0
SEED = int(os.environ.get("OVIN_SOAK_SEED", time.time_ns() % 1_000_000))

from Organizing import (COUNT, ORGANIZE, TITLE, USUAL, OrganizeTestCase, clickOn, drawn, isOnRecord, mode,  # noqa: E402
                        readDefaults, show, slots)
import HostileIcons  # noqa: E402
import HostileTest  # noqa: E402
from DesktopTest import OVIN_ITEMS  # noqa: E402
from OvinTest import (BOUND, OVIN, Gio, GLib, Heartbeat, Item, accessible, awaited, becomes, buttonsOf, click,  # noqa: E402
                      entryNamed, isSanitized, main, placeOf, press, run, windowsOf)

MOST_PROGRAMS = 30
MODES = ("1280x800", USUAL, "1680x1050", "1920x1080")
ROUND = 45.0  # seconds between two quiet moments, at most
KILLING = 0.25  # the last part of the time, in which Ovin is killed as well: what it had kept until then is gone with it
# The toolkit keeps what it has drawn, fonts for example, up to a limit of its own, and memory comes in pieces. A leak of a KiB
# for each thing that is done would still exceed this within the hour.
GROWTH = 6 * 1024  # KiB
HOSTILE_MENUS = ("Thousands", "Fickle", "WWW")
LATENCY = 50.0  # milliseconds from a click to the ledge's first frame, in the median; later ones are told
# … and at the 99th percentile, with a build that is not optimised and is started again between the clicks.
LATEST = 100.0
# Where other work takes the processors, a bare program is late as well.
TIMES_BARE = 3
SILENCE = 2.0  # seconds
BARE, PROBE = (os.path.join(os.path.dirname(OVIN_ITEMS), name) for name in ("bare_status_item", "click_probe"))
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


def percentile(values, part):
    return sorted(values)[min(len(values) - 1, int(part * len(values)))]


def processorTime(pid):
    """In seconds, with that of its children that have ended."""
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
            return sum(map(int, file.read().rpartition(")")[2].split()[11:15])) / os.sysconf("SC_CLK_TCK")
    except OSError:
        return 0.0


class Enemies:
    """Programs that mean harm, until the end of the block."""

    def __init__(self, ovin):
        self.ovin = ovin

    def __enter__(self):
        self.ends = contextlib.ExitStack()
        folder = self.ends.enter_context(tempfile.TemporaryDirectory(dir=os.environ["OVIN_DESKTOP_DIR"]))
        icons = [HostileIcons.bomb(folder, "bomb.svgz"), HostileIcons.large(folder), HostileIcons.pipe(folder),
                 self.ends.enter_context(HostileIcons.Swapped(folder, 0.002)).path]
        try:
            icons.append(self.ends.enter_context(HostileIcons.SilentFiles(folder)).path)
        except OSError:
            pass  # only the privileged can make one
        self.programs = [HostileTest.Program(*what) for what in (
            ("Thousands", 5000), ("Fickle", 50), ("Wide", 40), ("Greedy", 3), *((os.path.basename(icon), 3, icon) for icon in icons))]
        for program in self.programs:
            self.ends.callback(program.end)
        for program in self.programs:
            assert becomes(lambda: program.said("registered") is not None), program.title
        victim, connections = self.addresses()
        for program in self.programs[:3]:
            program.tell("pester", victim, *connections)
        self.programs[3].tell("greed", 2, 10)
        return self

    def addresses(self):
        """An item that is not theirs, and Ovin's connections."""
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)

        def ask(name, path, interface, method, signature, *arguments):
            try:
                return bus.call_sync(name, path, interface, method, signature and GLib.Variant(signature, arguments), None, 0,
                                     1000 * int(BOUND)).unpack()[0]
            except GLib.Error:
                return None

        daemon = ("org.freedesktop.DBus", "/", "org.freedesktop.DBus")
        items = ask(HostileTest.WATCHER, HostileTest.WATCHER_PATH, HostileTest.PROPERTIES, "Get", "(ss)", HostileTest.WATCHER,
                    "RegisteredStatusNotifierItems")
        return items[0], [name for name in ask(*daemon, "ListNames", None) if name.startswith(":") and
                          ask(*daemon, "GetConnectionUnixProcessID", "(s)", name) == self.ovin]

    def processorTime(self):
        return sum(processorTime(program.process.pid) for program in self.programs)

    def __exit__(self, *_):
        self.ends.close()


class Soak(OrganizeTestCase):
    slotCount = COUNT + 2

    @classmethod
    def startCrowd(cls):
        """After a bare program, so that the bar has room for its item."""
        cls.bare = subprocess.Popen([BARE])
        cls.addClassCleanup(cls.bare.wait)
        cls.addClassCleanup(cls.bare.kill)
        if not becomes(lambda: len(slots()) == 2):
            raise AssertionError("the bar does not show the bare item")
        super().startCrowd()

    def setUp(self):
        super().setUp()
        self.latencies, self.bareLatencies, self.lost, self.menus = [], [], 0, 0
        self.spentByKilled = 0.0
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
        if not windowsOf(self.ovin.pid):
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

    def openHostileMenu(self):
        self.openMenuOf(self.chance.choice(HOSTILE_MENUS))

    def openMenuOf(self, title):
        """Whether there is such an item in the ledge."""
        if not windowsOf(self.ovin.pid):
            self.clickOnOvin()
        button = awaited(lambda: next((one for one in buttonsOf("Ovin") if title in one.get_name()), None))
        if button is not None:
            press(button)
            time.sleep(self.chance.uniform(0.5, 2))
            self.menus += bool(entryNamed("Entry 0 of 0") or title == "WWW" and windowsOf(self.ovin.pid))
        run("xdotool", "key", "Escape")  # also for a ledge without it, which reads titles that came too late when it opens again
        return button is not None

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
        self.spentByKilled += processorTime(self.ovin.pid)
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
        with Enemies(self.ovin.pid):
            for title in HOSTILE_MENUS:
                self.assertTrue(becomes(lambda: self.openMenuOf(title)), f"{title} is not in the ledge")
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

    def measureClicks(self):
        """How long the ledge, and the window of the bare program, take from clicks to their first frames."""
        bare = placeOf(lambda: next((element for _, name, element in slots() if "are" in name), None))
        for place, clicks, latencies in ((self.slot(), 15, self.latencies), (bare, 15, self.bareLatencies)):
            answer = run(PROBE, *map(str, place), "any", str(clicks), "0", "150")
            self.assertEqual(answer.returncode, 0, answer.stderr)
            found = answer.stdout.split()
            self.lost += found.count("lost")
            latencies += [float(text) for text in found if text != "lost"]
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
            begin, spent = time.monotonic(), self.spent()
            end = min(until, begin + ROUND)
            with Enemies(self.ovin.pid) as enemies:
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
                self.measureClicks()
                took = time.monotonic() - begin
                shares = [enemies.processorTime() / took, (self.spent() - spent) / took]
            measured.append(self.measure())
            print(f"{sum(self.counts.values())} things done; KiB, threads, files: {measured[-1]}; of a processor, enemies "
                  f"{shares[0]:.2f}, Ovin {shares[1]:.2f}; clicks: {self.clicks()}; load {os.getloadavg()[0]:.1f}", flush=True)
        return measured

    def spent(self):
        """The processor time of all Ovins so far, in seconds."""
        return self.spentByKilled + processorTime(self.ovin.pid)

    def clicks(self):
        return "; ".join(f"{name} {percentile(values, 0.5):.1f} ms, 99 % {percentile(values, 0.99):.1f} ms of {len(values)}, "
                         f"{sum(value > LATENCY for value in values)} late"
                         for name, values in (("ledge", self.latencies), ("bare", self.bareLatencies))) + f"; lost {self.lost}"

    def testNothingBreaksGrowsOrIsMissing(self):
        print(f"OVIN_SOAK_SEED={SEED}, {MINUTES:g} minutes", flush=True)
        usual = {"startWell": 8, "startOdd": 5, "endOne": 8, "stopOne": 3, "continueOne": 3, "clickOnOvin": 6, "clickOften": 2,
                 "clickElsewhere": 4, "pressInLedge": 8, "openHostileMenu": 4, "lookAtMenu": 2, "readAWindow": 1, "changeMode": 2,
                 "plug": 2, "organizeAWhile": 1}
        self.ovin = self.startInCrowd()
        self.warmUp()
        with Heartbeat() as heart:
            measured = self.soak(usual, time.monotonic() + MINUTES * 60 * (1 - KILLING))
        self.soak({**usual, "kill": 4}, time.monotonic() + MINUTES * 60 * KILLING)
        print(f"done: {dict(sorted(self.counts.items()))}; {self.menus} hostile menus were open")

        # Memory goes up and down with what has just been shown. A leak lifts even the lowest values.
        memory = [kibibytes for kibibytes, _, _ in measured]
        fifth = max(1, len(memory) // 5)
        print(f"KiB at the first fifth of the quiet moments: {memory[:fifth]}, at the last: {memory[-fifth:]}; the main thread was "
              f"silent for {heart.longest:.2f} s at most, {heart.answers} answers; clicks: {self.clicks()}")
        self.assertEqual(self.lost, 0)
        self.assertGreater(self.menus, 0)
        if not isSanitized():
            self.assertLess(min(memory[-fifth:]), max(memory[:fifth]) + GROWTH, measured)
            self.assertLess(heart.longest, SILENCE)
            self.assertLess(percentile(self.latencies, 0.5), LATENCY)
            if len(self.latencies) >= 100:  # of fewer, that percentile is the slowest
                self.assertLess(percentile(self.latencies, 0.99), max(LATEST, TIMES_BARE * percentile(self.bareLatencies, 0.99)))
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
