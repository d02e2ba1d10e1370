// SPDX-License-Identifier: MIT
//
// The JSON type of the tool: members stay in the order of the file, so that what is written back
// looks like what was read.

#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

using Json = nlohmann::ordered_json;

/// The value as it can stand in a message: compact, and cut short where it is long.
std::string excerpt(const Json& value);

/// The member of an object, or null where there is no such member or no object.
const Json& member(const Json& object, const char* name);

}  // namespace tool
