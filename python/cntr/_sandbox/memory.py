# SPDX-License-Identifier: MIT
"""Memory shared by parent and child."""

import mmap
import os
import tempfile
from typing import Any

import pyarrow as pa


class Region:
    """An unnamed file in memory, for one table at a time."""

    def __init__(self, file: int) -> None:
        self.file = file
        self._memory: mmap.mmap | None = None

    @classmethod
    def create(cls) -> "Region":
        if hasattr(os, "memfd_create"):
            return cls(os.memfd_create("cntr"))
        with tempfile.TemporaryFile() as file:
            return cls(os.dup(file.fileno()))

    def put(self, table: pa.Table) -> int:
        """Stores the table and returns its size in bytes."""
        counter = pa.MockOutputStream()
        _write(counter, table)
        size = int(counter.size())
        if os.fstat(self.file).st_size < size:
            os.ftruncate(self.file, size)
        _write(pa.FixedSizeBufferWriter(self._bytes(size)), table)
        return size

    def view(self, size: int) -> pa.Table:
        """The table in place; it changes with the next `put` of the other process."""
        return pa.ipc.open_stream(self._bytes(size)).read_all()

    def take(self, size: int) -> pa.Table:
        """A copy of the table."""
        return pa.ipc.open_stream(self._bytes(size).to_pybytes()).read_all()

    def close(self) -> None:
        # The mapping is released with the last table that uses it.
        self._memory = None
        os.close(self.file)

    def _bytes(self, size: int) -> pa.Buffer:
        if self._memory is None or len(self._memory) < size:
            self._memory = mmap.mmap(self.file, os.fstat(self.file).st_size)
        return pa.py_buffer(memoryview(self._memory)[:size])


def _write(sink: Any, table: pa.Table) -> None:
    with pa.ipc.new_stream(sink, table.schema) as stream:
        stream.write_table(table)
