#!/usr/bin/env python3
"""Stands in for the tools of a Mac, by the name that it is started as: notes the call in the file MAC_CALLS, a JSON list
a line, and leaves behind what the tool would. MAC_FAILS names a call that is to fail, by a text in it, and MAC_ANSWER what
Apple says of a submission.
"""

import json
import os
import plistlib
import shutil
import sys


def pack(arguments):
    """ditto."""
    if arguments[0] == "-c":
        shutil.make_archive(arguments[-1].removesuffix(".zip"), "zip", os.path.dirname(arguments[-2]),
                            os.path.basename(arguments[-2]))
    else:
        shutil.copytree(*arguments, symlinks=True)


def make_image(arguments):
    """hdiutil. The image tells what it was made of."""
    if arguments[0] == "create":
        folder = arguments[arguments.index("-srcfolder") + 1]
        with open(arguments[-1], "x", encoding="utf-8") as file:
            json.dump({name: os.readlink(path) if os.path.islink(path) else None
                       for name in sorted(os.listdir(folder)) for path in [os.path.join(folder, name)]}, file)


def read_value(arguments):
    """plutil."""
    with open(arguments[-1], "rb") as file:
        value = plistlib.load(file).get(arguments[1])
    if value is None:
        sys.exit(1)
    print(value)


def notarize(arguments):
    """xcrun."""
    if arguments[:2] == ["notarytool", "submit"]:
        print("Conducting pre-submission checks for Ovin and initiating connection to the Apple notary service...\n"
              "Submission ID received\n  id: 1234\nWaiting for processing to complete.\n"
              "Current status: In Progress...\nProcessing complete\n  id: 1234\n  status: " + os.environ["MAC_ANSWER"])


def tell_version(_):
    """sw_vers."""
    print("15.0")


TOOLS = {"ditto": pack, "hdiutil": make_image, "plutil": read_value, "xcrun": notarize, "sw_vers": tell_version}


def main(name, arguments):
    with open(os.environ["MAC_CALLS"], "a", encoding="utf-8") as file:
        file.write(json.dumps([name, *arguments]) + "\n")
    fails = os.environ.get("MAC_FAILS")
    if fails and fails in " ".join([name, *arguments]):
        sys.exit(1)
    TOOLS.get(name, lambda _: None)(arguments)


if __name__ == "__main__":
    main(os.path.basename(sys.argv[0]), sys.argv[1:])
