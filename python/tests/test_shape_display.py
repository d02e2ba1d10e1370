# SPDX-License-Identifier: MIT
"""How shapes show themselves, and what other packages take them for."""

import xml.etree.ElementTree as ET

import matplotlib as mpl
import numpy as np
import pytest
import shapely
from matplotlib import pyplot
from numpy.typing import NDArray

import cntr

SQUARE = [(0, 0), (10, 0), (10, 10), (0, 10)]
HOLE = [(2, 2), (4, 2), (4, 4), (2, 4)]


@pytest.mark.parametrize(
    ("shape", "text"),
    [
        (cntr.Contour(SQUARE), "<cntr.Contour: 4 vertices>"),
        (
            cntr.Contour(SQUARE, False, 7, ([0] * 4, [0] * 4)),
            "<cntr.Contour: open, 4 vertices, edge elements, label 7>",
        ),
        (cntr.Contour([(0, 0)]), "<cntr.Contour: 1 vertex>"),
        (cntr.Region(SQUARE, [HOLE]), "<cntr.Region: 4 vertices, 1 hole>"),
        (cntr.Region(SQUARE, [HOLE, HOLE], 1), "<cntr.Region: 4 vertices, 2 holes, label 1>"),
        (cntr.RegionSet([cntr.Region(SQUARE)]), "<cntr.RegionSet: 1 region>"),
        (cntr.RegionSet(), "<cntr.RegionSet: 0 regions>"),
    ],
)
def test_the_representation_tells_what_there_is(shape: cntr.Shape, text: str) -> None:
    assert repr(shape) == text


def test_a_picture_is_an_svg_element_of_the_size_of_a_page() -> None:
    picture = ET.fromstring(cntr.Region(np.array(SQUARE) * (2, 1), [HOLE])._repr_svg_())
    assert picture.tag == "{http://www.w3.org/2000/svg}svg"
    assert (picture.get("width"), picture.get("height")) == ("300", "150")
    paths = picture.findall(".//{http://www.w3.org/2000/svg}path")
    assert [path.get("d") for path in paths] == [
        "M0 10L0 0L20 0L20 10L0 10",
        "M2 4L2 2L4 2L4 4L2 4",
    ]


@pytest.mark.parametrize(
    "shape",
    [
        cntr.Contour([]),
        cntr.Contour([(5, 5)]),
        cntr.RegionSet(),
        cntr.Region([(0, 0), (float("nan"), 1), (2, 2), (float("inf"), 0)]),
    ],
)
def test_every_shape_has_a_picture(shape: cntr.Shape) -> None:
    picture = ET.fromstring(shape._repr_svg_())
    numbers = [float(number) for number in (picture.get("viewBox") or "").split()]
    assert len(numbers) == 4
    assert np.isfinite(numbers).all()


def test_shapely_takes_shapes_by_their_geo_interface() -> None:
    region = cntr.Region(SQUARE, [HOLE])
    assert shapely.geometry.shape(region).equals(shapely.Polygon(SQUARE, [HOLE]))
    line = cntr.Contour(SQUARE, closed=False)
    assert shapely.geometry.shape(line).equals(shapely.LineString(SQUARE))
    both = cntr.RegionSet([region, cntr.Region(np.array(SQUARE) + 20)])
    assert shapely.geometry.shape(both).area == both.area()


def test_rings_of_the_geo_interface_repeat_their_first_vertex_once() -> None:
    triangle = [(0, 0), (4, 0), (4, 3)]
    ring = ((0.0, 0.0), (4.0, 0.0), (4.0, 3.0), (0.0, 0.0))
    for points in (triangle, [*triangle, (0, 0)]):
        assert cntr.Contour(points).__geo_interface__ == {
            "type": "Polygon",
            "coordinates": (ring,),
        }


def test_shapes_are_drawn_on_the_axes_that_are_given() -> None:
    mpl.use("Agg")
    figure, axes = pyplot.subplots()
    region = cntr.Region(SQUARE, [HOLE])
    assert region.plot(axes) is axes
    assert cntr.Contour(SQUARE, closed=False).plot(ax=axes) is axes
    assert len(axes.patches) == 1
    assert len(axes.lines) == 1
    path = axes.patches[0].get_path()
    assert np.shape(path.vertices) == (10, 2)
    assert path.contains_point((1, 1))
    assert not path.contains_point((20, 1))
    pyplot.close(figure)


def test_shapes_are_drawn_on_the_current_axes_unless_others_are_given() -> None:
    mpl.use("Agg")
    figure = pyplot.figure()
    axes = cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(np.array(SQUARE) + 20)]).plot()
    assert axes is pyplot.gca()
    assert axes.get_xlim()[0] <= 0 < 30 <= axes.get_xlim()[1]
    pyplot.close(figure)


def test_holes_are_left_blank() -> None:
    mpl.use("Agg")
    figure, axes = pyplot.subplots(figsize=(2, 2), dpi=50)
    for points, hole in ((SQUARE, HOLE), (SQUARE[::-1], HOLE), (SQUARE, HOLE[::-1])):
        axes.clear()
        cntr.Region(points, [hole]).plot(axes)
        axes.set_axis_off()
        figure.canvas.draw()
        pixels = np.asarray(figure.canvas.buffer_rgba())  # type: ignore[attr-defined]

        def is_blank(x: float, y: float, pixels: NDArray[np.uint8] = pixels) -> bool:
            column, row = axes.transData.transform((x, y))
            return bool((pixels[-1 - int(row), int(column), :3] == 255).all())

        assert is_blank(3, 3)
        assert not is_blank(7, 7)
    pyplot.close(figure)


@pytest.mark.parametrize(
    "shape",
    [cntr.Contour([]), cntr.Contour([], closed=False), cntr.RegionSet(), cntr.Region([(0, 0)])],
)
def test_shapes_without_an_extent_can_be_drawn(shape: cntr.Shape) -> None:
    mpl.use("Agg")
    figure, axes = pyplot.subplots()
    assert shape.plot(axes) is axes
    figure.canvas.draw()
    pyplot.close(figure)


def test_axes_of_other_types_are_refused() -> None:
    with pytest.raises(TypeError) as raised:
        cntr.Region(SQUARE).plot(3)  # type: ignore[arg-type]
    assert str(raised.value) == "ax must be None or axes of matplotlib, not int"
