// SPDX-License-Identifier: MIT
//
// What a region remembers beside its boundary's answers (contourcache.h).

#pragma once

#include <array>
#include <optional>

#include <cntr/region.h>

/// The answers of one region. Repaired regions never change once made, so copies share them.
struct qc_RegionCache {
  /// Without holes, with holes.
  std::array<std::optional<double>, 2> area;
  std::optional<qcVector<2>> centerWithoutHoles;
  /// Set by the first answer with holes, which is not kept: later ones are (0, 0).
  bool centerWithHolesWasGiven = false;
  std::optional<qcMatrix<2>> inertiaMatrix;
  qcPtrHandle<qcRegion> regularized;
  qcPtrHandle<qcRegion> outerHull;
};
