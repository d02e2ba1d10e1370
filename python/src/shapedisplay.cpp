// SPDX-License-Identifier: MIT
//
// How shapes show themselves: as text, as a picture in a notebook, on the axes of matplotlib, and
// to packages that know the geo interface.

#include <nanobind/stl/string.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <platform/display/svgtablet.h>
#include <python/src/point.h>
#include <python/src/shapebindings.h>
#include <python/src/texts.h>

namespace nb = nanobind;

namespace python {

namespace {

/// The longer side of a picture, in pixels.
constexpr double pictureSize = 300.0;
constexpr double strokeWidth = 1.5;

/// For example "12 vertices, 1 hole, label 7", without what is missing.
std::string description(const Part& part) {
  const Curve& outline = part.outline;
  std::string text = counted(outline.points().size(), "vertex", "vertices");
  if (!part.holes.empty()) text += ", " + counted(part.holes.size(), "hole", "holes");
  if (!outline.edges.magnitudes.empty()) text += ", edge elements";
  if (part.label() != 0) text += ", label " + std::to_string(part.label());
  return text;
}

std::string representation(nb::handle self) {
  const auto& shape = nb::cast<const Shape&>(self);
  std::string text = "<cntr." + nb::cast<std::string>(self.type().attr("__name__")) + ": ";
  if (nb::isinstance<RegionSet>(self))
    return text + counted(shape.parts().size(), "region", "regions") + ">";
  if (!shape.isClosed()) text += "open, ";
  return text + description(shape.parts().front()) + ">";
}

using Curves = std::vector<const Curve*>;

/// The size of the box of the finite vertices; zero without any.
qcVector<2> sizeOf(const Curves& curves) {
  std::optional<qcRect> box;
  for (const Curve* const curve : curves) {
    for (const qcVector<2>& p : curve->points()) {
      if (!std::isfinite(p.x()) || !std::isfinite(p.y())) continue;
      const qcRect own{qcPoint(p), qcPoint(p)};
      box = box ? box->enclose(own) : own;
    }
  }
  return box ? qcVector<2>(box->width(), box->height()) : qcVector<2>();
}

/// The SVG element of the picture, without the XML declaration, in a size that suits a page.
std::string pictureOf(const Curves& curves) {
  const nb::gil_scoped_release released;
  const qcVector<2> size = sizeOf(curves);
  const double longest = std::max(size.x(), size.y());
  const double extent = longest > 0.0 ? longest : 1.0;
  qcSvgTablet tablet(extent * strokeWidth / pictureSize);
  for (const Curve* const curve : curves) {
    Curve(*curve).contour().draw(tablet, qcContourDefs::eDrawContour, qcColor(31, 119, 180),
                                 qcUITablet::eOverlayLayer);
  }
  std::ostringstream svg;
  tablet.write(svg);
  const std::string text = svg.str();
  const std::string opening = "<svg ";
  const std::size_t begin = text.find(opening);
  const auto pixels = [extent](double side) {
    return std::to_string(std::lround(pictureSize * std::max(side / extent, 0.1)));
  };
  return opening + "width=\"" + pixels(size.x()) + "\" height=\"" + pixels(size.y()) + "\" " +
         text.substr(begin + opening.size());
}

/// One picture of several shapes.
std::string picture(const nb::sequence& shapes) {
  Curves curves;
  for (const nb::handle shape : shapes) {
    const Curves own = nb::cast<const Shape&>(shape).curves();
    curves.insert(curves.end(), own.begin(), own.end());
  }
  return pictureOf(curves);
}

/// A ring with its first vertex repeated at the end; a line unchanged.
nb::tuple coordinatesOf(const Curve& curve) {
  nb::list points;
  for (const qcVector<2>& p : curve.points()) points.append(nb::cast(p));
  if (curve.isClosed() && !curve.points().empty() &&
      !(curve.points().size() > 1 && curve.points().front() == curve.points().back()))
    points.append(nb::cast(curve.points().front()));
  return nb::tuple(points);
}

nb::tuple coordinatesOf(const Part& part) {
  nb::list rings;
  rings.append(coordinatesOf(part.outline));
  for (const Curve& hole : part.holes) rings.append(coordinatesOf(hole));
  return nb::tuple(rings);
}

nb::dict geoInterface(nb::handle self) {
  const auto& shape = nb::cast<const Shape&>(self);
  nb::dict interface;
  if (nb::isinstance<RegionSet>(self)) {
    nb::list parts;
    for (const Part& part : shape.parts()) parts.append(coordinatesOf(part));
    interface["type"] = "MultiPolygon";
    interface["coordinates"] = nb::tuple(parts);
  } else if (shape.isClosed()) {
    interface["type"] = "Polygon";
    interface["coordinates"] = coordinatesOf(shape.parts().front());
  } else {
    interface["type"] = "LineString";
    interface["coordinates"] = coordinatesOf(shape.parts().front().outline);
  }
  return interface;
}

}  // namespace

void definePicture(nb::module_& module) {
  module.def("picture", picture, nb::arg("shapes"),
             nb::sig("def picture(shapes: collections.abc.Sequence[Shape]) -> str"),
             "The boundaries and lines of all shapes in one picture, drawn as by _repr_svg_().");
}

void defineDisplay(ShapeClass& shape) {
  shape.def("__repr__", representation);
  shape.def(
      "_repr_svg_", [](const Shape& self) { return pictureOf(self.curves()); },
      "The boundaries or the line as a picture, y downwards.");
  shape.def_prop_ro("__geo_interface__", geoInterface,
                    nb::sig("def __geo_interface__(self, /) -> dict[str, object]"),
                    "A GeoJSON Polygon, MultiPolygon or LineString.");
  shape.def(
      "plot",
      [](nb::handle self, nb::handle axes) {
        return nb::module_::import_("cntr._plot").attr("plot")(self, axes);
      },
      nb::arg("ax") = nb::none(),
      nb::sig("def plot(self, ax: matplotlib.axes.Axes | None = None) -> matplotlib.axes.Axes"),
      "Draws the boundaries or the line on matplotlib axes, by default the current ones,\n"
      "and returns the axes. The filled set is tinted.");
}

}  // namespace python
