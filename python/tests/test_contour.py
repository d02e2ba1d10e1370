# SPDX-License-Identifier: MIT
"""Contours: how they are made, compared and kept."""

import copy
import gc
import pickle
import weakref
from typing import Any

import numpy as np
import pytest

import cntr

TRIANGLE = [(0, 0), (4, 0), (4, 3)]
EDGES = ([1, 2, 65535], [4, 5, 255])


def test_a_contour_has_the_vertices_label_and_closedness_that_it_is_given() -> None:
    contour = cntr.Contour(TRIANGLE, closed=False, label=4294967295)
    assert contour.points.tolist() == [[0, 0], [4, 0], [4, 3]]
    assert contour.points.dtype == np.float64
    assert (len(contour), contour.closed, contour.label) == (3, False, 4294967295)
    assert contour.edges is None


def test_a_contour_is_closed_and_has_the_label_0_unless_it_is_said() -> None:
    contour = cntr.Contour(TRIANGLE)
    assert (contour.closed, contour.label) == (True, 0)


@pytest.mark.parametrize("points", [[], np.empty((0, 2))])
def test_a_contour_may_have_no_vertices(points: Any) -> None:
    assert cntr.Contour(points).points.shape == (0, 2)


@pytest.mark.parametrize("dtype", ["f4", ">f8", "i2", "u8", "f8"])
def test_numbers_of_any_real_type_become_coordinates(dtype: str) -> None:
    points = np.array(TRIANGLE, dtype=dtype)
    assert cntr.Contour(points) == cntr.Contour(TRIANGLE)
    assert cntr.Contour(points[::-1]) == cntr.Contour(TRIANGLE[::-1])


def test_the_points_are_copied_once_and_seen_without_a_copy() -> None:
    given = np.array(TRIANGLE, dtype=np.float64)
    contour = cntr.Contour(given)
    given[:] = 9
    assert contour.points.tolist() == [[0, 0], [4, 0], [4, 3]]
    assert contour.points.ctypes.data == contour.points.ctypes.data
    assert not contour.points.flags.owndata


def test_the_points_and_edge_elements_cannot_be_written_to() -> None:
    contour = cntr.Contour(TRIANGLE, edges=EDGES)
    assert contour.edges is not None
    for view in (contour.points, *contour.edges):
        with pytest.raises(ValueError, match="read-only"):
            view[0] = 1


def test_a_view_keeps_its_contour_alive_and_nothing_else_does() -> None:
    class Watched(cntr.Contour):
        pass

    contour = Watched(TRIANGLE)
    watch = weakref.ref(contour)
    points = contour.points
    del contour
    gc.collect()
    assert watch() is not None
    assert points.tolist() == [[0, 0], [4, 0], [4, 3]]
    del points
    gc.collect()
    assert watch() is None


def test_edge_elements_keep_their_types_and_values() -> None:
    contour = cntr.Contour(TRIANGLE, edges=EDGES)
    assert contour.edges is not None
    magnitude, angle = contour.edges
    assert magnitude.dtype == np.uint16
    assert angle.dtype == np.uint8
    assert (magnitude.tolist(), angle.tolist()) == EDGES


def test_nan_and_infinite_coordinates_are_taken() -> None:
    contour = cntr.Contour([(np.nan, 0), (np.inf, -np.inf)])
    assert np.isnan(contour.points[0, 0])
    assert contour.points[1].tolist() == [np.inf, -np.inf]


@pytest.mark.parametrize(
    ("arguments", "error", "message"),
    [
        ({"points": [1, 2, 3]}, ValueError, "points must have the shape (n, 2), not (3,)"),
        (
            {"points": np.zeros((4, 3))},
            ValueError,
            "points must have the shape (n, 2), not (4, 3)",
        ),
        ({"points": "x"}, TypeError, "points must be an array of numbers, not of <U1"),
        (
            {"points": [(1j, 2)]},
            TypeError,
            "points must be an array of numbers, not of complex128",
        ),
        ({"label": -1}, ValueError, "label must be from 0 to 4294967295, not -1"),
        ({"label": 2**32}, ValueError, "label must be from 0 to 4294967295, not 4294967296"),
        ({"label": 1.0}, TypeError, "label must be a whole number, not float"),
        ({"edges": 3}, TypeError, "edges must be a pair of arrays, (magnitude, angle)"),
        (
            {"edges": ([0, 1, 65536], [0, 0, 0])},
            ValueError,
            "edges[0], the magnitudes, must be numbers from 0 to 65535, not 65536",
        ),
        (
            {"edges": ([0, -1, 0], [0, 0, 0])},
            ValueError,
            "edges[0], the magnitudes, must be numbers from 0 to 65535, not -1",
        ),
        (
            {"edges": ([0, 0, 0], [0, 256, 0])},
            ValueError,
            "edges[1], the angles, must be numbers from 0 to 255, not 256",
        ),
        (
            {"edges": ([0, 0, 0], [0, 0.5, 0])},
            TypeError,
            "edges[1], the angles, must be an array of whole numbers, not of float64",
        ),
        (
            {"edges": ([0, 0], [0, 0, 0])},
            ValueError,
            "edges[0], the magnitudes, must have the shape (3,), not (2,)",
        ),
        (
            {"edges": ([[0], [0], [0]], [0, 0, 0])},
            ValueError,
            "edges[0], the magnitudes, must have the shape (3,), not (3, 1)",
        ),
    ],
)
def test_what_is_wrong_with_an_argument_is_said(
    arguments: dict[str, Any], error: type[Exception], message: str
) -> None:
    with pytest.raises(error) as raised:
        cntr.Contour(**({"points": TRIANGLE} | arguments))
    assert str(raised.value) == message


def test_contours_are_equal_by_vertices_closedness_and_edge_elements() -> None:
    contour = cntr.Contour(TRIANGLE, edges=EDGES)
    assert contour == cntr.Contour(TRIANGLE, label=5, edges=EDGES)
    assert contour != cntr.Contour(TRIANGLE)
    assert contour != cntr.Contour(TRIANGLE, edges=(EDGES[0], [0, 0, 0]))
    assert cntr.Contour(TRIANGLE) != cntr.Contour(TRIANGLE, closed=False)
    assert cntr.Contour(TRIANGLE) != cntr.Contour([(0, 0), (4, 0), (4, 3.0000000000000004)])
    assert cntr.Contour(TRIANGLE) != cntr.Region(TRIANGLE)
    assert cntr.Contour(TRIANGLE) != 3


@pytest.mark.parametrize(
    "shape", [cntr.Contour(TRIANGLE), cntr.Region(TRIANGLE), cntr.RegionSet([])]
)
def test_shapes_cannot_be_hashed(shape: cntr.Shape) -> None:
    with pytest.raises(TypeError, match="unhashable type"):
        hash(shape)


@pytest.mark.parametrize("closed", [False, True])
def test_contours_survive_pickling_and_copying_whole(closed: bool) -> None:
    contour = cntr.Contour(TRIANGLE, closed, 7, EDGES)
    for again in (
        pickle.loads(pickle.dumps(contour)),
        copy.copy(contour),
        copy.deepcopy(contour),
    ):
        assert again == contour
        assert again is not contour
        assert again.label == 7
        assert again.points.ctypes.data != contour.points.ctypes.data
