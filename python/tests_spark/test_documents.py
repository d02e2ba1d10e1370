# SPDX-License-Identifier: MIT
"""The example of docs/spark.md runs."""

import re
from pathlib import Path

import numpy as np
import pyarrow as pa
import pytest
import samples
from pyspark.sql import SparkSession

import cntr.spark

PAGE = Path(__file__).parents[2] / "docs" / "spark.md"


def test_the_example_of_the_page_shows_what_is_wrong_and_counts_points(
    spark: SparkSession,
    tmp_path: Path,
    monkeypatch: pytest.MonkeyPatch,
    capsys: pytest.CaptureFixture[str],
) -> None:
    (code,) = re.findall(r"^```python\n(.*?)^```$", PAGE.read_text(), re.DOTALL | re.MULTILINE)
    square = samples.polygon(np.array([[0.0, 0.0], [1.0, 0.0], [1.0, 1.0], [0.0, 1.0]]))
    outlines = spark.createDataFrame(samples.table_of([square, None]))
    cntr.spark.write_geoparquet(outlines, str(tmp_path / "archive"))
    points = pa.table({"x": [0.25, 0.5, 7.0], "y": [0.5, 0.75, 0.5]})
    spark.createDataFrame(points).write.parquet(str(tmp_path / "defects"))
    # Spark's own working directory is another one.
    for name in ("archive-valid", "archive", "defects"):
        code = code.replace(f'"{name}"', repr(str(tmp_path / name)))
    exec(code, {"spark": spark})
    shown = re.findall(r"[^\s|+-]+", capsys.readouterr().out)
    assert shown == ["id", "status", "note", "1", "failed", "null", "id", "count", "0", "2"]
    assert (tmp_path / "archive-valid").is_dir()
