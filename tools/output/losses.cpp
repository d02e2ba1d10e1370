// SPDX-License-Identifier: MIT

#include <tools/output/losses.h>

#include <algorithm>

#include <tools/input/csv.h>

namespace tool {

namespace {

/// Properties besides the label and the edge elements, and other members of a Feature.
bool hasOtherMembers(const Json& source) {
  const Json& properties = member(source, "properties");
  const auto& known = {"label", "edgelets"};
  for (const auto& [name, value] : properties.items()) {
    if (std::find(known.begin(), known.end(), name) == known.end()) return true;
  }
  return false;
}

bool hasEdgelets(const Feature& feature) {
  return !feature.geometry.parts.front().edgelets.empty();
}

bool archiveHoldsEdgelets(const Feature& feature) {
  return feature.geometry.parts.front().holes.empty();
}

bool holdsId(const Feature& feature, Format to) {
  return to == Format::eCsv && !feature.label && csvHoldsId(feature);
}

bool holdsLabel(const Feature& feature, Format to) {
  return to == Format::eCsv || (to == Format::eArchive && *feature.label != 0);
}

}  // namespace

bool csvHoldsId(const Feature& feature) {
  if (!feature.id || feature.id->find_first_of("\r\n") != std::string::npos) return false;
  return parseFeatureName(*feature.id).id == feature.id &&
         parseRingName(*feature.id) == RingName{*feature.id};
}

std::vector<const char*> lossesOf(const Feature& feature, Format to) {
  if (to == Format::eGeoJson || to == Format::eGeoJsonLines) return {};
  std::vector<const char*> losses;
  if (feature.label && !holdsLabel(feature, to)) losses.push_back("labels");
  if (feature.id && !holdsId(feature, to)) losses.push_back("ids");
  if (hasOtherMembers(feature.source)) losses.push_back("other properties");
  if (hasEdgelets(feature) && !(to == Format::eArchive && archiveHoldsEdgelets(feature))) {
    losses.push_back("edge elements");
  }
  const bool isMultiLine = !feature.geometry.closed && feature.geometry.multiple;
  if (to == Format::eArchive && isMultiLine) losses.push_back("lines that belong together");
  return losses;
}

std::string Losses::account(Format to) const {
  std::string text = std::string(titleOf(to)) + " cannot hold ";
  const char* separator = "";
  for (const auto& [loss, count] : counts_) {
    text += separator + loss + " (" + std::to_string(count) + ")";
    separator = ", ";
  }
  return text;
}

}  // namespace tool
