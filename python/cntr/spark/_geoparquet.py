# SPDX-License-Identifier: MIT
"""Reads and writes GeoParquet 1.1.

A file is written under the name of its task attempt in a directory `_attempt-...`, which readers
skip. Each task reports the file that it has completed, and Spark passes exactly one report of each
partition to the driver, even if tasks were repeated: the driver moves these files to their final
place and deletes the directory with everything left in it.
"""

import json
import os
import uuid
from collections.abc import Iterable, Iterator
from typing import Any

import numpy as np
import pyarrow as pa
import pyarrow.fs
import pyarrow.parquet
from pyspark import TaskContext
from pyspark.sql import DataFrame, SparkSession

from cntr.spark._rows import gathered, map_batches, require_binary, require_classic
from cntr.spark._wkb import boxes_of, geometry_types_of

KEY = b"geo"
# Size of a row group before compression: large enough to be read in one go, small compared to a
# worker's memory.
ROW_GROUP_BYTES = 64 << 20


def read_geoparquet(spark: SparkSession, path: str) -> DataFrame:
    """Reads a GeoParquet file, or a directory of them; geometry becomes a binary column of WKB.

    Spark reads the rows, so `path` may be anything that Spark can read. The columns are checked
    against the metadata of the first file. Raises ValueError, which names that file, if it is not
    GeoParquet or has geometry other than WKB, and TypeError for a session of Spark Connect.
    """
    require_classic(spark)
    df = spark.read.parquet(path)
    file = min(df.inputFiles(), default=path)
    metadata = footer_entry(spark, file, KEY.decode())
    if metadata is None:
        raise ValueError(f"{file} is no GeoParquet file: it has no {KEY.decode()!r} metadata")
    try:
        for name, column in json.loads(metadata)["columns"].items():
            if column["encoding"] != "WKB":
                raise ValueError(f"the column {name!r} is {column['encoding']}, not WKB")
            require_binary(df, name)
    except KeyError as missing:
        raise ValueError(f"{file}: its {KEY.decode()!r} metadata have no {missing}") from None
    except (AttributeError, TypeError, ValueError) as error:
        raise ValueError(f"{file}: {error}") from error
    return df


def footer_entry(spark: SparkSession, file: str, key: str) -> str | None:
    """The metadata of a Parquet file for the key, read by Spark's own reader and file systems."""
    java: Any = spark.sparkContext._jvm
    configuration = spark.sparkContext._jsc.hadoopConfiguration()
    path = java.org.apache.hadoop.fs.Path(java.java.net.URI(file))
    hadoop = java.org.apache.parquet.hadoop
    source = hadoop.util.HadoopInputFile.fromPath(path, configuration)
    reader = hadoop.ParquetFileReader.open(source)
    try:
        entry: str | None = reader.getFileMetaData().getKeyValueMetaData().get(key)
    finally:
        reader.close()
    return entry


