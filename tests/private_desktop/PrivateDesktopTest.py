"""private-desktop with real servers and buses: what its command finds, and that nothing is left of it afterwards.

Started with the paths of private-desktop, status-item and the stand-in for the agent; further arguments go to unittest.
"""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "desktop"))
from PrivateDesktop import BOUND, Lines, becomes, registered  # noqa: E402

SKIPPED = 77
MODES = ("1280x800 1440x900 1512x945 1512x982 1680x1050 1728x1117 1800x1169 1920x1080 1920x1200 2048x1280 2560x1440 "
         "2560x1600 3024x1964").split()
PROGRAM = STATUS_ITEM = AGENT = None


def alive(pid):
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
            return file.read().rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def processesOf(directory):
    """All processes whose environment belongs to the desktop with this folder."""
    found = []
    for pid in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{pid}/environ", "rb") as file:
                if f"OVIN_DESKTOP_DIR={directory}\0".encode() in file.read() and alive(pid):
                    found.append(int(pid))
        except OSError:
            pass
    return found


class Desktop:
    """A running private desktop whose command prints its environment and then waits for a line of its input."""

    def __init__(self, test, *options, extra="", **environment):
        script = f"env -0 | tr '\\n\\0' ' \\n'; {extra}echo end; read line; exit 3"
        self.process = subprocess.Popen([PROGRAM, *options, "--", "sh", "-c", script], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, start_new_session=True,
                                        env=dict(os.environ, **environment))
        test.addCleanup(self.discard)
        lines = Lines(self.process.stdout)
        self.environment, self.extra = {}, []
        while (line := lines.next()) != "end":
            test.assertIsNotNone(line, "the command did not start")
            name, equals, value = line.partition("=")
            if equals:
                self.environment[name] = value
            else:
                self.extra.append(line)
        self.directory = self.environment["OVIN_DESKTOP_DIR"]
        with open(self.environment["OVIN_DESKTOP_PIDS"], encoding="utf-8") as file:
            self.pids = {name.strip(): int(pid) for pid, name in (line.split(" ", 1) for line in file)}
        self.all = {*self.pids.values(), *processesOf(self.directory)}

    def discard(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.communicate()

    def run(self, *command, **changed):
        environment = {**self.environment, **changed}
        return subprocess.run(command, env=environment, capture_output=True, text=True, timeout=BOUND, check=False)

    def end(self):
        """Waits for the end without giving the command a reason for it; the exit status and the errors."""
        status = self.process.wait(BOUND)
        return status, self.process.stderr.read().decode()

    def finish(self):
        """Lets the command end by itself; the exit status and what has been printed."""
        output, errors = self.process.communicate(b"\n", timeout=BOUND)
        return self.process.returncode, output.decode(), errors.decode()


class PrivateDesktopTestCase(unittest.TestCase):
    def assertNothingLeft(self, desktop):
        left = lambda: [pid for pid in {*desktop.all, *processesOf(desktop.directory)} if alive(pid)]
        self.assertTrue(becomes(lambda: not left()), f"still running: {left()} of {desktop.pids}")
        self.assertTrue(becomes(lambda: not os.path.exists(desktop.directory)), "its folder is still there")
        display = desktop.environment["DISPLAY"].lstrip(":")
        lock = f"/tmp/.X{display}-lock"
        try:
            with open(lock, encoding="ascii") as file:
                self.assertNotEqual(int(file.read()), desktop.pids["X server"], "the server's lock is still there")
        except FileNotFoundError:
            pass

    def runIn(self, *arguments, **environment):
        return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=3 * BOUND, check=False,
                              env=dict(os.environ, **environment))


class Waiting(unittest.TestCase):
    def testItemsThatHaveEndedAreNotWaitedFor(self):
        reader, writer = os.pipe()
        self.addCleanup(os.close, reader)
        os.write(writer, b"rr")
        os.close(writer)
        self.assertEqual(registered(reader, 3), 2)

    def testItemsThatDoNotRegisterAreWaitedForWithinABound(self):
        reader, writer = os.pipe()
        self.addCleanup(os.close, reader)
        self.addCleanup(os.close, writer)
        os.write(writer, b"r")
        self.assertEqual(registered(reader, 2, 0.1), 1)


