// SPDX-License-Identifier: MIT
//
// Seeded shapes, query points and query segments for property tests and benchmarks. Everything is
// drawn from the generator below with the four arithmetic operations and square roots only, so a
// seed gives the same case, bit for bit, on every system. The answers to compare with are in
// testing/plain.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <platform/core/vector.h>

namespace shapes {

using Point = qcVector<2>;
using Points = std::vector<Point>;

/// The splitmix64 generator (Steele, Lea, Flood 2014).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next();
  /// A number in [0, 1).
  double uniform();
  /// A number in [low, high).
  double uniform(double low, double high);
  /// An index below `count`, which must not be 0.
  std::size_t below(std::size_t count);
  bool chance(double probability) { return uniform() < probability; }

 private:
  std::uint64_t state_;
};

// The four shapes used by every timing, around (640, 480), counter-clockwise with y up.

/// S: a star with gentle waves and a rough outline.
Points smoothStar(std::size_t n, std::uint64_t seed = 1);
/// N: a ring of spikes.
Points spikyStar(std::size_t n, std::uint64_t seed = 1);
/// C: teeth hanging from a bar 60 high, as wide as the gaps between them. Needs 10 vertices.
Points comb(std::size_t n, std::uint64_t seed = 1);
/// X: the smooth star with every tenth vertex and the one after it exchanged.
Points crossingStar(std::size_t n, std::uint64_t seed = 1);

// Shapes that provoke trouble. Each has `n` vertices unless it says otherwise.

Points regularPolygon(std::size_t n, double radius, const Point& center);
/// The regular polygon visited in steps of `stride`: crosses itself for strides above 1.
Points starPolygon(std::size_t n, std::size_t stride, double radius);
/// A band of even width wound `turns` times.
Points spiral(std::size_t n, double turns);
/// Steps of one unit on the integer grid: edges overlap, vertices repeat.
Points gridWalk(Random& random, std::size_t n);
/// Any points of the integer grid below `size`: vertices on edges, collinear runs.
Points gridPoints(Random& random, std::size_t n, std::size_t size);
/// A horizontal staircase outline with integer corners: simple, with parallel edges only.
Points skyline(Random& random, std::size_t n);
/// A random walk bent until it ends where it began.
Points closedWalk(Random& random, std::size_t n);
/// Uniform points: the outline crosses itself nearly everywhere.
Points cloud(Random& random, std::size_t n);
/// A closed curve of `p` by `q` waves that crosses itself smoothly.
Points lissajous(std::size_t n, unsigned p, unsigned q, double phase);
Points collinear(Random& random, std::size_t n);
Points allEqual(Random& random, std::size_t n);

// Changes that make any shape harder.

/// Repeats some vertices in place and copies some to other places, without exceeding `maxVertices`.
void repeatVertices(Random& random, Points& points, std::size_t maxVertices);
/// Adds vertices about 1e-6 (or 1e-15) beside others, without exceeding `maxVertices`.
void addNearVertices(Random& random, Points& points, std::size_t maxVertices);
/// Puts vertices on other edges, exactly or nearly, without exceeding `maxVertices`.
void addVerticesOnEdges(Random& random, Points& points, std::size_t maxVertices);
void rotate(Points& points, double angle);
void scaleAndShift(Points& points, double scale, const Point& shift);
/// Makes some coordinates infinite or NaN.
void spoil(Random& random, Points& points);

struct Shape {
  /// How it was made, for messages of failing tests.
  std::string name;
  Points points;
  bool closed = true;
};

/// Any of the shapes with any of the changes except `spoil`: finite, 0 to `maxVertices` vertices.
Shape anyFinite(std::uint64_t seed, std::size_t maxVertices);
/// The same, now and then spoiled.
Shape any(std::uint64_t seed, std::size_t maxVertices);

// Questions about a shape, which may be empty or have coordinates that are not finite.

/// In the box, on its border, on vertices and edges, 1e-5 to 1e-7 away from those, or far away.
Point queryPoint(Random& random, const Points& points);

struct Segment {
  Point a;
  Point b;
};

/// Short, long, of length 0, along edges, or ending on edges or vertices.
Segment querySegment(Random& random, const Points& points);

/// Uniform points in the bounding box.
Points pointsInBox(const Points& points, std::size_t count, std::uint64_t seed = 1);
/// Segments of 1 % of the box's diagonal, starting anywhere in it.
std::vector<Segment> shortSegments(const Points& points, std::size_t count, std::uint64_t seed = 1);
/// Segments between opposite sides of the box.
std::vector<Segment> longSegments(const Points& points, std::size_t count, std::uint64_t seed = 1);

}  // namespace shapes
