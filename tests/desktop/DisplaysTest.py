"""Switching display modes for real, as a foreign client sees it, beside a menu bar that follows.

Started with the path of the probe; further arguments go to unittest.
"""

import os
import re
import signal
import subprocess
import sys
import threading
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "desktop"))
from PrivateDesktop import BOUND, becomes  # noqa: E402

PROBE = os.path.abspath(sys.argv[1])
FIRST, WIDE = "1440x900", "1920x1200"


def run(*command):
    return subprocess.run(command, check=True, timeout=BOUND, capture_output=True, text=True).stdout


def lastingID(output):
    """A display's id, made of the output's name and a monitor that says nothing (platform/linux/displays/LastingIDs.h)."""
    number = 2166136261
    for byte in output.encode() + b"\0":
        number = (number ^ byte) * 16777619 % 2 ** 32
    return number >> 31 ^ number % 2 ** 31


def xrandr(*arguments):
    return run("xrandr", *arguments)


def show(output, *options):
    xrandr("--output", output, *options)


class Probe:
    """The displays of the Linux world in a process of their own."""

    def __init__(self, **environment):
        self.process = subprocess.Popen([PROBE], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1,
                                        env=dict(os.environ, **environment))
        self.lines = []
        self.arrival = threading.Condition()
        threading.Thread(target=self.read, daemon=True).start()
        self.main = int(self.ask("main"))

    def read(self):
        for line in self.process.stdout:
            with self.arrival:
                self.lines.append(line.rstrip("\n"))
                self.arrival.notify_all()

    def ask(self, *question):
        """The answer without the question, which it begins with."""
        question = " ".join(map(str, question))
        seen = len(self.lines)
        self.process.stdin.write(question + "\n")
        answers = lambda: [line for line in self.lines[seen:] if line == question or line.startswith(question + " ")]
        with self.arrival:
            if not self.arrival.wait_for(answers, BOUND):
                raise AssertionError(f"no answer to {question}")
            return answers()[0][len(question) + 1:]

    def changes(self):
        return [line for line in self.lines if line.startswith("changed")]

    def modes(self, display):
        """The id of the first mode of each size."""
        found = {}
        for mode in self.ask("modes", display).split():
            found.setdefault(mode.split(":")[1], int(mode.split(":")[0]))
        return found

    def apply(self, display, size):
        return self.ask("apply", display, self.modes(display)[size])

    def bounds(self, display):
        return tuple(map(float, self.ask("bounds", display).split()))

    def end(self):
        self.process.kill()
        self.process.wait(BOUND)
        self.process.stdin.close()
        self.process.stdout.close()


