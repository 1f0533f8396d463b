#!/usr/bin/env python3
"""Finds what the build has forgotten: sources that no target compiles, and tests that are switched off.

    tools/check_forgotten.py BUILD_FOLDER [ROOT]

A source that nothing compiles breaks unseen, and a test that nothing builds or runs tests nothing. What no Linux machine
compiles, and what only the release build does, is left out.
"""

import glob
import os
import re
import sys

from check_includes import sources, without_literals
from compiled_sources import compiled_sources

NOT_IN_THIS_BUILD = ("bench/", "platform/macos/", "app/mainMac")
SWITCHED_OFF = re.compile(r"\bDISABLED_\w*|\bGTEST_DISABLED\w*")
SWITCHED_OFF_IN_PYTHON = re.compile(r"^\s*(@unittest\.(?:skip\(|expectedFailure))", re.MULTILINE)


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def switched_off(root):
    """Pairs of a test file and what switches a test off in it."""
    for path in sources(root):
        if path.startswith("tests/"):
            text = without_literals(read(os.path.join(root, path)))
            yield from ((path, match[0]) for match in SWITCHED_OFF.finditer(text))
    for path in sorted(glob.glob("tests/**/*.py", root_dir=root, recursive=True)):
        yield from ((path, match[1]) for match in SWITCHED_OFF_IN_PYTHON.finditer(read(os.path.join(root, path))))


def main(arguments):
    build = os.path.realpath(arguments[0])
    here = os.path.join(os.path.dirname(__file__), "..")
    root = os.path.realpath(arguments[1] if len(arguments) > 1 else here)
    compiled = compiled_sources(build, root)
    messages = [f"{path}: no target compiles it" for path in sources(root)
                if path.endswith(".cpp") and path not in compiled and not path.startswith(NOT_IN_THIS_BUILD)]
    messages += [f"{path}: {what} is switched off" for path, what in switched_off(root)]
    for message in messages:
        print(message)
    print(f"{len(compiled)} sources compiled, {len(messages)} forgotten")
    return 1 if messages or not compiled else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
