// SPDX-License-Identifier: MIT
//
// The extension module cntr._core: what it is made of, in the order in which it needs it.

#include <nanobind/nanobind.h>

#include <python/src/arrowcapsules.h>
#include <python/src/errors.h>
#include <python/src/measured.h>
#include <python/src/outlines.h>
#include <python/src/shapebindings.h>

NB_MODULE(_core, module) {
  module.attr("version") = CNTR_VERSION;
  python::translateErrors();
  python::bindShapes(module);
  python::bindArrowColumn(module);
  python::bindMeasured(module);
  python::bindOutlines(module);
}
