# SPDX-License-Identifier: MIT
"""The child process: what it answers, how it dies, and what becomes of the rows."""

import os
import signal
import subprocess
import sys
from collections.abc import Iterator
from types import SimpleNamespace
from typing import Any

import pyarrow as pa
import pytest
import samples

import cntr.spark
from cntr._sandbox.bisection import TRIES, answer_in_pieces
from cntr._sandbox.parent import DiedError, Sandbox


@pytest.fixture
def sandbox(monkeypatch: pytest.MonkeyPatch) -> Iterator[Sandbox]:
    monkeypatch.setenv("CNTR_SPARK_CRASH", samples.DEADLY.hex())
    made = Sandbox()
    yield made
    made.close()


def table_of(rows: list[bytes]) -> pa.Table:
    return samples.table_of(rows).select(["geometry"])


def test_tables_of_any_size_are_answered_one_after_the_other(sandbox: Sandbox) -> None:
    for count in (3, 1000, 0, 2, 5000):
        rows = samples.stars(count, seed=count)
        answer = sandbox.ask("measure", table_of(rows), columns=["area"])
        here = samples.measured_here(rows, ["area"])
        assert answer.to_pylist() == here.drop_columns(["id"]).to_pylist()
    assert sandbox.starts == 1


def test_an_answer_does_not_change_with_the_next_one(sandbox: Sandbox) -> None:
    first = sandbox.ask("measure", table_of(samples.stars(50, seed=1)), columns=["area"])
    kept = first.to_pylist()
    sandbox.ask("measure", table_of(samples.stars(50, seed=2)), columns=["area"])
    assert first.to_pylist() == kept


def test_a_death_is_told_and_followed_by_another_child(sandbox: Sandbox) -> None:
    with pytest.raises(DiedError, match=r"^signal 11$"):
        sandbox.ask("measure", table_of([samples.DEADLY]), columns=["area"])
    assert (
        sandbox.ask("measure", table_of(samples.stars(2, seed=1)), columns=["area"]).num_rows == 2
    )
    assert sandbox.starts == 2


def test_a_child_that_was_killed_while_it_waited_is_told_of_too(sandbox: Sandbox) -> None:
    table = table_of(samples.stars(2, seed=1))
    sandbox.ask("measure", table, columns=["area"])
    assert sandbox.pid is not None
    os.kill(sandbox.pid, signal.SIGKILL)
    with pytest.raises(DiedError, match=r"^signal 9$"):
        sandbox.ask("measure", table, columns=["area"])
    assert sandbox.ask("measure", table, columns=["area"]).num_rows == 2


def test_a_child_that_does_not_answer_in_time_is_killed(sandbox: Sandbox) -> None:
    table = table_of(samples.stars(2, seed=1))
    limit = sandbox.limit
    sandbox.ask("measure", table, columns=["area"])
    assert sandbox.pid is not None
    os.kill(sandbox.pid, signal.SIGSTOP)
    sandbox.limit = 0.5
    with pytest.raises(DiedError, match=r"^signal 9, after 0\.5 seconds without an answer$"):
        sandbox.ask("measure", table, columns=["area"])
    sandbox.limit = limit
    assert sandbox.ask("measure", table, columns=["area"]).num_rows == 2
    assert sandbox.starts == 2


def test_what_a_task_raises_is_raised_with_its_traceback(sandbox: Sandbox) -> None:
    with pytest.raises(RuntimeError, match="beauty"):
        sandbox.ask("measure", table_of([]), columns=["beauty"])
    assert sandbox.starts == 1


