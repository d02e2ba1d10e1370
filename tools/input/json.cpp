// SPDX-License-Identifier: MIT

#include <tools/input/json.h>

namespace tool {

namespace {

constexpr std::size_t longestExcerpt = 40;

/// True for the bytes that continue a UTF-8 character.
bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

}  // namespace

std::string excerpt(const Json& value) {
  std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (text.size() <= longestExcerpt) return text;
  std::size_t end = longestExcerpt;
  while (end > 0 && continues(text[end])) --end;
  return text.substr(0, end) + "...";
}

const Json& member(const Json& object, const char* name) {
  static const Json nothing;
  const auto found = object.find(name);
  return found == object.end() ? nothing : *found;
}

}  // namespace tool
