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


def test_geoarrow_encodings_have_labels_and_edge_elements_too(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "native.parquet"
    column = pa.array(cntr.Outlines.from_wkb(TRIANGLES).to_arrow(coordinates="separated"))
    labels = pa.array([7, None, 2**32 - 1])
    edges = elements(ELEMENTS, None, ELEMENTS, of=pa.int64())
    problems = pa.array(["no problem", None, None])
    write(path, column, "polygon", label=labels, edge_elements=edges, problem=problems)
    table = cntr.read_parquet(path)
    assert table.labels.tolist() == [7, -1, 2**32 - 1]
    assert table.problems == {}
    region = cntr.Region(HOLE, edges=([1, 3, 65535], [2, 4, 255]))
    assert list(table) == [region, cntr.Region(HOLE), region]
    write(path, column, "polygon", label=pa.array([7, None, -2]))
    with pytest.raises(ValueError, match=r"label in row 2 must be from 0 to 4294967295, not -2$"):
        cntr.read_parquet(path)


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


Row = list[tuple[int | None, int | None] | None]


def elements(*rows: Row | None, of: object) -> pa.Array:
    """A column of edge elements, whose numbers are of the given type."""
    values = [
        row
        if row is None
        else [one if one is None else {"magnitude": one[0], "angle": one[1]} for one in row]
        for row in rows
    ]
    return pa.array(values, pa.list_(pa.struct([("magnitude", of), ("angle", of)])))


TRIANGLES = cntr.Outlines.from_regions([cntr.Region(HOLE)] * 3).to_wkb()
ELEMENTS: Row = [(1, 2), (3, 4), (65535, 255)]


@pytest.mark.parametrize("of", [pa.uint8(), pa.int32(), pa.uint64()])
def test_labels_are_whole_numbers_of_any_type(of: object, tmp_path: pathlib.Path) -> None:
    labels = pa.array([1, None, 255], of)
    write(tmp_path / "a.parquet", pa.array(TRIANGLES, pa.binary()), "WKB", label=labels)
    assert cntr.read_parquet(tmp_path / "a.parquet").labels.tolist() == [1, -1, 255]


@pytest.mark.parametrize("label", [2**40, -1, 2**32, 2**64 - 1])
def test_labels_that_are_too_large_are_refused(label: int, tmp_path: pathlib.Path) -> None:
    of = pa.uint64() if label > 2**62 else pa.int64()
    labels = pa.array([None, label, 7], of)
    write(tmp_path / "a.parquet", pa.array(TRIANGLES, pa.binary()), "WKB", label=labels)
    message = rf"a\.parquet: label in row 1 must be from 0 to 4294967295, not {label}$"
    with pytest.raises(ValueError, match=message):
        cntr.read_parquet(tmp_path / "a.parquet")


@pytest.mark.parametrize("of", [pa.uint16(), pa.int64(), pa.uint64()])
def test_edge_elements_are_whole_numbers_of_any_type(of: object, tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.parquet"
    column = elements(ELEMENTS, None, [(1, 2), None, (3, None)], of=of)
    write(path, pa.array(TRIANGLES, pa.binary()), "WKB", edge_elements=column)
    assert list(cntr.read_parquet(path)) == [
        cntr.Region(HOLE, edges=([1, 3, 65535], [2, 4, 255])),
        cntr.Region(HOLE),
        cntr.Region(HOLE),
    ]


@pytest.mark.parametrize(
    ("element", "message"),
    [
        ((70000, 0), "magnitude in row 2 must be from 0 to 65535, not 70000"),
        ((-1, 0), "magnitude in row 2 must be from 0 to 65535, not -1"),
        ((0, -2), "angle in row 2 must be from 0 to 255, not -2"),
        ((0, 256), "angle in row 2 must be from 0 to 255, not 256"),
    ],
)
def test_edge_elements_that_are_too_large_are_refused(
    element: tuple[int, int], message: str, tmp_path: pathlib.Path
) -> None:
    path = tmp_path / "a.parquet"
    column = elements(ELEMENTS, None, [(1, 2), (3, 4), element], of=pa.int64())
    write(path, pa.array(TRIANGLES, pa.binary()), "WKB", edge_elements=column)
    with pytest.raises(ValueError, match=rf"a\.parquet: edge_elements: {message}$"):
        cntr.read_parquet(path)


def test_edge_elements_are_one_for_each_vertex(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "a.parquet"
    column = elements(ELEMENTS, ELEMENTS[:2], None, of=pa.int64())
    write(path, pa.array(TRIANGLES, pa.binary()), "WKB", edge_elements=column)
    message = r"a\.parquet: feature 1 has 2 edge elements for 3 vertices$"
    with pytest.raises(ValueError, match=message):
        cntr.read_parquet(path)


@pytest.mark.parametrize(
    "column",
    [
        pa.array(["a", "b", None]),
        pa.array([1.5, 2.5, None]),
        pa.array([[1], [2], None]),
        pa.array([[{"magnitude": "a", "angle": 1}], None, []]),
        pa.array([[{"magnitude": 1}], None, []]),
        pa.array(["a", "b", None]).dictionary_encode(),
    ],
)
@pytest.mark.parametrize("name", ["label", "edge_elements", "problem"])
def test_columns_of_other_types_are_left_out(
    name: str, column: pa.Array, tmp_path: pathlib.Path
) -> None:
    write(tmp_path / "a.parquet", pa.array(TRIANGLES, pa.binary()), "WKB", **{name: column})
    table = cntr.read_parquet(tmp_path / "a.parquet")
    assert table == cntr.Outlines.from_wkb(TRIANGLES)
    assert table.labels.tolist() == [-1] * 3


@pytest.mark.parametrize(
    ("geo", "message"),
    [
        ("{", "are not JSON: Expecting property name"),
        ("null", "describe no primary column and its encoding$"),
        ("[]", "describe no primary column and its encoding$"),
        ("{}", "describe no primary column and its encoding$"),
        ('{"primary_column": "a"}', "describe no primary column and its encoding$"),
        ('{"primary_column": ["a"], "columns": {}}', "describe no primary column"),
        ('{"primary_column": "a", "columns": {"a": {}}}', "describe no primary column"),
        ('{"primary_column": "a", "columns": {"a": {"encoding": 3}}}', "describe no primary"),
        (
            '{"primary_column": "b", "columns": {"b": {"encoding": "WKB"}}}',
            "name the column 'b', which is not there$",
        ),
    ],
)
def test_metadata_that_make_no_sense_are_refused(
    geo: str, message: str, tmp_path: pathlib.Path
) -> None:
    table = pa.table({"a": pa.array(TRIANGLES, pa.binary())})
    path = tmp_path / "a.parquet"
    pyarrow.parquet.write_table(table.replace_schema_metadata({"geo": geo}), path)
    with pytest.raises(ValueError, match=rf"a\.parquet: the metadata of GeoParquet {message}"):
        cntr.read_parquet(path)
