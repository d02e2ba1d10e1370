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

}  // namespace

qcStreamArchive::qcStreamArchive(std::ostream& out) : qcArchive(Direction::eStoring), out_(&out) {
  store(fileHeader.data(), fileHeader.size());
}

qcStreamArchive::qcStreamArchive(std::istream& in) : qcArchive(Direction::eLoading), in_(&in) {
  std::array<unsigned char, 8> header{};
  load(header.data(), header.size());
  if (header != fileHeader) badFormat(L"the input does not start as an archive of format 1");
}

qcStreamArchive::~qcStreamArchive() = default;

void qcStreamArchive::storeBytes(const void* bytes, std::size_t count) {
  const auto length = static_cast<std::streamsize>(count);
  std::streambuf* const buffer = out_->rdbuf();
  if (buffer == nullptr || buffer->sputn(static_cast<const char*>(bytes), length) != length) {
    throw WriteFailed(atPosition(L"the stream does not take the bytes").c_str());
  }
}

void qcStreamArchive::loadBytes(void* bytes, std::size_t count) {
  const auto length = static_cast<std::streamsize>(count);
  std::streambuf* const buffer = in_->rdbuf();
  if (buffer == nullptr || buffer->sgetn(static_cast<char*>(bytes), length) != length) {
    throw Truncated(atPosition(L"the input ends too early").c_str());
  }
}

std::size_t qcStreamArchive::bytesAtHand() const {
  std::streambuf* const buffer = in_ == nullptr ? nullptr : in_->rdbuf();
  const std::streamsize atHand = buffer == nullptr ? 0 : buffer->in_avail();
  return atHand > 0 ? static_cast<std::size_t>(atHand) : 0;
}