def test_a_child_that_cannot_start_is_no_fault_of_a_row(
    sandbox: Sandbox, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr("sys.executable", "/bin/false")
    with pytest.raises(RuntimeError, match="the child process did not start: exit status 1"):
        sandbox.ask("measure", table_of([]), columns=["area"])


def test_a_marker_that_is_no_geometry_keeps_the_child_from_starting(
    sandbox: Sandbox, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setenv("CNTR_SPARK_CRASH", "0x01")
    with pytest.raises(RuntimeError, match="the child process did not start: exit status 1"):
        sandbox.ask("measure", table_of([]), columns=["area"])


def test_repair_takes_wkb_as_views(sandbox: Sandbox) -> None:
    table = table_of([*samples.stars(3, seed=1), b""])
    views = table.cast(pa.schema([("geometry", pa.binary_view())]))
    ask = sandbox.ask
    assert ask("make_valid", views, rule="nonzero") == ask("make_valid", table, rule="nonzero")


def test_a_child_does_without_pandas() -> None:
    code = """
import sys
import pyarrow as pa
from cntr._sandbox import child, tasks
square = bytes.fromhex(sys.argv[1])
geometry = pa.table({"geometry": pa.Array.from_buffers(pa.binary(), 1, [
    None, pa.py_buffer(bytes(4) + len(square).to_bytes(4, "little")), pa.py_buffer(square)])})
numbers = pa.Array.from_buffers(pa.float64(), 1, [None, pa.py_buffer(bytes(8))])
tasks.measure(geometry, ["area"])
tasks.make_valid(geometry, "nonzero")
tasks.hold(geometry)
assert tasks.inside(pa.table({"x": numbers, "y": numbers})).num_rows == 1
sys.exit("pandas" in sys.modules)
"""
    square = samples.star(4, 0.2, (0.0, 0.0))
    subprocess.run([sys.executable, "-P", "-c", code, square.hex()], check=True)


def test_without_pyspark_the_extra_is_named() -> None:
    code = "import sys; sys.modules['pyspark'] = None; import cntr.spark"
    outcome = subprocess.run(
        [sys.executable, "-P", "-c", code], capture_output=True, check=False, text=True
    )
    assert outcome.returncode == 1
    assert outcome.stderr.endswith(": install cntr-geometry[spark]\n")


def test_a_session_of_spark_connect_is_refused() -> None:
    session: Any = SimpleNamespace()
    with pytest.raises(TypeError, match="a classic Spark session is needed, not one of Spark"):
        cntr.spark.read_geoparquet(session, "archive")
    points: Any = SimpleNamespace(sparkSession=session)
    with pytest.raises(TypeError, match="a classic Spark session is needed, not one of Spark"):
        cntr.spark.inside_join(points, points)


def test_the_child_ends_when_it_is_closed(sandbox: Sandbox) -> None:
    sandbox.ask("measure", table_of([]), columns=["area"])
    pid = sandbox.pid
    assert pid is not None
    sandbox.close()
    with pytest.raises(ProcessLookupError):
        os.kill(pid, 0)
    assert sandbox.pid is None


def test_held_regions_are_sent_once_and_again_after_a_death(sandbox: Sandbox) -> None:
    points = pa.table({"x": [50.0, 50.0], "y": [50.0, 1e9]})
    square = samples.star(4, 0.2, (50.0, 50.0))
    sandbox.hold("a", table_of([square]))
    sandbox.hold("a", table_of([]))
    assert sandbox.ask("inside", points).to_pylist() == [{"point": 0, "region": 0}]
    with pytest.raises(DiedError):
        sandbox.ask("measure", table_of([samples.DEADLY]), columns=["area"])
    sandbox.hold("a", table_of([square]))
    assert sandbox.ask("inside", points).num_rows == 1
    sandbox.hold("b", table_of([]))
    assert sandbox.ask("inside", points).num_rows == 0


def asked_in_pieces(count: int, deadly: set[int], deaths: int) -> tuple[list[int], int]:
    """The answers, -1 for a crash, where numbers of `deadly` end so many processes each."""
    left = dict.fromkeys(deadly, deaths)
    asked = 0

    def ask(table: pa.Table) -> pa.Table:
        nonlocal asked
        asked += 1
        numbers = table["n"].to_pylist()
        for number in numbers:
            if left.get(number, 0):
                left[number] -= 1
                raise DiedError("signal 11")
        return table

    def crashed(table: pa.Table, death: str) -> pa.Table:
        assert death == "signal 11"
        return pa.table({"n": [-1]})

    pieces = answer_in_pieces(pa.table({"n": range(count)}), ask, crashed)
    return pa.concat_tables(pieces)["n"].to_pylist(), asked


@pytest.mark.parametrize("deadly", [{0}, {99}, {37}, {36, 37, 80}, set(range(100))])
def test_exactly_the_deadly_rows_are_found(deadly: set[int]) -> None:
    answers, _ = asked_in_pieces(100, deadly, 10**9)
    assert answers == [-1 if number in deadly else number for number in range(100)]


def test_one_deadly_row_costs_two_questions_for_each_halving() -> None:
    _, asked = asked_in_pieces(1024, {700}, 10**9)
    assert asked == 2 * 10 + TRIES


def test_a_row_is_not_blamed_for_one_death() -> None:
    assert asked_in_pieces(1, {0}, 1)[0] == [0]
    assert asked_in_pieces(5, {3}, 2)[0] == [0, 1, 2, 3, 4]
