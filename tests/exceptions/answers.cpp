// SPDX-License-Identifier: MIT

#include "answers.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

void add(Answers& answers, const qcVector<2>& p) {
  answers.push_back(p.x());
  answers.push_back(p.y());
}

void add(Answers& answers, const std::vector<qcVector<2>>& points) {
  answers.push_back(static_cast<double>(points.size()));
  for (const qcVector<2>& p : points) add(answers, p);
}

void add(Answers& answers, const qcMatrix<2>& m) {
  for (int row : {0, 1}) {
    for (int column : {0, 1}) answers.push_back(m.element(row, column));
  }
}

const qcLineSeg& segmentAcross() {
  static const qcLineSeg segment({-3.5, 11.0}, {120.0, 13.0});
  return segment;
}

}  // namespace

Answers answersOf(const qcContour& contour) {
  Answers answers{contour.isClosed() ? 1.0 : 0.0, contour.length(),
                  static_cast<double>(contour.label())};
  add(answers, contour.points());
  add(answers, contour.polygon().size() > 0 ? contour.polygon()[0] : qcVector<2>());
  if (contour.points().size() < 2) return answers;
  const qcVector<2> p(7.3, 9.1);
  add(answers, contour.meanPosition());
  add(answers, contour.closestPoint(p, false));
  answers.push_back(static_cast<double>(contour.closestVertexIndex(p)));
  for (const double angle : {0.1, 1.2, 2.3, 3.4, 4.5, 5.6}) {
    answers.push_back(static_cast<double>(contour.extremalVertexIndex(qcRadian(angle))));
  }
  add(answers, contour.intersections(segmentAcross(), true));
  add(answers, contour.intersections(contour));
  answers.push_back(contour.isSelfIntersecting() ? 1.0 : 0.0);
  for (const int i : contour.vertexIndex(p, 5.0)) answers.push_back(i);
  for (const auto mode : {qcContourDefs::eFarthestVertexPair, qcContourDefs::eFromFirstVertex}) {
    add(answers, contour.encloseCircle(mode).center());
  }
  const qcXform<2> xform(qcMatrix<2>(1, 2, 3, 5), {7, 8});
  add(answers, contour.encloseRect(xform).ul());
  qcRegion hull;
  contour.convexHull(hull);
  add(answers, hull.points());
  qcEllipse ellipse;
  double residual = 0.0;
  contour.fitEllipse(ellipse, residual);
  answers.push_back(residual);
  return answers;
}

Answers answersOf(const qcRegion& region) {
  Answers answers = answersOf(static_cast<const qcContour&>(region));
  if (region.points().size() < 3) return answers;
  const qcVector<2> p(7.3, 9.1);
  answers.push_back(region.area(true));
  add(answers, region.centerOfMass(false));
  add(answers, region.inertiaMatrix(false));
  answers.push_back(region.inside(p, true) ? 1.0 : 0.0);
  answers.push_back(region.distToPoint(p, true, true, true));
  add(answers, region.closestPoint(p, false, true));
  add(answers, region.intersections(segmentAcross(), true, true));
  qcRegion repaired;
  region.regularize(repaired);
  add(answers, repaired.points());
  region.outerHull(repaired);
  add(answers, repaired.points());
  for (const auto& hole : region.holes()) answers.push_back(hole->area(false));
  return answers;
}

Answers answersOf(const qcRegionSet& set) {
  Answers answers{static_cast<double>(set.regions().size()), set.area(true)};
  if (set.regions().empty()) return answers;
  const qcVector<2> p(7.3, 9.1);
  add(answers, set.centerOfMass(false));
  add(answers, set.inertiaMatrix(false));
  answers.push_back(set.inside(p, true) ? 1.0 : 0.0);
  answers.push_back(set.distToPoint(p, false, true, false));
  add(answers, set.encloseRect(qcXform<2>::I).lr());
  answers.push_back(set.isSelfIntersecting() ? 1.0 : 0.0);
  qcRegionSet repaired(Regions(), keep);
  set.regularize(repaired);
  for (const auto& region : repaired.regions()) add(answers, region->points());
  set.outerHull(repaired);
  for (const auto& region : repaired.regions()) add(answers, region->points());
  return answers;
}

void expectSoundAnswers(const qcContour& contour) {
  qcContour fresh(contour.points(), contour.isClosed(), contour.label());
  EXPECT_EQ(answersOf(contour), answersOf(fresh));
}

namespace {

/// A new region of the same content. The holes are set while there is nothing that they could
/// cross: a boundary may have changed since.
Region made(const qcRegion& region) {
  Region fresh(new qcRegion(std::vector<qcVector<2>>(2), keep));
  fresh->holes(region.holes());
  fresh->points(region.points());
  fresh->label(region.label());
  return fresh;
}

}  // namespace

void expectSoundAnswers(const qcRegion& region) {
  EXPECT_EQ(answersOf(region), answersOf(*made(region)));
}

void expectSoundAnswers(const qcRegionSet& set) {
  Regions fresh;
  for (const auto& region : set.regions()) fresh.push_back(made(*region));
  EXPECT_EQ(answersOf(set), answersOf(qcRegionSet(fresh, keep)));
}

std::vector<qcVector<2>> squareOutline(const qcVector<2>& corner, double side) {
  constexpr int steps = 9;
  std::vector<qcVector<2>> points;
  qcVector<2> p = corner;
  for (const qcVector<2>& direction :
       {qcVector<2>(1, 0), qcVector<2>(0, 1), qcVector<2>(-1, 0), qcVector<2>(0, -1)}) {
    for (int i = 0; i < steps; ++i) {
      points.push_back(p);
      p = p + direction * (side / steps);
    }
  }
  return points;
}

std::vector<qcVector<2>> crossingOutline() {
  // A square whose last corner is pulled across the side opposite.
  std::vector<qcVector<2>> points = squareOutline({0, 0}, 100);
  points.push_back({-5, 5});
  points.push_back({50, -20});
  points.push_back({-10, -15});
  return points;
}

Region regionWithHoles() {
  const Region region(new qcRegion(squareOutline({0, 0}, 100), keep));
  const Region hole(new qcRegion(squareOutline({5, 5}, 50), keep));
  const Region inHole(new qcRegion(squareOutline({6, 8}, 10), keep));
  hole->holes(std::vector<Region>{inHole});
  region->holes(std::vector<Region>{hole});
  return region;
}

qcRegionSet crossingSet() {
  Regions regions;
  for (int i = 0; i < 9; ++i) {
    const qcVector<2> corner(30.0 * i, i % 3 == 0 ? 0.0 : 11.0);
    regions.push_back(Region(new qcRegion(
        {corner, corner + qcVector<2>(i == 4 ? 37.0 : 20.0, 1.0), corner + qcVector<2>(20.0, 20.0)},
        keep)));
  }
  return qcRegionSet(regions, keep);
}
