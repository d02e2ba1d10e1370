// SPDX-License-Identifier: MIT
//
// What a plain answer throws when there is no answer. Tests translate it to the library's exception
// of the same kind.

#pragma once

#include <string>

namespace plain {

struct Error {
  enum Kind { emptyContour, emptyRegionSet, badParams, singular };
  Kind kind;
  std::string message;
};

}  // namespace plain
