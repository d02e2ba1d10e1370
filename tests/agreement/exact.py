# SPDX-License-Identifier: MIT
"""Measures of a simple outline by their definitions, in rational numbers of any length. Lengths are given as
squares, because their roots are not rational. For few vertices: every pair and triple is tried."""

import itertools
import math
from fractions import Fraction


def points_of(outline):
    return [(Fraction(x), Fraction(y)) for x, y in outline]


def cross(a, b, c):
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])


def doubled_area(ring):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(ring, ring[1:] + ring[:1]))


def hull_of(points):
    """Counter-clockwise from the lowest-leftmost vertex."""
    chains = []
    for ordered in (sorted(set(points)), sorted(set(points), reverse=True)):
        chain = []
        for p in ordered:
            while len(chain) > 1 and cross(chain[-2], chain[-1], p) <= 0:
                chain.pop()
            chain.append(p)
        chains += chain[:-1]
    return chains


def rectangles(hull):
    """(area, square of the side along the edge, square of the other) for each edge of the hull."""
    for a, b in zip(hull, hull[1:] + hull[:1]):
        e = (b[0] - a[0], b[1] - a[1])
        along = [e[0] * p[0] + e[1] * p[1] for p in hull]
        across = [e[0] * p[1] - e[1] * p[0] for p in hull]
        square = e[0] * e[0] + e[1] * e[1]
        length, width = max(along) - min(along), max(across) - min(across)
        yield length * width / square, length * length / square, width * width / square


def circle_square(hull):
    """The square of the radius of the smallest circle."""
    def holds(centre, square):
        return all((p[0] - centre[0]) ** 2 + (p[1] - centre[1]) ** 2 <= square for p in hull)

    found = []
    for a, b in itertools.combinations(hull, 2):
        centre = ((a[0] + b[0]) / 2, (a[1] + b[1]) / 2)
        square = (a[0] - centre[0]) ** 2 + (a[1] - centre[1]) ** 2
        if holds(centre, square):
            found.append(square)
    for a, b, c in itertools.combinations(hull, 3):
        doubled = 2 * cross(a, b, c)
        bx, by, cx, cy = b[0] - a[0], b[1] - a[1], c[0] - a[0], c[1] - a[1]
        x = (cy * (bx * bx + by * by) - by * (cx * cx + cy * cy)) / doubled
        y = (bx * (cx * cx + cy * cy) - cx * (bx * bx + by * by)) / doubled
        if holds((a[0] + x, a[1] + y), x * x + y * y):
            found.append(x * x + y * y)
    return min(found)


def moment(ring, p, q):
    """The integral of x^p y^q over a counter-clockwise ring."""
    total = Fraction(0)
    for (x0, y0), (x1, y1) in zip(ring, ring[1:] + ring[:1]):
        inner = sum(math.comb(k + j, j) * math.comb(p + q - k - j, q - j) * x1**k * x0**(p - k) * y1**j * y0**(q - j)
                    for k in range(p + 1) for j in range(q + 1))
        total += (x0 * y1 - x1 * y0) * inner
    return total / ((p + q + 2) * (p + q + 1) * math.comb(p + q, p))


def hu_of(ring):
    """Hu's seven invariants; all their powers of the area are whole."""
    area = moment(ring, 0, 0)
    x, y = moment(ring, 1, 0) / area, moment(ring, 0, 1) / area
    moved = [(px - x, py - y) for px, py in ring]
    m = {(p, q): moment(moved, p, q) for p in range(4) for q in range(4) if 2 <= p + q <= 3}
    n20, n02, n11 = (m[pq] / area**2 for pq in ((2, 0), (0, 2), (1, 1)))
    # Of third order, times the square root of the area.
    t30, t21, t12, t03 = (m[pq] / area**2 for pq in ((3, 0), (2, 1), (1, 2), (0, 3)))
    a, b = t30 + t12, t21 + t03
    c, d = t30 - 3 * t12, 3 * t21 - t03
    return [n20 + n02,
            (n20 - n02)**2 + 4 * n11**2,
            (c * c + d * d) / area,
            (a * a + b * b) / area,
            (c * a * (a * a - 3 * b * b) + d * b * (3 * a * a - b * b)) / area**2,
            ((n20 - n02) * (a * a - b * b) + 4 * n11 * a * b) / area,
            (d * a * (a * a - 3 * b * b) - c * b * (3 * a * a - b * b)) / area**2]


def squared_error(value, square):
    """The relative error of a double whose true square is rational."""
    if square == 0:
        return abs(value)
    return abs(float((Fraction(value)**2 - square) / square)) / 2


def error(value, true, size=None):
    """The error of a double relative to the true number's size, or to `size`."""
    size = abs(true) if size is None else size
    return float(abs(Fraction(value) - true) / size) if size else abs(value)
