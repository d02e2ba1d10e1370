// SPDX-License-Identifier: MIT
//
// The JSON type of the formats: members stay in the order of the file, so that what is written back
// looks like what was read.

#pragma once

#include <functional>
#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>

namespace formats {

using Json = nlohmann::ordered_json;

/// Told of every event while a text is parsed, see nlohmann::basic_json::parse: returns false for
/// values that shall not be kept.
using JsonListener = std::function<bool(int depth, Json::parse_event_t event, Json& value)>;

/// Parses a whole text. Throws FileError for what is no JSON, and for what is nested more than 200
/// deep.
Json parseJson(std::istream& text, const JsonListener& listener);
/// The same for a text that holds one feature; throws FeatureError.
Json parseJson(const std::string& text);

/// The value in one line.
std::string compact(const Json& value);
/// The value as it can stand in a message: compact, and cut short where it is long.
std::string excerpt(const Json& value);

/// The member of an object, or null where there is no such member or no object.
const Json& member(const Json& object, const char* name);

}  // namespace formats
