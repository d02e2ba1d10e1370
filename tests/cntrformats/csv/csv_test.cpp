// SPDX-License-Identifier: MIT
//
// CSV: what is read, and what is written. Each refusal of a bad line is in
// tests/tools/formats_test.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

TEST(CsvReader, ARunOfEqualIdsIsARing) {
  const auto found =
      texts::read("csv",
                  "y,x,id\n0,0,7\n0,4,7\n4,4,7\n1,2,7/hole 1\n1,3,7/hole 1\n"
                  "2,3,7/hole 1\n0,0,b/line\n1,1,b/line\n\n0,0,b/line\n1,2,b/line\n");
  ASSERT_EQ(found.features.size(), 3);
  EXPECT_EQ(found.features[0].label, Label(7UL));
  EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
  EXPECT_EQ(found.features[0].geometry.parts[0].holes,
            (std::vector<Points>{{{2, 1}, {3, 1}, {3, 2}}}));
  EXPECT_EQ(found.features[1].id, "b");
  EXPECT_FALSE(found.features[1].geometry.closed);
  EXPECT_EQ(found.features[2].number, 3) << "an empty line ends a feature";
  EXPECT_EQ(found.places[1].line, 8);
}

TEST(CsvReader, TakesLinesOfTwoNumbersAsNumpyWritesThem) {
  for (const char* text :
       {"0.0e+00 0.0e+00\n4.0e+00 0.0e+00\n4.0e+00 4.0e+00\n", "0,0\n4,0\n4,4\n",
        "# x,y\n0,0\n4,0\n4,4\n", "# made by hand\n0\t0\n4\t0\n# half\n4\t4\n"}) {
    const auto found = texts::read("csv", text);
    ASSERT_EQ(found.features.size(), 1) << text;
    EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
    EXPECT_FALSE(found.features[0].id);
    EXPECT_FALSE(found.features[0].label);
  }
  EXPECT_EQ(texts::read("csv", "0 0\n4 0\n4 4\n\n0 0\n1 0\n1 1\n").features.size(), 2)
      << "an empty line ends a feature";
}

TEST(CsvReader, TakesOtherSeparatorsAndCasesOfTheHeader) {
  for (const char* text :
       {"ID;X;Y\n7;0;0,5\n7;4;0,5\n7;4;4,5\n", "Y\tX\tId\n0.5\t0\t7\n0.5\t4\t7\n4.5\t4\t7\n",
        "7  0 0.5\n7 4  0.5\n7 4 4.5\n"}) {
    const auto found = texts::read("csv", text);
    ASSERT_EQ(found.features.size(), 1) << text;
    EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0, 0.5}, {4, 0.5}, {4, 4.5}}));
    EXPECT_EQ(found.features[0].label, Label(7UL));
  }
}

TEST(CsvReader, ABadLineIsNamed) {
  EXPECT_THAT(texts::read("csv", "0,0\n4\n4,4\n").complaints,
              ElementsAre("1: outline, vertex 1: '4' is not a line of x,y"));
}

TEST(CsvReader, RefusesOtherText) {
  EXPECT_EQ(texts::flawOf("csv", "\n"), "nothing in it");
  EXPECT_EQ(texts::flawOf("csv", "id,x,y\n"), "") << "a header alone is an empty list";
  EXPECT_EQ(texts::flawOf("csv", "id,x\n"),
            "the first line is neither id,x,y or x,y nor such values");
}

TEST(CsvWriter, WritesAVertexToALine) {
  Feature feature = texts::outline({{0, 0}, {0.1, 0}, {0, 1}});
  feature.number = 5;
  feature.geometry.parts[0].holes.push_back({{1, 1}, {2, 1}, {1, 1}});
  EXPECT_EQ(texts::written("csv", {feature}),
            "id,x,y\n#5,0,0\n#5,0.1,0\n#5,0,1\n#5/hole 1,1,1\n#5/hole 1,2,1\n#5/hole 1,1,1\n"
            "#5/hole 1,1,1\n")
      << "a ring that ends where it begins repeats that point";
}

TEST(CsvWriter, KeepsFeaturesOfTheSameNameApart) {
  Feature feature = texts::outline(texts::square(1));
  feature.id = "a,b";
  const std::string ring = "\"a,b\",0,0\n\"a,b\",1,0\n\"a,b\",1,1\n\"a,b\",0,1\n";
  EXPECT_EQ(texts::written("csv", {feature, feature}), "id,x,y\n" + ring + "\n" + ring);
  feature.label = 3UL;
  EXPECT_THAT(texts::written("csv", {feature}), testing::StartsWith("id,x,y\n3,0,0\n"));
}
