// SPDX-License-Identifier: MIT
//
// The exact text of SVG elements.

#include <tools/draw/svg.h>

#include <gtest/gtest.h>

#include <numbers>

namespace svg = tool::svg;
using tool::Box;

TEST(SvgNumber, HasTwoDecimalsAtMost) {
  EXPECT_EQ(svg::number(1.0), "1");
  EXPECT_EQ(svg::number(100.0), "100");
  EXPECT_EQ(svg::number(1.5), "1.5");
  EXPECT_EQ(svg::number(-1.256), "-1.26");
  EXPECT_EQ(svg::number(0.004), "0");
  EXPECT_EQ(svg::number(-0.004), "0");
  EXPECT_EQ(svg::number(1e20), "100000000000000000000");
  EXPECT_EQ(svg::number(0.12345, 4), "0.1235");
}

TEST(SvgText, IsEscaped) {
  EXPECT_EQ(svg::escaped("a<b>&\"c'\n\x1b d"), "a&lt;b&gt;&amp;&quot;c&apos;?? d");
  EXPECT_EQ(svg::text({1, 2}, 15, "a<b"), "<text x=\"1\" y=\"2\" font-size=\"15\">a&lt;b</text>\n");
}

TEST(SvgPath, IsMadeOfLinesOrRings) {
  EXPECT_EQ(svg::path({{{0, 0}, {1.5, 2}, {3, 4}}, {{5, 6}, {7, 8}}}, false, " fill=\"none\"", ""),
            "<path fill=\"none\" d=\"M0,0 1.5,2 3,4M5,6 7,8\"/>\n");
  EXPECT_EQ(svg::path({{{0, 0}, {1, 2}}, {{5, 6}}}, true, "", "a&b"),
            "<path d=\"M0,0 1,2ZM5,6Z\"><title>a&amp;b</title></path>\n");
}

TEST(SvgShapes, HaveTheirMeasures) {
  EXPECT_EQ(svg::circle({{1, 2}, 3}, "", ""), "<circle cx=\"1\" cy=\"2\" r=\"3\"/>\n");
  EXPECT_EQ(svg::circle({{1, 2}, 3}, " fill=\"red\"", "t"),
            "<circle fill=\"red\" cx=\"1\" cy=\"2\" r=\"3\"><title>t</title></circle>\n");
  EXPECT_EQ(svg::ellipse({{1, 2}, 4, 3, std::numbers::pi / 4.0}),
            "<ellipse rx=\"4\" ry=\"3\" transform=\"translate(1,2) rotate(45)\"/>\n");
  EXPECT_EQ(svg::rectangle(Box{{1, 2}, {4, 7}}),
            "<rect x=\"1\" y=\"2\" width=\"3\" height=\"5\"/>\n");
  EXPECT_EQ(svg::line({1, 2}, {3, 4}), "<line x1=\"1\" y1=\"2\" x2=\"3\" y2=\"4\"/>\n");
  EXPECT_EQ(svg::image(Box{{1, 2}, {4, 7}}, "data:x"),
            "<image x=\"1\" y=\"2\" width=\"3\" height=\"5\" preserveAspectRatio=\"none\" "
            "href=\"data:x\"/>\n");
}
