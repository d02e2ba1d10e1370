# SPDX-License-Identifier: MIT
"""Planar geometry for machine vision: measure, query and repair outlines."""

from cntr._core import (
    Areas,
    ArrowColumn,
    Contour,
    Measured,
    Outlines,
    Region,
    RegionSet,
    Shape,
    measures,
)
from cntr._core import version as __version__
from cntr._errors import BadParamsError, EmptyContourError, EmptyRegionSetError, Error
from cntr._parquet import read as read_parquet
from cntr._results import (
    Alignment,
    Circle,
    Deviation,
    Ellipse,
    Rectangle,
    Vertex,
    Vertices,
)

# For each measure the power of the unit of length that it is in, and its meaning.
MEASURES = measures()

__all__ = [
    "MEASURES",
    "Alignment",
    "Areas",
    "ArrowColumn",
    "BadParamsError",
    "Circle",
    "Contour",
    "Deviation",
    "Ellipse",
    "EmptyContourError",
    "EmptyRegionSetError",
    "Error",
    "Measured",
    "Outlines",
    "Rectangle",
    "Region",
    "RegionSet",
    "Shape",
    "Vertex",
    "Vertices",
    "__version__",
    "read_parquet",
]
