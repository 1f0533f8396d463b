"""What bench/run has collected, as tables and as the part of docs/benchmarks.md that it writes."""

import datetime
import json
import os
import textwrap

import Judgement
import Machine

BEGIN = "<!-- bench/run --write-docs writes from here -->"
END = "<!-- to here -->"


class Results:
    """The figures of the pieces, kept in a file, so that pieces can be measured one by one.

    Only figures of one machine stand beside one another: those of another one are dropped."""

    def __init__(self, path, machine, isFresh=False):
        self.path = path
        self.machine = machine
        self.pieces = {}
        if not isFresh and os.path.exists(path):
            with open(path, encoding="utf-8") as file:
                before = json.load(file)
            if machine is None or before["machine"] == machine:
                self.machine = before["machine"]
                self.pieces = before["pieces"]

    def add(self, name, entry):
        self.pieces[name] = entry

    def save(self, pieces):
        """With the judgements on the figures of these pieces."""
        rows = [{"piece": piece.name, "measurement": row.measurement, "unit": row.unit, "measured": row.measured,
                 "reference": row.reference and row.reference.name,
                 "reference value": row.reference and row.reference.value,
                 "ratio": row.ratio, "limit": row.limit or None, "kept": row.isKept}
                for piece in pieces if piece.name in self.pieces for row in rowsOf(piece, self.pieces[piece.name])]
        with open(self.path + ".new", "w", encoding="utf-8") as file:
            json.dump({"machine": self.machine, "pieces": self.pieces, "rows": rows}, file, indent=1)
        os.replace(self.path + ".new", self.path)


def rowsOf(piece, entry):
    return [] if entry["error"] else piece.rows(entry["figures"])


def isKept(piece, entry):
    """Whether a piece has come to a result, and every limit of it was kept."""
    return not entry["error"] and all(row.isKept is not False for row in rowsOf(piece, entry))


def tables(pieces, results):
    """One table for each group of pieces of which something was measured."""
    text = ""
    for group in dict.fromkeys(piece.group for piece in pieces):
        lines = ""
        for piece in pieces:
            entry = results.pieces.get(piece.name)
            if piece.group != group or entry is None:
                continue
            load = Judgement.loadText(entry["load"])
            if entry["error"]:
                lines += Judgement.failureLine(piece.what, entry["error"], load)
            lines += "".join(Judgement.line(row, load) for row in rowsOf(piece, entry))
        if lines:
            text += f"**{group}**\n\n{Judgement.HEAD}{lines}\n"
    return text


def dates(results):
    """The day of all measurements, or the first and the last."""
    days = sorted({entry["date"][:10] for entry in results.pieces.values()})
    written = [datetime.date.fromisoformat(day).strftime("%-d %B %Y") for day in (days[0], days[-1])]
    return written[0] if days[0] == days[-1] else f"{written[0]} to {written[1]}"


def introduction(pieces, results):
    text = f"Measured on {dates(results)} by `bench/run` on {Machine.sentence(results.machine)}."
    some = [name for name, entry in results.pieces.items() if entry["quick"]]
    if some:
        text += f" With few repetitions: {', '.join(some)}."
    missing = [piece.name for piece in pieces if piece.name not in results.pieces]
    if missing:
        text += f" Not measured: {', '.join(missing)}."
    return text


def summary(pieces, results):
    known = [piece for piece in pieces if piece.name in results.pieces]
    rows = [row for piece in known for row in rowsOf(piece, results.pieces[piece.name])]
    judged = [row for row in rows if row.isKept is not None]
    failed = sum(1 for piece in known if results.pieces[piece.name]["error"])
    text = f"{sum(1 for row in judged if row.isKept)} of {len(judged)} limits kept"
    return text + (f", {failed} measurements failed" if failed else "")


def markdown(pieces, results):
    head = textwrap.fill(f"{introduction(pieces, results)} {summary(pieces, results)}.", 125)
    return f"{head}\n\n{tables(pieces, results)}"


def withSection(document, text):
    """A document with this text between the markers; None if it does not have them, once and in order."""
    before, begin, rest = document.partition(BEGIN)
    _, end, after = rest.partition(END)
    if not begin or not end or BEGIN in after or END in after:
        return None
    return f"{before}{BEGIN}\n\n{text.strip()}\n\n{END}{after}"
