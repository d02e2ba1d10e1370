# SPDX-License-Identifier: MIT
"""A cluster of executors with one core each, on this machine."""

import atexit
import functools
import os
import shutil
import sys
import tempfile
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

import pyspark
from pyspark.sql import SparkSession

HERE = Path(__file__).parent
# What a worker of Spark's grants to an executor beside its heap, in MiB.
BESIDE_HEAP = 536

Settings = dict[str, bool | float | int | str | None]


@functools.cache
def home() -> Path:
    """Spark's programs in a directory of this process, which is deleted when the process ends.

    Executors keep their files beside the programs: those of one process are in nobody's way.
    """
    own = Path(tempfile.mkdtemp(prefix="cntr-spark-"))
    atexit.register(shutil.rmtree, own, ignore_errors=True)
    for entry in Path(pyspark.__path__[0]).iterdir():
        if entry.name != "work":
            (own / entry.name).symlink_to(entry)
    (own / "tmp").mkdir()
    return own


@contextmanager
def started(
    executors: int, heap: int = 2000, settings: Settings | None = None
) -> Iterator[SparkSession]:
    """A session whose executors have `heap` MiB each; it is stopped at the end."""
    temporary = home() / "tmp"
    os.environ["SPARK_HOME"] = str(home())
    os.environ["SPARK_LOCAL_DIRS"] = str(temporary)
    os.environ["SPARK_LOCAL_IP"] = "127.0.0.1"
    os.environ["PYSPARK_PYTHON"] = sys.executable
    # What is drawn is drawn by the executors.
    os.environ["PYTHONPATH"] = str(HERE)
    standard: Settings = {
        "spark.driver.host": "127.0.0.1",
        "spark.driver.bindAddress": "127.0.0.1",
        "spark.driver.memory": "2g",
        "spark.driver.extraJavaOptions": f"-Djava.io.tmpdir={temporary}",
        "spark.executor.memory": f"{heap}m",
        "spark.ui.enabled": False,
        "spark.ui.showConsoleProgress": False,
        "spark.sql.shuffle.partitions": 16,
        **(settings or {}),
    }
    builder = SparkSession.builder.master(f"local-cluster[{executors},1,{heap + BESIDE_HEAP}]")
    spark = builder.appName("cntr").config(map=standard).getOrCreate()
    spark.sparkContext.setLogLevel("OFF")
    try:
        yield spark
    finally:
        spark.stop()
