// SPDX-License-Identifier: MIT

#include <cntrformats/gunzip.h>

#include <zlib.h>
#include <array>
#include <new>
#include <utility>

#include <cntrformats/errors.h>

namespace formats {

namespace {

/// The largest window, with a gzip header rather than a zlib header.
constexpr int windowBits = 15 + 16;

}  // namespace

struct Gunzip::State {
  ReadPacked readPacked;
  z_stream stream{};
  std::array<unsigned char, std::size_t{1} << 16U> packed{};
  /// True between the members of a file. There may be several members, but must be at least one.
  bool isBetween = false;

  /// Reads packed bytes if none are left; false when there are no more.
  bool refill() {
    if (stream.avail_in > 0) return true;
    auto* const bytes = static_cast<char*>(static_cast<void*>(packed.data()));
    stream.next_in = packed.data();
    stream.avail_in = static_cast<uInt>(readPacked(bytes, packed.size()));
    return stream.avail_in > 0;
  }
};

Gunzip::Gunzip(ReadPacked readPacked) : state_(std::make_unique<State>()) {
  state_->readPacked = std::move(readPacked);
  if (inflateInit2(&state_->stream, windowBits) != Z_OK) throw std::bad_alloc();
}

Gunzip::~Gunzip() { inflateEnd(&state_->stream); }

std::size_t Gunzip::read(char* buffer, std::size_t size) {
  State& state = *state_;
  z_stream& stream = state.stream;
  stream.next_out = static_cast<unsigned char*>(static_cast<void*>(buffer));
  stream.avail_out = static_cast<uInt>(size);
  while (stream.avail_out == size) {
    // What remains to be unpacked precedes the last packed bytes, which are a checksum.
    if (!state.refill()) {
      if (state.isBetween) return 0;
      throw FileError("cannot be unpacked: the gzip file ends too early");
    }
    if (std::exchange(state.isBetween, false)) inflateReset(&stream);
    const int result = inflate(&stream, Z_NO_FLUSH);
    if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
      throw FileError("cannot be unpacked: the gzip file is damaged");
    }
    state.isBetween = result == Z_STREAM_END;
  }
  return size - stream.avail_out;
}

bool Gunzip::hasMore() const { return state_->stream.avail_in > 0; }

}  // namespace formats
