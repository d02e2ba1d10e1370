# SPDX-License-Identifier: MIT
"""The contours of the glyphs of fonts, as outlines: real data of which a computer has plenty."""

from collections.abc import Iterable, Iterator
from pathlib import Path
from typing import Any

import numpy as np
import numpy.typing as npt
import pyarrow as pa
from fontTools.pens.basePen import BasePen
from fontTools.ttLib import TTFont
from pyspark.sql import DataFrame, SparkSession

FONTS = Path("/usr/share/fonts/opentype/noto")
# Glyphs that a task reads at once.
PER_TASK = 2048
# Edges that a curve becomes.
EDGES = 6
STEPS = np.linspace(0.0, 1.0, EDGES + 1)[1:]
# What each of the four points of a cubic counts for at each step.
CUBIC = np.stack(
    [(1 - STEPS) ** 3, 3 * STEPS * (1 - STEPS) ** 2, 3 * STEPS**2 * (1 - STEPS), STEPS**3], axis=1
)

Floats = npt.NDArray[np.float64]


class ContourPen(BasePen):  # type: ignore[misc]
    """Collects each contour as a list of vertices; a quadratic curve arrives as a cubic one."""

    def __init__(self, glyphs: Any) -> None:
        super().__init__(glyphs)
        self.contours: list[list[Floats]] = []

    def _moveTo(self, point: tuple[float, float]) -> None:
        self.contours.append([np.array([point], float)])

    def _lineTo(self, point: tuple[float, float]) -> None:
        self.contours[-1].append(np.array([point], float))

    def _curveToOne(self, *points: tuple[float, float]) -> None:
        begin = self._getCurrentPoint()
        self.contours[-1].append(CUBIC @ np.array([begin, *points], float))


def polygon_of(contour: list[Floats]) -> bytes:
    """WKB of a contour, whose first vertex may be there twice."""
    ring = np.concatenate([*contour, contour[0]])
    header = np.array([(1, 3, 1, len(ring))], "u1,<u4,<u4,<u4")
    return header.tobytes() + ring.astype("<f8").tobytes()


def contours_of(file: str, begin: int) -> pa.RecordBatch:
    """Of some glyphs from a number on."""
    font = TTFont(file, fontNumber=0, lazy=True)
    glyphs = font.getGlyphSet()
    found: dict[str, list[Any]] = {"font": [], "glyph": [], "contour": [], "geometry": []}
    for name in font.getGlyphOrder()[begin : begin + PER_TASK]:
        pen = ContourPen(glyphs)
        glyphs[name].draw(pen)
        for number, contour in enumerate(pen.contours):
            found["font"].append(Path(file).stem)
            found["glyph"].append(name)
            found["contour"].append(number)
            found["geometry"].append(polygon_of(contour))
    schema = pa.schema(
        {"font": pa.string(), "glyph": pa.string(), "contour": pa.int32(), "geometry": pa.binary()}
    )
    return pa.RecordBatch.from_pydict(found, schema)


def glyph_frame(spark: SparkSession, fonts: int) -> DataFrame:
    """`font`, `glyph`, `contour` and `geometry` of the first fonts of the package."""
    files = sorted(FONTS.glob("*.ttc"))[:fonts]
    if not files:
        raise FileNotFoundError(f"there are no fonts in {FONTS}; Debian has them in fonts-noto-cjk")
    pieces = [
        (str(file), begin)
        for file in files
        for begin in range(0, TTFont(file, fontNumber=0, lazy=True)["maxp"].numGlyphs, PER_TASK)
    ]

    def read(batches: Iterable[pa.RecordBatch]) -> Iterator[pa.RecordBatch]:
        for batch in batches:
            for piece in batch.to_pylist():
                yield contours_of(piece["file"], piece["begin"])

    tasks = spark.createDataFrame(pieces, "file string, begin long").repartition(len(pieces))
    return tasks.mapInArrow(read, "font string, glyph string, contour int, geometry binary")
