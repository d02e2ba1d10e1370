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

/// The elements of the overlay groups.
std::string overlaid(const std::string& file, const std::string& overlay) {
  const std::string picture = drawn(file, {"--show", overlay});
  const std::size_t begin = picture.find("<g class=\"overlay\"");
  const std::size_t end = picture.find("<g class=\"labels\"");
  return begin < end ? picture.substr(begin, end - begin) : "";
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
  EXPECT_EQ(count(picture, "</text>"), 24);
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
  EXPECT_EQ(count(drawn(polygon({square(0, 0, 2)})), "</text>"), 0);
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
  const std::size_t overlay = result.out.find("<g class=\"overlay\"");
  const std::size_t labels = result.out.find("<g class=\"labels\"");
  EXPECT_EQ(count(result.out.substr(overlay, labels - overlay), "M"), 490);
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
  const auto result = run({"draw", "samples/cell.geojson", "-o", "/dev/full"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.messages, "cntr: /dev/full: cannot be written: No space left on device\n");
}
