# SPDX-License-Identifier: MIT
"""Times cntr.spark beside Apache Sedona, an identity function, and the library alone.

    compare.py --data DIRECTORY [--rows N] [--points N] [--regions N] [--executors N]
               [--sedona COORDINATES]

Everything runs on one cluster of executors with a core each, on the same Parquet files; what is
compared takes turns, after a run that is not counted, and the median counts. The library alone runs
on one thread; its seconds are divided by the number of executors. COORDINATES name Sedona in
Maven's repository. Prints the figures as lines of Markdown tables.
"""

import argparse
import statistics
import time
from collections.abc import Callable, Iterable, Iterator
from pathlib import Path
from typing import Any

import cluster
import drawn
import pyarrow as pa
import pyarrow.parquet
from pyspark.sql import DataFrame, SparkSession
from pyspark.sql import functions as F

import cntr
import cntr.spark

MEASURES = [
    *("area", "length", "centre_x", "centre_y", "left", "top", "width", "height"),
    *("hull_area", "solidity", "circle_radius", "crosses_itself"),
]
RUNS = 3
PARTITIONS = 16
# What Spark counts, as its plan names it.
METRICS = (
    "shuffle bytes written",
    "data sent to Python workers",
    "data returned from Python workers",
    "time to run Python workers",
)

Job = Callable[[], DataFrame]


def consume(job: Job) -> float:
    """Seconds for all rows of a data frame, which are not kept, and what it asks at once."""
    begin = time.perf_counter()
    job().write.format("noop").mode("overwrite").save()
    return time.perf_counter() - begin


def in_turns(jobs: dict[str, Job]) -> dict[str, float]:
    """The median seconds of each."""
    for job in jobs.values():
        consume(job)
    times = [{name: consume(job) for name, job in jobs.items()} for _ in range(RUNS)]
    return {name: statistics.median(run[name] for run in times) for name in jobs}


def metrics_of_last(spark: SparkSession) -> dict[str, str]:
    """What Spark counted in the last query."""
    session: Any = spark
    store = session._jsparkSession.sharedState().statusStore()
    query = store.executionsList().last().executionId()
    values = store.executionMetrics(query)
    nodes = store.planGraph(query).allNodes()
    found: dict[str, str] = {}
    for i in range(nodes.size()):
        metrics = nodes.apply(i).metrics()
        for j in range(metrics.size()):
            metric = metrics.apply(j)
            value = values.get(metric.accumulatorId())
            if metric.name() in METRICS and value.isDefined():
                text = " ".join(str(value.get()).split("\n")[-1].split(" (")[0].split())
                found[metric.name()] = ", ".join(filter(None, [found.get(metric.name()), text]))
    return found


def prepared(path: Path, df: Callable[[], DataFrame], spark: SparkSession) -> DataFrame:
    """The rows of a directory, which is written where it is missing."""
    if not path.exists():
        df().write.parquet(str(path))
    return spark.read.parquet(str(path))


