"""Desktops that others wrote, as tools/packages-desktops names them: how each is started on the private desktop around this
program, what tells that it is ready, and where its bar is.

Nothing here knows Ovin. Each desktop has the private desktop's home folder and session bus, and a system bus of its own.
"""

import atexit
import contextlib
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf, Gio, GLib  # noqa: E402

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "desktop"))
from PrivateDesktop import BOUND, becomes  # noqa: E402
from WaylandPointer import WaylandPointer  # noqa: E402

WIDTH, HEIGHT = 1280, 800
WATCHER = "org.kde.StatusNotifierWatcher"
NOBODY = 65534  # the number of the user nobody
FOLDER = os.environ.get("OVIN_DESKTOP_DIR", "")


class Unavailable(Exception):
    """A desktop cannot run here; the text says why."""


# --- Buses, programs, windows ------------------------------------------------------------------------------------------


def call(destination, path, method, arguments=None, seconds=BOUND):
    """The reply's values; raises GLib.Error. `method` is INTERFACE.METHOD."""
    interface, _, member = method.rpartition(".")
    reply = Gio.bus_get_sync(Gio.BusType.SESSION).call_sync(destination, path, interface, member, arguments, None,
                                                            Gio.DBusCallFlags.NO_AUTO_START, int(seconds * 1000))
    return reply.unpack()


def property_(destination, path, interface, name):
    """None where there is none."""
    try:
        return call(destination, path, "org.freedesktop.DBus.Properties.Get", GLib.Variant("(ss)", (interface, name)))[0]
    except GLib.Error:
        return None


def ownerPid(name):
    """The process that owns a name of the session bus; None where nobody does."""
    try:
        return call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.GetConnectionUnixProcessID",
                    GLib.Variant("(s)", (name,)))[0]
    except GLib.Error:
        return None


def commandOf(pid):
    """The name of a process's program, which the kernel cuts after 15 letters."""
    try:
        with open(f"/proc/{pid}/comm", encoding="utf-8") as file:
            return file.read().strip()
    except OSError:
        return None


def registeredItems():
    """The addresses of all status items, by whoever watches them."""
    return property_(WATCHER, "/StatusNotifierWatcher", WATCHER, "RegisteredStatusNotifierItems") or []


def run(*command, environment=None):
    return subprocess.run(command, capture_output=True, text=True, timeout=BOUND, check=False,
                          env=None if environment is None else dict(os.environ, **environment)).stdout


