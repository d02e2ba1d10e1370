# SPDX-License-Identifier: MIT
"""Answers for tables of outlines from a child process, which may die of one without further harm.

Tables lie in memory that both processes see (`memory`), so that nothing is copied on its way into
the child; two pipes tell whose turn it is (`parent` and `child`). `tasks` is what the child does,
`bisection` what becomes of a death. Of other packages only numpy and pyarrow are imported, not
pandas, so that a child starts quickly and stays small.
"""
