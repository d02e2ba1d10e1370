// SPDX-License-Identifier: MIT

#include <tools/answers/questions.h>

#include <algorithm>

#include <cntrformats/shapes.h>
#include <cntrsets/inside.h>

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

/// A point of a boundary and its distance from the point in question.
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

/// The nearest point of all boundaries; of equally near ones the first.
Near nearest(const std::vector<Boundary>& boundaries, const qcVector<2>& p, bool vertexOnly) {
  Near best = nearest(boundaries.front(), p, vertexOnly);
  for (const Boundary& boundary : boundaries) {
    const Near candidate = nearest(boundary, p, vertexOnly);
    if (candidate.distance < best.distance) best = candidate;
  }
  return best;
}

std::vector<qcRings> partsOf(const Geometry& geometry, bool withHoles) {
  std::vector<qcRings> parts = geometry.parts;
  if (!withHoles) {
    for (qcRings& part : parts) part.holes.clear();
  }
  return parts;
}

/// Which of the points are inside; none for lines.
std::vector<bool> areInside(const Geometry& geometry, const Points& points, bool withHoles) {
  if (!geometry.closed) return std::vector<bool>(points.size(), false);
  return qf_Inside(partsOf(geometry, withHoles), points);
}

/// The answers about each point, appended to its row.
std::vector<Row> answerPoints(std::vector<Row> rows, const Geometry& geometry, const Points& points,
                              bool withHoles, bool zeroIfInside) {
  const std::vector<bool> inside = areInside(geometry, points, withHoles);
  const auto boundaries = boundariesOf(geometry, withHoles);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Near point = nearest(boundaries, points[i], false);
    const Near vertex = nearest(boundaries, points[i], true);
    Row& row = rows[i];
    row.push_back(geometry.closed ? Cell(bool{inside[i]}) : Cell());
    row.push_back(numberCell(inside[i] && zeroIfInside ? 0.0 : point.distance));
    append(row, point.point);
    append(row, point.place);
    row.emplace_back(static_cast<std::size_t>(vertex.vertex));
    append(row, vertex.point);
    append(row, vertex.place);
  }
  return rows;
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

/// Asks the library about all outlines at once, so that its rule for ties covers all of them.
Row answerDirection(const Geometry& geometry, const qcRadian& angle) {
  Points all;
  for (const qcRings& part : geometry.parts) {
    all.insert(all.end(), part.outline.begin(), part.outline.end());
  }
  const long extremal = makeContour(all, false)->extremalVertexIndex(angle);
  auto vertex = static_cast<std::size_t>(extremal);
  std::size_t part = 0;
  while (vertex >= geometry.parts[part].outline.size()) {
    vertex -= geometry.parts[part++].outline.size();
  }
  Row row{geometry.parts.size() > 1 ? Cell(part + 1) : Cell(), vertex};
  append(row, geometry.parts[part].outline[vertex]);
  return row;
}

std::vector<std::string> answersAboutPoints() {
  return {"inside", "distance", "nearest_x", "nearest_y",   "part",       "hole",
          "vertex", "vertex_x", "vertex_y",  "vertex_part", "vertex_hole"};
}

}  // namespace

Question askPoint(const qcVector<2>& point, bool withHoles, bool zeroIfInside) {
  return {answersAboutPoints(), [=](const Geometry& geometry) {
            return answerPoints(std::vector<Row>(1), geometry, {point}, withHoles, zeroIfInside);
          }};
}

Question askPoints(const std::vector<NamedPoint>& points, bool withHoles, bool zeroIfInside) {
  std::vector<std::string> columns{"point", "x", "y"};
  for (const std::string& column : answersAboutPoints()) columns.push_back(column);
  std::vector<Row> named;
  Points positions;
  for (const NamedPoint& point : points) {
    named.push_back({point.name});
    append(named.back(), point.position);
    positions.push_back(point.position);
  }
  return {columns, [=](const Geometry& geometry) {
            return answerPoints(named, geometry, positions, withHoles, zeroIfInside);
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
