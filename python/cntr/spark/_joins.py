# SPDX-License-Identifier: MIT
"""Joins points with the regions that contain them."""

import sys
import uuid
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from typing import Any

import numpy as np
import pyarrow as pa
import pyarrow.compute as pc
from pyspark.sql import DataFrame
from pyspark.sql import functions as F
from pyspark.sql import types as spark_types

from cntr._sandbox import tasks
from cntr._sandbox.bisection import answer_in_pieces
from cntr.spark._cells import Cells, Floats, Integers
from cntr.spark._rows import (
    column_of,
    gathered,
    map_batches,
    numbered,
    require_binary,
    require_classic,
    require_type,
    same_names,
    sandbox,
)
from cntr.spark._wkb import boxes_of

# Regions with less WKB than this are sent to every worker.
BROADCAST_BYTES = 64 << 20
# Size of the tables of points that a child is asked about, about a million rows of three columns:
# large enough that preparing the regions costs little in comparison.
POINTS_AT_ONCE_BYTES = 32 << 20
# Number of pairs in each batch that is returned to Spark.
ROWS_AT_ONCE = 1 << 16
# Approximate number of points, and of regions, that the cells are computed from.
SAMPLE = 200_000
# Minimum number of cells for each core, and the amount of data aimed at for each cell.
CELLS_PER_CORE = 8
CELL_BYTES = 16 << 20
# Approximate size of a point in the shuffle.
POINT_BYTES = 64
# Names of temporary columns: the share of a cell, and the hash that distributes points over shares.
SHARE = "__cntr_share"
SPREAD = "__cntr_spread"

PAIRS = pa.schema([("point", pa.int64()), ("region", pa.int64())])


@dataclass(frozen=True)
class Sides:
    """Both sides of a join and the names of their columns."""

    points: DataFrame
    regions: DataFrame
    x: str
    y: str
    geometry: str

    @property
    def kept(self) -> list[str]:
        """The columns of the regions that are returned."""
        return [name for name in self.regions.columns if name != self.geometry]

    @property
    def schema(self) -> spark_types.StructType:
        regions = [field for field in self.regions.schema if field.name != self.geometry]
        return spark_types.StructType([*self.points.schema.fields, *regions])


def inside_join(
    points: DataFrame,
    regions: DataFrame,
    x: str = "x",
    y: str = "y",
    geometry: str = "geometry",
    broadcast: bool | None = None,
) -> DataFrame:
    """Returns a row for each pair of a point and a region that contains it, each pair once.

    The columns are those of `points`, followed by those of `regions` except the geometry, which is
    a column of WKB. If `broadcast` is true, all regions are sent to every worker; if it is false,
    points and regions are distributed by cells of the plane, which are smaller where the data are
    denser; None decides by the size of the regions. The pairs are the same in all cases. The size
    of the regions and the cells are computed immediately, by passes over both sides.

    Points with a coordinate that is null, NaN or infinite, and geometries that are not outlines,
    are in no pair. Nor is a region that ends its process; such regions are searched for once,
    before the join. A region that ends its process only with certain points is left out from then
    on in their partition or cell, and the executor's log says so. `measure` finds such regions.

    Raises ValueError for columns that are missing, have another type, or are on both sides, and
    TypeError for a session of Spark Connect.
    """
    require_classic(points.sparkSession)
    require_binary(regions, geometry)
    for name in (x, y):
        require_type(points, name, spark_types.DoubleType, "double")
    sides = Sides(points, regions, x, y, geometry)
    for name in same_names(points.columns, sides.kept):
        raise ValueError(f"both sides have a column {name!r}; rename one of them first")
    if broadcast is None:
        broadcast = size_of(regions, geometry) < BROADCAST_BYTES
    return broadcast_join(sides) if broadcast else cell_join(sides)


def size_of(regions: DataFrame, geometry: str) -> int:
    """The total size of all geometries in bytes."""
    (row,) = regions.agg(F.sum(F.length(column_of(geometry))).alias("bytes")).collect()
    return row.bytes or 0


