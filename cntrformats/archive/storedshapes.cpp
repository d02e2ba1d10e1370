// SPDX-License-Identifier: MIT

#include <cntrformats/archive/storedshapes.h>

#include <string>

#include <cntrformats/archive/vertices.h>
#include <cntrformats/errors.h>

namespace formats {

namespace {

using Kind = ArchiveItem::Kind;

/// Takes the objects of a shape one after the other. REQUIRES: the shape is whole.
class Items {
 public:
  explicit Items(std::string_view bytes) : rest_(bytes) {}

  ArchiveItem next() {
    ArchiveItem item;
    readItem(rest_, item);
    rest_.remove_prefix(item.size);
    return item;
  }

 private:
  std::string_view rest_;
};

qcRings partOf(const ArchiveItem& region, Items& items, const std::string& prefix) {
  qcRings part{archivedRing(verticesOf(region), prefix + "outline"), {}};
  for (std::uint32_t k = 1; k <= region.listed; ++k) {
    const std::string place = prefix + "hole " + std::to_string(k);
    part.holes.push_back(archivedRing(verticesOf(items.next()), place));
  }
  return part;
}

void readSet(const ArchiveItem& set, Items& items, Feature& feature) {
  if (set.listed == 0) throw FeatureError("a set without regions");
  Geometry geometry{true, true};
  unsigned long common = 0;
  for (std::uint32_t k = 1; k <= set.listed; ++k) {
    const ArchiveItem region = items.next();
    geometry.parts.push_back(partOf(region, items, "part " + std::to_string(k) + ", "));
    if (k == 1) common = region.label;
    if (region.label != common) common = 0;
  }
  feature.geometry = std::move(geometry);
  feature.label = labelOf(common);
}

qcRings partOf(const ArchiveItem& contour) {
  Points points = verticesOf(contour);
  return {contour.isClosed ? archivedRing(std::move(points), "outline")
                           : archivedLine(std::move(points)),
          {}};
}

}  // namespace

Found ShapeEnds::find(std::string_view shape) {
  if (isWhole_) size_ = 0;
  isWhole_ = false;
  do {
    const Found found = findNext(shape.substr(size_));
    if (found != Found::eWhole) return found;
  } while (isInSet_ || holesLeft_ > 0);
  isWhole_ = true;
  return Found::eWhole;
}

Found ShapeEnds::findNext(std::string_view rest) {
  if (isInSet_ && regionsLeft_ == 0 && holesLeft_ == 0) {
    const Found end = readEndOfSet(rest);
    isInSet_ = end != Found::eWhole;
    size_ += isInSet_ ? 0 : endOfSetSize;
    return end;
  }
  ArchiveItem item;
  const Found found = readItem(rest, item);
  if (found != Found::eWhole) return found;
  if (item.id != nextId_ || !take(item)) return Found::eOther;
  ++nextId_;
  size_ += item.size;
  return Found::eWhole;
}

bool ShapeEnds::take(const ArchiveItem& item) {
  if (holesLeft_ > 0) {
    --holesLeft_;
    return item.kind == Kind::eRegion && item.listed == 0;
  }
  if (isInSet_) {
    --regionsLeft_;
    holesLeft_ = item.listed;
    return item.kind == Kind::eRegion;
  }
  isInSet_ = item.kind == Kind::eRegionSet;
  (isInSet_ ? regionsLeft_ : holesLeft_) = item.listed;
  return true;
}

void readStoredShape(const Passage& passage, Feature& feature) {
  Items items(passage.text);
  const ArchiveItem first = items.next();
  if (first.kind == Kind::eRegionSet) return readSet(first, items, feature);
  const bool isRegion = first.kind == Kind::eRegion;
  feature.geometry.closed = first.isClosed;
  feature.geometry.parts.push_back(isRegion ? partOf(first, items, "") : partOf(first));
  feature.label = labelOf(first.label);
}

}  // namespace formats
