// SPDX-License-Identifier: MIT
//
// cntr repair: a copy of a file in which outlines no longer cross themselves or each other.

#include <tools/repair.h>

#include <memory>

#include <tools/commands/commands.h>
#include <tools/commands/options.h>
#include <tools/errors.h>
#include <tools/input/geometry.h>
#include <tools/output/file.h>
#include <tools/output/geojson.h>
#include <tools/output/rows.h>

namespace tool {

namespace {

struct Options {
  std::string file = "-";
  std::string output;
  std::string mode = "regularize";
};

qcContourDefs::IntersectionMode modeOf(const Options& options) {
  return options.mode == "outer-hull" ? qcContourDefs::eOuterHull : qcContourDefs::eRegularize;
}

/// The feature of that number, counted from 1: a member of the collection, or the whole document.
Json& featureAt(Json& document, std::size_t number) {
  const auto features = document.find("features");
  return features == document.end() ? document : (*features)[number - 1];
}

void replaceGeometry(Json& geometry, const Geometry& outlines) {
  geometry.update(toJson(outlines));
  geometry.erase("bbox");
}

/// What described the old outline and does not fit the new one goes: boxes and edge elements.
void replace(Json& document, const Feature& feature, const Geometry& outlines) {
  document.erase("bbox");
  Json& json = featureAt(document, feature.number);
  if (isGeometry(json)) return replaceGeometry(json, outlines);
  json.erase("bbox");
  if (json["properties"].is_object()) json["properties"].erase("edgelets");
  replaceGeometry(json["geometry"], outlines);
}

/// Repairs what can be repaired, in `document` itself; a row of `accounts` for every such feature.
void repairAll(Document& document, const Options& options, RowWriter& accounts,
               Diagnostics& diagnostics) {
  forEachFeature(document, diagnostics, [&](const Feature& feature) {
    const Repair repair = repaired(feature.geometry, modeOf(options));
    if (repair.geometry) replace(document.json, feature, *repair.geometry);
    accounts.write({feature.number, feature.label ? Cell(std::size_t{*feature.label}) : Cell(),
                    repair.account});
  });
}

/// The accounts make room on standard output when the outlines go there.
void repair(const Options& options, Session& session) {
  auto document = readDocument(options.file, session.diagnostics);
  if (!document) return;
  std::ostream& report = options.output == "-" ? session.messages : session.out;
  const auto accounts = makeTable(report, {"feature", "label", "result"}, EmptyColumns::eLeftOut);
  repairAll(*document, options, *accounts, session.diagnostics);
  try {
    writeFileOr(session.out, options.output, toText(document->json));
    accounts->finish();
  } catch (const FileError& error) {
    session.diagnostics.badFile(options.output, error.what());
  }
}

constexpr const char* help =
    "Both ways follow the outline and turn at every crossing: where two lobes overlap, the overlap "
    "is\n"
    "left out. outer-hull then drops loops that lie inside others. Features of several polygons "
    "are\n"
    "repaired as a whole, those that cross being merged. A repaired outline has no holes.\n\n"
    "The report names each feature with what was done. Features that need no repair are written "
    "as\n"
    "they were, and so are those that cannot be read or repaired, which are named on standard "
    "error.\n"
    "The report goes to standard error, too, when the outlines go to standard output.\n\n"
    "Examples:\n"
    "  cntr repair samples/coins.geojson -o repaired.geojson\n"
    "  cntr repair --mode outer-hull samples/coins.geojson -o repaired.geojson";

}  // namespace

void addRepair(CLI::App& app, Session& session) {
  const auto options = std::make_shared<Options>();
  CLI::App& command =
      *app.add_subcommand("repair", "Repair outlines that cross themselves or each other");
  command.add_option("FILE", options->file, "A GeoJSON file; - or none is standard input")
      ->type_name("");
  command.add_option("-o,--output", options->output, "The repaired file; - is standard output")
      ->type_name("FILE")
      ->required();
  command.add_option("--mode", options->mode, "How; regularize is the default")
      ->check(CLI::IsMember({"regularize", "outer-hull"}));
  command.footer(help);
  command.callback([options, &session] { repair(*options, session); });
}

}  // namespace tool
