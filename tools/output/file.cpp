// SPDX-License-Identifier: MIT

#include <tools/output/file.h>

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <ostream>
#include <system_error>

#include <tools/errors.h>

namespace tool {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void throwReason(int reason) {
  throw FileError("cannot be written: " + std::generic_category().message(reason));
}

/// Writes and closes; 0, or the system's error number.
int write(const fs::path& path, const std::string& text) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return errno;
  errno = 0;
  const bool isWhole = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  int reason = isWhole ? 0 : errno;
  if (std::fclose(file) != 0 && reason == 0) reason = errno;
  return reason;
}

bool isDirect(const fs::path& path) {
  std::error_code ignored;
  return fs::exists(path, ignored) && !fs::is_regular_file(path, ignored);
}

void writeBeside(const fs::path& path, const std::string& text) {
  const fs::path beside = path.string() + "." + std::to_string(getpid()) + ".tmp";
  int reason = write(beside, text);
  if (reason == 0 && std::rename(beside.c_str(), path.c_str()) != 0) reason = errno;
  if (reason == 0) return;
  std::error_code ignored;
  fs::remove(beside, ignored);
  throwReason(reason);
}

/// Where a link leads, so that the file there is replaced and the link stays.
fs::path target(const fs::path& path) {
  std::error_code error;
  const fs::path found = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
  return error ? path : found;
}

}  // namespace

void writeFile(const std::string& file, const std::string& text) {
  const fs::path path = target(file);
  if (!isDirect(path)) return writeBeside(path, text);
  if (const int reason = write(path, text); reason != 0) throwReason(reason);
}

void writeFileOr(std::ostream& out, const std::string& file, const std::string& text) {
  if (file == "-") {
    out << text;
  } else {
    writeFile(file, text);
  }
}

}  // namespace tool
