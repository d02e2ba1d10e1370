# SPDX-License-Identifier: MIT
"""Outlines and points drawn from a seed, as many as wanted, the same whoever draws them.

They are drawn in blocks: block 5 is the same in every partition, and in every number of rows.
"""

from collections.abc import Iterable, Iterator

import numpy as np
import numpy.typing as npt
import pyarrow as pa
from pyspark.sql import DataFrame, SparkSession

BLOCK = 1000
# The side of the square in which outlines are centred so that some overlap, but few.
SPACING = 3.0
VERTICES = (8, 16, 32, 64, 128, 256)
WAVES = 4
# One block in so many has outlines that cross themselves.
CROSSING = 20

Floats = npt.NDArray[np.float64]


def outline_frame(spark: SparkSession, rows: int, partitions: int) -> DataFrame:
    """`id` and `geometry`, blobs of 8 to 256 vertices."""
    extent = SPACING * np.sqrt(rows)

    def draw(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            for block in batch["id"].to_pylist():
                yield outline_block(block, extent)

    blocks = spark.range(0, -(-rows // BLOCK), 1, partitions)
    return blocks.mapInArrow(draw, "id long, geometry binary").where(f"id < {rows}")


def simple_frame(spark: SparkSession, rows: int, partitions: int) -> DataFrame:
    """Those of as many that do not cross themselves."""
    drawn = outline_frame(spark, rows, partitions)
    return drawn.where(f"id div {BLOCK} % {CROSSING} <> 0")


def point_frame(spark: SparkSession, rows: int, regions: int, partitions: int) -> DataFrame:
    """`point`, `x` and `y`, anywhere among that many outlines; a tenth lies in one of them."""
    extent = SPACING * np.sqrt(regions)

    def draw(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            for block in batch["id"].to_pylist():
                yield point_block(block, extent)

    blocks = spark.range(0, -(-rows // BLOCK), 1, partitions)
    return blocks.mapInArrow(draw, "point long, x double, y double").where(f"point < {rows}")


def outline_block(block: int, extent: float) -> pa.RecordBatch:
    """Closed curves of a few waves around a circle."""
    random = np.random.default_rng([1, block])
    count = VERTICES[block % len(VERTICES)]
    angles = np.linspace(0.0, 2.0 * np.pi, count, endpoint=False)
    centres = random.uniform(0.0, extent, (BLOCK, 1, 2))
    sizes = random.uniform(0.3, 1.0, (BLOCK, 1))
    heights = random.uniform(0.0, 0.15, (BLOCK, 1, WAVES))
    phases = random.uniform(0.0, 2.0 * np.pi, (BLOCK, 1, WAVES))
    waves = heights * np.cos(angles[:, None] * np.arange(2, 2 + WAVES) + phases)
    radii = sizes * (1.0 + waves.sum(axis=2))
    if block % CROSSING == 0:
        # Twice around, in the same number of vertices.
        angles = 2.0 * angles + 0.1
    rings = centres + radii[:, :, None] * np.stack([np.cos(angles), np.sin(angles)], axis=1)
    ids = pa.array(np.arange(block * BLOCK, (block + 1) * BLOCK))
    return pa.RecordBatch.from_arrays([ids, polygons_of(rings)], ["id", "geometry"])


def point_block(block: int, extent: float) -> pa.RecordBatch:
    """Points anywhere, the first of which crowd in the first outline of block 1."""
    random = np.random.default_rng([2, block])
    points = random.uniform(0.0, extent, (BLOCK, 2))
    crowd = outline_block(1, extent)["geometry"][0].as_py()
    (first,) = np.frombuffer(crowd, [("header", "V13"), ("vertex", "<f8", 2)], 1)["vertex"]
    second = np.frombuffer(crowd, "<f8", 2, 13 + 16 * (VERTICES[1] // 2))
    points[: BLOCK // 10] = (first + second) / 2.0 + random.normal(0.0, 0.1, (BLOCK // 10, 2))
    ids = pa.array(np.arange(block * BLOCK, (block + 1) * BLOCK))
    columns = [ids, pa.array(points[:, 0]), pa.array(points[:, 1])]
    return pa.RecordBatch.from_arrays(columns, ["point", "x", "y"])


def polygons_of(rings: Floats) -> pa.Array:
    """WKB of rings of one number of vertices, of shape (n, vertices, 2)."""
    count = len(rings)
    closed = np.concatenate([rings, rings[:, :1]], axis=1)
    record = np.zeros(
        count,
        [
            ("order", "u1"),
            ("type", "<u4"),
            ("rings", "<u4"),
            ("size", "<u4"),
            ("xy", "<f8", closed.shape[1:]),
        ],
    )
    record["order"], record["type"], record["rings"] = 1, 3, 1
    record["size"] = closed.shape[1]
    record["xy"] = closed
    offsets = np.arange(count + 1, dtype=np.int32) * record.itemsize
    return pa.Array.from_buffers(
        pa.binary(), count, [None, pa.py_buffer(offsets), pa.py_buffer(record.tobytes())]
    )
