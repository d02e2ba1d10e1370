// SPDX-License-Identifier: MIT
//
// GeoJSON documents, and those of annotation tools.

#include <array>
#include <optional>
#include <utility>

#include <cntrformats/geojson/annotations.h>
#include <cntrformats/geojson/document.h>
#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geojson.h>
#include <cntrformats/geojson/geometry.h>
#include <cntrformats/json.h>
#include <cntrformats/otherkinds.h>
#include <cntrformats/passages.h>

namespace formats {

namespace {

/// A list whose elements are features.
struct List {
  std::string_view name;
  ReadPassage read;
};

constexpr List featureList{"features", readFeature};
constexpr std::array<List, 3> lists{
    {featureList, {"annotations", readCocoAnnotation}, {"shapes", readLabelMeShape}}};

/// The members of an object. Throws FileError when it is not JSON.
Members checkedMembers(const std::string& object, const TextPlace& place) {
  try {
    requireObject(object, place);
  } catch (const FeatureError& error) {
    throw FileError(error.what());
  }
  Members members;
  for (const auto& [name, value] : membersOf(object)) {
    members.push_back({std::string(name), std::string(value)});
  }
  return members;
}

/// Walks through one document.
class DocumentReader {
 public:
  DocumentReader(Source& source, Keep keep, Sink& sink, std::size_t window)
      : window_(source, window), keep_(keep), sink_(sink) {}

  void read() {
    try {
      readWhole();
    } catch (const FileError&) {
      if (isStreaming_) window_.handOver();
      throw;
    }
  }

 private:
  void readWhole() {
    if (window_.next() == '\0') throw FileError("nothing in it");
    if (window_.next() != '{') refuseAsGeoJson();
    begin_ = window_.position();
    beginning_ = window_.place();
    window_.expect('{');
    if (window_.next() != '}') {
      do {
        readMember();
      } while (window_.skip(','));
    }
    window_.expect('}');
    end_ = window_.position();
    if (window_.next() != '\0') window_.refuse("something follows the end");
    finish();
  }

  [[noreturn]] static void refuseAsGeoJson() {
    throw FileError("not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry");
  }

  void readMember() {
    if (window_.next() != '"') window_.refuse("the name of a member expected");
    const TextPlace place = window_.place();
    const std::string quotedName(window_.value());
    const std::string name = quotedName.substr(1, quotedName.size() - 2);
    window_.expect(':');
    const List* const list = window_.next() == '[' ? listNamed(name) : nullptr;
    if (list != nullptr) return readList(*list);
    const std::string_view value = window_.value();
    if (name == "type") type_ = value;
    // The added brace must not shift the reported columns.
    const std::string member = "{" + quotedName + ":" + std::string(value) + "}";
    if (isStreaming_) update(members_, checkedMembers(member, {place.line, place.column - 1}));
  }

  /// The list of features with this name, if the document can have one: annotation tools give their
  /// documents no type, or one that is not GeoJSON's.
  const List* listNamed(const std::string& name) const {
    if (isStreaming_) return nullptr;
    for (const List& list : lists) {
      const bool fits = list.name == featureList.name
                            ? type_.empty() || type_ == featureCollection
                            : type_ != featureCollection && !isFeatureOrGeometry();
      if (list.name == name && fits) return &list;
    }
    return nullptr;
  }

  bool isFeatureOrGeometry() const {
    if (type_.size() < 2) return false;
    const std::string_view type = std::string_view(type_).substr(1, type_.size() - 2);
    return type == "Feature" || isGeometryType(type);
  }

  void readList(const List& list) {
    // Only now is it known that what came before the list belongs to a collection.
    if (list.name == featureList.name) {
      const std::string before(window_.kept().substr(begin_, window_.position() - begin_));
      members_ = checkedMembers(before + "null}", beginning_);
      members_.pop_back();
      takeMembers();
    }
    isStreaming_ = true;
    isGeoJson_ = list.name == featureList.name;
    beginFeatures(list.read);
    window_.expect('[');
    if (!window_.skip(']')) {
      std::size_t number = 0;
      do {
        const std::size_t size = window_.value().size();
        features_->add({++number}, window_.position() - size, window_.position());
      } while (window_.skip(','));
      window_.expect(']');
    }
  }

  /// From now on features are handed over along with the text that has been passed.
  void beginFeatures(ReadPassage readIt) {
    features_.emplace(sink_, readIt, keep_ == Keep::eSourceToo && readIt == readFeature);
    window_.release(*features_);
  }

  void finish() {
    if (isStreaming_) window_.handOver();
    if (isStreaming_ && (!isGeoJson_ || type_ == featureCollection)) {
      if (isGeoJson_) takeMembers();
      return;
    }
    if (isStreaming_ || !isFeatureOrGeometry()) refuseAsGeoJson();
    beginFeatures(readFeature);
    features_->add({1, 0, true}, begin_, end_);
    window_.handOver();
  }

  void takeMembers() { sink_.takeMembers(std::exchange(members_, {})); }

  Window window_;
  const Keep keep_;
  Sink& sink_;
  /// The value of the member `type`, with its quotes; empty before it has been read.
  std::string type_;
  /// The members that have not been handed over.
  Members members_;
  TextPlace beginning_;
  /// Where the document begins and ends in the text that is kept.
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  /// True once the list of features has been reached.
  bool isStreaming_ = false;
  bool isGeoJson_ = false;
  /// The features found; nothing before the list.
  std::optional<Passages> features_;
};

}  // namespace

void readDocument(Source& source, Keep keep, Sink& sink, std::size_t step) {
  DocumentReader(source, keep, sink, step).read();
}

void readGeoJson(Source& source, Keep keep, Sink& sink) {
  if (const char* const kind = otherKind(source.firstLine())) throw FileError(kind);
  readDocument(source, keep, sink, Source::mostAtOnce);
}

}  // namespace formats
