// SPDX-License-Identifier: MIT
//
// Boost.Geometry: its algorithms, and its R-tree over edges, vertices and the boxes of a set's
// regions, which are this library's.

#include <bench/peers/work.h>

#include <algorithm>
#include <limits>
#include <memory>

#include <cntr/region.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/geometries.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/index/rtree.hpp>

namespace peers {

namespace {

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

using BoostPoint = bg::model::d2::point_xy<double>;
using BoostSegment = bg::model::segment<BoostPoint>;
/// Counter-clockwise as the shapes are, with the first vertex repeated at the end.
using Polygon = bg::model::polygon<BoostPoint, false, true>;
using Packing = bgi::rstar<16>;
using EdgeTree = bgi::rtree<BoostSegment, Packing>;
using VertexTree = bgi::rtree<std::pair<BoostPoint, std::size_t>, Packing>;

BoostPoint point(const Point& p) { return {p.x(), p.y()}; }

Polygon polygonOf(const Points& points) {
  Polygon polygon;
  for (const Point& p : points) polygon.outer().push_back(point(p));
  polygon.outer().push_back(point(points.front()));
  return polygon;
}

/// Packed: made of all edges at once, which gives the fastest trees.
std::shared_ptr<EdgeTree> edgeTree(const Points& points) {
  std::vector<BoostSegment> edges;
  for (std::size_t i = 0; i < points.size(); ++i) {
    edges.emplace_back(point(points[i]), point(points[(i + 1) % points.size()]));
  }
  return std::make_shared<EdgeTree>(edges);
}

std::shared_ptr<VertexTree> vertexTree(const Points& points) {
  std::vector<std::pair<BoostPoint, std::size_t>> vertices;
  for (std::size_t i = 0; i < points.size(); ++i) vertices.emplace_back(point(points[i]), i);
  return std::make_shared<VertexTree>(vertices);
}

/// The crossing points of the edges that the tree finds, in order along the segment.
std::size_t crossings(const EdgeTree& tree, const Segment& segment) {
  const BoostSegment asked(point(segment.a), point(segment.b));
  std::vector<std::pair<double, BoostPoint>> found;
  std::vector<BoostPoint> meeting;
  for (auto edge = tree.qbegin(bgi::intersects(asked)); edge != tree.qend(); ++edge) {
    meeting.clear();
    bg::intersection(*edge, asked, meeting);
    for (const BoostPoint& p : meeting) found.emplace_back(bg::distance(asked.first, p), p);
  }
  std::sort(found.begin(), found.end(),
            [](const auto& x, const auto& y) { return x.first < y.first; });
  return found.size();
}

double centroidX(const Polygon& polygon) {
  BoostPoint center(0.0, 0.0);
  bg::centroid(polygon, center);
  return center.x();
}

void askAboutPlaces() {
  const auto isInside = [](const Polygon& area, const Work& given, std::size_t i) {
    return bg::within(point(given.places[i]), area);
  };
  askOften("inside", "Boost", everyShape, [isInside](const Work& given) {
    return [area = polygonOf(given.outline), &given, isInside](std::size_t i) {
      return isInside(area, given, i);
    };
  });
  askNewTimes(
      10, "Boost", smoothStars,
      [](const Work& given) { return std::make_unique<Polygon>(polygonOf(given.outline)); },
      isInside);
  liveOften("make, area, inside", "Boost", quadrilateral, [](const Work& given, std::size_t i) {
    Polygon area;
    area.outer().reserve(given.outline.size() + 1);
    for (const Point& p : given.outline) area.outer().push_back(point(p));
    area.outer().push_back(area.outer().front());
    return bg::area(area) + (bg::within(point(given.places[i]), area) ? 1.0 : 0.0);
  });
  askOften("closestPoint", "Boost R-tree", everyShape, [](const Work& given) {
    return [tree = edgeTree(given.outline), &given](std::size_t i) {
      const BoostPoint p = point(given.places[i]);
      return bg::distance(p, *tree->qbegin(bgi::nearest(p, 1)));
    };
  });
  askOften("closestVertexIndex", "Boost R-tree", everyShape, [](const Work& given) {
    return [tree = vertexTree(given.outline), &given](std::size_t i) {
      return tree->qbegin(bgi::nearest(point(given.places[i]), 1))->second;
    };
  });
}

void askAboutSegments() {
  const auto ask = [](const std::string& question, std::vector<Segment> Work::*segments) {
    askOften(question, "Boost R-tree", everyShape, [segments](const Work& given) {
      return [tree = edgeTree(given.outline), &asked = given.*segments](std::size_t i) {
        return crossings(*tree, asked[i]);
      };
    });
  };
  ask("short segments", &Work::shortSegments);
  ask("long segments", &Work::longSegments);
}

/// askOnce() with `answer(polygon)`.
template <class Answer>
void once(const std::string& question, const Plan& plan, Answer answer) {
  askOnce(question, "Boost", plan, [answer](const Work& given) {
    return std::pair(&setNothing,
                     [area = polygonOf(given.outline), answer] { return answer(area); });
  });
}

void measure() {
  const auto crossesItself = [](const Polygon& p) { return bg::intersects(p); };
  once("isSelfIntersecting", {"SC", everyShape.sizes}, crossesItself);
  once("isSelfIntersecting", upTo(10000, {"N", everyShape.sizes}), crossesItself);
  once("convexHull", largerShapes, [](const Polygon& p) {
    Polygon hull;
    bg::convex_hull(p, hull);
    return hull.outer().size();
  });
  once("simplify", smoothStars, [](const Polygon& p) {
    Polygon simplified;
    bg::simplify(p, simplified, 2.0);
    return simplified.outer().size();
  });
  once("length", smoothStars, [](const Polygon& p) { return bg::perimeter(p); });
  once("area", smoothStars, [](const Polygon& p) { return bg::area(p); });
  once("encloseRect", smoothStars, [](const Polygon& p) {
    return bg::return_envelope<bg::model::box<BoostPoint>>(p).max_corner().x();
  });
  once("centerOfMass", smoothStars, &centroidX);
}

/// This library's regions under a tree of their boxes.
class BoxedRegions {
 public:
  explicit BoxedRegions(const SetWork& given) {
    std::vector<std::pair<Box, std::size_t>> boxes;
    for (const Points& outline : given.outlines) {
      boxes.emplace_back(bg::return_envelope<Box>(polygonOf(outline)), regions_.size());
      regions_.push_back(std::make_unique<qcRegion>(outline, qcContourDefs::eNoIntersectionRepair));
    }
    tree_ = BoxTree(boxes);
  }

