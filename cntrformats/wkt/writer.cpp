// SPDX-License-Identifier: MIT
//
// WKT with one geometry per line. Rings keep their winding and are closed.

#include <ostream>

#include <cntrformats/number.h>
#include <cntrformats/wkt/wkt.h>

namespace formats {

namespace {

/// Appends "(element, element, ...)".
template <class List, class AppendElement>
void appendWktList(std::string& text, const List& list, const AppendElement& appendElement) {
  const char* separator = "(";
  for (const auto& element : list) {
    text += separator;
    appendElement(element);
    separator = ", ";
  }
  text += ')';
}

void appendPoints(std::string& text, const Points& points) {
  appendWktList(text, points, [&text](const qcVector<2>& p) {
    text += allDigits(p.x()) + ' ' + allDigits(p.y());
  });
}

void appendRing(std::string& text, const Points& ring) {
  Points closed = ring;
  closed.push_back(ring.front());
  appendPoints(text, closed);
}

void appendPart(std::string& text, const qcRings& part, bool closed) {
  if (!closed) return appendPoints(text, part.outline);
  std::vector<Points> rings{part.outline};
  rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  appendWktList(text, rings, [&text](const Points& ring) { appendRing(text, ring); });
}

std::string toWkt(const Geometry& geometry) {
  const auto& [closed, multiple, parts, edgelets] = geometry;
  const std::string type = closed ? "POLYGON " : "LINESTRING ";
  if (parts.size() == 1 && !multiple) {
    std::string text = type;
    appendPart(text, parts.front(), closed);
    return text;
  }
  std::string text = "MULTI" + type;
  appendWktList(text, parts,
                [&, isClosed = closed](const qcRings& part) { appendPart(text, part, isClosed); });
  return text;
}

class WktWriter : public FeatureWriter {
 public:
  explicit WktWriter(std::ostream& out) : out_(out) {}

  Prepared prepare(Feature feature, bool isLone) const override {
    return {toWkt(feature.geometry), {}, isLone};
  }
  void write(Prepared prepared) override { out_ << prepared.text << '\n'; }
  void finish() override {}

 private:
  std::ostream& out_;
};

}  // namespace

std::unique_ptr<FeatureWriter> makeWktWriter(std::ostream& out, Rings) {
  return std::make_unique<WktWriter>(out);
}

Losses lossesInWkt(const Feature& feature) { return lossesOf(feature, {}); }

}  // namespace formats
