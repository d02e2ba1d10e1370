// SPDX-License-Identifier: MIT
//
// How far a shape lies from a nominal one. Areas are compared by the boundaries of what they fill,
// in coordinates in which the size of the nominal is about 1, wherever it lies.

#include <nanobind/stl/optional.h>

#include <cmath>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include <cntr/deviation.h>
#include <cntrsets/frame.h>
#include <cntrsets/sets.h>
#include <cntrsets/spacing.h>
#include <python/src/newarrays.h>
#include <python/src/point.h>
#include <python/src/results.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

namespace python {

namespace {

using cntr::sets::Frame;
using Point = qcVector<2>;
using Ring = std::vector<Point>;

/// Boundaries and lines, and their local coordinates.
class Boundary {
 public:
  explicit Boundary(const Shape& shape) : isClosed_(shape.isClosed()) {
    shape.requireMeasurable();
    const std::vector<qcRings> parts =
        isClosed_ ? qf_MakeValid(shape.rings(), qcPolygon::eNonZero) : shape.rings();
    for (const qcRings& part : parts) {
      rings_.push_back(part.outline);
      rings_.insert(rings_.end(), part.holes.begin(), part.holes.end());
    }
    requireFinite();
  }

  Frame frame() const { return Frame({rings_.begin(), rings_.end()}); }

  /// Mapped by a function.
  template <class Map>
  std::vector<qcContour> curves(Map map) const {
    std::vector<qcContour> curves;
    for (const Ring& ring : rings_) {
      Ring image;
      image.reserve(ring.size());
      for (const Point& p : ring) image.push_back(map(p));
      curves.emplace_back(image, isClosed_, 0);
    }
    return curves;
  }

 private:
  /// Frames need finite coordinates; those of lines have not been checked yet.
  void requireFinite() const {
    for (const Ring& ring : rings_) {
      for (const Point& p : ring) {
        if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
          throw qcContourDefs::BadParams(L"a coordinate is not finite");
      }
    }
  }

  bool isClosed_;
  std::vector<Ring> rings_;
};

/// In the coordinates as given.
qcDeviation deviationFound(const Shape& measured, const Shape& nominal,
                           std::optional<double> spacing) {
  const Boundary there(measured);
  const Boundary wanted(nominal);
  const Frame frame = wanted.frame();
  const auto local = [&frame](const Point& p) { return frame.local(p); };
  const std::vector<qcContour> curves = there.curves(local);
  const double step = spacing ? frame.scaled(*spacing) : cntr::sets::usualSpacing(curves);
  qcDeviation found = qf_Deviation(curves, wanted.curves(local), step);
  for (double* const distance : {&found.least, &found.greatest, &found.mean, &found.rms})
    *distance = frame.restored(*distance, 1);
  found.leastAt = frame.restored(found.leastAt);
  found.greatestAt = frame.restored(found.greatestAt);
  return found;
}

/// In the coordinates as given.
qcAlignment alignmentFound(const Shape& measured, const Shape& nominal) {
  const Boundary there(measured);
  const Boundary wanted(nominal);
  const Frame own = there.frame();
  const Frame frame = wanted.frame();
  // Before it is aligned the shape may lie anywhere, so its coordinates are relative to its own
  // origin.
  const double extent = frame.scaled(own.restored(1.0, 1));
  const auto local = [&](const Point& p) { return own.local(p) * extent; };
  qcAlignment found =
      qf_Align(there.curves(local), wanted.curves([&](const Point& p) { return frame.local(p); }));
  found.transform =
      qcXform<2>(found.transform.matrix(), frame.restored(found.transform * local({0.0, 0.0})));
  found.residual = frame.restored(found.residual, 1);
  return found;
}

nb::object deviation(const Shape& measured, const Shape& nominal, std::optional<double> spacing) {
  const qcDeviation found = [&] {
    const nb::gil_scoped_release released;
    return deviationFound(measured, nominal, spacing);
  }();
  return newResult("Deviation", found.least, found.leastAt, found.greatest, found.greatestAt,
                   found.mean, found.rms, found.isSigned);
}

nb::object alignment(const Shape& measured, const Shape& nominal) {
  const qcAlignment found = [&] {
    const nb::gil_scoped_release released;
    return alignmentFound(measured, nominal);
  }();
  const qcMatrix<2>& m = found.transform.matrix();
  const Point& shift = found.transform.trans();
  std::vector<double> matrix{m.element(0, 0), m.element(0, 1), shift.x(),
                             m.element(1, 0), m.element(1, 1), shift.y()};
  return newResult("Alignment", newArray(std::move(matrix), {2, 3}), found.angle.toDouble(),
                   found.residual, found.steps, found.settled);
}

}  // namespace

void defineComparison(ShapeClass& shape) {
  shape.def("deviation", deviation, nb::arg("nominal"), nb::arg("spacing") = nb::none(),
            nb::sig("def deviation(self, nominal: Shape, spacing: float | None = None) -> "
                    "Deviation"),
            "How far the boundary or line lies from that of `nominal`, sampled at its vertices\n"
            "and between them in steps of at most `spacing`, by default 1/1024 of its length.");
  shape.def("align", alignment, nb::arg("nominal"),
            nb::sig("def align(self, nominal: Shape) -> Alignment"),
            "The rotation and shift that minimise the root mean square distance from `nominal`.\n"
            "For a symmetric shape, any of the equivalent rotations may be returned.");
}

}  // namespace python
