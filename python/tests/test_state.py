# SPDX-License-Identifier: MIT
"""Outlines that are compared, pickled and copied."""

import copy
import pickle

import numpy as np
import pytest

import cntr

SQUARE = [(0.0, 0.0), (10.0, 0.0), (10.0, 10.0), (0.0, 10.0)]
HOLE = [(1.0, 1.0), (1.0, 2.0), (2.0, 2.0)]
EDGES = ([1, 2, 65535], [0, 128, 255])


def outlines() -> cntr.Outlines:
    hole = cntr.Contour(HOLE, edges=EDGES)
    return cntr.Outlines.from_regions(
        [
            cntr.Region(SQUARE, holes=[hole], label=4294967295),
            cntr.Contour([]),
            cntr.Contour(HOLE, closed=False, label=3, edges=EDGES),
            cntr.RegionSet([cntr.Region(SQUARE), cntr.Region(HOLE)]),
            cntr.Contour([(0, np.nan), (np.inf, -0.0)], closed=False),
        ]
    )


@pytest.mark.parametrize("protocol", range(pickle.HIGHEST_PROTOCOL + 1))
def test_a_pickle_holds_everything(protocol: int) -> None:
    table = cntr.Outlines.from_wkb([*outlines().to_wkb(), b"\x07"])
    for one in (table, outlines(), outlines()[1:4], cntr.Outlines.from_regions([])):
        again = pickle.loads(pickle.dumps(one, protocol))
        assert again.to_wkb() == one.to_wkb()
        assert again.labels.tolist() == one.labels.tolist()
        assert again.problems == one.problems
        assert again[:4] == one[:4]
        assert again.measure(["area"]).note.tolist() == one.measure(["area"]).note.tolist()


def test_copies_are_equal() -> None:
    table = outlines()[:4]
    assert copy.copy(table) == table
    assert copy.deepcopy(table) == table


def put_together(*state: object) -> cntr.Outlines:
    table = cntr.Outlines.__new__(cntr.Outlines)
    table.__setstate__(state)
    return table


def test_the_state_of_outlines_must_fit_together() -> None:
    _, _, state = outlines().__reduce__()
    assert isinstance(state, tuple)
    values, labels, problems, edges = state
    assert put_together(values, labels, problems, edges)[:4] == outlines()[:4]
    with pytest.raises(ValueError, match=r"^there must be a label for each feature$"):
        put_together(values, labels[1:], problems, edges)
    with pytest.raises(ValueError, match=r"^there are too few edge elements$"):
        put_together(values, labels, problems, (edges[0][1:], edges[1][1:], edges[2]))
    longer = (np.append(edges[0], edges[0][:1]), np.append(edges[1], edges[1][:1]), edges[2])
    with pytest.raises(ValueError, match=r"^there are too many edge elements$"):
        put_together(values, labels, problems, longer)
    with pytest.raises(ValueError, match=r"^there must be as many magnitudes as angles$"):
        put_together(values, labels, problems, (edges[0], edges[1][1:], edges[2]))
    with pytest.raises(ValueError, match=r"^there must be a number of edge elements for each"):
        put_together(values, labels, problems, (edges[0], edges[1], edges[2][1:]))
    with pytest.raises(ValueError, match=r"^there are too few edge elements$"):
        put_together(values, labels, problems, (edges[0], edges[1], edges[2] - 1))
    uneven = edges[2] + np.array([1, 0, -1, 0, 0])
    with pytest.raises(ValueError, match=r"^feature 0 has 8 edge elements for 7 vertices$"):
        put_together(values, labels, problems, (edges[0], edges[1], uneven))


def test_outlines_are_equal_when_their_features_are() -> None:
    table = outlines()[:4]
    assert table == outlines()[:4]
    assert table != outlines()[:3]
    assert table != outlines()[1:4]
    assert table == table[::-1][::-1]
    assert table != table[::-1]
    assert (table == "outlines") is False
    for other in (
        cntr.Region(SQUARE),
        cntr.Region(SQUARE, holes=[HOLE]),
        cntr.Region(SQUARE, holes=[cntr.Contour(HOLE, edges=([1, 2, 3], EDGES[1]))]),
        cntr.Region(SQUARE, holes=[cntr.Contour(HOLE, edges=(EDGES[0], [0, 0, 0]))]),
        cntr.Contour(SQUARE, closed=False),
    ):
        assert cntr.Outlines.from_regions([other]) != table[:1]
    unlabelled = cntr.Region(SQUARE, holes=[cntr.Contour(HOLE, edges=EDGES)])
    assert cntr.Outlines.from_regions([unlabelled]) == table[:1]


def test_outlines_cannot_be_hashed() -> None:
    with pytest.raises(TypeError, match="unhashable"):
        hash(outlines())
