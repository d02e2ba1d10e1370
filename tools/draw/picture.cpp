// SPDX-License-Identifier: MIT

#include <tools/draw/picture.h>

#include <algorithm>
#include <cmath>

#include <tools/draw/palette.h>
#include <tools/draw/svg.h>
#include <tools/output/numbers.h>
#include <tools/shapes.h>

namespace tool {

namespace {

/// The longer side of the picture on the screen, in pixels; a thousandth of it is the unit of all
/// strokes and letters.
constexpr double screenSize = 1000.0;
constexpr double legendHeight = 34.0;
constexpr double marginShare = 0.04;

double unitOf(const qcRect& view) { return std::max(view.width(), view.height()) / screenSize; }

std::string number(double value) { return shortNumber(value, 6); }

/// The label decides on the colours; features without one have those of their place in the file.
unsigned long colourNumber(const Feature& feature) {
  return feature.label.value_or(static_cast<unsigned long>(feature.number));
}

std::vector<Points> ringsOf(const Part& part) {
  std::vector<Points> rings{part.outline};
  rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  return rings;
}

std::string outlines(const Drawing& drawing) {
  std::string text = "<g class=\"outlines\">\n";
  for (const Drawn& drawn : drawing.features) {
    const bool closed = drawn.feature.geometry.closed;
    const Colours colours = coloursOf(colourNumber(drawn.feature));
    const std::string attributes =
        " fill=\"" + (closed ? colours.fill : "none") + "\" stroke=\"" + colours.stroke + "\"";
    for (const Part& part : drawn.feature.geometry.parts) {
      text += svg::path(ringsOf(part), closed, attributes, drawn.title);
    }
  }
  return text + "</g>\n";
}

std::string overlay(const Drawing& drawing, const Overlay& overlay) {
  std::string text = std::string("<g class=\"overlay\" stroke=\"") + overlay.colour + "\">\n";
  for (const Drawn& drawn : drawing.features) {
    for (const Part& part : drawn.feature.geometry.parts) {
      text += overlay.draw(part, drawn.feature.geometry.closed, unitOf(drawing.view));
    }
  }
  return text + "</g>\n";
}

/// As high as half the part, within what can be read and does not shout.
double letterSize(const Part& part, double unit) {
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
    for (const Part& part : drawn.feature.geometry.parts) {
      const double size = letterSize(part, unit);
      const qcVector<2> centre = centreOf(part, drawn.feature.geometry.closed);
      const qcVector<2> baseline(0.0, marked ? -9.0 * unit : 0.35 * size);
      text += svg::text(centre + baseline, size, std::to_string(*drawn.feature.label));
    }
  }
  return text + "</g>\n";
}

std::string legend(const Drawing& drawing) {
  const double unit = unitOf(drawing.view);
  double x = drawing.view.ul().x() + 14.0 * unit;
  const double y = drawing.view.lr().y() + 0.5 * legendHeight * unit;
  std::string text = "<g class=\"legend\">\n";
  for (const Overlay* overlay : drawing.overlays) {
    const qcVector<2> start(x, y);
    text += std::string("<g class=\"overlay\" stroke=\"") + overlay->colour + "\">" +
            svg::line(start, start + qcVector<2>(26.0 * unit, 0.0)) + "</g>";
    text += svg::text(start + qcVector<2>(33.0 * unit, 5.0 * unit), 15.0 * unit, overlay->name);
    x += (58.0 + 9.0 * static_cast<double>(std::string(overlay->name).size())) * unit;
  }
  return text + "</g>\n";
}

std::string style(double unit) {
  const auto units = [unit](double count) { return number(count * unit); };
  return "<style>\n"
         ".outlines path{fill-opacity:.6;fill-rule:evenodd;stroke-width:" +
         units(1.5) +
         ";stroke-linejoin:round;stroke-linecap:round}\n"
         ".overlay{fill:none;stroke-width:" +
         units(1.5) +
         ";stroke-linejoin:round}\n"
         "text{font-family:sans-serif;fill:#212529}\n"
         ".labels text{font-weight:600;text-anchor:middle;paint-order:stroke;stroke:#fff;"
         "stroke-opacity:.8;stroke-linejoin:round;stroke-width:" +
         units(3.0) +
         "}\n"
         "</style>\n";
}

/// The opening tag and the white ground, wide enough for the legend below the view.
std::string opening(const qcRect& view, double legendSpace) {
  const double unit = unitOf(view);
  const double height = view.height() + legendSpace;
  const qcRect ground(view.ul(), qcVector<2>(view.width(), height));
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
         number(view.width() / unit) + "\" height=\"" + number(height / unit) + "\" viewBox=\"" +
         allDigits(view.ul().x()) + " " + allDigits(view.ul().y()) + " " + allDigits(view.width()) +
         " " + allDigits(height) + "\">\n" + style(unit) + "<g fill=\"#fff\">" +
         svg::rectangle(ground) + "</g>\n";
}

}  // namespace

std::optional<qcRect> imageArea(const Json& collection) {
  const Json& width = member(collection, "width");
  const Json& height = member(collection, "height");
  if (!width.is_number() || !height.is_number()) return std::nullopt;
  const qcVector<2> size(width.get<double>(), height.get<double>());
  if (!(size.x() > 0.0 && size.y() > 0.0)) return std::nullopt;
  return qcRect(qcVector<2>(-0.5, -0.5), size);
}

qcRect viewAround(const std::vector<Drawn>& features) {
  const qcVector<2> first = features.front().feature.geometry.parts.front().outline.front();
  qcRect box(first, qcVector<2>());
  for (const Drawn& drawn : features) {
    for (const Part& part : drawn.feature.geometry.parts) {
      box = box.enclose(boxOf(part.outline));
    }
  }
  const double extent = std::max(box.width(), box.height());
  const double margin = extent > 0.0 ? marginShare * extent : 0.5;
  const qcVector<2> border(margin, margin);
  return {qcPoint(box.ul() - border), qcPoint(box.lr() + border)};
}

std::string toSvg(const Drawing& drawing) {
  const bool hasLegend = !drawing.overlays.empty();
  const double unit = unitOf(drawing.view);
  std::string text = opening(drawing.view, hasLegend ? legendHeight * unit : 0.0);
  text += outlines(drawing);
  for (const Overlay* chosen : drawing.overlays) text += overlay(drawing, *chosen);
  text += labels(drawing);
  if (hasLegend) text += legend(drawing);
  return text + "</svg>\n";
}

}  // namespace tool
