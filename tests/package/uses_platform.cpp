// SPDX-License-Identifier: MIT
//
// Stores a value and an object through libqcplatform alone and loads them again; ends with 0 when
// they have come back.

#include <cstdlib>
#include <sstream>

#include <platform/core/archive.h>
#include <platform/core/shapes.h>

int main() {
  std::stringstream bytes;
  qcCircle circle({1, 2}, 3);
  qcVector<2> point(4, 5);
  {
    qcStreamArchive archive(static_cast<std::ostream&>(bytes));
    archive || circle || point;
  }
  qcCircle loadedCircle;
  qcVector<2> loadedPoint;
  qcStreamArchive archive(static_cast<std::istream&>(bytes));
  archive || loadedCircle || loadedPoint;
  return loadedCircle == circle && loadedPoint == point ? EXIT_SUCCESS : EXIT_FAILURE;
}
