// SPDX-License-Identifier: MIT

#include <cntrformats/csv/names.h>

#include <gtest/gtest.h>

using namespace formats;

TEST(RingName, ComesBackFromItsText) {
  for (const RingName& name :
       {RingName{"7"}, RingName{"7", true}, RingName{"a b", false, 2}, RingName{"", false, 0, 1},
        RingName{"x", false, 2, 3}, RingName{"x", true, 12}}) {
    EXPECT_EQ(parseRingName(toText(name)), name) << toText(name);
  }
  EXPECT_EQ(toText({"x", true, 2, 3}), "x/line/part 2/hole 3");
}

TEST(RingName, WhatIsNoNumberFromOneIsPartOfTheId) {
  for (const char* text :
       {"a/hole 0", "a/hole 01", "a/part x", "a/part ", "a/hole -1", "a/lines"}) {
    EXPECT_EQ(parseRingName(text), RingName{text});
  }
}

TEST(RingName, OnlyTheLastSuffixesCount) {
  EXPECT_EQ(parseRingName("a/hole 1/hole 2"), (RingName{"a/hole 1", false, 0, 2}));
  EXPECT_EQ(parseRingName("a/part 1/part 2"), (RingName{"a/part 1", false, 2, 0}));
  EXPECT_EQ(parseRingName("a/hole 1/part 2"), (RingName{"a/hole 1", false, 2, 0}));
  EXPECT_EQ(parseRingName("a/part 1/line"), (RingName{"a/part 1", true}));
  EXPECT_EQ(parseRingName("a/line/line"), (RingName{"a/line", true}));
}

TEST(RingName, FollowsTheHoleOrThePartBeforeIt) {
  EXPECT_TRUE(follows({"a", false, 0, 1}, {"a"}));
  EXPECT_TRUE(follows({"a", false, 1, 2}, {"a", false, 1, 1}));
  EXPECT_TRUE(follows({"a", false, 2}, {"a", false, 1, 5}));
  EXPECT_FALSE(follows({"b", false, 0, 1}, {"a"}));
  EXPECT_FALSE(follows({"a", true, 0, 1}, {"a"}));
  EXPECT_FALSE(follows({"a", false, 0, 2}, {"a"}));
  EXPECT_FALSE(follows({"a", false, 3}, {"a", false, 1}));
  EXPECT_FALSE(follows({"a", false, 1}, {"a"})) << "the first part has no part before it";
  EXPECT_FALSE(follows({"a", false, 2, 1}, {"a", false, 1}));
}

TEST(FeatureName, IsALabelOrAnIdOrNothing) {
  EXPECT_EQ(parseFeatureName("0").label, 0U);
  EXPECT_EQ(parseFeatureName("4294967295").label, 4294967295U);
  for (const char* id : {"4294967296", "99999999999", "99999999999999999999999", "007", "-1", "1.0",
                         "# 3", "#", "#3a", "a"}) {
    EXPECT_EQ(parseFeatureName(id).id, id);
    EXPECT_FALSE(parseFeatureName(id).label) << id;
  }
  for (const char* nothing : {"", "#12"}) {
    EXPECT_FALSE(parseFeatureName(nothing).id) << nothing;
    EXPECT_FALSE(parseFeatureName(nothing).label) << nothing;
  }
}
