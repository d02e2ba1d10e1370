// SPDX-License-Identifier: MIT
//
// Seen from its positions, an exchange sort takes in the keys one after the other. A key passes
// over those that are not greater and takes the position of the first greater one; that one passes
// over its equals and takes the position of the first one greater than itself, and so on to the
// end. For equal keys this means that a new one joins them at their end, and that whenever a
// smaller key comes in, the first of them goes to their end. So equal keys form a ring that is
// turned between additions, by as many places as smaller keys came in. Their order is worked out
// backwards: it is known where the last of them ended up, then, without it, where the one before
// did, and so on.

#include <cntr/compute/exchangesort.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <numeric>

namespace cntr::compute {

namespace {

/// Counts at places 0 .. size - 1 whose sums are quick to find (P. M. Fenwick, "A new data
/// structure for cumulative frequency tables", Software: Practice and Experience 24, 1994).
class Counts {
 public:
  explicit Counts(std::size_t size) : tree_(size + 1, 0) {}

  void increment(std::size_t place) {
    for (std::size_t i = place + 1; i < tree_.size(); i += i & (~i + 1)) ++tree_[i];
  }
  void decrement(std::size_t place) {
    for (std::size_t i = place + 1; i < tree_.size(); i += i & (~i + 1)) --tree_[i];
  }
  /// The sum of the counts before a place.
  std::size_t sumBefore(std::size_t place) const {
    std::size_t sum = 0;
    for (std::size_t i = place; i > 0; i &= i - 1) sum += tree_[i];
    return sum;
  }
  /// The last place with at most `sum` before it.
  std::size_t find(std::size_t sum) const {
    std::size_t place = 0;
    for (std::size_t step = std::bit_floor(tree_.size() - 1); step > 0; step /= 2) {
      if (place + step >= tree_.size() || tree_[place + step] > sum) continue;
      place += step;
      sum -= tree_[place];
    }
    return place;
  }

 private:
  std::vector<std::size_t> tree_;
};

/// A key that is not NaN.
struct Arrival {
  std::size_t number;
  /// How many smaller keys came in before it.
  std::size_t smallerBefore;
};

/// Equal keys, in the order of their arrival, as an exchange sort leaves them: `before` is the
/// number of all smaller keys.
void writeRing(std::span<const Arrival> arrivals, std::size_t before,
               std::span<std::size_t> places) {
  Counts free(arrivals.size());
  for (std::size_t i = 0; i < arrivals.size(); ++i) free.increment(i);
  std::size_t front = 0;
  std::size_t smaller = before;
  for (std::size_t size = arrivals.size(); size > 0; --size) {
    const Arrival& last = arrivals[size - 1];
    const std::size_t turns = (smaller - last.smallerBefore) % size;
    const std::size_t rank = (front + size - 1 + size - turns) % size;
    const std::size_t place = free.find(rank);
    places[place] = last.number;
    free.decrement(place);
    front = size > 1 ? rank % (size - 1) : 0;
    smaller = last.smallerBefore;
  }
}

/// Puts equal keys, which are in `sorted` in the order of their arrival, into the order of the
/// exchange sort. `arrivals` are the numbers of all keys in the order of their arrival.
void turnRings(std::span<const double> keys, std::span<const std::size_t> arrivals,
               std::span<std::size_t> sorted) {
  std::vector<std::size_t> ringOf(keys.size(), 0);
  std::vector<std::size_t> startOf;
  for (std::size_t k = 0; k < sorted.size(); ++k) {
    if (k == 0 || keys[sorted[k - 1]] < keys[sorted[k]]) startOf.push_back(k);
    ringOf[sorted[k]] = startOf.size() - 1;
  }
  startOf.push_back(sorted.size());

  Counts arrived(startOf.size());
  std::vector<std::size_t> smallerBefore(keys.size(), 0);
  for (const std::size_t number : arrivals) {
    smallerBefore[number] = arrived.sumBefore(ringOf[number]);
    arrived.increment(ringOf[number]);
  }

  std::vector<Arrival> members;
  for (std::size_t ring = 0; ring + 1 < startOf.size(); ++ring) {
    const auto places = sorted.subspan(startOf[ring], startOf[ring + 1] - startOf[ring]);
    members.clear();
    for (const std::size_t number : places) members.push_back({number, smallerBefore[number]});
    writeRing(members, startOf[ring], places);
  }
}

}  // namespace

std::vector<std::size_t> exchangeSortedOrder(std::span<const double> keys) {
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::vector<std::size_t> arrivals;
  std::copy_if(order.begin(), order.end(), std::back_inserter(arrivals),
               [&](std::size_t i) { return !std::isnan(keys[i]); });
  std::vector<std::size_t> sorted = arrivals;
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
  const auto isEqual = [&](std::size_t a, std::size_t b) { return keys[a] == keys[b]; };
  if (std::adjacent_find(sorted.begin(), sorted.end(), isEqual) != sorted.end()) {
    turnRings(keys, arrivals, sorted);
  }
  for (std::size_t k = 0; k < arrivals.size(); ++k) order[arrivals[k]] = sorted[k];
  return order;
}

}  // namespace cntr::compute
