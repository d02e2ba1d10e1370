// SPDX-License-Identifier: MIT

#include <cntrtable/attributes.h>

#include <algorithm>
#include <span>
#include <utility>

#include <cntrtable/outlinecolumns.h>
#include <cntrtable/refusal.h>

namespace table {

namespace {

/// Calls `visit(part, ring)` for each ring of the feature.
template <class Visit>
void forRings(const qcOutlines& outlines, std::size_t feature, Visit visit) {
  for (std::size_t part = 0; part < outlines.parts(feature); ++part)
    for (std::size_t ring = 0; ring < outlines.rings(feature, part); ++ring) visit(part, ring);
}

std::size_t verticesOf(const qcOutlines& outlines, std::size_t feature) {
  std::size_t vertices = 0;
  forRings(outlines, feature, [&](std::size_t part, std::size_t ring) {
    vertices += outlines.ring(feature, part, ring).size() / 2;
  });
  return vertices;
}

bool hasEdgelets(const qcOutlines& outlines) {
  bool found = false;
  for (std::size_t i = 0; i < outlines.size() && !found; ++i) {
    forRings(outlines, i, [&](std::size_t part, std::size_t ring) {
      found = found || !outlines.edgelets(i, part, ring).empty();
    });
  }
  return found;
}

/// Assigns edge elements to rings, one feature after the other.
class EdgePlacing {
 public:
  EdgePlacing(const qcOutlines& outlines, const EdgeElements& edges, OutlineColumns& columns)
      : outlines_(outlines), edges_(edges), columns_(columns) {}

  void run() {
    if (edges_.counts.empty()) return;
    for (std::size_t i = 0; i < outlines_.size(); ++i) {
      const auto count = static_cast<std::size_t>(edges_.counts[i]);
      if (count > 0) placeAll(i, count);
      first_ += count;
    }
    columns_.ringEdgelets.resize(columns_.edgelets.empty() ? 0 : columns_.ringCounts.size(), -1);
  }

 private:
  void placeAll(std::size_t feature, std::size_t count) {
    const std::size_t vertices = verticesOf(outlines_, feature);
    if (vertices == 0) return;
    if (count != vertices) {
      refuse("feature " + std::to_string(feature) + " has " + std::to_string(count) +
             " edge elements for " + std::to_string(vertices) + " vertices");
    }
    std::size_t place = first_;
    // Parts follow each other.
    const auto firstPart = static_cast<std::size_t>(columns_.featureParts[feature]);
    auto number = static_cast<std::size_t>(columns_.partRings[firstPart]);
    forRings(outlines_, feature, [&](std::size_t part, std::size_t ring) {
      const std::span<const double> numbers = outlines_.ring(feature, part, ring);
      placeRing(number, numbers, place);
      place += numbers.size() / 2;
      ++number;
    });
  }

  void placeRing(std::size_t number, std::span<const double> numbers, std::size_t place) {
    const std::size_t count = numbers.size() / 2;
    const auto magnitudes = std::span(edges_.magnitudes).subspan(place, count);
    const bool isWhole = std::all_of(magnitudes.begin(), magnitudes.end(),
                                     [](std::int32_t magnitude) { return magnitude >= 0; });
    if (!isWhole) return;
    columns_.ringEdgelets.resize(number + 1, -1);
    columns_.ringEdgelets.back() = static_cast<std::int64_t>(columns_.edgelets.size());
    for (std::size_t i = 0; i < count; ++i) {
      columns_.edgelets.emplace_back(qcVector<2>(numbers[2 * i], numbers[2 * i + 1]),
                                     static_cast<unsigned short>(magnitudes[i]),
                                     qcAngle8(edges_.angles[place + i]));
    }
  }

  const qcOutlines& outlines_;
  const EdgeElements& edges_;
  OutlineColumns& columns_;
  /// The place of the first vertex of the feature.
  std::size_t first_ = 0;
};

}  // namespace

EdgeElements edgeElementsOf(const qcOutlines& outlines) {
  EdgeElements edges;
  if (!hasEdgelets(outlines)) return edges;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    const std::size_t before = edges.magnitudes.size();
    forRings(outlines, i, [&](std::size_t part, std::size_t ring) {
      const std::span<const qcEdgelet> edgelets = outlines.edgelets(i, part, ring);
      for (const qcEdgelet& edgelet : edgelets) {
        edges.magnitudes.push_back(edgelet.magnitude());
        edges.angles.push_back(edgelet.angle().steps());
      }
      const std::size_t missing = outlines.ring(i, part, ring).size() / 2 - edgelets.size();
      edges.magnitudes.resize(edges.magnitudes.size() + missing, -1);
      edges.angles.resize(edges.magnitudes.size());
    });
    edges.counts.push_back(static_cast<std::int64_t>(edges.magnitudes.size() - before));
  }
  return edges;
}

Attributes attributesOf(const qcOutlines& outlines) {
  Attributes attributes;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    const std::optional<std::uint32_t> label = outlines.label(i);
    attributes.labels.push_back(label ? std::int64_t{*label} : -1);
    if (outlines.kind(i) == qcOutlineKind::eNothing)
      attributes.problems.push_back({i, outlines.problem(i)});
  }
  attributes.edges = edgeElementsOf(outlines);
  return attributes;
}

qcOutlines withAttributes(const qcOutlines& outlines, Attributes&& attributes) {
  OutlineColumns columns = OutlineColumns::joined(std::span(&outlines, 1));
  columns.labels = std::move(attributes.labels);
  for (std::size_t i = 0; i < outlines.size(); ++i)
    if (outlines.kind(i) == qcOutlineKind::eNothing) columns.labels[i] = -1;
  auto given = attributes.problems.begin();
  for (Problem& problem : columns.problems) {
    while (given != attributes.problems.end() && given->feature < problem.feature) ++given;
    const bool isGiven = given != attributes.problems.end() && given->feature == problem.feature;
    if (isGiven && !given->why.empty()) problem.why = given->why;
  }
  EdgePlacing(outlines, attributes.edges, columns).run();
  return OutlineColumns::asOutlines(std::move(columns));
}

}  // namespace table
