"""Where the typings of the system's interfaces are, which an ordinary package has."""

import hashlib
import os
import shutil
import subprocess

PACKAGE = "@nativescript/macos-node-api"


class NotInstalled(Exception):
    pass


def folder(root):
    """Installs them below build/ with npm, exactly those of the lock file, unless they are there."""
    source = os.path.join(root, "tests", "macos_sdk")
    place = os.path.join(root, "build", "macos-typings")
    mark = os.path.join(place, "installed")
    with open(os.path.join(source, "package-lock.json"), "rb") as file:
        wanted = hashlib.sha256(file.read()).hexdigest()
    if not os.path.exists(mark) or open(mark, encoding="utf-8").read() != wanted:
        install(source, place)
        with open(mark, "w", encoding="utf-8") as file:
            file.write(wanted)
    return os.path.join(place, "node_modules", PACKAGE, "types")


def install(source, place):
    os.makedirs(place, exist_ok=True)
    for name in ("package.json", "package-lock.json"):
        shutil.copy(os.path.join(source, name), place)
    try:
        # Only texts are wanted of the package: nothing of it may run.
        done = subprocess.run(["npm", "ci", "--ignore-scripts", "--no-audit", "--no-fund"], cwd=place, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300, check=False)
        output, failed = done.stdout, done.returncode != 0
    except (OSError, subprocess.TimeoutExpired) as error:
        output, failed = str(error), True
    if failed:
        raise NotInstalled(f"The typings could not be installed with npm ci:\n{output}\n"
                           "Without a network, check the rest with tools/check_macos --without-typings.")
