# SPDX-License-Identifier: MIT
"""The exceptions of the package."""


class Error(Exception):
    """Base of all exceptions of this package that are not about types and array shapes."""


class EmptyContourError(Error, ValueError):
    """A contour of fewer than 2 vertices, or a region of fewer than 3, where a curve is needed."""


class BadParamsError(Error, ValueError):
    """An argument, or a shape, that the operation cannot work with; the message says why."""


class EmptyRegionSetError(Error, ValueError):
    """A region set without regions where one is needed."""
