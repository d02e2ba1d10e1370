// SPDX-License-Identifier: MIT
//
// cntr draw: the elements of the picture, and where it is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "program.h"

using program::collection;
using program::Directory;
using program::feature;
using program::polygon;
using program::run;
using program::runOnFullDisk;
using program::square;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

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

/// The picture of a file, as it comes on standard output.
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

/// The elements of the overlay.
std::string overlaid(const std::string& file, const std::string& overlay) {
  const std::string picture = drawn(file, {"--show", overlay});
  const std::size_t begin = picture.find("<g id=\"" + overlay + "\"");
  if (begin == std::string::npos) return "";
  return picture.substr(begin, picture.find("</g>", begin) - begin);
}

std::string scaleBarText(const std::string& picture) {
  const std::string group = groupOf(picture, "scale");
  const std::size_t begin = group.find('>', group.find("<text")) + 1;
  return group.substr(begin, group.find("</text>") - begin);
}

/// The horizontal extent of the scale bar, in the coordinates of the drawing.
double scaleBarLength(const std::string& picture) {
  const std::string group = groupOf(picture, "scale");
  return numberAfter(group, "x2=\"") - numberAfter(group, "x1=\"");
}

/// The head of a PNG file of 3 x 2 pixels.
std::string pngHead() { return {"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\3\0\0\0\2", 24}; }

/// A JPEG file of 5 x 4 pixels as far as its frame header, after a segment of another kind, one
/// that looks like a frame header, and filling.
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
  EXPECT_THAT(picture, HasSubstr("viewBox=\"-0.5 -0.5 384 303\""));
  EXPECT_EQ(count(picture, "<path "), 24);
  EXPECT_EQ(count(groupOf(picture, "labels"), "</text>"), 24);
  EXPECT_THAT(picture, HasSubstr(">24</text>"));
  EXPECT_THAT(picture, HasSubstr("<title>samples/coins.geojson, feature 24</title>"));
}

TEST(Draw, WithoutAPicturesSizeTheViewIsThatOfTheOutlines) {
  const std::string picture = drawn(polygon({square(100, 200, 50)}));
  EXPECT_THAT(picture, HasSubstr("viewBox=\"98 198 54 54\""));
  EXPECT_THAT(picture, HasSubstr("d=\"M100,200 150,200 150,250 100,250Z\""));
}

TEST(Draw, SeveralFilesShareOnePicture) {
  const auto result = run({"draw", "samples/coins.geojson", "samples/cell.geojson"});
  EXPECT_EQ(count(result.out, "<path "), 25);
  EXPECT_THAT(result.out, HasSubstr("viewBox=\"-0.5 -0.5 550 660\""));
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
  const std::string picture = drawn(polygon({square(0, 0, 10), square(2, 2, 3)}));
  EXPECT_EQ(count(picture, "<path "), 1);
  EXPECT_THAT(picture, HasSubstr("d=\"M0,0 10,0 10,10 0,10ZM2,2 5,2 5,5 2,5Z\""));
  EXPECT_THAT(picture, HasSubstr("fill-rule:evenodd"));
}

TEST(Draw, OpenLinesAreNotFilled) {
  const std::string picture = drawn(feature("LineString", "[[0,0],[4,0],[4,3]]"));
  EXPECT_THAT(picture, HasSubstr("<path fill=\"none\""));
  EXPECT_THAT(picture, HasSubstr("d=\"M0,0 4,0 4,3\""));
}

TEST(Draw, FeaturesWithoutALabelHaveNoText) {
  EXPECT_EQ(count(groupOf(drawn(polygon({square(0, 0, 2)})), "labels"), "</text>"), 0);
}

TEST(Draw, ShowsTheRectangle) {
  EXPECT_THAT(overlaid(polygon({"[[1,2],[7,3],[4,9]]"}), "rectangle"),
              HasSubstr("<rect x=\"1\" y=\"2\" width=\"6\" height=\"7\"/>"));
}

