// SPDX-License-Identifier: MIT
//
// cntr draw: the elements of the picture, and where it is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>

#include <platform/core/vector.h>

#include "program.h"

using program::collection;
using program::Directory;
using program::feature;
using program::polygon;
using program::run;
using program::Running;
using program::runOnFullDisk;
using program::square;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

#if defined(CNTR_PNG)
constexpr bool hasPng = true;
#else
constexpr bool hasPng = false;
#endif

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++found;
  }
  return found;
}

/// The number that follows the first `mark`.
double numberAfter(const std::string& text, const std::string& mark) {
  const std::size_t at = text.find(mark);
  return at == std::string::npos ? nan("") : std::strtod(text.c_str() + at + mark.size(), nullptr);
}

/// The picture of a file, as written to standard output.
std::string drawn(const std::string& file, std::vector<std::string> options = {}) {
  options.insert(options.begin(), "draw");
  const auto result = run(options, file);
  EXPECT_EQ(result.status, 0) << result.messages;
  return result.out;
}

/// The elements of the group of that class, without those of groups in it.
std::string groupOf(const std::string& picture, const std::string& mark) {
  const std::size_t begin = picture.find("<g class=\"" + mark + "\"");
  if (begin == std::string::npos) return "";
  return picture.substr(begin, picture.find("</g>", begin) - begin);
}

/// The elements of the overlay, one to a line.
std::string groupOfId(const std::string& picture, const std::string& overlay) {
  const std::string mark = "<g id=\"" + overlay + "\">\n";
  const std::size_t begin = picture.find(mark);
  if (begin == std::string::npos) return "no group " + overlay;
  return picture.substr(begin + mark.size(), picture.find("</g>", begin) - begin - mark.size());
}

std::string scaleBarText(const std::string& picture) {
  const std::string group = groupOf(picture, "scale");
  const std::size_t begin = group.find('>', group.find("<text")) + 1;
  return group.substr(begin, group.find("</text>") - begin);
}

/// The horizontal extent of the scale bar, in pixels.
double scaleBarLength(const std::string& picture) {
  const std::string group = groupOf(picture, "scale");
  return numberAfter(group, "x2=\"") - numberAfter(group, "x1=\"");
}

/// The picture of features in an image of 100 x 100 pixels, as large as the image: the middle of
/// its first pixel is at (0.5, 0.5).
std::string drawnInImage(const std::vector<std::string>& features,
                         std::vector<std::string> options = {}) {
  program::Json file = program::Json::parse(collection(features));
  file["width"] = 100;
  file["height"] = 100;
  options.insert(options.end(), {"--size", "100"});
  return drawn(file.dump(), options);
}

/// The width and height of a PNG file, by its header.
std::pair<int, int> sizeOfPng(const std::string& bytes) {
  const auto number = [&](std::size_t at) {
    int value = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
      value = value * 256 + static_cast<unsigned char>(bytes.at(i));
    }
    return value;
  };
  EXPECT_EQ(bytes.substr(0, 8), "\x89PNG\r\n\x1a\n");
  return {number(16), number(20)};
}

/// The head of a PNG file of 3 x 2 pixels.
std::string pngHead() { return {"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\3\0\0\0\2", 24}; }

/// A JPEG file of 5 x 4 pixels as far as its frame header, after a segment of another kind, one
/// that looks like a frame header, and fill bytes.
std::string jpegHead() {
  return {"\xff\xd8\xff\xe0\0\4ab\xff\xc4\0\3c\xff\xff\xc2\0\x0b\10\0\4\0\5\1\1\x11\0", 28};
}

}  // namespace

