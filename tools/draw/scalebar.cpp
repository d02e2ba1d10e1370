// SPDX-License-Identifier: MIT

#include <tools/draw/scalebar.h>

#include <cmath>

#include <tools/report/numbers.h>

namespace tool {

ScaleBar scaleBarFor(double longest, const Scale& scale) {
  const double reach = longest * scale.factor;
  const double power = std::pow(10.0, std::floor(std::log10(reach)));
  double length = power;
  for (const double digit : {2.0, 5.0}) {
    if (digit * power <= reach) length = digit * power;
  }
  return {length / scale.factor, shortNumber(length, 6) + " " + scale.unit};
}

}  // namespace tool
