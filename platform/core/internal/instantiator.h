// SPDX-License-Identifier: MIT
//
// Internal: how the archive looks up the registered classes. Classes register themselves through
// qc_Instantiator (persistent.h).

#pragma once

#include <string>
#include <string_view>
#include <typeinfo>

#include <platform/core/persistent.h>

/// A class of which archives can create objects.
struct qc_RegisteredClass {
  const std::type_info& type;
  std::string name;
  qcPersistent* (*make)();
  const qc_RegisteredClass* next;

  /// Null when no such class is registered. The latest registration counts.
  static const qc_RegisteredClass* find(const std::type_info& type) noexcept;
  static const qc_RegisteredClass* find(std::string_view name) noexcept;
};
