# SPDX-License-Identifier: MIT
"""GeoParquet: what is written is read again, by others too, and no attempt leaves anything else."""

import json
import re
from pathlib import Path
from typing import Any

import numpy as np
import pyarrow as pa
import pyarrow.parquet
import pytest
import samples
from pyspark.sql import SparkSession

import cntr.spark
from cntr.spark import _geoparquet

ROWS = samples.stars(300, seed=5) + samples.hard_rows()


def metadata_of(file: Path) -> dict[str, Any]:
    entry: dict[str, Any] = json.loads(pyarrow.parquet.read_schema(file).metadata[b"geo"])
    return entry


@pytest.mark.parametrize("form", ["{0}", "file:{0}", "file://{0}", "relative"])
def test_what_is_written_is_read_again(
    spark: SparkSession, tmp_path: Path, monkeypatch: pytest.MonkeyPatch, form: str
) -> None:
    monkeypatch.chdir(tmp_path)
    table = samples.table_of(ROWS)
    path = form.format(tmp_path / "archive")
    cntr.spark.write_geoparquet(spark.createDataFrame(table).repartition(4), path)
    read = cntr.spark.read_geoparquet(spark, str(tmp_path / path) if form == "relative" else path)
    assert read.columns == ["id", "geometry"]
    assert read.toArrow().sort_by("id").to_pylist() == table.to_pylist()


def test_there_is_a_file_for_each_partition_with_rows_and_nothing_else(
    spark: SparkSession, tmp_path: Path
) -> None:
    df = spark.createDataFrame(samples.table_of(ROWS)).repartition(3)
    cntr.spark.write_geoparquet(df.where("id >= 0"), str(tmp_path))
    assert sorted(file.name for file in tmp_path.iterdir()) == [
        "part-00000.parquet",
        "part-00001.parquet",
        "part-00002.parquet",
    ]


def test_the_metadata_are_those_of_geoparquet(spark: SparkSession, tmp_path: Path) -> None:
    outlines = [
        samples.polygon(np.array([[1.0, 2.0], [4.0, 2.0], [4.0, 8.0]])),
        samples.polygon(np.array([[-3.0, 5.0], [0.0, 5.0], [0.0, 6.0]])),
    ]
    df = spark.createDataFrame(samples.table_of(outlines)).coalesce(1)
    cntr.spark.write_geoparquet(df.withColumnRenamed("geometry", "shape"), str(tmp_path), "shape")
    (file,) = tmp_path.glob("*.parquet")
    metadata = metadata_of(file)
    box = metadata["columns"]["shape"].pop("bbox")
    assert metadata == {
        "version": "1.1.0",
        "primary_column": "shape",
        "columns": {"shape": {"encoding": "WKB", "geometry_types": ["Polygon"], "crs": None}},
    }
    np.testing.assert_allclose(box, [-3.0, 2.0, 4.0, 8.0], rtol=1e-15)
    assert box[2] >= 4.0
    assert box[3] >= 8.0


def test_a_file_without_outlines_has_no_box(spark: SparkSession, tmp_path: Path) -> None:
    df = spark.createDataFrame(samples.table_of([None, b"", b"\xff" * 40])).coalesce(1)
    cntr.spark.write_geoparquet(df, str(tmp_path))
    (file,) = tmp_path.glob("*.parquet")
    column = metadata_of(file)["columns"]["geometry"]
    assert column == {"encoding": "WKB", "geometry_types": [], "crs": None}


def test_files_that_are_there_are_not_mixed_with_others(
    spark: SparkSession, tmp_path: Path
) -> None:
    df = spark.createDataFrame(samples.table_of(ROWS[:3]))
    cntr.spark.write_geoparquet(df, str(tmp_path))
    with pytest.raises(FileExistsError, match=f"there are files in {tmp_path} already"):
        cntr.spark.write_geoparquet(df, str(tmp_path))


def test_parquet_without_metadata_of_geometry_is_refused(
    spark: SparkSession, tmp_path: Path
) -> None:
    file = tmp_path / "plain.parquet"
    pyarrow.parquet.write_table(samples.table_of(ROWS[:3]), file)
    message = f"file://{file} is no GeoParquet file: it has no 'geo' metadata"
    with pytest.raises(ValueError, match=message):
        cntr.spark.read_geoparquet(spark, str(file))


def test_geometry_that_is_not_wkb_is_refused(spark: SparkSession, tmp_path: Path) -> None:
    file = tmp_path / "native.parquet"
    geo = json.dumps({"primary_column": "g", "columns": {"g": {"encoding": "polygon"}}})
    table = pa.table({"g": [1]}).replace_schema_metadata({"geo": geo})
    pyarrow.parquet.write_table(table, file)
    message = f"file://{file}: the column 'g' is polygon, not WKB"
    with pytest.raises(ValueError, match=message):
        cntr.spark.read_geoparquet(spark, str(file))


