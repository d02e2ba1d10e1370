# SPDX-License-Identifier: MIT
"""Outlines from what OpenCV and scikit-image find in pictures."""

from typing import Any

import cv2
import numpy as np
import pytest
import skimage.data
import skimage.filters
import skimage.measure

import cntr

Array = np.ndarray[Any, Any]
# These have no types.
threshold: Any = skimage.filters.threshold_otsu
find_contours: Any = skimage.measure.find_contours
PICTURES = ["coins", "camera", "page", "clock", "horse", "cell", "text", "moon"]


def picture(name: str) -> Array:
    """A photograph of scikit-image as 0 and 1."""
    image = getattr(skimage.data, name)().astype(np.uint8)
    return np.asarray(image > threshold(image), dtype=np.uint8)


def nested_squares() -> Array:
    """A square with a hole, in which there is a square with a hole."""
    image = np.zeros((60, 60), np.uint8)
    for margin, value in [(5, 1), (10, 0), (15, 1), (20, 0), (25, 1)]:
        image[margin : 60 - margin, margin : 60 - margin] = value
    return image


def ring_areas(contours: Any) -> Array:
    return np.array([cv2.contourArea(contour) for contour in contours], dtype=np.float64)


def test_children_are_holes_and_their_children_outlines() -> None:
    contours, hierarchy = cv2.findContours(nested_squares(), cv2.RETR_TREE, cv2.CHAIN_APPROX_SIMPLE)
    table = cntr.Outlines.from_opencv(contours, hierarchy)
    assert len(table) == 3
    assert [len(region.holes) for region in table if isinstance(region, cntr.Region)] == [1, 1, 0]
    areas = ring_areas(contours)
    expected = [areas[0] - areas[1], areas[2] - areas[3], areas[4]]
    assert table.measure(["area"]).column("area").tolist() == expected


def test_labels_are_the_numbers_of_the_outer_contours() -> None:
    contours, hierarchy = cv2.findContours(nested_squares(), cv2.RETR_TREE, cv2.CHAIN_APPROX_SIMPLE)
    table = cntr.Outlines.from_opencv(contours, hierarchy)
    assert table.labels.tolist() == [0, 2, 4]
    for feature, label in enumerate(table.labels):
        assert table.vertices(feature).tolist() == contours[label].reshape(-1, 2).tolist()


@pytest.mark.parametrize("name", PICTURES)
@pytest.mark.parametrize("method", [cv2.CHAIN_APPROX_NONE, cv2.CHAIN_APPROX_SIMPLE])
def test_all_contours_of_a_photograph_have_opencvs_areas(name: str, method: int) -> None:
    contours, hierarchy = cv2.findContours(picture(name), cv2.RETR_CCOMP, method)
    table = cntr.Outlines.from_opencv(contours, hierarchy)
    areas = ring_areas(contours)
    parents = hierarchy[0, :, 3].astype(np.int64)
    outer = np.flatnonzero(parents < 0)
    assert table.labels.tolist() == outer.tolist()
    holes = np.zeros(len(contours))
    np.add.at(holes, parents[parents >= 0], areas[parents >= 0])
    measured = table.measure(["area"])
    ok = measured.status == "ok"
    assert set(measured.note[~ok]) <= {
        "outline has 1 point, but needs 3",
        "outline has 2 points, but needs 3",
    }
    expected = (areas - holes)[outer]
    np.testing.assert_allclose(measured.column("area")[ok], expected[ok], rtol=1e-12, atol=0)
    assert not expected[~ok].any()


@pytest.mark.parametrize("name", PICTURES)
def test_a_tree_and_two_levels_are_the_same_outlines(name: str) -> None:
    image = picture(name)
    tables = [
        cntr.Outlines.from_opencv(*cv2.findContours(image, mode, cv2.CHAIN_APPROX_SIMPLE))
        for mode in (cv2.RETR_TREE, cv2.RETR_CCOMP)
    ]
    areas = [np.sort(table.measure(["area"]).column("area")) for table in tables]
    np.testing.assert_array_equal(areas[0], areas[1])


