// SPDX-License-Identifier: MIT
//
// Outlines from what image libraries find: OpenCV's contours and scikit-image's.

#include <nanobind/stl/string.h>
#include <python/src/arrays.h>
#include <python/src/hierarchy.h>
#include <python/src/outlines.h>
#include <python/src/vertexbuffer.h>

#include <memory>
#include <string>
#include <vector>

namespace nb = nanobind;

namespace python {

namespace {

using Contours = std::vector<std::unique_ptr<const VertexBuffer>>;

Contours contoursIn(nb::handle list) {
  if (PyObject_CheckBuffer(list.ptr()) != 0)
    throw nb::type_error("contours must be a list of arrays, not a single one");
  Contours contours;
  const nb::object iterator = iteratorOver(list, "contours", "arrays");
  for (const nb::handle contour : nb::iter(iterator))
    contours.push_back(std::make_unique<const VertexBuffer>(contour, "contours", contours.size()));
  return contours;
}

void addContour(qcOutlinesBuilder& builder, const VertexBuffer& contour, bool isSwapped) {
  contour.copyTo(builder.addRing(contour.size()), isSwapped);
}

qcOutlines fromOpenCv(nb::handle list, nb::handle hierarchy) {
  const Contours contours = contoursIn(list);
  const std::vector<OutlineWithHoles> outlines = outlinesOf(hierarchy, contours.size());
  const nb::gil_scoped_release others;
  qcOutlinesBuilder builder;
  for (const OutlineWithHoles& outline : outlines) {
    addContour(builder, *contours[outline.outline], false);
    for (const std::size_t hole : outline.holes) addContour(builder, *contours[hole], false);
    builder.endFeature(qcOutlineKind::eAreas, static_cast<std::uint32_t>(outline.outline));
  }
  return builder.finish();
}

qcOutlines fromOpenCvWithImage(nb::handle /*image*/, nb::handle contours, nb::handle hierarchy) {
  return fromOpenCv(contours, hierarchy);
}

/// Whether the first vertex is repeated at the end.
bool isClosed(std::span<const double> line) {
  const std::size_t n = line.size();
  return n > 2 && line[0] == line[n - 2] && line[1] == line[n - 1];
}

qcOutlines fromSkimage(nb::handle list, const std::string& order) {
  if (order != "rc" && order != "xy") {
    const std::string message = "order must be 'rc' or 'xy', not '" + order + "'";
    throw nb::value_error(message.c_str());
  }
  const Contours contours = contoursIn(list);
  const nb::gil_scoped_release others;
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < contours.size(); ++i) {
    const std::span<double> place = builder.addRing(contours[i]->size());
    contours[i]->copyTo(place, order == "rc");
    const bool isArea = isClosed(place);
    if (isArea) builder.leaveOutRepeated();
    builder.endFeature(isArea ? qcOutlineKind::eAreas : qcOutlineKind::eLines,
                       static_cast<std::uint32_t>(i));
  }
  return builder.finish();
}

}  // namespace

void bindImageSources(OutlinesClass& type) {
  type.def_static(
          "from_opencv", fromOpenCv, nb::arg("contours"), nb::arg("hierarchy") = nb::none(),
          nb::sig("def from_opencv(contours: collections.abc.Iterable[numpy.typing.NDArray["
                  "typing.Any]], hierarchy: numpy.typing.NDArray[typing.Any] | None = None) -> "
                  "Outlines"),
          "A feature for each outer contour that cv2.findContours() found, with its holes; the\n"
          "label is the contour's number: Outlines.from_opencv(*cv2.findContours(...)). The\n"
          "children of an outline in the hierarchy are its holes, whose children are outlines\n"
          "again. Without a hierarchy, all contours are outlines.")
      .def_static(
          "from_opencv", fromOpenCvWithImage, nb::arg("image").none(), nb::arg("contours"),
          nb::arg("hierarchy").none(),
          nb::sig("def from_opencv(image: object, contours: collections.abc.Iterable["
                  "numpy.typing.NDArray[typing.Any]], hierarchy: numpy.typing.NDArray[typing.Any] "
                  "| None) -> Outlines"),
          "The same for what OpenCV 3 returns; the image is ignored.")
      .def_static(
          "from_skimage", fromSkimage, nb::arg("contours"), nb::kw_only(), nb::arg("order"),
          nb::sig("def from_skimage(contours: collections.abc.Iterable[numpy.typing.NDArray["
                  "typing.Any]], *, order: typing.Literal['rc', 'xy']) -> Outlines"),
          "A feature for each contour that skimage.measure.find_contours() found; the label is\n"
          "the contour's number. A contour that ends at its first point is an outline, any\n"
          "other a line. `order` is that of the coordinates: 'rc' with the row first, as in\n"
          "scikit-image, or 'xy'. Holes are not recognised: they become outlines.");
}

}  // namespace python
