// SPDX-License-Identifier: MIT
//
// CSV with one vertex per line; names.h describes the names of rings.

#include <ostream>

#include <cntrformats/csv/csv.h>
#include <cntrformats/csv/names.h>
#include <cntrformats/fields.h>
#include <cntrformats/number.h>

namespace formats {

namespace {

/// A ring that ends where it begins repeats that point, because readers drop one repeated point.
bool repeatsItsFirst(const Points& points, const RingName& name) {
  return !name.isLine && points.front() == points.back();
}

void appendRing(std::string& text, const RingName& name, const Points& points) {
  const std::string id = csvField(toText(name));
  const auto append = [&](const qcVector<2>& p) {
    text.append(id).append(1, ',').append(allDigits(p.x()));
    text.append(1, ',').append(allDigits(p.y())).append(1, '\n');
  };
  for (const qcVector<2>& point : points) append(point);
  if (repeatsItsFirst(points, name)) append(points.front());
}

/// True when the id of the feature can be its name in CSV.
bool holdsId(const Feature& feature) {
  if (!feature.id || feature.id->find_first_of("\r\n") != std::string::npos) return false;
  return parseFeatureName(*feature.id).id == feature.id &&
         parseRingName(*feature.id) == RingName{*feature.id};
}

/// A label that is text is written as an id would be, so only a number counts.
bool holdsLabel(const Feature& feature) {
  return feature.label && std::holds_alternative<unsigned long>(*feature.label);
}

/// The label, else the id; "#" and the number of the feature if it has neither in a form that CSV
/// can hold.
std::string nameOf(const Feature& feature) {
  if (holdsLabel(feature)) return toText(*feature.label);
  if (holdsId(feature)) return *feature.id;
  return std::string(1, '#').append(std::to_string(feature.number));
}

std::string toCsv(const Feature& feature) {
  const auto& [closed, multiple, parts, edgelets] = feature.geometry;
  RingName name{nameOf(feature), !closed};
  std::string text;
  for (std::size_t k = 0; k < parts.size(); ++k) {
    name.part = multiple || parts.size() > 1 ? k + 1 : 0;
    name.hole = 0;
    appendRing(text, name, parts[k].outline);
    for (const Points& hole : parts[k].holes) {
      ++name.hole;
      appendRing(text, name, hole);
    }
  }
  return text;
}

class CsvWriter : public FeatureWriter {
 public:
  explicit CsvWriter(std::ostream& out) : out_(out) { out_ << "id,x,y\n"; }

  Prepared prepare(Feature feature, bool isLone) const override {
    return {toCsv(feature), {}, isLone};
  }

  /// An empty line separates features that have the same name.
  void write(Prepared prepared) override {
    const std::string first = prepared.text.substr(0, prepared.text.find(','));
    if (first == last_) out_ << '\n';
    out_ << prepared.text;
    const std::size_t lastLine = prepared.text.rfind('\n', prepared.text.size() - 2) + 1;
    last_ = prepared.text.substr(lastLine, prepared.text.find(',', lastLine) - lastLine);
  }
  void finish() override {}

 private:
  std::ostream& out_;
  /// The id of the last ring.
  std::string last_;
};

}  // namespace

std::unique_ptr<FeatureWriter> makeCsvWriter(std::ostream& out, Rings) {
  return std::make_unique<CsvWriter>(out);
}

Losses lossesInCsv(const Feature& feature) {
  return lossesOf(feature,
                  {holdsLabel(feature), !holdsLabel(feature) && holdsId(feature), false, false});
}

}  // namespace formats
