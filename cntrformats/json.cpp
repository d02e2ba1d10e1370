// SPDX-License-Identifier: MIT

#include <cntrformats/json.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include <simdjson.h>

#include <cntrformats/characters.h>

namespace formats {

namespace {

constexpr std::size_t longestExcerpt = 40;
constexpr std::string_view blanks = " \t\r\n";

std::size_t skipBlanks(std::string_view text, std::size_t at) {
  return std::min(text.find_first_not_of(blanks, at), text.size());
}

/// True for the bytes that continue a UTF-8 character.
bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// The number of bytes of the UTF-8 character with which the text begins; 0 when it begins with
/// none.
std::size_t lengthOfCharacter(std::string_view text) {
  for (std::size_t length = 1; length <= std::min<std::size_t>(4, text.size()); ++length) {
    if (simdjson::validate_utf8(text.data(), length)) return length;
  }
  return 0;
}

std::string validUtf8(std::string_view text) {
  std::string valid;
  while (!text.empty()) {
    const std::size_t length = lengthOfCharacter(text);
    valid += length == 0 ? std::string_view("\xEF\xBF\xBD") : text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(1, length));
  }
  return valid;
}

std::string escape(char c) {
  switch (c) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "\\u%04x", static_cast<unsigned>(c));
  return text.data();
}

/// True for a character of a JSON string with a backslash before it that is not escaped itself.
bool isEscaped(std::string_view text, std::size_t at) {
  std::size_t begin = at;
  while (begin > 0 && text[begin - 1] == '\\') --begin;
  return (at - begin) % 2 != 0;
}

bool isPlain(char c) { return c != '"' && c != '\\' && static_cast<unsigned char>(c) >= 0x20U; }

}  // namespace

bool ValueEnd::find(std::string_view text, std::size_t& at) {
  if (at == text.size()) return false;
  if (first_ == '\0') {
    first_ = text[at];
    last_ = first_ == '{' ? '}' : ']';
    if (first_ == '"') {
      isInString_ = true;
      ++at;
    }
  }
  if (first_ != '{' && first_ != '[' && first_ != '"') {
    at = std::min(text.find_first_of(",]}: \t\r\n", at), text.size());
    return at < text.size();
  }
  // Copies, which a compiler keeps in registers.
  const char first = first_;
  const char last = last_;
  bool isInString = isInString_;
  std::size_t depth = depth_;
  const std::size_t begin = std::exchange(at, text.size());
  const bool isFound = visitAny(text, begin, '"', first, last, [&](std::size_t found) {
    const char c = text[found];
    if (c == '"') {
      if (!isInString || !isEscaped(text, found)) isInString = !isInString;
      if (first != '"' || isInString) return false;
    } else {
      if (isInString) return false;
      if (c == first) ++depth;
      if (c != last || --depth > 0) return false;
    }
    at = found + 1;
    return true;
  });
  isInString_ = isInString;
  depth_ = depth;
  return isFound;
}

namespace {

/// Takes the next value from the text; empty when there is none.
std::string_view takeValue(std::string_view text, std::size_t& at) {
  at = skipBlanks(text, at);
  const std::size_t begin = at;
  ValueEnd().find(text, at);
  const std::string_view value = text.substr(begin, at - begin);
  at = skipBlanks(text, at);
  return value;
}

/// The text that a JSON string stands for, given without its quotes.
std::string unescaped(std::string_view text) {
  simdjson::ondemand::parser parser;
  const simdjson::padded_string json(std::string("\"").append(text).append(1, '"'));
  auto document = parser.iterate(json);
  return std::string(std::string_view(document.get_string()));
}

}  // namespace

std::vector<std::string_view> elementsOf(std::string_view list) {
  std::vector<std::string_view> elements;
  std::size_t at = 1;
  for (std::string_view value = takeValue(list, at); !value.empty(); value = takeValue(list, at)) {
    elements.push_back(value);
    if (at >= list.size() || list[at] != ',') break;
    ++at;
  }
  return elements;
}

std::vector<JsonMember> membersOf(std::string_view object) {
  std::vector<JsonMember> members;
  std::size_t at = 1;
  for (std::string_view name = takeValue(object, at); name.size() >= 2;
       name = takeValue(object, at)) {
    if (at < object.size() && object[at] == ':') ++at;
    members.push_back({name.substr(1, name.size() - 2), takeValue(object, at)});
    if (at >= object.size() || object[at] != ',') break;
    ++at;
  }
  return members;
}

std::string_view memberOf(std::string_view object, std::string_view name) {
  if (!object.starts_with('{')) return {};
  for (const JsonMember& member : membersOf(object)) {
    if (member.name == name) return member.value;
  }
  return {};
}

bool isNamed(const JsonMember& member, std::string_view name) {
  const bool isEscaped = member.name.find('\\') != std::string_view::npos;
  return isEscaped ? unescaped(member.name) == name : member.name == name;
}

std::string_view lastMemberOf(std::string_view object, std::string_view name) {
  std::string_view value;
  if (!object.starts_with('{')) return value;
  for (const JsonMember& member : membersOf(object)) {
    if (isNamed(member, name)) value = member.value;
  }
  return value;
}

std::string compact(std::string_view json) {
  std::string text;
  text.reserve(json.size());
  for (std::size_t at = 0; at < json.size();) {
    if (json[at] == '"') {
      const std::size_t begin = at;
      ValueEnd().find(json, at);
      text.append(json.substr(begin, at - begin));
    } else {
      if (blanks.find(json[at]) == std::string_view::npos) text += json[at];
      ++at;
    }
  }
  return text;
}

std::string excerpt(std::string_view json) {
  std::string text = validUtf8(compact(json.substr(0, 4096)));
  // A message would end at the first null character.
  std::replace(text.begin(), text.end(), '\0', '?');
  if (text.size() <= longestExcerpt) return text;
  std::size_t end = longestExcerpt;
  while (end > 0 && continues(text[end])) --end;
  return text.substr(0, end) + "...";
}

std::string jsonString(std::string_view text) {
  if (!simdjson::validate_utf8(text.data(), text.size())) return jsonString(validUtf8(text));
  std::string json = "\"";
  for (const char c : text) {
    if (isPlain(c)) {
      json += c;
    } else {
      json += escape(c);
    }
  }
  return json += '"';
}

}  // namespace formats
