// SPDX-License-Identifier: MIT

#include <tools/commands/numberlist.h>

#include <charconv>
#include <cmath>
#include <system_error>

namespace tool {

std::optional<std::vector<double>> parseNumbers(const std::string& text, std::size_t count) {
  std::vector<double> numbers;
  const char* at = text.data();
  const char* const end = at + text.size();
  for (;;) {
    double number = 0.0;
    const auto [rest, error] = std::from_chars(at, end, number);
    if (error != std::errc() || !std::isfinite(number)) return std::nullopt;
    numbers.push_back(number);
    if (rest == end) break;
    if (*rest != ',') return std::nullopt;
    at = rest + 1;
  }
  if (numbers.size() != count) return std::nullopt;
  return numbers;
}

std::string refusalOfNumber(const std::string& text) {
  return parseNumbers(text, 1) ? "" : "needs a number, not " + text;
}

std::string refusalOfPositive(const std::string& text) {
  const auto number = parseNumbers(text, 1);
  return number && number->front() > 0.0 ? "" : "needs a positive number, not " + text;
}

std::string refusalOfNotNegative(const std::string& text) {
  const auto number = parseNumbers(text, 1);
  return number && number->front() >= 0.0 ? "" : "needs a number that is not negative, not " + text;
}

}  // namespace tool
