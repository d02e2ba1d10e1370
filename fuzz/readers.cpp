// SPDX-License-Identifier: MIT
//
// Fuzz target: a file of any bytes in each format that the program reads. Whatever can be read is
// measured, written in another format and read again.
//
// The input is the format (one number more than there are formats: by content), the format to
// write, and the file.

#include <sys/mman.h>
#include <unistd.h>

#include <sstream>
#include <string>

#include <cntrformats/table/input.h>
#include <cntrtable/measures.h>

#include "check.h"
#include "input.h"

namespace {

using namespace formats;

/// A file that exists only in memory.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view bytes) : descriptor_(memfd_create("input", 0)) {
    fuzz::require(descriptor_ >= 0, "a file in memory can be made");
    const auto written = write(descriptor_, bytes.data(), bytes.size());
    fuzz::require(written == static_cast<ssize_t>(bytes.size()), "a file in memory takes bytes");
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(descriptor_); }

  /// A file opened by this name is read from its beginning.
  std::string name() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

void check(const Feature& feature) {
  const Geometry& geometry = feature.geometry;
  fuzz::require(!geometry.parts.empty(), "a feature has a part");
  for (const qcRings& part : geometry.parts) {
    fuzz::require(geometry.closed || part.holes.empty(), "lines have no holes");
  }
  fuzz::require(geometry.edgelets.empty() || geometry.edgelets.size() == geometry.parts.size(),
                "there is a list of edge elements for each part, or none at all");
  for (std::size_t k = 0; k < geometry.edgelets.size(); ++k) {
    const std::size_t count = geometry.edgelets[k].size();
    fuzz::require(count == 0 || count == geometry.parts[k].outline.size(),
                  "there is an edge element for each vertex or none");
  }
}

void measure(const Feature& feature) {
  const table::Facts facts = table::factsOf({feature.geometry.parts, feature.geometry.closed},
                                            ~table::Needs{}, table::Filling::eMeasured);
  for (const table::Measure& measure : table::allMeasures())
    static_cast<void>(measure.answer(facts));
}

/// Looks at each feature, and writes it when there is a writer.
class Examiner : public Sink {
 public:
  explicit Examiner(FeatureWriter* writer) : writer_(writer) {}

  void take(Record record) override {
    try {
      Feature feature = record.decode();
      if (!feature.problem.empty()) return;
      check(feature);
      measure(feature);
      if (writer_ == nullptr) return;
      writer_->write(writer_->prepare(std::move(feature), false));
      ++written_;
    } catch (const FeatureError&) {
    }
  }

  void takeMembers(Members&& members) override {
    if (writer_ != nullptr) writer_->takeMembers(std::move(members));
  }

  std::size_t written() const { return written_; }

 private:
  FeatureWriter* writer_;
  std::size_t written_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input({data, size});
  const auto table = allFormats();
  const std::size_t number = input.below(table.size() + 1);
  const Format& to = table[input.below(table.size())];
  const Format* const from = number < table.size() ? &table[number] : nullptr;
  const std::string bytes(input.rest().begin(), input.rest().end());

  std::ostringstream out;
  const auto writer = to.makeWriter(out, Rings::eAsGeoJsonWants);
  Examiner examiner(writer.get());
  try {
    const MemoryFile file(bytes);
    const Input opened = openInput(file.name(), from);
    opened.read(Keep::eSourceToo, examiner);
  } catch (const FileError&) {
  }
  writer->finish();
  if (examiner.written() == 0) return 0;

  // The program must be able to read what it writes.
  const MemoryFile again(out.str());
  const Input opened = openInput(again.name(), &to);
  Examiner reexaminer(nullptr);
  opened.read(Keep::eFeature, reexaminer);
  return 0;
}
