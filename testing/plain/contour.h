// SPDX-License-Identifier: MIT
//
// A contour in plain form: its vertices and whether the last joins the first. It has the one walk
// over the edges that every answer about contours (measures, circle, edges, extents) shares.

#pragma once

#include <vector>

#include <testing/plain/geometry.h>

namespace plain {

struct Contour {
  Points points;
  bool closed = true;
};

/// Throws `emptyContour` below two vertices.
void checkEmptyContour(const Contour& contour);

/// Every edge: the closing one first if closed, then from each vertex to the next.
std::vector<Segment> edgesOf(const Contour& contour);

}  // namespace plain
