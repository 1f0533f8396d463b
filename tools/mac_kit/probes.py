"""What is tried for each row of docs/macos.md, and what has to be seen.

A probe returns what it has seen, if there is anything to tell, and raises Failed or NotTried.
"""

import contextlib
import os
import re
import signal
import threading

from machine import CONSTRAINTS, DOMAINS, ESCAPE, IDENTIFIER, dark_mode
from page import Failed, NotTried

PROBES = {}

ENTRIES = ["Organize Menu Bar…", "How This Works", "Launch at Login", "About Ovin", "Check for Updates…", "Quit Ovin"]
SCALES = ("1", "1.37", "1.5", "2.2")
CONTRACTS, NATIVE = "^mac_contract_tests$", "^macos_tests$"
DISTANCE_FROM_RIGHT = 8  # points
# How bright pictures are on average. No picture is below 0.
SHADES = {"light": lambda shade: shade > 0.5, "dark": lambda shade: 0 <= shade < 0.5}
LONGEST_DISCOVERY = 1  # second
DELAYS = (0, 0.05, 0.1, 0.2, 0.4)  # seconds from a start to the SIGTERM for the program that runs


def probe(name, *needs):
    """`needs` are permissions: what `mac-hand look` calls trusted, events and pictures."""
    def add(function):
        PROBES[name] = (function, needs)
        return function
    return add


def probe_of_ovin(name, *needs, **environment):
    """Of a program that is started for it, in this environment. Nothing can be seen of it without trust."""
    def add(function):
        def started(mac):
            with mac.ovin(**environment) as ovin:
                return function(mac, ovin)
        PROBES[name] = (started, ("trusted", *needs))
        return function
    return add


def expect(condition, otherwise):
    if not condition:
        raise Failed(otherwise)


# What is built


@probe("build")
def build(mac):
    for preset in ("macos", "macos-dev"):
        mac.must("cmake", "--preset", preset)
        mac.must("cmake", "--build", "--preset", preset)
    mac.make_copy()


@probe("bundle")
def bundle(mac):
    application = os.path.join(mac.root, "build", "macos", "Ovin.app")
    program = os.path.join(application, "Contents", "MacOS", "Ovin")
    mac.must("plutil", "-lint", os.path.join(application, "Contents", "Info.plist"),
             *(os.path.join(mac.root, "packaging", "macos", name) for name in ("Ovin.entitlements", "OvinAdHoc.entitlements")))
    mac.must("lipo", program, "-verify_arch", "arm64", "x86_64")
    expect("@executable_path/../Frameworks" in mac.must("otool", "-l", program), "the program does not look into Frameworks")
    mac.must("codesign", "--verify", "--deep", "--strict", "--verbose=2", application)
    mac.must("iconutil", "--convert", "iconset", "--output", os.path.join(mac.folder, "Ovin.iconset"),
             os.path.join(application, "Contents", "Resources", "Ovin.icns"))


def run_tests(mac, *selection):
    done = mac.run("ctest", "--preset", "macos-dev", "--no-tests=error", *selection)
    failed = re.findall(r"^\s*\d+ - (\S+) \(", done.stdout, re.MULTILINE)
    cases = sorted(set(re.findall(r"^\[  FAILED  \] ([\w./]+)", done.stdout, re.MULTILINE)))
    expect(done.returncode == 0, ", ".join(failed + cases) or " ".join(done.stdout.splitlines()[-3:]))
    return " ".join(re.findall(r".*tests passed.*", done.stdout))


@probe("tests")
def tests(mac):
    return run_tests(mac, "--exclude-regex", f"{CONTRACTS}|{NATIVE}")


@probe("contracts", "trusted")
def contracts(mac):
    return run_tests(mac, "--tests-regex", CONTRACTS)


@probe("native-tests")
def native_tests(mac):
    return run_tests(mac, "--tests-regex", NATIVE)


# Windows by themselves


