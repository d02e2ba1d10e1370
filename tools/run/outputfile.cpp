// SPDX-License-Identifier: MIT

#include <tools/run/outputfile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <ostream>
#include <system_error>

#include <cntrformats/errors.h>
#include <tools/run/descriptorbuffer.h>
#include <tools/run/temporary.h>

namespace tool {

using namespace formats;

namespace {

namespace fs = std::filesystem;

constexpr mode_t anyoneMayReadAndWrite = 0666;

[[noreturn]] void throwReason(int reason) {
  throw FileError("cannot be written: " + std::generic_category().message(reason));
}

/// Follows links, so that the file itself is replaced and the link stays.
fs::path target(const fs::path& path) {
  std::error_code error;
  const fs::path found = fs::is_symlink(path, error) ? fs::weakly_canonical(path, error) : path;
  return error ? path : found;
}

/// The system's names for open files must not be replaced by renaming, whatever they lead to.
bool isSystemName(const fs::path& path) {
  const std::string name = path.lexically_normal().string();
  return name.starts_with("/dev/") || name.starts_with("/proc/");
}

bool isDirect(const std::string& file) {
  std::error_code ignored;
  const fs::file_status status = fs::status(file, ignored);
  if (fs::is_block_file(status)) throw FileError("cannot be written: is a block device");
  return isSystemName(file) || (fs::exists(status) && !fs::is_regular_file(status));
}

int openDirectly(const std::string& file) {
  return ::open(file.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
}

int openNew(const std::string& file) {
  return ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, anyoneMayReadAndWrite);
}

}  // namespace

class OutputFile::Implementation {
 public:
  explicit Implementation(const std::string& file)
      : path_(isDirect(file) ? fs::path(file) : target(file)),
        beside_(isDirect(file) ? "" : path_.string() + "." + std::to_string(getpid()) + ".tmp"),
        buffer_(opened()),
        stream_(&buffer_) {}
  ~Implementation() { removeBeside(); }
  Implementation(const Implementation&) = delete;
  Implementation& operator=(const Implementation&) = delete;

  std::ostream& stream() { return stream_; }

  void complete() {
    int reason = buffer_.finish();
    if (reason == 0 && !beside_.empty()) {
      keepMode();
      if (std::rename(beside_.c_str(), path_.c_str()) != 0) reason = errno;
    }
    if (reason != 0) throwReason(reason);
    beside_.clear();
    forgetTemporary();
  }

 private:
  int opened() {
    if (!beside_.empty()) rememberTemporary(beside_);
    const int descriptor = beside_.empty() ? openDirectly(path_) : openNew(beside_);
    if (descriptor >= 0) return descriptor;
    const int reason = errno;
    forgetTemporary();
    throwReason(reason);
  }

  /// A file that replaces another one keeps its permissions.
  void keepMode() {
    struct stat old {};
    if (stat(path_.c_str(), &old) == 0) chmod(beside_.c_str(), old.st_mode);
  }

  void removeBeside() noexcept {
    if (beside_.empty()) return;
    ::unlink(beside_.c_str());
    forgetTemporary();
  }

  fs::path path_;
  /// The temporary file; empty when the file is written directly or has been completed.
  std::string beside_;
  DescriptorBuffer buffer_;
  std::ostream stream_;
};

OutputFile::OutputFile(const std::string& file)
    : implementation_(std::make_unique<Implementation>(file)) {}
OutputFile::~OutputFile() = default;
std::ostream& OutputFile::stream() { return implementation_->stream(); }
void OutputFile::complete() { implementation_->complete(); }

Output::Output(std::ostream& standardOutput, const std::string& file)
    : standardOutput_(standardOutput) {
  if (file != "-") file_ = std::make_unique<OutputFile>(file);
}

std::ostream& Output::stream() { return file_ ? file_->stream() : standardOutput_; }

void Output::complete() {
  if (file_) file_->complete();
}

void writeFileOr(std::ostream& out, const std::string& file, const std::string& text) {
  Output output(out, file);
  output.stream() << text;
  output.complete();
}

}  // namespace tool
