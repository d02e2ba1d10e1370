// SPDX-License-Identifier: MIT
//
// Coordinates and products are cut in two: the larger parts are multiples of a power of two, so few
// and so small that all their products and the sums of these are exact; what remains is a millionth
// of the whole, and its rounding errors are that much smaller. Errors below are in units of 2^-75,
// the rounding error of a number up to 2^-22, unless stated otherwise; a block is what is added up
// before the sums are put away, a vertex in each lane for each of its steps.
//
// Coordinates, from the middle of the box, are at most 1: a larger part is a multiple of 2^-23, a
// smaller one at most 2^-24.
// - Twice the triangle of an edge: larger part exact, up to 2; smaller part up to 2^-22, error 3.5.
//   A lane adds up 16 of them: the larger parts exactly, the smaller ones with an error of 136 in
//   addition to their own; over four lanes less than 2^10 per block.
// - Its larger part is cut again, to a multiple of 2^-23; the smaller part gets an error of 4.75.
//   That times a sum of two coordinates (up to 2; smaller part 2^-23, error 0.5): larger part
//   exact, up to 4; smaller part up to 3.5 x 2^-22, error 20; less than 2^12 per block.
// - Times a sum of products of coordinates (up to 6, cut to a multiple of 2^-22; smaller part up to
//   3.5 x 2^-22, error 17): larger part exact, up to 12; smaller part up to 14.5 x 2^-22, error 99;
//   less than 2^14 per block.
// Adding up the smaller parts of b blocks adds b^2 / 32 of these errors: the bounds are twice as
// large for up to 16 blocks.

#include <cntrsets/lonering.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include <cntr/plane/starcentre.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace cntr::sets {
namespace {

using plane::Lanes;
using plane::lanes;
using plane::sumOf;
using plane::Twofold;
using LaneValues = std::array<double, lanes>;

constexpr std::size_t stepsOfBlock = 16;
constexpr double blockErrorOfArea = 0x1p-64;
constexpr double blockErrorOfFirst = 0x1p-62;
constexpr double blockErrorOfSecond = 0x1p-60;
static_assert(LoneRing::most <= lanes * stepsOfBlock * 16);

/// Twice the error of a block whose terms have this error, in the units above, and smaller parts up
/// to `size` times 2^-22: the sum of the first k terms is rounded with an error of k sizes.
constexpr double errorOfBlock(double error, double size) {
  constexpr auto steps = static_cast<double>(stepsOfBlock);
  return 2.0 * lanes * (steps * error + size * steps * (steps + 1.0) / 2.0) * 0x1p-75;
}
static_assert(errorOfBlock(3.5, 1.0) < blockErrorOfArea);
static_assert(errorOfBlock(20.0, 3.5) < blockErrorOfFirst);
static_assert(errorOfBlock(99.0, 14.5) < blockErrorOfSecond);

/// Whether a lane adds up a block of larger parts without rounding.
constexpr bool isSummedExactly(double largest, double multiple) {
  return static_cast<double>(stepsOfBlock) * largest <= 0x1p53 * multiple;
}
static_assert(isSummedExactly(2.0, 0x1p-46));
static_assert(isSummedExactly(4.0, 0x1p-46));
static_assert(isSummedExactly(12.0, 0x1p-45));

/// Adding this to a number and subtracting it again leaves the nearest multiple of 2^-23.
constexpr double toMultiple = 0x1.8p29;
/// The same for 2^-22.
constexpr double toCoarseMultiple = 0x1.8p30;

[[gnu::always_inline]] inline Lanes lanesOf(const LaneValues& values) {
  Lanes result;
  std::memcpy(&result, values.data(), sizeof result);
  return result;
}

[[gnu::always_inline]] inline LaneValues valuesOf(const Lanes& numbers) {
  LaneValues result;
  std::memcpy(result.data(), &numbers, sizeof numbers);
  return result;
}

[[gnu::always_inline]] inline Lanes rootOf(const Lanes& numbers) {
  LaneValues roots = valuesOf(numbers);
#if defined(__SSE2__)
  _mm_storeu_pd(roots.data(), _mm_sqrt_pd(_mm_loadu_pd(roots.data())));
  _mm_storeu_pd(roots.data() + 2, _mm_sqrt_pd(_mm_loadu_pd(roots.data() + 2)));
#else
  for (double& root : roots) root = std::sqrt(root);
#endif
  return lanesOf(roots);
}

/// A product, or a sum of products, in two parts.
struct Product {
  Lanes larger{};
  Lanes smaller{};
};

/// A number in two parts.
struct Parts {
  Lanes larger{};
  Lanes smaller{};
  /// Their sum, rounded.
  Lanes whole{};
};

[[gnu::always_inline]] inline Parts sumOf(const Parts& a, const Parts& b) {
  const Lanes larger = a.larger + b.larger;
  const Lanes smaller = a.smaller + b.smaller;
  return {larger, smaller, larger + smaller};
}

/// a times b.
[[gnu::always_inline]] inline Product productOf(const Parts& a, const Parts& b) {
  return {a.larger * b.larger, a.larger * b.smaller + a.smaller * b.whole};
}

[[gnu::always_inline]] inline Product operator+(const Product& a, const Product& b) {
  return {a.larger + b.larger, a.smaller + b.smaller};
}

[[gnu::always_inline]] inline Product operator-(const Product& a, const Product& b) {
  return {a.larger - b.larger, a.smaller - b.smaller};
}

/// Cuts a product, whose larger part has too many digits for further multiplication.
[[gnu::always_inline]] inline Parts cut(const Product& product, double multiple) {
  const Lanes larger = (product.larger + multiple) - multiple;
  const Lanes smaller = (product.larger - larger) + product.smaller;
  return {larger, smaller, larger + smaller};
}

/// A coordinate in the frame.
struct Coordinate {
  Lanes inFrame{};
  /// Relative to the origin of the sums.
  Parts fromOrigin;
};

/// Maps a coordinate from the plane into a frame, and from there to the origin of the sums.
class Axis {
 public:
  Axis(double frameOrigin, double factor, double origin)
      : frameOrigin_(frameOrigin), factor_(factor), back_(toMultiple + origin) {}

