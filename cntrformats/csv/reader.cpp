// SPDX-License-Identifier: MIT
//
// CSV with one vertex per line: id,x,y, or x,y alone, separated by commas, semicolons, tabs or
// blanks. Lines that begin with "# " are comments, except for the first one if it names the
// columns.

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <utility>

#include <cntrformats/csv/csv.h>
#include <cntrformats/csv/names.h>
#include <cntrformats/errors.h>
#include <cntrformats/fields.h>
#include <cntrformats/lines.h>
#include <cntrformats/number.h>
#include <cntrformats/rings.h>

namespace formats {

namespace {

/// Which columns hold the parts of a vertex.
struct Columns {
  std::optional<std::size_t> id;
  std::size_t x = 0;
  std::size_t y = 1;
  char separator = ',';

  std::size_t last() const { return std::max({id.value_or(0), x, y}); }
  const char* names() const { return id ? "id,x,y" : "x,y"; }
};

/// How a file is read, as decided by its first line.
struct Layout {
  Columns columns;
  bool hasHeader = false;
};

struct Vertex {
  std::string x;
  std::string y;
};

struct Ring {
  RingName name;
  std::vector<Vertex> vertices;
  /// What is wrong with the line after the last vertex.
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

/// Each ring follows() the one before it, so that only the first can be out of place.
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

void readRings(const std::vector<Ring>& rings, Feature& feature) {
  FeatureName name = parseFeatureName(rings.front().name.id);
  feature.label = name.label;
  feature.id = std::move(name.id);
  feature.geometry = geometryOf(rings);
}

/// The rings of one feature.
class UndecodedRings : public Undecoded {
 public:
  UndecodedRings(std::size_t number, std::vector<Ring>&& rings)
      : number_(number), rings_(std::move(rings)) {}
  Feature decode(std::size_t /*index*/) override {
    return decoded(number_, [this](Feature& feature) { readRings(rings_, feature); });
  }

 private:
  std::size_t number_;
  std::vector<Ring> rings_;
};

/// Gathers the rings of one feature after the other.
class RingGatherer {
 public:
  explicit RingGatherer(Sink& sink) : sink_(sink) {}

  void add(const std::string& id, Vertex vertex, std::size_t line) {
    if (rings_.empty() || id != id_) beginRing(id, line);
    size_ += id.size() + vertex.x.size() + vertex.y.size();
    if (rings_.back().flaw.empty()) rings_.back().vertices.push_back(std::move(vertex));
  }

  /// A line without a vertex belongs to the ring that is being gathered.
  void addFlaw(const std::string& flaw, std::size_t line) {
    if (rings_.empty()) beginRing("", line);
    if (rings_.back().flaw.empty()) rings_.back().flaw = flaw;
  }

  void endFeature() {
    if (rings_.empty()) return;
    ++number_;
    sink_.take({{number_, line_},
                size_,
                std::make_shared<UndecodedRings>(number_, std::exchange(rings_, {}))});
    size_ = 0;
  }

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

std::string inSmallLetters(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

/// Decimal commas are accepted only where semicolons separate the fields.
std::string numberOf(const std::string& field, char separator) {
  std::string text = trimmed(field);
  if (separator == ';') std::replace(text.begin(), text.end(), ',', '.');
  return text;
}

/// The columns named by the fields: x and y, and id if there is one.
std::optional<Columns> namedColumns(const std::vector<std::string>& fields, char separator) {
  std::array<std::size_t, 3> places{};
  const std::array<const char*, 3> names{"id", "x", "y"};
  for (std::size_t k = 0; k < names.size(); ++k) {
    const auto isNamed = [&](const std::string& field) {
      return inSmallLetters(trimmed(field)) == names[k];
    };
    places[k] = static_cast<std::size_t>(std::find_if(fields.begin(), fields.end(), isNamed) -
                                         fields.begin());
  }
  if (places[1] == fields.size() || places[2] == fields.size()) return std::nullopt;
  const auto id = places[0] == fields.size() ? std::nullopt : std::optional(places[0]);
  return Columns{id, places[1], places[2], separator};
}

/// The columns of a line that is a vertex. Other lists of numbers are separated by blanks, too, so
/// there must be no more fields than a vertex needs.
std::optional<Columns> vertexColumns(const std::vector<std::string>& fields, char separator) {
  const auto isNumberAt = [&](std::size_t k) { return isNumber(numberOf(fields[k], separator)); };
  if (fields.size() == 2 && isNumberAt(0) && isNumberAt(1)) {
    return Columns{std::nullopt, 0, 1, separator};
  }
  const bool hasEnough = separator == ' ' ? fields.size() == 3 : fields.size() >= 3;
  if (hasEnough && isNumberAt(1) && isNumberAt(2)) return Columns{0, 1, 2, separator};
  return std::nullopt;
}

/// Nothing when the line is neither a header nor a vertex.
std::optional<Layout> layoutOf(std::string_view line) {
  const bool isComment = line.starts_with("# ");
  if (isComment) line.remove_prefix(2);
  std::vector<std::string> fields;
  for (const char separator : {',', ';', '\t', ' '}) {
    if (!splitCsv(line, fields, separator)) continue;
    if (const auto named = namedColumns(fields, separator)) return Layout{*named, true};
    if (isComment) continue;
    if (const auto columns = vertexColumns(fields, separator)) return Layout{*columns, false};
  }
  return std::nullopt;
}

/// Tells the lines that are vertices from the header and the comments.
class Table {
 public:
  /// True when the next line is a vertex rather than a header or a comment.
  bool isVertexLine(const std::string& line) {
    const bool isComment = line.starts_with("# ");
    if (layout_) return !isComment;
    layout_ = layoutOf(line);
    if (layout_) return !layout_->hasHeader;
    if (!isComment) throw FileError("the first line is neither id,x,y or x,y nor such values");
    return false;
  }

  /// REQUIRES: isVertexLine() has returned true.
  const Columns& columns() const { return layout_->columns; }
  bool isEmpty() const { return !layout_; }

 private:
  std::optional<Layout> layout_;
};

}  // namespace

bool looksLikeCsv(std::string_view line) {
  return !line.starts_with('{') &&
         layoutOf(line.substr(0, line.find_last_not_of(" \t\r\n") + 1)).has_value();
}

void readCsv(Source& source, Keep /*keep*/, Sink& sink) {
  Lines lines(source);
  RingGatherer gatherer(sink);
  Table table;
  std::string line;
  std::vector<std::string> fields;
  while (lines.next(line)) {
    if (isBlank(line)) {
      gatherer.endFeature();
      continue;
    }
    if (!table.isVertexLine(line)) continue;
    const Columns& columns = table.columns();
    if (!splitCsv(line, fields, columns.separator)) {
      gatherer.addFlaw("a quote is not closed", lines.number());
    } else if (fields.size() <= columns.last()) {
      gatherer.addFlaw("'" + line + "' is not a line of " + columns.names(), lines.number());
    } else {
      gatherer.add(columns.id ? fields[*columns.id] : std::string(),
                   {numberOf(fields[columns.x], columns.separator),
                    numberOf(fields[columns.y], columns.separator)},
                   lines.number());
    }
  }
  gatherer.endFeature();
  if (table.isEmpty()) throw FileError("nothing in it");
}

}  // namespace formats
