# SPDX-License-Identifier: MIT
"""Outlines and points drawn from a seed, as WKB, and what one machine answers about them."""

import hashlib
import struct

import numpy as np
import numpy.typing as npt
import pyarrow as pa

import cntr


def polygon(*rings: npt.NDArray[np.float64]) -> bytes:
    """Rings without a repeated last vertex, as WKB."""
    closed = [np.concatenate([ring, ring[:1]]) for ring in rings]
    parts = [struct.pack("<I", len(ring)) + ring.astype("<f8").tobytes() for ring in closed]
    return struct.pack("<BII", 1, 3, len(rings)) + b"".join(parts)


def star(
    corners: int, depth: float, centre: tuple[float, float], phase: float = 0.0, size: float = 1.0
) -> bytes:
    """A star whose inner corners lie `depth` of the radius inside; crosses itself beyond 1."""
    angle = phase + np.arange(2 * corners) * (np.pi / corners)
    radius = size * np.where(np.arange(2 * corners) % 2, 1.0 - depth, 1.0)
    return polygon(
        np.stack([centre[0] + radius * np.cos(angle), centre[1] + radius * np.sin(angle)], axis=1)
    )


# A geometry that a child process is to die of, wherever it is met.
DEADLY = star(7, 0.3, (-500.0, -500.0))


def stars(count: int, seed: int, extent: float = 100.0) -> list[bytes]:
    """Stars anywhere in a square, some of which cross themselves."""
    random = np.random.default_rng(seed)
    corners = random.integers(3, 12, count)
    depth = random.uniform(0.0, 1.5, count)
    centre = random.uniform(0.0, extent, (count, 2))
    phase = random.uniform(0.0, 6.0, count)
    return [
        star(int(n), d, (x, y), p)
        for n, d, (x, y), p in zip(corners, depth, centre.tolist(), phase, strict=True)
    ]


def hard_rows() -> list[bytes | None]:
    """No outlines: null, empty, cut, garbage, another geometry, and a coordinate that is NaN."""
    whole = star(5, 0.2, (3.0, 4.0))
    return [
        None,
        b"",
        struct.pack("<BII", 1, 3, 0),
        whole[:60],
        b"\xff" * 40,
        struct.pack("<BIdd", 1, 1, 2.0, 3.0),
        polygon(np.array([[0.0, 0.0], [1.0, np.nan], [1.0, 1.0]])),
    ]


def table_of(geometries: list[bytes | None] | list[bytes]) -> pa.Table:
    numbers = pa.array(range(len(geometries)), pa.int64())
    return pa.table({"id": numbers, "geometry": pa.array(geometries, pa.binary())})


def measured_here(geometries: list[bytes | None] | list[bytes], columns: list[str]) -> pa.Table:
    """One machine's answer, with `id`."""
    outlines = cntr.Outlines.from_wkb(pa.array(geometries, pa.binary()))
    answer = pa.table(outlines.measure(columns))
    return answer.add_column(0, "id", pa.array(range(len(geometries)), pa.int64()))


def sorted_hash(table: pa.Table, columns: list[str], keys: list[str]) -> str:
    """Of all bits of these columns, the rows sorted by the keys."""
    ordered = table.select(columns).sort_by([(key, "ascending") for key in keys]).combine_chunks()
    digest = hashlib.sha256(str(ordered.num_rows).encode())
    for column in ordered.columns:
        numbers = column.combine_chunks()
        if pa.types.is_floating(numbers.type):
            numbers = numbers.view(pa.int64())
        digest.update(repr(numbers.to_pylist()).encode())
    return digest.hexdigest()
