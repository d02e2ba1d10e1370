// SPDX-License-Identifier: MIT
//
// What is archivable, its handles, the archive and the exceptions of both libraries, name by name.

#include <iosfwd>
#include <string>
#include <typeinfo>

#include <cntr/contourdefs.h>
#include <platform/core/archive.h>

#include "probes.h"
#include "signature.h"

namespace {

static_assert(
    isDeclaredAs<void (qcPersistent::*)(qcArchive&)>(&PersistentProbe::dispatchSerialize));
static_assert(isDeclaredAs<void (qcPersistent::*)()>(&qcPersistent::reInit));
static_assert(isDeclaredAs<void (qcPersistent::*)(qcArchive&)>(&qcPersistent::loadSimple));
static_assert(hasSignature<void (qcPersistent::*)() const>(&PersistentProbe::mutating_));
static_assert(isDeclaredAs<bool (*)(const void*, std::size_t)>(&PersistentProbe::haveVisited));
static_assert(isDeclaredAs<void (*)(const void*, std::size_t)>(&PersistentProbe::setVisited));
static_assert(isDeclaredAs<void (*)(qcArchive&, qcPersistent*, qcPersistent*&)>(
    &PersistentProbe::serializePointer));
static_assert(std::is_constructible_v<qc_Instantiator, const std::type_info&, qcPersistent* (*)()>);

static_assert(std::is_abstract_v<qcArchive>);
static_assert(hasSignature<qcArchive& (qcArchive::*)(bool&)>(&qcArchive::operator||));
static_assert(hasSignature<qcArchive& (qcArchive::*)(long&)>(&qcArchive::operator||));
static_assert(hasSignature<qcArchive& (qcArchive::*)(unsigned long&)>(&qcArchive::operator||));
static_assert(hasSignature<qcArchive& (*)(qcArchive&, unsigned char&)>(&operator||));
static_assert(std::is_constructible_v<qcArchive::UnknownVersion, const char*, int>);
static_assert(std::is_base_of_v<qcArchive::Errors, qcArchive::UnknownVersion>);

// Handles.
struct Counted : qcRepBase {};
static_assert(std::has_virtual_destructor_v<qcRepBase>);
static_assert(std::is_base_of_v<qcPtrHandleBase, qcPtrHandle<Counted>>);
static_assert(std::is_base_of_v<qcPtrHandleBase_const, qcPtrHandle_const<Counted>>);
static_assert(std::is_base_of_v<qc_PtrHandleBase_RepAccessor, qcPtrHandleBase_const>);
static_assert(std::is_convertible_v<qcPtrHandle<Counted>, qcPtrHandle_const<Counted>>);
static_assert(std::is_default_constructible_v<qcBadPointer>);
static_assert(std::is_copy_constructible_v<qcBadPointer>);

// Exceptions of the platform.
static_assert(std::is_base_of_v<qcPersistent, qcException>);
static_assert(std::is_default_constructible_v<qcException>);
static_assert(std::is_copy_constructible_v<qcException>);
static_assert(std::is_base_of_v<qcException, qcExceptionWithString>);
static_assert(std::is_convertible_v<const wchar_t*, qcExceptionWithString>);
static_assert(std::is_copy_constructible_v<qcExceptionWithString>);
static_assert(std::is_copy_assignable_v<qcExceptionWithString>);
static_assert(isDeclaredAs<void (qcExceptionWithString::*)(std::wostream&) const>(
    &qcExceptionWithString::message_));
static_assert(std::is_base_of_v<qcException, qcMathError::Errors>);
static_assert(std::is_base_of_v<qcMathError::Errors, qcMathError::Singular>);
static_assert(std::is_default_constructible_v<qcMathError::Singular>);
static_assert(std::is_base_of_v<qcException, qcPel::Errors>);
static_assert(std::is_base_of_v<qcPel::Errors, qcPel::BadWindow>);
static_assert(std::is_default_constructible_v<qcPel::BadWindow>);

// Enumerations and exceptions of the shapes.
using Defs = qcContourDefs;
static_assert(hasSignature<Defs& (Defs::*)(const Defs&)>(&Defs::operator=));
static_assert(Defs::eFarthestVertexPair == 0 && Defs::eFromFirstVertex == 1);
static_assert(Defs::eNoIntersectionRepair == 0 && Defs::eOuterHull == 1 && Defs::eRegularize == 2);
static_assert(sizeof(Defs::DrawMode) == 4 && sizeof(Defs::DiameterMode) == 4 &&
              sizeof(Defs::IntersectionMode) == 4);
static_assert(std::is_same_v<decltype(Defs::eFromFirstVertex), Defs::DiameterMode>);
static_assert(std::is_same_v<decltype(Defs::eRegularize), Defs::IntersectionMode>);

static_assert(std::is_abstract_v<Defs::Errors>);
static_assert(std::is_base_of_v<qcExceptionWithString, Defs::Errors>);

/// Made as classes derived by users are: with a message, or with none.
struct ErrorsProbe : Defs::Errors {
  ErrorsProbe() = default;
  explicit ErrorsProbe(const std::wstring& message) : Errors(message) {}
  long errorNumber() const override { return 1; }
  void suicideAndRethrow() override {}
  using Errors::dispatchSerialize;
  using Errors::serialize_;
};
static_assert(std::is_default_constructible_v<ErrorsProbe>);
static_assert(isDeclaredAs<void (Defs::Errors::*)(qcArchive&)>(&ErrorsProbe::dispatchSerialize));
static_assert(
    isDeclaredAs<void (Defs::Errors::*)(qcArchive&, unsigned char)>(&ErrorsProbe::serialize_));

template <class X>
struct ConcreteErrorProbe : X {
  using X::dispatchSerialize;
  using X::serialize_;
};

template <class X>
consteval bool isConcreteError() {
  static_assert(std::is_base_of_v<Defs::Errors, X>);
  static_assert(std::is_default_constructible_v<X> && std::is_convertible_v<std::wstring, X>);
  static_assert(std::is_copy_constructible_v<X> && std::is_copy_assignable_v<X>);
  static_assert(isDeclaredAs<long (X::*)() const>(&X::errorNumber));
  static_assert(isDeclaredAs<void (X::*)()>(&X::suicideAndRethrow));
  static_assert(isDeclaredAs<void (X::*)(qcArchive&)>(&ConcreteErrorProbe<X>::dispatchSerialize));
  static_assert(
      isDeclaredAs<void (X::*)(qcArchive&, unsigned char)>(&ConcreteErrorProbe<X>::serialize_));
  static_assert(isDeclaredAs<void (qcPersistent::*)()>(&X::reInit));
  static_assert(isDeclaredAs<void (qcPersistent::*)(qcArchive&)>(&X::loadSimple));
  return true;
}
static_assert(isConcreteError<Defs::EmptyContour>());
static_assert(isConcreteError<Defs::EmptyRegionSet>());
static_assert(isConcreteError<Defs::BadParams>());
static_assert(isConcreteError<Defs::RegionCannotBeSetOpen>());

}  // namespace
