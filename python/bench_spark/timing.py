# SPDX-License-Identifier: MIT
"""Times jobs in turns, and writes the figures of a part into files as they come."""

import json
import statistics
import time
from collections.abc import Callable
from dataclasses import asdict, dataclass, field
from pathlib import Path

import counts
import processes
from pyspark.sql import DataFrame, Observation, SparkSession
from pyspark.sql import functions as F

Function = Callable[[DataFrame], DataFrame]


@dataclass
class Row:
    """The runs of one job."""

    name: str
    rows: int
    cores: int
    # Of each run; the median counts.
    seconds: list[float] = field(default_factory=list)
    # The processor's seconds of all processes of a kind, of each run.
    used: dict[str, list[float]] = field(default_factory=dict)
    # Of the last run: how many rows came out, and Spark's own metrics.
    came_out: int | None = None
    metrics: dict[str, str] = field(default_factory=dict)

    @property
    def median(self) -> float:
        """Seconds of a run."""
        return statistics.median(self.seconds)

    def line(self) -> str:
        """Of a table."""
        used = ", ".join(f"{statistics.median(each):.1f}" for each in self.used.values())
        rate = self.rows / self.median / self.cores
        return f"| {self.name} | {self.rows:,} | {self.median:.2f} | {rate:,.0f} | {used} |"

    def counted(self) -> list[str]:
        """The rows that came out, and each metric."""
        rows = [] if self.came_out is None else [f"rows: {self.came_out:,}"]
        return rows + [f"{name}: {value}" for name, value in self.metrics.items()]


@dataclass
class Job:
    """What a row tells of: the function of a data frame."""

    row: Row
    function: Function
    argument: DataFrame


class Figures:
    """What a part has found so far, in DIRECTORY/PART.json and, for readers, PART.md."""

    def __init__(self, directory: Path, part: str, versions: str) -> None:
        self._place = directory / part
        self._versions = versions
        self.rows: list[Row] = []
        self.notes: list[str] = []

    def add(self, row: Row) -> Row:
        """A row whose runs are yet to come."""
        self.rows.append(row)
        return row

    def write(self) -> None:
        """Rows without a run are left out."""
        rows = [row for row in self.rows if row.seconds]
        found = {"versions": self._versions, "rows": [asdict(row) for row in rows]}
        self._place.with_suffix(".json").write_text(json.dumps({**found, "notes": self.notes}))
        kinds = ", ".join(processes.KINDS)
        lines = [
            f"{self._versions}; {time.strftime('%Y-%m-%d %H:%M')}",
            "",
            f"| job | rows | seconds | rows a second and core | processor's seconds: {kinds} |",
            "|---|---|---|---|---|",
            *(row.line() for row in rows),
            "",
            *(f"- {row.name}: {counted}" for row in rows for counted in row.counted()),
            *(f"- {note}" for note in self.notes),
            "",
        ]
        self._place.with_suffix(".md").write_text("\n".join(lines))


def consume(function: Function, argument: DataFrame) -> tuple[float, int]:
    """Seconds for all rows of a function and what it asks at once, and how many rows they are.

    The rows are not kept.
    """
    seen = Observation()
    begin = time.perf_counter()
    rows = function(argument).observe(seen, F.count(F.lit(1)).alias("rows"))
    rows.write.format("noop").mode("overwrite").save()
    return time.perf_counter() - begin, seen.get["rows"]


def time_once(spark: SparkSession, job: Job) -> None:
    """Another run for the row."""
    before = processes.seconds_used(spark)
    seconds, job.row.came_out = consume(job.function, job.argument)
    used = processes.seconds_between(before, processes.seconds_used(spark))
    job.row.seconds.append(seconds)
    for kind, its_seconds in used.items():
        job.row.used.setdefault(kind, []).append(its_seconds)
    job.row.metrics = counts.metrics_of_last(spark)


def time_in_turns(spark: SparkSession, figures: Figures, jobs: list[Job], runs: int) -> None:
    """Each job once, then each again, so that what slows the machine down slows all of them."""
    for number in range(runs):
        for job in jobs:
            time_once(spark, job)
            seconds = job.row.seconds[-1]
            print(f"run {number + 1}: {job.row.name}: {seconds:.2f} s", flush=True)
            figures.write()
