# SPDX-License-Identifier: MIT
"""The parent's side: starts a child, sends requests to it, and notices its death."""

import json
import os
import select
import subprocess
import sys
from typing import Any

import pyarrow as pa

from cntr._sandbox.memory import Region

# The first line from a child that has started successfully.
READY = b"ready\n"
# The number of seconds that a child has for an answer.
TIME_LIMIT = 600.0


class DiedError(Exception):
    """The child process ended or was killed before it answered; the message says how."""


class Sandbox:
    """Answers from a child process, which is started when needed, and again after its death.

    A child that has not answered after `limit` seconds is killed.
    """

    def __init__(self, limit: float = TIME_LIMIT) -> None:
        self.limit = limit
        self._process: subprocess.Popen[bytes] | None = None
        self._held = ""
        self.starts = 0

    def ask(self, task: str, table: pa.Table, **options: Any) -> pa.Table:
        """Runs the task of this name from `tasks` in the child.

        Raises `DiedError` if the child died, and RuntimeError if the task raised an exception, with
        the child's traceback, or if no child could be started.
        """
        if self._process is None:
            self._start()
        request = {"task": task, "options": options, "size": self._inbox.put(table)}
        try:
            self._requests.write(json.dumps(request).encode() + b"\n")
        except BrokenPipeError:
            raise DiedError(self._bury()) from None
        reply = json.loads(self._reply())
        if "error" in reply:
            raise RuntimeError(reply["error"])
        return self._outbox.take(reply["size"])

    def hold(self, key: str, regions: pa.Table) -> None:
        """Makes the child keep regions for the task `inside`, unless it has those of this key."""
        if self._held != key:
            self.ask("hold", regions)
            self._held = key

    def close(self) -> None:
        """Ends the child, if there is one."""
        if self._process is not None:
            self._bury()

    @property
    def pid(self) -> int | None:
        """The child's process id, while there is one."""
        return self._process.pid if self._process is not None else None

    def _start(self) -> None:
        self._inbox, self._outbox = Region.create(), Region.create()
        its_requests, requests = os.pipe()
        replies, its_replies = os.pipe()
        theirs = (its_requests, its_replies, self._inbox.file, self._outbox.file)
        self._process = subprocess.Popen(
            [sys.executable, "-P", "-m", "cntr._sandbox.child", *map(str, theirs)],
            stdin=subprocess.DEVNULL,
            stdout=sys.stderr.fileno(),
            pass_fds=theirs,
            # The child also needs what Spark has added to the path of this process.
            env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        )
        os.close(its_requests)
        os.close(its_replies)
        self._requests = os.fdopen(requests, "wb", buffering=0)
        self._replies = os.fdopen(replies, "rb")
        self.starts += 1
        try:
            self._reply()
        except DiedError as died:
            # This is not the fault of a table.
            message = f"the child process did not start: {died}; see its messages"
            raise RuntimeError(message) from None

    def _reply(self) -> bytes:
        """The next line from the child."""
        assert self._process is not None
        if not select.select([self._replies], [], [], self.limit)[0]:
            self._process.kill()
            raise DiedError(f"{self._bury()}, after {self.limit:g} seconds without an answer")
        line = self._replies.readline()
        if not line.endswith(b"\n"):
            raise DiedError(self._bury())
        return line

    def _bury(self) -> str:
        assert self._process is not None
        for end in (self._requests, self._replies, self._inbox, self._outbox):
            end.close()
        status = self._process.wait()
        self._process = None
        self._held = ""
        return f"signal {-status}" if status < 0 else f"exit status {status}"
