"""tools/release: keys, signatures and feeds."""

import base64
import os
import stat
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

RELEASE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "tools", "release")
SPARKLE = "{http://www.andymatuschak.org/xml-namespaces/sparkle}"


class Release(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.key = self.path("key.pem")
        self.package = self.path("Ovin-2.0.dmg")
        self.write("Ovin-2.0.dmg", "a package")

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)

    def run_tool(self, *arguments):
        return subprocess.run([sys.executable, RELEASE, *arguments], capture_output=True, text=True, check=False)

    def output(self, *arguments):
        result = self.run_tool(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout

    def item(self, *options):
        self.output("key", self.key)
        return self.output("item", self.key, self.package, "--version", "200", "--short-version", "2.0", "--url",
                           "https://ovin.example/a?b&c=\"d\"", *options)

    def test_a_key_is_private_and_kept(self):
        public = self.output("key", self.key)
        self.assertEqual(stat.S_IMODE(os.stat(self.key).st_mode), 0o600)
        self.assertEqual(len(base64.b64decode(public)), 32)
        self.assertEqual(self.output("key", self.key), public)

    def test_signatures_are_of_64_bytes_and_always_the_same(self):
        self.output("key", self.key)
        signature = self.output("sign", self.key, self.package)
        self.assertEqual(len(base64.b64decode(signature)), 64)
        self.assertEqual(self.output("sign", self.key, self.package), signature)
        self.write("Ovin-2.0.dmg", "b package")
        self.assertNotEqual(self.output("sign", self.key, self.package), signature)

    def test_a_feed_holds_what_was_said(self):
        self.write("notes.txt", "Faster & <nicer>\n")
        self.write("item.xml", self.item("--notes", self.path("notes.txt"), "--minimum-system", "13.0", "--phased", "3600",
                                         "--critical", "--date", "0"))
        root = ElementTree.fromstring(self.output("feed", "Ovin & Co", self.path("item.xml"), self.path("item.xml")))
        self.assertEqual(root.findtext("channel/title"), "Ovin & Co")
        items = root.findall("channel/item")
        self.assertEqual(len(items), 2)
        self.assertEqual({child.tag.replace(SPARKLE, "sparkle:"): child.text for child in items[0]},
                         {"title": "2.0", "pubDate": "Thu, 01 Jan 1970 00:00:00 -0000", "sparkle:version": "200",
                          "sparkle:shortVersionString": "2.0", "sparkle:minimumSystemVersion": "13.0",
                          "sparkle:phasedRolloutInterval": "3600", "sparkle:criticalUpdate": None,
                          "description": "Faster & <nicer>", "enclosure": None})
        self.assertEqual(items[0].find("description").get(SPARKLE + "format"), "plain-text")
        enclosure = items[0].find("enclosure")
        self.assertEqual(enclosure.get("url"), "https://ovin.example/a?b&c=\"d\"")
        self.assertEqual(enclosure.get("length"), "9")
        self.assertEqual(set(enclosure.keys()), {"url", "length", "type", SPARKLE + "edSignature"})
        self.assertEqual(enclosure.get(SPARKLE + "edSignature"), self.output("sign", self.key, self.package).strip())

    def test_an_item_for_linux_says_where_to_get_it_and_is_none_for_macos(self):
        self.write("item.xml", self.output("linux-item", "--version", "200", "--short-version", "2.0", "--link",
                                           "https://ovin.example/a?b&c", "--date", "0"))
        item = ElementTree.fromstring(self.output("feed", "Ovin", self.path("item.xml"))).find("channel/item")
        self.assertEqual({child.tag.replace(SPARKLE, "sparkle:"): child.text for child in item},
                         {"title": "2.0", "pubDate": "Thu, 01 Jan 1970 00:00:00 -0000", "sparkle:version": "200",
                          "sparkle:shortVersionString": "2.0", "link": "https://ovin.example/a?b&c", "enclosure": None})
        self.assertEqual(item.find("enclosure").get(SPARKLE + "os"), "linux")

    def test_mistakes_are_told(self):
        self.output("key", self.key)
        subprocess.run(["openssl", "genpkey", "-algorithm", "x25519", "-out", self.path("other.pem")], check=True)
        item = ["--version", "1", "--short-version", "1"]
        for arguments in (["sign", self.path("missing.pem"), self.package], ["sign", self.key, self.path("missing")],
                          ["sign", self.package, self.package], ["key", self.path("missing/key.pem")],
                          ["sign", self.path("other.pem"), self.package],
                          ["item", self.key, self.package, *item, "--url", "http://ovin.example/a"],
                          ["linux-item", *item, "--link", "file:///a"]):
            result = self.run_tool(*arguments)
            self.assertEqual((result.returncode, result.stdout), (1, ""), arguments)
            self.assertIn("tools/release: ", result.stderr)


if __name__ == "__main__":
    unittest.main()
