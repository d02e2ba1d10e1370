# SPDX-License-Identifier: MIT
"""Runs the library in a child process, so that an outline that crashes it does no further harm.

Tables are passed through shared memory (`memory`) without being copied on the way to the child; two
pipes say whose turn it is (`parent` and `child`). `tasks` holds what the child can do, `bisection`
what happens when it dies. Apart from numpy and pyarrow no packages are imported, in particular not
pandas, so that a child starts quickly and stays small.
"""
