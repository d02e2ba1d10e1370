// SPDX-License-Identifier: MIT
//
// Reads a POLYGON, MULTIPOLYGON, LINESTRING or MULTILINESTRING from each line; a LINEARRING is an
// outline. Rings are treated as those of GeoJSON, see rings.h, and so are coordinates beyond x and
// y, with or without Z and M.

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include <cntrformats/errors.h>
#include <cntrformats/lines.h>
#include <cntrformats/number.h>
#include <cntrformats/rings.h>
#include <cntrformats/wkt/wkt.h>

namespace formats {

namespace {

constexpr std::size_t longestExcerpt = 20;
constexpr std::size_t mostCoordinates = 4;

/// Walks through one text.
class Parser {
 public:
  explicit Parser(std::string_view text) : rest_(text) {}

  Geometry geometry() {
    const std::string type = withoutDimensions(word());
    skipDimensions();
    Geometry geometry = geometryOf(type);
    skipBlanks();
    if (!rest_.empty()) throw FeatureError(quotedRest() + " follows the geometry");
    return geometry;
  }

 private:
  Geometry geometryOf(const std::string& type) {
    if (type == "POLYGON") return {true, false, {polygon("")}};
    if (type == "MULTIPOLYGON") return {true, true, several(&Parser::polygon)};
    if (type == "LINESTRING") return {false, false, {line("")}};
    if (type == "MULTILINESTRING") return {false, true, several(&Parser::line)};
    if (type == "LINEARRING") return {true, false, {{asRing(positions("outline"), "outline"), {}}}};
    if (type == "POINT" || type == "MULTIPOINT" || type == "GEOMETRYCOLLECTION") {
      throw FeatureError("a " + type + " has no outline");
    }
    if (type.empty()) throw FeatureError(quotedRest() + " is no geometry");
    throw FeatureError(type + " is not a geometry that can be read");
  }

  std::vector<qcRings> several(qcRings (Parser::*readPart)(const std::string&)) {
    std::vector<qcRings> parts;
    if (isEmpty()) throw FeatureError("no coordinates");
    list([&] {
      parts.push_back((this->*readPart)("part " + std::to_string(parts.size() + 1) + ", "));
    });
    return parts;
  }

  qcRings polygon(const std::string& prefix) {
    if (isEmpty()) throw FeatureError(prefix + "no outline");
    qcRings part;
    std::size_t count = 0;
    list([&] {
      const std::string place = prefix + (count == 0 ? "outline" : "hole " + std::to_string(count));
      Points ring = asRing(positions(place), place);
      if (count++ == 0) {
        part.outline = std::move(ring);
      } else {
        part.holes.push_back(std::move(ring));
      }
    });
    return part;
  }

  qcRings line(const std::string& prefix) {
    const std::string place = prefix + "line";
    return {asLine(positions(place), place), {}};
  }

  Points positions(const std::string& place) {
    Points points;
    if (isEmpty()) return points;
    list([&] {
      try {
        points.push_back(position());
      } catch (const FeatureError& error) {
        throw FeatureError(place + ", vertex " + std::to_string(points.size()) + ": " +
                           error.what());
      }
    });
    return points;
  }

  qcVector<2> position() {
    std::array<double, mostCoordinates> numbers{};
    std::size_t count = 0;
    for (; !atEndOfPosition(); ++count) {
      if (count == mostCoordinates) throw FeatureError("more than 4 coordinates");
      numbers[count] = number();
    }
    if (count < 2) throw FeatureError("not a position x y");
    return {numbers[0], numbers[1]};
  }

  bool atEndOfPosition() {
    skipBlanks();
    return rest_.empty() || rest_.front() == ',' || rest_.front() == ')';
  }

  double number() {
    const std::size_t length = std::min(rest_.find_first_of(" \t,()"), rest_.size());
    const std::string_view text = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return finiteNumber(text);
  }

  /// Reads "( element, element, ... )".
  template <class ReadElement>
  void list(const ReadElement& readElement) {
    expect('(');
    do {
      readElement();
    } while (skip(','));
    expect(')');
  }

  void expect(char c) {
    if (skip(c)) return;
    const std::string found = rest_.empty() ? "the end" : quotedRest();
    throw FeatureError(std::string("'") + c + "' expected, not " + found);
  }

  bool skip(char c) {
    skipBlanks();
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool isEmpty() {
    const std::string_view before = rest_;
    if (word() == "EMPTY") return true;
    rest_ = before;
    return false;
  }

  /// "POLYGONZ" is read like "POLYGON Z"; no name of a geometry ends in these letters.
  static std::string withoutDimensions(const std::string& type) {
    return type.substr(0, type.find_last_not_of("ZM") + 1);
  }

  void skipDimensions() {
    const std::string_view before = rest_;
    const std::string dimensions = word();
    if (dimensions != "Z" && dimensions != "M" && dimensions != "ZM") rest_ = before;
  }

  /// The letters that come next, as capitals.
  std::string word() {
    skipBlanks();
    std::string letters;
    while (!rest_.empty() && std::isalpha(static_cast<unsigned char>(rest_.front())) != 0) {
      letters += static_cast<char>(std::toupper(static_cast<unsigned char>(rest_.front())));
      rest_.remove_prefix(1);
    }
    return letters;
  }

  void skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r"), rest_.size()));
  }

  std::string quotedRest() const {
    std::string text = "'";
    text.append(rest_.substr(0, longestExcerpt));
    return text.append(rest_.size() > longestExcerpt ? "...'" : "'");
  }

  std::string_view rest_;
};

}  // namespace

bool looksLikeWkt(std::string_view line) {
  line = line.substr(0, line.find_last_not_of(" \t\r\n") + 1);
  const std::size_t end = std::min(line.find('('), line.find(' '));
  const std::string_view keyword = line.substr(0, end);
  return end != std::string_view::npos && !keyword.empty() &&
         std::all_of(keyword.begin(), keyword.end(),
                     [](unsigned char c) { return std::isalpha(c) != 0; });
}

void readWkt(Source& source, Keep /*keep*/, Sink& sink) {
  Lines lines(source);
  std::string text;
  std::size_t number = 0;
  while (lines.next(text)) {
    if (isBlank(text)) continue;
    ++number;
    sink.take({{number, lines.number()}, text.size(), [text, number] {
                 return decoded(number, [&text](Feature& feature) {
                   feature.geometry = Parser(text).geometry();
                 });
               }});
  }
  if (number == 0) throw FileError("nothing in it");
}

}  // namespace formats
