// SPDX-License-Identifier: MIT

#include <cntrformats/csv/names.h>

#include <charconv>

#include <cntrformats/feature.h>

namespace formats {

namespace {

constexpr std::string_view lineSuffix = "/line";
constexpr std::string_view partWord = "/part ";
constexpr std::string_view holeWord = "/hole ";

constexpr std::size_t mostDigitsOfLabel = 10;

bool isAllDigits(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

/// A whole number of at least 1, without leading zeros.
std::optional<std::size_t> count(std::string_view text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && text.front() != '0' ? std::optional(number) : std::nullopt;
}

/// Removes `word` and the count after it from the end of the text; 0 when it does not end with
/// them.
std::size_t takeCount(std::string_view& text, std::string_view word) {
  const std::size_t begin = text.rfind(word);
  if (begin == std::string_view::npos) return 0;
  const auto number = count(text.substr(begin + word.size()));
  if (!number) return 0;
  text = text.substr(0, begin);
  return *number;
}

}  // namespace

RingName parseRingName(const std::string& text) {
  RingName name;
  std::string_view rest = text;
  name.hole = takeCount(rest, holeWord);
  name.part = takeCount(rest, partWord);
  name.isLine = rest.ends_with(lineSuffix);
  if (name.isLine) rest.remove_suffix(lineSuffix.size());
  name.id = rest;
  return name;
}

std::string toText(const RingName& name) {
  std::string text = name.id;
  if (name.isLine) text += lineSuffix;
  if (name.part > 0) text.append(partWord).append(std::to_string(name.part));
  if (name.hole > 0) text.append(holeWord).append(std::to_string(name.hole));
  return text;
}

FeatureName parseFeatureName(const std::string& text) {
  const bool isNumbered = text.starts_with('#') && isAllDigits(text.substr(1));
  if (text.empty() || isNumbered) return {};
  const bool isShort = isAllDigits(text) && text.size() <= mostDigitsOfLabel;
  if (isShort && std::stoull(text) <= largestLabel && std::to_string(std::stoull(text)) == text) {
    return {std::stoul(text), std::nullopt};
  }
  return {std::nullopt, text};
}

bool follows(const RingName& name, const RingName& before) {
  if (name.id != before.id || name.isLine != before.isLine) return false;
  const bool isNextHole = name.part == before.part && name.hole == before.hole + 1;
  const bool isNextPart = before.part > 0 && name.part == before.part + 1 && name.hole == 0;
  return isNextHole || isNextPart;
}

}  // namespace formats
