#!/usr/bin/env python3
"""Finds what the build has forgotten: sources that no target compiles, and tests that are switched off.

    tools/check_forgotten.py BUILD_FOLDER [ROOT]

A source that nothing compiles breaks unseen, and a test that nothing builds or runs tests nothing. What no Linux machine
compiles, and what only the release build does, is left out.
"""

import os
import re
import sys

from check_includes import sources, without_literals
from compiled_sources import compiled_sources

NOT_IN_THIS_BUILD = ("bench/", "platform/macos/", "app/mainMac")
SWITCHED_OFF = re.compile(r"\bDISABLED_\w*|\bGTEST_DISABLED\w*")


def main(arguments):
    build = os.path.realpath(arguments[0])
    here = os.path.join(os.path.dirname(__file__), "..")
    root = os.path.realpath(arguments[1] if len(arguments) > 1 else here)
    compiled = compiled_sources(build, root)
    messages = []
    for path in sources(root):
        if path.endswith(".cpp") and path not in compiled and not path.startswith(NOT_IN_THIS_BUILD):
            messages.append(f"{path}: no target compiles it")
        if path.startswith("tests/"):
            with open(os.path.join(root, path), encoding="utf-8") as file:
                for match in SWITCHED_OFF.finditer(without_literals(file.read())):
                    messages.append(f"{path}: {match[0]} is switched off")
    for message in messages:
        print(message)
    print(f"{len(compiled)} sources compiled, {len(messages)} forgotten")
    return 1 if messages or not compiled else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
