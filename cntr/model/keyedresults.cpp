// SPDX-License-Identifier: MIT

#include <cntr/model/keyedresults.h>

#include <algorithm>
#include <array>

namespace cntr::model {

namespace {

std::array<double, 6> numbersOf(const qcXform<2>& xform) noexcept {
  const qcMatrix<2>& m = xform.matrix();
  return {m.element(0, 0), m.element(0, 1),   m.element(1, 0),
          m.element(1, 1), xform.trans().x(), xform.trans().y()};
}

}  // namespace

bool XformKey::isNumber(const qcXform<2>& xform) noexcept {
  const auto numbers = numbersOf(xform);
  return std::none_of(numbers.begin(), numbers.end(), [](double v) { return std::isnan(v); });
}

bool XformKey::operator()(const qcXform<2>& a, const qcXform<2>& b) const noexcept {
  return numbersOf(a) < numbersOf(b);
}

}  // namespace cntr::model
