"""Ovin looks for updates beside a menu bar, in feeds on a real web server on this machine: it tells, and installs nothing.

Started with the paths of ovin-items, status-item and ovin.
"""

import functools
import http.server
import os
import shutil
import subprocess
import sys
import tempfile
import threading
import time

from OvinTest import (BOUND, GUIDE_WAS_SHOWN, ApplicationTestCase, accessible, activeWindow, awaitAccessible,  # noqa: E402
                      becomes, buttonsOf, geometry, isSanitized, main, press, windowsOf)

RELEASE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "release")
PAGE = "https://ovin.example/news?a=b&c"


class Server(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *arguments):
        pass


def release(*arguments):
    return subprocess.run([sys.executable, RELEASE, *arguments], check=True, capture_output=True, text=True).stdout


def timersOf(pid):
    """What the kernel says of a program's timer files."""
    timers = []
    for name in os.listdir(f"/proc/{pid}/fdinfo"):
        try:
            with open(f"/proc/{pid}/fdinfo/{name}", encoding="utf-8") as file:
                lines = dict(line.rstrip("\n").split(": ", 1) for line in file if ": " in line)
        except OSError:
            continue  # closed meanwhile
        if "clockid" in lines:
            timers.append(lines)
    return timers


def wakeUps(pid):
    """The voluntary context switches of all threads."""
    count = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/status", encoding="utf-8", errors="replace") as file:
            count += sum(int(line.split()[1]) for line in file if line.startswith("voluntary_ctxt_switches:"))
    return count


