// SPDX-License-Identifier: MIT
//
// Reads a POLYGON, MULTIPOLYGON, LINESTRING or MULTILINESTRING, or a GEOMETRYCOLLECTION of either
// outlines or lines, one after the other; a LINEARRING is an outline. A geometry begins on a line
// of its own, may have a reference system before it (SRID=4326;POLYGON ...), which is skipped, and
// continues as long as its parentheses are open. Rings are treated like those of GeoJSON, see
// rings.h, and so are coordinates beyond x and y, with or without Z and M.

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <string_view>
#include <utility>

#include <cntrformats/characters.h>
#include <cntrformats/errors.h>
#include <cntrformats/lines.h>
#include <cntrformats/number.h>
#include <cntrformats/rings.h>
#include <cntrformats/textwindow.h>
#include <cntrformats/wkt/wkt.h>

namespace formats {

namespace {

constexpr std::size_t longestRest = 20;
constexpr std::size_t mostCoordinates = 4;
constexpr std::string_view wktCollection = "GEOMETRYCOLLECTION";

bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

bool isSameLetter(char a, char b) {
  return std::toupper(static_cast<unsigned char>(a)) == std::toupper(static_cast<unsigned char>(b));
}

bool startsWith(std::string_view text, std::string_view word) {
  return text.size() >= word.size() &&
         std::equal(word.begin(), word.end(), text.begin(), isSameLetter);
}

std::string_view withoutBlanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

/// The text without the reference system of extended WKT.
std::string_view withoutReference(std::string_view text) {
  text = withoutBlanks(text);
  const std::size_t end = text.find(';');
  return startsWith(text, "SRID=") && end != std::string_view::npos
             ? withoutBlanks(text.substr(end + 1))
             : text;
}

/// Walks through one text.
class Parser {
 public:
  explicit Parser(std::string_view text) : rest_(withoutReference(text)) {}

  Geometry whole() {
    Geometry geometry = this->geometry();
    skipBlanks();
    if (!rest_.empty()) throw FeatureError(quotedRest() + " follows the geometry");
    return geometry;
  }

 private:
  Geometry geometry() {
    const std::string type = withoutDimensions(word());
    skipDimensions();
    return geometryOf(type);
  }

  Geometry geometryOf(const std::string& type) {
    if (type == "POLYGON") return {true, false, {single(polygon(""), "no outline")}};
    if (type == "MULTIPOLYGON") return {true, true, several(&Parser::polygon)};
    if (type == "LINESTRING")
      return {false, false, {single(line(""), "line has 0 points, but needs 2")}};
    if (type == "MULTILINESTRING") return {false, true, several(&Parser::line)};
    if (type == "LINEARRING") return {true, false, {{asRing(positions("outline"), "outline"), {}}}};
    if (type == wktCollection) return collection();
    if (type == "POINT" || type == "MULTIPOINT") {
      throw FeatureError("a " + type + " has no outline");
    }
    if (type.empty()) throw FeatureError(quotedRest() + " is no geometry");
    throw FeatureError(type + " is not a geometry that can be read");
  }

  static qcRings single(qcRings part, const char* refusal) {
    if (part.outline.empty()) throw EmptyGeometry(refusal);
    return part;
  }

  /// The parts of a geometry with several parts, without the empty ones.
  std::vector<qcRings> several(qcRings (Parser::*readPart)(const std::string&)) {
    std::vector<qcRings> parts;
    std::size_t count = 0;
    if (isEmpty()) throw EmptyGeometry("no coordinates");
    list([&] {
      qcRings part = (this->*readPart)("part " + std::to_string(++count) + ", ");
      if (!part.outline.empty()) parts.push_back(std::move(part));
    });
    if (parts.empty()) throw EmptyGeometry("no coordinates");
    return parts;
  }

  Geometry collection() {
    Geometry all{true, true};
    std::size_t count = 0;
    if (isEmpty()) throw FeatureError("a " + std::string(wktCollection) + " has no outline");
    list([&] {
      ++count;
      try {
        addParts(all, geometry());
      } catch (const EmptyGeometry&) {  // NOLINT(bugprone-empty-catch)
      } catch (const FeatureError& error) {
        throw FeatureError("geometry " + std::to_string(count) + ": " + error.what());
      }
    });
    if (all.parts.empty()) throw EmptyGeometry("no coordinates");
    return all;
  }

  // These return no vertices for an empty list.

