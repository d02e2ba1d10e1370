# SPDX-License-Identifier: MIT
"""What Spark itself has counted, by the store behind the pages of its user interface."""

from collections.abc import Iterator
from typing import Any

from pyspark.sql import SparkSession

# As its plans name them.
METRICS = (
    "shuffle bytes written",
    "data sent to Python workers",
    "data returned from Python workers",
    "time to run Python workers",
)


def metrics_of_last(spark: SparkSession) -> dict[str, str]:
    """The totals of the last query's metrics, over all tasks; several where nodes are several."""
    session: Any = spark
    store = session._jsparkSession.sharedState().statusStore()
    query = store.executionsList().last().executionId()
    values = store.executionMetrics(query)
    found: dict[str, str] = {}
    for node in items_of(store.planGraph(query).allNodes()):
        for metric in items_of(node.metrics()):
            value = values.get(metric.accumulatorId())
            if metric.name() in METRICS and value.isDefined():
                text = " ".join(str(value.get()).split("\n")[-1].split(" (")[0].split())
                found[metric.name()] = ", ".join(filter(None, [found.get(metric.name()), text]))
    return found


def shuffled_rows(spark: SparkSession, group: str) -> list[int]:
    """How many rows of shuffles each task has read, in that stage of a job group that read most."""
    store = spark.sparkContext._jsc.sc().statusStore()
    tracker = spark.sparkContext.statusTracker()
    stages: list[list[int]] = []
    for job in tracker.getJobIdsForGroup(group):
        info = tracker.getJobInfo(job)
        for stage in info.stageIds if info is not None else []:
            attempt = store.lastStageAttempt(stage)
            tasks = store.taskList(stage, attempt.attemptId(), attempt.numTasks())
            stages.append([rows_read(task) for task in items_of(tasks)])
    return max(stages, key=sum)


def rows_read(task: Any) -> int:
    """Of shuffles, by a task that has ended."""
    return int(task.taskMetrics().get().shuffleReadMetrics().recordsRead())


def items_of(sequence: Any) -> Iterator[Any]:
    """Of a sequence of Scala's."""
    for i in range(sequence.size()):
        yield sequence.apply(i)
