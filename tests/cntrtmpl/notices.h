// SPDX-License-Identifier: MIT
//
// How many change notices a shape sends.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// Something that can be done to a shape, and the change notices that it sends.
template <class Shape>
struct NoticeCase {
  std::string what;
  std::function<void(Shape&)> action;
  unsigned long notices;
};

/// Fails the test unless a new shape, made of the arguments, sends in each case as many as it
/// should.
template <class Shape, class... Arguments>
void expectNotices(const std::vector<NoticeCase<Shape>>& cases, const Arguments&... arguments) {
  for (const NoticeCase<Shape>& each : cases) {
    Shape shape(arguments...);
    shape.isTracking(true);
    each.action(shape);
    EXPECT_EQ(shape.changes(), each.notices) << each.what;
  }
}