  [[gnu::always_inline]] Coordinate at(const Lanes& inPlane) const {
    const Lanes inFrame = (inPlane - frameOrigin_) * factor_;
    const Lanes raised = inFrame + toMultiple;
    const Lanes larger = raised - back_;
    const Lanes smaller = inFrame - (raised - toMultiple);
    return {inFrame, {larger, smaller, larger + smaller}};
  }

 private:
  double frameOrigin_;
  double factor_;
  double back_;
};

/// The sums of one block, then of all blocks.
class BlockSum {
 public:
  [[gnu::always_inline]] void add(const Product& term) {
    larger_ = larger_ + term.larger;
    smaller_ = smaller_ + term.smaller;
  }

  [[gnu::always_inline]] void endBlock() {
    const plane::TwofoldOf<Lanes> sum = sumOf(high_, larger_);
    high_ = sum.high;
    low_ = low_ + (sum.low + smaller_);
    larger_ = Lanes{};
    smaller_ = Lanes{};
  }

  [[gnu::always_inline]] Twofold value() const {
    double low = 0.0;
    Twofold sum;
    for (std::size_t i = 0; i < lanes; ++i) {
      low += low_[i];
      sum = sumOf(sum.high, high_[i]);
      low += sum.low;
    }
    return sumOf(sum.high, low);
  }

