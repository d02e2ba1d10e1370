# SPDX-License-Identifier: MIT
"""A cluster of two executors that are real processes, and outlines to ask about."""

from collections.abc import Iterator

import cluster
import processes
import pytest
import samples
from pyspark.sql import SparkSession

SETTINGS: cluster.Settings = {
    "spark.sql.shuffle.partitions": 6,
    "spark.executorEnv.CNTR_SPARK_CRASH": samples.DEADLY.hex(),
}


@pytest.fixture(scope="session")
def spark() -> Iterator[SparkSession]:
    """Its processes are gone when it has been stopped."""
    with cluster.started(2, heap=1000, settings=SETTINGS) as session:
        yield session
        remaining = processes.of_cluster(session)
    assert len(remaining) >= 4
    assert processes.wait_until(lambda: not any(map(processes.is_alive, remaining)), 30.0)
