# SPDX-License-Identifier: MIT
"""Single shapes asked about points, segments and directions."""

import math
from typing import Any, assert_type

import numpy as np
import pytest
import shapely
import skimage.measure
from hypothesis import given
from hypothesis import strategies as st
from numpy.typing import NDArray

import cntr

Points = NDArray[np.float64]

SQUARE = [(0, 0), (10, 0), (10, 10), (0, 10)]
HOLE = [(2, 2), (4, 2), (4, 4), (2, 4)]
RING = cntr.Region(SQUARE, [HOLE])
LINE = cntr.Contour(SQUARE, closed=False)


@st.composite
def rings(draw: st.DrawFn) -> tuple[Points, Points]:
    """A star-shaped outline and points around it."""
    generator = np.random.default_rng(draw(st.integers(0, 2**32 - 1)))
    count = draw(st.integers(3, 200))
    angle = (np.arange(count) + 0.8 * generator.random(count)) * 2 * np.pi / count
    radius = 100 * (0.3 + 0.7 * generator.random(count))
    outline = radius[:, None] * np.column_stack([np.cos(angle), np.sin(angle)])
    return outline, generator.uniform(-120, 120, (200, 2))


@pytest.mark.parametrize(
    ("point", "answer"),
    [((1, 1), True), ((3, 3), False), ((11, 1), False), ((math.nan, 1), False)],
)
def test_a_point_is_inside_where_the_region_is_filled(point: Any, answer: bool) -> None:
    assert RING.inside(point) is answer


@pytest.mark.parametrize(
    "point",
    [
        (1, 1),
        [1, 1],
        np.array([1, 1]),
        np.array([1.0, 1.0], dtype=np.float32),
        (np.float64(1), np.int64(1)),
        (np.float32(1), 1),
    ],
)
def test_a_point_may_be_a_tuple_a_list_or_an_array(point: Any) -> None:
    assert RING.inside(point) is True
    assert RING.distance(point) == 1.0
    assert RING.closest_point(point) == (0, 1)


@pytest.mark.parametrize(
    "points",
    [
        [(1, 1), (3, 3)],
        ((1, 1), (3, 3)),
        np.array([(1, 1), (3, 3)]),
        np.array([(1, 1), (3, 3)], dtype=np.float32),
        np.array([(1, 1), (3, 3)], order="F", dtype=np.float64),
        np.array([(1, 1), (9, 9), (3, 3)], dtype=np.float64)[::2],
    ],
)
def test_many_points_give_an_array_of_answers(points: Any) -> None:
    inside = RING.inside(points)
    assert inside.dtype == np.bool_
    assert inside.tolist() == [True, False]
    distance = RING.distance(points)
    assert distance.dtype == np.float64
    assert distance.tolist() == [1, 1]


def test_no_points_give_no_answers() -> None:
    assert RING.inside([]).shape == (0,)
    assert RING.distance(np.empty((0, 2))).shape == (0,)
    assert RING.closest_point([]).shape == (0, 2)
    assert RING.closest_vertex([]).points.shape == (0, 2)


@pytest.mark.parametrize(
    ("points", "error", "message"),
    [
        ((1, 2, 3), ValueError, "points must have the shape (n, 2), not (3,)"),
        (np.zeros((2, 3)), ValueError, "points must have the shape (n, 2), not (2, 3)"),
        ("ab", TypeError, "points must be an array of numbers, not of <U2"),
        ((True, False), TypeError, "points must be an array of numbers, not of bool"),
        (None, TypeError, "points must be an array of numbers, not of object"),
    ],
)
def test_what_is_no_point_is_said(points: Any, error: type[Exception], message: str) -> None:
    for ask in (RING.inside, RING.distance, RING.closest_point, RING.closest_vertex):
        with pytest.raises(error) as raised:
            ask(points)
        assert str(raised.value) == message


def test_points_in_a_set_are_those_in_any_of_its_regions() -> None:
    both = cntr.RegionSet([RING, cntr.Region(HOLE)])
    assert both.inside([(1, 1), (3, 3), (11, 1)]).tolist() == [True, True, False]
    assert cntr.RegionSet().inside((1, 1)) is False
    assert cntr.RegionSet().inside([(1, 1)]).tolist() == [False]


def test_distances_are_those_from_the_nearest_boundary() -> None:
    assert RING.distance([(5, 3), (-3, -4), (3, 3.5), (10, 5)]).tolist() == [1, 5, 0.5, 0]
    assert LINE.distance((0, 5)) == 5
    assert cntr.Contour(SQUARE).distance((0, 5)) == 0


def test_distances_from_points_inside_may_be_zero() -> None:
    assert RING.distance((5, 5), zero_inside=True) == 0
    assert RING.distance((3, 3), zero_inside=True) == 1
    points = [(5, 5), (3, 3), (20, 5)]
    assert RING.distance(points, zero_inside=True).tolist() == [0, 1, 10]
    assert RING.distance(points, zero_inside=False).tolist() == [math.sqrt(2), 1, 10]


