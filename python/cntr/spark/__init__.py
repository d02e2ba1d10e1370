# SPDX-License-Identifier: MIT
"""Measures, repairs and joins more outlines than one machine can hold, on Apache Spark.

The package must be installed on every machine of the cluster. All functions work on a column of
WKB and give the same answers as `cntr.Outlines`, bit for bit.
"""

try:
    import pyspark as _  # noqa: F401
except ModuleNotFoundError as error:
    raise ModuleNotFoundError(f"{error}: install cntr-geometry[spark]", name=error.name) from None

from cntr.spark._geoparquet import read_geoparquet, write_geoparquet
from cntr.spark._joins import inside_join
from cntr.spark._rows import make_valid, measure

__all__ = ["inside_join", "make_valid", "measure", "read_geoparquet", "write_geoparquet"]