class TheCommand(PrivateDesktopTestCase):
    def testItsExitStatusIsKept(self):
        for status in (0, 7):
            self.assertEqual(self.runIn("--bare", "--", "sh", "-c", f"exit {status}").returncode, status)

    def testItsEndBySignalIsToldAsShellsDo(self):
        self.assertEqual(self.runIn("--bare", "--", "sh", "-c", "kill -KILL $$").returncode, 128 + signal.SIGKILL)

    def testItsOutputAndArgumentsAreUnchanged(self):
        result = self.runIn("--bare", "--", "printf", "%s|", "a b", "--items", "*")
        self.assertEqual((result.stdout, result.stderr), ("a b|--items|*|", ""))

    def testOneThatDoesNotExistIsReportedAtOnce(self):
        result = self.runIn("--bare", "--", "no-such-command")
        self.assertEqual((result.returncode, result.stderr), (127, "private-desktop: no-such-command: not found\n"))

    def testOneThatCannotBeExecutedIsReported(self):
        result = self.runIn("--bare", "--", __file__)
        self.assertEqual(result.returncode, 126)
        self.assertIn("cannot be executed", result.stderr)

    def testItFindsFoldersOfItsOwn(self):
        desktop = Desktop(self, "--bare", WAYLAND_DISPLAY="wayland-7", KDE_SESSION_VERSION="5")
        for name in ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"):
            folder = desktop.environment[name]
            self.assertTrue(folder.startswith(desktop.directory + "/"), folder)
            self.assertTrue(os.path.isdir(folder))
        self.assertEqual(os.stat(desktop.environment["XDG_RUNTIME_DIR"]).st_mode & 0o777, 0o700)
        self.assertNotIn("WAYLAND_DISPLAY", desktop.environment)
        self.assertNotIn("KDE_SESSION_VERSION", desktop.environment)

    def testQtIsToldToUseTheDesktop(self):
        environment = Desktop(self, "--bare", "--scale", "2").environment
        self.assertEqual(environment["QT_QPA_PLATFORM"], "xcb")
        self.assertEqual(environment["QT_SCALE_FACTOR"], "2")
        self.assertEqual(environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"], "1")

    def testMistakesOnTheCommandLineAreExplained(self):
        for arguments in (["--items", "-1"], ["--items", "1001"], ["--size", "1366x768"], ["--size", "big"], ["--scale", "3"]):
            result = self.runIn(*arguments, "--", "true")
            self.assertEqual(result.returncode, 2, arguments)
            self.assertIn(arguments[0], result.stderr)


class TheScreen(PrivateDesktopTestCase):
    def testItStartsInTheChosenSizeWithAllModes(self):
        listed = Desktop(self, "--bare", "--size", "1512x982").run("xrandr").stdout
        self.assertIn("current 1512 x 982", listed)
        first = listed[:listed.index("DUMMY1")].split()
        self.assertEqual([mode for mode in MODES if mode not in first], [])

    def testASizeOutsideTheListBecomesAMode(self):
        self.assertIn("current 1400 x 1050", Desktop(self, "--bare", "--size", "1400x1050").run("xrandr").stdout)

    def testModesCanBeSwitched(self):
        desktop = Desktop(self, "--bare")
        for mode in MODES:
            self.assertEqual(desktop.run("xrandr", "--output", "DUMMY0", "--mode", mode).returncode, 0, mode)
            self.assertIn("current " + mode.replace("x", " x "), desktop.run("xrandr").stdout)

    def testASecondOutputCanBePluggedIn(self):
        desktop = Desktop(self, "--bare")
        desktop.run("xrandr")
        desktop.run("xrandr", "--addmode", "DUMMY1", "1920x1080")
        desktop.run("xrandr", "--output", "DUMMY1", "--mode", "1920x1080", "--right-of", "DUMMY0")
        self.assertIn("1920x1080+1440+0", desktop.run("xrandr").stdout)

    def testNobodyElseGetsAtIt(self):
        desktop = Desktop(self, "--bare")
        self.assertEqual(desktop.run("xrandr").returncode, 0)
        self.assertNotEqual(desktop.run("xrandr", XAUTHORITY="/dev/null").returncode, 0)

    def testAWindowManagerRuns(self):
        listed = Desktop(self, "--bare").run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK").stdout
        self.assertIn("window id", listed)

    def testItCanDoWithoutAWindowManager(self):
        listed = Desktop(self, "--bare", "--no-window-manager").run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK").stdout
        self.assertNotIn("window id", listed)

    def testItHasOpenGLWhereAskedTo(self):
        for options, has in (([], False), (["--gl"], True)):
            extensions = Desktop(self, "--bare", *options).run("xdpyinfo").stdout
            self.assertEqual("GLX" in extensions.split(), has)

    @unittest.skipUnless(shutil.which("Xephyr"), "Xephyr is missing")
    def testItCanBeAWindowOfAnotherDesktop(self):
        outer = Desktop(self, "--bare")
        inner = outer.run(PROGRAM, "--bare", "--window", "--size", "1280x800", "--", "sh", "-c",
                          "xrandr; xrandr --output default --mode 1512x982; xrandr")
        self.assertIn("current 1280 x 800", inner.stdout, inner.stderr)
        self.assertIn("current 1512 x 982", inner.stdout, inner.stderr)

    def testAWindowNeedsADesktopToBeOn(self):
        environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
        result = subprocess.run([PROGRAM, "--bare", "--window", "--", "true"], env=environment, capture_output=True, text=True,
                                timeout=BOUND, check=False)
        self.assertEqual(result.returncode, 125)
        self.assertIn("DISPLAY is not set", result.stderr)


class TheBuses(PrivateDesktopTestCase):
    def testTheAccessibilityBusRuns(self):
        answer = Desktop(self, "--bare").run("gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path",
                                             "/org/a11y/bus", "--method", "org.a11y.Bus.GetAddress").stdout
        self.assertIn("unix:", answer)

    def testProgramsMayReadWhatOthersShow(self):
        answer = Desktop(self, "--bare").run("gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path",
                                             "/org/a11y/bus", "--method", "org.freedesktop.DBus.Properties.Get",
                                             "org.a11y.Status", "IsEnabled").stdout
        self.assertEqual(answer, "(<true>,)\n")

    def testABareDesktopHasNoWatcher(self):
        desktop = Desktop(self, "--bare", OVIN_MENU_BAR_AGENT=AGENT)
        self.assertNotIn("StatusNotifierWatcher", self.names(desktop))

    def testTheAgentOwnsItsNamesBeforeTheCommandStarts(self):
        names = self.names(Desktop(self, OVIN_MENU_BAR_AGENT=AGENT))
        self.assertIn("org.ovin.MenuBarAgent", names)
        self.assertIn("org.kde.StatusNotifierWatcher", names)

    def testItemsHaveRegisteredBeforeTheCommandStarts(self):
        desktop = Desktop(self, "--items", "12", extra="grep -c ^item $OVIN_DESKTOP_DIR/logs/menu-bar-agent.log; ",
                          OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
        self.assertEqual(desktop.extra, ["12"])
        self.assertEqual(len([name for name in desktop.pids if name.startswith("status item ")]), 12)

    def testItemsOfABareDesktopRegisterWithWhoeverComes(self):
        desktop = Desktop(self, "--bare", "--items", "3", OVIN_STATUS_ITEM=STATUS_ITEM)
        watcher = subprocess.Popen([AGENT], env=desktop.environment, stdout=subprocess.PIPE)
        self.addCleanup(watcher.communicate)
        self.addCleanup(watcher.kill)
        self.assertNotIn(None, Lines(watcher.stdout).all(3))
        logs = [os.path.join(desktop.directory, "logs", f"status-item-{number}.log") for number in (1, 2, 3)]
        for log in logs:
            self.assertTrue(becomes(lambda path=log: os.path.getsize(path) > 0), "it has not heard of its registration")
        self.assertEqual(desktop.finish()[0::2], (3, ""))

    def names(self, desktop):
        return desktop.run("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                           "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.ListNames").stdout


class TheEnd(PrivateDesktopTestCase):
    def testNothingIsLeftAfterTheCommand(self):
        desktop = Desktop(self, "--items", "3", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
        self.assertGreaterEqual(len(desktop.all), 10)
        self.assertTrue(all(map(alive, desktop.all)))
        status, _, errors = desktop.finish()
        self.assertEqual((status, errors), (3, ""))
        self.assertNothingLeft(desktop)

    def testWhatTheCommandLeftBehindEnds(self):
        # One of them hides in a session of its own without the desktop's environment, one ignores polite requests.
        desktop = Desktop(self, "--bare", extra="setsid env -i sleep 1000 & echo $!; "
                          "setsid sh -c 'trap \"\" TERM HUP INT; (sleep 1000)' & echo $!; ")
        desktop.all |= {int(pid) for pid in desktop.extra}
        self.assertTrue(all(map(alive, desktop.all)))
        self.assertEqual(desktop.finish()[0], 3)
        self.assertNothingLeft(desktop)

    def testASignalEndsEverything(self):
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT, signal.SIGKILL):
            with self.subTest(number.name):
                desktop = Desktop(self, "--items", "2", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
                desktop.process.send_signal(number)
                self.assertEqual(desktop.process.wait(BOUND), -number)
                self.assertNothingLeft(desktop)

    def testCtrlCEndsEverything(self):
        desktop = Desktop(self, "--bare")
        os.killpg(desktop.process.pid, signal.SIGINT)  # a terminal sends it to the command as well
        self.assertEqual(desktop.process.wait(BOUND), -signal.SIGINT)
        self.assertNothingLeft(desktop)

    def testACommandThatIgnoresSignalsEnds(self):
        desktop = Desktop(self, "--bare", extra="trap '' INT TERM HUP; ")
        os.killpg(desktop.process.pid, signal.SIGINT)
        self.assertEqual(desktop.process.wait(BOUND), -signal.SIGINT)
        self.assertNothingLeft(desktop)

    def testStoppedProcessesEnd(self):
        desktop = Desktop(self, "--items", "2", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
        for name in ("status item 1", "menu bar agent", "window manager", "X server", "session bus", "command"):
            os.kill(desktop.pids[name], signal.SIGSTOP)
        desktop.process.terminate()
        self.assertEqual(desktop.process.wait(BOUND), -signal.SIGTERM)
        self.assertNothingLeft(desktop)

    def testASignalDuringTheStartEndsEverything(self):
        for name in ("X-server", "session-bus", "window-manager", "menu-bar-agent"):
            with self.subTest(name), tempfile.TemporaryDirectory() as parent:
                process = subprocess.Popen([PROGRAM, "--", "true"], env=dict(
                    os.environ, TMPDIR=parent, OVIN_MENU_BAR_AGENT=AGENT, STAND_IN_AGENT="mute"))
                self.addCleanup(process.wait)
                self.addCleanup(process.kill)
                started = lambda: any(os.path.exists(f"{parent}/{entry}/logs/{name}.log") for entry in os.listdir(parent))
                self.assertTrue(becomes(started))
                directory = os.path.join(parent, os.listdir(parent)[0])
                process.terminate()
                self.assertEqual(process.wait(BOUND), -signal.SIGTERM)
                self.assertEqual((processesOf(directory), os.listdir(parent)), ([], []))

    def testAKilledSupervisorIsReplacedByTheGuard(self):
        desktop = Desktop(self, "--items", "2", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
        os.kill(desktop.pids["supervisor"], signal.SIGKILL)
        status, errors = desktop.end()
        self.assertEqual(status, 125)
        self.assertIn("the supervisor was ended by signal 9", errors)
        self.assertNothingLeft(desktop)

    def testWhenBothAreKilledTheProcessesEndAllTheSame(self):
        desktop = Desktop(self, "--items", "2", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
        self.addCleanup(shutil.rmtree, desktop.directory, ignore_errors=True)  # nobody is left to do it
        for name in ("guard", "supervisor"):
            os.kill(desktop.pids[name], signal.SIGSTOP)
        for name in ("guard", "supervisor"):
            os.kill(desktop.pids[name], signal.SIGKILL)
        left = lambda: [pid for pid in {*desktop.all, *processesOf(desktop.directory)} if alive(pid)]
        self.assertTrue(becomes(lambda: not left()), f"still running: {left()} of {desktop.pids}")

    def testTwoDesktopsDoNotDisturbEachOther(self):
        first, second = Desktop(self, "--bare"), Desktop(self, "--bare", "--size", "1280x800")
        for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "HOME", "XDG_RUNTIME_DIR"):
            self.assertNotEqual(first.environment[name], second.environment[name])
        first.finish()
        self.assertNothingLeft(first)
        self.assertTrue(all(map(alive, second.pids.values())))
        self.assertIn("current 1280 x 800", second.run("xrandr").stdout)

    def testSeveralCanStartAtTheSameMoment(self):
        running = [subprocess.Popen([PROGRAM, "--bare", "--", "sh", "-c", "xrandr | grep -c current"], text=True,
                                    stdout=subprocess.PIPE, stderr=subprocess.PIPE) for _ in range(6)]
        results = [process.communicate(timeout=3 * BOUND) for process in running]
        self.assertEqual(results, [("1\n", "")] * 6)


class Crashes(PrivateDesktopTestCase):
    def testACrashOfAVitalPieceEndsTheDesktopAndIsReported(self):
        for name, number in (("X server", signal.SIGSEGV), ("session bus", signal.SIGKILL), ("window manager", signal.SIGTERM),
                             ("menu bar agent", signal.SIGSEGV), ("status item 2", signal.SIGABRT)):
            with self.subTest(name):
                desktop = Desktop(self, "--items", "2", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
                os.kill(desktop.pids[name], number)
                status, errors = desktop.end()
                self.assertEqual(status, 125)
                # Processes that depend on the piece may be seen to end before it.
                self.assertRegex(errors, rf"(?m)^private-desktop: {name} ended ")
                self.assertNothingLeft(desktop)

    def testAnAgentOrAnItemMayBeEndedOnPurpose(self):
        desktop = Desktop(self, "--items", "2", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM)
        for name, number in (("menu bar agent", signal.SIGTERM), ("status item 1", signal.SIGKILL)):
            os.kill(desktop.pids[name], number)
            self.assertTrue(becomes(lambda pid=desktop.pids[name]: not alive(pid)))
        self.assertEqual(desktop.run("xrandr").returncode, 0)
        status, _, errors = desktop.finish()
        self.assertEqual(status, 3)
        self.assertIn("menu bar agent ended by signal 15", errors)
        self.assertIn("status item 1 ended by signal 9", errors)

    def testAPieceThatCannotStartIsNamedWithTheEndOfItsLog(self):
        result = self.runIn("--", "true", OVIN_MENU_BAR_AGENT=AGENT, STAND_IN_AGENT="crash")
        self.assertEqual(result.returncode, 125)
        self.assertIn("menu bar agent ended by signal 6", result.stderr)
        self.assertIn("\n    the stand-in crashes as it was told\n", result.stderr)

    def testAnAgentThatNeverOwnsItsNamesIsNotWaitedForForever(self):
        result = self.runIn("--", "true", OVIN_MENU_BAR_AGENT=AGENT, STAND_IN_AGENT="mute", OVIN_DESKTOP_PATIENCE="2")
        self.assertEqual(result.returncode, 125)
        self.assertIn("menu bar agent", result.stderr)

    def testItemsThatAreRefusedAreNotWaitedForForever(self):
        result = self.runIn("--items", "2", "--", "true", OVIN_MENU_BAR_AGENT=AGENT, OVIN_STATUS_ITEM=STATUS_ITEM,
                            STAND_IN_AGENT="refuse", OVIN_DESKTOP_PATIENCE="2")
        self.assertEqual(result.returncode, 125)
        self.assertIn("0 of 2 status items", result.stderr)
        self.assertIn("refused org.freedesktop.DBus.Error.Failed", result.stderr)

    def testAMissingAgentIsNamed(self):
        result = self.runIn("--", "true", OVIN_MENU_BAR_AGENT="/no/such/agent")
        self.assertEqual(result.returncode, 125)
        self.assertIn("MenuBarAgent: OVIN_MENU_BAR_AGENT names /no/such/agent", result.stderr)

    def testAMissingProgramIsNamed(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ("python3", "env", "sh", "cvt", "xrandr", "true"):
                os.symlink(shutil.which(name), os.path.join(folder, name))
            result = self.runIn("--bare", "--", "true", PATH=folder)
        self.assertEqual(result.returncode, 125)
        self.assertIn("session bus: the program dbus-daemon is missing", result.stderr)


if __name__ == "__main__":
    PROGRAM, STATUS_ITEM, AGENT = map(os.path.abspath, sys.argv[1:4])
    if not any(map(shutil.which, ("/usr/lib/xorg/Xorg", "/usr/libexec/Xorg", "Xorg"))):
        print("SKIPPED: the X server Xorg is missing")
        sys.exit(SKIPPED)
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
