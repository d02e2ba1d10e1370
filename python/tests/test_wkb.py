# SPDX-License-Identifier: MIT
"""Outlines from and to well-known binary, beside Shapely."""

import struct

import hypothesis
import numpy as np
import polars
import pyarrow as pa
import pytest
import shapely
from hypothesis import strategies

import cntr

# Without negative zeros: a ring that ends with one where it began with 0 comes back with that 0.
COORDINATE = strategies.floats(-1e6, 1e6).map(lambda x: x + 0.0)
POINTS = strategies.lists(strategies.tuples(COORDINATE, COORDINATE), min_size=3, max_size=12)


def holed_square() -> shapely.Polygon:
    return shapely.Polygon(
        [(0, 0), (10, 0), (10, 10), (0, 10)], [[(1, 1), (1, 2), (2, 2)], [(5, 5), (5, 6), (6, 6)]]
    )


def geometries() -> list[shapely.Geometry | None]:
    square = holed_square()
    triangle = shapely.Polygon([(20, 0), (30, 0), (20, 5)])
    line = shapely.LineString([(0, 0), (3, 4), (5, 5)])
    return [
        square,
        shapely.MultiPolygon([square, triangle]),
        line,
        shapely.MultiLineString([line, [(7, 7), (8, 8)]]),
        None,
        triangle,
    ]


@pytest.mark.parametrize("byte_order", [0, 1])
@pytest.mark.parametrize("flavor", ["iso", "extended"])
def test_shapelys_geometries_come_back_the_same(byte_order: int, flavor: str) -> None:
    expected = geometries()
    values = shapely.to_wkb(expected, byte_order=byte_order, flavor=flavor)
    table = cntr.Outlines.from_wkb(values)
    assert shapely.from_wkb(table.to_wkb()).tolist() == expected
    assert table.to_wkb() == shapely.to_wkb(expected, byte_order=1).tolist()


def test_lists_arrays_and_arrow_columns_give_the_same() -> None:
    values = [*shapely.to_wkb(geometries()).tolist(), b"", b"\x01\x03"]
    expected = cntr.Outlines.from_wkb(values)
    assert expected.problems == {4: "null", 6: "empty", 7: "WKB ends at byte 2, 3 too early"}
    for other in (
        np.array(values, dtype=object),
        tuple(values),
        pa.array(values, pa.binary()),
        pa.array(values, pa.large_binary()),
        pa.chunked_array([values[:3], values[3:]], pa.binary()),
        pa.array([None, *values], pa.binary())[1:],
        pa.array(values, pa.binary_view()),
        polars.Series(values, dtype=polars.Binary),
    ):
        table = cntr.Outlines.from_wkb(other)
        assert table.to_wkb() == expected.to_wkb()
        assert table.problems == expected.problems


def test_third_and_fourth_coordinates_are_left_out() -> None:
    flat = shapely.Polygon([(0, 0), (1, 0), (1, 1)])
    solid = shapely.Polygon([(0, 0, 5), (1, 0, 6), (1, 1, 7)])
    table = cntr.Outlines.from_wkb([shapely.to_wkb(solid)])
    assert table.to_wkb() == [shapely.to_wkb(flat, byte_order=1)]


def test_other_geometries_are_features_without_geometry() -> None:
    others = [shapely.Point(1, 2), shapely.Polygon(), shapely.MultiPoint([(0, 0), (1, 1)])]
    table = cntr.Outlines.from_wkb(shapely.to_wkb([*others, holed_square()]))
    assert table.problems == {
        0: "a point is neither outline nor line",
        1: "empty",
        2: "a multipoint is neither outline nor line",
    }
    assert table.to_wkb()[:3] == [None, None, None]
    assert table.measure(["area"]).note.tolist()[:3] == list(table.problems.values())


def test_the_values_are_bytes() -> None:
    with pytest.raises(TypeError, match=r"^values\[1\] must be bytes or None, not str$"):
        cntr.Outlines.from_wkb([b"", "0103"])
    single = r"^values must be a list of bytes and None, not a single value$"
    for value in (b"\x01", bytearray(b"\x01"), memoryview(b"\x01")):
        with pytest.raises(TypeError, match=single):
            cntr.Outlines.from_wkb(value)
    message = r"^values must be an iterable of bytes and None, not int$"
    with pytest.raises(TypeError, match=message):
        cntr.Outlines.from_wkb(3)


def test_coordinates_that_are_no_numbers_stay_as_they_are() -> None:
    points = [(0.0, 0.0), (float("nan"), 1.0), (float("inf"), -0.0)]
    flat = [coordinate for point in points for coordinate in point]
    value = struct.pack("<BII6d", 1, 2, 3, *flat)
    table = cntr.Outlines.from_wkb([value])
    assert table.to_wkb() == [value]
    assert table.measure(["length"]).note.tolist() == ["a coordinate is not a finite number"]


@hypothesis.given(strategies.lists(strategies.binary(max_size=200), max_size=5))
def test_any_bytes_give_a_feature_each(values: list[bytes]) -> None:
    table = cntr.Outlines.from_wkb(values)
    assert len(table) == len(values)
    assert set(table.problems) == {i for i, value in enumerate(table.to_wkb()) if value is None}


@hypothesis.given(POINTS, strategies.integers(0, 400))
def test_a_value_that_is_cut_short_is_no_feature(
    points: list[tuple[float, float]], cut: int
) -> None:
    value = shapely.to_wkb(shapely.Polygon(points))
    hypothesis.assume(cut < len(value))
    table = cntr.Outlines.from_wkb([value[:cut]])
    assert list(table.problems) == [0]


@hypothesis.given(strategies.lists(POINTS, min_size=1, max_size=5))
def test_what_shapely_writes_comes_back_bit_for_bit(
    rings: list[list[tuple[float, float]]],
) -> None:
    polygons = [shapely.Polygon(ring) for ring in rings]
    values = shapely.to_wkb([*polygons, shapely.MultiPolygon(polygons)]).tolist()
    assert cntr.Outlines.from_wkb(values).to_wkb()[: len(rings)] == values[: len(rings)]


def test_values_are_whatever_holds_bytes() -> None:
    (value,) = shapely.to_wkb([holed_square()]).tolist()
    table = cntr.Outlines.from_wkb(
        [value, bytearray(value), memoryview(value), memoryview(value * 2)[: len(value)]]
    )
    assert table.to_wkb() == cntr.Outlines.from_wkb([value] * 4).to_wkb()
