#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Traces the outlines in two photographs that scikit-image ships and writes them as GeoJSON.

The pictures, their credits, the method in words and the commands that made the files beside
this script are in README.md. The script needs Debian's python3-skimage (with numpy and scipy).

Coordinates are pixels, x to the right and y downwards, and the centre of the top left pixel is
(0, 0). Every ring has a positive area in those coordinates: it runs clockwise as one sees it.
"""

import argparse
import json
import pathlib
import sys
from dataclasses import dataclass
from typing import Callable

import numpy as np
from scipy import ndimage
from skimage import data, filters, measure

HERE = pathlib.Path(__file__).resolve().parent

MIN_PIXELS = 200  # a smaller component is dust, not an outline
BOX = 111  # side of the box mean that the coins' background is taken from
DECIMALS = 3  # of the coordinates: a thousandth of a pixel
SMOOTHING = 1.0  # standard deviation of the gradient's Gaussian, pixels
REACH = 6.0  # how far from the outline an edge element may lie, pixels
STEP = 0.5  # spacing of the gradient samples along the search line, pixels
MAGNITUDE_UNIT = 1.0 / 256.0  # grey levels per pixel; 16 bits hold any 8-bit picture's gradient
ANGLE_STEPS = 256  # of a full turn

EIGHT = np.ones((3, 3), dtype=bool)  # neighbours by edge or corner


def as_is(image):
    """The picture itself, for one whose background is even enough for one threshold."""
    return image.astype(float)


def less_box_mean(image):
    """The picture less its mean over BOX x BOX pixels, mirrored at the border; sums are exact."""
    half = BOX // 2
    padded = np.pad(image.astype(np.int64), half, mode="symmetric")
    sums = np.pad(padded, ((1, 0), (1, 0))).cumsum(axis=0).cumsum(axis=1)
    rows = sums[BOX:] - sums[:-BOX]
    return image - (rows[:, BOX:] - rows[:, :-BOX]) / BOX**2


@dataclass(frozen=True)
class Picture:
    """A picture to trace: where it comes from, how it is flattened, what the file says of it."""

    load: Callable
    flatten: Callable
    members: dict


PICTURES = {
    "coins": Picture(
        data.coins,
        less_box_mean,
        {
            "picture": "coins.png of scikit-image",
            "credit": "Greek coins from Pompeii, Brooklyn Museum",
            "licence": "no known copyright restrictions",
        },
    ),
    "cell": Picture(
        data.cell,
        as_is,
        {
            "picture": "cell.png of scikit-image",
            "credit": "Paul Müller, Mirjam Schürmann, Salvatore Girardo, Gheorghe Cojoc and "
            "Jochen Guck, doi:10.1364/OE.26.010729",
            "licence": "CC0",
            "micrometres_per_pixel": 0.107,
        },
    ),
}

# Each committed file with the arguments that make it.
FILES = {
    "coins.geojson": ("coins", False),
    "cell.geojson": ("cell", False),
    "cell-edgelets.geojson": ("cell", True),
}


class TraceError(Exception):
    """An outline that cannot be vouched for."""


# --- From the picture to components --------------------------------------------------------------


def solid(component):
    """The component with cuts of up to two pixels closed and all holes filled."""
    cross = ndimage.generate_binary_structure(2, 1)
    return ndimage.binary_fill_holes(ndimage.binary_closing(component, cross))


def touches_border(mask):
    """Whether the mask has a pixel in the picture's outermost rows or columns."""
    return mask[[0, -1]].any() or mask[:, [0, -1]].any()


def components(signal, level):
    """The solid components above the level that have more than MIN_PIXELS pixels."""
    names = measure.label(signal > level, connectivity=2)
    sizes = np.bincount(names.ravel())
    sizes[0] = 0
    masks = [names == name for name in np.flatnonzero(sizes > MIN_PIXELS)]
    if any(touches_border(mask) for mask in masks):
        raise TraceError("a component touches the border of the picture: its outline is unknown")
    return [solid(mask) for mask in masks]


