// SPDX-License-Identifier: MIT
//
// Marks what libcntrtable offers to its users; everything else in it is hidden. cntr/export.h does
// the same for libcntr.
#pragma once

#include <platform/export.h>

/// @def CNTRTABLE_EXPORT
/// Marks a class or function that libcntrtable offers to its users; empty for static libraries.
#if defined(CNTR_STATIC)
#define CNTRTABLE_EXPORT
#elif defined(_WIN32)
#if defined(cntrtable_EXPORTS)
#define CNTRTABLE_EXPORT __declspec(dllexport)
#else
#define CNTRTABLE_EXPORT __declspec(dllimport)
#endif
#else
#define CNTRTABLE_EXPORT __attribute__((visibility("default")))
#endif

/// @def CNTRTABLE_LOCAL
/// Marks a private member of an exported class: it is not a dynamic symbol.
#define CNTRTABLE_LOCAL QCPLATFORM_LOCAL
