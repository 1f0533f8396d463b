"""What the tests of the whole application share: Ovin beside a menu bar, real clicks and keys, and the accessibility library
as other programs use it.

Started with the paths of ovin-items, status-item and ovin.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import threading
import time
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

OVIN = os.path.abspath(sys.argv.pop(3))

import DesktopTest  # noqa: E402
from DesktopTest import BOUND, Item, becomes, pidOf, processOf, setAccessibility  # noqa: E402, F401

BAR_HEIGHT = 28
SETTINGS = os.path.join(os.environ["XDG_CONFIG_HOME"], "ovin", "defaults")
GUIDE_WAS_SHOWN = "OvinHasShownGuide\tb\t1"


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, timeout=BOUND, check=False)


def click(x, y, button=1):
    run("xdotool", "mousemove", str(x), str(y), "click", str(button))


def askForOwnMenu(x, y):
    """Has Ovin open its own menu at a place, as bars do that open no menus themselves; this one does that for a right click, and
    nobody finds the entries in its menus. Returns whether Ovin was there to be asked."""
    run("xdotool", "mousemove", str(x), str(y))
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)

    def call(name, path, interface, method, *arguments):
        signature = "".join("i" if isinstance(argument, int) else "s" for argument in arguments)
        return bus.call_sync(name, path, interface, method, GLib.Variant(f"({signature})", arguments), None,
                             Gio.DBusCallFlags.NONE, 1000 * BOUND).unpack()[0:1]

    watcher, properties, item = "org.kde.StatusNotifierWatcher", "org.freedesktop.DBus.Properties", "org.kde.StatusNotifierItem"
    for address in call(watcher, "/StatusNotifierWatcher", properties, "Get", watcher, "RegisteredStatusNotifierItems")[0]:
        name, slash, path = address.partition("/")
        try:
            # Nobody else is asked anything, because others may never answer.
            process = call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "GetConnectionUnixProcessID", name)[0]
            with open(f"/proc/{process}/comm", encoding="utf-8") as file:
                isOvin = file.read() == "ovin\n"
            if isOvin and call(name, slash + path, properties, "Get", item, "Id")[0] == "Ovin.Control":
                # One bar tells the same place for every click.
                call(name, slash + path, item, "ContextMenu", 0, 25)
                return True
        except (GLib.Error, OSError):
            continue  # it went meanwhile
    return False


def heedSignals():
    """Tests under nohup, or in the background of a shell, ignore some signals, and so would the programs that they start."""
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, signal.SIG_DFL)


def isSanitized():
    with open(OVIN, "rb") as file:
        content = file.read()
    return b"__asan_init" in content or b"__tsan_init" in content


def memoryOf(pid):
    """In mebibytes."""
    with open(f"/proc/{pid}/status", encoding="utf-8") as file:
        return int(re.search(r"VmRSS:\s+(\d+) kB", file.read())[1]) // 1024


def activeWindow():
    """The number of the window that has the keyboard; None while none has it."""
    found = re.search(r"# (0x[0-9a-f]+)", run("xprop", "-root", "_NET_ACTIVE_WINDOW").stdout)
    return int(found[1], 16) if found and int(found[1], 16) != 0 else None


def windowsOf(pid):
    return run("xdotool", "search", "--onlyvisible", "--pid", str(pid)).stdout.split()


def geometry(window):
    text = run("xdotool", "getwindowgeometry", "--shell", str(window)).stdout
    return tuple(int(re.search(rf"{name}=(-?\d+)", text)[1]) for name in ("X", "Y", "WIDTH", "HEIGHT"))


def colours(area):
    """The colours, as (red, green, blue), that the screen shows in an area."""
    path = os.path.join(os.environ["OVIN_DESKTOP_DIR"], "screen.ppm")
    subprocess.run(["scrot", "-o", "-a", ",".join(map(str, area)), path], check=True, timeout=BOUND)
    with open(path, "rb") as file:
        data = file.read()
    header = re.match(rb"P6\s+(?:#[^\n]*\n)?\d+\s+\d+\s+255\s", data)
    body = data[header.end():]
    return {tuple(body[i:i + 3]) for i in range(0, len(body), 3)}


def children(element):
    element.clear_cache()  # asked of the program anew
    found = [element.get_child_at_index(index) for index in range(element.get_child_count())]
    return [child for child in found if child is not None]


def descendant(element, name):
    for child in children(element):
        found = child if child.get_name() == name else descendant(child, name)
        if found is not None:
            return found
    return None


def accessible(application, name=None):
    """An application, or the first element of this name in it; None while there is none."""
    while GLib.MainContext.default().iteration(False):
        pass  # news of programs that have come and gone
    try:
        programs = children(Atspi.get_desktop(0))
    except GLib.Error:
        return None
    for program in programs:
        try:
            found = program if program.get_name() == application else None
            if found is not None and name is not None:
                found = descendant(program, name)
        except GLib.Error:
            continue  # it went while it was looked at; a killed program is listed for a while
        if found is not None:
            return found
    return None


def awaited(look, bound=BOUND):
    """What `look` returns as soon as that is anything, because a second look may find it gone again."""
    found = []
    becomes(lambda: found.append(look()) or found[-1], bound)
    return found[-1]


def awaitAccessible(*path):
    return awaited(lambda: accessible(*path))


def middle(element):
    area = element.get_extents(Atspi.CoordType.SCREEN)
    return area.x + area.width // 2, area.y + area.height // 2


def placeOf(find):
    """The middle of what `find` returns; None where there is none, or it went while it was looked at."""
    try:
        element = find()
        return element and middle(element)
    except GLib.Error:
        return None


def press(element):
    element.do_action(0)


def openWindows(application):
    """Those that assistive programs are told are shown. A window that has closed may be there still."""
    element = accessible(application)
    return [] if element is None else [window for window in children(element)
                                       if window.get_state_set().contains(Atspi.StateType.SHOWING)]


def buttonsOf(application):
    """The buttons of an application's open windows; none while it cannot be looked at."""
    def below(elements):
        return [button for child in elements
                for button in ([child] if child.get_role() == Atspi.Role.PUSH_BUTTON else below(children(child)))]

    try:
        return below(openWindows(application))
    except GLib.Error:
        return []


