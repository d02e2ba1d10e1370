# SPDX-License-Identifier: MIT
"""Shapes that come of others: moved, simplified, repaired, united."""

from typing import Any

import numpy as np
import pytest
import shapely
from hypothesis import given
from hypothesis import strategies as st
from numpy.typing import NDArray

import cntr

Points = NDArray[np.float64]

SQUARE = [(0, 0), (10, 0), (10, 10), (0, 10)]
HOLE = [(2, 2), (4, 2), (4, 4), (2, 4)]
BOW_TIE = [(0, 0), (10, 10), (10, 0), (0, 10)]
EDGES = ([1, 2, 3, 4], [5, 6, 7, 8])


@st.composite
def tangles(draw: st.DrawFn) -> Points:
    """Rings that mostly cross themselves."""
    generator = np.random.default_rng(draw(st.integers(0, 2**32 - 1)))
    return generator.uniform(0, 100, (draw(st.integers(3, 12)), 2))


def polygon_of(region: cntr.Region) -> shapely.Polygon:
    return shapely.Polygon(region.points, [hole.points for hole in region.holes])


def geometry_of(regions: cntr.RegionSet) -> shapely.MultiPolygon:
    return shapely.MultiPolygon([polygon_of(region) for region in regions])


def test_a_transform_moves_outline_and_holes() -> None:
    region = cntr.Region(SQUARE, [HOLE], label=7, edges=EDGES)
    moved = region.transform([[2, 0, 1], [0, 1, 5]])
    assert moved.points.tolist() == [[1, 5], [21, 5], [21, 15], [1, 15]]
    assert moved.holes[0].points.tolist() == [[5, 7], [9, 7], [9, 9], [5, 9]]
    assert moved.label == 7
    assert moved.edges is None
    assert region.points.tolist() == [list(p) for p in SQUARE]


def test_a_transform_keeps_the_kind_of_shape() -> None:
    shift = [[1, 0, 3], [0, 1, 4]]
    line = cntr.Contour(SQUARE, closed=False, label=2).transform(shift)
    assert isinstance(line, cntr.Contour)
    assert (line.closed, line.label) == (False, 2)
    both = cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(HOLE)]).transform(shift)
    assert both == cntr.RegionSet(
        [cntr.Region(np.add(SQUARE, (3, 4))), cntr.Region(np.add(HOLE, (3, 4)))]
    )


def test_a_transform_turns_from_the_x_axis_towards_the_y_axis() -> None:
    quarter = cntr.Contour([(1, 0), (2, 0)], closed=False).transform([[0, -1, 0], [1, 0, 0]])
    assert quarter.points.tolist() == [[0, 1], [0, 2]]


@pytest.mark.parametrize(
    ("matrix", "error", "message"),
    [
        (np.eye(3), ValueError, "matrix must have the shape (2, 3), not (3, 3)"),
        (np.eye(2), ValueError, "matrix must have the shape (2, 3), not (2, 2)"),
        ("x", TypeError, "matrix must be an array of numbers, not of <U1"),
    ],
)
def test_what_is_no_transform_is_said(matrix: Any, error: type[Exception], message: str) -> None:
    with pytest.raises(error) as raised:
        cntr.Region(SQUARE).transform(matrix)
    assert str(raised.value) == message


def test_simplifying_leaves_out_vertices_within_the_tolerance() -> None:
    points = [(0, 0), (5, 0.5), (10, 0), (10, 10), (0, 10)]
    region = cntr.Region(points, [HOLE], label=3)
    assert region.simplify(1) == cntr.Region(SQUARE, [HOLE])
    assert region.simplify(1).label == 3
    assert region.simplify(0.4) == region
    line = cntr.Contour([(0, 0), (1, 0), (2, 0)], closed=False)
    assert line.simplify(0).points.tolist() == [[0, 0], [2, 0]]


def test_kept_vertices_keep_their_edge_elements() -> None:
    contour = cntr.Contour(
        [(0, 0), (5, 0), (10, 0), (10, 10), (0, 10)], edges=([1, 2, 3, 4, 5], [6, 7, 8, 9, 0])
    )
    kept = contour.simplify(0)
    assert kept.edges is not None
    assert kept.points.tolist() == [[0, 0], [10, 0], [10, 10], [0, 10]]
    assert kept.edges[0].tolist() == [1, 3, 4, 5]
    assert kept.edges[1].tolist() == [6, 8, 9, 0]


@pytest.mark.parametrize("tolerance", [-1, float("nan"), float("inf")])
def test_tolerances_are_finite_and_not_negative(tolerance: float) -> None:
    with pytest.raises(cntr.BadParamsError) as raised:
        cntr.Region(SQUARE).simplify(tolerance)
    assert str(raised.value) == "tolerance is negative or not finite"


def test_what_does_not_cross_is_regularized_to_itself() -> None:
    region = cntr.Region(SQUARE, [HOLE], label=4, edges=EDGES)
    for repaired in (region.regularize(), region.outer_hull()):
        assert repaired == region
        assert repaired.label == 4


