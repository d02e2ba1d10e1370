// SPDX-License-Identifier: MIT

#include <tools/draw/document.h>

namespace tool {

using namespace formats;

namespace {

class Collector : public Sink {
 public:
  Collector(Document& document, Diagnostics& diagnostics)
      : document_(document), diagnostics_(diagnostics) {}

  void take(Record record) override {
    Feature feature = record.decode();
    if (feature.problem.empty()) {
      document_.features.push_back(std::move(feature));
    } else {
      diagnostics_.badFeature(document_.name, record.location, feature.problem);
    }
  }

  void takeMembers(Members&& members) override { update(document_.members, std::move(members)); }

 private:
  Document& document_;
  Diagnostics& diagnostics_;
};

}  // namespace

std::optional<Document> readDocument(const std::string& file, Diagnostics& diagnostics,
                                     const Format* from) {
  Document document;
  document.name = displayName(file);
  try {
    const Input input = openInput(file, from);
    Collector collector(document, diagnostics);
    input.read(Keep::eFeature, collector);
    return document;
  } catch (const FileError& error) {
    diagnostics.badFile(document.name, error.what());
    return std::nullopt;
  }
}

}  // namespace tool
