// SPDX-License-Identifier: MIT

#include <bench/peers/work.h>

#include <map>
#include <stdexcept>

namespace peers {

namespace {

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

}  // namespace

const Work& work(char shape, std::size_t vertices) {
  static std::map<std::pair<char, std::size_t>, Work> made;
  const auto [at, isNew] = made.try_emplace({shape, vertices});
  if (isNew) at->second = makeWork(shape, vertices);
  return at->second;
}

std::string nameOf(const std::string& question, char shape, std::size_t vertices,
                   const std::string& who) {
  return question + '/' + shape + '/' + std::to_string(vertices) + '/' + who;
}

}  // namespace peers
