// SPDX-License-Identifier: MIT
//
// Whether the library's answers and the plain ones are the same, bit for bit. NaN is the same as
// NaN; the two zeros are not the same. An exception is the same as another of the same kind.

#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

#include <cntr/contourdefs.h>
#include <gtest/gtest.h>
#include <platform/core/shapes.h>
#include <testing/plain/circle.h>
#include <testing/plain/ellipse.h>
#include <testing/plain/error.h>
#include <testing/plain/extents.h>
#include <testing/plain/geometry.h>

inline void PrintTo(const qcVector<2>& v, std::ostream* out) {
  const auto precision = out->precision(17);
  *out << '(' << v.x() << ", " << v.y() << ')';
  out->precision(precision);
}
inline void PrintTo(const qcRect& rect, std::ostream* out) {
  *out << testing::PrintToString(rect.ul()) << " to " << testing::PrintToString(rect.lr());
}
inline void PrintTo(const qcCircle& circle, std::ostream* out) {
  *out << "radius " << testing::PrintToString(circle.radius()) << " around "
       << testing::PrintToString(circle.center());
}

namespace plain {

inline void PrintTo(const Box& box, std::ostream* out) {
  *out << testing::PrintToString(Point(box.minX, box.minY)) << " to "
       << testing::PrintToString(Point(box.maxX, box.maxY));
}
inline void PrintTo(const Circle& circle, std::ostream* out) {
  *out << "radius " << testing::PrintToString(circle.radius) << " around "
       << testing::PrintToString(circle.center);
}

}  // namespace plain

namespace same {

inline bool same(double a, double b) {
  return std::isnan(a) ? std::isnan(b)
                       : std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}
inline bool same(long a, long b) { return a == b; }
inline bool same(bool a, bool b) { return a == b; }
inline bool same(int a, int b) { return a == b; }

inline bool same(const qcVector<2>& a, const qcVector<2>& b) {
  return same(a.x(), b.x()) && same(a.y(), b.y());
}

template <class T>
bool same(const std::vector<T>& a, const std::vector<T>& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!same(a[i], b[i])) return false;
  }
  return true;
}

inline bool same(const qcRect& a, const plain::Box& b) {
  return same(a.ul(), qcVector<2>(b.minX, b.minY)) && same(a.lr(), qcVector<2>(b.maxX, b.maxY));
}

inline bool same(const qcCircle& a, const plain::Circle& b) {
  return same(a.center(), b.center) && same(a.radius(), b.radius);
}

inline bool same(const qcEllipse& a, const plain::Ellipse& b) {
  return same(a.geom().center, b.center) && same(a.geom().radius1, b.radius1) &&
         same(a.geom().radius2, b.radius2) && same(a.geom().rotation.toDouble(), b.rotation) &&
         same(a.geom().skew.toDouble(), 0.0);
}

/// The outcome of a question: an answer or the kind of exception.
template <class T>
using Outcome = std::variant<T, plain::Error::Kind>;

/// The outcome of `ask`, a question to the library or to testing/plain.
template <class Ask>
auto outcome(Ask ask) -> Outcome<decltype(ask())> {
  try {
    return ask();
  } catch (const plain::Error& error) {
    return error.kind;
  } catch (const qcContourDefs::EmptyContour&) {
    return plain::Error::emptyContour;
  } catch (const qcContourDefs::EmptyRegionSet&) {
    return plain::Error::emptyRegionSet;
  } catch (const qcContourDefs::BadParams&) {
    return plain::Error::badParams;
  } catch (const qcMathError::Singular&) {
    return plain::Error::singular;
  }
}

/// The text of anything that a test can print.
template <class T>
std::string textOf(const Outcome<T>& outcome) {
  if (const auto* kind = std::get_if<plain::Error::Kind>(&outcome)) {
    return "exception of kind " + std::to_string(*kind);
  }
  return testing::PrintToString(std::get<T>(outcome));
}

/// Succeeds when both questions have the same outcome.
template <class AskLibrary, class AskPlain>
testing::AssertionResult sameOutcome(AskLibrary askLibrary, AskPlain askPlain) {
  const auto library = outcome(askLibrary);
  const auto expected = outcome(askPlain);
  const bool agree = library.index() == expected.index() &&
                     (library.index() == 1 ? std::get<1>(library) == std::get<1>(expected)
                                           : same(std::get<0>(library), std::get<0>(expected)));
  if (agree) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << "the library gives " << textOf(library) << ", plain gives " << textOf(expected);
}

}  // namespace same
