# SPDX-License-Identifier: MIT
"""Measures of many outlines: the columns, their types, and where they go."""

import gc

import duckdb
import numpy as np
import pandas
import polars
import pyarrow as pa
import pytest

import cntr

SQUARE = [(0.0, 0.0), (10.0, 0.0), (10.0, 10.0), (0.0, 10.0)]
LINE = cntr.Contour([(0, 0), (3, 4)], closed=False)


def complete() -> cntr.Outlines:
    holed = cntr.Region(SQUARE, holes=[[(1, 1), (1, 2), (2, 2)]])
    return cntr.Outlines.from_regions([cntr.Region(SQUARE), holed])


def incomplete() -> cntr.Outlines:
    return cntr.Outlines.from_regions([cntr.Region(SQUARE), cntr.Contour([]), LINE])


def test_measures_are_those_asked_for_with_status_and_note() -> None:
    measured = complete().measure(["area", "holes"])
    assert measured.columns == ["area", "holes", "status", "note"]
    assert len(measured) == 2
    assert measured.column("area").tolist() == [100.0, 99.5]
    assert measured.column("holes").tolist() == [0, 1]
    assert measured.status.tolist() == ["ok", "ok"]
    assert measured.note.tolist() == [None, None]
    assert repr(measured) == "<cntr.Measured: 2 rows of area, holes, status, note>"


def test_without_columns_the_usual_ones_are_measured() -> None:
    columns = complete().measure().columns
    assert columns[:4] == ["vertices", "area", "centre_x", "centre_y"]
    assert columns[-2:] == ["status", "note"]
    assert set(columns[:-2]) < set(cntr.MEASURES)


def test_each_measure_has_a_power_of_the_unit_and_a_meaning() -> None:
    assert cntr.MEASURES["area"] == (2, "area that is filled, without the holes")
    assert cntr.MEASURES["moment_xx"][0] == 4
    assert all(meaning for _, meaning in cntr.MEASURES.values())
    measured = complete().measure(list(cntr.MEASURES))
    assert set(measured.columns) == {*cntr.MEASURES, "status"}


def test_complete_columns_have_the_types_of_their_measures() -> None:
    measured = complete().measure(["area", "vertices", "closed"])
    assert measured.column("area").dtype == np.float64
    assert measured.column("vertices").dtype == np.int64
    assert measured.column("vertices").tolist() == [4, 4]
    assert measured.column("closed").dtype == np.bool_
    assert measured.column("closed").tolist() == [True, True]
    assert measured.column("note").dtype == np.object_


def test_missing_answers_are_nan_or_none() -> None:
    measured = incomplete().measure(["area", "vertices", "closed", "length"])
    np.testing.assert_array_equal(measured.column("area"), [100.0, np.nan, np.nan])
    np.testing.assert_array_equal(measured.column("vertices"), [4.0, np.nan, 2.0])
    np.testing.assert_array_equal(measured.column("length"), [40.0, np.nan, 5.0])
    assert measured.column("closed").tolist() == [True, None, False]
    assert measured.status.tolist() == ["ok", "failed", "ok"]
    assert measured.note.tolist() == [None, "empty", "open"]


def test_complete_columns_are_seen_where_they_lie_and_keep_their_memory() -> None:
    measured = complete().measure(["area", "vertices"])
    batch = pa.record_batch(measured)
    for name in ("area", "vertices"):
        assert measured.column(name).ctypes.data == batch.column(name).buffers()[1].address
    area = measured.column("area")
    with pytest.raises(ValueError, match="read-only"):
        area[0] = 1
    del measured, batch
    gc.collect()
    assert area.tolist() == [100.0, 99.5]


def test_a_record_batch_outlives_what_it_came_from_and_comes_as_often_as_asked() -> None:
    measured = complete().measure(["area", "note"])
    batches = [pa.record_batch(measured) for _ in range(3)]
    areas = batches[0].column("area")
    del measured, batches[0]
    gc.collect()
    assert areas.to_pylist() == [100.0, 99.5]
    assert batches[1] == batches[0]


def test_capsules_that_nobody_takes_release_what_they_hold() -> None:
    measured = complete().measure(["area"])
    for _ in range(1000):
        measured.__arrow_c_array__()
        measured.__arrow_c_stream__()
        measured.__arrow_c_schema__()
    assert pa.table(measured).column("area").to_pylist() == [100.0, 99.5]


def test_other_packages_take_measures_as_they_are() -> None:
    measured = incomplete().measure(["area", "vertices", "closed"])
    expected = {
        "area": [100.0, None, None],
        "vertices": [4, None, 2],
        "closed": [True, None, False],
        "status": ["ok", "failed", "ok"],
        "note": [None, "empty", "open"],
    }
    assert pa.table(measured).to_pydict() == expected
    assert polars.DataFrame(measured).to_dict(as_series=False) == expected
    assert measured.to_polars().equals(polars.DataFrame(measured))
    with duckdb.connect() as connection:
        connection.register("measured", pa.table(measured))
        rows = connection.sql("SELECT sum(area), count(*) FROM measured").fetchall()
    assert rows == [(100.0, 3)]


def test_a_pandas_frame_has_the_columns_as_arrays() -> None:
    measured = incomplete().measure(["area", "vertices"])
    frame = measured.to_pandas()
    assert isinstance(frame, pandas.DataFrame)
    assert list(frame.columns) == measured.columns
    np.testing.assert_array_equal(frame["area"].to_numpy(), measured.column("area"))
    assert frame["status"].tolist() == ["ok", "failed", "ok"]
    assert frame["note"].isna().tolist() == [True, False, False]


def test_a_column_that_is_not_there_is_named() -> None:
    with pytest.raises(KeyError, match="there is no column 'volume'"):
        complete().measure(["area"]).column("volume")


def test_a_measure_that_there_is_not_is_named() -> None:
    with pytest.raises(cntr.BadParamsError, match=r"^there is no measure 'volume'$"):
        complete().measure(["volume"])
    with pytest.raises(cntr.BadParamsError, match=r"^the measure 'area' is asked for twice$"):
        complete().measure(["area", "area"])


@pytest.mark.parametrize("columns", ["area", 3, [1]])
def test_columns_are_a_list_of_names(columns: object) -> None:
    with pytest.raises(TypeError, match=r"^columns must be None or a list of names$"):
        complete().measure(columns)  # type: ignore[arg-type]


def test_the_number_of_threads_changes_no_bit() -> None:
    rng = np.random.default_rng(5)
    table = cntr.Outlines.from_regions([cntr.Contour(rng.random((9, 2))) for _ in range(500)])
    names = list(cntr.MEASURES)
    alone = pa.record_batch(table.measure(names, threads=1))
    for threads in (0, 2, 3, 17):
        assert pa.record_batch(table.measure(names, threads=threads)).equals(alone)


def test_the_number_of_threads_is_not_negative() -> None:
    table = complete()
    for call in (
        lambda: table.measure(threads=-1),
        lambda: table.inside_join([], threads=-1),
        lambda: table.make_valid(threads=-1),
    ):
        with pytest.raises(ValueError, match=r"^threads must be 0 or more, not -1$"):
            call()
