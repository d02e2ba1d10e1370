// SPDX-License-Identifier: MIT
//
// The extension module cntr._core: its parts, in the order of their dependencies.

#include <nanobind/nanobind.h>

#include <python/src/arrowcapsules.h>
#include <python/src/errors.h>
#include <python/src/measured.h>
#include <python/src/outlines.h>
#include <python/src/shapebindings.h>

namespace nb = nanobind;

NB_MODULE(_core, module) {
  // Do not warn about shapes that are still alive when Python ends: notebooks keep theirs.
  nb::set_leak_warnings(false);
  module.attr("version") = CNTR_VERSION;
  python::translateErrors();
  python::bindShapes(module);
  python::bindArrowColumn(module);
  python::bindMeasured(module);
  python::bindOutlines(module);
}
