# SPDX-License-Identifier: MIT
"""What is told of a column of WKB by its first bytes, and the boxes around its outlines."""

import numpy as np
import numpy.typing as npt
import pyarrow as pa

from cntr.spark._rows import ask_of_rows

# By the number that WKB has for them.
GEOMETRY_TYPES = {
    1: "Point",
    2: "LineString",
    3: "Polygon",
    4: "MultiPoint",
    5: "MultiLineString",
    6: "MultiPolygon",
    7: "GeometryCollection",
}
# The byte order and the number of the type.
HEADER = 5
# Of the extended form: there are Z, M, and the number of a spatial reference.
HAS_Z = 0x80000000
FLAGS = 0xE0000000

BOX = pa.schema(
    [(name, pa.float64()) for name in ("left", "top", "width", "height")]
    + [("status", pa.string()), ("note", pa.string())]
)


def geometry_types_of(geometries: pa.Array) -> set[str]:
    """The types as GeoParquet names them; values that begin like no geometry add nothing."""
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
    """Of the ISO and the extended form; empty where there is none of that number."""
    dimensions, number = divmod(code & ~FLAGS, 1000)
    if number not in GEOMETRY_TYPES or dimensions > 3:
        return ""
    has_z = bool(code & HAS_Z) or dimensions in (1, 3)
    return GEOMETRY_TYPES[number] + (" Z" if has_z else "")


def boxes_of(geometries: pa.Array) -> npt.NDArray[np.float64]:
    """For each geometry xmin, ymin, xmax and ymax, NaN where it holds no outline.

    The box may be larger than the smallest by a few units in the last place, never smaller.
    """
    measured = ask_of_rows("measure", geometries, BOX, columns=BOX.names[:4])
    left, top, width, height = (measured[name].to_numpy() for name in BOX.names[:4])
    return np.stack([left, top, end_of(left, width), end_of(top, height)], axis=1)


def end_of(
    begin: npt.NDArray[np.float64], size: npt.NDArray[np.float64]
) -> npt.NDArray[np.float64]:
    """At least the number whose difference from `begin`, rounded, is `size`."""
    return np.nextafter(begin + (size + np.spacing(size)), np.inf)
