"""packaging/macos: in which order and how the tools of a Mac are called. These tools are stand-ins here."""

import json
import os
import plistlib
import unittest

from mac_stage import SCRIPTS, MacStage, make_sparkle, write

IDENTITY = "Developer ID Application: Ovin (ABCDE12345)"
ENTITLEMENTS = os.path.join(SCRIPTS, "Ovin.entitlements")
AD_HOC_ENTITLEMENTS = os.path.join(SCRIPTS, "OvinAdHoc.entitlements")


class MacScripts(MacStage):
    def setUp(self):
        super().setUp()
        self.bundle = self.path("build folder", "Ovin.app")
        write(os.path.join(self.bundle, "Contents", "MacOS", "Ovin"))
        self.describe({"CFBundleShortVersionString": "2.1", "SUPublicEDKey": "key"})
        os.mkdir(os.path.join(self.bundle, "Contents", "Frameworks"))
        self.framework = make_sparkle(os.path.join(self.bundle, "Contents", "Frameworks"))

    def describe(self, values):
        with open(os.path.join(self.bundle, "Contents", "Info.plist"), "wb") as file:
            plistlib.dump(values, file)

    def script(self, name, *arguments, **more):
        return self.run_command(os.path.join(SCRIPTS, name), *arguments, **more)

    def succeed(self, name, *arguments):
        done = self.script(name, *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def expected_signing(self, identity, timestamp, entitlements):
        sign = ["codesign", "--force", "--sign", identity, "--options", "runtime", timestamp]
        current = os.path.join(self.framework, "Versions", "Current")
        return [
            [*sign, "--preserve-metadata=entitlements", os.path.join(current, "XPCServices", "Downloader.xpc")],
            [*sign, "--preserve-metadata=entitlements", os.path.join(current, "XPCServices", "Installer.xpc")],
            [*sign, os.path.join(current, "Autoupdate")],
            [*sign, os.path.join(current, "Updater.app")],
            [*sign, self.framework],
            [*sign, "--entitlements", entitlements, self.bundle],
            ["codesign", "--verify", "--deep", "--strict", "--verbose=2", self.bundle]]

    def testSigningGoesFromTheInsideOut(self):
        self.succeed("sign", "--identity", IDENTITY, self.bundle)
        self.assertEqual(self.calls(), self.expected_signing(IDENTITY, "--timestamp", ENTITLEMENTS))

    def testWithoutAnIdentityTheApplicationIsSignedForThisMachine(self):
        expected = self.expected_signing("-", "--timestamp=none", AD_HOC_ENTITLEMENTS)
        for arguments in ([self.bundle], ["--identity", "-", self.bundle + "/"]):
            self.succeed("sign", *arguments)
            self.assertEqual(self.calls(), expected)

    def testAnApplicationWithoutFrameworksIsSigned(self):
        for leave_folder in (True, False):
            with self.subTest(leave_folder=leave_folder):
                folder = os.path.dirname(self.framework)
                self.run_command("rm", "-r", self.framework if leave_folder else folder)
                self.succeed("sign", "--identity", IDENTITY, self.bundle)
                self.assertEqual(self.calls(), self.expected_signing(IDENTITY, "--timestamp", ENTITLEMENTS)[-2:])

    def testWhatNobodyKnowsHowToSignIsRefused(self):
        os.mkdir(os.path.join(os.path.dirname(self.framework), "Other.framework"))
        done = self.script("sign", "--identity", IDENTITY, self.bundle)
        self.assertEqual(done.returncode, 1)
        self.assertIn("Other.framework", done.stderr)
        self.assertNotIn(self.bundle, [call[-1] for call in self.calls()])

    def testSigningEndsAtTheFirstFailure(self):
        done = self.script("sign", "--identity", IDENTITY, self.bundle, MAC_FAILS="Current/Autoupdate")
        self.assertNotEqual(done.returncode, 0)
        self.assertEqual(len(self.calls()), 3)

    def testAnApplicationIsNotarizedAsAnArchiveAndTheAnswerAttached(self):
        self.succeed("notarize", "ovin-notary", self.bundle + "/")
        pack, submit, *rest = self.calls()
        archive = pack[-1]
        self.assertTrue(archive.endswith("/Ovin.zip") and archive.startswith(self.path("tmp")), archive)
        self.assertEqual(pack, ["ditto", "-c", "-k", "--keepParent", self.bundle, archive])
        self.assertEqual(submit, ["xcrun", "notarytool", "submit", archive, "--keychain-profile", "ovin-notary", "--wait"])
        self.assertEqual(rest, [["xcrun", "stapler", "staple", self.bundle], ["xcrun", "stapler", "validate", self.bundle],
                                ["spctl", "--assess", "--type", "execute", "--verbose=2", self.bundle]])
        self.assertEqual(os.listdir(self.path("tmp")), [])

    def testADiskImageIsNotarizedAsItIs(self):
        image = self.path("an image.dmg")
        write(image)
        self.succeed("notarize", "ovin-notary", image)
        self.assertEqual(self.calls(), [
            ["xcrun", "notarytool", "submit", image, "--keychain-profile", "ovin-notary", "--wait"],
            ["xcrun", "stapler", "staple", image], ["xcrun", "stapler", "validate", image],
            ["spctl", "--assess", "--type", "open", "--context", "context:primary-signature", "--verbose=2", image]])

    def testWhatAppleRefusesIsNotStapledAndTheReasonsAreShown(self):
        for answer, fails in (("Invalid", ""), ("Accepted", "notarytool submit")):
            with self.subTest(answer):
                image = self.path("Ovin.dmg")
                write(image)
                done = self.script("notarize", "ovin-notary", image, MAC_ANSWER=answer, MAC_FAILS=fails)
                self.assertEqual(done.returncode, 1)
                self.assertIn("was not accepted", done.stderr)
                calls = self.calls()
                self.assertFalse([call for call in calls if "stapler" in call])
                if not fails:
                    self.assertEqual(calls[-1], ["xcrun", "notarytool", "log", "1234", "--keychain-profile", "ovin-notary"])

    def testTheDiskImageHoldsTheApplicationAndTheWayToTheApplications(self):
        image = self.path("Ovin-2.1.dmg")
        write(image, "an older one")
        self.succeed("make_disk_image", "--identity", IDENTITY, self.bundle, image)
        calls = self.calls()
        work = os.path.dirname(calls[1][-1])
        self.assertEqual(calls, [
            ["codesign", "--verify", "--deep", "--strict", self.bundle],
            ["ditto", self.bundle, os.path.join(work, "Ovin.app")],
            ["hdiutil", "create", "-volname", "Ovin", "-srcfolder", work, "-fs", "HFS+", "-format", "UDZO", image],
            ["hdiutil", "verify", image],
            ["codesign", "--force", "--sign", IDENTITY, "--timestamp", image],
            ["codesign", "--verify", "--strict", image]])
        with open(image, encoding="utf-8") as file:
            self.assertEqual(json.load(file), {"Applications": "/Applications", "Ovin.app": None})
        self.assertEqual(os.listdir(self.path("tmp")), [])

    def testAnImageForThisMachineIsNotSigned(self):
        self.succeed("make_disk_image", self.bundle, self.path("Ovin.dmg"))
        self.assertEqual([call[0] for call in self.calls()], ["codesign", "ditto", "hdiutil", "hdiutil"])

    def testNoImageIsMadeOfAnApplicationWhoseSealIsBroken(self):
        image = self.path("Ovin.dmg")
        self.assertNotEqual(self.script("make_disk_image", self.bundle, image, MAC_FAILS="codesign --verify").returncode, 0)
        self.assertFalse(os.path.exists(image))
        self.assertEqual(os.listdir(self.path("tmp")), [])

    def testAReleaseIsSignedThenNotarizedThenPackedThenNotarized(self):
        said = self.succeed("release", IDENTITY, "ovin-notary", self.bundle, self.path("out"))
        image = self.path("out", "Ovin-2.1.dmg")
        self.assertEqual(said.splitlines()[-1], image)
        self.assertTrue(os.path.exists(image))
        steps = [(call[0], os.path.basename(call[-1])) if call[0] != "xcrun" else (call[1], call[2]) for call in self.calls()
                 if call[0] != "plutil"]
        notarized = [("notarytool", "submit"), ("stapler", "staple"), ("stapler", "validate")]
        self.assertEqual(steps, [
            *(("codesign", name) for name in ("Downloader.xpc", "Installer.xpc", "Autoupdate", "Updater.app",
                                              "Sparkle.framework", "Ovin.app", "Ovin.app")),
            ("ditto", "Ovin.zip"), *notarized, ("spctl", "Ovin.app"),
            ("codesign", "Ovin.app"), ("ditto", "Ovin.app"), ("hdiutil", "Ovin-2.1.dmg"), ("hdiutil", "Ovin-2.1.dmg"),
            ("codesign", "Ovin-2.1.dmg"), ("codesign", "Ovin-2.1.dmg"), *notarized, ("spctl", "Ovin-2.1.dmg")])

    def testWhatCannotBePublishedIsRefusedBeforeAnythingIsDone(self):
        self.assertEqual(self.script("release", "-", "ovin-notary", self.bundle, self.path("out")).returncode, 1)
        self.describe({"CFBundleShortVersionString": "2.1"})
        done = self.script("release", IDENTITY, "ovin-notary", self.bundle, self.path("out"))
        self.assertEqual(done.returncode, 1)
        self.assertIn("OVIN_UPDATE_KEY", done.stderr)
        self.assertEqual({call[0] for call in self.calls()}, {"plutil"})

    def testWrongArgumentsAreToldAndNothingIsDone(self):
        for script, arguments in (("sign", []), ("sign", ["--identity"]), ("notarize", ["profile"]),
                                  ("notarize", ["profile", self.path("calls")]), ("make_disk_image", [self.bundle]),
                                  ("release", [IDENTITY, "profile", self.bundle])):
            done = self.script(script, *arguments)
            self.assertIn(done.returncode, (1, 2), script)
            self.assertTrue(done.stderr, script)
        self.assertEqual(self.script("sign", self.path("tools")).returncode, 1)
        self.assertEqual(self.calls(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
