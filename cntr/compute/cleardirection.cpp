// SPDX-License-Identifier: MIT
//
// A plain scan computes and sorts all angles. With the index, the plane around p is swept in narrow
// wedges of a few vertices each, until a gap is wide enough. Three short cuts keep the sweep from
// meeting every vertex where the first wide gap comes late:
//
// - Empty wedges are skipped by widening them; the next vertex is then found by halving.
// - Where the curve runs around p in edges that each span less than pi / n as seen from p, no gap
//   between their vertices can be wide enough: the sweep follows the curve with a cheap test of
//   each edge, and resumes where that fails.
// - Where a wedge is crowded, as along a row of shapes, the sweep leaps to a vertex whose angle is
//   less than pi / n ahead: no gap on the way there can be wide enough, however many vertices lie
//   in between.
//
// A sweep that tests too many boxes is abandoned in favour of the scan.
//
// Computed angles alone decide which vertices lie in a wedge and how wide a gap is, as in the scan;
// everything else yields a superset of what can matter.

#include <cntr/compute/cleardirection.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

namespace cntr::compute {

namespace {

double angleTo(const qcVector<2>& vertex, const qcVector<2>& p) {
  return (vertex - p).angle().norm().toDouble();
}

double widthOfClearGap(const plane::Path& path) {
  return std::numbers::pi / static_cast<double>(path.points.size());
}

/// The unit vector into the gap after `angle`, if the gap is wide enough.
std::optional<qcVector<2>> bisector(double angle, double next, double step) {
  const double gap = qcRadian(next - angle).norm().toDouble();
  if (!(gap > step)) return {};
  return qcVector<2>(1.0, qcRadian(angle + 0.5 * gap));
}

/// The directions from a point between two angles less than half a turn apart, slightly widened.
class Wedge {
 public:
  Wedge(const qcVector<2>& apex, double low, double high)
      : apex_(apex), lower_(1.0, qcRadian(low - slack)), upper_(1.0, qcRadian(high + slack)) {}

  /// False when no direction to a point of the box lies in the wedge.
  bool mayMeet(const plane::Box& box) const {
    // The corners of the box that lie farthest to the left of the lower and to the right of the
    // upper ray.
    const qcVector<2> leftmost(lower_.y() > 0.0 ? box.minX : box.maxX,
                               lower_.x() > 0.0 ? box.maxY : box.minY);
    const qcVector<2> rightmost(upper_.y() > 0.0 ? box.maxX : box.minX,
                                upper_.x() > 0.0 ? box.minY : box.maxY);
    return !(qnKernel::cross(lower_, leftmost - apex_) < 0.0) &&
           !(qnKernel::cross(upper_, rightmost - apex_) > 0.0);
  }

  bool mayHold(const qcVector<2>& vertex) const {
    const qcVector<2> direction = vertex - apex_;
    return !(qnKernel::cross(lower_, direction) < 0.0) &&
           !(qnKernel::cross(upper_, direction) > 0.0);
  }

 private:
  /// Well above the rounding of angles (which also lets directions just below the x axis count as
  /// 0), well below any gap that matters.
  static constexpr double slack = 1e-9;

  qcVector<2> apex_;
  qcVector<2> lower_;
  qcVector<2> upper_;
};

/// A vertex as seen from p.
struct Sight {
  double angle;
  std::size_t vertex;
};

/// Sweeps once around p, counter-clockwise from the x axis.
class Sweep {
 public:
  Sweep(const plane::Path& path, const index::EdgeIndex& index, const qcVector<2>& p)
      : path_(path), index_(index), p_(p), step_(widthOfClearGap(path)) {}

  qcVector<2> firstWideGap() {
    while (enterNextWedge()) {
      if (boxesTested_ > mostBoxesTested()) return clearDirection(path_, p_);
      for (const Sight& sight : inWedge_) {
        if (last_) {
          if (const auto found = bisector(last_->angle, sight.angle, step_)) return *found;
        } else {
          first_ = sight.angle;
        }
        last_ = sight;
      }
      if (last_) followCurve();
    }
    const double first = first_ ? *first_ : leastAngle();
    return bisector(last_->angle, first, step_).value_or(qcVector<2>(1.0, 0.0));
  }

