// SPDX-License-Identifier: MIT
//
// Queries of points, segments and contours against the region's boundaries.

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <unordered_map>
#include <unordered_set>

#include <cntr/compute/containment.h>
#include <cntr/compute/evenodd.h>
#include <cntr/index/policy.h>
#include <cntr/model/contourcache.h>
#include <cntr/model/manypoints.h>
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
  /// Also false while a hole is being examined.
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
  if (!cntr::index::wantsContainmentGrid(points().size(), containmentWork_)) return nullptr;
  qc_ContourCache& known = cache();
  if (known.hasNoContainmentGrid) return nullptr;
  if (!ContainmentGrid::isPossible(points(), bounds())) {
    known.hasNoContainmentGrid = true;
    return nullptr;
  }
  known.containmentGrid = std::make_shared<const ContainmentGrid>(
      points(), bounds(), encloseCircle(qcContourDefs::eFromFirstVertex).radius());
  return known.containmentGrid.get();
}

// Only regions make a grid, and they are closed: there is no need to compare the closed flag.
const cntr::index::ContainmentGrid* qcRegion::knownContainmentGrid() const {
  return cache_ ? cache_->containmentGrid.get() : nullptr;
}

const cntr::index::ContainmentGrid* qcRegion::gridToAsk() const {
  const cntr::index::ContainmentGrid* const known = knownContainmentGrid();
  if (known != nullptr) return known;
  qcContour::checkEmptyContour();
  return containmentGrid();
}

bool qcRegion::isInsideBoundary(const qcVector<2>& p) const {
  using Answer = cntr::index::ContainmentGrid::Answer;
  const cntr::index::ContainmentGrid* const grid = gridToAsk();
  if (grid == nullptr) return isInsideWithoutGrid(p);
  const Answer answer = grid->locate(points(), p);
  if (answer == Answer::eUnknown) return insideCount(p, false) % 2 != 0;
  ++cache_->waysTaken.grid;
  return answer == Answer::eInside;
}

void qcRegion::areInsideBoundary(std::span<const qcVector<2>> asked,
                                 std::span<bool> answers) const {
  using Answer = cntr::index::ContainmentGrid::Answer;
  const cntr::index::ContainmentGrid* grid = gridToAsk();
  std::size_t i = 0;
  for (; grid == nullptr && i < asked.size(); ++i) {
    answers[i] = isInsideWithoutGrid(asked[i]);
    grid = containmentGrid();
  }
  const std::span<const qcVector<2>> vertices = points();
  std::size_t answered = 0;
  for (; i < asked.size(); ++i) {
    const Answer answer = grid->locate(vertices, asked[i]);
    const bool isKnown = answer != Answer::eUnknown;
    answers[i] = isKnown ? answer == Answer::eInside : insideCount(asked[i], false) % 2 != 0;
    answered += isKnown ? 1 : 0;
  }
  if (answered > 0) cache_->waysTaken.grid += answered;
}

bool qcRegion::isInsideWithoutGrid(const qcVector<2>& p) const {
  using Answer = cntr::index::ContainmentGrid::Answer;
  const std::size_t n = points().size();
  cntr::compute::Parity parity;
  if (cntr::index::remembersExtents(containmentWork_)) {
    qc_ContourCache& known = cache();
    if (!known.extents) known.extents = cntr::compute::extentsOf(points());
    const bool hasIndex = known.edgeIndex != nullptr;
    parity = cntr::index::wantsEdgeIndexForParity(n, containmentWork_, hasIndex)
                 ? cntr::compute::evenOdd(points(), *edgeIndex(), *known.extents, p)
                 : cntr::compute::evenOdd(points(), *known.extents, p);
  } else {
    parity = cntr::compute::evenOdd(points(), cntr::compute::extentsOf(points()), p);
    parity.work += n;
  }
  addContainmentWork(parity.work);
  if (parity.answer == Answer::eUnknown) return insideCount(p, false) % 2 != 0;
  if (cache_) ++cache_->waysTaken.parity;
  return parity.answer == Answer::eInside;
}

void qcRegion::addContainmentWork(std::size_t work) const {
  constexpr std::size_t most = std::numeric_limits<std::uint32_t>::max();
  containmentWork_ = static_cast<std::uint32_t>(std::min(most, containmentWork_ + work));
}

bool qcRegion::isInHole(const qcVector<2>& p) const {
  std::optional<NestedHoles> nested;
  for (const auto& hole : holes_) {
    if (!hole->isInsideBoundary(p)) continue;
    if (hole->holes_.empty()) return true;
    if (!nested) nested.emplace(p);
    if (nested->contains(*hole)) return true;
  }
  return false;
}

bool qcRegion::inside(const qcVector<2>& p, bool considerHoles) const {
  return isInsideBoundary(p) && !(considerHoles && isInHole(p));
}

void qcRegion::inside(std::span<const qcVector<2>> points, bool considerHoles,
                      std::span<bool> answers) const {
  cntr::model::checkSameSize(points.size(), answers.size());
  if (points.empty()) return;
  areInsideBoundary(points, answers);
  if (!considerHoles || holes_.empty()) return;
  for (std::size_t i = 0; i < points.size(); ++i) {
    answers[i] = answers[i] && !isInHole(points[i]);
  }
}

double qcRegion::distToPoint(const qcVector<2>& p, bool vertexOnly, bool considerHoles,
                             bool zeroIfInside) const {
  if (zeroIfInside && inside(p, considerHoles)) return 0.0;
  return p.distance(closestPoint(p, vertexOnly, considerHoles));
}

void qcRegion::distToPoint(std::span<const qcVector<2>> points, bool vertexOnly, bool considerHoles,
                           bool zeroIfInside, std::span<double> answers) const {
  cntr::model::checkSameSize(points.size(), answers.size());
  const auto distances = [&](std::span<const qcVector<2>> asked, std::span<double> found) {
    std::vector<qcVector<2>> nearest(asked.size());
    closestPoint(asked, vertexOnly, considerHoles, nearest);
    for (std::size_t i = 0; i < asked.size(); ++i) found[i] = asked[i].distance(nearest[i]);
  };
  if (!zeroIfInside) return distances(points, answers);
  const auto isInside = std::make_unique<bool[]>(points.size());
  inside(points, considerHoles, {isInside.get(), points.size()});
  std::vector<qcVector<2>> outside;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!isInside[i]) outside.push_back(points[i]);
  }
  std::vector<double> ofOutside(outside.size());
  distances(outside, ofOutside);
  auto next = ofOutside.begin();
  for (std::size_t i = 0; i < points.size(); ++i) answers[i] = isInside[i] ? 0.0 : *next++;
}

void qcRegion::closestPoint(std::span<const qcVector<2>> points, bool vertexOnly,
                            bool considerHoles, std::span<qcVector<2>> answers) const {
  qcContour::closestPoint(points, vertexOnly, answers);
  if (points.empty() || (vertexOnly && !considerHoles)) return;
  std::vector<qcVector<2>> ofHole(holes_.empty() ? 0 : points.size());
  for (const auto& hole : holes_) {
    hole->qcContour::closestPoint(points, vertexOnly, ofHole);
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (points[i].distance(ofHole[i]) < points[i].distance(answers[i])) answers[i] = ofHole[i];
    }
  }
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
  return cntr::compute::crosses(crossingTarget(), {other.path(), {}, nullptr});
}
