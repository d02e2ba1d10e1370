// SPDX-License-Identifier: MIT

#include <cntr/deviation.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include <cntr/compute/curves.h>
#include <cntr/compute/hausdorff.h>
#include <cntr/model/boundarypoints.h>

namespace {

using cntr::compute::Curves;
using cntr::plane::Path;
using Point = qcVector<2>;

/// Distances from nominal curves, and their statistics so far.
class Tally {
 public:
  explicit Tally(const std::vector<Path>& nominal) : curves_(nominal) {
    deviation_.isSigned =
        std::all_of(nominal.begin(), nominal.end(), [](const Path& path) { return path.closed; });
  }

  /// Takes a point that stands for a length of the boundary.
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

}  // namespace

qcDeviation qf_Deviation(const std::vector<qcContour>& measured,
                         const std::vector<qcContour>& nominal, double spacing) {
  if (!(spacing > 0.0)) throw qcContourDefs::BadParams(L"spacing is not positive");
  const std::vector<Path> paths = cntr::model::pathsOf(measured);
  Tally tally(cntr::model::pathsOf(nominal));
  const bool isWeighed = cntr::model::haveLength(paths);
  for (const Path& path : paths) {
    cntr::model::forEachPoint(path, spacing, [&](const Point& p, double length) {
      tally.add(p, isWeighed ? length : 1.0);
    });
  }
  return tally.result();
}

double qf_Hausdorff(const std::vector<qcContour>& a, const std::vector<qcContour>& b,
                    double tolerance) {
  if (!(tolerance > 0.0)) throw qcContourDefs::BadParams(L"tolerance is not positive");
  const Curves first(cntr::model::pathsOf(a));
  const Curves second(cntr::model::pathsOf(b));
  const double there = cntr::compute::farthestFrom(first, second, 0.0, tolerance);
  return cntr::compute::farthestFrom(second, first, there, tolerance);
}
