// SPDX-License-Identifier: MIT
//
// Part of the static libqcplatform only: the list of its classes that archives can create. The list
// of libcntr is cntrtmpl/registeredclasses.cpp.
//
// A linker takes only those object files from a static library that something refers to, and
// nothing refers to a registration by name. Programs are therefore linked with the option that
// requests this list (cmake/Libraries.cmake, packaging/), and the list refers to every class.

#include <array>
#include <typeinfo>

#include <platform/core/archive.h>
#include <platform/core/exception.h>
#include <platform/core/shapes.h>
#include <platform/core/thread.h>
#include <platform/core/xform.h>

extern "C" {
extern const std::array<const std::type_info*, 23> qcplatform_registeredClasses;
}

const std::array<const std::type_info*, 23> qcplatform_registeredClasses = {
    &typeid(qcPoint),
    &typeid(qcLine),
    &typeid(qcLineSeg),
    &typeid(qcRect),
    &typeid(qcCircle),
    &typeid(qcEllipse),
    &typeid(qcPolygon),
    &typeid(qc2XformLinear),
    &typeid(qc2Rigid),
    &typeid(qcException),
    &typeid(qcExceptionWithString),
    &typeid(qcBadPointer),
    &typeid(qcMathError::Errors),
    &typeid(qcMathError::Singular),
    &typeid(qcPel::Errors),
    &typeid(qcPel::BadWindow),
    &typeid(qcThreadID::NotCurrentThread),
    &typeid(qcArchive::Errors),
    &typeid(qcArchive::UnknownVersion),
    &typeid(qcArchive::BadFormat),
    &typeid(qcArchive::Truncated),
    &typeid(qcArchive::ValueTooLarge),
    &typeid(qcArchive::WriteFailed)};
