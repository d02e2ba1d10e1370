// SPDX-License-Identifier: MIT
//
// GeoJSON documents with one feature per line, and GeoJSON lines.

#include <ostream>

#include <cntrformats/geojson/feature.h>
#include <cntrformats/geojson/geojson.h>
#include <cntrformats/json.h>

namespace formats {

namespace {

/// A collection holds features, so a geometry becomes a feature.
std::string asMember(std::string json) {
  if (memberOf(json, "type") == "\"Feature\"") return json;
  return R"({"type":"Feature","properties":{},"geometry":)" + json + "}";
}

/// The same JSON on one line.
std::string inOneLine(std::string json) {
  if (json.find_first_of("\r\n") != std::string::npos) json = compact(json);
  return json;
}

class GeoJsonWriter : public FeatureWriter {
 public:
  GeoJsonWriter(std::ostream& out, Rings rings) : out_(out), rings_(rings) {}

  Prepared prepare(Feature feature, bool isLone) const override {
    std::string json = toJson(feature, rings_);
    if (rings_ == Rings::eAsGeoJsonWants && !isLone) json = asMember(std::move(json));
    return {std::move(json), {}, isLone};
  }

  std::optional<Prepared> prepareUnreadable(const Feature& feature, bool isLone) const override {
    if (feature.text.empty()) return std::nullopt;
    return Prepared{feature.text, {}, isLone};
  }

  void write(Prepared prepared) override {
    if (prepared.isLone) {
      out_ << prepared.text << '\n';
      hasLone_ = true;
      return;
    }
    begin();
    out_ << (hasFeatures_ ? ",\n" : "\n") << prepared.text;
    hasFeatures_ = true;
  }

  void finish() override {
    if (hasLone_) return;
    begin();
    out_ << "\n]";
    writeMembers(",\n", trailing_);
    out_ << "\n}\n";
  }

  bool takeMembers(Members&& members) override {
    update(hasBegun_ ? trailing_ : leading_, std::move(members));
    begin();
    return true;
  }

 private:
  void begin() {
    if (std::exchange(hasBegun_, true)) return;
    if (leading_.empty()) leading_.push_back({"type", "\"FeatureCollection\""});
    out_ << "{\n";
    writeMembers("", leading_);
    out_ << ",\n\"features\": [";
  }

  void writeMembers(const char* separator, const Members& members) {
    for (const auto& [name, value] : members) {
      out_ << separator << '"' << name << "\": " << value;
      separator = ",\n";
    }
  }

  std::ostream& out_;
  Rings rings_;
  Members leading_;
  Members trailing_;
  bool hasBegun_ = false;
  bool hasFeatures_ = false;
  bool hasLone_ = false;
};

class GeoJsonLinesWriter : public FeatureWriter {
 public:
  GeoJsonLinesWriter(std::ostream& out, Rings rings) : out_(out), rings_(rings) {}

  Prepared prepare(Feature feature, bool isLone) const override {
    return {inOneLine(toJson(feature, rings_)), {}, isLone};
  }

  std::optional<Prepared> prepareUnreadable(const Feature& feature, bool isLone) const override {
    if (feature.text.empty()) return std::nullopt;
    return Prepared{inOneLine(feature.text), {}, isLone};
  }

  void write(Prepared prepared) override { out_ << prepared.text << '\n'; }
  void finish() override {}

 private:
  std::ostream& out_;
  Rings rings_;
};

}  // namespace

std::unique_ptr<FeatureWriter> makeGeoJsonWriter(std::ostream& out, Rings rings) {
  return std::make_unique<GeoJsonWriter>(out, rings);
}

std::unique_ptr<FeatureWriter> makeGeoJsonLinesWriter(std::ostream& out, Rings rings) {
  return std::make_unique<GeoJsonLinesWriter>(out, rings);
}

Losses lossesInGeoJson(const Feature& feature) {
  return lossesOf(feature, {true, true, feature.geometry.parts.size() == 1, true});
}

}  // namespace formats
