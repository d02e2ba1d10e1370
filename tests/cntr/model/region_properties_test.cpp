// SPDX-License-Identifier: MIT
//
// Regions against testing/plain: the same bits, or the same exception with the same message, for
// shapes of every kind with holes in holes.

#include <utility>

#include <cntr/compute/extents.h>
#include <cntr/compute/repair.h>
#include <cntr/region.h>
#include <gtest/gtest.h>
#include <testing/plain/error.h>
#include <testing/plain/measures.h>
#include <testing/plain/repair.h>

#include <testing/twin/region_twin.h>

#include "region_fixtures.h"

namespace {

using namespace twin;
using fixtures::keep;

void expectSameMoments(const plain::Region& region) {
  const auto made = make(region);
  for (const bool holes : {true, false}) {
    EXPECT_TRUE(
        agree([&] { return made->area(holes); }, [&] { return plain::area(region, holes); }));
    EXPECT_TRUE(agree([&] { return made->inertiaMatrix(holes); },
                      [&] { return plain::inertiaMatrix(region, holes); }));
    EXPECT_TRUE(agree([&] { return made->centerOfMass(holes); },
                      [&] { return plain::centerOfMass(region, holes); }));
  }
}

TEST(RegionPropertiesTest, MomentsAreThePlainOnes) {
  shapes::Random random(101);
  forEachRound(repetitions(3000), [&](std::size_t) {
    const NamedRegion drawn = anyRegion(random, 120, 2);
    SCOPED_TRACE(drawn.name);
    expectSameMoments(drawn.region);
  });
}

TEST(RegionPropertiesTest, TheSecondCenterWithHolesIsTheOrigin) {
  shapes::Random random(102);
  forEachRound(repetitions(1000), [&](std::size_t) {
    const NamedRegion drawn = anyRegion(random, 40, 1);
    SCOPED_TRACE(drawn.name);
    const auto made = make(drawn.region);
    const auto first = outcome([&] { return made->centerOfMass(true); });
    const auto second = outcome([&] { return made->centerOfMass(true); });
    if (first.index() == 1 || drawn.region.holes.empty()) {
      EXPECT_EQ(textOf(first), textOf(second));
    } else {
      EXPECT_TRUE(isSame(std::get<0>(second), qcVector<2>()));
    }
  });
}

/// All that can be asked about a point, with all flags.
void expectSameAnswers(const qcRegion& made, const plain::Region& region, const plain::Point& p) {
  for (const bool holes : {false, true}) {
    EXPECT_TRUE(agree([&] { return made.inside(p, holes); },
                      [&] { return plain::inside(region, p, holes); }));
    EXPECT_TRUE(agree(
        [&] {
          long hole = 99;
          const long index = made.closestVertexIndex(p, holes, hole);
          return FoundVertex{index, hole};
        },
        [&] { return plain::closestVertexIndex(region, p, holes); }));
    for (const bool vertexOnly : {false, true}) {
      EXPECT_TRUE(agree([&] { return made.closestPoint(p, vertexOnly, holes); },
                        [&] { return plain::closestPoint(region, p, vertexOnly, holes); }));
      for (const bool zeroIfInside : {false, true}) {
        EXPECT_TRUE(
            agree([&] { return made.distToPoint(p, vertexOnly, holes, zeroIfInside); },
                  [&] { return plain::distToPoint(region, p, vertexOnly, holes, zeroIfInside); }));
      }
    }
  }
}

TEST(RegionPropertiesTest, AnswersAboutPointsAreThePlainOnes) {
  shapes::Random random(103);
  forEachRound(repetitions(2500), [&](std::size_t) {
    const NamedRegion drawn = anyRegion(random, 100, 2);
    const auto made = make(drawn.region);
    for (int k = 0; k < 6; ++k) {
      const plain::Region& near = drawn.region.holes.empty() || random.chance(0.5)
                                      ? drawn.region
                                      : drawn.region.holes[random.below(drawn.region.holes.size())];
      const plain::Point p = shapes::queryPoint(random, near.points);
      SCOPED_TRACE(drawn.name + " at " + testing::PrintToString(p));
      expectSameAnswers(*made, drawn.region, p);
    }
  });
}

/// All that can be asked about many points at once, with all flags.
void expectSameAnswersAtOnce(const qcRegion& made, const plain::Region& region,
                             const std::vector<plain::Point>& points) {
  for (const bool holes : {false, true}) {
    EXPECT_TRUE(agree(
        [&] {
          const auto answers = std::make_unique<bool[]>(points.size());
          made.inside(points, holes, {answers.get(), points.size()});
          return std::vector<bool>(answers.get(), answers.get() + points.size());
        },
        [&] {
          std::vector<bool> answers;
          for (const auto& p : points) answers.push_back(plain::inside(region, p, holes));
          return answers;
        }));
    for (const bool vertexOnly : {false, true}) {
      EXPECT_TRUE(agree(
          [&] {
            std::vector<qcVector<2>> answers(points.size());
            made.closestPoint(points, vertexOnly, holes, answers);
            return answers;
          },
          [&] {
            std::vector<qcVector<2>> answers;
            for (const auto& p : points) {
              answers.push_back(plain::closestPoint(region, p, vertexOnly, holes));
            }
            return answers;
          }));
      for (const bool zeroIfInside : {false, true}) {
        EXPECT_TRUE(agree(
            [&] {
              std::vector<double> answers(points.size());
              made.distToPoint(points, vertexOnly, holes, zeroIfInside, answers);
              return answers;
            },
            [&] {
              std::vector<double> answers;
              for (const auto& p : points) {
                answers.push_back(plain::distToPoint(region, p, vertexOnly, holes, zeroIfInside));
              }
              return answers;
            }));
      }
    }
  }
}

TEST(RegionPropertiesTest, AnswersAboutManyPointsAtOnceAreThePlainOnes) {
  shapes::Random random(111);
  forEachRound(repetitions(1000), [&](std::size_t) {
    const NamedRegion drawn = anyRegion(random, 100, 2);
    const auto made = make(drawn.region);
    SCOPED_TRACE(drawn.name);
    std::vector<plain::Point> points(1 + random.below(40));
    for (auto& p : points) p = shapes::queryPoint(random, drawn.region.points);
    expectSameAnswersAtOnce(*made, drawn.region, points);
  });
}

/// Outlines of many vertices, which answer containment in other ways than those of few.
shapes::Shape largeOutline(shapes::Random& random) {
  const std::size_t n = 100 + random.below(300);
  switch (random.below(4)) {
    case 0:
      return {"smooth star", shapes::smoothStar(n, random.next())};
    case 1:
      return {"comb", shapes::comb(n, random.next())};
    case 2:
      return {"crossing star", shapes::crossingStar(n, random.next())};
    default:
      return {"spiral", shapes::spiral(n, random.uniform(0.5, 4.0))};
  }
}

TEST(RegionPropertiesTest, AnswersStayTheSameWhenARegionIsAskedOften) {
  shapes::Random random(104);
  forEachRound(repetitions(30), [&](std::size_t round) {
    shapes::Shape shape = round % 2 == 0 ? largeOutline(random) : shapes::any(random.next(), 300);
    if (random.chance(0.3)) shapes::addVerticesOnEdges(random, shape.points, 400);
    const plain::Region region{shape.points, {}};
    const auto made = make(region);
    for (int k = 0; k < 2000 && !testing::Test::HasFailure(); ++k) {
      const plain::Point p = shapes::queryPoint(random, shape.points);
      SCOPED_TRACE(shape.name + " at " + testing::PrintToString(p));
      EXPECT_TRUE(agree([&] { return made->inside(p, false); },
                        [&] { return plain::inside(region, p, false); }));
    }
  });
}

TEST(RegionPropertiesTest, CrossingsAreThePlainOnes) {
  shapes::Random random(105);
  forEachRound(repetitions(2000), [&](std::size_t) {
    const NamedRegion drawn = anyRegion(random, 80, 1);
    SCOPED_TRACE(drawn.name);
    const auto made = make(drawn.region);
    for (const bool holes : {false, true}) {
      for (const bool touches : {false, true}) {
        const shapes::Segment s = shapes::querySegment(random, drawn.region.points);
        EXPECT_TRUE(agree(
            [&] { return made->intersections(qcLineSeg(s.a, s.b), touches, holes); },
            [&] {
              return plain::intersections(drawn.region, plain::Segment{s.a, s.b}, touches, holes);
            }));
      }
      NamedRegion other = anyRegion(random, 20, 0);
      if (random.chance(0.7)) placeInto(random, other.region, drawn.region.points);
      const bool closed = random.chance(0.5);
      EXPECT_TRUE(agree(
          [&] { return made->intersections(qcContour(other.region.points, closed, 0), holes); },
          [&] {
            return plain::intersections(drawn.region, plain::Contour{other.region.points, closed},
                                        holes);
          }));
    }
  });
}

/// Throws what setting the holes of a region throws.
bool plainAccepts(const plain::Region& region, const std::vector<plain::Region>& holes) {
  for (const plain::Region& hole : holes) {
    if (!plain::intersections(region, plain::boundary(hole), false).empty()) {
      throw plain::Error{plain::Error::badParams, "holes cannot intersect region"};
    }
  }
  return true;
}

TEST(RegionPropertiesTest, HolesAreRefusedWhereTheyMeetTheBoundary) {
  shapes::Random random(106);
  std::size_t accepted = 0;
  forEachRound(repetitions(3000), [&](std::size_t) {
    NamedRegion drawn = anyRegion(random, 60, 2);
    SCOPED_TRACE(drawn.name);
    const std::vector<plain::Region> holes = drawn.region.holes;
    const auto made = make({drawn.region.points, {}});
    Handles handles;
    for (const plain::Region& hole : holes) handles.push_back(make(hole));
    EXPECT_TRUE(agree(
        [&] {
          made->holes(handles);
          return true;
        },
        [&] {
          return plainAccepts({drawn.region.points, {}}, holes);
        }));
    if (made->holes() == handles) ++accepted;
    EXPECT_TRUE(made->holes() == handles || made->holes().empty());
  });
  EXPECT_GT(accepted, repetitions(1000));
}

void expectSameRepair(const plain::Region& region) {
  const auto made = make(region);
  EXPECT_TRUE(agree([&] { return made->isSelfIntersecting(); },
                    [&] { return plain::isSelfIntersecting(plain::boundary(region)); }));
  EXPECT_TRUE(agree(
      [&] {
        qcRegion result;
        made->regularize(result);
        return plainOf(result);
      },
      [&] { return plain::regularize(region); }));
  EXPECT_TRUE(agree(
      [&] {
        qcRegion result;
        made->outerHull(result);
        return plainOf(result);
      },
      [&] { return plain::outerHull(region); }));
}

TEST(RegionPropertiesTest, AnyRegionIsRepairedAsThePlainOne) {
  shapes::Random random(107);
  forEachRound(repetitions(2500), [&](std::size_t) {
    const NamedRegion drawn = anyRegion(random, 80, 1);
    SCOPED_TRACE(drawn.name);
    expectSameRepair(drawn.region);
  });
}

/// Outlines that cross themselves in ways that repair can deal with.
shapes::Shape crossingOutline(shapes::Random& random) {
  const std::size_t n = 5 + random.below(random.chance(0.1) ? 196 : 40);
  switch (random.below(8)) {
    case 0: {
      const auto wind = static_cast<double>(1 + random.below(3));
      shapes::Points points = shapes::spiral(n, wind);
      for (std::size_t k = 1 + random.below(3); k > 0; --k) {
        std::swap(points[random.below(n)], points[random.below(n)]);
      }
      return {"spiral over itself", points};
    }
    case 1:
      return {"star", shapes::starPolygon(n, 1 + random.below(n), 50.0)};
    case 2: {
      const auto p = static_cast<unsigned>(1 + random.below(4));
      const auto q = static_cast<unsigned>(1 + random.below(4));
      return {"figure eight and its kin", shapes::lissajous(n, p, q, random.uniform(0.0, 3.0))};
    }
    case 3:
      return {"crossing star", shapes::crossingStar(n, random.next())};
    case 4:
      return {"grid walk", shapes::gridWalk(random, n)};
    case 5:
      return {"grid points", shapes::gridPoints(random, 4 + random.below(12), 6)};
    default:
      return {"closed walk", shapes::closedWalk(random, n)};
  }
}

TEST(RegionPropertiesTest, CrossingOutlinesAreRepairedAsThePlainOnes) {
  shapes::Random random(108);
  forEachRound(repetitions(2500), [&](std::size_t) {
    shapes::Shape shape = crossingOutline(random);
    if (random.chance(0.2)) shapes::addVerticesOnEdges(random, shape.points, 220);
    if (random.chance(0.1)) shapes::addNearVertices(random, shape.points, 220);
    SCOPED_TRACE(shape.name + " " + testing::PrintToString(shape.points));
    expectSameRepair({shape.points, {}});
  });
}

TEST(RegionPropertiesTest, ConstructorsRepairAsThePlainFunctions) {
  shapes::Random random(109);
  forEachRound(repetitions(500), [&](std::size_t) {
    const plain::Region region{crossingOutline(random).points, {}};
    EXPECT_TRUE(agree([&] { return plainOf(qcRegion(region.points, qcContourDefs::eRegularize)); },
                      [&] { return plain::regularize(region); }));
    EXPECT_TRUE(agree([&] { return plainOf(qcRegion(region.points, qcContourDefs::eOuterHull)); },
                      [&] { return plain::outerHull(region); }));
  });
}

TEST(RegionPropertiesTest, BoundariesAreTracedAsThePlainOnes) {
  // Also outlines that cross nothing, which the region's own functions never trace.
  shapes::Random random(110);
  std::size_t traced = 0;
  const auto orThrow = [](auto answer) {
    if (!answer) throw plain::Error{plain::Error::badParams, "invalid contour"};
    return *answer;
  };
  forEachRound(repetitions(2000), [&](std::size_t) {
    const plain::Region region{shapes::any(random.next(), 60).points, {}};
    if (region.points.size() < 3) return;
    const cntr::compute::Outline outline(region.points);
    const double probe = 0.01 * plain::medianFeatureSize(plain::boundary(region));
    EXPECT_TRUE(agree(
        [&] { return static_cast<long>(orThrow(cntr::compute::startingEdge(outline, probe))); },
        [&] { return static_cast<long>(plain::startingEdge(region)); }));
    EXPECT_TRUE(agree(
        [&] {
          const auto points = orThrow(cntr::compute::traceBoundary(outline, probe));
          ++traced;
          return points;
        },
        [&] { return plain::tracedBoundary(region); }));
  });
  EXPECT_GT(traced, repetitions(500));
}

/// Vertices, many of which lie in the same places, exactly or within 1e-6.
plain::Points touchingList(shapes::Random& random) {
  plain::Points points = random.chance(0.5)
                             ? shapes::gridPoints(random, 2 + random.below(30), 1 + random.below(6))
                             : shapes::gridWalk(random, 2 + random.below(60));
  for (plain::Point& p : points) {
    if (random.chance(0.2)) p = plain::plus(p, {random.uniform(-1e-6, 1e-6), 0.0});
  }
  return points;
}

TEST(RegionPropertiesTest, TracesAreCleanedIntoThePlainLoop) {
  shapes::Random random(111);
  std::size_t cleaned = 0;
  std::size_t nothingLeft = 0;
  forEachRound(repetitions(5000), [&](std::size_t) {
    const plain::Points points = touchingList(random);
    SCOPED_TRACE(testing::PrintToString(points));
    EXPECT_TRUE(agree(
        [&] {
          const auto loop = cntr::compute::outerLoop(points);
          ++(loop ? cleaned : nothingLeft);
          if (!loop) throw plain::Error{plain::Error::badParams, "invalid contour"};
          return *loop;
        },
        [&] { return plain::cleanedHull(points).points; }));
  });
  EXPECT_GT(cleaned, repetitions(1000));
  EXPECT_GT(nothingLeft, 0U);
}

TEST(RegionPropertiesTest, TwoBoundariesAreJoinedAsThePlainOnes) {
  shapes::Random random(112);
  std::size_t joined = 0;
  forEachRound(repetitions(3000), [&](std::size_t) {
    const NamedRegion first = anyRegion(random, 50, 0);
    NamedRegion second = anyRegion(random, 50, 0);
    if (random.chance(0.8)) placeInto(random, second.region, first.region.points);
    if (first.region.points.size() < 2 || second.region.points.size() < 2) return;
    SCOPED_TRACE(first.name + " and " + second.name);
    EXPECT_TRUE(agree(
        [&] {
          const plain::Points& mine = first.region.points;
          const plain::Points& others = second.region.points;
          const cntr::plane::Path other{others, true};
          const auto points = cntr::compute::splice(
              {mine, true}, {other, cntr::compute::boundingBox(others), nullptr});
          if (!points) {
            throw plain::Error{plain::Error::badParams, "spliced regions do not intersect"};
          }
          ++joined;
          return *points;
        },
        [&] { return plain::splice(first.region, second.region).points; }));
  });
  EXPECT_GT(joined, repetitions(300));
}

TEST(RegionPropertiesTest, RepairedBoundariesDoNotCrossThemselvesAgain) {
  // Simple figures of a few crossings, far from any tolerance.
  shapes::Random random(113);
  forEachRound(repetitions(500), [&](std::size_t) {
    const shapes::Points points = shapes::lissajous(20 + random.below(60), 1, 2, 0.3);
    qcRegion hull;
    qcRegion(points, keep).outerHull(hull);
    EXPECT_FALSE(hull.isSelfIntersecting());
    qcRegion again;
    hull.outerHull(again);
    EXPECT_TRUE(isSame(again.points(), hull.points()));
  });
}

}  // namespace
