// SPDX-License-Identifier: MIT
//
// Fuzz target: contours, regions and sets with edge elements, changed from either side.

#include <algorithm>
#include <sstream>

#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>
#include <platform/display/recordingtablet.h>
#include <testing/twin/region_twin.h>

#include "check.h"
#include "draw.h"
#include "questions.h"

namespace {

using namespace fuzz;

using Edgelets = std::vector<qcEdgelet>;
using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using RegionSetT = qcRegionSetT<qcEdgelet>;
using XformHandle = qcPtrHandle_const<qc2XformBase>;

Edgelets drawEdgelets(Input& input) {
  Edgelets edgelets;
  for (const plain::Point& p : drawVertices(input, 80)) {
    const auto magnitude = static_cast<unsigned short>(input.bits(2));
    edgelets.emplace_back(p, magnitude, qcAngle8(input.byte()));
  }
  return edgelets;
}

XformHandle drawTransform(Input& input) {
  switch (input.below(4)) {
    case 0:
      return {};
    case 1:
      return XformHandle(new qc2XformLinear(drawXform(input)));
    case 2:
      return XformHandle(new qc2Rigid(qcDegree(drawAngle(input, {})), drawPoint(input, {})));
    default:
      return XformHandle(new qc2XformLinear);
  }
}

bool areSame(const Edgelets& a, const Edgelets& b) {
  const auto isSame = [](const qcEdgelet& x, const qcEdgelet& y) {
    return same::same(x.position(), y.position()) && x.magnitude() == y.magnitude() &&
           x.angle() == y.angle();
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), isSame);
}

/// Requires that data and points are in step, as far as the transform can be inverted.
void checkInStep(const ContourT& contour) {
  require(contour.data().size() == contour.points().size(), "there is a datum for each vertex");
  for (std::size_t i = 0; i < contour.data().size(); ++i) {
    const plain::Point fromDatum = contour.point(contour.data()[i]);
    const plain::Point fromPoint = contour.datum(contour.points()[i]).position();
    require(same::same(contour.points()[i], fromDatum) ||
                same::same(contour.data()[i].position(), fromPoint),
            "each vertex is that of its datum or the other way round");
  }
}

/// Sets the data; when they are refused nothing may have changed.
void replaceData(ContourT& contour, const Edgelets& data) {
  const Edgelets before = contour.data();
  const plain::Points points = contour.points();
  try {
    contour.data(data);
  } catch (const qcMathError::Singular&) {
    require(areSame(contour.data(), before) && same::same(contour.points(), points),
            "refused data change nothing");
  }
}

template <class Shape>
void storeAndLoad(Shape& shape, Shape& again) {
  std::ostringstream out;
  qcStreamArchive storing(out);
  storing || shape;
  std::istringstream in(out.str());
  qcStreamArchive loading(in);
  loading || again;
}

void askAbout(Input& input, Patience& patience, const RegionT& region) {
  askRegion(input, patience, region, twin::plainOf(region));
}

void changeOrAsk(Input& input, Patience& patience, RegionT& region) {
  switch (input.below(10)) {
    case 0:
      replaceData(region, drawEdgelets(input));
      return checkInStep(region);
    case 1:
      static_cast<qcContour&>(region).points(drawVertices(input, 80));
      return checkInStep(region);
    case 2: {
      RegionT copy(region);
      require(copy == region || region.points().size() > 0, "an empty copy equals its source");
      region = RegionT(drawEdgelets(input), 7);
      checkInStep(region);
      region = copy;
      return checkInStep(region);
    }
    case 3: {
      ContourT contour(region);
      ContourT again;
      storeAndLoad(contour, again);
      require(areSame(again.data(), region.data()), "edge elements come back from an archive");
      return checkInStep(again);
    }
    case 4: {
      const qcPtrHandle_const<RegionT> hole(new RegionT(region));
      region.holes({hole, hole});
      return;
    }
    case 5: {
      qcRecordingTablet tablet;
      region.draw(tablet, qcColor::red, qcUITablet::eOverlayLayer);
      return require(tablet.segments().size() == region.data().size(),
                     "each edge element is drawn");
    }
    case 6: {
      RegionSetT set(std::vector<qcPtrHandle<RegionT>>{qcPtrHandle<RegionT>(new RegionT(region))});
      set.add(qcPtrHandle<qcRegion>(new qcRegion(region)), qcContourDefs::eNoIntersectionRepair);
      require(set.regionsT().size() == 2 && set.regions().size() == 2, "the lists are parallel");
      for (const auto& made : set.regionsT()) checkInStep(*made);
      return askSet(input, patience, set, twin::plainOf(set));
    }
    default:
      return askAbout(input, patience, region);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input({data, size});
  Patience patience(100000);
  try {
    const XformHandle transform = drawTransform(input);
    RegionT region(drawEdgelets(input), transform, 3);
    while (!input.isEmpty() && !patience.isOver()) changeOrAsk(input, patience, region);
  } catch (const qcMathError::Singular&) {
  }
  return 0;
}