TEST(Draw, ShowsTheCircleOfTheFarthestVertices) {
  EXPECT_THAT(overlaid(polygon({"[[0,0],[6,8],[1,5]]"}), "circle"),
              HasSubstr("<circle cx=\"3\" cy=\"4\" r=\"5\"/>"));
}

TEST(Draw, ShowsTheHull) {
  EXPECT_THAT(overlaid(polygon({"[[0,0],[4,0],[1,1],[0,4]]"}), "hull"),
              HasSubstr("d=\"M0,0 4,0 0,4Z\""));
}

TEST(Draw, ShowsTheFittedEllipse) {
  // Points of the circle of radius 5 about (10, 20).
  const std::string points = "[[15,20],[13,24],[10,25],[7,24],[5,20],[7,16],[10,15],[13,16]]";
  const std::string overlay = overlaid(polygon({points}), "ellipse");
  EXPECT_NEAR(numberAfter(overlay, "rx=\""), 5.0, 1e-9);
  EXPECT_NEAR(numberAfter(overlay, "translate("), 10.0, 1e-9);
}

TEST(Draw, ShowsTheCentreLessTheHoles) {
  const auto height = [](const std::string& file) {
    return numberAfter(overlaid(file, "centre"), "y1=\"");
  };
  EXPECT_NEAR(height(polygon({square(0, 0, 10)})), 5.0, 1e-9);
  const double centre = (100.0 * 5.0 - 9.0 * 2.5) / 91.0;
  EXPECT_NEAR(height(polygon({square(0, 0, 10), square(1, 1, 3)})), centre, 1e-9);
}

TEST(Draw, ShowsEdgeletsAlongTheEdge) {
  // A gradient along +y has its edge along x, and the other way round.
  const std::string line =
      feature("LineString", "[[10,20],[30,20]]", R"("edgelets":[[500,64],[500,0]])");
  const std::string path = overlaid(line, "edgelets");
  EXPECT_THAT(path, HasSubstr("d=\"M10.5,20 9.5,20M30,19.5 30,20.5\""));
  EXPECT_EQ(count(overlaid(polygon({square(0, 0, 2)}), "edgelets"), "<path"), 0);
}

TEST(Draw, ShowsAllEdgeletsOfTheCell) {
  const auto result = run({"draw", "--show", "edgelets", "samples/cell-edgelets.geojson"});
  const std::size_t begin = result.out.find("<g id=\"edgelets\"");
  EXPECT_EQ(count(result.out.substr(begin, result.out.find("</g>", begin) - begin), "M"), 490);
}

TEST(Draw, RingsWhereAnOutlineCrossesItself) {
  const std::string overlay = overlaid(polygon({"[[0,0],[4,3],[4,0],[0,3]]"}), "crossings");
  EXPECT_EQ(count(overlay, "<circle"), 1);
  EXPECT_THAT(overlay, HasSubstr("cx=\"2\" cy=\"1.5\""));
}

TEST(Draw, RingsWhereAHoleOrAnotherPartCrossesTheOutline) {
  const std::string holed = polygon({square(0, 0, 10), square(5, 4, 10)});
  EXPECT_EQ(count(overlaid(holed, "crossings"), "<circle"), 2);
  const std::string parts =
      program::multiPolygon({{square(0, 0, 10)}, {square(5, 5, 10)}, {square(50, 5, 10)}});
  EXPECT_EQ(count(overlaid(parts, "crossings"), "<circle"), 2);
}

TEST(Draw, RingsWhereALineCrossesItself) {
  const std::string line = feature("LineString", "[[0,0],[4,0],[4,4],[2,4],[2,-2]]");
  EXPECT_THAT(overlaid(line, "crossings"), HasSubstr("cx=\"2\" cy=\"0\""));
  const std::string open = feature("LineString", "[[0,0],[4,4],[4,0],[1,2]]");
  EXPECT_EQ(count(overlaid(open, "crossings"), "<circle"), 1);
}

TEST(Draw, RingsNothingOnOutlinesThatDoNotCross) {
  EXPECT_EQ(count(overlaid(polygon({square(0, 0, 10), square(2, 2, 3)}), "crossings"), "<circle"),
            0);
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
  EXPECT_NEAR(scaleBarLength(result.out), 50.0, 1e-9);
}

