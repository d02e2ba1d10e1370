// SPDX-License-Identifier: MIT

#include <cntrformats/json.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace formats;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ValueEnd, IsTheSameWhereverTheTextIsCut) {
  const std::string values[] = {R"({"a":{"b":"}\"}"},"c":[1,"]"]})",
                                R"([[1,[2]],"[",{}])",
                                R"("a\\\"b")",
                                R"("\\")",
                                "12.5",
                                "null"};
  for (const std::string& value : values) {
    const std::string text = value + ", ";
    for (std::size_t cut = 1; cut < text.size(); ++cut) {
      ValueEnd end;
      std::size_t at = 0;
      const bool isEarly = end.find(std::string_view(text).substr(0, cut), at);
      EXPECT_EQ(isEarly, cut > value.size() || (cut == value.size() && value[0] < '0') ||
                             (cut == value.size() && value[0] > 'Z' && value[0] != 'n'))
          << value << " cut at " << cut;
      if (!isEarly) {
        EXPECT_TRUE(end.find(text, at));
      }
      EXPECT_EQ(at, value.size()) << value << " cut at " << cut;
    }
  }
}

TEST(ValueEnd, OfABareValueIsBeforeWhateverCannotBelongToIt) {
  for (const char end : std::string_view(",]}: \t\r\n")) {
    std::size_t at = 0;
    EXPECT_TRUE(ValueEnd().find(std::string("12") + end + '3', at)) << end;
    EXPECT_EQ(at, 2U);
  }
}

TEST(ValueEnd, IsNotInAnEmptyPieceWhateverIsBehindIt) {
  ValueEnd end;
  std::size_t at = 0;
  EXPECT_FALSE(end.find(std::string_view("[").substr(0, 0), at));
  EXPECT_TRUE(end.find("12,", at));
  EXPECT_EQ(at, 2U);
}

TEST(ValueEnd, IsFoundBehindManyBytesOfNoMeaning) {
  const std::string value = "[" + std::string(1000, '1') + ",\"" + std::string(1000, ']') + "\"]";
  std::size_t at = 0;
  EXPECT_TRUE(ValueEnd().find(value + "]", at));
  EXPECT_EQ(at, value.size());
}

TEST(Json, ListsHaveElements) {
  EXPECT_THAT(elementsOf(R"([1, "a,b" ,[2,3] , {"c":[4]}])"),
              ElementsAre("1", R"("a,b")", "[2,3]", R"({"c":[4]})"));
  EXPECT_THAT(elementsOf("[ ]"), IsEmpty());
  EXPECT_THAT(elementsOf("["), IsEmpty());
}

TEST(Json, ObjectsHaveMembers) {
  const std::string object = R"({ "a" : 1, "b\"":[ 2 ] ,"c":"}"})";
  const auto members = membersOf(object);
  ASSERT_EQ(members.size(), 3);
  EXPECT_EQ(members[1].name, R"(b\")");
  EXPECT_EQ(members[1].value, "[ 2 ]");
  EXPECT_EQ(memberOf(object, "c"), R"("}")");
  EXPECT_EQ(memberOf(object, "d"), "");
  EXPECT_EQ(memberOf("[1]", "a"), "");
  EXPECT_EQ(memberOf(R"("xax:1")", "a"), "") << "a text has no members";
}

TEST(Json, OfMembersWithTheSameNameThereIsAFirstAndALast) {
  const std::string object = R"({"a":1,"\u0061":2,"b":3})";
  EXPECT_EQ(memberOf(object, "a"), "1");
  EXPECT_EQ(lastMemberOf(object, "a"), "2") << "its name is escaped";
  EXPECT_EQ(memberOf(object, R"(\u0061)"), "2");
  EXPECT_EQ(lastMemberOf(object, R"(\u0061)"), "");
  EXPECT_EQ(lastMemberOf(object, "c"), "");
  EXPECT_EQ(lastMemberOf(R"("xax:1")", "a"), "") << "a text has no members";
}

TEST(Json, CompactTextKeepsTheBlanksOfStrings) {
  EXPECT_EQ(compact("{ \"a b\" :\n\t[1 , \" \\\" \"] }\r\n"), R"({"a b":[1," \" "]})");
}

TEST(Json, AnExcerptEndsBetweenCharacters) {
  EXPECT_EQ(excerpt("[1, 2]"), "[1,2]");
  EXPECT_EQ(excerpt('"' + std::string(38, 'x') + "\u00e9 and more\""),
            '"' + std::string(38, 'x') + "...");
}

TEST(Json, AnExcerptHasUpToFortyBytes) {
  const std::string digits(40, '1');
  EXPECT_EQ(excerpt(digits), digits);
  EXPECT_EQ(excerpt(digits + "2"), digits + "...");
  EXPECT_EQ(excerpt("[1," + std::string(60, ' ') + "2]"), "[1,2]") << "blanks do not count";
}

TEST(Json, StringsAreEscaped) {
  EXPECT_EQ(jsonString("a b"), "\"a b\"");
  EXPECT_EQ(jsonString("a\"\\\n\r\t\x01\u00e9"), "\"a\\\"\\\\\\n\\r\\t\\u0001\u00e9\"");
  EXPECT_EQ(jsonString("a\xff"
                       "b\xc3"),
            "\"a\uFFFDb\uFFFD\"");
  EXPECT_EQ(jsonString("\U0001F600\xff"), "\"\U0001F600\uFFFD\"");
}

TEST(Json, AnExcerptDoesNotEndAtANullCharacter) {
  EXPECT_EQ(excerpt(std::string_view("\0a\0b", 4)), "?a?b");
}
