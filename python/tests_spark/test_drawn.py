# SPDX-License-Identifier: MIT
"""What the demonstration and the benchmark are made of."""

import drawn
import glyphs
import numpy as np
import pyarrow as pa
import pytest
from pyspark.sql import SparkSession

import cntr

EXTENT = 300.0


def crossing(block: int) -> list[bool]:
    geometries = drawn.outline_block(block, EXTENT)["geometry"]
    measured = cntr.Outlines.from_wkb(geometries).measure(["crosses_itself"])
    answers: list[bool] = pa.table(measured)["crosses_itself"].to_pylist()
    return answers


@pytest.mark.parametrize("block", range(1, 1 + len(drawn.VERTICES)))
def test_drawn_outlines_have_their_vertices_and_cross_nothing(block: int) -> None:
    outlines = cntr.Outlines.from_wkb(drawn.outline_block(block, EXTENT)["geometry"])
    measured = pa.table(outlines.measure(["vertices", "crosses_itself"]))
    count = drawn.VERTICES[block % len(drawn.VERTICES)]
    assert set(measured["vertices"].to_pylist()) == {count}
    assert set(measured["crosses_itself"].to_pylist()) == {False}


def test_some_blocks_cross_themselves() -> None:
    assert all(crossing(drawn.CROSSING))


def test_a_tenth_of_the_points_crowds_in_one_outline() -> None:
    (first, _) = cntr.Outlines.from_wkb(drawn.outline_block(1, EXTENT)["geometry"])[:2]
    points = drawn.point_block(3, EXTENT)
    coordinates = np.stack([points["x"].to_numpy(), points["y"].to_numpy()], axis=1)
    assert isinstance(first, cntr.Region)
    inside = first.inside(coordinates)
    assert np.count_nonzero(inside[: drawn.BLOCK // 10]) >= drawn.BLOCK // 12


def test_rows_do_not_depend_on_the_partitions(spark: SparkSession) -> None:
    few = drawn.outline_frame(spark, 2500, 1).toArrow()
    many = drawn.outline_frame(spark, 2500, 7).toArrow()
    assert few.num_rows == 2500
    assert few == many.sort_by("id").combine_chunks()


def test_a_curve_of_a_glyph_becomes_edges_that_lie_on_it() -> None:
    pen = glyphs.ContourPen(None)
    bow = 0.5522847498
    pen.moveTo((1.0, 0.0))
    pen.curveTo((1.0, bow), (bow, 1.0), (0.0, 1.0))
    pen.lineTo((0.0, 0.0))
    pen.closePath()
    (contour,) = pen.contours
    vertices = np.concatenate(contour)
    assert len(vertices) == 1 + glyphs.EDGES + 1
    np.testing.assert_allclose(np.hypot(*vertices[:-1].T), 1.0, atol=1e-3)
    (area,) = cntr.Outlines.from_wkb([glyphs.polygon_of(contour)]).measure(["area"]).column("area")
    assert area == pytest.approx(np.pi / 4.0, abs=0.01)
