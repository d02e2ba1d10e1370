# SPDX-License-Identifier: MIT
"""Answers for each row of a data frame: measures and repaired outlines."""

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

# An environment variable of the executors: the seconds that a child has for an answer.
TIME_LIMIT_NAME = "CNTR_SPARK_TIME_LIMIT"

OUTCOME = pa.schema([("status", pa.string()), ("note", pa.string())])

# What Spark wants instead.
ARROW_TYPES = {pa.large_string(): pa.string()}
# Spark's types for those of measures.
SPARK_TYPES: dict[pa.DataType, spark_types.DataType] = {
    pa.float64(): spark_types.DoubleType(),
    pa.int64(): spark_types.LongType(),
    pa.bool_(): spark_types.BooleanType(),
    pa.string(): spark_types.StringType(),
}


@functools.cache
def sandbox() -> Sandbox:
    """The one child of this Python worker; it stays for the tasks that come after."""
    return Sandbox(float(os.environ.get(TIME_LIMIT_NAME, TIME_LIMIT)))


def ask_of_rows(task: str, geometries: pa.Array, answers: pa.Schema, **options: Any) -> pa.Table:
    """A row for each geometry, in order; a row of nulls with `crashed` where one is deadly."""

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
    """The data frame with the measures of the outlines in a column of WKB.

    The columns of `df` are followed by those asked for (names of `cntr.MEASURES`, without them the
    usual ones), `status` and `note`. A row that cannot be measured has the status ``failed``, one
    whose measuring ends a process ``crashed``; both have a note and no measures. With
    `keep_geometry` false the geometry is left out, and need not travel back from Python.

    Raises ValueError for a name that there is not, or that `df` has already.
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
    """The data frame with what the outlines in a column of WKB fill, as valid outlines.

    `rule` is ``nonzero`` or ``evenodd``. The columns of `df` are followed by `status` and `note`. A
    geometry that cannot be repaired stays as it is, with the status ``failed``, or ``crashed``
    where repairing it ends a process.

    Raises ValueError for another rule, and where `df` has a column `status` or `note` already.
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
    """The columns of an answer: those of the library's answer about nothing, as Spark has them."""
    for name in same_names(columns or [], OUTCOME.names):
        raise ValueError(f"there is no measure {name!r}")
    nothing = cntr.Outlines.from_wkb(pa.nulls(0, pa.binary()))
    found = pa.table(nothing.measure(columns)).schema
    return pa.schema([(field.name, ARROW_TYPES.get(field.type, field.type)) for field in found])


def schema_with(
    fields: Sequence[spark_types.StructField], answers: pa.Schema
) -> spark_types.StructType:
    """The fields, and those of answers behind them."""
    added = [spark_types.StructField(field.name, SPARK_TYPES[field.type]) for field in answers]
    for name in same_names([field.name for field in fields], answers.names):
        raise ValueError(f"the data frame has a column {name!r} already; rename it first")
    return spark_types.StructType([*fields, *added])


def same_names(names: Sequence[str], others: Sequence[str]) -> list[str]:
    """Those of `names` that are among the others, whatever their case: Spark takes no notice."""
    folded = {other.casefold() for other in others}
    return sorted(name for name in names if name.casefold() in folded)


def column_of(name: str) -> Column:
    """The column of that very name, whatever characters it has."""
    return F.col("`" + name.replace("`", "``") + "`")


def require_classic(session: object) -> None:
    """Raises TypeError for a session of Spark Connect, which has no way to the driver."""
    if not isinstance(session, SparkSession):
        raise TypeError("a classic Spark session is needed, not one of Spark Connect")


def require_binary(df: DataFrame, geometry: str) -> None:
    """Raises ValueError where there is no such column, or several, or it is not binary."""
    require_type(df, geometry, spark_types.BinaryType, "binary (WKB)")


def require_type(df: DataFrame, name: str, wanted: type[spark_types.DataType], called: str) -> None:
    """Raises ValueError where there is no such column, or several, or it has another type."""
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
    """`DataFrame.mapInArrow`, which fails alone where the name of a column has a dot."""
    names = df.columns

    def named(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        return function(batch.rename_columns(names) for batch in batches)

    return df.toDF(*numbered(len(names))).mapInArrow(named, schema)


def gathered(batches: Iterable[pa.RecordBatch], wanted_bytes: int) -> Iterator[pa.Table]:
    """The rows in tables of so many bytes or little more."""
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
    """Names of columns on their way."""
    return [f"column{number}" for number in range(count)]


def joined(batch: pa.RecordBatch, answer: pa.Table) -> pa.RecordBatch:
    columns = [column.combine_chunks() for column in answer.columns]
    fields = [*batch.schema, *answer.schema]
    return pa.RecordBatch.from_arrays([*batch.columns, *columns], schema=pa.schema(fields))
