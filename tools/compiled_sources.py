#!/usr/bin/env python3
"""Lists which of the project's own sources a configured build tree compiles.

    tools/compiled_sources.py BUILD_FOLDER [FOLDER ...]

Prints paths from the root, those below the given folders only if any are given. Fails when there is none.
"""

import json
import os
import sys


def compiled_sources(build, root):
    """The sources below `root`, but not below `build`, that `build` compiles."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        commands = json.load(file)
    found = set()
    for command in commands:
        path = os.path.realpath(os.path.join(command["directory"], command["file"]))
        if os.path.commonpath([path, root]) == root and os.path.commonpath([path, build]) != build:
            found.add(os.path.relpath(path, root).replace(os.sep, "/"))
    return found


def main(arguments):
    root = os.path.realpath(os.path.join(os.path.dirname(__file__), ".."))
    folders = tuple(folder.rstrip("/") + "/" for folder in arguments[1:])
    paths = sorted(path for path in compiled_sources(os.path.realpath(arguments[0]), root)
                   if not folders or path.startswith(folders))
    for path in paths:
        print(path)
    return 0 if paths else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
