// SPDX-License-Identifier: MIT
//
// Every answer of thousands of contours, compared bit for bit with the plain ones of testing/plain.
// The shapes and questions are drawn from seeds that failures name; rapidcheck, which shrinks what
// it finds, asks about small grids.

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <cntr/region.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <testing/plain/circle.h>
#include <testing/plain/edges.h>
#include <testing/plain/extents.h>
#include <testing/plain/measures.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

#include <testing/twin/same.h>
#include "contour_probe.h"
#include "hard_questions.h"
#include "plain_views.h"

namespace {

using fixtures::plainTransform;
using fixtures::verticesOf;
using same::sameOutcome;
using shapes::Random;

/// A shape as both implementations see it.
struct ContourTwin {
  explicit ContourTwin(const shapes::Shape& shape)
      : contour(shape.points, shape.closed), plain{shape.points, shape.closed} {}

  const Points& points() const { return plain.points; }

  ContourProbe contour;
  plain::Contour plain;
};

/// Calls check(subject, random) for that many shapes, or until one fails.
template <class Check>
void forEachTwin(std::size_t count, std::size_t maxVertices, Check check) {
  for (std::uint64_t seed = 0; seed < repetitions(count); ++seed) {
    const shapes::Shape shape = hard::shape(seed, maxVertices);
    SCOPED_TRACE(shape.name + ", " + std::to_string(shape.points.size()) + " vertices");
    Random random(seed);
    check(ContourTwin(shape), random);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(ContourPropertiesTest, LengthsAndPositionsAreThePlainOnes) {
  forEachTwin(6000, 300, [](const ContourTwin& s, Random&) {
    EXPECT_TRUE(sameOutcome([&] { return s.contour.length(); }, [&] { return length(s.plain); }));
    EXPECT_TRUE(sameOutcome([&] { return s.contour.meanPosition(); },
                            [&] { return meanPosition(s.plain); }));
    EXPECT_TRUE(sameOutcome([&] { return s.contour.medianFeatureSize(); },
                            [&] { return medianFeatureSize(s.plain); }));
  });
}

TEST(ContourPropertiesTest, PolygonsAreThePlainOnes) {
  forEachTwin(2000, 100, [](const ContourTwin& s, Random&) {
    EXPECT_TRUE(sameOutcome([&] { return verticesOf(s.contour.polygon()); },
                            [&] { return polygon(s.plain); }));
  });
}

void expectSameNearest(const ContourTwin& s, const Point& p) {
  EXPECT_TRUE(sameOutcome([&] { return s.contour.closestVertexIndex(p); },
                          [&] { return closestVertexIndex(s.plain, p); }))
      << testing::PrintToString(p);
  for (const bool vertexOnly : {false, true}) {
    EXPECT_TRUE(sameOutcome([&] { return s.contour.closestPoint(p, vertexOnly); },
                            [&] { return closestPoint(s.plain, p, vertexOnly); }))
        << testing::PrintToString(p);
    EXPECT_TRUE(sameOutcome([&] { return s.contour.distToPoint(p, vertexOnly); },
                            [&] { return distToPoint(s.plain, p, vertexOnly); }))
        << testing::PrintToString(p);
  }
}

TEST(ContourPropertiesTest, NearestPointsAndVerticesAreThePlainOnes) {
  forEachTwin(4000, 300, [](const ContourTwin& s, Random& random) {
    for (int i = 0; i < 12; ++i) expectSameNearest(s, hard::point(random, s.points()));
  });
}

TEST(ContourPropertiesTest, NearestOfManyEquallyNearAreThePlainOnes) {
  // Corners of a grid around its middles, and lattice points on circles around the origin.
  Random random(77);
  for (std::size_t i = 0; i < repetitions(1000); ++i) {
    const std::size_t n = 33 + random.below(200);
    const ContourTwin grid({"grid", shapes::gridPoints(random, n, 3 + random.below(6)), true});
    for (int x = 0; x < 8; ++x)
      expectSameNearest(grid, {0.5 * x, 0.5 * static_cast<double>(random.below(16))});
    const ContourTwin walk({"walk", shapes::gridWalk(random, n), false});
    for (int x = -4; x < 4; ++x)
      expectSameNearest(walk, {0.5 * x, 0.5 * static_cast<double>(random.below(9))});
    if (HasFailure()) return;
  }
}

TEST(ContourPropertiesTest, HullsAreThePlainOnes) {
  forEachTwin(4000, 300, [](const ContourTwin& s, Random&) {
    const auto isFinite = [](const Point& p) {
      return std::isfinite(p.x()) && std::isfinite(p.y());
    };
    if (!std::all_of(s.points().begin(), s.points().end(), isFinite)) return;
    const auto hullOf = [](const ContourProbe& contour) {
      qcRegion hull;
      contour.convexHull(hull);
      return hull.points();
    };
    EXPECT_TRUE(
        sameOutcome([&] { return hullOf(s.contour); }, [&] { return convexHull(s.plain); }));
  });
}

void expectSameCircles(const ContourTwin& s) {
  const auto expectSame = [&](int mode) {
    const auto diameterMode = static_cast<qcContourDefs::DiameterMode>(mode);
    const auto circle = same::outcome([&] { return s.contour.encloseCircle(diameterMode); });
    const auto plainCircle = same::outcome([&] { return plain::encloseCircle(s.points(), mode); });
    ASSERT_EQ(circle.index(), plainCircle.index());
    if (circle.index() == 0) {
      EXPECT_TRUE(same::same(std::get<0>(circle), std::get<0>(plainCircle)))
          << testing::PrintToString(std::get<0>(circle)) << " instead of "
          << testing::PrintToString(std::get<0>(plainCircle));
    }
    EXPECT_TRUE(sameOutcome([&] { return s.contour.diameter(diameterMode); },
                            [&] { return plain::diameter(s.points(), mode); }));
  };
  for (const int mode : {0, 1, 2}) expectSame(mode);
}

TEST(ContourPropertiesTest, CirclesAreThePlainOnes) {
  forEachTwin(4000, 300, [](const ContourTwin& s, Random&) { expectSameCircles(s); });
}

TEST(ContourPropertiesTest, CirclesOfManyEquallyFarPairsAreThePlainOnes) {
  Random random(78);
  for (std::size_t i = 0; i < repetitions(1000); ++i) {
    const std::size_t n = 2 + random.below(150);
    Points points = random.chance(0.5) ? shapes::regularPolygon(n, 100, {0, 0})
                                       : shapes::gridPoints(random, n, 2 + random.below(12));
    if (random.chance(0.3)) shapes::scaleAndShift(points, 1, {1e6, -1e6});
    if (random.chance(0.3)) shapes::repeatVertices(random, points, 2 * n);
    for (std::size_t k = points.size(); k > 1; --k)
      std::swap(points[k - 1], points[random.below(k)]);
    SCOPED_TRACE("round " + std::to_string(i));
    expectSameCircles(ContourTwin({"", points, true}));
    if (HasFailure()) return;
  }
}

void expectSameCrossings(const ContourTwin& s, const shapes::Segment& segment) {
  SCOPED_TRACE("segment from " + testing::PrintToString(segment.a) + " to " +
               testing::PrintToString(segment.b));
  for (const bool touches : {true, false}) {
    std::vector<int> edges;
    std::vector<int> plainEdges;
    const qcLineSeg asked(segment.a, segment.b);
    const auto plainPoints = [&] {
      Points points;
      plainEdges.clear();
      for (const auto& crossing : intersections(s.plain, {segment.a, segment.b}, touches)) {
        points.push_back(crossing.point);
        plainEdges.push_back(crossing.edge);
      }
      return points;
    };
    EXPECT_TRUE(
        sameOutcome([&] { return s.contour.intersections(asked, edges, touches); }, plainPoints));
    EXPECT_EQ(edges, plainEdges);
    EXPECT_TRUE(sameOutcome([&] { return s.contour.intersections(asked, touches); }, plainPoints));
    EXPECT_TRUE(sameOutcome([&] { return s.contour.isCrossedBy(asked, touches); },
                            [&] { return !plainPoints().empty(); }));
  }
}

TEST(ContourPropertiesTest, CrossingsWithSegmentsAreThePlainOnes) {
  forEachTwin(3000, 300, [](const ContourTwin& s, Random& random) {
    for (int i = 0; i < 8; ++i) expectSameCrossings(s, hard::segment(random, s.points()));
  });
}

TEST(ContourPropertiesTest, CrossingsWithManyTiesAreThePlainOnes) {
  // Lines through grid points meet many edges in the same places, more than 16 of them.
  Random random(79);
  for (std::size_t i = 0; i < repetitions(300); ++i) {
    const ContourTwin s({"grid", shapes::gridPoints(random, 60 + random.below(200), 5), true});
    for (int k = 0; k < 4; ++k) {
      const Point a(static_cast<double>(random.below(5)), -1);
      expectSameCrossings(s, {a, Point(static_cast<double>(random.below(5)), 6)});
      expectSameCrossings(s, {Point(6, a.x()), Point(-1, static_cast<double>(random.below(5)))});
    }
    if (HasFailure()) return;
  }
}

TEST(ContourPropertiesTest, CrossingsWithContoursAreThePlainOnes) {
  forEachTwin(1500, 120, [](const ContourTwin& s, Random& random) {
    shapes::Shape other = hard::shape(random.next(), 60);
    if (random.chance(0.5)) {
      other.points = s.points();
      const double shift = random.chance(0.3) ? 0 : random.uniform(-5, 5);
      if (random.chance(0.7)) shapes::scaleAndShift(other.points, 1, {shift, shift * 0.5});
    }
    const ContourTwin o(other);
    EXPECT_TRUE(sameOutcome([&] { return s.contour.intersections(o.contour); },
                            [&] { return intersections(s.plain, o.plain); }))
        << other.name;
  });
}

TEST(ContourPropertiesTest, SelfCrossingIsThePlainAnswer) {
  int crossing = 0;
  int simple = 0;
  forEachTwin(5000, 200, [&](const ContourTwin& s, Random&) {
    const bool answer = s.contour.isSelfIntersecting();
    ASSERT_EQ(answer, isSelfIntersecting(s.plain));
    (answer ? crossing : simple) += 1;
  });
  EXPECT_GT(crossing, static_cast<int>(repetitions(1000)));
  EXPECT_GT(simple, static_cast<int>(repetitions(1000)));
}

TEST(ContourPropertiesTest, SelfCrossingOfOutlinesWithOneTroublesomeVertexIsThePlainAnswer) {
  // Simple outlines with one vertex moved onto, across or nearly onto another edge.
  Random random(80);
  int crossing = 0;
  for (std::size_t i = 0; i < repetitions(1500); ++i) {
    const std::size_t n = 10 + random.below(150);
    Points points =
        random.chance(0.5) ? shapes::comb(n, random.next()) : shapes::smoothStar(n, random.next());
    const std::size_t moved = random.below(points.size());
    const std::size_t edge = random.below(points.size());
    const Point& a = points[edge];
    const Point d = points[(edge + 1) % points.size()] - a;
    static const double offsets[] = {0, 1e-7, 9e-7, 1e-6, 1.1e-6, 2e-6, 3e-6, 1e-3};
    const double offset = offsets[random.below(8)] * (random.chance(0.5) ? 1 : -1);
    points[moved] = a + d * random.uniform() + Point(-d.y(), d.x()).unit() * offset;
    const ContourTwin s({"", points, random.chance(0.5)});
    const bool answer = s.contour.isSelfIntersecting();
    ASSERT_EQ(answer, isSelfIntersecting(s.plain)) << "round " << i;
    crossing += answer ? 1 : 0;
  }
  EXPECT_GT(crossing, static_cast<int>(repetitions(200)));
}

TEST(ContourPropertiesTest, EdgesAreThePlainOnes) {
  forEachTwin(2000, 100, [](const ContourTwin& s, Random&) {
    const std::vector<plain::Edge> edges = crossableEdges(s.plain);
    ASSERT_EQ(s.contour.lineSegs().size(), edges.size());
    ASSERT_EQ(s.contour.validLine().size(), edges.size());
    for (std::size_t k = 0; k < edges.size(); ++k) {
      EXPECT_EQ(s.contour.validLine()[k], edges[k].valid) << k;
      EXPECT_TRUE(same::same(s.contour.lineSegs()[k].p1(), edges[k].segment.a)) << k;
      EXPECT_TRUE(same::same(s.contour.lineSegs()[k].p2(), edges[k].segment.b)) << k;
    }
  });
}

TEST(ContourPropertiesTest, VerticesNearAPointAreThePlainOnes) {
  forEachTwin(3000, 200, [](const ContourTwin& s, Random& random) {
    for (int i = 0; i < 4; ++i) {
      const double tolerance = hard::tolerance(random);
      for (int k = 0; k < 3; ++k) {
        const Point p = hard::point(random, s.points());
        EXPECT_TRUE(sameOutcome([&] { return s.contour.vertexIndex(p, tolerance); },
                                [&] { return vertexIndex(s.plain, p, tolerance); }))
            << testing::PrintToString(p) << " tolerance " << tolerance;
      }
    }
  });
}

void expectSameExtremal(const ContourTwin& s, double angle) {
  EXPECT_TRUE(sameOutcome([&] { return s.contour.extremalVertexIndex(qcRadian(angle)); },
                          [&] { return extremalVertexIndex(s.plain, angle); }))
      << angle;
  EXPECT_TRUE(sameOutcome([&] { return s.contour.extremalVertexPosition(qcRadian(angle)); },
                          [&] { return extremalVertexPosition(s.plain, angle); }))
      << angle;
}

TEST(ContourPropertiesTest, ExtremalVerticesAreThePlainOnes) {
  forEachTwin(4000, 300, [](const ContourTwin& s, Random& random) {
    for (int i = 0; i < 10; ++i) expectSameExtremal(s, hard::angle(random, s.points()));
  });
}

TEST(ContourPropertiesTest, ExtremalVerticesOfGridsWithManyTiesAreThePlainOnes) {
  Random random(81);
  for (std::size_t i = 0; i < repetitions(1000); ++i) {
    const ContourTwin s({"grid", shapes::gridPoints(random, 33 + random.below(200), 6), true});
    for (int quarters = -4; quarters <= 4; ++quarters) {
      expectSameExtremal(s, quarters * 0.7853981633974483);
      expectSameExtremal(s, std::atan2(quarters, 1.0 + static_cast<double>(random.below(4))));
    }
    if (HasFailure()) return;
  }
}

void expectSameRect(const ContourTwin& s, const qcXform<2>& xform) {
  const auto rect = same::outcome([&] { return s.contour.encloseRect(xform); });
  const auto box = same::outcome([&] { return encloseRect(s.plain, plainTransform(xform)); });
  ASSERT_EQ(rect.index(), box.index());
  if (rect.index() == 1) return;
  EXPECT_TRUE(same::same(std::get<0>(rect), std::get<0>(box)))
      << testing::PrintToString(std::get<0>(rect)) << " instead of "
      << testing::PrintToString(std::get<0>(box));
}

TEST(ContourPropertiesTest, EnclosingRectanglesAreThePlainOnes) {
  forEachTwin(4000, 300, [](const ContourTwin& s, Random& random) {
    for (int i = 0; i < 6; ++i) expectSameRect(s, hard::xform(random));
  });
}

TEST(ContourPropertiesTest, ImagesAreThePlainOnes) {
  forEachTwin(3000, 200, [](const ContourTwin& s, Random& random) {
    const qcXform<2> xform = hard::xform(random);
    qcContour image({}, !s.plain.closed, 0);
    s.contour.map(xform, image);
    const plain::Contour expected = map(s.plain, plainTransform(xform));
    EXPECT_TRUE(same::same(image.points(), expected.points));
    EXPECT_EQ(image.isClosed(), expected.closed);
  });
}

/// Long shapes: deep indexes, and more crossings than a short list holds.
std::vector<shapes::Shape> longShapes() {
  Random random(82);
  const std::size_t n = repetitions(5000) < 5000 ? 1500 : 5000;
  return {{"smooth star", shapes::smoothStar(n), true},
          {"spiky star, open", shapes::spikyStar(n), false},
          {"comb", shapes::comb(n), true},
          {"crossing star", shapes::crossingStar(n), true},
          {"spiral", shapes::spiral(n, 8), true},
          {"grid walk", shapes::gridWalk(random, n), true},
          {"closed walk", shapes::closedWalk(random, n), true},
          {"collinear", shapes::collinear(random, n), false},
          {"all equal", shapes::allEqual(random, n), true},
          {"skyline", shapes::skyline(random, n), true}};
}

void expectSameAnswersOfLongShape(const ContourTwin& s, Random& random) {
  for (int i = 0; i < 20; ++i) {
    expectSameNearest(s, hard::point(random, s.points()));
    expectSameCrossings(s, hard::segment(random, s.points()));
    expectSameExtremal(s, hard::angle(random, s.points()));
  }
  for (int i = 0; i < 10; ++i) {
    const double tolerance = hard::tolerance(random);
    const Point p = hard::point(random, s.points());
    EXPECT_EQ(s.contour.vertexIndex(p, tolerance), vertexIndex(s.plain, p, tolerance));
  }
  expectSameRect(s, hard::xform(random));
  expectSameCircles(s);
  EXPECT_TRUE(same::same(s.contour.length(), length(s.plain)));
  EXPECT_TRUE(same::same(s.contour.medianFeatureSize(), medianFeatureSize(s.plain)));
}

TEST(ContourPropertiesTest, AnswersOfLongShapesAreThePlainOnes) {
  Random random(83);
  for (const shapes::Shape& shape : longShapes()) {
    SCOPED_TRACE(shape.name);
    expectSameAnswersOfLongShape(ContourTwin(shape), random);
    if (HasFailure()) return;
  }
}

TEST(ContourPropertiesTest, SelfCrossingOfLongShapesIsThePlainAnswer) {
  Random random(84);
  const std::size_t n = repetitions(900) < 900 ? 300 : 900;
  const shapes::Shape shapesToAsk[] = {{"smooth star", shapes::smoothStar(n), true},
                                       {"comb", shapes::comb(n), true},
                                       {"comb, open", shapes::comb(n), false},
                                       {"spiral", shapes::spiral(n, 6), true},
                                       {"skyline", shapes::skyline(random, n), true},
                                       {"crossing star", shapes::crossingStar(n), true}};
  for (const shapes::Shape& shape : shapesToAsk) {
    const ContourTwin s(shape);
    EXPECT_EQ(s.contour.isSelfIntersecting(), isSelfIntersecting(s.plain)) << shape.name;
  }
}

/// A point of a small grid, which rapidcheck can shrink.
using GridPoint = std::pair<int, int>;

rc::Gen<GridPoint> gridPoint() {
  const auto coordinate = rc::gen::inRange(0, 9);
  return rc::gen::pair(coordinate, coordinate);
}

Point pointOf(const GridPoint& p) { return {0.5 * p.first, 0.5 * p.second}; }

/// Any contour of up to 90 points of the grid.
ContourTwin anyGridContour() {
  shapes::Shape shape{"grid", {}, *rc::gen::arbitrary<bool>()};
  const auto count = *rc::gen::inRange<std::size_t>(0, 91);
  const auto grid = *rc::gen::container<std::vector<GridPoint>>(count, gridPoint());
  for (const GridPoint& p : grid) shape.points.push_back(pointOf(p));
  return ContourTwin(shape);
}

RC_GTEST_PROP(ContourGridTest, NearestIsThePlainAnswer, ()) {
  const ContourTwin s = anyGridContour();
  for (int i = 0; i < 10; ++i) {
    const Point p = pointOf(*gridPoint());
    RC_ASSERT(sameOutcome([&] { return s.contour.closestPoint(p, false); },
                          [&] { return closestPoint(s.plain, p, false); }));
    RC_ASSERT(sameOutcome([&] { return s.contour.closestVertexIndex(p); },
                          [&] { return closestVertexIndex(s.plain, p); }));
  }
}

RC_GTEST_PROP(ContourGridTest, CrossingsAreThePlainOnes, ()) {
  const ContourTwin s = anyGridContour();
  RC_PRE(s.points().size() >= 2);
  for (int i = 0; i < 10; ++i) {
    const Point a = pointOf(*gridPoint());
    const Point b = pointOf(*gridPoint());
    const bool touches = *rc::gen::arbitrary<bool>();
    std::vector<int> edges;
    const Points found = s.contour.intersections({a, b}, edges, touches);
    const std::vector<plain::Crossing> expected = intersections(s.plain, {a, b}, touches);
    RC_ASSERT(found.size() == expected.size());
    for (std::size_t k = 0; k < found.size(); ++k) {
      RC_ASSERT(same::same(found[k], expected[k].point));
      RC_ASSERT(edges[k] == expected[k].edge);
    }
  }
}

RC_GTEST_PROP(ContourGridTest, SelfCrossingIsThePlainAnswer, ()) {
  const ContourTwin s = anyGridContour();
  RC_ASSERT(s.contour.isSelfIntersecting() == isSelfIntersecting(s.plain));
}

RC_GTEST_PROP(ContourGridTest, ExtentsAreThePlainOnes, ()) {
  const ContourTwin s = anyGridContour();
  RC_ASSERT(same::same(s.contour.encloseCircle(qcContourDefs::eFarthestVertexPair),
                       plain::encloseCircle(s.points(), 0)));
  const GridPoint direction = *gridPoint();
  const double angle = std::atan2(direction.first - 4, direction.second - 4);
  RC_ASSERT(sameOutcome([&] { return s.contour.extremalVertexIndex(qcRadian(angle)); },
                        [&] { return extremalVertexIndex(s.plain, angle); }));
}

}  // namespace
