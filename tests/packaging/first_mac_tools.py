#!/usr/bin/env -S python3 -B -S
"""Stands in for a Mac: for its tools, for Ovin, and for the programs that tools/first_mac builds, by the name that it is
started as.

Display, appearance, settings, permissions and what each program shows are in the file MAC_STATE. MAC_FAULT names the row of
docs/macos.md that this Mac has to fail.
"""

import contextlib
import fcntl
import json
import os
import re
import signal
import sys
import time

FAULT = os.environ.get("MAC_FAULT")
NO_TRUST = "no trust"  # In Ovin, although the kit has it.
IDENTIFIER = "org.ovin.FirstMac"
USUAL, WIDE = 1, 2
ENTRIES = ["Organize Menu Bar…", "How This Works", "Launch at Login", "About Ovin", "Check for Updates…", "Quit Ovin"]
NO_UPDATES = "This copy of Ovin does not update itself"


@contextlib.contextmanager
def state():
    """To look at and to change, by one program at a time. Whoever is killed meanwhile has changed nothing."""
    path = os.environ["MAC_STATE"]
    with open(path + ".lock", "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        with open(path, encoding="utf-8") as file:
            now = json.load(file)
        for pid in [pid for programs in (now["ovin"], now["items"]) for pid in programs if not is_alive(pid)]:
            now["ovin"].pop(pid, None)
            now["items"].pop(pid, None)
        yield now
        with open(path + ".new", "w", encoding="utf-8") as file:
            json.dump(now, file)
        os.rename(path + ".new", path)


def is_alive(pid):
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
            return file.read().rsplit(")", 1)[1].split()[0] != "Z"
    except OSError:
        return False


def install(path):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    if not os.path.exists(path):
        os.symlink(os.path.realpath(__file__), path)


# The tools of the system


def cmake(arguments):
    if FAULT == "build":
        sys.exit("ninja: build stopped: <private> *")
    if arguments == ["--build", "--preset", "macos"]:
        install("build/macos/Ovin.app/Contents/MacOS/Ovin")
        with open("build/macos/Ovin.app/Contents/Info.plist", "w", encoding="utf-8"):
            pass
    if arguments == ["--build", "--preset", "macos-dev"]:
        install("build/macos-dev/tests/macos/mac-hand")
        install("build/macos-dev/tests/contract/mac-status-item")


def ctest(arguments):
    row = {"--exclude-regex": "tests", "^mac_contract_tests$": "contracts", "^macos_tests$": "native-tests"}
    if FAULT in (row.get(arguments[-2]), row.get(arguments[-1])):
        print("98% tests passed, 1 tests failed out of 50\n\t 17 - broken_tests (Failed)")
        sys.exit(8)
    print("100% tests passed, 0 tests failed out of 50")


def lipo(_):
    sys.exit(FAULT == "bundle")


def otool(_):
    print("path @executable_path/../Frameworks (offset 12)")


def ditto(arguments):
    import shutil  # Here, because it takes longer than the rest of a call.
    shutil.copytree(*arguments, symlinks=True)


def sw_vers(arguments):
    print({"-productVersion": "0.0, a stand-in", "-buildVersion": "0X0"}[arguments[0]])


def git(_):
    print("0000000")


def open_application(arguments):
    import subprocess
    with state() as now:
        for one in now["ovin"].values():
            if not one["ending"] or FAULT == "start-beside-ending":
                is_lost = FAULT == ("start-beside-preview" if one["preview"] else "second-start")
                one.update({} if is_lost else {"preview": None} if one["preview"] else {"ledge": True})
                return
    subprocess.Popen([os.path.join(arguments[0], "Contents", "MacOS", "Ovin")], start_new_session=True,
                     stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def defaults(arguments):
    with state() as now:
        if arguments[0] == "write":
            now["settings"].setdefault(arguments[1], {})[arguments[2]] = arguments[4]
        elif arguments[0] == "read":
            sys.exit(arguments[1] not in now["settings"])
        elif FAULT != "left-behind":
            now["settings"].pop(arguments[1], None)


def pgrep(arguments):
    with state() as now:
        sys.exit(not (now["items"] or FAULT == "items left") or not os.path.exists(arguments[1]))


def osascript(arguments):
    if FAULT == "no scripts":
        sys.exit("not authorised to send Apple events")
    with state() as now:
        if " set dark mode " in arguments[1] and not (FAULT == "appearance left" and now["dark"]):
            now["dark"] = arguments[1].endswith("true")
        print(str(now["dark"]).lower())


def screencapture(arguments):
    with state() as now, open(arguments[-1], "w", encoding="utf-8") as file:
        file.write("0.1" if now["dark"] and FAULT != "appearance" else "0.9")


def log(arguments):
    if FAULT == "no log":
        sys.exit("log: could not open")
    path = 'processImagePath CONTAINS "(.+)"'
    names, *folders = re.match(rf"process IN {{(.+)}} AND \({path} OR {path}\)$", arguments[-1]).groups()
    conflict = "[Layout] Unable to simultaneously satisfy constraints."
    lines = [("/Applications/Ovin.app/Contents/MacOS/Ovin", "Ovin DEBUG AX: trusted=1\n" + conflict)]
    own = os.path.join(folders[0], "Ovin.app/Contents/MacOS/Ovin")
    if FAULT != "log":
        lines.append((own, "Ovin DEBUG AX: trusted=1"))
    for fault, program in (("constraints", own), ("constraints in macos_tests", "build/macos-dev/tests/macos/macos_tests"),
                           ("constraints in mac_contract_tests", "build/macos-dev/tests/contract/mac_contract_tests")):
        lines += [(os.path.abspath(program), conflict)] * (FAULT == fault)
    for path, text in lines:
        if f'"{os.path.basename(path)}"' in names and any(folder in path for folder in folders):
            print(text)


# Programs that were built


def status_items(titles):
    with state() as now:
        now["items"][str(os.getpid())] = titles
        now["settings"]["mac-status-item"] = {"NSStatusItem Preferred Position Item-0": "300"}
    sys.stdin.read()


def restore(now):
    if now["owed"]:
        now.update(mode=USUAL, owed=False)


def ovin(_):
    pid, environment = str(os.getpid()), os.environ
    preview = next((kind for kind in ("GUIDE", "ABOUT", "ARRANGE_WINDOW") if f"OVIN_TEST_{kind}" in environment), None)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit())
    with state() as now:
        me = {"preview": preview, "ending": False, "ledge": False, "menu": False, "windows": [], "asked": 1, "quit": False,
              "tall": "OVIN_TEST_CARD" in environment}
        now["ovin"][pid] = me
        if preview:
            me["windows"] = [{"GUIDE": "guide", "ABOUT": "about", "ARRANGE_WINDOW": "card"}[preview]]
        else:
            if FAULT != "organize-killed":
                restore(now)
            settings = now["settings"].setdefault(IDENTIFIER, {})
            if settings.get("OvinHasShownGuide") != "true" or FAULT == "guide-once" and now["guides"]:
                me["windows"] = ["guide"]
                now["guides"] += 1
            settings["OvinHasShownGuide"] = "true"
            if "OVIN_TEST_ORGANIZE" in environment:
                now.update(mode=WIDE, owed=True)
                me["windows"] = ["card"]
    if FAULT == "constraints in Ovin's own log":
        print("Unable to simultaneously satisfy constraints.", flush=True)
    try:
        live(pid)
    finally:
        with state() as now:
            if pid in now["ovin"]:
                if now["ovin"][pid]["ledge"] and FAULT != "start-beside-ending":
                    print("Ovin DEBUG AX: trusted=1", flush=True)
                now["ovin"][pid]["ending"] = True
            if FAULT != "organize-ended" and not preview:
                restore(now)
        # Long enough for the next start to meet it, where that has to go wrong.
        time.sleep(1 if FAULT == "start-beside-ending" else 0.1)


def live(pid):
    """Looks for items whenever programs have come or gone, or somebody has asked."""
    looked, was_stopped = None, False
    while True:
        with state() as now:
            me = now["ovin"][pid]
            reasons = [sorted(now["items"]), me["asked"]]
            is_held_up = FAULT == "launches" or FAULT == "beside-menu" and me["menu"] or \
                FAULT == "beside-alert" and "alert" in me["windows"]
            stopped = any(is_stopped(one) for one in now["items"])
            hangs = was_stopped and FAULT == "hung-programs"
        if me["quit"]:
            return
        if not me["preview"] and reasons != looked and (looked is None or not is_held_up):
            looked, was_stopped = reasons, stopped  # The first beside them was under way before.
            print(f"Ovin DEBUG AX: trusted={int(FAULT != NO_TRUST)}", flush=True)
            if FAULT == NO_TRUST:
                continue
            print(f"Ovin DEBUG discovery: 3 undrawn items, {2 if hangs else 0.25:.2f}s: ", flush=True)
        time.sleep(0.05)


def is_stopped(pid):
    with open(f"/proc/{pid}/stat", encoding="utf-8") as file:
        return file.read().rsplit(")", 1)[1].split()[0] == "T"


# What Ovin shows, and what it does when it is pressed


def element(depth, role, title="", frame=(), value="", mark=""):
    return {"depth": depth, "role": role, "title": title, "name": "", "value": value, "mark": mark, "frame": list(frame)}


def tree(me, now):
    found = []
    if not me["preview"] and not me["ending"]:
        found += [element(0, "AXMenuBar"), element(1, "AXMenuBarItem", "", (1000, 0, 30, 24))]
        if me["menu"]:
            titles = ENTRIES[1:] if FAULT == "menu" else ENTRIES
            found += [element(3, "AXMenuItem", title, mark="✓" if now["login"] and "Login" in title else "")
                      for title in titles]
    for window in me["windows"]:
        top = 400 if FAULT == f"{window} below the screen" else 100
        if window == "guide":
            outside = 1000 if FAULT == "guide" else 120
            found += [element(0, "AXWindow", "How Ovin Works", (100, top, 480, 700)), element(1, "AXScrollArea"),
                      element(2, "AXStaticText", value="x", frame=(100, 2000, 50, 50)),
                      element(1, "AXButton", "Done", (outside, top + 600, 80, 24))]
        elif window == "about":
            found += [element(0, "AXWindow", "About Ovin", (100, 100, 388, 430)),
                      element(1, "AXStaticText" if FAULT == "about" else "AXLink", "Contact support ↗", (120, 300, 90, 20)),
                      element(1, "AXButton", "Done", (300, 480, 80, 24))]
        elif window == "card":
            corner = 90 if FAULT == "card-opens" and me["tall"] else top
            height = 700 if me["tall"] else 400
            found += [element(0, "AXWindow", "Organize", (100, corner, 492, height)),
                      element(1, "AXButton", "Done", (300, top + 340 + (2000 if FAULT == "card" else 0), 80, 24))]
        elif window == "alert":
            found += [element(0, "AXWindow", "", (100, 100, 300, 200)),
                      element(1, "AXStaticText", value="Something else" if FAULT == "no-updates" else NO_UPDATES),
                      element(1, "AXButton", "OK", (300, 270, 80, 24))]
    if me["ledge"]:
        width = 1440 if now["mode"] == USUAL else 2560
        found.append(element(0, "AXWindow", "", (width - 208 - (20 if FAULT == "item" else 0), 30, 200, 40)))
        found += [element(1, "AXButton", title, (width - 100, 36, 28, 28))
                  for title in [title for titles in now["items"].values() for title in titles][:3]]
    return found


def press_item(me, now):
    if "card" in me["windows"]:
        me["windows"].remove("card")
        if FAULT != "organize-item":
            restore(now)
    else:
        me["ledge"] = not me["ledge"] and FAULT != NO_TRUST
        me["asked"] += me["ledge"]
        if me["ledge"] and FAULT == "focus":
            now["front"] = 7


def choose(title, me, now):
    me["menu"] = False
    if title == "Launch at Login" and FAULT != "login-item" and not (FAULT == "login item left" and now["login"]):
        now["login"] = not now["login"]
    elif title == "Quit Ovin":
        me["quit"] = True
    elif title == "Check for Updates…":
        me["windows"].append("alert")
    elif title in ("About Ovin", "How This Works"):
        me["windows"] += ["about" if title == "About Ovin" else "guide"] * (2 if FAULT == "entries" else 1)


def press(words, now):
    pid, role, title = words
    me = now["ovin"][pid]
    if role == "AXMenuBarItem":
        press_item(me, now)
    elif role == "AXMenuItem":
        choose(title, me, now)
    elif title == "How does this work?":
        me["tall"] = not me["tall"]
    elif title.startswith("Kit item"):
        me["ledge"] = False
        if FAULT != "ledge":
            owner = next(pid for pid, titles in now["items"].items() if title in titles)
            with open(f"/proc/{owner}/fd/1", "a", encoding="utf-8") as output:
                output.write(f"{now['items'][owner].index(title)}\n")
    elif me["preview"]:
        me["quit"] = True
    else:
        was_card = "card" in me["windows"]
        me["windows"] = []
        if was_card and FAULT != "organize":
            restore(now)
    return 0


def click(button, x, now):
    for me in now["ovin"].values():
        if me["preview"]:
            continue
        if x != "1015":
            me["ledge"] = me["ledge"] and FAULT == "clicks-elsewhere"
        elif button != "left":
            me.update(menu=True, ledge=False)
        elif not (me["ledge"] and FAULT == "own-clicks"):
            press_item(me, now)
    return True


def escape(now):
    for me in now["ovin"].values():
        me["menu"] = False
        me["quit"] = me["quit"] or me["preview"] == "ARRANGE_WINDOW" and FAULT != "card-escape"
    return True


def hand(words):
    with state() as now:
        name, rest = words[0], words[1:]
        if name in ("look", "ask"):
            now["asked"] = now["asked"] or name == "ask"
            found = {**now["allowed"], "mode": now["mode"], "width": 1440 if now["mode"] == USUAL else 2560, "height": 900,
                     "widest": now["widest"], "front": now["front"]}
        elif name == "apps":
            found = [[int(pid), FAULT != "launch"] for pid in now["ovin"]]
        elif name == "end":
            for pid in now["ovin"]:
                os.kill(int(pid), signal.SIGKILL)
            found = True
        elif name == "tree":
            found = tree(now["ovin"][rest[0]], now) if rest[0] in now["ovin"] else \
                [element(1, "AXMenuBarItem", title) for title in now["items"].get(rest[0], [])]
        elif name == "press":
            found = press(rest, now)
        elif name == "click":
            found = click(rest[0], rest[1], now)
        elif name == "key":
            found = escape(now)
        elif name == "mode":
            now["mode"] = int(rest[0])
            found = True
        else:
            with open(rest[0], encoding="utf-8") as file:
                found = float(file.read())
    print(json.dumps([found]))


PROGRAMS = {"cmake": cmake, "ctest": ctest, "lipo": lipo, "otool": otool, "ditto": ditto, "sw_vers": sw_vers, "git": git,
            "open": open_application, "defaults": defaults, "pgrep": pgrep, "osascript": osascript,
            "screencapture": screencapture, "log": log, "mac-status-item": status_items, "mac-hand": hand, "Ovin": ovin}
# Called, and without effect here.
TOOLS = ("codesign", "iconutil", "plutil")

if __name__ == "__main__":
    PROGRAMS.get(os.path.basename(sys.argv[0]), lambda _: None)(sys.argv[1:])
