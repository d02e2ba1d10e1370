// SPDX-License-Identifier: MIT
//
// Measures of many features: the same as of each alone, whatever the number of threads.

#include <cntrtable/measuring.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>

#include <cntrtable/measures.h>
#include <testing/shapes/numbers.h>
#include <testing/shapes/shapes.h>

#include "batch.h"
#include "refused.h"
#include "rings.h"

namespace {

using table::Value;
using table::ValueType;
using testing::ElementsAre;

Batch measured(const qcOutlines& outlines, const std::vector<std::string>& columns,
               unsigned threads = 1) {
  return Batch(qf_Measure(outlines, columns, threads));
}

std::vector<std::string> allNames() {
  std::vector<std::string> names;
  for (const table::Measure& measure : table::allMeasures()) names.emplace_back(measure.name);
  return names;
}

/// Simple outlines, crossing ones, ones with holes, of several parts, lines, and bad ones.
qcOutlines manyOutlines(std::size_t count) {
  shapes::Random random(5);
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t vertices = 3 + random.below(20);
    const double shift = random.uniform(0.0, 1000.0);
    Points star = shapes::smoothStar(vertices + 10, i);
    for (qcVector<2>& p : star) p = p + qcVector<2>(shift, shift);
    switch (i % 7) {
      case 0:
        builder.addAreas({{shapes::gridWalk(random, vertices), {}}});
        break;
      case 1:
        builder.addLines({star});
        break;
      case 2:
        builder.addAreas({{star, {}}, {square, {}}});
        break;
      case 3:
        builder.failFeature("null");
        break;
      case 4:
        builder.addAreas({{shapes::crossingStar(vertices + 10, i), {}}});
        break;
      case 5:
        builder.addAreas({{square, {{{1, 1}, {shift, 2}, {2, 2}}}}});
        break;
      default:
        builder.addAreas({{star, {}}});
    }
  }
  return builder.finish();
}

/// The same bits.
bool isSame(const Value& a, const Value& b) {
  const double* const x = std::get_if<double>(&a);
  const double* const y = std::get_if<double>(&b);
  if (x == nullptr || y == nullptr) return a == b;
  return std::memcmp(x, y, sizeof(double)) == 0;
}

TEST(Measuring, HasTheColumnsAskedForAndStatusAndNote) {
  const qcOutlines outlines = manyOutlines(3);
  EXPECT_THAT(measured(outlines, {"solidity", "area"}).names(),
              ElementsAre("solidity", "area", "status", "note"));
  EXPECT_THAT(measured(outlines, {"note", "area"}).names(), ElementsAre("area", "status", "note"));
  EXPECT_THAT(measured(outlines, {}).names(), ElementsAre("status", "note"));
}

TEST(Measuring, GivesEveryMeasureOfEachFeatureAsMeasuredAlone) {
  const qcOutlines outlines = manyOutlines(100);
  const Batch batch = measured(outlines, allNames(), 2);
  ASSERT_EQ(batch.rows(), 100);
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    if (outlines.kind(i) == qcOutlineKind::eNothing) continue;
    const std::vector<qcRings> parts = outlines.feature(i);
    for (const table::Measure& measure : table::allMeasures()) {
      const table::Facts facts = table::factsOf({parts, outlines.kind(i) == qcOutlineKind::eAreas},
                                                measure.needs, table::Filling::eMeasured);
      EXPECT_TRUE(isSame(batch.at(measure.name, i), measure.answer(facts)))
          << measure.name << " of feature " << i;
    }
    EXPECT_EQ(batch.at("status", i), Value("ok"));
  }
}

TEST(Measuring, GivesTheSameBitsOnAnyNumberOfThreads) {
  const qcOutlines outlines = manyOutlines(1000);
  const std::vector<std::string> columns{"vertices", "closed", "area",     "centre_x",
                                         "length",   "hu_7",   "box_angle"};
  const Batch alone = measured(outlines, columns, 1);
  for (const unsigned threads : {0U, 2U, 3U, 8U, 100U}) {
    const Batch together = measured(outlines, columns, threads);
    for (const std::string& name : alone.names()) {
      EXPECT_EQ(together.nulls(name), alone.nulls(name)) << name;
      for (std::size_t row = 0; row < outlines.size(); ++row) {
        ASSERT_TRUE(isSame(together.at(name, row), alone.at(name, row)))
            << name << " of feature " << row << " on " << threads << " threads";
      }
    }
  }
}

