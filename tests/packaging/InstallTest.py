"""What `cmake --install` puts into a system: complete, valid by the tools of those who read it, and true of the programs.

Started with the build folder.
"""

import gzip
import os
import re
import subprocess
import sys
import tempfile
import unittest

BUILD = os.path.abspath(sys.argv.pop())
PROGRAMS = ("ovin", "ovin-items")


def run(*command, **more):
    return subprocess.run(command, capture_output=True, text=True, timeout=60, check=False, **more)


class InstalledFiles(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="ovin-install-")
        cls.addClassCleanup(cls.folder.cleanup)
        cls.root = cls.folder.name
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.root], check=True, capture_output=True, timeout=60)

    def path(self, *parts):
        return os.path.join(self.root, *parts)

    def page(self, program):
        with gzip.open(self.path("share", "man", "man1", program + ".1.gz"), "rt", encoding="utf-8") as file:
            return file.read()

    def help(self, program):
        # As on a build machine: without a display.
        environment = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        said = run(self.path("bin", program), "--help", env=environment)
        self.assertEqual(said.returncode, 0, said.stderr)
        return said.stdout

    def testNothingButTheProgramsAndTheirFilesIsInstalled(self):
        found = {os.path.relpath(os.path.join(folder, file), self.root)
                 for folder, _, files in os.walk(self.root) for file in files}
        icons = {name for name in found if name.startswith("share/icons/hicolor/")}
        self.assertEqual({name.split("/")[3] for name in icons},
                         {"symbolic"} | {f"{side}x{side}" for side in (16, 22, 24, 32, 48, 64, 128, 256, 512)})
        self.assertEqual({name.split("/", 4)[4] for name in icons},
                         {"apps/org.ovin.Ovin.png", "apps/org.ovin.Ovin-symbolic.svg", "apps/org.ovin.Ovin-done-symbolic.svg"})
        self.assertEqual(found - icons, {
            "bin/ovin", "bin/ovin-items", "lib/ovin/update-feed.so", "share/applications/org.ovin.Ovin.desktop",
            "share/metainfo/org.ovin.Ovin.metainfo.xml", "share/man/man1/ovin.1.gz", "share/man/man1/ovin-items.1.gz",
            "share/doc/ovin/changelog.gz", "share/doc/ovin/changelog.Debian.gz", "share/doc/ovin/copyright"})

    def testTheDesktopEntryIsValid(self):
        said = run("desktop-file-validate", self.path("share", "applications", "org.ovin.Ovin.desktop"))
        self.assertEqual((said.returncode, said.stdout), (0, ""))

    def testTheMetadataForSoftwareCentresIsValid(self):
        said = run("appstreamcli", "validate", "--no-net", self.path("share", "metainfo", "org.ovin.Ovin.metainfo.xml"))
        self.assertEqual(said.returncode, 0, said.stdout)

    def readPage(self, program):
        return run("man", "--warnings", "--local-file", "--troff-device=utf8",
                   self.path("share", "man", "man1", program + ".1.gz"), env={**os.environ, "MANROFFSEQ": "", "LC_ALL": "C.UTF-8"})

    def testTheManualPagesAreReadWithoutAWarning(self):
        for program in PROGRAMS:
            said = self.readPage(program)
            self.assertEqual((said.returncode, said.stderr), (0, ""), program)
            self.assertIn(program.upper(), said.stdout)

    def testTheManualPageCallsEntriesOfTheMenuByTheirNames(self):
        page = re.sub(".\b", "", self.readPage("ovin").stdout)  # letters are bold by being typed twice
        for title in ("Organize Menu Bar…", "Launch at Login"):
            self.assertRegex(page, rf"(?m)^ +{title}$")

    def testTheManualPagesNameEveryOptionThatTheProgramsHaveAndNoOther(self):
        for program in PROGRAMS:
            has = set(re.findall(r"--[a-z][a-z-]*", self.help(program)))
            # Qt offers this one by itself.
            has -= {"--help-all"}
            page = self.page(program).replace("\\-", "-")
            self.assertEqual(set(re.findall(r"--[a-z][a-z-]*", page.split("\n", 1)[1])), has, program)

    def testTheManualPageNamesEveryVariableThatTheProgramHeeds(self):
        top = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
        heeded = set()
        for folder in ("app", "discovery", "info", "ledge", "organize", "updates"):
            for name in os.listdir(os.path.join(top, folder)):
                if name.endswith(".cpp"):
                    with open(os.path.join(top, folder, name), encoding="utf-8") as file:
                        heeded |= set(re.findall(r'"(OVIN_[A-Z_]+)"', file.read()))
        self.assertGreater(len(heeded), 5)
        page = self.page("ovin")
        self.assertEqual({name for name in heeded if not re.search(rf"\b{name}\b", page)}, set())


if __name__ == "__main__":
    unittest.main(verbosity=2)
