// SPDX-License-Identifier: MIT
//
// The rooms of golden_measures: features as tables and set operations see them, most of which
// touch, cross or overlap.

#include <cntrsets/filled.h>
#include <cntrsets/inscribed.h>
#include <cntrsets/inside.h>
#include <cntrsets/sets.h>
#include <cntrtable/measures.h>
#include <cntrtable/measuring.h>

#include <cmath>

#include <tests/cntrtable/batch.h>

#include "rooms.h"
#include "subjects.h"

namespace golden {

namespace {

using Feature = std::vector<qcRings>;

constexpr auto rules = {qcPolygon::eNonZero, qcPolygon::eEvenOdd};

Feature featureOf(const qcRegion& region) {
  qcRings part{region.points(), {}};
  for (const auto& hole : region.holes()) part.holes.push_back(hole->points());
  return {part};
}

/// One outline with holes, or, every third time, the outlines of a set.
Feature feature(std::size_t number) {
  if (number % 3 != 0) return featureOf(*regionWithHoles(number));
  Feature parts;
  for (const auto& region : regionSet(number).regions()) parts.push_back({region->points(), {}});
  return parts;
}

double extentOf(const Feature& feature) {
  const qcRect box = qcContour(feature.front().outline, true, 0).encloseRect(qcXform<2>::I);
  return qnKernel::greater(box.width(), box.height());
}

template <class Ask>
void forEachFeature(std::size_t count, Ask ask) {
  for (std::size_t number = 0; number < count; ++number) ask(feature(number));
}

void add(Answers& answers, const Feature& feature) {
  answers.add(feature.size());
  for (const qcRings& part : feature) answers.add(part.outline, part.holes);
}

/// What `operation` gives for the feature, or what the exception says.
template <class Operation>
void askForFeature(Answers& answers, Operation operation) {
  answers.ask([&] {
    const Feature result = operation();
    add(answers, result);
    return result.size();
  });
}

/// What qf_Measure() gives, column by column.
void add(Answers& answers, const Batch& batch) {
  for (const std::string& name : batch.names()) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(batch.rows()); ++row) {
      const table::Value value = batch.at(name, row);
      answers.add(value.index() != 0);
      if (const auto* const number = std::get_if<double>(&value)) answers.add(*number);
      if (const auto* const count = std::get_if<std::size_t>(&value)) answers.add(*count);
      if (const auto* const flag = std::get_if<bool>(&value)) answers.add(*flag);
      if (const auto* const text = std::get_if<std::string>(&value)) answers.add(*text);
    }
  }
}

void askMeasures(Answers& answers) {
  qcOutlinesBuilder builder;
  forEachFeature(300, [&](const Feature& feature) { builder.addAreas(feature); });
  forEachShape(50, [&](const shapes::Shape& shape, Random&) { builder.addLines({shape.points}); });
  std::vector<std::string> names;
  for (const table::Measure& measure : table::allMeasures()) names.emplace_back(measure.name);
  add(answers, Batch(qf_Measure(builder.finish(), names, 1)));
}

/// A few measures alone are computed in another way.
void askQuickMeasures(Answers& answers) {
  qcOutlinesBuilder builder;
  forEachShape(600, [&](const shapes::Shape& shape, Random&) {
    builder.addAreas({{shape.points, {}}});
  });
  const std::vector<std::string> names{"area",  "length", "centre_x",   "centre_y", "left",
                                       "width", "height", "axis_ratio", "note"};
  add(answers, Batch(qf_Measure(builder.finish(), names, 1)));
}

void askCircles(Answers& answers) {
  forEachFeature(300, [&](const Feature& feature) {
    answers.ask([&] {
      const qcRingContact contact = qf_RingContact(feature);
      answers.add(static_cast<int>(contact));
      return qf_InscribedCircle(feature, contact, 1e-3 * extentOf(feature));
    });
  });
}

void askInside(Answers& answers) {
  for (std::size_t number = 0; number < 600; ++number) {
    const Feature asked = feature(number);
    Random random(number);
    Points points;
    for (int i = 0; i < 40; ++i)
      points.push_back(shapes::queryPoint(random, asked.front().outline));
    answers.ask([&] {
      for (const bool isInside : qf_Inside(asked, points)) answers.add(isInside);
      return points.size();
    });
  }
}

void askRepaired(Answers& answers) {
  forEachFeature(200, [&](const Feature& feature) {
    for (const auto rule : rules)
      askForFeature(answers, [&] { return qf_MakeValid(feature, rule); });
  });
}

void askCombined(Answers& answers) {
  for (std::size_t number = 0; number < 60; ++number) {
    const Feature a = feature(number);
    const Feature b = feature(number + 60);
    for (const auto operation : {qf_Union, qf_Intersection, qf_Difference, qf_SymmetricDifference})
      askForFeature(answers, [&] { return operation(a, b); });
  }
}

void askOffsets(Answers& answers) {
  forEachFeature(60, [&](const Feature& feature) {
    for (const double share : {0.05, -0.05}) {
      askForFeature(answers, [&] {
        const double distance = share * extentOf(feature);
        return qf_Offset(feature, distance, 0.01 * std::abs(distance));
      });
    }
  });
}

}  // namespace

std::span<const Room> rooms() {
  static constexpr Room all[] = {
      {"measures", askMeasures, true}, {"quick_measures", askQuickMeasures},
      {"circles", askCircles},         {"inside", askInside},
      {"repaired", askRepaired},       {"combined", askCombined},
      {"offsets", askOffsets, true},
  };
  return all;
}

}  // namespace golden
