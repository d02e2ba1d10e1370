# SPDX-License-Identifier: MIT
"""Times cntr.spark, part by part, and writes the figures into a directory.

What is compared runs on one cluster of executors with a core each, on the same rows in the same
partitions, in turns, and the median of the runs counts. Inputs lie in Spark's cache, but those of
the part `growth`, which come from Parquet files. Before each part the jobs run once on a tenth of
the rows, which is not counted.

- `measures`: twelve measures beside an identity function, the library alone, and Sedona;
- `joins`: points and regions, by a broadcast and by cells, beside Sedona in the same two ways;
- `growth`: measures of more and more outlines, up to ten times `--rows`;
- `executors`: measures and the identity function with one executor and with two.
"""

import argparse
import functools
import math
import time
from collections.abc import Callable, Iterable, Iterator
from pathlib import Path

import cluster
import drawn
import numpy as np
import pyarrow as pa
import pyarrow.parquet
import pyspark
import sedona
from pyspark.sql import DataFrame, SparkSession
from timing import Figures, Function, Job, Row, consume, time_in_turns

import cntr
import cntr.spark

MEASURES = [
    *("area", "length", "centre_x", "centre_y", "left", "top", "width", "height"),
    *("hull_area", "solidity", "circle_radius", "crosses_itself"),
]
PARTITIONS = 16
# MiB of each executor's heap: the caches fit into two.
HEAP = 4000
# A tenth of the outlines.
FEW_OUTLINES = "id % 10 = 0"
# How many times as many outlines the points of `growth` have.
GROWTH = (1.0, math.sqrt(10.0), 10.0)


class Bench:
    """One part: its arguments, its data, and its figures."""

    def __init__(self, wanted: argparse.Namespace, part: str) -> None:
        self.wanted = wanted
        self.part = part
        name = "Spark " + pyspark.__version__ + (f", {wanted.sedona}" if wanted.sedona else "")
        self.figures = Figures(wanted.output, part, name)

    def row(self, name: str, rows: int, cores: int | None = None) -> Row:
        """A line of the part's table."""
        return self.figures.add(Row(name, rows, cores or self.wanted.executors))

    def settings(self) -> cluster.Settings:
        """Sedona's, where it is compared."""
        if not self.wanted.sedona:
            return {}
        return {"spark.jars.packages": self.wanted.sedona, **sedona.SETTINGS}

    def frame(self, spark: SparkSession, name: str, draw: Callable[[], DataFrame]) -> DataFrame:
        """The rows of a directory of Parquet files, drawn where they are missing."""
        path = self.wanted.data / name
        if not (path / "_SUCCESS").exists():
            draw().write.mode("overwrite").parquet(str(path))
        return spark.read.parquet(str(path))

    def outlines(self, spark: SparkSession, rows: int) -> DataFrame:
        """Drawn ones."""
        return self.frame(
            spark, f"outlines-{rows}", lambda: drawn.outline_frame(spark, rows, PARTITIONS)
        )

    def run(self, spark: SparkSession, jobs: list[Job], few: str) -> None:
        """The runs that count, after one of each, of few rows, that does not."""
        for job in jobs:
            consume(job.function, job.argument.where(few))
        time_in_turns(spark, self.figures, jobs, self.wanted.runs)


def cached(df: DataFrame) -> DataFrame:
    """The rows in as many partitions as all inputs have, in Spark's cache."""
    kept = df.repartition(PARTITIONS).cache()
    kept.count()
    return kept


