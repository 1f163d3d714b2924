#!/usr/bin/python3
"""Draws bench/parse.svg from the last full run of the benchmark: time per product, over the size of the catalogue.

The background is transparent: each colour has the same contrast, 4.3 to 1, with a white page and with a nearly black
one. Equal measurements give identical files. Debian's interpreter runs this, because Debian's matplotlib is installed
for that one only.
"""

import json
import pathlib
import sys

try:
    import matplotlib
    from matplotlib import pyplot, ticker
except ImportError:
    print("No picture drawn, since matplotlib isn't installed.", file=sys.stderr)
    sys.exit()

FOLDER = pathlib.Path(__file__).resolve().parent
RESULTS = FOLDER.parent / "build" / "bench" / "results.json"
PICTURE = FOLDER / "parse.svg"

GREY = "#727a85"
LINES = {
    "docproducts": {"color": "#1f75ed", "linewidth": 2.6, "markersize": 6},
    "copying the Value": {"color": "#1f75ed", "linestyle": (0, (3, 2))},
    "nlohmann": {"color": "#e1392d"},
    "jsoncpp": {"color": "#bf5e0a"},
    "RapidJSON": {"color": "#0f8783"},
    "simdjson": {"color": "#995bd6"},
}
SETTINGS = {
    "svg.hashsalt": "parse",
    "svg.fonttype": "none",
    "font.sans-serif": ["DejaVu Sans", "Verdana", "Arial"],
    "font.size": 10,
    "text.color": GREY,
    "axes.labelcolor": GREY,
    "xtick.color": GREY,
    "ytick.color": GREY,
    "lines.linewidth": 1.4,
    "lines.marker": "o",
    "lines.markersize": 4,
}


def draw_curve(axes, name, points):
    counts, nanoseconds = zip(*points)
    axes.plot(counts, [time / 1000 for time in nanoseconds], **LINES[name])


def spread(heights, gap):
    """The heights, each raised where necessary to be at least a gap above the next lower one."""
    result, lowest = {}, 0
    for name, height in sorted(heights.items(), key=lambda item: item[1]):
        result[name] = max(height, lowest)
        lowest = result[name] + gap
    return result


def name_curves(axes, curves):
    """Writes its name at the end of each line, in the line's colour, so that no legend is needed."""
    ends = {name: points[-1][1] / 1000 for name, points in curves.items()}
    gap = axes.get_ylim()[1] / 17
    for name, height in spread(ends, gap).items():
        weight = "bold" if name == "docproducts" else "normal"
        axes.annotate(name, (max(axes.get_xticks()), height), (8, 0), textcoords="offset points", va="center",
                      color=LINES[name]["color"], weight=weight, annotation_clip=False)


def dress(axes, counts):
    """Leaves only what helps to read the curves: faint horizontal lines, and a tick per number of products measured."""
    axes.set_title("Parsing a catalogue: microseconds per product", loc="left", fontsize=11, pad=12)
    axes.set_xlabel("products in the catalogue")
    axes.set_xscale("log")
    axes.set_xticks(counts)
    axes.xaxis.set_major_formatter(ticker.StrMethodFormatter("{x:,.0f}"))
    axes.xaxis.set_minor_locator(ticker.NullLocator())
    axes.yaxis.set_major_locator(ticker.MultipleLocator(2))
    axes.margins(x=0.025)
    axes.set_ylim(bottom=0)
    axes.tick_params(length=0)
    axes.grid(axis="y", color=GREY, alpha=0.3, linewidth=0.8)
    axes.set_axisbelow(True)
    for spine in axes.spines.values():
        spine.set_visible(False)


def draw(curves):
    figure, axes = pyplot.subplots(figsize=(7.4, 4))
    for name, points in curves.items():
        draw_curve(axes, name, points)
    dress(axes, [count for count, _ in curves["docproducts"]])
    name_curves(axes, curves)
    figure.subplots_adjust(left=0.05, right=0.77, top=0.88, bottom=0.14)
    return figure


def main():
    curves = json.loads(RESULTS.read_text(encoding="utf-8"))["curves"]
    matplotlib.rcParams.update(SETTINGS)
    figure = draw({name: points for name, points in curves.items() if points})
    figure.savefig(PICTURE, transparent=True, metadata={"Date": None, "Creator": None})


if __name__ == "__main__":
    main()
