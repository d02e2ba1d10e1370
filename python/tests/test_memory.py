# SPDX-License-Identifier: MIT
"""Memory over many objects: what is dropped is gone."""

import gc
import os
from collections.abc import Callable

import numpy as np
import pyarrow as pa
import pytest

import cntr

pytestmark = pytest.mark.skipif(
    "ASAN_OPTIONS" in os.environ, reason="the address sanitizer keeps what was freed"
)

SQUARE = np.array([(0.0, 0.0), (10.0, 0.0), (10.0, 10.0), (0.0, 10.0)])


def table() -> cntr.Outlines:
    return cntr.Outlines.from_ragged(np.tile(SQUARE, (1000, 1)), np.arange(0, 4001, 4))


COLUMN = pa.array(table().to_arrow())
VALUES = table().to_wkb()
TABLE = table()


def through_arrow() -> None:
    pa.array(cntr.Outlines.from_arrow(COLUMN).to_arrow())


def through_wkb() -> None:
    cntr.Outlines.from_wkb(VALUES).to_wkb()


def measured() -> None:
    answers = TABLE.measure(["area", "note"], threads=1)
    pa.record_batch(answers)
    answers.column("area")
    answers.column("note")


def refused() -> None:
    with pytest.raises(cntr.BadParamsError):
        cntr.Outlines.from_ragged(SQUARE, [0, 5])
    with pytest.raises(cntr.BadParamsError):
        cntr.Outlines.from_arrow(pa.array([1.0] * 100))
    with pytest.raises(TypeError):
        cntr.Outlines.from_wkb([*VALUES, 3])
    with pytest.raises(ValueError, match="contours"):
        cntr.Outlines.from_opencv([SQUARE, np.zeros((1000, 3))])


def sliced() -> None:
    for shape in TABLE[::7]:
        assert shape is not None
    TABLE.vertices(5)
    TABLE.inside_join(SQUARE)


@pytest.mark.parametrize("task", [through_arrow, through_wkb, measured, refused, sliced])
def test_memory_does_not_grow(task: Callable[[], None], resident: Callable[[], int]) -> None:
    for _ in range(200):
        task()
    gc.collect()
    before = resident()
    # A thousand times a thousand features.
    for _ in range(1000):
        task()
    gc.collect()
    # A leak of a byte for each feature would be seen.
    assert resident() - before < 1_000_000


def test_a_million_outlines_take_little_more_than_their_coordinates(
    resident: Callable[[], int],
) -> None:
    count = 1_000_000
    xy = np.tile(SQUARE, (count, 1))
    offsets = np.arange(0, 4 * count + 1, 4)
    gc.collect()
    before = resident()
    outlines = cntr.Outlines.from_ragged(xy, offsets)
    # Where rings, parts and features begin, kinds and labels.
    assert resident() - before < 60 * count
    rest = outlines[1:]
    assert resident() - before < 60 * count
    assert len(rest) == count - 1
    del outlines, rest
    gc.collect()
    assert resident() - before < 10_000_000
