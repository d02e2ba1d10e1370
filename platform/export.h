// SPDX-License-Identifier: MIT
//
// Marks what libqcplatform offers to its users; everything else in it is hidden. Every header of
// the library includes this one, directly or not, so it is also where unsuitable compiler flags are
// refused. cntr/export.h does the same for libcntr.
#pragma once

#if defined(__FAST_MATH__) || (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#error "The inline arithmetic of this library needs IEEE 754: compile without -ffast-math."
#endif

// The checked containers of libstdc++ have a different layout and different symbol names.
// QCPLATFORM_GLIBCXX_DEBUG says that the libraries were built with them; their CMake files define
// it.
#if defined(_GLIBCXX_DEBUG) && !defined(QCPLATFORM_GLIBCXX_DEBUG)
#error \
    "The cntr libraries were built without _GLIBCXX_DEBUG: build them with it, or compile without."
#elif defined(QCPLATFORM_GLIBCXX_DEBUG) && !defined(_GLIBCXX_DEBUG)
#error "The cntr libraries were built with _GLIBCXX_DEBUG: compile with it, too."
#endif

/// @def QCPLATFORM_EXPORT
/// Marks a class or function that libqcplatform offers to its users. Static libraries need no mark;
/// whoever uses them defines CNTR_STATIC, as their CMake and pkg-config files do.
#if defined(CNTR_STATIC)
#define QCPLATFORM_EXPORT
#elif defined(_WIN32)
#if defined(qcplatform_EXPORTS)
#define QCPLATFORM_EXPORT __declspec(dllexport)
#else
#define QCPLATFORM_EXPORT __declspec(dllimport)
#endif
#else
#define QCPLATFORM_EXPORT __attribute__((visibility("default")))
#endif

/// @def QCPLATFORM_LOCAL
/// Marks a private member of an exported class: it is not a dynamic symbol.
#if defined(_WIN32)
#define QCPLATFORM_LOCAL
#else
#define QCPLATFORM_LOCAL __attribute__((visibility("hidden")))
#endif
