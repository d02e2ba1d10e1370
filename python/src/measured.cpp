// SPDX-License-Identifier: MIT

#include <nanobind/ndarray.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>
#include <python/src/arrays.h>
#include <python/src/measured.h>
#include <python/src/newarrays.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <string_view>

#include <cntrtable/measures.h>
#include <cntrtable/measuring.h>

namespace nb = nanobind;

namespace python {

namespace {

bool bitOf(const void* bitmap, std::size_t place) {
  return ((static_cast<const std::uint8_t*>(bitmap)[place / 8] >> (place % 8)) & 1U) != 0;
}

/// A column of a record batch.
class Column {
 public:
  Column(const ArrowColumn& batch, std::size_t number)
      : batch_(batch),
        schema_(*batch.schema().children[number]),
        array_(*batch.array().children[number]) {}

  nb::object toNumpy() const {
    const std::string_view format = schema_.format;
    if (format == "g") return isComplete() ? viewOf<double>() : withNan<double>();
    if (format == "l") return isComplete() ? viewOf<std::int64_t>() : withNan<std::int64_t>();
    if (format == "b") return isComplete() ? flags() : objects(&Column::flagAt);
    return objects(&Column::textAt);
  }

 private:
  using ObjectAt = nb::object (Column::*)(std::size_t) const;

  std::size_t rows() const { return static_cast<std::size_t>(array_.length); }
  bool isComplete() const { return array_.null_count == 0; }
  bool isMissing(std::size_t row) const { return !bitOf(array_.buffers[0], row); }

  template <class T>
  std::span<const T> items(std::size_t count) const {
    return {static_cast<const T*>(array_.buffers[1]), count};
  }

  template <class T>
  nb::object viewOf() const {
    auto kept = std::make_unique<std::shared_ptr<const void>>(batch_.owner());
    const nb::capsule owner(kept.get(), [](void* keeper) noexcept {
      delete static_cast<std::shared_ptr<const void>*>(keeper);
    });
    (void)kept.release();
    using View = nb::ndarray<nb::numpy, const T>;
    return nb::cast(View(items<T>(rows()).data(), {rows()}, owner));
  }

  template <class T>
  nb::object withNan() const {
    const std::span<const T> given = items<T>(rows());
    std::vector<double> numbers(given.begin(), given.end());
    for (std::size_t row = 0; row < rows(); ++row)
      if (isMissing(row)) numbers[row] = std::numeric_limits<double>::quiet_NaN();
    return newArray(std::move(numbers));
  }

  nb::object flags() const {
    nb::object array = nb::module_::import_("numpy").attr("empty")(rows(), "bool");
    auto view = nb::cast<nb::ndarray<nb::numpy, bool, nb::ndim<1>>>(array);
    for (std::size_t row = 0; row < rows(); ++row) view(row) = bitOf(array_.buffers[1], row);
    return array;
  }

  nb::object flagAt(std::size_t row) const { return nb::bool_(bitOf(array_.buffers[1], row)); }

  nb::object textAt(std::size_t row) const {
    const auto offsets = items<std::int64_t>(rows() + 1);
    const auto* const characters = static_cast<const char*>(array_.buffers[2]);
    return nb::str(characters + offsets[row],
                   static_cast<std::size_t>(offsets[row + 1] - offsets[row]));
  }

  nb::object objects(ObjectAt objectAt) const {
    nb::list list;
    for (std::size_t row = 0; row < rows(); ++row)
      list.append(isMissing(row) ? nb::none() : (this->*objectAt)(row));
    nb::object array = nb::module_::import_("numpy").attr("empty")(rows(), "object");
    array[nb::slice(nb::none(), nb::none(), nb::none())] = list;
    return array;
  }

