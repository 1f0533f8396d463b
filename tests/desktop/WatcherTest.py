"""Who is the session's watcher of status items when bars and Ovin start, end and start again in any order. The bars are
stand-ins that ask for the watcher's name as bars of Debian do.

Started with the paths of ovin-items, status-item and ovin; with --watcher in front it is such a bar.
"""

import contextlib
import os
import subprocess
import sys
import threading
import time

HERE = os.path.abspath(__file__)
NAME = "org.kde.StatusNotifierWatcher"
PATH = "/StatusNotifierWatcher"
SHELL = "org.gnome.Shell"
# Flags of the bus, and of GNOME's library for it.
ALLOW_REPLACEMENT, REPLACE, DO_NOT_QUEUE = 1, 2, 4
GRACE = 3  # seconds

KINDS = {
    "xapp-sn-watcher": REPLACE,
    "waybar": ALLOW_REPLACEMENT | REPLACE,  # mate-panel too
    "xfce4-panel": 0,  # lxqt-panel and GNOME's extension too
    "kded": DO_NOT_QUEUE,
}

XML = f"""<node><interface name='{NAME}'>
<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>
<method name='RegisterStatusNotifierHost'><arg type='s' direction='in'/></method>
<property name='RegisteredStatusNotifierItems' type='as' access='read'/>
<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>
<property name='ProtocolVersion' type='i' access='read'/>
<signal name='StatusNotifierItemRegistered'><arg type='s'/></signal>
<signal name='StatusNotifierHostRegistered'/>
</interface></node>"""

APPLICATION_XML = """<node><interface name='org.qtproject.Qt.QCoreApplication'>
<property name='applicationName' type='s' access='read'/></interface></node>"""


class Watcher:
    """A bar's watcher. Like GNOME's extension it does not ask for the name while somebody else has it, once it has had it."""

    def __init__(self, kind):
        import gi
        gi.require_version("Gio", "2.0")
        from gi.repository import Gio, GLib
        self.Gio, self.GLib, self.kind = Gio, GLib, kind
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.items, self.owner, self.request = [], None, 0
        if "kded" in kind:
            # Its own name is known before it loads its modules, of which the watcher is one, and answers come after that.
            self.bus.register_object("/MainApplication", Gio.DBusNodeInfo.new_for_xml(APPLICATION_XML).interfaces[0], None,
                                     lambda *_: GLib.Variant("s", "kded5"))
            self.call("RequestName", GLib.Variant("(su)", ("org.kde.kded5", DO_NOT_QUEUE)))
            if kind == "slow kded":
                print("starting", flush=True)
            time.sleep(2 * GRACE if kind == "slow kded" else 0.3)
        if kind == "GNOME's extension":
            self.call("RequestName", GLib.Variant("(su)", (SHELL, DO_NOT_QUEUE)))
        self.bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(XML).interfaces[0], self.called, self.read)

    def call(self, method, arguments):
        return self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
                                  None, 0, -1)

    def enable(self):
        if "kded" in self.kind:
            self.call("RequestName", self.GLib.Variant("(su)", (NAME, DO_NOT_QUEUE)))
        else:
            self.request = self.Gio.bus_own_name_on_connection(self.bus, NAME, self.Gio.BusNameOwnerFlags(KINDS.get(self.kind, 0)),
                                                               None, self.lost)

    def lost(self, *_):
        self.items = []
        if self.kind == "xapp-sn-watcher":
            os._exit(0)  # it exits when it is refused, or replaced

    def called(self, connection, sender, path, interface, method, arguments, invocation):
        argument = arguments.unpack()[0]
        if method == "RegisterStatusNotifierItem":
            item = sender + argument if argument.startswith("/") else argument + "/StatusNotifierItem"
            if item not in self.items:
                self.items.append(item)
                self.bus.emit_signal(None, PATH, NAME, "StatusNotifierItemRegistered", self.GLib.Variant("(s)", (item,)))
        invocation.return_value(None)

    def isThere(self, name):
        return self.call("NameHasOwner", self.GLib.Variant("(s)", (name,))).unpack()[0]

    def read(self, connection, sender, path, interface, name):
        self.items = [item for item in self.items if self.isThere(item.partition("/")[0])]
        values = {"RegisteredStatusNotifierItems": ("as", self.items), "IsStatusNotifierHostRegistered": ("b", True),
                  "ProtocolVersion": ("i", 0)}
        return self.GLib.Variant(*values[name])


