"""Ovin updates itself beside a menu bar: from a feed on a real web server to the new program, with real packages of the release
tool, and with everything that can be wrong on the way.

Started with the paths of ovin-items, status-item and an ovin that knows the public key, and then the private key's.
"""

import functools
import http.server
import os
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import threading
import time

KEY = os.path.abspath(sys.argv.pop(4))

from OvinTest import (BOUND, GUIDE_WAS_SHOWN, OVIN, ApplicationTestCase, accessible, activeWindow,  # noqa: E402
                      awaitAccessible, becomes, buttonsOf, isSanitized, main, press, windowsOf)

RELEASE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "release")
MACHINE = os.uname().machine
IMAGE = f"Ovin-2.0-{MACHINE}.AppImage"
DEB = "ovin_2.0_all.deb"


class Server(http.server.SimpleHTTPRequestHandler):
    """Serves files, slowly below /slow/."""

    def log_message(self, *arguments):
        pass

    def copyfile(self, source, outputfile):
        if not self.path.startswith("/slow/"):
            return super().copyfile(source, outputfile)
        try:
            while chunk := source.read(1000):
                outputfile.write(chunk)
                time.sleep(0.05)
        except OSError:
            pass
        return None


def release(*arguments):
    return subprocess.run([sys.executable, RELEASE, *arguments], check=True, capture_output=True, text=True).stdout


def timersOf(pid):
    """What the kernel says of a program's timer files, those that go by the boot clock first."""
    timers = []
    for name in os.listdir(f"/proc/{pid}/fdinfo"):
        try:
            with open(f"/proc/{pid}/fdinfo/{name}", encoding="utf-8") as file:
                lines = dict(line.rstrip("\n").split(": ", 1) for line in file if ": " in line)
        except OSError:
            continue  # closed meanwhile
        if "clockid" in lines:
            timers.append(lines)
    return sorted(timers, key=lambda timer: timer["clockid"], reverse=True)


def wakeUps(pid):
    """The voluntary context switches of all threads."""
    count = 0
    for thread in os.listdir(f"/proc/{pid}/task"):
        with open(f"/proc/{pid}/task/{thread}/status", encoding="utf-8", errors="replace") as file:
            count += sum(int(line.split()[1]) for line in file if line.startswith("voluntary_ctxt_switches:"))
    return count


class UpdateTestCase(ApplicationTestCase):
    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp(dir=os.environ["OVIN_DESKTOP_DIR"])
        self.addCleanup(shutil.rmtree, self.folder, True)
        for name in ("www/slow", "bin", "config/ovin", "cache"):
            os.makedirs(self.path(name))
        handler = functools.partial(Server, directory=self.path("www"))
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        self.server.daemon_threads = True
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        self.addCleanup(self.server.server_close)
        self.addCleanup(self.server.shutdown)
        self.url = f"http://127.0.0.1:{self.server.server_port}/"
        # No guide at the first start.
        self.write("config/ovin/defaults", GUIDE_WAS_SHOWN + "\n")

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

    def announce(self, package, content, *options):
        """Releases a package, as docs/releasing.md has it."""
        self.write("www/" + package, content)
        self.write("notes.html", "<h2>What is new</h2><ul><li>Faster &amp; nicer</li></ul>")
        item = release("item", KEY, self.path("www/" + package), "--version", "2", "--short-version", "2.0", "--url",
                       self.url + package, "--notes", self.path("notes.html"), *options)
        self.write("item.xml", item)
        self.write("www/appcast.xml", release("feed", "Ovin", self.path("item.xml")))

    def start(self, asks=True, image=None):
        environment = {"XDG_CONFIG_HOME": self.path("config"), "XDG_CACHE_HOME": self.path("cache"),
                       "PATH": self.path("bin") + ":" + os.environ["PATH"], "OVIN_TEST_FEED": self.url + "appcast.xml"}
        if asks:
            environment["OVIN_TEST_UPDATE"] = "1"
        if image:
            environment |= {"APPIMAGE": image, "APPDIR": os.path.dirname(OVIN)}
        return self.startOvin(**environment)

    def pressButton(self, name):
        # A page replaces another one, and its buttons with it.
        def isPressed():
            found = [button for button in buttonsOf("Ovin") if button.get_name() == name]
            if not found:
                return False
            press(found[0])
            return True

        self.assertTrue(becomes(isPressed), f"there is no button {name}: {[b.get_name() for b in buttonsOf('Ovin')]}")

    def assertSays(self, text):
        self.assertIsNotNone(awaitAccessible("Ovin", text), f"it does not say: {text}")

    def assertNothingRemains(self):
        found = [os.path.join(folder, name) for folder, _, names in os.walk(self.path("cache")) for name in names]
        self.assertEqual(found, [])


