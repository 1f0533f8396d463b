"""What discovery finds where there is neither a menu bar nor a watcher, so that ovin-items is the watcher while it runs."""

import os
import signal
import subprocess

from DesktopTest import BOUND, DesktopTestCase, OVIN_ITEMS, becomes, main, ovinItems, setAccessibility


# A program with an item, which registers with every watcher.
SCRIPT = """#!/usr/bin/python3
from gi.repository import Gio, GLib

NAME, PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
ITEM = Gio.DBusNodeInfo.new_for_xml("<node><interface name='org.kde.StatusNotifierItem'>"
                                    "<property name='Title' type='s' access='read'/></interface></node>").interfaces[0]
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object("/StatusNotifierItem", ITEM, None, lambda *_: GLib.Variant("s", "Scripted"), None)
Gio.bus_watch_name_on_connection(bus, NAME, Gio.BusNameWatcherFlags.NONE, lambda *_: bus.call(
    NAME, PATH, NAME, "RegisterStatusNotifierItem", GLib.Variant("(s)", ("/StatusNotifierItem",)), None, 0, -1, None, None), None)
GLib.MainLoop().run()
"""


class Discovery(DesktopTestCase):
    def testEveryItemCountsAsUndrawn(self):
        self.startItems(["One", "Two"], "--name", "App")
        self.assertFinds(["One", "Two"])
        self.assertFinds(["One", "Two"])  # the items register with every watcher anew

    def testApplicationsAndTheirItemsAreSorted(self):
        self.startItem("--name", "gamma", "--title", "Third")
        self.startItem("--name", "Alpha", "--items", "3", "--title", "c", "--title", "A", "--title", "b")
        self.startItem("--name", "beta", "--title", "Second")
        self.assertFinds(["A", "b", "c", "Second", "Third"])
        self.assertEqual([item["application"] for item in self.find()], ["Alpha"] * 3 + ["beta", "gamma"])

    def testItemsOfOneApplicationAreToldApartByLabels(self):
        self.startItem("--name", "App", "--items", "2", "--title", " Twelve chars ", "--title", "More than twelve")
        self.startItem("--name", "Single", "--title", "Alone")
        self.assertFinds([" Twelve chars ", "More than twelve", "Alone"])
        self.assertEqual([item["label"] for item in self.find()], ["Twelve chars", "More than t…", None])

    def testEveryWayToRegisterIsUnderstood(self):
        for way in ("path", "name", "both", "well-known"):
            self.startItem("--register-by", way, "--title", way, "--name", "App")
        self.startItem("--reregister", "--title", "twice", "--name", "App")
        self.assertFinds(["both", "name", "path", "twice", "well-known"])

    def testAProgramThatAnInterpreterRunsHasTheNameOfItsOwnEntry(self):
        entries = os.path.join(os.environ["HOME"], ".local", "share", "applications")
        os.makedirs(entries, exist_ok=True)
        # The kernel keeps fifteen letters of a process's name.
        for name, program in (("Scripted Program", "a-program-that-an-interpreter-runs"), ("Interpreter", "python3"),
                              ("Interpreter", os.path.basename(os.path.realpath("/usr/bin/python3")))):
            with open(os.path.join(entries, program + ".desktop"), "w", encoding="utf-8") as entry:
                entry.write(f"[Desktop Entry]\nType=Application\nName={name}\nExec={program}\n")
        script = os.path.join(os.environ["OVIN_DESKTOP_DIR"], "a-program-that-an-interpreter-runs")
        with open(script, "w", encoding="utf-8") as file:
            file.write(SCRIPT)
        os.chmod(script, 0o755)
        process = subprocess.Popen([script])
        self.addCleanup(process.wait, BOUND)
        self.addCleanup(process.kill)
        self.assertTrue(becomes(lambda: [item["application"] for item in self.find()] == ["Scripted Program"]), self.find())

    def testItemsThatVanishAreNoLongerFound(self):
        self.startItem("--title", "Stays")
        self.startItem("--title", "Goes", "--vanish-after", "0")
        self.assertTrue(becomes(lambda: self.find() and "vanished" in self.items[1].lines()))
        self.assertFinds(["Stays"])


