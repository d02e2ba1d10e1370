// SPDX-License-Identifier: MIT

#include <cntrtable/repairing.h>

#include <string>
#include <variant>
#include <vector>

#include <cntrsets/sets.h>
#include <cntrtable/blocks.h>
#include <cntrtable/refusal.h>

namespace {

/// What a feature fills, or why it fills nothing.
using Repaired = std::variant<std::vector<qcRings>, std::string>;

Repaired repaired(const qcOutlines& outlines, std::size_t feature, qcPolygon::PolyFillMode rule) {
  try {
    return qf_MakeValid(outlines.feature(feature), rule);
  } catch (const qcException& error) {
    return table::messageIn(error);
  }
}

}  // namespace

qcOutlines qf_MakeValid(const qcOutlines& outlines, qcPolygon::PolyFillMode rule,
                        unsigned threads) {
  const auto isAreas = [&](std::size_t i) { return outlines.kind(i) == qcOutlineKind::eAreas; };
  std::vector<Repaired> results(outlines.size());
  table::forBlocks(outlines.size(), threads, [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i)
      if (isAreas(i)) results[i] = repaired(outlines, i, rule);
  });
  qcOutlinesBuilder builder;
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    if (!isAreas(i)) {
      builder.add(outlines, i);
    } else if (const auto* const why = std::get_if<std::string>(&results[i])) {
      builder.failFeature(*why);
    } else {
      builder.addAreas(std::get<std::vector<qcRings>>(results[i]), outlines.label(i));
    }
  }
  return builder.finish();
}
