// SPDX-License-Identifier: MIT
//
// This library's answers for outlines with holes, libcntrsets.

#include <bench/peers/work.h>

#include <cntrsets/inscribed.h>

namespace peers {

namespace {

const bool isRegistered = [] {
  askOnce("inscribedCircle", "cntr", largerShapes, [](const Work& given) {
    return std::pair(&setNothing, [feature = std::vector<qcRings>{{given.outline, {}}}] {
      return qf_InscribedCircle(feature, inscribedTolerance).radius();
    });
  });
  askOnce("inscribedCircle", "cntr (known to be simple)", largerShapes, [](const Work& given) {
    return std::pair(&setNothing, [feature = std::vector<qcRings>{{given.outline, {}}}] {
      return qf_InscribedCircle(feature, qcRingContact::eSimple, inscribedTolerance).radius();
    });
  });
  return true;
}();

}  // namespace

}  // namespace peers