def write(name, content):
    """A file below the home folder's .config."""
    path = os.path.join(os.environ["XDG_CONFIG_HOME"], name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(content)
    return path


class Program:
    """A program of the desktop in a group of its own; its output is in a file. None takes a variable away from it."""

    def __init__(self, *command, **environment):
        self.name = os.path.basename(command[0])
        self.log = os.path.join(FOLDER, "logs", self.name)
        variables = {name: value for name, value in {**os.environ, **environment}.items() if value is not None}
        with open(self.log, "ab") as output:
            self.process = subprocess.Popen(command, env=variables, stdin=subprocess.DEVNULL,
                                            stdout=output, stderr=output, start_new_session=True)

    def hasEnded(self):
        return self.process.poll() is not None

    def end(self):
        """With all that it has started and not let go of."""
        for number, seconds in ((signal.SIGTERM, 3), (signal.SIGKILL, BOUND)):
            try:
                os.killpg(self.process.pid, number)
            except ProcessLookupError:
                pass
            try:
                self.process.wait(seconds)
                break
            except subprocess.TimeoutExpired:
                continue

    def lastLines(self):
        with open(self.log, encoding="utf-8", errors="replace") as file:
            return "".join(file.readlines()[-8:])


class Picture:
    """What a screen shows."""

    def __init__(self, path):
        self.path = path
        self.pixbuf = GdkPixbuf.Pixbuf.new_from_file(path)
        self.pixels = self.pixbuf.get_pixels()
        self.stride, self.channels = self.pixbuf.get_rowstride(), self.pixbuf.get_n_channels()

    def rows(self, area):
        """The colours of an area (x, y, width, height), row by row."""
        left, top, width, height = area
        for y in range(max(0, top), min(top + height, self.pixbuf.get_height())):
            start = y * self.stride
            yield y, [tuple(self.pixels[start + x * self.channels:start + x * self.channels + 3])
                      for x in range(max(0, left), min(left + width, self.pixbuf.get_width()))]

    def has(self, colour, area, count=6):
        """Whether an area has so many points of about that colour."""
        near = lambda pixel: all(abs(one - other) <= 12 for one, other in zip(pixel, colour))
        return sum(near(pixel) for _, row in self.rows(area) for pixel in row) >= count

    def difference(self, other, area):
        """The smallest area that holds all that differs between two pictures within an area; None where nothing does."""
        found = []
        for (y, row), (_, second) in zip(self.rows(area), other.rows(area)):
            if row != second:
                found += [(area[0] + x, y) for x, (one, two) in enumerate(zip(row, second)) if one != two]
        if not found:
            return None
        left, top = min(x for x, _ in found), min(y for _, y in found)
        return left, top, max(x for x, _ in found) + 1 - left, max(y for _, y in found) + 1 - top

    def icons(self, area):
        """What stands apart on a bar in an area: {its points: its area}."""
        if area[3] > area[2]:  # a bar from top to bottom
            lines = [tuple(row) for _, row in self.rows((area[0] + 2, area[1], area[2] - 4, area[3]))]
            return {points: (area[0], area[1] + start, area[2], length) for points, start, length in self.runs(lines)}
        lines = list(zip(*(row for _, row in self.rows((area[0], area[1] + 2, area[2], area[3] - 4)))))
        return {points: (area[0] + start, area[1], length, area[3]) for points, start, length in self.runs(lines)}

    @staticmethod
    def runs(lines):
        """What stands apart in lines across a bar: its points, where it begins, and its length."""
        background = max(set(lines), key=lines.count)
        start = None
        for at in range(len(lines) + 1):
            # Parts of an icon are hardly four empty lines from each other.
            if any(line != background for line in lines[at:at + 4]):
                start = at if start is None and lines[at] != background else start
            elif start is not None:
                yield tuple(lines[start:at]), start, at - start
                start = None

    def save(self, path):
        self.pixbuf.savev(path, "png", [], [])


def startSystemBus():
    """A system bus without any service, for programs that do not run without one."""
    path = os.path.join(FOLDER, "run", "system-bus")
    configuration = os.path.join(FOLDER, "system-bus.conf")
    with open(configuration, "w", encoding="utf-8") as file:
        file.write(f"""<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path={path}</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
  </policy>
</busconfig>
""")
    bus = Program("dbus-daemon", "--config-file", configuration, "--nofork", "--nopidfile")
    if not becomes(lambda: os.path.exists(path)):
        raise Unavailable("the system bus does not start: " + bus.lastLines())
    os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={path}"
    return bus


def areaOf(window):
    """Where a window is seen, as (x, y, width, height); None where it is not."""
    text = run("xwininfo", "-id", window)
    if "IsViewable" not in text:
        return None
    return tuple(int(re.search(rf"{name}:\s+(-?\d+)", text)[1])
                 for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))


def docks():
    """The areas of the panels on an X display, as (x, y, width, height)."""
    found = []
    for window in re.findall(r"0x[0-9a-f]+", run("xprop", "-root", "_NET_CLIENT_LIST")):
        if "_NET_WM_WINDOW_TYPE_DOCK" in run("xprop", "-id", window, "_NET_WM_WINDOW_TYPE"):
            found.append(areaOf(window))
    return [area for area in found if area is not None]


# --- What desktops have in common --------------------------------------------------------------------------------------


