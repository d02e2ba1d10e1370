// SPDX-License-Identifier: MIT
//
// The region and the region set, name by name.

#include <span>
#include <vector>

#include <cntr/regionst.h>

#include "probes.h"
#include "signature.h"

namespace {

using Points = std::vector<qcVector<2>>;
using Vector = qcVector<2>;
using ManyPoints = std::span<const qcVector<2>>;
using Region = qcRegion;
using Set = qcRegionSet;
using Mode = qcContourDefs::IntersectionMode;
using Handle = qcPtrHandle_const<qcRegion>;
using Handles = std::vector<Handle>;
using ChangingHandles = std::vector<qcPtrHandle<qcRegion>>;

// The region's model.
static_assert(std::is_base_of_v<qcContour, Region>);
static_assert(std::is_default_constructible_v<Region>);
static_assert(std::is_constructible_v<Region, Points, Mode>);
static_assert(std::is_constructible_v<Region, qcPolygon, Mode>);
static_assert(std::is_constructible_v<Region, qcContour, Mode>);
static_assert(std::is_copy_constructible_v<Region>);
static_assert(hasSignature<Region& (Region::*)(const Region&)>(&Region::operator=));
static_assert(hasSignature<bool (Region::*)(const Region&) const>(&Region::operator==));
static_assert(hasSignature<const Handles& (Region::*)() const>(&Region::holes));
static_assert(hasSignature<void (Region::*)(const Handles&)>(&Region::holes));
static_assert(hasSignature<void (Region::*)(const ChangingHandles&)>(&Region::holes));
static_assert(hasSignature<bool (Region::*)() const>(&Region::isClosed));
static_assert(hasSignature<void (Region::*)(bool)>(&Region::isClosed));
static_assert(isDeclaredAs<void (Region::*)()>(&RegionProbe::cleanCacheInfo));
static_assert(isDeclaredAs<void (Region::*)() const>(&RegionProbe::checkEmptyContour));
static_assert(isDeclaredAs<void (Region::*)(qcArchive&)>(&RegionProbe::dispatchSerialize));
static_assert(isDeclaredAs<void (Region::*)(qcArchive&, unsigned char)>(&RegionProbe::serialize_));
static_assert(hasSignature<void (Region::*)(const qcXform<2>&, Region&) const>(&Region::map));
static_assert(hasSignature<void (Region::*)(qcUITablet&, const qcColor&, const qcUITablet::Layers&)
                               const>(&Region::draw));

// What a region has of the contour, unchanged.
static_assert(hasSignature<void (qcContour::*)(const Points&)>(&Region::points));
static_assert(hasSignature<void (qcContour::*)(qcUITablet&, qcContourDefs::DrawMode, const qcColor&,
                                               const qcUITablet::Layers&) const>(&Region::draw));
static_assert(
    hasSignature<Vector (qcContour::*)(const Vector&, bool) const>(&Region::closestPoint));
static_assert(hasSignature<long (qcContour::*)(const Vector&) const>(&Region::closestVertexIndex));
static_assert(hasSignature<double (qcContour::*)(const Vector&, bool) const>(&Region::distToPoint));
static_assert(hasSignature<void (qcContour::*)(const qcXform<2>&, qcContour&) const>(&Region::map));
static_assert(isDeclaredAs<void (qcContour::*)()>(&RegionProbe::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (qcContour::*)()>(&RegionProbe::makePointsConsistentWithData));

// The region's moments, point queries and repair.
static_assert(isDeclaredAs<double (Region::*)(bool) const>(&Region::area));
static_assert(isDeclaredAs<Vector (Region::*)(bool) const>(&Region::centerOfMass));
static_assert(isDeclaredAs<qcMatrix<2> (Region::*)(bool) const>(&Region::inertiaMatrix));
static_assert(hasSignature<bool (Region::*)(const Vector&, bool) const>(&Region::inside));
static_assert(
    hasSignature<void (Region::*)(ManyPoints, bool, std::span<bool>) const>(&Region::inside));
static_assert(hasSignature<void (Region::*)(ManyPoints, bool, bool, bool, std::span<double>) const>(
    &Region::distToPoint));
static_assert(hasSignature<void (Region::*)(ManyPoints, bool, bool, std::span<Vector>) const>(
    &Region::closestPoint));
static_assert(
    hasSignature<double (Region::*)(const Vector&, bool, bool, bool) const>(&Region::distToPoint));
static_assert(
    hasSignature<Vector (Region::*)(const Vector&, bool, bool) const>(&Region::closestPoint));
static_assert(
    hasSignature<long (Region::*)(const Vector&, bool, long&) const>(&Region::closestVertexIndex));
static_assert(
    hasSignature<Points (Region::*)(const qcLineSeg&, bool, bool) const>(&Region::intersections));
static_assert(
    hasSignature<Points (Region::*)(const qcContour&, bool) const>(&Region::intersections));
static_assert(isDeclaredAs<void (Region::*)(Region&) const>(&Region::regularize));
static_assert(isDeclaredAs<void (Region::*)(Region&) const>(&Region::outerHull));

// The set's model.
static_assert(std::is_base_of_v<qcPersistent, Set> && std::is_base_of_v<qcRepBase, Set>);
static_assert(std::is_constructible_v<Set, Handles, Mode>);
static_assert(std::is_constructible_v<Set, ChangingHandles, Mode>);
static_assert(std::is_copy_constructible_v<Set> && std::has_virtual_destructor_v<Set>);
static_assert(hasSignature<Set& (Set::*)(const Set&)>(&Set::operator=));
static_assert(hasSignature<bool (Set::*)(const Set&) const>(&Set::operator==));
static_assert(hasSignature<Handles (Set::*)() const>(&Set::regions));
static_assert(hasSignature<void (Set::*)(const Handles&, Mode)>(&Set::regions));
static_assert(hasSignature<void (Set::*)(const ChangingHandles&, Mode)>(&Set::regions));
static_assert(isDeclaredAs<void (Set::*)(const Handle&, Mode)>(&Set::add));
static_assert(isDeclaredAs<void (Set::*)(const Handles&)>(&SetProbe::setRegions));
static_assert(isDeclaredAs<void (Set::*)() const>(&SetProbe::checkEmptyRegionSet));
static_assert(hasSignature<long (Set::*)() const>(&Set::cachedVectorSize));
static_assert(hasSignature<void (Set::*)(long)>(&Set::cachedVectorSize));
static_assert(isDeclaredAs<void (Set::*)()>(&SetProbe::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (Set::*)()>(&SetProbe::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (Set::*)()>(&SetProbe::cleanCacheInfo));
static_assert(isDeclaredAs<void (Set::*)(qcArchive&)>(&SetProbe::dispatchSerialize));
static_assert(isDeclaredAs<void (Set::*)(qcArchive&, unsigned char)>(&SetProbe::serialize_));
static_assert(isDeclaredAs<void (Set::*)(qcUITablet&, const qcColor&, const qcUITablet::Layers&)
                               const>(&Set::draw));

// The set's measures, queries and repair.
static_assert(isDeclaredAs<double (Set::*)(bool) const>(&Set::area));
static_assert(isDeclaredAs<Vector (Set::*)(bool) const>(&Set::centerOfMass));
static_assert(isDeclaredAs<qcMatrix<2> (Set::*)(bool) const>(&Set::inertiaMatrix));
static_assert(isDeclaredAs<bool (Set::*)(const Vector&, bool) const>(&Set::inside));
static_assert(
    isDeclaredAs<double (Set::*)(const Vector&, bool, bool, bool) const>(&Set::distToPoint));
static_assert(isDeclaredAs<bool (Set::*)() const>(&Set::isSelfIntersecting));
static_assert(isDeclaredAs<qcRect (Set::*)(const qcXform<2>&) const>(&Set::encloseRect));
static_assert(isDeclaredAs<void (Set::*)(Set&) const>(&Set::regularize));
static_assert(isDeclaredAs<void (Set::*)(Set&) const>(&Set::outerHull));

}  // namespace
