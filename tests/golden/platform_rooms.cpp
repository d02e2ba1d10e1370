// SPDX-License-Identifier: MIT
//
// The shapes themselves, arithmetic, the hull and the fits.

#include <platform/core/fit.h>
#include <platform/core/hull.h>
#include <platform/core/random.h>

#include "rooms.h"
#include "subjects.h"

namespace golden {

void askShapes(Answers& answers) {
  forEachShape(2000, [&](const shapes::Shape& shape, Random& random) {
    answers.add(shape.points, shape.closed);
    answers.add(shapes::queryPoint(random, shape.points));
    const shapes::Segment segment = shapes::querySegment(random, shape.points);
    answers.add(segment.a, segment.b);
  });
}

void askNumbers(Answers& answers) {
  qcRandomUniform uniform(7);
  for (int i = 0; i < 1000; ++i) {
    const double deviate = uniform.next(-1e3, 1e3);
    answers.add(deviate, qfIFloor(deviate));
  }
  Random random(1);
  for (int i = 0; i < 2000; ++i) {
    const qcXform<2> first = anyXform(random);
    const qcXform<2> second = anyXform(random);
    const Point p(random.uniform(), 3.0);
    answers.add(first * second, first * p, first.inverse());
    const qcLineSeg segment(first.trans(), second.trans());
    answers.add(segment.distToPoint(p), segment.line().distToPoint(p));
    answers.add(segment.line().proj(p).pos());
    answers.add(segment.line().intersect(qcLine(p, first * p)).pos());
    answers.add(qcDegree(first.trans().x()).norm().toDouble());
    answers.add(qcRadian(first.trans().y()).norm().toDouble());
    answers.add((first * p).unit());
  }
}

void askHull(Answers& answers) {
  forEachShape(1500, [&](const shapes::Shape& shape, Random&) {
    Points hull;
    qfConvexHull(shape.points, hull);
    answers.add(hull);
  });
}

void askCircleFit(Answers& answers) {
  forEachShape(800, [&](const shapes::Shape& shape, Random& random) {
    const std::size_t leftOut = random.below(3);
    const qcCircleFitParams params(qcCircleFitDefs::eLeastSquares, random.uniform(0.3, 1.0),
                                   static_cast<unsigned long>(leftOut), 5.0);
    answers.ask([&] {
      qcCircleFitResults results;
      qfCircleFit(params, shape.points, results);
      answers.add(results.residual());
      return results.circle();
    });
  });
}

void askEllipseFit(Answers& answers) {
  forEachShape(800, [&](const shapes::Shape& shape, Random& random) {
    const auto leftOut = static_cast<unsigned long>(random.below(3));
    const qcEllipseFitParams params(qcEllipseFitDefs::eLeastSquares, qcRadian(0.0), leftOut, 5.0);
    answers.ask([&] {
      qcEllipseFitResults results;
      qfEllipseFit(params, shape.points, results);
      const qcEllipse::qcEllipseGeom& found = results.ellipse().geom();
      answers.add(results.residual(), found.radius1, found.radius2);
      return found.center;
    });
  });
}

void askAngles(Answers& answers) {
  forEachShape(800, [&](const shapes::Shape& shape, Random& random) {
    const Point p = shapes::queryPoint(random, shape.points);
    const double angle = random.uniform(-10.0, 10.0);
    answers.add(p.angle().toDouble(), Point(2.0, qcRadian(angle)));
    answers.add(qcMatrix<2>(qcRadian(angle), qcRadian(angle), 1.0, 1.0));
    answers.ask([&] {
      qcEllipseFitResults results;
      qfEllipseFit(qcEllipseFitParams(), shape.points, results);
      return results.ellipse().geom().rotation.toDouble();
    });
  });
}

}  // namespace golden
