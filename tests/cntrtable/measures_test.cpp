// SPDX-License-Identifier: MIT
//
// The list of measures: against exact arithmetic, and that answers depend on nothing but the shape.

#include <cntrtable/measures.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include <cntr/contourdefs.h>

#include <testing/plain/descriptors.h>
#include <testing/plain/integermoments.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include "rings.h"

namespace {

using table::Facts;
using table::Filling;
using table::Measure;
using table::Value;
using Feature = std::vector<qcRings>;

Points box(double x0, double y0, double x1, double y1) {
  return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

/// One measure of a shape, computed with the facts that it names and no others.
Value measured(const char* name, const Feature& feature, Filling filling = Filling::eMeasured,
               bool closed = true) {
  const Measure* measure = table::measureNamed(name);
  if (measure == nullptr) throw std::invalid_argument(name);
  return measure->answer(table::factsOf({feature, closed}, measure->needs, filling));
}

double numberOf(const char* name, const Feature& feature) {
  return std::get<double>(measured(name, feature));
}

bool isNothing(const Value& value) { return std::holds_alternative<std::monostate>(value); }

std::string noteOf(const Feature& feature, Filling filling = Filling::eMeasured,
                   bool closed = true) {
  const Value note = measured("note", feature, filling, closed);
  return isNothing(note) ? "" : std::get<std::string>(note);
}

template <class Change>
Feature changed(Feature feature, Change change) {
  for (qcRings& part : feature) {
    for (qcVector<2>& p : part.outline) p = change(p);
    for (Points& ring : part.holes)
      for (qcVector<2>& p : ring) p = change(p);
  }
  return feature;
}

const std::vector<Feature>& shapesOfAllKinds() {
  static const std::vector<Feature> all{{{square, {}}},
                                        {{square, {box(1, 2, 4, 4)}}},
                                        {{square, {box(0, 2, 4, 4)}}},
                                        {{square, {}}, {box(12, 1, 17, 3), {}}},
                                        {{square, {}}, {box(5, 1, 17, 3), {}}},
                                        {{bowTie, {}}},
                                        {{{{0, 0}, {9, 1}, {13, 8}, {2, 6}, {1, 3}}, {}}},
                                        {{{{0, 0}, {6, 0}, {6, 2}, {2, 2}, {2, 8}, {0, 8}}, {}}}};
  return all;
}

}  // namespace

TEST(Measures, RoundnessIsThatOfTheOutlineWithoutItsHoles) {
  const Feature withHole{{square, {box(1, 2, 4, 4)}}};
  EXPECT_EQ(numberOf("roundness", withHole), numberOf("roundness", {{square, {}}}));
  EXPECT_NEAR(numberOf("roundness", withHole), pi / 4.0, 1e-15);
}

TEST(Measures, HaveNamesOfTheirOwn) {
  std::set<std::string> names;
  for (const Measure& measure : table::allMeasures()) {
    EXPECT_TRUE(names.insert(measure.name).second) << measure.name;
    EXPECT_EQ(table::measureNamed(measure.name), &measure);
  }
  EXPECT_EQ(table::measureNamed("colour"), nullptr);
}

TEST(Measures, AskForEveryFactThatTheyLookAt) {
  const auto all = ~table::Needs{};
  for (const Feature& feature : shapesOfAllKinds()) {
    for (const bool closed : {true, false}) {
      const Facts facts = table::factsOf({feature, closed}, all, Filling::eMeasured);
      for (const Measure& measure : table::allMeasures())
        EXPECT_EQ(measured(measure.name, feature, Filling::eMeasured, closed),
                  measure.answer(facts))
            << measure.name;
    }
  }
}

TEST(Measures, AreTheSameFiguresAtAnySize) {
  for (const Feature& feature : shapesOfAllKinds()) {
    for (const int exponent : {-60, -10, 3, 60}) {
      const double scale = std::ldexp(1.0, exponent);
      const Feature scaled = changed(feature, [scale](const qcVector<2>& p) { return p * scale; });
      for (const Measure& measure : table::allMeasures()) {
        if (std::string(measure.name) == "crosses_itself") continue;
        Value expected = measured(measure.name, feature);
        if (double* number = std::get_if<double>(&expected))
          *number = std::ldexp(*number, exponent * measure.power);
        EXPECT_EQ(measured(measure.name, scaled), expected) << measure.name << " x " << scale;
      }
    }
  }
}

TEST(Measures, AreTheSameFiguresAnywhere) {
  const std::set<std::string> positions{"centre_x", "centre_y", "mean_x",    "mean_y",
                                        "left",     "top",      "ellipse_x", "ellipse_y",
                                        "box_x",    "box_y",    "circle_x",  "circle_y"};
  for (const Feature& feature : shapesOfAllKinds()) {
    const double extent = std::max(numberOf("width", feature), numberOf("height", feature));
    for (const double far : {1e3, 1e6, 1e9}) {
      const Feature moved =
          changed(feature, [far](const qcVector<2>& p) { return p + qcVector<2>(far, far); });
      for (const Measure& measure : table::allMeasures()) {
        if (std::string(measure.name) == "crosses_itself") continue;
        const Value here = measured(measure.name, feature);
        const Value there = measured(measure.name, moved);
        ASSERT_EQ(here.index(), there.index()) << measure.name;
        if (const double* number = std::get_if<double>(&here)) {
          const bool isPosition = positions.count(measure.name) > 0;
          const double expected = *number + (isPosition ? far : 0.0);
          const double unit = std::nextafter(far, INFINITY) - far;
          // One of several largest circles, known only to within 1e-6.
          if (std::string(measure.name).rfind("inscribed", 0) == 0) continue;
          // What has no unit may be an angle, of 90 degrees or so.
          const double size = measure.power == 0 ? 90.0 : std::pow(extent, measure.power);
          EXPECT_NEAR(std::get<double>(there), expected, 2e-12 * size + (isPosition ? unit : 0.0))
              << measure.name << " at " << far;
        } else {
          EXPECT_EQ(here, there) << measure.name << " at " << far;
        }
      }
    }
  }
}

namespace {

using Long = long double;

}  // namespace

TEST(Measures, OfTheMassAreThoseOfExactArithmeticFarFromTheOriginAndForManyVertices) {
  for (const double far : {0.0, 1e6, 1e9}) {
    for (const std::size_t n : {8U, 100U, 10000U}) {
      shapes::Random random(n);
      Points ring = shapes::skyline(random, n);
      const plain::IntegerMoments exact(ring);
      const Long area = std::abs(static_cast<Long>(exact.area2)) / 2;
      const Long x = static_cast<Long>(exact.x6) / static_cast<Long>(3 * exact.area2);
      const Long y = static_cast<Long>(exact.y6) / static_cast<Long>(3 * exact.area2);
      const Long xx = std::abs(static_cast<Long>(exact.xx12)) / 12 - area * x * x;
      const Long yy = std::abs(static_cast<Long>(exact.yy12)) / 12 - area * y * y;
      const Long sign = exact.area2 < 0 ? -1 : 1;
      const Long xy = sign * static_cast<Long>(exact.xy24) / 24 - area * x * y;

      const Feature feature{{ring, {}}};
      const double extent = std::max(numberOf("width", feature), numberOf("height", feature));
      const double boxArea = numberOf("width", feature) * numberOf("height", feature);
      const Feature moved =
          changed(feature, [far](const qcVector<2>& p) { return p + qcVector<2>(far, -far); });
      const double areaError = 1e-12 * boxArea;
      const double momentError = areaError * extent * extent;
      const double centreError = 1e-12 * extent * boxArea / static_cast<double>(area) +
                                 std::nextafter(far, INFINITY) - far;
      EXPECT_NEAR(numberOf("area", moved), static_cast<double>(area), areaError);
      EXPECT_NEAR(numberOf("centre_x", moved), static_cast<double>(static_cast<Long>(far) + x),
                  centreError);
      EXPECT_NEAR(numberOf("centre_y", moved), static_cast<double>(y - static_cast<Long>(far)),
                  centreError);
      EXPECT_NEAR(numberOf("moment_xx", moved), static_cast<double>(xx), momentError);
      EXPECT_NEAR(numberOf("moment_xy", moved), static_cast<double>(xy), momentError);
      EXPECT_NEAR(numberOf("moment_yy", moved), static_cast<double>(yy), momentError);
    }
  }
}

TEST(Measures, OfADefectInAFarRowOfAWebScanAreThoseOfTheDefect) {
  const Points defect{{3, 20'000'000}, {8, 20'000'001}, {7, 20'000'006}, {2, 20'000'004}};
  EXPECT_EQ(numberOf("area", {{defect, {}}}), 24.0);
  EXPECT_NEAR(numberOf("centre_x", {{defect, {}}}), 61.0 / 12.0, 1e-14);
  EXPECT_NEAR(numberOf("centre_y", {{defect, {}}}), 20'000'000.0 + 67.0 / 24.0, 4e-9);
}

TEST(Measures, LengthIsTheOutlinesAndPerimeterThatOfAllRings) {
  const Feature feature{{square, {box(1, 1, 3, 3), box(5, 5, 6, 6)}}, {box(20, 0, 21, 1), {}}};
  EXPECT_EQ(numberOf("length", feature), 44.0);
  EXPECT_EQ(numberOf("perimeter", feature), 56.0);
  EXPECT_TRUE(isNothing(measured("perimeter", feature, Filling::eMeasured, false)));
}

namespace {

/// Everything that is measured around the vertices or of their hull.
constexpr const char* surroundings[] = {"box_x",     "box_y",           "box_length", "box_width",
                                        "box_angle", "feret_min",       "circle_x",   "circle_y",
                                        "hull_area", "feret_min_angle", "hull_length"};

/// A rectangle of 5 by 10 whose longer side is in the direction (3, 4), from (x, y).
Points slantedRectangle(double x, double y) {
  return {{x, y}, {x + 6, y + 8}, {x + 2, y + 11}, {x - 4, y + 3}};
}

}  // namespace

TEST(Measures, OfASlantedRectangleAreItsSidesAndDirections) {
  const Feature feature{{slantedRectangle(100, 200), {}}};
  const double angle = std::atan2(4.0, 3.0) * 180.0 / pi;
  EXPECT_NEAR(numberOf("box_x", feature), 101.0, 1e-13);
  EXPECT_NEAR(numberOf("box_y", feature), 205.5, 1e-13);
  EXPECT_NEAR(numberOf("box_length", feature), 10.0, 1e-14);
  EXPECT_NEAR(numberOf("box_width", feature), 5.0, 1e-14);
  EXPECT_NEAR(numberOf("box_angle", feature), angle, 1e-13);
  EXPECT_NEAR(numberOf("rectangularity", feature), 1.0, 1e-15);
  EXPECT_NEAR(numberOf("feret_min", feature), 5.0, 1e-14);
  EXPECT_NEAR(numberOf("feret_min_angle", feature), angle - 90.0, 1e-13);
  EXPECT_NEAR(numberOf("circle_x", feature), 101.0, 1e-13);
  EXPECT_NEAR(numberOf("circle_y", feature), 205.5, 1e-13);
  EXPECT_NEAR(numberOf("circle_radius", feature), 0.5 * std::sqrt(125.0), 1e-14);
  EXPECT_NEAR(numberOf("hull_area", feature), 50.0, 1e-13);
  EXPECT_NEAR(numberOf("hull_length", feature), 30.0, 1e-13);
  EXPECT_NEAR(numberOf("solidity", feature), 1.0, 1e-15);
  EXPECT_NEAR(numberOf("convexity", feature), 1.0, 1e-15);
}

TEST(Measures, OfTheSurroundingsAreThoseOfAllOutlinesTogetherAndOfNoHole) {
  const Feature apart{{box(0, 0, 2, 1), {box(0.5, 0.25, 1, 0.5)}}, {box(8, 5, 10, 6), {}}};
  const Feature together{{{{0, 0}, {2, 0}, {10, 5}, {10, 6}, {8, 6}, {0, 1}}, {}}};
  for (const char* name : surroundings)
    EXPECT_EQ(measured(name, apart), measured(name, together)) << name;
  const double area = 4.0 - 0.125;
  EXPECT_EQ(numberOf("solidity", apart), area / numberOf("hull_area", together));
  EXPECT_EQ(numberOf("convexity", apart), numberOf("hull_length", together) / 12.0);
  EXPECT_EQ(numberOf("rectangularity", apart),
            area / (numberOf("box_length", together) * numberOf("box_width", together)));
}

TEST(Measures, OfTheSurroundingsOfAnOpenLineAreThoseOfItsVertices) {
  const Feature line{{{{0, 0}, {4, 0}, {4, 3}}, {}}};
  for (const char* name : surroundings)
    EXPECT_EQ(measured(name, line, Filling::eMeasured, false), measured(name, line)) << name;
  for (const char* name : {"solidity", "convexity", "rectangularity", "hu_1", "hu_7"})
    EXPECT_TRUE(isNothing(measured(name, line, Filling::eMeasured, false))) << name;
}

TEST(Measures, OfTheSurroundingsOfALineThereAndBackAreThoseOfItsEnds) {
  const Feature line{{{{1, 1}, {4, 5}, {2.5, 3}}, {}}};
  EXPECT_EQ(numberOf("box_length", line), 5.0);
  EXPECT_EQ(numberOf("box_width", line), 0.0);
  EXPECT_EQ(numberOf("feret_min", line), 0.0);
  EXPECT_EQ(numberOf("circle_radius", line), 2.5);
  EXPECT_EQ(numberOf("hull_area", line), 0.0);
  EXPECT_EQ(numberOf("hull_length", line), 10.0);
  EXPECT_EQ(numberOf("convexity", line), 1.0);
  for (const char* name : {"solidity", "rectangularity", "hu_1", "hu_7"})
    EXPECT_TRUE(isNothing(measured(name, line))) << name;
}

TEST(Measures, OfTheSurroundingsOfAPointAreThePointAndNoSize) {
  const Feature point{{{{7, -9}, {7, -9}, {7, -9}}, {}}};
  EXPECT_EQ(numberOf("box_x", point), 7.0);
  EXPECT_EQ(numberOf("box_y", point), -9.0);
  EXPECT_EQ(numberOf("circle_x", point), 7.0);
  EXPECT_EQ(numberOf("circle_y", point), -9.0);
  for (const char* name : {"box_length", "box_width", "box_angle", "feret_min", "feret_min_angle",
                           "circle_radius", "hull_area", "hull_length"})
    EXPECT_EQ(numberOf(name, point), 0.0) << name;
  EXPECT_TRUE(isNothing(measured("convexity", point)));
}

TEST(Measures, HusInvariantsAreThoseOfTheFilledSetWhateverItsRingsDo) {
  const auto expectHu = [](const Feature& feature, const std::vector<Points>& rings) {
    const std::array<double, 7> hu = plain::huMoments(rings);
    for (std::size_t i = 0; i < 7; ++i) {
      const std::string name = "hu_" + std::to_string(i + 1);
      EXPECT_NEAR(numberOf(name.c_str(), feature), hu[i], 1e-12 * (1e-3 + std::abs(hu[i]))) << name;
    }
  };
  const Points ell{{0, 0}, {6, 0}, {6, 2}, {2, 3}, {2, 8}, {0, 8}};
  const Points inner = box(0.5, 1, 1, 4);
  const Points turnedInner(inner.rbegin(), inner.rend());
  expectHu({{ell, {}}}, {ell});
  expectHu({{Points(ell.rbegin(), ell.rend()), {}}}, {ell});
  for (const Points& direction : {inner, turnedInner})
    expectHu({{ell, {direction}}}, {ell, turnedInner});
  expectHu({{bowTie, {}}}, {{{0, 0}, {2, 2}, {0, 4}}, {{4, 0}, {4, 4}, {2, 2}}});
  expectHu({{ell, {}}, {box(1, 1, 12, 2), {}}},
           {{{0, 0}, {6, 0}, {6, 1}, {12, 1}, {12, 2}, {6, 2}, {2, 3}, {2, 8}, {0, 8}}});
}

TEST(Measures, HusLastInvariantTellsAShapeFromItsMirrorImage) {
  const Points ell{{0, 0}, {6, 0}, {6, 2}, {2, 3}, {2, 8}, {0, 8}};
  const Feature mirrored =
      changed({{ell, {}}}, [](const qcVector<2>& p) { return qcVector<2>(-p.x(), p.y()); });
  EXPECT_NE(numberOf("hu_7", {{ell, {}}}), 0.0);
  EXPECT_NEAR(numberOf("hu_7", mirrored), -numberOf("hu_7", {{ell, {}}}), 1e-17);
  EXPECT_NEAR(numberOf("hu_1", mirrored), numberOf("hu_1", {{ell, {}}}), 1e-15);
}

TEST(Measures, OfTheSurroundingsAreThereForTheThinnestAndTheSmallestShapes) {
  const Feature thin{{slantedRectangle(0, 0), {}}};
  const Feature needle{{{{0, 0}, {1e9, 1e-9}, {1e9, 2e-9}}, {}}};
  EXPECT_EQ(numberOf("box_length", needle), 1e9);
  EXPECT_NEAR(numberOf("box_width", needle), 1e-9, 1e-24);
  EXPECT_NEAR(numberOf("feret_min", needle), 1e-9, 1e-24);
  EXPECT_NEAR(numberOf("rectangularity", needle), 0.5, 1e-12);
  EXPECT_NEAR(numberOf("solidity", needle), 1.0, 1e-12);
  const Feature speck = changed(thin, [](const qcVector<2>& p) { return p * 0x1p-200; });
  EXPECT_EQ(numberOf("box_length", speck), numberOf("box_length", thin) * 0x1p-200);
  EXPECT_EQ(numberOf("hu_2", speck), numberOf("hu_2", thin));
}

TEST(Measures, TheInscribedCircleIsThatOfTheFilledSet) {
  const auto expectCircle = [](const Feature& feature, double px, double py, double radius) {
    EXPECT_NEAR(numberOf("inscribed_radius", feature), radius, 2e-5);
    EXPECT_NEAR(numberOf("inscribed_x", feature), px, 1e-4);
    EXPECT_NEAR(numberOf("inscribed_y", feature), py, 1e-4);
  };
  expectCircle({{square, {}}}, 5, 5, 5);
  const double root = std::sqrt(2.0);
  const double middle = (10.0 + 4.0 * root) / (1.0 + root);
  expectCircle({{square, {box(0, 0, 4, 4)}}}, middle, middle, 10.0 - middle);
  expectCircle({{square, {}}, {box(10, 0, 20, 20), {}}, {box(0, 10, 10, 20), {}}}, 10, 10, 10);
  expectCircle({{square, {}}, {box(5, 0, 15, 15), {}}, {box(0, 5, 5, 15), {}}}, 7.5, 7.5, 7.5);
  for (const char* name : {"inscribed_x", "inscribed_y", "inscribed_radius"}) {
    EXPECT_TRUE(isNothing(measured(name, {{square, {}}}, Filling::eMeasured, false))) << name;
    EXPECT_TRUE(isNothing(measured(name, {{bowTie, {}}}, Filling::eLeftOut))) << name;
    EXPECT_TRUE(isNothing(measured(name, {{square, {square}}}))) << name;
    EXPECT_TRUE(isNothing(measured(name, {{box(0, 0, 1e9, 1e-3), {}}}))) << name;
  }
}

TEST(Measures, AThinDiagonalHasAllMeasuresButTheInscribedCircle) {
  const Feature thin{{{{0, 0}, {2e5, 2e5}, {2e5 + 1, 2e5}, {1, 0}}, {}}};
  EXPECT_TRUE(isNothing(measured("inscribed_radius", thin)));
  EXPECT_EQ(numberOf("area", thin), 2e5);
}

TEST(Measures, OfRingsThatTouchNeedNoNote) {
  EXPECT_EQ(noteOf({{square, {box(0, 2, 4, 4)}}}), "");
  EXPECT_EQ(numberOf("area", {{square, {box(0, 2, 4, 4)}}}), 92.0);
  EXPECT_EQ(noteOf({{square, {box(2, 2, 4, 4), box(4, 4, 6, 6)}}}), "");
  EXPECT_EQ(noteOf({{square, {}}, {box(10, 0, 20, 10), {}}}), "");
}

TEST(Measures, OfRingsThatCrossAreThoseOfTheFilledSet) {
  const Feature feature{{bowTie, {}}};
  EXPECT_EQ(numberOf("area", feature), 8.0);
  EXPECT_EQ(numberOf("centre_x", feature), 2.0);
  EXPECT_EQ(noteOf(feature), "crosses: measured as filled");
  const double length = 8.0 + 2.0 * std::sqrt(32.0);
  EXPECT_NEAR(numberOf("roundness", feature), 4.0 * pi * 8.0 / (length * length), 1e-15);
}

TEST(Measures, OfRingsThatOverlapAreThoseOfTheFilledSet) {
  EXPECT_EQ(numberOf("area", {{square, {box(20, 0, 22, 2)}}}), 100.0) << "a hole outside";
  EXPECT_EQ(noteOf({{square, {box(20, 0, 22, 2)}}}), "overlaps: measured as filled");
  EXPECT_EQ(numberOf("area", {{square, {}}, {box(2, 2, 4, 4), {}}}), 100.0) << "a part in a part";
  const Feature covered{{square, {square, square}}};
  EXPECT_EQ(numberOf("area", covered), 0.0);
  EXPECT_EQ(noteOf(covered), "overlaps: measured as filled, no area");
}

TEST(Measures, OfTheMassCanBeLeftOutWhereRingsDoNotBoundItSimply) {
  const Feature crossing{{bowTie, {}}};
  for (const char* name : {"area", "centre_x", "centre_y", "moment_xx", "moment_xy", "moment_yy",
                           "roundness", "equivalent_diameter", "axis_ratio", "eccentricity",
                           "orientation", "rectangularity", "solidity", "hu_1", "hu_7"})
    EXPECT_TRUE(isNothing(measured(name, crossing, Filling::eLeftOut))) << name;
  EXPECT_EQ(noteOf(crossing, Filling::eLeftOut), "crosses: not measured");
  EXPECT_EQ(noteOf({{square, {square, square}}}, Filling::eLeftOut), "overlaps: not measured");
  const Feature touching{{square, {box(0, 2, 4, 4)}}};
  EXPECT_EQ(measured("area", touching, Filling::eLeftOut), Value(92.0));
  EXPECT_EQ(noteOf(touching, Filling::eLeftOut), "");
}

TEST(Measures, ALineThereAndBackHasNoArea) {
  for (const Points& line :
       {Points{{0, 0}, {0.1, 0.3}, {0.7, 0.9}, {0.1, 0.3}}, Points{{5, 5}, {9, 5}, {7, 5}},
        Points{{1e9 + 0.1, 0.7}, {1e9 + 5.3, 9.1}, {1e9 + 4.1, 2.9}, {1e9 + 5.3, 9.1}},
        Points{{0.1, 0.7}, {1e9 + 0.3, 0.7 + 1e-16}, {1e8 + 0.7, 0.7}, {1e9 + 0.3, 0.7 + 1e-16}},
        Points{{-0.3, 1e-12}, {1e9, 3e-12}, {0.9, 2e-12}, {1e9, 3e-12}}}) {
    EXPECT_EQ(numberOf("area", {{line, {}}}), 0.0);
    EXPECT_TRUE(isNothing(measured("centre_x", {{line, {}}})));
    EXPECT_EQ(noteOf({{line, {}}}), "no area");
  }
}

TEST(Measures, ALineThereAndBackHasNoAreaWhateverTheSizesOfItsCoordinates) {
  // The sums of products so different are not always 0 to the last digit.
  shapes::Random random(3);
  for (int round = 0; round < 100; ++round) {
    const auto coordinate = [&random] {
      const double size = std::pow(10.0, random.uniform(-12.0, 12.0));
      return size * random.uniform(-1.0, 1.0);
    };
    Points line;
    for (int i = 0; i < 100; ++i) {
      const double x = coordinate();
      line.emplace_back(x, coordinate());
    }
    line.insert(line.end(), line.rbegin() + 1, line.rend() - 1);
    EXPECT_EQ(numberOf("area", {{line, {}}}), 0.0) << round;
  }
}

TEST(Measures, OfOneOutlineAreNotThereForSeveral) {
  const Feature two{{square, {}}, {box(12, 1, 17, 3), {}}};
  for (const char* name :
       {"mean_x", "mean_y", "diameter", "first_vertex_diameter", "ellipse_x", "ellipse_y",
        "ellipse_radius1", "ellipse_radius2", "ellipse_rotation", "ellipse_residual"}) {
    EXPECT_TRUE(isNothing(measured(name, two))) << name;
  }
}

TEST(Measures, AreThereForTheThinnestAndTheSmallestShapes) {
  const Feature thin{{box(0, 0, 1e6, 1e-3), {}}};
  EXPECT_NEAR(numberOf("area", thin), 1e3, 1e-9);
  EXPECT_NEAR(numberOf("axis_ratio", thin), 1e-9, 1e-20);
  EXPECT_EQ(noteOf(thin), "");
  const Feature sliver{{box(0, 0, 1e9, 1e-16), {}}};
  EXPECT_NEAR(numberOf("area", sliver), 1e-7, 1e-19);
  EXPECT_EQ(noteOf(sliver), "");
  const Feature upright{{box(0, -1e200, 1, 1e200), {}}};
  EXPECT_NEAR(numberOf("area", upright) / 2e200, 1.0, 1e-12);
  const Feature small{{box(1e-7, 1e-7, 2e-7, 2e-7), {}}};
  EXPECT_NEAR(numberOf("centre_x", small), 1.5e-7, 1e-22);
  EXPECT_NEAR(numberOf("axis_ratio", small), 1.0, 1e-12);
}

TEST(Measures, ThatAreTooLargeForADoubleAreNotThere) {
  const Feature huge{{{{-1e308, 0}, {1e308, 0}, {0, 1e308}}, {}}};
  EXPECT_TRUE(isNothing(measured("area", huge)));
  EXPECT_TRUE(isNothing(measured("width", huge)));
  EXPECT_EQ(numberOf("height", huge), 1e308);
  EXPECT_NEAR(numberOf("axis_ratio", huge), 1.0 / std::sqrt(3.0), 1e-12);
}

TEST(Measures, OfOpenLinesHaveNoArea) {
  const Feature line{{{{0, 0}, {3, 0}, {3, 4}}, {}}};
  EXPECT_EQ(measured("length", line, Filling::eMeasured, false), Value(7.0));
  EXPECT_TRUE(isNothing(measured("area", line, Filling::eMeasured, false)));
  EXPECT_EQ(noteOf(line, Filling::eMeasured, false), "open");
  EXPECT_EQ(noteOf({{bowTie, {}}}, Filling::eMeasured, false), "open, crosses itself");
  EXPECT_EQ(noteOf({{{{5, 5}, {5, 5}}, {}}}, Filling::eMeasured, false), "open, no length");
}

TEST(Measures, CrossesItselfIsTheLibrarysAnswer) {
  EXPECT_EQ(measured("crosses_itself", {{bowTie, {}}}), Value(true));
  EXPECT_EQ(measured("crosses_itself", {{square, {box(5, 5, 15, 15)}}}), Value(false))
      << "which does not look at holes";
  EXPECT_EQ(measured("crosses_itself", {{square, {}}, {box(10, 0, 20, 10), {}}}), Value(true))
      << "and takes outlines that touch for crossing";
}

TEST(Measures, RefuseCoordinatesThatAreNotFiniteNumbers) {
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    const Feature feature{{square, {{{1, 1}, {2, bad}, {2, 2}}}}};
    try {
      table::factsOf({feature, true}, table::eCounts, Filling::eMeasured);
      FAIL() << "not refused";
    } catch (const qcContourDefs::BadParams& error) {
      EXPECT_EQ(error.message(), L"a coordinate is not a finite number");
    }
  }
}
