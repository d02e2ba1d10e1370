// SPDX-License-Identifier: MIT

#include <cntrformats/json.h>

#include <istream>

#include <cntrformats/errors.h>

namespace formats {

namespace {

constexpr std::size_t longestExcerpt = 40;
/// Deeper values would need much stack to be written.
constexpr int deepestNesting = 200;

/// True for the bytes that continue a UTF-8 character.
bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// The library's message without its name and number, which tell a user nothing.
std::string reason(const Json::exception& error) {
  const std::string message = error.what();
  const std::size_t end = message.find("] ");
  return end == std::string::npos ? message : message.substr(end + 2);
}

template <class Error, class Text>
Json parsed(Text& text, const JsonListener& listener) {
  const auto check = [&listener](int depth, Json::parse_event_t event, Json& value) {
    if (depth > deepestNesting) throw Error("nested too deeply");
    return listener(depth, event, value);
  };
  try {
    return Json::parse(text, check);
  } catch (const Json::exception& error) {
    throw Error("not JSON: " + reason(error));
  }
}

}  // namespace

Json parseJson(std::istream& text, const JsonListener& listener) {
  return parsed<FileError>(text, listener);
}

Json parseJson(const std::string& text) {
  return parsed<FeatureError>(text, [](int, Json::parse_event_t, Json&) { return true; });
}

std::string compact(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string excerpt(const Json& value) {
  std::string text = compact(value);
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

}  // namespace formats
