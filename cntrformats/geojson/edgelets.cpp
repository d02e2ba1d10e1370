// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/edgelets.h>

#include <cntrformats/errors.h>

namespace formats {

namespace {

constexpr unsigned largestMagnitude = 65535;
constexpr unsigned largestAngle = 255;

bool isWhole(const Json& value, unsigned largest) {
  return value.is_number_unsigned() && value.get<std::uint64_t>() <= largest;
}

qcEdgelet edgelet(const Json& json, const qcVector<2>& position) {
  if (!json.is_array() || json.size() != 2 || !isWhole(json[0], largestMagnitude) ||
      !isWhole(json[1], largestAngle)) {
    throw FeatureError(excerpt(json) + " is not [magnitude, angle], from 0 to 65535 and 255");
  }
  return {position, json[0].get<unsigned short>(), qcAngle8(json[1].get<unsigned char>())};
}

}  // namespace

void readEdgelets(const Json& json, Geometry& geometry) {
  if (json.is_null()) return;
  if (!json.is_array()) throw FeatureError("edgelets: " + excerpt(json) + " is not a list");
  if (geometry.parts.size() > 1) throw FeatureError("edgelets need an outline of a single part");
  const Points& outline = geometry.parts.front().outline;
  if (json.size() != outline.size()) {
    throw FeatureError(std::to_string(json.size()) + " edgelets for " +
                       std::to_string(outline.size()) + " vertices");
  }
  std::vector<qcEdgelet>& edgelets = geometry.edgelets.emplace_back();
  try {
    for (const Json& element : json) {
      edgelets.push_back(edgelet(element, outline[edgelets.size()]));
    }
  } catch (const FeatureError& error) {
    throw FeatureError("edgelet " + std::to_string(edgelets.size()) + ": " + error.what());
  }
}

}  // namespace formats
