// SPDX-License-Identifier: MIT

#include <nanobind/nanobind.h>
#include <python/src/texts.h>

namespace python {

qcPolygon::PolyFillMode ruleNamed(const std::string& rule) {
  if (rule == "nonzero") return qcPolygon::eNonZero;
  if (rule == "evenodd") return qcPolygon::eEvenOdd;
  const std::string message = "rule must be 'nonzero' or 'evenodd', not '" + rule + "'";
  throw nanobind::value_error(message.c_str());
}

std::string counted(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

}  // namespace python
