// SPDX-License-Identifier: MIT
//
// Asks libcntrtable for the areas of two squares, one of them read from well-known binary; ends
// with 0 when both are right.

#include <cstddef>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include <cntrtable/measuring.h>
#include <cntrtable/wkb.h>

int main() {
  qcOutlinesBuilder builder;
  builder.addAreas({{{{0, 0}, {4, 0}, {4, 4}, {0, 4}}, {}}});
  const std::vector<std::byte> written = qf_ToWkb(builder.finish(), 0);
  builder.add(qf_FromWkb(std::vector<qcWkbValue>{std::span<const std::byte>(written)}), 0);
  builder.addAreas({{{{2, 2}, {5, 2}, {5, 5}, {2, 5}}, {}}});
  const std::vector<std::string> columns{"area"};
  const qcArrowColumn batch = qf_Measure(builder.finish(), columns, 2);
  const auto* const areas = static_cast<const double*>(batch.array->children[0]->buffers[1]);
  return batch.array->length == 2 && areas[0] == 16.0 && areas[1] == 9.0 ? EXIT_SUCCESS
                                                                         : EXIT_FAILURE;
}
