// SPDX-License-Identifier: MIT
#include <testing/plain/simplify.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include <testing/plain/error.h>
#include <testing/plain/exact.h>

namespace plain {

namespace {

/// The indices of the vertices that an edge of the result replaces, both ends included.
struct Chain {
  std::size_t contour = 0;
  std::vector<std::size_t> numbers;
};
using Chains = std::vector<Chain>;

class Simplifier {
 public:
  Simplifier(const std::vector<Contour>& contours, double tolerance)
      : contours_(contours), tolerance_(tolerance) {}

  std::vector<Contour> result() {
    Chains chains;
    for (std::size_t c = 0; c < contours_.size(); ++c) {
      for (const Chain& whole : begin(c)) reduce(whole, chains);
    }
    for (;;) {
      Chains next;
      for (const Chain& chain : chains) {
        if (isInTheWay(chain, chains)) {
          const std::size_t k = farthest(chain);
          reduce(part(chain, 0, k), next);
          reduce(part(chain, k, chain.numbers.size() - 1), next);
        } else {
          next.push_back(chain);
        }
      }
      const bool isDone = next.size() == chains.size();
      chains = next;
      if (isDone) break;
    }
    return collect(chains);
  }

 private:
  const Point& at(const Chain& chain, std::size_t k) const {
    return contours_[chain.contour].points[chain.numbers[k]];
  }
  const Point& front(const Chain& chain) const { return at(chain, 0); }
  const Point& back(const Chain& chain) const { return at(chain, chain.numbers.size() - 1); }

  static Chain part(const Chain& chain, std::size_t from, std::size_t to) {
    Chain result{chain.contour, {}};
    for (std::size_t k = from; k <= to; ++k) result.numbers.push_back(chain.numbers[k]);
    return result;
  }

  static Chain around(std::size_t contour, std::size_t n, std::size_t from, std::size_t to) {
    Chain chain{contour, {from}};
    for (std::size_t k = from; k != to;) {
      k = (k + 1) % n;
      chain.numbers.push_back(k);
    }
    return chain;
  }

  Chains begin(std::size_t c) const {
    const Points& points = contours_[c].points;
    const std::size_t n = points.size();
    if (n < 2) return {};
    if (!contours_[c].closed) return {around(c, n, 0, n - 1)};
    double best = 0.0;
    std::size_t first = 0;
    std::size_t second = 0;
    bool areFinite = true;
    for (std::size_t i = 0; i < n; ++i) {
      areFinite = areFinite && isFinite(points[i]);
      for (std::size_t j = i + 1; j < n; ++j) {
        if (distance(points[i], points[j]) > best) {
          best = distance(points[i], points[j]);
          first = i;
          second = j;
        }
      }
    }
    if (best == 0.0 && areFinite) return {};
    if (best == 0.0) second = 1;
    return {around(c, n, first, second), around(c, n, second, first)};
  }

  double height(const Chain& chain, std::size_t k) const {
    const double d = distToPoint(Segment{front(chain), back(chain)}, at(chain, k));
    return std::isnan(d) ? std::numeric_limits<double>::infinity() : d;
  }

  std::size_t farthest(const Chain& chain) const {
    std::size_t best = 1;
    for (std::size_t k = 2; k + 1 < chain.numbers.size(); ++k) {
      if (height(chain, k) > height(chain, best)) best = k;
    }
    return best;
  }

  void reduce(const Chain& chain, Chains& chains) const {
    if (chain.numbers.size() > 2) {
      const std::size_t k = farthest(chain);
      if (height(chain, k) > tolerance_) {
        reduce(part(chain, 0, k), chains);
        reduce(part(chain, k, chain.numbers.size() - 1), chains);
        return;
      }
    }
    chains.push_back(chain);
  }

  static Exact turn(const Point& a, const Point& b, const Point& c) {
    return (Exact(b.x()) - a.x()) * (Exact(c.y()) - a.y()) -
           (Exact(b.y()) - a.y()) * (Exact(c.x()) - a.x());
  }

  static bool isOn(const Point& p, const Point& a, const Point& b) {
    return turn(a, b, p).sign() == 0 && std::min(a.x(), b.x()) <= p.x() &&
           p.x() <= std::max(a.x(), b.x()) && std::min(a.y(), b.y()) <= p.y() &&
           p.y() <= std::max(a.y(), b.y());
  }

  static bool share(const Point& a, const Point& b, const Point& c, const Point& d) {
    const bool cross = turn(a, b, c).sign() * turn(a, b, d).sign() < 0 &&
                       turn(c, d, a).sign() * turn(c, d, b).sign() < 0;
    return cross || isOn(a, c, d) || isOn(b, c, d) || isOn(c, a, b) || isOn(d, a, b);
  }

