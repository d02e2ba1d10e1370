# SPDX-License-Identifier: MIT
"""Outlines as a small table for notebooks."""

import base64
import html
from collections.abc import Sequence
from typing import TypeAlias

from cntr import _core

Parts: TypeAlias = Sequence[_core.Contour | _core.Region]

# As many features are shown.
SHOWN = 10


def table(outlines: _core.Outlines) -> str:
    """A row for each of the first features: number, picture, what it is, label and vertices."""
    labels = outlines.labels
    rows = [_row(outlines, i, int(labels[i])) for i in range(min(len(outlines), SHOWN))]
    more = len(outlines) - len(rows)
    if more > 0:
        rows.append(f'<tr><td colspan="5">and {more} more</td></tr>')
    return (
        f"<p>{html.escape(repr(outlines))}</p>"
        "<table><thead><tr><th></th><th></th><th>what</th><th>label</th><th>vertices</th></tr>"
        f"</thead><tbody>{''.join(rows)}</tbody></table>"
    )


def _row(outlines: _core.Outlines, number: int, label: int) -> str:
    feature = outlines[number]
    if feature is None:
        cells = ["", outlines[number : number + 1].problems[0], "", ""]
    else:
        parts: Parts = feature if isinstance(feature, list) else [feature]
        cells = [_picture(parts), _name(parts), str(label) if label >= 0 else ""]
        cells.append(str(sum(len(part) for part in parts)))
    picture, *texts = cells
    tail = "".join(f"<td>{html.escape(text)}</td>" for text in texts)
    return f"<tr><td>{number}</td><td>{picture}</td>{tail}</tr>"


def _name(parts: Parts) -> str:
    kind = "area" if parts[0].closed else "line"
    return kind if len(parts) == 1 else f"{kind} of {len(parts)} parts"


def _picture(parts: Parts) -> str:
    svg = base64.b64encode(_core.picture(parts).encode()).decode()
    return f'<img width="48" height="48" src="data:image/svg+xml;base64,{svg}">'
