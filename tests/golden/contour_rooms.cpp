// SPDX-License-Identifier: MIT
//
// Contours, moments and ellipses.

#include <sstream>

#include <cntr/ellipse.h>
#include <cntr/inertia.h>
#include <cntr/region.h>
#include <platform/display/svgtablet.h>

#include "rooms.h"
#include "subjects.h"

namespace golden {

namespace {

/// A contour that makes its median edge length public.
class Contour : public qcContour {
 public:
  explicit Contour(const shapes::Shape& shape) : qcContour(shape.points, shape.closed, 5) {}
  using qcContour::medianFeatureSize;
};

void addMoments(Answers& answers, const qc_InertiaData& data) {
  answers.add(data.area(), data.centerOfMass(), data.inertiaMatrix());
}

}  // namespace

void askContourMeasures(Answers& answers) {
  forEachShape(1500, [&](const shapes::Shape& shape, Random&) {
    const Contour contour(shape);
    answers.add(contour.length(), contour.polygon().size());
    answers.ask([&] { return contour.meanPosition(); });
    answers.ask([&] { return contour.medianFeatureSize(); });
  });
}

void askContourEdges(Answers& answers) {
  forEachShape(1000, [&](const shapes::Shape& shape, Random& random) {
    const Contour contour(shape);
    answers.ask([&] { return contour.isSelfIntersecting(); });
    for (int i = 0; i < 30; ++i) {
      const Point p = shapes::queryPoint(random, shape.points);
      const shapes::Segment segment = shapes::querySegment(random, shape.points);
      const bool touches = random.chance(0.5);
      answers.ask([&] { return contour.closestPoint(p, touches); });
      answers.ask([&] { return contour.closestVertexIndex(p); });
      answers.ask([&] { return contour.distToPoint(p, touches); });
      answers.ask([&] { return contour.intersections(qcLineSeg(segment.a, segment.b), touches); });
    }
    for (const double tolerance : {1e-6, 1.0, 40.0}) {
      const Point p = shapes::queryPoint(random, shape.points);
      answers.ask([&] { return contour.vertexIndex(p, tolerance); });
    }
    const qcContour other(shapes::any(random.next(), 30).points, true, 0);
    answers.ask([&] { return contour.intersections(other); });
  });
}

void askContourExtents(Answers& answers) {
  constexpr double quarterTurn = 90.0;
  forEachShape(1000, [&](const shapes::Shape& shape, Random& random) {
    const Contour contour(shape);
    for (const auto mode : {qcContourDefs::eFarthestVertexPair, qcContourDefs::eFromFirstVertex}) {
      answers.ask([&] { return contour.encloseCircle(mode); });
      answers.ask([&] { return contour.diameter(mode); });
    }
    for (int i = 0; i < 5; ++i) {
      const qcXform<2> xform = anyXform(random);
      answers.ask([&] { return contour.encloseRect(xform); });
      answers.ask([&] { return contour.extremalVertexIndex(qcDegree(i * quarterTurn)); });
    }
    qcRegion hull;
    answers.ask([&] {
      contour.convexHull(hull);
      return hull.points();
    });
    qcContour image({}, false, 0);
    contour.map(anyXform(random), image);
    answers.add(image.points());
  });
}

void askContourExtremes(Answers& answers) {
  forEachShape(1000, [&](const shapes::Shape& shape, Random& random) {
    const Contour contour(shape);
    for (int i = 0; i < 20; ++i) {
      const qcRadian angle(random.uniform(-7.0, 7.0));
      answers.ask([&] { return contour.extremalVertexIndex(angle); });
    }
  });
}

void askContourDrawing(Answers& answers) {
  forEachShape(200, [&](const shapes::Shape& shape, Random&) {
    qcSvgTablet tablet(0.5);
    Contour(shape).draw(tablet, qcContourDefs::eDrawContour, qcColor::red,
                        qcUITablet::eOverlayLayer);
    std::ostringstream picture;
    tablet.write(picture);
    answers.add(picture.str());
  });
}

void askMoments(Answers& answers) {
  qc_InertiaData sum;
  forEachShape(1500, [&](const shapes::Shape& shape, Random&) {
    const qc_InertiaData data = qf_InertiaDataPolygon(shape.points);
    addMoments(answers, data);
    // A spoiled shape would make everything after it meaningless.
    if (data.area() < 1e12 && data.area() > -1e12) sum = sum + data;
    addMoments(answers, sum);
    answers.add(qf_Area(shape.points), qf_CenterOfMass(shape.points));
    std::vector<double> xs;
    for (const Point& p : shape.points) xs.push_back(p.x());
    answers.add(qf_StdDev(xs));
  });
}

void askMomentEllipses(Answers& answers) {
  forEachShape(1000, [&](const shapes::Shape& shape, Random&) {
    answers.ask([&] {
      const qcEllipse ellipse = qf_EllipseFromInertiaData(qf_InertiaDataPolygon(shape.points));
      const qcEllipse::qcEllipseGeom& found = ellipse.geom();
      answers.add(found.center, found.radius1, found.radius2);
      return found.rotation.toDouble();
    });
  });
}

}  // namespace golden
