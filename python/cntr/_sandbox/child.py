# SPDX-License-Identifier: MIT
"""The child's side: answers requests one after the other until there are no more.

    python -m cntr._sandbox.child REQUESTS REPLIES INBOX OUTBOX

The arguments are file descriptors.
"""

import faulthandler
import json
import os
import signal
import sys
import traceback
from typing import Any

import pyarrow as pa
import pyarrow.compute as pc

from cntr._sandbox import tasks
from cntr._sandbox.memory import Region
from cntr._sandbox.parent import READY

# For tests: a geometry, as hexadecimal digits, that ends the process.
CRASH = "CNTR_SPARK_CRASH"


def die_of_marked(table: pa.Table, marked: bytes) -> None:
    """Ends this process with a segmentation fault if the marked geometry is in the table."""
    if not marked or tasks.GEOMETRY not in table.column_names:
        return
    geometries = table[tasks.GEOMETRY]
    if pc.any(pc.equal(geometries, pa.scalar(marked, geometries.type))).as_py():
        os.kill(os.getpid(), signal.SIGSEGV)


def answer(request: dict[str, Any], inbox: Region, outbox: Region, marked: bytes) -> dict[str, Any]:
    table = inbox.view(request["size"])
    die_of_marked(table, marked)
    try:
        result = tasks.TASKS[request["task"]](table, **request["options"])
    except MemoryError:
        raise
    except Exception:
        return {"error": traceback.format_exc()}
    return {"size": outbox.put(result)}


def main(files: list[int]) -> None:
    faulthandler.enable()
    marked = bytes.fromhex(os.environ.get(CRASH, ""))
    inbox, outbox = Region(files[2]), Region(files[3])
    with os.fdopen(files[0], "rb") as requests, os.fdopen(files[1], "wb", buffering=0) as replies:
        replies.write(READY)
        for line in requests:
            reply = answer(json.loads(line), inbox, outbox, marked)
            replies.write(json.dumps(reply).encode() + b"\n")


if __name__ == "__main__":
    main([int(number) for number in sys.argv[1:]])
