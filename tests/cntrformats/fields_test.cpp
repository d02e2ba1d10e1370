// SPDX-License-Identifier: MIT

#include <cntrformats/fields.h>

#include <gtest/gtest.h>

using namespace formats;

namespace {

using Fields = std::vector<std::string>;

}  // namespace

TEST(CsvFields, MayBeQuoted) {
  Fields fields{"what was there before"};
  EXPECT_TRUE(splitCsv(R"(a,"b,""c""",,"")", fields));
  EXPECT_EQ(fields, (Fields{"a", "b,\"c\"", "", ""}));
  EXPECT_TRUE(splitCsv("", fields));
  EXPECT_EQ(fields, Fields{""});
  EXPECT_FALSE(splitCsv("a,\"b", fields));
}

TEST(CsvFields, AQuoteWithinAFieldIsAnOrdinaryCharacter) {
  Fields fields;
  EXPECT_TRUE(splitCsv(R"(a"b,c)", fields));
  EXPECT_EQ(fields, (Fields{"a\"b", "c"}));
}

TEST(CsvFields, EndWithTheirLineWhateverIsBehindIt) {
  Fields fields;
  EXPECT_TRUE(splitCsv(std::string_view(R"("a"")").substr(0, 3), fields));
  EXPECT_EQ(fields, Fields{"a"});
}

TEST(CsvFields, AreQuotedWhereTheyMustBe) {
  EXPECT_EQ(csvField("a b"), "a b");
  for (const char* text : {" a", "a ", "a,b", "a\"b", "a\nb", "a\rb"}) {
    Fields fields;
    EXPECT_NE(csvField(text), text);
    EXPECT_TRUE(splitCsv(csvField(text), fields));
    EXPECT_EQ(fields, Fields{text});
  }
}

TEST(CsvFields, MayBeSeparatedByRunsOfBlanks) {
  Fields fields;
  EXPECT_TRUE(splitCsv(" a  b\t c ", fields, ' '));
  EXPECT_EQ(fields, (Fields{"a", "b", "c"}));
}
