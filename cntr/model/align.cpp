// SPDX-License-Identifier: MIT

#include <cmath>

#include <cntr/compute/align.h>
#include <cntr/deviation.h>
#include <cntr/model/boundarypoints.h>

namespace {

using cntr::compute::WeighedPoint;
using cntr::plane::Path;

/// Points lie at steps of at most the length of the paths divided by this.
constexpr double stepsOfLength = 512.0;

std::vector<WeighedPoint> weighedPoints(const std::vector<Path>& paths) {
  double length = 0.0;
  for (const Path& path : paths) {
    cntr::plane::forEachEdge(
        path, [&](const qcVector<2>& from, const qcVector<2>& to) { length += from.distance(to); });
  }
  const bool isWeighed = cntr::model::haveLength(paths);
  const double spacing = isWeighed ? length / stepsOfLength : 1.0;
  std::vector<WeighedPoint> points;
  for (const Path& path : paths) {
    cntr::model::forEachPoint(path, spacing, [&](const qcVector<2>& p, double weight) {
      points.push_back({p, isWeighed ? weight : 1.0});
    });
  }
  return points;
}

}  // namespace

qcAlignment qf_Align(const std::vector<qcContour>& measured,
                     const std::vector<qcContour>& nominal) {
  const std::vector<WeighedPoint> moved = weighedPoints(cntr::model::pathsOf(measured));
  const std::vector<Path> fixed = cntr::model::pathsOf(nominal);
  const auto found =
      cntr::compute::align(moved, weighedPoints(fixed), cntr::compute::Curves(fixed));
  const double cosine = found.pose.direction.x();
  const double sine = found.pose.direction.y();
  const qcMatrix<2> rotation(cosine, -sine, sine, cosine);
  return {qcXform<2>(rotation, found.pose.place - rotation * found.center),
          qcRadian(std::atan2(sine, cosine)), found.residual, found.steps, found.settled};
}
