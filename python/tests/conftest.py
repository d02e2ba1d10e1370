# SPDX-License-Identifier: MIT
"""How hypothesis draws its examples, and what several tests measure."""

import pathlib
import resource
from collections.abc import Callable

import hypothesis
import pytest

# Other programs may be using the processors.
hypothesis.settings.register_profile("cntr", deadline=None, database=None)
hypothesis.settings.load_profile("cntr")


@pytest.fixture
def resident() -> Callable[[], int]:
    """Tells the bytes of memory that this process has in use."""

    def count() -> int:
        pages = pathlib.Path("/proc/self/statm").read_text().split()[1]
        return int(pages) * resource.getpagesize()

    return count
