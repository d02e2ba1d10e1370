// SPDX-License-Identifier: MIT
//
// The angle is reduced to within an eighth of a turn of a multiple of a quarter turn; there the
// power series of both functions converge quickly.

#include <testing/shapes/trigonometry.h>

#include <cmath>

namespace shapes {

namespace {

constexpr double quarterTurn = 1.5707963267948966;
/// The leading 33 bits of a quarter turn, whose multiples are exact, and the rest.
constexpr double quarterTurnHead = 1.57079632673412561417;
constexpr double quarterTurnTail = 6.07710050650619224932e-11;

/// An angle as a number of quarter turns and a rest of at most half of one.
struct Turned {
  long quarters;
  double rest;
};

Turned turned(double angle) {
  const double quarters = std::floor(angle / quarterTurn + 0.5);
  return {static_cast<long>(quarters),
          (angle - quarters * quarterTurnHead) - quarters * quarterTurnTail};
}

/// 1 - s / (n (n+1)) (1 - s / ((n+2) (n+3)) (1 - ...)): the power series of the cosine for n = 1
/// and, up to a factor, of the sine for n = 2.
double series(double square, int n) {
  double sum = 1.0;
  for (int k = n + 18; k >= n; k -= 2) sum = 1.0 - square / (k * (k + 1)) * sum;
  return sum;
}

double sineOf(const Turned& t) {
  const double square = t.rest * t.rest;
  const double size = t.quarters % 2 == 0 ? t.rest * series(square, 2) : series(square, 1);
  return t.quarters % 4 == 0 || t.quarters % 4 == 1 || t.quarters % 4 == -3 ? size : -size;
}

}  // namespace

double sine(double angle) { return sineOf(turned(angle)); }

double cosine(double angle) {
  Turned t = turned(angle);
  ++t.quarters;
  return sineOf(t);
}

}  // namespace shapes
