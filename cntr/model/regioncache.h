// SPDX-License-Identifier: MIT
//
// What a region remembers beside its boundary's answers (contourcache.h) and its outline's area,
// which lies in the region itself.

#pragma once

#include <optional>

#include <cntr/region.h>

/// The answers of one region. Repaired regions never change once made, so copies share them.
struct qc_RegionCache {
  std::optional<double> areaWithHoles;
  std::optional<qcVector<2>> centerWithoutHoles;
  /// Set by the first answer with holes, which is not kept: later ones are (0, 0).
  bool centerWithHolesWasGiven = false;
  std::optional<qcMatrix<2>> inertiaMatrix;
  qcPtrHandle<qcRegion> regularized;
  qcPtrHandle<qcRegion> outerHull;
};
