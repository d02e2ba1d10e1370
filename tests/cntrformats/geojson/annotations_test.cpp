// SPDX-License-Identifier: MIT
//
// Files of annotation tools.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string coco(const std::string& annotations) {
  return R"({"info":{},"images":[{"id":1,"width":10,"height":8}],"annotations":[)" + annotations +
         R"(],"categories":[{"id":3,"name":"nut"}]})";
}

std::string labelMe(const std::string& shapes) {
  return R"({"version":"5.0.1","flags":{},"shapes":[)" + shapes +
         R"(],"imagePath":"a.png","imageData":null,"imageHeight":8,"imageWidth":10})";
}

}  // namespace

TEST(Coco, PolygonsAreTheParts) {
  const auto found = texts::read(
      "geojson",
      coco(
          R"({"id":17,"image_id":1,"category_id":3,"segmentation":[[0,0,4,0,4,4],[6,6,7,6,7,7.5]],)"
          R"("area":8,"bbox":[0,0,7,7],"iscrowd":0})"));
  ASSERT_EQ(found.features.size(), 1);
  const Feature& feature = found.features[0];
  EXPECT_EQ(feature.label, Label(3UL));
  EXPECT_EQ(feature.id, "17");
  ASSERT_EQ(feature.geometry.parts.size(), 2);
  EXPECT_TRUE(feature.geometry.closed);
  EXPECT_TRUE(feature.geometry.multiple);
  EXPECT_EQ(feature.geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
  EXPECT_EQ(feature.geometry.parts[1].outline, (Points{{6, 6}, {7, 6}, {7, 7.5}}));
  EXPECT_TRUE(feature.hasFurtherMembers);
}

TEST(Coco, MasksAndOtherAnnotationsAreNamed) {
  const auto found = texts::read(
      "geojson",
      coco(R"({"id":1,"category_id":2,"segmentation":{"counts":"abc","size":[8,10]}},)"
           R"({"id":2,"segmentation":{"size":[8,10],"counts":[1,79]}},{"id":3,"bbox":[0,0,1,1]},)"
           R"({"id":4,"segmentation":[]},{"id":5,"segmentation":[[0,0,1,1]]},)"
           R"({"id":6,"segmentation":[[0,0,1,0,1]]},{"id":7,"segmentation":[["a"]]},5)"));
  EXPECT_THAT(found.features, IsEmpty());
  EXPECT_THAT(
      found.complaints,
      ElementsAre("1: a compressed RLE mask, which has no outline",
                  "2: an RLE mask, which has no outline", "3: no segmentation",
                  "4: an empty segmentation", "5: part 1, outline has 2 points, but needs 3",
                  "6: part 1, outline: 5 numbers are not pairs of x and y",
                  "7: part 1, outline: \"a\" is not a number", "8: 5 is not an annotation"));
  EXPECT_EQ(found.unreadable[0].label, Label(2UL));
  EXPECT_EQ(found.unreadable[0].id, "1");
}

TEST(Coco, AMaskIsCompressedIfItsCountsAreAText) {
  EXPECT_THAT(
      texts::read("geojson",
                  coco(R"({"segmentation":{"counts":[1,79],"order":"F","size":[8,10]}},)"
                       R"({"segmentation":{"order":["F"],"counts":"abc"}},{"segmentation":{}})"))
          .complaints,
      ElementsAre("1: an RLE mask, which has no outline",
                  "2: a compressed RLE mask, which has no outline",
                  "3: an RLE mask, which has no outline"));
}

TEST(Coco, OfWhatIsNoListTheKindIsNamed) {
  EXPECT_THAT(texts::read("geojson", coco(R"({"segmentation":null},{"segmentation":5},)"
                                          R"({"segmentation":[[0,0,4,0,4,4],5]},)"
                                          R"({"segmentation":[[0,0,4,0,4,4],[0,0,null,0]]})"))
                  .complaints,
              ElementsAre("1: segmentation: null is not a list", "2: segmentation: 5 is not a list",
                          "3: part 2, outline: 5 is not a list",
                          "4: part 2, outline: null is not a number"));
}

TEST(Coco, MembersAfterAProblemAreRead) {
  const auto found = texts::read(
      "geojson", coco(R"({"segmentation":[["a"]],"category_id":2,"id":"b"},{"category_id":4})"));
  ASSERT_EQ(found.unreadable.size(), 2);
  EXPECT_EQ(found.unreadable[0].label, Label(2UL));
  EXPECT_EQ(found.unreadable[0].id, "b");
  EXPECT_EQ(found.unreadable[1].label, Label(4UL));
}

TEST(Coco, OnePolygonIsASingleOutline) {
  const auto found = texts::read("geojson", coco(R"({"segmentation":[[0,0,4,0,4,4]],"id":null})"));
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_FALSE(found.features[0].geometry.multiple);
  EXPECT_TRUE(found.features[0].geometry.closed);
  EXPECT_FALSE(found.features[0].id);
  EXPECT_FALSE(found.features[0].hasFurtherMembers);
}

TEST(Coco, ATypeThatIsNotOfGeoJsonDoesNotHideThem) {
  const std::string annotations =
      R"("annotations":[{"id":7,"segmentation":[[0,0,4,0,4,4]]}],"categories":[]})";
  EXPECT_EQ(texts::read("geojson", R"({"type":"instances",)" + annotations).features.size(), 1);
  EXPECT_EQ(texts::read("geojson", R"({"type":null,)" + annotations).features.size(), 1);
}

TEST(GeoJsonMembers, OfTheNamesThatAnnotationToolsUseAreNoFeatures) {
  const auto collection =
      texts::read("geojson", R"({"type":"FeatureCollection","shapes":[{}],"features":[]})");
  EXPECT_THAT(collection.features, IsEmpty());
  EXPECT_THAT(collection.complaints, IsEmpty());
  const auto feature = texts::read(
      "geojson",
      R"({"type":"Feature","annotations":[1],"properties":null,"geometry":{"type":"Polygon",)"
      R"("coordinates":[[[0,0],[4,0],[4,4],[0,0]]]}})");
  EXPECT_EQ(feature.features.size(), 1);
}

TEST(Coco, NoAnnotationsAreNoFlaw) {
  EXPECT_EQ(texts::flawOf("geojson", coco("")), "");
  EXPECT_THAT(texts::read("geojson", coco("")).features, IsEmpty());
}

TEST(LabelMe, PolygonsRectanglesAndLinesAreRead) {
  const auto found = texts::read(
      "geojson",
      labelMe(
          R"({"label":"nut","points":[[0,0],[4,0],[4,4]],"group_id":null,"shape_type":"polygon"},)"
          R"({"label":"bolt","shape_type":"rectangle","points":[[1,2],[3,5]]},)"
          R"({"label":"edge","shape_type":"linestrip","points":[[1,2],[3,5],[4,4]]})"));
  ASSERT_EQ(found.features.size(), 3);
  EXPECT_EQ(found.features[0].label, Label("nut"));
  EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
  EXPECT_EQ(found.features[1].geometry.parts[0].outline, (Points{{1, 2}, {3, 2}, {3, 5}, {1, 5}}));
  EXPECT_FALSE(found.features[2].geometry.closed);
  EXPECT_EQ(found.features[2].geometry.parts[0].outline.size(), 3);
}

TEST(LabelMe, ALineIsALineStrip) {
  const auto found =
      texts::read("geojson", labelMe(R"({"shape_type":"line","points":[[1,2],[3,5]]})"));
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_FALSE(found.features[0].geometry.closed);
  EXPECT_FALSE(found.features[0].geometry.multiple);
  EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{1, 2}, {3, 5}}));
}

