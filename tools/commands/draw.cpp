// SPDX-License-Identifier: MIT
//
// cntr draw: a picture of all outlines.

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <sstream>

#include <cntrformats/errors.h>
#include <cntrformats/number.h>
#include <platform/core/exception.h>
#include <tools/commands/commands.h>
#include <tools/commands/nominalfile.h>
#include <tools/commands/options.h>
#include <tools/draw/deviations.h>
#include <tools/draw/imagesizes.h>
#include <tools/draw/picture.h>
#include <tools/draw/png.h>
#include <tools/run/outputfile.h>
#include <tools/run/progress.h>

namespace tool {

using namespace formats;

namespace {

constexpr const char* labelsName = "labels";
constexpr const char* noneName = "none";

struct DrawOptions {
  std::vector<std::string> files;
  std::string from;
  FilterOptions filter;
  std::vector<std::string> show = {labelsName};
  std::string nominal;
  std::string under;
  bool fit = false;
  Look look;
  std::string output = "-";

  bool shows(const std::string& name) const {
    return std::find(show.begin(), show.end(), name) != show.end();
  }
};

std::vector<std::string> overlayNames() {
  std::vector<std::string> names{noneName, labelsName, DeviationOverlay::name};
  for (const Overlay& overlay : allOverlays()) names.emplace_back(overlay.name);
  return names;
}

/// `deviation` is null without nominals.
std::vector<const Overlay*> chosenBy(const DrawOptions& options,
                                     const DeviationOverlay* deviation) {
  std::vector<const Overlay*> chosen;
  if (deviation != nullptr) chosen.push_back(&deviation->overlay());
  for (const Overlay& overlay : allOverlays()) {
    if (options.shows(overlay.name)) chosen.push_back(&overlay);
  }
  return chosen;
}

void check(const DrawOptions& options) {
  if (options.shows(noneName) && options.show.size() > 1)
    throw CLI::ValidationError("--show", "none goes with no other name");
  if (options.shows(DeviationOverlay::name) && options.nominal.empty())
    throw CLI::ValidationError("--show", "deviation needs a file of --nominal");
  if (!options.shows(DeviationOverlay::name) && !options.nominal.empty())
    throw CLI::ValidationError("--nominal", "goes with --show deviation alone");
  if (options.nominal == "-" &&
      std::find(options.files.begin(), options.files.end(), "-") != options.files.end())
    throw CLI::ValidationError("--nominal", "only one of the two files can be standard input");
}

/// Why the text is not a scale; empty for a number by which lengths can be multiplied and divided.
std::string refusalOfScale(const std::string& text) {
  double factor = 0.0;
  const bool isUsable =
      CLI::detail::lexical_cast(text, factor) && factor >= 1e-100 && factor <= 1e100;
  return isUsable ? "" : "needs a positive number, not " + text;
}

/// 0 when the member is not a positive number.
double positiveNumber(const Members& members, const char* name) {
  const std::string* const value = valueOf(members, name);
  try {
    return value == nullptr ? 0.0 : std::max(0.0, finiteNumber(*value));
  } catch (const FeatureError&) {
    return 0.0;
  }
}

/// The image that a collection comes from, according to its members `width` and `height`.
std::optional<ImageSize> imageOf(const Members& collection, const std::string& file) {
  const double width = positiveNumber(collection, "width");
  const double height = positiveNumber(collection, "height");
  if (width == 0.0 || height == 0.0) return std::nullopt;
  return ImageSize{file, width, height};
}

/// Takes the features of all files into a scene.
class Collector : public Sink {
 public:
  /// `deviation` is null without nominals.
  Collector(const DrawOptions& options, Scene& scene, DeviationOverlay* deviation, Session& session)
      : fit_(options.fit),
        isWanted_(options.filter.filter()),
        scene_(scene),
        deviation_(deviation),
        session_(session),
        progress_(session.messages, session.console.messagesAreTerminal) {}

