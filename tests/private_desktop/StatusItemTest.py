"""status-item on a session bus: what it prints, answers and refuses under each of its options.

Started with the paths of status-item and of the stand-in for the watcher; further arguments go to unittest.
"""

import os
import signal
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "desktop"))
from PrivateDesktop import BOUND, Lines, becomes  # noqa: E402

STATUS_ITEM = AGENT = None
ITEM = "/StatusNotifierItem"
KDE = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"


class Process:
    """A program with its lines; ended with the test."""

    def __init__(self, test, *arguments, **settings):
        self.process = subprocess.Popen(arguments, stdout=subprocess.PIPE, **settings)
        test.addCleanup(self.process.communicate)
        test.addCleanup(self.process.kill)
        self.lines = Lines(self.process.stdout)
        self.pid = self.process.pid


def call(destination, path, method, *arguments, timeout=BOUND):
    """A method call as gdbus prints its answer, and whether that was an answer and no error."""
    result = subprocess.run(["gdbus", "call", "--session", "--timeout", str(int(timeout) or 1), "--dest", destination,
                             "--object-path", path, "--method", method, "--", *arguments],
                            capture_output=True, text=True, timeout=BOUND + timeout, check=False)
    return result.returncode == 0, (result.stdout if result.returncode == 0 else result.stderr).strip()


class StatusItemTestCase(unittest.TestCase):
    def startWatcher(self, **environment):
        return Process(self, AGENT, env=dict(os.environ, **environment))

    def startItem(self, *options, **settings):
        """A registered item and the watcher that it has registered with; .name is its unique name."""
        self.watcher = self.startWatcher()
        item = Process(self, STATUS_ITEM, *options, **settings)
        words = self.watcher.lines.next().split()
        item.name, item.argument = words[1], words[2]
        self.assertEqual(item.lines.next().split()[0], "registered")
        return item

    def get(self, item, name, interface=KDE, path=ITEM):
        return call(item.name, path, "org.freedesktop.DBus.Properties.Get", interface, name)

    def assertProperty(self, item, name, printed, interface=KDE, path=ITEM):
        self.assertEqual(self.get(item, name, interface, path), (True, f"(<{printed}>,)"))

    def assertNoProperty(self, item, name):
        answered, text = self.get(item, name)
        self.assertFalse(answered)
        self.assertIn("UnknownProperty", text)


