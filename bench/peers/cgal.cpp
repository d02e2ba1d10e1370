// SPDX-License-Identifier: MIT
//
// CGAL: its convex hull with exact predicates, and a polygon's own measures.

#include <bench/peers/work.h>

#include <iterator>

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Min_circle_2.h>
#include <CGAL/Min_circle_2_traits_2.h>
#include <CGAL/Polygon_2.h>
#include <CGAL/convex_hull_2.h>
#include <CGAL/min_quadrilateral_2.h>

namespace peers {

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Polygon = CGAL::Polygon_2<Kernel>;

Polygon polygonOf(const Points& points) {
  Polygon polygon;
  for (const Point& p : points) polygon.push_back({p.x(), p.y()});
  return polygon;
}

/// askOnce() with `answer(polygon)`.
template <class Answer>
void once(const std::string& question, const Plan& plan, Answer answer) {
  askOnce(question, "CGAL", plan, [answer](const Work& given) {
    return std::pair(&setNothing,
                     [polygon = polygonOf(given.outline), answer] { return answer(polygon); });
  });
}

const bool isRegistered = [] {
  askOften("inside", "CGAL", everyShape, [](const Work& given) {
    return [polygon = polygonOf(given.outline), &given](std::size_t i) {
      const Point& p = given.places[i];
      return polygon.bounded_side({p.x(), p.y()});
    };
  });
  once("convexHull", largerShapes, [](const Polygon& polygon) {
    std::vector<Kernel::Point_2> hull;
    CGAL::convex_hull_2(polygon.vertices_begin(), polygon.vertices_end(), std::back_inserter(hull));
    return hull.size();
  });
  // Its rectangle needs a convex polygon that runs counter-clockwise.
  once("minimumAreaRect", largerShapes, [](const Polygon& polygon) {
    std::vector<Kernel::Point_2> hull;
    CGAL::convex_hull_2(polygon.vertices_begin(), polygon.vertices_end(), std::back_inserter(hull));
    Polygon rectangle;
    CGAL::min_rectangle_2(hull.begin(), hull.end(), std::back_inserter(rectangle));
    return rectangle.size();
  });
  once("minimumCircle", largerShapes, [](const Polygon& polygon) {
    using Circle = CGAL::Min_circle_2<CGAL::Min_circle_2_traits_2<Kernel>>;
    return Circle(polygon.vertices_begin(), polygon.vertices_end(), true)
        .number_of_support_points();
  });
  once("isSelfIntersecting", everyShape, [](const Polygon& p) { return !p.is_simple(); });
  once("area", smoothStars, [](const Polygon& p) { return p.area(); });
  once("encloseRect", smoothStars, [](const Polygon& p) { return p.bbox().ymax(); });
  return true;
}();

}  // namespace

}  // namespace peers
