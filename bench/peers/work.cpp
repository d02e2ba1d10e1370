// SPDX-License-Identifier: MIT

#include <bench/peers/work.h>

#include <map>
#include <stdexcept>

namespace peers {

namespace {

/// A circle of a quarter of the vertices walked twice, and another one that crosses it, begun with
/// an edge that meets nothing.
Points circlesTwice(std::size_t vertices) {
  Points outline{{1500, 1500}, {1400, 1500}};
  for (const double x : {540.0, 840.0}) {
    const Points circle = shapes::regularPolygon(vertices / 4, 400.0, {x, 480.0});
    for (int round = 0; round < 2; ++round) {
      outline.insert(outline.end(), circle.begin(), circle.end());
    }
  }
  return outline;
}

Points outlineOf(char shape, std::size_t vertices) {
  switch (shape) {
    case 'S':
      return shapes::smoothStar(vertices);
    case 'N':
      return shapes::spikyStar(vertices);
    case 'C':
      return shapes::comb(vertices);
    case 'X':
      return shapes::crossingStar(vertices);
    case 'D':
      return circlesTwice(vertices);
    default:
      throw std::invalid_argument(std::string("there is no shape ") + shape);
  }
}

Work makeWork(char shape, std::size_t vertices) {
  Points outline = outlineOf(shape, vertices);
  Points places = shapes::pointsInBox(outline, questionCount);
  auto shortOnes = shapes::shortSegments(outline, questionCount);
  auto longOnes = shapes::longSegments(outline, questionCount);
  return {std::move(outline), std::move(places), std::move(shortOnes), std::move(longOnes)};
}

SetWork makeSetWork(std::size_t regions) {
  constexpr std::size_t perRow = 100;
  constexpr double step = 1200.0;
  const Points star = shapes::smoothStar(16);
  SetWork made;
  for (std::size_t k = 0; k < regions; ++k) {
    const Point shift(step * static_cast<double>(k % perRow),
                      step * static_cast<double>(k / perRow));
    Points& outline = made.outlines.emplace_back();
    for (const Point& p : star) outline.push_back(p + shift);
  }
  const double width = step * perRow;
  const double height = step * static_cast<double>(regions / perRow);
  shapes::Random random(7);
  for (std::size_t i = 0; i < questionCount; ++i) {
    const double x = random.uniform(0.0, width);
    const double y = random.uniform(0.0, height);
    made.places.emplace_back(x, y);
  }
  return made;
}

}  // namespace

const Work& work(char shape, std::size_t vertices) {
  static std::map<std::pair<char, std::size_t>, Work> made;
  const auto [at, isNew] = made.try_emplace({shape, vertices});
  if (isNew) at->second = makeWork(shape, vertices);
  return at->second;
}

const SetWork& setWork(std::size_t regions) {
  static std::map<std::size_t, SetWork> made;
  const auto [at, isNew] = made.try_emplace(regions);
  if (isNew) at->second = makeSetWork(regions);
  return at->second;
}

std::string nameOf(const std::string& question, char shape, std::size_t vertices,
                   const std::string& who) {
  return question + '/' + shape + '/' + std::to_string(vertices) + '/' + who;
}

}  // namespace peers
