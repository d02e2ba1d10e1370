// SPDX-License-Identifier: MIT
//
// Whether a feature holds a point by the rule of the library's regions.

#pragma once

#include <algorithm>

#include <testing/plain/region.h>
#include <tests/cntrsets/features.h>

namespace features {

/// Applies the rule to the outline and each hole of a part separately.
inline bool libraryHolds(const Feature& feature, const qcVector<2>& p) {
  return std::any_of(feature.begin(), feature.end(), [&p](const qcRings& part) {
    return plain::inside({part.outline, {}}, p, false) &&
           std::none_of(part.holes.begin(), part.holes.end(), [&p](const Points& hole) {
             return plain::inside({hole, {}}, p, false);
           });
  });
}

}  // namespace features
