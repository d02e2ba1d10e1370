# SPDX-License-Identifier: MIT
"""GeoParquet 1.1 files: geometry as well-known binary, all else in sibling columns."""

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
    """Writes the outlines with their labels, problems and edge elements."""
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
    """The outlines in a GeoParquet 1.0 or 1.1 file, whoever wrote it.

    Reads the primary column and, if they have the types that to_parquet() gives them, labels,
    problems and edge elements; other columns with these names are ignored. Raises ValueError for
    other Parquet files, and for numbers out of range for labels or edge elements.
    """
    import pyarrow.parquet

    file = pyarrow.parquet.ParquetFile(path)
    name, encoding = _primary_column(file, path)
    own = [n for n in (LABEL, PROBLEM, EDGES) if n != name and _is_own(file.schema_arrow, n)]
    table = file.read([name, *own])
    if encoding != "WKB":
        if encoding.lower() not in GEOARROW:
            raise ValueError(
                f"{os.fspath(path)} has the encoding {encoding}, which has no outlines"
            )
        column = table[name].combine_chunks()
        return _core.Outlines.from_arrow(_Named(column, encoding.lower()))
    labels = np.full(len(table), -1, dtype=np.int64)
    if LABEL in own:
        labels = _whole_numbers(
            table[LABEL].combine_chunks(), 2**32 - 1, f"{os.fspath(path)}: {LABEL}"
        )
    problems = _problems_in(table) if PROBLEM in own else {}
    edges = _edge_elements_in(table, path) if EDGES in own else None
    return _core.put_together(table[name], labels, problems, edges)


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


def _is_own(schema: "pa.Schema", name: str) -> bool:
    """Whether there is such a column, of a type that write() could have given it."""
    from pyarrow import types

    if schema.get_field_index(name) < 0:
        return False
    of = schema.field(name).type
    if name == LABEL:
        return bool(types.is_integer(of))
    if name == PROBLEM:
        return bool(types.is_string(of) or types.is_large_string(of))
    if not (types.is_list(of) or types.is_large_list(of)) or not types.is_struct(of.value_type):
        return False
    fields = [of.value_type.get_field_index(field) for field in ("magnitude", "angle")]
    return all(i >= 0 and types.is_integer(of.value_type.field(i).type) for i in fields)


def _whole_numbers(values: "pa.Array", largest: int, what: str, rows: Any = None) -> Any:
    """The numbers, and -1 for null; of each in `rows` the row that it is in, if not its own."""
    missing = values.is_null().to_numpy(zero_copy_only=False)
    numbers = values.fill_null(0).to_numpy(zero_copy_only=False)
    wrong = np.flatnonzero((numbers < 0) | (numbers > largest))
    if len(wrong) > 0:
        first = wrong[0]
        row = first if rows is None else rows[first]
        raise ValueError(f"{what} in row {row} must be from 0 to {largest}, not {numbers[first]}")
    return np.where(missing, -1, numbers.astype(np.int64))


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


def _edge_elements_in(table: "pa.Table", path: str | os.PathLike[str]) -> tuple[Any, Any, Any]:
    """As take_apart() gives them."""
    import pyarrow.compute

    column = table[EDGES].combine_chunks()
    counts = pyarrow.compute.list_value_length(column).fill_null(0).to_numpy().astype(np.int64)
    elements = column.flatten()
    rows = np.repeat(np.arange(len(counts)), counts)
    where = f"{os.fspath(path)}: {EDGES}"
    magnitudes, angles = (
        _whole_numbers(
            pyarrow.compute.struct_field(elements, field), largest, f"{where}: {field}", rows
        )
        for field, largest in (("magnitude", 65535), ("angle", 255))
    )
    magnitudes[angles < 0] = -1
    return magnitudes.astype(np.int32), np.maximum(angles, 0).astype(np.uint8), counts


def _problems_in(table: "pa.Table") -> dict[int, str]:
    texts = table[PROBLEM].combine_chunks()
    places = np.flatnonzero(texts.is_valid().to_numpy(zero_copy_only=False))
    return dict(zip(places.tolist(), texts.take(places).to_pylist(), strict=True))
