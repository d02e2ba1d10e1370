# SPDX-License-Identifier: MIT
"""What scripts/spark-demo runs: glyphs and drawn outlines, measured and joined."""

import argparse
import shutil
import time
from collections.abc import Callable
from pathlib import Path

import cluster
import drawn
import glyphs
import matplotlib

matplotlib.use("svg")

import matplotlib.pyplot as plt
from pyspark.sql import DataFrame, SparkSession
from pyspark.sql import functions as F

import cntr.spark

MEASURES = ["area", "length", "centre_x", "centre_y", "hull_area", "solidity", "crosses_itself"]
PARTITIONS = 16
# The plot has a point for each of these shares of the rows.
SHARES = (0.01, 0.03, 0.1, 0.3, 1.0)


class Demonstration:
    """Each step writes its result into a directory and tells how long it took."""

    def __init__(self, spark: SparkSession, directory: Path) -> None:
        self._spark = spark
        self._directory = directory

    def step(self, what: str, name: str, write: Callable[[str], None]) -> tuple[DataFrame, float]:
        """What was written, and the rows of it in a second."""
        print(f"{what} ...", flush=True)
        path = str(self._directory / name)
        begin = time.perf_counter()
        write(path)
        seconds = time.perf_counter() - begin
        result = self._spark.read.parquet(path)
        rows = result.count()
        rate = rows / seconds
        print(f"{what}: {rows:,} rows in {seconds:.1f} s, {rate:,.0f} a second", flush=True)
        return result, rate

    def archive(self, what: str, name: str, df: DataFrame) -> DataFrame:
        """The outlines, written as GeoParquet and read again."""
        self.step(what, name, lambda path: cntr.spark.write_geoparquet(df, path))
        return cntr.spark.read_geoparquet(self._spark, str(self._directory / name))

    def table(self, what: str, name: str, df: DataFrame) -> tuple[DataFrame, float]:
        """Rows without geometry."""
        return self.step(what, name, lambda path: df.write.parquet(path))

    def glyphs(self, fonts: int) -> None:
        """Real outlines, and what is told of them."""
        found = self.archive(
            "Reading the contours of glyphs", "glyphs", glyphs.glyph_frame(self._spark, fonts)
        )
        measured = cntr.spark.measure(found, columns=MEASURES, keep_geometry=False)
        answers, _ = self.table("Measuring them", "glyphs-measured", measured)
        answers.groupBy("font", "status", "crosses_itself").agg(
            F.count("*").alias("contours"), F.round(F.avg("solidity"), 4).alias("mean solidity")
        ).orderBy("font", "status", "crosses_itself").show(truncate=False)

    def drawn(self, rows: int) -> list[tuple[int, float]]:
        """Rows, and rows measured in a second."""
        rates = []
        for count in sorted({max(int(rows * share), drawn.BLOCK) for share in SHARES}):
            found = self.archive(
                f"Drawing {count:,} outlines",
                f"drawn-{count}",
                drawn.outline_frame(self._spark, count, PARTITIONS),
            )
            measured = cntr.spark.measure(found, columns=MEASURES, keep_geometry=False)
            _, rate = self.table("Measuring them", f"drawn-{count}-measured", measured)
            rates.append((count, rate))
        return rates

    def join(self, points: int, regions: int) -> None:
        """Both ways of joining."""
        outlines = drawn.outline_frame(self._spark, regions, PARTITIONS)
        outlines = self.archive(f"Drawing {regions:,} regions", "regions", outlines)
        defects = drawn.point_frame(self._spark, points, regions, PARTITIONS)
        places, _ = self.table(f"Drawing {points:,} points", "points", defects)
        for broadcast, way in ((True, "a broadcast"), (False, "cells")):
            name = f"pairs-by-{way.split()[-1]}"
            pairs = cntr.spark.inside_join(places, outlines, broadcast=broadcast)
            self.table(f"Joining them by {way}", name, pairs.select("point", "id"))


def plot(rates: list[tuple[int, float]], file: Path) -> None:
    """Rows per second over rows."""
    figure, axes = plt.subplots(figsize=(6.0, 3.5), layout="constrained")
    axes.plot([rows for rows, _ in rates], [rate for _, rate in rates], marker="o")
    axes.set(xscale="log", xlabel="outlines", ylabel="outlines measured a second")
    axes.set_ylim(bottom=0.0)
    axes.grid(alpha=0.3)
    figure.savefig(file)
    print(f"The plot is {file}")


def main() -> None:
    """Reads the arguments and takes all steps."""
    parser = argparse.ArgumentParser(prog="scripts/spark-demo", description=__doc__)
    parser.add_argument("--rows", type=int, default=300_000, help="outlines that are drawn")
    parser.add_argument("--points", type=int, default=1_000_000, help="points that are joined")
    parser.add_argument(
        "--regions", type=int, default=10_000, help="regions that they are joined with"
    )
    parser.add_argument("--fonts", type=int, default=1, help="fonts that are read, up to 4")
    parser.add_argument(
        "--output", type=Path, required=True, help="a directory, which is made anew"
    )
    wanted = parser.parse_args()
    shutil.rmtree(wanted.output, ignore_errors=True)
    wanted.output.mkdir(parents=True)
    with cluster.started(2, settings={"spark.ui.showConsoleProgress": True}) as spark:
        demonstration = Demonstration(spark, wanted.output.resolve())
        demonstration.glyphs(wanted.fonts)
        rates = demonstration.drawn(wanted.rows)
        demonstration.join(wanted.points, wanted.regions)
    plot(rates, wanted.output / "rates.svg")


if __name__ == "__main__":
    main()
