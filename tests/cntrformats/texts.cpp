// SPDX-License-Identifier: MIT

#include "texts.h"

#include <cntrformats/geojson/document.h>

#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

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

TemporaryFile::TemporaryFile(const std::string& text) {
  const int descriptor = mkstemp(path_.data());
  if (descriptor < 0) throw std::runtime_error("no temporary file");
  close(descriptor);
  std::ofstream(path_, std::ios::binary) << text;
}

TemporaryFile::~TemporaryFile() { unlink(path_.c_str()); }

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
