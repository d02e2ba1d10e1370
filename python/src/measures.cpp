// SPDX-License-Identifier: MIT

#include <python/src/measures.h>

#include <limits>

#include <cntrtable/measures.h>

namespace python {

table::Facts factsOf(const Shape& shape, table::Needs needs) {
  shape.requireMeasurable();
  const std::vector<qcRings> rings = shape.rings();
  return table::factsOf({rings, shape.isClosed()}, needs, table::Filling::eMeasured);
}

std::vector<double> answersOf(const table::Facts& facts, std::initializer_list<const char*> names) {
  std::vector<double> answers;
  for (const char* const name : names) {
    const table::Value value = table::measureNamed(name)->answer(facts);
    const double* const number = std::get_if<double>(&value);
    answers.push_back(number != nullptr ? *number : std::numeric_limits<double>::quiet_NaN());
  }
  return answers;
}

std::vector<double> measuresOf(const Shape& shape, std::initializer_list<const char*> names) {
  const nanobind::gil_scoped_release released;
  table::Needs needs = table::eCounts;
  for (const char* const name : names) needs |= table::measureNamed(name)->needs;
  return answersOf(factsOf(shape, needs), names);
}

}  // namespace python
