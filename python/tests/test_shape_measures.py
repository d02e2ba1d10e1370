# SPDX-License-Identifier: MIT
"""What single shapes are measured for: exactly, and beside OpenCV, Shapely and scikit-image."""

import math
from collections.abc import Callable

import cv2
import numpy as np
import pytest
import shapely
from hypothesis import given
from hypothesis import strategies as st
from numpy.typing import NDArray
from skimage.measure import EllipseModel

import cntr

Points = NDArray[np.float64]

SQUARE = [(0, 0), (10, 0), (10, 10), (0, 10)]
HOLE = [(2, 2), (4, 2), (4, 4), (2, 4)]
BOW_TIE = [(0, 0), (10, 10), (10, 0), (0, 10)]


@st.composite
def stars(draw: st.DrawFn, fewest: int = 3) -> Points:
    """Vertices around a centre, in the order of their angles: outlines that do not cross."""
    count = draw(st.integers(fewest, 40))
    seed = draw(st.integers(0, 2**32 - 1))
    centre = draw(st.sampled_from([(0, 0), (640, 480), (-3e4, 7e5)]))
    size = draw(st.sampled_from([0.5, 30, 900]))
    generator = np.random.default_rng(seed)
    angle = (np.arange(count) + 0.8 * generator.random(count)) * 2 * np.pi / count
    radius = size * (0.3 + 0.7 * generator.random(count))
    circle = np.column_stack([np.cos(angle), np.sin(angle)])
    points: Points = np.asarray(centre, dtype=np.float64) + radius[:, None] * circle
    return points


def extent(points: Points) -> float:
    return float(np.ptp(points, axis=0).max())


def test_a_region_with_a_hole_is_measured_without_it() -> None:
    region = cntr.Region(SQUARE, [HOLE])
    assert region.area() == 96
    assert region.centroid() == pytest.approx((488 / 96, 488 / 96), rel=1e-15)
    xx = 10**4 / 12 + 100 * (5 - 488 / 96) ** 2 - (2**4 / 12 + 4 * (3 - 488 / 96) ** 2)
    xy = 100 * (5 - 488 / 96) ** 2 - 4 * (3 - 488 / 96) ** 2
    assert region.inertia() == pytest.approx(np.array([[xx, xy], [xy, xx]]), rel=1e-14)
    assert region.length() == 40
    assert region.bounds == (0, 0, 10, 10)
    assert region.diameter() == math.hypot(10, 10)


def test_the_centre_of_a_region_with_holes_is_told_every_time() -> None:
    region = cntr.Region(SQUARE, [HOLE])
    assert {region.centroid() for _ in range(4)} == {region.centroid()}


@pytest.mark.parametrize("points", [SQUARE, SQUARE[::-1]])
def test_the_direction_of_a_ring_does_not_matter(points: list[tuple[int, int]]) -> None:
    region = cntr.Region(points, [HOLE])
    assert region.area() == 96
    assert region.inertia()[0, 0] == pytest.approx(815.3333333333334)


def test_what_crosses_itself_is_measured_as_filled() -> None:
    assert cntr.Region(BOW_TIE).area() == 50
    assert cntr.Region(BOW_TIE).centroid() == pytest.approx((5, 5))


def test_what_two_regions_of_a_set_cover_counts_once() -> None:
    both = cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(np.add(SQUARE, (5, 0)))])
    assert both.area() == 150
    assert both.centroid() == pytest.approx((7.5, 5))
    assert both.bounds == (0, 0, 15, 10)
    assert both.length() == 80


def test_an_open_contour_has_a_length_but_no_area() -> None:
    line = cntr.Contour(SQUARE, closed=False)
    assert line.length() == 30
    assert math.isnan(line.area())
    assert all(map(math.isnan, line.centroid()))
    assert np.isnan(line.inertia()).all()
    assert line.bounds == (0, 0, 10, 10)


def test_a_closed_contour_is_measured_like_a_region() -> None:
    contour, region = cntr.Contour(SQUARE), cntr.Region(SQUARE)
    assert contour.area() == region.area() == 100
    assert contour.length() == region.length() == 40


def test_a_line_walked_there_and_back_has_the_area_0_and_no_centre() -> None:
    flat = cntr.Region([(0, 0), (10, 0), (5, 0)])
    assert flat.area() == 0
    assert all(map(math.isnan, flat.centroid()))


def test_the_hull_is_a_region_with_the_label_of_its_shape() -> None:
    hull = cntr.Region([(0, 0), (10, 0), (5, 1), (10, 10), (0, 10)], [HOLE], label=3).hull()
    assert hull == cntr.Region(SQUARE)
    assert hull.label == 3