def test_the_nearest_point_is_on_the_outline_or_a_hole() -> None:
    assert RING.closest_point((5, 3)) == (4, 3)
    assert RING.closest_point([(5, 3), (9, 5)]).tolist() == [[4, 3], [10, 5]]
    # The outline comes first where both are equally near.
    assert RING.closest_point((1, 3)) == (0, 3)


def test_the_nearest_vertex_has_its_ring_and_its_place() -> None:
    assert RING.closest_vertex((4.5, 4.5)) == cntr.Vertex(1, 2, (4, 4))
    assert RING.closest_vertex((9, 1)) == cntr.Vertex(0, 1, (10, 0))
    found = RING.closest_vertex([(4.5, 4.5), (9, 1)])
    assert found.rings.tolist() == [1, 0]
    assert found.numbers.tolist() == [2, 1]
    assert found.points.tolist() == [[4, 4], [10, 0]]


@pytest.mark.parametrize(
    ("degrees", "index"), [(0, 1), (10, 2), (90, 2), (135, 3), (180, 0), (-90, 0), (350, 1)]
)
def test_the_farthest_vertex_in_a_direction_is_the_first_of_several(
    degrees: float, index: int
) -> None:
    assert RING.extremal_vertex(degrees) == cntr.Vertex(0, index, SQUARE[index])


def test_a_direction_in_which_nothing_is_finite_has_no_farthest_vertex() -> None:
    with pytest.raises(cntr.BadParamsError) as raised:
        cntr.Contour([(math.nan, 0), (math.nan, 1)]).extremal_vertex(0)
    assert str(raised.value) == "no vertex has a finite position in that direction"


def test_crossings_come_in_order_along_the_segment_ring_by_ring() -> None:
    segment = ((-1, 3), (11, 3))
    expected = [[0, 3], [10, 3], [2, 3], [4, 3]]
    assert RING.intersections(segment).tolist() == expected
    assert RING.intersections(segment, holes=False).tolist() == expected[:2]
    assert RING.intersections(((0, 3), (11, 3)), touches=False).tolist() == expected[1:]
    assert RING.intersections(((5, 5), (6, 6))).shape == (0, 2)
    assert LINE.intersections(np.array(segment)).tolist() == [[10, 3]]


@pytest.mark.parametrize(
    ("segment", "error", "message"),
    [
        ([(0, 0)], ValueError, "segment must have the shape (2, 2), not (1, 2)"),
        ([(0, 0)] * 3, ValueError, "segment must have the shape (2, 2), not (3, 2)"),
        ((1, 2), ValueError, "segment must have the shape (2, 2), not (2,)"),
        ("x", TypeError, "segment must be an array of numbers, not of <U1"),
    ],
)
def test_what_is_no_segment_is_said(segment: Any, error: type[Exception], message: str) -> None:
    with pytest.raises(error) as raised:
        RING.intersections(segment)
    assert str(raised.value) == message


def test_crossings_of_a_shape_with_itself_are_found() -> None:
    bow_tie = [(0, 0), (10, 10), (10, 0), (0, 10)]
    assert cntr.Region(bow_tie).is_self_intersecting()
    assert cntr.Contour(bow_tie, closed=False).is_self_intersecting()
    assert not RING.is_self_intersecting()
    assert not cntr.Contour([]).is_self_intersecting()


def test_regions_of_a_set_that_cross_make_it_cross_itself() -> None:
    square = cntr.Region(SQUARE)
    moved = cntr.Region(np.array(SQUARE) + 5)
    far = cntr.Region(np.array(SQUARE) + 50)
    assert cntr.RegionSet([square, moved]).is_self_intersecting()
    assert not cntr.RegionSet([square, far]).is_self_intersecting()
    assert not cntr.RegionSet().is_self_intersecting()


@pytest.mark.parametrize(
    "ask", ["distance", "closest_point", "closest_vertex"], ids=lambda name: name
)
def test_a_single_vertex_is_no_curve_to_be_asked(ask: str) -> None:
    with pytest.raises(cntr.EmptyContourError) as raised:
        getattr(cntr.Contour([(0, 0)]), ask)((1, 1))
    assert str(raised.value) == "outline has 1 point, but needs 2"


def test_a_set_without_regions_has_no_distances() -> None:
    with pytest.raises(cntr.EmptyRegionSetError) as raised:
        cntr.RegionSet().distance((1, 1))
    assert str(raised.value) == "the set has no regions"


