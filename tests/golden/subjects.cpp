// SPDX-License-Identifier: MIT

#include "subjects.h"

#include <vector>

namespace golden {

namespace {

constexpr auto keep = qcContourDefs::eNoIntersectionRepair;
using Holes = std::vector<qcPtrHandle_const<qcRegion>>;

qcRect boxOf(const Points& points) { return qcContour(points, true, 0).encloseRect(qcXform<2>::I); }

/// The points scaled by `scale` and moved from around `from` to around `to`.
Points movedTo(const Points& points, const Point& from, double scale, const Point& to) {
  Points moved;
  for (const Point& p : points) moved.push_back(to + (p - from) * scale);
  return moved;
}

/// Any shape, made smaller than the box and put somewhere into it.
Points hole(Random& random, const qcRect& box) {
  const Points points = shapes::anyFinite(random.next(), 40).points;
  if (points.size() < 2) return points;
  const qcRect own = boxOf(points);
  const double size = qnKernel::greater(own.width(), own.height());
  const double share = random.uniform(0.05, 0.3);
  const double x = random.uniform(box.ul().x(), box.lr().x());
  const double y = random.uniform(box.ul().y(), box.lr().y());
  const double scale = size > 0.0 ? share * box.width() / size : 1.0;
  return movedTo(points, own.ul(), scale, Point(x, y));
}

}  // namespace

shapes::Shape shape(std::size_t number) {
  Random random(number);
  const std::size_t n = 10 + random.below(291);
  const std::uint64_t seed = random.next();
  switch (number % 8) {
    case 0:
      return {"S", shapes::smoothStar(n, seed), true};
    case 1:
      return {"N", shapes::spikyStar(n, seed), true};
    case 2:
      return {"C", shapes::comb(n, seed), true};
    case 3:
      return {"X", shapes::crossingStar(n, seed), true};
    default:
      return shapes::any(seed, 300);
  }
}

qcPtrHandle<qcRegion> regionWithHoles(std::size_t number) {
  const Points points = shape(number).points;
  const qcPtrHandle<qcRegion> region(new qcRegion(points, keep));
  if (points.size() < 3) return region;
  Random random(number + 2000);
  const qcRect box = boxOf(points);
  Holes holes;
  for (std::size_t k = random.below(4); k > 0; --k) {
    holes.push_back(qcPtrHandle_const<qcRegion>(new qcRegion(hole(random, box), keep)));
    try {
      region->holes(holes);
    } catch (const qcException&) {
      holes.pop_back();  // it crosses the boundary, or is no curve
    }
  }
  return region;
}

qcRegionSet regionSet(std::size_t number) {
  Random random(number + 3000);
  std::vector<qcPtrHandle_const<qcRegion>> regions;
  for (std::size_t k = 1 + random.below(9); k > 0; --k) {
    const double x = random.uniform(0.0, 900.0);
    const double y = random.uniform(0.0, 900.0);
    const Points points = shape(number * 8 + random.below(5)).points;
    regions.push_back(
        qcPtrHandle_const<qcRegion>(new qcRegion(movedTo(points, Point(), 0.5, {x, y}), keep)));
  }
  return qcRegionSet(regions, keep);
}

qcXform<2> anyXform(Random& random) {
  if (random.chance(0.2)) return qcXform<2>::I;
  const double xx = random.uniform(-2.0, 2.0);
  const double xy = random.uniform(-2.0, 2.0);
  const double yx = random.uniform(-2.0, 2.0);
  const double yy = random.uniform(-2.0, 2.0);
  const double x = random.uniform(-1e3, 1e3);
  const double y = random.uniform(-1e3, 1e3);
  return qcXform<2>(qcMatrix<2>(xx, xy, yx, yy), Point(x, y));
}

}  // namespace golden
