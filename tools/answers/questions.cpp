// SPDX-License-Identifier: MIT

#include <tools/answers/questions.h>

#include <algorithm>

#include <cntrformats/shapes.h>

namespace tool {

using namespace formats;

namespace {

Cell countCell(const std::optional<std::size_t>& count) { return count ? Cell(*count) : Cell(); }

void append(Row& row, const Place& place) {
  row.push_back(countCell(place.part));
  row.push_back(countCell(place.hole));
}

void append(Row& row, const qcVector<2>& point) {
  row.push_back(numberCell(point.x()));
  row.push_back(numberCell(point.y()));
}

/// A point of a boundary, and how far it is from the one that was asked about.
struct Near {
  double distance;
  qcVector<2> point;
  Place place;
  long vertex;
};

Near nearest(const Boundary& boundary, const qcVector<2>& p, bool vertexOnly) {
  const qcVector<2> point = boundary.contour->closestPoint(p, vertexOnly);
  return {p.distance(point), point, boundary.place, boundary.contour->closestVertexIndex(p)};
}

/// The nearest of all; of equally near ones the first.
Near nearest(const std::vector<Boundary>& boundaries, const qcVector<2>& p, bool vertexOnly) {
  Near best = nearest(boundaries.front(), p, vertexOnly);
  for (const Boundary& boundary : boundaries) {
    const Near candidate = nearest(boundary, p, vertexOnly);
    if (candidate.distance < best.distance) best = candidate;
  }
  return best;
}

Row answerPoint(const Geometry& geometry, const qcVector<2>& p, bool withHoles, bool zeroIfInside) {
  const bool inside =
      geometry.closed && makeRegionSet(geometry.parts, withHoles).inside(p, withHoles);
  const auto boundaries = boundariesOf(geometry, withHoles);
  const Near point = nearest(boundaries, p, false);
  const Near vertex = nearest(boundaries, p, true);
  Row row{geometry.closed ? Cell(inside) : Cell(),
          numberCell(inside && zeroIfInside ? 0.0 : point.distance)};
  append(row, point.point);
  append(row, point.place);
  row.emplace_back(static_cast<std::size_t>(vertex.vertex));
  append(row, vertex.point);
  append(row, vertex.place);
  return row;
}

struct Crossing {
  double along;
  qcVector<2> point;
  Place place;
};

/// Each boundary's crossings are in order; only several boundaries need sorting.
std::vector<Crossing> crossings(const std::vector<Boundary>& boundaries, const qcLineSeg& segment,
                                bool countEndTouches) {
  const qcVector<2> direction = (segment.p2() - segment.p1()).unit();
  std::vector<Crossing> found;
  for (const Boundary& boundary : boundaries) {
    for (const auto& point : boundary.contour->intersections(segment, countEndTouches)) {
      found.push_back({(point - segment.p1()) * direction, point, boundary.place});
    }
  }
  if (boundaries.size() > 1) {
    std::stable_sort(found.begin(), found.end(),
                     [](const Crossing& a, const Crossing& b) { return a.along < b.along; });
  }
  return found;
}

/// The library is asked about all outlines at once, so that its rule for ties covers all of them.
Row answerDirection(const Geometry& geometry, const qcRadian& angle) {
  Points all;
  for (const qcRings& part : geometry.parts) {
    all.insert(all.end(), part.outline.begin(), part.outline.end());
  }
  const long extremal = qcContour(all, false, 0).extremalVertexIndex(angle);
  auto vertex = static_cast<std::size_t>(extremal);
  std::size_t part = 0;
  while (vertex >= geometry.parts[part].outline.size()) {
    vertex -= geometry.parts[part++].outline.size();
  }
  Row row{geometry.parts.size() > 1 ? Cell(part + 1) : Cell(), vertex};
  append(row, geometry.parts[part].outline[vertex]);
  return row;
}

}  // namespace

Question askPoint(const qcVector<2>& point, bool withHoles, bool zeroIfInside) {
  return {{"inside", "distance", "nearest_x", "nearest_y", "part", "hole", "vertex", "vertex_x",
           "vertex_y", "vertex_part", "vertex_hole"},
          [=](const Geometry& geometry) {
            return std::vector<Row>{answerPoint(geometry, point, withHoles, zeroIfInside)};
          }};
}

Question askSegment(const qcVector<2>& from, const qcVector<2>& to, bool withHoles,
                    bool countEndTouches) {
  return {{"part", "hole", "x", "y", "along"}, [=](const Geometry& geometry) {
            std::vector<Row> rows;
            const auto boundaries = boundariesOf(geometry, withHoles);
            for (const Crossing& c : crossings(boundaries, {from, to}, countEndTouches)) {
              Row row;
              append(row, c.place);
              append(row, c.point);
              row.push_back(numberCell(c.along));
              rows.push_back(std::move(row));
            }
            return rows;
          }};
}

Question askDirection(double degrees) {
  const qcRadian angle = qcDegree(degrees);
  return {{"part", "vertex", "vertex_x", "vertex_y"}, [=](const Geometry& geometry) {
            return std::vector<Row>{answerDirection(geometry, angle)};
          }};
}

}  // namespace tool