 private:
  Lanes larger_{};
  Lanes smaller_{};
  Lanes high_{};
  Lanes low_{};
};

struct Vertex {
  Coordinate x;
  Coordinate y;
  /// x times y, for second moments.
  Product xy;
};

[[gnu::always_inline]] inline Lanes distanceOf(const Vertex& a, const Vertex& b) {
  const Lanes dx = a.x.inFrame - b.x.inFrame;
  const Lanes dy = a.y.inFrame - b.y.inFrame;
  return rootOf(dx * dx + dy * dy);
}

/// The sums of the integrals over the triangles from the origin to the edges.
template <bool WithMoments>
class Integrator {
 public:
  [[gnu::always_inline]] void add(const Vertex& a, const Vertex& b) {
    const Parts& ax = a.x.fromOrigin;
    const Parts& ay = a.y.fromOrigin;
    const Parts& bx = b.x.fromOrigin;
    const Parts& by = b.y.fromOrigin;
    const Product triangle = productOf(ax, by) - productOf(bx, ay);
    area2_.add(triangle);
    const Parts weight = cut(triangle, toMultiple);
    const Parts x = sumOf(ax, bx);
    const Parts y = sumOf(ay, by);
    x6_.add(productOf(weight, x));
    y6_.add(productOf(weight, y));
    if constexpr (WithMoments) {
      xx12_.add(productOf(weight, cut(squares(ax, bx, x), toCoarseMultiple)));
      yy12_.add(productOf(weight, cut(squares(ay, by, y), toCoarseMultiple)));
      const Product mixed = productOf(x, y) + (a.xy + b.xy);
      xy24_.add(productOf(weight, cut(mixed, toCoarseMultiple)));
    }
  }

  [[gnu::always_inline]] void endBlock() {
    area2_.endBlock();
    x6_.endBlock();
    y6_.endBlock();
    if constexpr (WithMoments) {
      xx12_.endBlock();
      xy24_.endBlock();
      yy12_.endBlock();
    }
  }

  [[gnu::always_inline]] void giveTo(LoneSums& sums) const {
    sums.area2 = area2_.value();
    sums.x6 = x6_.value();
    sums.y6 = y6_.value();
    if constexpr (WithMoments) {
      sums.xx12 = xx12_.value();
      sums.xy24 = xy24_.value();
      sums.yy12 = yy12_.value();
    }
  }

 private:
  /// a^2 + a b + b^2, from their sum.
  [[gnu::always_inline]] static Product squares(const Parts& a, const Parts& b, const Parts& sum) {
    const Product square{sum.larger * sum.larger, sum.smaller * (sum.larger + sum.whole)};
    return square - productOf(a, b);
  }

  BlockSum area2_;
  BlockSum x6_;
  BlockSum y6_;
  BlockSum xx12_;
  BlockSum xy24_;
  BlockSum yy12_;
};

double multipleNear(double coordinate) { return (coordinate + toMultiple) - toMultiple; }

qcVector<2> middleOf(const plane::Box& box, const Frame& frame) {
  const qcVector<2> middle =
      (frame.local({box.minX, box.minY}) + frame.local({box.maxX, box.maxY})) * 0.5;
  return {multipleNear(middle.x()), multipleNear(middle.y())};
}

// The passes over all vertices. Everything in them is inlined into functions for new processors.

/// In each lane -1 for yes, 0 for no.
using LaneFlags = decltype(Lanes{} < Lanes{});
using VerticesView = std::span<const LaneVertices>;

template <class VertexAt>
struct ReadPass {
  std::size_t count;
  VertexAt vertexAt;
  std::span<LaneVertices> vertices;

  /// The box around the vertices; nothing when a coordinate is not finite.
  [[gnu::always_inline]] std::optional<plane::Box> operator()() const {
    const std::size_t steps = vertices.size() - 1;
    const std::size_t last = count - 1;
    // The edge from the last vertex to the first one is the first edge. Two lanes are always full.
    put(0, {last, steps - 1, 2 * steps - 1, std::min(3 * steps - 1, last)});
    Lanes minX = lanesOf(vertices[0].x);
    Lanes minY = lanesOf(vertices[0].y);
    Lanes maxX = minX;
    Lanes maxY = minY;
    // A sum of zeros, or NaN when a coordinate is infinite or NaN.
    Lanes nothing{};
    const auto take = [&](std::size_t step, const Places& places) __attribute__((always_inline)) {
      const auto [x, y] = put(step, places);
      nothing = nothing + (x * 0.0 + y * 0.0);
      minX = x < minX ? x : minX;
      minY = y < minY ? y : minY;
      maxX = x > maxX ? x : maxX;
      maxY = y > maxY ? y : maxY;
    };
    // As long as the last lane has vertices of its own.
    const std::size_t whole = std::max(count, 3 * steps) - 3 * steps;
    for (std::size_t i = 0; i < whole; ++i)
      take(i + 1, {i, steps + i, 2 * steps + i, 3 * steps + i});
    for (std::size_t i = whole; i < steps; ++i)
      take(i + 1, {i, steps + i, std::min(2 * steps + i, last), last});
    return boxOf(valuesOf(minX), valuesOf(minY), valuesOf(maxX), valuesOf(maxY), valuesOf(nothing));
  }

