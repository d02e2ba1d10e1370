// SPDX-License-Identifier: MIT
//
// The list of measures: against exact arithmetic, and that answers depend on nothing but the shape.

#include <cntrtable/measures.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <set>

#include <cntr/contourdefs.h>

#include <testing/plain/integermoments.h>
#include <testing/shapes/shapes.h>

namespace {

using std::numbers::pi;
using table::Facts;
using table::Filling;
using table::Measure;
using table::Value;
using Feature = std::vector<qcRings>;
using Points = std::vector<qcVector<2>>;

const Points square{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
const Points bowTie{{0, 0}, {4, 4}, {4, 0}, {0, 4}};

Points box(double x0, double y0, double x1, double y1) {
  return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

/// One measure of a shape, found out with the facts that it names and no others.
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
    for (Points& hole : part.holes)
      for (qcVector<2>& p : hole) p = change(p);
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
                                        "left",     "top",      "ellipse_x", "ellipse_y"};
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
          // An angle is one of 90 degrees or so, whatever the power of the unit.
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
      EXPECT_NEAR(numberOf("centre_x", moved), static_cast<double>(far + x), centreError);
      EXPECT_NEAR(numberOf("centre_y", moved), static_cast<double>(y - far), centreError);
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
  for (const char* name :
       {"area", "centre_x", "centre_y", "moment_xx", "moment_xy", "moment_yy", "roundness",
        "equivalent_diameter", "axis_ratio", "eccentricity", "orientation"})
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
        Points{{1e9 + 0.1, 0.7}, {1e9 + 5.3, 9.1}, {1e9 + 4.1, 2.9}, {1e9 + 5.3, 9.1}}}) {
    EXPECT_EQ(numberOf("area", {{line, {}}}), 0.0);
    EXPECT_TRUE(isNothing(measured("centre_x", {{line, {}}})));
    EXPECT_EQ(noteOf({{line, {}}}), "no area");
  }
}

TEST(Measures, AreThereForTheThinnestAndTheSmallestShapes) {
  const Feature thin{{box(0, 0, 1e6, 1e-3), {}}};
  EXPECT_NEAR(numberOf("area", thin), 1e3, 1e-9);
  EXPECT_NEAR(numberOf("axis_ratio", thin), 1e-9, 1e-20);
  EXPECT_EQ(noteOf(thin), "");
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
