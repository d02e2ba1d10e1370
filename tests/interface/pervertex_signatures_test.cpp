// SPDX-License-Identifier: MIT
//
// The shapes with an edge element for each vertex, name by name.

#include <vector>

#include <cntrtmpl/regionsett.h>

#include "signature.h"

namespace {

using Data = std::vector<qcEdgelet>;
using Contour = qcContourT<qcEdgelet>;
using Region = qcRegionT<qcEdgelet>;
using Set = qcRegionSetT<qcEdgelet>;
using Vector = qcVector<2>;
using Transform = qcPtrHandle_const<qc2XformBase>;
using RegionHandles = std::vector<qcPtrHandle_const<Region>>;
using ChangingHandles = std::vector<qcPtrHandle<Region>>;

/// The protected names, as a derived class sees them.
template <class Shape>
struct Probe : Shape {
  using Shape::cleanCacheInfo;
  using Shape::dispatchSerialize;
  using Shape::makeDataConsistentWithPoints;
  using Shape::makePointsConsistentWithData;
  using Shape::serialize_;
};

// Contours.
static_assert(std::is_base_of_v<qcContour, Contour>);
static_assert(std::is_default_constructible_v<Contour> && std::is_copy_constructible_v<Contour>);
static_assert(std::is_convertible_v<Data, Contour>);
static_assert(std::is_constructible_v<Contour, Data, Transform>);
static_assert(hasSignature<Contour& (Contour::*)(const Contour&)>(&Contour::operator=));
static_assert(hasSignature<const Data& (Contour::*)() const>(&Contour::data));
static_assert(hasSignature<void (Contour::*)(const Data&)>(&Contour::data));
static_assert(isDeclaredAs<Transform (Contour::*)() const>(&Contour::dataFromPointsXform));
static_assert(isDeclaredAs<qcEdgelet (Contour::*)(const Vector&) const>(&Contour::datum));
static_assert(isDeclaredAs<Vector (Contour::*)(const qcEdgelet&) const>(&Contour::point));
static_assert(hasSignature<bool (Contour::*)(const Contour&) const>(&Contour::operator==));
static_assert(isDeclaredAs<void (Contour::*)(Region&) const>(&Contour::convexHullT));
static_assert(isDeclaredAs<void (Contour::*)(const qcXform<2>&, Contour&) const>(&Contour::mapT));
static_assert(isDeclaredAs<void (Contour::*)(qcArchive&)>(&Probe<Contour>::dispatchSerialize));
static_assert(
    isDeclaredAs<void (Contour::*)(qcArchive&, unsigned char)>(&Probe<Contour>::serialize_));
static_assert(isDeclaredAs<void (Contour::*)()>(&Probe<Contour>::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (Contour::*)()>(&Probe<Contour>::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (qcContour::*)()>(&Probe<Contour>::cleanCacheInfo));

// Regions.
static_assert(std::is_base_of_v<qcRegion, Region> && std::is_base_of_v<Contour, Region>);
// One contour in both.
static_assert(std::is_convertible_v<Region*, qcContour*>);
static_assert(std::is_default_constructible_v<Region>);
static_assert(std::is_constructible_v<Region, Contour, unsigned long>);
static_assert(std::is_constructible_v<Region, Data, unsigned long>);
static_assert(std::is_constructible_v<Region, Data, Transform&, unsigned long>);
static_assert(hasSignature<const RegionHandles& (Region::*)() const>(&Region::holes));
static_assert(hasSignature<void (Region::*)(const RegionHandles&)>(&Region::holes));
static_assert(hasSignature<bool (Region::*)(const Region&) const>(&Region::operator==));
static_assert(hasSignature<void (Region::*)(qcUITablet&, const qcColor&, const qcUITablet::Layers&)
                               const>(&Region::draw));
static_assert(isDeclaredAs<void (Region::*)(Region&) const>(&Region::regularizeT));
static_assert(hasSignature<void (Region::*)(const qcXform<2>&, Region&) const>(&Region::mapT));
static_assert(isDeclaredAs<void (Region::*)(qcArchive&)>(&Probe<Region>::dispatchSerialize));
static_assert(
    isDeclaredAs<void (Region::*)(qcArchive&, unsigned char)>(&Probe<Region>::serialize_));

// What a region has of the contour with data, and of the plain region.
static_assert(isDeclaredAs<void (Contour::*)()>(&Probe<Region>::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (Contour::*)()>(&Probe<Region>::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (qcRegion::*)()>(&Probe<Region>::cleanCacheInfo));
static_assert(hasSignature<bool (qcRegion::*)() const>(&Region::isClosed));
static_assert(hasSignature<void (qcRegion::*)(bool)>(&Region::isClosed));

// Sets.
static_assert(std::is_base_of_v<qcRegionSet, Set>);
static_assert(std::is_default_constructible_v<Set>);
static_assert(std::is_convertible_v<RegionHandles, Set>);
static_assert(std::is_convertible_v<ChangingHandles, Set>);
static_assert(isDeclaredAs<RegionHandles (Set::*)() const>(&Set::regionsT));
static_assert(isDeclaredAs<bool (Set::*)(const Set&) const>(&Set::operator==));
static_assert(isDeclaredAs<void (Set::*)(Set&) const>(&Set::regularizeT));
static_assert(isDeclaredAs<void (Set::*)(const qcXform<2>&, Set&) const>(&Set::mapT));
static_assert(isDeclaredAs<void (Set::*)(qcArchive&)>(&Probe<Set>::dispatchSerialize));
static_assert(isDeclaredAs<void (Set::*)(qcArchive&, unsigned char)>(&Probe<Set>::serialize_));
static_assert(isDeclaredAs<void (Set::*)()>(&Probe<Set>::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (Set::*)()>(&Probe<Set>::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (Set::*)()>(&Probe<Set>::cleanCacheInfo));

}  // namespace
