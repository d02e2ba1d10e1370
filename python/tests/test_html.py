# SPDX-License-Identifier: MIT
"""Outlines in notebooks."""

import base64
import re
import xml.etree.ElementTree as ElementTree

import cntr

SQUARE = [(0, 0), (10, 0), (10, 10), (0, 10)]


def shown(table: cntr.Outlines) -> list[list[str]]:
    """The texts of the cells of each row; of a picture its SVG."""
    body = ElementTree.fromstring(
        "<div>" + re.sub(r"(<img[^>]*)>", r"\1/>", table._repr_html_()) + "</div>"
    )
    rows = []
    for row in body.iter("tr"):
        cells = []
        for cell in row.iter("td"):
            image = cell.find("img")
            if image is None:
                cells.append(cell.text or "")
            else:
                cells.append(base64.b64decode(image.attrib["src"].split(",")[1]).decode())
        rows.append(cells)
    return rows[1:]


def test_each_feature_has_a_row_with_its_picture() -> None:
    rows = shown(
        cntr.Outlines.from_regions(
            [
                cntr.Region(SQUARE, holes=[[(1, 1), (1, 2), (2, 2)]], label=7),
                cntr.Contour(SQUARE, closed=False),
                cntr.RegionSet([cntr.Region(SQUARE), cntr.Region([(20, 0), (30, 0), (20, 5)])]),
                cntr.Contour([]),
            ]
        )
    )
    assert [row[0] for row in rows] == ["0", "1", "2", "3"]
    assert [row[2:] for row in rows] == [
        ["area", "7", "4"],
        ["line", "0", "4"],
        ["area of 2 parts", "", "7"],
        ["empty", "", ""],
    ]
    for row in rows[:3]:
        assert ElementTree.fromstring(row[1].encode()).tag.endswith("svg")
    assert rows[3][1] == ""


def test_only_the_first_features_are_shown() -> None:
    table = cntr.Outlines.from_regions([cntr.Region(SQUARE)] * 25)
    rows = shown(table)
    assert len(rows) == 11
    assert rows[-1] == ["and 15 more"]
    assert len(shown(table[:10])) == 10
    assert shown(table[:0]) == []


def test_what_is_wrong_with_a_feature_is_escaped() -> None:
    table = cntr.Outlines.from_geojson('{"type": "Feature", "geometry": {"type": "<b>"}}')
    assert "<b>" not in table._repr_html_()
    assert shown(table)[0][2] == table.problems[0]


def test_the_picture_of_a_feature_shows_all_its_lines() -> None:
    lines = [(0.0, 0.0), (1.0, 1.0), (5.0, 5.0), (7.0, 3.0)]
    table = cntr.Outlines.from_ragged(lines, [0, 2, 4], [0, 2], kind="lines")
    ((_, picture, what, _, vertices),) = shown(table)
    assert (what, vertices) == ("line of 2 parts", "4")
    assert picture != cntr.Contour(lines[:2], closed=False)._repr_svg_()
    one = cntr.Contour(lines[:2], closed=False)._repr_svg_().count("<path")
    assert picture.count("<path") == 2 * one