  const ArrowColumn& batch_;
  const ArrowSchema& schema_;
  const ArrowArray& array_;
};

std::vector<std::string> usualColumns() {
  std::vector<std::string> names;
  for (const table::Measure& measure : table::allMeasures())
    if (measure.isStandard && measure.name != std::string_view("note"))
      names.emplace_back(measure.name);
  return names;
}

std::vector<std::string> namesIn(nb::handle columns) {
  if (columns.is_none()) return usualColumns();
  std::vector<std::string> names;
  if (nb::isinstance<nb::str>(columns) || !nb::try_cast(columns, names))
    throw nb::type_error("columns must be None or a list of names");
  return names;
}

nb::object toPandas(const Measured& self) {
  nb::dict columns;
  for (const std::string& name : self.names()) columns[name.c_str()] = self.column(name);
  return nb::module_::import_("pandas").attr("DataFrame")(columns);
}

std::string describeMeasured(const Measured& self) {
  std::string text = "<cntr.Measured: " + std::to_string(self.rows()) + " rows of ";
  const char* separator = "";
  for (const std::string& name : self.names()) text += std::exchange(separator, ", ") + name;
  return text + ">";
}

nb::dict allMeasures() {
  nb::dict measures;
  for (const table::Measure& measure : table::allMeasures())
    measures[measure.name] = nb::make_tuple(measure.power, measure.meaning);
  return measures;
}

}  // namespace

std::vector<std::string> Measured::names() const {
  std::vector<std::string> names;
  for (std::int64_t i = 0; i < batch_.schema().n_children; ++i)
    names.emplace_back(batch_.schema().children[i]->name);
  return names;
}

nb::object Measured::column(const std::string& name) const {
  const std::vector<std::string> all = names();
  for (std::size_t i = 0; i < all.size(); ++i)
    if (all[i] == name) return Column(batch_, i).toNumpy();
  const std::string message = "there is no column '" + name + "'";
  throw nb::key_error(message.c_str());
}

Measured measured(const qcOutlines& outlines, nb::handle columns, std::int64_t threads) {
  const unsigned workers = threadsIn(threads);
  const std::vector<std::string> names = namesIn(columns);
  const nb::gil_scoped_release others;
  return Measured(ArrowColumn(qf_Measure(outlines, names, workers)));
}

void bindMeasured(nb::module_& module) {
  nb::class_<Measured> type(
      module, "Measured",
      "Measures of many features: a row for each feature, a column for each measure, and\n"
      "the columns `status` (ok or failed) and `note`. Other packages, such as pyarrow and\n"
      "polars, take it as an Arrow record batch.");
  type.def("__len__", &Measured::rows)
      .def("__repr__", describeMeasured)
      .def_prop_ro("columns", &Measured::names, nb::sig("def columns(self) -> list[str]"),
                   "The names of the columns.")
      .def("column", &Measured::column, nb::arg("name"),
           nb::sig("def column(self, name: str) -> numpy.typing.NDArray[typing.Any]"),
           "A column as an array. If each feature has an answer, numbers are float64, counts\n"
           "int64, and yes-or-no answers bool. Otherwise numbers and counts are float64 with NaN\n"
           "for missing answers, and yes-or-no answers are objects with None, as texts always\n"
           "are.")
      .def_prop_ro(
          "status", [](const Measured& self) { return self.column("status"); },
          nb::sig("def status(self) -> numpy.typing.NDArray[numpy.object_]"),
          "For each feature, whether it was measured: 'ok' or 'failed'.")
      .def_prop_ro(
          "note", [](const Measured& self) { return self.column("note"); },
          nb::sig("def note(self) -> numpy.typing.NDArray[numpy.object_]"),
          "For each feature a remark, such as why it failed; None if there is none.")
      .def("to_pandas", toPandas, nb::sig("def to_pandas(self) -> pandas.DataFrame"),
           "The columns as a pandas.DataFrame. Needs pandas.")
      .def(
          "to_polars",
          [](nb::handle self) { return nb::module_::import_("polars").attr("DataFrame")(self); },
          nb::sig("def to_polars(self) -> polars.DataFrame"),
          "The columns as a polars.DataFrame. Needs polars.");
  defineArrowMethods(type, [](const Measured& self) { return self.batch(); });
  module.def("measures", allMeasures, nb::sig("def measures() -> dict[str, tuple[int, str]]"),
             "All measures; see cntr.MEASURES.");
}

}  // namespace python
