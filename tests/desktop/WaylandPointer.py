"""A pointer that a program moves under a Wayland compositor: by wlroots' virtual pointer, or KDE's fake input."""

import os
import socket
import struct
import time

BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}  # the kernel's numbers of what X calls 1, 2 and 3
DISPLAY, REGISTRY = 1, 2  # objects; the others are numbered as they come


def text(value):
    data = value.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


def fixed(value):
    return struct.pack("=i", round(value * 256))


class WaylandPointer:
    """Speaks the protocol of Wayland itself, without a library. Raises OSError where the compositor has no such pointer."""

    def __init__(self, width, height):
        self.size = width, height
        self.socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.socket.settimeout(10)
        self.socket.connect(os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ["WAYLAND_DISPLAY"]))
        self.received = b""
        self.newest = REGISTRY
        self.globals = {}
        self.send(DISPLAY, 1, struct.pack("=I", REGISTRY))
        self.roundTrip()
        self.isVirtual = "zwlr_virtual_pointer_manager_v1" in self.globals
        if self.isVirtual:
            manager = self.bind("zwlr_virtual_pointer_manager_v1", 1)
            self.pointer = self.number()
            self.send(manager, 0, struct.pack("=II", 0, self.pointer))
        elif "org_kde_kwin_fake_input" in self.globals:
            self.pointer = self.bind("org_kde_kwin_fake_input", 4)
            self.send(self.pointer, 0, text("a test") + text("clicks"))
        else:
            raise OSError(f"no pointer among {sorted(self.globals)}")
        self.roundTrip()

    def send(self, target, opcode, arguments=b""):
        self.socket.sendall(struct.pack("=IHH", target, opcode, 8 + len(arguments)) + arguments)

    def number(self):
        """That of a new object."""
        self.newest += 1
        return self.newest

    def bind(self, interface, version):
        number = self.number()
        self.send(REGISTRY, 0, struct.pack("=I", self.globals[interface]) + text(interface) +
                  struct.pack("=II", version, number))
        return number

    def roundTrip(self):
        """Waits until the compositor has dealt with everything so far."""
        callback = self.number()
        self.send(DISPLAY, 0, struct.pack("=I", callback))
        while True:
            target, opcode, data = self.next()
            if target == callback:
                return
            if target == DISPLAY and opcode == 0:
                raise OSError(f"the compositor refuses: {data[12:-1]}")
            if target == REGISTRY and opcode == 0:
                name, length = struct.unpack("=II", data[:8])
                self.globals[data[8:8 + length - 1].decode()] = name

    def next(self):
        """The next event: object, number, arguments."""
        while len(self.received) < 8 or len(self.received) < struct.unpack("=H", self.received[6:8])[0]:
            data = self.socket.recv(65536)
            if not data:
                raise OSError("the compositor has ended")
            self.received += data
        target, opcode, size = struct.unpack("=IHH", self.received[:8])
        data, self.received = self.received[8:size], self.received[size:]
        return target, opcode, data

    def now(self):
        return struct.pack("=I", int(time.monotonic() * 1000) & 0xFFFFFFFF)

    def point(self, x, y):
        if self.isVirtual:
            self.send(self.pointer, 1, self.now() + struct.pack("=IIII", x, y, *self.size))
            self.send(self.pointer, 4)
        else:
            self.send(self.pointer, 9, fixed(x) + fixed(y))
        self.roundTrip()

    def click(self, button):
        for state in (1, 0):
            number = struct.pack("=II", BUTTONS[button], state)
            if self.isVirtual:
                self.send(self.pointer, 2, self.now() + number)
                self.send(self.pointer, 4)
            else:
                self.send(self.pointer, 2, number)
            self.roundTrip()