def entryNamed(name):
    """An entry of Ovin's open menu; windows may have the same name."""
    def below(element):
        for child in children(element):
            if child.get_name() == name and child.get_role() in (Atspi.Role.MENU_ITEM, Atspi.Role.CHECK_MENU_ITEM):
                return child
            found = below(child)
            if found is not None:
                return found
        return None

    try:
        ovin = accessible("Ovin")
        return below(ovin) if ovin is not None else None
    except GLib.Error:
        return None  # it went while it was looked at


def writeSettings(*lines):
    """Leaves Ovin with these settings alone, whatever a test has put in their place or beside them."""
    for path in (SETTINGS, SETTINGS + ".new"):
        shutil.rmtree(path, ignore_errors=True)
    os.makedirs(os.path.dirname(SETTINGS), exist_ok=True)
    with open(SETTINGS, "w", encoding="utf-8") as file:
        file.writelines(line + "\n" for line in lines)


def readSettings():
    """The lines of Ovin's settings."""
    try:
        with open(SETTINGS, encoding="utf-8") as file:
            return file.read().splitlines()
    except OSError:
        return []


class Heartbeat:
    """Asks Ovin all the time for something that only its main thread answers, and keeps how many seconds the longest answer took:
    the longest silence of that thread, and a little more. While Ovin does not run, there is no answer to wait for."""

    def __enter__(self):
        self.longest, self.answers, self.isOver = 0.0, 0, False
        self.thread = threading.Thread(target=self.beat, daemon=True)
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.isOver = True
        self.thread.join(4 * BOUND)

    def beat(self):
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        while not self.isOver:
            asked = time.monotonic()
            try:
                bus.call_sync("org.ovin.Ovin", "/org/ovin/Ovin", "org.freedesktop.DBus.Introspectable", "Introspect", None, None,
                              Gio.DBusCallFlags.NO_AUTO_START, 1000 * int(2 * BOUND))
                self.answers += 1
            except GLib.Error:
                pass  # how long it took counts all the same
            self.longest = max(self.longest, time.monotonic() - asked)
            time.sleep(0.01)


class ApplicationTestCase(unittest.TestCase):
    def setUp(self):
        setAccessibility(True)
        writeSettings(GUIDE_WAS_SHOWN)
        self.items = []
        self.addCleanup(self.endItems)
        run("xdotool", "mousemove", "700", "600")

    def endItems(self):
        for item in self.items:
            item.end()

    def startItem(self, *options):
        self.items.append(Item(options))
        item = self.items[-1]
        self.assertTrue(becomes(lambda: any(line.startswith("registered") for line in item.lines())))
        return item

    def startWindow(self, title):
        """A window of another program, which has the keyboard; its number."""
        program = subprocess.Popen(["xev", "-name", title, "-event", "focus"], stdout=subprocess.DEVNULL)
        self.addCleanup(program.wait, BOUND)
        self.addCleanup(program.kill)
        find = lambda: run("xdotool", "search", "--onlyvisible", "--name", title).stdout.split()
        self.assertTrue(becomes(find), "the other program shows no window")
        window = int(find()[0])
        run("xdotool", "windowactivate", str(window))
        self.assertTrue(becomes(lambda: activeWindow() == window), activeWindow())
        return window

    def startOvin(self, *arguments, **environment):
        process = subprocess.Popen([OVIN, *arguments], env=dict(os.environ, **environment), stderr=subprocess.PIPE, text=True,
                                   preexec_fn=heedSignals)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.wait, BOUND)
        self.addCleanup(process.kill)
        return process

    def startShown(self):
        """Starts Ovin and waits until the bar shows its item."""
        process = self.startOvin()
        self.assertTrue(becomes(lambda: self.slot() is not None), "the bar does not show Ovin's item")
        return process

    def slot(self):
        """The middle of Ovin's place in the bar; None while it has none."""
        for name in ("Ovin", "Done organizing"):
            element = accessible("MenuBarAgent", name)
            try:
                if element is None or element.get_state_set().contains(Atspi.StateType.INVALID):
                    continue
                place = element.get_extents(Atspi.CoordType.SCREEN)
            except GLib.Error:
                continue  # it went while it was looked at
            if place.width > 0:
                return place.x + place.width // 2, place.y + place.height // 2
        return None

    def openLedge(self, process):
        click(*awaited(self.slot))
        self.assertTrue(becomes(lambda: windowsOf(process.pid)), "no ledge opens")
        # While the list is still being read, a text says so; the list then takes its place.
        self.assertTrue(becomes(lambda: buttonsOf("Ovin")), "the ledge stays empty")
        return windowsOf(process.pid)[0]

    def isOpen(self, process):
        return bool(windowsOf(process.pid))

    def assertEnds(self, process, status=0):
        try:
            self.assertEqual(process.wait(BOUND), status)
        except subprocess.TimeoutExpired:
            self.fail("Ovin does not end")


def main():
    Atspi.init()
    Atspi.set_timeout(2000, 5000)
    DesktopTest.main()
