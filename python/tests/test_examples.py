# SPDX-License-Identifier: MIT
"""The examples as programs of their own."""

import pathlib
import subprocess
import sys

import cv2
import pytest
from skimage import data

EXAMPLES = pathlib.Path(__file__).parent.parent / "examples"


def run(name: str, *arguments: str) -> subprocess.CompletedProcess[str]:
    return subprocess.run(
        [sys.executable, EXAMPLES / name, *arguments], capture_output=True, text=True, check=False
    )


def test_each_example_has_a_test() -> None:
    tested = {"defects_on_parts.py", "measure_photograph.py"}
    assert {path.name for path in EXAMPLES.glob("*.py")} == tested


def test_defects_are_found_on_parts_and_beside_them() -> None:
    done = run("defects_on_parts.py")
    assert done.stderr == ""
    assert done.stdout == (
        "defect 0 lies on the part with label 1\n"
        "defect 2 lies on the part with label 2\n"
        "defect 1 is 5.0 away from the nearest edge\n"
        "defect 3 is 5.0 away from the nearest edge\n"
    )


@pytest.fixture
def photograph(tmp_path: pathlib.Path) -> pathlib.Path:
    path = tmp_path / "coins.png"
    assert cv2.imwrite(str(path), data.coins())
    return path


def test_a_photograph_becomes_a_table(photograph: pathlib.Path, tmp_path: pathlib.Path) -> None:
    table = tmp_path / "parts.csv"
    done = run("measure_photograph.py", str(photograph), str(table))
    assert done.stderr == ""
    lines = table.read_text().splitlines()
    assert lines[0] == "part,area,centre_x,centre_y,holes,solidity,status,note"
    large = len(lines) - 1
    assert done.stdout.startswith(f"{large} of ")
    assert 20 <= large < int(done.stdout.split()[2])


def test_what_is_no_picture_is_said(tmp_path: pathlib.Path) -> None:
    path = tmp_path / "note.txt"
    path.write_text("no picture")
    done = run("measure_photograph.py", str(path))
    assert done.returncode == 1
    assert done.stderr == f"{path} is no picture that OpenCV reads\n"
