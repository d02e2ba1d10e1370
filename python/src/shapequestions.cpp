// SPDX-License-Identifier: MIT
//
// Queries of shapes about points, segments and directions. A method that takes points also takes a
// single point, and then returns a single answer.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <cntr/contourdefs.h>
#include <cntr/regionst.h>
#include <python/src/arrays.h>
#include <python/src/newarrays.h>
#include <python/src/point.h>
#include <python/src/results.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

namespace {

using Point = qcVector<2>;
using Points = std::span<const Point>;

constexpr std::size_t fewestInCurve = 2;

bool isInside(const Areas& areas, const Point& p) {
  return areas.ask([&] { return areas.inside().contains(p); });
}

nb::object areInside(const Areas& areas, nb::handle given) {
  const PointArray array(given, "points");
  const Points points = array.points();
  auto answers = std::make_unique<bool[]>(points.size());
  areas.ask([&] { areas.inside().contains(points, {answers.get(), points.size()}); });
  return newArray(std::move(answers), points.size());
}

/// The nearest points of all curves; of several that are equally near, that of the first curve. To
/// be used within ask().
std::vector<Point> nearestPoints(const Shape& shape, Points points) {
  shape.requireVertices(fewestInCurve);
  std::vector<Point> nearest(points.size());
  std::vector<Point> candidates(points.size());
  bool isFirst = true;
  for (const Curve* const curve : shape.curves()) {
    curve->contour().closestPoint(points, false, candidates);
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (isFirst || points[i].distance(candidates[i]) < points[i].distance(nearest[i]))
        nearest[i] = candidates[i];
    }
    isFirst = false;
  }
  return nearest;
}

std::vector<double> distances(const Shape& shape, Points points) {
  const std::vector<Point> nearest = nearestPoints(shape, points);
  std::vector<double> distances;
  distances.reserve(points.size());
  for (std::size_t i = 0; i < points.size(); ++i)
    distances.push_back(points[i].distance(nearest[i]));
  return distances;
}

std::vector<double> distancesFromAreas(const Areas& areas, Points points, bool isZeroInside) {
  std::vector<double> answers = distances(areas, points);
  for (std::size_t i = 0; isZeroInside && i < points.size(); ++i)
    if (areas.inside().contains(points[i])) answers[i] = 0.0;
  return answers;
}

double distanceTo(const Shape& shape, const Point& p) {
  return shape.ask([&] { return distances(shape, {&p, 1}).front(); });
}

nb::object distancesTo(const Shape& shape, nb::handle given) {
  const PointArray array(given, "points");
  return newArray(shape.ask([&] { return distances(shape, array.points()); }));
}

double distanceFromAreasTo(const Areas& areas, const Point& p, bool isZeroInside) {
  return areas.ask([&] { return distancesFromAreas(areas, {&p, 1}, isZeroInside).front(); });
}

nb::object distancesFromAreasTo(const Areas& areas, nb::handle given, bool isZeroInside) {
  const PointArray array(given, "points");
  return newArray(
      areas.ask([&] { return distancesFromAreas(areas, array.points(), isZeroInside); }));
}

Point closestPoint(const Shape& shape, const Point& p) {
  return shape.ask([&] { return nearestPoints(shape, {&p, 1}).front(); });
}

nb::object closestPoints(const Shape& shape, nb::handle given) {
  const PointArray array(given, "points");
  return newArrayOfPoints(shape.ask([&] { return nearestPoints(shape, array.points()); }));
}

/// A vertex of a shape of one part.
struct Place {
  std::size_t ring;
  std::size_t number;
  Point point;
};

Place placeOf(const Curve& curve, std::size_t ring, long index) {
  const auto i = static_cast<std::size_t>(index);
  return {ring, i, curve.points()[i]};
}

/// The nearest vertices; of several that are equally near, the first of the first curve. To be used
/// within ask().
std::vector<Place> nearestVertices(const Shape& shape, Points points) {
  shape.requireVertices(fewestInCurve);
  const std::vector<const Curve*> curves = shape.curves();
  std::vector<Place> nearest;
  nearest.reserve(points.size());
  for (const Point& p : points) {
    Place best = placeOf(*curves[0], 0, curves[0]->contour().closestVertexIndex(p));
    for (std::size_t ring = 1; ring < curves.size(); ++ring) {
      const Place other =
          placeOf(*curves[ring], ring, curves[ring]->contour().closestVertexIndex(p));
      if (p.distance(other.point) < p.distance(best.point)) best = other;
    }
    nearest.push_back(best);
  }
  return nearest;
}

nb::object vertexOf(const Place& place) {
  return newResult("Vertex", place.ring, place.number, place.point);
}

nb::object closestVertex(const Shape& shape, const Point& p) {
  return vertexOf(shape.ask([&] { return nearestVertices(shape, {&p, 1}).front(); }));
}

nb::object closestVertices(const Shape& shape, nb::handle given) {
  const PointArray array(given, "points");
  const std::vector<Place> places =
      shape.ask([&] { return nearestVertices(shape, array.points()); });
  std::vector<std::int64_t> rings;
  std::vector<std::int64_t> numbers;
  std::vector<Point> points;
  for (const Place& place : places) {
    rings.push_back(static_cast<std::int64_t>(place.ring));
    numbers.push_back(static_cast<std::int64_t>(place.number));
    points.push_back(place.point);
  }
  return newResult("Vertices", newArray(std::move(rings)), newArray(std::move(numbers)),
                   newArrayOfPoints(points));
}

nb::object extremalVertex(const Shape& shape, double degrees) {
  const Place place = shape.ask([&] {
    shape.requireVertices(fewestInCurve);
    const Curve& outline = shape.parts().front().outline;
    const long index = outline.contour().extremalVertexIndex(qcDegree(degrees));
    if (index < 0)
      throw qcContourDefs::BadParams(L"no vertex has a finite position in that direction");
    return placeOf(outline, 0, index);
  });
  return vertexOf(place);
}

