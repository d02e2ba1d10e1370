# SPDX-License-Identifier: MIT
"""What the child process does with a table; nothing else here calls the library."""

from collections.abc import Callable

import numpy as np
import pyarrow as pa
import pyarrow.compute as pc

import cntr

# The column of WKB in the tables that are sent.
GEOMETRY = "geometry"

# The regions that points are asked about until others come.
_regions = cntr.Outlines.from_wkb(pa.array([], pa.binary()))


def outlines_of(table: pa.Table) -> cntr.Outlines:
    return cntr.Outlines.from_wkb(table[GEOMETRY].combine_chunks())


def measure(table: pa.Table, columns: list[str]) -> pa.Table:
    """The columns, `status` and `note`, a row for each geometry."""
    return pa.table(outlines_of(table).measure(columns, threads=1))


def make_valid(table: pa.Table, rule: str) -> pa.Table:
    """`geometry`, `status` and `note`; a geometry that cannot be repaired stays as it is."""
    repaired = outlines_of(table).make_valid(rule, threads=1)
    geometry = pa.array(repaired.to_arrow("wkb")).cast(pa.binary())
    outcome = pa.table(repaired.measure([], threads=1))
    return outcome.add_column(0, GEOMETRY, pc.coalesce(geometry, table[GEOMETRY]))


def hold(table: pa.Table) -> pa.Table:
    """Keeps the regions of the table for `inside`. Answers nothing."""
    global _regions
    _regions = outlines_of(table)
    return pa.table({})


def inside(points: pa.Table) -> pa.Table:
    """The pairs of a `point` (`x`, `y`) and a `region` that it lies in, both as row numbers."""
    coordinates = np.stack([points["x"].to_numpy(), points["y"].to_numpy()], axis=1)
    region, point = _regions.inside_join(coordinates, threads=1)
    return pa.table({"point": point, "region": region})


TASKS: dict[str, Callable[..., pa.Table]] = {
    "measure": measure,
    "make_valid": make_valid,
    "hold": hold,
    "inside": inside,
}
