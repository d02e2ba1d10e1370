# SPDX-License-Identifier: MIT
"""Measures and repairs the outline of each row of a data frame."""

import functools
import os
from collections.abc import Callable, Iterable, Iterator, Sequence
from typing import Any

import pyarrow as pa
from pyspark.sql import Column, DataFrame, SparkSession
from pyspark.sql import functions as F
from pyspark.sql import types as spark_types

import cntr
from cntr._sandbox import tasks
from cntr._sandbox.bisection import answer_in_pieces
from cntr._sandbox.parent import TIME_LIMIT, Sandbox

# Environment variable of the executors: the number of seconds that a child has for an answer.
TIME_LIMIT_NAME = "CNTR_SPARK_TIME_LIMIT"

OUTCOME = pa.schema([("status", pa.string()), ("note", pa.string())])

# Types that Spark does not take, and those that replace them.
ARROW_TYPES = {pa.large_string(): pa.string()}
# Spark's types for the types of measures.
SPARK_TYPES: dict[pa.DataType, spark_types.DataType] = {
    pa.float64(): spark_types.DoubleType(),
    pa.int64(): spark_types.LongType(),
    pa.bool_(): spark_types.BooleanType(),
    pa.string(): spark_types.StringType(),
}


@functools.cache
def sandbox() -> Sandbox:
    """The only child of this Python worker; later tasks use it too."""
    return Sandbox(float(os.environ.get(TIME_LIMIT_NAME, TIME_LIMIT)))


def ask_of_rows(task: str, geometries: pa.Array, answers: pa.Schema, **options: Any) -> pa.Table:
    """A row for each geometry, in order; for one that ends its process, nulls and `crashed`."""

    def ask(table: pa.Table) -> pa.Table:
        return sandbox().ask(task, table, **options).select(answers.names).cast(answers)

    def crashed(table: pa.Table, death: str) -> pa.Table:
        row: dict[str, Any] = dict.fromkeys(answers.names)
        row["status"] = "crashed"
        row["note"] = f"its process ended with {death}"
        if tasks.GEOMETRY in row:
            row[tasks.GEOMETRY] = table[tasks.GEOMETRY][0]
        return pa.Table.from_pylist([row], answers)

    if len(geometries) == 0:
        return answers.empty_table()
    table = pa.table({tasks.GEOMETRY: geometries})
    return pa.concat_tables(answer_in_pieces(table, ask, crashed))


