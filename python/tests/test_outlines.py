# SPDX-License-Identifier: MIT
"""Many outlines at once: what they are made of, and what is asked of them."""

import sys
import threading
import time
from collections.abc import Callable

import hypothesis
import numpy as np
import pytest
import shapely
from hypothesis import strategies

import cntr

SQUARE = [(0.0, 0.0), (10.0, 0.0), (10.0, 10.0), (0.0, 10.0)]
HOLE = [(1.0, 1.0), (1.0, 2.0), (2.0, 2.0)]
TRIANGLE = [(20.0, 0.0), (30.0, 0.0), (20.0, 5.0)]
BOW_TIE = [(0.0, 0.0), (4.0, 4.0), (4.0, 0.0), (0.0, 4.0)]

REGION = cntr.Region(SQUARE, holes=[HOLE], label=7)
LINE = cntr.Contour(TRIANGLE, closed=False, label=5)
SET = cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(TRIANGLE)])


def outlines() -> cntr.Outlines:
    return cntr.Outlines.from_regions([REGION, LINE, SET, cntr.Contour(BOW_TIE, label=9)])


def test_features_come_back_as_the_shapes_that_they_were_made_of() -> None:
    table = outlines()
    assert len(table) == 4
    assert table[0] == REGION
    assert table[1] == LINE
    assert table[2] == [cntr.Region(SQUARE), cntr.Region(TRIANGLE)]
    assert table[3] == cntr.Region(BOW_TIE)


def test_labels_stay_with_their_features() -> None:
    table = outlines()
    assert table.labels.tolist() == [7, 5, -1, 9]
    assert table.labels.dtype == np.int64
    region = table[0]
    assert isinstance(region, cntr.Region)
    assert region.label == 7


def test_negative_indexes_count_from_the_end() -> None:
    table = outlines()
    assert table[-1] == table[3]
    assert table[-4] == table[0]


@pytest.mark.parametrize("index", [4, -5])
def test_an_index_beyond_the_features_is_refused(index: int) -> None:
    with pytest.raises(IndexError, match=f"^there is no feature {index} among 4$"):
        outlines()[index]


def test_iteration_gives_every_feature_in_order() -> None:
    table = outlines()
    assert list(table) == [table[i] for i in range(len(table))]


@pytest.mark.parametrize(
    "cut",
    [
        slice(1, 3),
        slice(2, 2),
        slice(3, 1),
        slice(-2, None),
        slice(None, None, 2),
        slice(None, None, -1),
        slice(0, 100),
    ],
)
def test_slices_have_the_features_of_a_list(cut: slice) -> None:
    table = outlines()
    assert list(table[cut]) == list(table)[cut]
    assert table[cut].labels.tolist() == table.labels.tolist()[cut]


def test_slices_share_memory_and_keep_it_alive() -> None:
    table = outlines()
    address = table.vertices(1).ctypes.data
    for part in (table[1:], table[1::2], table[1:][0:1]):
        assert part.vertices(0).ctypes.data == address
    kept = table[1::2].vertices(0)
    del table
    assert kept.tolist() == [list(point) for point in TRIANGLE]


def test_vertices_are_seen_ring_by_ring_and_cannot_be_written_to() -> None:
    table = outlines()
    assert table.vertices(0, 0, 1).tolist() == [list(point) for point in HOLE]
    assert table.vertices(2, part=-1).tolist() == [list(point) for point in TRIANGLE]
    with pytest.raises(ValueError, match="read-only"):
        table.vertices(0)[0, 0] = 1
    with pytest.raises(IndexError, match=r"^there is no ring 2 among 2$"):
        table.vertices(0, 0, 2)
    with pytest.raises(IndexError, match=r"^there is no part 1 among 1$"):
        table.vertices(0, 1)


def test_edge_elements_stay_with_the_vertices_that_have_them() -> None:
    edges = ([1, 2, 65535], [0, 128, 255])
    shapes = [
        cntr.Region(SQUARE),
        cntr.Contour(TRIANGLE, closed=False, edges=edges),
        cntr.Region(SQUARE, holes=[cntr.Contour(HOLE, edges=edges)]),
        LINE,
    ]
    assert list(cntr.Outlines.from_regions(shapes)) == shapes
    assert list(cntr.Outlines.from_regions(shapes)[::-1]) == shapes[::-1]


def test_what_is_no_shape_is_refused() -> None:
    with pytest.raises(
        TypeError, match=r"^regions\[1\] must be a Contour, a Region or a RegionSet, not str$"
    ):
        cntr.Outlines.from_regions([REGION, "square"])  # type: ignore[list-item]
    with pytest.raises(TypeError, match=r"^regions must be an iterable of shapes, not Region$"):
        cntr.Outlines.from_regions(REGION)  # type: ignore[arg-type]


def test_a_shape_without_vertices_is_a_feature_without_geometry() -> None:
    table = cntr.Outlines.from_regions([cntr.Contour([]), REGION])
    assert table.problems == {0: "empty"}
    assert table[0] is None


def test_the_text_of_outlines_counts_what_they_are() -> None:
    table = cntr.Outlines.from_regions([REGION, LINE, LINE, cntr.Contour([])])
    assert repr(table) == "<cntr.Outlines: 4 features, 1 area, 2 lines, 1 without geometry>"
    assert repr(table[1:2]) == "<cntr.Outlines: 1 feature, 0 areas, 1 line, 0 without geometry>"


