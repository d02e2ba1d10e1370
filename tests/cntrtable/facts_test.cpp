// SPDX-License-Identifier: MIT
//
// The facts about shapes: those that were asked for and no others, in local coordinates, and which
// rings are answered at once. measures_test.cpp tests what is computed from them.

#include <cntrtable/facts.h>

#include <cmath>
#include <limits>
#include <string>

#include <cntr/contourdefs.h>
#include <gtest/gtest.h>
#include <testing/shapes/shapes.h>

#include "rings.h"

namespace {

using cntr::sets::LoneRing;
using table::Facts;
using table::factsOf;
using table::Filling;
using table::Needs;
using table::quickFactsOf;
using table::Shape;

const std::vector<qcRings> plate{
    {{{0, 0}, {8, 0}, {8, 4}, {0, 4}}, {{{1, 1}, {1, 3}, {3, 3}, {3, 1}}}}};
const std::vector<qcRings> smallSquare{{{{1, 1}, {3, 1}, {3, 3}, {1, 3}}, {}}};
const std::vector<qcRings> crossingArea{{bowTie, {}}};

Facts about(const Shape& shape, Needs needs, Filling filling = Filling::eMeasured) {
  return factsOf(shape, needs, filling);
}

/// Which facts are there.
Needs foundIn(const Facts& facts) {
  Needs found = table::eCounts;
  const auto add = [&found](bool isThere, Needs need) { found |= isThere ? need : 0U; };
  add(facts.extent.has_value(), table::eExtent);
  add(!facts.curves.empty(), table::eCurves);
  add(facts.length > 0.0, table::eLength);
  add(facts.contact && facts.area, table::eFilled);
  add(facts.solidArea.has_value(), table::eSolid);
  add(facts.crosses.has_value(), table::eCrossings);
  add(facts.box.has_value(), table::eBox);
  add(facts.strip.has_value(), table::eStrip);
  add(facts.circle.has_value(), table::eCircle);
  add(facts.hull.has_value(), table::eHull);
  add(facts.hu.has_value(), table::eHu);
  add(facts.moments.has_value(), table::eMoments);
  add(facts.inscribed.has_value(), table::eInscribed);
  add(facts.centre.has_value(), table::eCentre);
  return found;
}

/// The facts that a need brings along, itself included.
Needs broughtBy(Needs need) {
  if (need == table::eSolid || need == table::eHu || need == table::eInscribed ||
      need == table::eCentre)
    return need | table::eFilled;
  if (need == table::eMoments) return need | table::eFilled | table::eCentre;
  return need;
}

TEST(FactsTest, OfAnAreaWithAHoleAreThoseThatAreAskedFor) {
  for (Needs need = table::eExtent; need <= table::eCentre; need *= 2) {
    if (need == table::eLineCrossings) continue;
    EXPECT_EQ(foundIn(about({plate}, need)), broughtBy(need)) << need;
  }
  EXPECT_EQ(foundIn(about({plate}, table::eCounts)), table::eCounts);
  EXPECT_EQ(foundIn(about({plate}, table::eLineCrossings)), table::eCounts);
}

TEST(FactsTest, OfALoneRingHoldWhatIsAskedFor) {
  for (Needs need = table::eExtent; need <= table::eCentre; need *= 2) {
    if (need == table::eLineCrossings) continue;
    EXPECT_EQ(foundIn(about({smallSquare}, need)) & broughtBy(need), broughtBy(need)) << need;
  }
}

TEST(FactsTest, OfLinesAreNoAreas) {
  const std::vector<qcRings> line{{{{0, 0}, {4, 0}, {4, 3}}, {}}};
  const Facts facts = about({line, false}, ~Needs{0});
  EXPECT_EQ(foundIn(facts), table::eExtent | table::eCurves | table::eLength | table::eCrossings |
                                table::eBox | table::eStrip | table::eCircle | table::eHull);
  EXPECT_FALSE(facts.closed);
  EXPECT_EQ(facts.frame.restored(facts.length, 1), 7.0);
  EXPECT_EQ(facts.curves.front().isClosed(), false);
  EXPECT_EQ(*about({line, false}, table::eLineCrossings).crosses, false);
}

TEST(FactsTest, OfSeveralLinesSayNothingAboutCrossings) {
  const std::vector<qcRings> lines{{{{0, 0}, {4, 4}}, {}}, {{{4, 0}, {0, 4}}, {}}};
  EXPECT_EQ(about({lines, false}, table::eCrossings).crosses, std::nullopt);
}

TEST(FactsTest, CountVerticesOfOutlinesAndHoles) {
  const Facts facts = about({plate}, table::eCounts);
  EXPECT_EQ(facts.vertices, 4U);
  EXPECT_EQ(facts.holes, 1U);
}

TEST(FactsTest, LengthsOfOutlinesAndOfHolesAreApart) {
  const Facts facts = about({plate}, table::eLength);
  EXPECT_EQ(facts.frame.restored(facts.length, 1), 24.0);
  EXPECT_EQ(facts.frame.restored(facts.holeLength, 1), 8.0);
}

TEST(FactsTest, TheExtentHasTheCoordinatesAsGiven) {
  const Facts facts = about({plate}, table::eExtent);
  EXPECT_EQ(facts.extent->low, qcVector<2>(0, 0));
  EXPECT_EQ(facts.extent->high, qcVector<2>(8, 4));
}

TEST(FactsTest, TheHullOfPointsOnALineIsWalkedThereAndBack) {
  const std::vector<qcRings> line{{{{0, 0}, {2, 0}, {4, 0}}, {}}};
  const Facts facts = about({line, false}, table::eHull);
  EXPECT_EQ(facts.hull->area, 0.0);
  EXPECT_EQ(facts.frame.restored(facts.hull->length, 1), 8.0);
}

TEST(FactsTest, TheSolidAreaIsThatOfOneOutlineWithoutItsHoles) {
  const Facts facts = about({plate}, table::eSolid);
  EXPECT_EQ(facts.frame.restored(*facts.area, 2), 28.0);
  EXPECT_EQ(facts.frame.restored(*facts.solidArea, 2), 32.0);
  std::vector<qcRings> two = plate;
  two.push_back({{{20, 0}, {21, 0}, {21, 1}}, {}});
  EXPECT_EQ(about({two}, table::eSolid).solidArea, std::nullopt);
}

TEST(FactsTest, OfRingsThatCrossAreMeasuredOrLeftOut) {
  const Facts measured = about({crossingArea}, table::eFilled | table::eSolid);
  EXPECT_EQ(measured.contact, qcRingContact::eCrosses);
  EXPECT_EQ(measured.frame.restored(*measured.area, 2), 8.0);
  EXPECT_FALSE(measured.isLeftOut);
  const Facts leftOut = about({crossingArea}, table::eFilled | table::eSolid, Filling::eLeftOut);
  EXPECT_EQ(leftOut.contact, qcRingContact::eCrosses);
  EXPECT_EQ(leftOut.area, std::nullopt);
  EXPECT_EQ(leftOut.solidArea, std::nullopt);
  EXPECT_TRUE(leftOut.isLeftOut);
  EXPECT_FALSE(about({smallSquare}, table::eFilled, Filling::eLeftOut).isLeftOut);
}

TEST(FactsTest, RefuseWhatIsNotAFiniteNumber) {
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
    const std::vector<qcRings> outline{{{{0, 0}, {bad, 1}, {1, 1}}, {}}};
    const std::vector<qcRings> withHole{{smallSquare[0].outline, {{{2, 2}, {2, -bad}, {1.5, 2}}}}};
    for (const std::vector<qcRings>& parts : {outline, withHole}) {
      try {
        about({parts}, table::eCounts);
        FAIL() << "not refused";
      } catch (const qcContourDefs::BadParams& error) {
        EXPECT_EQ(error.message(), L"a coordinate is not a finite number");
      }
    }
  }
}

