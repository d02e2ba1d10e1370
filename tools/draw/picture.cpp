// SPDX-License-Identifier: MIT
//
// The drawing is an SVG element of its own inside the picture, so that nothing of it reaches into
// the strip with the legend and the scale bar below it.

#include <tools/draw/picture.h>

#include <algorithm>
#include <cmath>

#include <cntrformats/number.h>
#include <tools/answers/body.h>
#include <tools/draw/palette.h>
#include <tools/draw/svg.h>
#include <tools/report/numbers.h>

namespace tool {

using namespace formats;

namespace {

/// The longer side of the view on the screen, in pixels; a thousandth of it is the unit of all
/// strokes and letters.
constexpr double screenSize = 1000.0;
constexpr double marginShare = 0.04;
/// In units, all of them.
constexpr double narrowestPicture = 360.0;
constexpr double rowHeight = 26.0;
constexpr double stripPadding = 6.0;
constexpr double longestScaleBar = 200.0;

double unitOf(const qcRect& view) { return std::max(view.width(), view.height()) / screenSize; }

std::string number(double value) { return shortNumber(value, 6); }

/// The label decides on the colours; features without one have those of their place in the file.
unsigned long colourNumber(const Feature& feature) {
  if (!feature.label) return feature.number;
  const auto* const number = std::get_if<unsigned long>(&*feature.label);
  return number != nullptr ? *number : std::hash<std::string>()(toText(*feature.label)) % 1000;
}

std::vector<Points> ringsOf(const qcRings& part) {
  std::vector<Points> rings{part.outline};
  rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  return rings;
}

std::string outlines(const Drawing& drawing) {
  const Ground ground = drawing.underlay ? Ground::ePhotograph : Ground::ePaper;
  std::string text = "<g class=\"outlines\">\n";
  for (const Drawn& drawn : drawing.features) {
    const bool closed = drawn.feature.geometry.closed;
    const Colours colours = coloursOf(colourNumber(drawn.feature), ground);
    const std::string attributes =
        " fill=\"" + (closed ? colours.fill : "none") + "\" stroke=\"" + colours.stroke + "\"";
    for (const qcRings& part : drawn.feature.geometry.parts) {
      text += svg::path(ringsOf(part), closed, attributes, drawn.title);
    }
  }
  return text + "</g>\n";
}

/// Over a photograph with a white line behind every stroke.
std::string overlay(const Drawing& drawing, const Overlay& overlay) {
  const std::string name(overlay.name);
  std::string text;
  if (drawing.underlay) text += "<g class=\"casing\"><use href=\"#" + name + "\"/></g>\n";
  text += "<g class=\"overlay\" stroke=\"" + std::string(overlay.colour) + "\"><g id=\"" + name +
          "\">\n";
  for (const Drawn& drawn : drawing.features) {
    text += overlay.draw(drawn.feature.geometry, unitOf(drawing.view));
  }
  return text + "</g></g>\n";
}

/// As high as half the part, within what can be read and does not shout.
double letterSize(const qcRings& part, double unit) {
  const qcRect box = boxOf(part.outline);
  return std::clamp(0.5 * std::min(box.width(), box.height()), 9.0 * unit, 24.0 * unit);
}

/// Beside the centre where that is marked.
std::string labels(const Drawing& drawing) {
  const double unit = unitOf(drawing.view);
  const bool marked =
      std::any_of(drawing.overlays.begin(), drawing.overlays.end(),
                  [](const Overlay* o) { return o->name == std::string("centre"); });
  std::string text = "<g class=\"labels\">\n";
  for (const Drawn& drawn : drawing.features) {
    if (!drawn.feature.label) continue;
    for (const qcRings& part : drawn.feature.geometry.parts) {
      const double size = letterSize(part, unit);
      const qcVector<2> centre = middleOf(part, drawn.feature.geometry.closed);
      const qcVector<2> baseline(0.0, marked ? -9.0 * unit : 0.35 * size);
      text += svg::text(centre + baseline, size, toText(*drawn.feature.label));
    }
  }
  return text + "</g>\n";
}

/// What the strip below the view holds, and the size of the whole picture.
class Strip {
 public:
  explicit Strip(const Drawing& drawing)
      : view_(drawing.view),
        unit_(unitOf(view_)),
        width_(std::max(view_.width(), narrowestPicture * unit_)),
        left_(view_.ul().x() - 0.5 * (width_ - view_.width())),
        bar_(scaleBarFor(std::min(longestScaleBar * unit_, 0.4 * width_), drawing.scale)) {
    addScaleBar();
    for (const Overlay* overlay : drawing.overlays) addEntry(*overlay);
  }

  const std::string& text() const noexcept { return text_; }

  /// The area of the picture: the view and the strip.
  qcRect picture() const {
    const double height = view_.height() + (rows_ * rowHeight + 2.0 * stripPadding) * unit_;
    return {qcVector<2>(left_, view_.ul().y()), qcVector<2>(width_, height)};
  }

 private:
  /// The height of letters.
  double letters() const { return 15.0 * unit_; }
  double widthOf(const std::string& text) const {
    return 0.62 * letters() * static_cast<double>(text.size());
  }
  /// The middle of the last row.
  double middle() const {
    return view_.lr().y() + (stripPadding + (rows_ - 0.5) * rowHeight) * unit_;
  }
  double right() const { return left_ + width_ - 14.0 * unit_; }

