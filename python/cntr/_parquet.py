# SPDX-License-Identifier: MIT
"""Outlines in files of GeoParquet 1.1: geometry as well-known binary, and the rest beside it."""

import json
import os
from typing import TYPE_CHECKING, Any

import numpy as np

from cntr import _core

if TYPE_CHECKING:
    import pyarrow as pa

GEOMETRY = "geometry"
LABEL = "label"
PROBLEM = "problem"
EDGES = "edge_elements"
# The encodings other than WKB that hold outlines.
GEOARROW = ("linestring", "polygon", "multilinestring", "multipolygon")


class _Named:
    """A column that tells its GeoArrow type, which lists of the same depth share."""

    def __init__(self, column: "pa.Array", encoding: str) -> None:
        self._column = column
        self._encoding = encoding

    def __arrow_c_array__(self, requested_schema: object = None) -> tuple[object, object]:
        import pyarrow as pa

        name = {"ARROW:extension:name": f"geoarrow.{self._encoding}"}
        field = pa.field(GEOMETRY, self._column.type, metadata=name)
        return field.__arrow_c_schema__(), self._column.__arrow_c_array__()[1]


def write(outlines: _core.Outlines, path: str | os.PathLike[str]) -> None:
    """Writes all that there is of the outlines: labels, problems and edge elements, too."""
    import pyarrow as pa
    import pyarrow.parquet

    values, labels, problems, edges = _core.take_apart(outlines)
    columns = {
        GEOMETRY: pa.array(values, pa.binary()),
        LABEL: pa.array(labels, pa.int64(), mask=labels < 0),
    }
    if problems:
        texts = np.full(len(values), None, dtype=object)
        texts[list(problems)] = list(problems.values())
        columns[PROBLEM] = pa.array(texts, pa.string())
    if edges is not None:
        columns[EDGES] = _lists_of_edge_elements(*edges)
    table = pa.table(columns).replace_schema_metadata({"geo": json.dumps(_described(outlines))})
    pyarrow.parquet.write_table(table, path)


def read(path: str | os.PathLike[str]) -> _core.Outlines:
    """The outlines of a file of GeoParquet 1.0 or 1.1, whoever wrote it.

    Read are its primary column, and where write() has made them labels, problems and edge elements.
    Raises ValueError for other files of Parquet.
    """
    import pyarrow as pa
    import pyarrow.parquet

    file = pyarrow.parquet.ParquetFile(path)
    geo = json.loads((file.schema_arrow.metadata or {}).get(b"geo", b"null"))
    if geo is None:
        raise ValueError(f"{os.fspath(path)} has no metadata of GeoParquet")
    name = geo["primary_column"]
    encoding = geo["columns"][name]["encoding"]
    own = [n for n in (LABEL, PROBLEM, EDGES) if n in file.schema_arrow.names and n != name]
    table = file.read([name, *own])
    if encoding != "WKB":
        if encoding.lower() not in GEOARROW:
            raise ValueError(
                f"{os.fspath(path)} has the encoding {encoding}, which has no outlines"
            )
        column = table[name].combine_chunks()
        return _core.Outlines.from_arrow(_Named(column, encoding.lower()))
    labels = np.full(len(table), -1, dtype=np.int64)
    if LABEL in own and pa.types.is_integer(table[LABEL].type):
        labels = table[LABEL].fill_null(-1).to_numpy().astype(np.int64)
    problems = _problems_in(table) if PROBLEM in own else {}
    edges = _edge_elements_in(table) if EDGES in own else None
    return _core.put_together(table[name], labels, problems, edges)


def _described(outlines: _core.Outlines) -> dict[str, Any]:
    column: dict[str, Any] = {
        "encoding": "WKB",
        "geometry_types": outlines.geometry_types,
        "crs": None,
        "edges": "planar",
    }
    bounds = outlines.bounds
    if bounds is not None and np.isfinite(bounds).all():
        column["bbox"] = list(bounds)
    return {"version": "1.1.0", "primary_column": GEOMETRY, "columns": {GEOMETRY: column}}


def _lists_of_edge_elements(magnitudes: Any, angles: Any, counts: Any) -> "pa.Array":
    """Of each feature a list with an item for each vertex, null where it has no edge element."""
    import pyarrow as pa

    missing = magnitudes < 0
    fields = [
        pa.array(np.maximum(magnitudes, 0).astype(np.uint16)),
        pa.array(angles),
    ]
    elements = pa.StructArray.from_arrays(
        fields, names=["magnitude", "angle"], mask=pa.array(missing)
    )
    offsets = np.concatenate([[0], np.cumsum(counts)])
    return pa.LargeListArray.from_arrays(pa.array(offsets, pa.int64()), elements)


def _edge_elements_in(table: "pa.Table") -> tuple[Any, Any, Any]:
    import pyarrow.compute

    elements = table[EDGES].combine_chunks().flatten()
    magnitudes = pyarrow.compute.struct_field(elements, "magnitude").cast("int32")
    angles = pyarrow.compute.struct_field(elements, "angle")
    return magnitudes.fill_null(-1).to_numpy(), angles.fill_null(0).to_numpy(), None


def _problems_in(table: "pa.Table") -> dict[int, str]:
    texts = table[PROBLEM].combine_chunks()
    places = np.flatnonzero(texts.is_valid().to_numpy(zero_copy_only=False))
    return dict(zip(places.tolist(), texts.take(places).to_pylist(), strict=True))
