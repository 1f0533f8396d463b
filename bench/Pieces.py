"""The measurements that bench/run goes through: how each is started, and what its figures say beside which limit.

A piece's command writes its figures as JSON to the file that it is given; its rows are made of nothing but these, so that
the table can be written again without measuring."""

import dataclasses
import os
from typing import Callable

from Judgement import Reference, Row

FRAME = 16.0  # milliseconds: the ledge is there with the next picture of the screen
USUAL, USUAL_SLOWEST = 4.0, 8.0  # milliseconds, with a hundred items: median and 99th percentile
NEVER_ANSWERING = 260.0  # milliseconds: the bound of a request is 250
STOPPED = 300.0  # milliseconds, with real programs
TIMES_CHAIN = 1.8
TIMES_REQUESTS = 2.0
TIMES_BARE_CLIENT = 1.3
TIMES_BARE_PROGRAM = {"start to a registered item": 1.1, "resident memory (RSS)": 1.3, "proportional memory (PSS)": 1.2,
                      "private memory": 1.5}
GROWTH = 1.02  # of memory

STAND_INS, DESKTOP, PROGRAM = "Stand-in applications", "On a real desktop", "The program itself"


@dataclasses.dataclass(frozen=True)
class Piece:
    name: str
    group: str
    what: str
    command: Callable[[str, str, bool], list]  # (build folder, file for the figures, whether it is to be quick)
    rows: Callable[[dict], list]
    bound: int = 500  # seconds


# --- Stand-in applications ---------------------------------------------------------------------------------------------

# Half a minute and a minute of waiting, for one point each.
SLOW_SCANS = "serialScanWithMoreAndMoreHung/(40|200)/"


def standInsCommand(build, output, isQuick):
    command = [f"{build}/bench/discovery_bench", f"--benchmark_out={output}", "--benchmark_out_format=json"]
    return command + ([f"--benchmark_filter=-{SLOW_SCANS}"] if isQuick else [])


class Benchmarks:
    """Those of discovery_bench by name and argument."""

    def __init__(self, figures):
        self.byName = {benchmark["name"].partition("/iterations:")[0]: benchmark for benchmark in figures["benchmarks"]}

    def of(self, name):
        return self.byName[name]

    def series(self, name):
        """{argument: benchmark}"""
        parts = (key.partition("/") for key in self.byName)
        return {int(argument): self.byName[f"{key}/{argument}"] for key, _, argument in parts if key == name}


def standInsRows(figures):
    benchmarks = Benchmarks(figures)
    rows = []
    for name, agent in (("discoveryOf400Applications", "without"), ("discoveryOf400ApplicationsWithAnAgent", "with")):
        one = benchmarks.of(name)
        rows.append(Row(f"400 applications answer in 1 ms, {agent} a menu bar: slowest discovery", one["slowest_ms"],
                        reference=Reference("the longest chain of reads", one["chain_ms"]), atMostTimes=TIMES_CHAIN))
    serial = benchmarks.series("serialScanOfManyApplications")
    for count, one in benchmarks.series("discoveryOfManyApplications").items():
        if count in (100, 400, 800):
            rows.append(Row(f"{count} applications answer in 1 ms: median discovery", one["median_ms"],
                            reference=Reference("serial scan", serial[count]["median_ms"])))
    serial = benchmarks.series("serialScanWithMoreAndMoreHung")
    for count, one in benchmarks.series("discoveryWithHungApplications").items():
        reference = Reference("serial scan", serial[count]["median_ms"]) if count in serial else None
        rows.append(Row(f"{count} of 400 never answer: slowest discovery", one["slowest_ms"], reference=reference,
                        atMost=NEVER_ANSWERING))
    alone = benchmarks.series("theSameRequestsAlone")
    for count, one in benchmarks.series("geometrySnapshot").items():
        rows.append(Row(f"geometry snapshot of {count} drawn slots", one["real_time"] / 1000,
                        reference=Reference("the same requests alone", alone[count]["real_time"] / 1000),
                        atMostTimes=TIMES_REQUESTS))
    return rows


# --- A real desktop ----------------------------------------------------------------------------------------------------


def onDesktop(*command, options=()):
    return [os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "desktop", "private-desktop"), *options, "--",
            *map(str, command)]


def script(name):
    return os.path.join(os.path.dirname(os.path.realpath(__file__)), name)