class Desktop:
    """One desktop under X11: session, bar, pointer. It is started once and ends with the private desktop around it."""

    name = ""  # that of its pictures and logs
    options = ("--bare", "--no-window-manager")  # those of private-desktop
    needs = ()  # the programs without which it cannot start
    edge = "top"  # where its bar is; None where it has none
    drawsItems = True  # whether its bar draws status items
    drawsPassive = False  # also those that are Passive
    watcher = None  # the program that keeps the list of items
    wantsIconFiles = False  # whether it draws no item that brings only pictures
    clickActivates = True  # whether a left click on an item activates it
    menuButton = 3  # the button that opens an item's menu
    canHide, canShow = False, False  # whether hide() can hide items, and show() show what asks to be hidden
    canLoseTray = False  # whether its bar can be without a tray, and its watcher without a bar
    takesDisplays = False  # whether its bar stays where it is when a second display comes
    isWayland = False
    hasPictures, hasKeys = True, True  # whether this program can see the screen, and press keys
    settings = ""  # GSettings, as the keyfile has them

    def __init__(self):
        self.session = []  # what stays
        self.bar = []  # what endBar() ends

    def start(self):
        for program in self.needs:
            if shutil.which(program) is None and not os.path.exists(program):
                raise Unavailable(f"{program} is not installed")
        os.environ["GSETTINGS_BACKEND"] = "keyfile"
        write("glib-2.0/settings/keyfile", self.settings)
        self.session.append(startSystemBus())
        self.startSession()
        self.startBar()
        if not becomes(self.isReady):
            raise Unavailable("it does not get ready. " + self.describe())

    def describe(self):
        programs = self.session + self.bar
        return f"The bar is at {self.barArea()}, the watcher is {commandOf(ownerPid(WATCHER) or 0)}.\n" + "".join(
            f"{one.name} {'has ended' if one.hasEnded() else 'runs'}: {one.lastLines()}\n" for one in programs)

    def isReady(self):
        """Whether bar and watcher are there."""
        if any(program.hasEnded() for program in self.session):
            raise Unavailable("a program has ended. " + self.describe())
        return self.barIsInPlace() and self.watcherIsItsOwn()

    def barIsInPlace(self):
        if self.edge is None:
            return True
        area = self.barArea()
        if area is None:
            return False
        return {"top": area[1] == 0, "bottom": area[1] + area[3] == HEIGHT, "left": area[0] == 0}[self.edge]

    def watcherIsItsOwn(self):
        if self.watcher is None:
            return True
        pid = ownerPid(WATCHER)
        return pid is not None and commandOf(pid) == self.watcher[:15]

    def startSession(self):
        """What is there before any bar, the window manager above all."""

    def startBar(self):
        """What draws status items and keeps their list."""

    def endBar(self):
        for program in reversed(self.bar):
            program.end()
        self.bar = []

    def restartBar(self, bound=BOUND):
        """Whether the bar is there again within the bound."""
        self.endBar()
        self.startBar()
        return becomes(self.isReady, bound)

    # What can be seen

    def barArea(self):
        """(x, y, width, height); None while there is none."""
        found = docks()
        return found[0] if found else None

    def picture(self):
        path = os.path.join(FOLDER, "picture.ppm")
        subprocess.run(["scrot", "-o", path], check=True, timeout=BOUND)
        return Picture(path)

    def quietPicture(self):
        """A picture of a bar in which nothing moves any more."""
        pictures = [self.picture()]

        def isQuiet():
            pictures.append(self.picture())
            return pictures[-1].difference(pictures[-2], self.barArea()) is None

        becomes(isQuiet, 5)
        return pictures[-1]

    def shows(self, colour):
        """Whether the bar shows something of that colour."""
        area = self.barArea()
        return area is not None and self.picture().has(colour, area)

    # What a person does

    def point(self, x, y):
        run("xdotool", "mousemove", str(x), str(y))

    def click(self, x, y, button=1, count=1):
        self.point(x, y)
        run("xdotool", "click", "--repeat", str(count), "--delay", "60", str(button))

    def escape(self):
        run("xdotool", "key", "Escape")

    @contextlib.contextmanager
    def window(self):
        """A window of another program in the middle of the screen, as its size allows."""
        program = Program("xev", "-geometry", "500x300+600+400")
        try:
            find = lambda: run("xdotool", "search", "--onlyvisible", "--name", "Event Tester")
            if not becomes(find):
                raise AssertionError("the other program shows no window")
            yield
        finally:
            program.end()

    def clientEnvironment(self):
        """What programs that a person starts here find in their environment; None takes a variable away."""
        return {}


