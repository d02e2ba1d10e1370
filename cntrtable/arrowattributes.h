// SPDX-License-Identifier: MIT
//
// The columns that stand beside the geometry in tables of Arrow: label, problem and edge_elements
// (geoarrow.h).

#pragma once

#include <string>
#include <vector>

#include <cntrtable/arrow.h>
#include <cntrtable/attributes.h>
#include <cntrtable/refusal.h>

namespace table {

/// What `read` gives; a refusal names the column first.
template <class Read>
auto inColumn(const std::string& name, Read read) {
  try {
    return read();
  } catch (const qcContourDefs::BadParams& error) {
    refuse(name + ": " + messageIn(error));
  }
}

/// Adds the attributes of the rows of a table to those of the rows before. Columns that are not
/// there, or whose values cannot be any, count as empty ones; `attributes` has no problems of
/// features that are not in the column problem. Throws qcContourDefs::BadParams for columns that
/// contradict themselves and for numbers out of range, with their row. REQUIRES: requireArray()
/// took the table.
void appendAttributes(const ArrowSchema& schema, const ArrowArray& table, Attributes& attributes);

/// Adds a column label, and where there are any problem and edge_elements.
void addAttributeColumns(Attributes&& attributes, std::vector<qcArrowColumn>& columns);

}  // namespace table
