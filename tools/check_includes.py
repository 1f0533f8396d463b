#!/usr/bin/env python3
"""Checks what each folder includes and, in the logic, what it calls.

The arrows between folders run down only, and so do those between the rooms of a world; no logic folder knows a world, and
the logic has no clock, threads, randomness, environment or output of its own. A compiler sees none of that, because every
header is reachable from the root.

    tools/check_includes.py [ROOT]

Prints one line per violation and fails if there is any. Without ROOT the project that holds this file is checked.
"""

import fnmatch
import os
import re
import sys

SOURCE_SUFFIXES = (".h", ".cpp", ".mm")

# Which other logic folders a logic folder may include.
LOGIC = {
    "discovery": [],
    "ledge": ["discovery"],
    "organize": ["discovery"],
    "info": [],
    "updates": [],
    "app": ["ledge", "organize", "info", "updates", "discovery"],
}

# The one place that chooses a world.
WORLD_CHOOSERS = ["app/main*.cpp", "app/main*.mm"]

# Which other folders below platform/ a folder there may include, and whether it may include libraries.
REALISATIONS = {
    "icu": ([], True),
    "threads": ([], False),
    "memory": (["icu"], False),
    "linux": (["icu", "threads"], True),
    "macos": (["threads"], True),
}
WORLDS = ["memory", "linux", "macos"]

# The rooms of the worlds that have some, and which other rooms each may include: one table for all, so that whoever knows
# one world finds the way in the other. What lies beside the rooms puts the world together and may include every room.
ROOMS = {
    "system": [],
    "drawing": ["system"],
    "displays": ["system"],
    "items": ["system", "drawing"],
    "accessibility": ["system", "items"],
    "applications": ["system", "drawing", "items"],
    "views": ["system", "drawing"],
    "windows": ["system", "drawing", "displays", "views"],
    "own_item": ["system", "drawing", "displays"],
    "session": ["system", "applications", "windows"],
    "updates": ["system"],
}
WORLDS_WITH_ROOMS = ["linux", "macos"]

# Folders that may include whatever they need: they are neither the logic nor a world.
FREE = ["bench", "desktop", "resources", "tests", "tools"]

STANDARD_HEADERS = set(
    """
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits
    clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution expected filesystem format
    forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits
    list locale map memory memory_resource mutex new numbers numeric optional ostream print queue random ranges ratio
    regex scoped_allocator semaphore set shared_mutex source_location span spanstream sstream stack stdexcept
    stop_token streambuf string string_view strstream syncstream system_error thread tuple type_traits typeindex
    typeinfo unordered_map unordered_set utility valarray variant vector version
    """.split()
)

# What the logic must not include of the standard library, and what to use instead.
BANNED_HEADERS = {
    **dict.fromkeys(
        ["barrier", "condition_variable", "execution", "future", "latch", "mutex", "semaphore", "shared_mutex",
         "stop_token", "thread"],
        "the logic knows no threads; work goes through platform/Tasks.h and platform/MainQueue.h",
    ),
    **dict.fromkeys(
        ["cstdio", "fstream", "iostream", "print", "syncstream"],
        "the logic reads and prints nothing; see platform/SystemLog.h and platform/UserDefaults.h",
    ),
    "csignal": "the logic knows no signals",
    "cstdlib": "the logic knows no environment; see platform/ProcessInfo.h",
    "ctime": "the logic knows no clock but platform/Clock.h",
    "filesystem": "the logic knows no files",
    "random": "the logic draws no random numbers",
}

# What the logic must not name, whichever header declares it.
BANNED_NAMES = [
    (r"\b(?:steady|system|high_resolution|utc|tai|gps|file)_clock\b|\bstd\s*::\s*time\b",
     "the logic knows no clock but platform/Clock.h"),
    (r"\b(?:secure_)?getenv\b|\b(?:un)?setenv\b|\bputenv\b", "the logic knows no environment; see platform/ProcessInfo.h"),
    (r"\bsleep_(?:for|until)\b|\b(?:u|nano)sleep\b", "the logic never sleeps; see platform/MainQueue.h"),
    (r"\bstd\s*::\s*(?:j?thread|async|this_thread)\b", "the logic starts no thread; see platform/Tasks.h"),
    (r"\bv?f?w?printf\b|\bf?puts\b|\bperror\b|\bstd\s*::\s*(?:w?(?:cout|cerr|clog|cin)|print(?:ln)?)\b",
     "the logic prints nothing; see platform/SystemLog.h"),
    (r"\bs?rand\s*\(|\brandom_device\b|\bmt19937(?:_64)?\b", "the logic draws no random numbers"),
]

COMMENT_OR_LITERAL = re.compile(
    r"""
    (?P<comment> //[^\n]* | /\*.*?\*/ )
    | R"(?P<mark>[^()\s\\]{0,16})\(.*?\)(?P=mark)"
    | "(?:\\.|[^"\\\n])*"
    | (?<![0-9A-Za-z_])'(?:\\.|[^'\\\n])+'
    """,
    re.VERBOSE | re.DOTALL,
)
DIRECTIVE = re.compile(r"^[ \t]*(?:#|%:)[ \t]*(?:include|import|include_next)\b[ \t]*(?P<what>[^\n]*)", re.MULTILINE)


