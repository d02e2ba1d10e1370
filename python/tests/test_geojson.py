# SPDX-License-Identifier: MIT
"""Outlines from and to GeoJSON."""

import gzip
import json
import os
import pathlib

import numpy as np
import pytest
import shapely

import cntr

SQUARE = [[0.0, 0.0], [10.0, 0.0], [10.0, 10.0], [0.0, 10.0]]
HOLE = [[1.0, 1.0], [1.0, 2.0], [2.0, 2.0]]
EDGES = ([1, 2, 65535], [0, 128, 255])


def feature(geometry: object, **properties: object) -> str:
    return json.dumps({"type": "Feature", "properties": properties, "geometry": geometry})


def collection(*features: str) -> str:
    return '{"type": "FeatureCollection", "features": [\n' + ",\n".join(features) + "\n]}\n"


POLYGON = feature({"type": "Polygon", "coordinates": [[*SQUARE, SQUARE[0]], HOLE]}, label=7)
LINE = feature({"type": "LineString", "coordinates": HOLE}, label="scratch")
POINT = feature({"type": "Point", "coordinates": [1, 2]})


def test_a_collection_is_read_with_its_labels() -> None:
    table = cntr.Outlines.from_geojson(collection(POLYGON, LINE))
    assert table[0] == cntr.Region(SQUARE, holes=[HOLE])
    assert table[1] == cntr.Contour(HOLE, closed=False)
    assert table.labels.tolist() == [7, -1]


@pytest.mark.parametrize(
    "text", [POLYGON, "\n " + POLYGON, json.dumps(json.loads(POLYGON), indent=2)]
)
def test_a_lone_feature_is_read(text: str) -> None:
    assert cntr.Outlines.from_geojson(text).labels.tolist() == [7]


def test_lines_and_text_sequences_are_read() -> None:
    for text in (f"{POLYGON}\n{LINE}\n", f"\x1e{POLYGON}\n\x1e{LINE}\n"):
        assert cntr.Outlines.from_geojson(text).labels.tolist() == [7, -1]


def test_files_are_read_packed_ones_too(tmp_path: pathlib.Path) -> None:
    expected = cntr.Outlines.from_geojson(collection(POLYGON, LINE))
    plain = tmp_path / "shapes.geojson"
    plain.write_text(collection(POLYGON, LINE))
    packed = tmp_path / "shapes.geojson.gz"
    packed.write_bytes(gzip.compress(plain.read_bytes()))
    lines = tmp_path / "shapes.geojsonl"
    lines.write_text(f"{POLYGON}\n{LINE}\n")
    for path in (plain, packed, lines, str(plain)):
        assert cntr.Outlines.from_geojson(path) == expected


def test_features_that_cannot_be_read_stay_with_what_is_wrong(tmp_path: pathlib.Path) -> None:
    short = feature({"type": "Polygon", "coordinates": [SQUARE[:2]]})
    table = cntr.Outlines.from_geojson(collection(POLYGON, POINT, short, LINE))
    assert len(table) == 4
    assert table.problems == {
        1: "a Point has no outline",
        2: "outline has 2 points, but needs 3",
    }
    assert table.measure(["area"]).status.tolist() == ["ok", "failed", "failed", "ok"]
    path = tmp_path / "broken.geojsonl"
    path.write_text(f"{{nonsense\n{POLYGON}\n\n{POINT}\n")
    problems = cntr.Outlines.from_geojson(path).problems
    assert list(problems) == [0, 2]
    assert problems[0].startswith("line 1: ")
    assert problems[2] == "line 4: a Point has no outline"


@pytest.mark.parametrize(
    ("text", "message"),
    [
        ('{"type": "FeatureCollection", "features": [\n 3, }', r"line 2, column 5"),
        ('{"type": "Topology"}', r"^not GeoJSON: neither a FeatureCollection, nor"),
        ("{", r"line 1"),
    ],
)
def test_what_is_no_geojson_is_refused_with_its_place(text: str, message: str) -> None:
    with pytest.raises(cntr.Error, match=message):
        cntr.Outlines.from_geojson(text)


def test_files_that_cannot_be_read_are_named(tmp_path: pathlib.Path) -> None:
    with pytest.raises(FileNotFoundError, match=r"nowhere\.geojson"):
        cntr.Outlines.from_geojson(tmp_path / "nowhere.geojson")
    with pytest.raises(FileNotFoundError):
        cntr.Outlines.from_geojson("-")
    empty = tmp_path / "empty.geojson"
    empty.touch()
    with pytest.raises(cntr.Error, match=r"empty\.geojson: nothing in it$"):
        cntr.Outlines.from_geojson(empty)
    with pytest.raises(cntr.Error, match=r"cannot be read: Is a directory$"):
        cntr.Outlines.from_geojson(tmp_path)
    with pytest.raises(TypeError, match=r"^text_or_path must be text or a path, not int$"):
        cntr.Outlines.from_geojson(3)  # type: ignore[arg-type]


