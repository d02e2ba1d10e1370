// SPDX-License-Identifier: MIT

#include <cntrformats/members.h>

#include <algorithm>
#include <utility>

namespace formats {

namespace {

template <class List>
auto find(List& members, std::string_view name) {
  return std::find_if(members.begin(), members.end(),
                      [name](const Member& member) { return member.name == name; });
}

}  // namespace

const std::string* valueOf(const Members& members, std::string_view name) {
  const auto found = find(members, name);
  return found == members.end() ? nullptr : &found->value;
}

void update(Members& members, Members&& others) {
  for (Member& other : others) {
    const auto found = find(members, other.name);
    if (found == members.end()) {
      members.push_back(std::move(other));
    } else {
      found->value = std::move(other.value);
    }
  }
}

}  // namespace formats
