// SPDX-License-Identifier: MIT
//
// Whether an array is released, and how often.

#pragma once

#include <cntrtable/arrow.h>

#include <utility>

/// An array that counts how often it is released.
class CountedArray {
 public:
  explicit CountedArray(qcArrowArray&& array) : inner_(std::move(array)) {
    array_ = *inner_;
    array_.private_data = this;
    array_.release = [](ArrowArray* released) {
      ++static_cast<CountedArray*>(released->private_data)->releases_;
      released->release = nullptr;
    };
  }
  CountedArray(const CountedArray&) = delete;
  CountedArray& operator=(const CountedArray&) = delete;

  ArrowArray* get() { return &array_; }
  int releases() const { return releases_; }

 private:
  qcArrowArray inner_;
  ArrowArray array_{};
  int releases_ = 0;
};
