// SPDX-License-Identifier: MIT
//
// Contours, regions and sets whose every allocation fails once: nothing leaks, and they answer
// afterwards as new ones of the same content do.

#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <platform/display/recordingtablet.h>
#include <platform/display/svgtablet.h>
#include <testing/heap/fail_each.h>

#include "answers.h"
#include "operation.h"

namespace {

using heap::failEachAllocation;

const qcVector<2> somewhere(7.3, 9.1);
const qcXform<2> skewed(qcMatrix<2>(1, 2, 3, 5), {7, 8});
const qcLineSeg across({-3.5, 11.0}, {120.0, 13.0});

const Operation<qcContour> contourOperations[] = {
    {"copying", [](qcContour& c) { const qcContour copy(c); }, false},
    {"assigning to it",
     [](qcContour& c) {
       c = qcContour(squareOutline({1, 2}, 7), true, 4);
     }},
    {"assigning it",
     [](qcContour& c) {
       qcContour other({}, false, 0);
       other = c;
     }},
    {"points",
     [](qcContour& c) {
       c.points(squareOutline({1, 2}, 7));
     }},
    {"isClosed", [](qcContour& c) { c.isClosed(false); }, false},
    {"label", [](qcContour& c) { c.label(9); }, false},
    {"cachedVectorSize", [](qcContour& c) { c.cachedVectorSize(3); }, false},
    {"comparing", [](qcContour& c) { static_cast<void>(c == c); }, false},
    {"length", [](qcContour& c) { static_cast<void>(c.length()); }},
    {"meanPosition", [](qcContour& c) { static_cast<void>(c.meanPosition()); }},
    {"closestPoint", [](qcContour& c) { static_cast<void>(c.closestPoint(somewhere, false)); }},
    {"closestVertexIndex",
     [](qcContour& c) { static_cast<void>(c.closestVertexIndex(somewhere)); }},
    {"polygon", [](qcContour& c) { static_cast<void>(c.polygon()); }},
    {"convexHull",
     [](qcContour& c) {
       qcRegion hull;
       c.convexHull(hull);
     }},
    {"fitEllipse",
     [](qcContour& c) {
       qcEllipse ellipse;
       double residual = 0.0;
       c.fitEllipse(ellipse, residual);
     }},
    {"encloseCircle",
     [](qcContour& c) { static_cast<void>(c.encloseCircle(qcContourDefs::eFarthestVertexPair)); }},
    {"intersections with a segment",
     [](qcContour& c) { static_cast<void>(c.intersections(across, true)); }},
    {"intersections with a contour",
     [](qcContour& c) { static_cast<void>(c.intersections(qcContour(c))); }},
    {"isSelfIntersecting", [](qcContour& c) { static_cast<void>(c.isSelfIntersecting()); }},
    {"vertexIndex", [](qcContour& c) { static_cast<void>(c.vertexIndex(somewhere, 5.0)); }},
    {"extremalVertexIndex",
     [](qcContour& c) {
       for (int i = 0; i < 8; ++i) static_cast<void>(c.extremalVertexIndex(qcRadian(0.7 * i)));
     }},
    {"encloseRect",
     [](qcContour& c) {
       for (int i = 0; i < 8; ++i) {
         static_cast<void>(c.encloseRect(qcXform<2>(qcMatrix<2>(), {0.5 * i, 0})));
       }
     }},
    {"map",
     [](qcContour& c) {
       qcContour image({}, true, 0);
       c.map(skewed, image);
     }},
    {"map to itself", [](qcContour& c) { c.map(skewed, c); }},
    {"drawing into a record",
     [](qcContour& c) {
       qcRecordingTablet tablet;
       c.draw(tablet, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eImageLayer);
     }},
};

class ContourExceptionsTest : public testing::TestWithParam<Operation<qcContour>> {};

TEST_P(ContourExceptionsTest, AContourAnswersAfterEveryFailure) {
  const auto make = [] { return std::make_unique<qcContour>(crossingOutline(), true, 3); };
  const std::size_t allocations = failEachAllocation(
      make, [](auto& contour) { GetParam().run(*contour); },
      [](const auto& contour) { expectSoundAnswers(*contour); });
  EXPECT_EQ(allocations > 0, GetParam().allocates);
}

TEST_P(ContourExceptionsTest, AContourThatRemembersAnswersDoesSo) {
  const auto make = [] {
    auto contour = std::make_unique<qcContour>(crossingOutline(), true, 3);
    static_cast<void>(answersOf(*contour));
    return contour;
  };
  failEachAllocation(
      make, [](auto& contour) { GetParam().run(*contour); },
      [](const auto& contour) { expectSoundAnswers(*contour); });
}

INSTANTIATE_TEST_SUITE_P(Contour, ContourExceptionsTest, testing::ValuesIn(contourOperations));

const Operation<qcRegion> regionOperations[] = {
    {"copying", [](qcRegion& r) { const qcRegion copy(r); }, false},
    {"assigning to it", [](qcRegion& r) { r = *regionWithHoles(); }},
    {"assigning to its contour part",
     [](qcRegion& r) {
       static_cast<qcContour&>(r) = qcContour(squareOutline({1, 2}, 7), false, 4);
     }},
    {"assigning its own hole",
     [](qcRegion& r) {
       if (!r.holes().empty()) r = *r.holes()[0];
     }},
    {"making one of a contour", [](qcRegion& r) { const qcRegion made(qcContour(r), keep); },
     false},
    {"making a repaired one",
     [](qcRegion& r) { const qcRegion made(r.points(), qcContourDefs::eOuterHull); }},
    {"points",
     [](qcRegion& r) {
       r.points(squareOutline({-1, -2}, 107));
     }},
    {"holes",
     [](qcRegion& r) {
       r.holes(std::vector<Region>{Region(new qcRegion(squareOutline({60, 60}, 30), keep))});
     }},
    {"no holes", [](qcRegion& r) { r.holes(std::vector<Region>()); }, false},
    {"area", [](qcRegion& r) { static_cast<void>(r.area(true)); }, false},
    {"centerOfMass", [](qcRegion& r) { static_cast<void>(r.centerOfMass(true)); }},
    {"inertiaMatrix", [](qcRegion& r) { static_cast<void>(r.inertiaMatrix(false)); }},
    {"inside",
     [](qcRegion& r) {
       // Enough for a grid.
       for (int i = 0; i < 500; ++i) static_cast<void>(r.inside({7.3 + 0.01 * i, 9.1}, true));
     }},
    {"inside of many points",
     [](qcRegion& r) {
       const std::vector<qcVector<2>> points(500, somewhere);
       bool answers[500];
       r.inside(points, true, answers);
     }},
    {"distToPoint",
     [](qcRegion& r) {
       for (int i = 0; i < 2; ++i) static_cast<void>(r.distToPoint(somewhere, true, true, true));
     }},
    {"distToPoint of many points",
     [](qcRegion& r) {
       double answers[9];
       r.distToPoint(std::vector<qcVector<2>>(9, somewhere), false, true, true, answers);
     }},
    {"closestPoint",
     [](qcRegion& r) { static_cast<void>(r.closestPoint(somewhere, false, true)); }},
    {"intersections with a segment",
     [](qcRegion& r) { static_cast<void>(r.intersections(across, true, true)); }},
    {"intersections with a contour",
     [](qcRegion& r) { static_cast<void>(r.intersections(qcContour(r), true)); }},
    {"regularize",
     [](qcRegion& r) {
       qcRegion result;
       r.regularize(result);
     }},
    {"regularize into itself", [](qcRegion& r) { r.regularize(r); }},
    {"outerHull",
     [](qcRegion& r) {
       qcRegion result;
       r.outerHull(result);
     }},
    {"outerHull into itself", [](qcRegion& r) { r.outerHull(r); }},
    {"map into itself", [](qcRegion& r) { r.map(skewed, r); }},
};

class RegionExceptionsTest : public testing::TestWithParam<Operation<qcRegion>> {};

TEST_P(RegionExceptionsTest, ARegionWithHolesAnswersAfterEveryFailure) {
  failEachAllocation(
      regionWithHoles, [](auto& region) { GetParam().run(*region); },
      [](const auto& region) { expectSoundAnswers(*region); });
}

TEST_P(RegionExceptionsTest, ACrossingRegionAnswersAfterEveryFailure) {
  const auto make = [] { return Region(new qcRegion(crossingOutline(), keep)); };
  const std::size_t allocations = failEachAllocation(
      make, [](auto& region) { GetParam().run(*region); },
      [](const auto& region) { expectSoundAnswers(*region); });
  if (std::string(GetParam().name) != "assigning its own hole") {
    EXPECT_EQ(allocations > 0, GetParam().allocates);
  }
}

TEST_P(RegionExceptionsTest, ARegionThatRemembersAnswersDoesSo) {
  const auto make = [] {
    Region region = regionWithHoles();
    static_cast<void>(answersOf(*region));
    return region;
  };
  failEachAllocation(
      make, [](auto& region) { GetParam().run(*region); },
      [](const auto& region) { expectSoundAnswers(*region); });
}

INSTANTIATE_TEST_SUITE_P(Region, RegionExceptionsTest, testing::ValuesIn(regionOperations));

TEST(RegionHandlesTest, HolesAreSharedAsBeforeAfterEveryFailure) {
  const Region hole(new qcRegion(squareOutline({5, 5}, 10), keep));
  const auto make = [&] {
    Region region(new qcRegion(squareOutline({0, 0}, 100), keep));
    region->holes(std::vector<Region>{hole});
    return region;
  };
  failEachAllocation(
      make,
      [&](const Region& region) {
        const qcRegion copy(*region);
        region->holes(std::vector<Region>{hole, hole});
      },
      [&](const Region& region) {
        ASSERT_FALSE(region->holes().empty());
        EXPECT_EQ(region->holes()[0].get(), hole.get());
        EXPECT_NEAR(region->area(true),
                    10000.0 - 100.0 * static_cast<double>(region->holes().size()), 1e-9);
      });
}

const Operation<qcRegionSet> setOperations[] = {
    {"copying", [](qcRegionSet& s) { const qcRegionSet copy(s); }},
    {"assigning to it", [](qcRegionSet& s) { s = crossingSet(); }},
    {"making a repaired one",
     [](qcRegionSet& s) { const qcRegionSet made(s.regions(), qcContourDefs::eRegularize); }},
    {"regions", [](qcRegionSet& s) { s.regions(Regions{regionWithHoles()}, keep); }},
    {"add", [](qcRegionSet& s) { s.add(regionWithHoles(), keep); }},
    {"area", [](qcRegionSet& s) { static_cast<void>(s.area(true)); }},
    {"centerOfMass", [](qcRegionSet& s) { static_cast<void>(s.centerOfMass(false)); }},
    {"inertiaMatrix", [](qcRegionSet& s) { static_cast<void>(s.inertiaMatrix(false)); }},
    {"inside", [](qcRegionSet& s) { static_cast<void>(s.inside(somewhere, true)); }},
    {"distToPoint",
     [](qcRegionSet& s) { static_cast<void>(s.distToPoint(somewhere, true, true, true)); }},
    {"encloseRect",
     [](qcRegionSet& s) {
       for (int i = 0; i < 8; ++i) {
         static_cast<void>(s.encloseRect(qcXform<2>(qcMatrix<2>(), {0.5 * i, 0})));
       }
     }},
};

class SetExceptionsTest : public testing::TestWithParam<Operation<qcRegionSet>> {};

TEST_P(SetExceptionsTest, ASetAnswersAfterEveryFailure) {
  const auto make = [] { return std::make_unique<qcRegionSet>(crossingSet()); };
  failEachAllocation(
      make, [](auto& set) { GetParam().run(*set); },
      [](const auto& set) { expectSoundAnswers(*set); });
}

INSTANTIATE_TEST_SUITE_P(Set, SetExceptionsTest, testing::ValuesIn(setOperations));

TEST(SetRepairExceptionsTest, OnlyWhetherASetCrossesIsMarkedBeforeItIsKnown) {
  const auto make = [] { return std::make_unique<qcRegionSet>(crossingSet()); };
  const auto repair = [](auto& set) {
    qcRegionSet result(Regions(), keep);
    set->regularize(result);
    set->outerHull(*set);
  };
  const auto replace = [](auto& set) {
    set->regions(crossingSet().regions(), qcContourDefs::eOuterHull);
  };
  const auto check = [](auto& set) {
    const bool claimsToCross = set->isSelfIntersecting();
    set->regions(set->regions(), keep);  // forgets the mark
    if (claimsToCross) {
      EXPECT_TRUE(set->isSelfIntersecting());
    }
    expectSoundAnswers(*set);
  };
  failEachAllocation(make, repair, check);
  failEachAllocation(make, replace, check);
}

TEST(TabletExceptionsTest, APictureIsWrittenAfterAFailedOne) {
  const auto make = [] { return std::make_unique<qcContour>(crossingOutline(), true, 3); };
  const auto draw = [](auto& contour) {
    std::ostringstream out;
    out.exceptions(std::ios::badbit);
    qcSvgTablet tablet;
    contour->draw(tablet, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eImageLayer);
    tablet.write(out);
  };
  failEachAllocation(make, draw, [](const auto& contour) { expectSoundAnswers(*contour); });
}

}  // namespace
