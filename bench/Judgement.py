"""What was measured, what it is compared with, and whether a limit was kept; and that as a table."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Reference:
    """Measured in the same run as what it is compared with, and in the same unit."""

    name: str
    value: float


@dataclasses.dataclass(frozen=True)
class Row:
    """One figure; at most one of the limits is set."""

    measurement: str
    measured: float
    unit: str = "ms"  # "" counts something
    reference: Reference | None = None
    atMost: float | None = None
    atMostTimes: float | None = None  # the reference
    exactly: float | None = None

    @property
    def ratio(self):
        return self.measured / self.reference.value if self.reference and self.reference.value else None

    @property
    def isKept(self):
        """None without a limit."""
        if self.exactly is not None:
            return self.measured == self.exactly
        if self.atMost is not None:
            return self.measured <= self.atMost
        if self.atMostTimes is not None:
            # A reference of nothing says that something is broken.
            return self.ratio is not None and self.ratio <= self.atMostTimes
        return None

    @property
    def limit(self):
        if self.exactly is not None:
            return quantity(self.exactly, self.unit)
        if self.atMost is not None:
            return quantity(self.atMost, self.unit)
        return "" if self.atMostTimes is None else f"{self.atMostTimes:g} ×"


def quantity(value, unit):
    """With about three digits that count; long times in seconds."""
    if not unit:
        return f"{value:g}"
    if unit == "ms" and value >= 1000:
        value, unit = value / 1000, "s"
    decimals = 3 if value < 1 else 2 if value < 10 else 1 if value < 1000 else 0
    return f"{value:.{decimals}f} {unit}"


def ratioText(ratio):
    if ratio is None:
        return ""
    return f"{ratio:.2f}" if ratio >= 0.1 else f"{ratio:.2g}"


KEPT = {True: "yes", False: "**no**", None: ""}
HEAD = ("| measurement | reference | measured | ratio | limit | kept? | load |\n"
        "|---|---|---|---|---|---|---|\n")


def line(row, load):
    reference = f"{row.reference.name}: {quantity(row.reference.value, row.unit)}" if row.reference else ""
    cells = (row.measurement, reference, quantity(row.measured, row.unit), ratioText(row.ratio), row.limit, KEPT[row.isKept],
             load)
    return "| " + " | ".join(cells) + " |\n"


def failureLine(what, error, load):
    """A measurement that came to no result has kept no limit."""
    return f"| {what} | | failed: {' '.join(error.split()).replace('|', '/')} | | | **no** | {load} |\n"


def loadText(load):
    return f"{load[0]:.1f} → {load[1]:.1f}"