TEST(Draw, TheScaleBarIsInRealUnitsIfTheyAreGiven) {
  const auto result = run({"draw", "samples/cell.geojson", "--scale", "0.107", "--unit", "um<"});
  EXPECT_EQ(scaleBarText(result.out), "10 um&lt;");
  EXPECT_NEAR(scaleBarLength(result.out), 10.0 / 0.107, 1e-9);
}

TEST(Draw, TheScaleBarFitsAnyView) {
  for (const double size : {1e-3, 0.5, 1.0, 7.0, 1e3, 12345.0, 1e9}) {
    const std::string picture = drawn(polygon({square(0, 0, size)}));
    const double share = scaleBarLength(picture) / size;
    EXPECT_GT(share, 0.08) << size;
    EXPECT_LT(share, 0.25) << size;
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
  const std::string picture = drawn(polygon({square(0, 0, 50)}), {"--under", png});
  EXPECT_THAT(picture, HasSubstr("<image x=\"-0.5\" y=\"-0.5\" width=\"3\" height=\"2\""));
  EXPECT_THAT(picture, HasSubstr("viewBox=\"-0.5 -0.5 3 2\""));
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
  EXPECT_THAT(picture, HasSubstr("viewBox=\"-0.5 -0.5 5 4\""));
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
  const std::string picture = drawn(polygon({square(100, 200, 50)}), {"--under", png, "--fit"});
  EXPECT_THAT(picture, HasSubstr("viewBox=\"98 198 54 54\""));
  EXPECT_THAT(run({"draw", "--fit", "samples/coins.geojson"}).out,
              Not(HasSubstr("viewBox=\"-0.5 -0.5 384 303\"")));
}

TEST(Draw, TheViewHoldsTheCirclesThatAreShown) {
  // A circle of radius 5 about (3, 4).
  const std::string picture = drawn(polygon({"[[0,0],[6,8],[1,5]]"}), {"--show", "circle"});
  EXPECT_THAT(picture, HasSubstr("viewBox=\"-2.4 -1.4 10.8 10.8\""));
}

TEST(Draw, TheViewHoldsTheEllipsesThatAreShownUnlessTheyAreHuge) {
  // Points of the ellipse with the semi-axes 10 and 5.
  const std::string points = "[[8,3],[6,4],[-6,4],[-8,3],[-8,-3],[-6,-4],[6,-4],[8,-3]]";
  const std::string picture = drawn(polygon({points}), {"--show", "ellipse"});
  EXPECT_NEAR(numberAfter(picture, "viewBox=\""), -10.8, 1e-9);
  EXPECT_NEAR(numberAfter(picture, " y=\""), -5.8, 1e-9);
  const std::string arc = polygon({"[[0,0],[10,0.05],[20,0.2],[30,0.45],[40,0.8],[50,1.25]]"});
  EXPECT_THAT(drawn(arc, {"--show", "ellipse"}), HasSubstr("viewBox=\"-2 -2 54 "));
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

TEST(Draw, DegenerateOutlinesGiveAPictureToo) {
  const std::string points = "[[5,5],[5,5],[5,5],[5,5]]";
  const std::string picture =
      drawn(polygon({points}, "\"label\":1"), {"--show", "hull,ellipse,circle,rectangle,centre"});
  EXPECT_THAT(picture, HasSubstr("viewBox=\"4.5 4.5 1 "));
  EXPECT_THAT(picture, Not(HasSubstr("nan")));
}

TEST(Draw, CoordinatesWithoutBoundsAreRefused) {
  const Directory directory;
  const auto result =
      run({"draw", "-o", directory.path("out.svg")}, polygon({"[[-1e308,0],[1e308,0],[0,1]]"}));
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: " + directory.path("out.svg") +
                                 ": cannot be drawn: the coordinates are too large\n");
  EXPECT_THAT(directory.names(), ElementsAre());
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
