# SPDX-License-Identifier: MIT
"""Measures the bright parts of a photograph, as OpenCV finds them, and writes a table as CSV.

python measure_photograph.py PHOTOGRAPH [TABLE.csv]
"""

import sys

import cv2

import cntr


def outlines_in(photograph: str) -> cntr.Outlines:
    """The outlines of what is brighter than the rest, with their holes, in pixels."""
    image = cv2.imread(photograph, cv2.IMREAD_GRAYSCALE)
    if image is None:
        sys.exit(f"{photograph} is no picture that OpenCV reads")
    _, binary = cv2.threshold(image, 0, 255, cv2.THRESH_BINARY + cv2.THRESH_OTSU)
    contours, hierarchy = cv2.findContours(binary, cv2.RETR_CCOMP, cv2.CHAIN_APPROX_NONE)
    return cntr.Outlines.from_opencv(contours, hierarchy)


def main(arguments: list[str]) -> None:
    """Reads the command line."""
    if len(arguments) not in (1, 2):
        sys.exit(__doc__)
    outlines = outlines_in(arguments[0])
    table = outlines.measure(["area", "centre_x", "centre_y", "holes", "solidity"]).to_pandas()
    parts = table[table["area"] > 100]
    print(f"{len(parts)} of {len(table)} parts are larger than 100 square pixels")
    parts.to_csv(arguments[1] if len(arguments) == 2 else sys.stdout, index_label="part")


if __name__ == "__main__":
    main(sys.argv[1:])
