// SPDX-License-Identifier: MIT
//
// The random sequence, which must be the same everywhere, and the integer floor.

#include <platform/core/random.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

std::vector<double> firstNumbers(long seed, int count) {
  qcRandomUniform random(seed);
  std::vector<double> numbers;
  for (int i = 0; i < count; ++i) numbers.push_back(random.next(0.0, 1.0));
  return numbers;
}

TEST(RandomTest, SequenceOfSeed1IsTheKnownOne) {
  const std::vector<double> expected = {0x1.22145bd91204bp-1, 0x1.7dd71b42cb1ddp-1,
                                        0x1.f12745ddf664ap-1, 0x1.c7061a43b90b2p-2,
                                        0x1.c6ed53634406cp-2};
  EXPECT_EQ(firstNumbers(1, 5), expected);
}

TEST(RandomTest, SequenceOfANegativeSeedIsTheKnownOne) {
  const std::vector<double> expected = {0x1.c9b2e2ee36ca5p-1, 0x1.d33ff0cfb7ed0p-1,
                                        0x1.c17fc26593940p-3, 0x1.b476cdb32ea60p-2,
                                        0x1.69408e5caf00dp-1};
  EXPECT_EQ(firstNumbers(-1, 5), expected);
}

TEST(RandomTest, NumbersAreTheTop53BitsOfThePublishedGenerator) {
  const std::vector<std::uint64_t> published = {6457827717110365317U, 3203168211198807973U,
                                                9817491932198370423U};
  qcRandomUniform random(1234567);
  for (const std::uint64_t number : published) {
    EXPECT_EQ(random.next(0.0, 0x1p53), static_cast<double>(number >> 11U));
  }
}

TEST(RandomTest, IndicesBelowThreeFromSeed1AreTheKnownOnes) {
  qcRandomUniform random(1);
  std::vector<int> indices;
  for (int i = 0; i < 12; ++i) indices.push_back(qfIFloor(random.next(0.0, 3.0)));
  EXPECT_EQ(indices, (std::vector<int>{1, 2, 2, 1, 1, 2, 2, 1, 0, 2, 1, 1}));
}

TEST(RandomTest, NumbersStayInTheirRange) {
  qcRandomUniform random(7);
  double sum = 0.0;
  for (int i = 0; i < 10000; ++i) {
    const double x = random.next(-2.0, 6.0);
    ASSERT_TRUE(x >= -2.0 && x < 6.0) << x;
    sum += x;
  }
  EXPECT_NEAR(sum / 10000, 2.0, 0.1);
}

TEST(RandomTest, SumThatRoundsUpToTheEndGivesTheBeginning) {
  const double low = 1.0;
  const double high = std::nextafter(low, 2.0);
  qcRandomUniform random(3);
  for (int i = 0; i < 100; ++i) ASSERT_EQ(random.next(low, high), low);
}

TEST(RandomTest, EmptyRangesGiveTheirBeginning) {
  qcRandomUniform random(3);
  EXPECT_EQ(random.next(5.0, 5.0), 5.0);
  EXPECT_EQ(random.next(5.0, 4.0), 5.0);
}

TEST(RandomTest, CopiesGoOnWithTheSameSequence) {
  qcRandomUniform random(11);
  random.next(0.0, 1.0);
  qcRandomUniform copy = random;
  EXPECT_EQ(copy.next(0.0, 1.0), random.next(0.0, 1.0));
}

TEST(IFloorTest, RoundsDown) {
  EXPECT_EQ(qfIFloor(2.0), 2);
  EXPECT_EQ(qfIFloor(2.999), 2);
  EXPECT_EQ(qfIFloor(-0.5), -1);
  EXPECT_EQ(qfIFloor(-3.0), -3);
  EXPECT_EQ(qfIFloor(-0.0), 0);
}

TEST(IFloorTest, ValuesBeyondAnIntGiveTheNearestInt) {
  constexpr int least = std::numeric_limits<int>::min();
  constexpr int most = std::numeric_limits<int>::max();
  EXPECT_EQ(qfIFloor(2147483646.5), most - 1);
  EXPECT_EQ(qfIFloor(2147483648.0), most);
  EXPECT_EQ(qfIFloor(std::numeric_limits<double>::infinity()), most);
  EXPECT_EQ(qfIFloor(-2147483647.5), least);
  EXPECT_EQ(qfIFloor(-1e300), least);
}

TEST(IFloorTest, NotANumberGivesZero) {
  EXPECT_EQ(qfIFloor(std::numeric_limits<double>::quiet_NaN()), 0);
}

}  // namespace
