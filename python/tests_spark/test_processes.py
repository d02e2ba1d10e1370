# SPDX-License-Identifier: MIT
"""The processor time of a cluster's processes."""

import processes


def test_seconds_between_are_summed_up_by_kind() -> None:
    before = {("executors", 1): 2.0, ("Python workers", 2): 1.0, ("Python workers", 3): 4.0}
    after = {("executors", 1): 5.0, ("Python workers", 2): 1.5, ("Python workers", 3): 6.0}
    used = processes.seconds_between(before, after)
    assert used == {"executors": 3.0, "Python workers": 2.5, "their children": 0.0}


def test_a_process_that_has_begun_counts_from_its_beginning() -> None:
    used = processes.seconds_between({}, {("their children", 4): 0.75})
    assert used["their children"] == 0.75


def test_a_process_that_has_ended_takes_nothing_away() -> None:
    used = processes.seconds_between({("Python workers", 2): 9.0}, {})
    assert used == dict.fromkeys(processes.KINDS, 0.0)
