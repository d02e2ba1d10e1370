# SPDX-License-Identifier: MIT
"""Planar geometry for machine vision: measure, query and repair outlines."""

from cntr._core import (
    MEASURES,
    ArrowColumn,
    Contour,
    Measured,
    Outlines,
    Region,
    RegionSet,
    Shape,
)
from cntr._core import version as __version__
from cntr._errors import BadParamsError, EmptyContourError, EmptyRegionSetError, Error

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
