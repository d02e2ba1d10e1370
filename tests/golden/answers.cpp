// SPDX-License-Identifier: MIT

#include "answers.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>

namespace golden {

void Answers::add(double answer) {
  constexpr std::uint64_t anyNan = 0x7ff8000000000000U;
  const auto bits = std::isnan(answer) ? anyNan : std::bit_cast<std::uint64_t>(answer);
  addBytes(&bits, sizeof bits);
  if (listing_ == nullptr) return;
  // The shortest digits that give back the same double.
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), answer).ptr;
  *listing_ << (std::isnan(answer) ? std::string_view("nan") : std::string_view(text.data(), end))
            << '\n';
}

void Answers::add(std::string_view answer) {
  const auto size = static_cast<std::uint64_t>(answer.size());
  addBytes(&size, sizeof size);
  addBytes(answer.data(), answer.size());
  if (listing_ != nullptr) *listing_ << answer << '\n';
}

void Answers::add(const qcMatrix<2>& answer) {
  add(answer.element(0, 0), answer.element(0, 1), answer.element(1, 0), answer.element(1, 1),
      answer.det());
}

void Answers::add(const qcEdgelet& answer) {
  add(answer.position(), answer.magnitude(), answer.angle().steps());
}

void Answers::add(const qcRegion& answer) { add(answer.points(), answer.label(), answer.holes()); }

void Answers::addNumber(std::int64_t answer) {
  addBytes(&answer, sizeof answer);
  if (listing_ != nullptr) *listing_ << answer << '\n';
}

void Answers::addBytes(const void* bytes, std::size_t size) {
  const auto* const begin = static_cast<const unsigned char*>(bytes);
  for (const unsigned char* byte = begin; byte != begin + size; ++byte) {
    hash_ = (hash_ ^ *byte) * 0x100000001b3U;
  }
  ++count_;
}

}  // namespace golden