TEST(Measuring, MakesRowsOfFeaturesWithoutAnAnswer) {
  qcOutlinesBuilder builder;
  builder.failFeature("null");
  builder.addAreas({{square, {{{1, 1}, {2, 2}}}}});
  builder.addAreas({{square, {}}, {{{1, 1}}, {}}});
  builder.addLines({{{1, 1}}});
  builder.addAreas({{{{0, 0}, {1, 0}, {1, notANumber}}, {}}});
  builder.addAreas({{bowTie, {}}});
  builder.addAreas({{square, {}}});
  const Batch batch = measured(builder.finish(), {"area", "vertices", "closed"});
  const std::vector<std::string> notes{
      "null", "hole 1 has 2 points, but needs 3", "part 2, outline has 1 point, but needs 3",
      "line has 1 point, but needs 2", "a coordinate is not a finite number"};
  for (std::size_t row = 0; row < notes.size(); ++row) {
    EXPECT_EQ(batch.at("status", row), Value("failed"));
    EXPECT_EQ(batch.at("note", row), Value(notes[row]));
    for (const char* const name : {"area", "vertices", "closed"})
      EXPECT_EQ(batch.at(name, row), Value()) << name << " of feature " << row;
  }
  EXPECT_EQ(batch.at("status", 5), Value("ok"));
  EXPECT_EQ(batch.at("note", 5), Value("crosses: measured as filled"));
  EXPECT_EQ(batch.at("area", 5), Value(8.0));
  EXPECT_EQ(batch.at("note", 6), Value());
  EXPECT_EQ(batch.at("vertices", 6), Value(std::size_t{4}));
  EXPECT_EQ(batch.at("closed", 6), Value(true));
  EXPECT_EQ(batch.nulls("area"), 5);
  EXPECT_EQ(batch.nulls("status"), 0);
  EXPECT_EQ(batch.nulls("note"), 1);
}

TEST(Measuring, AnswersForCoordinatesThatDifferByHundredsOfOrdersOfMagnitude) {
  qcOutlinesBuilder builder;
  builder.addAreas(
      {{{{0, 0}, {10, 0}, {10, 10}, {4.05e-322, 0}, {8.1126e-320, 0}}, {}},
       {{{-4.8128060861321977e+232, 1.0000000000000009}, {1, 2}, {2, 2}, {1.0000009536743164, 0}},
        {}}});
  builder.addAreas({{{{2.7387490237866885e-57, 9.77817446875982e+199},
                      {5.562684646295939e-308, 8.095e-320},
                      {10.0, 10.000030517579034},
                      {0.0, 2.0778582785132e-310},
                      {5.382699284e-315, 5.299808824e-315}},
                     {{{1.0000009536743164, 1.0},
                       {1.0, 2.0},
                       {1.4237381183149584e+189, 5.1758067067423e-310},
                       {1.35807730622e-312, 1.000003814813681}}}}});
  const Batch batch = measured(builder.finish(), {"area"});
  for (std::size_t row = 0; row < 2; ++row) EXPECT_EQ(batch.at("status", row), Value("ok"));
  EXPECT_EQ(batch.at("note", 0), Value("crosses: measured as filled"));
  EXPECT_NEAR(std::get<double>(batch.at("area", 0)), 4.8128060861321977e+232, 1e218);
  EXPECT_EQ(batch.at("note", 1), Value("crosses: measured as filled, no area"));
  EXPECT_EQ(batch.at("area", 1), Value(0.0));
}

TEST(Measuring, OfNoFeaturesHasNoRows) {
  const Batch batch = measured(qcOutlines(), {"area"}, 4);
  EXPECT_EQ(batch.rows(), 0);
  EXPECT_THAT(batch.names(), ElementsAre("area", "status", "note"));
}

TEST(Measuring, OfASliceIsThatOfItsFeatures) {
  const qcOutlines outlines = manyOutlines(200);
  const Batch whole = measured(outlines, {"area"});
  const Batch part = measured(outlines.slice(70, 100), {"area"});
  for (std::size_t row = 0; row < 100; ++row)
    EXPECT_TRUE(isSame(part.at("area", row), whole.at("area", row + 70)));
}

TEST(Measuring, RefusesColumnsThatThereAreNot) {
  EXPECT_EQ(refusalOf([] {
              measured(qcOutlines(), {"area", "sorrow"});
            }),
            "there is no measure 'sorrow'");
  EXPECT_EQ(refusalOf([] {
              measured(qcOutlines(), {"area", "length", "area"});
            }),
            "the measure 'area' is asked for twice");
}

TEST(Measuring, HasColumnsOfTheTypesThatMeasuresAre) {
  const std::map<ValueType, std::string> formats{{ValueType::eNumber, "g"},
                                                 {ValueType::eCount, "l"},
                                                 {ValueType::eYesOrNo, "b"},
                                                 {ValueType::eText, "U"}};
  qcArrowColumn batch = qf_Measure(manyOutlines(7), allNames(), 1);
  EXPECT_STREQ(batch.schema->format, "+s");
  for (std::int64_t i = 0; i < batch.schema->n_children; ++i) {
    const ArrowSchema& schema = *batch.schema->children[i];
    if (std::string(schema.name) == "status") continue;
    EXPECT_EQ(schema.format, formats.at(table::measureNamed(schema.name)->type)) << schema.name;
    EXPECT_EQ(schema.flags, ARROW_FLAG_NULLABLE);
  }
}

TEST(Measuring, LetsColumnsOutliveTheBatch) {
  qcArrowColumn batch = qf_Measure(manyOutlines(7), std::vector<std::string>{"vertices"}, 1);
  qcArrowArray vertices(batch.array->children[0]);
  EXPECT_EQ(batch.array->children[0]->release, nullptr);
  batch = {};
  EXPECT_EQ(vertices->length, 7);
  EXPECT_GE(static_cast<const std::int64_t*>(vertices->buffers[1])[6], 13);
}

}  // namespace
