// SPDX-License-Identifier: MIT

#include <cntr/deviation.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include <cntr/compute/curves.h>
#include <cntr/compute/hausdorff.h>

namespace {

using cntr::compute::Curves;
using cntr::plane::Edge;
using cntr::plane::Path;
using Point = qcVector<2>;

/// The paths of contours that have vertices, all of them finite.
std::vector<Path> pathsOf(const std::vector<qcContour>& contours) {
  std::vector<Path> paths;
  for (const qcContour& contour : contours) {
    if (contour.points().empty()) continue;
    paths.push_back({contour.points(), contour.isClosed()});
    for (const Point& p : contour.points()) {
      if (!std::isfinite(p.x()) || !std::isfinite(p.y())) {
        throw qcContourDefs::BadParams(L"a coordinate is not finite");
      }
    }
  }
  if (paths.empty()) throw qcContourDefs::EmptyContour();
  return paths;
}

/// Distances from nominal curves, and what they come to so far.
class Tally {
 public:
  explicit Tally(const std::vector<Path>& nominal) : curves_(nominal) {
    deviation_.isSigned =
        std::all_of(nominal.begin(), nominal.end(), [](const Path& path) { return path.closed; });
  }

  /// Asks a point that stands for a length of the boundary.
  void add(const Point& p, double weight) {
    const double distance = distanceOf(p);
    if (points_ == 0 || distance < deviation_.least) {
      deviation_.least = distance;
      deviation_.leastAt = p;
    }
    if (points_ == 0 || distance > deviation_.greatest) {
      deviation_.greatest = distance;
      deviation_.greatestAt = p;
    }
    ++points_;
    weights_ += weight;
    sum_ += weight * distance;
    squares_ += weight * (distance * distance);
  }

  qcDeviation result() const {
    qcDeviation result = deviation_;
    result.mean = sum_ / weights_;
    result.rms = std::sqrt(squares_ / weights_);
    return result;
  }

 private:
  double distanceOf(const Point& p) const {
    const double distance = curves_.nearest(p).distance;
    const bool isInside = deviation_.isSigned && distance > 0.0 && curves_.windingNumber(p) != 0;
    return isInside ? -distance : distance;
  }

  Curves curves_;
  qcDeviation deviation_;
  std::size_t points_ = 0;
  double weights_ = 0.0;
  double sum_ = 0.0;
  double squares_ = 0.0;
};

/// An edge of a measured contour in equal steps.
struct Steps {
  Edge edge;
  std::size_t count = 1;
  double length = 0.0;

  Steps(const Edge& of, double spacing) : edge(of) {
    const double whole = edge.from.distance(edge.to);
    const double steps = std::max(std::ceil(whole / spacing), 1.0);
    if (!(steps <= 0x1p31)) throw qcContourDefs::BadParams(L"spacing is too small for the contour");
    count = static_cast<std::size_t>(steps);
    length = whole / steps;
  }

  Point at(std::size_t step) const noexcept {
    return edge.from +
           (edge.to - edge.from) * (static_cast<double>(step) / static_cast<double>(count));
  }
};

/// Calls visit(point, length that it stands for) for the points of a path. Each edge gives its
/// beginning and what lies within it.
template <class Visit>
void forEachPoint(const Path& path, double spacing, Visit visit) {
  std::vector<Steps> edges;
  cntr::plane::forEachEdge(path, [&](const Point& from, const Point& to) {
    edges.emplace_back(Edge{from, to}, spacing);
  });
  double before = path.closed ? edges.back().length : 0.0;
  for (const Steps& steps : edges) {
    visit(steps.edge.from, (before + steps.length) * 0.5);
    for (std::size_t i = 1; i < steps.count; ++i) visit(steps.at(i), steps.length);
    before = steps.length;
  }
  if (!path.closed) visit(path.points.back(), before * 0.5);
}

bool haveLength(const std::vector<Path>& paths) {
  return std::any_of(paths.begin(), paths.end(), [](const Path& path) {
    return std::any_of(path.points.begin(), path.points.end(),
                       [&](const Point& p) { return p != path.points.front(); });
  });
}

}  // namespace

qcDeviation qf_Deviation(const std::vector<qcContour>& measured,
                         const std::vector<qcContour>& nominal, double spacing) {
  if (!(spacing > 0.0)) throw qcContourDefs::BadParams(L"spacing is not positive");
  const std::vector<Path> paths = pathsOf(measured);
  Tally tally(pathsOf(nominal));
  const bool isWeighed = haveLength(paths);
  for (const Path& path : paths) {
    forEachPoint(path, spacing,
                 [&](const Point& p, double length) { tally.add(p, isWeighed ? length : 1.0); });
  }
  return tally.result();
}

double qf_Hausdorff(const std::vector<qcContour>& a, const std::vector<qcContour>& b,
                    double tolerance) {
  if (!(tolerance > 0.0)) throw qcContourDefs::BadParams(L"tolerance is not positive");
  const Curves first(pathsOf(a));
  const Curves second(pathsOf(b));
  const double there = cntr::compute::farthestFrom(first, second, 0.0, tolerance);
  return cntr::compute::farthestFrom(second, first, there, tolerance);
}