def beWatcher(kind):
    watcher = Watcher(kind)
    watcher.enable()
    print("asked", flush=True)
    loop = watcher.GLib.MainLoop()

    def obey(source, _):
        # "off" and "on" are what the lock of the screen does to GNOME's extension.
        command = sys.stdin.readline().strip()
        if command == "off":
            watcher.items = []
            watcher.Gio.bus_unown_name(watcher.request)
        elif command == "coming":
            # What the desktop tells when it switches an extension on.
            watcher.bus.emit_signal(None, "/org/gnome/Shell", SHELL + ".Extensions", "ExtensionStateChanged",
                                    watcher.GLib.Variant("(sa{sv})", ("indicators", {"state": watcher.GLib.Variant("d", 1)})))
        elif watcher.isThere(NAME):
            print("refused", flush=True)
        else:
            watcher.enable()
        return True

    watcher.GLib.io_add_watch(sys.stdin, watcher.GLib.IO_IN, obey)
    loop.run()


if len(sys.argv) > 2 and sys.argv[1] == "--watcher":
    beWatcher(sys.argv[2])
    sys.exit()

from OvinTest import (BOUND, ApplicationTestCase, Item, awaited, becomes, buttonsOf, click, entryNamed, main,  # noqa: E402
                      middle, press, processOf, run)


def ask(destination, path, method, *arguments):
    return run("gdbus", "call", "--session", "--dest", destination, "--object-path", path, "--method", method, *arguments).stdout


def watcherProperty(name):
    return ask(NAME, PATH, "org.freedesktop.DBus.Properties.Get", NAME, name)


