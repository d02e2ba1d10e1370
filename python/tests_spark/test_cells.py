# SPDX-License-Identifier: MIT
"""Cells of the plane: every point in one, every region in all that it reaches, none too heavy."""

import tracemalloc

import numpy as np
import pytest

from cntr.spark._cells import Cells, Floats, Integers

EMPTY = np.empty((0, 2))


def drawn(kind: str, count: int = 20000) -> Floats:
    random = np.random.default_rng(11)
    points = random.uniform(0.0, 100.0, (count, 2))
    if kind == "clustered":
        points[: count // 2] = random.normal(30.0, 0.01, (count // 2, 2))
    if kind == "in one place":
        points[: count // 10] = [70.0, 20.0]
    if kind == "on a line":
        points[:, 1] = 5.0
    if kind == "on two lines":
        points[:, 0] = np.round(points[:, 0] / 100.0)
    return points


def hashes(count: int) -> Integers:
    return np.random.default_rng(12).integers(-(2**63), 2**63 - 1, count)


KINDS = ["even", "clustered", "in one place", "on a line", "on two lines"]


@pytest.mark.parametrize("kind", KINDS)
def test_no_share_is_much_heavier_than_the_mean(kind: str) -> None:
    points = drawn(kind)
    cells = Cells.of_sample(points, np.ones(len(points)), 40)
    shares = cells.of_points(points, hashes(len(points)))
    loads = np.bincount(shares, minlength=cells.count)
    assert loads.sum() == len(points)
    assert len(loads) == cells.count >= 40
    assert loads.max() <= 2.5 * len(points) / cells.count


@pytest.mark.parametrize("kind", KINDS)
def test_a_region_reaches_each_point_in_its_box_exactly_once(kind: str) -> None:
    points = drawn(kind, 3000)
    cells = Cells.of_sample(points, np.ones(len(points)), 16)
    low = np.random.default_rng(13).uniform(-10.0, 100.0, (50, 2))
    boxes = np.concatenate([low, low + 30.0], axis=1)
    # Boxes whose sides are cuts.
    boxes[:10, 0] = boxes[:10, 2] = cells.cuts[:10]
    rows, shares = cells.of_boxes(boxes)
    assert len(set(zip(rows.tolist(), shares.tolist(), strict=True))) == len(rows)
    of_points = cells.of_points(points, hashes(len(points)))
    inside = np.all((points >= boxes[:, None, :2]) & (points <= boxes[:, None, 2:]), axis=2)
    reached = np.zeros((len(boxes), cells.count), bool)
    reached[rows, shares] = True
    assert np.all(reached[:, of_points][inside])


def test_a_heavy_place_is_spread_and_its_regions_are_in_all_of_its_shares() -> None:
    points = np.concatenate([np.full((900, 2), 7.0), drawn("even", 100)])
    cells = Cells.of_sample(points, np.ones(len(points)), 8)
    shares = cells.of_points(points[:900], hashes(900))
    assert len(np.unique(shares)) > 3
    rows, reached = cells.of_boxes(np.array([[6.5, 6.5, 7.5, 7.5]]))
    assert set(np.unique(shares)) <= set(reached.tolist())
    assert set(rows.tolist()) == {0}


def test_a_heavy_corner_does_not_keep_the_rest_from_being_divided() -> None:
    rest = drawn("even", 1000)
    points = np.concatenate([np.full((3000, 2), -1.0), rest])
    cells = Cells.of_sample(points, np.ones(len(points)), 64)
    _, reached = cells.of_boxes(np.array([[50.0, 50.0, 51.0, 51.0]]))
    assert 1 <= len(reached) <= 4


def leaf_boxes(cells: Cells) -> Floats:
    """Of each leaf: xmin, ymin, xmax, ymax, by all cuts on the way to it."""
    boxes = np.array([[-np.inf, -np.inf, np.inf, np.inf]])
    while len(boxes) <= len(cells.axes):
        nodes = np.arange(len(boxes) - 1, 2 * len(boxes) - 1)
        row, axis, cut = np.arange(len(boxes)), cells.axes[nodes], cells.cuts[nodes]
        low, high = boxes.copy(), boxes.copy()
        low[row, axis + 2] = np.minimum(boxes[row, axis + 2], cut)
        high[row, axis] = np.maximum(boxes[row, axis], cut)
        boxes = np.stack([low, high], axis=1).reshape(-1, 4)
    return boxes


def reached_literally(cells: Cells, boxes: Floats) -> set[tuple[int, int]]:
    """The pairs of a box and a share, by a comparison of each box with each leaf."""
    leaves = leaf_boxes(cells)
    reach = np.all(boxes[:, None, :2] < leaves[:, 2:], axis=2)
    reach &= np.all(boxes[:, None, 2:] >= leaves[:, :2], axis=2)
    return {
        (int(row), share)
        for row, leaf in zip(*np.nonzero(reach), strict=True)
        for share in range(cells.shares[leaf], cells.shares[leaf + 1])
    }


@pytest.mark.parametrize("kind", KINDS)
def test_boxes_reach_the_cells_that_a_comparison_with_each_finds(kind: str) -> None:
    points = drawn(kind, 4000)
    cells = Cells.of_sample(points, np.ones(len(points)), 128)
    random = np.random.default_rng(14)
    low = random.uniform(-10.0, 100.0, (300, 2))
    size = random.exponential(5.0, (300, 2))
    boxes = np.concatenate([low, low + size], axis=1)
    boxes[:50] = np.concatenate([points[:50], points[:50]], axis=1)
    boxes[50:100, 2] = boxes[50:100, 0] = cells.cuts[:50]
    rows, shares = cells.of_boxes(boxes)
    found = list(zip(rows.tolist(), shares.tolist(), strict=True))
    assert len(found) == len(set(found))
    assert set(found) == reached_literally(cells, boxes)


def test_many_boxes_and_many_cells_take_memory_for_their_pairs_alone() -> None:
    points = drawn("even", 16 * 2**14)
    cells = Cells.of_sample(points, np.ones(len(points)), 2**14)
    assert cells.count == 2**14
    low = np.random.default_rng(15).uniform(0.0, 100.0, (10_000, 2))
    boxes = np.concatenate([low, low + 0.5], axis=1)
    tracemalloc.start()
    try:
        rows, _ = cells.of_boxes(boxes)
        _, peak = tracemalloc.get_traced_memory()
    finally:
        tracemalloc.stop()
    assert 10_000 < len(rows) < 50_000
    assert peak < 200 * len(rows)
    some = boxes[:100]
    rows, shares = cells.of_boxes(some)
    pairs = set(zip(rows.tolist(), shares.tolist(), strict=True))
    assert pairs == reached_literally(cells, some)


def test_boxes_of_nothing_reach_no_cell() -> None:
    cells = Cells.of_sample(drawn("even"), np.ones(20000), 8)
    rows, shares = cells.of_boxes(np.full((2, 4), np.nan))
    assert len(rows) == len(shares) == 0


def test_without_a_sample_there_is_one_cell() -> None:
    cells = Cells.of_sample(EMPTY, np.empty(0), 40)
    assert cells.count == 1
    assert cells.of_points(np.array([[1.0, 2.0]]), np.array([-5])).tolist() == [0]
    assert cells.of_boxes(np.array([[0.0, 0.0, 1.0, 1.0]]))[1].tolist() == [0]


def test_cells_weigh_the_same_where_items_do_not() -> None:
    points = drawn("even")
    weights = np.where(points[:, 0] < 50.0, 1.0, 9.0)
    cells = Cells.of_sample(points, weights, 32)
    shares = cells.of_points(points, hashes(len(points)))
    loads = np.bincount(shares, weights, minlength=cells.count)
    assert loads.max() <= 1.2 * loads.mean()
    assert loads.min() >= 0.8 * loads.mean()
