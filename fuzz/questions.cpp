// SPDX-License-Identifier: MIT

#include "questions.h"

#include <algorithm>
#include <cmath>

#include <platform/display/recordingtablet.h>
#include <testing/plain/circle.h>
#include <testing/plain/measures.h>
#include <testing/twin/region_twin.h>

#include "check.h"
#include "draw.h"

namespace fuzz {

namespace {

using twin::agree;

plain::Transform plainOf(const qcXform<2>& xform) {
  const qcMatrix<2>& m = xform.matrix();
  return {{m.element(0, 0), m.element(0, 1), m.element(1, 0), m.element(1, 1), m.det()},
          xform.trans()};
}

bool isFinite(const plain::Points& points) {
  return std::all_of(points.begin(), points.end(), [](const plain::Point& p) {
    return std::isfinite(p.x()) && std::isfinite(p.y());
  });
}

/// A reference as a value, to be compared.
template <class T>
T valueOf(const T& value) {
  return value;
}

plain::Points verticesOf(const qcPolygon& polygon) {
  plain::Points vertices;
  for (long i = 0; i < polygon.size(); ++i) vertices.push_back(polygon[i]);
  return vertices;
}

void askLengths(const qcContour& made, const plain::Contour& expected) {
  require(agree([&] { return made.length(); }, [&] { return plain::length(expected); }), "length");
  require(agree([&] { return made.meanPosition(); }, [&] { return plain::meanPosition(expected); }),
          "meanPosition");
  require(
      agree([&] { return verticesOf(made.polygon()); }, [&] { return plain::polygon(expected); }),
      "polygon");
}

void askNearest(const qcContour& made, const plain::Contour& expected, const plain::Point& p) {
  require(agree([&] { return made.closestVertexIndex(p); },
                [&] { return plain::closestVertexIndex(expected, p); }),
          "closestVertexIndex");
  for (const bool vertexOnly : {false, true}) {
    require(agree([&] { return made.closestPoint(p, vertexOnly); },
                  [&] { return plain::closestPoint(expected, p, vertexOnly); }),
            "closestPoint");
    require(agree([&] { return made.distToPoint(p, vertexOnly); },
                  [&] { return plain::distToPoint(expected, p, vertexOnly); }),
            "distToPoint");
  }
}

void askCrossings(const qcContour& made, const plain::Contour& expected,
                  const plain::Segment& segment, bool touches) {
  require(agree([&] { return made.intersections(qcLineSeg(segment.a, segment.b), touches); },
                [&] {
                  plain::Points points;
                  for (const auto& crossing : plain::intersections(expected, segment, touches)) {
                    points.push_back(crossing.point);
                  }
                  return points;
                }),
          "intersections with a segment");
}

void askExtremes(const qcContour& made, const plain::Contour& expected, double angle) {
  require(agree([&] { return made.extremalVertexIndex(qcRadian(angle)); },
                [&] { return plain::extremalVertexIndex(expected, angle); }),
          "extremalVertexIndex");
  require(agree([&] { return made.extremalVertexPosition(qcRadian(angle)); },
                [&] { return plain::extremalVertexPosition(expected, angle); }),
          "extremalVertexPosition");
}

void askCircles(const qcContour& made, const plain::Contour& expected, int mode) {
  const auto asked = static_cast<qcContourDefs::DiameterMode>(mode);
  require(agree([&] { return made.encloseCircle(asked).center(); },
                [&] { return plain::encloseCircle(expected.points, mode).center; }),
          "encloseCircle");
  require(agree([&] { return made.diameter(asked); },
                [&] { return plain::diameter(expected.points, mode); }),
          "diameter");
}

void askHull(const qcContour& made, const plain::Contour& expected) {
  qcRegion hull;
  const auto hullOf = [&] {
    made.convexHull(hull);
    return valueOf(hull.points());
  };
  // It is not specified which hull surrounds coordinates that are not finite.
  if (isFinite(expected.points)) {
    require(agree(hullOf, [&] { return plain::convexHull(expected); }), "convexHull");
  } else if (expected.points.size() > 1) {
    hullOf();
  }
}

void askEllipse(const qcContour& made) {
  qcEllipse ellipse;
  double residual = 0.0;
  if (made.points().size() > 1) made.fitEllipse(ellipse, residual);
}

void askRectangle(const qcContour& made, const plain::Contour& expected, const qcXform<2>& xform) {
  const auto asked = [&] {
    const qcRect rect = made.encloseRect(xform);
    return plain::Points{rect.ul(), rect.lr()};
  };
  require(agree(asked,
                [&] {
                  const plain::Box box = plain::encloseRect(expected, plainOf(xform));
                  return plain::Points{{box.minX, box.minY}, {box.maxX, box.maxY}};
                }),
          "encloseRect");
}

void askImage(const qcContour& made, const plain::Contour& expected, const qcXform<2>& xform) {
  qcContour image({}, false, 0);
  made.map(xform, image);
  require(agree([&] { return valueOf(image.points()); },
                [&] { return plain::map(expected, plainOf(xform)).points; }),
          "map");
}

void askDrawing(const qcContour& made, const plain::Contour& expected) {
  qcRecordingTablet tablet;
  made.draw(tablet, qcContourDefs::eDrawContour, qcColor::red, qcUITablet::eOverlayLayer);
  require(tablet.segments().size() == plain::edgesOf(expected).size(), "draw");
}

void askMoments(const qcRegion& made, const plain::Region& expected, bool holes) {
  require(agree([&] { return made.area(holes); }, [&] { return plain::area(expected, holes); }),
          "area");
  require(agree([&] { return made.centerOfMass(false); },
                [&] { return plain::centerOfMass(expected, false); }),
          "centerOfMass");
  require(agree([&] { return made.inertiaMatrix(holes); },
                [&] { return plain::inertiaMatrix(expected, holes); }),
          "inertiaMatrix");
}

void askPoint(const qcRegion& made, const plain::Region& expected, const plain::Point& p,
              bool holes) {
  require(agree([&] { return made.inside(p, holes); },
                [&] { return plain::inside(expected, p, holes); }),
          "inside");
  require(agree(
              [&] {
                long hole = 99;
                const long index = made.closestVertexIndex(p, holes, hole);
                return twin::FoundVertex{index, hole};
              },
              [&] { return plain::closestVertexIndex(expected, p, holes); }),
          "closestVertexIndex of a region");
  for (const bool vertexOnly : {false, true}) {
    require(agree([&] { return made.closestPoint(p, vertexOnly, holes); },
                  [&] { return plain::closestPoint(expected, p, vertexOnly, holes); }),
            "closestPoint of a region");
    for (const bool zeroIfInside : {false, true}) {
      require(
          agree([&] { return made.distToPoint(p, vertexOnly, holes, zeroIfInside); },
                [&] { return plain::distToPoint(expected, p, vertexOnly, holes, zeroIfInside); }),
          "distToPoint of a region");
    }
  }
}

/// Asks about points often enough for a small region's grid to be built.
void askManyPoints(Input& input, const qcRegion& made, const plain::Region& expected) {
  const plain::Segment row = drawSegment(input, expected.points);
  for (int i = 0; i <= 16; ++i) {
    const plain::Point p = plain::plus(row.a, plain::times(plain::minus(row.b, row.a), i / 16.0));
    require(agree([&] { return made.inside(p, false); },
                  [&] { return plain::inside(expected, p, false); }),
            "inside, asked often");
  }
}

void askRegionCrossings(Input& input, Patience& patience, const qcRegion& made,
                        const plain::Region& expected) {
  const bool holes = input.flag();
  const bool touches = input.flag();
  if (input.flag()) {
    const plain::Segment segment = drawSegment(input, expected.points);
    require(
        agree([&] { return made.intersections(qcLineSeg(segment.a, segment.b), touches, holes); },
              [&] { return plain::intersections(expected, segment, touches, holes); }),
        "intersections of a region with a segment");
    return;
  }
  const plain::Contour other{drawVertices(input, 24), touches};
  if (!patience.allows(countVertices(expected) * other.points.size())) return;
  require(agree([&] { return made.intersections(qcContour(other.points, touches, 0), holes); },
                [&] { return plain::intersections(expected, other, holes); }),
          "intersections of a region with a contour");
}

void askRepair(const qcRegion& made, const plain::Region& expected, bool hull) {
  const auto repaired = [&] {
    qcRegion result;
    if (hull) {
      made.outerHull(result);
    } else {
      made.regularize(result);
    }
    return twin::plainOf(result);
  };
  require(agree(repaired,
                [&] { return hull ? plain::outerHull(expected) : plain::regularize(expected); }),
          hull ? "outerHull" : "regularize");
}

void askSetRepair(const qcRegionSet& made, const plain::Regions& expected, bool hull) {
  const auto repaired = [&] {
    qcRegionSet result(twin::Handles(), qcContourDefs::eNoIntersectionRepair);
    if (hull) {
      made.outerHull(result);
    } else {
      made.regularize(result);
    }
    return twin::plainOf(result);
  };
  require(agree(repaired,
                [&] { return hull ? plain::outerHull(expected) : plain::regularize(expected); }),
          hull ? "outerHull of a set" : "regularize of a set");
}

/// A walk passes every vertex and crossing, of which there may be as many as pairs of edges, and
/// tests all edges at each.
std::size_t costOfRepair(std::size_t vertices) { return 8 * vertices * vertices; }

}  // namespace

std::size_t countVertices(const plain::Region& region) {
  return region.points.size() + countVertices(region.holes);
}

std::size_t countVertices(const plain::Regions& regions) {
  std::size_t count = 0;
  for (const plain::Region& region : regions) count += countVertices(region);
  return count;
}

void askContour(Input& input, Patience& patience, const qcContour& made,
                const plain::Contour& expected) {
  const std::size_t n = expected.points.size();
  if (!patience.allows(1 + n)) return;
  switch (input.below(12)) {
    case 0:
      return askLengths(made, expected);
    case 1:
    case 2:
      return askNearest(made, expected, drawPoint(input, expected.points));
    case 3:
    case 4: {
      const plain::Segment segment = drawSegment(input, expected.points);
      return askCrossings(made, expected, segment, input.flag());
    }
    case 5:
      if (!patience.allows(n * n)) return;
      return require(agree([&] { return made.isSelfIntersecting(); },
                           [&] { return plain::isSelfIntersecting(expected); }),
                     "isSelfIntersecting");
    case 6:
      return askExtremes(made, expected, drawAngle(input, expected.points));
    case 7:
      if (patience.allows(n * n / 8)) askCircles(made, expected, static_cast<int>(input.below(3)));
      return;
    case 8:
      askHull(made, expected);
      return askEllipse(made);
    case 9:
      return askRectangle(made, expected, drawXform(input));
    case 10: {
      const plain::Point p = drawPoint(input, expected.points);
      const double tolerance = drawTolerance(input);
      return require(agree([&] { return made.vertexIndex(p, tolerance); },
                           [&] { return plain::vertexIndex(expected, p, tolerance); }),
                     "vertexIndex");
    }
    default:
      askImage(made, expected, drawXform(input));
      return askDrawing(made, expected);
  }
}

void askRegion(Input& input, Patience& patience, const qcRegion& made,
               const plain::Region& expected) {
  const std::size_t n = countVertices(expected);
  switch (input.below(8)) {
    case 0:
      if (patience.allows(1 + n)) askMoments(made, expected, input.flag());
      return;
    case 1:
    case 2: {
      const plain::Point p = drawPoint(input, expected.points);
      if (patience.allows(8 * (1 + n))) askPoint(made, expected, p, input.flag());
      return;
    }
    case 3:
      if (patience.allows(17 * (1 + n))) askManyPoints(input, made, expected);
      return;
    case 4:
      if (patience.allows(1 + n)) askRegionCrossings(input, patience, made, expected);
      return;
    case 5: {
      const bool hull = input.flag();
      if (patience.allows(costOfRepair(expected.points.size()))) askRepair(made, expected, hull);
      return;
    }
    default:
      return askContour(input, patience, made, plain::boundary(expected));
  }
}

void askSet(Input& input, Patience& patience, const qcRegionSet& made,
            const plain::Regions& expected) {
  const std::size_t n = countVertices(expected);
  const plain::Points& near =
      expected.empty() ? plain::Points() : expected[input.below(expected.size())].points;
  const std::size_t question = input.below(6);
  const bool holes = input.flag();
  if (!patience.allows(1 + n)) return;
  switch (question) {
    case 0:
      require(agree([&] { return made.area(holes); }, [&] { return plain::area(expected, holes); }),
              "area of a set");
      return require(agree([&] { return made.centerOfMass(false); },
                           [&] { return plain::centerOfMass(expected, false); }),
                     "centerOfMass of a set");
    case 1:
      return require(agree([&] { return made.inertiaMatrix(false); },
                           [&] { return plain::inertiaMatrix(expected, false); }),
                     "inertiaMatrix of a set");
    case 2: {
      const plain::Point p = drawPoint(input, near);
      const bool vertexOnly = input.flag();
      const bool zero = input.flag();
      require(agree([&] { return made.inside(p, holes); },
                    [&] { return plain::inside(expected, p, holes); }),
              "inside of a set");
      return require(
          agree([&] { return made.distToPoint(p, vertexOnly, holes, zero); },
                [&] { return plain::distToPoint(expected, p, vertexOnly, holes, zero); }),
          "distToPoint of a set");
    }
    case 3: {
      const qcXform<2> xform = drawXform(input);
      const auto asked = [&] {
        const qcRect rect = made.encloseRect(xform);
        return plain::Points{rect.ul(), rect.lr()};
      };
      return require(agree(asked,
                           [&] {
                             const plain::Box box = plain::encloseRect(expected, plainOf(xform));
                             return plain::Points{{box.minX, box.minY}, {box.maxX, box.maxY}};
                           }),
                     "encloseRect of a set");
    }
    default: {
      // With too few vertices a set throws once and from then on reports that it does not cross.
      const bool canBeAsked =
          std::all_of(expected.begin(), expected.end(),
                      [](const plain::Region& region) { return region.points.size() > 1; });
      if (!canBeAsked || !patience.allows(n * n)) return;
      require(agree([&] { return made.isSelfIntersecting(); },
                    [&] { return plain::isSelfIntersecting(expected); }),
              "isSelfIntersecting of a set");
      if (patience.allows(costOfRepair(n))) askSetRepair(made, expected, question == 4);
    }
  }
}

}  // namespace fuzz
