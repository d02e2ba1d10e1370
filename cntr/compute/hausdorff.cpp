// SPDX-License-Identifier: MIT

#include <cntr/compute/hausdorff.h>

#include <algorithm>
#include <vector>

#include <platform/core/kernels.h>

namespace cntr::compute {

namespace {

using Point = qcVector<2>;

/// A point and what is nearest to it.
struct Asked {
  Point at;
  Curves::Nearest nearest;
};

class HausdorffSearch {
 public:
  HausdorffSearch(const Curves& to, double known, double tolerance)
      : to_(to), tolerance_(tolerance), greatest_(known) {}

  Asked ask(const Point& p) {
    const Curves::Nearest nearest = to_.nearest(p);
    greatest_ = std::max(greatest_, nearest.distance);
    return {p, nearest};
  }

  /// Asks points between two others until none of them can be farther.
  void refine(const Asked& from, const Asked& to) {
    parts_.assign(1, {from, to});
    while (!parts_.empty()) {
      const Part part = parts_.back();
      parts_.pop_back();
      if (!(bound(part) > greatest_ + tolerance_)) continue;
      const Asked middle = ask((part.from.at + part.to.at) * 0.5);
      // Between adjacent doubles there is nothing left to halve.
      if (middle.at == part.from.at || middle.at == part.to.at) continue;
      parts_.push_back({middle, part.to});
      parts_.push_back({part.from, middle});
    }
  }

  double greatest() const noexcept { return greatest_; }

 private:
  struct Part {
    Asked from;
    Asked to;
  };

  double distance(const Point& p, std::size_t edge) const noexcept {
    return qnKernel::distanceToSegment(p, to_.edges()[edge].from, to_.edges()[edge].to);
  }

  /// An upper bound for all points of the part: the farther end's distance from one edge, or what
  /// can be reached from both ends.
  double bound(const Part& part) const noexcept {
    const auto& [from, to] = part;
    const double ofFirst = std::max(from.nearest.distance, distance(to.at, from.nearest.edge));
    const double ofSecond = std::max(to.nearest.distance, distance(from.at, to.nearest.edge));
    const double length = from.at.distance(to.at);
    const double byLength = (from.nearest.distance + to.nearest.distance + length) * 0.5;
    return std::min({ofFirst, ofSecond, byLength});
  }

  const Curves& to_;
  double tolerance_;
  double greatest_;
  std::vector<Part> parts_;
};

}  // namespace

double farthestFrom(const Curves& from, const Curves& to, double known, double tolerance) {
  HausdorffSearch search(to, known, tolerance);
  std::vector<Asked> starts;
  std::vector<Asked> ends;
  // All vertices first: the farther the farthest vertex, the fewer edges need a second look.
  for (const plane::Edge& edge : from.edges()) {
    const bool follows = !ends.empty() && ends.back().at == edge.from;
    starts.push_back(follows ? ends.back() : search.ask(edge.from));
    ends.push_back(search.ask(edge.to));
  }
  for (std::size_t i = 0; i < starts.size(); ++i) search.refine(starts[i], ends[i]);
  return search.greatest();
}

}  // namespace cntr::compute
