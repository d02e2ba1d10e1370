# SPDX-License-Identifier: MIT
"""Shapes on the axes of matplotlib, which is imported when something is drawn."""

from __future__ import annotations

from typing import TYPE_CHECKING

import numpy as np

from cntr._core import Contour, Region, RegionSet, Shape

if TYPE_CHECKING:
    from matplotlib.axes import Axes
    from matplotlib.path import Path
    from numpy.typing import NDArray

    Points = NDArray[np.float64]


def _ring(points: Points, counter_clockwise: bool) -> Path:
    """Outlines and holes run in opposite ways, so that holes are left out."""
    from matplotlib.path import Path

    x, y = points.T
    doubled_area = float(x @ np.roll(y, -1) - y @ np.roll(x, -1))
    turned = points if (doubled_area > 0) == counter_clockwise else points[::-1]
    return Path(np.concatenate([turned, turned[:1]]), closed=True)


def _rings(shape: Shape) -> list[Path]:
    if isinstance(shape, RegionSet):
        return [ring for region in shape for ring in _rings(region)]
    if isinstance(shape, Region):
        return [_ring(shape.points, True), *(_ring(hole.points, False) for hole in shape.holes)]
    assert isinstance(shape, Contour)
    return [_ring(shape.points, True)]


def plot(shape: Shape, ax: Axes | None) -> Axes:
    """Draw a shape on the axes, or on the current ones where they are None."""
    from matplotlib import pyplot
    from matplotlib.colors import to_rgba
    from matplotlib.patches import PathPatch
    from matplotlib.path import Path

    if ax is not None and not hasattr(ax, "add_patch"):
        raise TypeError(f"ax must be None or axes of matplotlib, not {type(ax).__name__}")
    axes = pyplot.gca() if ax is None else ax
    if isinstance(shape, Contour) and not shape.closed:
        axes.plot(*shape.points.T)
    else:
        (line,) = axes.plot([], [])
        color = line.get_color()
        line.remove()
        outline = Path.make_compound_path(*_rings(shape))
        axes.add_patch(PathPatch(outline, edgecolor=color, facecolor=to_rgba(color, 0.2)))
    axes.autoscale_view()
    axes.set_aspect("equal")
    return axes