class Misbehaviour(DesktopTestCase):
    def testWhatAProgramGetsWrongIsMadeUpFor(self):
        for options in (["--garbage"], ["--missing", "--id", "only an id"], ["--no-getall", "--title", "one by one"],
                        ["--interface", "freedesktop", "--title", "the other interface"],
                        ["--no-getall", "--interface", "freedesktop", "--title", "both"]):
            self.startItem("--name", "Odd", *options)
        self.startItem("--name", "Zoo", "--title", "Good")
        self.assertFinds(["a plain text", "both", "one by one", "only an id", "the other interface", "Good"])

    def testAMegabyteIsATitleToo(self):
        self.startItem("--name", "Huge", "--huge", "1000000", "--items", "2")
        self.startItem("--name", "Zoo", "--title", "Good")
        self.assertTrue(becomes(lambda: len(self.find()) == 3))
        # On a busy machine a title of a megabyte may always take longer than a scan's bound. Then it is missing, never cut.
        whole = [("T" * 1_000_000, "T" * 11 + "…")] * 2 + [("Good", None)]
        for _ in range(3):
            items, duration = self.findAndTime()
            found = [(item["title"], item["label"]) for item in items]
            if found == whole:
                break
            self.assertGreaterEqual(duration, 0.25, "a title is missing, and nobody has waited for it")
            for one, expected in zip(found, whole, strict=True):
                self.assertIn(one, (expected, ("", None)), "a title is cut")

    def testAThousandItemsAreFound(self):
        # A program that looks once may not wait until a thousand items have registered. This watcher stays, as Ovin does.
        watcher = subprocess.Popen([OVIN_ITEMS, "--stay"], stdout=subprocess.DEVNULL)
        self.addCleanup(watcher.wait, BOUND)
        self.addCleanup(watcher.kill)
        self.startItem("--name", "Many", "--items", "1000", "--title", "Item")
        self.startItem("--name", "Zoo", "--title", "Good")
        self.assertTrue(becomes(lambda: len(self.find()) == 1001))
        self.assertEqual(self.find()[-1]["application"], "Zoo")

    def testSilentProgramsKeepTheirItemsWithoutATitle(self):
        self.startItem("--name", "Zoo", "--title", "Good")
        self.assertFinds(["Good"])
        usual = self.duration()
        self.startItem("--name", "Late", "--answer-after", "3000", "--title", "Late")
        self.startItem("--name", "Silent", "--stop-answering", "--items", "3", "--title", "Silent")
        self.assertFinds(["", "", "", "", "Good"])
        self.assertLess(self.duration(), 0.5 + 3 * usual, "items of one program have cost a bound each")


class Pressing(DesktopTestCase):
    def press(self, title, expectedStatus=0):
        result = ovinItems("--press", str(self.numberOf(title)))
        self.assertEqual(result.returncode, expectedStatus, result.stderr)
        return result.stderr

    def startPressable(self, *options):
        self.startItem("--title", "Before", "--name", "App")
        self.startItem("--title", "Zoo", "--name", "App")
        return self.startItem("--title", "Pressed", "--name", "App", *options)

    def pressAndChoose(self, item, row):
        """Presses the item, waits for the menu at the pointer and clicks on an entry."""
        number = self.numberOf("Pressed")
        subprocess.run(["xdotool", "mousemove", "300", "300"], check=True, timeout=BOUND)
        press = subprocess.Popen([OVIN_ITEMS, "--press", str(number)], stderr=subprocess.PIPE)
        try:
            search = ["xdotool", "search", "--onlyvisible", "--pid", str(press.pid)]
            visible = lambda: subprocess.run(search, capture_output=True, timeout=BOUND, check=False).stdout
            self.assertTrue(becomes(visible), f"no menu opens; {item.lines()}")
            y = 312 + 22 * row
            subprocess.run(["xdotool", "mousemove", "320", str(y), "click", "1"], check=True, timeout=BOUND)
            self.assertEqual(press.wait(BOUND), 0)
        finally:
            press.kill()
            press.communicate()

    def assertEvents(self, item, events):
        if not becomes(lambda: item.events() == events):
            self.assertEqual(item.events(), events)
        for other in self.items:
            if other is not item:
                self.assertEqual(other.events(), [])

    def testAnItemIsActivatedAndNoOther(self):
        item = self.startPressable()
        self.press("Pressed")
        self.assertEvents(item, ["activate"])

    def testAnItemOfManyIsActivatedAndNoOther(self):
        item = self.startItem("--items", "3", "--title", "a", "--title", "b", "--title", "c")
        self.press("b")
        self.assertEvents(item, ["activate /StatusNotifierItem/2"])

    def testAnItemThatIsNoMenuIsActivatedAlthoughItHasOne(self):
        item = self.startPressable("--item-is-menu", "false", "--menu", "A,B")
        self.press("Pressed")
        self.assertEvents(item, ["activate"])

    def testAMenuOpensAndItsEntriesCanBeChosen(self):
        for options in (["--item-is-menu", "true"], [], ["--item-is-menu", "false", "--no-activate"]):
            with self.subTest(options=options):
                item = self.startItem("--title", "Pressed", "--menu", "A,B,C", *options)
                self.pressAndChoose(item, 1)
                self.assertEvents(item, ["menu B"])
                item.process.kill()
                item.process.wait(BOUND)
                item.output.seek(0)
                item.output.truncate()
                self.assertFinds([])

    def testAMenuThatIsFilledWhenItIsAboutToShowOpens(self):
        item = self.startItem("--title", "Pressed", "--menu", "A,B,C", "--menu-fault", "late", "--item-is-menu", "true")
        self.pressAndChoose(item, 1)
        self.assertEvents(item, ["menu B"])

    def testAMenuItemWithoutAMenuIsAskedForOne(self):
        item = self.startPressable("--item-is-menu", "true")
        self.press("Pressed")
        self.assertEvents(item, ["context-menu"])

    def testAMenuThatIsMissingEmptyOrSilentLeadsToTheNextRequest(self):
        for fault in ("missing", "empty", "silent"):
            with self.subTest(fault):
                item = self.startItem("--title", fault, "--menu", "One", "--menu-fault", fault)
                self.press(fault)
                self.assertTrue(becomes(lambda: item.events() == ["activate"]), item.events())

    def testAMenuThatIsMissingEmptyOrSilentIsARefusalWhereThereIsNothingElse(self):
        for fault in ("missing", "empty", "silent"):
            with self.subTest(fault):
                self.startItem("--name", "App", "--title", fault, "--menu", "One", "--menu-fault", fault, "--no-activate")
                self.assertIn(f"Ovin: App — {fault} rejected AXPress and AXShowMenu", self.press(fault, expectedStatus=1))

    def testTheOtherInterfaceIsPressedUnderItsName(self):
        item = self.startPressable("--interface", "freedesktop")
        self.press("Pressed")
        self.assertEvents(item, ["activate"])

    def testARefusalIsReported(self):
        self.startPressable("--no-activate")
        self.assertIn("Ovin: App — Pressed rejected AXPress and AXShowMenu", self.press("Pressed", expectedStatus=1))

    def testAnItemThatIsThereNoLongerIsReported(self):
        item = self.startItem("--name", "App", "--vanish-after", "0", "--keep-connection")
        self.assertTrue(becomes(lambda: self.find() and "vanished" in item.lines()))
        watcher = subprocess.Popen([OVIN_ITEMS, "--press", "1"], stderr=subprocess.PIPE, text=True)
        errors = watcher.communicate(timeout=BOUND)[1]
        # It does not register again, so there is nothing to press.
        self.assertEqual((watcher.returncode, errors.strip()), (2, "ovin-items: there are only 0 items"))

    def testAPressThatIsNotAnsweredCountsAsOneAndArrivesLater(self):
        item = self.startItem("--title", "Pressed", "--answer-after", "100")
        number = self.numberOf("Pressed")
        self.assertEqual(ovinItems("--press", str(number)).returncode, 0)
        self.assertEvents(item, ["activate"])


