// SPDX-License-Identifier: MIT
//
// cntr draw: a picture of all outlines.

#include <algorithm>
#include <memory>

#include <cntrformats/errors.h>
#include <cntrformats/number.h>
#include <tools/commands/commands.h>
#include <tools/commands/options.h>
#include <tools/draw/document.h>
#include <tools/draw/picture.h>
#include <tools/run/outputfile.h>

namespace tool {

using namespace formats;

namespace {

constexpr const char* labelsName = "labels";

struct Options {
  std::vector<std::string> files;
  std::string from;
  std::vector<std::string> show = {labelsName};
  std::string under;
  bool fit = false;
  Scale scale;
  std::string output = "-";

  bool shows(const std::string& name) const {
    return std::find(show.begin(), show.end(), name) != show.end();
  }
};

std::vector<std::string> overlayNames() {
  std::vector<std::string> names{labelsName};
  for (const Overlay& overlay : allOverlays()) names.emplace_back(overlay.name);
  return names;
}

std::vector<const Overlay*> chosenBy(const Options& options) {
  std::vector<const Overlay*> chosen;
  for (const Overlay& overlay : allOverlays()) {
    if (options.shows(overlay.name)) chosen.push_back(&overlay);
  }
  return chosen;
}

/// Nothing for a number that lengths can be multiplied and divided by.
std::string refusalOfScale(const std::string& text) {
  double factor = 0.0;
  const bool isUsable =
      CLI::detail::lexical_cast(text, factor) && factor >= 1e-100 && factor <= 1e100;
  return isUsable ? "" : "needs a positive number, not " + text;
}

/// 0 where the member is none.
double positiveNumber(const Members& members, const char* name) {
  const std::string* const value = valueOf(members, name);
  try {
    return value == nullptr ? 0.0 : std::max(0.0, finiteNumber(*value));
  } catch (const FeatureError&) {
    return 0.0;
  }
}

/// The area of the image that a collection with the members `width` and `height` says it comes
/// from.
std::optional<qcRect> imageArea(const Members& collection) {
  const double width = positiveNumber(collection, "width");
  const double height = positiveNumber(collection, "height");
  if (width == 0.0 || height == 0.0) return std::nullopt;
  return pixelArea(width, height);
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

/// Reads all files; the view is then that of the images that they say they come from, if they do.
std::optional<qcRect> readFiles(Drawing& drawing, const Options& options, Session& session) {
  std::optional<qcRect> images;
  for (const std::string& file : options.files) {
    const auto document = readDocument(file, session.diagnostics, formatNamed(options.from));
    if (!document) continue;
    addFeatures(drawing, *document);
    const auto area = imageArea(document->members);
    if (area) images = images ? images->enclose(*area) : *area;
  }
  return images;
}

/// What the picture shows: the picture underneath, else the images, else all outlines.
qcRect viewOf(const Drawing& drawing, const std::optional<qcRect>& images, bool fit) {
  if (fit) return viewAround(drawing);
  if (drawing.underlay) return drawing.underlay->area;
  return images ? *images : viewAround(drawing);
}

void draw(const Options& options, Session& session) {
  Drawing drawing;
  drawing.overlays = chosenBy(options);
  drawing.withLabels = options.shows(labelsName);
  drawing.scale = options.scale;
  if (!options.under.empty()) {
    try {
      drawing.underlay = readUnderlay(options.under);
    } catch (const FileError& error) {
      return session.diagnostics.badFile(options.under, error.what());
    }
  }
  const std::optional<qcRect> images = readFiles(drawing, options, session);
  if (drawing.features.empty()) return;
  try {
    drawing.view = viewOf(drawing, images, options.fit);
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
  addFrom(command, options->from);
  command
      .add_option("-o,--output", options->output, "The picture; - (the default) is standard output")
      ->type_name("FILE");
  addNames(command, "--show", options->show,
           "What to draw over the outlines (labels alone unless given)")
      ->check(CLI::IsMember(overlayNames()));
  command.add_option("--under", options->under, "A PNG or JPEG picture to draw the outlines over")
      ->type_name("FILE");
  command.add_flag("--fit", options->fit, "Show the outlines alone rather than the whole image");
  command
      .add_option("--scale", options->scale.factor,
                  "The length of a pixel in the unit of the scale bar")
      ->check(CLI::Validator(refusalOfScale, ""))
      ->type_name("FACTOR");
  command.add_option("--unit", options->scale.unit, "The unit of the scale bar (px unless given)")
      ->type_name("NAME");
  command.footer(
      "The picture is as large as the one underneath, or as the image where the file says how\n"
      "large that is (members width and height of the collection), or as the outlines. edgelets\n"
      "shows the edge elements of features that have them, a segment of length 1 along the edge\n"
      "for each; crossings rings the places where outlines and holes cross themselves or, in one\n"
      "feature, each other.\n\n"
      "Examples:\n"
      "  cntr draw samples/coins.geojson -o coins.svg\n"
      "  cntr draw --show labels,ellipse,centre --fit samples/cell.geojson -o cell.svg\n"
      "  cntr draw --scale 0.107 --unit um samples/cell.geojson -o cell.svg");
  command.callback([options, &session] { draw(*options, session); });
}

}  // namespace tool
