// SPDX-License-Identifier: MIT
//
// JSON as text: where the values of a text are, and how text is written. Arguments have been parsed
// before and are known to be JSON; any other text does no harm, but makes the results meaningless.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace formats {

/// Finds where a value ends, in a text that may arrive piece by piece.
class ValueEnd {
 public:
  /// Looks at the text from `at` on, where the value begins or the last call stopped. Moves `at`
  /// past the value, or to the end of the text if that comes first; true when it has found the end
  /// of the value. The text given to earlier calls is the beginning of this one, or its part from
  /// the value on.
  bool find(std::string_view text, std::size_t& at);

 private:
  /// The first character of the value; 0 before it has been seen.
  char first_ = '\0';
  char last_ = '\0';
  bool isInString_ = false;
  std::size_t depth_ = 0;
};

struct JsonMember {
  /// Without its quotes, escapes as they are.
  std::string_view name;
  std::string_view value;
};

/// The elements of a list.
std::vector<std::string_view> elementsOf(std::string_view list);
/// The members of an object.
std::vector<JsonMember> membersOf(std::string_view object);
/// True when the member has this name, however that is escaped.
bool isNamed(const JsonMember& member, std::string_view name);
/// The value of the first member whose name stands in the text like this; empty if there is none.
std::string_view memberOf(std::string_view object, std::string_view name);
/// The value of the last member of that name, however that is escaped; empty if there is none.
std::string_view lastMemberOf(std::string_view object, std::string_view name);

/// The value without the blanks between its parts.
std::string compact(std::string_view json);
/// The value for a message: compact, and shortened if it is long.
std::string excerpt(std::string_view json);
/// A text as a JSON string; whatever in it is not UTF-8 is replaced.
std::string jsonString(std::string_view text);

}  // namespace formats