def test_outlines_come_back_from_their_text() -> None:
    table = cntr.Outlines.from_regions(
        [
            cntr.Region(SQUARE, holes=[HOLE], label=7),
            cntr.Contour([]),
            cntr.Contour(HOLE, closed=False, label=3, edges=EDGES),
            cntr.RegionSet([cntr.Region(SQUARE), cntr.Region([(20, 0), (30, 0), (20, 5)])]),
        ]
    )
    again = cntr.Outlines.from_geojson(table.to_geojson())
    assert again == table
    assert again.labels.tolist() == table.labels.tolist()
    assert list(again.problems) == [1]


def test_rings_run_as_geojson_wants_them_from_the_same_vertex() -> None:
    clockwise = cntr.Region(SQUARE[:1] + SQUARE[:0:-1], holes=[HOLE[:1] + HOLE[:0:-1]])
    table = cntr.Outlines.from_regions([clockwise])
    assert cntr.Outlines.from_geojson(table.to_geojson())[0] == cntr.Region(SQUARE, holes=[HOLE])


def test_coordinates_keep_all_their_digits() -> None:
    rng = np.random.default_rng(3)
    lines = [cntr.Contour(rng.normal(size=(5, 2)) * 10.0**k, closed=False) for k in range(-9, 9)]
    table = cntr.Outlines.from_regions(lines)
    assert cntr.Outlines.from_geojson(table.to_geojson()).to_wkb() == table.to_wkb()


def test_coordinates_that_are_not_finite_are_refused() -> None:
    table = cntr.Outlines.from_regions(
        [cntr.Region(SQUARE), cntr.Contour([(0, 0), (1, np.inf)], closed=False)]
    )
    with pytest.raises(
        cntr.BadParamsError, match=r"^feature 1 has a coordinate that is not a finite number$"
    ):
        table.to_geojson()


def test_rings_without_vertices_are_left_out() -> None:
    empty = cntr.Contour([])
    holed = cntr.Region(SQUARE, holes=[empty])
    parted = cntr.RegionSet([cntr.Region([]), cntr.Region(SQUARE)])
    again = cntr.Outlines.from_geojson(cntr.Outlines.from_regions([holed, parted]).to_geojson())
    assert list(again) == [cntr.Region(SQUARE), cntr.Region(SQUARE)]


def test_no_outlines_are_an_empty_collection() -> None:
    text = cntr.Outlines.from_regions([]).to_geojson()
    assert json.loads(text) == {"type": "FeatureCollection", "features": []}
    assert len(cntr.Outlines.from_geojson(text)) == 0


def test_other_packages_take_the_features_through_the_geo_interface() -> None:
    table = cntr.Outlines.from_regions([cntr.Region(SQUARE, holes=[HOLE], label=7)])
    (one,) = table.__geo_interface__["features"]
    assert one["properties"] == {"label": 7}
    assert shapely.geometry.shape(one["geometry"]).area == 99.5


def test_paths_are_bytes_of_any_kind(tmp_path: pathlib.Path) -> None:
    path = os.path.join(os.fsencode(tmp_path), b"\xff.geojson")
    with open(path, "w") as file:
        file.write(POLYGON)
    expected = cntr.Outlines.from_geojson(POLYGON)
    for given in (path, os.fsdecode(path), pathlib.Path(os.fsdecode(path))):
        assert cntr.Outlines.from_geojson(given) == expected
    with open(path, "w") as file:
        file.write("{")
    with pytest.raises(cntr.Error, match=r"\\xff\.geojson: "):
        cntr.Outlines.from_geojson(path)


def test_lone_surrogates_are_refused() -> None:
    message = r"^text_or_path has a lone surrogate, which is not a character$"
    for text in ('{"a": "\ud800"}', '{"a": "\udc80"}', "\ud800.geojson"):
        with pytest.raises(ValueError, match=message):
            cntr.Outlines.from_geojson(text)


def test_a_byte_order_mark_before_text_is_left_out() -> None:
    assert cntr.Outlines.from_geojson("\ufeff" + POLYGON) == cntr.Outlines.from_geojson(POLYGON)


def test_text_that_begins_otherwise_is_refused(tmp_path: pathlib.Path) -> None:
    with pytest.raises(ValueError, match=r"^text_or_path is empty$"):
        cntr.Outlines.from_geojson("")
    with pytest.raises(cntr.Error, match=r"not GeoJSON"):
        cntr.Outlines.from_geojson("[1, 2]")
    bracketed = tmp_path / "[shapes].geojson"
    bracketed.write_text(POLYGON)
    assert len(cntr.Outlines.from_geojson(bracketed)) == 1
