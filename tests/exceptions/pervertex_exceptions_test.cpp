// SPDX-License-Identifier: MIT
//
// Shapes with edge elements whose every allocation fails once: points and data stay in step.

#include <memory>

#include <cntrtmpl/regionsett.h>
#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>
#include <testing/heap/fail_each.h>

#include "answers.h"
#include "operation.h"

namespace {

using heap::failEachAllocation;
using Edgelets = std::vector<qcEdgelet>;
using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using RegionSetT = qcRegionSetT<qcEdgelet>;
using RegionHandleT = qcPtrHandle<RegionT>;

Edgelets edgeletsOn(const std::vector<qcVector<2>>& points) {
  Edgelets edgelets;
  for (const qcVector<2>& p : points) edgelets.emplace_back(p, 7, qcAngle8(9));
  return edgelets;
}

qcPtrHandle_const<qc2XformBase> shift() {
  return qcPtrHandle_const<qc2XformBase>(new qc2Rigid(qcDegree(0), {3, 4}));
}

RegionHandleT makeRegion() {
  RegionHandleT region(new RegionT(edgeletsOn(squareOutline({3, 4}, 10)), shift(), 5));
  return region;
}

void expectInStep(const ContourT& contour) {
  ASSERT_EQ(contour.data().size(), contour.points().size());
  for (std::size_t i = 0; i < contour.data().size(); ++i) {
    EXPECT_EQ(contour.datum(contour.points()[i]).position(), contour.data()[i].position()) << i;
  }
}

const Operation<RegionT> regionTOperations[] = {
    {"copying", [](RegionT& r) { const RegionT copy(r); }},
    {"copying as a contour", [](RegionT& r) { const ContourT copy(r); }},
    {"assigning to it",
     [](RegionT& r) {
       r = RegionT(edgeletsOn(squareOutline({1, 1}, 30)), shift(), 2);
     }},
    {"assigning contours",
     [](RegionT& r) {
       ContourT contour(edgeletsOn(squareOutline({1, 1}, 3)));
       contour = r;
       expectInStep(contour);
     }},
    {"making one of a contour", [](RegionT& r) { const RegionT made(ContourT(r), 3); }},
    {"data", [](RegionT& r) { r.data(edgeletsOn(crossingOutline())); }},
    {"points", [](RegionT& r) { static_cast<qcContour&>(r).points(crossingOutline()); }},
    {"holes with data", [](RegionT& r) { r.holes({qcPtrHandle_const<RegionT>(new RegionT(r))}); }},
    {"plain holes",
     [](RegionT& r) {
       r.qcRegion::holes(std::vector<Region>{Region(new qcRegion(squareOutline({1, 1}, 2), keep))});
     }},
    {"drawing",
     [](RegionT& r) {
       qcRecordingTablet tablet;
       r.draw(tablet, qcColor::red, qcUITablet::eImageLayer);
     }},
};

class PerVertexExceptionsTest : public testing::TestWithParam<Operation<RegionT>> {};

TEST_P(PerVertexExceptionsTest, PointsAndDataAreInStepAfterEveryFailure) {
  const std::size_t allocations = failEachAllocation(
      makeRegion, [](const auto& region) { GetParam().run(*region); },
      [](const auto& region) {
        expectInStep(*region);
        expectSoundAnswers(static_cast<const qcRegion&>(*region));
      });
  EXPECT_GT(allocations, 0U);
}

INSTANTIATE_TEST_SUITE_P(PerVertex, PerVertexExceptionsTest, testing::ValuesIn(regionTOperations));

void expectParallel(const RegionSetT& set) {
  const auto plain = set.regions();
  const auto withData = set.regionsT();
  ASSERT_EQ(plain.size(), withData.size());
  for (std::size_t i = 0; i < plain.size(); ++i) {
    EXPECT_EQ(plain[i]->points(), withData[i]->points());
    expectInStep(*withData[i]);
  }
}

TEST(PerVertexSetExceptionsTest, BothListsOfASetAreInStepAfterEveryFailure) {
  const auto make = [] {
    return std::make_unique<RegionSetT>(std::vector<RegionHandleT>{makeRegion(), makeRegion()});
  };
  using Change = void (*)(RegionSetT&);
  const Change changes[] = {
      [](RegionSetT& s) { const RegionSetT copy(s); },
      [](RegionSetT& s) { s = RegionSetT(std::vector<RegionHandleT>{makeRegion()}); },
      [](RegionSetT& s) { s.add(regionWithHoles(), keep); },
      [](RegionSetT& s) { s.regions(crossingSet().regions(), keep); },
  };
  for (const Change change : changes) {
    const std::size_t allocations = failEachAllocation(
        make, [&](auto& set) { change(*set); }, [](const auto& set) { expectParallel(*set); });
    EXPECT_GT(allocations, 0U);
  }
}

}  // namespace
