// SPDX-License-Identifier: MIT
//
// Shapes with edge elements, and the bytes of archives.

#include <algorithm>
#include <cmath>
#include <sstream>

#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>
#include <platform/display/svgtablet.h>

#include "rooms.h"
#include "subjects.h"

namespace golden {

namespace {

using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using RegionSetT = qcRegionSetT<qcEdgelet>;

std::vector<qcEdgelet> edgeletsAt(const Points& points, Random& random) {
  std::vector<qcEdgelet> edgelets;
  for (const Point& p : points) {
    const auto magnitude = static_cast<unsigned short>(random.below(65536));
    const auto steps = static_cast<unsigned char>(random.below(256));
    edgelets.emplace_back(p, magnitude, qcAngle8(steps));
  }
  return edgelets;
}

qcPtrHandle_const<qc2XformBase> sharedXform(Random& random) {
  return qcPtrHandle_const<qc2XformBase>(new qc2XformLinear(anyXform(random)));
}

/// What storing `object` writes.
template <class Object>
std::string stored(Object& object) {
  std::ostringstream bytes;
  qcStreamArchive archive(bytes);
  archive || object;
  return bytes.str();
}

/// What storing writes after `object` was stored and loaded into `loaded`.
template <class Object>
std::string storedAgain(Object& object, Object& loaded) {
  std::istringstream bytes(stored(object));
  qcStreamArchive archive(bytes);
  archive || loaded;
  return stored(loaded);
}

/// False when computed points have NaN coordinates: the sign of a NaN is the compiler's choice, and
/// archives keep it.
bool isFinite(const Points& points) {
  return std::all_of(points.begin(), points.end(),
                     [](const Point& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); });
}

bool isFinite(const qcRegion& region) {
  return isFinite(region.points()) &&
         std::all_of(region.holes().begin(), region.holes().end(),
                     [](const qcPtrHandle_const<qcRegion>& hole) { return isFinite(*hole); });
}

bool isFinite(const qcRegionSet& set) {
  const auto regions = set.regions();
  return std::all_of(regions.begin(), regions.end(), [](const auto& r) { return isFinite(*r); });
}

template <class Object>
void askStored(Answers& answers, Object& object, Object& loaded) {
  answers.ask([&] { return stored(object); });
  answers.ask([&] { return storedAgain(object, loaded); });
}

}  // namespace

void askData(Answers& answers) {
  forEachShape(500, [&](const shapes::Shape& shape, Random& random) {
    const qcPtrHandle_const<qc2XformBase> xform = sharedXform(random);
    ContourT contour(edgeletsAt(shape.points, random), xform);
    answers.add(contour.points());
    contour.points(shape.points);
    answers.add(contour.data());
    contour.isClosed(shape.closed);
    answers.ask([&] { return contour.meanPosition(); });
    const RegionT region(contour, 3);
    answers.ask([&] { return region.area(true); });
    answers.ask([&] { return region.datum(Point(1.5, 2.5)); });
    answers.ask([&] { return region.point(qcEdgelet(Point(1.5, 2.5), 1, qcAngle8(2))); });
  });
}

void askDataDrawing(Answers& answers) {
  forEachShape(200, [&](const shapes::Shape& shape, Random& random) {
    const RegionT region(edgeletsAt(shape.points, random), 0);
    qcRecordingTablet tablet;
    region.draw(tablet, qcColor::red, qcUITablet::eImageLayer);
    for (const qcRecordingTablet::Segment& segment : tablet.segments()) {
      answers.add(segment.from.x(), segment.from.y(), segment.to.x(), segment.to.y());
    }
  });
}

void askArchive(Answers& answers) {
  forEachShape(400, [&](const shapes::Shape& shape, Random& random) {
    qcContour contour(shape.points, shape.closed, 4294967295U);
    qcContour loaded({}, false, 0);
    askStored(answers, contour, loaded);
    const qcPtrHandle_const<qc2XformBase> xform = sharedXform(random);
    ContourT withData(edgeletsAt(shape.points, random), xform);
    ContourT loadedWithData;
    if (isFinite(withData.points())) askStored(answers, withData, loadedWithData);
  });
  for (std::size_t number = 0; number < 200; ++number) {
    const qcPtrHandle<qcRegion> region = regionWithHoles(number);
    qcRegion loadedRegion;
    if (isFinite(*region)) askStored(answers, *region, loadedRegion);
    qcRegionSet set = regionSet(number);
    qcRegionSet loadedSet(std::vector<qcPtrHandle_const<qcRegion>>(),
                          qcContourDefs::eNoIntersectionRepair);
    if (isFinite(set)) askStored(answers, set, loadedSet);
    Random random(number);
    const qcPtrHandle<RegionT> withData(new RegionT(edgeletsAt(shape(number).points, random), 17));
    RegionSetT setWithData(RegionSetT::RegionsT{withData, withData});
    RegionSetT loadedSetWithData;
    if (isFinite(setWithData)) askStored(answers, setWithData, loadedSetWithData);
  }
}

}  // namespace golden
