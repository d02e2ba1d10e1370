// SPDX-License-Identifier: MIT

#include <cntrformats/number.h>

#include <array>
#include <charconv>
#include <cmath>

#include <cntrformats/errors.h>

namespace formats {

double finiteNumber(std::string_view text) {
  const bool hasPlus = text.starts_with('+') && !text.starts_with("+-");
  const std::string_view digits = text.substr(hasPlus ? 1 : 0);
  double number = 0.0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool isWhole = end == digits.data() + digits.size();
  if (error == std::errc::result_out_of_range && isWhole) {
    throw FeatureError("'" + std::string(text) + "' is too large or too small a number");
  }
  if (error != std::errc() || !isWhole || !std::isfinite(number)) {
    throw FeatureError("'" + std::string(text) + "' is not a finite number");
  }
  return number;
}

std::string allDigits(double value) {
  std::array<char, 32> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), end};
}

}  // namespace formats
