// SPDX-License-Identifier: MIT

#include <tools/report/numbers.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace tool {

namespace {

constexpr int columnDigits = 6;
/// Every number in a column keeps at least this many digits, unless it is 0.
constexpr int fewestDigits = 2;
constexpr int longestInteger = 12;
constexpr int mostDecimals = 9;
/// Shapes large enough to have moments have larger values: anything smaller is rounding noise.
constexpr double negligible = 1e-15;
/// Numbers smaller than this fraction of the largest are rounding noise.
constexpr double noise = 1e-12;

/// The decimal exponent of the first digit: 0 for 1 to 9.99.
int exponent(double value) { return static_cast<int>(std::floor(std::log10(value))); }

/// Long enough for every number in fixed notation with the decimals used here.
using Buffer = std::array<char, 512>;

std::string fixed(double value, int decimals) {
  Buffer buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::fixed, decimals);
  const std::string text(buffer.data(), end);
  const bool isZero = text.find_first_not_of("-0.") == std::string::npos;
  return isZero && text.front() == '-' ? text.substr(1) : text;
}

/// A number of decimals that suits the whole column; empty if there is none.
std::optional<int> commonDecimals(const std::vector<double>& values) {
  double largest = 0.0;
  for (const double value : values) largest = std::max(largest, std::abs(value));
  if (largest < negligible) return 0;
  double smallest = largest;
  for (const double value : values) {
    if (std::abs(value) > largest * noise) smallest = std::min(smallest, std::abs(value));
  }
  const int decimals = std::max(0, columnDigits - 1 - exponent(largest));
  const bool isReadable = exponent(largest) < longestInteger && decimals <= mostDecimals &&
                          exponent(smallest) + decimals + 1 >= fewestDigits;
  return isReadable ? std::optional<int>(decimals) : std::nullopt;
}

}  // namespace

std::string shortNumber(double value, int digits) {
  Buffer buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::general, digits);
  return std::string(buffer.data(), end);
}

std::vector<std::string> alignedNumbers(const std::vector<double>& values) {
  const std::optional<int> decimals = commonDecimals(values);
  std::vector<std::string> texts;
  texts.reserve(values.size());
  for (const double value : values) {
    texts.push_back(decimals ? fixed(value, *decimals) : shortNumber(value, columnDigits));
  }
  return texts;
}

}  // namespace tool
