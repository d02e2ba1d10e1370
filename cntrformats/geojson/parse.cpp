// SPDX-License-Identifier: MIT

#include <cntrformats/geojson/parse.h>

#include <algorithm>

#include <cntrformats/errors.h>

namespace formats {

namespace {

using simdjson::error_code;
using simdjson::simdjson_error;
using simdjson::ondemand::json_type;

/// Reading values nested deeper than this would take too much stack.
constexpr int deepestNesting = 200;

const char* reason(error_code error) {
  switch (error) {
    case simdjson::UTF8_ERROR:
      return "text that is not UTF-8";
    case simdjson::UNCLOSED_STRING:
      return "a quote is not closed";
    case simdjson::STRING_ERROR:
      return "a wrong escape in a text";
    case simdjson::UNESCAPED_CHARS:
      return "a control character in a text";
    case simdjson::NUMBER_ERROR:
      return "a number that is malformed or too large";
    case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
      return "a bracket is not closed";
    case simdjson::TRAILING_CONTENT:
      return "something follows the end";
    default:
      return "a comma, a bracket or a value is missing, wrong or too much";
  }
}

/// The place in the text that parsing has reached, such as "line 3, column 17".
std::string placeOf(simdjson::ondemand::document& document, const Passage& passage) {
  const char* location = nullptr;
  std::size_t at = passage.text.size();
  if (document.current_location().get(location) == simdjson::SUCCESS) {
    at = std::min(at, static_cast<std::size_t>(location - passage.text.data()));
  }
  const TextPlace place = passage.placeOf(at);
  return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
}

[[noreturn]] void refuse(const std::string& place, error_code error) {
  throw FeatureError("not JSON: " + place + ": " + reason(error));
}

bool isOf(JsonValue value, json_type type) { return json_type(value.type()) == type; }

}  // namespace

bool parseObject(const Passage& passage, const std::function<void(JsonObject&)>& read) {
  static_assert(passagePadding >= simdjson::SIMDJSON_PADDING);
  thread_local simdjson::ondemand::parser parser;
  const std::string_view text = passage.text;
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos || text[first] != '{') return false;
  simdjson::ondemand::document document;
  const simdjson::padded_string_view padded(text.data(), text.size(), text.size() + passagePadding);
  const error_code error = parser.iterate(padded).get(document);
  if (error != simdjson::SUCCESS) refuse("line " + std::to_string(passage.placeOf(0).line), error);
  try {
    JsonObject object = document.get_object();
    read(object);
    if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
      throw simdjson_error(simdjson::TRAILING_CONTENT);
    }
  } catch (const simdjson_error& failure) {
    refuse(placeOf(document, passage), failure.error());
  }
  return true;
}

void requireObject(std::string text, const TextPlace& place) {
  text.reserve(text.size() + passagePadding);
  parseObject({text, {}, place}, [](JsonObject& object) {
    for (auto field : object) {
      static_cast<void>(std::string_view(field.unescaped_key()));
      passOver(field.value());
    }
  });
}

void passOver(JsonValue value, int depth) {
  if (depth > deepestNesting) throw FeatureError("nested too deeply");
  switch (json_type(value.type())) {
    case json_type::array:
      for (auto element : value.get_array()) passOver(element.value(), depth + 1);
      return;
    case json_type::object:
      for (auto field : value.get_object()) {
        static_cast<void>(std::string_view(field.unescaped_key()));
        passOver(field.value(), depth + 1);
      }
      return;
    case json_type::number:
      static_cast<void>(double(value.get_double()));
      return;
    case json_type::string:
      static_cast<void>(std::string_view(value.get_string()));
      return;
    case json_type::boolean:
      static_cast<void>(bool(value.get_bool()));
      return;
    case json_type::null:
      static_cast<void>(bool(value.is_null()));
      return;
  }
}

std::string_view rawOf(JsonValue value) {
  const std::string_view raw = simdjson::to_json_string(value);
  return raw.substr(0, raw.find_last_not_of(" \t\r\n") + 1);
}

bool isList(JsonValue value) { return isOf(value, json_type::array); }
bool isObject(JsonValue value) { return isOf(value, json_type::object); }

std::string typeOf(JsonObject& object) {
  std::string type;
  JsonValue value;
  const error_code error = object.find_field_unordered("type").get(value);
  if (error == simdjson::SUCCESS) {
    if (isOf(value, json_type::string)) type = std::string_view(value.get_string());
  } else if (error != simdjson::NO_SUCH_FIELD) {
    throw simdjson_error(error);
  }
  static_cast<void>(bool(object.reset()));
  return type;
}

}  // namespace formats
