// SPDX-License-Identifier: MIT
//
// GEOS (https://libgeos.org), by its C++ interface, the only one that provides the indexed locator.

#include <bench/peers/work.h>

#include <algorithm>
#include <memory>
#include <sstream>

#include <geos/algorithm/construct/MaximumInscribedCircle.h>
#include <geos/algorithm/distance/DiscreteHausdorffDistance.h>
#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/geom/Coordinate.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Point.h>
#include <geos/geom/Polygon.h>
#include <geos/geom/prep/PreparedGeometry.h>
#include <geos/geom/prep/PreparedGeometryFactory.h>
#include <geos/io/WKBReader.h>
#include <geos/io/WKBWriter.h>
#include <geos/simplify/TopologyPreservingSimplifier.h>

namespace peers {

namespace {

using geos::geom::CoordinateArraySequence;
using geos::geom::Geometry;
using geos::geom::GeometryFactory;
using geos::geom::prep::PreparedGeometry;
using geos::geom::prep::PreparedGeometryFactory;

const GeometryFactory& factory() { return *GeometryFactory::getDefaultInstance(); }

geos::geom::Coordinate coordinate(const Point& p) { return {p.x(), p.y()}; }

std::unique_ptr<CoordinateArraySequence> closedSequence(const Points& points) {
  auto sequence = std::make_unique<CoordinateArraySequence>();
  for (const Point& p : points) sequence->add(coordinate(p));
  sequence->add(coordinate(points.front()));
  return sequence;
}

std::unique_ptr<geos::geom::LinearRing> ring(const Points& points) {
  return factory().createLinearRing(closedSequence(points));
}

std::unique_ptr<geos::geom::LineString> closedLine(const Points& points) {
  return factory().createLineString(closedSequence(points));
}

double longestEdge(const Points& points) {
  double longest = points.back().distance(points.front());
  for (std::size_t i = 1; i < points.size(); ++i)
    longest = std::max(longest, points[i - 1].distance(points[i]));
  return longest;
}

std::unique_ptr<geos::geom::Polygon> polygon(const Points& points) {
  return factory().createPolygon(ring(points));
}

std::unique_ptr<geos::geom::Point> point(const Point& p) {
  return std::unique_ptr<geos::geom::Point>(factory().createPoint(coordinate(p)));
}

std::unique_ptr<geos::geom::LineString> line(const Segment& segment) {
  auto sequence = std::make_unique<CoordinateArraySequence>();
  sequence->add(coordinate(segment.a));
  sequence->add(coordinate(segment.b));
  return factory().createLineString(std::move(sequence));
}

/// A geometry and its index.
struct Prepared {
  explicit Prepared(std::unique_ptr<Geometry> geometry_)
      : geometry(std::move(geometry_)), index(PreparedGeometryFactory::prepare(geometry.get())) {}

