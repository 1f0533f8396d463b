"""What tools/install_packages asks of the package manager, with programs in its place that only write down how they were
called. That the real one installs them is for a fresh machine to show."""

import os
import stat
import subprocess
import tempfile
import unittest

TOOL = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "install_packages")

APT_GET = """#!/bin/bash
echo "$*" >>"$CALLS"
case "$*" in
*--print-uris*)
    echo "Reading package lists..."
    echo "'address/a.deb' a.deb 1500000 SHA256:0"
    echo "'address/b.deb' b.deb 700000 SHA256:0"
    ;;
update*) exit "${UPDATE_RESULT:-0}" ;;
*) exit "${INSTALL_RESULT:-0}" ;;
esac
"""
DPKG_QUERY = """#!/bin/bash
printf 'installed git\\ninstalled g++\\nconfig-files cmake\\n'
"""
SUDO = """#!/bin/bash
[ "$1" = -n ] && shift
exec "$@"
"""


class InstallPackages(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        for name, content in [("apt-get", APT_GET), ("dpkg-query", DPKG_QUERY), ("sudo", SUDO)]:
            path = os.path.join(self.folder.name, name)
            with open(path, "w", encoding="utf-8") as file:
                file.write(content)
            os.chmod(path, stat.S_IRWXU)

    def install(self, packages, **environment):
        """The result of the run and the calls of apt-get."""
        wanted = os.path.join(self.folder.name, "packages")
        calls = os.path.join(self.folder.name, "calls")
        with open(wanted, "w", encoding="utf-8") as file:
            file.write(packages)
        path = self.folder.name + os.pathsep + os.environ["PATH"]
        run = subprocess.run([TOOL, wanted], env={**os.environ, **environment, "PATH": path, "CALLS": calls},
                             stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        if not os.path.exists(calls):
            return run, []
        with open(calls, encoding="utf-8") as file:
            return run, file.read().splitlines()

    def test_no_package_manager_runs_when_nothing_is_missing(self):
        run, calls = self.install("# Tools\ngit\n\ng++  # and why\n")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(run.stdout, "All 2 packages are present.\n")
        self.assertEqual(calls, [])

    def test_only_what_is_missing_is_installed_and_without_recommendations(self):
        run, calls = self.install("git\nninja-build\ncmake\n")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertTrue(calls[0].startswith("update "), calls)
        self.assertIn("--no-install-recommends", calls[-1])
        self.assertTrue(calls[-1].endswith(" cmake ninja-build"), calls)

    def test_what_is_missing_and_its_size_are_said_first(self):
        run, _ = self.install("git\nninja-build\n")
        self.assertIn("Missing packages: ninja-build\n", run.stdout)
        self.assertIn("2 files, 2.2 MB to download", run.stdout)

    def test_lists_that_cannot_be_refreshed_do_not_stop_the_installation(self):
        run, calls = self.install("cmake\n", UPDATE_RESULT="100")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertTrue(calls[-1].endswith(" cmake"), calls)

    def test_an_installation_that_fails_is_a_failure(self):
        run, _ = self.install("cmake\n", INSTALL_RESULT="100")
        self.assertNotEqual(run.returncode, 0)


if __name__ == "__main__":
    unittest.main()
