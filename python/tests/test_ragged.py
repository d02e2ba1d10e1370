# SPDX-License-Identifier: MIT
"""Outlines from and to ragged arrays."""

import gc
import sys
from typing import Any, Literal

import numpy as np
import pytest
import shapely

import cntr

XY = np.array(
    [(0, 0), (10, 0), (10, 10), (0, 10), (1, 1), (1, 2), (2, 2), (20, 0), (30, 0), (20, 5)],
    dtype=np.float64,
)
RINGS = [0, 4, 7, 10]
SQUARE, HOLE, TRIANGLE = XY[:4], XY[4:7], XY[7:]


def test_rings_become_features_with_holes() -> None:
    table = cntr.Outlines.from_ragged(XY, RINGS, [0, 2, 3])
    assert list(table) == [cntr.Region(SQUARE, holes=[HOLE]), cntr.Region(TRIANGLE)]


def test_without_feature_offsets_each_ring_or_part_is_a_feature() -> None:
    assert len(cntr.Outlines.from_ragged(XY, RINGS)) == 3
    parts = cntr.Outlines.from_ragged(XY, RINGS, part_offsets=[0, 2, 3])
    assert list(parts) == [cntr.Region(SQUARE, holes=[HOLE]), cntr.Region(TRIANGLE)]


def test_part_offsets_make_features_of_several_parts() -> None:
    table = cntr.Outlines.from_ragged(XY, RINGS, [0, 2], [0, 2, 3])
    assert table[0] == [cntr.Region(SQUARE, holes=[HOLE]), cntr.Region(TRIANGLE)]


def test_lines_are_not_closed() -> None:
    table = cntr.Outlines.from_ragged(XY, RINGS, [0, 1, 3], kind="lines")
    assert table[0] == cntr.Contour(SQUARE, closed=False)
    assert table[1] == [cntr.Contour(HOLE, closed=False), cntr.Contour(TRIANGLE, closed=False)]


def test_float64_in_c_order_is_not_copied_and_is_kept() -> None:
    xy = XY.copy()
    before = sys.getrefcount(xy)
    table = cntr.Outlines.from_ragged(xy, RINGS)
    assert table.vertices(1).ctypes.data == xy.ctypes.data + 4 * 16
    assert sys.getrefcount(xy) > before
    view = table[1:].vertices(0)
    del table
    gc.collect()
    assert view.tolist() == HOLE.tolist()
    del view
    gc.collect()
    assert sys.getrefcount(xy) == before


def test_an_array_that_is_refused_is_released() -> None:
    xy = XY.copy()
    before = sys.getrefcount(xy)
    with pytest.raises(cntr.BadParamsError):
        cntr.Outlines.from_ragged(xy, [0, 11])
    assert sys.getrefcount(xy) == before


@pytest.mark.parametrize(
    "xy",
    [
        XY.astype(np.float32),
        XY.astype(np.int64),
        XY.astype(">f8"),
        np.asfortranarray(XY),
        np.repeat(XY, 2, axis=0)[::2],
        XY.tolist(),
    ],
)
def test_other_coordinates_are_copied_and_the_same(xy: Any) -> None:
    assert cntr.Outlines.from_ragged(xy, RINGS) == cntr.Outlines.from_ragged(XY, RINGS)


@pytest.mark.parametrize("dtype", ["i4", "u4", "i8", ">i8", "i2"])
def test_offsets_are_whole_numbers_of_any_type(dtype: str) -> None:
    table = cntr.Outlines.from_ragged(XY, np.array(RINGS, dtype), np.array([0, 2, 3], dtype))
    assert table == cntr.Outlines.from_ragged(XY, RINGS, [0, 2, 3])


@pytest.mark.parametrize(
    ("rings", "features", "message"),
    [
        ([0, 4, 3], [0, 1], r"^ring offset 2 is 3, less than 4 before it$"),
        ([0, 11], [0, 1], r"^ring offset 1 is 11, but there are 10 vertices$"),
        ([-1, 4], [0, 1], r"^ring offset 0 is -1, which is negative$"),
        ([0, 4], [0, 2], r"^feature offset 1 is 2, but there are 1 rings$"),
    ],
)
def test_offsets_that_contradict_the_arrays_are_named(
    rings: list[int], features: list[int], message: str
) -> None:
    with pytest.raises(cntr.BadParamsError, match=message):
        cntr.Outlines.from_ragged(XY, rings, features)


