# SPDX-License-Identifier: MIT
"""Planar geometry for machine vision: measure, query and repair outlines."""

from cntr._core import (
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

# Of each measure the power of the unit of length that it is in, and its meaning.
MEASURES = measures()

__all__ = [
    "MEASURES",
    "ArrowColumn",
    "BadParamsError",
    "Contour",
    "EmptyContourError",
    "EmptyRegionSetError",
    "Error",
    "Measured",
    "Outlines",
    "Region",
    "RegionSet",
    "Shape",
    "__version__",
]
