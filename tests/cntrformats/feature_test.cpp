// SPDX-License-Identifier: MIT

#include <cntrformats/feature.h>

#include <gtest/gtest.h>

using namespace formats;

TEST(Feature, ALabelIsANumberOrAText) {
  EXPECT_EQ(toText(Label(7UL)), "7");
  EXPECT_EQ(toText(Label(largestLabel)), "4294967295");
  EXPECT_EQ(toText(Label("nut")), "nut");
}
