# SPDX-License-Identifier: MIT
"""Regions and sets of regions: how they are made, compared and kept."""

import copy
import pickle
from typing import Any

import numpy as np
import pytest

import cntr

SQUARE = [(0, 0), (10, 0), (10, 10), (0, 10)]
HOLE = [(2, 2), (4, 2), (4, 4), (2, 4)]


def test_a_region_has_the_outline_holes_and_label_that_it_is_given() -> None:
    region = cntr.Region(SQUARE, holes=[HOLE, np.array(HOLE) + 3], label=7)
    assert region.points.tolist() == [[0, 0], [10, 0], [10, 10], [0, 10]]
    assert (len(region), region.closed, region.label) == (4, True, 7)
    assert region.holes == (cntr.Contour(HOLE), cntr.Contour(np.array(HOLE) + 3))


def test_holes_may_be_closed_contours_with_edge_elements() -> None:
    hole = cntr.Contour(HOLE, label=3, edges=([1, 2, 3, 4], [5, 6, 7, 8]))
    region = cntr.Region(SQUARE, [hole], edges=([0, 0, 0, 9], [0, 0, 0, 1]))
    assert region.holes == (hole,)
    assert region.holes[0].label == 3
    assert region.edges is not None
    assert region.edges[0].tolist() == [0, 0, 0, 9]


def test_holes_are_copies_each_time() -> None:
    region = cntr.Region(SQUARE, [HOLE])
    assert region.holes[0] is not region.holes[0]
    assert region.holes[0].points.ctypes.data != region.holes[0].points.ctypes.data


@pytest.mark.parametrize(
    ("arguments", "error", "message"),
    [
        ({"points": [(1, 2, 3)]}, ValueError, "points must have the shape (n, 2), not (1, 3)"),
        ({"holes": [HOLE, [1]]}, ValueError, "holes[1] must have the shape (n, 2), not (1,)"),
        (
            {"holes": [cntr.Contour(HOLE, closed=False)]},
            ValueError,
            "holes[0] must be a closed contour",
        ),
        ({"label": "a"}, TypeError, "label must be a whole number, not str"),
    ],
)
def test_what_is_wrong_with_an_argument_is_said(
    arguments: dict[str, Any], error: type[Exception], message: str
) -> None:
    with pytest.raises(error) as raised:
        cntr.Region(**({"points": SQUARE} | arguments))
    assert str(raised.value) == message


def test_regions_are_equal_by_outline_and_holes() -> None:
    region = cntr.Region(SQUARE, [HOLE])
    assert region == cntr.Region(SQUARE, [HOLE], label=1)
    assert region != cntr.Region(SQUARE)
    assert region != cntr.Region(SQUARE, [HOLE, HOLE])
    assert region != cntr.Region(SQUARE, [HOLE[::-1]])
    assert cntr.Region(SQUARE) != cntr.Contour(SQUARE)


def test_regions_survive_pickling_and_copying_whole() -> None:
    edges = ([1, 2, 3, 4], [5, 6, 7, 8])
    region = cntr.Region(SQUARE, [cntr.Contour(HOLE, edges=edges)], 7, edges)
    for again in (pickle.loads(pickle.dumps(region)), copy.copy(region), copy.deepcopy(region)):
        assert again == region
        assert again.label == 7
        assert again.points.ctypes.data != region.points.ctypes.data


def test_a_set_has_copies_of_the_regions_that_it_is_given() -> None:
    regions = [cntr.Region(SQUARE, label=1), cntr.Region(HOLE, label=2)]
    both = cntr.RegionSet(regions)
    assert len(both) == 2
    assert list(both) == regions
    assert both[0] == both[-2] == regions[0]
    assert both[1].label == both[-1].label == 2
    assert both[0].points.ctypes.data != regions[0].points.ctypes.data


@pytest.mark.parametrize("number", [2, -3])
def test_a_set_has_no_regions_beyond_its_ends(number: int) -> None:
    with pytest.raises(IndexError) as raised:
        cntr.RegionSet([cntr.Region(SQUARE)] * 2)[number]
    assert str(raised.value) == "there is no such region"


def test_sets_are_made_of_regions_alone() -> None:
    with pytest.raises(TypeError) as raised:
        cntr.RegionSet([cntr.Region(SQUARE), cntr.Contour(SQUARE)])  # type: ignore[list-item]
    assert str(raised.value) == "regions[1] must be a Region, not Contour"
    with pytest.raises(TypeError) as raised:
        cntr.RegionSet(cntr.Region(SQUARE))  # type: ignore[arg-type]
    assert str(raised.value) == "regions must be an iterable of regions, not Region"


def test_holes_are_several() -> None:
    with pytest.raises(TypeError) as raised:
        cntr.Region(SQUARE, holes=5)  # type: ignore[arg-type]
    assert str(raised.value) == "holes must be an iterable of closed contours or points, not int"


def test_edge_elements_are_no_ragged_lists() -> None:
    ragged: Any = [[1], [2, 3], [4], [5]]
    with pytest.raises(TypeError, match=r"^edges\[0\], the magnitudes, must be an array of num"):
        cntr.Region(SQUARE, edges=(ragged, [1, 2, 3, 4]))


def test_sets_are_equal_by_their_regions_in_order() -> None:
    square, hole = cntr.Region(SQUARE), cntr.Region(HOLE)
    assert cntr.RegionSet([square, hole]) == cntr.RegionSet([square, hole])
    assert cntr.RegionSet([square, hole]) != cntr.RegionSet([hole, square])
    assert cntr.RegionSet([square]) != cntr.RegionSet([square, square])
    assert cntr.RegionSet() == cntr.RegionSet([])


def test_sets_survive_pickling_and_copying_whole() -> None:
    both = cntr.RegionSet([cntr.Region(SQUARE, [HOLE], label=9), cntr.Region(HOLE)])
    for again in (pickle.loads(pickle.dumps(both)), copy.copy(both), copy.deepcopy(both)):
        assert again == both
        assert again[0].label == 9


def test_features_of_a_table_keep_labels_holes_and_edge_elements() -> None:
    edges = ([1, 2, 3, 65535], [5, 6, 7, 255])
    hole = cntr.Contour(HOLE, edges=([9, 8, 7, 6], [1, 0, 1, 0]))
    region = cntr.Region(SQUARE, [hole, np.add(HOLE, 4)], 7, edges)
    line = cntr.Contour(SQUARE, False, 3, edges)
    plain = cntr.Region(HOLE)
    table = cntr.Outlines.from_regions([region, line, plain, cntr.RegionSet([region, plain])])
    assert [table[0], table[1], table[2], table[3]] == [region, line, plain, [region, plain]]
    assert table.labels.tolist() == [7, 3, 0, -1]


def test_a_set_without_regions_is_a_feature_without_geometry() -> None:
    table = cntr.Outlines.from_regions([cntr.RegionSet()])
    assert table[0] is None
    assert table.problems == {0: "empty"}


def test_features_are_made_of_shapes_alone() -> None:
    with pytest.raises(TypeError) as raised:
        cntr.Outlines.from_regions([SQUARE])  # type: ignore[list-item]
    assert str(raised.value) == "regions[0] must be a Contour, a Region or a RegionSet, not list"
