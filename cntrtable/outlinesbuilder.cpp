// SPDX-License-Identifier: MIT
//
// qcOutlinesBuilder: columns that grow at their ends.

#include <algorithm>
#include <utility>

#include <cntrtable/outlinecolumns.h>

using table::OutlineColumns;

namespace {

std::unique_ptr<OutlineColumns> emptyColumns() {
  auto columns = std::make_unique<OutlineColumns>();
  columns->partRings.push_back(0);
  columns->featureParts.push_back(0);
  return columns;
}

template <class T>
std::int64_t sizeOf(const std::vector<T>& list) {
  return static_cast<std::int64_t>(list.size());
}

/// Drops those of the rings from number `rings` on.
void dropEdgelets(OutlineColumns& columns, std::size_t rings) {
  std::vector<std::int64_t>& starts = columns.ringEdgelets;
  if (starts.size() <= rings) return;
  const auto first = std::find_if(starts.begin() + static_cast<std::ptrdiff_t>(rings), starts.end(),
                                  [](std::int64_t start) { return start >= 0; });
  if (first != starts.end()) columns.edgelets.resize(static_cast<std::size_t>(*first));
  starts.resize(rings);
}

std::optional<std::uint32_t> labelOf(const qcContour& contour) {
  return static_cast<std::uint32_t>(contour.label());
}

}  // namespace

qcOutlinesBuilder::qcOutlinesBuilder() : columns_(emptyColumns()) {}
qcOutlinesBuilder::~qcOutlinesBuilder() = default;

void qcOutlinesBuilder::addAreas(const std::vector<qcRings>& parts,
                                 std::optional<std::uint32_t> label) {
  for (const qcRings& part : parts) {
    addPoints(part.outline);
    for (const std::vector<qcVector<2>>& hole : part.holes) addPoints(hole);
    endPart();
  }
  endFeature(qcOutlineKind::eAreas, label);
}

void qcOutlinesBuilder::addLines(const std::vector<std::vector<qcVector<2>>>& lines,
                                 std::optional<std::uint32_t> label) {
  for (const std::vector<qcVector<2>>& line : lines) {
    addPoints(line);
    endPart();
  }
  endFeature(qcOutlineKind::eLines, label);
}

void qcOutlinesBuilder::add(const qcContour& contour) {
  addPoints(contour.points());
  endPart();
  endFeature(contour.isClosed() ? qcOutlineKind::eAreas : qcOutlineKind::eLines, labelOf(contour));
}

void qcOutlinesBuilder::add(const qcRegion& region) {
  addParts({&region});
  endFeature(qcOutlineKind::eAreas, labelOf(region));
}

void qcOutlinesBuilder::add(const qcRegionSet& set) {
  const std::vector<qcPtrHandle_const<qcRegion>> handles = set.regions();
  std::vector<const qcRegion*> regions;
  regions.reserve(handles.size());
  for (const qcPtrHandle_const<qcRegion>& region : handles) regions.push_back(&*region);
  addParts(std::move(regions));
  endFeature(qcOutlineKind::eAreas);
}

void qcOutlinesBuilder::add(const qcOutlines& outlines, std::size_t feature) {
  if (outlines.kind(feature) == qcOutlineKind::eNothing) {
    failFeature(outlines.problem(feature));
    return;
  }
  for (std::size_t part = 0; part < outlines.parts(feature); ++part) {
    for (std::size_t i = 0; i < outlines.rings(feature, part); ++i) {
      const std::span<const double> from = outlines.ring(feature, part, i);
      const std::span<double> to = addRing(from.size() / 2);
      std::copy(from.begin(), from.end(), to.begin());
      const std::span<const qcEdgelet> edgelets = outlines.edgelets(feature, part, i);
      if (!edgelets.empty()) setEdgelets(edgelets);
    }
    endPart();
  }
  endFeature(outlines.kind(feature), outlines.label(feature));
}

std::span<double> qcOutlinesBuilder::addRing(std::size_t vertices) {
  const std::size_t start = coordinates_.size();
  coordinates_.resize(start + 2 * vertices);
  ringStarts_.push_back(start);
  columns_->ringCounts.push_back(static_cast<std::int64_t>(vertices));
  return std::span(coordinates_).subspan(start);
}

