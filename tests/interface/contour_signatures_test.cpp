// SPDX-License-Identifier: MIT
//
// The contour, and the moments and fits of lists of vertices, name by name.

#include <array>
#include <span>
#include <vector>

#include <cntr/contour.h>
#include <cntr/descriptors.h>
#include <cntr/deviation.h>
#include <cntr/ellipse.h>
#include <cntr/inertia.h>
#include <cntr/region.h>
#include <cntr/simplify.h>

#include "probes.h"
#include "signature.h"

namespace {

using Points = std::vector<qcVector<2>>;
using Edgelets = std::vector<qcEdgelet>;
using Vector = qcVector<2>;
using ManyPoints = std::span<const qcVector<2>>;
using Contour = qcContour;

// The model.
static_assert(std::is_base_of_v<qcPersistent, Contour> && std::is_base_of_v<qcRepBase, Contour>);
static_assert(!std::is_default_constructible_v<Contour>);
static_assert(std::is_constructible_v<Contour, Points, bool, unsigned long>);
static_assert(std::is_constructible_v<Contour, qcPolygon, unsigned long>);
static_assert(std::is_copy_constructible_v<Contour>);
static_assert(hasSignature<Contour& (Contour::*)(const Contour&)>(&Contour::operator=));
static_assert(hasSignature<bool (Contour::*)(const Contour&) const>(&Contour::operator==));
static_assert(std::has_virtual_destructor_v<Contour>);
static_assert(hasSignature<const Points& (Contour::*)() const>(&Contour::points));
static_assert(hasSignature<void (Contour::*)(const Points&)>(&Contour::points));
static_assert(isDeclaredAs<void (Contour::*)(const Points&)>(&ContourProbe::setPoints));
static_assert(hasSignature<bool (Contour::*)() const>(&Contour::isClosed));
static_assert(hasSignature<void (Contour::*)(bool)>(&Contour::isClosed));
static_assert(hasSignature<unsigned long (Contour::*)() const>(&Contour::label));
static_assert(hasSignature<void (Contour::*)(unsigned long)>(&Contour::label));
static_assert(hasSignature<long (Contour::*)() const>(&Contour::cachedVectorSize));
static_assert(hasSignature<void (Contour::*)(long)>(&Contour::cachedVectorSize));
static_assert(isDeclaredAs<void (Contour::*)() const>(&ContourProbe::checkEmptyContour));
static_assert(isDeclaredAs<void (Contour::*)()>(&ContourProbe::makeDataConsistentWithPoints));
static_assert(isDeclaredAs<void (Contour::*)()>(&ContourProbe::makePointsConsistentWithData));
static_assert(isDeclaredAs<void (Contour::*)()>(&ContourProbe::cleanCacheInfo));
static_assert(isDeclaredAs<void (Contour::*)(qcArchive&)>(&ContourProbe::dispatchSerialize));
static_assert(
    isDeclaredAs<void (Contour::*)(qcArchive&, unsigned char)>(&ContourProbe::serialize_));

// Measures.
static_assert(isDeclaredAs<double (Contour::*)() const>(&Contour::length));
static_assert(isDeclaredAs<Vector (Contour::*)() const>(&Contour::meanPosition));
static_assert(isDeclaredAs<double (Contour::*)() const>(&ContourProbe::medianFeatureSize));
static_assert(hasSignature<Vector (Contour::*)(const Vector&, bool) const>(&Contour::closestPoint));
static_assert(hasSignature<void (Contour::*)(ManyPoints, bool, std::span<Vector>) const>(
    &Contour::closestPoint));
static_assert(isDeclaredAs<long (Contour::*)(const Vector&) const>(&Contour::closestVertexIndex));
static_assert(hasSignature<double (Contour::*)(const Vector&, bool) const>(&Contour::distToPoint));
static_assert(hasSignature<void (Contour::*)(ManyPoints, bool, std::span<double>) const>(
    &Contour::distToPoint));
static_assert(isDeclaredAs<qcPolygon (Contour::*)() const>(&Contour::polygon));
static_assert(isDeclaredAs<void (Contour::*)(qcRegion&) const>(&Contour::convexHull));
static_assert(isDeclaredAs<void (Contour::*)(qcEllipse&, double&) const>(&Contour::fitEllipse));

// Circles.
static_assert(isDeclaredAs<qcCircle (Contour::*)(qcContourDefs::DiameterMode) const>(
    &Contour::encloseCircle));
static_assert(
    isDeclaredAs<double (Contour::*)(qcContourDefs::DiameterMode) const>(&Contour::diameter));

// Edges and crossings.
static_assert(isDeclaredAs<void (Contour::*)() const>(&ContourProbe::computeLineSegs));
static_assert(
    isDeclaredAs<const std::vector<qcLineSeg>& (Contour::*)() const>(&ContourProbe::lineSegs));
static_assert(
    isDeclaredAs<const std::vector<bool>& (Contour::*)() const>(&ContourProbe::validLine));
static_assert(hasSignature<Points (Contour::*)(const qcLineSeg&, std::vector<int>&, bool) const>(
    &ContourProbe::intersections));
static_assert(
    hasSignature<Points (Contour::*)(const qcLineSeg&, bool) const>(&Contour::intersections));
static_assert(hasSignature<Points (Contour::*)(const Contour&) const>(&Contour::intersections));
static_assert(isDeclaredAs<bool (Contour::*)(const qcLineSeg&, bool) const>(&Contour::isCrossedBy));
static_assert(isDeclaredAs<bool (Contour::*)() const>(&Contour::isSelfIntersecting));
static_assert(isDeclaredAs<std::vector<int> (Contour::*)(const Vector&, double) const>(
    &Contour::vertexIndex));

// Extents, mapping, drawing.
static_assert(
    isDeclaredAs<long (Contour::*)(const qcRadian&) const>(&Contour::extremalVertexIndex));
static_assert(
    isDeclaredAs<Vector (Contour::*)(const qcRadian&) const>(&Contour::extremalVertexPosition));
static_assert(isDeclaredAs<qcRect (Contour::*)(const qcXform<2>&) const>(&Contour::encloseRect));
static_assert(isDeclaredAs<void (Contour::*)(const qcXform<2>&, Contour&) const>(&Contour::map));
static_assert(isDeclaredAs<void (Contour::*)(qcUITablet&, qcContourDefs::DrawMode, const qcColor&,
                                             const qcUITablet::Layers&) const>(&Contour::draw));

// Moments.
static_assert(std::is_default_constructible_v<qc_InertiaData>);
static_assert(std::is_convertible_v<double, qc_InertiaData>);
static_assert(std::is_constructible_v<qc_InertiaData, double, Vector>);
static_assert(std::is_constructible_v<qc_InertiaData, double, Vector, qcMatrix<2>>);
static_assert(isDeclaredAs<double (qc_InertiaData::*)() const noexcept>(&qc_InertiaData::area));
static_assert(
    hasSignature<const Vector& (qc_InertiaData::*)() const>(&qc_InertiaData::centerOfMass));
static_assert(
    hasSignature<const qcMatrix<2>& (qc_InertiaData::*)() const>(&qc_InertiaData::inertiaMatrix));
static_assert(hasSignature<qc_InertiaData& (qc_InertiaData::*)(const qc_InertiaData&)>(
    &qc_InertiaData::operator=));
static_assert(hasSignature<qc_InertiaData (qc_InertiaData::*)(const qc_InertiaData&) const>(
    &qc_InertiaData::operator+));
static_assert(hasSignature<qc_InertiaData (*)(const Points&)>(&qf_InertiaDataPolygon));
static_assert(hasSignature<double (*)(const Points&)>(&qf_Area));
static_assert(hasSignature<double (*)(const Edgelets&)>(&qf_Area));
static_assert(hasSignature<Vector (*)(const Points&)>(&qf_CenterOfMass));
static_assert(hasSignature<Vector (*)(const Edgelets&)>(&qf_CenterOfMass));
static_assert(hasSignature<Vector (*)(const Points&)>(&qnContour::centerOfMass));

// Ellipses and statistics.
static_assert(hasSignature<qcEllipse (*)(const qc_InertiaData&)>(&qf_EllipseFromInertiaData));
using View = std::span<const Vector>;
static_assert(isDeclaredAs<qcOrientedRect (*)(View)>(&qf_MinimumAreaRect));
static_assert(isDeclaredAs<qcWidth (*)(View)>(&qf_MinimumWidth));
static_assert(isDeclaredAs<qcCircle (*)(View)>(&qf_MinimumCircle));
static_assert(hasSignature<std::array<double, 7> (*)(View)>(&qf_HuMoments));
static_assert(hasSignature<std::array<double, 7> (*)(std::span<const Points>)>(&qf_HuMoments));

using Contours = std::vector<Contour>;
static_assert(
    isDeclaredAs<qcDeviation (*)(const Contours&, const Contours&, double)>(&qf_Deviation));
static_assert(isDeclaredAs<double (*)(const Contours&, const Contours&, double)>(&qf_Hausdorff));
static_assert(isDeclaredAs<qcAlignment (*)(const Contours&, const Contours&)>(&qf_Align));

using Rings = std::vector<Points>;
static_assert(hasSignature<Contour (*)(const Contour&, double)>(&qf_Simplify));
static_assert(hasSignature<Rings (*)(const Rings&, double)>(&qf_Simplify));
static_assert(isDeclaredAs<Contour (*)(const Contour&, double)>(&qf_Resample));

static_assert(hasSignature<void (*)(const Points&, qcEllipse&, double&)>(&qf_FitEllipse));
static_assert(hasSignature<void (*)(const Edgelets&, qcEllipse&, double&)>(&qf_FitEllipse));
static_assert(hasSignature<double (*)(const std::vector<double>&)>(&qf_StdDev));

}  // namespace
