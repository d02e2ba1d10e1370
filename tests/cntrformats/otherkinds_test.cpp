// SPDX-License-Identifier: MIT

#include <cntrformats/otherkinds.h>

#include <gtest/gtest.h>

#include "texts.h"

using namespace formats;

TEST(OtherKinds, AreNamedInTheMessage) {
  EXPECT_EQ(texts::flawOf("geojson", "%YAML:1.0\n---\n"),
            "a YAML file, perhaps of OpenCV's FileStorage; write the points as lines of x,y");
  EXPECT_EQ(texts::flawOf("geojson", "<?xml version=\"1.0\"?>\n<opencv_storage>\n"),
            "an XML file, perhaps of OpenCV's FileStorage; write the points as lines of x,y");
  EXPECT_EQ(
      texts::flawOf("geojson", "2 0.5 0.5 0.25 0.125\n"),
      "YOLO labels, whose numbers are relative to the size of an image; write pixels as lines "
      "of x,y");
}

TEST(OtherKinds, AreKnownByTheFirstLine) {
  EXPECT_EQ(otherKind("<opencv_storage>\n"), otherKind("<?xml version=\"1.0\"?>\n"));
  ASSERT_NE(otherKind("2 0.5 0.5 0.25 0.125"), nullptr);
  for (const char* line : {"2 0.5 0.5 0.25 0.125\r\n", "0 0 0 1 1", "7 0 0 0.5 0 0.5 0.5 0 0.5"}) {
    EXPECT_EQ(otherKind(line), otherKind("2 0.5 0.5 0.25 0.125")) << line;
  }
}

TEST(OtherKinds, AreNotSeenInOtherText) {
  for (const char* line : {"", "<svg/>", "[1,2]", "{}", "2 0.5 0.5", "2 0.5 0.5 0.25",
                           "2 0.5 0.5 0.25 1.5", "2.5 0.5 0.5 0.25 0.5", "2 0.5 0.5 0.25 0.5 0.5",
                           "2 0.5 0.5 0.25 -0.5", "cat 0.5 0.5 0.25 0.5"}) {
    EXPECT_EQ(otherKind(line), nullptr) << line;
  }
}
