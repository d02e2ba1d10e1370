// SPDX-License-Identifier: MIT

#include <cntrformats/reader.h>

#include <gtest/gtest.h>

#include "texts.h"

using namespace formats;

TEST(Decoded, IsWhatWasRead) {
  const Feature feature =
      decoded(3, [](Feature& made) { made.geometry = texts::outline(texts::square(1)).geometry; });
  EXPECT_EQ(feature.number, 3);
  EXPECT_EQ(feature.problem, "");
  EXPECT_EQ(feature.geometry.parts.size(), 1);
}

TEST(Decoded, AnErrorIsTheProblemAndLeavesNoGeometry) {
  const Feature feature = decoded(4, [](Feature& made) {
    made.label = "nut";
    made.geometry = texts::outline(texts::square(1)).geometry;
    throw FeatureError("bent");
  });
  EXPECT_EQ(feature.number, 4);
  EXPECT_EQ(feature.problem, "bent");
  EXPECT_EQ(feature.label, Label("nut"));
  EXPECT_TRUE(feature.geometry.parts.empty());
}
