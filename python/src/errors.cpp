// SPDX-License-Identifier: MIT

#include <python/src/errors.h>

#include <nanobind/nanobind.h>

#include <exception>
#include <string>

#include <cntr/contourdefs.h>
#include <cntrformats/errors.h>
#include <cntrtable/refusal.h>
#include <platform/core/exception.h>

namespace nb = nanobind;

namespace python {

namespace {

void raise(const char* name, const std::string& message) {
  const nb::object type = nb::module_::import_("cntr._errors").attr(name);
  PyErr_SetString(type.ptr(), message.c_str());
}

void translate(const std::exception_ptr& thrown, void*) {
  try {
    std::rethrow_exception(thrown);
  } catch (const qcContourDefs::EmptyContour& error) {
    raise("EmptyContourError", table::messageIn(error));
  } catch (const qcContourDefs::EmptyRegionSet& error) {
    raise("EmptyRegionSetError", table::messageIn(error));
  } catch (const qcContourDefs::BadParams& error) {
    raise("BadParamsError", table::messageIn(error));
  } catch (const qcException& error) {
    raise("Error", table::messageIn(error));
  } catch (const formats::FileError& error) {
    raise("Error", error.what());
  }
}

}  // namespace

void translateErrors() { nb::register_exception_translator(translate); }

}  // namespace python
