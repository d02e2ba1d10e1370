// SPDX-License-Identifier: MIT
//
// From every format to every other one and back: generated features must come back bit for bit,
// except that GeoJSON prescribes a direction for rings.

#include <gtest/gtest.h>

#include <algorithm>

#include <testing/repository/repository.h>

#include "testing/shapes/shapes.h"
#include "texts.h"

using formats::Feature;
using formats::Format;
using formats::Geometry;

using formats::Points;
using texts::isSame;

namespace {

using Features = std::vector<Feature>;

/// The features after they have been written in that format and read again, as if they were all
/// that the file contains.
Features through(const Format& format, const Features& features) {
  return texts::read(format.name, texts::written(format.name, features)).features;
}

Points turned(Points points) {
  std::reverse(points.begin() + 1, points.end());
  return points;
}

bool isSameRing(const Points& a, const Points& b) { return isSame(a, b) || isSame(turned(a), b); }

bool isSame(const qcRings& a, const qcRings& b, bool closed) {
  return (closed ? isSameRing(a.outline, b.outline) : isSame(a.outline, b.outline)) &&
         std::equal(a.holes.begin(), a.holes.end(), b.holes.begin(), b.holes.end(), isSameRing);
}

bool isSame(const Geometry& a, const Geometry& b) {
  return a.closed == b.closed &&
         std::equal(a.parts.begin(), a.parts.end(), b.parts.begin(), b.parts.end(),
                    [&](const qcRings& p, const qcRings& q) { return isSame(p, q, a.closed); });
}

void expectSame(const Features& before, const Features& after, const std::string& what) {
  ASSERT_EQ(before.size(), after.size()) << what;
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_TRUE(isSame(before[i].geometry, after[i].geometry)) << what << ", feature " << i + 1;
  }
}

/// A part in a cell of its own whose rings do not touch.
qcRings partAt(shapes::Random& random, double x, double y) {
  qcRings part{shapes::regularPolygon(3 + random.below(20), random.uniform(80, 100), {x, y}), {}};
  for (std::size_t k = random.below(4); k > 0; --k) {
    part.holes.push_back(shapes::regularPolygon(3 + random.below(9), random.uniform(1, 5),
                                                {x + 15.0 * static_cast<double>(k) - 30.0, y}));
  }
  return part;
}

Geometry anyGeometry(shapes::Random& random, std::uint64_t seed) {
  if (random.chance(0.3)) {
    Geometry geometry{true, true};
    for (std::size_t k = 0; k < 1 + random.below(3); ++k) {
      geometry.parts.push_back(partAt(random, 300.0 * static_cast<double>(k), random.uniform()));
    }
    return geometry;
  }
  shapes::Shape shape = shapes::anyFinite(seed, 40);
  const std::size_t fewest = shape.closed ? 3 : 2;
  while (shape.points.size() < fewest) shape.points.emplace_back(random.uniform(), 1e-300);
  return {shape.closed, false, {{shape.points, {}}}};
}

Features anyFeatures(std::uint64_t seed) {
  shapes::Random random(seed);
  Features features;
  for (std::size_t k = 0; k < 5; ++k) {
    Feature feature;
    feature.number = k + 1;
    // Neighbours with the same label must be kept apart, too.
    if (random.chance(0.7)) feature.label = static_cast<unsigned long>(1 + random.below(2));
    feature.geometry = anyGeometry(random, 100 * seed + k);
    features.push_back(feature);
  }
  return features;
}

class FromEachFormat : public testing::TestWithParam<Format> {};

TEST_P(FromEachFormat, ToEachOtherNothingIsLost) {
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    const Features features = anyFeatures(seed);
    const Features first = through(GetParam(), features);
    expectSame(features, first, std::string("by ") + GetParam().name);
    for (const Format& format : formats::allFormats()) {
      expectSame(features, through(format, first),
                 std::string(GetParam().name) + " by " + format.name);
    }
    if (HasFailure()) FAIL() << "seed " << seed;
  }
}

TEST_P(FromEachFormat, LabelsAreKeptByAllButWkt) {
  const Features features = anyFeatures(7);
  const Features after = through(GetParam(), features);
  ASSERT_EQ(after.size(), features.size());
  for (std::size_t i = 0; i < features.size(); ++i) {
    const bool isWkt = GetParam().name == std::string("wkt");
    EXPECT_EQ(after[i].label, isWkt ? std::nullopt : features[i].label);
  }
}

TEST_P(FromEachFormat, TheSamplesComeBackAsTheyWere) {
  for (const std::string name : {"coins", "cell", "cell-edgelets"}) {
    const Features features =
        texts::readFile(repositoryDirectory() + "/samples/" + name + ".geojson").features;
    const Features after = through(GetParam(), features);
    expectSame(features, after, name);
    const bool holdsEdgelets = GetParam().lossesOf(features[0]).empty();
    for (std::size_t i = 0; i < after.size() && holdsEdgelets; ++i) {
      EXPECT_EQ(after[i].geometry.edgelets, features[i].geometry.edgelets) << name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(RoundTrip, FromEachFormat, testing::ValuesIn(formats::allFormats()),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
