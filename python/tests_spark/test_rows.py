# SPDX-License-Identifier: MIT
"""Measures and repair: one machine's answers, to the last bit, whatever the rows are and lie in."""

import re
from pathlib import Path

import pyarrow as pa
import pytest
import samples
from pyspark.sql import SparkSession
from pyspark.sql import functions as F

import cntr
import cntr.spark

COLUMNS = ["area", "length", "centre_x", "centre_y", "hull_area", "solidity", "crosses_itself"]
ANSWERS = ["id", *COLUMNS, "status", "note"]
ROWS = samples.stars(1200, seed=1) + samples.hard_rows()


def hash_of(table: pa.Table) -> str:
    return samples.sorted_hash(table, ANSWERS, ["id"])


@pytest.fixture(scope="module")
def here() -> str:
    return hash_of(samples.measured_here(ROWS, COLUMNS))


@pytest.mark.parametrize(("partitions", "records"), [(1, 10000), (2, 1), (5, 7), (12, 333)])
def test_measures_are_those_of_one_machine_whatever_the_partitions_and_batches(
    spark: SparkSession, here: str, partitions: int, records: int
) -> None:
    rows = ROWS if records > 1 else ROWS[-60:]
    spark.conf.set("spark.sql.execution.arrow.maxRecordsPerBatch", records)
    try:
        df = spark.createDataFrame(samples.table_of(rows)).repartition(partitions)
        there = cntr.spark.measure(df, columns=COLUMNS).toArrow()
    finally:
        spark.conf.unset("spark.sql.execution.arrow.maxRecordsPerBatch")
    expected = here if rows is ROWS else hash_of(samples.measured_here(rows, COLUMNS))
    assert hash_of(there) == expected


def test_rows_without_an_outline_fail_with_a_note_and_keep_their_other_columns(
    spark: SparkSession,
) -> None:
    table = samples.table_of(samples.hard_rows())
    rows = (
        cntr.spark.measure(spark.createDataFrame(table), columns=["area"]).orderBy("id").collect()
    )
    assert [row.id for row in rows] == list(range(len(table)))
    assert [row.status for row in rows] == ["failed"] * len(table)
    assert all(row.note for row in rows)
    assert [row.area for row in rows] == [None] * len(table)
    assert [row.geometry for row in rows] == table["geometry"].to_pylist()


def test_a_row_that_ends_its_process_is_crashed_and_all_others_are_as_ever(
    spark: SparkSession,
) -> None:
    rows = [*ROWS, samples.DEADLY]
    df = spark.createDataFrame(samples.table_of(rows)).repartition(3)
    there = cntr.spark.measure(df, columns=COLUMNS).toArrow().sort_by("id")
    assert there["status"][-1].as_py() == "crashed"
    assert there["note"][-1].as_py() == "its process ended with signal 11"
    assert there.select(COLUMNS)[-1:].to_pylist() == [dict.fromkeys(COLUMNS)]
    assert hash_of(there[:-1]) == hash_of(samples.measured_here(ROWS, COLUMNS))


def test_repaired_outlines_are_those_of_one_machine(spark: SparkSession) -> None:
    df = spark.createDataFrame(samples.table_of(ROWS)).repartition(5)
    there = cntr.spark.make_valid(df, rule="evenodd").toArrow()
    outlines = cntr.Outlines.from_wkb(pa.array(ROWS, pa.binary())).make_valid("evenodd")
    ours = [
        repaired if repaired is not None else given
        for repaired, given in zip(pa.array(outlines.to_wkb()).to_pylist(), ROWS, strict=True)
    ]
    here = pa.table(outlines.measure([]))
    here = samples.table_of(ours).append_column("status", here["status"])
    names = ["id", "geometry", "status"]
    assert samples.sorted_hash(there, names, ["id"]) == samples.sorted_hash(here, names, ["id"])


