// SPDX-License-Identifier: MIT
//
// A stream of answers, reduced to one number: two builds that agree on it gave the same answers in
// the same order, bit for bit.

#pragma once

#include <concepts>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <cntr/region.h>
#include <platform/core/shapes.h>
#include <platform/core/xform.h>
#include <platform/image/edgelet.h>

namespace golden {

class Answers {
 public:
  Answers() = default;
  /// Also writes every answer to `listing`, one per line.
  explicit Answers(std::ostream& listing) : listing_(&listing) {}

  /// The 64-bit FNV-1a hash of all answers so far.
  std::uint64_t hash() const { return hash_; }
  std::uint64_t count() const { return count_; }

  /// Every NaN is the same answer; the two zeros are different ones.
  void add(double answer);
  template <std::integral Number>
  void add(Number answer) {
    addNumber(static_cast<std::int64_t>(answer));
  }
  void add(std::string_view answer);
  void add(const std::string& answer) { add(std::string_view(answer)); }
  void add(const qcVector<2>& answer) { add(answer.x(), answer.y()); }
  void add(const qcRect& answer) { add(answer.ul(), answer.lr()); }
  void add(const qcCircle& answer) { add(answer.center(), answer.radius()); }
  void add(const qcMatrix<2>& answer);
  void add(const qcXform<2>& answer) { add(answer.matrix(), answer.trans()); }
  void add(const qcEdgelet& answer);
  /// The boundary, the label and the holes.
  void add(const qcRegion& answer);
  template <class Object>
  void add(const qcPtrHandle_const<Object>& answer) {
    add(*answer);
  }
  template <class Answer>
  void add(const std::vector<Answer>& answers) {
    add(answers.size());
    for (const Answer& answer : answers) add(answer);
  }
  template <class First, class Second, class... Others>
  void add(const First& first, const Second& second, const Others&... others) {
    add(first);
    add(second);
    (add(others), ...);
  }

  /// What `question` returns, or what the exception that it throws says.
  template <class Question>
  void ask(Question question) {
    try {
      add(question());
    } catch (const qcException& exception) {
      add(std::string_view(exception.what()));
    }
  }

 private:
  void addNumber(std::int64_t answer);
  void addBytes(const void* bytes, std::size_t size);

  std::uint64_t hash_ = 0xcbf29ce484222325U;
  std::uint64_t count_ = 0;
  std::ostream* listing_ = nullptr;
};

}  // namespace golden
