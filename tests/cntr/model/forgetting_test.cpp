// SPDX-License-Identifier: MIT
//
// How much of the heap remembered answers take, and that all of it is given back when a shape is
// told to forget them.

#include <vector>

#include <cntr/regionst.h>
#include <gtest/gtest.h>
#include <testing/heap/heap.h>
#include <testing/shapes/shapes.h>

namespace {

constexpr std::size_t kilobyte = 1000;

/// Asks everything whose answer a region remembers.
void askEverything(const qcRegion& region) {
  region.length();
  region.meanPosition();
  region.area(false);
  region.area(true);
  region.centerOfMass(false);
  region.inertiaMatrix(false);
  region.isSelfIntersecting();
  region.encloseCircle(qcContourDefs::eFarthestVertexPair);
  region.encloseCircle(qcContourDefs::eFromFirstVertex);
  qcRegion made;
  region.convexHull(made);
  region.regularize(made);
  region.outerHull(made);
  qcEllipse ellipse;
  double residual = 0.0;
  region.fitEllipse(ellipse, residual);
  region.vertexIndex({640, 480}, 1.0);
  for (int i = 0; i < 10; ++i) {
    region.inside({640, 480}, false);
    region.closestPoint({640.0 + i, 480}, false, false);
    region.extremalVertexIndex(qcRadian(0.5 * i));
    region.encloseRect(qcXform<2>(qcMatrix<2>(), {0.5 * i, 0}));
  }
}

qcRegion outline() { return {shapes::smoothStar(100), qcContourDefs::eNoIntersectionRepair}; }

class ForgettingTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!heap::counts) GTEST_SKIP() << "the heap of the libraries cannot be replaced here";
    askEverything(outline());  // makes what is made once per thread
  }
  std::size_t bytes() const { return heap::bytesAlive() - before_; }

 private:
  std::size_t before_ = heap::bytesAlive();
};

TEST_F(ForgettingTest, ARegionGivesEverythingBackWhenItsPointsAreSetToThemselves) {
  const std::size_t before = bytes();
  qcRegion region = outline();
  const std::size_t fresh = bytes() - before;
  askEverything(region);
  const std::size_t asked = bytes() - before;
  EXPECT_LT(fresh, 2 * kilobyte);
  EXPECT_GT(asked, 5 * kilobyte);
  EXPECT_LT(asked, 16 * kilobyte) << "the comment of qcContour tells how much";
  region.points(region.points());
  EXPECT_EQ(bytes() - before, fresh);
  EXPECT_EQ(region.points(), shapes::smoothStar(100));
  askEverything(region);
  EXPECT_EQ(bytes() - before, asked);
}

TEST_F(ForgettingTest, AContourGivesEverythingBackWhenItIsClosedAgain) {
  const std::size_t before = bytes();
  qcContour contour(shapes::smoothStar(100), true, 0);
  const std::size_t fresh = bytes() - before;
  contour.vertexIndex({640, 480}, 1.0);
  contour.closestVertexIndex({640, 480});
  EXPECT_GT(bytes() - before, fresh + kilobyte);
  const auto* const vertices = contour.points().data();
  contour.isClosed(contour.isClosed());
  EXPECT_EQ(bytes() - before, fresh);
  EXPECT_EQ(contour.points().data(), vertices) << "copies still share them";
}

TEST_F(ForgettingTest, ACopyKeepsWhatItsSourceForgets) {
  qcRegion region = outline();
  askEverything(region);
  const qcRegion copy = region;
  const std::size_t before = bytes();
  region.points(region.points());
  EXPECT_GT(bytes() + kilobyte, before) << "indexes and vertices belong to the copy now";
  EXPECT_EQ(copy.points(), region.points());
}

TEST_F(ForgettingTest, ASetGivesEverythingBackWhenItsRegionsAreSetToThemselves) {
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (int i = 0; i < 10; ++i) regions.emplace_back(new qcRegion(outline()));
  for (const auto& region : regions) {
    for (int i = 0; i < 2; ++i) region->inside({640, 480}, false);
    region->isSelfIntersecting();
    region->intersections(qcLineSeg({0, 0}, {900, 700}), true, false);
    region->area(false);
  }
  const std::size_t before = bytes();
  qcRegionSet set(regions, qcContourDefs::eNoIntersectionRepair);
  const std::size_t fresh = bytes() - before;
  set.inside({640, 480}, false);
  set.area(false);
  EXPECT_GT(bytes() - before, fresh);
  set.regions(set.regions(), qcContourDefs::eNoIntersectionRepair);
  EXPECT_EQ(bytes() - before, fresh);
}

}  // namespace
