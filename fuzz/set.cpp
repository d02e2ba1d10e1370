// SPDX-License-Identifier: MIT
//
// Fuzz target: a set of regions and a sequence of questions, additions and repairs, compared with
// the plain form after each.

#include <algorithm>

#include <testing/twin/region_twin.h>

#include "check.h"
#include "draw.h"
#include "questions.h"

namespace {

using namespace fuzz;

constexpr auto keep = qcContourDefs::eNoIntersectionRepair;
constexpr std::size_t mostVertices = 24;

/// A set in both forms.
struct Subject {
  explicit Subject(const plain::Regions& regions) : expected(regions), made(twin::make(regions)) {}

  void add(const plain::Region& region) {
    expected.push_back(region);
    made.add(twin::make(region), keep);
  }

  /// Repairs the set into itself. With too few vertices it throws once, only in the library.
  void repair(bool hull) {
    const bool canBeAsked =
        std::all_of(expected.begin(), expected.end(),
                    [](const plain::Region& region) { return region.points.size() > 1; });
    if (!canBeAsked) return;
    const auto repaired = twin::outcome(
        [&] { return hull ? plain::outerHull(expected) : plain::regularize(expected); });
    const auto tried = twin::outcome([&] {
      if (hull) {
        made.outerHull(made);
      } else {
        made.regularize(made);
      }
      return true;
    });
    require(repaired.index() == tried.index(), "repair of a set into itself throws or not");
    if (repaired.index() == 0) expected = std::get<0>(repaired);
  }

  plain::Regions expected;
  qcRegionSet made;
};

void changeOrAsk(Input& input, Patience& patience, Subject& subject) {
  const std::size_t n = countVertices(subject.expected);
  switch (input.below(12)) {
    case 0:
      return subject.add(drawRegion(input, mostVertices, 1));
    case 1: {
      const bool hull = input.flag();
      if (patience.allows(10 * n * n)) subject.repair(hull);
      return;
    }
    case 2: {
      const qcRegionSet copy(subject.made);
      require(copy == subject.made || n > 0, "an empty set equals its copy");
      subject.made.regions(twin::Handles(), keep);
      subject.made = copy;
      return;
    }
    case 3:
      require(twin::agree([&] { return twin::make(subject.expected).centerOfMass(true); },
                          [&] { return plain::centerOfMass(subject.expected, true); }),
              "centerOfMass with holes of a set");
      return;
    default:
      return askSet(input, patience, subject.made, subject.expected);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input({data, size});
  Patience patience(100000);
  Subject subject(drawRegions(input, 20, mostVertices));
  while (!input.isEmpty() && !patience.isOver()) {
    changeOrAsk(input, patience, subject);
    require(twin::isSame(twin::plainOf(subject.made), subject.expected), "the set itself");
  }
  return 0;
}
