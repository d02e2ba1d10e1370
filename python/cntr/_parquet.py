# SPDX-License-Identifier: MIT
"""GeoParquet 1.1 files: geometry as well-known binary, all else in sibling columns."""

import json
import os
from typing import Any

import numpy as np

from cntr import _core
from cntr._errors import BadParamsError

GEOMETRY = "geometry"
LABEL = "label"
PROBLEM = "problem"
EDGES = "edge_elements"
EXTENSION = "ARROW:extension:name"
WKB = "WKB"
# The encodings other than WKB that hold outlines.
GEOARROW = ("linestring", "polygon", "multilinestring", "multipolygon")


def write(outlines: _core.Outlines, path: str | os.PathLike[str]) -> None:
    """Writes the outlines with their labels, problems and edge elements."""
    import pyarrow as pa
    import pyarrow.parquet

    batch = pa.record_batch(outlines.to_arrow("wkb", attributes=True))
    # Without the name of GeoArrow's type, which "geo" tells.
    table = pa.table(batch.columns, names=batch.schema.names)
    table = table.replace_schema_metadata({"geo": json.dumps(_described(outlines))})
    pyarrow.parquet.write_table(table, path)


def read(path: str | os.PathLike[str]) -> _core.Outlines:
    """The outlines in a GeoParquet 1.0 or 1.1 file, whoever wrote it.

    Reads the primary column and, if they have the types that to_parquet() gives them, labels,
    problems and edge elements; other columns with these names are ignored. Raises ValueError for
    other Parquet files, and for numbers out of range for labels or edge elements.
    """
    import pyarrow as pa
    import pyarrow.parquet

    file = pyarrow.parquet.ParquetFile(path)
    name, encoding = _primary_column(file, path)
    if encoding != WKB and encoding.lower() not in GEOARROW:
        raise ValueError(f"{os.fspath(path)} has the encoding {encoding}, which has no outlines")
    own = [n for n in (LABEL, PROBLEM, EDGES) if n != name and n in file.schema_arrow.names]
    table = file.read([name, *own])
    # Lists of the same depth share a type, so that the column has to tell which one it is.
    extension = {} if encoding == WKB else {EXTENSION: f"geoarrow.{encoding.lower()}"}
    geometry = pa.field(GEOMETRY, table[name].type, metadata=extension)
    fields = [geometry, *(table.schema.field(n) for n in own)]
    columns = [table[n] for n in (name, *own)]
    try:
        return _core.Outlines.from_arrow(pa.table(columns, schema=pa.schema(fields)))
    except BadParamsError as error:
        raise BadParamsError(f"{os.fspath(path)}: {error}") from error


def _primary_column(file: Any, path: str | os.PathLike[str]) -> tuple[str, str]:
    """The name and encoding of the column of geometries."""
    metadata = (file.schema_arrow.metadata or {}).get(b"geo")
    if metadata is None:
        raise ValueError(f"{os.fspath(path)} has no metadata of GeoParquet")
    try:
        geo = json.loads(metadata)
    except ValueError as error:
        raise ValueError(
            f"{os.fspath(path)}: the metadata of GeoParquet are not JSON: {error}"
        ) from error
    try:
        name = geo["primary_column"]
        encoding = geo["columns"][name]["encoding"]
    except (KeyError, TypeError, IndexError):
        name = encoding = None
    if not isinstance(name, str) or not isinstance(encoding, str):
        raise ValueError(
            f"{os.fspath(path)}: the metadata of GeoParquet describe no primary column and its "
            "encoding"
        )
    if name not in file.schema_arrow.names:
        raise ValueError(
            f"{os.fspath(path)}: the metadata of GeoParquet name the column {name!r}, which is "
            "not there"
        )
    return name, encoding


def _described(outlines: _core.Outlines) -> dict[str, Any]:
    column: dict[str, Any] = {
        "encoding": WKB,
        "geometry_types": outlines.geometry_types,
        "crs": None,
        "edges": "planar",
    }
    bounds = outlines.bounds
    if bounds is not None and np.isfinite(bounds).all():
        column["bbox"] = list(bounds)
    return {"version": "1.1.0", "primary_column": GEOMETRY, "columns": {GEOMETRY: column}}
