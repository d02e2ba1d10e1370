// SPDX-License-Identifier: MIT
//
// Vertices are numbered, pieces that coincide are joined, a sweep finds what lies below each edge,
// and the windings follow from edge to edge upwards.

#include <cntrsets/faces/faces.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

#include <cntr/contourdefs.h>

namespace cntr::sets {
namespace {

bool isBefore(const Point& a, const Point& b) {
  return a.x() < b.x() || (a.x() == b.x() && a.y() < b.y());
}

/// Makes the list of vertices and gives the number of the vertex at which each piece begins. Of
/// equal vertices (0 and -0 are equal) the first one given stands for all.
std::vector<std::size_t> numberVertices(const std::vector<Piece>& pieces,
                                        std::vector<Point>& vertices) {
  std::vector<std::size_t> order(pieces.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    if (pieces[a].from == pieces[b].from) return a < b;
    return isBefore(pieces[a].from, pieces[b].from);
  });
  std::vector<std::size_t> numbers(pieces.size());
  for (const std::size_t i : order) {
    if (vertices.empty() || vertices.back() != pieces[i].from) vertices.push_back(pieces[i].from);
    numbers[i] = vertices.size() - 1;
  }
  return numbers;
}

/// An edge as one ring passes it: once from left to right (1) or from right to left (-1).
struct Passage {
  std::size_t left;
  std::size_t right;
  std::size_t ring;
  int times;

  // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy takes the default for a null.
  auto operator<=>(const Passage&) const = default;
};

std::vector<Passage> passagesOf(const std::vector<Piece>& pieces,
                                const std::vector<std::size_t>& numbers) {
  std::vector<Passage> passages;
  passages.reserve(pieces.size());
  std::size_t first = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (pieces[i].ring != pieces[first].ring) first = i;
    const bool isLast = i + 1 == pieces.size() || pieces[i + 1].ring != pieces[i].ring;
    const std::size_t from = numbers[i];
    const std::size_t to = numbers[isLast ? first : i + 1];
    passages.push_back(
        {std::min(from, to), std::max(from, to), pieces[i].ring, from < to ? 1 : -1});
  }
  return passages;
}

/// One passage for each edge and ring with the sum of its times, where this is not 0.
std::vector<Passage> joined(std::vector<Passage> passages) {
  std::sort(passages.begin(), passages.end());
  std::vector<Passage> result;
  for (const Passage& passage : passages) {
    if (!result.empty() && result.back().left == passage.left &&
        result.back().right == passage.right && result.back().ring == passage.ring) {
      result.back().times += passage.times;
      continue;
    }
    if (!result.empty() && result.back().times == 0) result.pop_back();
    result.push_back(passage);
  }
  if (!result.empty() && result.back().times == 0) result.pop_back();
  return result;
}

/// Sorts passages that begin at one vertex counter-clockwise.
void sortBySlope(std::vector<Passage>& passages, const std::vector<Point>& vertices) {
  for (auto begin = passages.begin(); begin != passages.end();) {
    const auto end = std::find_if(
        begin, passages.end(), [&](const Passage& passage) { return passage.left != begin->left; });
    std::stable_sort(begin, end, [&](const Passage& a, const Passage& b) {
      return orientation(vertices[a.left], vertices[a.right], vertices[b.right]) > 0;
    });
    begin = end;
  }
}

/// The order, from below, of edges that one vertical line meets.
class IsBelow {
 public:
  IsBelow(const std::vector<Point>& vertices, const std::vector<Edge>& edges)
      : vertices_(&vertices), edges_(&edges) {}

  bool operator()(std::size_t a, std::size_t b) const {
    const Edge& s = (*edges_)[a];
    const Edge& t = (*edges_)[b];
    if (s.left == t.left) return side(s, t.right) > 0;
    return s.left < t.left ? side(s, t.left) > 0 : side(t, s.left) < 0;
  }

 private:
  int side(const Edge& edge, std::size_t vertex) const {
    return orientation((*vertices_)[edge.left], (*vertices_)[edge.right], (*vertices_)[vertex]);
  }

  const std::vector<Point>* vertices_;
  const std::vector<Edge>* edges_;
};

