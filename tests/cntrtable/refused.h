// SPDX-License-Identifier: MIT
//
// The messages about refused arguments.

#pragma once

#include <string>

#include <cntr/contourdefs.h>

/// The message of the BadParams that `operation` throws; "" when it throws none.
template <class Operation>
std::string refusalOf(Operation operation) {
  try {
    operation();
  } catch (const qcContourDefs::BadParams& error) {
    const std::wstring message = error.message();
    std::string text;
    for (const wchar_t c : message) text += static_cast<char>(c);
    return text;
  }
  return "";
}
