// SPDX-License-Identifier: MIT
//
// What the members of a Feature mean, and what is wrong with those that cannot be read.

#include <cntrformats/geojson/feature.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../texts.h"

using namespace formats;
using texts::triangle;

namespace {

std::string withLabel(const std::string& label) {
  return R"({"type":"Feature","properties":{"label":)" + label + R"(},"geometry":)" + triangle +
         "}";
}

std::string withId(const std::string& id) {
  return R"({"type":"Feature","id":)" + id + R"(,"properties":{},"geometry":)" + triangle + "}";
}

std::optional<Label> labelIn(const std::string& label) {
  return texts::read("geojsonl", withLabel(label)).features.at(0).label;
}

std::optional<std::string> idIn(const std::string& id) {
  return texts::read("geojsonl", withId(id)).features.at(0).id;
}

std::string problemOfLine(const std::string& line) { return texts::problemOf("geojsonl", line); }

}  // namespace

TEST(GeoJsonFeature, ALabelIsAWholeNumberOrAText) {
  EXPECT_EQ(labelIn("0"), Label(0UL));
  EXPECT_EQ(labelIn("3.0"), Label(3UL)) << "some programs have only one kind of number";
  EXPECT_EQ(labelIn("4294967295"), Label(4294967295UL));
  EXPECT_EQ(labelIn("\"7\""), Label("7"));
  EXPECT_EQ(labelIn("null"), std::nullopt);
  EXPECT_EQ(labelIn("null "), std::nullopt);
  for (const char* bad : {"true", "-1", "-0.5", "1.5", "4294967296", "[1]"}) {
    EXPECT_EQ(problemOfLine(withLabel(bad)),
              "label is " + std::string(bad) + ", not a whole number from 0 to 4294967295");
  }
}

TEST(GeoJsonFeature, AnIdIsATextOrWhatIsWritten) {
  EXPECT_EQ(idIn("\"a b\""), "a b");
  EXPECT_EQ(idIn("1.50"), "1.50");
  EXPECT_EQ(idIn("[1, 2 ]"), "[1,2]");
  EXPECT_EQ(idIn("null"), std::nullopt);
}

TEST(GeoJsonFeature, PropertiesMayBeAnything) {
  for (const char* properties : {"null", "5", "[[1]]", "\"label\""}) {
    const auto found =
        texts::read("geojsonl", R"({"type":"Feature","properties":)" + std::string(properties) +
                                    R"(,"geometry":)" + triangle + "}");
    ASSERT_EQ(found.features.size(), 1) << properties;
    EXPECT_EQ(found.features[0].label, std::nullopt);
  }
}

TEST(GeoJsonFeature, TheFirstProblemIsNamedAndTheOtherMembersAreRead) {
  const auto found = texts::read(
      "geojsonl", R"({"type":"Feature","geometry":{"type":"Point","coordinates":[1,2]},)"
                  R"("properties":{"label":-1},"id":"a"})"
                  "\n"
                  R"({"type":"Feature","properties":{"label":-1},"geometry":5})"
                  "\n"
                  R"({"type":"Feature","properties":{"label":-1},"id":"a"})");
  EXPECT_THAT(found.complaints,
              testing::ElementsAre("1: a Point has no outline",
                                   "2: label is -1, not a whole number from 0 to 4294967295",
                                   "3: label is -1, not a whole number from 0 to 4294967295"));
  EXPECT_EQ(found.unreadable[0].id, "a");
}

TEST(GeoJsonFeature, HasAGeometry) {
  EXPECT_EQ(problemOfLine(R"({"type":"Feature","properties":{}})"), "no geometry");
  EXPECT_EQ(problemOfLine(R"({"type":"Feature","geometry":null})"), "no geometry");
  EXPECT_EQ(problemOfLine(R"({"type":"Feature","geometry":5})"), "5 is not a geometry");
  EXPECT_EQ(problemOfLine(R"({"type":"Feature","geometry":{"type":"Circle", "radius":1}})"),
            R"({"type":"Circle","radius":1} is not a geometry)");
  EXPECT_EQ(problemOfLine(R"({"type":"Feature","geometry":{"type":"Feature"}})"),
            R"({"type":"Feature"} is not a geometry)");
}

TEST(GeoJsonFeature, OtherTextIsNone) {
  for (const char* bad : {"5", "[1]", "{}", R"({"type":"Topology"})", R"({"type":5})",
                          R"({"type":null})", R"({"type":"feature"})"}) {
    EXPECT_EQ(problemOfLine(bad), std::string(bad) + " is not a Feature");
  }
}
