# SPDX-License-Identifier: MIT
"""One shape asked by several threads, and what many shapes leave behind."""

import gc
import os
import sys
import threading
import time
from collections.abc import Callable
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest
from numpy.typing import NDArray

import cntr

ANGLE = np.linspace(0, 2 * np.pi, 5000, endpoint=False)
STAR = (100 + 20 * np.cos(9 * ANGLE))[:, None] * np.column_stack([np.cos(ANGLE), np.sin(ANGLE)])
POINTS = np.random.default_rng(3).uniform(-120, 120, (2000, 2))
TRIANGLE = np.array([(0.0, 0), (4, 0), (4, 3)])


def fresh() -> cntr.Region:
    return cntr.Region(STAR, [STAR * 0.3, STAR[:, ::-1] * 0.1 + 50])


QUESTIONS: list[Callable[[cntr.Region], NDArray[np.generic]]] = [
    lambda r: r.inside(POINTS),
    lambda r: np.array([r.inside((x, y)) for x, y in POINTS[:300].tolist()]),
    lambda r: r.distance(POINTS),
    lambda r: r.distance(POINTS, zero_inside=True),
    lambda r: r.closest_point(POINTS),
    lambda r: r.closest_vertex(POINTS[:200]).numbers,
    lambda r: r.intersections(POINTS[:2]),
    lambda r: np.array([r.extremal_vertex(degrees).number for degrees in range(0, 360, 7)]),
    lambda r: np.array([r.is_self_intersecting(), r.area(), r.diameter(), *r.centroid()]),
    lambda r: r.holes[1].points,
    lambda r: r.simplify(0.5).points,
    lambda r: r.transform([[0, 1, 0], [1, 0, 0]]).points,
]


def test_several_threads_get_the_answers_that_one_gets() -> None:
    alone = fresh()
    expected = [question(alone).tolist() for question in QUESTIONS]
    for _ in range(5):
        shared = fresh()
        gate = threading.Barrier(8)

        def ask(
            number: int, shared: cntr.Region = shared, gate: threading.Barrier = gate
        ) -> list[tuple[int, object]]:
            gate.wait()
            order = [(number + i) % len(QUESTIONS) for i in range(len(QUESTIONS))]
            return [(i, QUESTIONS[i](shared).tolist()) for i in order]

        with ThreadPoolExecutor(8) as pool:
            for answers in pool.map(ask, range(8)):
                for i, answer in answers:
                    assert answer == expected[i]


def test_other_threads_run_python_while_many_points_are_asked() -> None:
    region = fresh()
    many = np.random.default_rng(1).uniform(-120, 120, (1_000_000, 2))
    region.inside(many)
    turns: list[int] = []
    done = threading.Event()

    def count() -> None:
        while not done.is_set():
            turns.append(len(turns))
            time.sleep(0)

    counter = threading.Thread(target=count)
    counter.start()
    interval = sys.getswitchinterval()
    # So long an interval that the other thread only runs where the lock is given up.
    sys.setswitchinterval(1000)
    try:
        before = len(turns)
        region.distance(many[:200_000])
        assert len(turns) > before + 10
    finally:
        sys.setswitchinterval(interval)
        done.set()
        counter.join()


def test_shapes_are_asked_and_copied_at_the_same_time() -> None:
    region = fresh()
    with ThreadPoolExecutor(4) as pool:
        asked = pool.submit(lambda: [region.distance(POINTS).sum() for _ in range(20)])
        copies = [pool.submit(lambda: (region | region).area()) for _ in range(20)]
        assert len(set(asked.result())) == 1
        assert len({copy.result() for copy in copies}) == 1


def answer_everything() -> None:
    region = cntr.Region(TRIANGLE, [TRIANGLE * 0.1 + (3, 1)], edges=([1, 2, 3], [4, 5, 6]))
    region.inside([(3, 1)])
    region.closest_vertex([(3, 1)])
    _ = (region.points, region.holes, region.edges, region.bounds, region.inertia())
    region.minimum_area_rect()
    _ = (region | region)[0] == region
    _ = (repr(region), region.__geo_interface__, region._repr_svg_())
    for wrong in (lambda: region.inside("x"), lambda: cntr.Region([]).area()):
        with pytest.raises((TypeError, cntr.Error)):
            wrong()


def test_answers_leave_no_references_behind() -> None:
    for _ in range(20):
        answer_everything()
    gc.collect()
    before = sys.getrefcount(cntr.Region), sys.getrefcount(cntr.Contour), sys.getrefcount(TRIANGLE)
    for _ in range(200):
        answer_everything()
    gc.collect()
    after = sys.getrefcount(cntr.Region), sys.getrefcount(cntr.Contour), sys.getrefcount(TRIANGLE)
    assert after == before


@pytest.mark.skipif(
    "ASAN_OPTIONS" in os.environ, reason="the address sanitizer keeps what was freed"
)
def test_a_million_objects_leave_no_memory_behind(resident: Callable[[], int]) -> None:
    def make(count: int) -> None:
        for _ in range(count):
            region = cntr.Region(TRIANGLE)
            region.inside((3.0, 1.0))
            _ = region.points

    make(50_000)
    gc.collect()
    before = resident()
    make(1_000_000)
    gc.collect()
    assert resident() - before < 8e6
