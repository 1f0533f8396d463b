#!/usr/bin/env python3
"""Packs drawings of an icon into the one file that macOS wants.

    resources/pack_icns.py ICON.icns FOLDER

FOLDER holds 16.png, 32.png, 64.png, 128.png, 256.png, 512.png and 1024.png, of as many pixels to a side.

The file is a sequence of elements, each with a type of four letters, its length and its content: pictures of 16, 32, 128,
256 and 512 points, each with one pixel and with two for each point. PNG files are taken as they are, but for those of 16
and 32 points and as many pixels. The system does not show such everywhere: they are in the older form, colours and coverage
apart.
"""

import itertools
import os
import struct
import sys
import zlib

SIDES = (16, 32, 64, 128, 256, 512, 1024)
PNG_TYPES = ((b"ic11", 32), (b"ic12", 64), (b"ic07", 128), (b"ic13", 256), (b"ic08", 256), (b"ic14", 512), (b"ic09", 512),
             (b"ic10", 1024))
OLD_TYPES = ((b"is32", b"s8mk", 16), (b"il32", b"l8mk", 32))
PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"
CHANNELS = 4


class Failure(Exception):
    pass


def png_chunks(png):
    """The chunks by their names; those of the same name joined."""
    if not png.startswith(PNG_SIGNATURE):
        raise Failure("no PNG file")
    chunks, at = {}, len(PNG_SIGNATURE)
    while at + 12 <= len(png):
        length, name = struct.unpack_from(">I4s", png, at)
        content = png[at + 8:at + 8 + length]
        if struct.unpack_from(">I", png, at + 8 + length)[0] != zlib.crc32(name + content):
            raise Failure("a damaged PNG file")
        chunks[name] = chunks.get(name, b"") + content
        at += 12 + length
    return chunks


def png_side(chunks):
    """Of a square picture."""
    width, height, *form = struct.unpack(">IIBBBBB", chunks[b"IHDR"])
    if width != height:
        raise Failure("not a square")
    if form != [8, 6, 0, 0, 0]:
        raise Failure("not eight bits for each of red, green, blue and coverage, or interlaced")
    return width


def nearest(left, above, corner):
    """Of the three the one that is nearest to what they promise together: how PNG calls it, Paeth's."""
    promise = left + above - corner
    return min((left, above, corner), key=lambda value: abs(promise - value))


PREDICTIONS = (lambda left, above, corner: 0, lambda left, above, corner: left, lambda left, above, corner: above,
               lambda left, above, corner: (left + above) // 2, nearest)


def unfiltered(data, width, height):
    """Rows of pixels, of which a PNG has only said how they differ from what was to be expected."""
    stride = width * CHANNELS
    before, rows = bytes(stride), []
    for start in range(0, height * (stride + 1), stride + 1):
        predict = PREDICTIONS[data[start]]
        row = bytearray(data[start + 1:start + 1 + stride])
        for i in range(stride):
            left, corner = (row[i - CHANNELS], before[i - CHANNELS]) if i >= CHANNELS else (0, 0)
            row[i] = (row[i] + predict(left, before[i], corner)) & 0xFF
        rows.append(bytes(row))
        before = row
    return rows


def png_pixels(png):
    """Red, green, blue and coverage of all pixels, row by row from the top."""
    chunks = png_chunks(png)
    width, height = struct.unpack_from(">II", chunks[b"IHDR"])
    return b"".join(unfiltered(zlib.decompress(chunks[b"IDAT"]), width, height))


def runs(values):
    """Packed: a byte below 128 and one value more than it says; or a byte from 128 on and one value, 125 times fewer than it
    says to be repeated."""
    packed, loose = bytearray(), bytearray()

    def put_loose():
        for start in range(0, len(loose), 128):
            part = loose[start:start + 128]
            packed.append(len(part) - 1)
            packed.extend(part)
        loose.clear()

    for value, group in itertools.groupby(values):
        count = len(list(group))
        while count >= 3:
            put_loose()
            packed.extend((min(count, 130) + 125, value))
            count -= min(count, 130)
        loose.extend([value] * count)
    put_loose()
    return bytes(packed)


def element(kind, content):
    return kind + struct.pack(">I", 8 + len(content)) + content


def icns(pictures):
    """The file, of PNG files by their sides."""
    for side in SIDES:
        found = png_side(png_chunks(pictures[side]))
        if found != side:
            raise Failure(f"{found} pixels to a side instead of {side}")
    elements = []
    for colours, coverage, side in OLD_TYPES:
        pixels = png_pixels(pictures[side])
        elements.append(element(colours, b"".join(runs(pixels[channel::CHANNELS]) for channel in range(3))))
        elements.append(element(coverage, pixels[3::CHANNELS]))
    elements += [element(kind, pictures[side]) for kind, side in PNG_TYPES]
    return element(b"icns", b"".join(elements))


def main(arguments):
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    try:
        pictures = {}
        for side in SIDES:
            with open(os.path.join(arguments[1], f"{side}.png"), "rb") as file:
                pictures[side] = file.read()
        packed = icns(pictures)
        with open(arguments[0], "wb") as file:
            file.write(packed)
    except (Failure, OSError) as error:
        print(f"resources/pack_icns.py: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
