# SPDX-License-Identifier: MIT
"""The types of the geometries in a column of WKB, and their bounding boxes."""

import numpy as np
import numpy.typing as npt
import pyarrow as pa

from cntr.spark._rows import ask_of_rows

# By their numbers in WKB.
GEOMETRY_TYPES = {
    1: "Point",
    2: "LineString",
    3: "Polygon",
    4: "MultiPoint",
    5: "MultiLineString",
    6: "MultiPolygon",
    7: "GeometryCollection",
}
# Size of the byte order and the number of the type.
HEADER = 5
# Flags of extended WKB: Z; and Z, M and the number of a spatial reference together.
HAS_Z = 0x80000000
FLAGS = 0xE0000000

BOX = pa.schema(
    [(name, pa.float64()) for name in ("left", "top", "width", "height")]
    + [("status", pa.string()), ("note", pa.string())]
)


def geometry_types_of(geometries: pa.Array) -> set[str]:
    """The types as GeoParquet names them; values that do not begin like a geometry are ignored."""
    whole = geometries.drop_null().cast(pa.large_binary())
    _, offsets, values = whole.buffers()
    if values is None:
        return set()
    starts = np.frombuffer(offsets, np.int64)[whole.offset : whole.offset + len(whole) + 1]
    starts = starts[:-1][np.diff(starts) >= HEADER]
    content = np.frombuffer(values, np.uint8)
    headers = content[starts[:, None] + np.arange(HEADER)]
    little = headers[:, 1:].copy().view("<u4")[:, 0]
    big = headers[:, 1:].copy().view(">u4")[:, 0]
    codes = np.unique(np.where(headers[:, 0] == 1, little, big)).tolist()
    return {name for name in map(geometry_type, codes) if name}


def geometry_type(code: int) -> str:
    """The name for a number of ISO or extended WKB; empty if the number is unknown."""
    dimensions, number = divmod(code & ~FLAGS, 1000)
    if number not in GEOMETRY_TYPES or dimensions > 3:
        return ""
    has_z = bool(code & HAS_Z) or dimensions in (1, 3)
    return GEOMETRY_TYPES[number] + (" Z" if has_z else "")


def boxes_of(geometries: pa.Array) -> npt.NDArray[np.float64]:
    """xmin, ymin, xmax and ymax of each geometry, NaN if it has no outline.

    A box may be a few units in the last place larger than the bounding box, but never smaller.
    """
    measured = ask_of_rows("measure", geometries, BOX, columns=BOX.names[:4])
    left, top, width, height = (measured[name].to_numpy() for name in BOX.names[:4])
    return np.stack([left, top, end_of(left, width), end_of(top, height)], axis=1)


def end_of(
    begin: npt.NDArray[np.float64], size: npt.NDArray[np.float64]
) -> npt.NDArray[np.float64]:
    """An upper bound of all numbers whose rounded difference from `begin` is `size`."""
    return np.nextafter(begin + (size + np.spacing(size)), np.inf)
