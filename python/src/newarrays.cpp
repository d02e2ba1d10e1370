// SPDX-License-Identifier: MIT

#include <python/src/newarrays.h>

namespace nb = nanobind;

namespace python {

nb::object newArrayOfPoints(const std::vector<qcVector<2>>& points) {
  std::vector<double> coordinates;
  coordinates.reserve(2 * points.size());
  for (const qcVector<2>& p : points) {
    coordinates.push_back(p.x());
    coordinates.push_back(p.y());
  }
  return newArray(std::move(coordinates), {points.size(), 2});
}

nb::object viewOfPoints(std::span<const qcVector<2>> points, nb::handle owner) {
  using View = nb::ndarray<nb::numpy, const double>;
  return nb::cast(View(reinterpret_cast<const double*>(points.data()), {points.size(), 2}, owner));
}

}  // namespace python
