// SPDX-License-Identifier: MIT
//
// Probe::crossingWith() alone decides each edge; the index rules out runs of edges.

#include <cntr/compute/crossings.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <cntr/compute/exchangesort.h>
#include <cntr/compute/probe.h>

namespace cntr::compute {

namespace {

/// Calls found(point, edge, probe) for the crossings in edge order until it returns false.
template <class Found>
void forEachCrossing(const CrossingTarget& target, const qcVector<2>& a, const qcVector<2>& b,
                     bool countEndpointTouches, Found found) {
  if (!plane::overlaps(target.bounds, plane::edgeBox(a, b))) return;
  const Probe probe(a, b, countEndpointTouches, target.bounds);
  const auto visitRun = [&](std::size_t first, std::size_t last) {
    for (std::size_t k = first; k < last; ++k) {
      const std::optional<qcVector<2>> p = probe.crossingWith(target.path.edge(k));
      if (p && !found(*p, k, probe)) return false;
    }
    return true;
  };
  if (target.index == nullptr) {
    visitRun(0, target.path.edgeCount());
  } else {
    target.index->forEachRun([&](const plane::Box& box) { return probe.mayMeet(box); }, visitRun);
  }
}

struct Keyed {
  double key;
  Crossing crossing;
};

/// The sort that defines the order of equal keys: position i is compared with every later one, and
/// the two are exchanged when the later key is smaller.
void exchangeSort(std::vector<Keyed>& list) {
  for (std::size_t i = 0; i < list.size(); ++i) {
    for (std::size_t j = i + 1; j < list.size(); ++j) {
      if (list[i].key > list[j].key) std::swap(list[i], list[j]);
    }
  }
}

/// Gives the same order, in less time for long lists.
void sortByKey(std::vector<Keyed>& list) {
  constexpr std::size_t shortList = 16;
  if (list.size() <= shortList) return exchangeSort(list);
  std::vector<double> keys;
  keys.reserve(list.size());
  for (const Keyed& keyed : list) keys.push_back(keyed.key);
  std::vector<Keyed> sorted;
  sorted.reserve(list.size());
  for (const std::size_t i : exchangeSortedOrder(keys)) sorted.push_back(list[i]);
  list.swap(sorted);
}

}  // namespace

std::vector<Crossing> crossings(const CrossingTarget& target, const qcVector<2>& a,
                                const qcVector<2>& b, bool countEndpointTouches) {
  std::vector<Keyed> found;
  forEachCrossing(target, a, b, countEndpointTouches,
                  [&](const qcVector<2>& p, std::size_t edge, const Probe& probe) {
                    found.push_back({probe.key(p), {p, edge}});
                    return true;
                  });
  sortByKey(found);
  std::vector<Crossing> result;
  result.reserve(found.size());
  for (const Keyed& keyed : found) result.push_back(keyed.crossing);
  return result;
}

std::optional<Crossing> firstCrossing(const CrossingTarget& target, const qcVector<2>& a,
                                      const qcVector<2>& b, bool countEndpointTouches) {
  if (!plane::overlaps(target.bounds, plane::edgeBox(a, b))) return {};
  const Probe probe(a, b, countEndpointTouches, target.bounds);
  std::optional<Keyed> first;
  const auto visitRun = [&](std::size_t from, std::size_t end) {
    for (std::size_t k = from; k < end; ++k) {
      const std::optional<qcVector<2>> p = probe.crossingWith(target.path.edge(k));
      if (!p) continue;
      const double key = probe.key(*p);
      // Among equal keys, sorting leaves the first edge's in front.
      const bool isFirst =
          !first || first->key > key || (first->key == key && first->crossing.edge > k);
      if (isFirst) first = {key, {*p, k}};
    }
  };
  // Products of larger coordinates may be infinite, their differences NaN.
  constexpr double largestSearched = 1e100;
  const double largest =
      std::max({plane::largestCoordinate(target.bounds, a), std::abs(b.x()), std::abs(b.y())});
  if (target.index == nullptr) {
    visitRun(0, target.path.edgeCount());
  } else if (largest < largestSearched) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    target.index->forEachRunByBound(
        [&](const plane::Box& box) { return probe.mayMeet(box) ? probe.leastKey(box) : infinity; },
        [&] { return first ? first->key : std::numeric_limits<double>::max(); }, visitRun);
  } else {
    const std::vector<Crossing> all = crossings(target, a, b, countEndpointTouches);
    if (!all.empty()) return all.front();
  }
  if (!first) return {};
  return first->crossing;
}

std::size_t countCrossings(const CrossingTarget& target, const qcVector<2>& a, const qcVector<2>& b,
                           bool countEndpointTouches, std::size_t most) {
  std::size_t count = 0;
  forEachCrossing(target, a, b, countEndpointTouches,
                  [&](const qcVector<2>&, std::size_t, const Probe&) { return ++count < most; });
  return count;
}

bool isCrossed(const CrossingTarget& target, const plane::Edge& segment,
               bool countEndpointTouches) {
  bool crossed = false;
  forEachCrossing(target, segment.from, segment.to, countEndpointTouches,
                  [&](const qcVector<2>&, std::size_t, const Probe&) {
                    crossed = true;
                    return false;
                  });
  return crossed;
}

bool crosses(const CrossingTarget& target, const CrossingTarget& other) {
  return !forEachEdgeNear(other, target.bounds, [&](const plane::Edge& segment) {
    return !isCrossed(target, segment, true);
  });
}

}  // namespace cntr::compute
