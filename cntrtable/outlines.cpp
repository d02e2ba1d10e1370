// SPDX-License-Identifier: MIT

#include <cntrtable/outlines.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include <cntrtable/outlinecolumns.h>
#include <cntrtable/refusal.h>

namespace table {

namespace {

std::size_t asSize(std::int64_t number) { return static_cast<std::size_t>(number); }
std::int64_t asOffset(std::size_t number) { return static_cast<std::int64_t>(number); }

/// 0 to `count`: offsets of items that each consist of one.
std::vector<std::int64_t> countedUp(std::size_t count) {
  std::vector<std::int64_t> numbers(count + 1);
  std::iota(numbers.begin(), numbers.end(), std::int64_t{0});
  return numbers;
}

std::vector<std::int64_t> copied(std::span<const std::int64_t> numbers) {
  return {numbers.begin(), numbers.end()};
}

bool isSameNumber(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

/// The coordinates in their final place: with `owner`, or in a copy if that is null.
std::span<const double> keptCoordinates(OutlineColumns& columns,
                                        std::span<const double> coordinates,
                                        std::shared_ptr<const void> owner) {
  if (owner != nullptr) {
    columns.owners.push_back(std::move(owner));
    return coordinates;
  }
  const auto copy =
      std::make_shared<const std::vector<double>>(coordinates.begin(), coordinates.end());
  columns.owners.push_back(copy);
  return *copy;
}

void takeRings(OutlineColumns& columns, const qcRaggedOutlines& arrays,
               std::shared_ptr<const void> owner) {
  const std::span<const std::int64_t> offsets = arrays.rings;
  if (offsets.empty()) refuse("there are no ring offsets");
  requireOffsets(offsets, "ring", asOffset(arrays.coordinates.size() / 2), "vertices");
  const std::size_t count = offsets.size() - 1;
  const std::span<const double> kept =
      keptCoordinates(columns, arrays.coordinates, std::move(owner));
  columns.ringPlaces.resize(count);
  columns.ringCounts.resize(count);
  const bool isClosed = arrays.kind == qcOutlineKind::eAreas;
  for (std::size_t i = 0; i < count; ++i) {
    const std::int64_t vertices = offsets[i + 1] - offsets[i];
    const std::span<const double> ring = kept.subspan(2 * asSize(offsets[i]), 2 * asSize(vertices));
    const bool repeats = isClosed && repeatsFirstVertex(ring);
    columns.ringPlaces[i] = ring.data();
    columns.ringCounts[i] = repeats ? vertices - 1 : vertices;
  }
  if (arrays.edgelets.empty()) return;
  columns.edgelets.assign(arrays.edgelets.begin(), arrays.edgelets.end());
  columns.ringEdgelets.assign(offsets.begin(), offsets.end() - 1);
}

void takePartsAndFeatures(OutlineColumns& columns, const qcRaggedOutlines& arrays) {
  const auto rings = asOffset(columns.ringCounts.size());
  const bool isAreas = arrays.kind == qcOutlineKind::eAreas;
  const bool featuresAreParts = isAreas && arrays.parts.empty() && !arrays.features.empty();
  if (!arrays.parts.empty()) {
    if (!isAreas) refuse("lines have no part offsets: each ring is a part");
    requireOffsets(arrays.parts, "part", rings, "rings");
    columns.partRings = copied(arrays.parts);
  } else if (featuresAreParts) {
    requireOffsets(arrays.features, "feature", rings, "rings");
    columns.partRings = copied(arrays.features);
  } else {
    columns.partRings = countedUp(columns.ringCounts.size());
  }
  const std::size_t parts = columns.partRings.size() - 1;
  if (arrays.features.empty() || featuresAreParts) {
    columns.featureParts = countedUp(parts);
  } else {
    requireOffsets(arrays.features, "feature", asOffset(parts), "parts");
    columns.featureParts = copied(arrays.features);
  }
}

template <class T>
void append(std::vector<T>& all, const std::vector<T>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

void appendOffsets(std::vector<std::int64_t>& all, const std::vector<std::int64_t>& more) {
  const std::int64_t shift = all.back();
  for (std::size_t i = 1; i < more.size(); ++i) all.push_back(more[i] + shift);
}

/// Appends everything except edge elements.
void append(OutlineColumns& all, const OutlineColumns& more) {
  for (const Problem& problem : more.problems)
    all.problems.push_back({problem.feature + all.kinds.size(), problem.why});
  append(all.owners, more.owners);
  append(all.ringPlaces, more.ringPlaces);
  append(all.ringCounts, more.ringCounts);
  appendOffsets(all.partRings, more.partRings);
  appendOffsets(all.featureParts, more.featureParts);
  append(all.kinds, more.kinds);
  append(all.labels, more.labels);
}

/// Sets the kinds of features: those that are null or empty are eNothing.
void takeKinds(OutlineColumns& columns, qcOutlineKind kind, const std::vector<bool>& nulls) {
  const std::size_t count = columns.featureParts.size() - 1;
  columns.kinds.assign(count, kind);
  for (std::size_t i = 0; i < count; ++i) {
    const bool isNull = !nulls.empty() && nulls[i];
    const std::int64_t begin = columns.partRings[asSize(columns.featureParts[i])];
    const std::int64_t end = columns.partRings[asSize(columns.featureParts[i + 1])];
    const bool hasVertices =
        std::any_of(columns.ringCounts.begin() + begin, columns.ringCounts.begin() + end,
                    [](std::int64_t vertices) { return vertices > 0; });
    if (!isNull && hasVertices) continue;
    columns.kinds[i] = qcOutlineKind::eNothing;
    columns.problems.push_back({i, isNull ? "null" : "empty"});
  }
}

}  // namespace

qcOutlines OutlineColumns::asOutlines(OutlineColumns&& columns) {
  return qcOutlines(std::make_shared<const OutlineColumns>(std::move(columns)));
}

OutlineColumns OutlineColumns::joined(std::span<const qcOutlines> lists) {
  OutlineColumns all;
  all.partRings.push_back(0);
  all.featureParts.push_back(0);
  for (const qcOutlines& list : lists)
    if (list.size() > 0) append(all, *list.columns_);
  return all;
}

OutlineColumns columnsOf(const qcRaggedOutlines& arrays, std::shared_ptr<const void> owner,
                         const std::vector<bool>& nulls) {
  const std::size_t numbers = arrays.coordinates.size();
  if (numbers % 2 != 0) refuse(std::to_string(numbers) + " coordinates are no pairs of x and y");
  if (!arrays.edgelets.empty() && arrays.edgelets.size() != numbers / 2) {
    refuse("there are " + std::to_string(arrays.edgelets.size()) + " edge elements for " +
           std::to_string(numbers / 2) + " vertices");
  }
  OutlineColumns columns;
  takeRings(columns, arrays, std::move(owner));
  takePartsAndFeatures(columns, arrays);
  takeKinds(columns, arrays.kind, nulls);
  columns.labels.assign(columns.kinds.size(), -1);
  return columns;
}

bool repeatsFirstVertex(std::span<const double> ring) {
  return ring.size() >= 4 && isSameNumber(ring[0], ring[ring.size() - 2]) &&
         isSameNumber(ring[1], ring[ring.size() - 1]);
}

void requireOffsets(std::span<const std::int64_t> offsets, const std::string& name,
                    std::int64_t available, const std::string& counted) {
  const auto refuseOffset = [&](std::size_t i, const std::string& why) {
    refuse(name + " offset " + std::to_string(i) + " is " + std::to_string(offsets[i]) + ", " +
           why);
  };
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    if (offsets[i] < 0) refuseOffset(i, "which is negative");
    if (i > 0 && offsets[i] < offsets[i - 1])
      refuseOffset(i, "less than " + std::to_string(offsets[i - 1]) + " before it");
    if (offsets[i] > available)
      refuseOffset(i, "but there are " + std::to_string(available) + " " + counted);
  }
}

}  // namespace table

using table::asOffset;
using table::asSize;
using table::OutlineColumns;

qcOutlines::qcOutlines() = default;

qcOutlines::qcOutlines(std::shared_ptr<const OutlineColumns> columns)
    : columns_(std::move(columns)), count_(columns_->kinds.size()) {}

qcOutlines qcOutlines::fromRagged(const qcRaggedOutlines& arrays,
                                  std::shared_ptr<const void> owner) {
  if (arrays.kind == qcOutlineKind::eNothing)
    table::refuse("the features are to be areas or lines");
  return OutlineColumns::asOutlines(table::columnsOf(arrays, std::move(owner), {}));
}

qcOutlineKind qcOutlines::kind(std::size_t feature) const {
  return columns_->kinds[first_ + feature];
}

std::string qcOutlines::problem(std::size_t feature) const {
  const auto& problems = columns_->problems;
  const auto found = std::lower_bound(
      problems.begin(), problems.end(), first_ + feature,
      [](const table::Problem& problem, std::size_t number) { return problem.feature < number; });
  return found != problems.end() && found->feature == first_ + feature ? found->why : "";
}

std::optional<std::uint32_t> qcOutlines::label(std::size_t feature) const {
  const std::int64_t label = columns_->labels[first_ + feature];
  if (label < 0) return std::nullopt;
  return static_cast<std::uint32_t>(label);
}

std::size_t qcOutlines::parts(std::size_t feature) const {
  if (kind(feature) == qcOutlineKind::eNothing) return 0;
  const auto& offsets = columns_->featureParts;
  return asSize(offsets[first_ + feature + 1] - offsets[first_ + feature]);
}

std::size_t qcOutlines::firstRing(std::size_t feature, std::size_t part) const {
  return asSize(columns_->partRings[asSize(columns_->featureParts[first_ + feature]) + part]);
}

std::size_t qcOutlines::rings(std::size_t feature, std::size_t part) const {
  return firstRing(feature, part + 1) - firstRing(feature, part);
}

std::span<const double> qcOutlines::ring(std::size_t feature, std::size_t part,
                                         std::size_t ring) const {
  const std::size_t number = firstRing(feature, part) + ring;
  return {columns_->ringPlaces[number], 2 * asSize(columns_->ringCounts[number])};
}

std::span<const qcEdgelet> qcOutlines::edgelets(std::size_t feature, std::size_t part,
                                                std::size_t ring) const {
  const std::size_t number = firstRing(feature, part) + ring;
  const std::vector<std::int64_t>& starts = columns_->ringEdgelets;
  if (starts.empty() || starts[number] < 0) return {};
  return std::span(columns_->edgelets)
      .subspan(asSize(starts[number]), asSize(columns_->ringCounts[number]));
}

std::vector<qcRings> qcOutlines::feature(std::size_t feature) const {
  const auto points = [&](std::size_t part, std::size_t number) {
    const std::span<const double> numbers = ring(feature, part, number);
    std::vector<qcVector<2>> vertices;
    vertices.reserve(numbers.size() / 2);
    for (std::size_t i = 0; i < numbers.size(); i += 2)
      vertices.emplace_back(numbers[i], numbers[i + 1]);
    return vertices;
  };
  std::vector<qcRings> result;
  for (std::size_t part = 0; part < parts(feature); ++part) {
    const std::size_t count = rings(feature, part);
    if (count == 0) continue;
    result.push_back({points(part, 0), {}});
    for (std::size_t i = 1; i < count; ++i) result.back().holes.push_back(points(part, i));
  }
  return result;
}

qcOutlines qcOutlines::slice(std::size_t first, std::size_t count) const {
  if (first > count_ || count > count_ - first) {
    table::refuse("there are no " + std::to_string(count) + " features from number " +
                  std::to_string(first) + " on, but " + std::to_string(count_) + " in all");
  }
  qcOutlines result = *this;
  result.first_ = first_ + first;
  result.count_ = count;
  return result;
}

qcOutlines qcOutlines::selected(std::span<const std::size_t> features) const {
  if (features.empty()) return slice(0, 0);
  OutlineColumns columns;
  columns.owners = columns_->owners;
  columns.edgelets = columns_->edgelets;
  columns.partRings.push_back(0);
  columns.featureParts.push_back(0);
  for (const std::size_t feature : features) {
    if (feature >= count_) {
      table::refuse("there is no feature " + std::to_string(feature) + ", but " +
                    std::to_string(count_) + " in all");
    }
    for (std::size_t part = 0; part < parts(feature); ++part) {
      const auto begin = asOffset(firstRing(feature, part));
      const auto end = asOffset(firstRing(feature, part + 1));
      const auto addRings = [begin, end](auto& numbers, const auto& from) {
        numbers.insert(numbers.end(), from.begin() + begin, from.begin() + end);
      };
      addRings(columns.ringPlaces, columns_->ringPlaces);
      addRings(columns.ringCounts, columns_->ringCounts);
      if (!columns_->ringEdgelets.empty()) addRings(columns.ringEdgelets, columns_->ringEdgelets);
      columns.partRings.push_back(asOffset(columns.ringCounts.size()));
    }
    if (kind(feature) == qcOutlineKind::eNothing)
      columns.problems.push_back({columns.kinds.size(), problem(feature)});
    columns.featureParts.push_back(asOffset(columns.partRings.size() - 1));
    columns.kinds.push_back(kind(feature));
    columns.labels.push_back(columns_->labels[first_ + feature]);
  }
  return OutlineColumns::asOutlines(std::move(columns));
}

qcRaggedArrays qcOutlines::toRagged() const {
  qcRaggedArrays arrays;
  const bool hasEdgelets = count_ > 0 && !columns_->edgelets.empty();
  const auto addRing = [&](std::size_t feature, std::size_t part, std::size_t number) {
    const std::span<const double> numbers = ring(feature, part, number);
    const std::span<const qcEdgelet> elements = edgelets(feature, part, number);
    arrays.coordinates.insert(arrays.coordinates.end(), numbers.begin(), numbers.end());
    arrays.edgelets.insert(arrays.edgelets.end(), elements.begin(), elements.end());
    if (kind(feature) == qcOutlineKind::eAreas && !numbers.empty()) {
      arrays.coordinates.insert(arrays.coordinates.end(), numbers.begin(), numbers.begin() + 2);
      arrays.edgelets.insert(arrays.edgelets.end(), elements.begin(),
                             elements.begin() + (elements.empty() ? 0 : 1));
    }
    if (hasEdgelets) arrays.edgelets.resize(arrays.coordinates.size() / 2);
    arrays.rings.push_back(asOffset(arrays.coordinates.size() / 2));
  };
  for (std::size_t feature = 0; feature < count_; ++feature) {
    for (std::size_t part = 0; part < parts(feature); ++part) {
      for (std::size_t i = 0; i < rings(feature, part); ++i) addRing(feature, part, i);
      arrays.parts.push_back(asOffset(arrays.rings.size() - 1));
    }
    arrays.features.push_back(asOffset(arrays.parts.size() - 1));
  }
  return arrays;
}
