# SPDX-License-Identifier: MIT
"""Outlines from and to Arrow columns: nothing copied that need not be, nothing left behind."""

import gc
import sys
from typing import Any

import numpy as np
import polars
import pyarrow as pa
import pytest

import cntr

POINT = pa.list_(pa.field("xy", pa.float64()), 2)
POLYGON = pa.list_(pa.list_(POINT))


def polygons(coordinates: np.ndarray[Any, Any], rings: list[int], features: list[int]) -> pa.Array:
    """A column of polygons whose coordinates are those of the array, where they lie."""
    numbers = pa.Array.from_buffers(
        pa.float64(), coordinates.size, [None, pa.py_buffer(coordinates)]
    )
    points = pa.FixedSizeListArray.from_arrays(numbers, 2)
    lists = pa.ListArray.from_arrays(pa.array(rings, pa.int32()), points)
    return pa.ListArray.from_arrays(pa.array(features, pa.int32()), lists)


def squares(count: int) -> np.ndarray[Any, Any]:
    """Closed rings of 5 vertices, the first of the area 1, the second of 4, and so on."""
    corners = np.array([(0, 0), (1, 0), (1, 1), (0, 1), (0, 0)], dtype=np.float64)
    return (corners * np.arange(1, count + 1)[:, None, None]).reshape(-1, 2)


def test_interleaved_coordinates_are_not_copied() -> None:
    coordinates = squares(3)
    table = cntr.Outlines.from_arrow(polygons(coordinates, [0, 5, 10, 15], [0, 1, 2, 3]))
    for feature in range(3):
        expected = coordinates.ctypes.data + feature * 5 * 16
        assert table.vertices(feature).ctypes.data == expected
    assert table.measure(["area"]).column("area").tolist() == [1.0, 4.0, 9.0]


def test_slices_of_a_column_are_not_copied_either() -> None:
    coordinates = squares(4)
    column = polygons(coordinates, [0, 5, 10, 15, 20], [0, 1, 2, 3, 4])[1:3]
    table = cntr.Outlines.from_arrow(column)
    assert table.vertices(0).ctypes.data == coordinates.ctypes.data + 5 * 16
    assert table.measure(["area"]).column("area").tolist() == [4.0, 9.0]


def test_misaligned_coordinates_are_copied_and_right() -> None:
    coordinates = squares(2)
    raw = np.zeros(coordinates.nbytes + 1, dtype=np.uint8)
    raw[1:] = np.frombuffer(coordinates.tobytes(), dtype=np.uint8)
    column = polygons(coordinates, [0, 5, 10], [0, 1, 2])
    numbers = pa.Array.from_buffers(pa.float64(), 20, [None, pa.py_buffer(raw).slice(1)])
    points = pa.FixedSizeListArray.from_arrays(numbers, 2)
    lists = pa.ListArray.from_arrays(pa.array([0, 5, 10], pa.int32()), points)
    misaligned = pa.ListArray.from_arrays(pa.array([0, 1, 2], pa.int32()), lists)
    table = cntr.Outlines.from_arrow(misaligned)
    assert list(table) == list(cntr.Outlines.from_arrow(column))
    assert not raw.ctypes.data <= table.vertices(0).ctypes.data < raw.ctypes.data + raw.nbytes


def test_the_memory_of_a_column_is_kept_as_long_as_the_outlines_and_not_longer() -> None:
    coordinates = squares(3)
    before = sys.getrefcount(coordinates)
    table = cntr.Outlines.from_arrow(polygons(coordinates, [0, 5, 10, 15], [0, 1, 2, 3]))
    assert sys.getrefcount(coordinates) > before
    rest = table[1:]
    view = rest.vertices(0)
    del table, rest
    gc.collect()
    assert sys.getrefcount(coordinates) > before
    assert view.tolist() == coordinates[5:9].tolist()
    del view
    gc.collect()
    assert sys.getrefcount(coordinates) == before


def test_columns_that_were_copied_or_refused_are_released_at_once() -> None:
    coordinates = squares(1)
    before = sys.getrefcount(coordinates)
    numbers = pa.Array.from_buffers(pa.float64(), 10, [None, pa.py_buffer(coordinates)])
    points = pa.StructArray.from_arrays([numbers[:5], numbers[5:]], names=["x", "y"])
    table = cntr.Outlines.from_arrow(pa.ListArray.from_arrays(pa.array([0, 5], pa.int32()), points))
    del numbers, points
    buffers = [pa.py_buffer(bytes(2)), pa.py_buffer(coordinates)]
    nulls = pa.FixedSizeListArray.from_arrays(pa.Array.from_buffers(pa.float64(), 10, buffers), 2)
    del buffers
    with pytest.raises(cntr.BadParamsError, match=r"^level 2: item 0 is null$"):
        cntr.Outlines.from_arrow(pa.ListArray.from_arrays(pa.array([0, 5], pa.int32()), nulls))
    del nulls
    gc.collect()
    assert sys.getrefcount(coordinates) == before
    assert len(table) == 1


