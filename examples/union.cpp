// SPDX-License-Identifier: MIT
//
// The union of a region set: its regions become outlines with holes as plain values, which
// libcntrsets unites, and the result becomes regions again. docs/union.md says when this is needed.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <vector>

#include <cntr/regionst.h>
#include <cntrsets/sets.h>

namespace {

using Region = qcPtrHandle_const<qcRegion>;

constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;

qcRings ringsOf(const qcRegion& region) {
  qcRings rings{region.points(), {}};
  for (const Region& hole : region.holes()) rings.holes.push_back(hole->points());
  return rings;
}

/// The union of the parts of a feature is its filled set by the nonzero rule.
qcRegionSet unionOf(const qcRegionSet& set) {
  std::vector<qcRings> parts;
  for (const Region& region : set.regions()) parts.push_back(ringsOf(*region));
  std::vector<Region> regions;
  for (const qcRings& part : qf_MakeValid(parts, qcPolygon::eNonZero)) {
    regions.emplace_back(new qcRegion(qf_ToRegion(part)));
  }
  return {regions, asGiven};
}

Region rectangle(double x, double y, double width, double height) {
  const std::vector<qcVector<2>> corners{
      {x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
  return Region(new qcRegion(corners, asGiven));
}

}  // namespace

int main() try {
  // Four bars that overlap at the corners and leave an opening in the middle.
  const std::vector<Region> bars{rectangle(0, 0, 10, 2), rectangle(0, 8, 10, 2),
                                 rectangle(0, 0, 2, 10), rectangle(8, 0, 2, 10)};
  const qcRegionSet frame = unionOf(qcRegionSet(bars, asGiven));
  for (const Region& region : frame.regions()) {
    std::cout << "area " << region->area(true) << ", holes: " << region->holes().size() << '\n';
  }
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
