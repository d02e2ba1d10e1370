// SPDX-License-Identifier: MIT
//
// Documents that are read through windows of every size: what is found does not depend on it.

#include <cntrformats/geojson/window.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include <cntrformats/geojson/document.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

const std::string document = R"({
  "type": "FeatureCollection",
  "name": "a \"}] b",
  "features": [
    {"type":"Feature","properties":{"label":"}"},"geometry":{"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1]]]}},
    {"type":"Point","coordinates":[1,2]} ,
    {"type":"Feature","id":7,"properties":null,"geometry":{"type":"LineString","coordinates":[[0,0],[1,1e3]]}},
    {"type":"Feature" "id"}
  ],
  "licence": ["CC0"]
}
)";

std::string described(const texts::Found& found) {
  std::string text;
  for (const Feature& feature : found.features) text += feature.text + "\n";
  for (const std::string& complaint : found.complaints) text += complaint + "\n";
  for (const Member& member : found.members) text += member.name + "=" + member.value + "\n";
  return text;
}

}  // namespace

TEST(Window, ItsSizeChangesNothing) {
  const auto whole = texts::readDocument(document, Source::mostAtOnce);
  ASSERT_EQ(whole.features.size(), 2);
  EXPECT_THAT(whole.complaints,
              ElementsAre("2: a Point has no outline",
                          "4: not JSON: line 8, column 23: a comma, a bracket or a value is "
                          "missing, wrong or too much"));
  EXPECT_EQ(whole.features[0].label, Label("}"));
  EXPECT_EQ(*valueOf(whole.members, "licence"), R"(["CC0"])");
  for (std::size_t size = 1; size <= document.size() + 1; ++size) {
    EXPECT_EQ(described(texts::readDocument(document, size)), described(whole)) << size;
  }
}

TEST(Window, FlawsAreNamedWithTheirPlaceWhateverItsSize) {
  const std::string open = document.substr(0, document.find("    {\"type\":\"Point\""));
  const std::pair<std::string, std::string> flaws[] = {
      {open, "not JSON: line 6, column 1: a value expected, not the end"},
      {open + "{\"type\":[", "not JSON: line 6, column 1: the value that begins here does not end"},
      {open + "{} {}]}", "not JSON: line 6, column 4: ']' expected"},
      {open + "{},,{}]}", "not JSON: line 6, column 4: a value expected"},
      {open + "{}]", "not JSON: line 6, column 4: '}' expected"},
      {open + "{}],7:8}", "not JSON: line 6, column 5: the name of a member expected"},
      {open + "{}],\"a\":nix}",
       "not JSON: line 6, column 9: a comma, a bracket or a value is missing, wrong or too much"},
      {open + "{}]} x", "not JSON: line 6, column 6: something follows the end"}};
  for (const auto& [text, flaw] : flaws) {
    for (const std::size_t size :
         {std::size_t{1}, std::size_t{2}, std::size_t{50}, Source::mostAtOnce}) {
      EXPECT_EQ(texts::flawOfDocument(text, size), flaw) << size;
    }
  }
}

TEST(Window, BlanksOfAllKindsAreSkipped) {
  std::string text;
  for (const char c : document) {
    text += c == '\n' ? std::string("\r\n\t") : std::string(1, c);
  }
  const auto found = texts::readDocument(text, 3);
  EXPECT_EQ(found.features.size(), 2);
  EXPECT_EQ(found.complaints.size(), 2);
  EXPECT_EQ(found.members.size(), 3);
}