/// Sets `under` of all edges, which are sorted.
void sweep(const std::vector<Point>& vertices, std::vector<Edge>& edges) {
  std::vector<std::size_t> byRight(edges.size());
  std::iota(byRight.begin(), byRight.end(), 0U);
  std::sort(byRight.begin(), byRight.end(), [&](std::size_t a, std::size_t b) {
    return std::tie(edges[a].right, a) < std::tie(edges[b].right, b);
  });

  using Active = std::set<std::size_t, IsBelow>;
  Active active(IsBelow(vertices, edges));
  std::vector<Active::iterator> places(edges.size());
  std::size_t ending = 0;
  for (std::size_t i = 0; i < edges.size();) {
    // Edges that end at one vertex lie side by side: the edges that begin there belong in front of
    // what follows the last one removed.
    const std::size_t vertex = edges[i].left;
    auto hint = active.end();
    for (; ending < byRight.size() && edges[byRight[ending]].right <= vertex; ++ending)
      hint = active.erase(places[byRight[ending]]);
    for (; i < edges.size() && edges[i].left == vertex; ++i) {
      const std::size_t before = active.size();
      places[i] = active.insert(hint, i);
      // Noding leaves no edges that overlap or cross; the sweep relies on that.
      if (active.size() == before)
        throw qcContourDefs::BadParams(L"the result is not valid: edges are not cut");
      if (places[i] != active.begin()) edges[i].under = *std::prev(places[i]);
      hint = std::next(places[i]);
    }
  }
}

/// The windings that occur, each with a number.
class WindingNumbers {
 public:
  WindingNumbers() { numberOf({}); }

  /// The number of the windings beyond an edge that `passage` runs along.
  std::size_t beyond(std::size_t number, const Passage& passage) {
    const auto [known, isNew] = beyond_.try_emplace({number, passage.ring, passage.times}, 0U);
    if (isNew) known->second = numberOf(changed(*all_[number], passage));
    return known->second;
  }

  std::vector<Windings> list() const {
    std::vector<Windings> result;
    result.reserve(all_.size());
    for (const Windings* windings : all_) result.push_back(*windings);
    return result;
  }

 private:
  static Windings changed(Windings windings, const Passage& passage) {
    const auto place = std::lower_bound(
        windings.begin(), windings.end(), passage.ring,
        [](const Winding& winding, std::size_t ring) { return winding.ring < ring; });
    if (place == windings.end() || place->ring != passage.ring) {
      windings.insert(place, {passage.ring, passage.times});
    } else {
      place->times += passage.times;
      if (place->times == 0) windings.erase(place);
    }
    return windings;
  }

  std::size_t numberOf(Windings windings) {
    const auto [place, isNew] = numbers_.try_emplace(std::move(windings), all_.size());
    if (isNew) all_.push_back(&place->first);
    return place->second;
  }

  std::map<Windings, std::size_t> numbers_;
  std::vector<const Windings*> all_;
  std::map<std::tuple<std::size_t, std::size_t, int>, std::size_t> beyond_;
};

std::vector<Edge> edgesOf(const std::vector<Passage>& passages) {
  std::vector<Edge> edges;
  for (const Passage& passage : passages) {
    if (edges.empty() || edges.back().left != passage.left || edges.back().right != passage.right)
      edges.push_back({passage.left, passage.right});
  }
  return edges;
}

/// Sets the windings below and above all edges, derived from those under them.
std::vector<Windings> wind(std::vector<Edge>& edges, const std::vector<Passage>& passages) {
  WindingNumbers numbers;
  auto passage = passages.begin();
  for (Edge& edge : edges) {
    edge.below = edge.under == noEdge ? 0 : edges[edge.under].above;
    edge.above = edge.below;
    for (; passage != passages.end() && passage->left == edge.left && passage->right == edge.right;
         ++passage)
      edge.above = numbers.beyond(edge.above, *passage);
  }
  return numbers.list();
}

}  // namespace

Faces facesOf(const std::vector<Piece>& pieces) {
  Faces faces;
  const std::vector<std::size_t> numbers = numberVertices(pieces, faces.vertices);
  std::vector<Passage> passages = joined(passagesOf(pieces, numbers));
  sortBySlope(passages, faces.vertices);
  faces.edges = edgesOf(passages);
  sweep(faces.vertices, faces.edges);
  faces.windings = wind(faces.edges, passages);
  return faces;
}

}  // namespace cntr::sets
