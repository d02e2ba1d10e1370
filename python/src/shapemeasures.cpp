// SPDX-License-Identifier: MIT
//
// The measures of shapes.

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <platform/core/hull.h>
#include <python/src/measures.h>
#include <python/src/newarrays.h>
#include <python/src/point.h>
#include <python/src/results.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

namespace {

/// 0 for no regions, which the intersection of two shapes may be.
double sumOf(const Shape& shape, const char* measure) {
  return shape.parts().empty() ? 0.0 : measuresOf(shape, {measure}).front();
}

double areaOf(const Shape& shape) { return sumOf(shape, "area"); }

double lengthOf(const Shape& shape) { return sumOf(shape, "length"); }

double diameterOf(const Shape& shape) { return measuresOf(shape, {"diameter"}).front(); }

nb::tuple centroidOf(const Shape& shape) {
  const std::vector<double> centre = measuresOf(shape, {"centre_x", "centre_y"});
  return nb::make_tuple(centre[0], centre[1]);
}

nb::object inertiaOf(const Shape& shape) {
  return newArray(measuresOf(shape, {"moment_xx", "moment_xy", "moment_xy", "moment_yy"}), {2, 2});
}

nb::tuple boundsOf(const Shape& shape) {
  const table::Extent extent = [&shape] {
    const nb::gil_scoped_release released;
    shape.requireVertices(1);
    return *table::factsOf({shape.rings(), shape.isClosed()}, table::eExtent,
                           table::Filling::eMeasured)
                .extent;
  }();
  return nb::make_tuple(extent.low.x(), extent.low.y(), extent.high.x(), extent.high.y());
}

nb::object rectangleOf(const Shape& shape) {
  std::vector<double> box;
  std::array<qcVector<2>, 4> corners;
  {
    const nb::gil_scoped_release released;
    const table::Facts facts = factsOf(shape, table::eBox);
    box = answersOf(facts, {"box_x", "box_y", "box_length", "box_width", "box_angle"});
    std::transform(facts.box->corners.begin(), facts.box->corners.end(), corners.begin(),
                   [&facts](const qcVector<2>& corner) { return facts.frame.restored(corner); });
  }
  return newResult("Rectangle", nb::make_tuple(box[0], box[1]), box[2], box[3], box[4],
                   nb::make_tuple(corners[0], corners[1], corners[2], corners[3]));
}

nb::object circleOf(const Shape& shape, std::initializer_list<const char*> names) {
  const std::vector<double> circle = measuresOf(shape, names);
  return newResult("Circle", nb::make_tuple(circle[0], circle[1]), circle[2]);
}

nb::object ellipseOf(const Shape& shape) {
  const std::vector<double> ellipse =
      measuresOf(shape, {"ellipse_x", "ellipse_y", "ellipse_radius1", "ellipse_radius2",
                         "ellipse_rotation", "ellipse_residual"});
  return newResult("Ellipse", nb::make_tuple(ellipse[0], ellipse[1]),
                   nb::make_tuple(ellipse[2], ellipse[3]), ellipse[4], ellipse[5]);
}

Region hullOf(const Shape& shape) {
  const nb::gil_scoped_release released;
  shape.requireVertices(2);
  std::vector<qcVector<2>> vertices;
  for (const Part& part : shape.parts()) {
    const std::vector<qcVector<2>>& points = part.outline.points();
    for (const qcVector<2>& p : points) {
      if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
        throw qcContourDefs::BadParams(L"a coordinate is not a finite number");
    }
    vertices.insert(vertices.end(), points.begin(), points.end());
  }
  qcRings hull;
  qfConvexHull(vertices, hull.outline);
  return {hull, shape.parts().size() == 1 ? shape.parts().front().label() : 0};
}

}  // namespace

void defineMeasures(ShapeClass& shape) {
  shape.def("area", areaOf,
            "The area of the filled set, without the holes; NaN for an open contour.");
  shape.def("centroid", centroidOf, nb::sig("def centroid(self) -> tuple[float, float]"),
            "The centre of mass of the filled set; NaN if it has no area.");
  shape.def("inertia", inertiaOf,
            nb::sig("def inertia(self) -> numpy.typing.NDArray[numpy.float64]"),
            "The second moments about the centre of mass, [[xx, xy], [xy, yy]]: the integrals of\n"
            "dx * dx, dx * dy and dy * dy over the filled set; NaN if it has no area.");
  shape.def("length", lengthOf, "The length of the outlines or of the line, without holes.");
  shape.def_prop_ro("bounds", boundsOf,
                    nb::sig("def bounds(self, /) -> tuple[float, float, float, float]"),
                    "The smallest and largest coordinates: xmin, ymin, xmax, ymax.");
  shape.def("hull", hullOf,
            "The convex hull of the outlines or of the line, counter-clockwise with y up,\n"
            "starting at its lowest, then leftmost vertex.");
  shape.def("minimum_area_rect", rectangleOf, nb::sig("def minimum_area_rect(self) -> Rectangle"),
            "The rectangle of smallest area that encloses the outlines or the line.");
  shape.def(
      "minimum_circle",
      [](const Shape& self) {
        return circleOf(self, {"circle_x", "circle_y", "circle_radius"});
      },
      nb::sig("def minimum_circle(self) -> Circle"),
      "The smallest circle that encloses the outlines or the line.");
}

void defineMeasuresOfAreas(AreasClass& areas) {
  areas.def(
      "inscribed_circle",
      [](const Areas& self) {
        return circleOf(self, {"inscribed_x", "inscribed_y", "inscribed_radius"});
      },
      nb::sig("def inscribed_circle(self) -> Circle"),
      "A largest circle inside the filled set, to 1e-6 of its size; NaN if there is none.");
}

template <class Class>
void defineMeasuresOfOneCurve(Class& shape) {
  shape.def("diameter", diameterOf, "The largest distance between two vertices.");
  shape.def("fit_ellipse", ellipseOf, nb::sig("def fit_ellipse(self) -> Ellipse"),
            "The ellipse that fits the vertices best, or a circle if no ellipse fits.");
}

template void defineMeasuresOfOneCurve(ContourClass& shape);
template void defineMeasuresOfOneCurve(RegionClass& shape);

}  // namespace python