def test_every_form_of_what_opencv_returns_gives_the_same() -> None:
    image = picture("coins")
    contours, hierarchy = cv2.findContours(image, cv2.RETR_CCOMP, cv2.CHAIN_APPROX_NONE)
    expected = list(cntr.Outlines.from_opencv(contours, hierarchy))
    flat = [contour.reshape(-1, 2) for contour in contours]
    for form in (
        cntr.Outlines.from_opencv(list(contours), hierarchy[0]),
        cntr.Outlines.from_opencv(image, contours, hierarchy),
        cntr.Outlines.from_opencv(flat, hierarchy=hierarchy.astype(np.int64)),
        cntr.Outlines.from_opencv([c.astype(np.float32) for c in contours], hierarchy),
        cntr.Outlines.from_opencv([c.astype(np.float64) for c in flat], hierarchy),
        cntr.Outlines.from_opencv([np.asfortranarray(c) for c in flat], hierarchy),
        cntr.Outlines.from_opencv([np.repeat(c, 2, axis=0)[::2] for c in contours], hierarchy),
        cntr.Outlines.from_opencv(iter(contours), hierarchy),
    ):
        assert list(form) == expected


def test_a_picture_without_contours_has_no_outlines() -> None:
    nothing = np.zeros((9, 9), np.uint8)
    found = cv2.findContours(nothing, cv2.RETR_TREE, cv2.CHAIN_APPROX_SIMPLE)
    assert len(cntr.Outlines.from_opencv(*found)) == 0
    assert len(cntr.Outlines.from_opencv(nothing, *found)) == 0


def test_without_a_hierarchy_all_contours_are_outlines() -> None:
    contours, _ = cv2.findContours(nested_squares(), cv2.RETR_LIST, cv2.CHAIN_APPROX_SIMPLE)
    assert len(cntr.Outlines.from_opencv(contours)) == len(contours) == 5


SQUARE = np.array([[0, 0], [4, 0], [4, 4], [0, 4]], np.int32)


@pytest.mark.parametrize(
    ("contours", "error", "message"),
    [
        (
            [SQUARE, [(0, 0)]],
            TypeError,
            r"^contours\[1\] must be an array of shape \(n, 2\) or \(n, 1, 2\), not of type list$",
        ),
        (
            [SQUARE.reshape(2, 2, 2)],
            ValueError,
            r"^contours\[0\] must have the shape \(n, 2\) or \(n, 1, 2\), not \(2, 2, 2\)$",
        ),
        (
            [SQUARE[0]],
            ValueError,
            r"^contours\[0\] must have the shape \(n, 2\) or \(n, 1, 2\), not \(2,\)$",
        ),
        (
            [SQUARE.astype(np.uint8)],
            TypeError,
            r"^contours\[0\] must be of int32, int64, float32 or float64, not of uint8$",
        ),
        (
            [SQUARE.astype(">i4")],
            TypeError,
            r"^contours\[0\] must be of int32, int64, float32 or float64, not of >i4$",
        ),
        (SQUARE, TypeError, r"^contours must be a list of arrays, not a single one$"),
    ],
)
def test_contours_that_are_none_are_named(
    contours: Any, error: type[Exception], message: str
) -> None:
    with pytest.raises(error, match=message):
        cntr.Outlines.from_opencv(contours)
    with pytest.raises(error, match=message):
        cntr.Outlines.from_skimage(contours, order="xy")


@pytest.mark.parametrize(
    ("parents", "message"),
    [
        ([-1, 2], r"^hierarchy: contour 1 has the parent 2$"),
        ([-2, 0], r"^hierarchy: contour 0 has the parent -2$"),
        ([0, -1], r"^hierarchy: contour 0 is inside itself$"),
        ([1, 0], r"^hierarchy: contour 0 is inside itself$"),
    ],
)
def test_a_hierarchy_that_contradicts_itself_is_refused(parents: list[int], message: str) -> None:
    hierarchy = np.array([[[-1, -1, -1, parent] for parent in parents]], np.int32)
    with pytest.raises(ValueError, match=message):
        cntr.Outlines.from_opencv([SQUARE, SQUARE], hierarchy)


