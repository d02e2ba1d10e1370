// SPDX-License-Identifier: MIT

#include "rooms.h"

namespace golden {

std::span<const Room> rooms() {
  static constexpr Room all[] = {
      {"shapes", askShapes},
      {"numbers", askNumbers},
      {"hull", askHull},
      {"circle_fit", askCircleFit},
      {"ellipse_fit", askEllipseFit},
      {"angles", askAngles, true},
      {"contour_measures", askContourMeasures},
      {"contour_edges", askContourEdges},
      {"contour_extents", askContourExtents},
      {"contour_extremes", askContourExtremes, true},
      {"contour_drawing", askContourDrawing},
      {"moments", askMoments},
      {"moment_ellipses", askMomentEllipses, true},
      {"region_measures", askRegionMeasures},
      {"region_queries", askRegionQueries},
      {"containment", askContainment, true},
      {"region_repair", askRegionRepair},
      {"set_measures", askSetMeasures},
      {"set_queries", askSetQueries, true},
      {"set_repair", askSetRepair},
      {"data", askData},
      {"data_drawing", askDataDrawing, true},
      {"archive", askArchive},
      {"descriptors", askDescriptors},
      {"descriptor_angles", askDescriptorAngles, true},
      {"simplified", askSimplified},
      {"deviations", askDeviations},
      {"alignments", askAlignments},
      {"alignment_angles", askAlignmentAngles, true},
  };
  return all;
}

}  // namespace golden
