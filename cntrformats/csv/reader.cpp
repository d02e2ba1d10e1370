// SPDX-License-Identifier: MIT
//
// CSV with a vertex to each line: id,x,y.

#include <algorithm>
#include <array>
#include <utility>

#include <cntrformats/csv/csv.h>
#include <cntrformats/csv/fields.h>
#include <cntrformats/csv/names.h>
#include <cntrformats/errors.h>
#include <cntrformats/lines.h>
#include <cntrformats/number.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

/// Where the header puts what a vertex needs.
struct Columns {
  std::size_t id = 0;
  std::size_t x = 1;
  std::size_t y = 2;

  std::size_t last() const { return std::max({id, x, y}); }
};

struct Vertex {
  std::string x;
  std::string y;
};

struct Ring {
  RingName name;
  std::vector<Vertex> vertices;
  /// What is wrong with the line behind the last vertex.
  std::string flaw;
};

std::string nameOfPlace(const RingName& name) {
  const std::string part = name.part > 0 ? "part " + std::to_string(name.part) + ", " : "";
  if (name.hole > 0) return part + "hole " + std::to_string(name.hole);
  return part + (name.isLine ? "line" : "outline");
}

Points pointsOf(const Ring& ring, const std::string& place) {
  Points points;
  points.reserve(ring.vertices.size());
  try {
    for (const Vertex& vertex : ring.vertices) {
      const double x = finiteNumber(vertex.x);
      points.emplace_back(x, finiteNumber(vertex.y));
    }
    if (!ring.flaw.empty()) throw FeatureError(ring.flaw);
  } catch (const FeatureError& error) {
    throw FeatureError(place + ", vertex " + std::to_string(points.size()) + ": " + error.what());
  }
  return ring.name.isLine ? asLine(std::move(points), place) : asRing(std::move(points), place);
}

/// Rings follow each other as follows() has it, so that only the first one can be out of place.
Geometry geometryOf(const std::vector<Ring>& rings) {
  const RingName& first = rings.front().name;
  if (first.hole > 0 || first.part > 1) {
    throw FeatureError("begins with " + nameOfPlace(first));
  }
  Geometry geometry{!first.isLine, first.part > 0};
  for (const Ring& ring : rings) {
    const std::string place = nameOfPlace(ring.name);
    if (ring.name.isLine && ring.name.hole > 0) throw FeatureError("a line has no holes");
    Points points = pointsOf(ring, place);
    if (ring.name.hole == 0) {
      geometry.parts.push_back({std::move(points), {}});
    } else {
      geometry.parts.back().holes.push_back(std::move(points));
    }
  }
  return geometry;
}

void read(const std::vector<Ring>& rings, Feature& feature) {
  FeatureName name = parseFeatureName(rings.front().name.id);
  feature.label = name.label;
  feature.id = std::move(name.id);
  feature.geometry = geometryOf(rings);
}

/// Gathers the rings of one feature after the other.
class Gatherer {
 public:
  explicit Gatherer(Sink& sink) : sink_(sink) {}

  void add(const std::string& id, Vertex vertex, std::size_t line) {
    if (rings_.empty() || id != id_) beginRing(id, line);
    size_ += id.size() + vertex.x.size() + vertex.y.size();
    rings_.back().vertices.push_back(std::move(vertex));
  }

  /// A line without a vertex belongs to the ring that is under way.
  void addFlaw(const std::string& flaw, std::size_t line) {
    if (rings_.empty()) beginRing("", line);
    if (rings_.back().flaw.empty()) rings_.back().flaw = flaw;
  }

  void endFeature() {
    if (rings_.empty()) return;
    const std::size_t number = ++number_;
    sink_.take({{number, line_}, size_, [rings = std::move(rings_), number] {
                  return decoded(number, [&rings](Feature& feature) { read(rings, feature); });
                }});
    rings_.clear();
    size_ = 0;
  }

  std::size_t count() const noexcept { return number_; }

 private:
  void beginRing(const std::string& id, std::size_t line) {
    RingName name = parseRingName(id);
    if (!rings_.empty() && !follows(name, rings_.back().name)) endFeature();
    if (rings_.empty()) line_ = line;
    rings_.push_back({std::move(name), {}, {}});
    id_ = id;
  }

  Sink& sink_;
  std::vector<Ring> rings_;
  std::string id_;
  std::size_t line_ = 0;
  std::size_t size_ = 0;
  std::size_t number_ = 0;
};

bool isNumber(const std::string& text) {
  try {
    finiteNumber(text);
    return true;
  } catch (const FeatureError&) {
    return false;
  }
}

std::string trimmed(std::string text) {
  text.erase(0, text.find_first_not_of(" \t"));
  text.erase(text.find_last_not_of(" \t") + 1);
  return text;
}

/// True for a header with the columns id, x and y, and for a line of an id and two numbers.
bool isVertexOrHeader(std::string_view line) {
  std::vector<std::string> fields;
  if (!splitCsv(line, fields) || fields.size() < 3) return false;
  if (isNumber(fields[1]) && isNumber(fields[2])) return true;
  constexpr std::array<const char*, 3> columns{"id", "x", "y"};
  return std::all_of(columns.begin(), columns.end(), [&fields](const char* name) {
    return std::find(fields.begin(), fields.end(), name) != fields.end();
  });
}

/// Reads the first line; true when it names the columns.
bool readHeader(const std::string& line, Columns& columns) {
  if (!isVertexOrHeader(line))
    throw FileError("the first line is neither id,x,y nor three such values");
  std::vector<std::string> fields;
  splitCsv(line, fields);
  const auto indexOf = [&fields](const char* name) {
    return static_cast<std::size_t>(std::find(fields.begin(), fields.end(), name) - fields.begin());
  };
  const Columns named{indexOf("id"), indexOf("x"), indexOf("y")};
  if (named.last() == fields.size()) return false;
  columns = named;
  return true;
}

}  // namespace

bool looksLikeCsv(std::string_view line) {
  return !line.starts_with('{') &&
         isVertexOrHeader(line.substr(0, line.find_last_not_of(" \t\r\n") + 1));
}

void readCsv(Source& source, Keep /*keep*/, Sink& sink) {
  Lines lines(source);
  Gatherer gatherer(sink);
  Columns columns;
  bool isFirst = true;
  std::string line;
  std::vector<std::string> fields;
  while (lines.next(line)) {
    if (isBlank(line)) {
      gatherer.endFeature();
      continue;
    }
    if (std::exchange(isFirst, false) && readHeader(line, columns)) continue;
    if (!splitCsv(line, fields)) {
      gatherer.addFlaw("a quote is not closed", lines.number());
    } else if (fields.size() <= columns.last()) {
      gatherer.addFlaw("'" + line + "' is not a line of id,x,y", lines.number());
    } else {
      gatherer.add(fields[columns.id], {trimmed(fields[columns.x]), trimmed(fields[columns.y])},
                   lines.number());
    }
  }
  gatherer.endFeature();
  if (gatherer.count() == 0) throw FileError("nothing in it");
}

}  // namespace formats
