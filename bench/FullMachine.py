#!/usr/bin/python3
"""Makes a folder of data like that of a machine on which much is installed: 500 desktop entries, translated as widely as real
ones are, and five icon themes.

    bench/FullMachine.py FOLDER && export XDG_DATA_DIRS=FOLDER

The same each time. Programs that are given no theme take "hicolor"; here it inherits the four others, so that who looks for
an icon looks into all of them.
"""

import os
import struct
import sys
import zlib

ENTRIES, THEMES, NAMES = 500, 5, 20
SIZES = (16, 22, 24, 32, 48, 64, 128, 256)
CONTEXTS = ("apps", "status", "actions")
LANGUAGES = """ar bg bn bs ca cs da de el en_GB eo es et eu fa fi fr gl he hi hr hu id it ja ka kk ko lt lv nb nl nn pa pl pt
    pt_BR ro ru sk sl sr sv ta th tr ug uk vi zh_CN zh_TW""".split()


def write(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)


def entry(number):
    lines = ["[Desktop Entry]", "Type=Application", "Version=1.0"]
    for key, text in (("Name", f"Application {number}"), ("Comment", f"Opens documents of kind {number} and prints them")):
        lines += [f"{key}={text}", *(f"{key}[{language}]={text} ({language})" for language in LANGUAGES)]
    lines += [f"Exec=application-{number} %U", f"Icon=apps-{number % NAMES}", "Terminal=false", "Categories=Office;Viewer;",
              "MimeType=" + "".join(f"application/x-kind-{number}-{kind};" for kind in range(8))]
    # One in ten is installed without the program that it is for.
    lines += [f"TryExec=missing-{number}"] if number % 10 == 0 else []
    return "\n".join([*lines, "Actions=new;", "", "[Desktop Action new]", "Name=New", f"Exec=application-{number} --new", ""])


def picture(side, colour):
    """A PNG of one colour."""

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    rows = (b"\0" + bytes((*colour, 255)) * side) * side
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def theme(folder, name, inherits, colour):
    folders = [(size, context) for size in SIZES for context in CONTEXTS]
    lines = ["[Icon Theme]", f"Name={name}", "Comment=Made for measurements", f"Inherits={','.join(inherits)}",
             "Directories=" + ",".join(f"{size}x{size}/{context}" for size, context in folders)]
    for size, context in folders:
        lines += ["", f"[{size}x{size}/{context}]", f"Size={size}", f"Context={context}", "Type=Fixed"]
        for number in range(NAMES):
            write(f"{folder}/icons/{name}/{size}x{size}/{context}/{context}-{number}.png", picture(size, colour))
    write(f"{folder}/icons/{name}/index.theme", "\n".join([*lines, ""]).encode())


def make(folder):
    if os.path.exists(f"{folder}/complete"):
        return
    for number in range(ENTRIES):
        write(f"{folder}/applications/org.example.Application{number}.desktop", entry(number).encode())
    others = [f"Theme{number}" for number in range(1, THEMES)]
    for number, name in enumerate(["hicolor", *others]):
        theme(folder, name, [] if number else others, (40 * number, 90, 200))
    # What the desktop's own services need of the real one.
    for name in ("glib-2.0", "mime"):
        os.symlink(f"/usr/share/{name}", f"{folder}/{name}")
    write(f"{folder}/complete", b"")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    make(sys.argv[1])
