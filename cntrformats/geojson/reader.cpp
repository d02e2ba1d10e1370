// SPDX-License-Identifier: MIT
//
// GeoJSON documents. The features of a collection are handed over one by one while the document is
// parsed, so that a large one takes no more memory than a small one.

#include <istream>
#include <memory>

#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geojson.h>
#include <cntrformats/geojson/geometry.h>

namespace formats {

namespace {

/// Follows the parser through one document.
class DocumentReader {
 public:
  DocumentReader(const Source& source, Keep keep, Sink& sink)
      : source_(source), keep_(keep), sink_(sink) {}

  /// Keeps what is no feature of the collection.
  bool listen(int depth, Json::parse_event_t event, Json& value) {
    using Event = Json::parse_event_t;
    const bool isWhole =
        event == Event::value || event == Event::object_end || event == Event::array_end;
    if (depth == 1) {
      if (event == Event::key) name_ = value.get<std::string>();
      if (event == Event::array_start && name_ == "features") beginFeatures();
      if (isWhole && name_ == "features") endFeatures();
      if (isWhole && name_ != "features" && isCollection()) members_[name_] = value;
      return true;
    }
    if (!isInFeatures_ || depth != 2 || !isWhole) return true;
    takeFeature(std::move(value), false);
    return false;
  }

  void finish(Json document) {
    if (isGeometry(document) || member(document, "type") == "Feature") {
      takeFeature(std::move(document), true);
      return;
    }
    if (member(document, "type") != "FeatureCollection" ||
        !member(document, "features").is_array()) {
      throw FileError("not GeoJSON: neither a FeatureCollection, nor a Feature, nor a geometry");
    }
    if (number_ == 0) throw FileError("nothing in it: the collection has no features");
    takeMembers();
  }

 private:
  bool isCollection() const {
    const Json& type = member(members_, "type");
    return type.is_null() || type == "FeatureCollection";
  }

  void beginFeatures() {
    if (!isCollection()) return;
    isInFeatures_ = true;
    takeMembers();
  }

  void takeMembers() {
    Members members;
    for (const auto& [name, value] : members_.items()) members.push_back({name, compact(value)});
    members_ = Json::object();
    sink_.takeMembers(std::move(members));
  }

  void endFeatures() { isInFeatures_ = false; }

  void takeFeature(Json json, bool isLone) {
    const std::size_t number = ++number_;
    const auto kept = std::make_shared<Json>(std::move(json));
    const std::size_t size = source_.position() - std::exchange(position_, source_.position());
    sink_.take({{number, 0, isLone}, size, [kept, number, keep = keep_] {
                  return decoded(number,
                                 [&](Feature& feature) { readFeature(*kept, keep, feature); });
                }});
  }

  const Source& source_;
  const Keep keep_;
  Sink& sink_;
  /// The member of the document that is being read.
  std::string name_;
  Json members_ = Json::object();
  bool isInFeatures_ = false;
  std::size_t number_ = 0;
  /// Where the last feature ended.
  std::uint64_t position_ = 0;
};

}  // namespace

void readGeoJson(Source& source, Keep keep, Sink& sink) {
  if (source.firstCharacter() == '\0') throw FileError("nothing in it");
  std::istream text(&source);
  DocumentReader reader(source, keep, sink);
  Json document = parseJson(text, [&reader](int depth, Json::parse_event_t event, Json& value) {
    return reader.listen(depth, event, value);
  });
  reader.finish(std::move(document));
}

}  // namespace formats