def reading_order(masks):
    """The masks by rows from the top, each row from the left.

    A mask begins a new row when its top lies below the centre of the mask before it, by height.
    """
    centres = [ndimage.center_of_mass(mask) for mask in masks]
    rows, last = [], -1.0
    for i in sorted(range(len(masks)), key=lambda i: centres[i][0]):
        if np.flatnonzero(masks[i].any(axis=1))[0] > last:
            rows.append([])
        rows[-1].append(i)
        last = centres[i][0]
    return [masks[i] for row in rows for i in sorted(row, key=lambda i: centres[i][1])]


# --- From a component to its ring ----------------------------------------------------------------


def area(ring):
    """The signed area: positive for the orientation that the files use."""
    x, y = ring.T
    return 0.5 * np.sum(x * np.roll(y, -1) - y * np.roll(x, -1))


def isolated(signal, level, mask):
    """The signal with just the mask above the level; it keeps its values wherever they agree."""
    inside = np.where(signal > level, signal, level + 1.0)
    outside = np.where(signal > level, level - 1.0, signal)
    return np.where(mask, inside, outside)


def outline(signal, level, mask):
    """The ring along which the signal passes the level around the mask, to a part of a pixel.

    Its points lie where the lines between neighbouring pixel centres cross the level, by linear
    interpolation. The ring must hold the centres of the mask's pixels and of no others.
    """
    curves = measure.find_contours(isolated(signal, level, mask), level, fully_connected="high")
    if len(curves) != 1:
        raise TraceError(f"{len(curves)} outlines around one component")
    if not np.array_equal(measure.grid_points_in_poly(mask.shape, curves[0]), mask):
        raise TraceError("an outline does not hold the pixels of its component")
    ring = curves[0][:-1, ::-1]
    return rounded(ring if area(ring) > 0.0 else ring[::-1])


def rounded(ring):
    """The ring to DECIMALS decimals, without points that then fall on their predecessors."""
    ring = np.round(ring, DECIMALS)
    return ring[(ring != np.roll(ring, 1, axis=0)).any(axis=1)]


def side(a, b, c):
    """1, 0 or -1: on which side of the line from a to b the point c lies; exact for integers."""
    return np.sign(
        (b[..., 0] - a[..., 0]) * (c[..., 1] - a[..., 1])
        - (b[..., 1] - a[..., 1]) * (c[..., 0] - a[..., 0])
    )


def crossings(ring):
    """The pairs (i, j), i < j, of edges of the rounded ring that cross or touch.

    Edge i leads from point i to the next. Edges that share a point by right do not count, unless
    the ring folds back on itself there.
    """
    start = np.rint(ring * 10**DECIMALS).astype(np.int64)
    end = np.roll(start, -1, axis=0)
    a, b, c, d = start[:, None], end[:, None], start[None], end[None]
    apart = (side(a, b, c) * side(a, b, d) > 0) | (side(c, d, a) * side(c, d, b) > 0)
    overlap = (np.minimum(a, b) <= np.maximum(c, d)) & (np.minimum(c, d) <= np.maximum(a, b))
    hit = ~apart & overlap.all(axis=-1)
    edge = np.arange(len(ring))
    after = (edge + 1) % len(ring)
    ahead = np.roll(end, -1, axis=0)
    folds = (side(start, end, ahead) == 0) & (((end - start) * (ahead - end)).sum(axis=1) < 0)
    hit[edge, after] = hit[after, edge] = folds
    return np.argwhere(np.triu(hit, 1))


# --- Edge elements -------------------------------------------------------------------------------


class Gradient:
    """The picture's smoothed gradient, in grey levels per pixel, at any position."""

    def __init__(self, image):
        self._parts = [
            ndimage.spline_filter(
                ndimage.gaussian_filter(image.astype(float), SMOOTHING, order=order)
            )
            for order in ((0, 1), (1, 0))
        ]

    def __call__(self, points):
        """The vectors (d/dx, d/dy) at the points (x, y), by cubic splines."""
        where = np.moveaxis(points, -1, 0)[::-1]
        return np.stack(
            [ndimage.map_coordinates(part, where, prefilter=False) for part in self._parts],
            axis=-1,
        )


