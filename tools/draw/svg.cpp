// SPDX-License-Identifier: MIT

#include <tools/draw/svg.h>

#include <cntrformats/number.h>

namespace tool::svg {

using namespace formats;

namespace {

std::string attribute(const char* name, double value) {
  return std::string(" ") + name + "=\"" + allDigits(value) + "\"";
}

std::string placed(const qcRect& rectangle) {
  return attribute("x", rectangle.ul().x()) + attribute("y", rectangle.ul().y()) +
         attribute("width", rectangle.width()) + attribute("height", rectangle.height());
}

std::string pair(const qcVector<2>& p) { return allDigits(p.x()) + "," + allDigits(p.y()); }

std::string escapedCharacter(char character) {
  switch (character) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&apos;";
    default:
      break;
  }
  const bool isControl = static_cast<unsigned char>(character) < 0x20;
  return isControl ? "?" : std::string(1, character);
}

}  // namespace

std::string escaped(const std::string& text) {
  std::string result;
  for (const char character : text) result += escapedCharacter(character);
  return result;
}

std::string path(const std::vector<Points>& rings, bool closed, const std::string& attributes,
                 const std::string& title) {
  std::string element = "<path" + attributes + " d=\"";
  for (const Points& ring : rings) {
    for (std::size_t i = 0; i < ring.size(); ++i)
      element.append(i == 0 ? "M" : " ").append(pair(ring[i]));
    if (closed) element += 'Z';
  }
  if (title.empty()) return element + "\"/>\n";
  return element + "\"><title>" + escaped(title) + "</title></path>\n";
}

std::string circle(const qcCircle& circle) {
  return "<circle" + attribute("cx", circle.center().x()) + attribute("cy", circle.center().y()) +
         attribute("r", circle.radius()) + "/>\n";
}

std::string ellipse(const qcEllipse& ellipse) {
  const auto& geom = ellipse.geom();
  return "<ellipse" + attribute("rx", geom.radius1) + attribute("ry", geom.radius2) +
         " transform=\"translate(" + pair(geom.center) + ") rotate(" +
         allDigits(qcDegree(geom.rotation).toDouble()) + ")\"/>\n";
}

std::string rectangle(const qcRect& rectangle) { return "<rect" + placed(rectangle) + "/>\n"; }

std::string image(const qcRect& area, const std::string& uri) {
  return "<image" + placed(area) + " preserveAspectRatio=\"none\" href=\"" + uri + "\"/>\n";
}

std::string line(const qcVector<2>& from, const qcVector<2>& to) {
  return "<line" + attribute("x1", from.x()) + attribute("y1", from.y()) + attribute("x2", to.x()) +
         attribute("y2", to.y()) + "/>\n";
}

std::string text(const qcVector<2>& position, double size, const std::string& text) {
  return "<text" + attribute("x", position.x()) + attribute("y", position.y()) +
         attribute("font-size", size) + ">" + escaped(text) + "</text>\n";
}

}  // namespace tool::svg
