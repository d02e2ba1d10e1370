// SPDX-License-Identifier: MIT
//
// How often property tests repeat themselves. The environment variable CNTR_PROPERTY_FACTOR
// multiplies it: 20 for a long night, 0.1 for a slow machine. Without it, builds with sanitizers do
// a tenth of the repetitions.

#pragma once

#include <cstddef>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#define CNTR_IS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CNTR_IS_SANITIZED 1
#endif
#endif

/// `usual` times the factor; at least 1.
inline std::size_t repetitions(std::size_t usual) {
#ifdef CNTR_IS_SANITIZED
  double factor = 0.1;
#else
  double factor = 1.0;
#endif
  if (const char* given = std::getenv("CNTR_PROPERTY_FACTOR")) factor = std::atof(given);
  const double count = static_cast<double>(usual) * factor;
  return count >= 1.0 ? static_cast<std::size_t>(count) : 1;
}

#undef CNTR_IS_SANITIZED
