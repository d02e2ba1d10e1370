// SPDX-License-Identifier: MIT
//
// CSV: what is read, and what is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cntrformats/csv/csv.h>

#include "../texts.h"

using namespace formats;
using testing::ElementsAre;

namespace {

struct BadCsv {
  const char* name;
  const char* text;
  const char* message;
};

class ABadCsv : public testing::TestWithParam<BadCsv> {};

std::vector<std::string> complaintsOf(const std::string& text) {
  return texts::read("csv", text).complaints;
}

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
  EXPECT_EQ(found.places[0].line, 2) << "a feature is where its first ring is";
  EXPECT_EQ(found.places[1].line, 8);
}

TEST_P(ABadCsv, IsNamedAndTheOthersAreRead) {
  const std::string good = "1,0,0\n1,4,0\n1,4,4\n";
  const auto found = texts::read("csv", good + "\n\n" + GetParam().text + "\n\n" + good);
  EXPECT_THAT(found.complaints, ElementsAre(std::string("2: ") + GetParam().message));
  EXPECT_EQ(found.features.size(), 2);
  ASSERT_EQ(found.places.size(), 3);
  EXPECT_EQ(found.places[1].line, 6);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ABadCsv,
    testing::Values(
        BadCsv{"TwoPoints", "2,0,0\n2,1,0", "outline has 2 points, but needs 3"},
        BadCsv{"TextForX", "2,0,0\n2,one,two\n2,1,1",
               "outline, vertex 1: 'one' is not a finite number"},
        BadCsv{"NothingForY", "2,0,0\n2,1,\n2,1,1", "outline, vertex 1: '' is not a finite number"},
        BadCsv{"OtherSeparator", "2,0,0\n2,1,0\n2;1;1",
               "outline, vertex 2: '2;1;1' is not a line of id,x,y"},
        BadCsv{"OpenQuote", "2,0,0\n\"2,1,0\n2,1,1", "outline, vertex 1: a quote is not closed"},
        BadCsv{"TwoFlaws", "2,0,0\n2\n\"2\n2,1,1",
               "outline, vertex 1: '2' is not a line of id,x,y"},
        BadCsv{"NoVertex", "2", "outline, vertex 0: '2' is not a line of id,x,y"},
        BadCsv{"HoleWithoutOutline", "2/hole 1,0,0\n2/hole 1,1,0", "begins with hole 1"},
        BadCsv{"LatePart", "2/part 3,0,0", "begins with part 3, outline"},
        BadCsv{"LateHole", "2/part 1/hole 2,0,0", "begins with part 1, hole 2"},
        BadCsv{"LineOfOnePoint", "2/line,0,0", "line has 1 point, but needs 2"},
        BadCsv{"LineWithAHole", "2/line,0,0\n2/line,1,1\n2/line/hole 1,5,5", "a line has no holes"},
        BadCsv{"HoleOfOnePoint", "2,0,0\n2,9,0\n2,9,9\n2/hole 1,1,1",
               "hole 1 has 1 point, but needs 3"},
        BadCsv{"HoleInAPart", "2/part 1,0,0\n2/part 1,9,0\n2/part 1,9,9\n2/part 1/hole 1,x,1",
               "part 1, hole 1, vertex 0: 'x' is not a finite number"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(CsvReader, PartsMakeAGeometryOfSeveralEvenIfThereIsOne) {
  const auto found = texts::read("csv",
                                 "7,0,0\n7,4,0\n7,4,4\n8/part 1,0,0\n8/part 1,1,0\n"
                                 "8/part 1,1,1\n9/line/part 1,0,0\n9/line/part 1,1,1\n"
                                 "9/line/part 2,2,2\n9/line/part 2,3,3\n");
  ASSERT_EQ(found.features.size(), 3);
  EXPECT_FALSE(found.features[0].geometry.multiple);
  EXPECT_TRUE(found.features[1].geometry.multiple);
  EXPECT_TRUE(found.features[2].geometry.multiple);
  EXPECT_FALSE(found.features[2].geometry.closed);
  EXPECT_EQ(found.features[2].geometry.parts.size(), 2);
}

TEST(CsvReader, TheSizeOfAFeatureIsThatOfItsVertices) {
  class Sizes : public Sink {
   public:
    void take(Record record) override { sizes.push_back(record.size); }
    std::vector<std::size_t> sizes;
  } sink;
  Source source{Text{"7,0,0\n7,4,0\n7,4,4\n\n7,0,0\n7,40,0\n7,40,40\n"}};
  readCsv(source, Keep::eFeature, sink);
  EXPECT_THAT(sink.sizes, ElementsAre(9U, 12U));
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

TEST(CsvReader, BlanksAroundFieldsDoNotCount) {
  const auto found = texts::read("csv", "id , x,\ty\n7, 0 ,0\n7,\t4,0\t\n7,4 , 4\n");
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
}

TEST(CsvReader, DecimalCommasGoWithSemicolonsAlone) {
  const auto found = texts::read("csv", "0,5;1,5\n4,5;0\n4;4\n");
  ASSERT_EQ(found.features.size(), 1);
  EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0.5, 1.5}, {4.5, 0}, {4, 4}}));
  EXPECT_THAT(complaintsOf("x\ty\n0\t0,5\n4\t0\n4\t4\n"),
              ElementsAre("1: outline, vertex 0: '0,5' is not a finite number"));
}

