// SPDX-License-Identifier: MIT
//
// What the Python classes Contour, Region and RegionSet hold, and how they are queried. They never
// change once they are made. Their Python sides are in contour.cpp, region.cpp and regionset.cpp,
// the conversions from and to qcOutlines in features.h.

#pragma once

#include <nanobind/nanobind.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include <cntr/contour.h>
#include <cntrsets/inside.h>
#include <cntrsets/rings.h>

namespace python {

/// What edge detectors found at each vertex; empty, or as many as there are vertices.
struct EdgeElements {
  std::vector<std::uint16_t> magnitudes;
  /// In 256 steps to a full turn.
  std::vector<std::uint8_t> angles;

  bool operator==(const EdgeElements&) const = default;
};

/// A ring or a line.
class Curve {
 public:
  explicit Curve(const qcContour& contour, EdgeElements edges_ = {})
      : edges(std::move(edges_)), contour_(std::make_unique<const qcContour>(contour)) {}
  /// Copies only the vertices: what the other one remembers may be in use by another thread.
  Curve(const Curve& other)
      : Curve(qcContour(other.points(), other.isClosed(), other.label()), other.edges) {}
  Curve(Curve&& other) noexcept = default;
  Curve& operator=(const Curve&) = delete;
  Curve& operator=(Curve&&) = delete;
  ~Curve() = default;

  const std::vector<qcVector<2>>& points() const { return contour_->points(); }
  bool isClosed() const { return contour_->isClosed(); }
  unsigned long label() const { return contour_->label(); }
  /// To be queried within Shape::ask().
  const qcContour& contour() const { return *contour_; }

  EdgeElements edges;

 private:
  std::unique_ptr<const qcContour> contour_;
};

/// A line, or an outline with holes.
struct Part {
  Curve outline;
  std::vector<Curve> holes;

  unsigned long label() const { return outline.label(); }
  bool operator==(const Part& other) const;
};

/// Base of the classes that Python sees.
class Shape {
 public:
  explicit Shape(std::vector<Part> parts) : parts_(std::move(parts)) {}
  /// REQUIRES: no thread queries `other`.
  Shape(Shape&& other) noexcept : parts_(std::move(other.parts_)) {}
  Shape(const Shape&) = delete;
  Shape& operator=(const Shape&) = delete;
  Shape& operator=(Shape&&) = delete;
  ~Shape() = default;

  const std::vector<Part>& parts() const { return parts_; }
  /// Whether it bounds areas. A shape without parts does.
  bool isClosed() const { return parts_.empty() || parts_.front().outline.isClosed(); }
  /// The vertices as plain values; a line becomes an outline.
  std::vector<qcRings> rings() const;
  /// The outline of each part, followed by its holes.
  std::vector<const Curve*> curves() const;

  /// Throws qcContourDefs::EmptyRegionSet if there is no curve, and EmptyContour if one has fewer
  /// vertices, saying which.
  void requireVertices(std::size_t fewest) const;
  /// The same for as many as measures need: 3 in a ring, 2 in a line.
  void requireMeasurable() const { requireVertices(isClosed() ? 3 : 2); }

  /// Vertices, closedness, holes and edge elements, but no labels.
  bool operator==(const Shape& other) const { return parts_ == other.parts_; }

  /// The answer of `question`, found while no other thread queries this shape (curves write what
  /// they remember) and other threads can run Python.
  template <class Question>
  auto ask(Question question) const {
    const nanobind::gil_scoped_release released;
    const std::lock_guard lock(mutex_);
    return question();
  }

 private:
  std::vector<Part> parts_;
  mutable std::mutex mutex_;
};

/// One curve, open or closed.
class Contour : public Shape {
 public:
  explicit Contour(Curve curve);

  const Curve& curve() const { return parts().front().outline; }
};

/// Base of the classes that bound areas.
class Areas : public Shape {
 public:
  using Shape::Shape;

  /// Tells which points lie in the areas; made when first asked for. To be used within ask().
  const qcInside& inside() const {
    if (!inside_) inside_.emplace(rings());
    return *inside_;
  }

 private:
  mutable std::optional<qcInside> inside_;
};

/// One outline with its holes, all of them closed.
class Region : public Areas {
 public:
  explicit Region(Part part);
  /// The outline and holes of plain values.
  Region(const qcRings& rings, unsigned long label);

  const Part& part() const { return parts().front(); }
};

/// Any number of regions.
class RegionSet : public Areas {
 public:
  using Areas::Areas;
  /// Gives each part this label.
  RegionSet(const std::vector<qcRings>& parts, unsigned long label);
};

}  // namespace python
