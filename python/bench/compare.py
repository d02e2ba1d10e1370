# SPDX-License-Identifier: MIT
"""Times the package beside Shapely, OpenCV and scikit-image, in one run.

    ../build/python/venv/bin/python bench/compare.py [--rounds N] [--save FILE]

It is to be run in python/, after scripts/test-python and, for the row of the loop in C++, after
scripts/test --peers.

Each row asks the same question of two libraries, in turn, as often as there are rounds, and gives
the median of each and of their ratio: what else the machine does hits both. A goal is a ratio that
must not be exceeded. Answers are compared with Shapely's and scikit-image's before they are timed.
"""

import argparse
import dataclasses
import pathlib
import platform
import statistics
import subprocess
import tempfile
import time
from collections.abc import Callable, Iterator
from importlib import metadata
from typing import Any

import cv2
import numpy as np
import numpy.typing as npt
import shapely
import skimage.measure

import cntr

LOOP = pathlib.Path(__file__).parent.parent.parent / "build" / "release" / "bench" / "inside_loop"


@dataclasses.dataclass(frozen=True)
class Row:
    """A question, and who is asked; `calls` of them are one unit of work."""

    question: str
    ours: Callable[[], Any]
    peer: str
    theirs: Callable[[], Any]
    goal: float | None
    calls: int = 1


Points = npt.NDArray[np.float64]


def star(vertices: int, generator: np.random.Generator) -> Points:
    """The smooth outline of a part, about 100 across, anywhere in an image."""
    angle = np.linspace(0, 2 * np.pi, vertices, endpoint=False)
    waves = generator.integers(2, 7)
    radius = 50 * (1 + 0.2 * np.sin(waves * angle + generator.uniform(0, 6)))
    centre = generator.uniform(100, 4000, 2)
    return np.column_stack((np.cos(angle), np.sin(angle))) * radius[:, None] + centre