  std::unique_ptr<Geometry> geometry;
  std::unique_ptr<PreparedGeometry> index;
};

/// Indexes are built by the first question.
void askAboutPlaces() {
  using Locator = geos::algorithm::locate::IndexedPointInAreaLocator;
  askOften("inside", "GEOS locator", everyShape, [](const Work& given) {
    const std::shared_ptr<Geometry> area = polygon(given.outline);
    auto locator = std::make_shared<Locator>(*area);
    const auto answer = [area, locator, &given](std::size_t i) {
      const geos::geom::Coordinate p = coordinate(given.places[i]);
      return locator->locate(&p);
    };
    answer(0);
    return answer;
  });
  askOften("inside", "GEOS prepared", everyShape, [](const Work& given) {
    auto prepared = std::make_shared<Prepared>(polygon(given.outline));
    const auto answer = [prepared, &given](std::size_t i) {
      return prepared->index->contains(point(given.places[i]).get());
    };
    answer(0);
    return answer;
  });
  askOften("closestPoint", "GEOS prepared", everyShape, [](const Work& given) {
    auto prepared = std::make_shared<Prepared>(ring(given.outline));
    const auto answer = [prepared, &given](std::size_t i) {
      return prepared->index->distance(point(given.places[i]).get());
    };
    answer(0);
    return answer;
  });
}

/// Tells whether there is a crossing, not where.
void askAboutSegments() {
  const auto ask = [](const std::string& question, std::vector<Segment> Work::*segments) {
    askOften(question + " (yes or no)", "GEOS prepared", everyShape, [segments](const Work& given) {
      auto prepared = std::make_shared<Prepared>(ring(given.outline));
      const auto answer = [prepared, &asked = given.*segments](std::size_t i) {
        return prepared->index->intersects(line(asked[i]).get());
      };
      answer(0);
      return answer;
    });
  };
  ask("short segments", &Work::shortSegments);
  ask("long segments", &Work::longSegments);
}

/// askOnce() with `answer(geometry)`.
template <class Make, class Answer>
void once(const std::string& question, const Plan& plan, Make make, Answer answer) {
  askOnce(question, "GEOS", plan, [make, answer](const Work& given) {
    const std::shared_ptr<Geometry> geometry = make(given.outline);
    return std::pair(&setNothing, [geometry, answer] { return answer(*geometry); });
  });
}

void measure() {
  const auto isSimple = [](const Geometry& g) { return g.isSimple(); };
  once("isSelfIntersecting", {"SC", largerShapes.sizes}, &ring, isSimple);
  once("isSelfIntersecting", upTo(10000, {"N", largerShapes.sizes}), &ring, isSimple);
  once("convexHull", largerShapes, &ring,
       [](const Geometry& g) { return g.convexHull()->getNumPoints(); });
  once("inscribedCircle", largerShapes, &polygon, [](const Geometry& g) {
    geos::algorithm::construct::MaximumInscribedCircle circle(&g, inscribedTolerance);
    return circle.getRadiusLine()->getLength();
  });
  // Asked about lines, because GEOS 3.11 gives a different distance for rings. Its points lie at
  // equal steps of each edge, and the longest steps are twice the tolerance: it may miss as much as
  // this library.
  askOnce("hausdorff", "GEOS", Plan{"S", {100, 1000}}, [](const Work& given) {
    Points moved = given.outline;
    shapes::scaleAndShift(moved, 1.002, Point(0.5, 0.25));
    const double share = std::min(1.0, 2.0 * hausdorffTolerance / longestEdge(moved));
    return std::pair(&setNothing, [a = std::shared_ptr(closedLine(moved)),
                                   b = std::shared_ptr(closedLine(given.outline)), share] {
      return geos::algorithm::distance::DiscreteHausdorffDistance::distance(*a, *b, share);
    });
  });
  once("simplify", smoothStars, &polygon, [](const Geometry& g) {
    return geos::simplify::TopologyPreservingSimplifier::simplify(&g, 2.0)->getNumPoints();
  });
  once("length", smoothStars, &ring, [](const Geometry& g) { return g.getLength(); });
  once("area", smoothStars, &polygon, [](const Geometry& g) { return g.getArea(); });
  once("centerOfMass", smoothStars, &polygon, [](const Geometry& g) {
    geos::geom::Coordinate center;
    g.getCentroid(center);
    return center.x;
  });
}

void store() {
  const Plan plan{"S", {1000, 100000, 1000000}};
  askOnce("store", "GEOS", plan, [](const Work& given) {
    const std::shared_ptr<Geometry> geometry = polygon(given.outline);
    const auto stream = std::make_shared<std::ostringstream>();
    geos::io::WKBWriter().write(*geometry, *stream);
    return std::pair([stream] { stream->seekp(0); },
                     [geometry, stream] {
                       geos::io::WKBWriter().write(*geometry, *stream);
                       return stream.get();
                     });
  });
  askOnce("load", "GEOS", plan, [](const Work& given) {
    std::ostringstream stored;
    geos::io::WKBWriter().write(*polygon(given.outline), stored);
    const auto stream = std::make_shared<std::istringstream>(std::move(stored).str());
    return std::pair(
        [stream] { stream->seekg(0); },
        [stream] { return geos::io::WKBReader(factory()).read(*stream)->getNumPoints(); });
  });
}

const bool isRegistered = [] {
  askAboutPlaces();
  askAboutSegments();
  measure();
  store();
  return true;
}();

}  // namespace

}  // namespace peers
