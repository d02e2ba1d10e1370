// SPDX-License-Identifier: MIT

#include <cntrtable/pointstrips.h>

#include <cmath>

namespace table {

namespace {

std::vector<NumberedPoint> finitePoints(std::span<const double> coordinates) {
  std::vector<NumberedPoint> points;
  points.reserve(coordinates.size() / 2);
  for (std::size_t i = 0; i + 1 < coordinates.size(); i += 2) {
    if (!std::isfinite(coordinates[i]) || !std::isfinite(coordinates[i + 1])) continue;
    points.push_back({{coordinates[i], coordinates[i + 1]}, static_cast<std::int64_t>(i / 2)});
  }
  return points;
}

bool isLower(const NumberedPoint& a, const NumberedPoint& b) {
  return a.position.y() < b.position.y();
}

bool isFurtherLeft(const NumberedPoint& a, const NumberedPoint& b) {
  return a.position.x() < b.position.x();
}

}  // namespace

PointStrips::PointStrips(std::span<const double> coordinates) : points_(finitePoints(coordinates)) {
  const auto count = static_cast<double>(points_.size());
  pointsInStrip_ = std::max(std::size_t{1}, static_cast<std::size_t>(std::sqrt(count)));
  std::sort(points_.begin(), points_.end(), isFurtherLeft);
  for (std::size_t first = 0; first < points_.size(); first += pointsInStrip_) {
    begins_.push_back(points_[first].position.x());
    const std::size_t end = std::min(first + pointsInStrip_, points_.size());
    std::sort(points_.begin() + static_cast<std::ptrdiff_t>(first),
              points_.begin() + static_cast<std::ptrdiff_t>(end), isLower);
  }
}

std::size_t PointStrips::firstStrip(double x) const noexcept {
  const auto next = std::lower_bound(begins_.begin(), begins_.end(), x);
  return next == begins_.begin() ? 0 : static_cast<std::size_t>(next - begins_.begin()) - 1;
}

std::size_t PointStrips::stripsUpTo(double x) const noexcept {
  const auto next = std::upper_bound(begins_.begin(), begins_.end(), x);
  return static_cast<std::size_t>(next - begins_.begin());
}

std::span<const NumberedPoint> PointStrips::above(std::size_t strip, double y) const noexcept {
  const std::size_t begin = strip * pointsInStrip_;
  const std::span<const NumberedPoint> points =
      std::span(points_).subspan(begin, std::min(pointsInStrip_, points_.size() - begin));
  const auto isBelow = [](const NumberedPoint& point, double height) {
    return point.position.y() < height;
  };
  const auto first = std::lower_bound(points.begin(), points.end(), y, isBelow);
  return points.subspan(static_cast<std::size_t>(first - points.begin()));
}

}  // namespace table