 private:
  using Places = std::array<std::size_t, lanes>;

  struct Vertices {
    Lanes x;
    Lanes y;
  };

  [[gnu::always_inline]] Vertices put(std::size_t step, const Places& places) const {
    const qcVector<2> a = vertexAt(places[0]);
    const qcVector<2> b = vertexAt(places[1]);
    const qcVector<2> c = vertexAt(places[2]);
    const qcVector<2> d = vertexAt(places[3]);
    const Vertices found{{a.x(), b.x(), c.x(), d.x()}, {a.y(), b.y(), c.y(), d.y()}};
    vertices[step] = {valuesOf(found.x), valuesOf(found.y)};
    return found;
  }

  [[gnu::always_inline]] static std::optional<plane::Box> boxOf(const LaneValues& minX,
                                                                const LaneValues& minY,
                                                                const LaneValues& maxX,
                                                                const LaneValues& maxY,
                                                                const LaneValues& nothing) {
    plane::Box box;
    for (std::size_t i = 0; i < lanes; ++i) {
      if (nothing[i] != 0.0) return std::nullopt;
      box.add(qcVector<2>(minX[i], minY[i]));
      box.add(qcVector<2>(maxX[i], maxY[i]));
    }
    return box;
  }
};

template <bool WithMoments>
struct SumPass {
  VerticesView vertices;
  const Frame& frame;
  qcVector<2> origin;
  /// The lengths of the edges, lane after lane.
  std::span<double> distances;

  [[gnu::always_inline]] LoneSums operator()() const {
    const Axis xAxis(frame.origin().x(), frame.factor(), origin.x());
    const Axis yAxis(frame.origin().y(), frame.factor(), origin.y());
    const auto vertexAt = [&](std::size_t i) __attribute__((always_inline)) {
      Vertex vertex{xAxis.at(lanesOf(vertices[i].x)), yAxis.at(lanesOf(vertices[i].y)), {}};
      if constexpr (WithMoments) vertex.xy = productOf(vertex.x.fromOrigin, vertex.y.fromOrigin);
      return vertex;
    };
    Integrator<WithMoments> integrator;
    Vertex from = vertexAt(0);
    const std::size_t steps = vertices.size() - 1;
    for (std::size_t i = 0; i < steps;) {
      const std::size_t end = std::min(i + stepsOfBlock, steps);
      for (; i < end; ++i) {
        const Vertex to = vertexAt(i + 1);
        integrator.add(from, to);
        const LaneValues lengths = valuesOf(distanceOf(from, to));
        for (std::size_t lane = 0; lane < lanes; ++lane)
          distances[lane * steps + i] = lengths[lane];
        from = to;
      }
      integrator.endBlock();
    }
    LoneSums sums;
    integrator.giveTo(sums);
    return sums;
  }
};

/// Each addition waits for the one before; meanwhile the edges are looked at.
struct AroundPass {
  VerticesView vertices;
  std::span<const double> distances;
  qcVector<2> centre;
  bool isCounterclockwise;

