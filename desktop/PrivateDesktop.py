"""What programs around and within a private desktop share: waiting within bounds, and finding its pieces."""

import os
import select
import time

BOUND = 30.0  # seconds; reached only by what is broken


def becomes(condition, bound=BOUND):
    """Whether the condition comes true within the bound."""
    deadline = time.monotonic() + bound
    while not condition():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.02)
    return True


def pidOf(piece):
    """The process id of a piece of the private desktop around this program; None if it has no such piece."""
    with open(os.environ["OVIN_DESKTOP_PIDS"], encoding="utf-8") as file:
        return next((int(line.split()[0]) for line in file if line.rstrip().endswith(" " + piece)), None)


def registered(reader, count, bound=BOUND):
    """How many of so many status items come to write to a pipe that they have registered: fewer when one of them takes
    longer than the bound, or all have ended."""
    total = 0
    while total < count and select.select([reader], [], [], bound)[0]:
        received = len(os.read(reader, 4096))
        if received == 0:
            break
        total += received
    return total


class Lines:
    """The lines that a process prints, each of them waited for within a bound."""

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
