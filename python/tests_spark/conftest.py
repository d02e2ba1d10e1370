# SPDX-License-Identifier: MIT
"""A cluster of two executors that are real processes, and outlines to ask about."""

import os
import sys
from collections.abc import Iterator
from pathlib import Path

import processes
import pytest
import samples
from pyspark.sql import SparkSession

SETTINGS: dict[str, bool | float | int | str | None] = {
    "spark.driver.host": "127.0.0.1",
    "spark.driver.bindAddress": "127.0.0.1",
    "spark.ui.enabled": "false",
    "spark.ui.showConsoleProgress": "false",
    "spark.executor.memory": "1000m",
    "spark.sql.shuffle.partitions": "6",
    "spark.executorEnv.CNTR_SPARK_CRASH": samples.DEADLY.hex(),
}


@pytest.fixture(scope="session")
def spark() -> Iterator[SparkSession]:
    """Its processes are gone when it has been stopped."""
    os.environ["SPARK_LOCAL_IP"] = "127.0.0.1"
    os.environ["PYSPARK_PYTHON"] = sys.executable
    # What is drawn is drawn by the executors.
    os.environ["PYTHONPATH"] = str(Path(__file__).parents[1] / "bench_spark")
    builder = SparkSession.builder.master("local-cluster[2,1,1536]").appName("cntr")
    session = builder.config(map=SETTINGS).getOrCreate()
    session.sparkContext.setLogLevel("OFF")
    yield session
    remaining = processes.of_cluster(session)
    session.stop()
    assert len(remaining) >= 4
    assert processes.wait_until(lambda: not any(map(processes.is_alive, remaining)), 30.0)
