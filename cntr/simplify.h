// SPDX-License-Identifier: MIT
//
// The same curve with fewer vertices, or with vertices at equal steps.

#pragma once

#include <cstddef>
#include <vector>

#include <cntr/contour.h>

/// @addtogroup descriptors
/// @{

/// The contour with only those vertices that are needed to stay within `tolerance` of it: no point
/// of the contour is farther than that from the result, in the unit of the coordinates. Kept
/// vertices keep their bits and their order, label and closed flag stay; edge elements are dropped.
///
/// An open contour keeps both ends, a closed one the two vertices farthest apart (the first such
/// pair); of the vertices between two that are kept, the one farthest from the segment between them
/// is kept when it is farther than `tolerance` (the first of several), and so on (Douglas-Peucker).
/// Nothing crosses that did not cross before: an edge that would meet another one, even in a single
/// point, gets more of its vertices back until it no longer does or is an edge of the contour
/// itself. A closed contour with an area thus keeps at least three vertices. With tolerance 0,
/// vertices that lie on the segment between their neighbours are dropped.
///
/// A contour without vertices gives one without vertices; of vertices that all lie in one place the
/// first stays. A vertex with a coordinate that is not finite is kept. Whether edges meet is
/// decided without rounding errors for coordinates that are 0 or from 1e-140 to 1e140 in absolute
/// value. Throws qcContourDefs::BadParams "tolerance is negative or not finite" when it is.
///
/// O(n log n) for most contours, O(n^2) where the farthest vertices are near the ends of their
/// chains; each round of keeping more takes O(k log k) for k vertices. D. H. Douglas, T. K.
/// Peucker, "Algorithms for the reduction of the number of points required to represent a digitized
/// line or its caricature", Cartographica 10 (1973).
CNTR_EXPORT qcContour qf_Simplify(const qcContour& contour, double tolerance);

/// The same for several rings together, such as an outline and its holes: no ring comes to cross
/// another, or to lie on the other side of one, as a small hole near its outline might. Every ring
/// stays, in the same order.
CNTR_EXPORT std::vector<std::vector<qcVector<2>>> qf_Simplify(
    const std::vector<std::vector<qcVector<2>>>& rings, double tolerance);

/// The numbers of the vertices that stay, ascending, for several open and closed contours together:
/// for callers that keep something for each vertex.
CNTR_EXPORT std::vector<std::vector<std::size_t>> qf_KeptVertices(
    const std::vector<qcContour>& contours, double tolerance);

/// The contour with vertices at equal steps along it of at most `spacing`: as few as possible, but
/// at least three on a closed contour. The first vertex stays, and so does the last one of an open
/// contour; corners are cut. Label and closed flag stay; edge elements are dropped.
///
/// A contour of length 0 gives its first vertex, one without vertices gives none. Throws
/// qcContourDefs::BadParams "spacing is not positive" when it is 0, negative or NaN, "contour has
/// no finite length", and "spacing is too small for the contour" for more than 2^31 steps. O(n + m)
/// for m steps.
CNTR_EXPORT qcContour qf_Resample(const qcContour& contour, double spacing);

/// @}
