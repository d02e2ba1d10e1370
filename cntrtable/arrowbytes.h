// SPDX-License-Identifier: MIT
//
// Arrow columns of binary and of text, with values that follow each other or with views.

#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include <cntrtable/arrow.h>

namespace table {

bool isBinary(const ArrowSchema& schema);
bool isText(const ArrowSchema& schema);

/// The bytes of each item in place, nothing for a null. Throws qcContourDefs::BadParams for a
/// column that contradicts itself. REQUIRES: isBinary(schema) or isText(schema).
std::vector<std::optional<std::span<const std::byte>>> bytesOf(const ArrowSchema& schema,
                                                               const ArrowArray& array);

}  // namespace table
