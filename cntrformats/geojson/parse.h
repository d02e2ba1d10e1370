// SPDX-License-Identifier: MIT
//
// JSON text parsed by simdjson, which reads on demand and only forwards: every value must be read
// once, in the order of the text.

#pragma once

#include <simdjson.h>
#include <cstddef>
#include <functional>
#include <string>

#include <cntrformats/passage.h>

namespace formats {

using JsonObject = simdjson::ondemand::object;
using JsonValue = simdjson::ondemand::value;
using JsonList = simdjson::ondemand::array;

/// Calls `read` with the object that the text holds; false, without reading, when it holds none.
/// Throws FeatureError, naming line and column, when the text, as far as it is read, is not JSON.
bool parseObject(const Passage& passage, const std::function<void(JsonObject&)>& read);

/// Throws FeatureError as above when the text is not a JSON object.
void requireObject(std::string text, const TextPlace& place);

/// Skips a value that is not needed. Throws FeatureError when it is nested more than 200 deep.
void passOver(JsonValue value, int depth = 1);

/// The text of the value; skips the value.
std::string_view rawOf(JsonValue value);

bool isList(JsonValue value);
bool isObject(JsonValue value);

/// The member `type`, empty when it is not a string; the object can then be read from its
/// beginning.
std::string typeOf(JsonObject& object);

}  // namespace formats
