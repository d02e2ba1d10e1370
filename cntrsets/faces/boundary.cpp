// SPDX-License-Identifier: MIT
//
// Boundary edges are followed with the kept area on the left. At a vertex where several meet, the
// walk takes the one that bounds the same corner of the area, so that a walk goes around one piece
// of the area; where it passes a vertex twice, it is cut into rings. Such a walk contains at most
// one outline; the rings cut off from it are holes.

#include <cntrsets/faces/boundary.h>

#include <algorithm>

#include <cntr/contourdefs.h>

namespace cntr::sets {
namespace {

/// A boundary edge with the area on its left.
struct BoundarySide {
  std::size_t from;
  std::size_t to;
  /// The edge's number among the edges of the faces.
  std::size_t edge;
};

struct BoundaryRing {
  /// Vertex numbers, the smallest first.
  std::vector<std::size_t> vertices;
  bool isHole = false;
  /// Of a hole, the lower of the two edges that meet in the first vertex.
  std::size_t lowestEdge = noEdge;
  /// The outline around a hole.
  std::size_t outline = 0;
};

class Boundary {
 public:
  Boundary(const Faces& faces, const std::vector<bool>& kept) : faces_(faces) {
    for (std::size_t i = 0; i < faces.edges.size(); ++i) {
      const Edge& edge = faces.edges[i];
      if (kept[edge.below] == kept[edge.above]) continue;
      if (kept[edge.above])
        sides_.push_back({edge.left, edge.right, i});
      else
        sides_.push_back({edge.right, edge.left, i});
    }
    std::sort(sides_.begin(), sides_.end(), [](const BoundarySide& a, const BoundarySide& b) {
      return a.from != b.from ? a.from < b.from : a.to < b.to;
    });
  }

  std::vector<qcRings> parts() {
    findRings();
    findOutlinesOfHoles();
    return sortedParts();
  }

 private:
  void findRings() {
    firstFrom_.assign(faces_.vertices.size(), sides_.size());
    for (std::size_t i = sides_.size(); i-- > 0;) firstFrom_[sides_[i].from] = i;
    ringOfEdge_.assign(faces_.edges.size(), noRing);
    onWalk_.assign(faces_.vertices.size(), noPlace);
    std::vector<bool> walked(sides_.size(), false);
    for (std::size_t start = 0; start < sides_.size(); ++start) {
      if (walked[start]) continue;
      std::size_t side = start;
      do {
        walked[side] = true;
        step(sides_[side]);
        side = next(sides_[side]);
        // Faces between cut edges have closed boundaries; otherwise the walk would not end.
        if (side != start && (side == sides_.size() || walked[side]))
          throw qcContourDefs::BadParams(L"the result is not valid: a boundary is not closed");
      } while (side != start);
    }
  }

  /// Adds a side to the walk; when it comes back to a vertex of the walk, a ring is complete.
  void step(const BoundarySide& side) {
    onWalk_[side.from] = walk_.size();
    walk_.push_back(side);
    const std::size_t begin = onWalk_[side.to];
    if (begin == noPlace) return;
    const auto first = walk_.begin() + static_cast<std::ptrdiff_t>(begin);
    for (auto it = first; it != walk_.end(); ++it) {
      onWalk_[it->from] = noPlace;
      ringOfEdge_[it->edge] = rings_.size();
    }
    rings_.push_back(ringOf({first, walk_.end()}));
    walk_.erase(first, walk_.end());
  }

  BoundaryRing ringOf(std::vector<BoundarySide> sides) const {
    std::rotate(sides.begin(),
                std::min_element(
                    sides.begin(), sides.end(),
                    [](const BoundarySide& a, const BoundarySide& b) { return a.from < b.from; }),
                sides.end());
    BoundaryRing ring;
    for (const BoundarySide& side : sides) ring.vertices.push_back(side.from);
    ring.isHole = orientation(point(sides.back().from), point(sides.front().from),
                              point(sides.front().to)) < 0;
    if (ring.isHole) ring.lowestEdge = sides.back().edge;
    return ring;
  }

