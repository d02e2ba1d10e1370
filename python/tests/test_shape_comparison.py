# SPDX-License-Identifier: MIT
"""Shapes compared with nominal ones."""

import json
import math
import shutil
import subprocess
from pathlib import Path

import numpy as np
import pytest
from hypothesis import given
from hypothesis import strategies as st

import cntr

SQUARE = np.array([(0.0, 0), (10, 0), (10, 10), (0, 10)])
HOLE = np.array([(2.0, 2), (4, 2), (4, 4), (2, 4)])
ELL = np.array([(0.0, 0), (10, 0), (10, 2), (3, 2), (3, 7), (0, 7)])


def test_a_shape_does_not_deviate_from_itself() -> None:
    region = cntr.Region(SQUARE, [HOLE])
    deviation = region.deviation(region)
    assert deviation.is_signed
    assert (deviation.least, deviation.greatest, deviation.rms) == pytest.approx(
        (0, 0, 0), abs=1e-12
    )


def test_deviations_are_positive_outside_and_negative_inside_and_say_where() -> None:
    nominal = cntr.Region(SQUARE)
    inner = cntr.Region([(2, 1), (9, 1), (9, 9), (2, 9)])
    deviation = inner.deviation(nominal)
    assert deviation.least == -2
    assert deviation.least_at[0] == 2
    assert deviation.greatest == -1
    corners = inner.deviation(nominal, spacing=math.inf)
    assert (corners.least, corners.greatest) == (-1, -1)
    outer = cntr.Region([(-3, 0), (10, 0), (10, 10), (-3, 10)]).deviation(nominal)
    assert outer.greatest == 3
    assert outer.greatest_at[0] == -3
    assert 0 < outer.mean < outer.rms < 3


def test_the_boundaries_of_holes_deviate_too() -> None:
    nominal = cntr.Region(SQUARE, [HOLE])
    shrunk = cntr.Region(SQUARE, [[(2.5, 2.5), (3.5, 2.5), (3.5, 3.5), (2.5, 3.5)]])
    assert shrunk.deviation(nominal).greatest == 0.5


def test_distances_from_an_open_contour_have_no_signs() -> None:
    line = cntr.Contour([(0, 0), (10, 0)], closed=False)
    deviation = cntr.Contour([(0, -1), (10, 2)], closed=False).deviation(line)
    assert not deviation.is_signed
    assert (deviation.least, deviation.greatest) == pytest.approx((0, 2), abs=1e-2)


@pytest.mark.parametrize("shift", [0, 1e9])
def test_an_alignment_lays_a_shape_on_its_nominal(shift: float) -> None:
    nominal = cntr.Region(ELL + shift)
    cos, sin = math.cos(0.4), math.sin(0.4)
    moved = cntr.Region(ELL @ np.array([[cos, sin], [-sin, cos]]) + (30, -7) + shift)
    found = moved.align(nominal)
    assert found.settled
    assert found.angle == pytest.approx(-math.degrees(0.4), abs=1e-6)
    assert found.residual == pytest.approx(0, abs=1e-6)
    assert found.matrix.shape == (2, 3)
    assert found.matrix[:, :2] @ found.matrix[:, :2].T == pytest.approx(np.eye(2))
    aligned = moved.transform(found.matrix)
    assert np.abs(aligned.points - nominal.points).max() < 1e-6


@pytest.mark.parametrize("size", [1, 1000, 1e-6])
def test_what_an_alignment_leaves_is_in_the_unit_of_the_coordinates(size: float) -> None:
    nominal = cntr.Region((SQUARE * 1.2 - 1) * size)
    found = cntr.Region(SQUARE * size).align(nominal)
    # A little less than the distance of the sides, where it is turned a little.
    assert found.residual == pytest.approx(size, rel=1e-3)


def test_shapes_that_are_too_small_cannot_be_compared() -> None:
    region = cntr.Region(SQUARE)
    for compare in (region.deviation, region.align):
        with pytest.raises(cntr.EmptyContourError) as raised:
            compare(cntr.Region(SQUARE[:2]))
        assert str(raised.value) == "outline has 2 points, but needs 3"
        with pytest.raises(cntr.EmptyRegionSetError):
            compare(cntr.RegionSet())


@pytest.mark.parametrize("bad", [math.nan, math.inf])
def test_shapes_that_are_not_finite_cannot_be_compared(bad: float) -> None:
    line = cntr.Contour([(0, 0), (bad, 1)], closed=False)
    for compare in (line.deviation, line.align):
        with pytest.raises(cntr.BadParamsError) as raised:
            compare(cntr.Contour(SQUARE))
        assert str(raised.value) == "a coordinate is not finite"


@pytest.mark.parametrize("spacing", [0, -1, math.nan])
def test_spacings_are_positive(spacing: float) -> None:
    with pytest.raises(cntr.BadParamsError) as raised:
        cntr.Region(SQUARE).deviation(cntr.Region(SQUARE), spacing)
    assert str(raised.value) == "spacing is not positive"


@given(st.floats(-20, 20), st.floats(-20, 20), st.floats(0.1, 3))
def test_a_shift_is_no_greater_deviation_than_its_length(x: float, y: float, size: float) -> None:
    nominal = cntr.Region(ELL * size)
    deviation = nominal.transform([[1, 0, x], [0, 1, y]]).deviation(nominal)
    longest = math.hypot(x, y) * (1 + 1e-9) + 1e-9
    assert -longest <= deviation.least <= deviation.mean <= deviation.greatest <= longest


def test_deviations_are_those_of_the_program(tmp_path: Path) -> None:
    built = Path(__file__).parents[2] / "build" / "release" / "bin" / "cntr"
    program = str(built) if built.exists() else shutil.which("cntr")
    if program is None:
        pytest.skip("the program is neither built nor installed")
    generator = np.random.default_rng(4)
    measured = cntr.Region(ELL + generator.normal(scale=0.05, size=ELL.shape))
    nominal = cntr.Region(ELL)
    files = []
    for name, shape in (("measured", measured), ("nominal", nominal)):
        files.append(tmp_path / f"{name}.geojson")
        files[-1].write_text(json.dumps(shape.__geo_interface__))
    command = [program, "compare", str(files[0]), "--nominal", str(files[1]), "--jsonl"]
    row = json.loads(subprocess.run(command, check=True, capture_output=True, text=True).stdout)
    ours = measured.deviation(nominal)
    names = ["deviation_min", "deviation_max", "deviation_mean", "deviation_rms"]
    assert [row[name] for name in names] == [ours.least, ours.greatest, ours.mean, ours.rms]
