// SPDX-License-Identifier: MIT
//
// The checks of Arrow structures that come from elsewhere: each column is checked before it is
// read, what it states about itself, then the offsets into the next one. Levels are counted from
// the column itself, 0, inwards. All throw qcContourDefs::BadParams.

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <cntrtable/arrow.h>

namespace table {

/// Sums and products of a few lengths below this are numbers of 64 bits.
inline constexpr std::int64_t longestArray = std::numeric_limits<std::int64_t>::max() / 64;

inline std::string placeOf(std::size_t level) { return "level " + std::to_string(level); }

// Schemas

/// It is there, has not been released, and has no dictionary.
void requireSchema(const ArrowSchema* schema, std::size_t level);
/// REQUIRES: child < schema.n_children.
const ArrowSchema& childOf(const ArrowSchema& schema, std::int64_t child, std::size_t level);
void requireOneChild(const ArrowSchema& schema, std::size_t level);
/// It is there, has a format and no dictionary.
bool isReadable(const ArrowSchema* schema);
/// The first child of that name that is readable, or -1.
std::int64_t childNamed(const ArrowSchema& schema, std::string_view name);

bool isList(const ArrowSchema& schema);
bool isStruct(const ArrowSchema& schema);

// Arrays

/// What an array states about itself is possible, and it has as many buffers and children.
void requireArray(const ArrowArray* array, std::size_t level, std::int64_t buffers,
                  std::int64_t children);

bool isNullAt(const ArrowArray& array, std::int64_t index);
/// Of the items from `begin` to `end`.
void requireNoNulls(const ArrowArray& array, std::int64_t begin, std::int64_t end,
                    std::size_t level);

/// The items of a child, on this level, that belong to those of a struct, as an array that is not
/// to be released. Throws where there are not as many. REQUIRES: requireArray() took the struct.
ArrowArray childWindow(const ArrowArray& array, std::int64_t child, std::size_t level);

/// Where the items `begin` to `end` of a list, a binary or a text column begin and end; `available`
/// is the number of the items that they consist of.
std::vector<std::int64_t> offsetsOf(const ArrowSchema& schema, const ArrowArray& array,
                                    std::int64_t begin, std::int64_t end, std::int64_t available,
                                    std::size_t level);

}  // namespace table
