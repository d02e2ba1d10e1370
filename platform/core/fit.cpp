// SPDX-License-Identifier: MIT
//
// The exception of a failed fit. The fits themselves are in fit_ellipse.cpp and fit_circle.cpp.

#include <platform/core/fit.h>

void qcFitError::suicideAndRethrow() { qf_DeleteAndThrowCopy(this); }
