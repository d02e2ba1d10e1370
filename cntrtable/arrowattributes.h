// SPDX-License-Identifier: MIT
//
// The columns beside the geometry in Arrow tables: label, problem and edge_elements (geoarrow.h).

#pragma once

#include <string>
#include <vector>

#include <cntrtable/arrow.h>
#include <cntrtable/attributes.h>
#include <cntrtable/refusal.h>

namespace table {

/// What `read` returns; a refusal gets the name of the column in front.
template <class Read>
auto inColumn(const std::string& name, Read read) {
  try {
    return read();
  } catch (const qcContourDefs::BadParams& error) {
    refuse(name + ": " + messageIn(error));
  }
}

/// Adds the attributes of the rows of a table to those of earlier rows. Columns that are missing,
/// or of other types, count as empty; `attributes` gets problems only from the column problem.
/// Throws qcContourDefs::BadParams for columns that contradict themselves and for numbers out of
/// range, with their row. REQUIRES: requireArray() took the table.
void appendAttributes(const ArrowSchema& schema, const ArrowArray& table, Attributes& attributes);

/// Adds a column label and, if there are any, problem and edge_elements.
void addAttributeColumns(Attributes&& attributes, std::vector<qcArrowColumn>& columns);

}  // namespace table
