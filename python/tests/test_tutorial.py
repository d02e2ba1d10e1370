# SPDX-License-Identifier: MIT
"""The tutorial: each cell still gives what it shows."""

import pathlib

import nbclient
import nbformat
import pytest

TUTORIAL = pathlib.Path(__file__).parent.parent / "docs" / "tutorial.ipynb"


def shown(notebook: nbformat.NotebookNode) -> list[list[object]]:
    """Of each cell of code what it prints and the text of its value: pictures differ."""
    return [
        [
            output["text"] if output["output_type"] == "stream" else output["data"]["text/plain"]
            for output in cell["outputs"]
        ]
        for cell in notebook["cells"]
        if cell["cell_type"] == "code"
    ]


@pytest.mark.filterwarnings("default")
def test_the_tutorial_gives_what_it_shows(tmp_path: pathlib.Path) -> None:
    notebook = nbformat.read(TUTORIAL, as_version=4)
    expected = shown(notebook)
    assert sum(len(outputs) for outputs in expected) > 10
    nbclient.NotebookClient(
        notebook, timeout=300, resources={"metadata": {"path": str(tmp_path)}}
    ).execute()
    assert shown(notebook) == expected