def answering(isBare):
    def command(build, output, isQuick):
        options = ("--bare",) * isBare + ("--items", "80")
        return onDesktop(f"{build}/bench/desktop_bench", "--runs", 20 if isQuick else 60, "--json", output, options=options)

    return command


def answeringRows(where):
    def rows(figures):
        def row(measurement, name, reference, described, times=None):
            return Row(f"80 programs{where}: {measurement}, median", figures[name]["median_ms"],
                       reference=Reference(described, figures[reference]["median_ms"]), atMostTimes=times)

        hasBar = "reference: both at once" in figures
        properties, serial = "reference: the items' properties", "reference: one program after the other"
        result = []
        if hasBar:
            result.append(row("whole discovery", "whole discovery", "reference: both at once",
                              "bare client, items and slots", TIMES_BARE_CLIENT))
        # A client that does not read the bar does less than a discovery that does.
        result.append(row("whole discovery", "whole discovery", properties, "bare client, items alone",
                          None if hasBar else TIMES_BARE_CLIENT))
        result.append(row("scan of the items", "scan of the items", properties, "bare client, items", TIMES_BARE_CLIENT))
        if hasBar:
            result.append(row("snapshot of the bar", "snapshot of the bar", "reference: the bar's slots",
                              "bare client, slots", TIMES_BARE_CLIENT))
        result.append(row("scan of the items", "scan of the items", serial, "serial scan"))
        return result

    return rows


def stopped(isBare):
    def command(build, output, isQuick):
        options = ("--bare",) * isBare + ("--items", "80")
        return onDesktop(f"{build}/bench/desktop_bench", "--hung", 20, "--runs", 5 if isQuick else 20, "--json", output,
                         options=options)

    return command


def stoppedRows(where):
    def rows(figures):
        serial = figures["reference: one program after the other"]["median_ms"]
        return [Row(f"80 programs, 20 of them stopped{where}: slowest discovery", figures["whole discovery"]["slowest_ms"],
                    reference=Reference("serial scan", serial), atMost=STOPPED)]

    return rows


def idle(program):
    def command(build, output, isQuick):
        return onDesktop(script("idle"), "--seconds", 20 if isQuick else 60, "--json", output, f"{build}/{program}",
                         options=("--items", "30"))

    return command


def idleRows(figures):
    rows = []
    for name, group in figures["groups"].items():
        if group["watched"]:
            count = f" ({group['processes']})" if group["processes"] > 1 else ""
            rows.append(Row(f"{figures['seconds']:g} s of nothing: wake-ups of {name}{count}", group["other"], unit="",
                            exactly=0))
    return rows


def crowdedStart(count, isBare):
    def command(build, output, _):
        return onDesktop(script("crowded-start"), "--items", count, "--json", output, build,
                         options=("--bare",) * isBare)

    return command


def crowdedStartRows(how):
    def rows(figures):
        what = f"{figures['items']} programs start, {how}"
        return [Row(f"{what}: until the bar rests", figures["took_ms"]), Row(f"{what}: the bar's CPU", figures["cpu_ms"])]

    return rows


# --- The program itself ------------------------------------------------------------------------------------------------


def ledge(items, *options, limit=USUAL_SLOWEST):
    def command(build, output, isQuick):
        return onDesktop(script("ledge"), "--items", items, "--clicks", 60 if isQuick else 300, "--limit", limit, *options,
                         "--json", output, build)

    return command


def ledgeRows(what, median=None, limit=USUAL_SLOWEST):
    def rows(figures):
        clicks = f"click to ledge, {what}"
        result = [Row(f"{clicks}: median of {figures['clicks']}", figures["median_ms"], atMost=median),
                  Row(f"{clicks}: 99th percentile", figures["p99_ms"], atMost=limit)]
        if figures["lost"]:
            result.append(Row(f"{clicks}: clicks that nothing followed", figures["lost"], unit="", exactly=0))
        return result

    return rows


def startCommand(build, output, isQuick):
    return onDesktop(script("start"), "--starts", 8 if isQuick else 30, "--json", output, f"{build}/app/ovin",
                     f"{build}/desktop/bare_status_item")


