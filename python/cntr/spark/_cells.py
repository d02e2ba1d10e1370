# SPDX-License-Identifier: MIT
"""Divides the plane into cells that hold about the same amount of data, however it is distributed.

The cells are the leaves of a complete binary tree. Each node cuts its cell across the longer side
of the sample, where the weight of the sample is halved. A cell contains its lower sides but not its
upper ones, so that each point lies in exactly one cell. Points with the same coordinates cannot be
separated by cuts: their cell has several shares. The points are distributed over the shares by a
hash of their rows, and each share holds all regions of the cell. Points whose rows are equal in
every column stay together.
"""

from dataclasses import dataclass

import numpy as np
import numpy.typing as npt

Floats = npt.NDArray[np.float64]
Integers = npt.NDArray[np.int64]

# A cell with fewer items of the sample would say little about the distribution.
ITEMS_PER_CELL = 16
# A cell of up to this multiple of the mean weight has a single share.
TOLERATED = 2.0


@dataclass(frozen=True)
class Cells:
    """The children of node i are 2 i + 1, below its cut, and 2 i + 2, from the cut on."""

    axes: Integers
    cuts: Floats
    # The number of the first share of each leaf, followed by the number of all shares.
    shares: Integers

    @classmethod
    def of_sample(cls, points: Floats, weights: Floats, wanted: int) -> "Cells":
        """At least `wanted` cells, unless the sample is too small."""
        most = max(len(points) // ITEMS_PER_CELL, 1)
        depth = min((wanted - 1).bit_length(), most.bit_length() - 1)
        leaves = 2**depth
        axes = np.zeros(leaves - 1, np.int64)
        cuts = np.zeros(leaves - 1)
        items = [np.arange(len(points))]
        for node in range(leaves - 1):
            mine = items[node]
            axis, cut = halving(points[mine], weights[mine])
            axes[node], cuts[node] = axis, cut
            is_low = points[mine, axis] < cut
            items += [mine[is_low], mine[~is_low]]
        heavy = np.array([weights[mine].sum() for mine in items[leaves - 1 :]])
        return cls(axes, cuts, shares_of(heavy))

    @property
    def count(self) -> int:
        """The number of all shares."""
        return int(self.shares[-1])

    @property
    def depth(self) -> int:
        """The number of cuts from the root to each leaf."""
        return len(self.axes).bit_length()

    def of_points(self, points: Floats, hashes: Integers) -> Integers:
        """The share of each point."""
        node = np.zeros(len(points), np.int64)
        rows = np.arange(len(points))
        for _ in range(self.depth):
            node = 2 * node + 1 + (points[rows, self.axes[node]] >= self.cuts[node])
        leaf = node - len(self.axes)
        return self.shares[leaf] + hashes % np.diff(self.shares)[leaf]

    def of_boxes(self, boxes: Floats) -> tuple[Integers, Integers]:
        """All pairs of a box (its row) and a share of a cell that it meets; none for NaN.

        The cost is proportional to the number of pairs of a box and a node that it meets.
        """
        row = np.nonzero(~np.isnan(boxes).any(axis=1))[0]
        node = np.zeros(len(row), np.int64)
        for _ in range(self.depth):
            axis, cut = self.axes[node], self.cuts[node]
            is_low = boxes[row, axis] < cut
            is_high = boxes[row, axis + 2] >= cut
            row = np.concatenate([row[is_low], row[is_high]])
            node = np.concatenate([2 * node[is_low] + 1, 2 * node[is_high] + 2])
        leaf = node - len(self.axes)
        repeats = np.diff(self.shares)[leaf]
        first = np.repeat(self.shares[leaf], repeats)
        begin = np.repeat(np.cumsum(repeats) - repeats, repeats)
        return np.repeat(row, repeats), first + np.arange(len(first)) - begin


def halving(points: Floats, weights: Floats) -> tuple[int, float]:
    """The axis and position of a cut with about half of the weight on either side."""
    if len(points) == 0:
        return 0, 0.0
    axis = int(np.argmax(np.ptp(points, axis=0)))
    places = points[:, axis]
    order = np.argsort(places, kind="stable")
    reached = np.cumsum(weights[order])
    cut = places[order[np.searchsorted(reached, reached[-1] / 2)]]
    # If half of the weight or more lies exactly on the lower side, nothing would be below the cut.
    beyond = places[places > cut]
    if cut == places[order[0]] and len(beyond):
        cut = beyond.min()
    return axis, float(cut)


def shares_of(weights: Floats) -> Integers:
    """The number of the first share of each cell of these weights, then that of all shares."""
    mean = weights.mean()
    counts = np.ones(len(weights), np.int64)
    heavy = weights > TOLERATED * mean
    counts[heavy] = np.ceil(weights[heavy] / mean)
    return np.concatenate([[0], np.cumsum(counts)])
