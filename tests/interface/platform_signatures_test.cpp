// SPDX-License-Identifier: MIT
//
// The platform's vectors, transforms, shapes and services, name by name. Exceptions and what is
// archivable are in persistence_signatures_test.cpp.

#include <iosfwd>
#include <string>
#include <vector>

#include <platform/core/fit.h>
#include <platform/core/hull.h>
#include <platform/core/interlocked.h>
#include <platform/core/random.h>
#include <platform/core/shapes.h>
#include <platform/core/thread.h>
#include <platform/core/xform.h>
#include <platform/display/tablet.h>
#include <platform/image/edgelet.h>

#include "signature.h"

namespace {

using Points = std::vector<qcVector<2>>;
using Vector = qcVector<2>;
using Matrix = qcMatrix<2>;
using Xform = qcXform<2>;
using XformHandle = qcPtrHandle<qc2XformBase>;

// Vectors.
static_assert(std::is_constructible_v<Vector, double, qcRadian>);
static_assert(std::is_convertible_v<qcPair<long>, Vector>);
static_assert(hasSignature<Vector (Vector::*)(const Vector&) const>(&Vector::operator+));
static_assert(hasSignature<Vector (Vector::*)(const Vector&) const>(&Vector::operator-));
static_assert(hasSignature<Vector (Vector::*)(double) const>(&Vector::operator*));
static_assert(hasSignature<double (Vector::*)(const Vector&) const>(&Vector::operator*));
static_assert(hasSignature<bool (Vector::*)(const Vector&) const>(&Vector::operator==));
static_assert(hasSignature<double (Vector::*)(const Vector&) const>(&Vector::distance));
static_assert(hasSignature<double (Vector::*)() const>(&Vector::len));
static_assert(hasSignature<Vector (Vector::*)() const>(&Vector::unit));
static_assert(hasSignature<qcRadian (Vector::*)() const>(&Vector::angle));
static_assert(hasSignature<bool (*)(const Vector&, const Vector&, double)>(&qfRealEq));
static_assert(hasSignature<qcArchive& (*)(qcArchive&, Vector&)>(&operator||));

// Matrices and transforms.
static_assert(std::is_default_constructible_v<Matrix>);
static_assert(std::is_constructible_v<Matrix, qcRadian, qcRadian, double, double>);
static_assert(hasSignature<Matrix (Matrix::*)(const Matrix&) const>(&Matrix::operator*));
static_assert(hasSignature<void (Matrix::*)()>(&Matrix::setdt));
static_assert(hasSignature<bool (*)(const Matrix&, const Matrix&, double)>(&qfRealEq));
static_assert(hasSignature<Vector (Xform::*)(const Vector&) const>(&Xform::operator*));
static_assert(std::is_same_v<decltype(Xform::I), const Xform>);

struct LinearProbe : qc2XformLinear {
  using qc2XformLinear::dispatchSerialize;
  using qc2XformLinear::serialize_;
};
static_assert(std::is_abstract_v<qc2XformBase>);
static_assert(std::is_default_constructible_v<qc2XformLinear>);
static_assert(std::is_base_of_v<qc2XformBase, qc2XformLinear>);
static_assert(
    isDeclaredAs<Vector (qc2XformLinear::*)(const Vector&) const>(&qc2XformLinear::mapPoint));
static_assert(isDeclaredAs<bool (qc2XformLinear::*)() const>(&qc2XformLinear::isLinear));
static_assert(isDeclaredAs<Xform (qc2XformLinear::*)() const>(&qc2XformLinear::linearXform));
static_assert(isDeclaredAs<XformHandle (qc2XformLinear::*)() const>(&qc2XformLinear::clone));
static_assert(isDeclaredAs<XformHandle (qc2XformLinear::*)(const qc2XformBase&) const>(
    &qc2XformLinear::composeBase));
static_assert(isDeclaredAs<XformHandle (qc2XformLinear::*)() const>(&qc2XformLinear::inverseBase));
static_assert(isDeclaredAs<void (qc2XformLinear::*)(qcArchive&)>(&LinearProbe::dispatchSerialize));
static_assert(
    isDeclaredAs<void (qc2XformLinear::*)(qcArchive&, unsigned char)>(&LinearProbe::serialize_));
static_assert(hasSignature<void* (*)(std::size_t)>(&qc2XformLinear::operator new));
static_assert(hasSignature<void (*)(void*)>(&qc2XformLinear::operator delete));
static_assert(std::is_constructible_v<qc2Rigid, qcDegree, Vector>);

// Shapes.
template <class Shape>
concept ArchivableValue = std::is_base_of_v<qcPersistent, Shape> &&
    std::is_default_constructible_v<Shape> && std::is_copy_constructible_v<Shape> &&
    std::is_copy_assignable_v<Shape> && std::has_virtual_destructor_v<Shape> &&
    std::is_same_v<void (qcPersistent::*)(qcArchive&), decltype(&Shape::loadSimple)>;
static_assert(ArchivableValue<qcLine> && ArchivableValue<qcLineSeg> && ArchivableValue<qcPoint>);
static_assert(ArchivableValue<qcRect> && ArchivableValue<qcCircle> && ArchivableValue<qcEllipse>);
static_assert(ArchivableValue<qcPolygon>);

static_assert(hasSignature<qcPoint (qcLine::*)(const qcLine&) const>(&qcLine::intersect));
static_assert(hasSignature<bool (qcLine::*)(const qcLine&) const>(&qcLine::isParallel));
static_assert(hasSignature<qcPoint (qcLine::*)(const Vector&) const>(&qcLine::proj));
static_assert(hasSignature<double (qcLine::*)(const Vector&) const>(&qcLine::distToPoint));
static_assert(std::is_constructible_v<qcLineSeg, Vector, Vector>);
static_assert(hasSignature<qcLine (qcLineSeg::*)() const>(&qcLineSeg::line));
static_assert(hasSignature<double (qcLineSeg::*)(const Vector&) const>(&qcLineSeg::distToPoint));
static_assert(hasSignature<double (qcPoint::*)(const Vector&) const>(&qcPoint::distToPoint));
static_assert(std::is_constructible_v<qcRect, qcPoint, qcPoint>);
static_assert(std::is_constructible_v<qcRect, Vector, Vector>);
static_assert(hasSignature<qcRect (*)(const Vector&, const Vector&)>(&qcRect::ofCorners));
static_assert(hasSignature<qcRect (qcRect::*)(const qcRect&) const>(&qcRect::enclose));
static_assert(hasSignature<const Vector& (qcRect::*)() const>(&qcRect::lr));
static_assert(hasSignature<bool (qcRect::*)(const Vector&) const>(&qcRect::within));
static_assert(std::is_constructible_v<qcCircle, Vector, double>);
static_assert(std::is_convertible_v<qcCircle, qcEllipse>);
static_assert(std::is_convertible_v<qcEllipse::qcEllipseGeom, qcEllipse>);
static_assert(std::is_constructible_v<qcPolygon, Points, qcPolygon::PolyFillMode>);
static_assert(std::is_convertible_v<Points, qcPolygon>);
static_assert(hasSignature<int (qcPolygon::*)() const>(&qcPolygon::size));
static_assert(hasSignature<const Vector& (qcPolygon::*)(long) const>(&qcPolygon::operator[]));
static_assert(requires(Points points) { take<qcPolygon>({points, qcPolygon::eNonZero}); });

// Angles.
static_assert(hasSignature<qcRadian (qcRadian::*)() const>(&qcRadian::norm));
static_assert(std::is_convertible_v<qcDegree, qcRadian> &&
              std::is_convertible_v<qcRadian, qcDegree>);
static_assert(std::is_convertible_v<qcAngle8, qcDegree>);

// Fits and hull.
static_assert(hasSignature<void (*)(const Points&, Points&)>(&qfConvexHull));
static_assert(hasSignature<void (*)(const qcEllipseFitParams&, const Points&,
                                    qcEllipseFitResults&)>(&qfEllipseFit));
static_assert(std::is_constructible_v<qcEllipseFitParams, qcEllipseFitDefs::fit_mode, qcRadian,
                                      unsigned long, double>);
static_assert(std::is_default_constructible_v<qcEllipseFitResults>);
static_assert(hasSignature<void (*)(const qcCircleFitParams&, const Points&, qcCircleFitResults&)>(
    &qfCircleFit));
static_assert(std::is_constructible_v<qcCircleFitParams, qcCircleFitDefs::fit_mode, double,
                                      unsigned long, double>);
static_assert(std::is_default_constructible_v<qcCircleFitResults>);
static_assert(std::is_convertible_v<qcEllipseFitDefs::fit_mode, qcEllipseFitParams>);
static_assert(std::is_convertible_v<qcCircleFitDefs::fit_mode, qcCircleFitParams>);

// Threads, counters, random numbers.
static_assert(std::is_default_constructible_v<qc_ThreadLocal>);
static_assert(hasSignature<void* (qc_ThreadLocal::*)() const>(&qc_ThreadLocal::OSValue));
static_assert(hasSignature<void (qc_ThreadLocal::*)(void*)>(&qc_ThreadLocal::OSValue));
static_assert(hasSignature<qcThreadID (*)()>(&qfGetCurrentThreadID));
static_assert(hasSignature<void (qcThreadID::*)(void (*)(const qcThreadID&, void*), void*) const>(
    &qcThreadID::atexit));
static_assert(hasSignature<long (*)(std::atomic<long>&)>(&qfInterlockedIncrement));
static_assert(hasSignature<long (*)(std::atomic<long>&)>(&qfInterlockedDecrement));
static_assert(std::is_convertible_v<long, qcRandomUniform>);
static_assert(hasSignature<double (qcRandomUniform::*)(double, double)>(&qcRandomUniform::next));
static_assert(hasSignature<int (*)(double)>(&qfIFloor));

// Edge elements and drawing.
static_assert(std::is_constructible_v<qcEdgelet, Vector, unsigned short, qcAngle8>);
static_assert(hasSignature<const Vector& (qcEdgelet::*)() const>(&qcEdgelet::position));
static_assert(hasSignature<qcAngle8 (qcEdgelet::*)() const>(&qcEdgelet::angle));
static_assert(hasSignature<qcArchive& (*)(qcArchive&, qcEdgelet&)>(&operator||));
static_assert(
    isDeclaredAs<void (qcUITablet::*)(const qcPair<double>&, const qcPair<double>&, const qcColor&,
                                      qcUITablet::Layers)>(&qcUITablet::drawLineSeg));

}  // namespace
