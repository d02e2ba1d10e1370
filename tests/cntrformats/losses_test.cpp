// SPDX-License-Identifier: MIT
//
// What each format cannot hold.

#include <cntrformats/losses.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "texts.h"

using namespace formats;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrEq;

namespace {

/// A feature with everything that a feature can have.
Feature full() {
  Feature feature = texts::outline(texts::square(4));
  feature.label = 7UL;
  feature.id = "a";
  feature.text = R"({"type":"Feature","properties":{"label":7,"colour":"red"}})";
  feature.geometry.edgelets.emplace_back();
  for (const auto& point : feature.geometry.parts[0].outline) {
    feature.geometry.edgelets[0].emplace_back(point, 1, qcAngle8(2));
  }
  return feature;
}

Losses lossesIn(const char* format, const Feature& feature) {
  return formatNamed(format)->lossesOf(feature);
}

}  // namespace

TEST(Losses, WhatAnnotationToolsNoteOfAShapeIsLostEverywhere) {
  Feature feature = texts::outline(texts::square(4));
  feature.hasFurtherMembers = true;
  for (const Format& format : allFormats()) {
    EXPECT_THAT(format.lossesOf(feature), ElementsAre(StrEq("other members of annotations")))
        << format.name;
  }
}

TEST(Losses, GeoJsonHoldsAll) {
  EXPECT_THAT(lossesIn("geojson", full()), IsEmpty());
  EXPECT_THAT(lossesIn("geojsonl", full()), IsEmpty());
}

TEST(Losses, NamesOfPropertiesMayBeEscaped) {
  Feature feature = texts::outline(texts::square(4));
  feature.text = R"({"type":"Feature","propert\u0069es":{"l\u0061bel":7,"edgelet\u0073":[]}})";
  EXPECT_THAT(lossesIn("csv", feature), IsEmpty());
  feature.text = R"({"type":"Feature","propert\u0069es":{"c\u006flour":7}})";
  EXPECT_THAT(lossesIn("csv", feature), ElementsAre(StrEq("other properties")));
}

TEST(Losses, GeoJsonHoldsEdgeElementsOfASinglePart) {
  Feature feature = full();
  feature.geometry.parts.push_back(feature.geometry.parts[0]);
  feature.geometry.edgelets.push_back(feature.geometry.edgelets[0]);
  EXPECT_THAT(lossesIn("geojson", feature), ElementsAre(StrEq("edge elements")));
}

TEST(Losses, LabelsThatAreTextAreHeldByGeoJsonAlone) {
  Feature feature = texts::outline(texts::square(1));
  feature.label = "nut";
  EXPECT_THAT(lossesIn("geojson", feature), IsEmpty());
  for (const char* format : {"csv", "wkt", "archive"}) {
    EXPECT_THAT(lossesIn(format, feature), ElementsAre(StrEq("labels"))) << format;
  }
}

TEST(Losses, WktHoldsTheGeometryAlone) {
  EXPECT_THAT(lossesIn("wkt", full()),
              ElementsAre(StrEq("labels"), StrEq("ids"), StrEq("other properties"),
                          StrEq("edge elements")));
  EXPECT_THAT(lossesIn("wkt", texts::outline(texts::square(1))), IsEmpty());
}

TEST(Losses, LabelsAndEdgeElementsAreNoOtherProperties) {
  Feature feature = texts::outline(texts::square(1));
  feature.text = R"({"type":"Feature","properties":{"label":7,"edgelets":null}})";
  EXPECT_THAT(lossesIn("wkt", feature), IsEmpty());
}

TEST(Losses, CsvHoldsALabelOrAnId) {
  Feature feature = full();
  EXPECT_THAT(lossesIn("csv", feature),
              ElementsAre(StrEq("ids"), StrEq("other properties"), StrEq("edge elements")));
  feature.label.reset();
  EXPECT_THAT(lossesIn("csv", feature),
              ElementsAre(StrEq("other properties"), StrEq("edge elements")));
  for (const char* id : {"12", "#3", "a/hole 1", "b/line", "two\nlines", ""}) {
    feature.id = id;
    EXPECT_THAT(lossesIn("csv", feature),
                ElementsAre(StrEq("ids"), StrEq("other properties"), StrEq("edge elements")))
        << "the id would not come back: " << id;
  }
}

TEST(Losses, AnArchiveHoldsLabelsAndEdgeElementsOfOutlinesWithoutHoles) {
  Feature feature = full();
  EXPECT_THAT(lossesIn("archive", feature), ElementsAre(StrEq("ids"), StrEq("other properties")));
  feature.label = 0UL;
  feature.geometry.parts[0].holes.push_back({{1, 1}, {1, 2}, {2, 2}});
  EXPECT_THAT(lossesIn("archive", feature),
              ElementsAre(StrEq("labels"), StrEq("ids"), StrEq("other properties"),
                          StrEq("edge elements")));
}

TEST(Losses, AnArchiveHoldsNoEdgeElementsOfSeveralOutlines) {
  Feature feature = full();
  feature.geometry.multiple = true;
  EXPECT_THAT(lossesIn("archive", feature),
              ElementsAre(StrEq("ids"), StrEq("other properties"), StrEq("edge elements")));
  feature.geometry.multiple = false;
  feature.geometry.parts.push_back(feature.geometry.parts[0]);
  feature.geometry.edgelets.emplace_back();
  EXPECT_THAT(lossesIn("archive", feature),
              ElementsAre(StrEq("ids"), StrEq("other properties"), StrEq("edge elements")));
}

TEST(Losses, AnArchiveHoldsEdgeElementsOfLines) {
  Feature feature = full();
  feature.geometry.closed = false;
  feature.geometry.parts.push_back(feature.geometry.parts[0]);
  feature.geometry.edgelets.push_back(feature.geometry.edgelets[0]);
  EXPECT_THAT(lossesIn("archive", feature), ElementsAre(StrEq("ids"), StrEq("other properties")));
}

TEST(Losses, AnArchiveHoldsLinesOneByOne) {
  Feature feature = texts::outline({{0, 0}, {1, 1}});
  feature.geometry.closed = false;
  EXPECT_THAT(lossesIn("archive", feature), IsEmpty());
  feature.geometry.multiple = true;
  EXPECT_THAT(lossesIn("archive", feature), ElementsAre(StrEq("lines that belong together")));
}
