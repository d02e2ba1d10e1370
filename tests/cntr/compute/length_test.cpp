// SPDX-License-Identifier: MIT
//
// Measures of a path as a wire. The same questions asked of a contour are in
// tests/cntr/model/contour_measures_test.cpp.

#include <cntr/compute/length.h>

#include <cmath>

#include <testing/plain/measures.h>
#include <testing/twin/repetitions.h>
#include <testing/twin/same.h>

#include "subject.h"

namespace {

using cntr::compute::length;
using cntr::compute::meanPosition;
using cntr::compute::medianEdgeLength;
using cntr::plane::Path;
using same::same;
using subject::forEachShape;
using subject::Points;
using subject::Subject;

const Points threeFourFive = {{0, 0}, {4, 0}, {4, 3}};

TEST(LengthTest, IsTheSumOverTheEdges) {
  EXPECT_EQ(length({threeFourFive, true}), 12.0);
  EXPECT_EQ(length({threeFourFive, false}), 7.0);
}

TEST(LengthTest, IsZeroWithoutEdgesAndOfEdgesWithoutLength) {
  EXPECT_EQ(length({}), 0.0);
  const Points one = {{3, 4}};
  EXPECT_EQ(length({one, true}), 0.0);
  EXPECT_EQ(length({one, false}), 0.0);
  const Points equal(5, {3, 4});
  EXPECT_EQ(length({equal, true}), 0.0);
}

TEST(LengthTest, GoesThereAndBackOnALineOfTwoVertices) {
  const Points two = {{0, 0}, {3, 4}};
  EXPECT_EQ(length({two, false}), 5.0);
  EXPECT_EQ(length({two, true}), 10.0);
}

TEST(LengthTest, IsInfiniteOrNanWhereAVertexIs) {
  const Points far = {{0, 0}, {infinity, 0}, {1, 1}};
  EXPECT_EQ(length({far, true}), infinity);
  const Points broken = {{0, 0}, {notANumber, 0}, {1, 1}};
  EXPECT_TRUE(std::isnan(length({broken, true})));
}

TEST(MeanPositionTest, WeighsTheMiddleOfEachEdgeByItsLength) {
  const qcVector<2> closed = meanPosition({threeFourFive, true});
  EXPECT_DOUBLE_EQ(closed.x(), 2.5);
  EXPECT_DOUBLE_EQ(closed.y(), 1.0);
  const qcVector<2> open = meanPosition({threeFourFive, false});
  EXPECT_DOUBLE_EQ(open.x(), 20.0 / 7.0);
  EXPECT_DOUBLE_EQ(open.y(), 4.5 / 7.0);
}

TEST(MeanPositionTest, IsNotFiniteWhenNoEdgeHasALength) {
  EXPECT_TRUE(std::isnan(meanPosition({}).x()));
  const Points equal(3, {2, 2});
  EXPECT_FALSE(std::isfinite(meanPosition({equal, true}).x()));
}

TEST(MedianEdgeLengthTest, IsTheUpperOneOfTwoInTheMiddle) {
  EXPECT_EQ(medianEdgeLength({threeFourFive, true}), 4.0);
  EXPECT_EQ(medianEdgeLength({threeFourFive, false}), 4.0);
  const Points steps = {{0, 0}, {4, 0}, {5, 0}, {8, 0}, {10, 0}};
  EXPECT_EQ(medianEdgeLength({steps, false}), 3.0);
  EXPECT_EQ(medianEdgeLength({steps, true}), 3.0);
}

TEST(MedianEdgeLengthTest, IsZeroWithoutEdges) {
  EXPECT_EQ(medianEdgeLength({}), 0.0);
  const Points one = {{3, 4}};
  EXPECT_EQ(medianEdgeLength({one, false}), 0.0);
  EXPECT_EQ(medianEdgeLength({one, true}), 0.0);
}

TEST(MedianEdgeLengthTest, TakesNanForLongerThanAnything) {
  const Points fourNumbers = {{0, 0}, {1, 0}, {3, 0}, {6, 0}, {10, 0}, {notANumber, 0}};
  EXPECT_EQ(medianEdgeLength({fourNumbers, true}), 4.0);
  const Points oneNumber = {{0, 0}, {1, 0}, {notANumber, 0}};
  EXPECT_TRUE(std::isnan(medianEdgeLength({oneNumber, true})));
  EXPECT_TRUE(std::isnan(medianEdgeLength({oneNumber, false})));
}

TEST(LengthTest, AllMeasuresAreThoseOfThePlainDefinition) {
  forEachShape(repetitions(400), shapes::any, 2, 60, [](const Subject& s, shapes::Random&) {
    EXPECT_TRUE(same(length(s.path()), plain::length(s.plain())));
    EXPECT_TRUE(same(meanPosition(s.path()), plain::meanPosition(s.plain())));
    EXPECT_TRUE(same(medianEdgeLength(s.path()), plain::medianFeatureSize(s.plain())));
  });
}

}  // namespace
