# SPDX-License-Identifier: MIT
"""Tells which part each defect lies on, and how far away from the parts the others are.

python defects_on_parts.py
"""

import numpy as np

import cntr


def main() -> None:
    """Two parts, one with a hole, and four defects."""
    parts = cntr.Outlines.from_regions(
        [
            cntr.Region([(0, 0), (30, 0), (30, 20), (0, 20)], label=1),
            cntr.Region(
                [(40, 0), (80, 0), (80, 20), (40, 20)],
                holes=[[(50, 5), (60, 5), (60, 15), (50, 15)]],
                label=2,
            ),
        ]
    )
    defects = np.array([(5.0, 5.0), (55.0, 10.0), (70.0, 10.0), (35.0, 10.0)])

    part, defect = parts.inside_join(defects)
    for p, d in zip(part.tolist(), defect.tolist(), strict=True):
        print(f"defect {d} lies on the part with label {parts.labels[p]}")

    elsewhere = np.setdiff1d(np.arange(len(defects)), defect)
    distances = np.array(
        [shape.distance(defects[elsewhere]) for shape in parts if isinstance(shape, cntr.Region)]
    )
    for d, nearest in zip(elsewhere.tolist(), distances.min(axis=0).tolist(), strict=True):
        print(f"defect {d} is {nearest} away from the nearest edge")


if __name__ == "__main__":
    main()
