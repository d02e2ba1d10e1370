// SPDX-License-Identifier: MIT

#include <tools/draw/svg.h>

#include <charconv>
#include <numbers>

namespace tool::svg {

using namespace formats;

namespace {

std::string attribute(const char* name, double value) {
  return std::string(" ") + name + "=\"" + number(value) + "\"";
}

std::string placed(const Box& box) {
  return attribute("x", box.low.x()) + attribute("y", box.low.y()) +
         attribute("width", box.width()) + attribute("height", box.height());
}

std::string pair(const qcVector<2>& p) { return number(p.x()) + "," + number(p.y()); }

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

/// The end of an element, with a title inside unless it is empty.
std::string closing(const char* element, const std::string& title) {
  if (title.empty()) return "/>\n";
  return "><title>" + escaped(title) + "</title></" + element + ">\n";
}

}  // namespace

std::string number(double value, int decimals) {
  // Room for as many digits as the largest double has, and some more.
  char text[400];
  char* end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr;
  while (*(end - 1) == '0') --end;
  if (*(end - 1) == '.') --end;
  const std::string shortest(text, end);
  return shortest == "-0" ? "0" : shortest;
}

std::string escaped(const std::string& text) {
  std::string result;
  for (const char character : text) result += escapedCharacter(character);
  return result;
}

std::string path(const std::vector<Points>& lines, bool closed, const std::string& attributes,
                 const std::string& title) {
  std::string element = "<path" + attributes + " d=\"";
  for (const Points& line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i)
      element.append(i == 0 ? "M" : " ").append(pair(line[i]));
    if (closed) element += 'Z';
  }
  return element + "\"" + closing("path", title);
}

std::string circle(const Circle& circle, const std::string& attributes, const std::string& title) {
  return "<circle" + attributes + attribute("cx", circle.centre.x()) +
         attribute("cy", circle.centre.y()) + attribute("r", circle.radius) +
         closing("circle", title);
}

std::string ellipse(const Ellipse& ellipse) {
  return "<ellipse" + attribute("rx", ellipse.along) + attribute("ry", ellipse.across) +
         " transform=\"translate(" + pair(ellipse.centre) + ") rotate(" +
         number(ellipse.angle * 180.0 / std::numbers::pi, 4) + ")\"/>\n";
}

std::string rectangle(const Box& box) { return "<rect" + placed(box) + "/>\n"; }

std::string image(const Box& box, const std::string& uri) {
  return "<image" + placed(box) + " preserveAspectRatio=\"none\" href=\"" + uri + "\"/>\n";
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
