# SPDX-License-Identifier: MIT
"""Draws the figures that compare.py has written into a directory: plots.py DIRECTORY."""

import argparse
import json
import statistics
from pathlib import Path
from typing import Any

import matplotlib

matplotlib.use("svg")

import matplotlib.pyplot as plt

# Text stays text, and the same figures give the same bytes.
plt.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "cntr"})


def rows_of(directory: Path, part: str) -> list[dict[str, Any]]:
    """Those of a part that has been run; none otherwise."""
    file = directory / f"{part}.json"
    if not file.exists():
        return []
    rows: list[dict[str, Any]] = json.loads(file.read_text())["rows"]
    return rows


def rate(row: dict[str, Any]) -> float:
    """Rows a second, by the median."""
    return float(row["rows"] / statistics.median(row["seconds"]))


def draw_bars(directory: Path, part: str, unit: str) -> None:
    """Rows a second of each job."""
    rows = rows_of(directory, part)
    if not rows:
        return
    figure, axes = plt.subplots(figsize=(7.0, 0.6 + 0.4 * len(rows)), layout="constrained")
    axes.barh([row["name"].replace("`", "") for row in rows], [rate(row) for row in rows])
    axes.invert_yaxis()
    axes.set(xlabel=f"{unit} a second")
    axes.locator_params(axis="x", nbins=5)
    axes.xaxis.set_major_formatter("{x:,.0f}")
    axes.grid(axis="x", alpha=0.3)
    figure.savefig(directory / f"{part}.svg", metadata={"Date": None})


def draw_growth(directory: Path) -> None:
    """Rows a second over rows."""
    rows = rows_of(directory, "growth")
    if not rows:
        return
    figure, axes = plt.subplots(figsize=(6.0, 3.5), layout="constrained")
    rates = [rate(row) for row in rows]
    axes.plot([row["rows"] for row in rows], rates, marker="o")
    axes.set(xscale="log", xlabel="outlines", ylabel="outlines measured a second")
    axes.set_ylim(0.0, 1.1 * max(rates))
    axes.yaxis.set_major_formatter("{x:,.0f}")
    axes.grid(alpha=0.3)
    figure.savefig(directory / "growth.svg", metadata={"Date": None})


def main() -> None:
    """Reads the argument and draws."""
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("directory", type=Path)
    directory = parser.parse_args().directory
    draw_bars(directory, "measures", "outlines")
    draw_bars(directory, "joins", "points")
    draw_bars(directory, "executors", "outlines")
    draw_growth(directory)


if __name__ == "__main__":
    main()
