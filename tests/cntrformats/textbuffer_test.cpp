// SPDX-License-Identifier: MIT

#include <cntrformats/textbuffer.h>

#include <string>

#include <gtest/gtest.h>

using formats::TextBuffer;

TEST(TextBuffer, KeepsWhatItHoldsWhileItGrows) {
  TextBuffer buffer;
  EXPECT_EQ(buffer.text(), "");
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    const std::string text = std::to_string(i);
    buffer.append(text);
    expected += text;
  }
  EXPECT_EQ(buffer.text(), expected);
  buffer.reserve(100000);
  EXPECT_EQ(buffer.text(), expected);
}

TEST(TextBuffer, DoesNotMoveWithinItsRoom) {
  TextBuffer buffer(10);
  buffer.append("a");
  const char* const place = buffer.text().data();
  buffer.append("bcdefghij");
  EXPECT_EQ(buffer.text().data(), place);
  buffer.reserve(10);
  EXPECT_EQ(buffer.text().data(), place);
  EXPECT_EQ(buffer.text(), "abcdefghij");
}

TEST(TextBuffer, TakesAsMuchAsItIsGiven) {
  TextBuffer buffer;
  buffer.append("ab");
  const std::size_t count = buffer.append(5, [](char* place, std::size_t most) {
    EXPECT_EQ(most, 5U);
    place[0] = 'c';
    return std::size_t{1};
  });
  EXPECT_EQ(count, 1U);
  EXPECT_EQ(buffer.text(), "abc");
}
