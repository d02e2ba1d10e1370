// SPDX-License-Identifier: MIT
//
// The messages of the exceptions that shapes throw.

#pragma once

#include <string>

#include <cntr/contourdefs.h>

namespace fixtures {

/// The message of the BadParams that `act` throws.
template <class Act>
std::wstring badParamsOf(Act act) {
  try {
    act();
  } catch (const qcContourDefs::BadParams& error) {
    return error.message();
  }
  return L"no BadParams was thrown";
}

/// The message of the EmptyContour that `act` throws.
template <class Act>
std::wstring emptyContourOf(Act act) {
  try {
    act();
  } catch (const qcContourDefs::EmptyContour& error) {
    return error.message();
  }
  return L"no EmptyContour was thrown";
}

}  // namespace fixtures
