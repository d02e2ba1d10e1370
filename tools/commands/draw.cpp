// SPDX-License-Identifier: MIT
//
// cntr draw: a picture of all outlines.

#include <algorithm>
#include <memory>

#include <tools/commands/commands.h>
#include <tools/commands/options.h>
#include <tools/draw/picture.h>
#include <tools/errors.h>
#include <tools/output/file.h>

namespace tool {

namespace {

struct Options {
  std::vector<std::string> files;
  std::vector<std::string> show;
  std::string output = "-";
};

std::vector<std::string> overlayNames() {
  std::vector<std::string> names;
  for (const Overlay& overlay : allOverlays()) names.emplace_back(overlay.name);
  return names;
}

std::vector<const Overlay*> chosenBy(const Options& options) {
  std::vector<const Overlay*> chosen;
  for (const Overlay& overlay : allOverlays()) {
    const auto& names = options.show;
    if (std::find(names.begin(), names.end(), overlay.name) != names.end()) {
      chosen.push_back(&overlay);
    }
  }
  return chosen;
}

void addFeatures(Drawing& drawing, const Document& document) {
  for (const Feature& feature : document.features) {
    drawing.features.push_back(
        {document.name + ", feature " + std::to_string(feature.number), feature});
  }
}

/// Beyond this, squares of lengths overflow; nothing that was seen by a camera comes near it.
constexpr double widestView = 1e100;

void requireDrawable(const qcRect& view) {
  if (view.width() < widestView && view.height() < widestView) return;
  throw FileError("cannot be drawn: the coordinates are too large");
}

/// The picture holds every image that the files come from, or else every outline.
void draw(const Options& options, Session& session) {
  Drawing drawing{{}, chosenBy(options), {}};
  std::optional<qcRect> image;
  for (const std::string& file : options.files) {
    const auto document = readDocument(file, session.diagnostics);
    if (!document) continue;
    addFeatures(drawing, *document);
    const auto area = imageArea(document->json);
    if (area) image = image ? image->enclose(*area) : *area;
  }
  if (drawing.features.empty()) return;
  drawing.view = image ? *image : viewAround(drawing.features);
  try {
    requireDrawable(drawing.view);
    writeFileOr(session.out, options.output, toSvg(drawing));
  } catch (const FileError& error) {
    session.diagnostics.badFile(options.output, error.what());
  }
}

}  // namespace

void addDraw(CLI::App& app, Session& session) {
  const auto options = std::make_shared<Options>();
  CLI::App& command = *app.add_subcommand("draw", "Draw the outlines as an SVG picture");
  addFiles(command, options->files);
  command
      .add_option("-o,--output", options->output, "The picture; - (the default) is standard output")
      ->type_name("FILE");
  addNames(command, "--show", options->show, "Draw these over every outline")
      ->check(CLI::IsMember(overlayNames()));
  command.footer(
      "The picture is as large as the image where the file says how large that is (members width\n"
      "and height of the collection), else as the outlines. edgelets shows the edge elements of\n"
      "features that have them, a segment of length 1 along the edge for each.\n\n"
      "Examples:\n"
      "  cntr draw samples/coins.geojson -o coins.svg\n"
      "  cntr draw --show ellipse,centre samples/cell.geojson -o cell.svg");
  command.callback([options, &session] { draw(*options, session); });
}

}  // namespace tool