 private:
  static constexpr double fullTurn = qcRadian::fullTurn;
  static constexpr double widestWedge = 1.5;
  /// A span below this fraction of a wide gap is narrower by more than any rounding.
  static constexpr double certainty = 1.0 - 1e-6;

  /// The usual wedge holds this many vertices on average.
  double usualWidth() const {
    constexpr double verticesPerWedge = 8.0;
    return std::min(verticesPerWedge * 2.0 * step_, widestWedge);
  }

  /// Where the wedges meet most boxes, as with edges that all pass close to p, the plain scan is
  /// quicker.
  std::size_t mostBoxesTested() const { return 1000 + 8 * path_.points.size(); }

  bool mayMeet(const Wedge& wedge, const plane::Box& box) {
    ++boxesTested_;
    return wedge.mayMeet(box);
  }

  /// Moves on to a wedge that may hold vertices and collects them; false at the end of the turn.
  bool enterNextWedge() {
    double width = usualWidth();
    while (swept_ < fullTurn && !mayHoldVertex(swept_, swept_ + width)) {
      swept_ += width;
      width = std::min(8.0 * width, widestWedge);
    }
    if (!(swept_ < fullTurn)) return false;
    while (width > usualWidth()) {
      width *= 0.5;
      if (!mayHoldVertex(swept_, swept_ + width)) swept_ += width;
    }
    collectOrLeap(width);
    return true;
  }

  /// Collects the vertices of a wedge of this width, or of a narrower one where they are too many;
  /// or collects nothing, having leapt ahead.
  void collectOrLeap(double width) {
    constexpr std::size_t crowd = 64;
    const double high = swept_ + width;
    if (collect(high, crowd)) return;
    inWedge_.clear();
    bool hasLeapt = false;
    while (swept_ < high && leap()) hasLeapt = true;
    if (hasLeapt) return;
    std::size_t most = crowd;
    while (!collect(swept_ + width, most)) {
      width *= 0.5;
      if (width < 0.5 * step_) most = path_.points.size();
    }
  }

  bool mayHoldVertex(double low, double high) {
    const Wedge wedge(p_, low, high);
    return !index_.forEachRun([&](const plane::Box& box) { return mayMeet(wedge, box); },
                              [&](std::size_t first, std::size_t last) {
                                const auto run = path_.points.subspan(first, last - first);
                                return std::none_of(run.begin(), run.end(), [&](const auto& v) {
                                  return wedge.mayHold(v);
                                });
                              });
  }

  /// Collects the vertices beyond the last one, up to `high`, ascending; false, with nothing swept,
  /// if they are more than `most`.
  bool collect(double high, std::size_t most) {
    inWedge_.clear();
    const double seen = last_ ? last_->angle : -1.0;
    const bool areAll = forEachVertexBetween(swept_, high, [&](const Sight& sight) {
      if (sight.angle > seen && sight.angle <= high) inWedge_.push_back(sight);
      return inWedge_.size() <= most;
    });
    if (!areAll) return false;
    std::sort(inWedge_.begin(), inWedge_.end(),
              [](const Sight& a, const Sight& b) { return a.angle < b.angle; });
    swept_ = high;
    return true;
  }

  /// Moves the last vertex forward to one that is half to almost all of a wide gap ahead; false if
  /// there is none. The very first vertex may be passed by: it is looked for if it matters.
  bool leap() {
    const double from = last_ ? last_->angle : swept_;
    const double least = from + 0.5 * step_;
    const double most = from + certainty * step_;
    std::optional<Sight> ahead;
    forEachVertexBetween(least, most, [&](const Sight& sight) {
      if (sight.angle > least && sight.angle <= most) ahead = sight;
      return !ahead;
    });
    if (!ahead) return false;
    last_ = ahead;
    swept_ = std::max(swept_, last_->angle);
    return true;
  }

