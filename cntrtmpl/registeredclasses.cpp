// SPDX-License-Identifier: MIT
//
// Part of the static libcntr only: the list of its classes that archives can create. Every program
// is linked with it; platform/core/registeredclasses.cpp says why.

#include <array>
#include <typeinfo>

#include <cntrtmpl/contourt.h>
#include <cntrtmpl/regionsett.h>
#include <cntrtmpl/regiont.h>

extern "C" {
extern const std::array<const std::type_info*, 10> cntr_registeredClasses;
}

const std::array<const std::type_info*, 10> cntr_registeredClasses = {
    &typeid(qcContour),
    &typeid(qcRegion),
    &typeid(qcRegionSet),
    &typeid(qcContourT<qcEdgelet>),
    &typeid(qcRegionT<qcEdgelet>),
    &typeid(qcRegionSetT<qcEdgelet>),
    &typeid(qcContourDefs::EmptyContour),
    &typeid(qcContourDefs::EmptyRegionSet),
    &typeid(qcContourDefs::BadParams),
    &typeid(qcContourDefs::RegionCannotBeSetOpen)};
