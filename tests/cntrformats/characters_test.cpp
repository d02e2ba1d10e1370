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
    std::size_t at = text.find_first_of("{\"}", from);
    const std::size_t last = random.below(text.size() + 1);
    const bool isStopped = formats::visitAny(text, from, '{', '"', '}', [&](std::size_t found) {
      EXPECT_EQ(found, at) << i;
      at = text.find_first_of("{\"}", found + 1);
      return found >= last;
    });
    ASSERT_EQ(isStopped, text.find_first_of("{\"}", std::max(from, last)) != std::string::npos)
        << i;
    ASSERT_TRUE(isStopped || at == std::string::npos) << i;
  }
  EXPECT_EQ(formats::countOf(std::string(100000, '('), '('), 100000U);
}
