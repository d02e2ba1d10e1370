# SPDX-License-Identifier: MIT
"""The named tuples that methods of shapes return.

Lengths are in the unit of the coordinates. Angles are in degrees, from the x axis towards the y
axis.
"""

from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray

Point = tuple[float, float]


class Rectangle(NamedTuple):
    """A rectangle in any direction."""

    centre: Point
    length: float
    """The longer side."""
    width: float
    """The shorter side."""
    angle: float
    """The direction of the longer side, in (-90, 90]."""
    corners: tuple[Point, Point, Point, Point]
    """Counter-clockwise with y up; the first two are the ends of a longer side."""


class Circle(NamedTuple):
    """A circle."""

    centre: Point
    radius: float


class Ellipse(NamedTuple):
    """An ellipse fitted to vertices. All numbers are NaN if none fits."""

    centre: Point
    radii: tuple[float, float]
    """The larger one first."""
    angle: float
    """The direction of the larger radius, in [-90, 90]."""
    residual: float
    """The root mean square distance of the vertices."""


class Vertex(NamedTuple):
    """A vertex of a shape."""

    ring: int
    """0 for the outline or line, from 1 on for the holes in their order."""
    number: int
    """Its place in the points of that ring, from 0."""
    point: Point


class Vertices(NamedTuple):
    """Vertices of a shape: each array has an element for each vertex."""

    rings: NDArray[np.int64]
    """0 for the outline or line, from 1 on for the holes in their order."""
    numbers: NDArray[np.int64]
    """Their places in the points of these rings, from 0."""
    points: NDArray[np.float64]
    """Shape (n, 2)."""


class Deviation(NamedTuple):
    """How far a boundary lies from a nominal one."""

    least: float
    """The smallest distance: negative inside the nominal area."""
    least_at: Point
    """The first point with that distance."""
    greatest: float
    greatest_at: Point
    mean: float
    """The mean distance along the measured boundary."""
    rms: float
    """The root mean square of the distances along it."""
    is_signed: bool
    """Whether distances have signs; those from an open contour have none."""


class Alignment(NamedTuple):
    """The rotation and shift that bring a shape to a nominal one."""

    matrix: NDArray[np.float64]
    """Shape (2, 3), for the method transform."""
    angle: float
    """The rotation, in [-180, 180]."""
    residual: float
    """The remaining root mean square distance."""
    steps: int
    """The number of steps of the last refinement."""
    settled: bool
    """Whether it ended because a further step would change almost nothing."""
