# SPDX-License-Identifier: MIT
"""The tasks of the child process; only this module calls the library."""

from collections.abc import Callable

import numpy as np
import numpy.typing as npt
import pyarrow as pa
import pyarrow.compute as pc

import cntr

# The name of the column of WKB.
GEOMETRY = "geometry"

# The regions that `inside` tests points against, until `hold` replaces them.
_regions = cntr.Outlines.from_wkb(pa.nulls(0, pa.binary()))


def outlines_of(table: pa.Table) -> cntr.Outlines:
    return cntr.Outlines.from_wkb(table[GEOMETRY].combine_chunks())


def measure(table: pa.Table, columns: list[str]) -> pa.Table:
    """A row for each geometry: the columns, `status` and `note`."""
    return read_all(outlines_of(table).measure(columns, threads=1))


def make_valid(table: pa.Table, rule: str) -> pa.Table:
    """`geometry`, `status` and `note`; a geometry that cannot be repaired stays as it is."""
    repaired = outlines_of(table).make_valid(rule, threads=1)
    geometry = pa.array(repaired.to_arrow("wkb")).cast(pa.binary())
    outcome = read_all(repaired.measure([], threads=1))
    return outcome.add_column(0, GEOMETRY, pc.coalesce(geometry, table[GEOMETRY].cast(pa.binary())))


def hold(table: pa.Table) -> pa.Table:
    """Keeps the regions of the table for `inside`. The answer is empty."""
    global _regions
    _regions = outlines_of(table)
    return pa.table({})


def inside(points: pa.Table) -> pa.Table:
    """The row numbers of each `point` (`x`, `y`) and each `region` that contains it."""
    coordinates = np.stack([np.from_dlpack(points[name].combine_chunks()) for name in "xy"], axis=1)
    region, point = _regions.inside_join(coordinates, threads=1)
    return pa.table({"point": integers_of(point), "region": integers_of(region)})


# pa.table(), pa.array() and to_numpy() would import pandas to check for its types.


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