def lengths(vectors):
    """The Euclidean lengths of the vectors."""
    return np.sqrt((vectors**2).sum(axis=-1))


def climb(samples):
    """For each row of samples, the index of the peak reached uphill from the middle; -1 if none.

    A climb that comes to either end of its row has found no peak.
    """
    rows = np.arange(len(samples))
    at = np.full(len(samples), samples.shape[1] // 2)
    for _ in range(samples.shape[1] // 2 - 1):
        before, here, after = (samples[rows, at + k] for k in (-1, 0, 1))
        forward = (after > here) & (after >= before)
        backward = (before > here) & ~forward
        at = at + forward.astype(int) - backward.astype(int)
    before, here, after = (samples[rows, at + k] for k in (-1, 0, 1))
    return np.where((here >= before) & (here >= after), at, -1)


def peak_offset(samples, at):
    """Where the parabola through the samples around each index has its peak, in samples."""
    before, here, after = (samples[np.arange(len(samples)), at + k] for k in (-1, 0, 1))
    bend = before - 2.0 * here + after
    return np.divide(0.5 * (before - after), bend, out=np.zeros_like(bend), where=bend < 0.0)


def refined(ring, gradient):
    """The ring's points moved along the gradient to where its magnitude peaks.

    A point that meets no peak within REACH is left out.
    """
    normals = gradient(ring)
    normals /= lengths(normals)[:, None]
    offsets = np.arange(-REACH, REACH + STEP / 2.0, STEP)
    samples = lengths(gradient(ring[:, None] + offsets[:, None] * normals[:, None]))
    at = climb(samples)
    found = at >= 0
    ring, normals, samples, at = ring[found], normals[found], samples[found], at[found]
    distances = offsets[at] + STEP * peak_offset(samples, at)
    return rounded(ring + distances[:, None] * normals)


def untangled(ring):
    """The ring without the points of the short loops in which refined neighbours changed order."""
    while len(pairs := crossings(ring)):
        i, j = pairs[0]
        loop = (i + 1 + np.arange((j - i) % len(ring))) % len(ring)
        if 2 * len(loop) > len(ring):
            loop = np.setdiff1d(np.arange(len(ring)), loop)
        ring = rounded(np.delete(ring, loop, axis=0))
    return ring


def edgelets(ring, gradient):
    """[magnitude, angle] at each point of the ring, as the file states them.

    The magnitude counts MAGNITUDE_UNITs. The angle is the direction in which the picture gets
    brighter, in 256ths of a turn from +x towards +y.
    """
    vectors = gradient(ring)
    magnitudes = np.rint(lengths(vectors) / MAGNITUDE_UNIT).astype(int)
    turns = np.arctan2(vectors[:, 1], vectors[:, 0]) / (2.0 * np.pi)
    angles = np.rint(turns * ANGLE_STEPS).astype(int) % ANGLE_STEPS
    return np.stack([magnitudes, angles], axis=1).tolist()


# --- GeoJSON -------------------------------------------------------------------------------------


def feature(ring, properties):
    """A Polygon with the ring, which must be simple, as its exterior."""
    if len(ring) < 3:
        raise TraceError(f"outline {properties['label']} has no three points")
    if len(crossings(ring)):
        raise TraceError(f"outline {properties['label']} crosses itself")
    points = ring.tolist()
    return {
        "type": "Feature",
        "properties": properties,
        "geometry": {"type": "Polygon", "coordinates": [points + points[:1]]},
    }


def features(image, flatten, with_edgelets):
    """The features of all outlines in the picture, labelled from 1 in reading order."""
    signal = flatten(image)
    level = filters.threshold_otsu(signal)
    gradient = Gradient(image)
    for label, mask in enumerate(reading_order(components(signal, level)), start=1):
        properties = {"label": label, "pixels": int(mask.sum())}
        ring = outline(signal, level, mask)
        if with_edgelets:
            ring = untangled(refined(ring, gradient))
            properties["edgelets"] = edgelets(ring, gradient)
        yield feature(ring, properties)


def text(name, with_edgelets):
    """The GeoJSON text for a picture: one feature to a line."""
    picture = PICTURES[name]
    image = picture.load()
    members = {"type": "FeatureCollection", **picture.members}
    members["width"], members["height"] = image.shape[1], image.shape[0]
    if with_edgelets:
        members["edgelet_magnitude_unit"] = MAGNITUDE_UNIT
        members["edgelet_angle_steps"] = ANGLE_STEPS
    head = [f'"{key}": {json.dumps(value, ensure_ascii=False)}' for key, value in members.items()]
    body = [
        json.dumps(one, separators=(",", ":"))
        for one in features(image, picture.flatten, with_edgelets)
    ]
    return "{\n" + ",\n".join(head) + ',\n"features": [\n' + ",\n".join(body) + "\n]\n}\n"


# --- The command ---------------------------------------------------------------------------------


def drawn_disc(radius, centre):
    """A disc of known size in an 8-bit picture, with the soft edge of a photograph."""
    y, x = np.mgrid[0:120, 0:120]
    distance = radius - np.hypot(x - centre[0], y - centre[1])
    return np.rint(40.0 + 160.0 / (1.0 + np.exp(-1.7 * distance))).astype(np.uint8)


def check_disc():
    """What is wrong with the outline and the edge elements of a drawn disc: a list of words."""
    radius, centre = 40.0, np.array([58.3, 61.8])
    one = next(features(drawn_disc(radius, centre), as_is, True))
    plain = next(features(drawn_disc(radius, centre), as_is, False))
    ring = np.array(one["geometry"]["coordinates"][0][:-1])
    angles = np.array(one["properties"]["edgelets"])[:, 1]
    inward = centre - ring
    true = np.arctan2(inward[:, 1], inward[:, 0]) * ANGLE_STEPS / (2.0 * np.pi)
    turn = (angles - true + ANGLE_STEPS / 2) % ANGLE_STEPS - ANGLE_STEPS / 2
    size = area(np.array(plain["geometry"]["coordinates"][0][:-1])) / (np.pi * radius**2)
    found = {
        "area": abs(size - 1.0) < 0.001,
        "edge positions": abs(lengths(inward) - radius).max() < 0.05,
        "edge directions": abs(turn).max() < 1.0,
    }
    return [what for what, good in found.items() if not good]


def check():
    """Traces the drawn disc and all committed files anew; 1 when anything is not as it must be."""
    status = 0
    wrong = check_disc()
    print("drawn disc:", "wrong " + ", ".join(wrong) if wrong else "as drawn")
    status |= bool(wrong)
    for name, arguments in FILES.items():
        same = (HERE / name).read_bytes() == text(*arguments).encode()
        print(f"{name}:", "the same" if same else "DIFFERS")
        status |= not same
    return int(status)


def main():
    """Writes a picture's outlines to standard output, or checks the committed files."""
    parser = argparse.ArgumentParser(description="Traces the outlines of the sample pictures.")
    parser.add_argument("picture", nargs="?", choices=PICTURES, help="the picture to trace")
    parser.add_argument(
        "--edgelets",
        action="store_true",
        help="move the points to the steepest place of the edge and add its gradient",
    )
    parser.add_argument(
        "--check", action="store_true", help="compare the committed files with new ones"
    )
    options = parser.parse_args()
    if options.check == (options.picture is not None):
        parser.error("give either a picture or --check")
    try:
        if options.check:
            return check()
        sys.stdout.buffer.write(text(options.picture, options.edgelets).encode())
    except (TraceError, OSError) as error:
        print(f"trace.py: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
