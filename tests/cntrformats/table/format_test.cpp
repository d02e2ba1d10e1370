// SPDX-License-Identifier: MIT

#include <cntrformats/table/format.h>

#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "../texts.h"

using namespace formats;

TEST(Format, EachIsFoundByItsNameAndItsEndings) {
  std::set<std::string> names;
  for (const Format& format : allFormats()) {
    EXPECT_EQ(formatNamed(format.name), &format);
    EXPECT_TRUE(names.insert(format.name).second) << format.name << " is there twice";
    for (const std::string_view ending : format.endings) {
      if (ending.empty()) continue;
      EXPECT_EQ(formatByEnding("a.b" + std::string(ending)), &format);
    }
  }
  EXPECT_EQ(names, (std::set<std::string>{"archive", "csv", "geojson", "geojsonl", "wkt"}));
}

TEST(Format, EachHasItsEndings) {
  const std::pair<const char*, const char*> endings[] = {
      {".geojson", "geojson"},   {".json", "geojson"},    {".geojsonl", "geojsonl"},
      {".geojsons", "geojsonl"}, {".ndjson", "geojsonl"}, {".jsonl", "geojsonl"},
      {".wkt", "wkt"},           {".csv", "csv"},         {".qcar", "archive"}};
  for (const auto& [ending, name] : endings) {
    EXPECT_EQ(formatByEnding(std::string("a") + ending), formatNamed(name)) << ending;
  }
}

TEST(Format, NamesAndEndingsThatNobodyHasAreUnknown) {
  EXPECT_EQ(formatNamed(""), nullptr);
  EXPECT_EQ(formatNamed("shape"), nullptr);
  for (const char* file : {"-", "", "file", "file.txt", ".json/file", "json"}) {
    EXPECT_EQ(formatByEnding(file), nullptr) << file;
  }
}

TEST(Format, EndingsMayBeInCapitals) {
  EXPECT_EQ(formatByEnding("/a/COINS.GeoJSON"), formatNamed("geojson"));
  EXPECT_EQ(formatByEnding("/a/COINS.CSV.GZ"), formatNamed("csv"));
}

TEST(Format, IsKnownByTheFirstLine) {
  EXPECT_EQ(texts::guess(""), "geojson");
  EXPECT_EQ(texts::guess("\n \n"), "geojson");
  EXPECT_EQ(texts::guess("QCAR"), "archive");
  EXPECT_EQ(texts::guess("QCAR (0 0)"), "archive");
  EXPECT_EQ(texts::guess("QCA"), "geojson");
  EXPECT_EQ(texts::guess("\n {\"type\": \"Feature\"}\n"), "geojsonl");
  EXPECT_EQ(texts::guess("{\"type\": \"Feature\"}"), "geojson") << "the line is all there is";
  EXPECT_EQ(texts::guess("{\"type\": \"FeatureCollection\"}\n"), "geojson");
  EXPECT_EQ(texts::guess("{\"type\":\n"), "geojson");
  EXPECT_EQ(texts::guess("{\"a\":[0,1,2,3]}"), "geojson");
  EXPECT_EQ(texts::guess("\x1e{}\n"), "geojsonl");
  EXPECT_EQ(texts::guess("\n\r\n  POLYGON ((0 0, 1 0, 1 1))"), "wkt");
  EXPECT_EQ(texts::guess("linestring(0 0,1 1)\r\n"), "wkt");
  EXPECT_EQ(texts::guess("\xEF\xBB\xBFid,x,y\r\n1,2,3"), "csv");
  EXPECT_EQ(texts::guess("y,x,colour,id\n"), "csv");
  EXPECT_EQ(texts::guess("7,1.5,-2e3"), "csv");
  EXPECT_EQ(texts::guess("7,1.5,b"), "geojson");
  EXPECT_EQ(texts::guess("[1,2,3]"), "geojson");
  EXPECT_EQ(texts::guess(std::string(3000000, 'a')), "geojson") << "no line ends anywhere near";
}