  /// At the right end of the first row, its length beside it.
  void addScaleBar() {
    const qcVector<2> end(right(), middle());
    const qcVector<2> start = end - qcVector<2>(bar_.length, 0.0);
    const qcVector<2> tick(0.0, 5.0 * unit_);
    text_ += "<g class=\"scale\">\n" + svg::line(start, end) +
             svg::line(start - tick, start + tick) + svg::line(end - tick, end + tick) +
             svg::text(start + qcVector<2>(-9.0 * unit_, 5.0 * unit_), letters(), bar_.text) +
             "</g>\n";
    free_ = start.x() - widthOf(bar_.text) - 30.0 * unit_;
    next_ = left_ + 14.0 * unit_;
  }

  /// Beside the last entry, or in a row of its own where that leaves no room.
  void addEntry(const Overlay& overlay) {
    const double width = 38.0 * unit_ + widthOf(overlay.name);
    if (next_ + width > free_) {
      ++rows_;
      free_ = right();
      next_ = left_ + 14.0 * unit_;
    }
    const qcVector<2> at(next_ + 13.0 * unit_, middle());
    text_ += "<g class=\"legend\"><g class=\"overlay\" stroke=\"" + std::string(overlay.colour) +
             "\">" + overlay.symbol(at, unit_) + "</g>" +
             svg::text(at + qcVector<2>(20.0 * unit_, 5.0 * unit_), letters(), overlay.name) +
             "</g>\n";
    next_ += width + 18.0 * unit_;
  }

  qcRect view_;
  double unit_;
  double width_;
  double left_;
  ScaleBar bar_;
  int rows_ = 1;
  /// Where the next entry of the last row begins, and where the row ends.
  double next_ = 0.0;
  double free_ = 0.0;
  std::string text_;
};

std::string style(const Drawing& drawing) {
  const auto units = [unit = unitOf(drawing.view)](double count) { return number(count * unit); };
  const bool onPhotograph = drawing.underlay.has_value();
  return "<style>\n"
         ".outlines path{fill-opacity:" +
         std::string(onPhotograph ? ".2" : ".6") +
         ";fill-rule:evenodd;stroke-width:" + units(onPhotograph ? 2.0 : 1.5) +
         ";stroke-linejoin:round;stroke-linecap:round}\n"
         ".overlay{fill:none;stroke-width:" +
         units(1.5) +
         ";stroke-linejoin:round}\n"
         ".casing{fill:none;stroke:#fff;stroke-opacity:.7;stroke-width:" +
         units(4.0) +
         ";stroke-linejoin:round}\n"
         ".frame{fill:none;stroke:#adb5bd;stroke-width:" +
         units(1.0) +
         "}\n"
         ".scale{fill:none;stroke:#212529;stroke-width:" +
         units(1.5) +
         "}\n"
         ".scale text{text-anchor:end;stroke:none}\n"
         "text{font-family:sans-serif;fill:#212529}\n"
         ".labels text{font-weight:600;text-anchor:middle;paint-order:stroke;stroke:#fff;"
         "stroke-opacity:.8;stroke-linejoin:round;stroke-width:" +
         units(3.0) +
         "}\n"
         "image{image-orientation:none}\n"
         "</style>\n";
}

std::string viewBox(const qcRect& rectangle) {
  return " viewBox=\"" + allDigits(rectangle.ul().x()) + " " + allDigits(rectangle.ul().y()) + " " +
         allDigits(rectangle.width()) + " " + allDigits(rectangle.height()) + "\"";
}

/// The opening tag and the white ground.
std::string opening(const Drawing& drawing, const qcRect& picture) {
  const double unit = unitOf(drawing.view);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
         number(picture.width() / unit) + "\" height=\"" + number(picture.height() / unit) + "\"" +
         viewBox(picture) + ">\n" + style(drawing) + "<g fill=\"#fff\">" + svg::rectangle(picture) +
         "</g>\n";
}

/// The view and all that is drawn in it.
std::string content(const Drawing& drawing) {
  const qcRect& view = drawing.view;
  std::string text = "<svg x=\"" + allDigits(view.ul().x()) + "\" y=\"" + allDigits(view.ul().y()) +
                     "\" width=\"" + allDigits(view.width()) + "\" height=\"" +
                     allDigits(view.height()) + "\"" + viewBox(view) + ">\n";
  if (drawing.underlay) text += svg::image(drawing.underlay->area, drawing.underlay->uri);
  text += outlines(drawing);
  for (const Overlay* chosen : drawing.overlays) text += overlay(drawing, *chosen);
  if (drawing.withLabels) text += labels(drawing);
  return text + "</svg>\n<g class=\"frame\">" + svg::rectangle(view) + "</g>\n";
}

}  // namespace

qcRect viewAround(const Drawing& drawing) {
  const qcVector<2> first = drawing.features.front().feature.geometry.parts.front().outline.front();
  qcRect box(first, qcVector<2>());
  for (const Drawn& drawn : drawing.features) {
    for (const qcRings& part : drawn.feature.geometry.parts) {
      box = box.enclose(boxOf(part.outline));
      for (const Overlay* overlay : drawing.overlays) {
        if (overlay->extent != nullptr) box = box.enclose(overlay->extent(part));
      }
    }
  }
  const double extent = std::max(box.width(), box.height());
  const double margin = extent > 0.0 ? marginShare * extent : 0.5;
  const qcVector<2> border(margin, margin);
  return {qcPoint(box.ul() - border), qcPoint(box.lr() + border)};
}

std::string toSvg(const Drawing& drawing) {
  const Strip strip(drawing);
  return opening(drawing, strip.picture()) + content(drawing) + strip.text() + "</svg>\n";
}

}  // namespace tool