def rows(generator: np.random.Generator) -> Iterator[Row]:
    """All rows; each makes its data when it is reached."""
    ring = star(1000, generator)
    region, polygon = cntr.Region(ring), shapely.Polygon(ring)
    shapely.prepare(polygon)
    low, high = ring.min(axis=0), ring.max(axis=0)
    some = [tuple(p) for p in generator.uniform(low, high, (1000, 2)).tolist()]
    many = generator.uniform(low, high, (1_000_000, 2))
    assert (region.inside(many) == shapely.contains_xy(polygon, many)).all()
    yield Row(
        "one point inside, 1,000 vertices",
        lambda: [region.inside(p) for p in some],
        "Shapely contains_xy, prepared",
        lambda: [shapely.contains_xy(polygon, p[0], p[1]) for p in some],
        0.15,
        len(some),
    )
    contour = ring.astype(np.float32)
    yield Row(
        "one point inside, 1,000 vertices",
        lambda: [region.inside(p) for p in some],
        "OpenCV pointPolygonTest",
        lambda: [cv2.pointPolygonTest(contour, p, False) for p in some],
        None,
        len(some),
    )
    yield Row(
        "a million points inside, 1,000 vertices",
        lambda: region.inside(many),
        "Shapely contains_xy, prepared",
        lambda: shapely.contains_xy(polygon, many),
        0.25,
    )
    if not LOOP.exists():
        print("LEFT OUT: the loop in C++, which scripts/test --peers builds")
    else:
        with tempfile.TemporaryDirectory() as directory:
            files = [pathlib.Path(directory) / name for name in ("outline", "points")]
            ring.tofile(files[0])
            many.tofile(files[1])
            yield Row(
                "a million points inside, 1,000 vertices",
                lambda: seconds_of_second(lambda: region.inside(many)),
                "the same loop in C++",
                lambda: float(subprocess.check_output([LOOP, *files]).split()[1]),
                1.2,
            )
    few = many[:10_000]
    assert (region.inside(few) == skimage.measure.points_in_poly(few, ring)).all()
    yield Row(
        "10,000 points inside, 1,000 vertices",
        lambda: region.inside(few),
        "scikit-image points_in_poly",
        lambda: skimage.measure.points_in_poly(few, ring),
        None,
    )

    count, vertices = 100_000, 64
    rings = [star(vertices, generator) for _ in range(count)]
    coordinates = np.concatenate(rings)
    polygons = shapely.polygons(np.stack(rings))
    wkb = shapely.to_wkb(polygons).tolist()
    outlines = cntr.Outlines.from_ragged(coordinates, np.arange(0, count * vertices + 1, vertices))
    columns = ["area", "perimeter", "centre_x", "centre_y"]

    def three() -> tuple[Any, ...]:
        return shapely.area(polygons), shapely.length(polygons), shapely.centroid(polygons)

    found = outlines.measure(columns)
    areas, lengths, centroids = three()
    assert np.allclose(found.column("area"), areas, rtol=1e-12)
    assert np.allclose(found.column("perimeter"), lengths, rtol=1e-12)
    assert np.allclose(found.column("centre_x"), shapely.get_x(centroids), rtol=1e-12)
    assert cntr.Outlines.from_wkb(wkb) == outlines
    yield Row(
        "area, length, centre of 100,000 outlines of 64 vertices, one thread",
        lambda: outlines.measure(columns, threads=1),
        "Shapely area, length, centroid",
        three,
        1 / 3,
    )
    ten = [*columns, "length", "roundness", "equivalent_diameter", "axis_ratio", "left", "width"]
    yield Row(
        "ten measures of them, one thread",
        lambda: outlines.measure(ten, threads=1),
        "Shapely area, length, centroid, bounds",
        lambda: (*three(), shapely.bounds(polygons)),
        1.0,
    )
    yield Row(
        "two threads instead of one",
        lambda: outlines.measure(columns, threads=2),
        "cntr, one thread",
        lambda: outlines.measure(columns, threads=1),
        1 / 1.7,
    )
    yield Row(
        "from_wkb of 100,000 outlines",
        lambda: cntr.Outlines.from_wkb(wkb),
        "Shapely from_wkb",
        lambda: shapely.from_wkb(wkb),
        0.5,
    )
    part = outlines[:10_000]
    contours = [r.astype(np.float32) for r in rings[: len(part)]]
    yield Row(
        "area and length of 10,000 outlines",
        lambda: part.measure(["area", "perimeter"], threads=1),
        "OpenCV contourArea, arcLength",
        lambda: [(cv2.contourArea(c), cv2.arcLength(c, True)) for c in contours],
        None,
    )


def seconds(ask: Callable[[], Any]) -> float:
    """How long a question takes, unless it tells so itself."""
    begin = time.perf_counter()
    answer = ask()
    return answer if isinstance(answer, float) else time.perf_counter() - begin


def seconds_of_second(ask: Callable[[], Any]) -> float:
    """How long a question takes right after it was asked, as the loop in C++ is timed."""
    ask()
    return seconds(ask)


def main() -> None:
    """Prints the table."""
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--save", type=pathlib.Path)
    arguments = parser.parse_args()
    lines = [
        f"Python {platform.python_version()}, Shapely {shapely.__version__} "
        f"(GEOS {shapely.geos_version_string}), OpenCV {cv2.__version__}, "
        f"scikit-image {metadata.version('scikit-image')}, numpy {np.__version__}; medians of "
        f"{arguments.rounds} rounds.",
        "",
        "| question | cntr | other | its time | ratio | goal |",
        "|---|--:|---|--:|--:|--:|",
    ]
    for row in rows(np.random.default_rng(7)):
        row.ours(), row.theirs()
        pairs = [(seconds(row.ours), seconds(row.theirs)) for _ in range(arguments.rounds)]
        ours, theirs = (statistics.median(times) / row.calls for times in zip(*pairs, strict=True))
        ratio = statistics.median(a / b for a, b in pairs)
        goal = (
            "" if row.goal is None else f"{row.goal:.2f}" + (" missed" if ratio > row.goal else "")
        )
        lines.append(
            f"| {row.question} | {ours * 1e6:,.2f} us | {row.peer} | {theirs * 1e6:,.2f} us "
            f"| {ratio:.3f} | {goal} |"
        )
    print("\n".join(lines))
    if arguments.save:
        arguments.save.write_text("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
