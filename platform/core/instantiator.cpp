// SPDX-License-Identifier: MIT
//
// The registry of archivable classes and their names. It is a list that only ever grows at its
// head, so that libraries may be loaded while archives are in use, without a lock.

#include <platform/core/internal/instantiator.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <memory>

#if __has_include(<cxxabi.h>)
#include <cxxabi.h>
#endif

namespace {

constinit std::atomic<const qc_RegisteredClass*> newestClass{nullptr};

/// The compiler's own name of a class in readable form.
std::string readableName(const std::type_info& type) {
#if __has_include(<cxxabi.h>)
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
  if (name != nullptr) return name.get();
#endif
  return type.name();
}

bool isIdentifierCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// The length of the keyword ("class " and the like) that some compilers put before every name, at
/// the start of `text`.
std::size_t keywordLength(std::string_view text) {
  static constexpr std::array<std::string_view, 4> keywords = {"class ", "struct ", "union ",
                                                               "enum "};
  for (const std::string_view keyword : keywords) {
    if (text.starts_with(keyword)) return keyword.size();
  }
  return 0;
}

}  // namespace

std::string qf_ClassName(const std::type_info& type) {
  const std::string readable = readableName(type);
  std::string name;
  for (std::string_view rest = readable; !rest.empty();) {
    const bool atWord = name.empty() || !isIdentifierCharacter(name.back());
    const std::size_t skipped = atWord ? keywordLength(rest) : 0;
    rest.remove_prefix(skipped);
    if (skipped != 0) continue;
    if (rest.front() != ' ') name += rest.front();
    rest.remove_prefix(1);
  }
  return name;
}

qc_Instantiator::qc_Instantiator(const std::type_info& type, qcPersistent* (*make)()) {
  auto added = std::make_unique<qc_RegisteredClass>(
      qc_RegisteredClass{type, qf_ClassName(type), make, newestClass.load()});
  while (!newestClass.compare_exchange_weak(added->next, added.get())) {
  }
  static_cast<void>(added.release());
}

const qc_RegisteredClass* qc_RegisteredClass::find(const std::type_info& type) noexcept {
  const qc_RegisteredClass* found = newestClass.load();
  while (found != nullptr && found->type != type) found = found->next;
  return found;
}

const qc_RegisteredClass* qc_RegisteredClass::find(std::string_view name) noexcept {
  const qc_RegisteredClass* found = newestClass.load();
  while (found != nullptr && found->name != name) found = found->next;
  return found;
}
