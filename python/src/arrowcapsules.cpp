// SPDX-License-Identifier: MIT
//
// What is handed over are loans: structures that share the buffers of a column and keep it alive.
// Arrow allows the children of an array to be taken out of it, so each has its own loan.

#include <nanobind/stl/string.h>
#include <python/src/arrowcapsules.h>
#include <python/src/texts.h>

#include <cerrno>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <cntrtable/geoarrow.h>

namespace nb = nanobind;

namespace python {

namespace {

constexpr const char* arrayMethod = "__arrow_c_array__";
constexpr const char* streamMethod = "__arrow_c_stream__";
constexpr const char* schemaName = "arrow_schema";
constexpr const char* arrayName = "arrow_array";
constexpr const char* streamName = "arrow_array_stream";

/// What a lent structure refers to.
template <class T>
struct Loan {
  std::shared_ptr<const void> owner;
  std::vector<qcArrowOwner<T>> children;
  std::vector<T*> places;
};

template <class T>
void release(T* lent) {
  delete static_cast<Loan<T>*>(lent->private_data);
  lent->release = nullptr;
}

/// A structure with the same buffers, which keeps `owner` alive.
template <class T>
qcArrowOwner<T> lend(const T& from, const std::shared_ptr<const void>& owner) {
  auto loan = std::make_unique<Loan<T>>();
  loan->owner = owner;
  for (std::int64_t i = 0; i < from.n_children; ++i)
    loan->children.push_back(lend(*from.children[i], owner));
  for (qcArrowOwner<T>& child : loan->children) loan->places.push_back(child.get());
  T lent = from;
  lent.children = loan->places.empty() ? nullptr : loan->places.data();
  lent.private_data = loan.release();
  lent.release = release<T>;
  return qcArrowOwner<T>(&lent);
}

/// The column of a stream, until it has been taken.
struct SingleColumn {
  std::shared_ptr<const qcArrowColumn> column;
  bool isTaken = false;
};

/// Lends a structure; returns 0 or an error number, as the callbacks of streams do.
template <class T>
int lendTo(T* out, const T& from, const std::shared_ptr<const void>& owner) noexcept {
  try {
    lend(from, owner).moveTo(out);
    return 0;
  } catch (const std::bad_alloc&) {
    return ENOMEM;
  }
}

int getSchema(ArrowArrayStream* stream, ArrowSchema* out) noexcept {
  const auto& column = static_cast<SingleColumn*>(stream->private_data)->column;
  return lendTo(out, *column->schema, column);
}

int getNext(ArrowArrayStream* stream, ArrowArray* out) noexcept {
  auto& single = *static_cast<SingleColumn*>(stream->private_data);
  if (!std::exchange(single.isTaken, true))
    return lendTo(out, *single.column->array, single.column);
  out->release = nullptr;
  return 0;
}

const char* getLastError(ArrowArrayStream* /*stream*/) noexcept { return nullptr; }

void releaseStream(ArrowArrayStream* stream) {
  delete static_cast<SingleColumn*>(stream->private_data);
  stream->release = nullptr;
}

template <class T>
void destroyCapsule(void* structure) noexcept {
  delete static_cast<qcArrowOwner<T>*>(structure);
}

/// Whoever takes the contents of the capsule leaves it released.
template <class T>
nb::object capsuleOf(qcArrowOwner<T>&& owned, const char* name) {
  static_assert(std::is_standard_layout_v<qcArrowOwner<T>>, "the structure is at its address");
  auto kept = std::make_unique<qcArrowOwner<T>>(std::move(owned));
  nb::object capsule = nb::capsule(kept.get(), name, destroyCapsule<T>);
  (void)kept.release();
  return capsule;
}

template <class T>
T* structureIn(nb::handle capsule, const char* name) {
  void* const structure = PyCapsule_GetPointer(capsule.ptr(), name);
  if (structure == nullptr) throw nb::python_error();
  return static_cast<T*>(structure);
}

}  // namespace

bool isArrow(nb::handle object) {
  return nb::hasattr(object, arrayMethod) || nb::hasattr(object, streamMethod);
}

qcOutlines outlinesFromArrow(nb::handle column) {
  if (nb::hasattr(column, arrayMethod)) {
    const nb::object capsules = column.attr(arrayMethod)();
    const nb::object schema = capsules[0];
    const nb::object array = capsules[1];
    const auto* const from = structureIn<ArrowSchema>(schema, schemaName);
    auto* const values = structureIn<ArrowArray>(array, arrayName);
    const nb::gil_scoped_release others;
    return qf_FromArrow(from, values);
  }
  if (nb::hasattr(column, streamMethod)) {
    const nb::object capsule = column.attr(streamMethod)();
    auto* const stream = structureIn<ArrowArrayStream>(capsule, streamName);
    const nb::gil_scoped_release others;
    return qf_FromArrow(stream);
  }
  const std::string message =
      std::string(
          "column must have the method __arrow_c_array__ or __arrow_c_stream__, not be of type ") +
      Py_TYPE(column.ptr())->tp_name;
  throw nb::type_error(message.c_str());
}

ArrowColumn::ArrowColumn(qcArrowColumn&& column)
    : column_(std::make_shared<const qcArrowColumn>(std::move(column))) {}

nb::object ArrowColumn::schemaCapsule() const {
  return capsuleOf(lend(schema(), column_), schemaName);
}

nb::tuple ArrowColumn::arrayCapsules() const {
  return nb::make_tuple(schemaCapsule(), capsuleOf(lend(array(), column_), arrayName));
}

nb::object ArrowColumn::streamCapsule() const {
  ArrowArrayStream stream{getSchema, getNext, getLastError, releaseStream,
                          new SingleColumn{column_}};
  return capsuleOf(qcArrowStream(&stream), streamName);
}

void bindArrowColumn(nb::module_& module) {
  nb::class_<ArrowColumn> type(
      module, "ArrowColumn",
      "A column of geometries that other packages, such as pyarrow and polars, take without\n"
      "copying.");
  type.def("__len__", [](const ArrowColumn& self) { return self.array().length; });
  type.def("__repr__", [](const ArrowColumn& self) {
    return "<cntr.ArrowColumn: " +
           counted(static_cast<std::size_t>(self.array().length), "geometry", "geometries") + ">";
  });
  defineArrowMethods(type, [](const ArrowColumn& self) { return self; });
}

}  // namespace python