  /// Whether the edges of two chains share more than the vertex between them.
  bool meet(const Chain& a, const Chain& b) const {
    const bool sameContour = a.contour == b.contour;
    const bool isBefore = sameContour && a.numbers.back() == b.numbers.front();
    const bool isAfter = sameContour && b.numbers.back() == a.numbers.front();
    if (isBefore && isAfter) return true;
    if (!isBefore && !isAfter) return share(front(a), back(a), front(b), back(b));
    const Point& p = isBefore ? front(a) : front(b);
    const Point& shared = isBefore ? back(a) : back(b);
    const Point& q = isBefore ? back(b) : back(a);
    if (same(p, shared) || same(shared, q)) return false;
    return isOn(p, shared, q) || isOn(q, shared, p);
  }

  /// Whether p is inside the polygon of the chain.
  bool cutsOff(const Chain& chain, const Point& p) const {
    bool isInside = false;
    for (std::size_t k = 0; k < chain.numbers.size(); ++k) {
      Point low = at(chain, k);
      Point high = at(chain, (k + 1) % chain.numbers.size());
      if (low.y() > high.y()) std::swap(low, high);
      if (low.y() <= p.y() && p.y() < high.y() && turn(low, high, p).sign() > 0) {
        isInside = !isInside;
      }
    }
    return isInside;
  }

  static bool isFinite(const Point& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }
  bool isFinite(const Chain& chain) const {
    return isFinite(front(chain)) && isFinite(back(chain));
  }

  bool isInTheWay(const Chain& chain, const Chains& chains) const {
    if (chain.numbers.size() == 2 || !isFinite(chain)) return false;
    std::vector<bool> isSeen(contours_.size(), false);
    for (const Chain& other : chains) {
      const bool isFirst = !isSeen[other.contour];
      isSeen[other.contour] = true;
      const bool isItself = other.contour == chain.contour && other.numbers == chain.numbers;
      if (!isItself && isFinite(other) && meet(chain, other)) return true;
      if (isFirst && other.contour != chain.contour && isFinite(front(other)) &&
          cutsOff(chain, front(other)))
        return true;
    }
    return false;
  }

  std::vector<Contour> collect(const Chains& chains) const {
    std::vector<Contour> results;
    for (std::size_t c = 0; c < contours_.size(); ++c) {
      const Points& points = contours_[c].points;
      std::vector<bool> isKept(points.size(), false);
      bool hasChains = false;
      for (const Chain& chain : chains) {
        if (chain.contour != c) continue;
        hasChains = true;
        isKept[chain.numbers.front()] = true;
        isKept[chain.numbers.back()] = true;
      }
      if (!hasChains && !points.empty()) isKept[0] = true;
      Contour result{{}, contours_[c].closed};
      for (std::size_t i = 0; i < points.size(); ++i) {
        if (isKept[i]) result.points.push_back(points[i]);
      }
      results.push_back(result);
    }
    return results;
  }

  const std::vector<Contour>& contours_;
  double tolerance_;
};

}  // namespace

std::vector<Contour> simplify(const std::vector<Contour>& contours, double tolerance) {
  return Simplifier(contours, tolerance).result();
}

Contour resample(const Contour& contour, double spacing) {
  if (!(spacing > 0.0)) throw Error{Error::badParams, "spacing is not positive"};
  Points points = contour.points;
  if (points.empty()) return contour;
  if (contour.closed) points.push_back(points.front());
  double length = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) length += distance(points[i - 1], points[i]);
  if (!std::isfinite(length)) throw Error{Error::badParams, "contour has no finite length"};
  if (length == 0.0) return {{points.front()}, contour.closed};
  const double steps = std::max(std::ceil(length / spacing), contour.closed ? 3.0 : 1.0);
  const auto count = static_cast<std::size_t>(steps);
  Contour result{{points.front()}, contour.closed};
  for (std::size_t step = 1; step < count; ++step) {
    const double target = length * (static_cast<double>(step) / steps);
    double passed = 0.0;
    std::size_t i = 1;
    while (i + 1 < points.size() && passed + distance(points[i - 1], points[i]) < target) {
      passed += distance(points[i - 1], points[i]);
      ++i;
    }
    const double here = distance(points[i - 1], points[i]);
    result.points.push_back(here > 0.0 ? plus(points[i - 1], times(minus(points[i], points[i - 1]),
                                                                   (target - passed) / here))
                                       : points[i - 1]);
  }
  if (!contour.closed) result.points.push_back(points.back());
  return result;
}

}  // namespace plain