class TheDisplays(unittest.TestCase):
    def setUp(self):
        xrandr("--addmode", "DUMMY1", "1920x1080")
        self.probe = self.startProbe()
        self.addCleanup(show, "DUMMY0", "--mode", FIRST, "--rotate", "normal", "--pos", "0x0", "--primary")
        self.addCleanup(show, "DUMMY1", "--off")

    def startProbe(self, **environment):
        probe = Probe(**environment)
        self.addCleanup(probe.end)
        return probe

    def plugSecond(self, *where):
        """The id of a second display."""
        show("DUMMY1", "--mode", "1920x1080", *where)
        second = lastingID("DUMMY1")
        self.assertTrue(becomes(lambda: self.probe.bounds(second)[2] > 0), "the second display does not come")
        return second

    def screenSize(self):
        return re.search(r"current (\d+) x (\d+)", xrandr()).groups()

    def place(self, output):
        """WIDTHxHEIGHT+X+Y of an output; nothing when it is off."""
        found = re.search(rf"^{output} connected (?:primary )?(\d+x\d+\+\d+\+\d+)", xrandr(), re.M)
        return found and found[1]

    def assertShows(self, screen, **places):
        for output, place in places.items():
            self.assertEqual(self.place(output), place)
        self.assertEqual("x".join(self.screenSize()), screen)

    # One display

    def testAModeIsSwitchedAndPutBack(self):
        first = self.probe.ask("current", self.probe.main)
        self.assertEqual(self.probe.apply(self.probe.main, WIDE), "done")
        self.assertShows(WIDE, DUMMY0="1920x1200+0+0")
        self.assertIn(f":{WIDE}:1920", self.probe.ask("current", self.probe.main))
        self.assertTrue(becomes(lambda: self.probe.bounds(self.probe.main) == (0, 0, 1920, 1200)))
        self.assertEqual(self.probe.ask("apply", self.probe.main, first.split(":")[0]), "done")
        self.assertShows(FIRST, DUMMY0="1440x900+0+0")
        self.assertEqual(self.probe.ask("current", self.probe.main), first)

    def testEveryModeCanBeShown(self):
        modes = self.probe.modes(self.probe.main)
        for size in "1280x800 1440x900 1680x1050 1920x1080 1920x1200 2560x1600".split():
            self.assertIn(size, modes)
        for size in modes:
            self.assertEqual(self.probe.apply(self.probe.main, size), "done", size)
            self.assertShows(size, DUMMY0=size + "+0+0")

    def testTheModesAreThoseOfTheServerInItsOrder(self):
        block = xrandr("--verbose").split("DUMMY1")[0]
        listed = {number: size for size, number in re.findall(r"^  (\d+x\d+) \((0x[0-9a-f]+)\)", block, re.M)}
        modes = [mode.split(":") for mode in self.probe.ask("modes", self.probe.main).split()]
        self.assertEqual([mode[1] for mode in modes], list(listed.values()))
        self.assertEqual(len({mode[0] for mode in modes}), len(modes))

    def testTheDensityStaysAsItIs(self):
        density = lambda: re.search(r"resolution:\s+(\S+) dots", run("xdpyinfo"))[1]
        # Whole millimetres show elsewhere as half a dot more or less, by what was before.
        xrandr("--dpi", "96")
        before = density()
        for size in ("2560x1600", "1280x800", FIRST):
            self.assertEqual(self.probe.apply(self.probe.main, size), "done")
            self.assertEqual(density(), before)

    def testAModeThatTheDisplayDoesNotHaveIsRefused(self):
        before = xrandr("--verbose")
        for mode in (0, -1, 1, 2147483647):
            self.assertEqual(self.probe.ask("apply", self.probe.main, mode), "refused")
        self.assertEqual(xrandr("--verbose"), before)

    def testAnInterlacedModeIsNotForADesktop(self):
        timing = "74.25 1920 2008 2052 2200 1080 1084 1094 1125 interlace".split()
        xrandr("--newmode", "interlaced", *timing)
        self.addCleanup(xrandr, "--rmmode", "interlaced")
        xrandr("--addmode", "DUMMY0", "interlaced")
        self.addCleanup(xrandr, "--delmode", "DUMMY0", "interlaced")
        self.assertEqual(self.probe.ask("modes", self.probe.main).count("unusable"), 1)

    def testAScaledScreenHasFewerPointsThanPixels(self):
        probe = self.startProbe(QT_SCALE_FACTOR="2")
        self.assertIn(":720x450:1440", probe.ask("current", probe.main))
        self.assertEqual(probe.bounds(probe.main), (0, 0, 720, 450))
        self.assertEqual(probe.apply(probe.main, "960x600"), "done")
        self.assertShows(WIDE, DUMMY0="1920x1200+0+0")
        self.assertTrue(becomes(lambda: probe.bounds(probe.main) == (0, 0, 960, 600)))

    # What others do

    def testTheMenuBarFollows(self):
        def bar():
            window = re.search(r"0x[0-9a-f]+", run("xwininfo", "-name", "Menu bar"))[0]
            strut = run("xprop", "-id", window, "_NET_WM_STRUT_PARTIAL").split("=")[1].split(",")
            return int(re.search(r"Width: (\d+)", run("xwininfo", "-id", window))[1]), int(strut[8]), int(strut[9])
        workArea = lambda: run("xprop", "-root", "_NET_WORKAREA").split("=")[1].split(",")[2:4]
        self.assertTrue(becomes(lambda: bar() == (1440, 0, 1439)), bar())
        self.assertEqual(self.probe.apply(self.probe.main, WIDE), "done")
        self.assertTrue(becomes(lambda: bar() == (1920, 0, 1919)), bar())
        self.assertTrue(becomes(lambda: workArea()[0].strip() == "1920"), workArea())
        self.assertEqual(self.probe.apply(self.probe.main, FIRST), "done")
        self.assertTrue(becomes(lambda: bar() == (1440, 0, 1439)), bar())

    def testAChangeIsToldOnceOrTwiceThoughItIsManyEvents(self):
        sizes = (WIDE, FIRST, "2560x1600", FIRST)
        for size in sizes:
            show("DUMMY0", "--mode", size)
            width, height = size.split("x")
            expected = re.compile(rf"changed {width} {height} [1-9]\d*$")
            told = self.probe.changes
            self.assertTrue(becomes(lambda: told() and expected.match(told()[-1])), told())
        # On a busy machine the server's events come apart, and the bar follows late: both are told anew, but now and then.
        self.assertLessEqual(len(told()), 3 * len(sizes), told())

    def testTheModeOutlivesWhoSetItAndItsNumbersDoToo(self):
        main, first = self.probe.main, self.probe.ask("current", self.probe.main)
        modes = self.probe.ask("modes", main)
        self.assertEqual(self.probe.apply(main, WIDE), "done")
        os.kill(self.probe.process.pid, signal.SIGKILL)
        self.probe.process.wait(BOUND)
        self.assertShows(WIDE, DUMMY0="1920x1200+0+0")
        successor = self.startProbe()
        self.assertEqual(successor.main, main)
        self.assertEqual(successor.ask("modes", main), modes)
        self.assertEqual(successor.ask("apply", main, first.split(":")[0]), "done")
        self.assertShows(FIRST, DUMMY0="1440x900+0+0")

    # Several displays

    def testADisplayOnTheRightMakesRoomAndComesBack(self):
        second = self.plugSecond("--right-of", "DUMMY0")
        self.assertEqual(self.probe.apply(self.probe.main, WIDE), "done")
        self.assertShows("3840x1200", DUMMY0="1920x1200+0+0", DUMMY1="1920x1080+1920+0")
        self.assertTrue(becomes(lambda: self.probe.bounds(second) == (1920, 0, 1920, 1080)))
        self.assertEqual(self.probe.apply(self.probe.main, FIRST), "done")
        self.assertShows("3360x1080", DUMMY0="1440x900+0+0", DUMMY1="1920x1080+1440+0")

    def testADisplayBelowMakesRoomAndComesBack(self):
        self.plugSecond("--below", "DUMMY0")
        self.assertEqual(self.probe.apply(self.probe.main, "1280x800"), "done")
        self.assertShows("1920x1880", DUMMY0="1280x800+0+0", DUMMY1="1920x1080+0+800")
        self.assertEqual(self.probe.apply(self.probe.main, WIDE), "done")
        self.assertShows("1920x2280", DUMMY0="1920x1200+0+0", DUMMY1="1920x1080+0+1200")

    def testADisplayOnTheLeftStaysWhereItIs(self):
        self.plugSecond("--left-of", "DUMMY0")
        self.assertEqual(self.probe.apply(self.probe.main, WIDE), "done")
        self.assertShows("3840x1200", DUMMY0="1920x1200+1920+0", DUMMY1="1920x1080+0+0")

    def testADisplayAboveStaysWhereItIs(self):
        self.plugSecond("--above", "DUMMY0")
        self.assertShows("1920x1980", DUMMY0="1440x900+0+1080", DUMMY1="1920x1080+0+0")
        self.assertEqual(self.probe.apply(self.probe.main, "2560x1600"), "done")
        self.assertShows("2560x2680", DUMMY0="2560x1600+0+1080", DUMMY1="1920x1080+0+0")
        self.assertEqual(self.probe.apply(self.probe.main, FIRST), "done")
        self.assertShows("1920x1980", DUMMY0="1440x900+0+1080", DUMMY1="1920x1080+0+0")

    def testMirroredDisplaysAreTold(self):
        second = self.plugSecond("--right-of", "DUMMY0")
        self.assertEqual({self.probe.ask("mirrored", each) for each in (self.probe.main, second)}, {"no"})
        show("DUMMY1", "--same-as", "DUMMY0")
        self.assertEqual({self.probe.ask("mirrored", each) for each in (self.probe.main, second)}, {"yes"})
        show("DUMMY1", "--off")
        self.assertEqual({self.probe.ask("mirrored", each) for each in (self.probe.main, second)}, {"no"})

    def testADisplayThatIsOffIsGone(self):
        second = self.plugSecond("--right-of", "DUMMY0")
        mode = self.probe.modes(second)["1920x1080"]
        show("DUMMY1", "--off")
        self.assertTrue(becomes(lambda: self.probe.bounds(second) == (0, 0, 0, 0)))
        self.assertEqual(self.probe.ask("current", second), "none")
        self.assertEqual(self.probe.ask("modes", second), "")
        self.assertEqual(self.probe.ask("apply", second, mode), "refused")
        self.assertIsNone(self.place("DUMMY1"))
        self.plugSecond("--right-of", "DUMMY0")
        self.assertTrue(becomes(lambda: self.probe.bounds(second)[2] == 1920), "it comes with the number that it had")

    def testThePrimaryDisplayIsTheMainOne(self):
        first = self.probe.main
        second = self.plugSecond("--right-of", "DUMMY0")
        show("DUMMY1", "--primary")
        self.assertTrue(becomes(lambda: int(self.probe.ask("main")) == second))
        xrandr("--noprimary")
        self.assertTrue(becomes(lambda: int(self.probe.ask("main")) == first), "the one at the origin")

    # Nobody to ask

    def testWithoutAnAnswerThereAreNoModes(self):
        self.probe.ask("lose")
        self.assertEqual(self.probe.ask("modes", self.probe.main), "")
        self.assertEqual(self.probe.ask("current", self.probe.main), "none")
        self.assertEqual(self.probe.ask("mirrored", self.probe.main), "no")
        self.assertEqual(self.probe.ask("apply", self.probe.main, 94), "refused")
        self.assertEqual(self.probe.bounds(self.probe.main), (0, 0, 1440, 900), "the toolkit knows it still")

    def testAToolkitWithoutXHasAMainDisplayWithoutModes(self):
        probes = [self.startProbe(QT_QPA_PLATFORM="offscreen") for _ in range(2)]
        self.assertEqual(probes[0].main, probes[1].main)
        for probe in probes:
            self.assertGreater(probe.bounds(probe.main)[2], 0)
            self.assertEqual(probe.ask("modes", probe.main), "")
            self.assertEqual(probe.ask("apply", probe.main, 94), "refused")
        self.assertShows(FIRST, DUMMY0="1440x900+0+0")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=1)
