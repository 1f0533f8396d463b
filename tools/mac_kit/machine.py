"""The Mac that the kit runs on: its commands, and Ovin as a user's other programs see it."""

import datetime
import json
import os
import re
import signal
import subprocess
import tempfile
import time

from page import Failed, NotTried

# Of the copy that the kit starts, so that settings, login item and permissions of an Ovin that is in use stay as they are.
IDENTIFIER = "org.ovin.FirstMac"
ITEMS = "mac-status-item"
DOMAINS = (IDENTIFIER, ITEMS)  # Of settings: the system keeps there where items were.
CONSTRAINTS = re.compile(r".*(?:satisfy constraints|breaking constraint|[Cc]onflicting constraints|already being laid out).*")
ESCAPE = "53"


class Mac:
    """`patience` is how many seconds anything may take to be seen, `expected` the permissions that there must be."""

    def __init__(self, root, output, patience, expected, undo):
        self.root, self.output, self.patience, self.expected, self.undo = root, output, patience, expected, undo
        self.folder = tempfile.mkdtemp(prefix="ovin-first-mac-")
        undo.add("folder", "rm", "-rf", self.folder)
        self.bundle = os.path.join(self.folder, "Ovin.app")
        self.tests = os.path.join(root, "build", "macos-dev", "tests")
        self.start = datetime.datetime.now().strftime("%Y-%m-%d %H:%M:%S")
        self.command_log = os.path.join(output, "commands.log")
        self.logs, self.pictures = [], []
        self.login_item_may_be_on = False
        self.first = None  # What there was to look at before anything was tried.

    def run(self, *command):
        """What it prints is kept beside the page."""
        with open(self.command_log, "a", encoding="utf-8") as log:
            log.write(f"$ {' '.join(command)}\n")
            try:
                done = subprocess.run(command, cwd=self.root, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, text=True, errors="replace", check=False)
            except OSError as error:
                raise Failed(str(error)) from error
            log.write(done.stdout)
        return done

    def must(self, *command):
        done = self.run(*command)
        if done.returncode != 0:
            raise Failed(f"{' '.join(command)}: {' '.join(done.stdout.splitlines()[-3:]) or done.returncode}")
        return done.stdout

    def hand_path(self):
        return os.path.join(self.tests, "macos", "mac-hand")

    def hand(self, *words):
        done = subprocess.run([self.hand_path(), *map(str, words)], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                              timeout=60, check=False)
        if done.returncode != 0:
            raise Failed(f"mac-hand {' '.join(map(str, words))}: {done.returncode}")
        return json.loads(done.stdout)[0]

    def look(self):
        return self.hand("look")

    def refusal(self, *permissions):
        """What to raise where these are missing."""
        return Failed if set(permissions) & set(self.expected) else NotTried

    def wait(self, what, look):
        end = time.monotonic() + self.patience
        while True:
            found = look()
            if found:
                return found
            if time.monotonic() > end:
                raise Failed(f"within {self.patience:g} s there was not: {what}")
            time.sleep(0.05)

    def make_copy(self):
        """Signed for this machine alone."""
        self.must("ditto", os.path.join(self.root, "build", "macos", "Ovin.app"), self.bundle)
        self.must("plutil", "-replace", "CFBundleIdentifier", "-string", IDENTIFIER,
                  os.path.join(self.bundle, "Contents", "Info.plist"))
        self.must(os.path.join(self.root, "packaging", "macos", "sign"), self.bundle)
        self.first = self.look()
        for domain in DOMAINS:
            self.undo.add(f"settings of {domain}", "defaults", "delete", domain)
        self.set_guide_shown(True)
        self.undo.add("mode", self.hand_path(), "mode", str(self.first["mode"]))
        self.undo.add("programs", self.hand_path(), "end", IDENTIFIER)

    def set_guide_shown(self, shown):
        self.run("defaults", "write", IDENTIFIER, "OvinHasShownGuide", "-bool", "true" if shown else "false")

    def ovin(self, **environment):
        """Started past Launch Services: it may use what the terminal may, and its log is here."""
        program = os.path.join(self.bundle, "Contents", "MacOS", "Ovin")
        return Ovin(self, [program], {"OVIN_DEBUG": "1", "OS_ACTIVITY_DT_MODE": "YES", **environment})

    def items(self, count=60):
        """A program with as many status items, in Program.lines the number of each that is pressed."""
        words = [self.items_path()]
        program = Program(self, words + [f"Kit item {i:02}" for i in range(count)], {})
        # An Ovin that starts before them would find that everything fits.
        self.wait(f"{count} items", lambda: len(self.items_of(program.pid)) >= count)
        return program

    def items_path(self):
        return os.path.join(self.tests, "contract", ITEMS)

    def items_of(self, pid):
        return [one for one in self.hand("tree", pid) if one["role"] == "AXMenuBarItem"]

    def wait_for_opened(self):
        """For the item of a program that Launch Services have started. Whether it has no Dock icon."""
        pid, is_accessory = self.wait("a running program", lambda: self.hand("apps", IDENTIFIER))[0]
        self.wait("its item", lambda: self.items_of(pid))
        return is_accessory

    def end_opened(self):
        self.hand("end", IDENTIFIER)
        self.wait("its end", lambda: not self.hand("apps", IDENTIFIER))

    def click(self, button, place):
        self.hand("click", button, round(place[0]), round(place[1]))

    def take_picture(self, name, frame, is_right=lambda shade: True):
        """Takes it anew until it is right, because programs draw some time after the appearance has changed, or until patience
        ends. Returns how bright it is."""
        path, end = os.path.join(self.output, name + ".png"), time.monotonic() + self.patience
        self.pictures.append(name + ".png")
        while True:
            self.must("screencapture", "-x", "-R", ",".join(str(round(number)) for number in frame), path)
            shade = self.hand("shade", path)
            if is_right(shade) or time.monotonic() > end:
                return shade

    def set_dark(self, dark):
        self.must(*dark_mode(dark))
        self.wait("the other appearance", lambda: self.is_dark() == dark)

    def is_dark(self):
        done = self.run(*dark_mode())
        if done.returncode != 0:
            raise NotTried("Nothing may script System Events: " + done.stdout)
        return done.stdout.strip() == "true"

    def texts_logged(self):
        """What the programs of the kit have said, and the system of them."""
        # Started in these folders: an Ovin that is in use is none of the kit's.
        predicate = ('process IN {"Ovin", "macos_tests", "mac_contract_tests"} AND '
                     f'(processImagePath CONTAINS "{self.folder}" OR processImagePath CONTAINS "{self.tests}")')
        shown = self.run("log", "show", "--style", "compact", "--start", self.start, "--predicate", predicate)
        with open(os.path.join(self.output, "system.log"), "w", encoding="utf-8") as file:
            file.write(shown.stdout)
        texts = []
        for path in [*self.logs, self.command_log]:
            with open(path, encoding="utf-8", errors="replace") as file:
                texts.append(file.read())
        return texts, shown.stdout if shown.returncode == 0 else None