def check_inside(mac, window, scale=1):
    """The window is on the main display, as if that were larger by `scale`, and no element reaches out of it, but for those
    that scroll. Returns the window's size."""
    x, y, width, height = window[0]["frame"]
    screen = mac.look()
    expect(x + width <= screen["width"] * scale and 0 <= y and y + height <= screen["height"] * scale and (x >= 0 or scale > 1),
           f"the window at {window[0]['frame']} is not all on the display of {screen['width']} x {screen['height']}")
    scrolling = None  # The depth below which everything scrolls.
    for element in window[1:]:
        if scrolling is not None and element["depth"] > scrolling:
            continue
        scrolling = element["depth"] if element["role"] == "AXScrollArea" else None
        left, top, wide, high = element["frame"] or (x, y, 0, 0)
        expect(left >= x - 1 and top >= y - 1 and left + wide <= x + width + 1 and top + high <= y + height + 1,
               f"{element['role']} “{element['title'] or element['value']}” at {element['frame']} is outside of the window at "
               f"{window[0]['frame']}")
    return f"{width:g} x {height:g}"


@probe_of_ovin("guide", OVIN_TEST_GUIDE="1")
def guide(mac, ovin):
    seen = check_inside(mac, ovin.window("How Ovin Works"))
    ovin.press("AXButton", "Done")
    ovin.wait_for_end()
    return seen


@probe_of_ovin("about", OVIN_TEST_ABOUT="1")
def about(mac, ovin):
    window = ovin.window("About Ovin")
    expect(any(element["role"] == "AXLink" for element in window), "no link is told of as one")
    return check_inside(mac, window)


@probe("card", "trusted")
def card(mac):
    seen = []
    for scale in SCALES:
        with mac.ovin(OVIN_TEST_ARRANGE_WINDOW=scale, OVIN_TEST_CARD="1") as ovin:
            seen.append(f"{scale}: {check_inside(mac, ovin.window('Done'), float(scale))}")
            ovin.press("AXButton", "Done")
            ovin.wait_for_end()
    return "\n".join(seen)


@probe_of_ovin("card-opens", OVIN_TEST_ARRANGE_WINDOW="1")
def card_opens(mac, ovin):
    before = ovin.window("Done")[0]["frame"]
    ovin.press("", "How does this work?")
    mac.wait("a higher card", lambda: ovin.window("Done")[0]["frame"][3] > before[3])
    after = ovin.window("Done")[0]["frame"]
    expect(after[:2] == before[:2], f"the top left corner went from {before[:2]} to {after[:2]}")
    ovin.press("", "How does this work?")
    mac.wait("a card as before", lambda: ovin.window("Done")[0]["frame"] == before)
    return f"{before} and {after}"


@probe_of_ovin("card-escape", "events", OVIN_TEST_ARRANGE_WINDOW="1")
def card_escape(mac, ovin):
    x, y, width, _ = ovin.window("Done")[0]["frame"]
    mac.click("left", (x + width / 2, y + 20))
    mac.hand("key", ESCAPE)
    ovin.wait_for_end()


# Item, menu and ledge


@probe("launch", "trusted")
def launch(mac):
    mac.must("open", mac.bundle)
    try:
        expect(mac.wait_for_opened(), "the program is in the Dock")
    finally:
        mac.end_opened()


@probe("guide-once", "trusted")
def guide_once(mac):
    mac.set_guide_shown(False)
    try:
        with mac.ovin() as ovin:
            ovin.window("How Ovin Works")
        with mac.ovin() as ovin:
            ovin.item()
            expect(not ovin.windows(), "there is a window at the second start too")
    finally:
        mac.set_guide_shown(True)


@probe_of_ovin("item")
def item(mac, ovin):
    x, y, width, height = ovin.open_ledge()[0]["frame"]
    right = mac.look()["width"] - DISTANCE_FROM_RIGHT
    ovin.press_item()
    ovin.wait_for_no_ledge()
    expect(abs(x + width - right) <= 1, f"the ledge ends at {x + width:g}, not at {right}")
    return f"ledge at {x:g}, {y:g}: {width:g} x {height:g}"


