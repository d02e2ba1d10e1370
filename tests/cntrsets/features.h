// SPDX-License-Identifier: MIT
//
// Features for tests: random ones that cross, touch and overlap, what the literal definitions need
// of them, and whether a feature is in normal form.

#pragma once

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <cntrsets/exact/predicates.h>
#include <cntrsets/sets.h>
#include <cntrsets/validity.h>
#include <gtest/gtest.h>
#include <testing/plain/filled.h>
#include <testing/shapes/shapes.h>

namespace features {

using Feature = std::vector<qcRings>;
using Points = std::vector<qcVector<2>>;

inline const Points square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
/// Crosses itself.
inline const Points bowTie{{0, 0}, {4, 4}, {4, 0}, {0, 4}};

inline Points box(double x0, double y0, double x1, double y1) {
  return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

inline Points reversed(Points ring) {
  std::reverse(ring.begin(), ring.end());
  return ring;
}

inline plain::Parts plainOf(const Feature& feature) {
  plain::Parts parts;
  for (const qcRings& part : feature) parts.push_back({part.outline, part.holes});
  return parts;
}

inline std::vector<Points> ringsOf(const Feature& feature) {
  std::vector<Points> rings;
  for (const qcRings& part : feature) {
    rings.push_back(part.outline);
    rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  }
  return rings;
}

inline double signedArea(const Points& ring) {
  double doubled = 0.0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const qcVector<2> a = ring[i] - ring[0];
    const qcVector<2> b = ring[(i + 1) % ring.size()] - ring[0];
    doubled += a.x() * b.y() - a.y() * b.x();
  }
  return 0.5 * doubled;
}

/// The area of rings whose outlines run counter-clockwise and whose holes run clockwise.
inline double areaOf(const Feature& feature) {
  double area = 0.0;
  for (const Points& ring : ringsOf(feature)) area += signedArea(ring);
  return area;
}

inline double lengthOf(const Feature& feature) {
  double length = 0.0;
  for (const Points& ring : ringsOf(feature))
    for (std::size_t i = 0; i < ring.size(); ++i)
      length += ring[i].distance(ring[(i + 1) % ring.size()]);
  return length;
}

/// The unit in the last place of the largest coordinate.
inline double unitOf(const Feature& feature) {
  double largest = 0.0;
  for (const Points& ring : ringsOf(feature))
    for (const qcVector<2>& p : ring)
      largest = std::max({largest, std::abs(p.x()), std::abs(p.y())});
  return std::nextafter(largest, INFINITY) - largest;
}

inline bool isBefore(const qcVector<2>& a, const qcVector<2>& b) {
  return std::pair(a.x(), a.y()) < std::pair(b.x(), b.y());
}

/// The direction of a ring that starts at its lowest-leftmost vertex: 1 for counter-clockwise.
inline int turnAtStart(const Points& ring) {
  return cntr::sets::orientation(ring.back(), ring[0], ring[1]);
}

/// The normal form as far as single rings show it; whether they cross is for flawOf() to tell.
inline void expectNormalForm(const Feature& feature) {
  EXPECT_EQ(cntr::sets::flawOf(feature), "");
  for (const Points& ring : ringsOf(feature))
    EXPECT_EQ(std::min_element(ring.begin(), ring.end(), isBefore), ring.begin());
  for (std::size_t i = 0; i < feature.size(); ++i) {
    EXPECT_EQ(turnAtStart(feature[i].outline), 1);
    for (const Points& hole : feature[i].holes) EXPECT_EQ(turnAtStart(hole), -1);
    if (i > 0) {
      EXPECT_FALSE(isBefore(feature[i].outline[0], feature[i - 1].outline[0]));
    }
  }
}

/// A feature of a few rings, mostly with small integer coordinates so that vertices meet vertices
/// and edges, now and then with any coordinates.
inline Feature anyFeature(std::uint64_t seed) {
  shapes::Random random(seed);
  const auto ring = [&]() -> Points {
    switch (random.below(6)) {
      case 0:
        return shapes::gridWalk(random, 4 + random.below(24));
      case 1:
      case 2:
        return shapes::gridPoints(random, 3 + random.below(12), 3 + random.below(12));
      case 3:
        return shapes::closedWalk(random, 3 + random.below(20));
      case 4:
        return shapes::anyFinite(random.next(), 20).points;
      default:
        return shapes::cloud(random, 3 + random.below(12));
    }
  };
  Feature feature(1 + random.below(3));
  for (qcRings& part : feature) {
    part.outline = ring();
    for (std::size_t holes = random.below(3); holes > 0; --holes) part.holes.push_back(ring());
  }
  return feature;
}

}  // namespace features
