// SPDX-License-Identifier: MIT
//
// Writes drawn segments as an SVG picture.

#include <platform/display/svgtablet.h>

#include <charconv>
#include <cmath>
#include <ostream>
#include <string>

namespace {

using Segment = qcRecordingTablet::Segment;

/// The shortest digits that read back as the same double.
std::string number(double value) {
  char digits[32];
  const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), value);
  return {std::begin(digits), end};
}

/// "#rrggbb".
std::string hexColor(const qcColor& color) {
  static constexpr char hexDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (const unsigned channel : {color.r(), color.g(), color.b()}) {
    text += hexDigits[channel / 16];
    text += hexDigits[channel % 16];
  }
  return text;
}

bool isFinite(const qcPair<double>& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }

bool continues(const Segment& segment, const Segment& previous) {
  return segment.from == previous.to && segment.color == previous.color;
}

std::string coordinates(const qcPair<double>& p) { return number(p.x()) + ' ' + number(p.y()); }

/// The path elements of one layer.
void writePaths(std::ostream& out, const std::vector<Segment>& drawn, qcUITablet::Layers layer) {
  const Segment* previous = nullptr;
  for (const Segment& segment : drawn) {
    if (segment.layers != layer) continue;
    if (previous == nullptr || !continues(segment, *previous)) {
      if (previous != nullptr) out << "\"/>\n";
      out << "    <path stroke=\"" << hexColor(segment.color) << "\" d=\"M"
          << coordinates(segment.from);
    }
    out << 'L' << coordinates(segment.to);
    previous = &segment;
  }
  if (previous != nullptr) out << "\"/>\n";
}

void writeGroup(std::ostream& out, const char* name, const std::vector<Segment>& drawn,
                qcUITablet::Layers layer) {
  out << "  <g id=\"" << name << "\">\n";
  writePaths(out, drawn, layer);
  out << "  </g>\n";
}

/// The box of all segments, at the origin when there are none.
qcRect boxOf(const std::vector<Segment>& drawn) {
  const auto corner = [](const qcPair<double>& p) { return qcPoint(qcVector<2>(p.x(), p.y())); };
  qcRect box;
  for (const Segment& segment : drawn) {
    const qcRect own(corner(segment.from), corner(segment.to));
    box = &segment == &drawn.front() ? own : box.enclose(own);
  }
  return box;
}

qcRect widened(const qcRect& box, double margin) {
  const qcVector<2> corner(margin, margin);
  return {qcPoint(box.ul() - corner), qcPoint(box.lr() + corner)};
}

}  // namespace

qcSvgTablet::qcSvgTablet(double strokeWidth) : strokeWidth_(strokeWidth) {}

qcSvgTablet::qcSvgTablet(const qcRect& view, double strokeWidth)
    : view_(view), hasView_(true), strokeWidth_(strokeWidth) {}

void qcSvgTablet::drawLineSeg(const qcPair<double>& from, const qcPair<double>& to,
                              const qcColor& color, Layers layers) {
  if (isFinite(from) && isFinite(to)) drawing_.drawLineSeg(from, to, color, layers);
}

void qcSvgTablet::write(std::ostream& out) const {
  const std::vector<Segment>& drawn = drawing_.segments();
  const qcRect view = hasView_ ? view_ : widened(boxOf(drawn), 4.0 * strokeWidth_);
  out << R"(<?xml version="1.0" encoding="UTF-8"?>)" << '\n'
      << R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox=")" << number(view.ul().x()) << ' '
      << number(view.ul().y()) << ' ' << number(view.width()) << ' ' << number(view.height())
      << R"(" fill="none" stroke-width=")" << number(strokeWidth_)
      << R"(" stroke-linecap="round" stroke-linejoin="round">)" << '\n';
  writeGroup(out, "image", drawn, eImageLayer);
  writeGroup(out, "overlay", drawn, eOverlayLayer);
  out << "</svg>\n";
}
