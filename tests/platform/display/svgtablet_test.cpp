// SPDX-License-Identifier: MIT
//
// The drawing surface that writes SVG.

#include <platform/display/svgtablet.h>

#include <cmath>
#include <locale>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <testing/shapes/numbers.h>

namespace {

using Pair = qcPair<double>;
using testing::HasSubstr;
using testing::Not;

std::string written(const qcSvgTablet& tablet) {
  std::ostringstream out;
  tablet.write(out);
  return out.str();
}

/// The picture of one red segment on the overlay.
std::string drawn(const Pair& from, const Pair& to) {
  qcSvgTablet tablet;
  tablet.drawLineSeg(from, to, qcColor::red, qcUITablet::eOverlayLayer);
  return written(tablet);
}

TEST(SvgTabletTest, EmptyPictureIsComplete) {
  EXPECT_EQ(written(qcSvgTablet()),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"-4 -4 8 8\" fill=\"none\" "
            "stroke-width=\"1\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n"
            "  <g id=\"image\">\n"
            "  </g>\n"
            "  <g id=\"overlay\">\n"
            "  </g>\n"
            "</svg>\n");
}

TEST(SvgTabletTest, ImageLayerComesFirst) {
  qcSvgTablet tablet(0.5);
  tablet.drawLineSeg(Pair(0, 1), Pair(10, 1), qcColor(1, 171, 255), qcUITablet::eOverlayLayer);
  tablet.drawLineSeg(Pair(2, 0), Pair(2, 5), qcColor::orange, qcUITablet::eImageLayer);
  EXPECT_EQ(written(tablet),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"-2 -2 14 9\" fill=\"none\" "
            "stroke-width=\"0.5\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n"
            "  <g id=\"image\">\n"
            "    <path stroke=\"#ffa500\" d=\"M2 0L2 5\"/>\n"
            "  </g>\n"
            "  <g id=\"overlay\">\n"
            "    <path stroke=\"#01abff\" d=\"M0 1L10 1\"/>\n"
            "  </g>\n"
            "</svg>\n");
}

TEST(SvgTabletTest, SegmentsThatContinueInOneColourBecomeOnePath) {
  qcSvgTablet tablet;
  const auto draw = [&](const Pair& from, const Pair& to, const qcColor& color) {
    tablet.drawLineSeg(from, to, color, qcUITablet::eImageLayer);
  };
  draw(Pair(0, 0), Pair(1, 0), qcColor::red);
  // A segment on another layer in between, which does not interrupt the path.
  tablet.drawLineSeg(Pair(9, 9), Pair(8, 8), qcColor::red, qcUITablet::eOverlayLayer);
  draw(Pair(1, 0), Pair(1, 1), qcColor::red);
  draw(Pair(1, 1), Pair(0, 0), qcColor::red);
  draw(Pair(0, 0), Pair(5, 5), qcColor::blue);
  draw(Pair(6, 6), Pair(7, 7), qcColor::blue);
  const std::string svg = written(tablet);
  EXPECT_THAT(svg, HasSubstr("    <path stroke=\"#ff0000\" d=\"M0 0L1 0L1 1L0 0\"/>\n"
                             "    <path stroke=\"#0000ff\" d=\"M0 0L5 5\"/>\n"
                             "    <path stroke=\"#0000ff\" d=\"M6 6L7 7\"/>\n"
                             "  </g>\n"));
  EXPECT_THAT(svg, HasSubstr("    <path stroke=\"#ff0000\" d=\"M9 9L8 8\"/>\n  </g>\n</svg>"));
}

TEST(SvgTabletTest, ViewHoldsEverythingWithAMargin) {
  qcSvgTablet tablet(2.0);
  tablet.drawLineSeg(Pair(5, 40), Pair(-3, 20), qcColor::red, qcUITablet::eImageLayer);
  tablet.drawLineSeg(Pair(7, 21), Pair(6, 60), qcColor::red, qcUITablet::eOverlayLayer);
  EXPECT_THAT(written(tablet), HasSubstr("viewBox=\"-11 12 26 56\""));
}

TEST(SvgTabletTest, ViewCanBeFixed) {
  qcSvgTablet tablet(qcRect(qcVector<2>(10, 20), qcVector<2>(640, 480)), 1.5);
  tablet.drawLineSeg(Pair(-500, 0), Pair(5000, 1), qcColor::red, qcUITablet::eImageLayer);
  EXPECT_THAT(written(tablet), HasSubstr("viewBox=\"10 20 640 480\""));
  EXPECT_THAT(written(tablet), HasSubstr("stroke-width=\"1.5\""));
  EXPECT_THAT(written(tablet), HasSubstr("M-500 0L5000 1"));
}

TEST(SvgTabletTest, NumbersKeepAllTheirDigits) {
  EXPECT_THAT(drawn(Pair(0.1, 1.0 / 3.0), Pair(1e-7, 12345678.25)),
              HasSubstr("M0.1 0.3333333333333333L1e-07 12345678.25"));
}

TEST(SvgTabletTest, SegmentsWithoutANumberAreLeftOut) {
  for (const double bad : {std::nan(""), infinity, -infinity}) {
    for (const std::string& svg :
         {drawn(Pair(bad, 0), Pair(1, 1)), drawn(Pair(0, bad), Pair(1, 1)),
          drawn(Pair(0, 0), Pair(bad, 1)), drawn(Pair(0, 0), Pair(1, bad))}) {
      EXPECT_EQ(svg, written(qcSvgTablet()));
    }
  }
}

class CommaForDecimalPoint : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(SvgTabletTest, TheStreamsLocaleDoesNotMatter) {
  qcSvgTablet tablet;
  tablet.drawLineSeg(Pair(1000.5, 0), Pair(10000, 1), qcColor::red, qcUITablet::eImageLayer);
  std::ostringstream out;
  out.imbue(std::locale(out.getloc(), new CommaForDecimalPoint));
  tablet.write(out);
  EXPECT_EQ(out.str(), written(tablet));
  EXPECT_THAT(out.str(), HasSubstr("M1000.5 0L10000 1"));
}

}  // namespace
