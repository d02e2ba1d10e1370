# SPDX-License-Identifier: MIT
"""Finds the rows that a child process dies of, and answers for all others.

An answer never depends on the rows beside it, so that the halves of a table give what the whole
would have given.
"""

from collections.abc import Callable

import pyarrow as pa

from cntr._sandbox.parent import DiedError

# A row counts as deadly when it has ended so many processes on its own: one may have been killed
# from outside.
TRIES = 2


def answer_in_pieces(
    table: pa.Table,
    ask: Callable[[pa.Table], pa.Table],
    crashed: Callable[[pa.Table, str], pa.Table],
) -> list[pa.Table]:
    """What `ask` answers for the rows of the table, of which there is one at least, in their order.

    Where it raises `DiedError`, the halves are asked for. `crashed` gives the answer for a single
    row that ends every process, and is told how the last one ended.
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