def measure(
    df: DataFrame,
    geometry: str = "geometry",
    columns: Sequence[str] | None = None,
    *,
    keep_geometry: bool = True,
) -> DataFrame:
    """Adds the measures of the outlines in a column of WKB to a data frame.

    The columns of `df` are followed by the measures in `columns` (names from `cntr.MEASURES`; by
    default the standard ones), `status` and `note`. A row that cannot be measured has the status
    ``failed``, one that ends its process ``crashed``; both have a note and no measures. If
    `keep_geometry` is false, the geometry is left out and is not sent back from Python.

    Raises ValueError for an unknown name, and for one that `df` already has.
    """
    answers = answers_of(columns)
    names = [name for name in answers.names if name not in OUTCOME.names]
    fields = [field for field in df.schema if keep_geometry or field.name != geometry]
    kept = [field.name for field in fields]
    schema = schema_with(fields, answers)

    def measured(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            answer = ask_of_rows("measure", batch[geometry], answers, columns=names)
            yield joined(batch.select(kept), answer)

    return mapped(df, geometry, measured, schema)


def make_valid(df: DataFrame, geometry: str = "geometry", rule: str = "nonzero") -> DataFrame:
    """Replaces the outlines in a column of WKB by valid outlines that fill the same area.

    `rule` is ``nonzero`` or ``evenodd``. The columns of `df` are followed by `status` and `note`. A
    geometry that cannot be repaired stays as it is, with the status ``failed``, or ``crashed`` if
    repairing it ends its process.

    Raises ValueError for another rule, and if `df` already has a column `status` or `note`.
    """
    if rule not in ("nonzero", "evenodd"):
        raise ValueError(f"rule must be 'nonzero' or 'evenodd', not {rule!r}")
    schema = schema_with(df.schema.fields, OUTCOME)
    answers = pa.schema([(tasks.GEOMETRY, pa.binary()), *OUTCOME])
    place = df.columns.index(geometry) if geometry in df.columns else -1

    def repaired(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            answer = ask_of_rows("make_valid", batch[geometry], answers, rule=rule)
            whole = joined(batch, answer.drop_columns([tasks.GEOMETRY]))
            repaired_geometry = answer[tasks.GEOMETRY].combine_chunks()
            yield whole.set_column(place, geometry, repaired_geometry)

    return mapped(df, geometry, repaired, schema)


def answers_of(columns: Sequence[str] | None) -> pa.Schema:
    """The columns of an answer, with Spark's types: those of the library's answer for no rows."""
    for name in same_names(columns or [], OUTCOME.names):
        raise ValueError(f"there is no measure {name!r}")
    nothing = cntr.Outlines.from_wkb(pa.nulls(0, pa.binary()))
    found = pa.table(nothing.measure(columns)).schema
    return pa.schema([(field.name, ARROW_TYPES.get(field.type, field.type)) for field in found])


def schema_with(
    fields: Sequence[spark_types.StructField], answers: pa.Schema
) -> spark_types.StructType:
    """The fields, followed by those of the answers."""
    added = [spark_types.StructField(field.name, SPARK_TYPES[field.type]) for field in answers]
    for name in same_names([field.name for field in fields], answers.names):
        raise ValueError(f"the data frame has a column {name!r} already; rename it first")
    return spark_types.StructType([*fields, *added])


def same_names(names: Sequence[str], others: Sequence[str]) -> list[str]:
    """The names that are among the others; case is ignored, as Spark does."""
    folded = {other.casefold() for other in others}
    return sorted(name for name in names if name.casefold() in folded)


def column_of(name: str) -> Column:
    """The column of exactly this name, which may have any characters."""
    return F.col("`" + name.replace("`", "``") + "`")


def require_classic(session: object) -> None:
    """Raises TypeError for a session of Spark Connect, which cannot reach the driver."""
    if not isinstance(session, SparkSession):
        raise TypeError("a classic Spark session is needed, not one of Spark Connect")


def require_binary(df: DataFrame, geometry: str) -> None:
    """Raises ValueError if there is no such column, or more than one, or it is not binary."""
    require_type(df, geometry, spark_types.BinaryType, "binary (WKB)")


def require_type(df: DataFrame, name: str, wanted: type[spark_types.DataType], called: str) -> None:
    """Raises ValueError if there is no such column, or more than one, or it has another type."""
    if name not in df.columns:
        raise ValueError(f"the data frame has no column {name!r}")
    if df.columns.count(name) > 1:
        raise ValueError(f"the data frame has several columns {name!r}")
    found = df.schema[name].dataType
    if not isinstance(found, wanted):
        raise ValueError(f"the column {name!r} must be {called}, not {found.simpleString()}")


def mapped(
    df: DataFrame,
    geometry: str,
    function: Callable[[Iterable[pa.RecordBatch]], Iterator[pa.RecordBatch]],
    schema: spark_types.StructType,
) -> DataFrame:
    require_binary(df, geometry)
    return map_batches(df, function, schema)


def map_batches(
    df: DataFrame,
    function: Callable[[Iterable[pa.RecordBatch]], Iterator[pa.RecordBatch]],
    schema: spark_types.StructType | str,
) -> DataFrame:
    """`DataFrame.mapInArrow`, which on its own fails if a column name has a dot."""
    names = df.columns

    def named(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        return function(batch.rename_columns(names) for batch in batches)

    return df.toDF(*numbered(len(names))).mapInArrow(named, schema)


def gathered(batches: Iterable[pa.RecordBatch], wanted_bytes: int) -> Iterator[pa.Table]:
    """The rows in tables of at least this size, each by at most one batch larger."""
    waiting: list[pa.RecordBatch] = []
    reached = 0
    for batch in batches:
        waiting.append(batch)
        reached += batch.nbytes
        if reached >= wanted_bytes:
            yield pa.Table.from_batches(waiting)
            waiting, reached = [], 0
    if waiting:
        yield pa.Table.from_batches(waiting)


def numbered(count: int) -> list[str]:
    """Temporary column names."""
    return [f"column{number}" for number in range(count)]


def joined(batch: pa.RecordBatch, answer: pa.Table) -> pa.RecordBatch:
    columns = [column.combine_chunks() for column in answer.columns]
    fields = [*batch.schema, *answer.schema]
    return pa.RecordBatch.from_arrays([*batch.columns, *columns], schema=pa.schema(fields))
