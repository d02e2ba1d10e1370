// SPDX-License-Identifier: MIT
//
// The view is a nested SVG element, so that nothing in it reaches into the strip below with the
// legend and the scale bar.

#include <tools/draw/picture.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <ostream>

#include <tools/draw/canvas.h>
#include <tools/draw/labels.h>
#include <tools/draw/palette.h>
#include <tools/draw/svg.h>
#include <tools/draw/thinning.h>
#include <tools/report/numbers.h>

namespace tool {

using namespace formats;

namespace {

// All in pixels.
constexpr double narrowestPicture = 360.0;
constexpr double rowHeight = 26.0;
constexpr double stripPadding = 6.0;
constexpr double stripMargin = 14.0;
constexpr double longestScaleBar = 200.0;
constexpr double letters = 15.0;
/// The number of colours for deviations on either side of 0, and the width of each in the legend.
constexpr int bandsOfSide = 10;
constexpr double bandWidth = 6.0;
/// Lines of one colour with a gap no wider than this are joined, and thinned by this tolerance.
constexpr double widestGap = 1.0;
constexpr double tintTolerance = 0.05;
/// Half the length of the strokes of a cross, and the radius of a spot.
constexpr double markSize = 6.0;
/// Thin, so that single segments can be told apart.
constexpr double segmentWidth = 1.0;
constexpr double dotRadius = 2.0;

std::string quoted(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + "\"";
}

/// SVG elements for marks in pixels.
struct Drawn {
  /// Whatever lies outside these is left out.
  Box limits;

  std::string operator()(const Box& box) const {
    const Points corners{
        box.low, {box.high.x(), box.low.y()}, box.high, {box.low.x(), box.high.y()}};
    if (limits.holds(box)) return svg::rectangle(box);
    return (*this)(Ring{corners});
  }
  std::string operator()(const Circle& circle) const { return svg::circle(circle, "", ""); }
  std::string operator()(const Ellipse& ellipse) const { return svg::ellipse(ellipse); }
  std::string operator()(const Ring& ring) const {
    return svg::path({clippedRing(ring.points, limits)}, true, "", "");
  }
  std::string operator()(const Segment& segment) const {
    return svg::line(segment.from, segment.to);
  }
  std::string operator()(const Tint& tint) const { return svg::line(tint.from, tint.to); }
  std::string operator()(const Cross& cross) const {
    const qcVector<2> right(markSize, 0.0);
    const qcVector<2> down(0.0, markSize);
    return svg::line(cross.at - right, cross.at + right) +
           svg::line(cross.at - down, cross.at + down);
  }
  std::string operator()(const Spot& spot) const {
    return svg::circle({spot.at, markSize}, "", "");
  }
};

/// The colour of a band of values; bands are numbered from -bandsOfSide to bandsOfSide.
std::string colourOfBand(int band) {
  return colourOfDeviation(static_cast<double>(band) / bandsOfSide);
}

int bandOf(double value, double range) {
  return range > 0.0 ? static_cast<int>(std::lround(value / range * bandsOfSide)) : 0;
}

/// Continues the last of the lines with the tint, in pixels, or begins another.
void append(const Tint& tint, std::vector<Points>& lines) {
  if (lines.empty() || lines.back().back().distance(tint.from) > widestGap) lines.emplace_back();
  lines.back().push_back(tint.from);
  lines.back().push_back(tint.to);
}

std::string drawn(const Mark& mark, const Box& limits) { return std::visit(Drawn{limits}, mark); }

/// The contents of the strip below the view, and the size of the whole picture.
class Strip {
 public:
  Strip(const Canvas& canvas, const Scale& scale)
      : canvas_(canvas),
        width_(std::max(canvas.width(), narrowestPicture)),
        left_(-0.5 * (width_ - canvas.width())) {
    addScaleBar(scale);
  }

  /// Adds an overlay after the last entry, or in a new row when there is no room left.
  void addOverlay(const Overlay& overlay) {
    const qcVector<2> at = placeFor(38.0 + widthOf(overlay.name, letters)) + qcVector<2>(13.0, 0.0);
    const qcVector<2> half(13.0, 0.0);
    const Mark mark = overlay.symbol ? overlay.symbol(at) : Mark(Segment{at - half, at + half});
    text_ += "<g class=\"legend\"><g class=\"overlay\"" + quoted("stroke", overlay.colour) + ">" +
             drawn(mark, picture()) + "</g>" +
             svg::text(at + qcVector<2>(20.0, 5.0), letters, overlay.name) + "</g>\n";
  }