@probe_of_ovin("focus")
def focus(mac, ovin):
    before = mac.look()["front"]
    ovin.open_ledge()
    expect(mac.look()["front"] == before, "another program is in front when the ledge is open")


@probe_of_ovin("own-clicks", "events")
def own_clicks(mac, ovin):
    ovin.click_item("left")
    ovin.wait_for_ledge()
    ovin.click_item("left")
    ovin.wait_for_no_ledge()
    discovers_meanwhile(mac, ovin)  # Takes longer than the ledge would need to come again.
    expect(not ovin.ledges(), "the click that closes the ledge opens it again")


@probe_of_ovin("clicks-elsewhere", "events")
def clicks_elsewhere(mac, ovin):
    screen = mac.look()
    ovin.open_ledge()
    mac.click("right", (screen["width"] / 2, screen["height"] / 2))
    try:
        ovin.wait_for_no_ledge()
    finally:
        mac.hand("key", ESCAPE)  # For the menu of whatever was clicked.


@probe_of_ovin("menu", "events")
def menu(mac, ovin):
    for _ in range(2):
        titles = [entry["title"] for entry in ovin.open_menu() if entry["title"]]
        expect(titles == ENTRIES, f"the entries are {titles}")
        ovin.close_menu()
        ovin.click_item("left")
        ovin.wait_for_ledge()
        expect(not ovin.entries(), "a left click opens the menu too")
        ovin.click_item("left")
        ovin.wait_for_no_ledge()
    ovin.click_item("control")
    mac.wait("an open menu after a Control-click", ovin.entries)
    ovin.close_menu()


@probe_of_ovin("entries", "events")
def entries(mac, ovin):
    for title, text in (("About Ovin", "About Ovin"), ("How This Works", "How Ovin Works")):
        ovin.choose(title)
        ovin.window(text)
        expect(len(ovin.windows()) == 1, f"{title} opens {len(ovin.windows())} windows")
        ovin.press("AXButton", "Done")
        mac.wait("a closed window", lambda: not ovin.windows())
    ovin.choose("Quit Ovin")
    ovin.wait_for_end()


@probe_of_ovin("no-updates", "events")
def no_updates(mac, ovin):
    ovin.open_alert()
    expect(ovin.windows_with("This copy of Ovin does not update itself"), "the alert says something else")
    ovin.press("AXButton", "OK")
    mac.wait("a closed alert", lambda: not ovin.windows())


@probe_of_ovin("login-item", "events")
def login_item(mac, ovin):
    def is_on():
        mark = next(entry["mark"] for entry in ovin.open_menu() if entry["title"] == "Launch at Login")
        ovin.close_menu()
        return bool(mark)

    expect(not is_on(), "it is on before it was switched on")
    mac.login_item_may_be_on = True
    ovin.choose("Launch at Login")
    try:
        mac.wait("a check mark", is_on)
    finally:
        if is_on():
            ovin.choose("Launch at Login")
        mac.wait("no check mark", lambda: not is_on())
        mac.login_item_may_be_on = False


def names_on(ledge):
    """Those of the kit's items."""
    return [one["name"] or one["title"] for one in ledge if "Kit item " in one["name"] + one["title"]]


@probe("ledge", "trusted")
def ledge(mac):
    with mac.items() as program, mac.ovin() as ovin:
        ovin.wait_for_discovery(0)
        ovin.open_ledge()
        names = mac.wait("an item of the kit on the ledge", lambda: names_on(ovin.wait_for_ledge()))
        check_inside(mac, ovin.wait_for_ledge())
        ovin.press("AXButton", names[-1])
        mac.wait("the press in the program of the item", lambda: str(int(names[-1][-2:])) in program.lines())
        ovin.wait_for_no_ledge()
    return f"{len(names)} of 60 items, pressed “{names[-1]}”"


