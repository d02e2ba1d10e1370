// SPDX-License-Identifier: MIT
//
// Words in arguments, and in what objects say about themselves.

#pragma once

#include <cstddef>
#include <string>

#include <platform/core/shapes.h>

namespace python {

/// The rule named 'nonzero' or 'evenodd'. Raises ValueError for other names.
qcPolygon::PolyFillMode ruleNamed(const std::string& rule);

/// "1 hole", or "2 holes".
std::string counted(std::size_t count, const char* one, const char* several);

}  // namespace python
