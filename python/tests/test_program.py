# SPDX-License-Identifier: MIT
"""The same bits as the program that CNTR_PROGRAM names, and as single shapes."""

import json
import os
import pathlib
import subprocess

import numpy as np
import pytest

import cntr

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SAMPLES = sorted((ROOT / "samples").glob("*.geojson"))


@pytest.mark.parametrize("path", SAMPLES, ids=lambda path: path.stem)
def test_measures_are_those_of_the_program(path: pathlib.Path) -> None:
    program = os.environ.get("CNTR_PROGRAM")
    if program is None:
        pytest.skip("CNTR_PROGRAM names no program cntr")
    printed = subprocess.run(
        [program, "measure", "--all", "--jsonl", str(path)],
        check=True,
        capture_output=True,
        text=True,
    ).stdout
    expected = [json.loads(row) for row in printed.splitlines()]
    table = cntr.Outlines.from_geojson(path)
    assert len(table) == len(expected) > 0
    measured = table.measure(list(cntr.MEASURES))
    for name in cntr.MEASURES:
        answers = [None if value != value else value for value in measured.column(name).tolist()]
        assert answers == [row[name] for row in expected], name


@pytest.mark.parametrize("path", SAMPLES, ids=lambda path: path.stem)
def test_measures_and_points_are_those_of_each_shape(path: pathlib.Path) -> None:
    table = cntr.Outlines.from_geojson(path)
    measured = table.measure(["area", "centre_x", "centre_y", "length", "diameter"])
    left, top, right, bottom = table.bounds or (0.0, 0.0, 0.0, 0.0)
    rng = np.random.default_rng(2)
    points = rng.uniform((left, top), (right, bottom), size=(2000, 2))
    outline, point = table.inside_join(points)
    for i, region in enumerate(table):
        assert isinstance(region, cntr.Region)
        assert measured.column("area")[i] == region.area()
        assert (measured.column("centre_x")[i], measured.column("centre_y")[i]) == region.centroid()
        assert measured.column("length")[i] == region.length()
        assert measured.column("diameter")[i] == region.diameter()
        np.testing.assert_array_equal(point[outline == i], np.flatnonzero(region.inside(points)))