def test_chunks_are_joined_in_their_order_and_not_copied() -> None:
    coordinates = [squares(1), squares(2)[5:]]
    chunks = [polygons(some, [0, 5], [0, 1]) for some in coordinates]
    empty = pa.array([], POLYGON)
    table = cntr.Outlines.from_arrow(pa.chunked_array([chunks[0], empty, chunks[1]]))
    assert table.measure(["area"]).column("area").tolist() == [1.0, 4.0]
    for feature, some in enumerate(coordinates):
        assert table.vertices(feature).ctypes.data == some.ctypes.data
    assert len(cntr.Outlines.from_arrow(pa.chunked_array([], type=POLYGON))) == 0


def test_nulls_and_empty_lists_are_features_without_geometry() -> None:
    square = squares(1).reshape(5, 2).tolist()
    table = cntr.Outlines.from_arrow(pa.array([None, [square], [], [[]]], POLYGON))
    assert table.problems == {0: "null", 2: "empty", 3: "empty"}
    assert table.measure(["area"]).status.tolist() == ["failed", "ok", "failed", "failed"]


def test_lists_go_by_their_depth() -> None:
    square = squares(1).tolist()
    line = cntr.Outlines.from_arrow(pa.array([square], pa.list_(POINT)))
    assert isinstance(line[0], cntr.Contour)
    several = cntr.Outlines.from_arrow(pa.array([[[square], [square]]], pa.list_(POLYGON)))
    assert isinstance(several[0], list)


def test_separated_coordinates_are_read() -> None:
    point = pa.struct([("x", pa.float64()), ("y", pa.float64())])
    square = [{"x": x, "y": y} for x, y in squares(1).tolist()]
    table = cntr.Outlines.from_arrow(pa.array([[square]], pa.list_(pa.list_(point))))
    assert table.vertices(0).tolist() == squares(1)[:4].tolist()


def test_polars_series_are_taken_through_their_stream() -> None:
    series = polars.Series(
        [[squares(1).tolist()]], dtype=polars.List(polars.List(polars.Array(polars.Float64, 2)))
    )
    assert cntr.Outlines.from_arrow(series).measure(["area"]).column("area").tolist() == [1.0]


@pytest.mark.parametrize("column", [[b""], 3, "text"])
def test_what_does_not_speak_arrow_is_refused(column: object) -> None:
    with pytest.raises(TypeError, match=r"^column must have the method __arrow_c_array__ or "):
        cntr.Outlines.from_arrow(column)


def test_other_columns_are_refused_with_their_format() -> None:
    with pytest.raises(cntr.BadParamsError, match=r"^the format 'l' is not that of outlines$"):
        cntr.Outlines.from_arrow(pa.array([1]))


def test_outlines_go_to_arrow_and_come_back() -> None:
    region = cntr.Region(squares(3)[:4], holes=[[(1, 1), (1, 2), (2, 2)]])
    line = cntr.Contour([(0, 0), (3, 4)], closed=False)
    several = cntr.RegionSet([region, cntr.Region([(20, 0), (30, 0), (20, 5)])])
    for shapes in ([region], [region, several], [line], [line, region], []):
        table = cntr.Outlines.from_regions(shapes)
        for again in (
            cntr.Outlines.from_arrow(table.to_arrow()),
            cntr.Outlines.from_arrow(table),
            cntr.Outlines.from_arrow(pa.table(table)),
            cntr.Outlines.from_arrow(polars.DataFrame(table)),
            cntr.Outlines.from_arrow(pa.array(table.to_arrow())),
            cntr.Outlines.from_arrow(table.to_arrow(layout="wkb")),
            cntr.Outlines.from_arrow(table.to_arrow(coordinates="separated")),
        ):
            assert list(again) == list(table)


def test_rings_repeat_their_first_vertex_going_out() -> None:
    table = cntr.Outlines.from_regions([cntr.Region(squares(1)[:4])])
    assert pa.array(table.to_arrow()).to_pylist() == [[squares(1).tolist()]]


