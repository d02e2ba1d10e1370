// SPDX-License-Identifier: MIT
//
// Fuzz target: any bytes as a value of well-known binary. Whatever can be read is written in either
// byte order and read again.

#include <cntrtable/wkb.h>

#include "outlines.h"

namespace {

qcOutlines readValue(std::span<const std::byte> bytes) {
  const qcWkbValue value(bytes);
  return qf_FromWkb({&value, 1});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const qcOutlines outlines = readValue(std::as_bytes(std::span(data, size)));
  fuzz::require(outlines.size() == 1, "a value is a feature");
  fuzz::examine(outlines);
  if (outlines.kind(0) == qcOutlineKind::eNothing) return 0;
  for (const std::endian order : {std::endian::little, std::endian::big}) {
    const qcOutlines again = readValue(qf_ToWkb(outlines, 0, order));
    fuzz::requireSame(again, outlines, "what has been written and read again");
  }
  return 0;
}
