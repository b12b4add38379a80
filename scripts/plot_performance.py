#!/usr/bin/env python3
"""Draws the pictures of docs/performance.md from the output of zq_costs.

usage: scripts/plot_performance.py COSTS.csv FOLDER
"""

import csv
import sys
from collections import defaultdict
from pathlib import Path

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt

PICTURES = {
    "performance_size.png": ("megapixels", "picture in megapixels"),
    "performance_square.png": ("size", "side of the square, or length of the trail, in pixels"),
    "performance_radius.png": ("radius", "radius in pixels"),
}


def read_costs(path):
    """Series of (value, nanoseconds per pixel) by what they run along and the effect."""
    costs = defaultdict(lambda: defaultdict(list))
    with open(path, encoding="utf-8", newline="") as file:
        for row in csv.DictReader(file):
            point = (float(row["value"]), float(row["nanoseconds per pixel"]))
            costs[row["along"]][row["effect"]].append(point)
    return costs


def draw(series, label, path):
    figure, axes = plt.subplots(figsize=(9, 5.5))
    for number, (effect, points) in enumerate(series.items()):
        style = "-" if number < 10 else "--"  # there are ten colours
        axes.plot(*zip(*points), style, marker="o", markersize=3, label=effect)
    axes.set_yscale("log")
    if label.startswith("picture"):
        axes.set_xscale("log")
        ticks = sorted({x for points in series.values() for x, _ in points})
        axes.set_xticks(ticks, [f"{tick:g}" for tick in ticks])
        axes.minorticks_off()
    axes.set_xlabel(label)
    axes.set_ylabel("nanoseconds per pixel")
    axes.grid(alpha=0.3, which="both")
    axes.legend(fontsize=8, loc="center left", bbox_to_anchor=(1, 0.5))
    figure.savefig(path, dpi=110, bbox_inches="tight")
    plt.close(figure)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__.strip())
    costs = read_costs(sys.argv[1])
    for name, (along, label) in PICTURES.items():
        draw(costs[along], label, Path(sys.argv[2]) / name)


if __name__ == "__main__":
    main()
