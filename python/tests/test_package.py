# SPDX-License-Identifier: MIT
"""The package as a whole."""

from importlib import metadata

import pytest

import cntr


def test_the_version_is_that_of_the_distribution() -> None:
    assert cntr.__version__ == metadata.version("cntr-geometry")


@pytest.mark.parametrize(
    "error", [cntr.EmptyContourError, cntr.BadParamsError, cntr.EmptyRegionSetError]
)
def test_errors_about_arguments_are_value_errors_and_the_packages_own(
    error: type[Exception],
) -> None:
    assert issubclass(error, cntr.Error)
    assert issubclass(error, ValueError)


def test_every_public_name_is_there() -> None:
    assert len(set(cntr.__all__)) == len(cntr.__all__)
    assert all(hasattr(cntr, name) for name in cntr.__all__)
