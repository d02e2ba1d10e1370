// SPDX-License-Identifier: MIT
//
// The library is asked first; exact winding numbers correct its answer. After many questions a grid
// answers for both.

#include <cntrsets/inside.h>

#include <algorithm>
#include <cstddef>
#include <optional>

#include <cntr/contourdefs.h>
#include <cntr/plane/box.h>
#include <cntr/plane/tolerances.h>
#include <cntrsets/faces/filledset.h>
#include <cntrsets/filled.h>
#include <cntrsets/operations/featurewinding.h>
#include <cntrsets/operations/insidegrid.h>
#include <cntrsets/operations/insideways.h>
#include <cntrsets/operations/policy.h>
#include <cntrsets/operations/ringlist.h>

namespace {

using cntr::plane::Box;
using cntr::sets::InsideGrid;
using cntr::sets::Point;
using cntr::sets::RingList;
using cntr::sets::Scaling;
using Ring = std::vector<Point>;

constexpr std::size_t fewestInRing = 3;

}  // namespace

// In a named namespace, because they are parts of a public class.
namespace cntr::sets {

/// One part as regions of the library; the holes are separate, since a region refuses holes that
/// touch it.
class PartRegions {
 public:
  explicit PartRegions(const qcRings& part) : outline_(regionOf(part.outline)) {
    for (const Point& p : part.outline) box_.add(p);
    for (const Ring& hole : part.holes) holes_.push_back(regionOf(hole));
  }

  bool holds(const Point& p) const {
    return contains(box_, p) && outline_.inside(p, false) &&
           std::none_of(holes_.begin(), holes_.end(),
                        [&p](const qcRegion& hole) { return hole.inside(p, false); });
  }

  /// Whether an edge is so near that the library's answer stands.
  bool isNear(const Point& p) const {
    return isNear(outline_, p) ||
           std::any_of(holes_.begin(), holes_.end(),
                       [&p](const qcRegion& hole) { return isNear(hole, p); });
  }

 private:
  static qcRegion regionOf(const Ring& ring) {
    return {ring, qcContourDefs::eNoIntersectionRepair};
  }
  static bool isNear(const qcContour& ring, const Point& p) {
    return !(ring.distToPoint(p, false) > cntr::plane::touchDistance);
  }

  Box box_;
  qcRegion outline_;
  std::vector<qcRegion> holes_;
};

/// Decides about points one by one.
class AskedFeature {
 public:
  AskedFeature(const std::vector<qcRings>& feature, const Scaling& scaling)
      : winding_(feature, scaling) {
    const qcRingContact contact = qf_RingContact(feature);
    if (contact == qcRingContact::eCrosses || contact == qcRingContact::eOverlaps) return;
    for (const qcRings& part : feature) regions_.emplace_back(part);
  }

  void sortIntoSlabs() { winding_.sortIntoSlabs(); }
  bool isInSlabs() const noexcept { return winding_.isInSlabs(); }

  /// For rings that bound their area simply, this agrees with parity.
  bool isFilled(const Point& p) const { return winding_.partAround(p).has_value(); }

  bool holds(const Point& p) const {
    const std::optional<std::size_t> part = winding_.partAround(p);
    if (regions_.empty()) return part.has_value();
    if (part && regions_[*part].holds(p)) return true;
    return std::any_of(regions_.begin(), regions_.end(),
                       [&p](const PartRegions& regions) { return regions.holds(p); }) &&
           (part || std::any_of(regions_.begin(), regions_.end(),
                                [&p](const PartRegions& regions) { return regions.isNear(p); }));
  }

 private:
  FeatureWinding winding_;
  /// One for each part, or none at all if rings cross or overlap.
  std::vector<PartRegions> regions_;
};

}  // namespace cntr::sets

namespace {

/// The feature without the rings that bound nothing.
std::vector<qcRings> withoutScraps(const std::vector<qcRings>& feature) {
  std::vector<qcRings> kept;
  for (const qcRings& part : feature) {
    if (part.outline.size() < fewestInRing) continue;
    kept.push_back({part.outline, {}});
    std::copy_if(part.holes.begin(), part.holes.end(), std::back_inserter(kept.back().holes),
                 [](const Ring& hole) { return hole.size() >= fewestInRing; });
  }
  return kept;
}

}  // namespace

struct qcInside::State {
  explicit State(const std::vector<qcRings>& feature)
      : scaling(cntr::sets::largestCoordinate(RingList(feature).rings())),
        rings(withoutScraps(feature)) {
    for (const qcRings& part : rings) {
      vertices += part.outline.size();
      for (const Point& p : part.outline) box.add(p);
      for (const Ring& hole : part.holes) vertices += hole.size();
    }
  }

  bool contains(const Point& p) {
    if (!cntr::plane::contains(box, p)) return false;
    if (grid) {
      const InsideGrid::Answer answer = grid->at(p);
      if (answer != InsideGrid::Answer::eUnknown) {
        ++ways.grid;
        return answer == InsideGrid::Answer::eInside;
      }
    }
    return containsByRings(p);
  }

  bool containsByRings(const Point& p) {
    if (!asked) asked.emplace(rings, scaling);
    ++questions;
    makeWhatPays();
    ++(asked->isInSlabs() ? ways.slabs : ways.edges);
    return asked->holds(p);
  }

  /// What could not be made because memory ran out is tried again for the next point.
  void makeWhatPays() {
    if (!slabsAreKnown && cntr::sets::wantsSlabs(questions)) {
      asked->sortIntoSlabs();
      slabsAreKnown = true;
    }
    if (!gridIsKnown && cntr::sets::wantsInsideGrid(vertices, questions)) {
      if (InsideGrid::isPossible(rings, box))
        grid.emplace(rings, box, [this](const Point& point) { return asked->isFilled(point); });
      gridIsKnown = true;
    }
  }

  Scaling scaling;
  /// The rings without those that bound nothing.
  std::vector<qcRings> rings;
  std::size_t vertices = 0;
  /// The box of all outlines.
  Box box;
  /// The number of questions that neither box nor grid could answer.
  std::size_t questions = 0;
  std::optional<cntr::sets::AskedFeature> asked;
  /// Whether what follows has been made or has proved impossible.
  bool slabsAreKnown = false;
  bool gridIsKnown = false;
  std::optional<InsideGrid> grid;
  qc_InsideWays ways;
};

const qc_InsideWays& qc_InsideWays::of(const qcInside& inside) { return inside.state_->ways; }

qcInside::qcInside(const std::vector<qcRings>& feature)
    : state_(std::make_unique<State>(feature)) {}

qcInside::qcInside(qcInside&& other) noexcept = default;
qcInside& qcInside::operator=(qcInside&& other) noexcept = default;
qcInside::~qcInside() = default;

bool qcInside::contains(const qcVector<2>& p) const { return state_->contains(p); }

void qcInside::contains(std::span<const qcVector<2>> points, std::span<bool> answers) const {
  if (points.size() != answers.size())
    throw qcContourDefs::BadParams(L"as many answers as points are needed");
  for (std::size_t i = 0; i < points.size(); ++i) answers[i] = state_->contains(points[i]);
}

std::vector<bool> qf_Inside(const std::vector<qcRings>& feature,
                            std::span<const qcVector<2>> points) {
  const qcInside inside(feature);
  std::vector<bool> answers;
  answers.reserve(points.size());
  for (const qcVector<2>& p : points) answers.push_back(inside.contains(p));
  return answers;
}
