# SPDX-License-Identifier: MIT
"""The examples of the documents: what is printed is what stands below them."""

import contextlib
import io
import pathlib
import re

import pytest

PAGES = [
    page
    for place in (".", "docs")
    for page in sorted((pathlib.Path(__file__).parent.parent / place).glob("*.md"))
]
BLOCK = re.compile(r"^```(python|output)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


@pytest.mark.parametrize("page", PAGES, ids=lambda page: page.stem)
def test_the_examples_of_a_page_print_what_it_shows(
    page: pathlib.Path, tmp_path: pathlib.Path
) -> None:
    """Blocks of a page follow one another in one program, which runs in a directory of its own."""
    blocks = BLOCK.findall(page.read_text())
    assert blocks, f"{page.name} shows no example"
    names: dict[str, object] = {}
    printed = ""
    with contextlib.chdir(tmp_path):
        for language, text in blocks:
            if language == "output":
                assert printed == text
                printed = ""
                continue
            assert printed == "", "an example prints what the page does not show"
            stdout = io.StringIO()
            with contextlib.redirect_stdout(stdout):
                exec(compile(text, page.name, "exec"), names)
            printed = stdout.getvalue()
    assert printed == "", "an example prints what the page does not show"
