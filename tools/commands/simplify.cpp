// SPDX-License-Identifier: MIT
//
// cntr simplify: the same outlines and lines with fewer vertices.

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <cntr/simplify.h>
#include <cntrformats/geojson/feature.h>
#include <cntrformats/shapes.h>
#include <tools/commands/commands.h>
#include <tools/commands/featurefile.h>
#include <tools/commands/numberlist.h>
#include <tools/commands/options.h>

namespace tool {

using namespace formats;

namespace {

/// Formats cannot hold rings with fewer vertices.
constexpr std::size_t fewestInRing = 3;

struct SimplifyOptions {
  InputOptions input;
  OutputOptions output;
  double tolerance = 0.0;
};

template <class Item>
std::vector<Item> picked(const std::vector<Item>& items, const std::vector<std::size_t>& numbers) {
  std::vector<Item> kept;
  kept.reserve(numbers.size());
  for (const std::size_t i : numbers) kept.push_back(items[i]);
  return kept;
}

/// Keeps only the kept vertices and their edge elements. Returns whether any vertex was dropped.
bool simplify(Geometry& geometry, double tolerance) {
  const auto kept = qf_KeptVertices(curvesOf(geometry.parts, geometry.closed), tolerance);
  auto next = kept.begin();
  bool isChanged = false;
  const auto keepOf = [&](auto& items) {
    if (items.size() == next->size() || (geometry.closed && next->size() < fewestInRing)) return;
    items = picked(items, *next);
    isChanged = true;
  };
  for (std::size_t k = 0; k < geometry.parts.size(); ++k) {
    if (k < geometry.edgelets.size() && !geometry.edgelets[k].empty()) keepOf(geometry.edgelets[k]);
    keepOf(geometry.parts[k].outline);
    ++next;
    for (Points& hole : geometry.parts[k].holes) {
      keepOf(hole);
      ++next;
    }
  }
  return isChanged;
}

class Simplifying : public FeaturesToFile {
 public:
  Simplifying(double tolerance, FeatureFile& file)
      : FeaturesToFile(file, OutlinesAre::eNew), tolerance_(tolerance) {}

  Answer answer(const Origin& origin, Feature feature) const override {
    Geometry geometry = feature.geometry;
    if (simplify(geometry, tolerance_)) replaceGeometry(feature, geometry);
    return file().prepare(origin, std::move(feature));
  }

 private:
  double tolerance_;
};

void simplifyFiles(const SimplifyOptions& options, Session& session) {
  Inputs inputs = options.input.inputs();
  writeFeatures(
      inputs, options.output, outputFormat(options.output, inputs), Rings::eAsTheyWere, session,
      [&](FeatureFile& file) { return std::make_unique<Simplifying>(options.tolerance, file); });
}

constexpr const char* simplifyHelp =
    "Vertices are left out as long as every point of the old outline or line stays\n"
    "within the tolerance of the new one. Those that remain keep their digits, their\n"
    "order and their edge elements; a line keeps its ends. Nothing in a feature\n"
    "crosses that did not cross before, and no hole leaves its outline. With a\n"
    "tolerance of 0, only vertices on the segment between their neighbours are left\n"
    "out.\n\n"
    "Outlines with an area keep at least three vertices; those without an area stay\n"
    "as they are if fewer would be left. Ids, labels and properties are kept.\n"
    "Features that cannot be read are reported on standard error and left out, and\n"
    "the exit status is 1.\n\n"
    "Examples:\n"
    "  cntr simplify samples/coins.geojson --tolerance 0.5 -o coins.geojson\n"
    "  cntr simplify samples/cell-edgelets.geojson --tolerance 1 -o - --to geojsonl";

}  // namespace

void addSimplify(CLI::App& app, Session& session) {
  const auto options = std::make_shared<SimplifyOptions>();
  CLI::App& command = *app.add_subcommand("simplify", "Leave out vertices within a tolerance");
  addInputs(command, options->input);
  addOutput(command, options->output);
  command
      .add_option("--tolerance", options->tolerance,
                  "Largest distance of a point of the old outline\n"
                  "from the new one, in the unit of the coordinates")
      ->required()
      ->check(refusalOfNotNegative)
      ->type_name("T");
  command.footer(simplifyHelp);
  command.callback([options, &session] { simplifyFiles(*options, session); });
}

}  // namespace tool