# --- X11 ---------------------------------------------------------------------------------------------------------------


class Openbox(Desktop):
    name = "openbox"
    options = ("--bare",)
    edge, drawsItems = None, False


class I3(Desktop):
    name = "i3"
    needs = ("i3", "i3bar")
    edge, drawsItems = "bottom", False

    def startSession(self):
        configuration = write("i3/config", "font pango:sans 10\nbar {\n  position bottom\n  status_command true\n}\n")
        self.session.append(Program("i3", "-c", configuration))

    def barArea(self):
        found = run("xdotool", "search", "--onlyvisible", "--class", "i3bar").split()
        return areaOf(found[0]) if found else None


class Xfce(Desktop):
    name = "xfce"
    needs = ("xfce4-panel", "xfwm4", "xfconf-query")
    watcher = "panel-2-systray"  # the panel's process for it
    position, mode = "p=6;x=0;y=0", 0
    canHide, takesDisplays = True, True

    def startSession(self):
        # Of several items that are not in its list of known ones it sometimes draws only the first (4 of 72 times on a busy
        # machine).
        known = "".join(f'<value type="string" value="{name}"/>' for name in ("item-1", "item-2", "item-3"))
        write("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", f"""<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="{self.position}"/>
      <property name="mode" type="uint" value="{self.mode}"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/><value type="int" value="2"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/><property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray">
      <property name="known-items" type="array">{known}</property>
    </property>
  </property>
</channel>
""")
        self.session.append(Program("xfwm4", "--compositor=off"))

    def startBar(self):
        self.bar = [Program("xfce4-panel", "--disable-wm-check")]

    def hide(self, *names):
        """Tells the bar to hide the items of these Ids, and no other."""
        property_ = "/plugins/plugin-2/hidden-items"
        if names:
            values = [part for name in names for part in ("-t", "string", "-s", name)]
            run("xfconf-query", "-c", "xfce4-panel", "-p", property_, "-n", "-a", *values)
        else:
            run("xfconf-query", "-c", "xfce4-panel", "-p", property_, "-r")


class XfceBelow(Xfce):
    name = "xfce-below"
    position = "p=10;x=0;y=0"
    edge = "bottom"


class XfceBeside(Xfce):
    name = "xfce-beside"
    position, mode = "p=5;x=0;y=0", 1
    edge = "left"