@pytest.mark.parametrize("shape", [(1, 2, 3), (2, 2, 4), (3, 4), (8,), (2, 1, 4)])
def test_a_hierarchy_has_a_row_for_each_contour(shape: tuple[int, ...]) -> None:
    text = str(shape).replace("(", r"\(").replace(")", r"\)")
    message = (
        r"^hierarchy must have the shape \(1, 2, 4\) or \(2, 4\) for 2 contours, not " + text + "$"
    )
    with pytest.raises(ValueError, match=message):
        cntr.Outlines.from_opencv([SQUARE, SQUARE], np.zeros(shape, np.int32))
    with pytest.raises(TypeError, match=r"^hierarchy must be an array of whole numbers, not of f"):
        cntr.Outlines.from_opencv([SQUARE, SQUARE], np.zeros(shape))


def test_parents_may_come_after_their_children() -> None:
    hierarchy = np.array([[-1, -1, -1, 2], [-1, -1, -1, 0], [-1, -1, -1, -1]], np.int32)
    hole, island, outline = SQUARE + 10, SQUARE + 11, SQUARE * 9
    table = cntr.Outlines.from_opencv([hole, island, outline], hierarchy)
    assert table.labels.tolist() == [1, 2]
    assert table[0] == cntr.Region(island)
    assert table[1] == cntr.Region(outline, holes=[hole])


@pytest.mark.parametrize("name", PICTURES)
def test_contours_of_scikit_image_have_its_areas(name: str) -> None:
    contours = find_contours(picture(name).astype(float), 0.5)
    table = cntr.Outlines.from_skimage(contours, order="rc")
    assert len(table) == len(contours)
    measured = table.measure(["area", "closed"])
    closed = np.array([np.array_equal(c[0], c[-1]) for c in contours])
    assert measured.column("closed").tolist() == closed.tolist()
    expected = [
        cv2.contourArea(contour.astype(np.float32))
        for contour, is_closed in zip(contours, closed, strict=True)
        if is_closed
    ]
    areas = measured.column("area")[closed]
    # OpenCV computes with 32 bits.
    np.testing.assert_allclose(areas, expected, rtol=1e-4, atol=0.51)


def test_the_order_of_coordinates_must_be_said() -> None:
    contour = np.array([(1.0, 2.0), (1.0, 7.0), (3.0, 7.0), (1.0, 2.0)])
    swapped = cntr.Outlines.from_skimage([contour], order="rc")
    assert swapped.vertices(0).tolist() == contour[:3, ::-1].tolist()
    kept = cntr.Outlines.from_skimage([contour], order="xy")
    assert kept.vertices(0).tolist() == contour[:3].tolist()
    with pytest.raises(TypeError):
        cntr.Outlines.from_skimage([contour])  # type: ignore[call-arg]
    with pytest.raises(ValueError, match=r"^order must be 'rc' or 'xy', not 'yx'$"):
        cntr.Outlines.from_skimage([contour], order="yx")  # type: ignore[arg-type]


def test_contours_that_do_not_end_where_they_began_are_lines() -> None:
    line = np.array([(0.0, 0.0), (3.0, 4.0), (5.0, 5.0)])
    table = cntr.Outlines.from_skimage([line, line[:1]], order="xy")
    assert table[0] == cntr.Contour(line, closed=False)
    assert table.labels.tolist() == [0, 1]
    assert table[1] == cntr.Contour(line[:1], closed=False)


def test_arguments_that_are_no_lists_are_named() -> None:
    message = r"^contours must be an iterable of arrays, not int$"
    with pytest.raises(TypeError, match=message):
        cntr.Outlines.from_opencv(3)  # type: ignore[call-overload]
    with pytest.raises(TypeError, match=message):
        cntr.Outlines.from_skimage(3, order="rc")  # type: ignore[arg-type]
    ragged: Any = [[[0, 0, 0, 0], [0]]]
    with pytest.raises(TypeError, match=r"^hierarchy must be an array of numbers: "):
        cntr.Outlines.from_opencv([], ragged)
