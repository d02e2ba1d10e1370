// SPDX-License-Identifier: MIT
//
// Region sets against testing/plain: the same bits, or the same exception with the same message,
// for sets of disjoint, touching, overlapping and nested regions.

#include <algorithm>
#include <array>

#include <cntr/regionst.h>
#include <gtest/gtest.h>
#include <testing/plain/set.h>

#include <testing/twin/region_twin.h>

#include "plain_views.h"
#include "remembered.h"

namespace {

using namespace twin;
using fixtures::plainTransform;

struct NamedSet {
  std::string name;
  plain::Regions regions;
};

double widthOf(const plain::Points& points) {
  const plain::Box box = boxOf(points);
  return box.maxX - box.minX;
}

/// Puts a region relative to the one before it: apart, edge to edge, across, inside, or on top.
void arrange(shapes::Random& random, plain::Region& region, const plain::Region& before) {
  const double width = widthOf(before.points);
  switch (random.below(6)) {
    case 0:
      return place(region, 1.0, {3.0 * width, 0.0});
    case 1:
      region = before;
      return place(region, 1.0, {width, 0.0});
    case 2:
      region = before;
      return place(region, 1.0, {random.uniform(0.0, width), random.uniform(0.0, 0.5 * width)});
    case 3:
      return placeInto(random, region, before.points);
    case 4:
      if (random.chance(0.3)) region = before;
      return;
    default:
      return;
  }
}

NamedSet anySet(shapes::Random& random, std::size_t maxVertices) {
  NamedSet set;
  for (std::size_t k = random.below(6); k > 0; --k) {
    NamedRegion drawn = anyRegion(random, maxVertices, 1);
    if (!set.regions.empty()) {
      arrange(random, drawn.region, set.regions[random.below(set.regions.size())]);
    }
    set.name += drawn.name + "; ";
    set.regions.push_back(drawn.region);
  }
  return set;
}

void expectSameMeasures(const plain::Regions& regions) {
  const qcRegionSet made = make(regions);
  for (const bool holes : {true, false}) {
    EXPECT_TRUE(
        agree([&] { return made.area(holes); }, [&] { return plain::area(regions, holes); }));
    EXPECT_TRUE(agree([&] { return made.inertiaMatrix(holes); },
                      [&] { return plain::inertiaMatrix(regions, holes); }));
  }
  for (const bool holes : {true, false}) {
    EXPECT_TRUE(agree([&] { return make(regions).centerOfMass(holes); },
                      [&] { return plain::centerOfMass(regions, holes); }));
  }
  const qcXform<2> xform(qcMatrix<2>(0.5, -2, 3, 1.5), qcVector<2>(7, -11));
  EXPECT_TRUE(agree([&] { return made.encloseRect(xform); },
                    [&] { return plain::encloseRect(regions, plainTransform(xform)); }));
  EXPECT_TRUE(agree([&] { return made.encloseRect(qcXform<2>::I); },
                    [&] { return plain::encloseRect(regions, plain::identity()); }));
}

TEST(RegionSetPropertiesTest, MeasuresAreThePlainOnes) {
  shapes::Random random(201);
  forEachRound(repetitions(1500), [&](std::size_t) {
    const NamedSet set = anySet(random, 60);
    SCOPED_TRACE(set.name);
    expectSameMeasures(set.regions);
  });
}

TEST(RegionSetPropertiesTest, AnswersAboutPointsAreThePlainOnes) {
  shapes::Random random(202);
  forEachRound(repetitions(1000), [&](std::size_t) {
    const NamedSet set = anySet(random, 60);
    const qcRegionSet made = make(set.regions);
    for (int k = 0; k < 4; ++k) {
      const plain::Point p =
          set.regions.empty()
              ? plain::Point()
              : shapes::queryPoint(random, set.regions[random.below(set.regions.size())].points);
      SCOPED_TRACE(set.name + " at " + testing::PrintToString(p));
      for (const bool holes : {false, true}) {
        EXPECT_TRUE(agree([&] { return made.inside(p, holes); },
                          [&] { return plain::inside(set.regions, p, holes); }));
        for (const bool vertexOnly : {false, true}) {
          for (const bool zero : {false, true}) {
            EXPECT_TRUE(
                agree([&] { return made.distToPoint(p, vertexOnly, holes, zero); },
                      [&] { return plain::distToPoint(set.regions, p, vertexOnly, holes, zero); }));
          }
        }
      }
    }
  });
}

void expectSameRepair(const plain::Regions& regions) {
  const qcRegionSet made = make(regions);
  EXPECT_TRUE(agree([&] { return made.isSelfIntersecting(); },
                    [&] { return plain::isSelfIntersecting(regions); }));
  EXPECT_TRUE(agree(
      [&] {
        qcRegionSet result = make(plain::Regions());
        made.regularize(result);
        return twin::plainOf(result);
      },
      [&] { return plain::regularize(regions); }));
  EXPECT_TRUE(agree(
      [&] {
        qcRegionSet result = make(plain::Regions());
        made.outerHull(result);
        return twin::plainOf(result);
      },
      [&] { return plain::outerHull(regions); }));
}

/// Whether the set can be asked for crossings at all: with regions of fewer than 2 vertices it
/// throws once and then takes itself not to cross, see regionst_measures_test.cpp.
bool canBeAskedForCrossings(const plain::Regions& regions) {
  for (const plain::Region& region : regions) {
    if (region.points.size() < 2) return false;
  }
  return true;
}

TEST(RegionSetPropertiesTest, SetsAreRepairedAsThePlainOnes) {
  shapes::Random random(203);
  std::size_t merged = 0;
  forEachRound(repetitions(1200), [&](std::size_t) {
    const NamedSet set = anySet(random, 40);
    if (!canBeAskedForCrossings(set.regions)) return;
    SCOPED_TRACE(set.name);
    expectSameRepair(set.regions);
    const auto hull = outcome([&] { return plain::outerHull(set.regions); });
    if (hull.index() == 0 && std::get<0>(hull).size() < set.regions.size()) ++merged;
  });
  EXPECT_GT(merged, repetitions(50));
}

TEST(RegionSetPropertiesTest, ADegenerateEdgeThatWouldCrossIsPassedOverAsByThePlainOnes) {
  // The closing edge of 5e-16 and, later, the lower edge meet the square.
  const plain::Points around = {{0, 5e-16}, {0, 5}, {-5, 5}, {-5, -1}, {-0.5, -1}, {0, 0}};
  const plain::Points square = {{-1, -2}, {1, -2}, {1, 0}, {-1, 0}};
  expectSameRepair({{around, {}}, {square, {}}});
}

TEST(RegionSetPropertiesTest, SquaresAreMergedAsThePlainOnes) {
  // Integer corners: edges overlap, corners meet, and most sets can be repaired.
  shapes::Random random(204);
  std::size_t repaired = 0;
  forEachRound(repetitions(2000), [&](std::size_t) {
    plain::Regions regions;
    const bool isCrowd = random.chance(0.4);
    const std::size_t room = isCrowd ? 25 : 8;
    for (std::size_t k = isCrowd ? 8 + random.below(12) : 1 + random.below(6); k > 0; --k) {
      const auto x = static_cast<double>(random.below(room));
      const auto y = static_cast<double>(random.below(room));
      const auto w = static_cast<double>(1 + random.below(5));
      const auto h = static_cast<double>(1 + random.below(5));
      const double turn = random.chance(0.5) ? 0.25 : 0.0;
      regions.push_back({{{x, y}, {x + w, y + turn}, {x + w, y + h}, {x - turn, y + h}}, {}});
    }
    SCOPED_TRACE(testing::PrintToString(regions));
    expectSameRepair(regions);
    if (outcome([&] { return plain::outerHull(regions); }).index() == 0) ++repaired;
  });
  EXPECT_GT(repaired, repetitions(500));
}

/// How tiles lie: in a row, in rows or bricks; `shift` is from each to the next.
struct Tiling {
  std::size_t columns;
  plain::Point shift;
  double shiftOfRows;
  /// 0 where tiles share edges or corners; else how far they are from it, one way or the other.
  double distance;
};

Tiling anyTiling(shapes::Random& random, std::size_t count) {
  static constexpr std::array<double, 6> distances = {0.0, 0.0, 0.0, -1e-6, 1e-7, -0.5e-6};
  const std::size_t columns = random.chance(0.7) ? count : 1 + random.below(8);
  const double x = random.chance(0.7) ? 10.0 : static_cast<double>(5 + random.below(6));
  const double y = random.chance(0.5) ? 0.0 : static_cast<double>(random.below(11));
  const double shiftOfRows = random.chance(0.5) ? 0.0 : static_cast<double>(random.below(10));
  return {columns, {x, y}, shiftOfRows, distances[random.below(distances.size())]};
}

/// A square of 10, a diamond, or a square with vertices on its sides, from any vertex on.
plain::Points anyTile(shapes::Random& random, std::size_t kind, double x, double y) {
  plain::Points points = {{x, y}, {x + 10, y}, {x + 10, y + 10}, {x, y + 10}};
  if (kind == 1) points = {{x, y + 5}, {x + 5, y}, {x + 10, y + 5}, {x + 5, y + 10}};
  if (kind == 2) {
    points.insert(points.begin() + 1, {x + 5, y});
    points.emplace_back(x, y + 5);
  }
  if (random.chance(0.1)) points.insert(points.begin() + 2, points[1]);
  return points;
}

/// Tiles that touch, or come near each other or overlap by a little, all walked in one sense or
/// not, some with a hole.
NamedSet anyTiles(shapes::Random& random, std::size_t most) {
  NamedSet set;
  const std::size_t count = 2 + random.below(most - 1);
  const Tiling tiling = anyTiling(random, count);
  const std::size_t kind = random.below(4);
  const std::size_t start = random.below(4);
  const double reversed = random.chance(0.5) ? 0.0 : random.uniform();
  const double stagger = random.chance(0.3) ? static_cast<double>(1 + random.below(9)) : 0.0;
  const double origin = random.chance(0.7) ? 0.0 : 1000.0;
  for (std::size_t k = 0; k < count; ++k) {
    const auto column = static_cast<double>(k % tiling.columns);
    const auto row = static_cast<double>(k / tiling.columns);
    const double x = column * (tiling.shift.x() + tiling.distance) + row * tiling.shiftOfRows;
    const double y =
        column * tiling.shift.y() + row * (10.0 + tiling.distance) + (k % 2 == 0 ? 0.0 : stagger);
    plain::Points points = anyTile(random, kind, x + origin, y + origin);
    if (random.chance(reversed)) std::reverse(points.begin(), points.end());
    std::rotate(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(start), points.end());
    plain::Region tile{points, {}};
    if (random.chance(0.1)) tile.holes = {{shapes::cloud(random, 3), {}}};
    set.regions.push_back(tile);
  }
  return set;
}

TEST(RegionSetPropertiesTest, TilesAreRepairedAsThePlainOnes) {
  shapes::Random random(208);
  std::size_t repaired = 0;
  std::size_t refused = 0;
  forEachRound(repetitions(1500), [&](std::size_t round) {
    const NamedSet set = anyTiles(random, round % 50 == 0 ? 60 : 14);
    SCOPED_TRACE(testing::PrintToString(set.regions));
    expectSameRepair(set.regions);
    if (!plain::isSelfIntersecting(set.regions)) return;
    const auto regular = outcome([&] { return plain::regularize(set.regions); });
    ++(regular.index() == 0 ? repaired : refused);
  });
  EXPECT_GT(repaired, repetitions(100));
  EXPECT_GT(refused, repetitions(100));
}

/// Many small regions over an area that they fill sparsely or crowd; the first one may lie far
/// away. Some have holes, and a few sets in a hundred contain too few vertices to be asked about,
/// or coordinates that are not finite.
NamedSet crowd(shapes::Random& random) {
  NamedSet set;
  const double spread = random.chance(0.5) ? 100.0 : 15.0;
  const double first = random.chance(0.3) ? 10000.0 : 0.0;
  const bool isOrdinary = random.chance(0.8);
  for (std::size_t k = 8 + random.below(50); k > 0; --k) {
    NamedRegion drawn = anyRegion(random, 12, 1);
    if (isOrdinary) {
      drawn = {"", {shapes::smoothStar(3 + random.below(10), random.next()), {}}};
      if (random.chance(0.2)) drawn.region.holes = {{shapes::cloud(random, 3), {}}};
    }
    const double shift = set.regions.empty() ? first : 0.0;
    const double x = random.uniform(0.0, spread) + shift;
    const double y = random.uniform(0.0, spread) + shift;
    const double size = random.uniform(1.0, 8.0);
    placeInto(random, drawn.region, {{x, y}, {x + size, y + size}});
    set.name += drawn.name + "; ";
    set.regions.push_back(drawn.region);
  }
  return set;
}

TEST(RegionSetPropertiesTest, CrowdsAnswerAsThePlainOnes) {
  shapes::Random random(206);
  std::size_t grids = 0;
  std::size_t trees = 0;
  forEachRound(repetitions(250), [&](std::size_t) {
    const NamedSet set = crowd(random);
    const qcRegionSet made = make(set.regions);
    for (int k = 0; k < 12; ++k) {
      const plain::Points& near = set.regions[random.below(set.regions.size())].points;
      const plain::Point p = shapes::queryPoint(random, near);
      SCOPED_TRACE(set.name + " at " + testing::PrintToString(p));
      const bool holes = random.chance(0.5);
      const bool vertexOnly = random.chance(0.5);
      const bool zero = random.chance(0.5);
      EXPECT_TRUE(agree([&] { return made.inside(p, holes); },
                        [&] { return plain::inside(set.regions, p, holes); }));
      EXPECT_TRUE(
          agree([&] { return made.distToPoint(p, vertexOnly, holes, zero); },
                [&] { return plain::distToPoint(set.regions, p, vertexOnly, holes, zero); }));
    }
    const auto& index = qc_RememberedBy::set(made).index;
    if (index) ++(index->grid ? grids : trees);
  });
  EXPECT_GT(grids, repetitions(25));
  EXPECT_GT(trees, 0U);
}

TEST(RegionSetPropertiesTest, CrowdsAreRepairedAsThePlainOnes) {
  shapes::Random random(207);
  std::size_t apart = 0;
  forEachRound(repetitions(200), [&](std::size_t) {
    const NamedSet set = crowd(random);
    SCOPED_TRACE(set.name);
    EXPECT_TRUE(agree([&] { return make(set.regions).isSelfIntersecting(); },
                      [&] { return plain::isSelfIntersecting(set.regions); }));
    if (!canBeAskedForCrossings(set.regions)) return;
    if (!plain::isSelfIntersecting(set.regions)) ++apart;
    expectSameRepair(set.regions);
  });
  EXPECT_GT(apart, 0U);
}

TEST(RegionSetPropertiesTest, ConstructorsAndAdditionsRepairAsThePlainFunctions) {
  shapes::Random random(205);
  forEachRound(repetitions(300), [&](std::size_t) {
    const NamedSet set = anySet(random, 30);
    if (!canBeAskedForCrossings(set.regions) || set.regions.empty()) return;
    SCOPED_TRACE(set.name);
    EXPECT_TRUE(agree(
        [&] {
          return twin::plainOf(
              qcRegionSet(make(set.regions).regions(), qcContourDefs::eRegularize));
        },
        [&] { return plain::regularize(set.regions); }));
    EXPECT_TRUE(agree(
        [&] {
          Handles regions = make(set.regions).regions();
          const Handle last = regions.back();
          regions.pop_back();
          qcRegionSet grown(regions, qcContourDefs::eNoIntersectionRepair);
          grown.add(last, qcContourDefs::eOuterHull);
          return twin::plainOf(grown);
        },
        [&] { return plain::outerHull(set.regions); }));
  });
}

}  // namespace