class TheCommand(DesktopTestCase):
    def testWithoutASessionBusItSaysSo(self):
        result = ovinItems(DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent/bus")
        self.assertEqual((result.returncode, result.stderr), (3, "ovin-items: there is no session bus\n"))

    def testWithoutAccessibilityItemsAreFoundAndPressed(self):
        item = self.startItem("--title", "One")
        self.assertFinds(["One"])
        setAccessibility(False)
        self.addCleanup(setAccessibility, True)
        self.assertFinds(["One"])
        self.assertEqual(ovinItems("--press", "1").returncode, 0)
        self.assertTrue(becomes(lambda: item.events()), "the item is not pressed")

    def testASessionThatAnswersLateIsWaitedFor(self):
        answer = subprocess.run(["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/", "--method",
                                 "org.freedesktop.DBus.GetConnectionUnixProcessID", "org.a11y.Bus"],
                                check=True, capture_output=True, text=True, timeout=BOUND).stdout
        service = int(answer.split()[1].rstrip(",)"))
        os.kill(service, signal.SIGSTOP)
        try:
            process = subprocess.Popen([OVIN_ITEMS], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            with self.assertRaises(subprocess.TimeoutExpired, msg="it has not waited"):
                process.communicate(timeout=1)
        finally:
            os.kill(service, signal.SIGCONT)
        errors = process.communicate(timeout=BOUND)[1]
        self.assertEqual((process.returncode, errors), (0, ""))

    def testMistakesAreExplained(self):
        for arguments in (["--press", "0"], ["--press", "x"], ["--press", "1"], ["--nonsense"], ["extra"], ["--press"]):
            result = ovinItems(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertTrue(result.stderr.startswith("ovin-items: "), result.stderr)
            self.assertEqual(result.stdout, "")

    def testItExplainsItself(self):
        for option, word in (("--help", "--press"), ("--version", "ovin-items ")):
            result = ovinItems(option)
            self.assertEqual(result.returncode, 0)
            self.assertIn(word, result.stdout)

    def testTheLogIsQuietUnlessAskedOtherwise(self):
        self.startItem("--title", "One", "--name", "App")
        self.assertFinds(["One"])
        self.assertEqual(ovinItems().stderr, "")
        lines = ovinItems(OVIN_DEBUG="").stderr.splitlines()
        self.assertRegex(lines[0], r"^Ovin DEBUG AX: trusted=1, probe of Finder returned AXError -1$")
        self.assertRegex(lines[1], r"^Ovin DEBUG discovery: 1 items from \d+ apps; geometry unavailable$")
        self.assertRegex(lines[2], r"^Ovin DEBUG discovery: 1 undrawn items, \d+\.\d\ds: App$")
        self.assertEqual(len(lines), 3)


if __name__ == "__main__":
    main()