  /// The side that bounds the same corner of the area: the first one clockwise from the reversed
  /// side.
  std::size_t next(const BoundarySide& side) const {
    std::size_t best = firstFrom_[side.to];
    for (std::size_t i = best + 1; i < sides_.size() && sides_[i].from == side.to; ++i)
      if (isEarlierClockwise(side, sides_[i], sides_[best])) best = i;
    return best;
  }

  /// Whether `a` comes before `b`, clockwise around the end of `side` from its reverse.
  bool isEarlierClockwise(const BoundarySide& side, const BoundarySide& a,
                          const BoundarySide& b) const {
    const Point& middle = point(side.to);
    const int ofA = orientation(middle, point(side.from), point(a.to));
    const int ofB = orientation(middle, point(side.from), point(b.to));
    if (ofA != ofB) return ofA < ofB;
    return orientation(middle, point(a.to), point(b.to)) < 0;
  }

  void findOutlinesOfHoles() {
    std::vector<std::size_t> holes;
    for (std::size_t i = 0; i < rings_.size(); ++i) {
      rings_[i].outline = i;
      if (rings_[i].isHole) holes.push_back(i);
    }
    std::sort(holes.begin(), holes.end(), [&](std::size_t a, std::size_t b) {
      return rings_[a].lowestEdge < rings_[b].lowestEdge;
    });
    const std::vector<std::size_t> ringsBelow = ringsBelowEdges();
    for (const std::size_t hole : holes)
      rings_[hole].outline = rings_[ringsBelow[rings_[hole].lowestEdge]].outline;
  }

  /// For each edge, the ring of the next boundary edge below it. Along the edges `under`, what lies
  /// between the two is on one side of the boundary.
  std::vector<std::size_t> ringsBelowEdges() const {
    std::vector<std::size_t> result(faces_.edges.size(), noRing);
    for (std::size_t i = 0; i < result.size(); ++i) {
      const std::size_t under = faces_.edges[i].under;
      if (under == noEdge) continue;
      result[i] = ringOfEdge_[under] == noRing ? result[under] : ringOfEdge_[under];
    }
    return result;
  }

  std::vector<qcRings> sortedParts() const {
    std::vector<const BoundaryRing*> sorted;
    for (const BoundaryRing& ring : rings_) sorted.push_back(&ring);
    std::sort(sorted.begin(), sorted.end(), [](const BoundaryRing* a, const BoundaryRing* b) {
      return a->isHole != b->isHole ? b->isHole : a->vertices < b->vertices;
    });
    std::vector<qcRings> parts;
    std::vector<std::size_t> partOfRing(rings_.size());
    for (const BoundaryRing* ring : sorted) {
      if (ring->isHole) {
        parts[partOfRing[ring->outline]].holes.push_back(pointsOf(*ring));
      } else {
        partOfRing[ring->outline] = parts.size();
        parts.push_back({pointsOf(*ring), {}});
      }
    }
    return parts;
  }

  const Point& point(std::size_t vertex) const { return faces_.vertices[vertex]; }

  std::vector<Point> pointsOf(const BoundaryRing& ring) const {
    std::vector<Point> points;
    points.reserve(ring.vertices.size());
    for (const std::size_t vertex : ring.vertices) points.push_back(point(vertex));
    return points;
  }

  static constexpr std::size_t noRing = noEdge;
  static constexpr std::size_t noPlace = noEdge;

  const Faces& faces_;
  std::vector<BoundarySide> sides_;
  std::vector<std::size_t> firstFrom_;
  /// The current walk, and where on it vertices are.
  std::vector<BoundarySide> walk_;
  std::vector<std::size_t> onWalk_;
  std::vector<BoundaryRing> rings_;
  std::vector<std::size_t> ringOfEdge_;
};

}  // namespace

std::vector<qcRings> boundaryOf(const Faces& faces, const std::vector<bool>& kept) {
  return Boundary(faces, kept).parts();
}

}  // namespace cntr::sets
