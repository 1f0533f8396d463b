"""Draws how the time of a discovery grows with the applications, and with those that do not answer."""

from Pieces import NEVER_ANSWERING, Benchmarks

HUNG_LIMIT = NEVER_ANSWERING / 1000  # seconds
OWN, SERIAL, INK, FAINT = "#0a6cc4", "#c2410c", "#1f2328", "#6e7781"


def points(series):
    """[(argument, fastest, median, slowest)], the times in seconds, in the order of the arguments."""
    return [(count, *(one[f"{which}_ms"] / 1000 for which in ("fastest", "median", "slowest")))
            for count, one in sorted(series.items())]


def curves(figures):
    """{what grows: {curve: points}} of the figures of stand-in applications"""
    benchmarks = Benchmarks(figures)
    return {"applications": {"discovery": points(benchmarks.series("discoveryOfManyApplications")),
                             "serial": points(benchmarks.series("serialScanOfManyApplications"))},
            "hung": {"discovery": points(benchmarks.series("discoveryWithMoreAndMoreHung")),
                     "serial": points(benchmarks.series("serialScanWithMoreAndMoreHung"))}}


def duration(seconds, _=None):
    if seconds >= 1:
        return f"{seconds:g} s"
    return f"{seconds * 1000:g} ms"


def rounded(seconds):
    """To two or three digits that count."""
    return float(f"{seconds:.2g}") if seconds < 0.1 else float(f"{seconds:.3g}")


def drawCurve(axes, curve, colour, marker):
    counts, fastest, median, slowest = zip(*curve)
    axes.fill_between(counts, fastest, slowest, color=colour, alpha=0.16, linewidth=0)
    axes.plot(counts, median, color=colour, marker=marker, markersize=5, markeredgecolor="white", markeredgewidth=0.8,
              linewidth=2, clip_on=False, zorder=3)


def label(axes, text, at, colour, **settings):
    from matplotlib import patheffects

    axes.annotate(text, at, color=colour, fontsize=10.5, textcoords="offset points", zorder=5,
                  path_effects=[patheffects.withStroke(linewidth=3, foreground="white")], **settings)


def labelEnd(axes, text, curve, colour, isAbove):
    """Beside the last point of a curve: over or under it, or to its right where the curve ends early."""
    count, _, median, _ = curve[-1]
    if count < axes.get_xlim()[1] / 2:
        label(axes, text, (count, median), colour, xytext=(8, 0), va="center")
    else:
        label(axes, text, (count, median), colour, xytext=(0, 9 if isAbove else -9), ha="right",
              va="bottom" if isAbove else "top")


def drawGrowth(axes, curves_, title, below, limit):
    axes.set_yscale("log")
    axes.yaxis.set_major_formatter(duration)
    axes.yaxis.set_minor_formatter("")
    axes.grid(axis="y", color="#d8dee4", linewidth=0.8)
    axes.set_axisbelow(True)
    axes.spines[["top", "right", "left"]].set_visible(False)
    axes.spines["bottom"].set_color("#8c959f")
    axes.tick_params(axis="both", which="both", length=0, labelsize=10.5, labelcolor=INK)
    axes.tick_params(axis="x", length=4, color="#8c959f")
    axes.set_title(title, loc="left", fontsize=12.5, fontweight="bold", color=INK, pad=12)
    axes.set_xlabel(below, fontsize=10.5, color=INK, labelpad=6)
    axes.set_xlim(0, curves_["discovery"][-1][0])
    axes.axhline(limit, color=FAINT, linewidth=1, linestyle=(0, (4, 3)), zorder=2)
    drawCurve(axes, curves_["serial"], SERIAL, "s")
    drawCurve(axes, curves_["discovery"], OWN, "o")


def draw(figures, files, caption):
    """Writes the picture to each of the files, in the format of its ending."""
    import matplotlib

    matplotlib.use("Agg")
    # Letters as outlines look the same everywhere; the same figures give the same file.
    matplotlib.rcParams.update({"svg.fonttype": "path", "svg.hashsalt": "ovin", "font.family": "DejaVu Sans"})
    from matplotlib import pyplot

    both = curves(figures)
    figure, (left, right) = pyplot.subplots(1, 2, figsize=(11, 5), facecolor="white", sharey=True)
    limit = Benchmarks(figures).of("discoveryOf400ApplicationsWithAnAgent")["limit_ms"] / 1000
    drawGrowth(left, both["applications"], "More and more applications", "applications, each answering in 1 ms", limit)
    drawGrowth(right, both["hung"], "More and more that never answer", "so many of 400 applications never answer",
               HUNG_LIMIT)
    left.set_ylim(0.005, 100)
    for axes, shown in ((left, both["applications"]), (right, both["hung"])):
        labelEnd(axes, f"one after the other: {duration(rounded(shown['serial'][-1][2]))}", shown["serial"], SERIAL, True)
        labelEnd(axes, f"all at once: {duration(rounded(shown['discovery'][-1][2]))}", shown["discovery"], OWN, False)
    label(left, f"limit for 400: {duration(rounded(limit))}", (left.get_xlim()[1], limit), FAINT, ha="right", xytext=(0, 4))
    label(right, f"limit: {duration(HUNG_LIMIT)}", (right.get_xlim()[1], HUNG_LIMIT), FAINT, ha="right", xytext=(0, 4))
    figure.text(0.012, 0.015, caption, fontsize=8.5, color=FAINT)
    figure.tight_layout(rect=(0, 0.045, 1, 1), w_pad=3)
    for file in files:
        figure.savefig(file, dpi=150, metadata={"Date": None} if file.endswith(".svg") else None)
    pyplot.close(figure)