  /// What the colours of deviations up to `range` mean.
  void addColours(const Overlay& overlay, double range, const Scale& scale) {
    const std::string size = shortNumber(range * scale.factor, 3) + " " + scale.unit;
    const std::string before = overlay.name + std::string(": ") + size + " inside";
    const std::string after = size + " outside";
    constexpr double gap = 8.0;
    constexpr double bar = (2 * bandsOfSide + 1) * bandWidth;
    const double start = widthOf(before, letters) + gap;
    const qcVector<2> at = placeFor(start + bar + gap + widthOf(after, letters));
    text_ +=
        "<g class=\"legend colours\">" + svg::text(at + qcVector<2>(0.0, 5.0), letters, before);
    for (int band = -bandsOfSide; band <= bandsOfSide; ++band) {
      const double left = start + (band + bandsOfSide) * bandWidth;
      text_ +=
          "<g" + quoted("fill", colourOfBand(band)) + ">" +
          svg::rectangle({at + qcVector<2>(left, -5.0), at + qcVector<2>(left + bandWidth, 5.0)}) +
          "</g>";
    }
    text_ += svg::text(at + qcVector<2>(start + bar + gap, 5.0), letters, after) + "</g>\n";
  }

  void addNote(const std::string& note) {
    const qcVector<2> at = placeFor(widthOf(note, letters));
    text_ +=
        "<g class=\"legend\">" + svg::text(at + qcVector<2>(0.0, 5.0), letters, note) + "</g>\n";
  }

  const std::string& text() const noexcept { return text_; }

  /// The area of the picture: the view and the strip.
  Box picture() const {
    const double height = canvas_.height() + rows_ * rowHeight + 2.0 * stripPadding;
    return {{left_, 0.0}, {left_ + width_, height}};
  }

 private:
  /// The middle of the last row.
  double middle() const { return canvas_.height() + stripPadding + (rows_ - 0.5) * rowHeight; }
  double right() const { return left_ + width_ - stripMargin; }

  /// Adds the scale bar at the right end of the first row, with its length beside it.
  void addScaleBar(const Scale& scale) {
    const double longest = std::min(longestScaleBar, 0.4 * width_);
    const ScaleBar bar = scaleBarFor(longest * canvas_.pixel(), scale);
    const qcVector<2> end(right(), middle());
    const qcVector<2> start = end - qcVector<2>(canvas_.map(bar.length), 0.0);
    const qcVector<2> tick(0.0, 5.0);
    text_ += "<g class=\"scale\">\n" + svg::line(start, end) +
             svg::line(start - tick, start + tick) + svg::line(end - tick, end + tick) +
             svg::text(start + qcVector<2>(-9.0, 5.0), letters, bar.text) + "</g>\n";
    free_ = start.x() - widthOf(bar.text, letters) - 30.0;
    next_ = left_ + stripMargin;
  }

  /// The left end of an entry of this width.
  qcVector<2> placeFor(double width) {
    if (next_ + width > free_) {
      ++rows_;
      free_ = right();
      next_ = left_ + stripMargin;
    }
    const qcVector<2> at(next_, middle());
    next_ += width + 18.0;
    return at;
  }

  const Canvas& canvas_;
  double width_;
  double left_;
  int rows_ = 1;
  /// Where the next entry of the last row begins, and where the row ends.
  double next_ = 0.0;
  double free_ = 0.0;
  std::string text_;
};

class Picture {
 public:
  Picture(std::ostream& out, const Scene& scene, const Look& look)
      : out_(out),
        scene_(scene),
        look_(look),
        canvas_(scene.view(), look.size, look.isUp),
        limits_(Box{{0.0, 0.0}, {canvas_.width(), canvas_.height()}}.widened(beyondView)) {}

  void write() {
    const std::vector<Label> labels =
        look_.withLabels ? labelsOf(scene_, canvas_, marksCentres()) : std::vector<Label>();
    Strip strip(canvas_, look_.scale);
    for (const Layer& layer : scene_.layers()) {
      if (layer.overlay->isColoured) {
        strip.addColours(*layer.overlay, layer.marks.range(), look_.scale);
      } else {
        strip.addOverlay(*layer.overlay);
      }
    }
    const std::size_t labelled = labelledShapes();
    if (look_.withLabels && labels.size() < labelled) {
      strip.addNote(std::to_string(labels.size()) + " of " + std::to_string(labelled) + " labels");
    }
    writeOpening(strip.picture());
    writeView();
    writeLabels(labels);
    out_ << "</svg>\n<g class=\"frame\">" << svg::rectangle(canvas_.map(scene_.view())) << "</g>\n"
         << strip.text() << "</svg>\n";
  }

 private:
  bool marksCentres() const {
    return std::any_of(scene_.layers().begin(), scene_.layers().end(), [](const Layer& layer) {
      return layer.overlay->name == std::string("centre");
    });
  }

  std::size_t labelledShapes() const {
    return static_cast<std::size_t>(
        std::count_if(scene_.shapes().begin(), scene_.shapes().end(),
                      [](const Shape& shape) { return !shape.label.empty(); }));
  }

  /// The opening tag and the white background.
  void writeOpening(const Box& picture) {
    out_ << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\""
         << quoted("width", svg::number(picture.width()))
         << quoted("height", svg::number(picture.height()))
         << quoted("viewBox", svg::number(picture.low.x()) + " 0 " + svg::number(picture.width()) +
                                  " " + svg::number(picture.height()))
         << ">\n";
    writeStyle();
    out_ << "<g fill=\"#fff\">" << svg::rectangle(picture) << "</g>\n";
  }