class Bar:
    def __init__(self, kind):
        self.process = subprocess.Popen([sys.executable, "-B", HERE, "--watcher", kind], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.pid = self.process.pid
        assert self.process.stdout.readline() == ("starting\n" if kind == "slow kded" else "asked\n")

    def tell(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()

    def end(self):
        if self.process.stdin.closed:
            return
        self.process.kill()
        self.process.wait(BOUND)
        self.process.stdin.close()
        self.process.stdout.close()


class Orders(ApplicationTestCase):
    def startBar(self, kind):
        bar = Bar(kind)
        self.addCleanup(bar.end)
        return bar

    @contextlib.contextmanager
    def bar(self, kind):
        """A bar that ends with its block, also when a test in it fails."""
        bar = Bar(kind)
        try:
            yield bar
        finally:
            bar.end()

    def startAsWatcher(self):
        ovin = self.startOvin()
        self.assertTrue(becomes(lambda: processOf(NAME) == ovin.pid), "Ovin is not the watcher")
        return ovin

    def assertWatches(self, bar, count=2):
        """The bar is the watcher, and all items have come to it: Ovin's own, and those of `setUp`."""
        self.assertTrue(becomes(lambda: processOf(NAME) == bar.pid), "the bar is not the watcher")
        self.assertTrue(becomes(lambda: watcherProperty("RegisteredStatusNotifierItems").count("StatusNotifierItem") == count),
                        watcherProperty("RegisteredStatusNotifierItems"))

    def setUp(self):
        super().setUp()
        # It registers by its name, at the customary path.
        self.items.append(Item(["--title", "Item", "--register-by", "name"]))

    def testABarThatComesLaterIsTheWatcherHoweverItAsks(self):
        ovin = self.startAsWatcher()
        for kind in KINDS:
            with self.subTest(kind), self.bar(kind) as bar:
                self.assertWatches(bar)
                bar.end()
                self.assertTrue(becomes(lambda: processOf(NAME) == ovin.pid), "Ovin does not come back")
                self.assertTrue(becomes(lambda: watcherProperty("RegisteredStatusNotifierItems").count("Item") == 2))

    def testABarThatComesAtTheSameTimeIsTheWatcher(self):
        for kind in KINDS:
            with self.subTest(kind):
                ovin = self.startOvin()
                time.sleep(0.5)
                with self.bar(kind) as bar:
                    self.assertWatches(bar)
                ovin.terminate()
                self.assertEnds(ovin)

    def testABarThatWasFirstKeepsItsPlace(self):
        for kind in KINDS:
            with self.subTest(kind), self.bar(kind) as bar:
                ovin = self.startOvin()
                self.assertWatches(bar)
                time.sleep(GRACE + 1)
                self.assertEqual(processOf(NAME), bar.pid)
                ovin.terminate()
                self.assertEnds(ovin)
                self.assertWatches(bar, 1)

    def testABarThatTakesLongToStartIsTheWatcher(self):
        ovin = self.startAsWatcher()
        with self.bar("slow kded") as bar:
            self.assertWatches(bar)
        ovin.terminate()
        self.assertEnds(ovin)
        with self.bar("slow kded") as bar:
            self.startOvin()
            self.assertWatches(bar)

    def testAnExtensionThatIsSwitchedOffAndOnIsTheWatcherAgain(self):
        bar = self.startBar("GNOME's extension")
        self.startOvin()
        self.assertWatches(bar)
        bar.tell("off")
        self.assertTrue(becomes(lambda: processOf(NAME) is None))
        time.sleep(GRACE + 2)
        bar.tell("on")
        self.assertWatches(bar)

    def testAnExtensionThatWasOffWhenOvinStartedIsTheWatcherAgain(self):
        bar = self.startBar("GNOME's extension")
        bar.tell("off")
        self.assertTrue(becomes(lambda: processOf(NAME) is None))
        self.startAsWatcher()
        run("gdbus", "emit", "--session", "--object-path", "/org/gnome/Shell", "--signal",
            SHELL + ".Extensions.ExtensionStateChanged", "'indicators'", "{'state': <1>}")
        self.assertFalse(becomes(lambda: processOf(NAME) is None, 2), "a stranger is believed")
        bar.tell("coming")
        self.assertTrue(becomes(lambda: processOf(NAME) is None))
        bar.tell("on")
        self.assertWatches(bar)

    def testItemsThatRegisterOnlyWhereThereWasNoWatcherAreHandedOver(self):
        from gi.repository import Gio, GLib
        self.startAsWatcher()
        bus = Gio.DBusConnection.new_for_address_sync(
            Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION),
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        self.addCleanup(bus.close_sync)
        item = bus.get_unique_name()
        bus.call_sync(NAME, PATH, NAME, "RegisterStatusNotifierItem", GLib.Variant("(s)", (item,)), None,
                      Gio.DBusCallFlags.NONE, -1)
        for kind in ("waybar", "xfce4-panel"):
            with self.subTest(kind), self.bar(kind) as bar:
                self.assertWatches(bar, 3)
                self.assertIn(f"'{item}/StatusNotifierItem'", watcherProperty("RegisteredStatusNotifierItems"))
            self.assertTrue(becomes(lambda: "true" in watcherProperty("IsStatusNotifierHostRegistered")))
            bus.call_sync(NAME, PATH, NAME, "RegisterStatusNotifierItem", GLib.Variant("(s)", (item,)), None,
                          Gio.DBusCallFlags.NONE, -1)

    def testABarThatRestartsFindsItsPlaceFree(self):
        bar = self.startBar("kded")
        self.startOvin()
        self.assertWatches(bar)
        bar.end()
        time.sleep(1)
        self.assertWatches(self.startBar("kded"))

    def testTheEndOfOvinLeavesTheNameToTheNextBar(self):
        ovin = self.startAsWatcher()
        ovin.kill()
        self.assertTrue(becomes(lambda: processOf(NAME) is None))
        self.assertWatches(self.startBar("kded"), 1)

    def testWhereThereIsNoBarOvinIsTheHost(self):
        self.startAsWatcher()
        self.assertIn("true", watcherProperty("IsStatusNotifierHostRegistered"))


    def testAnotherWatcherAndAnotherBarHaveTheLedgesListReadAnew(self):
        from gi.repository import Gio, GLib
        ovin = self.startOvin(OVIN_DEBUG="1")
        lines = []
        reader = threading.Thread(target=lambda: lines.extend(iter(ovin.stderr.readline, "")))
        reader.start()
        self.addCleanup(reader.join)
        self.addCleanup(ovin.kill)
        found = lambda count: any(f"discovery: {count} undrawn items" in line for line in lines)
        # The first discovery comes before Ovin is the watcher; nobody opens the ledge.
        self.assertTrue(becomes(lambda: found(1)), lines)
        lines.clear()
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        bus.call_sync(NAME, PATH, NAME, "RegisterStatusNotifierHost", GLib.Variant("(s)", (bus.get_unique_name(),)), None,
                      Gio.DBusCallFlags.NONE, -1)
        self.assertTrue(becomes(lambda: found(0)), lines)

    def testWhereNoBarDrawsItsItemTheLedgeHasItsMenu(self):
        ovin = self.startAsWatcher()
        self.assertEqual(self.startOvin().wait(BOUND), 0)
        self.assertTrue(becomes(lambda: len(buttonsOf("Ovin")) == 2), "the ledge has no button for the menu")
        click(*middle(buttonsOf("Ovin")[-1]))
        entry = awaited(lambda: entryNamed("Quit Ovin"))
        self.assertIsNotNone(entry, "no menu opens")
        press(entry)
        self.assertEnds(ovin)


if __name__ == "__main__":
    main()