TEST(Draw, DrawsEveryCoinInThePicturesOwnArea) {
  const Directory directory;
  const std::string file = directory.path("coins.svg");
  const auto result = run({"draw", "samples/coins.geojson", "-o", file});
  EXPECT_EQ(result.status, 0) << result.messages;
  EXPECT_EQ(result.out, "");
  const std::string picture = directory.read("coins.svg");
  EXPECT_THAT(picture, StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns="));
  EXPECT_THAT(picture, HasSubstr("viewBox=\"0 0 1000 789.06\""));
  EXPECT_EQ(count(picture, "<path "), 24);
  EXPECT_EQ(count(groupOf(picture, "labels"), "</text>"), 24);
  EXPECT_THAT(picture, HasSubstr(">24</text>"));
  EXPECT_THAT(picture, HasSubstr("<title>samples/coins.geojson, feature 24</title>"));
}

TEST(Draw, WithoutAPicturesSizeTheViewIsThatOfTheOutlines) {
  const std::string picture = drawn(polygon({square(100, 200, 50)}), {"--size", "54"});
  EXPECT_THAT(picture, HasSubstr("viewBox=\"0 0 54 54\""));
  EXPECT_THAT(picture, HasSubstr("d=\"M2,2 52,2 52,52 2,52Z\""));
}

TEST(Draw, SeveralFilesShareOnePicture) {
  const auto result = run({"draw", "samples/coins.geojson", "samples/cell.geojson"});
  EXPECT_EQ(count(result.out, "<path "), 25);
  EXPECT_THAT(result.out, HasSubstr("viewBox=\"0 0 833.33 1000\""));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(
      result.messages,
      "cntr: samples/cell.geojson: its outlines are of an image of 550 x 660 pixels, but share "
      "the picture with samples/coins.geojson, whose image has 384 x 303\n");
}

TEST(Draw, ColoursFollowTheLabel) {
  const auto fill = [](const std::string& properties) {
    const std::string picture = drawn(polygon({square(0, 0, 2)}, properties));
    const std::size_t at = picture.find("<path fill=\"") + 12;
    return picture.substr(at, 7);
  };
  EXPECT_EQ(fill(R"("label":3)"), fill(R"("label":3,"name":"other")"));
  EXPECT_NE(fill(R"("label":3)"), fill(R"("label":4)"));
  EXPECT_THAT(fill(R"("label":3)"), StartsWith("#"));
}

TEST(Draw, HolesArePartOfTheirOutlinesPath) {
  const std::string picture = drawnInImage({polygon({square(0, 0, 10), square(2, 2, 3)})});
  EXPECT_EQ(count(picture, "<path "), 1);
  EXPECT_THAT(
      picture,
      HasSubstr("d=\"M0.5,0.5 10.5,0.5 10.5,10.5 0.5,10.5ZM2.5,2.5 5.5,2.5 5.5,5.5 2.5,5.5Z\""));
  EXPECT_THAT(picture, HasSubstr("fill-rule:evenodd"));
}

TEST(Draw, OpenLinesAreNotFilled) {
  const std::string picture = drawnInImage({feature("LineString", "[[0,0],[4,0],[4,3]]")});
  EXPECT_THAT(picture, HasSubstr("<path fill=\"none\""));
  EXPECT_THAT(picture, HasSubstr("d=\"M0.5,0.5 4.5,0.5 4.5,3.5\""));
}

TEST(Draw, FeaturesWithoutALabelHaveNoText) {
  EXPECT_EQ(count(groupOf(drawn(polygon({square(0, 0, 2)})), "labels"), "</text>"), 0);
}

TEST(Draw, ShowsEachOverlayInPixels) {
  const auto overlay = [](const std::string& file, const std::string& name) {
    return groupOfId(drawnInImage({file}, {"--show", name}), name);
  };
  const std::string triangle = polygon({"[[0,0],[6,8],[1,5]]"});
  EXPECT_EQ(overlay(triangle, "rectangle"),
            "<rect x=\"0.5\" y=\"0.5\" width=\"6\" height=\"8\"/>\n");
  EXPECT_EQ(overlay(triangle, "circle"), "<circle cx=\"3.5\" cy=\"4.5\" r=\"5\"/>\n");
  EXPECT_EQ(overlay(triangle, "hull"), "<path d=\"M0.5,0.5 6.5,8.5 1.5,5.5Z\"/>\n");
  // Points of the ellipse with the semi-axes 10 and 5 about (20, 30).
  const std::string points = "[[28,33],[26,34],[14,34],[12,33],[12,27],[14,26],[26,26],[28,27]]";
  EXPECT_EQ(overlay(polygon({points}), "ellipse"),
            "<ellipse rx=\"10\" ry=\"5\" transform=\"translate(20.5,30.5) rotate(0)\"/>\n");
  EXPECT_EQ(overlay(polygon({square(10, 20, 10)}), "centre"),
            "<line x1=\"9.5\" y1=\"25.5\" x2=\"21.5\" y2=\"25.5\"/>\n"
            "<line x1=\"15.5\" y1=\"19.5\" x2=\"15.5\" y2=\"31.5\"/>\n");
  EXPECT_EQ(overlay(polygon({"[[0,0],[4,3],[4,0],[0,3]]"}), "crossings"),
            "<circle cx=\"2.5\" cy=\"2\" r=\"6\"/>\n");
  // A gradient along +y has its edge along x, and the other way round.
  const std::string line =
      feature("LineString", "[[10,20],[30,20]]", R"("edgelets":[[500,64],[500,0]])");
  EXPECT_EQ(overlay(line, "edgelets"),
            "<path class=\"thin\" d=\"M11,20.5 10,20.5M30.5,20 30.5,21\"/>\n");
  EXPECT_EQ(overlay(triangle, "edgelets"), "");
}

TEST(Draw, ShowsAllEdgeletsOfTheCell) {
  const std::string picture =
      run({"draw", "--show", "edgelets", "samples/cell-edgelets.geojson"}).out;
  EXPECT_EQ(count(groupOfId(picture, "edgelets"), "M"), 490);
}

TEST(Draw, DenseCrossingsAreThinnedOut) {
  // A star whose 401 edges cross each other in about 80,000 places.
  std::vector<std::vector<double>> points;
  for (int i = 0; i < 401; ++i) {
    const double angle = 2.0 * 3.141592653589793 * i * 150 / 401;
    points.push_back({500.0 * std::cos(angle), 500.0 * std::sin(angle)});
  }
  const std::string picture = drawn(polygon({program::ring(points)}), {"--show", "crossings"});
  const std::size_t rings = count(groupOfId(picture, "crossings"), "<circle");
  EXPECT_GT(rings, 5000);
  EXPECT_LT(rings, 40000);
}

TEST(Draw, LabelsAreShownUnlessOtherThingsAreChosen) {
  const std::string file = polygon({square(0, 0, 2)}, R"("label":7)");
  EXPECT_THAT(groupOf(drawn(file), "labels"), HasSubstr(">7</text>"));
  EXPECT_EQ(groupOf(drawn(file, {"--show", "hull"}), "labels"), "");
  EXPECT_THAT(groupOf(drawn(file, {"--show", "hull,labels"}), "labels"), HasSubstr(">7</text>"));
}

TEST(Draw, TheScaleBarIsARoundNumberOfPixels) {
  const auto result = run({"draw", "samples/coins.geojson"});
  EXPECT_EQ(scaleBarText(result.out), "50 px");
  EXPECT_NEAR(scaleBarLength(result.out), 50.0 / 384.0 * 1000.0, 0.01);
}

TEST(Draw, TheScaleBarIsInRealUnitsIfTheyAreGiven) {
  const auto result = run({"draw", "samples/cell.geojson", "--scale", "0.107", "--unit", "um<"});
  EXPECT_EQ(scaleBarText(result.out), "10 um&lt;");
  EXPECT_NEAR(scaleBarLength(result.out), 10.0 / 0.107 / 660.0 * 1000.0, 0.01);
}

TEST(Draw, TheScaleBarFitsAnyView) {
  for (const double size : {1e-3, 0.5, 1.0, 7.0, 1e3, 12345.0, 1e9}) {
    const std::string picture = drawn(polygon({square(0, 0, size)}));
    EXPECT_GT(scaleBarLength(picture), 79.0) << size;
    EXPECT_LT(scaleBarLength(picture), 200.01) << size;
  }
}

TEST(Draw, AScaleMustBePositive) {
  for (const char* scale : {"0", "-1", "nan", "inf", "x"}) {
    EXPECT_EQ(run({"draw", "samples/cell.geojson", "--scale", scale}).status, 2) << scale;
  }
}

TEST(Draw, APngPictureUnderneathIsEmbeddedAndSetsTheView) {
  const Directory directory;
  const std::string png = directory.write("p.png", pngHead());
  const std::string picture = drawn(polygon({square(0, 0, 1)}), {"--under", png, "--size", "300"});
  EXPECT_THAT(picture, HasSubstr("<image x=\"0\" y=\"0\" width=\"300\" height=\"200\""));
  EXPECT_THAT(picture, HasSubstr("viewBox=\"0 0 300 200\""));
  EXPECT_THAT(picture, HasSubstr("d=\"M50,50 150,50 150,150 50,150Z\""));
  EXPECT_THAT(picture,
              HasSubstr("href=\"data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAMAAAAC\""));
}

TEST(Draw, PicturesOfAnyLengthAreEmbeddedWhole) {
  const Directory directory;
  const auto embedded = [&](const std::string& tail) {
    const std::string png = directory.write("p.png", pngHead() + tail);
    return drawn(polygon({square(0, 0, 5)}), {"--under", png});
  };
  EXPECT_THAT(embedded("x"), HasSubstr("UgAAAAMAAAACeA==\""));
  EXPECT_THAT(embedded("xy"), HasSubstr("UgAAAAMAAAACeHk=\""));
}

TEST(Draw, AJpegPictureIsMeasuredByItsFrameHeader) {
  const Directory directory;
  const std::string jpeg = directory.write("picture", jpegHead());
  const std::string picture = drawn(polygon({square(0, 0, 50)}), {"--under", jpeg});
  EXPECT_THAT(picture, HasSubstr("viewBox=\"0 0 1000 800\""));
  EXPECT_THAT(picture, HasSubstr("href=\"data:image/jpeg;base64,/9j/"));
}

TEST(Draw, APictureThatIsNeitherPngNorJpegIsRefused) {
  const Directory directory;
  const std::string png = pngHead();
  const std::string jpeg = jpegHead();
  const std::string noHeader = png.substr(0, 12) + "JUNK" + png.substr(16);
  const std::string noPixels = png.substr(0, 16) + std::string(4, '\0') + png.substr(20);
  for (const std::string& content : {std::string(), std::string("GIF89a"), png.substr(0, 23),
                                     noHeader, noPixels, jpeg.substr(0, 20), jpeg.substr(0, 4)}) {
    const std::string file = directory.write("picture", content);
    const auto result = run({"draw", "--under", file, "samples/cell.geojson"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.messages,
              "cntr: " + file + ": cannot be drawn: neither a PNG nor a JPEG picture\n");
    EXPECT_EQ(result.out, "");
  }
}

TEST(Draw, APictureUnderneathThatIsNotThereIsNamed) {
  const auto result = run({"draw", "--under", "no/such.png", "samples/cell.geojson"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: no/such.png: cannot be read: No such file or directory\n");
}

TEST(Draw, OverAPictureEveryOverlayHasAWhiteLineBehindIt) {
  const Directory directory;
  const std::string png = directory.write("p.png", pngHead());
  const std::string picture =
      drawn(polygon({square(0, 0, 5)}), {"--under", png, "--show", "hull,circle"});
  EXPECT_THAT(picture, HasSubstr("<g class=\"casing\"><use href=\"#hull\"/></g>"));
  EXPECT_THAT(picture, HasSubstr("<g class=\"casing\"><use href=\"#circle\"/></g>"));
  EXPECT_THAT(drawn(polygon({square(0, 0, 5)}), {"--show", "hull"}), Not(HasSubstr("<use")));
}

TEST(Draw, FitShowsTheOutlinesAlone) {
  const Directory directory;
  const std::string png = directory.write("p.png", pngHead());
  const std::string picture =
      drawn(polygon({square(100, 200, 50)}), {"--under", png, "--fit", "--size", "54"});
  EXPECT_THAT(picture, HasSubstr("d=\"M2,2 52,2 52,52 2,52Z\""));
  EXPECT_THAT(run({"draw", "--fit", "samples/coins.geojson"}).out,
              Not(HasSubstr("viewBox=\"0 0 1000 789.06\"")));
}

TEST(Draw, TheViewHoldsTheCirclesThatAreShown) {
  // A circle of radius 5 about (3, 4).
  const std::string picture = drawn(polygon({"[[0,0],[6,8],[1,5]]"}), {"--show", "circle"});
  EXPECT_EQ(groupOfId(picture, "circle"), "<circle cx=\"500\" cy=\"500\" r=\"462.96\"/>\n");
}

TEST(Draw, TheViewHoldsTheEllipsesThatAreShownUnlessTheyAreHuge) {
  // Points of the ellipse with the semi-axes 10 and 5.
  const std::string points = "[[8,3],[6,4],[-6,4],[-8,3],[-8,-3],[-6,-4],[6,-4],[8,-3]]";
  const std::string picture = drawn(polygon({points}), {"--show", "ellipse"});
  EXPECT_THAT(groupOfId(picture, "ellipse"), HasSubstr("rx=\"462.96\""));
  const std::string arc = polygon({"[[0,0],[10,0.05],[20,0.2],[30,0.45],[40,0.8],[50,1.25]]"});
  EXPECT_THAT(drawn(arc, {"--show", "ellipse"}), HasSubstr("d=\"M37.04,37.04 "));
}

TEST(Draw, ANarrowViewLeavesRoomForTheLegend) {
  const std::string all = "rectangle,circle,hull,ellipse,edgelets,centre,crossings,labels";
  const std::string picture = drawn(polygon({"[[0,0],[1,0],[1,1000],[0,1000]]"}), {"--show", all});
  // The longer side is 1000 pixels and the picture at least 360 wide.
  EXPECT_NEAR(numberAfter(picture, " width=\""), 1000.0, 1e-6);
  const std::string narrow =
      drawn(polygon({"[[0,0],[1,0],[1,1000],[0,1000]]"}), {"--show", "hull"});
  EXPECT_NEAR(numberAfter(narrow, " width=\""), 360.0, 1e-3);
  EXPECT_LT(numberAfter(narrow, " height=\""), 1050.0);
}

TEST(Draw, ALongLegendGoesOnInAnotherRow) {
  const auto height = [](const std::string& show) {
    const std::string picture =
        drawn(polygon({"[[0,0],[500,0],[500,1000],[0,1000]]"}), {"--show", show});
    return numberAfter(picture, " height=\"");
  };
  EXPECT_NEAR(height("hull"), height("hull,centre"), 1e-9);
  EXPECT_GT(height("rectangle,hull,edgelets,centre,crossings"), height("hull") + 25.0);
}

TEST(Draw, ShowsSeveralOverlaysWithALegend) {
  const std::string picture =
      drawn(polygon({square(0, 0, 2)}), {"--show", "hull,ellipse,circle,rectangle,centre"});
  for (const char* name : {"hull", "ellipse", "circle", "rectangle", "centre"}) {
    EXPECT_THAT(picture, HasSubstr(std::string(">") + name + "</text>"));
  }
  EXPECT_EQ(drawn(polygon({square(0, 0, 2)})).find("legend"), std::string::npos);
}

TEST(Draw, OutlinesWithoutAnExtentAreDots) {
  const std::string points = "[[5,5],[5,5],[5,5],[5,5]]";
  const std::string picture =
      drawn(polygon({points}, "\"label\":1"), {"--show", "hull,ellipse,circle,rectangle,centre"});
  EXPECT_THAT(groupOf(picture, "outlines"), HasSubstr("cx=\"500\" cy=\"500\" r=\"2\">"));
  EXPECT_THAT(picture, Not(HasSubstr("nan")));
}

TEST(Draw, TinyOutlinesAreDotsInThePictureOfLargeOnes) {
  const std::string picture =
      drawn(collection({polygon({square(0, 0, 1000)}), polygon({square(500, 500, 1)}),
                        feature("LineString", "[[100,100],[101,101]]")}));
  EXPECT_EQ(count(picture, "<path "), 1);
  EXPECT_EQ(count(groupOf(picture, "outlines"), "<circle "), 2);
}

TEST(Draw, OutlinesOfAnySizeAnywhereLookTheSame) {
  const auto look = [](double x, double y, double size) {
    std::ostringstream file;
    file.precision(17);
    file << R"({"type":"Polygon","coordinates":[[)";
    const char* separator = "";
    for (const auto& [u, v] : std::vector<std::pair<double, double>>{
             {0, 0}, {1, 0.25}, {0.75, 1}, {0.5, 0.125}, {0.25, 0.75}, {0, 0}}) {
      file << separator << "[" << x + size * u << "," << y + size * v << "]";
      separator = ",";
    }
    file << "]]}";
    const std::string all = "rectangle,circle,hull,ellipse,centre,crossings";
    const std::string picture = drawn(file.str(), {"--show", all});
    const std::size_t begin = picture.find("<g class=\"outlines\"");
    return picture.substr(begin, picture.find("<g class=\"frame\"") - begin);
  };
  const std::string picture = look(0, 0, 64);
  EXPECT_EQ(look(0, 0, std::ldexp(1.0, -60)), picture);
  EXPECT_EQ(look(0, 0, std::ldexp(1.0, 100)), picture);
  EXPECT_EQ(look(1 << 30, -(1 << 28), 64), picture);
}

TEST(Draw, AnOutlineMuchLargerThanTheViewIsCutOffOutsideIt) {
  const std::string picture =
      drawnInImage({polygon({"[[-1e9,-1e9],[1e9,-1e9],[50,50]]"}), polygon({square(1e6, 1e6, 5)})});
  EXPECT_THAT(groupOf(picture, "outlines"), HasSubstr("d=\"M-20,-20 120,-20 120,-19 50.5,50.5Z\""));
  EXPECT_EQ(count(picture, "<path "), 1);
}

TEST(Draw, CoordinatesWithoutBoundsAreRefused) {
  const auto result =
      run({"draw"},
          collection({polygon({"[[-1e308,0],[1e308,0],[0,1]]"}), polygon({square(0, 0, 2)})}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            "cntr: standard input: feature 1: cannot be drawn: the coordinates are too large\n");
  EXPECT_EQ(count(result.out, "<path "), 1);
}

TEST(Draw, LinesAndRingsAreThinnedBelowATenthOfAPixel) {
  std::vector<std::vector<double>> points;
  for (int i = 0; i < 100000; ++i) {
    const double angle = 2.0 * 3.141592653589793 * i / 100000;
    points.push_back({500.0 * std::cos(angle), 500.0 * std::sin(angle)});
  }
  const std::string picture = drawn(polygon({program::ring(points)}));
  const std::string outlines = groupOf(picture, "outlines");
  EXPECT_LT(count(outlines, ","), 400);
  std::size_t at = outlines.find("d=\"M") + 4;
  qcVector<2> last(1e3, 1e3);
  while (outlines[at] != 'Z') {
    char* end = nullptr;
    const double x = std::strtod(outlines.c_str() + at, &end);
    const double y = std::strtod(end + 1, &end);
    at = static_cast<std::size_t>(end - outlines.c_str());
    const qcVector<2> vertex = qcVector<2>(x, y) - qcVector<2>(500.0, 500.0);
    // The radius is 462.96 pixels; edges lie inside the circle by at most a tenth.
    EXPECT_NEAR(vertex.len(), 462.963, 0.1);
    if (last.x() < 1e3) {
      EXPECT_NEAR((0.5 * (vertex + last)).len(), 462.963, 0.1);
    }
    last = vertex;
  }
}

TEST(Draw, TheYAxisPointsUpwardsIfAskedFor) {
  const std::string file = polygon({square(0, 0, 10)});
  EXPECT_THAT(drawnInImage({file}, {"--y-up"}),
              HasSubstr("d=\"M0.5,99.5 10.5,99.5 10.5,89.5 0.5,89.5Z\""));
  const Directory directory;
  const std::string png = directory.write("p.png", pngHead());
  EXPECT_THAT(drawn(polygon({square(0, 0, 1)}), {"--under", png, "--size", "300", "--y-up"}),
              HasSubstr("<image x=\"0\" y=\"0\" width=\"300\" height=\"200\""));
}

TEST(Draw, TheSizeIsThatOfTheLongerSideInPixels) {
  const auto size = [](const std::string& option) {
    return numberAfter(drawn(polygon({square(0, 0, 10)}), {"--size", option}), " width=\"");
  };
  EXPECT_EQ(size("2000"), 2000.0);
  EXPECT_EQ(size("361"), 361.0);
  // The legend needs some room.
  EXPECT_EQ(size("16"), 360.0);
  EXPECT_EQ(numberAfter(drawn(polygon({square(0, 0, 10)})), " width=\""), 1000.0);
}

TEST(Draw, ASizeOutOfRangeIsWrongUsage) {
  for (const char* size : {"15", "10001", "-1", "x", "nan"}) {
    const auto result = run({"draw", "samples/cell.geojson", "--size", size});
    EXPECT_EQ(result.status, 2) << size;
    EXPECT_THAT(result.messages, StartsWith("cntr: --size: Value ")) << size;
  }
}

TEST(Draw, ShowNoneDrawsTheOutlinesAlone) {
  const std::string picture = drawn(polygon({square(0, 0, 2)}, R"("label":7)"), {"--show", "none"});
  EXPECT_EQ(count(picture, "<path "), 1);
  EXPECT_EQ(groupOf(picture, "labels"), "");
  EXPECT_THAT(picture, Not(HasSubstr("legend")));
  const auto both = run({"draw", "--show", "none,hull", "samples/cell.geojson"});
  EXPECT_EQ(both.status, 2);
  EXPECT_EQ(both.messages, "cntr: --show: none goes with no other name\nTry 'cntr --help'.\n");
}

TEST(Draw, LabelsThinOutWhereTheyWouldCoverThePicture) {
  std::vector<std::string> features{polygon({square(0, 0, 400)}, R"("label":9999)")};
  for (int i = 0; i < 900; ++i) {
    features.push_back(polygon({square(430 + 19 * (i % 30), 19 * (i / 30), 8)},
                               R"("label":)" + std::to_string(1000 + i)));
  }
  const std::string picture = drawn(collection(features));
  const std::size_t labels = count(groupOf(picture, "labels"), "</text>");
  EXPECT_THAT(groupOf(picture, "labels"), HasSubstr(">9999</text>"));
  EXPECT_GT(labels, 40);
  EXPECT_LT(labels, 300);
  EXPECT_THAT(picture, HasSubstr(">" + std::to_string(labels) + " of 901 labels</text>"));
  const std::string few = drawn(polygon({square(0, 0, 400)}, R"("label":9999)"));
  EXPECT_THAT(few, Not(HasSubstr(" labels<")));
}

TEST(Draw, ALabelThatIsTextIsShownAndGivesTheColour) {
  const auto picture = [](const std::string& label) {
    return drawn(polygon({square(0, 0, 2)}, R"("label":")" + label + "\""));
  };
  EXPECT_THAT(groupOf(picture("bolt <M3>"), "labels"), HasSubstr(">bolt &lt;M3&gt;</text>"));
  EXPECT_THAT(picture("bolt"), HasSubstr("<path fill=\"#91caff\" stroke=\"#1c6cb0\""));
  EXPECT_THAT(picture("nut"), Not(HasSubstr("<path fill=\"#91caff\"")));
}

TEST(Draw, APhotographOfAnotherSizeGetsAWarning) {
  const Directory directory;
  const std::string png = directory.write("p.png", pngHead());
  const auto result = run({"draw", "--under", png, "samples/coins.geojson"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages,
            "cntr: " + png +
                ": has 3 x 2 pixels, but the outlines of samples/coins.geojson are "
                "of an image of 384 x 303\n");
  EXPECT_THAT(result.out, HasSubstr("<image "));
}

TEST(Draw, OutlinesBeyondThePhotographGetAWarning) {
  const Directory directory;
  const std::string png = directory.write("p.png", pngHead());
  const auto result = run({"draw", "--under", png}, polygon({square(-1, 0, 50)}));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages,
            "cntr: " + png + ": has 3 x 2 pixels, but outlines reach from -1,0 to 49,50\n");
}

TEST(Draw, AFileThatEndsInPngIsAPngPictureWhereThatIsBuiltIn) {
  const Directory directory;
  for (const char* name : {"coins.png", "coins.PNG"}) {
    const std::string file = directory.path(name);
    const auto result = run({"draw", "samples/coins.geojson", "-o", file, "--size", "600"});
    if (hasPng) {
      EXPECT_EQ(result.status, 0) << result.messages;
      EXPECT_EQ(sizeOfPng(directory.read(name)), std::pair(600, 511));
    } else {
      EXPECT_EQ(result.status, 2);
      EXPECT_EQ(result.messages, "cntr: " + file +
                                     ": cannot be written: this program was built without PNG "
                                     "pictures; SVG needs nothing\n");
      EXPECT_THAT(directory.names(), ElementsAre());
    }
  }
}

TEST(Draw, AFullDiskTakesNoPngPictureEither) {
  if (!hasPng) return;
  const Directory directory;
  const std::string file = directory.path("out.png");
  const auto result = runOnFullDisk({"draw", "samples/cell.geojson", "-o", file});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: " + file + ": cannot be written: File too large\n");
  EXPECT_THAT(directory.names(), ElementsAre());
}

TEST(Draw, MemoryFollowsThePictureRatherThanTheFile) {
  const Directory directory;
  std::string file = "{\"type\":\"FeatureCollection\",\"features\":[";
  for (int i = 0; i < 40; ++i) {
    std::vector<std::vector<double>> points;
    for (int k = 0; k < 10000; ++k) {
      const double angle = 2.0 * 3.141592653589793 * k / 10000;
      points.push_back({1e3 * i + 500.0 * std::cos(angle), 500.0 * std::sin(angle)});
    }
    file += (i > 0 ? "," : "") + polygon({program::ring(points)});
  }
  const std::string input = directory.write("in.geojson", file + "]}");
  // 400,000 vertices take 6.4 MB, a file of 13 MB.
  const auto peak = [](const std::vector<std::string>& arguments) {
    Running draw(arguments);
    draw.close();
    EXPECT_EQ(draw.wait(), 0);
    return draw.peakMemory();
  };
  const long alone = peak({"draw", "samples/cell.geojson", "-o", "/dev/null"});
  const long many = peak({"draw", input, "-o", "/dev/null"});
  EXPECT_LT(many - alone, 6000);
}

TEST(Draw, NamesAreEscaped) {
  const Directory directory;
  const std::string file = directory.write("a<&\">.json", polygon({square(0, 0, 2)}));
  const std::string picture = run({"draw", file}).out;
  EXPECT_THAT(picture, HasSubstr("a&lt;&amp;&quot;&gt;.json, feature 1</title>"));
}

TEST(Draw, AnUnknownOverlayIsWrongUsage) {
  const auto result = run({"draw", "--show", "hull,foo", "samples/cell.geojson"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.messages, HasSubstr("foo"));
  EXPECT_EQ(result.out, "");
}

TEST(Draw, BadFeaturesAreLeftOut) {
  const auto result = run({"draw"}, collection({polygon({"[[1,1]]"}), polygon({square(0, 0, 2)})}));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, "cntr: standard input: feature 1: outline has 1 point, but needs 3\n");
  EXPECT_EQ(count(result.out, "<path "), 1);
}

TEST(Draw, ACollectionWithoutFeaturesIsAnEmptyPicture) {
  const auto result = run({"draw"}, collection({}));
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages, "");
  EXPECT_THAT(result.out, AllOf(StartsWith("<?xml"), EndsWith("</svg>\n")));
  EXPECT_EQ(count(result.out, "<path "), 0);
}

TEST(Draw, WithoutAnythingToDrawNoPictureIsWritten) {
  const Directory directory;
  const auto result = run({"draw", "no/such/file", "-o", directory.path("out.svg")});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(directory.names(), ElementsAre());
}

TEST(Draw, ReplacesAnOlderPictureAndLeavesNothingElse) {
  const Directory directory;
  const std::string file = directory.write("out.svg", "old");
  EXPECT_EQ(run({"draw", "samples/cell.geojson", "-o", file}).status, 0);
  EXPECT_THAT(directory.read("out.svg"), StartsWith("<?xml"));
  EXPECT_THAT(directory.names(), ElementsAre("out.svg"));
}

TEST(Draw, ALinkStaysALink) {
  const Directory directory;
  directory.write("target.svg", "old");
  std::filesystem::create_symlink("target.svg", directory.path("link.svg"));
  EXPECT_EQ(run({"draw", "samples/cell.geojson", "-o", directory.path("link.svg")}).status, 0);
  EXPECT_TRUE(std::filesystem::is_symlink(directory.path("link.svg")));
  EXPECT_THAT(directory.read("target.svg"), StartsWith("<?xml"));
}

TEST(Draw, APictureThatCannotBeWrittenEndsWithStatusTwo) {
  const auto result = run({"draw", "samples/cell.geojson", "-o", "no/such/directory/out.svg"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages,
            "cntr: no/such/directory/out.svg: cannot be written: No such file or directory\n");
}

TEST(Draw, AFullDiskEndsWithStatusTwo) {
  const Directory directory;
  const std::string file = directory.path("out.svg");
  const auto result = runOnFullDisk({"draw", "samples/cell.geojson", "-o", file});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: " + file + ": cannot be written: File too large\n");
  EXPECT_THAT(directory.names(), ElementsAre());
}
