// SPDX-License-Identifier: MIT
//
// Fuzz target: an archive of any bytes. Whatever can be loaded is asked some questions and must
// come back the same when it is stored and loaded again.
//
// The input is the kind of content, the number of bytes that questions are drawn from, these bytes,
// and the archive without its header.

#include <array>
#include <exception>
#include <set>
#include <sstream>
#include <string>

#include <cntrtmpl/regionsett.h>
#include <platform/core/archive.h>
#include <testing/twin/region_twin.h>

#include "check.h"
#include "draw.h"
#include "questions.h"

namespace {

using namespace fuzz;

using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using RegionSetT = qcRegionSetT<qcEdgelet>;

constexpr std::array<char, 8> header = {'Q', 'C', 'A', 'R', 1, 0, 0, 0};

template <class Value>
std::string stored(Value& value) {
  std::ostringstream stream;
  qcStreamArchive archive(stream);
  archive || value;
  return stream.str();
}

/// False when the bytes are refused.
template <class Value>
bool isLoaded(const std::string& bytes, Value& value) {
  std::istringstream stream(bytes);
  try {
    qcStreamArchive archive(stream);
    archive || value;
    return true;
  } catch (const qcArchive::Errors&) {
    return false;
  }
}

/// Takes the nodes of a region with its holes off `left`, each as often as it is reached; false
/// when there are too many or one is null: such regions have no plain form.
bool countNodes(const qcRegion& region, std::size_t& left) {
  if (left == 0 || region.points().size() > 200) return false;
  --left;
  for (const auto& hole : region.holes()) {
    if (!hole || !countNodes(*hole, left)) return false;
  }
  return true;
}

bool hasPlainForm(const qcRegion& region) {
  std::size_t most = 12;
  return countNodes(region, most);
}

bool hasPlainForm(const qcRegionSet& set) {
  std::size_t most = 12;
  for (const auto& region : set.regions()) {
    if (!region || !countNodes(*region, most)) return false;
  }
  return true;
}

void ask(Input& input, const qcContour& contour) {
  Patience patience(100000);
  if (contour.points().size() > 200) return;
  askContour(input, patience, contour, {contour.points(), contour.isClosed()});
}

/// Questions to regions that have no plain form: each must end, with an answer or an exception.
void askAnything(Input& input, const qcRegion& region) {
  const plain::Point p = drawPoint(input, region.points());
  try {
    static_cast<void>(region.inside(p, true));
    static_cast<void>(region.distToPoint(p, input.flag(), true, true));
    static_cast<void>(region.centerOfMass(true));
    static_cast<void>(region.area(true));
  } catch (const qcException&) {
  }
}

void ask(Input& input, const qcRegion& region) {
  if (!hasPlainForm(region)) return askAnything(input, region);
  Patience patience(100000);
  askRegion(input, patience, region, twin::plainOf(region));
}

void ask(Input& input, const qcRegionSet& set) {
  if (hasPlainForm(set)) {
    Patience patience(100000);
    return askSet(input, patience, set, twin::plainOf(set));
  }
  const auto regions = set.regions();
  const plain::Point p = drawPoint(input, {});
  try {
    static_cast<void>(set.inside(p, true));
    static_cast<void>(set.distToPoint(p, input.flag(), true, true));
    static_cast<void>(set.isSelfIntersecting());
  } catch (const qcException&) {
  }
}

void ask(Input& input, const ContourT& contour) {
  const auto xform = contour.dataFromPointsXform();
  require(!xform || xform->isLinear(), "every transform is linear");
  ask(input, static_cast<const qcContour&>(contour));
}

void ask(Input& input, const RegionT& region) { ask(input, static_cast<const qcRegion&>(region)); }

void ask(Input& input, const RegionSetT& set) { ask(input, static_cast<const qcRegionSet&>(set)); }

void ask(Input& input, const qc2XformBase& xform) {
  const plain::Point p = drawPoint(input, {});
  require(same::same(xform.mapPoint(p), xform.linearXform() * p), "mapPoint");
  try {
    static_cast<void>(xform.inverseBase()->composeBase(xform)->mapPoint(p));
  } catch (const qcMathError::Singular&) {
  }
}

/// Asks whatever object a handle may lead to.
void ask(Input& input, const qcPersistent& object) {
  if (const auto* set = dynamic_cast<const qcRegionSet*>(&object)) return ask(input, *set);
  if (const auto* region = dynamic_cast<const qcRegion*>(&object)) return ask(input, *region);
  if (const auto* contour = dynamic_cast<const qcContour*>(&object)) return ask(input, *contour);
  if (const auto* xform = dynamic_cast<const qc2XformBase*>(&object)) return ask(input, *xform);
  if (const auto* error = dynamic_cast<const qcException*>(&object)) {
    require(error->what() != nullptr, "an exception has a text");
  }
}

void ask(Input& input, const qcLine& line) {
  const plain::Point p = drawPoint(input, {});
  static_cast<void>(line.distToPoint(p));
  static_cast<void>(line.intersect(qcLine(p, line.dir())));
}

void ask(Input& input, const qcLineSeg& segment) {
  static_cast<void>(segment.distToPoint(drawPoint(input, {segment.p1(), segment.p2()})));
}

void ask(Input& input, const qcRect& rect) {
  const plain::Point p = drawPoint(input, {rect.ul(), rect.lr()});
  const qcRect larger = rect.enclose(qcRect(qcPoint(p), qcPoint(p)));
  static_cast<void>(larger.within(p));
}

void ask(Input& input, const qcPolygon& polygon) {
  plain::Points vertices;
  for (long i = 0; i < polygon.size(); ++i) vertices.push_back(polygon[i]);
  const qcRegion region(polygon, qcContourDefs::eNoIntersectionRepair);
  if (vertices.size() > 200) return;
  Patience patience(100000);
  askRegion(input, patience, region, {vertices, {}});
}

/// Values that there is nothing to ask about.
template <class Value>
void ask(Input& /*input*/, const Value& /*value*/) {}

template <class Value>
void loadAskAndStore(Input& questions, const std::string& bytes) {
  Value value{};
  if (!isLoaded(bytes, value)) return;
  const std::string first = stored(value);
  ask(questions, value);
  require(stored(value) == first, "questions do not change what is stored");
  Value again{};
  require(isLoaded(first, again), "what is stored can be loaded");
  require(stored(again) == first, "what is loaded is stored the same");
}

/// Contours and sets have no constructor without arguments.
struct AnyContour : qcContour {
  AnyContour() : qcContour({}, true, 0) {}
};
struct AnySet : qcRegionSet {
  AnySet() : qcRegionSet(twin::Handles(), qcContourDefs::eNoIntersectionRepair) {}
};

/// Objects through handles until the input ends; earlier ones may come again.
void loadHandles(Input& questions, const std::string& bytes) {
  std::istringstream stream(bytes);
  std::set<const qcPersistent*> asked;
  try {
    qcStreamArchive archive(stream);
    while (stream.rdbuf()->in_avail() > 0) {
      const qcPersistent* const object = archive.transferShared(nullptr);
      if (object != nullptr && asked.insert(object).second) ask(questions, *object);
    }
  } catch (const qcArchive::Errors&) {
  }
}

using Load = void (*)(Input&, const std::string&);

constexpr Load loads[] = {
    loadHandles,
    loadAskAndStore<qcPtrHandle<qcRegion>>,
    loadAskAndStore<qcPtrHandle<qcRegionSet>>,
    loadAskAndStore<AnyContour>,
    loadAskAndStore<qcRegion>,
    loadAskAndStore<AnySet>,
    loadAskAndStore<ContourT>,
    loadAskAndStore<RegionT>,
    loadAskAndStore<RegionSetT>,
    loadAskAndStore<qcPoint>,
    loadAskAndStore<qcLine>,
    loadAskAndStore<qcLineSeg>,
    loadAskAndStore<qcRect>,
    loadAskAndStore<qcCircle>,
    loadAskAndStore<qcEllipse>,
    loadAskAndStore<qcPolygon>,
    loadAskAndStore<qc2XformLinear>,
    loadAskAndStore<qc2Rigid>,
    loadAskAndStore<std::vector<qcVector<2>>>,
    loadAskAndStore<std::vector<qcEdgelet>>,
    loadAskAndStore<std::vector<qcPtrHandle_const<qcRegion>>>,
    loadAskAndStore<std::vector<std::vector<unsigned char>>>,
    loadAskAndStore<qcXform<2>>,
    loadAskAndStore<qcEdgelet>,
    loadAskAndStore<qcContourDefs::BadParams>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input({data, size});
  const std::size_t kind = input.below(std::size(loads) + 1);
  Input questions = input.part(input.byte() % 64);
  const std::string content(input.rest().begin(), input.rest().end());
  if (kind == std::size(loads)) {
    loadHandles(questions, content);  // its own header
  } else {
    loads[kind](questions, std::string(header.begin(), header.end()) + content);
  }
  return 0;
}
