// SPDX-License-Identifier: MIT
//
// What a region set remembers.

#pragma once

#include <array>
#include <memory>
#include <optional>

#include <cntr/index/regionindex.h>
#include <cntr/model/keyedresults.h>
#include <cntr/model/waystaken.h>
#include <cntr/regionst.h>

/// The answers of one set. Repaired sets never change once made, so copies share them.
struct qc_RegionSetCache {
  /// Without holes, with holes.
  std::array<std::optional<double>, 2> area;
  std::array<std::optional<qcVector<2>>, 2> centerOfMass;
  std::array<std::optional<qcMatrix<2>>, 2> inertiaMatrix;
  std::optional<bool> isSelfIntersecting;
  cntr::model::KeyedResults<qcXform<2>, qcRect, cntr::model::XformKey> enclosingRects;
  /// Whether the index below has been made or has proved impossible (null).
  bool indexIsKnown = false;
  std::shared_ptr<const cntr::index::RegionIndex> index;
  qcPtrHandle_const<qcRegionSet> regularized;
  qcPtrHandle_const<qcRegionSet> outerHull;
  qc_WaysTaken waysTaken;
};
