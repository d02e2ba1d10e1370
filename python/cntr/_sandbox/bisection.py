# SPDX-License-Identifier: MIT
"""Finds the rows that end the child process, and answers all others.

The answer for a row never depends on other rows, so the two halves of a table give the same answers
as the whole.
"""

from collections.abc import Callable

import pyarrow as pa

from cntr._sandbox.parent import DiedError

# A row is taken to be the cause when it has ended this many processes on its own: a single one may
# have been killed from outside.
TRIES = 2


def answer_in_pieces(
    table: pa.Table,
    ask: Callable[[pa.Table], pa.Table],
    crashed: Callable[[pa.Table, str], pa.Table],
) -> list[pa.Table]:
    """The answers of `ask` for the rows of the table, in order; there must be at least one row.

    If `ask` raises `DiedError`, it is called for each half. `crashed` gives the answer for a single
    row that ends every process; its second argument says how the last process ended.
    """
    death = ""
    for _ in range(TRIES if table.num_rows == 1 else 1):
        try:
            return [ask(table)]
        except DiedError as died:
            death = str(died)
    if table.num_rows == 1:
        return [crashed(table, death)]
    half = table.num_rows // 2
    return answer_in_pieces(table[:half], ask, crashed) + answer_in_pieces(
        table[half:], ask, crashed
    )
