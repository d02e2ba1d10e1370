// SPDX-License-Identifier: MIT
//
// The measures of many features: a row for each feature, a column for each measure.

#pragma once

#include <nanobind/nanobind.h>

#include <cstdint>
#include <string>
#include <vector>

#include <cntrtable/outlines.h>
#include <python/src/arrowcapsules.h>

namespace python {

/// Defines cntr.Measured, and what cntr.MEASURES is made from.
void bindMeasured(nanobind::module_& module);

class Measured {
 public:
  explicit Measured(ArrowColumn batch) : batch_(std::move(batch)) {}

  const ArrowColumn& batch() const { return batch_; }
  std::size_t rows() const { return static_cast<std::size_t>(batch_.array().length); }
  std::vector<std::string> names() const;
  /// A column as a numpy array: numbers without a copy if none is missing, else copied with NaN for
  /// missing ones; yes and no, and texts, with None for missing ones. Raises KeyError.
  nanobind::object column(const std::string& name) const;

 private:
  ArrowColumn batch_;
};

/// The measures, "status" and "note" of each feature; for None, the usual measures. Other threads
/// can run Python meanwhile.
Measured measured(const qcOutlines& outlines, nanobind::handle columns, std::int64_t threads);

}  // namespace python