def blanked(text):
    """As many lines as `text`, for line numbers, and nothing else."""
    return " " + "\n" * text.count("\n")


def without_comments(source):
    return COMMENT_OR_LITERAL.sub(lambda match: blanked(match[0]) if match["comment"] else match[0], source)


def without_literals(source):
    return COMMENT_OR_LITERAL.sub(lambda match: blanked(match[0]), source)


def line_of(source, position):
    return source.count("\n", 0, position) + 1


def folder_of(path):
    """The folder that a rule speaks of: "discovery", "platform" or, one level deeper, "platform/memory"."""
    parts = path.split("/")
    if len(parts) == 1:
        return ""
    return "/".join(parts[:2]) if parts[0] == "platform" and len(parts) > 2 else parts[0]


def room_of(path):
    """The room of a world that a path lies in; nothing beside the rooms and elsewhere."""
    parts = path.split("/")
    return parts[2] if len(parts) > 3 and parts[0] == "platform" and parts[1] in WORLDS_WITH_ROOMS else None


def refusal_between_rooms(path, own):
    """Why a file of a room may not include another file of its world; nothing when it may."""
    room, target = room_of(path), room_of(own)
    if room is None or room == target:
        return None
    if target is None:
        return "a room does not know what is made of it"
    if target in ROOMS[room]:
        return None
    return f"the arrows between rooms run down: {room} may not use {target}"


def is_world_chooser(path):
    """Whether the file starts the program in some world, and so speaks that world's language."""
    return any(fnmatch.fnmatch(path, pattern) for pattern in WORLD_CHOOSERS)


def refusal(path, what):
    """Why the file `path` may not include `what`, written as in the source; nothing when it may."""
    folder = folder_of(path)
    if folder in FREE:
        return None
    is_logic = folder in LOGIC or folder == "platform"
    realisation = folder.removeprefix("platform/") if folder.startswith("platform/") else None
    if not is_logic and realisation not in REALISATIONS:
        return "there is no rule for this folder yet; write one into tools/check_includes.py"
    if room_of(path) not in (None, *ROOMS):
        return "there is no rule for this room yet; write one into tools/check_includes.py"

    match = re.fullmatch(r'<([^<>]+)>\s*|"([^"]+)"\s*', what)
    if match is None:
        return "an include must name its file"
    library, own = match.groups()
    if library is not None and is_world_chooser(path):
        return None
    if library is not None:
        if library in STANDARD_HEADERS:
            return BANNED_HEADERS.get(library) if is_logic else None
        if is_logic:
            return "the logic and the interfaces are built on the C++ standard library alone"
        return None if REALISATIONS[realisation][1] else f"platform/{realisation} is built on the C++ standard library alone"

    if ".." in own.split("/"):
        return "an include gives the path from the root"
    target = folder_of(own)
    if target == "":
        return "an include gives the path from the root"
    if target == folder:
        return refusal_between_rooms(path, own)
    if target == "platform":
        return None
    if is_logic:
        return refusal_in_logic(path, folder, target)
    if target in LOGIC:
        return "a world realises interfaces and must not know who uses them"
    other = target.removeprefix("platform/")
    if other in REALISATIONS[realisation][0]:
        return None
    if other in WORLDS:
        return "worlds do not know one another"
    return f"platform/{realisation} may not use {target}"


def refusal_in_logic(path, folder, target):
    if target.startswith("platform/"):
        if is_world_chooser(path):
            return None
        return "only main knows what stands behind the interfaces"
    if folder == "platform":
        return "an interface includes the standard library and other interfaces only"
    if target in LOGIC[folder]:
        return None
    if target in LOGIC:
        return f"the arrows between folders run down: {folder} may not use {target}"
    return f"the logic may not use {target}"


def violations_in(path, source):
    """Pairs of line and message."""
    found = []
    source = source.replace("\\\n", " \n")
    text = without_comments(source)
    for directive in DIRECTIVE.finditer(text):
        what = directive["what"].strip()
        message = refusal(path, what)
        if message:
            found.append((line_of(text, directive.start("what")), f"includes {what}: {message}"))

    if (folder_of(path) in LOGIC or folder_of(path) == "platform") and not is_world_chooser(path):
        code = without_literals(source)
        for pattern, message in BANNED_NAMES:
            for match in re.finditer(pattern, code):
                found.append((line_of(code, match.start()), f"uses {match[0]}: {message}"))
    return sorted(found)


def sources(root):
    """The paths of all source files from the root, with "/" between folders; those of build trees left out."""
    paths = []
    for folder, folders, files in os.walk(root):
        if "CMakeCache.txt" in files:
            folders.clear()
            continue
        folders[:] = sorted(name for name in folders if not name.startswith(".")
                            and not (folder == root and name == "build"))
        for name in files:
            if name.endswith(SOURCE_SUFFIXES):
                paths.append(os.path.relpath(os.path.join(folder, name), root).replace(os.sep, "/"))
    return sorted(paths)


def main(arguments):
    root = arguments[0] if arguments else os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    paths = sources(root)
    if not paths:
        print(f"no source files below {root}")
        return 1
    count = 0
    for path in paths:
        with open(os.path.join(root, path), encoding="utf-8") as file:
            for line, message in violations_in(path, file.read()):
                print(f"{path}:{line}: {message}")
                count += 1
    print(f"{len(paths)} files, {count} violations")
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