def test_make_valid_fills_each_feature_by_the_rule_and_keeps_labels() -> None:
    twice = [cntr.Region(SQUARE), cntr.Region([(5, 5), (15, 5), (15, 15), (5, 15)])]
    table = cntr.Outlines.from_regions(
        [cntr.Contour(BOW_TIE, label=9), LINE, cntr.RegionSet(twice)]
    )
    nonzero = table.make_valid()
    assert nonzero.labels.tolist() == [9, 5, -1]
    assert nonzero[1] == LINE
    assert nonzero.measure(["area"]).column("area").tolist()[0::2] == [8.0, 175.0]
    evenodd = table.make_valid("evenodd", threads=1)
    assert evenodd.measure(["area"]).column("area").tolist()[0::2] == [8.0, 150.0]


def test_make_valid_tells_why_there_is_nothing() -> None:
    table = cntr.Outlines.from_regions([cntr.Contour([(0, 0), (1, 1)]), REGION])
    assert table.make_valid().problems == {0: "the feature has no area"}


def test_make_valid_knows_two_rules() -> None:
    with pytest.raises(ValueError, match=r"^rule must be 'nonzero' or 'evenodd', not 'walk'$"):
        outlines().make_valid("walk")


def test_inside_join_gives_every_pair_once_and_in_order() -> None:
    table = outlines()
    outline, point = table.inside_join([(5, 5), (1.2, 1.7), (25, 1), (99, 99), (3.5, 2)])
    assert outline.tolist() == [0, 0, 2, 2, 2, 2, 3, 3]
    assert point.tolist() == [0, 4, 0, 1, 2, 4, 1, 4]
    assert outline.dtype == point.dtype == np.int64


@hypothesis.given(strategies.integers(0, 2**32 - 1))
def test_inside_join_has_the_pairs_that_shapely_finds(seed: int) -> None:
    rng = np.random.default_rng(seed)
    centres = rng.random((20, 2)) * 10
    radii = rng.random((20, 1)) * 3
    angles = np.arange(8) * (np.pi / 4)
    circle = np.stack([np.cos(angles), np.sin(angles)], axis=1)
    rings = centres[:, None] + radii[:, None] * circle * (0.5 + rng.random((20, 8, 1)) / 2)
    points = rng.random((200, 2)) * 10
    table = cntr.Outlines.from_wkb(shapely.to_wkb(shapely.polygons(rings)))
    polygons = shapely.polygons(rings)
    outline, point = table.inside_join(points)
    np.testing.assert_array_equal(np.lexsort((point, outline)), np.arange(len(outline)))
    found = np.zeros((20, 200), bool)
    found[outline, point] = True
    expected = shapely.contains_xy(polygons[:, None], points[:, 0], points[:, 1])
    # Points that all but lie on an edge are inside for cntr, whichever side they are on.
    far = shapely.distance(shapely.boundary(polygons)[:, None], shapely.points(points)) > 1e-5
    np.testing.assert_array_equal(found[far], expected[far])


@pytest.mark.parametrize("threads", [1, 2, 5])
def test_inside_join_does_not_depend_on_the_number_of_threads(threads: int) -> None:
    rng = np.random.default_rng(1)
    squares = np.array(SQUARE) * 0.1 + rng.random((300, 1, 2)) * 10
    table = cntr.Outlines.from_regions([cntr.Region(square) for square in squares])
    points = rng.random((1000, 2)) * 10
    for found, expected in zip(
        table.inside_join(points, threads), table.inside_join(points), strict=True
    ):
        np.testing.assert_array_equal(found, expected)


def test_points_of_a_join_have_two_coordinates() -> None:
    with pytest.raises(ValueError, match=r"^points must have the shape \(n, 2\), not \(3,\)$"):
        outlines().inside_join([1, 2, 3])


def test_several_threads_may_ask_one_table() -> None:
    table = cntr.Outlines.from_regions([cntr.Contour(BOW_TIE), REGION, LINE] * 100)
    expected = table.measure().column("area")
    failures: list[str] = []

    def ask() -> None:
        for _ in range(20):
            areas = table.measure(threads=2).column("area")
            valid = table.make_valid(threads=2)[150:].vertices(0).tolist()
            if not np.array_equal(areas, expected, equal_nan=True) or len(valid) != 3:
                failures.append(f"{areas}, {valid}")

    threads = [threading.Thread(target=ask) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert failures == []


@pytest.mark.parametrize(
    "ask",
    [
        lambda table: table == table[:],
        lambda table: table.bounds,
        lambda table: table.labels,
        lambda table: table.geometry_types,
        repr,
    ],
)
def test_other_threads_run_python_while_all_features_are_looked_at(
    ask: Callable[[cntr.Outlines], object],
) -> None:
    count = 20_000
    table = cntr.Outlines.from_ragged(np.tile(SQUARE, (count, 1)), np.arange(0, 4 * count + 1, 4))
    turns: list[int] = []
    done = threading.Event()

    def take_turns() -> None:
        while not done.is_set():
            turns.append(len(turns))
            time.sleep(0)

    other = threading.Thread(target=take_turns)
    interval = sys.getswitchinterval()
    other.start()
    # So long an interval that the other thread only runs where the lock is given up.
    sys.setswitchinterval(1000)
    try:
        before = len(turns)
        for _ in range(1000):
            ask(table)
            if len(turns) > before:
                break
        assert len(turns) > before
    finally:
        sys.setswitchinterval(interval)
        done.set()
        other.join()
