# SPDX-License-Identifier: MIT
"""Outlines from and to Shapely's geometries, and the same answers as Shapely's."""

import hypothesis
import numpy as np
import pytest
import shapely
from hypothesis import strategies

import cntr

SQUARE = shapely.Polygon([(0, 0), (10, 0), (10, 10), (0, 10)], [[(1, 1), (1, 2), (2, 2)]])
LINE = shapely.LineString([(0, 0), (3, 4)])


def stars(seed: int, count: int = 20) -> list[shapely.Polygon]:
    """Outlines that do not cross themselves, of different sizes anywhere."""
    rng = np.random.default_rng(seed)
    scale = 10.0 ** rng.integers(-3, 4, count)
    result = []
    for i in range(count):
        n = int(rng.integers(4, 40))
        # No two neighbours are half a turn apart.
        angles = (np.arange(n) + 0.9 * rng.random(n)) * (2 * np.pi / n)
        radii = rng.random(n) + 0.1
        circle = np.stack([np.cos(angles), np.sin(angles)], axis=1) * radii[:, None]
        result.append(shapely.Polygon((circle + rng.random(2) * 10) * scale[i]))
    return result


def test_geometries_come_back_the_same() -> None:
    geometries = [SQUARE, None, shapely.MultiPolygon(stars(1, 1)), LINE]
    geometries.append(shapely.MultiLineString([LINE, [(5, 5), (6, 6)]]))
    table = cntr.Outlines.from_shapely(geometries)
    # A multipolygon of one part is a polygon here.
    geometries[2] = stars(1, 1)[0]
    assert table.to_shapely().tolist() == geometries
    assert cntr.Outlines.from_shapely(np.array(geometries)) == table


def test_a_single_geometry_is_one_feature() -> None:
    assert cntr.Outlines.from_shapely(SQUARE).to_shapely().tolist() == [SQUARE]


def test_no_geometries_are_no_features() -> None:
    assert len(cntr.Outlines.from_shapely([])) == 0
    assert cntr.Outlines.from_shapely([]).to_shapely().shape == (0,)


def test_what_shapely_does_not_know_is_refused_by_it() -> None:
    with pytest.raises(TypeError):
        cntr.Outlines.from_shapely(["POLYGON"])


@hypothesis.given(strategies.integers(0, 2**32 - 1))
def test_measures_are_those_of_shapely(seed: int) -> None:
    polygons = stars(seed)
    measured = cntr.Outlines.from_shapely(polygons).measure(
        ["area", "perimeter", "centre_x", "centre_y", "hull_area", "left", "width", "circle_radius"]
    )
    assert set(measured.status) == {"ok"}
    bounds = shapely.bounds(polygons)
    size = np.max(bounds[:, 2:] - bounds[:, :2], axis=1)
    for name, expected, scale in [
        ("area", shapely.area(polygons), size**2),
        ("perimeter", shapely.length(polygons), size),
        ("centre_x", shapely.get_x(shapely.centroid(polygons)), size**3 / shapely.area(polygons)),
        ("centre_y", shapely.get_y(shapely.centroid(polygons)), size**3 / shapely.area(polygons)),
        ("hull_area", shapely.area(shapely.convex_hull(polygons)), size**2),
        ("left", bounds[:, 0], size),
        ("width", bounds[:, 2] - bounds[:, 0], size),
        ("circle_radius", shapely.minimum_bounding_radius(polygons), size),
    ]:
        difference = np.abs(measured.column(name) - expected)
        # Shapely sums up from the first vertex or the origin, which is up to a hundred sizes away.
        assert np.all(difference <= 1e-9 * np.maximum(scale, np.abs(expected))), name


@hypothesis.given(strategies.integers(0, 2**32 - 1))
def test_valid_outlines_fill_what_shapely_fills(seed: int) -> None:
    rng = np.random.default_rng(seed)
    polygons = shapely.polygons(rng.random((20, rng.integers(4, 12), 2)))
    made = cntr.Outlines.from_shapely(polygons).make_valid("evenodd").to_shapely()
    assert all(shapely.is_valid(made))
    # Of a single ring Shapely fills by the rule evenodd, too.
    expected = shapely.make_valid(polygons)
    np.testing.assert_allclose(shapely.area(made), shapely.area(expected), rtol=1e-9, atol=1e-12)
    difference = shapely.area(shapely.symmetric_difference(made, expected))
    assert np.all(difference < 1e-9)


def test_the_geometries_have_one_dimension() -> None:
    square = shapely.box(0, 0, 1, 1)
    message = r"^geometries must have the shape \(n,\), not \(1, 2\)$"
    with pytest.raises(ValueError, match=message):
        cntr.Outlines.from_shapely([[square, square]])