def test_arguments_of_other_types_are_named() -> None:
    with pytest.raises(
        TypeError,
        match=r"^ring_offsets must be a list of whole numbers, not an array of float64 of the "
        r"shape \(2,\)$",
    ):
        cntr.Outlines.from_ragged(XY, [0.0, 4.0])
    with pytest.raises(TypeError, match=r"^part_offsets must be .* of the shape \(1, 2\)$"):
        cntr.Outlines.from_ragged(XY, [0, 4], part_offsets=[[0, 1]])
    with pytest.raises(ValueError, match=r"^xy must have the shape \(n, 2\), not \(5, 4\)$"):
        cntr.Outlines.from_ragged(XY.reshape(5, 4), [0, 4])
    with pytest.raises(ValueError, match=r"^kind must be 'areas' or 'lines', not 'points'$"):
        cntr.Outlines.from_ragged(XY, [0, 4], kind="points")  # type: ignore[arg-type]


def test_ragged_arrays_come_back_with_closed_rings() -> None:
    table = cntr.Outlines.from_ragged(XY, RINGS, [0, 2, 3])
    _, rings, features, parts = table.to_ragged()
    assert rings.tolist() == [0, 5, 9, 13]
    assert parts.tolist() == [0, 2, 3]
    assert features.tolist() == [0, 1, 2]
    assert cntr.Outlines.from_ragged(*table.to_ragged()) == table


def test_shapely_takes_and_gives_the_same_ragged_arrays() -> None:
    polygons = shapely.from_wkb(cntr.Outlines.from_ragged(XY, RINGS, [0, 2, 3]).to_wkb())
    _, xy, (rings, features) = shapely.to_ragged_array(polygons)
    assert cntr.Outlines.from_ragged(xy, rings, features).to_shapely().tolist() == polygons.tolist()


KINDS: list[Literal["areas", "lines"]] = ["areas", "lines"]


@pytest.mark.parametrize("kind", KINDS)
def test_ragged_arrays_are_taken_in_the_order_in_which_they_are_given(
    kind: Literal["areas", "lines"],
) -> None:
    for table in (
        cntr.Outlines.from_ragged(XY, RINGS, [0, 1, 1, 3], kind=kind),
        cntr.Outlines.from_ragged(XY, RINGS, kind=kind)[:0],
    ):
        assert cntr.Outlines.from_ragged(*table.to_ragged(), kind=kind) == table
    table = cntr.Outlines.from_ragged(XY, RINGS, [0, 1, 2], [0, 2, 3])
    assert cntr.Outlines.from_ragged(*table.to_ragged()) == table


def test_lines_have_no_parts_of_several_rings() -> None:
    with pytest.raises(cntr.BadParamsError, match=r"^lines have no part offsets"):
        cntr.Outlines.from_ragged(XY, RINGS, [0, 1], [0, 3], kind="lines")


def test_offsets_are_not_empty_too_large_or_ragged() -> None:
    largest = np.array([0, 2**64 - 1], dtype=np.uint64)
    with pytest.raises(
        ValueError, match=r"^ring_offsets has the offset 18446744073709551615, which is too large$"
    ):
        cntr.Outlines.from_ragged(XY, largest)
    empty: list[Any] = [[], np.array([], dtype=np.int64)]
    for offsets in empty:
        with pytest.raises(ValueError, match=r"^feature_offsets must not be empty: "):
            cntr.Outlines.from_ragged(XY, RINGS, offsets)
    with pytest.raises(ValueError, match=r"^ring_offsets must not be empty: "):
        cntr.Outlines.from_ragged([], [])
    ragged: Any = [[0], [1, 2]]
    with pytest.raises(TypeError, match=r"^part_offsets must be an array of numbers: "):
        cntr.Outlines.from_ragged(XY, RINGS, part_offsets=ragged)
