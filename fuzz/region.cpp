// SPDX-License-Identifier: MIT
//
// Fuzz target: a region, its holes and a sequence of questions and changes, compared with the plain
// form after each.

#include <testing/twin/region_twin.h>

#include "check.h"
#include "draw.h"
#include "questions.h"

namespace {

using namespace fuzz;

constexpr std::size_t mostVertices = 250;

/// A region in both forms.
struct Subject {
  explicit Subject(const plain::Region& region) : expected(region), made(twin::make(region)) {}

  /// After a change, the first answer about the centre of mass with holes is the only one.
  void askCenterWithHoles() {
    const bool isFirst = expected.holes.empty() || !centerWasGiven;
    require(
        twin::agree([&] { return made->centerOfMass(true); },
                    [&] { return isFirst ? plain::centerOfMass(expected, true) : plain::Point(); }),
        "centerOfMass with holes");
    const bool hasAnswer =
        twin::outcome([&] { return plain::centerOfMass(expected, true); }).index() == 0;
    centerWasGiven = centerWasGiven || (hasAnswer && !expected.holes.empty());
  }

  void replaceVertices(Input& input) {
    expected.points = drawVertices(input, mostVertices);
    made->points(expected.points);
    centerWasGiven = false;
  }

  void replaceHoles(Input& input) {
    const plain::Region given{expected.points, {drawRegion(input, 40, 1)}};
    const auto accepted = [&] {
      if (!plain::intersections(expected, plain::boundary(given.holes[0]), false).empty()) {
        throw plain::Error{plain::Error::badParams, "holes cannot intersect region"};
      }
      expected.holes = given.holes;
      return true;
    };
    const auto set = [&] {
      made->holes(std::vector<twin::Handle>{twin::make(given.holes[0])});
      return true;
    };
    require(twin::agree(set, accepted), "holes");
    centerWasGiven = false;
  }

  /// Repairs the region into itself.
  void repair(bool hull) {
    const auto repaired = twin::outcome(
        [&] { return hull ? plain::outerHull(expected) : plain::regularize(expected); });
    const auto tried = twin::outcome([&] {
      if (hull) {
        made->outerHull(*made);
      } else {
        made->regularize(*made);
      }
      return true;
    });
    require(repaired.index() == tried.index(), "repair of a region into itself throws or not");
    if (repaired.index() == 1) return;
    if (plain::isSelfIntersecting(plain::boundary(expected))) centerWasGiven = false;
    expected = std::get<0>(repaired);
  }

  plain::Region expected;
  qcPtrHandle<qcRegion> made;
  bool centerWasGiven = false;
};

void changeOrAsk(Input& input, Patience& patience, Subject& subject) {
  const std::size_t n = countVertices(subject.expected);
  switch (input.below(16)) {
    case 0:
      return subject.askCenterWithHoles();
    case 1:
      return subject.replaceVertices(input);
    case 2:
      if (patience.allows(41 * n)) subject.replaceHoles(input);
      return;
    case 3: {
      const bool hull = input.flag();
      if (patience.allows(10 * n * n)) subject.repair(hull);
      return;
    }
    case 4:
      subject.made = qcPtrHandle<qcRegion>(new qcRegion(*subject.made));
      return;
    case 5: {
      qcContour open(subject.expected.points, false, 0);
      return askContour(input, patience, open, {subject.expected.points, false});
    }
    default:
      return askRegion(input, patience, *subject.made, subject.expected);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input({data, size});
  Patience patience(100000);
  Subject subject(drawRegion(input, mostVertices, 2));
  while (!input.isEmpty() && !patience.isOver()) {
    changeOrAsk(input, patience, subject);
    require(twin::isSame(twin::plainOf(*subject.made), subject.expected), "the region itself");
  }
  return 0;
}
