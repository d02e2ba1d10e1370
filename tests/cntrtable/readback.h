// SPDX-License-Identifier: MIT
//
// Whether features come back from an Arrow column as they went in.

#pragma once

#include <cntrtable/geoarrow.h>
#include <gtest/gtest.h>

#include <span>
#include <vector>

inline std::vector<qcEdgelet> edgeletsOf(const qcOutlines& outlines, std::size_t feature,
                                         std::size_t part, std::size_t ring) {
  const std::span<const qcEdgelet> edgelets = outlines.edgelets(feature, part, ring);
  return {edgelets.begin(), edgelets.end()};
}

/// The same features, with all that they have.
inline void expectSame(const qcOutlines& a, const qcOutlines& b) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a.kind(i), b.kind(i)) << i;
    EXPECT_EQ(a.problem(i), b.problem(i)) << i;
    EXPECT_EQ(a.label(i), b.label(i)) << i;
    EXPECT_EQ(a.feature(i), b.feature(i)) << i;
    for (std::size_t part = 0; part < a.parts(i); ++part)
      for (std::size_t ring = 0; ring < a.rings(i, part); ++ring)
        EXPECT_EQ(edgeletsOf(a, i, part, ring), edgeletsOf(b, i, part, ring)) << i;
  }
}

inline qcOutlines readBack(qcArrowColumn& column) {
  return qf_FromArrow(column.schema.get(), column.array.get());
}