TEST(IsBoundedSimplyTest, IsTrueOfRingsThatAreApartOrTouch) {
  EXPECT_TRUE(table::isBoundedSimply(qcRingContact::eSimple));
  EXPECT_TRUE(table::isBoundedSimply(qcRingContact::eTouches));
  EXPECT_FALSE(table::isBoundedSimply(qcRingContact::eCrosses));
}

std::vector<double> coordinatesOf(const Points& ring) {
  std::vector<double> coordinates;
  for (const qcVector<2>& p : ring) coordinates.insert(coordinates.end(), {p.x(), p.y()});
  return coordinates;
}

std::optional<Facts> quick(const Points& ring, Needs needs) {
  LoneRing lone;
  return quickFactsOf(coordinatesOf(ring), needs, lone);
}

TEST(QuickFactsTest, AreThoseThatALookAtAllOfItFinds) {
  int answered = 0;
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    shapes::Random random(seed);
    const std::size_t n = 3 + random.below(50);
    const Points ring = random.chance(0.5) ? shapes::smoothStar(n, seed) : shapes::cloud(random, n);
    const std::optional<Facts> found = quick(ring, table::quickNeeds);
    if (!found) continue;
    ++answered;
    const std::vector<qcRings> parts{{ring, {}}};
    const Facts facts = about({parts}, table::quickNeeds);
    const std::string what = "seed " + std::to_string(seed);
    EXPECT_EQ(found->vertices, facts.vertices) << what;
    EXPECT_EQ(found->extent->low, facts.extent->low) << what;
    EXPECT_EQ(found->extent->high, facts.extent->high) << what;
    EXPECT_EQ(found->length, facts.length) << what;
    EXPECT_EQ(found->contact, facts.contact) << what;
    EXPECT_EQ(found->area, facts.area) << what;
    EXPECT_EQ(found->centre, facts.centre) << what;
    EXPECT_EQ(found->solidArea, facts.solidArea) << what;
  }
  EXPECT_GT(answered, 30);
}

TEST(QuickFactsTest, AreNotThereForARingThatCrossesItself) {
  EXPECT_EQ(quick(bowTie, table::eFilled), std::nullopt);
}

TEST(QuickFactsTest, AreNotThereForNumbersThatAreNotFinite) {
  EXPECT_EQ(quick({{0, 0}, {std::nan(""), 1}, {1, 1}}, table::eFilled), std::nullopt);
}

// The extent's number would be the first of several zeros, whose signs may differ.
TEST(QuickFactsTest, OfAnExtentThatEndsAtZeroAreNotThere) {
  const Points atZero{{0, 1}, {4, 1}, {4, 4}};
  EXPECT_EQ(quick(atZero, table::eFilled | table::eExtent), std::nullopt);
  EXPECT_TRUE(quick(atZero, table::eFilled).has_value());
  EXPECT_TRUE(quick(smallSquare[0].outline, table::eFilled | table::eExtent).has_value());
}

}  // namespace
