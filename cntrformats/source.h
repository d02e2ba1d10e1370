// SPDX-License-Identifier: MIT
//
// Files and standard input as streams that can be inspected before they are read.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>

#include <cntrformats/gunzip.h>
#include <cntrformats/textbuffer.h>

namespace formats {

/// Starts each record of a GeoJSON text sequence.
inline constexpr char recordSeparator = '\x1e';

/// A text in memory, to be read as if it were a file.
struct Text {
  std::string_view bytes;
};

/// The bytes of a file, "-" for standard input, or of a text, without a UTF-8 byte order mark; gzip
/// files are unpacked. Reading throws FileError with the system's reason.
class Source : public std::streambuf {
 public:
  /// The largest number of bytes read at once.
  static constexpr std::size_t mostAtOnce = std::size_t{1} << 16U;

  explicit Source(const std::string& file);
  /// The text is not copied.
  explicit Source(Text text);
  ~Source() override;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  // These inspect what has not been read yet and consume nothing. Call them before reading.

  bool startsWith(std::string_view text);
  /// The first character that is not blank; 0 when there is none.
  char firstCharacter();
  /// The first line that is not blank, from its first character that is not blank to its line feed,
  /// which is included if there is one; only the beginning of a line that does not end within a
  /// megabyte.
  std::string_view firstLine();

  /// Appends the bytes that are available to `text`, at most `most` and mostAtOnce; waits for the
  /// first of them. False at the end.
  bool appendTo(TextBuffer& text, std::size_t most);
  /// How many bytes have been read.
  std::uint64_t position() const;
  /// How many bytes of the file that took, including those read ahead; packed bytes if it is
  /// packed.
  std::uint64_t taken() const noexcept { return taken_; }
  /// True when the next byte has not arrived yet.
  bool isWaiting() const;

  /// Whether what has been read can be read again: true for a regular file that is not packed. The
  /// source must have been inspected or read from.
  bool isRepeatable() const noexcept { return isFile_ && !gunzip_; }
  /// Begins again with the first byte. REQUIRES: isRepeatable().
  void restart();

 protected:
  int_type underflow() override;

 private:
  /// True when bytes have been inspected of which none has been read.
  bool isAhead() const { return !ahead_.empty() && eback() != ahead_.data(); }
  /// The position in `ahead_` of the first character that is not blank.
  std::size_t findFirst();
  /// Reads more into `ahead_`; false at the end.
  bool lookFurther();
  /// Reads up to `size` bytes of the contents of the file, unpacked; 0 at the end.
  std::size_t fill(char* bytes, std::size_t size);
  std::size_t readFile(char* bytes, std::size_t size);
  void show(char* bytes, std::size_t count);

  /// noFile for a text.
  int descriptor_;
  /// Neither standard input nor a pipe, a device or a text.
  bool isFile_ = false;
  /// What has not been read of a text.
  std::string_view text_;
  bool isBeginning_ = true;
  /// Null if the file is not packed.
  std::unique_ptr<Gunzip> gunzip_;
  std::array<char, mostAtOnce> buffer_;
  /// Bytes that have been inspected but not read.
  std::string ahead_;
  std::uint64_t taken_ = 0;
  /// The number of bytes read before those in the buffer.
  std::uint64_t passed_ = 0;
};

}  // namespace formats