class AnUpdate(UpdateTestCase):
    def testAnImageIsReplacedAndStartedAgain(self):
        self.announce(IMAGE, f"#!/bin/sh\necho new > {self.path('report')}\n")
        self.write("Ovin.AppImage", "#!/bin/sh\necho old\n", 0o754)
        ovin = self.start(image=self.path("Ovin.AppImage"))
        self.assertSays("A new version of Ovin is available")
        self.assertIsNotNone(accessible("Ovin", "Faster & nicer"), "the notes are not shown")
        self.assertIn("old", self.read("Ovin.AppImage"), "it was replaced unasked")
        self.pressButton("Install")
        self.assertSays("Ovin 2.0 is installed")
        self.assertEqual(self.read("Ovin.AppImage"), self.read("www/" + IMAGE))
        self.assertEqual(stat.S_IMODE(os.stat(self.path("Ovin.AppImage")).st_mode), 0o754)
        self.assertEqual(self.read("report"), "", "it was started unasked")
        self.pressButton("Restart Ovin")
        self.assertEnds(ovin)
        self.assertTrue(becomes(lambda: self.read("report") == "new\n"), "the new one does not start")
        self.assertNothingRemains()
        self.assertEqual([name for name in os.listdir(self.folder) if name.startswith(".")], [])

    def testAnImageWithTheProgramInItGivesWayToTheNewOneWhichRuns(self):
        # As the runtime of AppImages has it: the program is mounted somewhere, and the image is what starts it.
        def image(version):
            return (f"#!/bin/sh\necho {version} $$ >> {self.path('starts')}\nexport APPDIR={self.path('mounted')}\n"
                    "APPIMAGE=$(readlink -f \"$0\") exec \"$APPDIR/usr/bin/ovin\"\n")

        os.makedirs(self.path("mounted/usr/bin"))
        shutil.copy(OVIN, self.path("mounted/usr/bin/ovin"))
        self.announce(IMAGE, image("new"))
        os.makedirs(self.path("applications"))
        self.write("applications/Ovin-1.0.AppImage", image("old"), 0o755)
        os.symlink("../applications/Ovin-1.0.AppImage", self.path("bin/ovin"))
        self.write("applications/.Ovin-1.0.AppImage.a1b2c3.new", "left by one that was killed")

        environment = dict(os.environ, XDG_CONFIG_HOME=self.path("config"), XDG_CACHE_HOME=self.path("cache"),
                           OVIN_TEST_FEED=self.url + "appcast.xml")
        old = subprocess.Popen([self.path("bin/ovin")], env=environment)
        self.addCleanup(old.wait, BOUND)
        self.addCleanup(old.kill)
        self.assertSays("Ovin 2.0 is available")
        self.assertEqual(os.listdir(self.path("applications")), ["Ovin-1.0.AppImage"])
        self.pressButton("Show…")
        self.pressButton("Install")
        self.assertSays("Ovin 2.0 is installed")
        self.assertIsNone(old.poll(), "it ended unasked")
        self.assertTrue(os.path.islink(self.path("bin/ovin")))
        self.assertEqual(os.listdir(self.path("applications")), ["Ovin-1.0.AppImage"])
        self.assertEqual(stat.S_IMODE(os.stat(self.path("bin/ovin")).st_mode), 0o755)
        self.pressButton("Restart Ovin")
        self.assertEqual(old.wait(BOUND), 0)

        self.assertTrue(becomes(lambda: self.read("starts").count("\n") == 2), self.read("starts"))
        version, pid = self.read("starts").splitlines()[1].split()
        self.assertEqual(version, "new")
        self.assertTrue(becomes(lambda: self.slot() is not None), "the new one does not run")
        with open(f"/proc/{pid}/environ", encoding="utf-8", errors="replace") as file:
            self.assertIn(f"APPIMAGE={self.path('applications/Ovin-1.0.AppImage')}", file.read().split("\0"))
        os.kill(int(pid), signal.SIGTERM)
        self.assertTrue(becomes(lambda: not os.path.exists(f"/proc/{pid}")), "the new one does not end")
        self.assertNothingRemains()

    def testADebianPackageIsHandedToTheInstaller(self):
        self.write("bin/xdg-open", f"#!/bin/sh\ncat \"$1\" > {self.path('opened')}\nid -u > {self.path('user')}\n", 0o755)
        self.announce(DEB, "a package\n")
        self.start()
        self.pressButton("Install")
        self.assertTrue(becomes(lambda: self.read("opened") == "a package\n"), "the installer does not get it")
        self.assertTrue(becomes(lambda: self.read("user") == f"{os.getuid()}\n"))
        self.assertSays("Ovin 2.0 is ready to be installed")

    def testAnUpdateThatNobodyAskedForTakesTheKeyboardFromNobody(self):
        window = self.startWindow("Somebody works here")
        self.announce(DEB, "a package\n")
        self.start(asks=False)
        self.assertSays("Ovin 2.0 is available")
        time.sleep(0.5)
        self.assertEqual(activeWindow(), window)
        self.pressButton("Show…")
        self.assertSays("A new version of Ovin is available")
        self.assertTrue(becomes(lambda: activeWindow() not in (window, None)), "the window stays behind")
        self.pressButton("Later")
        self.assertTrue(becomes(lambda: accessible("Ovin", "Install") is None))

    def testNothingWakesUpUntilTheNextCheckIsDue(self):
        if isSanitized():
            self.skipTest("sanitizers have threads of their own that wake up")
        self.announce(DEB, "a package\n", "--minimum-system", "99")
        ovin = self.start(asks=False)
        self.assertTrue(becomes(lambda: "OvinLastUpdateCheck" in self.read("config/ovin/defaults")))
        self.assertTrue(becomes(lambda: self.slot() is not None))
        self.assertTrue(becomes(lambda: len(timersOf(ovin.pid)) == 2), timersOf(ovin.pid))
        bootTime, date = timersOf(ovin.pid)
        self.assertEqual(bootTime["clockid"], str(time.CLOCK_BOOTTIME), "the time that the computer sleeps does not count")
        hours = int(bootTime["it_value"].strip("()").split(",")[0]) / 3600
        self.assertTrue(23.9 < hours <= 24, hours)
        self.assertEqual(date["clockid"], str(time.CLOCK_REALTIME))
        self.assertEqual(date["settime flags"], "03", "an absolute time, cancelled when the clock is set")

        # What the start set off, and connections that servers keep, come to rest.
        quiet = time.monotonic() + BOUND
        before = wakeUps(ovin.pid)
        while time.monotonic() < quiet:
            time.sleep(2)
            now = wakeUps(ovin.pid)
            if now == before:
                break
            before = now
        time.sleep(6)
        self.assertEqual(wakeUps(ovin.pid), before)

    def testADownloadThatIsCancelledOrKilledLeavesNothing(self):
        self.announce(DEB, "x" * 400000)
        shutil.move(self.path("www/" + DEB), self.path("www/slow/" + DEB))
        self.write("www/appcast.xml", self.read("www/appcast.xml").replace(DEB, "slow/" + DEB))
        ovin = self.start()
        self.pressButton("Install")
        self.assertSays("Downloading Ovin 2.0…")
        self.pressButton("Cancel")
        self.assertTrue(becomes(lambda: accessible("Ovin", "Downloading Ovin 2.0…") is None))
        self.assertNothingRemains()
        ovin.terminate()
        self.assertEnds(ovin)
        ovin = self.start()
        self.pressButton("Install")
        self.assertSays("Downloading Ovin 2.0…")
        ovin.kill()
        ovin.wait(BOUND)
        other = self.start(asks=False)
        self.assertTrue(becomes(lambda: self.slot() is not None))
        self.assertNothingRemains()
        other.terminate()
        self.assertEnds(other)


