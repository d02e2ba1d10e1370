# SPDX-License-Identifier: MIT
"""Outlines for the comparison: the samples, generated ones, and families that are nearly degenerate."""

import json
import math
import random

import cv2
import numpy

# Generated coordinates are multiples of it and below 4096, which the single precision of OpenCV holds.
GRID = 1 / 64


def snapped(points):
    return [(round(x / GRID) * GRID, round(y / GRID) * GRID) for x, y in points]


def doubled_area(ring):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(ring, ring[1:] + ring[:1]))


def star(draw, n, roughness):
    """Points around (2000, 2000), each in its own direction: never crosses itself."""
    turn, radius = draw.uniform(0, 2 * math.pi), draw.uniform(20, 1500)
    ring = []
    for i in range(n):
        angle = turn + 2 * math.pi * (i + draw.uniform(0, 0.9)) / n
        far = radius * (1 - roughness * draw.random())
        ring.append((2000 + far * math.cos(angle), 2000 + far * math.sin(angle)))
    return snapped(ring)


def rectangle(draw):
    length, width, angle = draw.uniform(10, 1500), draw.uniform(10, 1500), draw.uniform(0, math.pi)
    u, v = (math.cos(angle), math.sin(angle)), (-math.sin(angle), math.cos(angle))
    return snapped([(2000 + a * length * u[0] + b * width * v[0], 2000 + a * length * u[1] + b * width * v[1])
                    for a, b in ((0, 0), (1, 0), (1, 1), (0, 1))])


def mask(draw):
    """A picture of one connected shape of pixels without holes."""
    picture = numpy.zeros((64, 64), numpy.uint8)
    x, y = 32, 32
    for _ in range(draw.randrange(3, 12)):
        cv2.circle(picture, (x, y), draw.randrange(1, 9), 1, -1)
        x = min(max(x + draw.randrange(-8, 9), 10), 53)
        y = min(max(y + draw.randrange(-8, 9), 10), 53)
    contours, _ = cv2.findContours(picture, cv2.RETR_EXTERNAL, cv2.CHAIN_APPROX_NONE)
    filled = numpy.zeros_like(picture)
    cv2.drawContours(filled, [max(contours, key=len)], -1, 1, -1)
    return filled


def border_of(picture):
    """The longest ring around the pixels, each a square of 1 about its centre."""
    steps = {}
    for y, x in zip(*numpy.nonzero(picture)):
        x, y = int(x), int(y)
        for (dx, dy), a, b in (((0, -1), (0, 0), (1, 0)), ((1, 0), (1, 0), (1, 1)),
                               ((0, 1), (1, 1), (0, 1)), ((-1, 0), (0, 1), (0, 0))):
            if not picture[y + dy, x + dx]:
                steps.setdefault((x + a[0], y + a[1]), []).append((x + b[0], y + b[1]))
    rings = []
    while steps:
        start = min(steps)
        ring, at = [], start
        while at in steps:
            ring.append((at[0] - 0.5, at[1] - 0.5))
            following = steps[at].pop()
            if not steps[at]:
                del steps[at]
            at = following
        rings.append(ring)
    return max(rings, key=len)


def samples(directory):
    rings = []
    for name in ("coins", "cell"):
        for feature in json.loads((directory / f"{name}.geojson").read_text())["features"]:
            rings.append([tuple(p) for p in feature["geometry"]["coordinates"][0][:-1]])
    return rings


def generated():
    draw = random.Random(1)
    rings = [star(draw, draw.randrange(3, 60), draw.choice((0.05, 0.5, 0.95))) for _ in range(2000)]
    rings += [star(draw, 3, 0.8) for _ in range(500)]
    rings += [rectangle(draw) for _ in range(500)]
    rings += [star(draw, draw.randrange(60, 400), 0.02) for _ in range(200)]
    return [ring for ring in rings if len(set(ring)) == len(ring) and doubled_area(ring) > 0]


def masks():
    draw = random.Random(2)
    return [picture for picture in (mask(draw) for _ in range(500)) if doubled_area(border_of(picture)) == 2 * picture.sum()]


def turned(draw, points, size):
    """In a random direction, at a size, and about as far away as it is large."""
    angle, x, y = draw.uniform(0, 2 * math.pi), draw.uniform(-2, 2), draw.uniform(-2, 2)
    c, s = math.cos(angle), math.sin(angle)
    return [(size * (x + c * px - s * py), size * (y + s * px + c * py)) for px, py in points]


def needle(draw):
    thin = 10.0 ** -draw.uniform(3, 9)
    return [(0, 0), (draw.uniform(0.3, 0.7), -thin * draw.random()), (1, 0), (draw.uniform(0.2, 0.8), thin)]


def near_square(draw):
    off = 10.0 ** -draw.uniform(6, 16)
    return [(x + off * draw.uniform(-1, 1), y + off * draw.uniform(-1, 1)) for x, y in ((0, 0), (1, 0), (1, 1), (0, 1))]


def near_circle(draw):
    n, off = draw.randrange(5, 10), 10.0 ** -draw.uniform(6, 16)
    return [((1 + off * draw.uniform(-1, 1)) * math.cos(2 * math.pi * i / n),
             (1 + off * draw.uniform(-1, 1)) * math.sin(2 * math.pi * i / n)) for i in range(n)]


FAMILIES = {"needles, 1e3 to 1e9 times as long as wide": needle,
            "squares, disturbed by 1e-6 to 1e-16": near_square,
            "regular polygons, disturbed by 1e-6 to 1e-16": near_circle}
SIZES = (1e-9, 1.0, 1e9)


def near_degenerate():
    """(family, size, ring): counter-clockwise, simple."""
    for number, (family, make) in enumerate(FAMILIES.items()):
        for size in SIZES:
            draw = random.Random(100 + number)
            for _ in range(100):
                yield family, size, turned(draw, make(draw), size)
