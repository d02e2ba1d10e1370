# SPDX-License-Identifier: MIT
"""Points in regions: one machine's pairs, each once, however the data are spread."""

import cluster
import counts
import numpy as np
import numpy.typing as npt
import pyarrow as pa
import pytest
import samples
from pyspark.sql import DataFrame, SparkSession
from pyspark.sql import functions as F

import cntr
import cntr.spark
from cntr._sandbox import tasks
from cntr._sandbox.parent import DiedError
from cntr.spark import _cells, _joins, _rows

REGIONS = samples.stars(250, seed=21) + samples.hard_rows()


def points_drawn(skew: bool, count: int = 60000) -> npt.NDArray[np.float64]:
    random = np.random.default_rng(22)
    points = random.uniform(-2.0, 102.0, (count, 2))
    if skew:
        centre = cntr.Outlines.from_wkb(pa.array(REGIONS[:1], pa.binary())).measure(
            ["centre_x", "centre_y"]
        )
        place = [pa.table(centre)[name][0].as_py() for name in ("centre_x", "centre_y")]
        points[: count // 10] = place
        points[count // 10 : count // 5] = random.normal(place, 0.05, (count // 10, 2))
    return points


def frame_of(spark: SparkSession, points: npt.NDArray[np.float64]) -> DataFrame:
    numbers = pa.array(range(len(points)), pa.int64())
    table = pa.table({"point": numbers, "x": points[:, 0], "y": points[:, 1]})
    return spark.createDataFrame(table)


def regions_of(spark: SparkSession, rows: list[bytes | None]) -> DataFrame:
    return spark.createDataFrame(samples.table_of(rows)).withColumnRenamed("id", "region")


def pairs_here(points: npt.NDArray[np.float64]) -> list[tuple[int, int]]:
    outlines = cntr.Outlines.from_wkb(pa.array(REGIONS, pa.binary()))
    region, point = outlines.inside_join(points)
    return sorted(zip(point.tolist(), region.tolist(), strict=True))


def pairs_of(df: DataFrame) -> list[tuple[int, int]]:
    return sorted((row.point, row.region) for row in df.select("point", "region").collect())


@pytest.mark.parametrize("skew", [False, True])
@pytest.mark.parametrize("broadcast", [None, True, False])
@pytest.mark.parametrize("partitions", [1, 7])
def test_the_pairs_are_those_of_one_machine(
    spark: SparkSession, skew: bool, broadcast: bool | None, partitions: int
) -> None:
    points = points_drawn(skew)
    joined = cntr.spark.inside_join(
        frame_of(spark, points).repartition(partitions),
        regions_of(spark, REGIONS).repartition(partitions),
        broadcast=broadcast,
    )
    expected = pairs_here(points)
    assert len(expected) > 1000
    assert pairs_of(joined) == expected


def test_points_are_asked_about_in_pieces_of_a_size(
    spark: SparkSession, monkeypatch: pytest.MonkeyPatch
) -> None:
    points = points_drawn(False)
    batch = pa.RecordBatch.from_pydict({"x": points[:100, 0], "y": points[:100, 1]})
    pieces = list(_rows.gathered([batch] * 7, 2 * batch.nbytes + 1))
    assert [len(piece) for piece in pieces] == [300, 300, 100]
    # Each batch of 10,000 is a piece then.
    monkeypatch.setattr(_joins, "POINTS_AT_ONCE_BYTES", 1000)
    regions = regions_of(spark, REGIONS)
    joined = cntr.spark.inside_join(frame_of(spark, points).coalesce(1), regions, broadcast=True)
    assert pairs_of(joined) == pairs_here(points)


def test_regions_beyond_a_size_are_not_sent_to_everybody(
    spark: SparkSession, monkeypatch: pytest.MonkeyPatch
) -> None:
    points = frame_of(spark, points_drawn(False, 100))
    regions = regions_of(spark, REGIONS)
    assert "CoGroup" not in plan_of(cntr.spark.inside_join(points, regions))
    monkeypatch.setattr(_joins, "BROADCAST_BYTES", 1000)
    assert "CoGroup" in plan_of(cntr.spark.inside_join(points, regions))


def plan_of(df: DataFrame) -> str:
    plan: str = df._jdf.queryExecution().toString()
    return plan


def test_a_pair_has_the_columns_of_both_sides_without_the_geometry(spark: SparkSession) -> None:
    points = frame_of(spark, np.array([[0.5, 0.25], [9.0, 9.0]])).withColumn(
        "camera", F.lit("left")
    )
    square = samples.polygon(np.array([[0.0, 0.0], [1.0, 0.0], [1.0, 1.0], [0.0, 1.0]]))
    regions = regions_of(spark, [square]).withColumn("part", F.array(F.lit("lid")))
    for broadcast in (True, False):
        joined = cntr.spark.inside_join(points, regions, broadcast=broadcast)
        assert joined.columns == ["point", "x", "y", "camera", "region", "part"]
        assert [tuple(row) for row in joined.collect()] == [(0, 0.5, 0.25, "left", 0, ["lid"])]


@pytest.mark.parametrize("broadcast", [True, False])
def test_points_and_regions_that_are_nowhere_are_in_no_pair(
    spark: SparkSession, broadcast: bool
) -> None:
    points = spark.sql(
        "select * from values (0, double('nan'), 1d), (1, 1d, null), (2, double('inf'), 1d)"
        " as t(point, x, y)"
    )
    regions = regions_of(spark, REGIONS)
    assert cntr.spark.inside_join(points, regions, broadcast=broadcast).count() == 0
    somewhere = frame_of(spark, points_drawn(False, 100))
    nowhere = regions_of(spark, samples.hard_rows())
    assert cntr.spark.inside_join(somewhere, nowhere, broadcast=broadcast).count() == 0
    assert cntr.spark.inside_join(somewhere, regions.limit(0), broadcast=broadcast).count() == 0


@pytest.mark.parametrize("broadcast", [True, False])
def test_a_region_that_ends_its_process_is_left_out(spark: SparkSession, broadcast: bool) -> None:
    points = points_drawn(False, 2000)
    joined = cntr.spark.inside_join(
        frame_of(spark, points).coalesce(1),
        regions_of(spark, [*REGIONS, samples.DEADLY]),
        broadcast=broadcast,
    )
    assert pairs_of(joined) == pairs_here(points)


def told_by_executors(text: str) -> int:
    """How often their logs have it."""
    logs = (cluster.home() / "work").glob("*/*/stderr")
    return sum(log.read_text(errors="replace").count(text) for log in logs)


@pytest.mark.parametrize("broadcast", [True, False])
def test_a_deadly_region_is_looked_for_before_the_join_and_not_by_every_task(
    spark: SparkSession, broadcast: bool
) -> None:
    regions = regions_of(spark, [*REGIONS, samples.DEADLY])
    points = frame_of(spark, points_drawn(False, 2000)).repartition(5)
    before = told_by_executors("a region is left out")
    pairs = cntr.spark.inside_join(points, regions, broadcast=broadcast).count()
    assert pairs == len(pairs_here(points_drawn(False, 2000)))
    assert told_by_executors("a region is left out") == before


class Deadly:
    """A child that dies of certain regions, when it is asked about points."""

    def __init__(self, deadly: set[bytes]) -> None:
        self.questions = 0
        self._deadly = deadly
        self._keys: dict[str, list[bytes]] = {}
        self._held: list[bytes] = []

    def hold(self, key: str, regions: pa.Table) -> None:
        """Never two tables for one key."""
        self._held = regions[tasks.GEOMETRY].to_pylist()
        assert self._keys.setdefault(key, self._held) == self._held

    def ask(self, _: str, points: pa.Table) -> pa.Table:
        self.questions += 1
        if self._deadly & set(self._held):
            raise DiedError("signal 11")
        numbers = range(len(self._held))
        return pa.table({"point": pa.array([0] * len(numbers)), "region": pa.array(numbers)})


def test_a_region_that_points_make_deadly_is_searched_for_once_in_a_partition(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    names = [b"a", b"b", b"c", b"d", b"e", b"f", b"g", b"h"]
    child = Deadly({b"c", b"h"})
    monkeypatch.setattr(_joins, "sandbox", lambda: child)
    coordinate = pa.chunked_array([[1.0]])

    def regions_met(asked: _joins.Asked) -> list[int]:
        regions: list[int] = asked.pairs(coordinate, coordinate)["region"].to_pylist()
        return regions

    first = _joins.Asked("key", pa.chunked_array([names]))
    assert regions_met(first) == [0, 1, 3, 4, 5, 6]
    searched = child.questions
    assert searched > 8
    for _ in range(3):
        assert regions_met(first) == [0, 1, 3, 4, 5, 6]
    assert child.questions == searched + 3
    # Another partition of the same worker has had other points.
    child._deadly = {b"d"}
    second = _joins.Asked("key", pa.chunked_array([names]))
    assert regions_met(second) == [0, 1, 2, 4, 5, 6, 7]
    assert regions_met(second) == [0, 1, 2, 4, 5, 6, 7]
    assert regions_met(first) == [0, 1, 4, 5, 6]


# A tenth of 60,000 points lies in one place, and another tenth around it.
@pytest.mark.parametrize(("tolerated", "least", "most"), [(2.0, 1.0, 3.0), (1e9, 8.0, 20.0)])
def test_a_place_with_a_tenth_of_the_points_makes_no_long_task(
    spark: SparkSession,
    monkeypatch: pytest.MonkeyPatch,
    tolerated: float,
    least: float,
    most: float,
) -> None:
    """Without shares of the cell, one task would have ten times the rows of the others."""
    monkeypatch.setattr(_cells, "TOLERATED", tolerated)
    monkeypatch.setattr(_joins, "CELLS_PER_CORE", 256)
    settings = {
        "spark.sql.shuffle.partitions": "100",
        "spark.sql.adaptive.coalescePartitions.enabled": "false",
    }
    before = {name: spark.conf.get(name) for name in settings}
    for name, value in settings.items():
        spark.conf.set(name, value)
    points = points_drawn(True)
    group = f"skew {tolerated}"
    try:
        joined = cntr.spark.inside_join(
            frame_of(spark, points), regions_of(spark, REGIONS), broadcast=False
        )
        spark.sparkContext.setJobGroup(group, group)
        pairs = joined.count()
    finally:
        spark.sparkContext.setLocalProperty("spark.jobGroup.id", "")
        for name, earlier in before.items():
            spark.conf.set(name, str(earlier))
    assert pairs == len(pairs_here(points))
    rows = counts.shuffled_rows(spark, group)
    assert len(rows) == 100
    assert sum(rows) > len(points)
    assert least <= max(rows) / np.mean(rows) <= most


def test_columns_that_do_not_fit_are_refused_at_once(spark: SparkSession) -> None:
    points = frame_of(spark, points_drawn(False, 10))
    regions = regions_of(spark, REGIONS)
    with pytest.raises(ValueError, match="the data frame has no column 'column'"):
        cntr.spark.inside_join(points, regions, x="column")
    with pytest.raises(ValueError, match="the column 'point' must be double, not bigint"):
        cntr.spark.inside_join(points, regions, y="point")
    with pytest.raises(ValueError, match="the data frame has several columns 'x'"):
        cntr.spark.inside_join(points.select("x", "x", "y"), regions)
    message = "both sides have a column 'point'; rename one of them first"
    for name in ("point", "Point"):
        with pytest.raises(ValueError, match=message):
            cntr.spark.inside_join(points, regions.withColumnRenamed("region", name))


def test_names_may_have_any_characters(spark: SparkSession) -> None:
    points = frame_of(spark, np.array([[0.5, 0.25], [9.0, 9.0]])).toDF("a.b", "x.1", "y`2")
    square = samples.polygon(np.array([[0.0, 0.0], [1.0, 0.0], [1.0, 1.0], [0.0, 1.0]]))
    regions = regions_of(spark, [square]).toDF("c.d", "geo.metry")
    for broadcast in (True, False):
        joined = cntr.spark.inside_join(
            points, regions, "x.1", "y`2", "geo.metry", broadcast=broadcast
        )
        assert joined.columns == ["a.b", "x.1", "y`2", "c.d"]
        assert [tuple(row) for row in joined.collect()] == [(0, 0.5, 0.25, 0)]
