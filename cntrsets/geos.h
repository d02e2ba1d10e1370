// SPDX-License-Identifier: MIT
//
// Outlines with holes to and from the geometries of GEOS, for programs that use its C interface
// themselves. They link GEOS (geos_c) in addition to this library.

#pragma once

#include <geos_c.h>

#include <memory>
#include <vector>

#include <cntrsets/export.h>
#include <cntrsets/rings.h>

/// @addtogroup setoperations
/// @{

/// Destroys a geometry in the context in which it was made.
struct qcGeosDestroy {
  /// The context; must outlive the geometry.
  GEOSContextHandle_t context = nullptr;
  /// Gives the geometry back.
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(context, geometry); }
};

/// A GEOS geometry that is destroyed with its owner.
using qcGeosGeometry = std::unique_ptr<GEOSGeometry, qcGeosDestroy>;

/// A MULTIPOLYGON of the feature's parts, made in `context`: the rings unchanged, each closed by a
/// copy of its first vertex; nothing is repaired. Throws qcContourDefs::BadParams "a ring has fewer
/// than 3 vertices", and "GEOS refuses the outlines" when it does (its own message goes to the
/// handler of the context). O(n).
CNTRSETS_EXPORT qcGeosGeometry qf_ToGeos(GEOSContextHandle_t context,
                                         const std::vector<qcRings>& feature);

/// The parts of a POLYGON, a MULTIPOLYGON or a collection of these, in order, without the last
/// vertex of each ring, which repeats the first, without empty parts and without third coordinates.
/// Throws qcContourDefs::BadParams "the geometry is not made of polygons alone" for any other
/// geometry. O(n).
CNTRSETS_EXPORT std::vector<qcRings> qf_FromGeos(GEOSContextHandle_t context,
                                                 const GEOSGeometry* geometry);

/// @}
