// SPDX-License-Identifier: MIT
//
// Regions and sets in two forms, the library's and that of testing/plain, drawn at random, and the
// comparison of their answers: the same bits, or the same exception with the same message.

#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include <cntr/regionst.h>
#include <gtest/gtest.h>
#include <testing/plain/set.h>
#include <testing/shapes/shapes.h>
#include <testing/twin/repetitions.h>

#include <testing/twin/same.h>

namespace plain {

inline void PrintTo(const Region& region, std::ostream* out) {
  *out << "region " << testing::PrintToString(region.points) << " with holes "
       << testing::PrintToString(region.holes);
}

}  // namespace plain

namespace twin {

using Handle = qcPtrHandle_const<qcRegion>;
using Handles = std::vector<Handle>;

// The library's form.

/// A new region. Its holes are set while its boundary has no edge to cross, so that every list of
/// holes is accepted.
inline qcPtrHandle<qcRegion> make(const plain::Region& region) {
  std::vector<qcPtrHandle<qcRegion>> holes;
  for (const plain::Region& hole : region.holes) holes.push_back(make(hole));
  const qcPtrHandle<qcRegion> made(
      new qcRegion(plain::Points(2), qcContourDefs::eNoIntersectionRepair));
  made->holes(holes);
  made->points(region.points);
  return made;
}

inline qcRegionSet make(const plain::Regions& regions) {
  Handles handles;
  for (const plain::Region& region : regions) handles.push_back(make(region));
  return qcRegionSet(handles, qcContourDefs::eNoIntersectionRepair);
}

/// The plain form of a region as it stands.
inline plain::Region plainOf(const qcRegion& region) {
  plain::Region result{region.points(), {}};
  for (const Handle& hole : region.holes()) result.holes.push_back(plainOf(*hole));
  return result;
}

inline plain::Regions plainOf(const qcRegionSet& set) {
  plain::Regions result;
  for (const Handle& region : set.regions()) result.push_back(plainOf(*region));
  return result;
}

// Comparison.

inline bool isSame(const plain::Region& a, const plain::Region& b) {
  if (!same::same(a.points, b.points) || a.holes.size() != b.holes.size()) return false;
  for (std::size_t i = 0; i < a.holes.size(); ++i) {
    if (!isSame(a.holes[i], b.holes[i])) return false;
  }
  return true;
}

inline bool isSame(const plain::Regions& a, const plain::Regions& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!isSame(a[i], b[i])) return false;
  }
  return true;
}

inline bool isSame(const qcMatrix<2>& a, const plain::Matrix& b) {
  return same::same(a.element(0, 0), b.e00) && same::same(a.element(0, 1), b.e01) &&
         same::same(a.element(1, 0), b.e10) && same::same(a.element(1, 1), b.e11) &&
         same::same(a.det(), b.det);
}

/// A vertex and the hole that it belongs to.
struct FoundVertex {
  long index;
  long hole;
};
inline bool isSame(const FoundVertex& a, const plain::BoundaryVertex& b) {
  return a.index == b.index && a.hole == b.hole;
}

template <class A, class B>
auto isSame(const A& a, const B& b) -> decltype(same::same(a, b)) {
  return same::same(a, b);
}

/// An exception in a form that both share.
struct Raised {
  plain::Error::Kind kind;
  std::string message;
  bool operator==(const Raised&) const = default;
};

inline Raised raised(plain::Error::Kind kind, const std::wstring& message) {
  std::string narrow;
  for (const wchar_t c : message) narrow += static_cast<char>(c);
  return {kind, narrow};
}

/// The outcome of a question to either form: an answer or an exception.
template <class Ask>
auto outcome(Ask ask) -> std::variant<decltype(ask()), Raised> {
  try {
    return ask();
  } catch (const plain::Error& error) {
    return Raised{error.kind, error.message};
  } catch (const qcContourDefs::EmptyContour& error) {
    return raised(plain::Error::emptyContour, error.message());
  } catch (const qcContourDefs::EmptyRegionSet& error) {
    return raised(plain::Error::emptyRegionSet, error.message());
  } catch (const qcContourDefs::BadParams& error) {
    return raised(plain::Error::badParams, error.message());
  }
}

template <class T>
std::string textOf(const std::variant<T, Raised>& outcome) {
  if (const auto* exception = std::get_if<Raised>(&outcome)) {
    return "exception of kind " + std::to_string(exception->kind) + ", \"" + exception->message +
           '"';
  }
  return testing::PrintToString(std::get<0>(outcome));
}

/// Succeeds when both questions have the same outcome.
template <class AskLibrary, class AskPlain>
testing::AssertionResult agree(AskLibrary askLibrary, AskPlain askPlain) {
  const auto library = outcome(askLibrary);
  const auto expected = outcome(askPlain);
  const bool isAgreed =
      library.index() == expected.index() &&
      (library.index() == 1 ? std::get<1>(library) == std::get<1>(expected)
                            : isSame(std::get<0>(library), std::get<0>(expected)));
  if (isAgreed) return testing::AssertionSuccess();
  return testing::AssertionFailure()
         << "the library gives " << textOf(library) << ", plain gives " << textOf(expected);
}

// Random regions.

struct NamedRegion {
  std::string name;
  plain::Region region;
};

/// Moves and scales a region with its holes.
inline void place(plain::Region& region, double scale, const plain::Point& shift) {
  shapes::scaleAndShift(region.points, scale, shift);
  for (plain::Region& hole : region.holes) place(hole, scale, shift);
}

/// The box of the vertices; of zero size at the origin if there are none.
inline plain::Box boxOf(const plain::Points& points) {
  plain::Box box;
  for (std::size_t i = 0; i < points.size(); ++i) {
    box = i == 0 ? plain::boxOf(points[0]) : plain::enclose(box, plain::boxOf(points[i]));
  }
  return box;
}

/// Moves `region` to a place in the box of `outer` and makes it smaller than that box.
inline void placeInto(shapes::Random& random, plain::Region& region, const plain::Points& outer) {
  const plain::Box box = boxOf(region.points);
  const plain::Box room = boxOf(outer);
  const double size = std::max(box.maxX - box.minX, box.maxY - box.minY);
  const double share = random.uniform(0.05, 0.6);
  const double scale = size > 0.0 ? share * (room.maxX - room.minX) / size : 1.0;
  const double x = random.uniform(room.minX, room.maxX);
  const double y = random.uniform(room.minY, room.maxY);
  place(region, scale, {x - box.minX * scale, y - box.minY * scale});
}

/// A region of any shape; with `depth` its holes, placed anywhere, are such regions with less
/// depth.
inline NamedRegion anyRegion(shapes::Random& random, std::size_t maxVertices, int depth) {
  const shapes::Shape shape = shapes::any(random.next(), maxVertices);
  NamedRegion result{shape.name, {shape.points, {}}};
  if (depth == 0 || random.chance(0.3)) return result;
  for (std::size_t k = random.below(4); k > 0; --k) {
    NamedRegion hole = anyRegion(random, maxVertices / 2, depth - 1);
    if (random.chance(0.7)) placeInto(random, hole.region, shape.points);
    result.region.holes.push_back(hole.region);
    result.name += " [hole: " + hole.name + "]";
  }
  return result;
}

/// Runs `check` on the numbers 0, 1, ... below `count` until one fails.
inline void forEachRound(std::size_t count, const std::function<void(std::size_t)>& check) {
  for (std::size_t round = 0; round < count && !testing::Test::HasFailure(); ++round) check(round);
}

}  // namespace twin
