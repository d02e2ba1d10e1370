// SPDX-License-Identifier: MIT
//
// Fuzz target: ragged arrays with any offsets. Whatever is not refused must come back from ragged
// arrays made from it.

#include <cntr/contourdefs.h>

#include "input.h"
#include "outlines.h"

namespace {

constexpr std::size_t mostOffsets = 12;

/// Small offsets that rarely decrease, or any offsets.
std::vector<std::int64_t> drawOffsets(fuzz::Input& input) {
  std::vector<std::int64_t> offsets(input.below(mostOffsets));
  std::int64_t last = 0;
  for (std::int64_t& offset : offsets) {
    const std::size_t step = input.below(16);
    if (step == 15) {
      offset = static_cast<std::int64_t>(input.bits(8));
    } else {
      offset = last + static_cast<std::int64_t>(step) - (step == 14 ? 20 : 0);
      last = offset;
    }
  }
  return offsets;
}

std::vector<double> drawCoordinates(fuzz::Input& input) {
  std::vector<double> coordinates(input.below(100));
  for (double& coordinate : coordinates) coordinate = static_cast<double>(input.below(5));
  return coordinates;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input({data, size});
  qcRaggedOutlines arrays;
  arrays.kind = input.flag() ? qcOutlineKind::eAreas : qcOutlineKind::eLines;
  const std::vector<std::int64_t> rings = drawOffsets(input);
  const std::vector<std::int64_t> parts = drawOffsets(input);
  const std::vector<std::int64_t> features = drawOffsets(input);
  const std::vector<double> coordinates = drawCoordinates(input);
  const std::vector<qcEdgelet> edgelets(input.flag() ? coordinates.size() / 2 : 0);
  arrays.rings = rings;
  arrays.parts = parts;
  arrays.features = features;
  arrays.coordinates = coordinates;
  arrays.edgelets = edgelets;
  try {
    const qcOutlines outlines = qcOutlines::fromRagged(arrays);
    fuzz::examine(outlines);
    const qcRaggedArrays back = outlines.toRagged();
    arrays.rings = back.rings;
    arrays.parts = arrays.kind == qcOutlineKind::eAreas ? std::span<const std::int64_t>(back.parts)
                                                        : std::span<const std::int64_t>();
    arrays.features = back.features;
    arrays.coordinates = back.coordinates;
    arrays.edgelets = back.edgelets;
    fuzz::requireSame(qcOutlines::fromRagged(arrays), outlines, "ragged arrays there and back");
  } catch (const qcContourDefs::BadParams&) {
  }
  return 0;
}