  qcRings polygon(const std::string& prefix) {
    qcRings part;
    if (isEmpty()) return part;
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
    if (isEmpty()) return {};
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
    double value = 0.0;
    const char* const end = rest_.data() + rest_.size();
    const auto [after, error] = readNumber(rest_.data(), end, value);
    const bool isWhole =
        after == end || *after == ' ' || *after == ',' || *after == ')' || *after == '\n';
    if (error == std::errc() && isWhole && std::isfinite(value)) {
      rest_.remove_prefix(static_cast<std::size_t>(after - rest_.data()));
      return value;
    }
    return unusualNumber();
  }

  /// A number that readNumber() does not take, such as one with a plus sign.
  double unusualNumber() {
    const std::size_t length = std::min(rest_.find_first_of(" \t\r\n,()"), rest_.size());
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
    skipBlanks();
    if (rest_.empty() || !isLetter(rest_.front())) return false;
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

  /// The letters that come next, in upper case.
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
    std::size_t count = 0;
    while (count < rest_.size() && (rest_[count] == ' ' || rest_[count] == '\t' ||
                                    rest_[count] == '\r' || rest_[count] == '\n')) {
      ++count;
    }
    rest_.remove_prefix(count);
  }

  std::string quotedRest() const {
    std::string text = "'";
    text.append(rest_.substr(0, longestRest));
    return text.append(rest_.size() > longestRest ? "...'" : "'");
  }

  std::string_view rest_;
};

std::string_view withoutReturn(std::string_view line) {
  return line.substr(0, line.size() - (line.ends_with('\r') ? 1U : 0U));
}

/// The lines that are not blank, separated by line feeds.
std::string joined(std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    if (!isBlank(line)) lines.append(lines.empty() ? "" : "\n").append(withoutReturn(line));
  }
  return lines;
}

void readWktGeometry(const Passage& passage, Feature& feature) {
  std::string_view text = passage.text;
  if (text.ends_with('\n')) text.remove_suffix(1);
  const bool isOneLine = text.find('\n') == std::string_view::npos;
  feature.geometry = isOneLine ? Parser(withoutReturn(text)).whole() : Parser(joined(text)).whole();
}

/// Finds the geometries of a file.
class WktReader {
 public:
  WktReader(Source& source, Sink& sink)
      : window_(source, Source::mostAtOnce), features_(sink, readWktGeometry, false) {
    window_.release(features_);
  }

  void read() {
    std::size_t lineNumber = 1;
    while (const auto line = window_.ahead(size_, '\n')) {
      if (size_ > 0 && isBroken(*line)) takeGeometry();
      if (size_ > 0 || !isBlank(*line)) {
        if (size_ == 0) begin(*line, lineNumber);
        add(*line);
      } else {
        window_.pass(line->size() + 1);
      }
      ++lineNumber;
    }
    if (size_ > 0) takeGeometry();
    window_.handOver();
    if (number_ == 0) throw FileError("nothing in it");
  }

 private:
  /// True when the line begins another geometry although this one is not whole: letters occur only
  /// within collections and at the beginning.
  bool isBroken(std::string_view line) const {
    const std::string_view text = withoutBlanks(line);
    return !isCollection_ && !text.empty() && isLetter(text.front());
  }

  void begin(std::string_view line, std::size_t lineNumber) {
    begin_ = lineNumber;
    isCollection_ = startsWith(withoutReference(line), wktCollection);
    depth_ = 0;
  }

  void add(std::string_view line) {
    visitAny(line, 0, '(', ')', ')', [&](std::size_t at) {
      depth_ += line[at] == '(' ? 1 : -1;
      return false;
    });
    depth_ = std::max<std::ptrdiff_t>(0, depth_);
    size_ += line.size() + 1;
    if (depth_ == 0) takeGeometry();
  }

  void takeGeometry() {
    const std::size_t begin = window_.position();
    window_.pass(size_);
    features_.add({++number_, begin_}, begin, window_.position());
    size_ = 0;
  }

  TextWindow window_;
  Passages features_;
  /// The size of the geometry being examined, 0 between geometries; the line on which it begins,
  /// and how many of its parentheses are open.
  std::size_t size_ = 0;
  std::size_t begin_ = 1;
  bool isCollection_ = false;
  std::ptrdiff_t depth_ = 0;
  std::size_t number_ = 0;
};

}  // namespace

bool looksLikeWkt(std::string_view line) {
  line = withoutReference(line);
  line = line.substr(0, line.find_last_not_of(" \t\r\n") + 1);
  const std::size_t end = std::min(line.find('('), line.find(' '));
  const std::string_view keyword = line.substr(0, end);
  return end != std::string_view::npos && !keyword.empty() &&
         std::all_of(keyword.begin(), keyword.end(),
                     [](unsigned char c) { return std::isalpha(c) != 0; });
}

void readWkt(Source& source, Keep /*keep*/, Sink& sink) { WktReader(source, sink).read(); }

}  // namespace formats
