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
  /// JSON.
  std::string value;
};

using Members = std::vector<Member>;

/// Its JSON; null where there is no such member.
const std::string* valueOf(const Members& members, std::string_view name);

/// Adds members, or gives them new values where they are there already.
void update(Members& members, Members&& others);

}  // namespace formats
