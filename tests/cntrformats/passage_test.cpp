// SPDX-License-Identifier: MIT

#include <cntrformats/passage.h>

#include <gtest/gtest.h>

using namespace formats;

namespace {

void expectPlace(const TextPlace& place, std::size_t line, std::size_t column) {
  EXPECT_EQ(place.line, line);
  EXPECT_EQ(place.column, column);
}

}  // namespace

TEST(Passage, APlaceCountsLinesAndTheBytesOfTheLast) {
  expectPlace(placeAfter("", {3, 7}), 3, 7);
  expectPlace(placeAfter("abc", {3, 7}), 3, 10);
  expectPlace(placeAfter("abc\n", {3, 7}), 4, 1);
  expectPlace(placeAfter("abc\n\nde", {3, 7}), 5, 3);
}

TEST(Passage, KnowsThePlacesOfItsBytes) {
  const std::string_view text = "ab\ncd\nef";
  const Passage passage{text.substr(4), text.substr(0, 4), {10, 5}};
  expectPlace(passage.placeOf(0), 11, 2);
  expectPlace(passage.placeOf(1), 11, 3);
  expectPlace(passage.placeOf(3), 12, 2);
}