def write_geoparquet(
    df: DataFrame,
    path: str,
    geometry: str = "geometry",
    *,
    row_group_bytes: int = ROW_GROUP_BYTES,
) -> None:
    """Writes a directory of GeoParquet files, one for each partition that has rows.

    `path` is a directory, or a URI that `pyarrow.fs` supports, which the driver and all executors
    can access; it must be empty or not exist. The coordinate reference system is null. Rows without
    an outline are written as they are and left out of the file's `bbox`. If there are no rows, one
    file with the columns is written. If the job fails, no file is left behind.

    A row group holds about `row_group_bytes` of uncompressed columns, which a worker keeps in
    memory until they are written; the last one of a file is smaller.

    Raises FileExistsError if there are already files, and ValueError if `geometry` is not a binary
    column or `row_group_bytes` is not positive.
    """
    require_binary(df, geometry)
    if row_group_bytes <= 0:
        raise ValueError(f"row_group_bytes must be positive, not {row_group_bytes}")
    files, root = file_system_of(path)
    selector = pyarrow.fs.FileSelector(root, allow_not_found=True)
    if files.get_file_info(selector):
        raise FileExistsError(f"there are files in {path} already")
    is_new = files.get_file_info(root).type == pyarrow.fs.FileType.NotFound
    attempts = f"{root}/_attempt-{uuid.uuid4().hex}"

    def written(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        task = TaskContext.get()
        assert task is not None
        name = f"part-{task.partitionId():05}-{task.taskAttemptId()}.parquet"
        if write_file(files, f"{attempts}/{name}", batches, geometry, row_group_bytes):
            yield pa.RecordBatch.from_pydict({"file": [name]})

    files.create_dir(attempts)
    places: list[str] = []
    try:
        names = [report.file for report in map_batches(df, written, "file string").collect()]
        if not names:
            names = ["part-00000-0.parquet"]
            nothing = pa.RecordBatch.from_pylist([], df.limit(0).toArrow().schema)
            write_file(files, f"{attempts}/{names[0]}", [nothing], geometry, row_group_bytes)
        for name in names:
            place = f"{root}/{name.rsplit('-', 1)[0]}.parquet"
            files.move(f"{attempts}/{name}", place)
            places.append(place)
    except BaseException:
        for place in places:
            files.delete_file(place)
        files.delete_dir(root if is_new else attempts)
        raise
    files.delete_dir(attempts)


def file_system_of(path: str) -> tuple[pyarrow.fs.FileSystem, str]:
    """The file system and the path in it; Spark's `file:/x` is its `file:///x`."""
    if path.startswith("file:/") and not path.startswith("file://"):
        path = "file://" + path.removeprefix("file:")
    if "://" not in path:
        return pyarrow.fs.LocalFileSystem(), os.path.abspath(path)
    files, root = pyarrow.fs.FileSystem.from_uri(path)
    return files, root.rstrip("/")


def write_file(
    files: pyarrow.fs.FileSystem,
    place: str,
    batches: Iterable[pa.RecordBatch],
    geometry: str,
    row_group_bytes: int,
) -> bool:
    """Writes a file if there are rows, and says whether there were any."""
    seen = Seen()
    writer = None
    for rows in gathered(batches, row_group_bytes):
        if writer is None:
            sink = files.open_output_stream(place)
            writer = pyarrow.parquet.ParquetWriter(
                sink,
                rows.schema,
                compression="zstd",
                # With a stored schema, readers would take its metadata instead of the file's.
                store_schema=False,
            )
        # A single batch may be large enough for several groups.
        groups = max(round(rows.nbytes / row_group_bytes), 1)
        writer.write_table(rows, row_group_size=max(-(-len(rows) // groups), 1))
        for geometries in rows[geometry].chunks:
            seen.add(geometries)
    if writer is None:
        return False
    writer.add_key_value_metadata({KEY: json.dumps(seen.metadata(geometry)).encode()})
    writer.close()
    sink.close()
    return True


class Seen:
    """Collects the metadata of the geometries of a file."""

    def __init__(self) -> None:
        self._types: set[str] = set()
        self._low = np.full(2, np.inf)
        self._high = np.full(2, -np.inf)

    def add(self, geometries: pa.Array) -> None:
        self._types |= geometry_types_of(geometries)
        boxes = boxes_of(geometries)
        self._low = np.fmin(self._low, np.fmin.reduce(boxes[:, :2], axis=0, initial=np.inf))
        self._high = np.fmax(self._high, np.fmax.reduce(boxes[:, 2:], axis=0, initial=-np.inf))

    def metadata(self, geometry: str) -> dict[str, Any]:
        column: dict[str, Any] = {
            "encoding": "WKB",
            "geometry_types": sorted(self._types),
            "crs": None,
        }
        if np.all(self._low <= self._high):
            column["bbox"] = [*self._low.tolist(), *self._high.tolist()]
        return {"version": "1.1.0", "primary_column": geometry, "columns": {geometry: column}}
