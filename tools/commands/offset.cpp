// SPDX-License-Identifier: MIT
//
// cntr offset: outlines grown or shrunk by a distance.

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <cntrsets/sets.h>
#include <tools/commands/commands.h>
#include <tools/commands/featurefile.h>
#include <tools/commands/newoutlines.h>
#include <tools/commands/numberlist.h>
#include <tools/commands/options.h>

namespace tool {

using namespace formats;

namespace {

constexpr double usualTolerance = 1e-3;

struct OffsetOptions {
  InputOptions input;
  OutputOptions output;
  double distance = 0.0;
  std::optional<double> arcTolerance;
};

class Offsetting : public NewOutlines {
 public:
  Offsetting(const OffsetOptions& options, FeatureFile& file, Session& session)
      : NewOutlines(file, session),
        distance_(options.distance),
        // At a distance of 0 there are no arcs.
        arcTolerance_(options.arcTolerance.value_or(
            distance_ == 0.0 ? 1.0 : usualTolerance * std::abs(distance_))) {}

 protected:
  std::vector<qcRings> outlinesOf(const std::vector<qcRings>& parts) const override {
    return qf_Offset(parts, distance_, arcTolerance_);
  }

 private:
  double distance_;
  double arcTolerance_;
};

void offset(const OffsetOptions& options, Session& session) {
  Inputs inputs = options.input.inputs();
  writeFeatures(
      inputs, options.output, outputFormat(options.output, inputs), Rings::eAsTheyWere, session,
      [&](FeatureFile& file) { return std::make_unique<Offsetting>(options, file, session); });
}

constexpr const char* offsetHelp =
    "Each feature becomes all points within the distance of what its outlines fill;\n"
    "with a negative distance, the points of what they fill that are at least that\n"
    "far from everything outside. Holes shrink when the outline grows. Corners are\n"
    "rounded: arcs are drawn as chords that leave them by at most the arc tolerance.\n"
    "What outlines that cross fill is decided by the rule nonzero. Results have the\n"
    "normal form; 'cntr repair --help' describes both. Ids, labels and properties\n"
    "are kept, edge elements are not.\n\n"
    "Features of which nothing is left are not written; their number is reported on\n"
    "standard error. Open lines and features that cannot be read are reported there\n"
    "and left out, and the exit status is 1.\n\n"
    "Examples:\n"
    "  cntr offset samples/coins.geojson --distance 2.5 -o grown.geojson\n"
    "  cntr offset samples/coins.geojson --distance=-10 -o shrunk.geojson\n"
    "  cntr offset samples/coins.geojson --distance 5 --arc-tolerance 0.1 -o - --to wkt";

}  // namespace

void addOffset(CLI::App& app, Session& session) {
  const auto options = std::make_shared<OffsetOptions>();
  CLI::App& command = *app.add_subcommand("offset", "Grow or shrink outlines by a distance");
  addInputs(command, options->input);
  addOutput(command, options->output);
  command
      .add_option("--distance", options->distance,
                  "How far, in the unit of the coordinates; inwards\n"
                  "when negative")
      ->required()
      ->check(refusalOfNumber)
      ->type_name("D");
  command
      .add_option("--arc-tolerance", options->arcTolerance,
                  "How far chords may leave their arc; by default a\n"
                  "thousandth of the distance")
      ->check(refusalOfPositive)
      ->type_name("E");
  command.footer(offsetHelp);
  command.callback([options, &session] { offset(*options, session); });
}

}  // namespace tool
