# SPDX-License-Identifier: MIT
"""The processes of a cluster on this machine, by what /proc says of the driver's descendants."""

import os
import signal
import time
from collections.abc import Callable
from pathlib import Path
from typing import Any

from pyspark.sql import SparkSession

# What the command lines of the kinds have.
KINDS = {
    "executors": "CoarseGrainedExecutorBackend",
    "Python workers": "pyspark.daemon",
    "their children": "cntr._sandbox.child",
}


def parent_of(pid: int) -> int:
    """The process that started it."""
    # The name in parentheses may have any characters.
    return int(Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[1])


def command_of(pid: int) -> str:
    """Its command line."""
    return Path(f"/proc/{pid}/cmdline").read_bytes().replace(b"\0", b" ").decode()


def parents() -> dict[int, int]:
    """Of all processes that there are."""
    found = {}
    for entry in Path("/proc").glob("[0-9]*"):
        try:
            found[int(entry.name)] = parent_of(int(entry.name))
        except (FileNotFoundError, ProcessLookupError):
            continue
    return found


def of_cluster(spark: SparkSession) -> set[int]:
    """The executors and their Python processes."""
    gateway: Any = spark.sparkContext._gateway
    tree = parents()
    mine, todo = set(), [int(gateway.proc.pid)]
    while todo:
        parent = todo.pop()
        children = [pid for pid, its_parent in tree.items() if its_parent == parent]
        mine.update(children)
        todo += children
    return mine


def is_alive(pid: int) -> bool:
    """Whether it runs, or could."""
    try:
        state = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0]
    except (FileNotFoundError, ProcessLookupError):
        return False
    return state != "Z"


def named(spark: SparkSession, text: str) -> list[int]:
    """Those of the cluster whose command line has the text."""
    found = []
    for pid in of_cluster(spark):
        try:
            if text in command_of(pid) and is_alive(pid):
                found.append(pid)
        except (FileNotFoundError, ProcessLookupError):
            continue
    return sorted(found)


def executors(spark: SparkSession) -> list[int]:
    """The Java processes of the executors."""
    return [pid for pid in named(spark, "CoarseGrainedExecutorBackend") if is_java(pid)]


def is_java(pid: int) -> bool:
    """By the first word of its command line."""
    return os.path.basename(command_of(pid).split(" ")[0]) == "java"


def sandboxes(spark: SparkSession) -> list[int]:
    """The children that answer for batches."""
    return named(spark, "cntr._sandbox.child")


def seconds_used(spark: SparkSession) -> dict[tuple[str, int], float]:
    """The processor's seconds until now of each process, by its kind and number."""
    used = {}
    tick = os.sysconf("SC_CLK_TCK")
    for pid in of_cluster(spark):
        try:
            command, state = command_of(pid), Path(f"/proc/{pid}/stat").read_text()
        except (FileNotFoundError, ProcessLookupError):
            continue
        times = state.rpartition(")")[2].split()[11:13]
        for kind, text in KINDS.items():
            if text in command:
                used[kind, pid] = sum(map(int, times)) / tick
    return used


def seconds_between(
    before: dict[tuple[str, int], float], after: dict[tuple[str, int], float]
) -> dict[str, float]:
    """The processor's seconds of each kind, without those of processes that have ended."""
    used = dict.fromkeys(KINDS, 0.0)
    for process, seconds in after.items():
        used[process[0]] += seconds - before.get(process, 0.0)
    return used


def workers(spark: SparkSession) -> list[int]:
    """The Python workers: they have started the sandboxes."""
    return [parent_of(pid) for pid in sandboxes(spark)]


def kill(pid: int) -> None:
    """At once."""
    os.kill(pid, signal.SIGKILL)


def wait_until(happens: Callable[[], object], seconds: float) -> bool:
    """Whether it happens within so many seconds."""
    end = time.monotonic() + seconds
    while not happens():
        if time.monotonic() > end:
            return False
        time.sleep(0.05)
    return True
