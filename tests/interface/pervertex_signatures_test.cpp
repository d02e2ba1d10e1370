// SPDX-License-Identifier: MIT
//
// The shapes with an edge element for each vertex, name by name.

#include <vector>

#include <cntrtmpl/regionsett.h>

#include "signature.h"

namespace {

using Data = std::vector<qcEdgelet>;
using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using SetT = qcRegionSetT<qcEdgelet>;
using Vector = qcVector<2>;
using Transform = qcPtrHandle_const<qc2XformBase>;
using RegionTHandles = std::vector<qcPtrHandle_const<RegionT>>;
using ChangingRegionTHandles = std::vector<qcPtrHandle<RegionT>>;

/// The protected names, as a derived class sees them.
template <class Shape>
struct ProbeOf : Shape {
  using Shape::cleanCacheInfo;
  using Shape::dispatchSerialize;
  using Shape::makeDataConsistentWithPoints;
  using Shape::makePointsConsistentWithData;
  using Shape::serialize_;
};

// Contours.
static_assert(std::is_base_of_v<qcContour, ContourT>);
static_assert(std::is_default_constructible_v<ContourT> && std::is_copy_constructible_v<ContourT>);
static_assert(std::is_convertible_v<Data, ContourT>);
static_assert(std::is_constructible_v<ContourT, Data, Transform>);
static_assert(hasSignature<ContourT& (ContourT::*)(const ContourT&)>(&ContourT::operator=));
static_assert(hasSignature<const Data& (ContourT::*)() const>(&ContourT::data));
static_assert(hasSignature<void (ContourT::*)(const Data&)>(&ContourT::data));
static_assert(isDeclaredAs<Transform (ContourT::*)() const>(&ContourT::dataFromPointsXform));
static_assert(isDeclaredAs<qcEdgelet (ContourT::*)(const Vector&) const>(&ContourT::datum));
static_assert(isDeclaredAs<Vector (ContourT::*)(const qcEdgelet&) const>(&ContourT::point));
static_assert(hasSignature<bool (ContourT::*)(const ContourT&) const>(&ContourT::operator==));
static_assert(isDeclaredAs<void (ContourT::*)(RegionT&) const>(&ContourT::convexHullT));
static_assert(
    isDeclaredAs<void (ContourT::*)(const qcXform<2>&, ContourT&) const>(&ContourT::mapT));
static_assert(isDeclaredAs<void (ContourT::*)(qcArchive&)>(&ProbeOf<ContourT>::dispatchSerialize));
static_assert(
    isDeclaredAs<void (ContourT::*)(qcArchive&, unsigned char)>(&ProbeOf<ContourT>::serialize_));
static_assert(isDeclaredAs<void (ContourT::*)()>(&ProbeOf<ContourT>::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (ContourT::*)()>(&ProbeOf<ContourT>::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (qcContour::*)()>(&ProbeOf<ContourT>::cleanCacheInfo));

// Regions.
static_assert(std::is_base_of_v<qcRegion, RegionT> && std::is_base_of_v<ContourT, RegionT>);
// One contour in both.
static_assert(std::is_convertible_v<RegionT*, qcContour*>);
static_assert(std::is_default_constructible_v<RegionT>);
static_assert(std::is_constructible_v<RegionT, ContourT, unsigned long>);
static_assert(std::is_constructible_v<RegionT, Data, unsigned long>);
static_assert(std::is_constructible_v<RegionT, Data, Transform&, unsigned long>);
static_assert(hasSignature<const RegionTHandles& (RegionT::*)() const>(&RegionT::holes));
static_assert(hasSignature<void (RegionT::*)(const RegionTHandles&)>(&RegionT::holes));
static_assert(hasSignature<bool (RegionT::*)(const RegionT&) const>(&RegionT::operator==));
static_assert(hasSignature<void (RegionT::*)(qcUITablet&, const qcColor&, const qcUITablet::Layers&)
                               const>(&RegionT::draw));
static_assert(isDeclaredAs<void (RegionT::*)(RegionT&) const>(&RegionT::regularizeT));
static_assert(hasSignature<void (RegionT::*)(const qcXform<2>&, RegionT&) const>(&RegionT::mapT));
static_assert(isDeclaredAs<void (RegionT::*)(qcArchive&)>(&ProbeOf<RegionT>::dispatchSerialize));
static_assert(
    isDeclaredAs<void (RegionT::*)(qcArchive&, unsigned char)>(&ProbeOf<RegionT>::serialize_));

// What a region has of the contour with data, and of the plain region.
static_assert(isDeclaredAs<void (ContourT::*)()>(&ProbeOf<RegionT>::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (ContourT::*)()>(&ProbeOf<RegionT>::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (qcRegion::*)()>(&ProbeOf<RegionT>::cleanCacheInfo));
static_assert(hasSignature<bool (qcRegion::*)() const>(&RegionT::isClosed));
static_assert(hasSignature<void (qcRegion::*)(bool)>(&RegionT::isClosed));

// Sets.
static_assert(std::is_base_of_v<qcRegionSet, SetT>);
static_assert(std::is_default_constructible_v<SetT>);
static_assert(std::is_convertible_v<RegionTHandles, SetT>);
static_assert(std::is_convertible_v<ChangingRegionTHandles, SetT>);
static_assert(isDeclaredAs<RegionTHandles (SetT::*)() const>(&SetT::regionsT));
static_assert(isDeclaredAs<bool (SetT::*)(const SetT&) const>(&SetT::operator==));
static_assert(isDeclaredAs<void (SetT::*)(SetT&) const>(&SetT::regularizeT));
static_assert(isDeclaredAs<void (SetT::*)(const qcXform<2>&, SetT&) const>(&SetT::mapT));
static_assert(isDeclaredAs<void (SetT::*)(qcArchive&)>(&ProbeOf<SetT>::dispatchSerialize));
static_assert(isDeclaredAs<void (SetT::*)(qcArchive&, unsigned char)>(&ProbeOf<SetT>::serialize_));
static_assert(isDeclaredAs<void (SetT::*)()>(&ProbeOf<SetT>::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (SetT::*)()>(&ProbeOf<SetT>::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (SetT::*)()>(&ProbeOf<SetT>::cleanCacheInfo));

}  // namespace