def test_the_hull_of_a_set_is_that_of_all_its_regions() -> None:
    both = cntr.RegionSet([cntr.Region(SQUARE, label=1), cntr.Region(np.add(SQUARE, (30, 0)))])
    assert both.hull() == cntr.Region([(0, 0), (40, 0), (40, 10), (0, 10)])
    assert both.hull().label == 0


def test_the_smallest_rectangle_lies_on_an_edge_of_the_hull() -> None:
    turned = cntr.Region([(0, 0), (4, 4), (3, 5), (-1, 1)])
    rectangle = turned.minimum_area_rect()
    assert rectangle.centre == pytest.approx((1.5, 2.5))
    assert rectangle.length == pytest.approx(math.sqrt(32))
    assert rectangle.width == pytest.approx(math.sqrt(2))
    assert rectangle.angle == pytest.approx(45)
    assert np.array(rectangle.corners) == pytest.approx(
        np.array([(0, 0), (4, 4), (3, 5), (-1, 1)]), abs=1e-14
    )


def test_the_smallest_circle_and_the_largest_one_inside_have_centre_and_radius() -> None:
    region = cntr.Region(SQUARE)
    assert region.minimum_circle() == cntr.Circle((5, 5), math.sqrt(50))
    assert region.inscribed_circle().centre == pytest.approx((5, 5), abs=1e-4)
    assert region.inscribed_circle().radius == pytest.approx(5, abs=1e-5)


def test_there_is_no_circle_in_what_has_no_area() -> None:
    assert math.isnan(cntr.Region([(0, 0), (10, 0), (5, 0)]).inscribed_circle().radius)


def test_the_ellipse_through_points_of_one_is_found() -> None:
    angle = np.linspace(0, 2 * np.pi, 12, endpoint=False)
    along, across = 9 * np.cos(angle), 4 * np.sin(angle)
    cos, sin = math.cos(math.radians(30)), math.sin(math.radians(30))
    points = np.column_stack([5 + cos * along - sin * across, 7 + sin * along + cos * across])
    ellipse = cntr.Contour(points).fit_ellipse()
    assert ellipse.centre == pytest.approx((5, 7))
    assert ellipse.radii == pytest.approx((9, 4))
    assert ellipse.angle == pytest.approx(30)
    assert ellipse.residual == pytest.approx(0, abs=1e-9)


def test_no_ellipse_fits_points_on_a_line() -> None:
    ellipse = cntr.Contour([(0, 0), (1, 1), (2, 2), (3, 3)]).fit_ellipse()
    assert all(map(math.isnan, (*ellipse.centre, *ellipse.radii, ellipse.angle, ellipse.residual)))


@pytest.mark.parametrize(
    ("shape", "message"),
    [
        (cntr.Region([]), "outline has 0 points, but needs 3"),
        (cntr.Region([(0, 0), (1, 1)]), "outline has 2 points, but needs 3"),
        (cntr.Region(SQUARE, [HOLE, HOLE[:1]]), "hole 2 has 1 point, but needs 3"),
        (cntr.Contour([(0, 0)], closed=False), "line has 1 point, but needs 2"),
        (
            cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(HOLE[:2])]),
            "part 2, outline has 2 points, but needs 3",
        ),
    ],
)
def test_too_few_vertices_are_an_error_that_says_which(shape: cntr.Shape, message: str) -> None:
    for ask in (shape.area, shape.centroid, shape.inertia, shape.length, shape.minimum_circle):
        with pytest.raises(cntr.EmptyContourError) as raised:
            ask()
        assert str(raised.value) == message


def test_a_set_without_regions_has_sums_but_no_places() -> None:
    empty = cntr.RegionSet()
    assert empty.area() == 0
    assert empty.length() == 0
    for ask in (empty.centroid, empty.inertia, empty.hull, lambda: empty.bounds):
        with pytest.raises(cntr.EmptyRegionSetError) as raised:
            ask()
        assert str(raised.value) == "the set has no regions"


@pytest.mark.parametrize("bad", [math.nan, math.inf, -math.inf])
def test_coordinates_that_are_not_finite_cannot_be_measured(bad: float) -> None:
    with pytest.raises(cntr.BadParamsError) as raised:
        cntr.Region([(0, 0), (bad, 0), (1, 1)]).area()
    assert str(raised.value) == "a coordinate is not a finite number"
    with pytest.raises(cntr.BadParamsError) as raised:
        cntr.Region([(0, 0), (bad, 0), (1, 1)]).hull()
    assert str(raised.value) == "a coordinate is not a finite number"