class WhatIsWrong(UpdateTestCase):
    def assertFails(self, message):
        self.start()
        self.pressButton("Install")
        self.assertSays(message)
        self.assertNothingRemains()
        self.assertFalse(os.path.exists(self.path("opened")))

    def setUp(self):
        super().setUp()
        self.write("bin/xdg-open", f"#!/bin/sh\ntouch {self.path('opened')}\n", 0o755)
        self.announce(DEB, "a package\n")

    def testAnAlteredPackageIsNotInstalled(self):
        self.write("www/" + DEB, "b package\n")
        self.assertFails("The update is not genuine")

    def testAPackageThatIsTooLongIsNotInstalled(self):
        self.write("www/" + DEB, "a package\n" + "x" * 5000000)
        self.assertFails("The update could not be downloaded")

    def testAPackageThatIsTooShortIsNotInstalled(self):
        self.write("www/" + DEB, "a pack")
        self.assertFails("The update could not be downloaded")

    def testAMissingPackageIsNotInstalled(self):
        os.remove(self.path("www/" + DEB))
        self.assertFails("The update could not be downloaded")

    def testAMissingOrBrokenFeedIsSaidToWhoAsksAndToNobodyElse(self):
        whole = self.read("www/appcast.xml")
        for broken in (None, whole[:-20], "<!DOCTYPE rss [<!ENTITY a 'b'>]>" + whole.partition("?>")[2], "x" * 5000000):
            if broken is None:
                os.remove(self.path("www/appcast.xml"))
            else:
                self.write("www/appcast.xml", broken)
            ovin = self.start()
            self.assertSays("Ovin could not look for updates")
            ovin.terminate()
            self.assertEnds(ovin)
            shutil.rmtree(self.path("config"))
            os.makedirs(self.path("config/ovin"))
            self.write("config/ovin/defaults", GUIDE_WAS_SHOWN + "\n")
            ovin = self.start(asks=False)
            self.assertTrue(becomes(lambda: "OvinLastUpdateCheck" in self.read("config/ovin/defaults")))
            self.assertTrue(becomes(lambda: self.slot() is not None))
            time.sleep(1)
            self.assertEqual(windowsOf(ovin.pid), [])
            ovin.terminate()
            self.assertEnds(ovin)

    def testWithoutAnythingNewerItSaysSo(self):
        self.write("www/appcast.xml", self.read("www/appcast.xml").replace(">2</sparkle:version>", ">1</sparkle:version>"))
        self.start()
        self.assertSays("You’re up to date")


if __name__ == "__main__":
    main()