class Plasma(Desktop):
    name = "plasma"
    needs = ("plasmashell", "kwin_x11", "kded5")
    edge = "bottom"
    watcher = "kded5"
    canHide, canShow, canLoseTray, takesDisplays = True, True, True, True

    def configure(self):
        os.environ.update(XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true", KDE_SESSION_VERSION="5",
                          XDG_CONFIG_DIRS="/etc/xdg", QT_QUICK_BACKEND="software")
        write("kwinrc", "[Compositing]\nEnabled=false\n")
        write("kded5rc", "".join(f"[Module-{name}]\nautoload=false\n" for name in
                                 "kscreen networkmanagement powerdevil bluedevil browserintegrationreminder".split()))
        write("ksplashrc", "[KSplash]\nEngine=none\n")

    def startSession(self):
        self.configure()
        self.session.append(Program("kwin_x11"))

    def startBar(self):
        self.bar = [Program("kded5"), Program("plasmashell", "--no-respawn")]

    def evaluate(self, script):
        return call("org.kde.plasmashell", "/PlasmaShell", "org.kde.PlasmaShell.evaluateScript",
                    GLib.Variant("(s)", (script,)))[0]

    def isReady(self):
        return super().isReady() and self.trayIsAlone()

    def hide(self, *names):
        """Tells the bar to hide the items of these Ids, and no other."""
        self.choose("hiddenItems", names)

    def show(self, *names):
        """Tells the bar to show the items of these Ids in any case, and no other."""
        self.choose("shownItems", names)

    def choose(self, choice, names):
        self.evaluate(f"""panels().forEach(panel => panel.widgets('org.kde.plasma.systemtray').forEach(tray => {{
            const inner = desktopById(tray.readConfig('SystrayContainmentId'));
            inner.currentConfigGroup = ['General'];
            inner.writeConfig('{choice}', '{",".join(names)}');
            inner.reloadConfig();
        }}))""")

    def hasTray(self):
        return self.evaluate("print(panels().some(panel => panel.widgets('org.kde.plasma.systemtray').length))") == "true"

    def removeTray(self):
        self.evaluate("panels().forEach(panel => panel.widgets('org.kde.plasma.systemtray').forEach(tray => tray.remove()))")

    def addTray(self):
        self.evaluate("panels()[0].addWidget('org.kde.plasma.systemtray')")

    def trayIsAlone(self):
        """Takes the clock and other widgets out of the panel, so that it stays as it is."""
        try:
            left = self.evaluate("""panels().forEach(panel => panel.widgets().forEach(widget => {
                if (widget.type != 'org.kde.plasma.systemtray' && widget.type != 'org.kde.plasma.panelspacer') widget.remove();
            }));
            print(panels().map(panel => panel.widgets().map(widget => widget.type)));""")
        except GLib.Error:
            return False
        return "systemtray" in left and "clock" not in left


class Mate(Desktop):
    name = "mate"
    needs = ("mate-panel", "marco")
    watcher = "notification-area-applet"
    takesDisplays = True
    applet = "NotificationAreaAppletFactory::NotificationArea"

    @property
    def settings(self):
        return f"""[org/mate/panel/general]
toplevel-id-list=['top']
object-id-list=['tray']
[org/mate/panel/toplevels/top]
orientation='top'
size=28
expand=true
enable-animations=false
[org/mate/panel/objects/tray]
object-type='applet'
applet-iid='{self.applet}'
toplevel-id='top'
position=0
panel-right-stick=true
locked=true
[org/mate/marco/general]
compositing-manager=false
"""

    def startSession(self):
        self.session.append(Program("marco", "--no-composite"))

    def startBar(self):
        self.bar = [Program("mate-panel")]


class MateIndicators(Mate):
    name = "mate-indicators"
    needs = ("mate-panel", "marco", "/usr/libexec/ayatana-indicator-application/ayatana-indicator-application-service")
    watcher = "ayatana-indicator-application-service"
    applet = "IndicatorAppletFactory::IndicatorApplet"
    wantsIconFiles = True
    clickActivates, menuButton = False, 1

    def startBar(self):
        self.bar = [Program(self.needs[2]), Program("mate-panel")]


class Lxqt(Desktop):
    name = "lxqt"
    options = ("--bare",)
    needs = ("lxqt-panel",)
    edge = "bottom"
    drawsPassive, takesDisplays = True, True
    watcher = "lxqt-panel"

    def startBar(self):
        write("lxqt/panel.conf", """[General]
panels=panel1
[panel1]
plugins=spacer, statusnotifier
position=Bottom
panelSize=32
[spacer]
type=spacer
expandable=true
[statusnotifier]
type=statusnotifier
alignment=Right
""")
        self.bar = [Program("lxqt-panel")]