void qcOutlinesBuilder::setEdgelets(std::span<const qcEdgelet> edgelets) {
  columns_->ringEdgelets.resize(ringStarts_.size(), -1);
  columns_->ringEdgelets.back() = sizeOf(columns_->edgelets);
  columns_->edgelets.insert(columns_->edgelets.end(), edgelets.begin(), edgelets.end());
}

void qcOutlinesBuilder::leaveOutRepeated() {
  if (!table::repeatsFirstVertex(std::span(coordinates_).subspan(ringStarts_.back()))) return;
  coordinates_.resize(coordinates_.size() - 2);
  --columns_->ringCounts.back();
}

void qcOutlinesBuilder::endPart() {
  const std::int64_t rings = sizeOf(ringStarts_);
  if (columns_->partRings.back() < rings) columns_->partRings.push_back(rings);
}

void qcOutlinesBuilder::endFeature(qcOutlineKind kind, std::optional<std::uint32_t> label) {
  endPart();
  const auto firstPart = static_cast<std::size_t>(columns_->featureParts.back());
  const auto firstRing = static_cast<std::size_t>(columns_->partRings[firstPart]);
  if (firstRing == ringStarts_.size() || ringStarts_[firstRing] == coordinates_.size()) {
    failFeature("empty");
    return;
  }
  columns_->featureParts.push_back(sizeOf(columns_->partRings) - 1);
  columns_->kinds.push_back(kind);
  columns_->labels.push_back(label ? std::int64_t{*label} : -1);
}

void qcOutlinesBuilder::failFeature(const std::string& why) {
  const auto parts = static_cast<std::size_t>(columns_->featureParts.back());
  columns_->partRings.resize(parts + 1);
  const auto rings = static_cast<std::size_t>(columns_->partRings.back());
  dropEdgelets(*columns_, rings);
  if (rings < ringStarts_.size()) coordinates_.resize(ringStarts_[rings]);
  ringStarts_.resize(rings);
  columns_->ringCounts.resize(rings);
  columns_->problems.push_back({columns_->kinds.size(), why});
  columns_->featureParts.push_back(columns_->featureParts.back());
  columns_->kinds.push_back(qcOutlineKind::eNothing);
  columns_->labels.push_back(-1);
}

qcOutlines qcOutlinesBuilder::finish() {
  columns_->ringEdgelets.resize(columns_->edgelets.empty() ? 0 : ringStarts_.size(), -1);
  const auto owned = std::make_shared<const std::vector<double>>(std::move(coordinates_));
  coordinates_.clear();
  columns_->owners.push_back(owned);
  columns_->ringPlaces.reserve(ringStarts_.size());
  for (const std::size_t start : ringStarts_) columns_->ringPlaces.push_back(owned->data() + start);
  ringStarts_.clear();
  const std::unique_ptr<OutlineColumns> done = std::exchange(columns_, emptyColumns());
  return OutlineColumns::asOutlines(std::move(*done));
}

void qcOutlinesBuilder::addPoints(const std::vector<qcVector<2>>& points) {
  const std::span<double> place = addRing(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    place[2 * i] = points[i].x();
    place[2 * i + 1] = points[i].y();
  }
}

void qcOutlinesBuilder::addParts(std::vector<const qcRegion*> regions) {
  std::vector<std::vector<const qcRegion*>> parts;
  for (std::size_t i = 0; i < regions.size(); ++i) {
    parts.push_back({regions[i]});
    for (const qcPtrHandle_const<qcRegion>& hole : regions[i]->holes()) {
      parts.back().push_back(&*hole);
      for (const qcPtrHandle_const<qcRegion>& island : hole->holes()) regions.push_back(&*island);
    }
  }
  // Up to here a null handle has thrown before anything was added.
  for (const std::vector<const qcRegion*>& part : parts) {
    for (const qcRegion* ring : part) addPoints(ring->points());
    endPart();
  }
}
