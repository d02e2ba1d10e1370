// SPDX-License-Identifier: MIT
//
// Each edge is decided by Probe::crossingWith(), alone; the index rules out runs of edges.

#include <cntr/compute/crossings.h>

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

/// The sort that defines the order of equal keys: position i is compared with every later one and
/// exchanged when that is smaller.
void exchangeSort(std::vector<Keyed>& list) {
  for (std::size_t i = 0; i < list.size(); ++i) {
    for (std::size_t j = i + 1; j < list.size(); ++j) {
      if (list[i].key > list[j].key) std::swap(list[i], list[j]);
    }
  }
}

/// The same order in less time for long lists.
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

std::size_t countCrossings(const CrossingTarget& target, const qcVector<2>& a, const qcVector<2>& b,
                           bool countEndpointTouches) {
  std::size_t count = 0;
  forEachCrossing(target, a, b, countEndpointTouches,
                  [&](const qcVector<2>&, std::size_t, const Probe&) {
                    ++count;
                    return true;
                  });
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

bool crosses(const CrossingTarget& target, const plane::Path& other) {
  for (std::size_t k = 0; k < other.edgeCount(); ++k) {
    if (isCrossed(target, other.edge(k), true)) return true;
  }
  return false;
}

}  // namespace cntr::compute
