"""What the tests of the macOS bundle share: stand-ins for the tools of a Mac, and a framework as Sparkle's looks."""

import json
import os
import subprocess
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
TOP = os.path.dirname(os.path.dirname(HERE))
SCRIPTS = os.path.join(TOP, "packaging", "macos")
TOOLS = ("codesign", "ditto", "hdiutil", "plutil", "spctl", "sw_vers", "xcrun")

# Files with their contents, and links with where they lead, in Sparkle.framework.
SPARKLE_FILES = ("Versions/B/Sparkle", "Versions/B/Autoupdate", "Versions/B/Updater.app/Contents/MacOS/Updater",
                 "Versions/B/XPCServices/Downloader.xpc/Contents/MacOS/Downloader",
                 "Versions/B/XPCServices/Installer.xpc/Contents/MacOS/Installer", "Versions/B/Resources/Info.plist",
                 "Versions/B/Headers/Sparkle.h", "Versions/B/PrivateHeaders/SPUAppcastItemStateResolver.h",
                 "Versions/B/Modules/module.modulemap")
SPARKLE_LINKS = {"Versions/Current": "B", "Sparkle": "Versions/Current/Sparkle", "Autoupdate": "Versions/Current/Autoupdate",
                 "Updater.app": "Versions/Current/Updater.app", "XPCServices": "Versions/Current/XPCServices",
                 "Resources": "Versions/Current/Resources", "Headers": "Versions/Current/Headers",
                 "PrivateHeaders": "Versions/Current/PrivateHeaders", "Modules": "Versions/Current/Modules"}


def write(path, content=""):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(content)


def make_sparkle(folder):
    framework = os.path.join(folder, "Sparkle.framework")
    for name in SPARKLE_FILES:
        write(os.path.join(framework, name), name)
    for name, target in SPARKLE_LINKS.items():
        os.symlink(target, os.path.join(framework, name))
    return framework


class MacStage(unittest.TestCase):
    """Each test has a folder of its own, whose tools note their calls."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="ovin-mac-")
        self.addCleanup(folder.cleanup)
        self.folder = os.path.realpath(folder.name)
        self.environment = {**os.environ, "MAC_CALLS": self.path("calls"), "MAC_ANSWER": "Accepted",
                            "PATH": self.path("tools") + os.pathsep + os.environ["PATH"], "TMPDIR": self.path("tmp")}
        os.mkdir(self.path("tmp"))
        os.mkdir(self.path("tools"))
        for tool in TOOLS:
            os.symlink(os.path.join(HERE, "mac_tools.py"), self.path("tools", tool))
        os.symlink(os.path.join(HERE, "mac_compiler"), self.path("tools", "c++"))

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    def run_command(self, *command, **more):
        return subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=240, check=False,
                              env={**self.environment, **more})

    def calls(self):
        """Since the last time that they were asked for."""
        if not os.path.exists(self.path("calls")):
            return []
        with open(self.path("calls"), encoding="utf-8") as file:
            calls = [json.loads(line) for line in file]
        os.remove(self.path("calls"))
        return calls