def test_questions_about_vertices_that_are_not_finite_are_answered_as_the_library_does() -> None:
    region = cntr.Region([(0, 0), (math.nan, 1), (3, 3)])
    assert region.extremal_vertex(0) == cntr.Vertex(0, 2, (3, 3))
    assert region.closest_vertex((3, 2.5)) == cntr.Vertex(0, 2, (3, 3))
    assert not region.is_self_intersecting()
    assert region.intersections(((0, 5), (5, 0))).tolist() == [[2.5, 2.5]]
    with pytest.raises(cntr.BadParamsError) as raised:
        region.inside((1, 1))
    assert str(raised.value) == "a coordinate is not a finite number"


def test_the_stub_tells_single_answers_from_many() -> None:
    points = np.array([(1.0, 1.0)])
    assert_type(RING.inside((1, 1)), bool)
    assert_type(RING.inside(points), NDArray[np.bool_])
    assert_type(RING.distance((1, 1), zero_inside=True), float)
    assert_type(RING.distance(points), NDArray[np.float64])
    assert_type(LINE.distance((1, 1)), float)
    assert_type(RING.closest_point((1, 1)), tuple[float, float])
    assert_type(RING.closest_point(points), NDArray[np.float64])
    assert_type(RING.closest_vertex((1, 1)), cntr.Vertex)
    assert_type(RING.closest_vertex(points), cntr.Vertices)
    assert_type(RING.transform([[1, 0, 0], [0, 1, 0]]), cntr.Region)
    assert_type(LINE.simplify(1), cntr.Contour)
    assert_type(RING | RING, cntr.RegionSet)
    assert_type(list(RING | RING), list[cntr.Region])
    assert_type(RING.deviation(LINE), cntr.Deviation)
    assert_type(RING.minimum_circle(), cntr.Circle)
    assert_type(RING.edges, tuple[NDArray[np.uint16], NDArray[np.uint8]] | None)


@given(rings())
def test_points_are_inside_where_shapely_has_them(given: tuple[Points, Points]) -> None:
    outline, points = given
    region, polygon = cntr.Region(outline), shapely.Polygon(outline)
    expected = shapely.contains_xy(polygon, points)
    far = shapely.distance(polygon.boundary, shapely.points(points)) > 1e-5
    assert region.inside(points)[far].tolist() == expected[far].tolist()
    one_by_one = [region.inside((x, y)) for x, y in points[:20].tolist()]
    assert one_by_one == region.inside(points)[:20].tolist()


@given(rings())
def test_points_are_inside_where_scikit_image_has_them(given: tuple[Points, Points]) -> None:
    outline, points = given
    far = cntr.Region(outline).distance(points) > 1e-5
    expected = skimage.measure.points_in_poly(points, outline)
    assert cntr.Region(outline).inside(points)[far].tolist() == expected[far].tolist()


@given(rings())
def test_distances_agree_with_shapely(given: tuple[Points, Points]) -> None:
    outline, points = given
    hole = outline * 0.25
    region = cntr.Region(outline, [hole])
    polygon = shapely.Polygon(outline, [hole])
    asked = shapely.points(points)
    expected = shapely.distance(polygon.boundary, asked)
    assert region.distance(points) == pytest.approx(expected, abs=1e-9)
    assert region.distance(points, zero_inside=True) == pytest.approx(
        shapely.distance(polygon, asked), abs=1e-6
    )
    nearest = region.closest_point(points)
    assert np.hypot(*(nearest - points).T) == pytest.approx(expected, abs=1e-9)
    assert [region.distance(tuple(point)) for point in points[:20].tolist()] == region.distance(
        points
    )[:20].tolist()


@given(rings())
def test_nearest_vertices_are_the_nearest_of_all(given: tuple[Points, Points]) -> None:
    outline, points = given
    region = cntr.Region(outline, [outline * 0.25])
    vertices = np.concatenate([outline, outline * 0.25])
    steps = points[:, None, :] - vertices[None, :, :]
    distances = np.sqrt(steps[..., 0] ** 2 + steps[..., 1] ** 2)
    found = region.closest_vertex(points)
    place = found.rings * len(outline) + found.numbers
    assert distances[np.arange(len(points)), place].tolist() == distances.min(1).tolist()
    assert found.points.tolist() == vertices[place].tolist()
    assert [region.closest_vertex(tuple(p))[1] for p in points[:5].tolist()] == found.numbers[
        :5
    ].tolist()


@given(rings())
def test_crossings_agree_with_shapely(given: tuple[Points, Points]) -> None:
    outline, points = given
    region, polygon = cntr.Region(outline), shapely.Polygon(outline)
    crossings = region.intersections(points[:2])
    expected = shapely.intersection(polygon.boundary, shapely.LineString(points[:2]))
    assert len(crossings) == shapely.get_num_geometries(expected) * (not expected.is_empty)
    assert shapely.distance(expected, shapely.points(crossings)) == pytest.approx(0, abs=1e-6)