def broadcast_join(sides: Sides) -> DataFrame:
    """Each worker tests its points against all regions."""
    x, y, geometry, kept = sides.x, sides.y, sides.geometry, sides.kept
    context = sides.points.sparkSession.sparkContext
    sent = context.broadcast(serialized(with_a_place(sides.regions, geometry).toArrow()))
    key = uuid.uuid4().hex

    def joined(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        regions = pa.ipc.open_stream(sent.value).read_all()
        asked = Asked(key, regions[geometry])
        for points in gathered(batches, POINTS_AT_ONCE_BYTES):
            pairs = asked.pairs(points[x], points[y])
            for begin in range(0, pairs.num_rows, ROWS_AT_ONCE):
                some = pairs.slice(begin, ROWS_AT_ONCE)
                yield from rows_of(some, points, regions.select(kept)).to_batches()

    return map_batches(sides.points, joined, sides.schema)


def with_a_place(regions: DataFrame, geometry: str) -> DataFrame:
    """The regions that can be in a pair: no worker has to search for those that crash."""

    def found(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            yield batch.filter(pa.array(~np.isnan(boxes_of(batch[geometry])).any(axis=1)))

    return map_batches(regions, found, regions.schema)


def serialized(table: pa.Table) -> bytes:
    sink = pa.BufferOutputStream()
    with pa.ipc.new_stream(sink, table.schema) as stream:
        stream.write_table(table)
    return bytes(sink.getvalue())


def rows_of(pairs: pa.Table, points: pa.Table, regions: pa.Table) -> pa.Table:
    """The columns of both sides."""
    left, right = points.take(pairs["point"]), regions.take(pairs["region"])
    return pa.table([*left.columns, *right.columns], [*left.column_names, *right.column_names])


class Asked:
    """The regions that the points of a partition are tested against; `key` identifies them.

    A region that has ended a process is left out from then on.
    """

    def __init__(self, key: str, geometries: pa.ChunkedArray) -> None:
        self._key = key
        self._left_out: list[int] = []
        self._regions = pa.table({tasks.GEOMETRY: geometries, "region": row_numbers(geometries)})

    def pairs(self, x: pa.ChunkedArray, y: pa.ChunkedArray) -> pa.Table:
        """The row numbers of each `point` and each `region` that contains it."""
        points = pa.table({"x": x, "y": y, "point": row_numbers(x)})
        points = points.filter(is_finite(points, "x", "y"))
        if not self._regions.num_rows or not points.num_rows:
            return PAIRS.empty_table()
        left_out = list(self._left_out)

        def ask(some: pa.Table) -> pa.Table:
            numbers = some["region"]
            key = f"{self._key}: {numbers[0]} to {numbers[-1]} without {left_out}"
            sandbox().hold(key, some.select([tasks.GEOMETRY]))
            pairs = sandbox().ask("inside", points.select(["x", "y"]))
            columns = [points["point"].take(pairs["point"]), numbers.take(pairs["region"])]
            return pa.table(columns, PAIRS)

        def crashed(some: pa.Table, death: str) -> pa.Table:
            print(f"cntr: a region is left out, its process ended with {death}", file=sys.stderr)
            self._left_out.append(some["region"][0].as_py())
            return PAIRS.empty_table()

        pairs = pa.concat_tables(answer_in_pieces(self._regions, ask, crashed))
        if len(self._left_out) > len(left_out):
            is_left_out = pc.is_in(self._regions["region"], pa.array(self._left_out))
            self._regions = self._regions.filter(pc.invert(is_left_out))
        return pairs


def is_finite(table: pa.Table | pa.RecordBatch, x: str, y: str) -> Any:
    """For each row, whether both coordinates are finite numbers; false for null."""
    return pc.fill_null(pc.and_(pc.is_finite(table[x]), pc.is_finite(table[y])), False)


def row_numbers(rows: pa.Table | pa.ChunkedArray) -> pa.Array:
    return pa.array(np.arange(len(rows)))


def cell_join(sides: Sides) -> DataFrame:
    """Spark groups the points and the regions by cell."""
    x, y, geometry, kept = sides.x, sides.y, sides.geometry, sides.kept

    def joined(points: pa.Table, regions: pa.Table) -> pa.Table:
        points = points.drop_columns([SHARE]).rename_columns(point_names)
        regions = regions.drop_columns([SHARE]).rename_columns(region_names)
        pairs = Asked(uuid.uuid4().hex, regions[geometry]).pairs(points[x], points[y])
        return rows_of(pairs, points, regions.select(kept))

    point_names, region_names = sides.points.columns, sides.regions.columns
    cells = cells_of(sides)
    here = points_in_cells(sides, cells).groupBy(SHARE)
    there = regions_in_cells(sides, cells).groupBy(SHARE)
    return here.cogroup(there).applyInArrow(joined, sides.schema)


def points_in_cells(sides: Sides, cells: Cells) -> DataFrame:
    x, y, points = sides.x, sides.y, sides.points

    def placed(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            some = batch.filter(is_finite(batch, x, y))
            coordinates = np.stack([some[x].to_numpy(), some[y].to_numpy()], axis=1)
            shares = cells.of_points(coordinates, some[SPREAD].to_numpy())
            yield with_share(some.drop_columns([SPREAD]), shares)

    # The hash of a row is the same in every attempt; its position in the task may not be. Rows that
    # are equal in all columns have the same hash, and so stay in one share.
    hashable = [
        column_of(field.name)
        for field in points.schema
        if "map<" not in field.dataType.simpleString()
    ]
    spread = points.withColumn(SPREAD, F.xxhash64(*hashable))
    return map_batches(spread, placed, schema_with_share(points))


def regions_in_cells(sides: Sides, cells: Cells) -> DataFrame:
    geometry = sides.geometry

    def placed(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            rows, shares = cells.of_boxes(boxes_of(batch[geometry]))
            yield with_share(batch.take(pa.array(rows)), shares)

    return map_batches(sides.regions, placed, schema_with_share(sides.regions))


def with_share(batch: pa.RecordBatch, shares: Integers) -> pa.RecordBatch:
    names = numbered(batch.num_columns)
    return batch.rename_columns(names).append_column(SHARE, pa.array(shares))


def schema_with_share(df: DataFrame) -> spark_types.StructType:
    fields = [
        spark_types.StructField(name, field.dataType)
        for name, field in zip(numbered(len(df.columns)), df.schema, strict=True)
    ]
    return spark_types.StructType([*fields, spark_types.StructField(SHARE, spark_types.LongType())])


def cells_of(sides: Sides) -> Cells:
    """Cells with about the same amount of data each, computed from samples of both sides."""
    x, y, geometry = sides.x, sides.y, sides.geometry

    def located(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            boxes = boxes_of(batch[geometry])
            sizes = pc.binary_length(batch[geometry]).cast(pa.float64())
            columns = [pa.array((boxes[:, i] + boxes[:, i + 2]) / 2) for i in range(2)]
            yield pa.RecordBatch.from_arrays([*columns, sizes], ["x", "y", "weight"])

    points = sides.points.select(column_of(x).alias("x"), column_of(y).alias("y"))
    regions = sides.regions.select(column_of(geometry))
    point_sample, point_share = sampled(points.withColumn("weight", F.lit(float(POINT_BYTES))))
    region_sample, region_share = sampled(regions)
    centres = map_batches(region_sample, located, "x double, y double, weight double")
    samples = [(point_sample, point_share), (centres, region_share)]
    found = [finite_of(df.toArrow()) for df, _ in samples]
    items = np.concatenate([table[:, :2] for table in found])
    weights = np.concatenate(
        [table[:, 2] / share for table, (_, share) in zip(found, samples, strict=True)]
    )
    cores = sides.points.sparkSession.sparkContext.defaultParallelism
    wanted = max(CELLS_PER_CORE * cores, int(weights.sum() / CELL_BYTES))
    return Cells.of_sample(items, weights, wanted)


def sampled(df: DataFrame) -> tuple[DataFrame, float]:
    """A sample of the rows, and the fraction of all rows that it holds."""
    share = min(1.0, SAMPLE / max(df.count(), 1))
    return (df if share == 1.0 else df.sample(share, seed=0)), share


def finite_of(table: pa.Table) -> Floats:
    """The three columns as an array, without the rows whose coordinates are not finite."""
    some = table.filter(is_finite(table, "x", "y"))
    return np.stack([column.to_numpy() for column in some.columns], axis=1)
