// SPDX-License-Identifier: MIT
//
// A part of the static libqcplatform alone: the list of its classes that archives can create.
// cntrtmpl/registeredclasses.cpp is that of libcntr.
//
// From a static library a linker takes only the object files that something asks for, and nobody
// asks for a registration by its name. Programs are therefore linked with the option that asks for
// this list (cmake/Libraries.cmake, packaging/), and the list asks for every class.

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
