// SPDX-License-Identifier: MIT
//
// From every format to every other one and back: generated features must come back bit for bit, up
// to the turning of rings that GeoJSON asks for.

#include <gtest/gtest.h>
#include <tools/input/input.h>
#include <tools/output/file.h>
#include <tools/output/writer.h>

#include <algorithm>
#include <bit>

#include <testing/repository/repository.h>

#include "program.h"
#include "testing/shapes/shapes.h"

using program::Directory;
using tool::Feature;
using tool::Format;
using tool::Geometry;
using tool::Part;
using tool::Points;

namespace {

struct FormatFile {
  Format format;
  const char* name;
};

constexpr FormatFile formats[] = {{Format::eGeoJson, "file.geojson"},
                                  {Format::eGeoJsonLines, "file.geojsonl"},
                                  {Format::eWkt, "file.wkt"},
                                  {Format::eCsv, "file.csv"},
                                  {Format::eArchive, "file.qcar"}};

using Features = std::vector<Feature>;

class Collector : public tool::Sink {
 public:
  void take(tool::Record record) override { features.push_back(record.decode()); }
  Features features;
};

Features readBack(const std::string& path) {
  const tool::Input input = tool::openInput(path, std::nullopt);
  Collector collector;
  tool::readRecords(*input.source, input.format, collector);
  return std::move(collector.features);
}

void writeAll(const std::string& path, Format format, const Features& features) {
  tool::OutputFile file(path);
  const auto writer = tool::makeWriter(file.stream(), format, tool::Rings::eAsGeoJsonWants);
  for (const Feature& feature : features) writer->write(writer->prepare(feature, false));
  writer->finish();
  file.complete();
}

/// The features after they have been written in that format and read again, as if the file had
/// been all there is.
Features through(const Directory& directory, const FormatFile& format, const Features& features) {
  const std::string path = directory.path(format.name);
  writeAll(path, format.format, features);
  return readBack(path);
}

bool isSame(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool isSame(const Points& a, const Points& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& p, const auto& q) {
    return isSame(p.x(), q.x()) && isSame(p.y(), q.y());
  });
}

Points turned(Points points) {
  std::reverse(points.begin() + 1, points.end());
  return points;
}

bool isSameRing(const Points& a, const Points& b) { return isSame(a, b) || isSame(turned(a), b); }

bool isSame(const Part& a, const Part& b, bool closed) {
  return (closed ? isSameRing(a.outline, b.outline) : isSame(a.outline, b.outline)) &&
         std::equal(a.holes.begin(), a.holes.end(), b.holes.begin(), b.holes.end(), isSameRing);
}

bool isSame(const Geometry& a, const Geometry& b) {
  return a.closed == b.closed &&
         std::equal(a.parts.begin(), a.parts.end(), b.parts.begin(), b.parts.end(),
                    [&](const Part& p, const Part& q) { return isSame(p, q, a.closed); });
}

void expectSame(const Features& before, const Features& after, const std::string& what) {
  ASSERT_EQ(before.size(), after.size()) << what;
  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_TRUE(isSame(before[i].geometry, after[i].geometry)) << what << ", feature " << i + 1;
  }
}

/// Rounded so far that no hole or part touches another one, in a cell of their own.
Part partAt(shapes::Random& random, double x, double y) {
  Part part{shapes::regularPolygon(3 + random.below(20), random.uniform(80, 100), {x, y}), {}, {}};
  for (std::size_t k = random.below(4); k > 0; --k) {
    part.holes.push_back(shapes::regularPolygon(3 + random.below(9), random.uniform(1, 5),
                                                {x + 15.0 * static_cast<double>(k) - 30.0, y}));
  }
  return part;
}

Geometry anyGeometry(shapes::Random& random, std::uint64_t seed) {
  if (random.chance(0.3)) {
    Geometry geometry{true, {}, true};
    for (std::size_t k = 0; k < 1 + random.below(3); ++k) {
      geometry.parts.push_back(partAt(random, 300.0 * static_cast<double>(k), random.uniform()));
    }
    return geometry;
  }
  shapes::Shape shape = shapes::anyFinite(seed, 40);
  const std::size_t fewest = shape.closed ? 3 : 2;
  while (shape.points.size() < fewest) shape.points.emplace_back(random.uniform(), 1e-300);
  return {shape.closed, {{shape.points, {}, {}}}};
}

Features anyFeatures(std::uint64_t seed) {
  shapes::Random random(seed);
  Features features;
  for (std::size_t k = 0; k < 5; ++k) {
    Feature feature;
    feature.number = k + 1;
    // Neighbours with the same label must be kept apart, too.
    if (random.chance(0.7)) feature.label = 1 + random.below(2);
    feature.geometry = anyGeometry(random, 100 * seed + k);
    features.push_back(feature);
  }
  return features;
}

class FromEachFormat : public testing::TestWithParam<FormatFile> {};

}  // namespace

TEST_P(FromEachFormat, ToEachOtherNothingIsLost) {
  const Directory directory;
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    const Features features = anyFeatures(seed);
    const Features first = through(directory, GetParam(), features);
    expectSame(features, first, std::string("by ") + GetParam().name);
    for (const FormatFile& format : formats) {
      expectSame(features, through(directory, format, first),
                 std::string(GetParam().name) + " by " + format.name);
    }
    if (HasFailure()) FAIL() << "seed " << seed;
  }
}

TEST_P(FromEachFormat, LabelsAreKeptByAllButWkt) {
  const Directory directory;
  const Features features = anyFeatures(7);
  const Features after = through(directory, GetParam(), features);
  ASSERT_EQ(after.size(), features.size());
  for (std::size_t i = 0; i < features.size(); ++i) {
    const bool isWkt = GetParam().format == Format::eWkt;
    EXPECT_EQ(after[i].label, isWkt ? std::nullopt : features[i].label);
  }
}

TEST_P(FromEachFormat, TheSamplesComeBackAsTheyWere) {
  const Directory directory;
  for (const std::string name : {"coins", "cell", "cell-edgelets"}) {
    const Features features = readBack(repositoryDirectory() + "/samples/" + name + ".geojson");
    const Features after = through(directory, GetParam(), features);
    expectSame(features, after, name);
    const bool holdsEdgelets =
        GetParam().format != Format::eWkt && GetParam().format != Format::eCsv;
    for (std::size_t i = 0; i < after.size() && holdsEdgelets; ++i) {
      EXPECT_EQ(after[i].geometry.parts[0].edgelets, features[i].geometry.parts[0].edgelets)
          << name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(RoundTrip, FromEachFormat, testing::ValuesIn(formats),
                         [](const auto& tested) {
                           const std::string name = tested.param.name;
                           return name.substr(name.find('.') + 1);
                         });
