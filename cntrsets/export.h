// SPDX-License-Identifier: MIT
//
// Marks what libcntrsets offers to its users, and the few internal functions that libcntrtable
// needs; everything else in it is hidden. cntr/export.h does the same for libcntr.
#pragma once

/// @def CNTRSETS_EXPORT
/// Marks a class or function that libcntrsets offers to its users; empty for static libraries.
#if defined(CNTR_STATIC)
#define CNTRSETS_EXPORT
#elif defined(_WIN32)
#if defined(cntrsets_EXPORTS)
#define CNTRSETS_EXPORT __declspec(dllexport)
#else
#define CNTRSETS_EXPORT __declspec(dllimport)
#endif
#else
#define CNTRSETS_EXPORT __attribute__((visibility("default")))
#endif