def identity(df: DataFrame) -> DataFrame:
    """The same rows, by way of Python."""

    def same(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        yield from batches

    return df.mapInArrow(same, df.schema)


def measured(df: DataFrame) -> DataFrame:
    """The twelve, without geometry."""
    return cntr.spark.measure(df, columns=MEASURES, keep_geometry=False)


def measured_and_kept(df: DataFrame) -> DataFrame:
    """The twelve, and geometry."""
    return cntr.spark.measure(df, columns=MEASURES)


def joined(points: DataFrame, regions: DataFrame, broadcast: bool) -> DataFrame:
    """The pairs, as Sedona gives them."""
    return cntr.spark.inside_join(points, regions, broadcast=broadcast).select("point", "id")


def time_library(bench: Bench, rows: int, threads: int) -> Row:
    """The library alone, from WKB in this process's memory, without Spark."""
    path = bench.wanted.data / f"outlines-{rows}"
    tables = [
        pyarrow.parquet.read_table(file)["geometry"] for file in sorted(path.glob("part-*.parquet"))
    ]
    name = f"the library alone, {threads} thread{'s' if threads > 1 else ''}"
    from_wkb = bench.row(f"{name}, from WKB", rows, threads)
    ready = bench.row(f"{name}, outlines ready", rows, threads)
    for _ in range(bench.wanted.runs):
        decoding, measuring = 0.0, 0.0
        for table in tables:
            begin = time.perf_counter()
            outlines = cntr.Outlines.from_wkb(table)
            decoded = time.perf_counter()
            outlines.measure(MEASURES, threads=threads)
            decoding += decoded - begin
            measuring += time.perf_counter() - decoded
        from_wkb.seconds.append(decoding + measuring)
        ready.seconds.append(measuring)
    return from_wkb


def compare_measures(bench: Bench) -> None:
    """Ours, nothing at all, Sedona's, and the library by itself."""
    rows, executors = bench.wanted.rows, bench.wanted.executors
    with cluster.started(executors, HEAP, bench.settings()) as spark:
        source = bench.outlines(spark, rows)
        # The executors have nothing to do meanwhile.
        alone = [time_library(bench, rows, threads) for threads in sorted({1, executors})]
        outlines = cached(source)
        kept = Job(bench.row("`measure`", rows), measured_and_kept, outlines)
        ours = Job(bench.row("`measure`, `keep_geometry=False`", rows), measured, outlines)
        same = Job(bench.row("an identity function", rows), identity, outlines)
        theirs: list[Job] = []
        if bench.wanted.sedona:
            from_wkb = bench.row("Sedona, from WKB", rows)
            ready = bench.row("Sedona, geometry parsed and cached", rows)
            theirs = [
                Job(from_wkb, lambda df: sedona.measured(sedona.parsed(df)), outlines),
                Job(ready, sedona.measured, cached(sedona.parsed(source))),
            ]
        bench.run(spark, [kept, ours, same, *theirs], FEW_OUTLINES)
    bound = same.row.median + alone[-1].median
    bench.figures.notes.append(
        f"`measure` takes {kept.row.median / bound:.2f} of the identity function and the library"
        f" alone with as many threads as executors, from WKB ({bound:.2f} s)"
    )
    for job in theirs:
        ratio = job.row.median / ours.row.median
        bench.figures.notes.append(f"{job.row.name}: {ratio:.2f} times `measure` without geometry")


def compare_joins(bench: Bench) -> None:
    """Both of our ways, and both of theirs."""
    points, regions = bench.wanted.points, bench.wanted.regions
    with cluster.started(bench.wanted.executors, HEAP, bench.settings()) as spark:
        # Sedona takes no outlines that cross themselves.
        outlines = cached(
            bench.frame(
                spark, f"regions-{regions}", lambda: drawn.simple_frame(spark, regions, PARTITIONS)
            )
        )
        places = cached(
            bench.frame(
                spark,
                f"points-{points}-{regions}",
                lambda: drawn.point_frame(spark, points, regions, PARTITIONS),
            )
        )
        ways: dict[str, Function] = {
            "`inside_join`, a broadcast": functools.partial(
                joined, regions=outlines, broadcast=True
            ),
            "`inside_join`, cells": functools.partial(joined, regions=outlines, broadcast=False),
        }
        if bench.wanted.sedona:
            ready = cached(sedona.parsed(outlines))
            theirs = functools.partial(sedona.joined, regions=ready)
            ways["Sedona, a broadcast"] = functools.partial(theirs, broadcast=True)
            ways["Sedona, partitions"] = functools.partial(theirs, broadcast=False)
        jobs = [Job(bench.row(name, points), way, places) for name, way in ways.items()]
        bench.run(spark, jobs, "point % 10 = 0")


def compare_growth(bench: Bench) -> None:
    """How seconds grow with outlines: the slope of a line through their logarithms."""
    with cluster.started(bench.wanted.executors, HEAP) as spark:
        jobs = []
        for times in GROWTH:
            rows = int(bench.wanted.rows * times)
            row = bench.row(f"`measure`, {rows:,} outlines", rows)
            jobs.append(Job(row, measured, bench.outlines(spark, rows)))
        bench.run(spark, jobs, f"id < {bench.wanted.rows // 10}")
    rows_and_seconds = np.log([[job.row.rows, job.row.median] for job in jobs])
    slope = np.polyfit(rows_and_seconds[:, 0], rows_and_seconds[:, 1], 1)[0]
    bench.figures.notes.append(f"seconds grow as the power {slope:.3f} of the rows")


def compare_executors(bench: Bench) -> None:
    """What a second executor gains."""
    rows = bench.wanted.rows // 4
    pairs: list[tuple[Job, Job]] = []
    for executors in (1, 2):
        with cluster.started(executors, HEAP) as spark:
            outlines = cached(bench.outlines(spark, rows))
            ours = bench.row(f"`measure`, executors: {executors}", rows, executors)
            same = bench.row(f"an identity function, executors: {executors}", rows, executors)
            pairs.append((Job(ours, measured, outlines), Job(same, identity, outlines)))
            bench.run(spark, list(pairs[-1]), FEW_OUTLINES)
    gains = [one.row.median / two.row.median for one, two in zip(*pairs, strict=True)]
    bench.figures.notes.append(
        f"two executors are {gains[0]:.2f} times as fast as one, with the identity function"
        f" {gains[1]:.2f} times: {gains[0] / gains[1]:.2f} of its gain"
    )


PARTS: dict[str, Callable[[Bench], None]] = {
    "measures": compare_measures,
    "joins": compare_joins,
    "growth": compare_growth,
    "executors": compare_executors,
}


def main() -> None:
    """Reads the arguments and times the part."""
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("part", choices=PARTS)
    parser.add_argument("--rows", type=int, default=1_000_000, help="outlines that are measured")
    parser.add_argument("--points", type=int, default=10_000_000, help="points that are joined")
    parser.add_argument("--regions", type=int, default=100_000, help="what they are joined with")
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--executors", type=int, default=2)
    parser.add_argument("--sedona", help="group:artifact:version in Maven's repository")
    parser.add_argument("--data", type=Path, required=True, help="where what is drawn is kept")
    parser.add_argument("--output", type=Path, required=True, help="where the figures go")
    wanted = parser.parse_args()
    wanted.output.mkdir(parents=True, exist_ok=True)
    bench = Bench(wanted, wanted.part)
    PARTS[wanted.part](bench)
    bench.figures.write()


if __name__ == "__main__":
    main()
