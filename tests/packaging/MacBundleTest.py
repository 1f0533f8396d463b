"""The application that CMake makes on a Mac. Here compiler and signing are stand-ins; all else is as CMake does it there."""

import base64
import glob
import hashlib
import json
import os
import plistlib
import re
import stat
import unittest
import zipfile

from mac_stage import HERE, SCRIPTS, SPARKLE_FILES, SPARKLE_LINKS, TOP, MacStage, make_sparkle, write

KEY = base64.b64encode(bytes(range(32))).decode()
FEED = "https://feed.example/appcast.xml?a=<1>&b=\"2\""
FRAMEWORK = "Contents/Frameworks/Sparkle.framework/"


def is_for_compilers(name):
    return name.split("/")[-2 if name.startswith("Versions/") else 0] in ("Headers", "PrivateHeaders", "Modules") or \
        name in ("Headers", "PrivateHeaders", "Modules")


class MacBundle(MacStage):
    def setUp(self):
        super().setUp()
        os.mkdir(self.path("sparkle"))
        make_sparkle(self.path("sparkle"))
        self.archive = self.path("sparkle.zip")
        self.build = self.path("build")
        self.bundle = self.path("build", "Ovin.app")

    def pack(self, *places, license=True):
        """The framework at these places in an archive, as it is published."""
        with zipfile.ZipFile(self.archive, "w") as archive:
            if license:
                archive.writestr("LICENSE", "its license")
            for place in places:
                for folder, folders, files in os.walk(self.path("sparkle")):
                    for name in [*folders, *files]:
                        path = os.path.join(folder, name)
                        inside = os.path.join(place, os.path.relpath(path, self.path("sparkle")))
                        if os.path.islink(path):
                            entry = zipfile.ZipInfo(inside)
                            entry.create_system = 3
                            entry.external_attr = (stat.S_IFLNK | 0o777) << 16
                            archive.writestr(entry, os.readlink(path))
                        elif os.path.isfile(path):
                            archive.write(path, inside)
        with open(self.archive, "rb") as file:
            return hashlib.sha256(file.read()).hexdigest()

    def configure(self, preset, *options):
        return self.run_command("cmake", "--preset", preset, "-S", TOP, "-B", self.build, "-D",
                                f"CMAKE_TOOLCHAIN_FILE={HERE}/Darwin.cmake", "-Wno-dev", *options)

    def configure_with_archive(self, *options, places=("Sparkle.xcframework/macos-arm64_x86_64",), checksum=None,
                               license=True):
        packed = self.pack(*places, license=license)
        return self.configure("macos", "-D", f"OVIN_SPARKLE_ARCHIVE={self.archive}", "-D",
                              f"OVIN_SPARKLE_SHA256={checksum or packed}", *options)

    def succeed(self, done):
        self.assertEqual(done.returncode, 0, done.stdout[-2000:] + done.stderr)
        return done.stdout

    def make(self):
        return self.succeed(self.run_command("cmake", "--build", self.build))

    def compiled(self, source):
        """The arguments with which a source was compiled."""
        [path] = glob.glob(os.path.join(self.build, "**", "*.dir", "**", os.path.basename(source) + ".o"), recursive=True)
        with open(path, encoding="utf-8") as file:
            return file.read().splitlines()

    def description(self):
        with open(os.path.join(self.bundle, "Contents", "Info.plist"), "rb") as file:
            return plistlib.load(file)

    def signings(self):
        return [call for call in self.calls() if call[0] == "codesign"]

    def contents(self):
        """Files with None, and links with where they lead."""
        found = {}
        for folder, folders, files in os.walk(self.bundle):
            for name in [*folders, *files]:
                path = os.path.join(folder, name)
                if os.path.islink(path) or os.path.isfile(path):
                    found[os.path.relpath(path, self.bundle)] = os.readlink(path) if os.path.islink(path) else None
        return found

    def testTheApplicationIsComplete(self):
        self.succeed(self.configure_with_archive("-D", f"OVIN_UPDATE_KEY={KEY}"))
        self.make()
        expected = {"Contents/Info.plist": None, "Contents/MacOS/Ovin": None, "Contents/Resources/Ovin.icns": None,
                    "Contents/Resources/explainer-collapsed.png": None, "Contents/Resources/explainer-expanded.png": None}
        expected |= {FRAMEWORK + name: None for name in SPARKLE_FILES if not is_for_compilers(name)}
        expected |= {FRAMEWORK + name: to for name, to in SPARKLE_LINKS.items() if not is_for_compilers(name)}
        self.assertEqual(self.contents(), expected)

        # For both kinds of processors, with the framework where it lies in the bundle.
        with open(os.path.join(self.bundle, "Contents", "MacOS", "Ovin"), encoding="utf-8") as file:
            link = file.read().splitlines()
        architectures = [link[i + 1] for i, argument in enumerate(link) if argument == "-arch"]
        self.assertEqual(sorted(architectures), ["arm64", "x86_64"])
        self.assertIn("-mmacosx-version-min=13.0", link)
        self.assertIn("-Wl,-rpath,@executable_path/../Frameworks", link)
        self.assertFalse([argument for argument in link if argument.startswith("-Wl,-rpath,/")])

        # Objective-C++ is compiled as the C++ that the rest is, with counted references, and finds the framework's headers.
        for source in "app/mainMac.mm", "platform/macos/updates/MacUpdates.mm":
            compiled = self.compiled(source)
            self.assertTrue({"-std=c++20", "-std=c++2a"} & set(compiled), compiled)
            self.assertIn("-fobjc-arc", compiled)
            self.assertTrue([argument for argument in compiled if re.match(r"-F.*/macos-arm64_x86_64$", argument)], compiled)

        # It was signed when it was complete, for this machine, and by the script that has a test of its own.
        signed = self.signings()
        self.assertEqual(signed[-2][-3:], ["--entitlements", os.path.join(SCRIPTS, "OvinAdHoc.entitlements"), self.bundle])
        self.assertEqual(signed[-1], ["codesign", "--verify", "--deep", "--strict", "--verbose=2", self.bundle])

        # What has not changed is not signed again, and what has changed is.
        self.assertIn("no work to do", self.make())
        os.remove(os.path.join(self.bundle, "Contents", "MacOS", "Ovin"))
        self.make()
        self.assertEqual(self.signings(), signed)
        self.succeed(self.configure("macos", "-D", "OVIN_BUILD_NUMBER=8"))
        self.make()
        self.assertEqual(self.description()["CFBundleVersion"], "8")
        self.assertEqual(self.signings(), signed)

    def testTheDescriptionSaysWhatSystemAndUpdateFrameworkAskFor(self):
        self.succeed(self.configure("macos", "-D", f"OVIN_SPARKLE={self.path('sparkle', 'Sparkle.framework')}",
                                    "-D", f"OVIN_UPDATE_KEY={KEY}", "-D", f"OVIN_FEED_URL={FEED}", "-D",
                                    "OVIN_BUILD_NUMBER=7"))
        with open(os.path.join(TOP, "CMakeLists.txt"), encoding="utf-8") as file:
            version = file.read().split("project(Ovin VERSION ")[1].split()[0]
        # As JSON, in which true is not 1.
        self.assertEqual(*(json.dumps(values, indent=1, sort_keys=True) for values in (self.description(), {
            "CFBundleDevelopmentRegion": "en", "CFBundleDisplayName": "Ovin", "CFBundleExecutable": "Ovin",
            "CFBundleIconFile": "Ovin", "CFBundleIdentifier": "org.ovin.Ovin", "CFBundleInfoDictionaryVersion": "6.0",
            "CFBundleName": "Ovin", "CFBundlePackageType": "APPL", "CFBundleShortVersionString": version,
            "CFBundleSupportedPlatforms": ["MacOSX"], "CFBundleVersion": "7",
            "LSApplicationCategoryType": "public.app-category.utilities", "LSMinimumSystemVersion": "13.0",
            "LSUIElement": True, "NSAppTransportSecurity": {"NSAllowsLocalNetworking": True},
            "NSHighResolutionCapable": True, "NSPrincipalClass": "NSApplication",
            "NSHumanReadableCopyright": "Copyright © 2026 The Ovin authors. MIT License.",
            # Once a day, and never without asking.
            "SUAllowsAutomaticUpdates": False, "SUAutomaticallyUpdate": False, "SUEnableAutomaticChecks": True,
            "SUFeedURL": FEED, "SUPublicEDKey": KEY, "SUScheduledCheckInterval": 86400})))

    def testWithoutAKeyOrAFeedNothingIsSaidOfUpdates(self):
        for option in f"OVIN_FEED_URL={FEED}", f"OVIN_UPDATE_KEY={KEY}":
            self.succeed(self.configure("macos", "-D", f"OVIN_SPARKLE={self.path('sparkle', 'Sparkle.framework')}",
                                        "-U", "OVIN_FEED_URL", "-D", option))
            self.assertFalse([key for key in self.description() if key.startswith("SU")])

    def testWithoutUpdatesThereIsNoFrameworkAndAnIdentityIsHandedToTheSigning(self):
        identity = "Apple Development: Me (X)"
        self.succeed(self.configure("macos", "-D", "OVIN_UPDATES=OFF", "-D", f"OVIN_UPDATE_KEY={KEY}", "-D",
                                    f"OVIN_SIGNING_IDENTITY={identity}"))
        self.assertFalse([key for key in self.description() if key.startswith("SU")])
        self.make()
        self.assertFalse([name for name in self.contents() if "Frameworks" in name])
        sign = self.signings()[0]
        self.assertEqual(sign[sign.index("--sign") + 1], identity)
        self.assertIn(os.path.join(SCRIPTS, "Ovin.entitlements"), sign)

    def testTheTestsOfAMacAreBuiltAndFindTheFramework(self):
        # Neither library of the tests is here for a Mac; that they are found there is not seen here.
        for name, targets in (("GTest", ("gmock", "gtest_main")), ("ICU", ("uc", "i18n"))):
            lines = [f"add_library({name}::{target} INTERFACE IMPORTED)" for target in targets]
            write(self.path("modules", f"Find{name}.cmake"), "\n".join(lines))
        self.succeed(self.configure("macos-dev", "-D", f"OVIN_SPARKLE={self.path('sparkle', 'Sparkle.framework')}", "-D",
                                    f"CMAKE_MODULE_PATH={self.path('modules')}", "-D",
                                    # They are not run: what the compiler makes is text.
                                    "CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"))
        self.make()
        for program in ("contract/mac_contract_tests", "contract/mac-status-item", "macos/macos_tests"):
            with open(self.path("build", "tests", *program.split("/")), encoding="utf-8") as file:
                self.assertIn("-Wl,-rpath," + self.path("sparkle"), file.read().splitlines(), program)

    def testAnotherFrameworkThanTheOneExpectedIsRefused(self):
        done = self.configure_with_archive(checksum="0" * 64)
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("hash", done.stderr.lower())
        self.assertFalse(os.path.exists(self.bundle))

    def testAnArchiveWithoutTheFrameworkIsRefused(self):
        for places in ((), ("Sparkle.xcframework/macos-a", "Sparkle.xcframework/macos-b")):
            done = self.configure_with_archive(places=places)
            self.assertNotEqual(done.returncode, 0)
            self.assertIn(f"holds {len(places)} frameworks", done.stderr)

    def testAnArchiveOfTheFrameworkAloneIsTaken(self):
        self.succeed(self.configure_with_archive(license=False))

    def testTheDownloadIsOfAPinnedVersionAndChecksum(self):
        with open(os.path.join(TOP, "cmake", "OvinSparkle.cmake"), encoding="utf-8") as file:
            text = file.read()
        self.assertIn("set(version 2.6.4)", text)
        self.assertIn("eb3814726816ca2f09334ce562fff1b2cd0f7c16dd4e283256081f307accb9c4", text)


class Entitlements(unittest.TestCase):
    def testThereIsNoneButOneForBuildsThatAreSignedForThisMachine(self):
        for name, expected in (("Ovin", {}), ("OvinAdHoc", {"com.apple.security.cs.disable-library-validation": True})):
            with open(os.path.join(SCRIPTS, name + ".entitlements"), "rb") as file:
                self.assertEqual(plistlib.load(file), expected)


if __name__ == "__main__":
    unittest.main(verbosity=2)
