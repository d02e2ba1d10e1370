// SPDX-License-Identifier: MIT
//
// From a traced boundary to one simple loop: cut it where it touches itself, drop loops inside
// others, join loops that touch.
//
// Each of the three passes is defined as a scan that starts over after every change. They go on
// where they are instead: what was found free of work before a change stays free of it, because
// cutting leaves other loops alone, dropping a loop adds nothing to compare with, and a joined loop
// has no vertices but those of its two parts.

#include <algorithm>

#include <cntr/compute/repair.h>

namespace cntr::compute {

namespace {

using Loops = std::vector<Outline>;

/// Vertices first, first + 1, ..., first + count - 1, going round the loop.
std::vector<qcVector<2>> arc(const Outline& loop, std::size_t first, std::size_t count) {
  std::vector<qcVector<2>> vertices;
  vertices.reserve(count);
  for (std::size_t i = 0; i < count; ++i)
    vertices.push_back(loop.points()[(first + i) % loop.size()]);
  return vertices;
}

/// Two vertices of a loop that lie in the same place: the second is a + length, going round.
struct Touch {
  std::size_t a;
  std::size_t length;
};

std::optional<Touch> firstTouch(const Outline& loop) {
  for (std::size_t a = 0; a < loop.size(); ++a) {
    for (const int near : loop.verticesAt(loop.points()[a])) {
      const auto b = static_cast<std::size_t>(near);
      if (b != a) return Touch{a, b > a ? b - a : b + loop.size() - a};
    }
  }
  return {};
}

/// Cuts loop i in two at a touch. A piece of a single vertex bounds nothing and is dropped; when
/// that leaves nothing, so is the loop.
void cut(Loops& loops, std::size_t i, const Touch& touch) {
  const std::size_t rest = loops[i].size() - touch.length;
  std::vector<qcVector<2>> kept = arc(loops[i], touch.a, touch.length);
  std::vector<qcVector<2>> split = arc(loops[i], touch.a + touch.length, rest);
  if (kept.size() == 1) std::swap(kept, split);
  if (kept.size() == 1) {
    loops.erase(loops.begin() + static_cast<std::ptrdiff_t>(i));
    return;
  }
  loops[i] = Outline(std::move(kept));
  if (split.size() > 1) loops.emplace_back(std::move(split));
}

void cutAll(Loops& loops) {
  for (std::size_t i = 0; i < loops.size();) {
    const std::optional<Touch> touch = firstTouch(loops[i]);
    if (!touch) {
      ++i;
    } else {
      cut(loops, i, *touch);
    }
  }
}

/// Takes loop i out; the last one moves into its place.
void drop(Loops& loops, std::size_t i) {
  if (i + 1 < loops.size()) loops[i] = std::move(loops.back());
  loops.pop_back();
}

bool isNested(const Loops& loops, std::size_t i) {
  const std::vector<qcVector<2>>& points = loops[i].points();
  const qcVector<2> middle = (points[0] + points[1]) * 0.5;
  for (std::size_t j = 0; j < loops.size(); ++j) {
    if (j != i && loops[j].holds(middle)) return true;
  }
  return false;
}

void dropNested(Loops& loops) {
  for (std::size_t i = 0; i < loops.size();) {
    if (isNested(loops, i)) {
      drop(loops, i);
    } else {
      ++i;
    }
  }
}

/// Joins loop j to loop i at the first vertex of loop i that lies on one of loop j.
bool join(Loops& loops, std::size_t i, std::size_t j) {
  for (std::size_t a = 0; a < loops[i].size(); ++a) {
    const std::vector<int> near = loops[j].verticesAt(loops[i].points()[a]);
    if (near.empty()) continue;
    std::vector<qcVector<2>> joined = arc(loops[i], a, loops[i].size());
    const std::vector<qcVector<2>> added =
        arc(loops[j], static_cast<std::size_t>(near.front()), loops[j].size());
    joined.insert(joined.end(), added.begin(), added.end());
    loops[i] = Outline(std::move(joined));
    drop(loops, j);
    return true;
  }
  return false;
}

void joinAll(Loops& loops) {
  for (std::size_t i = 0; i < loops.size(); ++i) {
    for (std::size_t j = i + 1; j < loops.size();) {
      j = join(loops, i, j) ? i + 1 : j + 1;
    }
  }
}

}  // namespace

std::optional<std::vector<qcVector<2>>> outerLoop(std::vector<qcVector<2>> traced) {
  Loops loops;
  loops.emplace_back(std::move(traced));
  cutAll(loops);
  dropNested(loops);
  joinAll(loops);
  if (loops.empty()) return {};
  return std::move(loops.front()).release();
}

}  // namespace cntr::compute
