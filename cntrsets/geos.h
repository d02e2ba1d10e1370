// SPDX-License-Identifier: MIT
//
// Outlines with holes to and from the geometries of GEOS, for programs that use its C interface
// themselves. They link GEOS (geos_c) beside this library.

#pragma once

#include <geos_c.h>

#include <memory>
#include <vector>

#include <cntrsets/export.h>
#include <cntrsets/rings.h>

/// @addtogroup setoperations
/// @{

/// Destroys a geometry in the context that it was made in.
struct qcGeosDestroy {
  /// The context; must outlive the geometry.
  GEOSContextHandle_t context = nullptr;
  /// Gives the geometry back.
  void operator()(GEOSGeometry* geometry) const { GEOSGeom_destroy_r(context, geometry); }
};

/// A geometry of GEOS that is destroyed with its owner.
using qcGeosGeometry = std::unique_ptr<GEOSGeometry, qcGeosDestroy>;

/// A MULTIPOLYGON of the feature's parts, made in `context`: rings as they are, each closed by a
/// copy of its first vertex; nothing is repaired. Throws qcContourDefs::BadParams "a ring has fewer
/// than 3 vertices", and "GEOS refuses the outlines" when it does (its own message goes to the
/// handler of the context). O(n).
CNTRSETS_EXPORT qcGeosGeometry qf_ToGeos(GEOSContextHandle_t context,
                                         const std::vector<qcRings>& feature);

/// The parts of a POLYGON, a MULTIPOLYGON or a collection of such, in their order; the last vertex
/// of each ring, which repeats the first, is left out, and so are empty parts and third
/// coordinates. Throws qcContourDefs::BadParams "the geometry is not made of polygons alone" for
/// any other. O(n).
CNTRSETS_EXPORT std::vector<qcRings> qf_FromGeos(GEOSContextHandle_t context,
                                                 const GEOSGeometry* geometry);

/// @}