  void writeStyle() {
    const bool onPhotograph = look_.underlay.has_value();
    out_ << "<style>\n.outlines path{fill-opacity:" << (onPhotograph ? ".2" : ".6")
         << ";fill-rule:evenodd;stroke-width:" << (onPhotograph ? "2" : "1.5")
         << ";stroke-linejoin:round;stroke-linecap:round}\n"
            ".overlay{fill:none;stroke-width:1.5;stroke-linejoin:round}\n"
            ".overlay .thin{stroke-width:"
         << svg::number(segmentWidth)
         << "}\n"
            ".overlay .tint{stroke-width:4;stroke-linecap:round}\n"
            ".casing{fill:none;stroke:#fff;stroke-opacity:.7;stroke-width:4;"
            "stroke-linejoin:round}\n"
            ".frame{fill:none;stroke:#adb5bd;stroke-width:1}\n"
            ".scale{fill:none;stroke:#212529;stroke-width:1.5}\n"
            ".scale text{text-anchor:end;stroke:none}\n"
            "text{font-family:sans-serif;fill:#212529}\n"
            ".labels text{font-weight:600;text-anchor:middle;paint-order:stroke;stroke:#fff;"
            "stroke-opacity:.8;stroke-linejoin:round;stroke-width:3}\n"
            "image{image-orientation:none}\n"
            "</style>\n";
  }

  /// Everything that is drawn in the view except the labels.
  void writeView() {
    const std::string width = svg::number(canvas_.width());
    const std::string height = svg::number(canvas_.height());
    out_ << "<svg x=\"0\" y=\"0\"" << quoted("width", width) << quoted("height", height)
         << quoted("viewBox", "0 0 " + width + " " + height) << ">\n";
    if (look_.underlay) out_ << svg::image(canvas_.map(look_.underlay->area), look_.underlay->uri);
    out_ << "<g class=\"outlines\">\n";
    for (const Shape& shape : scene_.shapes()) writeShape(shape);
    out_ << "</g>\n";
    for (const Layer& layer : scene_.layers()) writeLayer(layer);
  }

  std::string titleOf(const Shape& shape) const {
    return look_.files[shape.file] + ", feature " + std::to_string(shape.number);
  }

  void writeShape(const Shape& shape) {
    const Colours colours =
        coloursOf(shape.colour, look_.underlay ? Ground::ePhotograph : Ground::ePaper);
    const std::string title = look_.withTitles ? titleOf(shape) : "";
    if (shape.rings.empty()) {
      const Circle dot{canvas_.map(shape.box.middle()), dotRadius};
      out_ << svg::circle(dot, quoted("fill", colours.stroke), title);
      return;
    }
    std::vector<Points> rings;
    for (const Points& ring : shape.rings) rings.push_back(canvas_.map(ring));
    const std::string attributes =
        quoted("fill", shape.closed ? colours.fill : "none") + quoted("stroke", colours.stroke);
    out_ << svg::path(rings, shape.closed, attributes, title);
  }

  /// Over a photograph every stroke has a white line beneath it. All segments are one path, and so
  /// are all tints of a colour.
  void writeLayer(const Layer& layer) {
    const std::string name(layer.overlay->name);
    if (look_.underlay) out_ << "<g class=\"casing\"><use href=\"#" << name << "\"/></g>\n";
    out_ << "<g class=\"overlay\"" << quoted("stroke", layer.overlay->colour) << "><g id=\"" << name
         << "\">\n";
    std::vector<Points> segments;
    std::map<int, std::vector<Points>> tints;
    for (const Mark& mark : layer.marks.marks()) {
      const Mark mapped = canvas_.map(mark);
      if (!limits_.meets(boxOf(mapped))) continue;
      if (const auto* segment = std::get_if<Segment>(&mapped)) {
        segments.push_back({segment->from, segment->to});
      } else if (const auto* tint = std::get_if<Tint>(&mapped)) {
        append(*tint, tints[bandOf(tint->value, layer.marks.range())]);
      } else {
        out_ << drawn(mapped, limits_);
      }
    }
    for (auto& [band, lines] : tints) {
      for (Points& line : lines) line = thinnedLine(line, tintTolerance);
      out_ << svg::path(lines, false, " class=\"tint\"" + quoted("stroke", colourOfBand(band)), "");
    }
    if (!segments.empty()) out_ << svg::path(segments, false, " class=\"thin\"", "");
    out_ << "</g></g>\n";
  }

  void writeLabels(const std::vector<Label>& labels) {
    if (!look_.withLabels) return;
    out_ << "<g class=\"labels\">\n";
    for (const Label& label : labels) out_ << svg::text(label.at, label.size, label.text);
    out_ << "</g>\n";
  }

  std::ostream& out_;
  const Scene& scene_;
  const Look& look_;
  Canvas canvas_;
  /// In pixels.
  Box limits_;
};

}  // namespace

void writeSvg(std::ostream& out, const Scene& scene, const Look& look) {
  Picture(out, scene, look).write();
}

}  // namespace tool
