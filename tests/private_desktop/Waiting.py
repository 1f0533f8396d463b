"""What the tests of this folder share: waiting within bounds."""

import os
import select
import time

BOUND = 20.0  # seconds; reached only by what is broken


def becomes(condition, bound=BOUND):
    """Whether the condition comes true within the bound."""
    deadline = time.monotonic() + bound
    while not condition():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.01)
    return True


class Lines:
    """The lines that a process prints, each of them waited for at most `BOUND`."""

    def __init__(self, stream):
        self.descriptor = stream.fileno()
        self.buffer = b""

    def next(self, bound=BOUND):
        """The next line, or None if there is none within the bound."""
        deadline = time.monotonic() + bound
        while b"\n" not in self.buffer:
            rest = deadline - time.monotonic()
            if rest <= 0 or not select.select([self.descriptor], [], [], rest)[0]:
                return None
            received = os.read(self.descriptor, 65536)
            if not received:
                return None
            self.buffer += received
        line, _, self.buffer = self.buffer.partition(b"\n")
        return line.decode()

    def all(self, count, bound=BOUND):
        return [self.next(bound) for _ in range(count)]