  /// Calls visit(sight) for vertices, among them all between two angles, until a visit returns
  /// false. Returns false when one did.
  template <class Visit>
  bool forEachVertexBetween(double low, double high, Visit visit) {
    const Wedge wedge(p_, low, high);
    return index_.forEachRun([&](const plane::Box& box) { return mayMeet(wedge, box); },
                             [&](std::size_t first, std::size_t last) {
                               for (std::size_t k = first; k < last; ++k) {
                                 const qcVector<2>& vertex = path_.points[k];
                                 if (wedge.mayHold(vertex) && !visit({angleTo(vertex, p_), k})) {
                                   return false;
                                 }
                               }
                               return true;
                             });
  }

  double leastAngle() const {
    double least = fullTurn;
    for (const qcVector<2>& vertex : path_.points) least = std::min(least, angleTo(vertex, p_));
    return least;
  }

  /// Moves the last vertex along the curve, in either direction, as long as every edge spans too
  /// little for a gap.
  void followCurve() {
    for (const bool forward : {true, false}) {
      while (const auto ahead = endOfShortEdges(forward)) last_ = ahead;
    }
    swept_ = std::max(swept_, last_->angle);
  }

  /// The vertex some edges on from the last one, if all of them span too little and lead forward.
  std::optional<Sight> endOfShortEdges(bool forward) const {
    constexpr std::size_t edgesAtOnce = 64;
    const std::size_t n = path_.points.size();
    // So few that they cannot lead half way around p.
    const std::size_t count = std::min(edgesAtOnce, n / 8);
    std::size_t at = last_->vertex;
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t next = forward ? (at + 1 == n ? 0 : at + 1) : (at == 0 ? n - 1 : at - 1);
      if (!isShort(path_.points[at] - p_, path_.points[next] - p_)) return {};
      at = next;
    }
    const Sight ahead{angleTo(path_.points[at], p_), at};
    const bool leadsOn =
        qnKernel::cross(path_.points[last_->vertex] - p_, path_.points[at] - p_) > 0.0 &&
        ahead.angle > last_->angle;
    return leadsOn ? std::optional(ahead) : std::nullopt;
  }

  /// True when two directions are less than pi / n apart, by more than any rounding.
  bool isShort(const qcVector<2>& a, const qcVector<2>& b) const {
    const double sine = step_ * (1.0 - step_ * step_ / 6.0) * certainty;  // at most sin(step)
    const double c = qnKernel::cross(a, b);
    const double widest = sine * sine * (a * a) * (b * b);
    return a * b > 0.0 && c * c <= widest && std::isfinite(widest);
  }

  const plane::Path& path_;
  const index::EdgeIndex& index_;
  qcVector<2> p_;
  double step_;
  /// All vertices up to this angle have been met or cannot matter.
  double swept_ = 0.0;
  /// The least angle; nothing before a vertex has been met, or when the first was passed by.
  std::optional<double> first_;
  std::optional<Sight> last_;
  std::vector<Sight> inWedge_;
  std::size_t boxesTested_ = 0;
};

}  // namespace

qcVector<2> clearDirection(const plane::Path& path, const qcVector<2>& p) {
  const double step = widthOfClearGap(path);
  std::vector<double> angles;
  angles.reserve(path.points.size());
  for (const qcVector<2>& vertex : path.points) angles.push_back(angleTo(vertex, p));
  // NaN comes last.
  std::sort(angles.begin(), angles.end(),
            [](double a, double b) { return a < b || (std::isnan(b) && !std::isnan(a)); });
  for (std::size_t i = 0; i < angles.size(); ++i) {
    const double next = angles[i + 1 < angles.size() ? i + 1 : 0];
    if (const auto found = bisector(angles[i], next, step)) return *found;
  }
  return {1.0, 0.0};
}

qcVector<2> clearDirection(const plane::Path& path, const index::EdgeIndex& index,
                           const qcVector<2>& p) {
  return Sweep(path, index, p).firstWideGap();
}

}  // namespace cntr::compute