def dark_mode(dark=None):
    """The command that asks for the appearance, or that sets it."""
    what = "get dark mode" if dark is None else f"set dark mode to {str(dark).lower()}"
    return ["osascript", "-e", f'tell application "System Events" to tell appearance preferences to {what}']


class Program:
    last_signal = signal.SIGKILL

    def __init__(self, mac, words, environment):
        self.mac = mac
        self.log = os.path.join(mac.output, f"{len(mac.logs):02}-{os.path.basename(words[0])}.log")
        mac.logs.append(self.log)
        with open(self.log, "w", encoding="utf-8") as log:
            # A program of status items ends when its input does: for as long as this object is there, it does not.
            self.process = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=log, stderr=subprocess.STDOUT,
                                            env={**os.environ, **environment}, start_new_session=True)
        self.pid = self.process.pid
        mac.undo.add(f"process {self.pid}", "kill", "-KILL", str(self.pid))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.send_signal(self.last_signal)
        try:
            self.process.wait(self.mac.patience)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.mac.undo.drop(f"process {self.pid}")
        self.process.stdin.close()

    def end(self, number):
        self.process.send_signal(number)
        self.wait_for_end()

    def wait_for_end(self):
        self.mac.wait("the end of the program", lambda: self.process.poll() is not None)

    def lines(self):
        with open(self.log, encoding="utf-8", errors="replace") as file:
            return file.read().splitlines()


