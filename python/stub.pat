# What the stub of the extension takes from the package itself, which cannot be imported while it is
# being made.
__prefix__:
    \from cntr._results import Alignment, Circle, Deviation, Ellipse, Rectangle, Vertex, Vertices

# Shapes are compared by their vertices and have no hash.
__hash__:
    \from typing import ClassVar
    __hash__: ClassVar[None]  # type: ignore[assignment]
