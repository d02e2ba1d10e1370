// SPDX-License-Identifier: MIT
//
// Colours by number.

#include <tools/draw/palette.h>

#include <gtest/gtest.h>

#include <set>

using tool::coloursOf;
using tool::Ground;

TEST(Palette, OnPaperAreasAreLightAndLinesDark) {
  EXPECT_EQ(coloursOf(0, Ground::ePaper).fill, "#86cdff");
  EXPECT_EQ(coloursOf(0, Ground::ePaper).stroke, "#0070ab");
  EXPECT_EQ(coloursOf(1, Ground::ePaper).fill, "#feaaac");
  EXPECT_EQ(coloursOf(1, Ground::ePaper).stroke, "#a6444d");
}

TEST(Palette, OnPhotographsBothAreBright) {
  EXPECT_EQ(coloursOf(1, Ground::ePhotograph).fill, "#ff8b95");
  EXPECT_EQ(coloursOf(1, Ground::ePhotograph).stroke, "#ff8b95");
}

TEST(Palette, NumbersHaveDifferentColours) {
  std::set<std::string> fills;
  for (unsigned long i = 0; i < 50; ++i) fills.insert(coloursOf(i, Ground::ePaper).fill);
  EXPECT_EQ(fills.size(), 50);
}