  /// False when the file cannot be read to its end.
  bool read(const std::string& file, const Format* from) {
    files_.push_back(displayName(file));
    members_.clear();
    bool isRead = true;
    try {
      const Input input = openInput(file, from);
      input.read(Keep::eFeature, *this);
    } catch (const FileError& error) {
      progress_.clear();
      session_.diagnostics.badFile(files_.back(), error.what());
      isRead = false;
    }
    progress_.clear();
    session_.diagnostics.sumUp();
    return isRead;
  }

  void take(Record record) override {
    const Feature feature = record.decode();
    const std::string complaint =
        isWanted_ == nullptr || isWanted_(feature) ? complaintAbout(feature) : "";
    if (!complaint.empty()) {
      progress_.clear();
      session_.diagnostics.badFeature(files_.back(), record.location, complaint);
    }
    progress_.count(1);
    progress_.update();
  }

  /// Called twice: with the members before the features and with those after them.
  void takeMembers(Members&& members) override {
    update(members_, std::move(members));
    const auto image = imageOf(members_, files_.back());
    if (!image) return;
    members_.clear();
    images_.push_back(*image);
    if (!fit_) scene_.showImage(pixelArea(image->width, image->height));
  }

  const std::vector<std::string>& files() const noexcept { return files_; }
  const std::vector<ImageSize>& images() const noexcept { return images_; }

 private:
  /// Draws the feature. Returns what is wrong with it, empty if nothing.
  std::string complaintAbout(const Feature& feature) {
    if (!feature.problem.empty()) return feature.problem;
    try {
      scene_.add(feature, files_.size() - 1);
      return deviation_ == nullptr ? "" : deviation_->takeComplaint();
    } catch (const FeatureError& error) {
      return error.what();
    } catch (const qcException& error) {
      return error.what();
    }
  }

