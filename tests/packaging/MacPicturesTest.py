"""The pictures of macOS: the icon's file is complete and well formed, and all are what the programs draw.

Started with the build folder.
"""

import os
import struct
import subprocess
import sys
import tempfile
import unittest

BUILD = os.path.abspath(sys.argv.pop())
TOP = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(TOP, "resources"))
import pack_icns

# As the system names them, with the pixels to a side.
OLD_COLOURS = {"is32": 16, "il32": 32}
OLD_COVERAGE = {"s8mk": 16, "l8mk": 32}
PNGS = {"ic11": 32, "ic12": 64, "ic07": 128, "ic13": 256, "ic08": 256, "ic14": 512, "ic09": 512, "ic10": 1024}
# Another version of the drawing library may round otherwise.
SAME_TO_THE_EYE = 2


def program(name):
    return os.path.join(BUILD, "resources", name)


def elements(content):
    """Type and content of each, in the order of the file; nothing may be left over."""
    kind, length = struct.unpack_from(">4sI", content)
    assert (kind, length) == (b"icns", len(content)), (kind, length, len(content))
    found, at = [], 8
    while at < len(content):
        kind, length = struct.unpack_from(">4sI", content, at)
        assert 8 < length <= len(content) - at, (kind, length)
        found.append((kind.decode(), content[at + 8:at + length]))
        at += length
    return found


def unpacked(content):
    values, at = bytearray(), 0
    while at < len(content):
        count, at = content[at], at + 1
        if count < 128:
            values += content[at:at + count + 1]
            at += count + 1
        else:
            values += content[at:at + 1] * (count - 125)
            at += 1
    return bytes(values)


def difference(first, second):
    """The largest of any channel of any pixel."""
    assert len(first) == len(second), (len(first), len(second))
    return max(abs(a - b) for a, b in zip(first, second))


def picture_difference(first, second):
    """Of two PNG files. Equal files need no look at their pixels."""
    return 0 if first == second else difference(pack_icns.png_pixels(first), pack_icns.png_pixels(second))


def content_of(*path):
    with open(os.path.join(*path), "rb") as file:
        return file.read()


class MacPictures(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="ovin-pictures-")
        cls.addClassCleanup(folder.cleanup)
        cls.drawn = folder.name
        subprocess.run([program("draw_icon"), "macos", cls.drawn, *map(str, pack_icns.SIDES)], check=True, timeout=60)
        subprocess.run([program("draw_explainers"), cls.drawn], check=True, timeout=60)
        cls.icon = dict(elements(content_of(TOP, "resources", "macos", "Ovin.icns")))

    def testTheIconHasEverySizeOnce(self):
        kinds = [kind for kind, _ in elements(content_of(TOP, "resources", "macos", "Ovin.icns"))]
        self.assertEqual(sorted(kinds), sorted([*OLD_COLOURS, *OLD_COVERAGE, *PNGS]))

    def testEachPictureOfTheIconHasThePixelsThatItsTypePromises(self):
        for kind, side in PNGS.items():
            self.assertEqual(struct.unpack_from(">II", self.icon[kind], 16), (side, side), kind)
        for kind, side in OLD_COLOURS.items():
            self.assertEqual(len(unpacked(self.icon[kind])), 3 * side * side, kind)
        for kind, side in OLD_COVERAGE.items():
            self.assertEqual(len(self.icon[kind]), side * side, kind)

    def testTheIconIsWhatTheProgramDraws(self):
        for kind, side in PNGS.items():
            drawn = content_of(self.drawn, f"{side}.png")
            self.assertLessEqual(picture_difference(self.icon[kind], drawn), SAME_TO_THE_EYE, kind)
        for (colours, side), coverage in zip(OLD_COLOURS.items(), OLD_COVERAGE):
            planes = unpacked(self.icon[colours]) + self.icon[coverage]
            pixels = pack_icns.png_pixels(content_of(self.drawn, f"{side}.png"))
            drawn = b"".join(pixels[channel::4] for channel in range(4))
            self.assertLessEqual(difference(planes, drawn), SAME_TO_THE_EYE, colours)

    def testTheExplainersAreWhatTheProgramDraws(self):
        for name in ("explainer-collapsed.png", "explainer-expanded.png"):
            kept = content_of(TOP, "resources", "macos", name)
            self.assertLessEqual(picture_difference(kept, content_of(self.drawn, name)), SAME_TO_THE_EYE, name)

    def testTheExplainersSayThatTheyHaveTwoPixelsForEachPoint(self):
        for name in ("explainer-collapsed.png", "explainer-expanded.png"):
            chunks = pack_icns.png_chunks(content_of(TOP, "resources", "macos", name))
            # A point is 1/72 inch, and 1 says that the numbers are of pixels to the metre.
            self.assertEqual(struct.unpack(">IIB", chunks[b"pHYs"]), (5669, 5669, 1), name)
            self.assertEqual(struct.unpack_from(">II", chunks[b"IHDR"]), (2 * 416, 2 * 60), name)


class Packing(unittest.TestCase):
    def pack(self, change):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([program("draw_icon"), "macos", folder, *map(str, pack_icns.SIDES)], check=True, timeout=60)
            change(folder)
            icon = os.path.join(folder, "icon.icns")
            tool = os.path.join(TOP, "resources", "pack_icns.py")
            said = subprocess.run([sys.executable, "-B", tool, icon, folder], capture_output=True, text=True, timeout=60,
                                  check=False)
            return said.returncode, said.stderr, os.path.exists(icon)

    def testWhatIsNoSuchPictureIsRefused(self):
        def damage(folder):
            with open(os.path.join(folder, "64.png"), "r+b") as file:
                file.seek(200)
                file.write(b"????")

        def swap(folder):
            with open(os.path.join(folder, "64.png"), "wb") as file:
                file.write(content_of(folder, "128.png"))

        def remove(folder):
            os.remove(os.path.join(folder, "16.png"))

        changes = {"a damaged PNG file": damage, "128 pixels to a side instead of 64": swap, "No such file": remove}
        for message, change in changes.items():
            with self.subTest(message):
                status, said, is_there = self.pack(change)
                self.assertEqual((status, is_there), (1, False))
                self.assertIn(message, said)

    def testRunsOfEveryLengthComeBack(self):
        for length in (1, 2, 3, 4, 127, 128, 129, 130, 131, 132, 133, 260, 261, 262, 1000):
            for values in (bytes(length), bytes(i % 251 for i in range(length)),
                           bytes(7) + bytes(i % 2 for i in range(length)), bytes(i // 2 % 256 for i in range(length))):
                self.assertEqual(unpacked(pack_icns.runs(values)), values, length)

    def testRunsAreShorterThanWhatTheyStandFor(self):
        self.assertEqual(pack_icns.runs(bytes(130)), b"\xff\x00")
        self.assertEqual(pack_icns.runs(b"\x05\x06\x06\x06"), b"\x00\x05\x80\x06")


if __name__ == "__main__":
    unittest.main(verbosity=2)