class Cinnamon(Desktop):
    name = "cinnamon"
    options = ("--bare", "--no-window-manager", "--gl")
    needs = ("cinnamon", "/usr/libexec/xapps/sn-watcher/xapp-sn-watcher")
    edge = "bottom"
    watcher = "xapp-sn-watcher"
    settings = """[org/cinnamon]
enabled-applets=['panel1:right:0:xapp-status@cinnamon.org:1']
startup-animation=false
desktop-effects=false
[org/cinnamon/muffin]
desktop-effects=false
"""

    def startSession(self):
        os.environ.update(XDG_CURRENT_DESKTOP="X-Cinnamon", LIBGL_ALWAYS_SOFTWARE="1")
        self.session.append(Program("cinnamon"))

    def startBar(self):
        self.bar = [Program("/usr/libexec/xapps/sn-watcher/xapp-sn-watcher")]

    def evaluate(self, script):
        done, value = call("org.Cinnamon", "/org/Cinnamon", "org.Cinnamon.Eval", GLib.Variant("(s)", (script,)))
        return json.loads(value) if done and value else None

    def barArea(self):
        try:
            return self.evaluate("""let panel = Main.panelManager.getPanels().find(one => one).actor;
                [panel.x, panel.y, panel.width, panel.height].map(Math.round)""")
        except GLib.Error:
            return None


class Gnome(Desktop):
    name = "gnome"
    options = ("--bare", "--no-window-manager", "--gl")
    needs = ("gnome-shell", "/usr/share/gnome-shell/extensions/ubuntu-appindicators@ubuntu.com")
    watcher = "gnome-shell"
    clickActivates = False  # it opens the menu
    extension = "ubuntu-appindicators@ubuntu.com"
    settings = f"""[org/gnome/shell]
enabled-extensions=['{extension}']
welcome-dialog-last-shown-version='100'
[org/gnome/desktop/notifications]
show-banners=false
[org/gnome/desktop/interface]
enable-animations=false
"""

    def startSession(self):
        os.environ.update(XDG_CURRENT_DESKTOP="GNOME", LIBGL_ALWAYS_SOFTWARE="1")
        self.startShell()

    def startShell(self):
        self.session.append(Program("gnome-shell", "--x11", "--unsafe-mode"))

    def startBar(self):
        if self.canBeAsked():
            self.enable("Enable")

    def canBeAsked(self):
        try:
            return self.evaluate("1") == 1
        except GLib.Error:
            return False

    def endBar(self):
        self.enable("Disable")
        becomes(lambda: not self.watcherIsItsOwn())

    def enable(self, method):
        call("org.gnome.Shell", "/org/gnome/Shell", f"org.gnome.Shell.Extensions.{method}Extension",
             GLib.Variant("(s)", (self.extension,)))

    def evaluate(self, script):
        """None where the script goes wrong, as it does while the shell is starting."""
        done, value = call("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell.Eval", GLib.Variant("(s)", (script,)))
        return json.loads(value) if done and value else None

    def isReady(self):
        return super().isReady() and self.hasSettled()

    def hasSettled(self):
        """The shell begins with an overview of all windows, and then says in the panel that it lets itself be asked."""
        return self.evaluate("""Main.overview.hide();
            !Main.overview.visible && !Main.layoutManager._startingUp && Main.panel.statusArea.quickSettings._unsafeMode.visible
            """) is True

    def barArea(self):
        """The half of it that has no clock."""
        try:
            return self.evaluate("[global.screen_width * 0.6, 0, global.screen_width * 0.4, Main.panel.height]"
                                 ".map(Math.round)")
        except GLib.Error:
            return None


# --- Wayland, without a screen -------------------------------------------------------------------------------------------

# A window of a program that speaks Wayland alone; it says when it is shown.
NATIVE_WINDOW = """
import gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gtk
window = Gtk.Window(title="Native")
window.maximize()
window.connect("map-event", lambda *_: print("shown", flush=True))
window.show_all()
Gtk.main()
"""


