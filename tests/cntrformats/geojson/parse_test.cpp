// SPDX-License-Identifier: MIT
//
// What is said of text that is not JSON.

#include <cntrformats/geojson/parse.h>

#include <gtest/gtest.h>

#include "../texts.h"

using namespace formats;

namespace {

struct BadText {
  const char* name;
  std::string text;
  const char* message;
};

class ABadText : public testing::TestWithParam<BadText> {};

/// What is wrong with the members of a Feature on the second line of a file.
std::string problemOfMembers(const std::string& members) {
  return texts::problemOf("geojsonl", "\n" + (R"({"type":"Feature",)" + members));
}

std::string nested(std::size_t depth, const std::string& open, const std::string& close) {
  std::string text = "1";
  for (std::size_t k = 0; k < depth; ++k) text.insert(0, open).append(close);
  return text;
}

/// A Feature with a member that is nested so deep.
std::string problemOfNested(std::size_t depth, const std::string& open, const std::string& close) {
  return problemOfMembers(R"("geometry":null,"a":)" + nested(depth, open, close) + "}");
}

TEST_P(ABadText, IsNamedWithThePlace) {
  EXPECT_EQ(problemOfMembers(GetParam().text),
            std::string("not JSON: line 2") + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ABadText,
    testing::Values(
        BadText{"NoUtf8", "\"a\":\"\xff\"}", ": text that is not UTF-8"},
        BadText{"OpenQuote", R"("a":"b})", ": a quote is not closed"},
        BadText{"ControlCharacter", "\"a\":\"\x01\"}", ": a control character in a text"},
        BadText{"WrongEscape", R"("a":"\x"})", ", column 27: a wrong escape in a text"},
        BadText{"WrongEscapeInAName", R"("\x":1})", ", column 24: a wrong escape in a text"},
        BadText{"WrongEscapeInAnInnerName", R"("a":{"\x":1}})",
                ", column 29: a wrong escape in a text"},
        BadText{"MalformedNumber", R"("a":1.2.3})",
                ", column 23: a number that is malformed or too large"},
        BadText{"TooLargeNumber", R"("a":[1,1e999]})",
                ", column 26: a number that is malformed or too large"},
        BadText{"OpenBracket", R"("a":[1)", ", column 1: a bracket is not closed"},
        BadText{"OpenInnerBracket", R"("a":{"b":1})",
                ", column 30: a comma, a bracket or a value is missing, wrong or too much"},
        BadText{"MoreAfterTheEnd",
                R"("geometry":{"type":"Polygon","coordinates":[[[0,0],[4,0],[4,4]]]}} 2})",
                ", column 86: something follows the end"},
        BadText{"NeitherTrueNorFalse", R"("a":tru})",
                ", column 23: a comma, a bracket or a value is missing, wrong or too much"},
        BadText{"NotNull", R"("a":nul})",
                ", column 23: a comma, a bracket or a value is missing, wrong or too much"},
        BadText{"NoColon", R"("a" 1})",
                ", column 23: a comma, a bracket or a value is missing, wrong or too much"},
        BadText{"NoGeometry", R"("geometry":nul})",
                ", column 30: a comma, a bracket or a value is missing, wrong or too much"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(GeoJsonParse, NestingHasALimit) {
  EXPECT_EQ(problemOfNested(199, "[", "]"), "no geometry");
  EXPECT_EQ(problemOfNested(200, "[", "]"), "nested too deeply");
  EXPECT_EQ(problemOfNested(199, R"({"b":)", "}"), "no geometry");
  EXPECT_EQ(problemOfNested(200, R"({"b":)", "}"), "nested too deeply");
}

TEST(GeoJsonParse, OnlyAnObjectIsRead) {
  for (const char* other : {"", " \r\n", "[1]", " 5", "\"{}\""}) {
    std::string text(other);
    text.reserve(text.size() + passagePadding);
    bool isRead = false;
    EXPECT_FALSE(parseObject({text}, [&](JsonObject&) { isRead = true; })) << other;
    EXPECT_FALSE(isRead) << other;
  }
}

TEST(GeoJsonParse, WhatPrecedesBlanksIsNotRead) {
  std::string text("{ \n");
  text.reserve(text.size() + passagePadding);
  EXPECT_FALSE(parseObject({std::string_view(text).substr(1)}, [](JsonObject&) {}));
}

TEST(GeoJsonParse, TheTextOfAValueEndsWithIt) {
  std::string text(
      "{\"a\" : [1, 2 ] , \"b\" : { \"c\":1} \n,\"d\":-1.50 ,\"e\": \" f \" ,\"g\":null }");
  text.reserve(text.size() + passagePadding);
  std::vector<std::string> found;
  EXPECT_TRUE(parseObject({text}, [&](JsonObject& object) {
    for (auto field : object) found.emplace_back(rawOf(field.value()));
  }));
  EXPECT_EQ(found, (std::vector<std::string>{"[1, 2 ]", "{ \"c\":1}", "-1.50", "\" f \"", "null"}));
}

}  // namespace
