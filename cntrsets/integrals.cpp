// SPDX-License-Identifier: MIT
//
// Sums, over the edges of a ring, of the integrals over the triangles from the origin to each edge.
// Four edges are added at once, by instructions for four doubles if the processor has them; the
// answers are the same without.

#include <cntrsets/integrals.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include <cntr/plane/lanes.h>

namespace cntr::sets {
namespace {

using plane::Lanes;
using plane::productOf;
using plane::sumOf;
using plane::Twofold;
using plane::TwofoldOf;
using TwofoldLanes = TwofoldOf<Lanes>;

/// A sum of very many terms, with the digits of three doubles. Unlike a Twofold, it takes each term
/// without waiting for the complete sum of those before.
template <class Number>
class LongSum {
 public:
  [[gnu::always_inline]] void add(const TwofoldOf<Number>& term) {
    const TwofoldOf<Number> first = sumOf(high_, term.high);
    const TwofoldOf<Number> second = sumOf(middle_, first.low);
    const TwofoldOf<Number> third = sumOf(second.high, term.low);
    high_ = first.high;
    middle_ = third.high;
    low_ = low_ + (second.low + third.low);
  }

  const Number& high() const { return high_; }
  const Number& middle() const { return middle_; }
  const Number& low() const { return low_; }

 private:
  Number high_{};
  Number middle_{};
  Number low_{};
};

/// The sum of all lanes.
[[gnu::always_inline]] inline Twofold valueOf(const LongSum<Lanes>& sums) {
  LongSum<double> sum;
  double low = 0.0;
  for (std::size_t i = 0; i < plane::lanes; ++i) {
    sum.add({sums.high()[i], sums.middle()[i]});
    low += sums.low()[i];
  }
  const Twofold tail = sumOf(sum.middle(), sum.low() + low);
  const Twofold both = sumOf(sum.high(), tail.high);
  return sumOf(both.high, both.low + tail.low);
}

/// Points, one in each lane.
struct LanePoints {
  Lanes x;
  Lanes y;
};

/// Twice the area.
class AreaSum {
 public:
  [[gnu::always_inline]] void add(const LanePoints& a, const LanePoints& b) {
    sum_.add(productOf(a.x, b.y));
    sum_.add(-productOf(b.x, a.y));
  }
  [[gnu::always_inline]] Twofold value() const { return valueOf(sum_); }

 private:
  LongSum<Lanes> sum_;
};

/// The sums for the area and the centre.
class CentreSums {
 public:
  [[gnu::always_inline]] void add(const LanePoints& a, const LanePoints& b) {
    area2_.add(a, b);
    const TwofoldLanes cross = productOf(a.x, b.y) - productOf(b.x, a.y);
    x6_.add(cross * sumOf(a.x, b.x));
    y6_.add(cross * sumOf(a.y, b.y));
  }

  [[gnu::always_inline]] Integrals value() const {
    Integrals integrals;
    integrals.area2 = area2_.value();
    integrals.x6 = valueOf(x6_);
    integrals.y6 = valueOf(y6_);
    return integrals;
  }

 private:
  AreaSum area2_;
  LongSum<Lanes> x6_;
  LongSum<Lanes> y6_;
};

class MomentSums {
 public:
  [[gnu::always_inline]] void add(const LanePoints& a, const LanePoints& b) {
    centre_.add(a, b);
    const TwofoldLanes cross = productOf(a.x, b.y) - productOf(b.x, a.y);
    const TwofoldLanes x = sumOf(a.x, b.x);
    const TwofoldLanes y = sumOf(a.y, b.y);
    xx12_.add(cross * (x * x - productOf(a.x, b.x)));
    yy12_.add(cross * (y * y - productOf(a.y, b.y)));
    xy24_.add(cross * (x * y + (productOf(a.x, a.y) + productOf(b.x, b.y))));
  }

  [[gnu::always_inline]] Integrals value() const {
    Integrals integrals = centre_.value();
    integrals.xx12 = valueOf(xx12_);
    integrals.xy24 = valueOf(xy24_);
    integrals.yy12 = valueOf(yy12_);
    return integrals;
  }

 private:
  CentreSums centre_;
  LongSum<Lanes> xx12_;
  LongSum<Lanes> xy24_;
  LongSum<Lanes> yy12_;
};

using Points = std::array<qcVector<2>, plane::lanes>;

[[gnu::always_inline]] inline LanePoints lanesOf(const Points& p) {
  return {Lanes{p[0].x(), p[1].x(), p[2].x(), p[3].x()},
          Lanes{p[0].y(), p[1].y(), p[2].y(), p[3].y()}};
}

/// The sum over all edges; edges at the origin, which add nothing, fill unused lanes at the end.
template <class Sum>
[[gnu::always_inline]] inline auto sumOver(std::span<const qcVector<2>> ring, const Frame& frame) {
  Sum sum;
  if (ring.empty()) return sum.value();
  qcVector<2> before = frame.local(ring.back());
  while (!ring.empty()) {
    const std::size_t count = std::min(ring.size(), plane::lanes);
    Points from;
    Points to;
    for (std::size_t i = 0; i < count; ++i) {
      from[i] = before;
      to[i] = frame.local(ring[i]);
      before = to[i];
    }
    sum.add(lanesOf(from), lanesOf(to));
    ring = ring.subspan(count);
  }
  return sum.value();
}

#if defined(__x86_64__) && defined(__linux__)

bool isNewProcessor() { return __builtin_cpu_supports("avx2"); }

[[gnu::target("avx2")]] Integrals integralsOnNewProcessor(std::span<const qcVector<2>> ring,
                                                          const Frame& frame) {
  return sumOver<MomentSums>(ring, frame);
}

[[gnu::target("avx2")]] Integrals firstIntegralsOnNewProcessor(std::span<const qcVector<2>> ring,
                                                               const Frame& frame) {
  return sumOver<CentreSums>(ring, frame);
}

[[gnu::target("avx2")]] Twofold areaOnNewProcessor(std::span<const qcVector<2>> ring,
                                                   const Frame& frame) {
  return sumOver<AreaSum>(ring, frame);
}

#endif

}  // namespace

Integrals integralsOf(std::span<const qcVector<2>> ring, const Frame& frame) {
#if defined(__x86_64__) && defined(__linux__)
  if (isNewProcessor()) return integralsOnNewProcessor(ring, frame);
#endif
  return integralsOnAnyProcessor(ring, frame);
}

Integrals integralsOnAnyProcessor(std::span<const qcVector<2>> ring, const Frame& frame) {
  return sumOver<MomentSums>(ring, frame);
}

Integrals firstIntegralsOf(std::span<const qcVector<2>> ring, const Frame& frame) {
#if defined(__x86_64__) && defined(__linux__)
  if (isNewProcessor()) return firstIntegralsOnNewProcessor(ring, frame);
#endif
  return sumOver<CentreSums>(ring, frame);
}

plane::Twofold doubledAreaOf(std::span<const qcVector<2>> ring, const Frame& frame) {
#if defined(__x86_64__) && defined(__linux__)
  if (isNewProcessor()) return areaOnNewProcessor(ring, frame);
#endif
  return sumOver<AreaSum>(ring, frame);
}

}  // namespace cntr::sets
