"""Icons that no program should name, made anew in a folder: each function returns the path of one."""

import ctypes
import os
import struct
import threading
import time
import zlib

COLOUR = (0xC0, 0x10, 0x90)
HEAD = b'<svg xmlns="http://www.w3.org/2000/svg" width="22" height="22">'

libc = ctypes.CDLL(None, use_errno=True)


def write(path, *pieces):
    with open(path, "wb") as file:
        file.writelines(pieces)
    return path


def plain(folder, name):
    """An honest one of that colour."""
    return write(os.path.join(folder, f"{name}.svg"), HEAD, b'<rect width="22" height="22" fill="#c01090"/></svg>')


def bomb(folder, name):
    """Some MB that inflate to 1.5 GiB."""
    packer = zlib.compressobj(9, wbits=31)
    blanks = bytes(1 << 20).replace(b"\0", b" ")
    return write(os.path.join(folder, name), packer.compress(HEAD), *(packer.compress(blanks) for _ in range(1536)),
                 packer.compress(b"</svg>"), packer.flush())


def large(folder):
    """Nearly as large as is read, and laborious."""
    return write(os.path.join(folder, "large.svg"), HEAD, b'<path d="M0 0L22 9L3 22z" fill="#00f"/>' * 200_000, b"</svg>")


def pipe(folder):
    path = os.path.join(folder, "pipe.png")
    os.mkfifo(path)
    return path


class Swapped:
    """A path that is a picture at one moment and a pipe at the next."""

    def __init__(self, folder, pause=0.0):
        self.pause = pause
        self.path = os.path.join(folder, "swapped.svg")
        self.others = [plain(folder, "one"), os.path.join(folder, "other")]
        os.mkfifo(self.others[1])

    def __enter__(self):
        self.isOver = False
        self.thread = threading.Thread(target=self.swap)
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.isOver = True
        self.thread.join()

    def swap(self):
        new = self.path + ".new"
        while not self.isOver:
            for other in self.others:
                os.link(other, new)
                os.rename(new, self.path)
                time.sleep(self.pause)


class SilentFiles:
    """A file system that never answers; one that takes questions even keeps those who ask from being killed. OSError where none
    can be made."""

    def __init__(self, folder, takesQuestions=False):
        self.folder = os.path.join(folder, "silent")
        self.path = os.path.join(self.folder, "icon.png")
        os.mkdir(self.folder)
        self.device = os.open("/dev/fuse", os.O_RDWR | os.O_CLOEXEC)
        options = f"fd={self.device},rootmode=40000,user_id={os.getuid()},group_id={os.getgid()}"
        if libc.mount(b"ovin-test", self.folder.encode(), b"fuse", 6, options.encode()) != 0:  # no devices, no set-user-ID
            os.close(self.device)
            raise OSError(ctypes.get_errno(), "mount")
        first = struct.unpack_from("<IIQ", os.read(self.device, 1 << 17))[2]
        os.write(self.device, struct.pack("<IiQIIIIHHIIHH32x", 80, 0, first, 7, 31, 0, 0, 0, 0, 4096, 1, 1, 0))
        if takesQuestions:
            threading.Thread(target=self.take, daemon=True).start()

    def __enter__(self):
        return self

    def take(self):
        try:
            while os.read(self.device, 1 << 17):
                pass
        except OSError:
            pass  # it is over

    def __exit__(self, *_):
        libc.umount2(self.folder.encode(), 3)  # ends all questions, and goes even if it is in use
        os.close(self.device)


def readers():
    """The processes of Ovin's on this desktop that read icons."""
    found, own = [], os.environ["OVIN_DESKTOP_DIR"].encode()
    for pid in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{pid}/comm", "rb") as name, open(f"/proc/{pid}/environ", "rb") as environment:
                if name.read() == b"ovin-icons\n" and own in environment.read():
                    found.append(int(pid))
        except OSError:
            continue  # it has ended meanwhile
    return found


def memory(pid):
    """In MiB; 0 for one that has ended."""
    try:
        with open(f"/proc/{pid}/statm", "rb") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE") >> 20
    except OSError:
        return 0
