// SPDX-License-Identifier: MIT
//
// Points, segments and contours against the region's boundaries.

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include <cntr/compute/containment.h>
#include <cntr/index/policy.h>
#include <cntr/model/contourcache.h>
#include <cntr/region.h>

namespace {

/// Whether a point lies in holes that have holes themselves. Each hole is decided once, however
/// many handles lead to it, and without recursion: otherwise a hundred shared holes could take
/// forever, and a long chain of holes could overflow the stack.
class NestedHoles {
 public:
  explicit NestedHoles(const qcVector<2>& p) : p_(p) {}

  /// True when the hole holds the point and none of its own holes does.
  /// REQUIRES: the point is inside the hole's boundary.
  bool contains(const qcRegion& hole) {
    if (!holds_.try_emplace(&hole, false).second) return holds_[&hole];
    path_.assign(1, {&hole, 0});
    while (!path_.empty()) step();
    return holds_[&hole];
  }

 private:
  struct Level {
    const qcRegion* region;
    std::size_t nextHole;
  };

  void step() {
    Level& innermost = path_.back();
    if (innermost.nextHole == innermost.region->holes().size()) {
      holds_[innermost.region] = true;
      path_.pop_back();
      if (!path_.empty()) path_.pop_back();  // the region around it does not hold the point
      return;
    }
    const qcRegion& hole = *innermost.region->holes()[innermost.nextHole++];
    const auto [known, isNew] = holds_.try_emplace(&hole, false);
    if (known->second) {
      path_.pop_back();
    } else if (isNew && hole.inside(p_, false)) {
      path_.push_back({&hole, 0});
    }
  }

  qcVector<2> p_;
  /// False, too, while a hole is being looked at.
  std::unordered_map<const qcRegion*, bool> holds_;
  std::vector<Level> path_;
};

}  // namespace

long qcRegion::insideCount(const qcVector<2>& p, bool bothDirections) const {
  qcContour::checkEmptyContour();
  const double reach = 2.0 * encloseCircle(qcContourDefs::eFromFirstVertex).radius();
  ++cache().waysTaken.ray;
  return static_cast<long>(cntr::compute::rayCrossings(crossingTarget(), reach, p, bothDirections));
}

const cntr::index::ContainmentGrid* qcRegion::containmentGrid() const {
  using cntr::index::ContainmentGrid;
  qc_ContourCache& known = cache();
  if (known.hasNoContainmentGrid ||
      !cntr::index::wantsContainmentGrid(points().size(), ++known.containmentQueries)) {
    return nullptr;
  }
  if (!ContainmentGrid::isPossible(points(), bounds())) {
    known.hasNoContainmentGrid = true;
    return nullptr;
  }
  known.containmentGrid = std::make_shared<const ContainmentGrid>(
      points(), bounds(), encloseCircle(qcContourDefs::eFromFirstVertex).radius());
  return known.containmentGrid.get();
}

const cntr::index::ContainmentGrid* qcRegion::knownContainmentGrid() const {
  const bool isValid = cache_ && cache_->ofClosed == isClosed();
  return isValid ? cache_->containmentGrid.get() : nullptr;
}

bool qcRegion::isInsideBoundary(const qcVector<2>& p) const {
  using Answer = cntr::index::ContainmentGrid::Answer;
  const cntr::index::ContainmentGrid* grid = knownContainmentGrid();
  if (grid == nullptr) {
    qcContour::checkEmptyContour();
    grid = containmentGrid();
  }
  if (grid != nullptr) {
    const Answer answer = grid->locate(points(), p);
    if (answer != Answer::eUnknown) {
      ++cache_->waysTaken.grid;
      return answer == Answer::eInside;
    }
  }
  return insideCount(p, false) % 2 != 0;
}

bool qcRegion::inside(const qcVector<2>& p, bool considerHoles) const {
  if (!isInsideBoundary(p)) return false;
  if (!considerHoles) return true;
  std::optional<NestedHoles> nested;
  for (const auto& hole : holes_) {
    if (!hole->isInsideBoundary(p)) continue;
    if (hole->holes_.empty()) return false;
    if (!nested) nested.emplace(p);
    if (nested->contains(*hole)) return false;
  }
  return true;
}

