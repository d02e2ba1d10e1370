// SPDX-License-Identifier: MIT
//
// Points, lines, segments and boxes in the plainest arithmetic. This folder answers every question
// of the library a second time: no index, nothing remembered, no library function, only the
// definition spelled out. Property tests ask both and require the same bits. The other files here
// (measures, circle, edges, extents, moments, ellipse, region, repair, set) build on this one.
//
// NaN never throws or hangs: comparisons are written so that NaN loses, and sorting puts it last
// (`nanLast`).

#pragma once

#include <vector>

#include <platform/core/vector.h>

namespace plain {

using Point = qcVector<2>;
using Points = std::vector<Point>;

Point plus(const Point& a, const Point& b);
Point minus(const Point& a, const Point& b);
Point times(const Point& a, double factor);
double dot(const Point& a, const Point& b);
/// a.x b.y - a.y b.x.
double cross(const Point& a, const Point& b);
double len(const Point& a);
double distance(const Point& a, const Point& b);
/// The direction of `a` at length 1; a vector of length 0 gives (0, 0).
Point unit(const Point& a);
/// Exact equality; the two zeros are equal.
bool same(const Point& a, const Point& b);
/// Both coordinates agree within `eps`.
bool realEq(const Point& a, const Point& b, double eps);
/// The angle in [0, 2 pi).
double norm(double angle);
/// Ascending order of numbers with every NaN after all others.
bool nanLast(double a, double b);

/// The line through `pos` along `dir`, of any length.
struct Line {
  Point pos{0.0, 0.0};
  Point dir{0.0, 0.0};
};

/// Foot of the perpendicular from `p`; a direction of length 0 gives the line's point.
Point proj(const Line& line, const Point& p);
/// Distance from `p` to the line; a direction of length 0 gives the distance to the line's point.
double distToPoint(const Line& line, const Point& p);
bool isParallel(const Line& first, const Line& second);
/// Where two lines meet; without a crossing, the point of `first` nearest to the second's point.
Point intersect(const Line& first, const Line& second);

struct Segment {
  Point a{0.0, 0.0};
  Point b{0.0, 0.0};
};

Line lineOf(const Segment& segment);
/// Distance from `p` to the closed segment.
double distToPoint(const Segment& segment, const Point& p);
/// The point of the segment nearest to `p`.
Point nearestPoint(const Segment& segment, const Point& p);

/// An axis-aligned box, including its border.
struct Box {
  double minX = 0.0;
  double minY = 0.0;
  double maxX = 0.0;
  double maxY = 0.0;
};

bool operator==(const Box& a, const Box& b);
Box boxOf(const Point& p);
/// The smallest box around both; a NaN coordinate of `b` is ignored.
Box enclose(const Box& a, const Box& b);
Box boxOf(const Segment& segment);
bool within(const Box& box, const Point& p);
/// Boxes that touch overlap.
bool overlap(const Box& box, const Box& other);

}  // namespace plain
