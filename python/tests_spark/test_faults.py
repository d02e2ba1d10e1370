# SPDX-License-Identifier: MIT
"""What is killed in the middle of a job: the result is the same, and nothing is there twice."""

import threading
import time
from collections.abc import Callable, Iterable, Iterator
from pathlib import Path

import processes
import pyarrow as pa
import pytest
import samples
from pyspark.sql import DataFrame, SparkSession

import cntr.spark

COLUMNS = ["area", "centre_x", "centre_y", "solidity"]
ROWS = samples.stars(800, seed=31) + samples.hard_rows()
PARTITIONS = 16

# Which processes there are of a kind.
Kind = Callable[[SparkSession], list[int]]
KINDS: list[Kind] = [processes.executors, processes.workers, processes.sandboxes]


def slowly(df: DataFrame) -> DataFrame:
    """The same rows, a partition of which takes a while."""

    def paused(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            time.sleep(0.3)
            yield batch

    return df.mapInArrow(paused, df.schema)


class Killer(threading.Thread):
    """Kills a process of a kind when some tasks of the running stage, but not all, are done."""

    def __init__(self, spark: SparkSession, kind: Kind) -> None:
        super().__init__()
        self._spark = spark
        self._kind = kind
        self.killed = False
        self.start()

    def run(self) -> None:
        processes.wait_until(self._is_midway, 60.0)
        victims = self._kind(self._spark)
        if self._is_midway() and victims:
            processes.kill(victims[0])
            self.killed = True

    def _is_midway(self) -> bool:
        tracker = self._spark.sparkContext.statusTracker()
        stages = [tracker.getStageInfo(number) for number in tracker.getActiveStageIds()]
        return any(
            stage is not None
            and stage.numTasks == PARTITIONS
            and 3 <= stage.numCompletedTasks <= 10
            for stage in stages
        )


@pytest.fixture(autouse=True)
def two_executors(spark: SparkSession) -> Iterator[None]:
    """Where one has been killed, there is another when the test ends."""
    yield
    assert processes.wait_until(lambda: len(processes.executors(spark)) == 2, 60.0)


@pytest.fixture
def df(spark: SparkSession) -> DataFrame:
    return spark.createDataFrame(samples.table_of(ROWS)).repartition(PARTITIONS)


@pytest.mark.parametrize("kind", KINDS)
def test_what_is_measured_and_written_is_the_same_though_a_process_is_killed(
    spark: SparkSession, df: DataFrame, tmp_path: Path, kind: Kind
) -> None:
    archive = tmp_path / "archive"
    killer = Killer(spark, kind)
    cntr.spark.write_geoparquet(slowly(cntr.spark.measure(df, columns=COLUMNS)), str(archive))
    killer.join()
    assert killer.killed
    names = sorted(file.name for file in archive.iterdir())
    assert names == [f"part-{number:05}.parquet" for number in range(PARTITIONS)]
    there = cntr.spark.read_geoparquet(spark, str(archive)).toArrow()
    here = samples.measured_here(ROWS, COLUMNS)
    names = ["id", *COLUMNS, "status", "note"]
    assert samples.sorted_hash(there, names, ["id"]) == samples.sorted_hash(here, names, ["id"])


@pytest.mark.parametrize("kind", [processes.executors, processes.workers])
def test_a_join_is_the_same_though_a_process_is_killed(spark: SparkSession, kind: Kind) -> None:
    points = slowly(
        spark.range(0, 20000, 1, PARTITIONS).selectExpr(
            "id as point", "id % 100 + 0.25d as x", "id % 97 + 0.5d as y"
        )
    )
    regions = spark.createDataFrame(samples.table_of(ROWS)).withColumnRenamed("id", "region")
    expected = cntr.spark.inside_join(points, regions, broadcast=True).toArrow()
    # Jobs that find the cells are over then: the stage in which points are shuffled is met.
    joined = cntr.spark.inside_join(points, regions, broadcast=False)
    killer = Killer(spark, kind)
    there = joined.toArrow()
    killer.join()
    assert killer.killed
    keys = ["point", "region"]
    assert expected.num_rows > 100
    assert samples.sorted_hash(there, there.column_names, keys) == samples.sorted_hash(
        expected, there.column_names, keys
    )


def test_a_failing_job_leaves_no_file_behind(
    spark: SparkSession, df: DataFrame, tmp_path: Path
) -> None:
    failing = df.selectExpr("assert_true(id < 500) as nothing", "id", "geometry")
    with pytest.raises(Exception, match=r"is not true"):
        cntr.spark.write_geoparquet(failing, str(tmp_path / "archive"))
    assert list(tmp_path.iterdir()) == []
