// SPDX-License-Identifier: MIT
//
// The members of a JSON object whose values are kept as they are written.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace formats {

struct Member {
  /// Without its quotes, escapes as they are.
  std::string name;
  /// The value's JSON.
  std::string value;
};

using Members = std::vector<Member>;

/// The JSON of that member; null if there is none.
const std::string* valueOf(const Members& members, std::string_view name);

/// Adds members, and gives new values to existing ones.
void update(Members& members, Members&& others);

}  // namespace formats