double qcRegion::distToPoint(const qcVector<2>& p, bool vertexOnly, bool considerHoles,
                             bool zeroIfInside) const {
  if (zeroIfInside && inside(p, considerHoles)) return 0.0;
  return p.distance(closestPoint(p, vertexOnly, considerHoles));
}

qcVector<2> qcRegion::closestPoint(const qcVector<2>& p, bool vertexOnly,
                                   bool considerHoles) const {
  if (vertexOnly) {
    long holeIndex = -1;
    const auto vertex = static_cast<std::size_t>(closestVertexIndex(p, considerHoles, holeIndex));
    return holeIndex < 0 ? points()[vertex]
                         : holes_[static_cast<std::size_t>(holeIndex)]->points()[vertex];
  }
  qcVector<2> nearest = qcContour::closestPoint(p, false);
  double best = p.distance(nearest);
  for (const auto& hole : holes_) {
    const qcVector<2> candidate = hole->qcContour::closestPoint(p, false);
    const double distance = p.distance(candidate);
    if (distance < best) {
      best = distance;
      nearest = candidate;
    }
  }
  return nearest;
}

long qcRegion::closestVertexIndex(const qcVector<2>& p, bool considerHoles, long& holeIndex) const {
  holeIndex = -1;
  long nearest = qcContour::closestVertexIndex(p);
  if (!considerHoles) return nearest;
  double best = p.distance(points()[static_cast<std::size_t>(nearest)]);
  for (std::size_t k = 0; k < holes_.size(); ++k) {
    const long candidate = holes_[k]->qcContour::closestVertexIndex(p);
    const double distance = p.distance(holes_[k]->points()[static_cast<std::size_t>(candidate)]);
    if (distance < best) {
      best = distance;
      holeIndex = static_cast<long>(k);
      nearest = candidate;
    }
  }
  return nearest;
}

std::vector<qcVector<2>> qcRegion::intersections(const qcLineSeg& segment,
                                                 bool countEndpointTouches,
                                                 bool considerHoles) const {
  std::vector<qcVector<2>> points = qcContour::intersections(segment, countEndpointTouches);
  if (!considerHoles) return points;
  for (const auto& hole : holes_) {
    const auto more = hole->qcContour::intersections(segment, countEndpointTouches);
    points.insert(points.end(), more.begin(), more.end());
  }
  return points;
}

std::vector<qcVector<2>> qcRegion::intersections(const qcContour& other, bool considerHoles) const {
  std::vector<qcVector<2>> points = qcContour::intersections(other);
  if (!considerHoles) return points;
  for (const auto& hole : holes_) {
    const auto more = hole->qcContour::intersections(other);
    points.insert(points.end(), more.begin(), more.end());
  }
  return points;
}

std::optional<cntr::plane::Box> qcRegion::boxOfBoundary() const {
  const auto isFinite = [](const qcVector<2>& p) {
    return std::isfinite(p.x()) && std::isfinite(p.y());
  };
  if (points().size() < 2 || !std::all_of(points().begin(), points().end(), isFinite)) return {};
  return bounds();
}

std::optional<cntr::plane::Box> qcRegion::boxOfBoundaries() const {
  std::optional<cntr::plane::Box> box = boxOfBoundary();
  std::vector<const qcRegion*> toVisit{this};
  std::unordered_set<const qcRegion*> met;
  while (box && !toVisit.empty()) {
    const qcRegion& region = *toVisit.back();
    toVisit.pop_back();
    for (const auto& hole : region.holes_) {
      if (hole && !met.insert(hole.get()).second) continue;
      const auto holeBox = hole ? hole->boxOfBoundary() : std::nullopt;
      if (!holeBox) return {};
      box->add(*holeBox);
      if (!hole->holes_.empty()) toVisit.push_back(hole.get());
    }
  }
  return box;
}

bool qcRegion::crosses(const qcRegion& other) const {
  qcContour::checkEmptyContour();
  return cntr::compute::crosses(crossingTarget(), other.path());
}