  /// The proof: each edge is seen from the centre, and two edges pass from above it to below or
  /// back.
  [[gnu::always_inline]] std::optional<double> operator()() const {
    double length = 0.0;
    const double* distance = distances.data();
    const double direction = isCounterclockwise ? 1.0 : -1.0;
    Lanes fromX = lanesOf(vertices[0].x);
    Lanes fromY = lanesOf(vertices[0].y);
    Lanes fromCentreX = fromX - centre.x();
    Lanes fromCentreY = fromY - centre.y();
    LaneFlags wasBelow = fromY <= centre.y();
    LaneFlags isHidden{};
    LaneFlags passages{};
    for (const LaneVertices& vertex : vertices.subspan(1)) {
      const Lanes toX = lanesOf(vertex.x);
      const Lanes toY = lanesOf(vertex.y);
      const Lanes toCentreX = toX - centre.x();
      const Lanes toCentreY = toY - centre.y();
      const Lanes left = fromCentreX * toCentreY;
      const Lanes right = fromCentreY * toCentreX;
      const Lanes bound = plane::estimateError * (sizeOf(left) + sizeOf(right));
      const Lanes side = (left - right) * direction;
      const LaneFlags isSeen =
          (side > bound + plane::smallestProduct) | ((fromX == toX) & (fromY == toY));
      isHidden = isHidden | ~isSeen;
      const LaneFlags isBelow = toY <= centre.y();
      passages = passages + (isBelow ^ wasBelow);
      for (const double* const end = distance + lanes; distance != end; ++distance)
        length += *distance;
      wasBelow = isBelow;
      fromX = toX;
      fromY = toY;
      fromCentreX = toCentreX;
      fromCentreY = toCentreY;
    }
    std::int64_t count = 0;
    for (std::size_t i = 0; i < lanes; ++i) {
      if (isHidden[i] != 0) return std::nullopt;
      count -= passages[i];
    }
    return count == 2 ? std::optional(length) : std::nullopt;
  }

 private:
  [[gnu::always_inline]] static Lanes sizeOf(const Lanes& numbers) {
    return numbers < 0.0 ? -numbers : numbers;
  }
};

#if defined(__x86_64__) && defined(__linux__)

template <class Pass>
[[gnu::target("avx2")]] auto runOnNewProcessor(const Pass& pass) {
  return pass();
}

#endif

template <class Pass>
auto run(const Pass& pass) {
#if defined(__x86_64__) && defined(__linux__)
  if (__builtin_cpu_supports("avx2")) return runOnNewProcessor(pass);
#endif
  return pass();
}

}  // namespace

bool LoneRing::read(std::span<const double> coordinates) {
  return take(
      coordinates.size() / 2, [coordinates](std::size_t i) __attribute__((always_inline)) {
        return qcVector<2>(coordinates[2 * i], coordinates[2 * i + 1]);
      });
}

bool LoneRing::read(std::span<const qcVector<2>> vertices) {
  return take(
      vertices.size(), [vertices](std::size_t i)
                           __attribute__((always_inline)) { return vertices[i]; });
}

template <class VertexAt>
bool LoneRing::take(std::size_t count, VertexAt vertexAt) {
  if (count < fewest || count > most) return false;
  size_ = count;
  lanes_.resize((count + lanes - 1) / lanes + 1);
  const std::optional<plane::Box> box = run(ReadPass<VertexAt>{count, vertexAt, lanes_});
  if (box) box_ = *box;
  return box.has_value();
}

std::vector<qcVector<2>> LoneRing::vertices() const {
  std::vector<qcVector<2>> vertices;
  vertices.reserve(size_);
  for (std::size_t lane = 0; lane < lanes; ++lane)
    for (std::size_t step = 1; step < lanes_.size() && vertices.size() < size_; ++step)
      vertices.emplace_back(lanes_[step].x[lane], lanes_[step].y[lane]);
  return vertices;
}

LoneSums LoneRing::sums(const Frame& frame, bool withMoments) {
  const std::size_t steps = lanes_.size() - 1;
  distances_.resize(lanes * steps);
  const qcVector<2> origin = middleOf(box_, frame);
  LoneSums sums = withMoments ? run(SumPass<true>{lanes_, frame, origin, distances_})
                              : run(SumPass<false>{lanes_, frame, origin, distances_});
  sums.origin = origin;
  const std::size_t blockCount = (steps + stepsOfBlock - 1) / stepsOfBlock;
  const auto blocks = static_cast<double>(blockCount);
  sums.errorOfArea = blocks * blockErrorOfArea;
  sums.errorOfFirst = blocks * blockErrorOfFirst;
  sums.errorOfSecond = blocks * blockErrorOfSecond;
  return sums;
}

