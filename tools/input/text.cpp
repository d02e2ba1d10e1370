// SPDX-License-Identifier: MIT

#include <tools/input/text.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include <tools/errors.h>

namespace tool {

namespace {

[[noreturn]] void throwReason(int reason) {
  throw FileError("cannot be read: " + std::generic_category().message(reason));
}

std::string drain(std::FILE* file) {
  std::string text;
  char buffer[1 << 16];
  for (;;) {
    errno = 0;
    const std::size_t count = std::fread(buffer, 1, sizeof buffer, file);
    text.append(buffer, count);
    if (count == sizeof buffer) continue;
    if (std::ferror(file) != 0) throwReason(errno);
    return text;
  }
}

}  // namespace

std::string readText(const std::string& file) {
  if (file == "-") return drain(stdin);
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> opened(std::fopen(file.c_str(), "rb"),
                                                               &std::fclose);
  if (!opened) throwReason(errno);
  return drain(opened.get());
}

}  // namespace tool
