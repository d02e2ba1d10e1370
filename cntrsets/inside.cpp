// SPDX-License-Identifier: MIT
//
// The library is asked first; exact winding numbers correct it.

#include <cntrsets/inside.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

#include <cntr/plane/box.h>
#include <cntrsets/exact/predicates.h>
#include <cntrsets/faces/filledset.h>
#include <cntrsets/filled.h>
#include <cntrsets/ringlist.h>

namespace {

using cntr::plane::Box;
using cntr::sets::Point;
using cntr::sets::RingList;
using cntr::sets::Scaling;
using Ring = std::vector<Point>;

constexpr std::size_t fewestInRing = 3;

/// Nearer than this to an edge the library has the last word.
constexpr double nearEdge = 1e-6;

/// How often one ring winds around points, exactly. Edges are sorted into slabs by their heights,
/// so that few of them are looked at.
class RingWinding {
 public:
  /// For about so many points.
  RingWinding(const Ring& ring, const Scaling& scaling, std::size_t points) {
    ring_.reserve(ring.size());
    for (const Point& p : ring) ring_.push_back(scaling.scaled(p));
    const auto [low, high] = std::minmax_element(
        ring_.begin(), ring_.end(), [](const Point& a, const Point& b) { return a.y() < b.y(); });
    low_ = low->y();
    height_ = high->y() - low_;
    slabs_ = std::min(points, ring_.size());
    while (slabs_ > 1 && entries() > mostEntriesPerEdge * ring_.size()) slabs_ /= 2;
    fill();
  }

  /// Counter-clockwise positive; of a point on an edge that of points just beyond it. REQUIRES: a
  /// scaled point.
  int around(const Point& p) const {
    if (!(p.y() >= low_) || !(p.y() - low_ <= height_)) return 0;
    const std::size_t slab = slabOf(p.y());
    int times = 0;
    for (std::size_t i = begins_[slab]; i < begins_[slab + 1]; ++i)
      times += passing(from(edges_[i]), to(edges_[i]), p);
    return times;
  }

 private:
  static constexpr std::size_t mostEntriesPerEdge = 4;

  const Point& from(std::size_t edge) const { return ring_[edge]; }
  const Point& to(std::size_t edge) const { return ring_[edge + 1 == ring_.size() ? 0 : edge + 1]; }

  /// 1 for an edge that passes to the right of the point upwards, -1 downwards.
  static int passing(const Point& a, const Point& b, const Point& p) {
    if (a.y() <= p.y()) return b.y() > p.y() && cntr::sets::orientation(a, b, p) > 0 ? 1 : 0;
    return b.y() <= p.y() && cntr::sets::orientation(a, b, p) < 0 ? -1 : 0;
  }

  /// Ascending with y.
  std::size_t slabOf(double y) const {
    if (!(height_ > 0.0)) return 0;
    const double slab = (y - low_) / height_ * static_cast<double>(slabs_);
    return std::min(static_cast<std::size_t>(slab), slabs_ - 1);
  }

  std::size_t lowestSlab(std::size_t edge) const {
    return slabOf(std::min(from(edge).y(), to(edge).y()));
  }
  std::size_t highestSlab(std::size_t edge) const {
    return slabOf(std::max(from(edge).y(), to(edge).y()));
  }

  std::size_t entries() const {
    std::size_t count = 0;
    for (std::size_t i = 0; i < ring_.size(); ++i) count += highestSlab(i) - lowestSlab(i) + 1;
    return count;
  }

  /// Counts the edges of each slab, then puts them in their places.
  void fill() {
    begins_.assign(slabs_ + 1, 0);
    for (std::size_t i = 0; i < ring_.size(); ++i)
      for (std::size_t slab = lowestSlab(i); slab <= highestSlab(i); ++slab) ++begins_[slab + 1];
    std::partial_sum(begins_.begin(), begins_.end(), begins_.begin());
    edges_.resize(begins_.back());
    std::vector<std::size_t> next(begins_.begin(), begins_.end() - 1);
    for (std::size_t i = 0; i < ring_.size(); ++i)
      for (std::size_t slab = lowestSlab(i); slab <= highestSlab(i); ++slab)
        edges_[next[slab]++] = i;
  }

