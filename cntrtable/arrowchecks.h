// SPDX-License-Identifier: MIT
//
// The checks of Arrow structures that come from elsewhere. Each column is checked before it is
// read: what it states about itself, then its offsets into the next one. Levels are counted inwards
// from the column itself, 0. All throw qcContourDefs::BadParams.

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <cntrtable/arrow.h>

namespace table {

/// Sums and small multiples of lengths below this fit into 64 bits.
inline constexpr std::int64_t longestArray = std::numeric_limits<std::int64_t>::max() / 64;

inline std::string placeOf(std::size_t level) { return "level " + std::to_string(level); }

// Schemas

/// The schema exists, has not been released and has no dictionary.
void requireSchema(const ArrowSchema* schema, std::size_t level);
/// REQUIRES: child < schema.n_children.
const ArrowSchema& childOf(const ArrowSchema& schema, std::int64_t child, std::size_t level);
void requireOneChild(const ArrowSchema& schema, std::size_t level);
/// The schema exists, has a format and has no dictionary.
bool isReadable(const ArrowSchema* schema);
/// The first child of that name that is readable, or -1.
std::int64_t childNamed(const ArrowSchema& schema, std::string_view name);

bool isList(const ArrowSchema& schema);
bool isStruct(const ArrowSchema& schema);

// Arrays

/// What an array states about itself is possible, and it has as many buffers and children as given.
void requireArray(const ArrowArray* array, std::size_t level, std::int64_t buffers,
                  std::int64_t children);

bool isNullAt(const ArrowArray& array, std::int64_t index);
/// For the items from `begin` to `end`.
void requireNoNulls(const ArrowArray& array, std::int64_t begin, std::int64_t end,
                    std::size_t level);

/// The items of a child, on this level, that belong to those of a struct, as an array that must not
/// be released. Throws if there are too few. REQUIRES: requireArray() took the struct.
ArrowArray childWindow(const ArrowArray& array, std::int64_t child, std::size_t level);

/// Where the items `begin` to `end` of a list, a binary or a text column begin and end; `available`
/// is the number of the values that they consist of.
std::vector<std::int64_t> offsetsOf(const ArrowSchema& schema, const ArrowArray& array,
                                    std::int64_t begin, std::int64_t end, std::int64_t available,
                                    std::size_t level);

}  // namespace table
