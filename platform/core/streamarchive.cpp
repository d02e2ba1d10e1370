// SPDX-License-Identifier: MIT
//
// qcStreamArchive: the bytes of an archive in a standard stream. They go straight to the stream's
// buffer; the archive is in archive.cpp.

#include <array>
#include <istream>
#include <ostream>

#include <platform/core/archive.h>

namespace {

/// "QCAR", the format, and three bytes that must be 0.
constexpr std::array<unsigned char, 8> fileHeader = {'Q', 'C', 'A', 'R', 1, 0, 0, 0};

/// What `transfer(buffer)` returns; -1 when there is no buffer, or when it throws.
template <class Transfer>
std::streamsize countFrom(std::streambuf* buffer, Transfer transfer) noexcept {
  if (buffer == nullptr) return -1;
  try {
    return transfer(*buffer);
  } catch (...) {
    return -1;
  }
}

/// Adds `state` to that of the stream, without the exception that exceptions() may ask for.
void addState(std::ios& stream, std::ios::iostate state) {
  try {
    stream.setstate(state);
  } catch (const std::ios::failure&) {
  }
}

}  // namespace

qcStreamArchive::qcStreamArchive(std::ostream& out) : qcArchive(Direction::eStoring), out_(&out) {
  if (!out) throw WriteFailed(atPosition(L"the stream has failed before").c_str());
  store(fileHeader.data(), fileHeader.size());
}

qcStreamArchive::qcStreamArchive(std::istream& in) : qcArchive(Direction::eLoading), in_(&in) {
  if (!in) throw Truncated(atPosition(L"the stream has failed before").c_str());
  std::array<unsigned char, 8> header{};
  load(header.data(), header.size());
  if (header != fileHeader) badFormat(L"the input does not start as an archive of format 1");
}

qcStreamArchive::~qcStreamArchive() = default;

void qcStreamArchive::storeBytes(const void* bytes, std::size_t count) {
  const auto length = static_cast<std::streamsize>(count);
  const std::streamsize stored = countFrom(out_->rdbuf(), [&](std::streambuf& buffer) {
    return buffer.sputn(static_cast<const char*>(bytes), length);
  });
  if (stored == length) return;
  addState(*out_, std::ios::badbit);
  throw WriteFailed(atPosition(L"the stream does not take the bytes").c_str());
}

void qcStreamArchive::loadBytes(void* bytes, std::size_t count) {
  const auto length = static_cast<std::streamsize>(count);
  const std::streamsize loaded = countFrom(in_->rdbuf(), [&](std::streambuf& buffer) {
    return buffer.sgetn(static_cast<char*>(bytes), length);
  });
  if (loaded == length) return;
  addState(*in_, loaded < 0 ? std::ios::badbit : std::ios::eofbit | std::ios::failbit);
  throw Truncated(atPosition(L"the input ends too early").c_str());
}

std::size_t qcStreamArchive::bytesAtHand() const {
  if (in_ == nullptr) return 0;
  const std::streamsize atHand =
      countFrom(in_->rdbuf(), [](std::streambuf& buffer) { return buffer.in_avail(); });
  return atHand > 0 ? static_cast<std::size_t>(atHand) : 0;
}