def startRows(figures):
    rows = []
    for name, what in (("until registered, ms", "start to a registered item"),
                       ("resident (RSS), MiB", "resident memory (RSS)"),
                       ("proportional (PSS), MiB", "proportional memory (PSS)"), ("private, MiB", "private memory")):
        rows.append(Row(f"{what}, median", figures[name]["ovin"], unit=name.rpartition(", ")[2],
                        reference=Reference("bare Qt program", figures[name]["bare"]),
                        atMostTimes=TIMES_BARE_PROGRAM[what]))
    return rows


def burstCommand(build, output, _):
    return onDesktop(script("burst"), "--json", output, build)


def burstRows(figures):
    burst = f"{figures['programs']} programs start and are killed"
    return [Row(f"{burst}: discoveries", figures["discoveries"], unit="", atMost=1),
            Row(f"{burst}: Ovin's CPU", figures["cpu_ms"])]


def crowdCommand(build, output, isQuick):
    return onDesktop(script("crowd"), "--items", 100 if isQuick else 500, "--cycles", 100 if isQuick else 1000,
                     "--json", output, build)


def crowdRows(figures):
    first, last = figures["resident_mib"][0], figures["resident_mib"][-1]
    what = f"{figures['items']} items, {figures['openings']} openings"
    rows = [Row(f"{what}: resident memory", last, unit="MiB",
                reference=Reference(f"after {figures['openings'] // 5}", first), atMostTimes=GROWTH)]
    if figures["lost"] or not figures["scrolls"]:
        rows.append(Row(f"{what}: clicks that nothing followed", figures["lost"], unit="", exactly=0))
        rows.append(Row(f"{what}: scrolls there and back", int(figures["scrolls"]), unit="", exactly=1))
    return rows


DISCOVERING = "100 items, 20 of their programs stopped, a discovery under way at each click"

PIECES = (
    Piece("stand-ins", STAND_INS, "discoveries of stand-in applications, and serial scans", standInsCommand, standInsRows),
    Piece("desktop", DESKTOP, "80 programs that answer", answering(False), answeringRows("")),
    Piece("desktop-bare", DESKTOP, "the same without a menu bar", answering(True), answeringRows(", no menu bar")),
    Piece("stopped", DESKTOP, "80 programs, 20 of them stopped", stopped(False), stoppedRows("")),
    Piece("stopped-bare", DESKTOP, "the same without a menu bar", stopped(True), stoppedRows(", no menu bar")),
    Piece("idle-items", DESKTOP, "a minute of nothing after a discovery", idle("desktop/ovin-items"), idleRows),
    *(Piece(f"crowded-start-{count}{ending}", DESKTOP, f"{count} programs start, {how}", crowdedStart(count, isBare),
            crowdedStartRows(how))
      for isBare, ending, how in ((False, "", "the bar is there"), (True, "-bare", "the bar comes last"))
      for count in (25, 100, 400)),
    Piece("ledge-10", PROGRAM, "click to ledge, 10 items", ledge(10), ledgeRows("10 items")),
    Piece("ledge-100", PROGRAM, "click to ledge, 100 items", ledge(100), ledgeRows("100 items", USUAL)),
    Piece("ledge-500", PROGRAM, "click to ledge, 500 items", ledge(500, limit=FRAME),
          ledgeRows("500 items", USUAL_SLOWEST, FRAME)),
    Piece("ledge-held", PROGRAM, "click to ledge, 100 items, the button held for 60 ms", ledge(100, "--hold", 60),
          ledgeRows("100 items, the button held for 60 ms")),
    # Discoveries last 0.25 s with stopped programs: two pauses of 50 ms are well within one, two of 250 ms are not.
    Piece("ledge-discovering", PROGRAM, f"click to ledge, {DISCOVERING}", ledge(100, "--stopped", 20, "--pause", 50),
          ledgeRows(DISCOVERING)),
    Piece("ledge-stopped", PROGRAM, "click to ledge, 100 items, 20 stopped",
          ledge(100, "--stopped", 20, "--pause", 250), ledgeRows("100 items, 20 of their programs stopped")),
    Piece("start", PROGRAM, "start and memory", startCommand, startRows),
    Piece("idle-ovin", PROGRAM, "a minute of nothing, the ledge closed", idle("app/ovin"), idleRows),
    Piece("burst", PROGRAM, "200 programs start and are killed", burstCommand, burstRows),
    Piece("crowd", PROGRAM, "the ledge opens over and over", crowdCommand, crowdRows),
)