TEST(LabelMe, ARectangleMayHaveFourCorners) {
  const std::string corners = "[[1,2],[3,2],[3,5],[1,5]]";
  const auto found =
      texts::read("geojson", labelMe(R"({"shape_type":"rectangle","points":)" + corners + "}"));
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{1, 2}, {3, 2}, {3, 5}, {1, 5}}));
}

TEST(LabelMe, AShapeWithoutATypeIsAPolygon) {
  const auto found =
      texts::read("geojson", labelMe(R"({"points":[[0,0],[4,0],[4,4]]},)"
                                     R"({"shape_type":null,"points":[[0,0],[4,0],[4,4]]},)"
                                     R"({"shape_type":1,"points":[[0,0],[4,0],[4,4]]})"));
  ASSERT_EQ(found.features.size(), 3);
  for (const Feature& feature : found.features) {
    EXPECT_TRUE(feature.geometry.closed);
    EXPECT_FALSE(feature.geometry.multiple);
  }
  EXPECT_FALSE(found.features[1].hasFurtherMembers);
  EXPECT_TRUE(found.features[2].hasFurtherMembers);
}

TEST(LabelMe, ShapesWithTooFewPointsAreNamed) {
  EXPECT_THAT(
      texts::read("geojson", labelMe(R"({"points":[[1,2],[3,5]]},)"
                                     R"({"shape_type":"rectangle","points":[[1,2]]},)"
                                     R"({"shape_type":"line","points":[[1,2]]},)"
                                     R"({"points":5,"label":"a"})"))
          .complaints,
      ElementsAre("1: outline has 2 points, but needs 3", "2: outline has 1 point, but needs 3",
                  "3: line has 1 point, but needs 2", "4: points: 5 is not a list"));
}

TEST(LabelMe, MembersThatSayNothingAreNotLost) {
  const auto found = texts::read(
      "geojson", labelMe(R"({"label":"a","points":[[0,0],[4,0],[4,4]],"group_id":null,"flags":{},)"
                         R"("description":"","shape_type":"polygon"},)"
                         R"({"points":[[0,0],[4,0],[4,4]],"flags":{"blurred":true}},)"
                         R"({"points":[[0,0],[4,0],[4,4]],"description":"a nut"},)"
                         R"({"points":[[0,0],[4,0],[4,4]],"group_id":3})"));
  ASSERT_EQ(found.features.size(), 4);
  EXPECT_FALSE(found.features[0].hasFurtherMembers);
  for (std::size_t i = 1; i < 4; ++i) EXPECT_TRUE(found.features[i].hasFurtherMembers) << i;
}

TEST(LabelMe, OtherShapesAreNamed) {
  const auto found = texts::read(
      "geojson", labelMe(R"({"label":"a","shape_type":"circle","points":[[1,2],[3,5]]},)"
                         R"({"label":"b"},{"label":"c","points":[[1,"x"]]},[])"));
  EXPECT_THAT(found.complaints,
              ElementsAre("1: a shape of type \"circle\" has no outline", "2: no points",
                          "3: points, vertex 0: y is \"x\", not a number", "4: [] is not a shape"));
  EXPECT_EQ(found.unreadable[0].label, Label("a"));
}
