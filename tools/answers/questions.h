// SPDX-License-Identifier: MIT
//
// The questions that `cntr query` asks of every feature. Each answers in rows of its own columns.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include <cntrformats/feature.h>
#include <tools/report/rows.h>

namespace tool {

struct Question {
  std::vector<std::string> columns;
  /// Any number of rows for a feature that has parts.
  std::function<std::vector<Row>(const formats::Geometry&)> answer;
};

/// One row: whether the point is inside, by qf_Inside(); its distance from the nearest point of a
/// boundary (0 for a point inside when `zeroIfInside`); that point; and the nearest vertex.
Question askPoint(const qcVector<2>& point, bool withHoles, bool zeroIfInside);

/// A point of a list and its name there.
struct NamedPoint {
  std::string name;
  qcVector<2> position;
};

/// A row for each point: its name and coordinates, followed by the answers of askPoint().
Question askPoints(const std::vector<NamedPoint>& points, bool withHoles, bool zeroIfInside);

/// A row for each crossing, in order along the segment from `from`.
Question askSegment(const qcVector<2>& from, const qcVector<2>& to, bool withHoles,
                    bool countEndTouches);

/// One row: the vertex of an outline that is farthest in a direction, given in degrees from the x
/// axis towards the y axis.
Question askDirection(double degrees);

}  // namespace tool
