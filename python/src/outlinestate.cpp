// SPDX-License-Identifier: MIT

#include <nanobind/stl/string.h>
#include <python/src/newarrays.h>
#include <python/src/outlinestate.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <cntrtable/attributes.h>

namespace nb = nanobind;

namespace python {

namespace {

template <class Number>
using Numbers = nb::ndarray<nb::numpy, const Number, nb::ndim<1>, nb::c_contig>;

/// Well-known binary, labels, problems, and the edge elements' magnitudes and angles with the
/// number of places of each feature, or None if there are none.
nb::tuple takeApart(nb::handle self) {
  table::EdgeElements edges = [&outlines = nb::cast<const qcOutlines&>(self)] {
    const nb::gil_scoped_release others;
    return table::edgeElementsOf(outlines);
  }();
  nb::object columns = nb::none();
  if (!edges.counts.empty()) {
    columns = nb::make_tuple(newArray(std::move(edges.magnitudes)),
                             newArray(std::move(edges.angles)), newArray(std::move(edges.counts)));
  }
  return nb::make_tuple(self.attr("to_wkb")(), self.attr("labels"), self.attr("problems"), columns);
}

template <class Number>
std::vector<Number> numbersIn(nb::handle array) {
  const auto numbers = nb::cast<Numbers<Number>>(array);
  return {numbers.data(), numbers.data() + numbers.size()};
}

/// As takeApart() gives them.
table::EdgeElements edgesIn(nb::handle columns, std::size_t features) {
  table::EdgeElements edges;
  if (columns.is_none()) return edges;
  edges.magnitudes = numbersIn<std::int32_t>(columns[0]);
  edges.angles = numbersIn<std::uint8_t>(columns[1]);
  edges.counts = numbersIn<std::int64_t>(columns[2]);
  if (edges.magnitudes.size() != edges.angles.size())
    throw nb::value_error("there must be as many magnitudes as angles");
  if (edges.counts.size() != features)
    throw nb::value_error("there must be a number of edge elements for each feature");
  std::size_t left = edges.magnitudes.size();
  for (const std::int64_t count : edges.counts) {
    if (count < 0 || static_cast<std::uint64_t>(count) > left)
      throw nb::value_error("there are too few edge elements");
    left -= static_cast<std::size_t>(count);
  }
  if (left > 0) throw nb::value_error("there are too many edge elements");
  return edges;
}

/// The texts of a dictionary by the numbers of features.
std::vector<table::Problem> problemsIn(const nb::dict& problems) {
  std::vector<table::Problem> found;
  for (const auto& [feature, why] : problems)
    found.push_back({nb::cast<std::size_t>(feature), nb::cast<std::string>(why)});
  std::ranges::sort(found, {}, &table::Problem::feature);
  return found;
}

qcOutlines putTogether(nb::handle values, nb::handle labels, const nb::dict& problems,
                       nb::handle edges) {
  const nb::object geometries = nb::type<qcOutlines>().attr("from_wkb")(values);
  const auto& outlines = nb::cast<const qcOutlines&>(geometries);
  table::Attributes attributes{numbersIn<std::int64_t>(labels), problemsIn(problems),
                               edgesIn(edges, outlines.size())};
  if (attributes.labels.size() != outlines.size())
    throw nb::value_error("there must be a label for each feature");
  const nb::gil_scoped_release others;
  return table::withAttributes(outlines, std::move(attributes));
}

void setState(qcOutlines& self, const nb::tuple& state) {
  new (&self) qcOutlines(putTogether(state[0], state[1], nb::cast<nb::dict>(state[2]), state[3]));
}

/// In a form that all pickle protocols support.
nb::tuple pickled(nb::handle self) {
  return nb::make_tuple(nb::module_::import_("copyreg").attr("__newobj__"),
                        nb::make_tuple(self.type()), takeApart(self));
}

}  // namespace

void bindOutlineState(OutlinesClass& type) {
  type.def("__reduce__", pickled, nb::sig("def __reduce__(self) -> tuple[object, ...]"))
      .def("__setstate__", setState,
           nb::sig("def __setstate__(self, state: tuple[object, ...], /) -> None"));
}

}  // namespace python