def discovers_meanwhile(mac, ovin):
    """When a program starts, and when it ends."""
    before = len(ovin.discoveries())
    with mac.items(1):
        ovin.wait_for_discovery(before)
        before = len(ovin.discoveries())
    ovin.wait_for_discovery(before)


@probe_of_ovin("launches")
def launches(mac, ovin):
    ovin.wait_for_discovery(0)
    discovers_meanwhile(mac, ovin)


@probe_of_ovin("beside-menu", "events")
def beside_menu(mac, ovin):
    ovin.open_menu()
    discovers_meanwhile(mac, ovin)
    expect(ovin.entries(), "the menu has closed")
    ovin.close_menu()


@probe_of_ovin("beside-alert", "events")
def beside_alert(mac, ovin):
    ovin.open_alert()
    discovers_meanwhile(mac, ovin)
    expect(ovin.windows_with("OK"), "the alert has closed")
    ovin.press("AXButton", "OK")


@probe("hung-programs", "trusted")
def hung_programs(mac):
    with contextlib.ExitStack() as stack:
        programs = [stack.enter_context(mac.items(2)) for _ in range(10)]
        ovin = stack.enter_context(mac.ovin())
        ovin.wait_for_discovery(0)
        for program in programs:
            program.process.send_signal(signal.SIGSTOP)
        before = len(ovin.discoveries())
        for count in (0, 1):  # The first may have been under way before they hung.
            ovin.open_ledge()
            ovin.wait_for_discovery(before + count)
            ovin.press_item()
            ovin.wait_for_no_ledge()
        seconds = max(ovin.discoveries()[before:])
    expect(seconds < LONGEST_DISCOVERY, f"beside ten programs that hang a discovery takes {seconds:g} s")
    return f"{seconds:g} s"


# One program


@probe_of_ovin("second-start")
def second_start(mac, ovin):
    ovin.item()
    mac.must("open", mac.bundle)
    ovin.wait_for_ledge()


@probe_of_ovin("start-beside-preview", OVIN_TEST_ABOUT="1")
def start_beside_preview(mac, preview):
    preview.window("About Ovin")
    mac.must("open", mac.bundle)
    preview.item()


@probe("start-beside-ending", "trusted")
def start_beside_ending(mac):
    met = []
    for delay in DELAYS:
        with mac.ovin() as ending:
            ending.wait_for_discovery(0)
            before = ending.trust_checks()
            end = threading.Timer(delay, ending.process.send_signal, [signal.SIGTERM])
            end.start()
            try:
                mac.must("open", mac.bundle)
                came_later = end.is_alive()
                ending.wait_for_end()
                if came_later:
                    break
                # It may have opened its ledge before it was told to end: that is an answer too.
                is_answered = ending.trust_checks() > before
                if not is_answered:
                    mac.wait_for_opened()
                met.append(f"{delay:g} s: {'answered' if is_answered else 'started again'}")
            finally:
                mac.end_opened()
    return "SIGTERM after the start was begun, " + ", ".join(met)


# Organizing


def organize(mac, finish):
    usual = mac.look()
    if usual["widest"] <= usual["width"]:
        raise NotTried(f"No mode of this display is wider than its {usual['width']} points.")
    try:
        with mac.items(), mac.ovin(OVIN_TEST_ORGANIZE="1") as ovin:
            mac.wait("a wider display", lambda: mac.look()["width"] > usual["width"])
            wide = mac.look()["width"]
            check_inside(mac, ovin.window("Done"))
            finish(ovin)
            mac.wait("the usual mode", lambda: mac.look()["mode"] == usual["mode"])
    finally:
        mac.hand("mode", usual["mode"])  # For the next row, which would take a wide display for the usual one.
    return f"{usual['width']}, then {wide}, then {usual['width']} points"


@probe("organize", "trusted")
def organize_done(mac):
    return organize(mac, lambda ovin: ovin.press("AXButton", "Done"))


@probe("organize-item", "trusted")
def organize_item(mac):
    return organize(mac, lambda ovin: ovin.press_item())