SAME: list[tuple[list[str], Callable[[cntr.Region], object]]] = [
    (["area"], lambda r: r.area()),
    (["length"], lambda r: r.length()),
    (["diameter"], lambda r: r.diameter()),
    (["centre_x", "centre_y"], lambda r: r.centroid()),
    (["moment_xx", "moment_xy", "moment_xy", "moment_yy"], lambda r: r.inertia()),
    (["box_x", "box_y"], lambda r: r.minimum_area_rect().centre),
    (["box_length", "box_width", "box_angle"], lambda r: r.minimum_area_rect()[1:4]),
    (["circle_x", "circle_y"], lambda r: r.minimum_circle().centre),
    (["circle_radius"], lambda r: r.minimum_circle().radius),
    (["inscribed_x", "inscribed_y"], lambda r: r.inscribed_circle().centre),
    (["inscribed_radius"], lambda r: r.inscribed_circle().radius),
    (["ellipse_x", "ellipse_y"], lambda r: r.fit_ellipse().centre),
    (["ellipse_radius1", "ellipse_radius2"], lambda r: r.fit_ellipse().radii),
    (["ellipse_rotation"], lambda r: r.fit_ellipse().angle),
    (["ellipse_residual"], lambda r: r.fit_ellipse().residual),
    (["left", "top"], lambda r: r.bounds[:2]),
]


@given(stars())
def test_measures_are_those_of_many_outlines_bit_for_bit(points: Points) -> None:
    region = cntr.Region(points, [points * 0.25 + points.mean(0) * 0.75])
    names = sorted({name for names, _ in SAME for name in names})
    row = cntr.Outlines.from_regions([region]).measure(names)
    expected = {name: float(row.column(name)[0]) for name in names}
    for asked, answer in SAME:
        for _ in range(2):
            given_bits = np.array(answer(region), dtype=np.float64).ravel().view(np.uint64)
            wanted = np.array([expected[name] for name in asked]).view(np.uint64)
            assert given_bits.tolist() == wanted.tolist(), asked


@given(stars())
def test_measures_agree_with_shapely(points: Points) -> None:
    region, polygon = cntr.Region(points), shapely.Polygon(points)
    size = extent(points)
    assert region.area() == pytest.approx(polygon.area, rel=1e-6)
    # Far from the origin the other centre has lost digits.
    assert region.centroid() == pytest.approx(
        (polygon.centroid.x, polygon.centroid.y), abs=1e-3 * size
    )
    assert region.length() == pytest.approx(polygon.length, rel=1e-12)
    assert region.bounds == polygon.bounds
    assert region.hull().area() == pytest.approx(polygon.convex_hull.area, rel=1e-9)
    near = shapely.Polygon(points - points.mean(0))
    rectangle = region.minimum_area_rect()
    assert rectangle.length * rectangle.width == pytest.approx(
        shapely.oriented_envelope(near).area, rel=1e-6
    )
    assert region.minimum_circle().radius == pytest.approx(
        shapely.minimum_bounding_radius(near), rel=1e-6
    )
    largest = shapely.maximum_inscribed_circle(near, 1e-4 * size).length
    assert region.inscribed_circle().radius == pytest.approx(largest, abs=2e-4 * size)


@given(stars())
def test_measures_agree_with_opencv(points: Points) -> None:
    # OpenCV computes with 32-bit coordinates.
    near = (points - points.mean(0)).astype(np.float32)
    region = cntr.Region(near)
    size = extent(points)
    assert region.area() == pytest.approx(cv2.contourArea(near), rel=1e-5)
    assert region.length() == pytest.approx(cv2.arcLength(near, True), rel=1e-5)
    moments = cv2.moments(near)
    centre = (moments["m10"] / moments["m00"], moments["m01"] / moments["m00"])
    assert region.centroid() == pytest.approx(centre, abs=1e-4 * size)
    second = np.array([[moments["mu20"], moments["mu11"]], [moments["mu11"], moments["mu02"]]])
    assert region.inertia() == pytest.approx(second, abs=1e-4 * size**4)
    assert region.minimum_circle().radius == pytest.approx(
        cv2.minEnclosingCircle(near)[1], abs=1e-3 * size
    )


@given(st.integers(0, 2**32 - 1))
def test_the_fitted_ellipse_agrees_with_scikit_image(seed: int) -> None:
    generator = np.random.default_rng(seed)
    angle = np.linspace(0, 2 * np.pi, 30, endpoint=False)
    points = np.column_stack([50 * np.cos(angle), 20 * np.sin(angle)])
    points += generator.normal(scale=0.3, size=points.shape)
    ellipse = cntr.Contour(points).fit_ellipse()
    model = EllipseModel.from_estimate(points)
    assert sorted(ellipse.radii) == pytest.approx(sorted(model.axis_lengths), rel=1e-6)
    assert ellipse.centre == pytest.approx(tuple(model.center), abs=1e-6)