class Ovin(Program):
    last_signal = signal.SIGTERM

    def tree(self):
        return self.mac.hand("tree", self.pid)

    def windows(self):
        """Of each its elements, itself the first."""
        found = []
        for element in self.tree():
            if element["depth"] == 0:
                found.append([])
            found[-1].append(element)
        return [window for window in found if window[0]["role"] == "AXWindow"]

    def wait(self, what, look):
        """For what Ovin shows only where the system trusts it as it trusts the kit."""
        try:
            return self.mac.wait(what, look)
        except Failed as fault:
            if self.trust_checks("0"):
                raise self.mac.refusal("trusted")("The kit may use Accessibility, but Ovin may not, which it has started.") from fault
            raise

    def windows_with(self, text):
        return [window for window in self.windows() if says(window, text)]

    def window(self, text):
        return self.mac.wait(f"a window with “{text}”", lambda: self.windows_with(text))[0]

    def ledges(self):
        """It has no title, and neither have alerts."""
        return [window for window in self.windows() if not window[0]["title"] and not says(window, "OK")]

    def wait_for_ledge(self):
        return self.wait("an open ledge", self.ledges)[0]

    def wait_for_no_ledge(self):
        self.mac.wait("a closed ledge", lambda: not self.ledges())

    def press(self, role, text):
        error = self.mac.hand("press", self.pid, role, text)
        # One that opens something may answer only when that has closed.
        if error not in (0, -25204):
            raise Failed(f"pressing {role} “{text}”: {error}")

    def item(self):
        """Where the middle of its status item is."""
        def look():
            return next((one for one in self.mac.items_of(self.pid) if one["frame"]), None)
        x, y, width, height = self.mac.wait("a status item", look)["frame"]
        return x + width / 2, y + height / 2

    def press_item(self):
        self.item()
        self.press("AXMenuBarItem", "")

    def click_item(self, button):
        self.mac.click(button, self.item())

    def open_ledge(self):
        self.press_item()
        return self.wait_for_ledge()

    def entries(self):
        """Of the menu of its status item; those of a main menu come after it."""
        tree = self.tree()
        end = next((i for i, element in enumerate(tree) if i > 0 and element["depth"] == 0), len(tree))
        return [element for element in tree[:end] if element["role"] == "AXMenuItem"]

    def open_menu(self):
        self.click_item("right")
        return self.mac.wait("an open menu", self.entries)

    def close_menu(self):
        self.mac.hand("key", ESCAPE)
        self.mac.wait("a closed menu", lambda: not self.entries())

    def choose(self, title):
        self.open_menu()
        self.press("AXMenuItem", title)

    def open_alert(self):
        """That of a build that does not update itself."""
        self.choose("Check for Updates…")
        return self.window("OK")

    def trust_checks(self, result=""):
        """How many discoveries have begun."""
        return sum("AX: trusted=" + result in line for line in self.lines())

    def discoveries(self):
        """Seconds that each took."""
        found = [re.search(r"undrawn items, ([\d.]+)s:", line) for line in self.lines()]
        return [float(match[1]) for match in found if match]

    def wait_for_discovery(self, after):
        self.wait("a discovery in the log", lambda: len(self.discoveries()) > after)
        return self.discoveries()[-1]


def says(window, text):
    return any(text in (element["title"], element["name"], element["value"]) for element in window)
