// SPDX-License-Identifier: MIT

#include <cntrformats/feature.h>

namespace formats {

std::string toText(const Label& label) {
  const auto* const name = std::get_if<std::string>(&label);
  return name != nullptr ? *name : std::to_string(std::get<unsigned long>(label));
}

}  // namespace formats