  bool fit_;
  std::function<bool(const Feature&)> isWanted_;
  Scene& scene_;
  DeviationOverlay* deviation_;
  Session& session_;
  Progress progress_;
  /// The members of the collection that is being read.
  Members members_;
  std::vector<std::string> files_;
  std::vector<ImageSize> images_;
};

bool isPng(const std::string& file) {
  std::string ending = std::filesystem::path(file).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ending == ".png";
}

void writePicture(const std::string& file, const Scene& scene, Look look,
                  std::ostream& standardOutput) {
  Output output(standardOutput, file);
  if (isPng(file)) {
    std::ostringstream svg;
    look.withTitles = false;
    writeSvg(svg, scene, look);
    writePng(output.stream(), std::move(svg).str());
  } else {
    writeSvg(output.stream(), scene, look);
  }
  output.complete();
}

std::optional<ImageSize> photographOf(const Look& look, const std::string& file) {
  if (!look.underlay) return std::nullopt;
  return ImageSize{file, look.underlay->area.width(), look.underlay->area.height()};
}

void draw(const DrawOptions& options, Session& session) {
  Look look = options.look;
  look.withLabels = options.shows(labelsName);
  const std::string* file = &options.output;
  NominalFile nominals;
  try {
    if (isPng(options.output)) requirePng();
    file = &options.under;
    if (!options.under.empty()) look.underlay = readUnderlay(options.under);
    file = &options.nominal;
    if (!options.nominal.empty()) nominals = readNominals(options.nominal, nullptr, session);
  } catch (const FileError& error) {
    return session.diagnostics.badFile(displayName(*file), error.what());
  }
  std::optional<DeviationOverlay> deviation;
  if (!options.nominal.empty()) deviation.emplace(nominals.nominals);
  DeviationOverlay* const deviations = deviation ? &*deviation : nullptr;
  Scene scene(chosenBy(options, deviations), look.withLabels, look.size);
  if (look.underlay && !options.fit) scene.show(look.underlay->area);
  Collector collector(options, scene, deviations, session);
  bool isAnyRead = false;
  for (const std::string& input : options.files) {
    if (collector.read(input, formatNamed(options.from))) isAnyRead = true;
  }
  if (!isAnyRead && scene.shapes().empty()) return;
  scene.complete();
  checkImageSizes(collector.images(), photographOf(look, options.under), scene.outlines(),
                  [&](const std::string& name, const std::string& what) {
                    session.diagnostics.warning(name, what);
                  });
  look.files = collector.files();
  try {
    writePicture(options.output, scene, look, session.out);
  } catch (const FileError& error) {
    session.diagnostics.badFile(options.output, error.what());
  }
}

}  // namespace

void addDraw(CLI::App& app, Session& session) {
  const auto options = std::make_shared<DrawOptions>();
  CLI::App& command = *app.add_subcommand("draw", "Draw the outlines as an SVG or PNG picture");
  addFiles(command, options->files);
  addFrom(command, options->from);
  addFilter(command, options->filter);
  command
      .add_option("-o,--output", options->output,
                  "Picture to write, PNG if it ends in .png and SVG\n"
                  "otherwise; - (the default) is standard output")
      ->type_name("FILE");
  addNames(command, "--show", options->show,
           "What to draw over the outlines, see below; by\n"
           "default labels")
      ->check(CLI::IsMember(overlayNames()));
  command
      .add_option("--nominal", options->nominal,
                  "Nominal features, with --show deviation; - is\n"
                  "standard input")
      ->type_name("FILE");
  command.add_option("--under", options->under, "PNG or JPEG picture to draw the outlines over")
      ->type_name("FILE");
  command
      .add_option("--size", options->look.size,
                  "Pixels of the longer side of what is shown; by\n"
                  "default 1000")
      ->check(CLI::Range(16, 10000))
      ->type_name("PIXELS");
  command.add_flag("--y-up", options->look.isUp,
                   "Let the y axis point upwards; a picture underneath\n"
                   "stays upright");
  command.add_flag("--fit", options->fit, "Show only the outlines instead of the whole image");
  command
      .add_option("--scale", options->look.scale.factor,
                  "Length of a pixel in the unit of the scale bar")
      ->check(CLI::Validator(refusalOfScale, ""))
      ->type_name("FACTOR");
  command.add_option("--unit", options->look.scale.unit, "Unit of the scale bar; by default px")
      ->type_name("NAME");
  command.footer(
      "Names for --show:\n"
      "  labels     the labels, as far as there is room\n"
      "  rectangle  the upright rectangle around each outline\n"
      "  circle     the circle around the two vertices farthest apart\n"
      "  hull       the convex hull\n"
      "  ellipse    the fitted ellipse\n"
      "  edgelets   the edge elements, each a segment of length 1 along the edge\n"
      "  centre     the centre of mass, or of a line the mean position\n"
      "  deviation  the boundaries, coloured by their distance from the nominal ones,\n"
      "             which are thin lines and are chosen as by 'cntr compare'\n"
      "  crossings  small circles where outlines and holes cross themselves or, in one\n"
      "             feature, each other\n"
      "  none       nothing; cannot be combined with other names\n\n"
      "What is shown is the picture of --under; without it, the image that the outlines\n"
      "come from, if the file says how large it is (members width and height of the\n"
      "collection); otherwise all outlines.\n\n"
      "Labels are left out where they would meet or cover much of the picture; the\n"
      "largest outlines keep theirs. Features at most 2 pixels large are drawn as dots,\n"
      "and vertices that make less than a tenth of a pixel of difference are left out;\n"
      "a larger --size shows more of them.\n\n"
      "Examples:\n"
      "  cntr draw samples/coins.geojson -o coins.svg\n"
      "  cntr draw samples/coins.geojson --size 2000 --show none -o outlines.svg\n"
      "  cntr draw --show labels,ellipse,centre --fit samples/cell.geojson -o cell.svg\n"
      "  cntr draw --show deviation --nominal samples/coins.geojson samples/coins.geojson "
      "-o same.svg\n"
      "  cntr draw --scale 0.107 --unit um samples/cell.geojson -o cell.svg");
  command.callback([options, &session] {
    check(*options);
    draw(*options, session);
  });
}

}  // namespace tool
