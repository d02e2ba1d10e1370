// SPDX-License-Identifier: MIT
//
// What all formats have in common about rings and lines.

#pragma once

#include <string>

#include <cntrformats/errors.h>
#include <cntrformats/feature.h>

namespace formats {

// These throw FeatureError, naming `place`, for fewer than 3 vertices in a ring or 2 in a line.

/// The vertices of a ring that may repeat its first point at the end.
Points asRing(Points points, const std::string& place);
void requireRing(const Points& points, const std::string& place);
/// The vertices of a line.
Points asLine(Points points, const std::string& place);

/// A geometry without vertices: not a feature, but collections skip it.
class EmptyGeometry : public FeatureError {
 public:
  using FeatureError::FeatureError;
};

/// Appends the parts of a member of a collection. Throws FeatureError if one has outlines and the
/// other lines.
void addParts(Geometry& collection, Geometry&& member);

/// The area of a ring, positive when it runs from the x axis towards the y axis.
double signedArea(const Points& ring);

}  // namespace formats
