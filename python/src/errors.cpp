// SPDX-License-Identifier: MIT

#include <python/src/errors.h>

#include <nanobind/nanobind.h>

#include <exception>
#include <string>

#include <cntr/contourdefs.h>
#include <platform/core/exception.h>

namespace nb = nanobind;

namespace python {

namespace {

/// Without the name of the exception, which what() begins with.
std::string messageOf(const qcException& error) {
  constexpr const char* separator = ": ";
  const std::string text = error.what();
  const std::size_t end = text.find(separator);
  return end == std::string::npos ? text : text.substr(end + 2);
}

void raise(const char* name, const qcException& error) {
  const nb::object type = nb::module_::import_("cntr._errors").attr(name);
  PyErr_SetString(type.ptr(), messageOf(error).c_str());
}

void translate(const std::exception_ptr& thrown, void*) {
  try {
    std::rethrow_exception(thrown);
  } catch (const qcContourDefs::EmptyContour& error) {
    raise("EmptyContourError", error);
  } catch (const qcContourDefs::EmptyRegionSet& error) {
    raise("EmptyRegionSetError", error);
  } catch (const qcContourDefs::BadParams& error) {
    raise("BadParamsError", error);
  } catch (const qcException& error) {
    raise("Error", error);
  }
}

}  // namespace

void translateErrors() { nb::register_exception_translator(translate); }

}  // namespace python
