// SPDX-License-Identifier: MIT

#include <cntrformats/source.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <cntrformats/errors.h>

namespace formats {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

constexpr int noFile = -1;

constexpr std::size_t farthestLook = std::size_t{1} << 20U;

[[noreturn]] void throwReason(int reason) {
  throw FileError("cannot be read: " + std::generic_category().message(reason));
}

}  // namespace

Source::Source(const std::string& file)
    : descriptor_(file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC)),
      buffer_() {
  if (descriptor_ < 0) throwReason(errno);
  std::error_code error;
  isFile_ = file != "-" && std::filesystem::is_regular_file(file, error);
}

Source::Source(Text text) : descriptor_(noFile), text_(text.bytes), buffer_() {}

Source::~Source() {
  if (descriptor_ != STDIN_FILENO && descriptor_ != noFile) close(descriptor_);
}

bool Source::startsWith(std::string_view text) {
  while (ahead_.size() < text.size() && lookFurther()) {
  }
  return std::string_view(ahead_).substr(0, text.size()) == text;
}

char Source::firstCharacter() {
  const std::size_t first = findFirst();
  return first == std::string::npos ? '\0' : ahead_[first];
}

std::string_view Source::firstLine() {
  const std::size_t first = std::min(findFirst(), ahead_.size());
  std::size_t end = ahead_.find('\n', first);
  while (end == std::string::npos && ahead_.size() < farthestLook) {
    const std::size_t searched = ahead_.size();
    if (!lookFurther()) break;
    end = ahead_.find('\n', searched);
  }
  const std::size_t count = end == std::string::npos ? end : end + 1 - first;
  return std::string_view(ahead_).substr(first, count);
}

std::size_t Source::findFirst() {
  for (std::size_t searched = 0;;) {
    const std::size_t first = ahead_.find_first_not_of(" \t\r\n", searched);
    if (first != std::string::npos) return first;
    searched = ahead_.size();
    if (!lookFurther()) return std::string::npos;
  }
}

bool Source::appendTo(TextBuffer& text, std::size_t most) {
  if (gptr() == egptr() && eback() != nullptr && !isAhead()) {
    // Nothing in memory remains to be read.
    show(buffer_.data(), 0);
    ahead_.clear();
    const std::size_t count =
        text.append(std::min(most, mostAtOnce),
                    [this](char* bytes, std::size_t size) { return fill(bytes, size); });
    passed_ += count;
    return count > 0;
  }
  if (sgetc() == traits_type::eof()) return false;
  const std::size_t count = std::min(most, static_cast<std::size_t>(egptr() - gptr()));
  text.append({gptr(), count});
  gbump(static_cast<int>(count));
  return true;
}

std::uint64_t Source::position() const {
  return passed_ + static_cast<std::uint64_t>(gptr() - eback());
}

bool Source::isWaiting() const {
  if (descriptor_ == noFile || gptr() != egptr() || isAhead()) return false;
  if (gunzip_ && gunzip_->hasMore()) return false;
  pollfd question{descriptor_, POLLIN, 0};
  return poll(&question, 1, 0) == 0;
}

void Source::restart() {
  if (lseek(descriptor_, 0, SEEK_SET) < 0) throwReason(errno);
  setg(nullptr, nullptr, nullptr);
  ahead_.clear();
  isBeginning_ = true;
  taken_ = 0;
  passed_ = 0;
}

Source::int_type Source::underflow() {
  if (eback() == nullptr && ahead_.empty()) lookFurther();
  if (isAhead()) {
    show(ahead_.data(), ahead_.size());
    return traits_type::to_int_type(*gptr());
  }
  const std::size_t count = fill(buffer_.data(), buffer_.size());
  show(buffer_.data(), count);
  ahead_ = std::string();
  return count == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

void Source::show(char* bytes, std::size_t count) {
  passed_ = position();
  setg(bytes, bytes, bytes + count);
}

bool Source::lookFurther() {
  const bool isBeginning = isBeginning_;
  const std::size_t count = fill(buffer_.data(), buffer_.size());
  ahead_.append(buffer_.data(), count);
  if (!isBeginning) return count > 0;
  while (ahead_.size() < byteOrderMark.size() && lookFurther()) {
  }
  if (ahead_.starts_with(byteOrderMark)) ahead_.erase(0, byteOrderMark.size());
  return count > 0;
}

std::size_t Source::fill(char* bytes, std::size_t size) {
  if (gunzip_) return gunzip_->read(bytes, size);
  std::size_t count = readFile(bytes, size);
  if (!std::exchange(isBeginning_, false)) return count;
  // A pipe may deliver its first byte alone.
  while (count > 0 && count < gzipSignature.size()) {
    const std::size_t more = readFile(bytes + count, size - count);
    if (more == 0) break;
    count += more;
  }
  std::string first(bytes, count);
  if (!first.starts_with(gzipSignature)) return count;
  gunzip_ = std::make_unique<Gunzip>(
      [this, first = std::move(first)](char* packed, std::size_t most) mutable {
        if (first.empty()) return readFile(packed, most);
        const std::size_t part = first.copy(packed, most);
        first.erase(0, part);
        return part;
      });
  return fill(bytes, size);
}

std::size_t Source::readFile(char* bytes, std::size_t size) {
  if (descriptor_ == noFile) {
    const std::size_t count = text_.copy(bytes, size);
    text_.remove_prefix(count);
    taken_ += count;
    return count;
  }
  for (;;) {
    const ssize_t count = read(descriptor_, bytes, size);
    if (count >= 0) {
      taken_ += static_cast<std::size_t>(count);
      return static_cast<std::size_t>(count);
    }
    if (errno != EINTR) throwReason(errno);
  }
}

}  // namespace formats
