// SPDX-License-Identifier: MIT
//
// The check that comes first in queries about many points at once.

#pragma once

#include <cstddef>

#include <cntr/contourdefs.h>

namespace cntr::model {

inline void checkSameSize(std::size_t points, std::size_t answers) {
  if (points != answers) {
    throw qcContourDefs::BadParams(L"as many answers as points are needed");
  }
}

}  // namespace cntr::model
