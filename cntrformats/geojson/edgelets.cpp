// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/edgelets.h>

#include <charconv>

#include <cntrformats/errors.h>
#include <cntrformats/json.h>

namespace formats {

namespace {

/// A whole number within the range of its type.
template <class Number>
bool readWhole(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

qcEdgelet edgelet(std::string_view json, const qcVector<2>& position) {
  unsigned short magnitude = 0;
  unsigned char angle = 0;
  const auto values = json.starts_with('[') ? elementsOf(json) : std::vector<std::string_view>();
  if (values.size() != 2 || !readWhole(values[0], magnitude) || !readWhole(values[1], angle)) {
    throw FeatureError(excerpt(json) + " is not [magnitude, angle], from 0 to 65535 and 255");
  }
  return {position, magnitude, qcAngle8(angle)};
}

}  // namespace

void readEdgelets(std::string_view json, Geometry& geometry) {
  if (json.empty() || json == "null") return;
  if (!json.starts_with('[')) throw FeatureError("edgelets: " + excerpt(json) + " is not a list");
  if (geometry.parts.size() > 1) throw FeatureError("edgelets need an outline of a single part");
  const auto elements = elementsOf(json);
  const Points& outline = geometry.parts.front().outline;
  if (elements.size() != outline.size()) {
    throw FeatureError(std::to_string(elements.size()) + " edgelets for " +
                       std::to_string(outline.size()) + " vertices");
  }
  std::vector<qcEdgelet>& edgelets = geometry.edgelets.emplace_back();
  try {
    for (const std::string_view element : elements) {
      edgelets.push_back(edgelet(element, outline[edgelets.size()]));
    }
  } catch (const FeatureError& error) {
    throw FeatureError("edgelet " + std::to_string(edgelets.size()) + ": " + error.what());
  }
}

}  // namespace formats
