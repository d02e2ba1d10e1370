// SPDX-License-Identifier: MIT

#include <tools/answers/pointfile.h>

#include <algorithm>
#include <cctype>
#include <optional>

#include <cntrformats/errors.h>
#include <cntrformats/lines.h>
#include <cntrformats/number.h>
#include <cntrformats/source.h>

namespace tool {

using namespace formats;

namespace {

using Fields = std::vector<std::string>;

/// Which fields of a line hold the coordinates and the id of a point.
struct Places {
  std::optional<std::size_t> id;
  std::size_t x = 0;
  std::size_t y = 1;
  /// How many fields a line has.
  std::size_t count = 2;
};

bool isBlankOrTab(char c) { return c == ' ' || c == '\t'; }

/// Fields without blanks around them. If there is no comma or semicolon, blanks separate them.
Fields fieldsOf(const std::string& line) {
  const bool byBlanks = line.find_first_of(",;") == std::string::npos;
  Fields fields(1);
  for (const char c : line) {
    if (c == ',' || c == ';' || (byBlanks && isBlankOrTab(c))) {
      if (!byBlanks || !fields.back().empty()) fields.emplace_back();
    } else if (c != '\r') {
      fields.back() += c;
    }
  }
  if (byBlanks && fields.back().empty()) fields.pop_back();
  for (std::string& field : fields) {
    field.erase(0, field.find_first_not_of(" \t"));
    field.erase(field.find_last_not_of(" \t") + 1);
  }
  return fields;
}

std::string inSmallLetters(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

/// What the names in a first line say; empty when it has no names.
std::optional<Places> placesByNames(const Fields& fields) {
  std::optional<std::size_t> id;
  std::optional<std::size_t> x;
  std::optional<std::size_t> y;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::string name = inSmallLetters(fields[i]);
    if (name == "id") id = i;
    if (name == "x") x = i;
    if (name == "y") y = i;
  }
  if (!x || !y) return std::nullopt;
  return Places{id, *x, *y, fields.size()};
}

Places placesByCount(const Fields& fields) {
  if (fields.size() == 3) return {0, 1, 2, 3};
  return {};
}

NamedPoint pointOf(const Fields& fields, const Places& places, std::size_t number) {
  if (fields.size() != places.count) {
    throw FeatureError("has " + std::to_string(fields.size()) +
                       (fields.size() == 1 ? " field, not " : " fields, not ") +
                       std::to_string(places.count));
  }
  const double x = finiteNumber(fields[places.x]);
  return {places.id ? fields[*places.id] : std::to_string(number),
          {x, finiteNumber(fields[places.y])}};
}

}  // namespace

std::vector<NamedPoint> readPoints(const std::string& file) {
  Source source(file);
  Lines lines(source);
  std::vector<NamedPoint> points;
  std::optional<Places> places;
  for (std::string line; lines.next(line);) {
    line.erase(std::min(line.find('#'), line.size()));
    if (isBlank(line)) continue;
    const Fields fields = fieldsOf(line);
    if (!places) {
      places = placesByNames(fields);
      if (places) continue;
      places = placesByCount(fields);
    }
    try {
      points.push_back(pointOf(fields, *places, points.size() + 1));
    } catch (const FeatureError& error) {
      throw FileError("line " + std::to_string(lines.number()) + ": " + error.what());
    }
  }
  if (points.empty()) throw FileError("holds no points");
  return points;
}

}  // namespace tool
