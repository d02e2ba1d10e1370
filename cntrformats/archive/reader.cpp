// SPDX-License-Identifier: MIT
//
// The library's archive: one list of handles to contours, regions and region sets, those with edge
// elements included.
//
// What nearly all archives hold is handed over as bytes, to be decoded on any thread. From the
// first shape on that is anything else, such as one that shares a hole with an earlier shape, the
// library loads the archive: all of it, because an object may refer to any before it. What cannot
// be read again, such as a pipe, is kept for that.

#include <cstdint>
#include <exception>
#include <istream>
#include <memory>
#include <utility>
#include <vector>

#include <cntrformats/archive/archive.h>
#include <cntrformats/archive/objects.h>
#include <cntrformats/archive/replay.h>
#include <cntrformats/archive/storedshapes.h>
#include <cntrformats/errors.h>
#include <cntrformats/passages.h>
#include <platform/core/archive.h>

namespace formats {

namespace {

/// The number of bytes read before shapes are looked for: the rest of an incomplete shape is copied
/// to the next bytes.
constexpr std::size_t readBeforeLooking = std::size_t{1} << 19U;

constexpr const char* goesOn = "goes on behind its list of shapes";

class LoadedShape : public Undecoded {
 public:
  explicit LoadedShape(Feature&& feature) : feature_(std::move(feature)) {}
  Feature decode(std::size_t /*index*/) override { return std::move(feature_); }

 private:
  Feature feature_;
};

/// Hands over the shapes after the first `known` ones. They are decoded while their archive lives,
/// on its thread.
void loadShapes(qcArchive& archive, std::size_t known, const Replay& bytes, Sink& sink) {
  const std::size_t count = qf_TransferListHead(archive, 0);
  for (std::size_t number = 1; number <= count; ++number) {
    const std::uint64_t begin = bytes.position();
    const qcPersistent* shape = archive.transferShared(nullptr);
    if (number <= known) continue;
    Feature feature = decoded(number, [shape](Feature& made) { readObject(shape, made); });
    sink.take(
        {{number}, bytes.position() - begin, std::make_shared<LoadedShape>(std::move(feature))});
  }
}

void loadArchive(Replay& bytes, std::size_t known, Sink& sink) {
  std::istream stream(&bytes);
  try {
    qcStreamArchive archive(stream);
    loadShapes(archive, known, bytes, sink);
  } catch (const qcException& error) {
    if (bytes.failure()) std::rethrow_exception(bytes.failure());
    throw FileError(std::string("not an archive of shapes: ") + error.what());
  }
  if (bytes.sgetc() != std::char_traits<char>::eof()) throw FileError(goesOn);
}

/// Finds the shapes of an archive in its bytes.
class ArchiveReader {
 public:
  ArchiveReader(Source& source, Sink& sink)
      : source_(source), sink_(sink), shapes_(sink, readStoredShape, false) {}

  void read() {
    if (findHead() && findShapes()) {
      if (at_ < text_.text().size() || more()) throw FileError(goesOn);
    } else {
      const std::size_t size = text_.text().size();
      keep(std::make_shared<const TextBuffer>(std::move(text_)), size);
      if (source_.isRepeatable()) source_.restart();
      Replay bytes(std::move(kept_), source_);
      loadArchive(bytes, number_, sink_);
    }
  }

 private:
  // These return false if the library has to load the archive.

  bool findHead() {
    while (text_.text().size() < archiveHeadSize) {
      if (!more()) return false;
    }
    at_ = archiveHeadSize;
    return readArchiveHead(text_.text(), count_) == Found::eWhole;
  }

  bool findShapes() {
    while (number_ < count_) {
      const Found found = ends_.find(text_.text().substr(at_));
      if (found == Found::eWhole) {
        shapes_.add({++number_}, at_, at_ + ends_.size());
        at_ += ends_.size();
      } else {
        handOver();
        if (found == Found::eOther || !more()) return false;
      }
    }
    handOver();
    return true;
  }

  /// Hands over the shapes that have been found since the last call. What follows them remains.
  void handOver() {
    if (number_ == numberHandedOver_) return;
    const std::string_view following = text_.text().substr(at_);
    TextBuffer rest(following.size() + readBeforeLooking + Source::mostAtOnce);
    rest.append(following);
    keep(shapes_.handOver(std::exchange(text_, std::move(rest)), {}), at_);
    numberHandedOver_ = number_;
    at_ = 0;
  }

  /// Keeps what the library would have to load.
  void keep(std::shared_ptr<const TextBuffer> text, std::size_t size) {
    if (!source_.isRepeatable()) kept_.push_back({std::move(text), size});
  }

  /// Reads a block, or as much of it as is available; false at the end.
  bool more() {
    const std::size_t before = text_.text().size();
    const std::size_t enough = before + readBeforeLooking;
    if (source_.isWaiting()) shapes_.pause();
    try {
      while (source_.appendTo(text_, Source::mostAtOnce)) {
        if (text_.text().size() >= enough || source_.isWaiting()) break;
      }
    } catch (const FileError&) {
      if (text_.text().size() == before) throw;
    }
    return text_.text().size() > before;
  }

  Source& source_;
  Sink& sink_;
  Passages shapes_;
  ShapeEnds ends_;
  /// What has been read but not handed over, and how much of it has been passed.
  TextBuffer text_;
  std::size_t at_ = 0;
  /// Empty if the source can be read again.
  std::vector<Replay::Text> kept_;
  std::uint32_t count_ = 0;
  std::size_t number_ = 0;
  std::size_t numberHandedOver_ = 0;
};

}  // namespace

void readArchive(Source& source, Keep /*keep*/, Sink& sink) { ArchiveReader(source, sink).read(); }

}  // namespace formats
