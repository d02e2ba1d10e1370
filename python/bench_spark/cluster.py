# SPDX-License-Identifier: MIT
"""A cluster of executors with one core each, on this machine."""

import os
import sys
from pathlib import Path

from pyspark.sql import SparkSession

HERE = Path(__file__).parent


def start(executors: int, progress: bool, **settings: str) -> SparkSession:
    """`settings` are Spark's, with _ for the dots."""
    os.environ["SPARK_LOCAL_IP"] = "127.0.0.1"
    os.environ["PYSPARK_PYTHON"] = sys.executable
    os.environ["PYTHONPATH"] = str(HERE)
    standard: dict[str, bool | float | int | str | None] = {
        "spark.driver.host": "127.0.0.1",
        "spark.driver.bindAddress": "127.0.0.1",
        "spark.driver.memory": "2g",
        "spark.executor.memory": "2000m",
        "spark.ui.enabled": "false",
        "spark.ui.showConsoleProgress": str(progress).lower(),
        "spark.sql.shuffle.partitions": "16",
        **{name.replace("_", "."): value for name, value in settings.items()},
    }
    builder = SparkSession.builder.master(f"local-cluster[{executors},1,3000]")
    spark = builder.appName("cntr").config(map=standard).getOrCreate()
    spark.sparkContext.setLogLevel("ERROR")
    return spark
