"""Rules of the macOS world that no compiler knows. Each holds for the text of a source, without comments and texts."""

import os
import re

import compiler
from check_includes import line_of, without_literals

LONGEST_SOURCE = 300

# Where no other reason is said, a pattern that must not occur.
FORBIDDEN = [
    (r"\bdispatch_get_main_queue\b",
     "while one of its blocks runs, a nested event loop runs no other; work for the main thread goes through MacMainQueue"),
    (r"\bscheduledTimerWith\w*",
     "it stands still while a menu or an alert is open; say in which modes of the run loop a timer fires"),
    (r"\bNSSelectorFromString\b|\bNSClassFromString\b|\bobjc_msgSend\w*",
     "nothing can check a name that is made at run time"),
]

# Where a reference to an element comes from: a function that makes one, or a member of an array, which has no type.
ELEMENT = re.compile(r"\bAXUIElementCreate\w+\s*\(|(?:static_cast|reinterpret_cast)\s*<\s*AXUIElementRef\s*>|"
                     r"\(\s*__bridge\s+AXUIElementRef\s*\)")
MADE = re.compile(r"makeElement\s*\(\s*Reference\s*<\s*AXUIElementRef\s*>\s*::\s*(?:adopt|retain)\s*\(\s*$")

COPIED = re.compile(r"\b(?:AX|CF|CG)\w*Copy\w*\s*\([^;]*?&\s*(\w+)\s*\)")


def violations_in(path, source):
    """Pairs of line and message."""
    code = without_literals(source)
    found = []
    for pattern, message in FORBIDDEN:
        found += [(line_of(code, match.start()), f"uses {match[0]}: {message}") for match in re.finditer(pattern, code)]
    for match in ELEMENT.finditer(code):
        if not MADE.search(code[:match.start()]):
            found.append((line_of(code, match.start()), "a reference to an element has no timeout before makeElement made it "
                                                        "an element: write makeElement(Reference<AXUIElementRef>::...(...))"))
    for match in COPIED.finditer(code):
        owner = rf"(?:\badopt\s*\(|\bCFBridgingRelease\s*\(|__bridge_transfer\s+[\w<>*\s]+\))\s*{match[1]}\b"
        if not re.search(owner, code[match.end():]):
            found.append((line_of(code, match.start()), f"nothing takes over {match[1]}, which is handed out to be released"))
    if path.endswith(".mm") and source.count("\n") > LONGEST_SOURCE:
        found.append((LONGEST_SOURCE, f"is longer than {LONGEST_SOURCE} lines"))
    return sorted(found)


def is_internal(source):
    """Whether the header is for Objective-C++ alone, which its first line says."""
    return source.startswith("// For Objective-C++ files only.")


def compile_as_cpp(root, header, generated):
    """What GCC and clang say of a header that is for all of C++, with the C++ library of this machine."""
    output = ""
    for command in ("g++", "clang++"):
        output += compiler.run([command, "-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-x", "c++",
                                "-I", root, "-I", generated, "-include", os.path.join(root, header), "/dev/null"])[1]
    return output