@pytest.mark.parametrize(
    ("geo", "told"),
    [
        ("{", "Expecting property name"),
        ("[]", "list indices must be integers"),
        ("{}", "its 'geo' metadata have no 'columns'"),
        ('{"columns": {"id": {}}}', "its 'geo' metadata have no 'encoding'"),
        ('{"columns": {"id": {"encoding": "WKB"}}}', "the column 'id' must be binary"),
        ('{"columns": {"g": {"encoding": "WKB"}}}', "the data frame has no column 'g'"),
    ],
)
def test_a_file_with_metadata_that_are_wrong_is_named(
    spark: SparkSession, tmp_path: Path, geo: str, told: str
) -> None:
    file = tmp_path / "wrong.parquet"
    table = pa.table({"id": [1]}).replace_schema_metadata({"geo": geo})
    pyarrow.parquet.write_table(table, file)
    with pytest.raises(ValueError, match=re.escape(f"file://{file}: {told}")):
        cntr.spark.read_geoparquet(spark, str(file))


def test_a_result_without_rows_is_read_again(spark: SparkSession, tmp_path: Path) -> None:
    df = spark.createDataFrame(samples.table_of(ROWS)).limit(0)
    cntr.spark.write_geoparquet(df, str(tmp_path))
    assert [file.name for file in tmp_path.iterdir()] == ["part-00000.parquet"]
    read = cntr.spark.read_geoparquet(spark, str(tmp_path))
    assert read.schema == df.schema
    assert read.count() == 0


@pytest.mark.parametrize("exists", [True, False])
def test_files_are_taken_back_when_one_cannot_be_moved(
    spark: SparkSession, tmp_path: Path, monkeypatch: pytest.MonkeyPatch, exists: bool
) -> None:
    class Full:
        """A file system that moves one file and no more."""

        def __init__(self) -> None:
            self.moved = 0

        def __getattr__(self, name: str) -> Any:
            return getattr(pyarrow.fs.LocalFileSystem(), name)

        def move(self, source: str, place: str) -> None:
            if self.moved:
                raise OSError("no space left")
            pyarrow.fs.LocalFileSystem().move(source, place)
            self.moved += 1

        def __reduce__(self) -> Any:
            return (pyarrow.fs.LocalFileSystem, ())

    archive = tmp_path / "archive"
    if exists:
        archive.mkdir()
    full = Full()
    monkeypatch.setattr(_geoparquet, "file_system_of", lambda path: (full, path))
    df = spark.createDataFrame(samples.table_of(ROWS)).repartition(3)
    with pytest.raises(OSError, match="no space left"):
        cntr.spark.write_geoparquet(df, str(archive))
    assert full.moved == 1
    assert list(tmp_path.rglob("*")) == ([archive] if exists else [])


def groups_of(directory: Path) -> list[int]:
    """The rows of the groups of the only file."""
    (file,) = directory.glob("*.parquet")
    metadata = pyarrow.parquet.read_metadata(file)
    return [metadata.row_group(number).num_rows for number in range(metadata.num_row_groups)]


def test_batches_become_row_groups_of_the_size_that_is_asked_for(
    spark: SparkSession, tmp_path: Path
) -> None:
    square = samples.polygon(np.array([[0.0, 0.0], [1.0, 0.0], [1.0, 1.0], [0.0, 1.0]]))
    table = samples.table_of([square] * 4000)
    df = spark.createDataFrame(table).coalesce(1)
    row = table.nbytes / len(table)
    spark.conf.set("spark.sql.execution.arrow.maxRecordsPerBatch", 100)
    try:
        cntr.spark.write_geoparquet(df, str(tmp_path / "usual"))
        asked = int(row * 900)
        cntr.spark.write_geoparquet(df, str(tmp_path / "small"), row_group_bytes=asked)
    finally:
        spark.conf.unset("spark.sql.execution.arrow.maxRecordsPerBatch")
    # No batch is cut in two for a few bytes.
    assert groups_of(tmp_path / "usual") == [4000]
    *groups, last = groups_of(tmp_path / "small")
    assert set(groups) == {900}
    assert last == 400
    cntr.spark.write_geoparquet(df, str(tmp_path / "one"), row_group_bytes=asked)
    *groups, last = groups_of(tmp_path / "one")
    assert all(800 <= rows <= 1000 for rows in groups)
    assert sum(groups) + last == 4000


def test_row_groups_without_a_size_are_refused(spark: SparkSession, tmp_path: Path) -> None:
    df = spark.createDataFrame(samples.table_of(ROWS[:3]))
    with pytest.raises(ValueError, match="row_group_bytes must be positive, not 0"):
        cntr.spark.write_geoparquet(df, str(tmp_path / "archive"), row_group_bytes=0)


def test_a_truncated_file_is_named(spark: SparkSession, tmp_path: Path) -> None:
    df = spark.createDataFrame(samples.table_of(ROWS)).repartition(3)
    cntr.spark.write_geoparquet(df, str(tmp_path))
    cut = tmp_path / "part-00001.parquet"
    cut.write_bytes(cut.read_bytes()[:-100])
    with pytest.raises(Exception, match=r"part-00001\.parquet"):
        cntr.spark.measure(
            cntr.spark.read_geoparquet(spark, str(tmp_path)), columns=["area"]
        ).count()