TEST(CsvReader, ALineWithTooFewFieldsIsNamed) {
  EXPECT_THAT(complaintsOf("0,0\n4\n4,4\n"),
              ElementsAre("1: outline, vertex 1: '4' is not a line of x,y"));
  for (const char* header : {"x,y,id", "x,id,y", "id,x,y", "y,id,x"}) {
    EXPECT_THAT(complaintsOf(std::string(header) + "\n0,1\n"),
                ElementsAre("1: outline, vertex 0: '0,1' is not a line of id,x,y"))
        << header;
  }
}

TEST(CsvReader, CommentsAreNoVertices) {
  for (const char* comment : {"# 1,2", "# 1,2,3", "# 1 2", "# "}) {
    const auto found = texts::read("csv", std::string(comment) + "\n0,0\n4,0\n4,4\n");
    ASSERT_EQ(found.features.size(), 1) << comment;
    EXPECT_EQ(found.features[0].geometry.parts[0].outline, (Points{{0, 0}, {4, 0}, {4, 4}}));
    EXPECT_EQ(found.places[0].line, 2);
  }
}

TEST(CsvReader, IsKnownByAFirstLineOfAHeaderOrAVertex) {
  for (const char* line : {"1,2", "7,1,2", "a;0,5;1,5", "7,1,2,colour", "7\t1\t2", "7 1 2",
                           " x , y ", "# y x", "7,1,2 \t\r\n"}) {
    EXPECT_TRUE(looksLikeCsv(line)) << line;
  }
  for (const char* line :
       {"1", "a,1", "1,a", "7,a,1", "7,1,a", "1 2 3 4", "# 1,2", "x,y,\"id", "", "x,id", "{,x,y"}) {
    EXPECT_FALSE(looksLikeCsv(line)) << line;
  }
}

TEST(CsvReader, RefusesOtherText) {
  EXPECT_EQ(texts::flawOf("csv", "\n"), "nothing in it");
  EXPECT_EQ(texts::flawOf("csv", "id,x,y\n"), "") << "a header alone is an empty list";
  EXPECT_EQ(texts::flawOf("csv", "id,x\n"),
            "the first line is neither id,x,y or x,y nor such values");
  EXPECT_EQ(texts::flawOf("csv", "x,y,\"id\n"),
            "the first line is neither id,x,y or x,y nor such values");
  EXPECT_EQ(texts::flawOf("csv", "# x,z\n"), "nothing in it");
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

TEST(CsvWriter, NamesPartsAndLines) {
  Feature feature = texts::outline({{0, 0}, {1, 0}, {0, 1}});
  feature.id = "a";
  feature.geometry.multiple = true;
  EXPECT_EQ(texts::written("csv", {feature}), "id,x,y\na/part 1,0,0\na/part 1,1,0\na/part 1,0,1\n");
  feature.geometry.multiple = false;
  feature.geometry.parts.push_back({{{5, 5}, {6, 5}, {5, 6}}, {{{5, 5}, {6, 6}, {5, 6}}}});
  EXPECT_EQ(texts::written("csv", {feature}),
            "id,x,y\na/part 1,0,0\na/part 1,1,0\na/part 1,0,1\n"
            "a/part 2,5,5\na/part 2,6,5\na/part 2,5,6\n"
            "a/part 2/hole 1,5,5\na/part 2/hole 1,6,6\na/part 2/hole 1,5,6\n");
  feature.geometry = {false, false, {{{{0, 0}, {1, 1}, {0, 0}}, {}}}};
  EXPECT_EQ(texts::written("csv", {feature}), "id,x,y\na/line,0,0\na/line,1,1\na/line,0,0\n")
      << "a line that ends where it begins repeats nothing";
}

TEST(CsvWriter, SeparatesOnlyWhatWouldBeReadTogether) {
  Feature feature = texts::outline({{0, 0}, {9, 0}, {0, 9}});
  feature.label = 7UL;
  const std::string ring = "7,0,0\n7,9,0\n7,0,9\n";
  Feature holed = feature;
  holed.geometry.parts[0].holes.push_back({{1, 1}, {2, 1}, {1, 2}});
  const std::string hole = "7/hole 1,1,1\n7/hole 1,2,1\n7/hole 1,1,2\n";
  EXPECT_EQ(texts::written("csv", {holed, feature, feature}),
            "id,x,y\n" + ring + hole + ring + "\n" + ring);
  feature.geometry.parts.push_back({{{50, 50}, {60, 50}, {50, 60}}, {}});
  const std::string parts =
      "7/part 1,0,0\n7/part 1,9,0\n7/part 1,0,9\n"
      "7/part 2,50,50\n7/part 2,60,50\n7/part 2,50,60\n";
  EXPECT_EQ(texts::written("csv", {feature, feature}), "id,x,y\n" + parts + parts);
}

TEST(CsvWriter, NamesThatWouldNotComeBackAreNumbers) {
  Feature feature = texts::outline({{0, 0}, {9, 0}, {0, 9}});
  feature.number = 3;
  for (const char* id : {"12", "#3", "a/hole 1", "b/line", "two\nlines", "two\rlines", ""}) {
    feature.id = id;
    EXPECT_EQ(texts::written("csv", {feature}), "id,x,y\n#3,0,0\n#3,9,0\n#3,0,9\n") << id;
  }
  feature.label = "nut";
  feature.id = "#";
  EXPECT_EQ(texts::written("csv", {feature}), "id,x,y\n#,0,0\n#,9,0\n#,0,9\n");
}

}  // namespace