def test_a_geometry_that_cannot_be_repaired_stays_as_it_was(spark: SparkSession) -> None:
    table = samples.table_of([*samples.hard_rows(), samples.DEADLY])
    rows = cntr.spark.make_valid(spark.createDataFrame(table)).orderBy("id").collect()
    assert [row.geometry for row in rows] == table["geometry"].to_pylist()
    assert [row.status for row in rows] == ["failed"] * (len(rows) - 1) + ["crashed"]
    assert all(row.note for row in rows)


def test_the_geometry_can_be_left_out_and_may_have_any_name(spark: SparkSession) -> None:
    table = samples.table_of(samples.stars(3, seed=2)).rename_columns(["id", "outline"])
    df = cntr.spark.measure(
        spark.createDataFrame(table), "outline", columns=["area"], keep_geometry=False
    )
    assert df.columns == ["id", "area", "status", "note"]
    assert df.count() == 3


def test_columns_of_any_kind_are_kept(spark: SparkSession) -> None:
    df = spark.createDataFrame(samples.table_of(samples.stars(4, seed=3))).select(
        F.struct("id", F.array("id").alias("list")).alias("nested"),
        "geometry",
        F.lit("x").alias("text"),
    )
    measured = cntr.spark.measure(df, columns=["area"])
    assert measured.columns == [*df.columns, "area", "status", "note"]
    assert measured.select(df.columns).exceptAll(df).count() == 0


def test_a_measure_that_there_is_not_is_refused_at_once(spark: SparkSession) -> None:
    df = spark.createDataFrame(samples.table_of(samples.stars(1, seed=4)))
    for name in ("beauty", "status", "note"):
        with pytest.raises(ValueError, match=re.escape(f"there is no measure '{name}'")):
            cntr.spark.measure(df, columns=["area", name])


def test_names_may_have_any_characters(spark: SparkSession, tmp_path: Path) -> None:
    names = ["a.b", "geo.`metry"]
    df = spark.createDataFrame(samples.table_of(samples.stars(3, seed=2))).toDF(*names)
    measured = cntr.spark.measure(df, names[1], columns=["area"])
    assert measured.columns == [*names, "area", "status", "note"]
    assert measured.count() == 3
    assert cntr.spark.make_valid(df, names[1]).count() == 3
    cntr.spark.write_geoparquet(df, str(tmp_path), names[1])
    assert cntr.spark.read_geoparquet(spark, str(tmp_path)).columns == names


def test_a_column_that_is_there_already_is_refused_at_once(spark: SparkSession) -> None:
    df = spark.createDataFrame(samples.table_of(samples.stars(1, seed=4))).withColumn(
        "note", F.lit(1)
    )
    message = "the data frame has a column 'note' already; rename it first"
    with pytest.raises(ValueError, match=message):
        cntr.spark.measure(df, columns=["area"])
    with pytest.raises(ValueError, match=message):
        cntr.spark.make_valid(df)
    with pytest.raises(ValueError, match="the data frame has a column 'Area' already"):
        cntr.spark.measure(df.selectExpr("geometry", "1 as Area"), columns=["area"])


def test_geometry_must_be_one_binary_column(spark: SparkSession) -> None:
    df = spark.createDataFrame(samples.table_of(samples.stars(1, seed=4)))
    with pytest.raises(ValueError, match="the data frame has no column 'shape'"):
        cntr.spark.measure(df, "shape")
    with pytest.raises(ValueError, match=r"the column 'id' must be binary \(WKB\), not bigint"):
        cntr.spark.measure(df, "id")
    twice = df.select("geometry", "geometry")
    with pytest.raises(ValueError, match="the data frame has several columns 'geometry'"):
        cntr.spark.measure(twice)


def test_a_rule_that_there_is_not_is_refused_at_once(spark: SparkSession) -> None:
    df = spark.createDataFrame(samples.table_of(samples.stars(1, seed=4)))
    with pytest.raises(ValueError, match="rule must be 'nonzero' or 'evenodd', not 'walk'"):
        cntr.spark.make_valid(df, rule="walk")
