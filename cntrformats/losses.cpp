// SPDX-License-Identifier: MIT

#include <cntrformats/losses.h>

#include <algorithm>

#include <cntrformats/json.h>

namespace formats {

namespace {

/// Properties besides the label and the edge elements.
bool hasOtherProperties(const std::string& text) {
  const auto properties = membersOf(lastMemberOf(text, "properties"));
  return std::any_of(properties.begin(), properties.end(), [](const JsonMember& property) {
    return !isNamed(property, "label") && !isNamed(property, "edgelets");
  });
}

}  // namespace

Losses lossesOf(const Feature& feature, const Holding& holding) {
  Losses losses;
  if (feature.label && !holding.label) losses.push_back("labels");
  if (feature.id && !holding.id) losses.push_back("ids");
  if (!holding.properties && hasOtherProperties(feature.text)) losses.push_back("other properties");
  if (feature.hasFurtherMembers) losses.push_back("other members of annotations");
  if (!feature.geometry.edgelets.empty() && !holding.edgelets) losses.push_back("edge elements");
  return losses;
}

}  // namespace formats
