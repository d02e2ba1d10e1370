// SPDX-License-Identifier: MIT
//
// The C++ side of python/bench/compare.py: the time of a loop that asks an outline about each of
// many points.
//
//   inside_loop OUTLINE POINTS
//
// Both files hold x and y in turn, as 64-bit numbers. Prints the number of points inside and the
// seconds that the loop took, after a first loop has left nothing to build.

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include <cntrsets/inside.h>

namespace {

std::vector<qcVector<2>> pointsIn(const char* name) {
  std::ifstream file(name, std::ios::binary);
  std::vector<qcVector<2>> points;
  double xy[2];
  while (file.read(reinterpret_cast<char*>(xy), sizeof xy)) points.emplace_back(xy[0], xy[1]);
  return points;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::cerr << "usage: inside_loop OUTLINE POINTS\n";
    return 2;
  }
  const qcInside outline({qcRings{pointsIn(arguments[1]), {}}});
  const std::vector<qcVector<2>> points = pointsIn(arguments[2]);
  const auto inside = [&] {
    return std::count_if(points.begin(), points.end(),
                         [&](const qcVector<2>& p) { return outline.contains(p); });
  };
  inside();
  const auto begin = std::chrono::steady_clock::now();
  const auto found = inside();
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  std::cout << found << ' ' << taken.count() << '\n';
}