  Ring ring_;
  double low_ = 0.0;
  double height_ = 0.0;
  std::size_t slabs_ = 1;
  /// Where each slab's edges begin in edges_, and behind the last where they end.
  std::vector<std::size_t> begins_;
  std::vector<std::size_t> edges_;
};

/// Exact winding numbers around the rings of one part.
struct PartWinding {
  RingWinding outline;
  std::vector<RingWinding> holes;
};

/// One part as regions of the library, holes apart, since a region refuses holes that touch it.
struct PartRegions {
  qcRegion outline;
  std::vector<qcRegion> holes;

  explicit PartRegions(const qcRings& part) : outline(regionOf(part.outline)) {
    for (const Ring& hole : part.holes) holes.push_back(regionOf(hole));
  }

  bool holds(const Point& p) const {
    return outline.inside(p, false) &&
           std::none_of(holes.begin(), holes.end(),
                        [&p](const qcRegion& hole) { return hole.inside(p, false); });
  }

  bool isNear(const Point& p) const {
    return isNear(outline, p) ||
           std::any_of(holes.begin(), holes.end(),
                       [&p](const qcRegion& hole) { return isNear(hole, p); });
  }

 private:
  static qcRegion regionOf(const Ring& ring) {
    return {ring, qcContourDefs::eNoIntersectionRepair};
  }
  static bool isNear(const qcContour& ring, const Point& p) {
    return !(ring.distToPoint(p, false) > nearEdge);
  }
};

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

/// The numbers of the points in the box of all outlines.
std::vector<std::size_t> pointsInBox(const std::vector<qcRings>& feature,
                                     std::span<const Point> points) {
  Box box;
  for (const qcRings& part : feature)
    for (const Point& p : part.outline) box.add(p);
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (contains(box, points[i])) numbers.push_back(i);
  return numbers;
}

/// Answers about the points of a feature.
class AskedFeature {
 public:
  AskedFeature(const std::vector<qcRings>& feature, const Scaling& scaling, std::size_t points)
      : scaling_(scaling) {
    const qcRingContact contact = qf_RingContact(feature);
    bySets_ = contact == qcRingContact::eCrosses || contact == qcRingContact::eOverlaps;
    for (const qcRings& part : feature) {
      windings_.push_back({{part.outline, scaling, points}, {}});
      for (const Ring& hole : part.holes)
        windings_.back().holes.emplace_back(hole, scaling, points);
      if (!bySets_) regions_.emplace_back(part);
    }
  }

  bool holds(const Point& p) const {
    if (bySets_) return isFilled(scaling_.scaled(p));
    return std::any_of(regions_.begin(), regions_.end(),
                       [&p](const PartRegions& part) { return part.holds(p); }) &&
           (isFilled(scaling_.scaled(p)) ||
            std::any_of(regions_.begin(), regions_.end(),
                        [&p](const PartRegions& part) { return part.isNear(p); }));
  }

 private:
  /// Of rings that bound their area simply this says the same as parity.
  bool isFilled(const Point& scaled) const {
    return std::any_of(windings_.begin(), windings_.end(), [&scaled](const PartWinding& part) {
      return part.outline.around(scaled) != 0 &&
             std::all_of(part.holes.begin(), part.holes.end(),
                         [&scaled](const RingWinding& hole) { return hole.around(scaled) == 0; });
    });
  }

  const Scaling& scaling_;
  bool bySets_ = false;
  std::vector<PartWinding> windings_;
  std::vector<PartRegions> regions_;
};

}  // namespace

std::vector<bool> qf_Inside(const std::vector<qcRings>& feature,
                            std::span<const qcVector<2>> points) {
  const std::vector<qcRings> rings = withoutScraps(feature);
  const Scaling scaling(cntr::sets::largestCoordinate(RingList(feature).rings()));
  std::vector<bool> inside(points.size(), false);
  const std::vector<std::size_t> candidates = pointsInBox(rings, points);
  if (candidates.empty()) return inside;
  const AskedFeature asked(rings, scaling, candidates.size());
  for (const std::size_t i : candidates) inside[i] = asked.holds(points[i]);
  return inside;
}
