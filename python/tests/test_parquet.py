# SPDX-License-Identifier: MIT
"""Outlines in files of GeoParquet."""

import json
import pathlib

import numpy as np
import pyarrow as pa
import pyarrow.parquet
import pytest
import shapely

import cntr

SQUARE = [(0.0, 0.0), (10.0, 0.0), (10.0, 10.0), (0.0, 10.0)]
HOLE = [(1.0, 1.0), (1.0, 2.0), (2.0, 2.0)]
EDGES = ([1, 2, 65535], [0, 128, 255])


def outlines() -> cntr.Outlines:
    return cntr.Outlines.from_regions(
        [
            cntr.Region(SQUARE, holes=[cntr.Contour(HOLE, edges=EDGES)], label=4294967295),
            cntr.Contour([]),
            cntr.Contour(HOLE, closed=False, label=3, edges=EDGES),
            cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(HOLE)]),
        ]
    )


def geo_of(path: pathlib.Path) -> dict[str, object]:
    metadata = pyarrow.parquet.read_schema(path).metadata
    geo = json.loads(metadata[b"geo"])
    assert isinstance(geo, dict)
    return geo


def write(path: pathlib.Path, column: pa.Array, encoding: str, **columns: pa.Array) -> None:
    geo = {
        "version": "1.1.0",
        "primary_column": "shape",
        "columns": {"shape": {"encoding": encoding, "geometry_types": []}},
    }
    table = pa.table({**columns, "shape": column})
    pyarrow.parquet.write_table(
        table.replace_schema_metadata({"geo": json.dumps(geo)}), path, row_group_size=2
    )


def test_a_file_holds_everything(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "shapes.parquet"
    for table in (outlines(), outlines()[::-1], outlines()[3:], outlines()[:0]):
        table.to_parquet(path)
        again = cntr.read_parquet(path)
        assert again == table
        assert again.labels.tolist() == table.labels.tolist()
        assert again.problems == table.problems


def test_paths_are_texts_too(tmp_path: pathlib.Path) -> None:
    path = str(tmp_path / "shapes.parquet")
    outlines().to_parquet(path)
    assert cntr.read_parquet(path) == outlines()


def test_the_metadata_say_that_there_is_no_reference_system(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "shapes.parquet"
    outlines().to_parquet(path)
    assert geo_of(path) == {
        "version": "1.1.0",
        "primary_column": "geometry",
        "columns": {
            "geometry": {
                "encoding": "WKB",
                "geometry_types": ["LineString", "MultiPolygon", "Polygon"],
                "crs": None,
                "edges": "planar",
                "bbox": [0.0, 0.0, 10.0, 10.0],
            }
        },
    }


@pytest.mark.parametrize("table", [outlines()[:0], outlines()[1:2]])
def test_without_vertices_there_is_no_box(table: cntr.Outlines, tmp_path: pathlib.Path) -> None:
    table.to_parquet(tmp_path / "shapes.parquet")
    columns = geo_of(tmp_path / "shapes.parquet")["columns"]
    assert isinstance(columns, dict)
    assert "bbox" not in columns["geometry"]


def test_other_programs_read_columns_of_well_known_types(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "shapes.parquet"
    outlines().to_parquet(path)
    table = pyarrow.parquet.read_table(path)
    assert table.schema.field("geometry").type == pa.binary()
    assert shapely.from_wkb(table["geometry"].to_numpy()[0]).area == 99.5
    assert table["label"].to_pylist() == [4294967295, None, 3, None]
    assert table["problem"].to_pylist() == [None, "empty", None, None]
    elements = [{"magnitude": m, "angle": a} for m, a in zip(*EDGES, strict=True)]
    assert table["edge_elements"].to_pylist() == [
        [None] * 4 + elements,
        [],
        elements,
        [None] * 7,
    ]


def test_columns_that_would_be_empty_are_left_out(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "shapes.parquet"
    cntr.Outlines.from_regions([cntr.Region(SQUARE)]).to_parquet(path)
    assert pyarrow.parquet.read_schema(path).names == ["geometry", "label"]


def test_files_of_others_are_read_by_their_primary_column(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "others.parquet"
    values = [*outlines().to_wkb(), b"\x07"]
    names = pa.array(["a", "b", "c", "d", "e"])
    write(path, pa.array(values, pa.large_binary()), "WKB", label=names, geometry=names)
    table = cntr.read_parquet(path)
    assert table.to_wkb()[:4] == values[:4]
    assert table.labels.tolist() == [-1] * 5
    assert list(table.problems) == [1, 4]


@pytest.mark.parametrize("lines", [True, False])
def test_geoarrow_encodings_are_read(lines: bool, tmp_path: pathlib.Path) -> None:
    shapes = (
        [cntr.Contour(HOLE, closed=False), cntr.Contour(SQUARE, closed=False)]
        if lines
        else [cntr.Region(SQUARE, holes=[HOLE]), cntr.Region(HOLE), cntr.Region(SQUARE)]
    )
    table = cntr.Outlines.from_regions(shapes)
    kinds = ["linestring", "multilinestring"] if lines else ["polygon", "multipolygon"]
    for encoding in kinds:
        column = pa.array(table.to_arrow(layout=encoding, coordinates="separated"))
        write(tmp_path / "native.parquet", column, encoding)
        assert cntr.read_parquet(tmp_path / "native.parquet") == table


def test_files_without_outlines_are_refused(tmp_path: pathlib.Path) -> None:
    plain = tmp_path / "plain.parquet"
    pyarrow.parquet.write_table(pa.table({"a": [1]}), plain)
    with pytest.raises(ValueError, match=r"plain\.parquet has no metadata of GeoParquet$"):
        cntr.read_parquet(plain)
    points = tmp_path / "points.parquet"
    write(points, pa.array([{"x": 1.0, "y": 2.0}]), "point")
    with pytest.raises(ValueError, match=r"has the encoding point, which has no outlines$"):
        cntr.read_parquet(points)
    with pytest.raises(FileNotFoundError):
        cntr.read_parquet(tmp_path / "nowhere.parquet")


def test_many_outlines_come_back_with_the_same_bits(tmp_path: pathlib.Path) -> None:
    rng = np.random.default_rng(7)
    xy = rng.normal(size=(30000, 2))
    table = cntr.Outlines.from_ragged(xy, np.arange(0, 30001, 6))
    table.to_parquet(tmp_path / "many.parquet")
    again = cntr.read_parquet(tmp_path / "many.parquet")
    assert again.to_wkb() == table.to_wkb()
