// SPDX-License-Identifier: MIT
//
// How often the ray from a point crosses a path, by scan and by index. The same question asked of a
// region is in tests/cntr/model/region_queries_test.cpp, the ray's direction in
// cleardirection_test.cpp.

#include <cntr/compute/containment.h>

#include <testing/plain/region.h>
#include <testing/twin/repetitions.h>
#include <tests/cntr/figures.h>

#include "subject.h"

namespace {

using figures::square;
using subject::forEachShape;
using subject::Point;
using subject::Points;
using subject::Subject;

/// The answer of the scan, which must be that of the index as well.
std::size_t count(const Subject& s, const Point& p, bool bothDirections) {
  const double reach = 2.0 * cntr::compute::radiusFromFirst(s.points());
  const std::size_t scanned = cntr::compute::rayCrossings(s.scanned(), reach, p, bothDirections);
  EXPECT_EQ(cntr::compute::rayCrossings(s.indexed(), reach, p, bothDirections), scanned)
      << "by index, (" << p.x() << ", " << p.y() << ")";
  return scanned;
}

TEST(RayCrossingsTest, AreOddInside) {
  const Subject s(square(4), true);
  EXPECT_EQ(count(s, {1, 1}, false), 1U);
  EXPECT_EQ(count(s, {3, 2}, true), 1U);
  const Subject u({{0, 0}, {6, 0}, {6, 6}, {4, 6}, {4, 2}, {2, 2}, {2, 6}, {0, 6}}, true);
  EXPECT_EQ(count(u, {3, 4}, true) % 2, 0U) << "between the legs";
  EXPECT_EQ(count(u, {5, 4}, true) % 2, 1U);
}

TEST(RayCrossingsTest, AreNoneOutsideTheBox) {
  const Subject s(square(4), true);
  EXPECT_EQ(count(s, {4.0000001, 2}, false), 0U);
  EXPECT_EQ(count(s, {-0.5e-6, 0}, false), 0U) << "though within 1e-6 of a vertex";
  EXPECT_EQ(count(s, {2, infinity}, false), 0U);
  EXPECT_EQ(count(s, {notANumber, 2}, false), 0U);
}

TEST(RayCrossingsTest, AreOneWithinAMillionthOfAVertex) {
  const Subject s({{0, 0}, {8, 0}, {8, 8}, {4, 4}, {0, 8}}, true);
  for (const double off : {0.0, 0.5e-6, 0.999e-6}) {
    EXPECT_EQ(count(s, {4, 4 + off}, false), 1U) << off;
    EXPECT_EQ(count(s, {4, 4 + off}, true), 1U) << off;
  }
  EXPECT_EQ(count(s, {4, 4 + 1.1e-6}, true), 0U);
}

TEST(RayCrossingsTest, OfOneVertexAreOneAtIt) {
  EXPECT_EQ(count(Subject({{3, 3}}, true), {3, 3}, true), 1U);
  EXPECT_EQ(count(Subject(Points(40, {3, 3}), true), {3, 3}, false), 1U);
  EXPECT_EQ(count(Subject({{3, 3}}, true), {3, 4}, true), 0U);
}

TEST(RayCrossingsTest, AreOneWhereAVertexIsAtNoFiniteDistance) {
  EXPECT_EQ(count(Subject({{0, 0}, {4, 0}, {4, 4}, {notANumber, 1}}, true), {3, 1}, false), 1U);
}

TEST(RayCrossingsTest, InBothDirectionsAreTheFewer) {
  // From near the left side the ray between the far vertices goes through both legs; the other way
  // there is nothing.
  forEachShape(repetitions(200), shapes::anyFinite, 3, 40,
               [](const Subject& s, shapes::Random& random) {
                 if (!s.path().closed) return;
                 const Point p = shapes::queryPoint(random, s.points());
                 EXPECT_LE(count(s, p, true), count(s, p, false));
               });
}

TEST(RayCrossingsTest, AreThoseOfThePlainDefinition) {
  forEachShape(repetitions(600), shapes::any, 3, 120, [](const Subject& s, shapes::Random& random) {
    const Subject closed(s.points(), true);
    for (int i = 0; i < 4; ++i) {
      const Point p = shapes::queryPoint(random, s.points());
      for (const bool both : {false, true}) {
        EXPECT_EQ(static_cast<long>(count(closed, p, both)),
                  plain::insideCount({s.points(), {}}, p, both));
      }
    }
  });
}

}  // namespace