class Updates(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp(dir=os.environ["OVIN_DESKTOP_DIR"])
        self.addCleanup(shutil.rmtree, self.folder, True)
        for name in ("www", "bin", "config/ovin"):
            os.makedirs(self.path(name))
        handler = functools.partial(Server, directory=self.path("www"))
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        self.server.daemon_threads = True
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)
        # No guide at the first start.
        self.write("config/ovin/defaults", GUIDE_WAS_SHOWN + "\n")
        self.write("bin/xdg-open", f"#!/bin/sh\nprintf %s \"$1\" >> {self.path('opened')}\n", 0o755)

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text, mode=0o644):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        os.chmod(self.path(name), mode)

    def read(self, name):
        try:
            with open(self.path(name), encoding="utf-8") as file:
                return file.read()
        except OSError:
            return ""

    def announce(self, version, shortVersion):
        """As docs/releasing.md has it."""
        self.write("item.xml", release("linux-item", "--version", version, "--short-version", shortVersion, "--link", PAGE))
        self.write("www/appcast.xml", release("feed", "Ovin", self.path("item.xml")))

    def start(self, asks=False):
        environment = {"XDG_CONFIG_HOME": self.path("config"), "PATH": self.path("bin") + ":" + os.environ["PATH"],
                       "OVIN_TEST_FEED": f"http://127.0.0.1:{self.server.server_port}/appcast.xml"}
        return self.startOvin(**environment, **({"OVIN_TEST_UPDATE": "1"} if asks else {}))

    def end(self, ovin):
        ovin.terminate()
        self.assertEnds(ovin)

    def pressButton(self, name):
        def isPressed():
            found = [button for button in buttonsOf("Ovin") if button.get_name() == name]
            if not found:
                return False
            press(found[0])
            return True

        self.assertTrue(becomes(isPressed), f"there is no button {name}: {[b.get_name() for b in buttonsOf('Ovin')]}")

    def assertSays(self, text):
        self.assertIsNotNone(awaitAccessible("Ovin", text), f"it does not say: {text}")

    def awaitCheck(self):
        self.assertTrue(becomes(lambda: "OvinLastUpdateCheck" in self.read("config/ovin/defaults")))
        self.assertTrue(becomes(lambda: self.slot() is not None))

    def testANewerVersionIsToldWithoutTakingTheKeyboardAndLeadsToItsPage(self):
        window = self.startWindow("Somebody works here")
        self.announce("2", "2.0")
        ovin = self.start()
        self.assertSays("Ovin 2.0 is available")
        [panel] = windowsOf(ovin.pid)
        self.assertLess(geometry(panel)[3], 100)
        time.sleep(0.5)
        self.assertEqual(activeWindow(), window)
        self.pressButton("Show…")
        self.assertSays("A new version of Ovin is available")
        self.assertTrue(becomes(lambda: activeWindow() not in (window, None)), "the window stays behind")
        self.assertTrue(becomes(lambda: len(windowsOf(ovin.pid)) == 1))
        self.assertEqual(self.read("opened"), "", "it was opened unasked")
        self.pressButton("Open Web Page")
        self.assertTrue(becomes(lambda: self.read("opened") == PAGE), self.read("opened"))
        self.assertTrue(becomes(lambda: windowsOf(ovin.pid) == []))

    def testASkippedVersionIsToldToWhoAsksAlone(self):
        self.announce("2", "2.0")
        ovin = self.start(asks=True)
        self.pressButton("Skip This Version")
        self.assertTrue(becomes(lambda: windowsOf(ovin.pid) == []))
        self.end(ovin)
        self.write("config/ovin/defaults", "".join(line + "\n" for line in self.read("config/ovin/defaults").splitlines()
                                                   if "OvinLastUpdateCheck" not in line))
        ovin = self.start()
        self.awaitCheck()
        time.sleep(1)
        self.assertEqual(windowsOf(ovin.pid), [])
        self.end(ovin)
        self.start(asks=True)
        self.assertSays("A new version of Ovin is available")
        self.pressButton("Later")
        self.assertEqual(self.read("opened"), "")

    def testWhoAsksHearsThatThisIsTheNewest(self):
        self.announce("1", "0.1.0")
        self.start(asks=True)
        self.assertSays("You’re up to date")

    def testAMissingBrokenOrHostileFeedIsSaidToWhoAsksAndToNobodyElse(self):
        self.announce("2", "2.0")
        whole = self.read("www/appcast.xml")
        attributes = "".join(f" a{number}='x'" for number in range(50000))
        for broken in (None, whole[:-20], "<!DOCTYPE rss [<!ENTITY a 'b'>]>" + whole.partition("?>")[2], "x" * 5000000,
                       f"<rss><a{attributes}/>"):
            if broken is None:
                os.remove(self.path("www/appcast.xml"))
            else:
                self.write("www/appcast.xml", broken)
            for asks in True, False:
                self.write("config/ovin/defaults", GUIDE_WAS_SHOWN + "\n")
                ovin = self.start(asks)
                if asks:
                    self.assertSays("Ovin could not look for updates")
                    self.assertTrue(becomes(lambda: len(windowsOf(ovin.pid)) == 1))  # noqa: B023
                else:
                    self.awaitCheck()
                    time.sleep(0.5)
                    self.assertEqual(windowsOf(ovin.pid), [])
                self.end(ovin)

    def testAnythingMayComeInPlaceOfVersions(self):
        self.announce("2", "x" * 2000)
        ovin = self.start(asks=True)
        self.assertSays("A new version of Ovin is available")
        self.assertIsNotNone(accessible("Ovin", "Open Web Page"))
        [window] = windowsOf(ovin.pid)
        self.assertLess(max(geometry(window)[2:]), 600)

    def testNothingWakesUpUntilTheNextCheckIsDue(self):
        if isSanitized():
            self.skipTest("sanitizers have threads of their own that wake up")
        self.announce("1", "0.1.0")
        ovin = self.start()
        self.awaitCheck()
        self.assertTrue(becomes(lambda: len(timersOf(ovin.pid)) == 1), timersOf(ovin.pid))
        [timer] = timersOf(ovin.pid)
        self.assertEqual(timer["clockid"], str(time.CLOCK_BOOTTIME), "the time that the computer sleeps does not count")
        hours = int(timer["it_value"].strip("()").split(",")[0]) / 3600
        self.assertTrue(23.9 < hours <= 24, hours)

        def rests():
            before = wakeUps(ovin.pid)
            time.sleep(6)
            return wakeUps(ovin.pid) == before

        # What the start set off ends at some time, on a slow machine later; what polls never does.
        self.assertTrue(becomes(rests), wakeUps(ovin.pid))


if __name__ == "__main__":
    main()
