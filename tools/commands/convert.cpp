// SPDX-License-Identifier: MIT
//
// cntr convert: the features of files in another format.

#include <memory>

#include <tools/commands/commands.h>
#include <tools/commands/featurefile.h>
#include <tools/commands/options.h>

namespace tool {

using namespace formats;

namespace {

struct ConvertOptions {
  InputOptions input;
  OutputOptions output;
};

const Format& formatOf(const OutputOptions& options) {
  if (const Format* const named = namedFormat(options)) return *named;
  if (options.file == "-") return allFormats().front();
  throw CLI::ValidationError("--output",
                             "the ending of '" + options.file + "' names no format; --to does");
}

class Converting : public FeaturesToFile {
 public:
  explicit Converting(FeatureFile& file) : FeaturesToFile(file, OutlinesAre::eTheSame) {}

  Answer answer(const Origin& origin, Feature feature) const override {
    return file().prepare(origin, std::move(feature));
  }
};

void convert(const ConvertOptions& options, Session& session) {
  Inputs inputs = options.input.inputs();
  writeFeatures(inputs, options.output, formatOf(options.output), Rings::eAsGeoJsonWants, session,
                [](FeatureFile& file) { return std::make_unique<Converting>(file); });
}

/// A line for each format.
std::string listOfFormats() {
  std::string list;
  for (const Format& format : allFormats()) {
    std::string endings;
    for (const std::string_view ending : format.endings) {
      endings.append(endings.empty() || ending.empty() ? "" : " ").append(ending);
    }
    std::string name = format.name;
    name.resize(10, ' ');
    endings.resize(36, ' ');
    list.append("  ").append(name).append(endings).append(format.meaning).append("\n");
  }
  return list;
}

constexpr const char* convertHelp =
    "The format of standard input and of files with other extensions is recognised\n"
    "from their beginning; gzip files are unpacked. COCO and LabelMe files are read\n"
    "like geojson, RFC 8142 text sequences like geojsonl.\n\n"
    "All formats hold outlines with holes, open lines and features of several parts,\n"
    "with all digits of their coordinates. GeoJSON also holds labels, ids, edge\n"
    "elements and other properties; CSV holds labels or else ids; WKT holds none of\n"
    "these; an archive holds labels other than 0, and edge elements of single\n"
    "outlines without holes and of lines. What is lost is reported on standard error.\n"
    "In GeoJSON rings are closed, and outlines are given positive and holes negative\n"
    "area; the first vertex stays first.\n\n"
    "Examples:\n"
    "  cntr convert samples/coins.geojson -o coins.wkt\n"
    "  cntr convert samples/cell-edgelets.geojson -o cell.qcar\n"
    "  cntr convert samples/coins.geojson samples/cell.geojson -o all.geojsonl\n"
    "  cat samples/coins.geojson | cntr convert --from geojson --to csv";

}  // namespace

void addConvert(CLI::App& app, Session& session) {
  const auto options = std::make_shared<ConvertOptions>();
  CLI::App& command = *app.add_subcommand("convert", "Write the outlines in another format");
  addInputs(command, options->input);
  addOutput(command, options->output);
  command.footer("Formats and their extensions:\n" + listOfFormats() + "\n" + convertHelp);
  command.callback([options, &session] { convert(*options, session); });
}

}  // namespace tool
