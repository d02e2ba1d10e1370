// SPDX-License-Identifier: MIT
//
// The same largest circles from every build: whatever the compiler, the level of optimisation and
// the processor, the answers about some hundred outlines with holes have the same bits. Those of
// libcntr are in tests/golden, where it is also described how outlines are made and answers hashed.

#include <algorithm>

#include <cntrsets/inscribed.h>
#include <gtest/gtest.h>
#include <tests/golden/answers.h>
#include <tests/golden/subjects.h>

namespace {

constexpr std::size_t regions = 300;

std::vector<qcRings> featureOf(const qcRegion& region) {
  qcRings part{region.points(), {}};
  for (const auto& hole : region.holes()) part.holes.push_back(hole->points());
  return {part};
}

double toleranceFor(const qcRegion& region) {
  const qcRect box = region.encloseRect(qcXform<2>::I);
  return 1e-3 * std::max(box.width(), box.height());
}

/// The contact of the rings, then the circle if it is a contact that `asksIn` takes.
template <class AsksIn>
golden::Answers circles(AsksIn asksIn) {
  golden::Answers answers;
  for (std::size_t number = 0; number < regions; ++number) {
    const auto region = golden::regionWithHoles(number);
    const std::vector<qcRings> feature = featureOf(*region);
    answers.ask([&] {
      const qcRingContact contact = qf_RingContact(feature);
      if (asksIn(contact)) answers.add(qf_InscribedCircle(feature, contact, toleranceFor(*region)));
      return static_cast<int>(contact);
    });
  }
  return answers;
}

TEST(GoldenCircles, InRingsThatAreSimpleHaveTheSameBitsInEveryBuild) {
  const golden::Answers answers =
      circles([](qcRingContact contact) { return contact == qcRingContact::eSimple; });
  EXPECT_EQ(answers.count(), 595U);
  EXPECT_EQ(answers.hash(), 0x6e165bba1396677eU);
}

TEST(GoldenCircles, InWhatOtherRingsFillHaveTheSameBitsInEveryBuild) {
  const golden::Answers answers =
      circles([](qcRingContact contact) { return contact != qcRingContact::eSimple; });
  EXPECT_EQ(answers.count(), 878U);
  EXPECT_EQ(answers.hash(), 0x4649afc0f62ee68eU);
}

}  // namespace
