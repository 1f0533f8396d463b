"""The rows of docs/macos.md, and the page that says of each what was seen."""

import dataclasses
import os
import re

ROW = re.compile(r"^\| `(?P<name>[a-z-]+)` \| (?P<must>[^|]+) \|[^|]*\|$", re.MULTILINE)


class Failed(Exception):
    """What was seen is not what must be."""


class NotTried(Exception):
    """Nothing can be said, for this reason."""


@dataclasses.dataclass
class Row:
    name: str
    must: str
    result: str = "not tried"
    seen: str = "The kit did not get that far."


def read_rows(root):
    with open(os.path.join(root, "docs", "macos.md"), encoding="utf-8") as file:
        return [Row(match["name"], match["must"]) for match in ROW.finditer(file.read())]


def text_of(seen):
    """As a cell of a table can hold it."""
    return re.sub(r"([\\`*<|])", r"\\\1", re.sub(r"\s*\n\s*", "; ", str(seen).strip())) or "nothing"


def write(folder, machine, rows, pictures):
    """`pictures` are names of files in the folder."""
    counts = [f"{sum(row.result == result for row in rows)} {result}" for result in ("passed", "failed", "not tried")]
    lines = [f"# First day on a Mac: {machine}", "", ", ".join(counts) + ".", "",
             "| row | what must hold | result | what was seen |", "|---|---|---|---|"]
    lines += [f"| `{row.name}` | {row.must} | {'**failed**' if row.result == 'failed' else row.result} | {text_of(row.seen)} |"
              for row in rows]
    lines += ["", "Logs are beside this page."]
    for name in pictures:
        lines += ["", f"![{name}]({name})"]
    with open(os.path.join(folder, "page.md"), "w", encoding="utf-8") as file:
        file.write("\n".join(lines) + "\n")
