// SPDX-License-Identifier: MIT

#include <cntrformats/characters.h>

#include <algorithm>
#include <string>

#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

namespace {

/// Long texts in which most bytes are of no interest, all values among them.
std::string randomText(shapes::Random& random) {
  std::string text(random.below(300), '\0');
  for (char& c : text)
    c = random.chance(0.02) ? "{\"}"[random.below(3)] : static_cast<char>(random.below(256));
  return text;
}

}  // namespace

TEST(Characters, AreCountedAndFoundWhereverTheyAre) {
  shapes::Random random(1);
  for (int i = 0; i < 20000; ++i) {
    const std::string text = randomText(random);
    const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), '{'));
    ASSERT_EQ(formats::countOf(text, '{'), count) << i;
    const std::size_t from = random.below(text.size() + 1);
    const std::size_t found = std::min(text.find_first_of("{\"}", from), text.size());
    ASSERT_EQ(formats::findAny(text, from, '{', '"', '}'), found) << i;
  }
  EXPECT_EQ(formats::countOf(std::string(100000, '('), '('), 100000U);
}
