// SPDX-License-Identifier: MIT
//
// The exact warnings about images of several sizes.

#include <tools/draw/imagesizes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;
using tool::Box;
using tool::ImageSize;

namespace {

std::vector<std::string> warnings(const std::vector<ImageSize>& images,
                                  const std::optional<ImageSize>& photograph, const Box& outlines) {
  std::vector<std::string> found;
  tool::checkImageSizes(images, photograph, outlines,
                        [&](const std::string& file, const std::string& what) {
                          found.push_back(file + ": " + what);
                        });
  return found;
}

const Box outlinesInside{{0, 0}, {20, 10}};

}  // namespace

TEST(ImageSizes, ThatFitTogetherGetNoWarning) {
  EXPECT_THAT(warnings({}, {}, outlinesInside), IsEmpty());
  EXPECT_THAT(warnings({{"a", 30, 20}}, {}, outlinesInside), IsEmpty());
  EXPECT_THAT(warnings({{"a", 30, 20}, {"b", 30, 20}}, ImageSize{"p", 30, 20}, outlinesInside),
              IsEmpty());
  EXPECT_THAT(warnings({}, ImageSize{"p", 30, 20}, Box()), IsEmpty());
}

TEST(ImageSizes, OfSeveralImagesOnOneCanvasGetAWarning) {
  EXPECT_THAT(
      warnings({{"a", 30, 20}, {"b", 30, 20}, {"c", 30, 40}}, {}, outlinesInside),
      ElementsAre("c: its outlines are of an image of 30 x 40 pixels, but share the picture "
                  "with a, whose image has 30 x 20"));
  EXPECT_THAT(
      warnings({{"a", 30, 20}, {"c", 31, 20}}, {}, outlinesInside),
      ElementsAre("c: its outlines are of an image of 31 x 20 pixels, but share the picture "
                  "with a, whose image has 30 x 20"));
}

TEST(ImageSizes, APhotographOfAnotherSizeGetsAWarning) {
  EXPECT_THAT(
      warnings({{"a", 30, 20}}, ImageSize{"p.png", 60, 40}, outlinesInside),
      ElementsAre("p.png: has 60 x 40 pixels, but the outlines of a are of an image of 30 x "
                  "20"));
}

TEST(ImageSizes, OutlinesBeyondThePhotographGetAWarning) {
  EXPECT_THAT(warnings({}, ImageSize{"p.png", 20, 10}, {{-1.5, -1.5}, {20.5, 10.5}}), IsEmpty());
  EXPECT_THAT(warnings({}, ImageSize{"p.png", 20, 10}, {{0, 0}, {20.6, 10.5}}),
              ElementsAre("p.png: has 20 x 10 pixels, but outlines reach from 0,0 to 20.6,10.5"));
  EXPECT_THAT(warnings({{"a", 20, 10}}, ImageSize{"p.png", 20, 10}, {{0, -9.25}, {5, 5}}),
              ElementsAre("p.png: has 20 x 10 pixels, but outlines reach from 0,-9.25 to 5,5"));
}

TEST(ImageSizes, OutlinesBeyondTheirImagesGetAWarning) {
  EXPECT_THAT(
      warnings({{"a", 20, 10}}, {}, {{0, 0}, {50, 5}}),
      ElementsAre("a: says that its image has 20 x 10 pixels, but outlines reach from 0,0 to "
                  "50,5"));
  EXPECT_EQ(warnings({{"a", 20, 10}, {"b", 60, 10}}, {}, {{0, 0}, {50, 5}}).size(), 1);
}