def identity(df: DataFrame) -> DataFrame:
    """The same rows, by way of Python."""

    def same(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        yield from batches

    return df.mapInArrow(same, df.schema)


def measured_by_sedona(df: DataFrame) -> DataFrame:
    """The nearest that it has."""
    return df.selectExpr("id", "ST_GeomFromWKB(geometry) as g").selectExpr(
        "id",
        "ST_Area(g) as area",
        "ST_Perimeter(g) as length",
        "ST_X(ST_Centroid(g)) as centre_x",
        "ST_Y(ST_Centroid(g)) as centre_y",
        "ST_XMin(g) as x_min",
        "ST_YMin(g) as y_min",
        "ST_XMax(g) as x_max",
        "ST_YMax(g) as y_max",
        "ST_Area(ST_ConvexHull(g)) as hull_area",
        "ST_Area(g) / ST_Area(ST_ConvexHull(g)) as solidity",
        "ST_MinimumBoundingRadius(g).radius as circle_radius",
        "ST_IsSimple(g) as is_simple",
    )


def joined_by_sedona(points: DataFrame, regions: DataFrame) -> DataFrame:
    """The pairs of points and regions that contain them."""
    left = points.selectExpr("point", "ST_Point(x, y) as p")
    right = regions.selectExpr("id", "ST_GeomFromWKB(geometry) as g")
    return left.join(right, F.expr("ST_Contains(g, p)")).select("point", "id")


def alone(path: Path) -> float:
    """Seconds of the library on one thread for the same rows, without Spark."""
    files = sorted(path.glob("*.parquet"))
    geometries = [pyarrow.parquet.read_table(file)["geometry"] for file in files]
    begin = time.perf_counter()
    for column in geometries:
        cntr.Outlines.from_wkb(column).measure(MEASURES, threads=1)
    return time.perf_counter() - begin


def show(title: str, rows: int, cores: int, times: dict[str, float]) -> None:
    """Lines of a table."""
    print(f"\n| {title}, {rows:,} rows | seconds | rows a second and core |\n|---|---|---|")
    for name, seconds in times.items():
        print(f"| {name} | {seconds:.2f} | {rows / seconds / cores:,.0f} |", flush=True)


def compare_measures(spark: SparkSession, wanted: argparse.Namespace) -> None:
    """Of outlines: ours, theirs, nothing at all, and the library by itself."""
    path = wanted.data / f"outlines-{wanted.rows}"
    outlines = prepared(path, lambda: drawn.outline_frame(spark, wanted.rows, PARTITIONS), spark)
    jobs: dict[str, Job] = {
        "measured, geometry kept": lambda: cntr.spark.measure(outlines, columns=MEASURES),
        "measured": lambda: cntr.spark.measure(outlines, columns=MEASURES, keep_geometry=False),
        "identity": lambda: identity(outlines),
    }
    if wanted.sedona:
        jobs["Sedona"] = lambda: measured_by_sedona(outlines)
    times = in_turns(jobs)
    library = min(alone(path) for _ in range(2))
    shared = library / wanted.executors
    show("Measures", wanted.rows, wanted.executors, {**times, "the library alone": shared})
    bound = times["identity"] + shared
    print(f"\nidentity and the library alone: {bound:.2f} s,", end=" ")
    print(f"the job takes {times['measured, geometry kept'] / bound:.2f} of it")
    if wanted.sedona:
        print(
            f"Sedona takes {times['Sedona'] / times['measured']:.1f} times the job without geometry"
        )
    consume(jobs["measured"])
    print(metrics_of_last(spark))


def compare_joins(spark: SparkSession, wanted: argparse.Namespace) -> None:
    """Both of our ways, and theirs."""
    name = f"{wanted.points}-{wanted.regions}"
    regions = prepared(
        wanted.data / f"regions-{name}",
        # Sedona takes no outlines that cross themselves.
        lambda: drawn.simple_frame(spark, wanted.regions, PARTITIONS),
        spark,
    )
    points = prepared(
        wanted.data / f"points-{name}",
        lambda: drawn.point_frame(spark, wanted.points, wanted.regions, PARTITIONS),
        spark,
    )
    jobs: dict[str, Job] = {
        way: lambda broadcast=broadcast: cntr.spark.inside_join(  # type: ignore[misc]
            points, regions, broadcast=broadcast
        ).select("point", "id")
        for way, broadcast in (("by a broadcast", True), ("by cells", False))
    }
    if wanted.sedona:
        jobs["Sedona"] = lambda: joined_by_sedona(points, regions)
    title = f"Points joined with {wanted.regions:,} regions"
    show(title, wanted.points, wanted.executors, in_turns(jobs))
    for way, job in jobs.items():
        print(f"{way}: {job().count():,} pairs")
        print(metrics_of_last(spark))


def main() -> None:
    """Reads the arguments and compares."""
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--rows", type=int, default=1_000_000)
    parser.add_argument("--points", type=int, default=10_000_000)
    parser.add_argument("--regions", type=int, default=100_000)
    parser.add_argument("--executors", type=int, default=2)
    parser.add_argument("--sedona", help="group:artifact:version in Maven's repository")
    parser.add_argument("--data", type=Path, required=True)
    wanted = parser.parse_args()
    settings = {}
    if wanted.sedona:
        settings = {
            "spark_jars_packages": wanted.sedona,
            "spark_serializer": "org.apache.spark.serializer.KryoSerializer",
            "spark_kryo_registrator": "org.apache.sedona.core.serde.SedonaKryoRegistrator",
            "spark_sql_extensions": "org.apache.sedona.sql.SedonaSqlExtensions",
        }
    spark = cluster.start(wanted.executors, progress=False, **settings)
    print(f"Spark {spark.version}, {wanted.executors} executors")
    if wanted.rows:
        compare_measures(spark, wanted)
    if wanted.points:
        compare_joins(spark, wanted)
    spark.stop()


if __name__ == "__main__":
    main()