@probe("organize-ended", "trusted", "events")
def organize_ended(mac):
    prepared = (lambda ovin: None, lambda ovin: ovin.open_menu(), lambda ovin: ovin.open_alert())
    return [organize(mac, lambda ovin, prepare=prepare: (prepare(ovin), ovin.end(signal.SIGTERM))) for prepare in prepared][0]


@probe("organize-killed", "trusted")
def organize_killed(mac):
    def kill_and_start(ovin):
        ovin.end(signal.SIGKILL)
        with mac.ovin() as again:
            again.item()
            mac.wait("the usual mode", lambda: mac.look()["mode"] == mac.first["mode"])

    return organize(mac, kill_and_start)


# What is seen


@probe("appearance", "trusted", "pictures")
def appearance(mac):
    usual, shades = mac.is_dark(), {}
    mac.undo.add("appearance", *dark_mode(usual))
    try:
        for name, environment, text in (("guide", {"OVIN_TEST_GUIDE": "1"}, "How Ovin Works"),
                                        ("about", {"OVIN_TEST_ABOUT": "1"}, "About Ovin"),
                                        ("card", {"OVIN_TEST_ARRANGE_WINDOW": "1", "OVIN_TEST_CARD": "1"}, "Done")):
            with mac.ovin(**environment) as ovin:
                frame = ovin.window(text)[0]["frame"]
                for shown in ("light", "dark"):
                    mac.set_dark(shown == "dark")
                    shades[f"{name}-{shown}"] = mac.take_picture(f"{name}-{shown}", frame, SHADES[shown])
        with mac.items(), mac.ovin() as ovin:
            for shown in ("light", "dark"):
                mac.set_dark(shown == "dark")
                x, _, width, height = ovin.open_ledge()[0]["frame"]
                mac.take_picture(f"ledge-{shown}", (x, 0, width, 2 * height))
                ovin.press_item()
                ovin.wait_for_no_ledge()
    finally:
        mac.set_dark(usual)
    for name, shade in shades.items():
        expect(SHADES[name.split("-")[1]](shade), f"{name} has a brightness of {shade:.2f}")
    return ", ".join(f"{name} {shade:.2f}" for name, shade in shades.items())


@probe_of_ovin("log")
def log(mac, ovin):
    ovin.wait_for_discovery(0)
    _, system = mac.texts_logged()
    if system is None:
        raise NotTried("The system's log cannot be read.")
    expect("Ovin DEBUG" in system, "nothing that Ovin has written can be read in the system's log")


@probe("constraints")
def constraints(mac):
    texts, system = mac.texts_logged()
    found = {match[0].strip() for text in [*texts, system or ""] for match in CONSTRAINTS.finditer(text)}
    expect(not found, "\n".join(sorted(found)[:5]))
    if not mac.logs:
        raise NotTried("No other row has started Ovin.")
    if system is None:
        raise NotTried("The system's log cannot be read; the programs themselves have said nothing.")
    return f"nothing in {len(texts)} logs of programs and the system's"


@probe("left-behind")
def left_behind(mac):
    """The last one: it ends the kit's own doings."""
    mac.undo.close()
    mode = mac.look()["mode"]
    expect(mode == mac.first["mode"], f"the display is in mode {mode}, and was in {mac.first['mode']}")
    expect(not mac.hand("apps", IDENTIFIER), "Ovin still runs")
    expect(mac.run("pgrep", "-f", mac.items_path()).returncode != 0, "programs with items still run")
    dark = {mac.first["dark"].strip(), mac.run(*dark_mode()).stdout.strip()}
    expect(dark != {"true", "false"}, "the appearance is another one")
    expect(not mac.login_item_may_be_on, "the login item may be on")
    for domain in DOMAINS:
        expect(mac.run("defaults", "read", domain).returncode != 0, f"there are settings of {domain} left")
    expect(not os.path.exists(mac.folder), f"{mac.folder} is left")
