// SPDX-License-Identifier: MIT

#include "texts.h"

#include <cntrformats/geojson/document.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace texts {

using namespace formats;

namespace {

class Collector : public Sink {
 public:
  explicit Collector(Found& found) : found_(found) {}

  void take(Record record) override {
    found_.places.push_back(record.location);
    const std::string number = std::to_string(record.location.number) + ": ";
    Feature feature = record.decode();
    if (feature.problem.empty()) {
      found_.features.push_back(std::move(feature));
    } else {
      found_.complaints.push_back(number + feature.problem);
      found_.unreadable.push_back(std::move(feature));
    }
  }

  void takeMembers(Members&& members) override { update(found_.members, std::move(members)); }

 private:
  Found& found_;
};

Found readInput(const Input& input, Keep keep) {
  Found found;
  Collector collector(found);
  input.read(keep, collector);
  return found;
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& text, const std::string& ending) {
  path_ += ending;
  const int descriptor = mkstemps(path_.data(), static_cast<int>(ending.size()));
  if (descriptor < 0) throw std::runtime_error("no temporary file");
  close(descriptor);
  std::ofstream(path_, std::ios::binary) << text;
}

TemporaryFile::~TemporaryFile() { unlink(path_.c_str()); }

Pipe::Pipe() {
  // The name of a file that was there a moment ago.
  path_ = TemporaryFile("").path();
  if (mkfifo(path_.c_str(), 0600) != 0) throw std::runtime_error("no pipe");
  // For reading too, so that it opens although nobody reads yet.
  descriptor_ = open(path_.c_str(), O_RDWR | O_CLOEXEC);
  if (descriptor_ < 0) throw std::runtime_error("the pipe does not open");
  alarm(mostSeconds);
}

Pipe::~Pipe() {
  close();
  unlink(path_.c_str());
  alarm(0);
}

void Pipe::write(std::string_view bytes) const {
  if (::write(descriptor_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
    throw std::runtime_error("the pipe does not take the bytes");
}

void Pipe::writeOneByOne(std::string_view bytes) const {
  for (const char byte : bytes) {
    write({&byte, 1});
    for (int unread = 1; unread > 0 && ioctl(descriptor_, FIONREAD, &unread) == 0;)
      std::this_thread::yield();
  }
}

void Pipe::close() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}

Found read(const std::string& format, const std::string& text, Keep keep) {
  const TemporaryFile file(text);
  return readInput(openInput(file.path(), formatNamed(format)), keep);
}

Found readFile(const std::string& path, const Format* from) {
  return readInput(openInput(path, from), Keep::eFeature);
}

std::string flawOf(const std::string& format, const std::string& text) {
  try {
    read(format, text);
    return "";
  } catch (const FileError& error) {
    return error.what();
  }
}

std::string problemOf(const std::string& format, const std::string& text) {
  const Found found = read(format, text);
  return found.unreadable.empty() ? "" : found.unreadable.front().problem;
}

Found readDocument(const std::string& text, std::size_t window) {
  const TemporaryFile file(text);
  Source source(file.path());
  Found found;
  Collector collector(found);
  formats::readDocument(source, Keep::eSourceToo, collector, window);
  return found;
}

std::string flawOfDocument(const std::string& text, std::size_t window) {
  try {
    readDocument(text, window);
    return "";
  } catch (const FileError& error) {
    return error.what();
  }
}

std::string guess(const std::string& text) {
  const TemporaryFile file(text);
  return openInput(file.path(), nullptr).format->name;
}

std::string written(const std::string& format, const std::vector<Feature>& features, Rings rings) {
  std::ostringstream out;
  const auto writer = formatNamed(format)->makeWriter(out, rings);
  for (const Feature& feature : features) writer->write(writer->prepare(feature, false));
  writer->finish();
  return out.str();
}

std::string packed(const std::string& text) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string input = text;
  std::string output(deflateBound(&stream, input.size()), '\0');
  stream.next_in = reinterpret_cast<unsigned char*>(input.data());
  stream.avail_in = static_cast<uInt>(input.size());
  stream.next_out = reinterpret_cast<unsigned char*>(output.data());
  stream.avail_out = static_cast<uInt>(output.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  output.resize(stream.total_out);
  deflateEnd(&stream);
  return output;
}

Points square(double size) { return {{0, 0}, {size, 0}, {size, size}, {0, size}}; }

Feature outline(const Points& points) {
  Feature feature;
  feature.geometry.parts.push_back({points, {}});
  return feature;
}

bool isSame(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool isSame(const Points& a, const Points& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& p, const auto& q) {
    return isSame(p.x(), q.x()) && isSame(p.y(), q.y());
  });
}

}  // namespace texts