std::optional<double> LoneRing::lengthAround(const qcVector<2>& centre,
                                             bool isCounterclockwise) const {
  return run(AroundPass{lanes_, distances_, centre, isCounterclockwise});
}

namespace {

/// The errors of the methods without bounds, and of what is computed from sums here.
constexpr double errorOfTwofold = 0x1p-80;

double roundedDown(const Twofold& value, double error) { return value.high + (value.low - error); }
double roundedUp(const Twofold& value, double error) { return value.high + (value.low + error); }

/// a / b, accurate to 2^-100 relative; `inverse` is 1 / b.high.
Twofold quotientOf(const Twofold& a, const Twofold& b, double inverse) {
  const double first = a.high * inverse;
  const Twofold product = plane::productOf(first, b.high);
  const double rest = ((a.high - product.high) - product.low) + (a.low - first * b.low);
  return sumOf(first, rest * inverse);
}

/// Whether all numbers at most that far from a value round to the same double.
bool isRoundedAlike(const Twofold& value, double error) {
  return roundedDown(value, error) == roundedUp(value, error);
}

}  // namespace

std::optional<LoneMass> massOf(const LoneSums& sums, const Frame& frame, bool withMoments) {
  const auto signedAlike = [&](const Twofold& sum) {
    return sums.isCounterclockwise() ? sum : -sum;
  };
  const Twofold area2 = signedAlike(sums.area2);
  constexpr double smallest = 0x1p-20;
  if (!(area2.high > smallest) || !isRoundedAlike(area2, sums.errorOfArea)) return std::nullopt;
  // Relative to the origin of the sums; less than 1, as it lies within the box.
  const Twofold area6 = area2 * Twofold(3.0);
  const double inverse = 1.0 / area6.high;
  const Twofold x = quotientOf(signedAlike(sums.x6), area6, inverse);
  const Twofold y = quotientOf(signedAlike(sums.y6), area6, inverse);
  const double farthest = std::max(std::abs(x.high), std::abs(y.high));
  const double errorOfCentre =
      (sums.errorOfFirst + 4.0 * sums.errorOfArea) / (2.9 * area2.high) + errorOfTwofold;
  const Twofold centreX = Twofold(sums.origin.x()) + x;
  const Twofold centreY = Twofold(sums.origin.y()) + y;
  const qcVector<2> low(roundedDown(centreX, errorOfCentre), roundedDown(centreY, errorOfCentre));
  const qcVector<2> high(roundedUp(centreX, errorOfCentre), roundedUp(centreY, errorOfCentre));
  if (frame.restored(low) != frame.restored(high)) return std::nullopt;
  const Twofold area(0.5 * area2.high, 0.5 * area2.low);
  LoneMass mass{area.high, {centreX.high, centreY.high}, std::nullopt};
  if (!withMoments) return mass;
  const Twofold xx = signedAlike(sums.xx12) / Twofold(12.0) - area * (x * x);
  const Twofold xy = signedAlike(sums.xy24) / Twofold(24.0) - area * (x * y);
  const Twofold yy = signedAlike(sums.yy12) / Twofold(12.0) - area * (y * y);
  const double errorOfShift =
      sums.errorOfArea + 1.1 * area2.high * farthest * errorOfCentre + errorOfTwofold;
  if (!isRoundedAlike(xx, sums.errorOfSecond / 12.0 + errorOfShift) ||
      !isRoundedAlike(yy, sums.errorOfSecond / 12.0 + errorOfShift))
    return std::nullopt;
  mass.moments.emplace(mass.area, mass.centre, qcMatrix<2>(xx.high, xy.high, xy.high, yy.high));
  return mass;
}

}  // namespace cntr::sets