  bool inside(const Point& p) const {
    for (auto at = tree_.qbegin(bgi::intersects(point(p))); at != tree_.qend(); ++at) {
      if (regions_[at->second]->inside(p, false)) return true;
    }
    return false;
  }

  /// Asks the tree for the nearest few boxes, then for twice as many, until the next one is too far
  /// away: asking for all at once takes 40 times as long.
  double distance(const Point& p) const {
    double nearest = std::numeric_limits<double>::infinity();
    std::size_t asked = 0;
    for (unsigned count = 4; asked < regions_.size(); count *= 2) {
      std::size_t i = 0;
      for (auto at = tree_.qbegin(bgi::nearest(point(p), count)); at != tree_.qend(); ++at) {
        if (i++ < asked) continue;
        if (bg::distance(point(p), at->first) > nearest) return nearest;
        nearest = std::min(nearest, regions_[at->second]->distToPoint(p, false, false, false));
      }
      asked = i;
    }
    return nearest;
  }

 private:
  using Box = bg::model::box<BoostPoint>;
  using BoxTree = bgi::rtree<std::pair<Box, std::size_t>, Packing>;

  std::vector<std::unique_ptr<qcRegion>> regions_;
  BoxTree tree_;
};

void askSets() {
  const std::string who = "Boost R-tree of boxes";
  askSetOften("set inside", who, [](const SetWork& given) {
    return [regions = std::make_shared<BoxedRegions>(given)](const Point& p) {
      return regions->inside(p);
    };
  });
  askSetOften("set distToPoint", who, [](const SetWork& given) {
    return [regions = std::make_shared<BoxedRegions>(given)](const Point& p) {
      return regions->distance(p);
    };
  });
}

const bool isRegistered = [] {
  askAboutPlaces();
  askAboutSegments();
  measure();
  askSets();
  return true;
}();

}  // namespace

}  // namespace peers
