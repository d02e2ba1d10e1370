// SPDX-License-Identifier: MIT
//
// Marks what libcntr offers to its users; everything else in it is hidden. platform/export.h does
// the same for libqcplatform.
#pragma once

#include <platform/export.h>

/// @def CNTR_EXPORT
/// Marks a class or function that libcntr offers to its users; empty for static libraries.
#if defined(CNTR_STATIC)
#define CNTR_EXPORT
#elif defined(_WIN32)
#if defined(cntr_EXPORTS)
#define CNTR_EXPORT __declspec(dllexport)
#else
#define CNTR_EXPORT __declspec(dllimport)
#endif
#else
#define CNTR_EXPORT __attribute__((visibility("default")))
#endif

/// @def CNTR_LOCAL
/// Marks a private member of an exported class: it is not a dynamic symbol.
#define CNTR_LOCAL QCPLATFORM_LOCAL
