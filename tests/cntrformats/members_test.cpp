// SPDX-License-Identifier: MIT

#include <cntrformats/members.h>

#include <gtest/gtest.h>

using namespace formats;

TEST(Members, AreFoundByTheirName) {
  const Members members{{"a", "1"}, {"b", "[2]"}};
  ASSERT_NE(valueOf(members, "b"), nullptr);
  EXPECT_EQ(*valueOf(members, "b"), "[2]");
  EXPECT_EQ(valueOf(members, "c"), nullptr);
}

TEST(Members, AnUpdateKeepsThePlacesOfThoseThatWereThere) {
  Members members{{"a", "1"}, {"b", "2"}};
  update(members, {{"c", "3"}, {"a", "4"}});
  ASSERT_EQ(members.size(), 3);
  EXPECT_EQ(members[0].name + members[1].name + members[2].name, "abc");
  EXPECT_EQ(members[0].value + members[1].value + members[2].value, "423");
}
