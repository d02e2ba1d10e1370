# What the stub of the extension takes from the package itself, which cannot be imported while it is
# being made.
__prefix__:
    \from cntr._results import Alignment, Circle, Deviation, Ellipse, Rectangle, Vertex, Vertices
