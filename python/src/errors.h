// SPDX-License-Identifier: MIT
//
// The library's exceptions in Python.

#pragma once

namespace python {

/// From now on an exception of the library that leaves a function is raised as the class of
/// cntr/_errors.py that is named after it, or as cntr.Error, with its message.
void translateErrors();

}  // namespace python