def test_the_layout_is_chosen_or_told() -> None:
    table = cntr.Outlines.from_regions([cntr.Region(squares(1)[:4])])
    assert pa.array(table.to_arrow(layout="multipolygon")).to_pylist() == [[[squares(1).tolist()]]]
    with pytest.raises(cntr.BadParamsError, match=r"^feature 0 is made of areas, which is not"):
        table.to_arrow(layout="linestring")
    with pytest.raises(
        ValueError,
        match=r"^layout must be one of 'fitting', 'polygon', 'multipolygon', 'linestring', "
        r"'multilinestring', 'wkb', not 'point'$",
    ):
        table.to_arrow(layout="point")
    with pytest.raises(
        ValueError, match=r"^coordinates must be one of 'interleaved', 'separated', not 'z'$"
    ):
        table.to_arrow(coordinates="z")


def test_a_column_keeps_its_extension_name() -> None:
    line = cntr.Contour([(0, 0), (3, 4)], closed=False)
    column = cntr.Outlines.from_regions([line]).to_arrow(layout="multilinestring")
    field = pa.Field._import_from_c_capsule(column.__arrow_c_schema__())
    assert field.metadata == {b"ARROW:extension:name": b"geoarrow.multilinestring"}
    assert len(column) == 1
    assert cntr.Outlines.from_arrow(column)[0] == line


def test_the_text_of_a_column_counts_its_geometries() -> None:
    table = cntr.Outlines.from_regions([cntr.Contour([(0, 0), (1, 0), (1, 1)])] * 2)
    assert repr(table.to_arrow()) == "<cntr.ArrowColumn: 2 geometries>"
    assert repr(table[:1].to_arrow()) == "<cntr.ArrowColumn: 1 geometry>"


EDGES = ([1, 2, 65535], [0, 128, 255])


def labelled() -> cntr.Outlines:
    corners = [(0.0, 0.0), (9.0, 0.0), (0.0, 9.0)]
    square = squares(3)[10:14]
    return cntr.Outlines.from_regions(
        [
            cntr.Region(square, holes=[cntr.Contour(corners, edges=EDGES)], label=4294967295),
            cntr.Contour([]),
            cntr.Contour(corners, label=3, edges=EDGES),
            cntr.RegionSet([cntr.Region(square), cntr.Region(corners)]),
        ]
    )


@pytest.mark.parametrize("layout", ["fitting", "multipolygon", "wkb"])
@pytest.mark.parametrize("coordinates", ["interleaved", "separated"])
def test_a_table_keeps_labels_problems_and_edge_elements(layout: str, coordinates: str) -> None:
    for outlines in (labelled(), labelled()[::-1], labelled()[2:], labelled()[:0]):
        column = outlines.to_arrow(layout, coordinates, attributes=True)
        for table in (column, pa.table(column), pa.record_batch(column)):
            again = cntr.Outlines.from_arrow(table)
            assert again == outlines
            assert again.labels.tolist() == outlines.labels.tolist()
            assert again.problems == outlines.problems


def test_outlines_are_such_a_table_themselves() -> None:
    outlines = labelled()
    for table in (outlines, pa.table(outlines), polars.DataFrame(outlines)):
        again = cntr.Outlines.from_arrow(table)
        assert again == outlines
        assert again.labels.tolist() == outlines.labels.tolist()
        assert again.problems == outlines.problems
    table = pa.table(outlines)
    assert table.column_names == ["geometry", "label", "problem", "edge_elements"]
    assert table["label"].to_pylist() == [4294967295, None, 3, None]
    assert table["problem"].to_pylist() == [None, "empty", None, None]
    elements = [{"magnitude": m, "angle": a} for m, a in zip(*EDGES, strict=True)]
    assert table["edge_elements"].to_pylist() == [[None] * 4 + elements, [], elements, [None] * 7]
    assert pa.table(outlines[3:]).column_names == ["geometry", "label"]


def test_tables_are_not_copied_and_their_rows_count_on() -> None:
    coordinates = [squares(1), squares(2)[5:]]
    batches = [
        pa.record_batch({"label": [label], "geometry": polygons(some, [0, 5], [0, 1]), "x": ["-"]})
        for label, some in zip((7, 2**32 - 1), coordinates, strict=True)
    ]
    table = cntr.Outlines.from_arrow(pa.Table.from_batches(batches))
    assert table.labels.tolist() == [7, 2**32 - 1]
    for feature, some in enumerate(coordinates):
        assert table.vertices(feature).ctypes.data == some.ctypes.data
    last = pa.record_batch(
        {"label": [-1], "geometry": polygons(squares(1), [0, 5], [0, 1]), "x": ["-"]}
    )
    with pytest.raises(
        cntr.BadParamsError, match=r"^label in row 2 must be from 0 to 4294967295, not -1$"
    ):
        cntr.Outlines.from_arrow(pa.Table.from_batches([*batches, last]))


def test_tables_without_geometry_are_refused() -> None:
    with pytest.raises(cntr.BadParamsError, match=r"^the table has no column 'geometry'$"):
        cntr.Outlines.from_arrow(pa.table({"label": [1]}))