def test_a_walk_leaves_out_what_is_covered_twice() -> None:
    lobes = cntr.Region([(0, 0), (4, 0), (4, 3), (1, 3), (1, 1), (6, 1), (6, 5), (0, 5)], label=2)
    assert lobes.is_self_intersecting()
    assert lobes.regularize().area() == 22
    assert lobes.outer_hull().area() == 28
    assert lobes.regularize().label == lobes.outer_hull().label == 2


def test_a_walk_that_finds_no_start_is_an_error() -> None:
    pentagram = [(0, 10), (6, -8), (-10, 3), (10, 3), (-6, -8)]
    with pytest.raises(cntr.BadParamsError) as raised:
        cntr.Region(pentagram).regularize()
    assert str(raised.value) == "invalid contour"


def test_regions_of_a_set_that_cross_are_merged() -> None:
    both = cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(np.array(SQUARE) + 5)])
    merged = both.outer_hull()
    assert len(merged) == 1
    # What both cover is left out, as it is along one outline.
    assert merged.area() == 150
    assert both.make_valid().area() == 175
    apart = cntr.RegionSet([cntr.Region(SQUARE, [HOLE]), cntr.Region(np.array(SQUARE) + 50)])
    assert apart.regularize() == apart


def test_repair_keeps_the_area_of_the_rule() -> None:
    twice = cntr.Region([(0, 0), (10, 0), (10, 10), (0, 10)] * 2)
    assert twice.make_valid().area() == 100
    with pytest.raises(cntr.BadParamsError) as raised:
        twice.make_valid("evenodd")
    assert str(raised.value) == "the feature has no area"


def test_repaired_regions_are_in_normal_form_with_the_label() -> None:
    repaired = cntr.Region(BOW_TIE, label=6).make_valid()
    assert [region.points.tolist() for region in repaired] == [
        [[0, 0], [5, 5], [0, 10]],
        [[5, 5], [10, 0], [10, 10]],
    ]
    assert [region.label for region in repaired] == [6, 6]


def test_there_are_two_rules() -> None:
    with pytest.raises(ValueError, match="rule") as raised:
        cntr.Region(SQUARE).make_valid("walk")  # type: ignore[arg-type]
    assert str(raised.value) == "rule must be 'nonzero' or 'evenodd', not 'walk'"


def test_set_operations_give_sets_of_regions() -> None:
    a, b = cntr.Region(SQUARE), cntr.Region(np.array(SQUARE) + 5)
    assert (a | b).area() == 175
    assert (a & b) == cntr.RegionSet([cntr.Region(np.array([(5, 5), (10, 5), (10, 10), (5, 10)]))])
    assert (a - b).area() == 75
    assert (a ^ b).area() == 150
    assert len(a ^ b) == 2


def test_what_two_shapes_have_not_in_common_is_an_empty_set() -> None:
    common = cntr.Region(SQUARE) & cntr.Region(np.array(SQUARE) + 50)
    assert len(common) == 0
    assert common.area() == 0


def test_sets_and_regions_can_be_united_with_each_other() -> None:
    region = cntr.Region(SQUARE)
    both = cntr.RegionSet([region, cntr.Region(np.array(SQUARE) + 20)])
    assert (region | both).area() == (both | region).area() == (both | both).area() == 200
    assert (both - region)[0] == cntr.Region(np.array(SQUARE) + 20)
    assert (both | cntr.RegionSet()).area() == 200


@pytest.mark.parametrize("other", [cntr.Contour(SQUARE), 1, None])
def test_nothing_but_areas_can_be_united(other: Any) -> None:
    with pytest.raises(TypeError, match="unsupported operand"):
        _ = cntr.Region(SQUARE) | other


@given(tangles(), tangles())
def test_set_operations_agree_with_shapely(one: Points, other: Points) -> None:
    a, b = cntr.Region(one), cntr.Region(other)
    first, second = geometry_of(a.make_valid()), geometry_of(b.make_valid())
    for ours, theirs in (
        (a | b, first | second),
        (a & b, first & second),
        (a - b, first - second),
        (a ^ b, first ^ second),
    ):
        assert geometry_of(ours).is_valid
        assert geometry_of(ours).area == pytest.approx(theirs.area, abs=1e-6)
        assert ours.area() == pytest.approx(theirs.area, abs=1e-6)


@given(tangles())
def test_repair_by_even_and_odd_agrees_with_shapely(points: Points) -> None:
    ours = cntr.Region(points).make_valid("evenodd")
    theirs = shapely.make_valid(shapely.Polygon(points), method="structure")
    by_lines = shapely.make_valid(shapely.Polygon(points), method="linework")
    assert geometry_of(ours).is_valid
    assert ours.area() == pytest.approx(by_lines.area, abs=1e-6)
    assert cntr.Region(points).make_valid().area() >= theirs.area - 1e-6


@given(tangles(), st.floats(0, 30))
def test_simplified_outlines_stay_within_the_tolerance(points: Points, tolerance: float) -> None:
    before = cntr.Contour(points, closed=False)
    after = before.simplify(tolerance)
    assert len(after) >= 2
    assert after.distance(before.points).max() <= tolerance * (1 + 1e-12)
    assert {tuple(p) for p in after.points.tolist()} <= {tuple(p) for p in points.tolist()}