nb::object intersections(const Shape& shape, nb::handle given, bool holes, bool touches) {
  const std::vector<double> ends = matrixOf(given, "segment", 2, 2);
  const qcLineSeg segment(Point(ends[0], ends[1]), Point(ends[2], ends[3]));
  std::vector<Point> crossings;
  shape.ask([&] {
    shape.requireVertices(fewestInCurve);
    const auto add = [&](const Curve& curve) {
      const std::vector<Point> more = curve.contour().intersections(segment, touches);
      crossings.insert(crossings.end(), more.begin(), more.end());
    };
    for (const Part& part : shape.parts()) {
      add(part.outline);
      if (holes) std::for_each(part.holes.begin(), part.holes.end(), add);
    }
  });
  return newArrayOfPoints(crossings);
}

bool isSelfIntersecting(const Shape& shape) {
  return shape.ask([&] { return shape.parts().front().outline.contour().isSelfIntersecting(); });
}

/// Whether an outline crosses itself, or crosses or touches another one.
bool doIntersect(const RegionSet& set) {
  const nb::gil_scoped_release released;
  if (set.parts().empty()) return false;
  set.requireVertices(fewestInCurve);
  constexpr auto asGiven = qcContourDefs::eNoIntersectionRepair;
  std::vector<qcPtrHandle_const<qcRegion>> outlines;
  for (const Part& part : set.parts())
    outlines.emplace_back(new qcRegion(part.outline.points(), asGiven));
  return qcRegionSet(outlines, asGiven).isSelfIntersecting();
}

}  // namespace

void defineQuestions(ShapeClass& shape) {
  shape.def("distance", distanceTo, nb::arg("point"),
            nb::sig("def distance(self, point: tuple[float, float]) -> float"),
            "The distance of a point, or of each of many points, from the nearest boundary or\n"
            "line.");
  shape.def("distance", distancesTo, nb::arg("points").none(),
            nb::sig("def distance(self, points: numpy.typing.ArrayLike) -> "
                    "numpy.typing.NDArray[numpy.float64]"));
  shape.def("closest_point", closestPoint, nb::arg("point"),
            nb::sig("def closest_point(self, point: tuple[float, float]) -> tuple[float, float]"),
            "The point of the boundary or line that is nearest to a point, or to each of many\n"
            "points.");
  shape.def("closest_point", closestPoints, nb::arg("points").none(),
            nb::sig("def closest_point(self, points: numpy.typing.ArrayLike) -> "
                    "numpy.typing.NDArray[numpy.float64]"));
  shape.def("intersections", intersections, nb::arg("segment").none(), nb::arg("holes") = true,
            nb::arg("touches") = true,
            nb::sig("def intersections(self, segment: numpy.typing.ArrayLike, holes: bool = True, "
                    "touches: bool = True) -> numpy.typing.NDArray[numpy.float64]"),
            "The points where the segment (p, q) crosses the boundaries or the line, shape (n,\n"
            "2): in order along the segment, for each outline and then for each of its holes. A\n"
            "segment through a vertex crosses both of its edges. Without `touches`, crossings\n"
            "within 1e-6 of an end of the segment are left out.");
}

void defineQuestionsOfAreas(AreasClass& areas) {
  areas.def("inside", isInside, nb::arg("point"),
            nb::sig("def inside(self, point: tuple[float, float]) -> bool"),
            "Whether a point, or each of many points, is inside the filled set.");
  areas.def("inside", areInside, nb::arg("points").none(),
            nb::sig("def inside(self, points: numpy.typing.ArrayLike) -> "
                    "numpy.typing.NDArray[numpy.bool_]"));
  areas.def("distance", distanceFromAreasTo, nb::arg("point"), nb::arg("zero_inside") = false,
            nb::sig("def distance(self, point: tuple[float, float], zero_inside: bool = False) -> "
                    "float"),
            "The distance of a point, or of each of many points, from the nearest boundary; with\n"
            "`zero_inside`, 0 for points inside the filled set.");
  areas.def("distance", distancesFromAreasTo, nb::arg("points").none(),
            nb::arg("zero_inside") = false,
            nb::sig("def distance(self, points: numpy.typing.ArrayLike, zero_inside: bool = False) "
                    "-> numpy.typing.NDArray[numpy.float64]"));
}

void defineQuestionsOfSet(RegionSetClass& set) {
  set.def("is_self_intersecting", doIntersect,
          "Whether an outline crosses itself, or crosses or touches another one, within 1e-6.");
}

template <class Class>
void defineQuestionsOfOneCurve(Class& shape) {
  shape.def("closest_vertex", closestVertex, nb::arg("point"),
            nb::sig("def closest_vertex(self, point: tuple[float, float]) -> Vertex"),
            "The vertex that is nearest to a point, or to each of many points.");
  shape.def("closest_vertex", closestVertices, nb::arg("points").none(),
            nb::sig("def closest_vertex(self, points: numpy.typing.ArrayLike) -> "
                    "Vertices"));
  shape.def("extremal_vertex", extremalVertex, nb::arg("degrees"),
            nb::sig("def extremal_vertex(self, degrees: float) -> Vertex"),
            "The vertex of the outline or line that is farthest in a direction, an angle from the\n"
            "x axis towards the y axis; the first of several.");
  shape.def("is_self_intersecting", isSelfIntersecting,
            "Whether an edge of the outline or line crosses another one, within 1e-6.");
}

template void defineQuestionsOfOneCurve(ContourClass& shape);
template void defineQuestionsOfOneCurve(RegionClass& shape);

}  // namespace python
