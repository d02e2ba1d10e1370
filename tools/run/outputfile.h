// SPDX-License-Identifier: MIT
//
// Files that are written whole or not at all.

#pragma once

#include <iosfwd>
#include <memory>
#include <string>

namespace tool {

/// A file that appears, or replaces an older one, only when it is complete: it is written under
/// another name in the same directory and renamed. Nothing is left of a file that is not completed;
/// signals that end the program remove it, too. Anything but a regular file, such as a pipe or a
/// device, is written to directly; block devices are refused.
class OutputFile {
 public:
  /// Throws FileError with the system's reason, like complete().
  explicit OutputFile(const std::string& file);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Fails when the system does not accept the bytes; complete() throws the reason.
  std::ostream& stream();
  /// To be called once, after the last byte.
  void complete();

 private:
  class Implementation;
  std::unique_ptr<Implementation> implementation_;
};

/// A file, or the stream that "-" stands for.
class Output {
 public:
  /// Throws FileError like OutputFile.
  Output(std::ostream& standardOutput, const std::string& file);

  std::ostream& stream();
  void complete();

 private:
  std::ostream& standardOutput_;
  std::unique_ptr<OutputFile> file_;
};

/// Writes a whole file, to `out` when `file` is "-". Throws FileError.
void writeFileOr(std::ostream& out, const std::string& file, const std::string& text);

}  // namespace tool
