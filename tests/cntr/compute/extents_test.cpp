// SPDX-License-Identifier: MIT
//
// How far vertices reach. The same questions asked of a contour are in
// tests/cntr/model/contour_extents_test.cpp.

#include <cntr/compute/extents.h>

#include <cmath>

#include <testing/plain/extents.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>

#include "subject.h"

namespace {

using cntr::compute::boundingBox;
using cntr::compute::isIdentity;
using cntr::compute::radiusFromFirst;
using cntr::plane::Box;
using same::same;
using subject::forEachShape;
using subject::Points;
using subject::Subject;

bool sameBox(const Box& box, const plain::Box& expected) {
  return same(box.minX, expected.minX) && same(box.minY, expected.minY) &&
         same(box.maxX, expected.maxX) && same(box.maxY, expected.maxY);
}

TEST(BoundingBoxTest, HoldsAllVertices) {
  EXPECT_TRUE(sameBox(boundingBox(Points{{3, 4}}), {3, 4, 3, 4}));
  EXPECT_TRUE(sameBox(boundingBox(Points{{3, 4}, {-1, 5}, {2, -7}}), {-1, -7, 3, 5}));
  EXPECT_TRUE(sameBox(boundingBox(Points(4, {1, 2})), {1, 2, 1, 2}));
  EXPECT_TRUE(sameBox(boundingBox(Points{{0, 0}, {infinity, 1}, {1, -infinity}}),
                      {0, -infinity, infinity, 1}));
}

TEST(BoundingBoxTest, KeepsANanOfTheFirstVertexAndPassesOverLaterOnes) {
  EXPECT_TRUE(
      sameBox(boundingBox(Points{{notANumber, 4}, {1, 5}}), {notANumber, 4, notANumber, 5}));
  EXPECT_TRUE(sameBox(boundingBox(Points{{1, 4}, {notANumber, 5}, {2, notANumber}}), {1, 4, 2, 5}));
}

TEST(BoundingBoxTest, OfMappedVerticesIsThatOfTheirImages) {
  const qcXform<2> quarterTurn(qcMatrix<2>(0, -1, 1, 0), {10, 20});
  EXPECT_TRUE(sameBox(boundingBox(Points{{3, 4}}, quarterTurn), {6, 23, 6, 23}));
  EXPECT_TRUE(sameBox(boundingBox(Points{{3, 4}, {-1, 5}, {2, -7}}, quarterTurn), {5, 19, 17, 23}));
}

TEST(BoundingBoxTest, IsThatOfThePlainDefinition) {
  forEachShape(repetitions(400), shapes::any, 2, 40, [](const Subject& s, shapes::Random& random) {
    EXPECT_TRUE(sameBox(boundingBox(s.points()), plain::encloseRect(s.plain(), plain::identity())));
    const double e[] = {random.uniform(-2, 2), random.uniform(-2, 2), random.uniform(-2, 2),
                        random.uniform(-2, 2)};
    const qcVector<2> shift(random.uniform(-9, 9), random.uniform(-9, 9));
    EXPECT_TRUE(
        sameBox(boundingBox(s.points(), qcXform<2>(qcMatrix<2>(e[0], e[1], e[2], e[3]), shift)),
                plain::encloseRect(s.plain(), {{e[0], e[1], e[2], e[3], 0.0}, shift})));
  });
}

TEST(IsIdentityTest, ForgivesOneInTheFifteenthPlace) {
  constexpr double unit = std::numeric_limits<double>::epsilon();
  const auto withElement = [](double value) { return qcXform<2>(qcMatrix<2>(value, 0, 0, 1), {}); };
  const auto withShift = [](double value) { return qcXform<2>(qcMatrix<2>(), {0, value}); };
  EXPECT_TRUE(isIdentity({}));
  EXPECT_TRUE(isIdentity(withElement(1.0 + 4.0 * unit)));
  EXPECT_FALSE(isIdentity(withElement(1.0 + 5.0 * unit)));
  EXPECT_TRUE(isIdentity(withShift(-1e-15)));
  EXPECT_FALSE(isIdentity(withShift(-1.1e-15)));
  EXPECT_FALSE(isIdentity(withElement(notANumber)));
  EXPECT_FALSE(isIdentity(withShift(notANumber)));
}

TEST(RadiusFromFirstTest, IsTheLargestDistanceFromTheFirstVertex) {
  EXPECT_EQ(radiusFromFirst(Points{{3, 4}}), 0.0);
  EXPECT_EQ(radiusFromFirst(Points(3, {3, 4})), 0.0);
  EXPECT_EQ(radiusFromFirst(Points{{0, 0}, {3, 4}, {-1, 0}}), 5.0);
  EXPECT_EQ(radiusFromFirst(Points{{-1, 0}, {-1, 1}, {2, 4}}), 5.0);
}

TEST(RadiusFromFirstTest, PassesOverDistancesThatAreNan) {
  EXPECT_EQ(radiusFromFirst(Points{{0, 0}, {notANumber, 4}, {0, 1}}), 1.0);
  EXPECT_EQ(radiusFromFirst(Points{{notANumber, 0}, {3, 4}}), 0.0);
  EXPECT_EQ(radiusFromFirst(Points{{0, 0}, {3, infinity}}), infinity);
}

TEST(BoundingBoxTest, IsThatOfGrowingVertexByVertexToTheSignOfAZero) {
  const double values[] = {0.0, -0.0, 1.0, -1.0, std::numeric_limits<double>::quiet_NaN()};
  for (std::uint64_t seed = 1; seed <= 5000; ++seed) {
    shapes::Random random(seed);
    const std::size_t kinds = random.chance(0.5) ? 4 : 5;
    std::vector<qcVector<2>> points(1 + random.below(7));
    for (auto& p : points) {
      const double x = values[random.below(kinds)];
      const double y = values[random.below(kinds)];
      p = {x, y};
    }
    cntr::plane::Box expected = cntr::plane::edgeBox(points.front(), points.front());
    for (const auto& p : points) expected.add(p);
    const cntr::plane::Box box = cntr::compute::boundingBox(points);
    EXPECT_TRUE(same::same(box.minX, expected.minX)) << seed;
    EXPECT_TRUE(same::same(box.minY, expected.minY)) << seed;
    EXPECT_TRUE(same::same(box.maxX, expected.maxX)) << seed;
    EXPECT_TRUE(same::same(box.maxY, expected.maxY)) << seed;
  }
}

}  // namespace