class Wayland(Desktop):
    """A compositor without a screen, with XWayland, in which Ovin and this program have their X display."""

    isWayland = True
    hasKeys = False  # they go to the window that has the keyboard, and the ledge never has it

    def __init__(self):
        super().__init__()
        self.folder = FOLDER  # where the compositor may write

    def environmentTeller(self):
        """A program for the compositor to start, which writes down what is in its environment."""
        script = os.path.join(self.folder, "tell-environment")
        with open(os.open(script, os.O_WRONLY | os.O_CREAT, 0o755), "w", encoding="utf-8") as file:
            # Root is another user there where the compositor refuses to run as root.
            file.write("#!/bin/sh\nxhost +si:localuser:root\n"
                       f"env > {self.folder}/environment.new\n"
                       f"mv {self.folder}/environment.new {self.folder}/environment\n")
        return script

    def takeEnvironment(self, compositor):
        """Goes on in the environment of the compositor's programs, in that of the X display above all."""
        path = os.path.join(self.folder, "environment")
        becomes(lambda: compositor.hasEnded() or os.path.exists(path))
        if not os.path.exists(path):
            raise Unavailable(f"{compositor.name} does not start: {compositor.lastLines()}")
        with open(path, encoding="utf-8") as file:
            told = dict(line.split("=", 1) for line in file.read().splitlines() if "=" in line)
        self.setDisplays(told)

    def setDisplays(self, told):
        os.environ.pop("XAUTHORITY", None)
        os.environ.update({name: told[name] for name in ("DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "SWAYSOCK")
                           if told.get(name)})
        # The compositor may have a folder of its own.
        os.environ["WAYLAND_DISPLAY"] = os.path.join(told.get("XDG_RUNTIME_DIR") or os.environ["XDG_RUNTIME_DIR"],
                                                     os.environ["WAYLAND_DISPLAY"])
        os.environ["XDG_SESSION_TYPE"] = "wayland"
        try:
            subprocess.run(["xdotool", "getmouselocation"], check=True, capture_output=True, timeout=BOUND / 2)
        except subprocess.SubprocessError as error:
            raise Unavailable("it has no XWayland. " + self.describe()) from error

    def makePointer(self):
        try:
            self.pointer = WaylandPointer(WIDTH, HEIGHT)
        except OSError as error:
            raise Unavailable(str(error)) from error

    def point(self, x, y):
        self.pointer.point(x, y)

    def click(self, x, y, button=1, count=1):
        self.point(x, y)
        for _ in range(count):
            self.pointer.click(button)

    @contextlib.contextmanager
    def window(self):
        program = Program("/usr/bin/python3", "-c", NATIVE_WINDOW, GDK_BACKEND="wayland")
        try:
            if not becomes(lambda: "shown" in program.lastLines()):
                raise AssertionError("the native window is not shown: " + program.lastLines())
            yield
        finally:
            program.end()
            os.unlink(program.log)

    def clientEnvironment(self):
        # As in a person's session, where nothing says which platform Qt takes.
        return {"QT_QPA_PLATFORM": None}


class Sway(Wayland):
    name = "sway"
    needs = ("sway", "waybar", "Xwayland", "grim", "swaymsg")
    watcher = "waybar"

    def startSession(self):
        environment = {"WLR_BACKENDS": "headless", "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_RENDERER": "pixman",
                       "XAUTHORITY": None}
        command = []
        if os.getuid() == 0:  # it refuses to run as root, so another user runs it, in a folder of that user's
            self.folder = tempfile.mkdtemp(prefix="ovin-sway-")
            atexit.register(shutil.rmtree, self.folder, ignore_errors=True)
            os.chown(self.folder, NOBODY, NOBODY)
            command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
            environment.update(XDG_RUNTIME_DIR=self.folder, HOME=self.folder)
        configuration = os.path.join(self.folder, "sway-config")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write("output * resolution 1280x800 background #305070 solid_color\nxwayland force\n"
                       f"default_border none\nexec {self.environmentTeller()}\n")
        write("waybar/config", '{"position": "top", "height": 30, "modules-right": ["tray"], "tray": {"icon-size": 18}}')
        sway = Program(*command, "sway", "--config", configuration, **environment)
        self.session.append(sway)
        self.takeEnvironment(sway)
        self.makePointer()

    def startBar(self):
        self.bar = [Program("waybar", GDK_BACKEND="wayland")]

    def barArea(self):
        """What the bar has reserved."""
        workspaces = json.loads(run("swaymsg", "-t", "get_workspaces") or "[]")
        height = workspaces[0]["rect"]["y"] if workspaces else 0
        return (0, 0, WIDTH, height) if height else None

    def picture(self):
        path = os.path.join(FOLDER, "picture.ppm")
        subprocess.run(["grim", "-t", "ppm", path], check=True, timeout=BOUND)
        return Picture(path)


class KWin(Wayland, Plasma):
    name = "kwin"
    needs = ("kwin_wayland", "plasmashell", "kded5", "Xwayland")
    hasPictures, canHide, canShow, canLoseTray, takesDisplays = False, False, False, False, False

    def startSession(self):
        self.configure()
        # A copy has no capabilities, with which it would not heed its environment.
        program = shutil.copy(shutil.which("kwin_wayland"), os.path.join(FOLDER, "kwin_wayland"))
        kwin = Program(program, "--virtual", "--width", str(WIDTH), "--height", str(HEIGHT), "--xwayland", "--no-lockscreen",
                       "--socket", "wayland-kwin", "--", self.environmentTeller(), KWIN_COMPOSE="Q",
                       KWIN_WAYLAND_NO_PERMISSION_CHECKS="1", QT_QPA_PLATFORM=None, XAUTHORITY=None)
        self.session.append(kwin)
        self.takeEnvironment(kwin)
        self.makePointer()

    def startBar(self):
        self.bar = [Program("kded5", QT_QPA_PLATFORM="wayland"),
                    Program("plasmashell", "--no-respawn", QT_QPA_PLATFORM="wayland")]

    def barArea(self):
        try:
            height = int(self.evaluate("print(panels().length ? panels()[0].height : 0)"))
        except (GLib.Error, ValueError):
            return None
        return (0, HEIGHT - height, WIDTH, height) if height else None


class GnomeWayland(Wayland, Gnome):
    name = "gnome-wayland"
    needs = (*Gnome.needs, "Xwayland")

    def startShell(self):
        shell = Program("gnome-shell", "--headless", "--virtual-monitor", f"{WIDTH}x{HEIGHT}", "--unsafe-mode")
        self.session.append(shell)
        becomes(lambda: shell.hasEnded() or self.canBeAsked())
        if shell.hasEnded() or not self.canBeAsked():
            raise Unavailable(f"gnome-shell does not start: {shell.lastLines()}")
        self.setDisplays({name: self.evaluate(f"GLib.getenv('{name}')")
                          for name in ("DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY")})

    def move(self, script):
        """Lets a pointer of the shell's own do something."""
        result = self.evaluate(f"""const {{Clutter}} = imports.gi;
            global.testPointer ??= Clutter.get_default_backend().get_default_seat().create_virtual_device(
                Clutter.InputDeviceType.POINTER_DEVICE);
            global.testPointer.{script};
            'moved'""")
        if result != "moved":
            raise AssertionError(f"the shell does not move the pointer: {result}")

    def point(self, x, y):
        self.move(f"notify_absolute_motion(global.get_current_time(), {x}, {y})")

    def click(self, x, y, button=1, count=1):
        self.point(x, y)
        for state in ("PRESSED", "RELEASED") * count:
            self.move(f"notify_button(global.get_current_time(), {button}, Clutter.ButtonState.{state})")

    def picture(self):
        path = os.path.join(FOLDER, "picture.png")
        call("org.gnome.Shell.Screenshot", "/org/gnome/Shell/Screenshot", "org.gnome.Shell.Screenshot.Screenshot",
             GLib.Variant("(bbs)", (False, False, path)))
        return Picture(path)


DESKTOPS = {kind.name: kind for kind in (Xfce, XfceBelow, XfceBeside, Plasma, Mate, MateIndicators, Lxqt, Cinnamon, Gnome,
                                         Openbox, I3, Sway, KWin, GnomeWayland)}