class Properties(StatusItemTestCase):
    def testTheyAreWhatTheOptionsSay(self):
        item = self.startItem("--id", "mail", "--title", "Mail", "--icon", "mail-unread", "--tooltip", "2 new", "--status",
                              "NeedsAttention", "--item-is-menu", "false", "--menu", "A,B")
        self.assertProperty(item, "Id", "'mail'")
        self.assertProperty(item, "Title", "'Mail'")
        self.assertProperty(item, "IconName", "'mail-unread'")
        self.assertProperty(item, "ToolTip", "('', @a(iiay) [], '2 new', '')")
        self.assertProperty(item, "Status", "'NeedsAttention'")
        self.assertProperty(item, "ItemIsMenu", "false")
        self.assertProperty(item, "Menu", "objectpath '/MenuBar'")

    def testWhatNoOptionAsksForIsAbsent(self):
        item = self.startItem()
        for name in ("ItemIsMenu", "Menu", "IconPixmap", "ToolTip", "NoSuchProperty"):
            self.assertNoProperty(item, name)

    def testAllOfThemComeAtOnce(self):
        item = self.startItem("--id", "mail", "--item-is-menu", "true")
        answered, text = call(item.name, ITEM, "org.freedesktop.DBus.Properties.GetAll", KDE)
        self.assertTrue(answered)
        for part in ("'Id': <'mail'>", "'Title': <'mail'>", "'Status': <'Active'>", "'ItemIsMenu': <true>"):
            self.assertIn(part, text)

    def testPicturesHaveAsManyBytesAsTheySay(self):
        item = self.startItem("--pixmap", "#12ab9f")
        text = self.get(item, "IconPixmap")[1]
        pictures = text[text.index("[") + 1:text.rindex("]")].split("), (")
        for side, picture in zip((22, 44), pictures, strict=True):
            numbers = picture[picture.index("[") + 1:].rstrip("])").removeprefix("byte ").split(", ")
            self.assertEqual(len(numbers), 4 * side * side)
            middle = 4 * (side * side // 2 + side // 2)
            self.assertEqual([int(number, 16) for number in numbers[middle:middle + 4]], [0xFF, 0x12, 0xAB, 0x9F])

    def testPicturesCanBePictograms(self):
        alphas = {}
        for name in ("mail", "battery"):
            item = self.startItem("--pixmap", "#12ab9f", "--glyph", name)
            text = self.get(item, "IconPixmap")[1]
            small = text[text.index("[byte ") + 6:text.index("])")].split(", ")
            self.assertEqual(len(small), 4 * 22 * 22)
            alphas[name] = [int(number, 16) for number in small[::4]]
            self.assertEqual({alphas[name][0], max(alphas[name])}, {0, 255})
            self.assertEqual({*small[1::4]} | {*small[2::4]} | {*small[3::4]}, {"0x12", "0xab", "0x9f"})
            self.watcher.process.kill()
            item.process.kill()
        self.assertNotEqual(alphas["mail"], alphas["battery"])

    def testItTellsWhichPictogramsThereAre(self):
        result = subprocess.run([STATUS_ITEM, "--glyph", "list"], capture_output=True, text=True, timeout=BOUND, check=True)
        names = result.stdout.split()
        self.assertIn("battery", names)
        self.assertEqual(names, sorted(set(names)))

    def testTheInterfaceCanBeTheOtherOne(self):
        item = self.startItem("--interface", "freedesktop", "--id", "mail")
        self.assertProperty(item, "Id", "'mail'", interface="org.freedesktop.StatusNotifierItem")
        self.assertIn("UnknownInterface", self.get(item, "Id", KDE)[1])

    def testTheTitleChangesOnASignal(self):
        item = self.startItem("--title", "Mail")
        monitor = Process(self, "dbus-monitor", "--session", f"sender='{item.name}'")
        while (line := monitor.lines.next()) is not None and "member=NameLost" not in line:
            pass  # a monitor loses its name at the moment from which on it sees everything
        monitor.lines.next()
        os.kill(item.pid, signal.SIGUSR1)
        self.assertIn(f"path={ITEM}; interface={KDE}; member=NewTitle", monitor.lines.next() or "")
        self.assertProperty(item, "Title", "'Mail changed'")


    def testEachItemCanHaveATitleOfItsOwn(self):
        item = self.startItem("--items", "3", "--title", "One", "--title", "Two")
        for path, title in ((ITEM, "One"), (ITEM + "/2", "Two"), (ITEM + "/3", "One 3")):
            self.assertProperty(item, "Title", f"'{title}'", path=path)

    def testATitleChangesOnCommand(self):
        item = self.startItem("--items", "2", "--title", "One", "--commands", stdin=subprocess.PIPE)
        item.process.stdin.write(b"nonsense\ntitle 3 Nobody\ntitle 2 New title\n")
        item.process.stdin.flush()
        changed = lambda: self.get(item, "Title", path=ITEM + "/2") == (True, "(<'New title'>,)")
        self.assertTrue(becomes(changed))
        self.assertProperty(item, "Title", "'One'")


class Calls(StatusItemTestCase):
    def testTheyArePrintedWithTheirArguments(self):
        item = self.startItem()
        for method, arguments in (("Activate", "3 -4"), ("SecondaryActivate", "5 6"), ("ContextMenu", "-7 8"),
                                  ("Scroll", "-120 vertical")):
            self.assertEqual(call(item.name, ITEM, f"{KDE}.{method}", *arguments.split()), (True, "()"))
        self.assertEqual(item.lines.all(4), ["activate 3 -4", "secondary-activate 5 6", "context-menu -7 8",
                                             "scroll -120 vertical"])

    def testUnknownOnesAreRefused(self):
        item = self.startItem()
        self.assertIn("UnknownMethod", call(item.name, ITEM, f"{KDE}.Dance")[1])
        self.assertIn("Unknown", call(item.name, "/Elsewhere", f"{KDE}.Activate", "1", "2")[1])

    def testActivationCanBeUnknown(self):
        item = self.startItem("--no-activate", "--id", "mail")
        self.assertIn("UnknownMethod", call(item.name, ITEM, f"{KDE}.Activate", "1", "2")[1])
        self.assertProperty(item, "Id", "'mail'")


class Menu(StatusItemTestCase):
    def testItsLayoutHasTheEntries(self):
        item = self.startItem("--menu", "A,B,-,C")
        answered, text = call(item.name, "/MenuBar", f"{MENU}.GetLayout", "0", "-1", "[]")
        self.assertTrue(answered, text)
        self.assertIn("'children-display': <'submenu'>", text)
        labels = [text.index(part) for part in ("<'A'>", "<'B'>", "'type': <'separator'>", "<'C'>")]
        self.assertEqual(labels, sorted(labels))

    def testAClickIsPrinted(self):
        item = self.startItem("--menu", "A,B,-,C")
        self.assertEqual(call(item.name, "/MenuBar", f"{MENU}.AboutToShow", "0"), (True, "(false,)"))
        for entry, event in (("1", "hovered"), ("3", "clicked"), ("4", "clicked")):  # the third is the separator
            self.assertTrue(call(item.name, "/MenuBar", f"{MENU}.Event", entry, event, "<''>", "0")[0])
        self.assertTrue(call(item.name, "/MenuBar", f"{MENU}.EventGroup", "[(2, 'clicked', <0>, 0)]")[0])
        self.assertEqual(item.lines.all(2), ["menu C", "menu B"])
        self.assertFalse(call(item.name, "/MenuBar", f"{MENU}.Event", "9", "clicked", "<''>", "0")[0])

    def testSingleEntriesCanBeAskedFor(self):
        item = self.startItem("--menu", "A,B,-,C")
        self.assertEqual(call(item.name, "/MenuBar", f"{MENU}.GetGroupProperties", "[2, 3, 77]", "[]"),
                         (True, "([(2, {'label': <'B'>}), (3, {'type': <'separator'>})],)"))
        self.assertEqual(call(item.name, "/MenuBar", f"{MENU}.GetProperty", "4", "label"), (True, "(<'C'>,)"))
        self.assertEqual(call(item.name, "/MenuBar", "org.freedesktop.DBus.Properties.Get", MENU, "Version"),
                         (True, "(<uint32 3>,)"))

    def testItChangesOnASignal(self):
        item = self.startItem("--menu", "A")
        os.kill(item.pid, signal.SIGUSR2)
        layout = lambda: call(item.name, "/MenuBar", f"{MENU}.GetLayout", "0", "-1", "[]")[1]
        self.assertTrue(becomes(lambda: "<'More'>" in layout()), layout())
        self.assertTrue(layout().startswith("(uint32 2,"), layout())
        self.assertFalse(call(item.name, "/MenuBar", f"{MENU}.Event", "1", "clicked", "<''>", "0")[0])

    def testWithoutEntriesThereIsNone(self):
        self.assertFalse(call(self.startItem().name, "/MenuBar", f"{MENU}.GetLayout", "0", "-1", "[]")[0])


class Registration(StatusItemTestCase):
    def testItIsByPathNameOrBoth(self):
        self.watcher = self.startWatcher()
        for way, argument in (("path", ITEM), ("name", "NAME"), ("both", "NAME" + ITEM)):
            Process(self, STATUS_ITEM, "--register-by", way)
            name, told = self.watcher.lines.next().split()[1:]
            self.assertEqual(told, argument.replace("NAME", name))

    def testItCanBeByAWellKnownName(self):
        item = self.startItem("--register-by", "well-known", "--id", "mail")
        self.assertEqual(item.argument, f"{KDE}-{item.pid}-1")
        item.name = item.argument
        self.assertProperty(item, "Id", "'mail'")

    def testItWaitsForAWatcherAndFollowsARestartedOne(self):
        item = Process(self, STATUS_ITEM)
        self.assertIsNone(item.lines.next(0.3))
        for _ in range(3):
            watcher = self.startWatcher()
            self.assertEqual(item.lines.next(), "registered")
            self.assertIsNone(watcher.lines.next(0.1) and watcher.lines.next(0.1), "registered twice")
            watcher.process.kill()
            watcher.process.wait()

    def testItCanBeDoneTwice(self):
        item = self.startItem("--reregister")
        self.assertEqual(item.lines.next(), "registered")
        self.assertEqual(self.watcher.lines.next(), f"item {item.name} {ITEM}")

    def testARefusalIsPrinted(self):
        self.startWatcher(STAND_IN_AGENT="refuse")
        self.assertEqual(Process(self, STATUS_ITEM).lines.next(), "refused org.freedesktop.DBus.Error.Failed")

    def testReadinessIsToldOnce(self):
        reader, writer = os.pipe()
        self.startItem("--ready-fd", str(writer), "--reregister", pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader, "rb") as pipe:
            self.assertEqual(pipe.read(), b"r")

    def testItDoesNotMatterThatNobodyListens(self):
        reader, writer = os.pipe()
        os.close(reader)
        item = self.startItem("--ready-fd", str(writer), pass_fds=[writer])
        os.close(writer)
        item.process.stdout.close()
        call(item.name, ITEM, f"{KDE}.Activate", "1", "2")
        self.assertProperty(item, "Id", "'status-item'")
        item.process.stdout = None

    def testWithoutItemsItIsReadyAtOnce(self):
        reader, writer = os.pipe()
        item = Process(self, STATUS_ITEM, "--items", "0", "--ready-fd", str(writer), pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader, "rb") as pipe:
            self.assertEqual(pipe.read(), b"r")
        self.assertIsNone(item.process.poll())

    def testAThousandItemsShareAConnection(self):
        self.watcher = self.startWatcher()
        item = Process(self, STATUS_ITEM, "--items", "1000", "--id", "many", "--title", "Many", "--pixmap", "#00ff00")
        self.assertEqual(item.lines.next(), f"registered {ITEM}")
        self.assertEqual({line.split()[1] for line in item.lines.all(999)}, {f"{ITEM}/{number}" for number in range(2, 1001)})
        item.name = self.watcher.lines.next().split()[1]
        self.assertProperty(item, "Id", "'many'")
        self.assertProperty(item, "Title", "'Many 1000'", path=f"{ITEM}/1000")
        self.assertFalse(self.get(item, "Id", path=f"{ITEM}/1001")[0])
        call(item.name, f"{ITEM}/7", f"{KDE}.Activate", "1", "2")
        self.assertEqual(item.lines.next(), f"activate 1 2 {ITEM}/7")


class Misbehaviour(StatusItemTestCase):
    def testItCanStopAnswering(self):
        item = self.startItem("--stop-answering", "--menu", "A")
        for path, method in ((ITEM, f"{KDE}.Activate"), ("/MenuBar", f"{MENU}.GetLayout")):
            arguments = ("1", "2") if path == ITEM else ("0", "-1", "[]")
            self.assertIn("Timeout", call(item.name, path, method, *arguments, timeout=1)[1])
        self.assertIsNone(item.process.poll())
        self.assertIn("true", call("org.freedesktop.DBus", "/", "org.freedesktop.DBus.NameHasOwner", item.name)[1])

    def testItCanAnswerLate(self):
        item = self.startItem("--answer-after", "400", "--id", "mail")
        began = time.monotonic()
        self.assertProperty(item, "Id", "'mail'")
        self.assertGreaterEqual(time.monotonic() - began, 0.4)
        askers = [Process(self, "gdbus", "call", "--session", "--dest", item.name, "--object-path", ITEM, "--method",
                          "org.freedesktop.DBus.Properties.Get", KDE, "Id") for _ in range(5)]
        for asker in askers:  # all of them wait at the same time
            self.assertEqual(asker.lines.next(), "(<'mail'>,)")

    def testItCanTalkGarbage(self):
        item = self.startItem("--garbage", "--id", "mail")
        self.assertProperty(item, "Id", "'mail'")
        self.assertProperty(item, "Title", "42")
        self.assertProperty(item, "Status", "uint32 7")
        self.assertProperty(item, "ToolTip", "'a plain text'")
        self.assertProperty(item, "Menu", "'no path at all'")
        self.assertIn("(22, 22, [byte 0x7f, 0x7f, 0x7f, 0x7f, 0x7f])", self.get(item, "IconPixmap")[1])
        self.assertTrue(call(item.name, ITEM, "org.freedesktop.DBus.Properties.GetAll", KDE)[0])

    def testItCanBeHuge(self):
        item = self.startItem("--huge", "3000000")
        self.assertEqual(len(self.get(item, "Title")[1]), 3000000 + len("(<''>,)"))
        self.assertGreater(len(self.get(item, "ToolTip")[1]), 3000000)

    def testItCanHaveNothingButAnId(self):
        item = self.startItem("--missing", "--id", "mail", "--title", "Mail", "--menu", "A")
        self.assertEqual(call(item.name, ITEM, "org.freedesktop.DBus.Properties.GetAll", KDE), (True, "({'Id': <'mail'>},)"))
        self.assertNoProperty(item, "Title")

    def testItCanLackGetAll(self):
        item = self.startItem("--no-getall", "--id", "mail")
        self.assertIn("UnknownMethod", call(item.name, ITEM, "org.freedesktop.DBus.Properties.GetAll", KDE)[1])
        self.assertProperty(item, "Id", "'mail'")

    def testItCanVanish(self):
        item = self.startItem("--vanish-after", "200")
        self.assertEqual(item.lines.next(), "vanished")
        self.assertEqual(item.process.wait(BOUND), 0)

    def testItCanVanishAndKeepItsConnection(self):
        item = self.startItem("--vanish-after", "200", "--keep-connection", "--register-by", "well-known")
        self.assertEqual(item.lines.next(), "vanished")
        self.assertFalse(self.get(item, "Id")[0])
        owned = lambda name: "true" in call("org.freedesktop.DBus", "/", "org.freedesktop.DBus.NameHasOwner", name)[1]
        self.assertTrue(owned(item.name))
        self.assertFalse(owned(item.argument))
        self.assertIsNone(item.process.poll())


class TheProcess(StatusItemTestCase):
    def testItBearsTheChosenName(self):
        item = self.startItem("--name", "Telephone Exchange")
        with open(f"/proc/{item.pid}/comm", encoding="utf-8") as file:
            self.assertEqual(file.read(), "Telephone Excha\n")
        with open(f"/proc/{item.pid}/cmdline", encoding="utf-8") as file:
            self.assertEqual(file.read().split("\0")[0], "Telephone Exchange")

    def testItSleepsWhileNothingHappens(self):
        item = self.startItem("--menu", "A", "--pixmap", "#ffffff")
        def wakeUps():
            with open(f"/proc/{item.pid}/status", encoding="utf-8") as file:
                return next(line.split()[1] for line in file if line.startswith("voluntary_ctxt_switches"))
        call(item.name, ITEM, "org.freedesktop.DBus.Peer.Ping")
        time.sleep(0.2)
        before = wakeUps()
        time.sleep(1)
        self.assertEqual(wakeUps(), before)

    def testItEndsWithTheBus(self):
        bus = Process(self, "dbus-daemon", "--session", "--nofork", "--print-address")
        item = Process(self, STATUS_ITEM, env=dict(os.environ, DBUS_SESSION_BUS_ADDRESS=bus.lines.next()))
        self.assertIsNone(item.lines.next(0.2))
        bus.process.kill()
        item.process.wait(BOUND)

    def testMistakesAreExplained(self):
        for arguments in (["--items", "-1"], ["--items", "1001"], ["--pixmap", "red"], ["--glyph", "no such"], ["--status", "Asleep"],
                          ["--interface", "gnome"], ["--register-by", "mail"], ["--answer-after", "-1"], ["--huge", "1e9"]):
            result = subprocess.run([STATUS_ITEM, *arguments], capture_output=True, text=True, timeout=BOUND, check=False)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertIn(arguments[0], result.stderr)
        result = subprocess.run([STATUS_ITEM, "--items", "2", "--register-by", "name"], capture_output=True, text=True,
                                timeout=BOUND, check=False)
        self.assertEqual(result.returncode, 2)

    def testItExplainsItself(self):
        result = subprocess.run([STATUS_ITEM, "--help"], capture_output=True, text=True, timeout=BOUND, check=False)
        self.assertEqual(result.returncode, 0)
        self.assertIn("--stop-answering", result.stdout)


if __name__ == "__main__":
    STATUS_ITEM, AGENT = map(os.path.abspath, sys.argv[1:3])
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
