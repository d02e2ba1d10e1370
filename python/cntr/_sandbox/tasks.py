# SPDX-License-Identifier: MIT
"""What the child process does with a table; nothing else here calls the library."""

from collections.abc import Callable

import numpy as np
import numpy.typing as npt
import pyarrow as pa
import pyarrow.compute as pc

import cntr

# The column of WKB in the tables that are sent.
GEOMETRY = "geometry"

# The regions that points are asked about until others come.
_regions = cntr.Outlines.from_wkb(pa.nulls(0, pa.binary()))


def outlines_of(table: pa.Table) -> cntr.Outlines:
    return cntr.Outlines.from_wkb(table[GEOMETRY].combine_chunks())


def measure(table: pa.Table, columns: list[str]) -> pa.Table:
    """The columns, `status` and `note`, a row for each geometry."""
    return read_all(outlines_of(table).measure(columns, threads=1))


def make_valid(table: pa.Table, rule: str) -> pa.Table:
    """`geometry`, `status` and `note`; a geometry that cannot be repaired stays as it is."""
    repaired = outlines_of(table).make_valid(rule, threads=1)
    geometry = pa.array(repaired.to_arrow("wkb")).cast(pa.binary())
    outcome = read_all(repaired.measure([], threads=1))
    return outcome.add_column(0, GEOMETRY, pc.coalesce(geometry, table[GEOMETRY].cast(pa.binary())))


def hold(table: pa.Table) -> pa.Table:
    """Keeps the regions of the table for `inside`. Answers nothing."""
    global _regions
    _regions = outlines_of(table)
    return pa.table({})


def inside(points: pa.Table) -> pa.Table:
    """The pairs of a `point` (`x`, `y`) and a `region` that it lies in, both as row numbers."""
    coordinates = np.stack([np.from_dlpack(points[name].combine_chunks()) for name in "xy"], axis=1)
    region, point = _regions.inside_join(coordinates, threads=1)
    return pa.table({"point": integers_of(point), "region": integers_of(region)})


# pa.table(), pa.array() and to_numpy() would import pandas, to see whether it is concerned.


def read_all(measures: cntr.Measured) -> pa.Table:
    return pa.RecordBatchReader.from_stream(measures).read_all()


def integers_of(numbers: npt.NDArray[np.int64]) -> pa.Array:
    return pa.Array.from_buffers(pa.int64(), len(numbers), [None, pa.py_buffer(numbers)])


TASKS: dict[str, Callable[..., pa.Table]] = {
    "measure": measure,
    "make_valid": make_valid,
    "hold": hold,
    "inside": inside,
}
