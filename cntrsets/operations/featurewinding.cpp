// SPDX-License-Identifier: MIT

#include <cntrsets/operations/featurewinding.h>

#include <algorithm>
#include <numeric>
#include <utility>

#include <cntrsets/exact/predicates.h>

namespace cntr::sets {

namespace {

constexpr std::size_t mostEntriesPerEdge = 4;

/// 1 for an edge that passes upwards on the right of the point, -1 for one that passes downwards.
int passing(const Point& a, const Point& b, const Point& p) {
  if (a.y() <= p.y()) return b.y() > p.y() && orientation(a, b, p) > 0 ? 1 : 0;
  return b.y() <= p.y() && orientation(a, b, p) < 0 ? -1 : 0;
}

}  // namespace

FeatureWinding::FeatureWinding(const std::vector<qcRings>& feature, const Scaling& scaling)
    : scaling_(scaling) {
  for (std::size_t part = 0; part < feature.size(); ++part) {
    add(feature[part].outline, {part, false});
    for (const std::vector<Point>& hole : feature[part].holes) add(hole, {part, true});
  }
  begins_ = {0, edges_.size()};
  if (vertices_.empty()) return;
  const auto isLower = [](const Point& a, const Point& b) { return a.y() < b.y(); };
  const auto [low, high] = std::minmax_element(vertices_.begin(), vertices_.end(), isLower);
  low_ = low->y();
  height_ = high->y() - low_;
}

void FeatureWinding::add(const std::vector<Point>& ring, Role role) {
  const auto number = static_cast<std::uint32_t>(roles_.size());
  const std::size_t first = vertices_.size();
  for (const Point& p : ring) {
    edges_.push_back({static_cast<std::uint32_t>(vertices_.size()), number});
    vertices_.push_back(scaling_.scaled(p));
  }
  vertices_.emplace_back(vertices_[first]);
  roles_.push_back(role);
}

void FeatureWinding::sortIntoSlabs() {
  if (isInSlabs()) return;
  std::size_t slabs = edges_.size();
  while (slabs > 1 && entries(slabs) > mostEntriesPerEdge * edges_.size()) slabs /= 2;
  if (slabs > 1) place(slabs);
}

/// Ascending with y.
std::size_t FeatureWinding::slabOf(double y, std::size_t slabs) const {
  if (!(height_ > 0.0)) return 0;
  const double slab = (y - low_) / height_ * static_cast<double>(slabs);
  return std::min(static_cast<std::size_t>(slab), slabs - 1);
}

std::size_t FeatureWinding::lowestSlab(const Edge& edge, std::size_t slabs) const {
  return slabOf(std::min(vertices_[edge.from].y(), vertices_[edge.from + 1].y()), slabs);
}

std::size_t FeatureWinding::highestSlab(const Edge& edge, std::size_t slabs) const {
  return slabOf(std::max(vertices_[edge.from].y(), vertices_[edge.from + 1].y()), slabs);
}

std::size_t FeatureWinding::entries(std::size_t slabs) const {
  std::size_t count = 0;
  for (const Edge& edge : edges_) count += highestSlab(edge, slabs) - lowestSlab(edge, slabs) + 1;
  return count;
}

/// Counts the edges of each slab, then puts them in their places.
void FeatureWinding::place(std::size_t slabs) {
  std::vector<std::size_t> begins(slabs + 1, 0);
  for (const Edge& edge : edges_)
    for (std::size_t slab = lowestSlab(edge, slabs); slab <= highestSlab(edge, slabs); ++slab)
      ++begins[slab + 1];
  std::partial_sum(begins.begin(), begins.end(), begins.begin());
  std::vector<Edge> placed(begins.back());
  std::vector<std::size_t> next(begins.begin(), begins.end() - 1);
  for (const Edge& edge : edges_)
    for (std::size_t slab = lowestSlab(edge, slabs); slab <= highestSlab(edge, slabs); ++slab)
      placed[next[slab]++] = edge;
  begins_ = std::move(begins);
  edges_ = std::move(placed);
  slabs_ = slabs;
}

/// How often the ring of an entry winds around the point, counter-clockwise positive; moves `entry`
/// to that of the next ring.
int FeatureWinding::timesAround(std::size_t& entry, std::size_t end, const Point& p) const {
  const std::uint32_t ring = edges_[entry].ring;
  int times = 0;
  for (; entry < end && edges_[entry].ring == ring; ++entry) {
    const std::uint32_t from = edges_[entry].from;
    times += passing(vertices_[from], vertices_[from + 1], p);
  }
  return times;
}

std::optional<std::size_t> FeatureWinding::partAround(const Point& p) const {
  const Point scaled = scaling_.scaled(p);
  std::optional<std::size_t> part;
  if (!(scaled.y() >= low_) || !(scaled.y() - low_ <= height_)) return part;
  const std::size_t slab = slabOf(scaled.y(), slabs_);
  const std::size_t end = begins_[slab + 1];
  for (std::size_t entry = begins_[slab]; entry < end;) {
    const Role& role = roles_[edges_[entry].ring];
    // That part has no more holes.
    if (part && *part != role.part) return part;
    if (timesAround(entry, end, scaled) == 0) continue;
    part = role.isHole ? std::nullopt : std::optional(role.part);
  }
  return part;
}

}  // namespace cntr::sets
