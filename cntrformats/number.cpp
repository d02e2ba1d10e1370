// SPDX-License-Identifier: MIT

#include <cntrformats/number.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <system_error>

#include <cntrformats/errors.h>

namespace formats {

namespace {

/// Whole numbers of up to this many digits are exact as doubles, and so are powers of ten up to
/// this exponent: their quotient is rounded only once.
constexpr int mostDigits = 15;
constexpr std::array<double, mostDigits + 1> powersOfTen{
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Takes the leading digits from the text.
const char* takeDigits(const char* first, const char* last, std::uint64_t& number) noexcept {
  for (; first != last; ++first) {
    const unsigned digit = static_cast<unsigned char>(*first) - static_cast<unsigned>('0');
    if (digit > 9U) break;
    number = 10U * number + digit;
  }
  return first;
}

}  // namespace

std::from_chars_result readNumber(const char* first, const char* last, double& value) noexcept {
  const bool isNegative = first != last && *first == '-';
  const char* const begin = first + (isNegative ? 1 : 0);
  std::uint64_t digits = 0;
  const char* end = takeDigits(begin, last, digits);
  std::ptrdiff_t count = end - begin;
  std::ptrdiff_t decimals = 0;
  if (count > 0 && end != last && *end == '.') {
    const char* const point = end;
    end = takeDigits(point + 1, last, digits);
    decimals = end - point - 1;
    count += decimals;
  }
  const bool hasExponent = end != last && (*end == 'e' || *end == 'E');
  if (count == 0 || count > mostDigits || hasExponent) return std::from_chars(first, last, value);
  const double size = static_cast<double>(digits) / powersOfTen[static_cast<std::size_t>(decimals)];
  value = isNegative ? -size : size;
  return {end, std::errc()};
}

double finiteNumber(std::string_view text) {
  const bool hasPlus = text.starts_with('+') && !text.starts_with("+-");
  const std::string_view digits = text.substr(hasPlus ? 1 : 0);
  double number = 0.0;
  const auto [end, error] = readNumber(digits.data(), digits.data() + digits.size(), number);
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
