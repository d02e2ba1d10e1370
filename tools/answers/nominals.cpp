// SPDX-License-Identifier: MIT

#include <tools/answers/nominals.h>

#include <cmath>
#include <span>

#include <cntr/contourdefs.h>
#include <cntrformats/errors.h>
#include <cntrformats/shapes.h>
#include <cntrsets/filled.h>
#include <cntrsets/sets.h>
#include <tools/report/message.h>

namespace tool {

using namespace formats;

namespace {

void requireFinite(const std::vector<qcRings>& lines) {
  for (const std::span<const qcVector<2>>& line : ringsOf(lines)) {
    for (const qcVector<2>& p : line) {
      if (!std::isfinite(p.x()) || !std::isfinite(p.y()))
        throw qcContourDefs::BadParams(L"a coordinate is not a finite number");
    }
  }
}

Nominal nominalOf(const Feature& feature) {
  Nominal nominal;
  nominal.number = feature.number;
  nominal.closed = feature.geometry.closed;
  nominal.problem = feature.problem;
  if (!nominal.problem.empty()) return nominal;
  try {
    const std::vector<qcRings> parts = filledParts(feature.geometry);
    nominal.flaw = flawOf(feature.geometry);
    nominal.frame = cntr::sets::Frame(ringsOf(parts));
    nominal.parts = mapped(parts, [&](const qcVector<2>& p) { return nominal.frame.local(p); });
    nominal.curves = curvesOf(nominal.parts, nominal.closed);
  } catch (const qcException& error) {
    nominal.problem = messageOf(error);
  }
  return nominal;
}

}  // namespace

std::vector<qcRings> filledParts(const Geometry& geometry) {
  if (geometry.closed) return qf_MakeValid(geometry.parts, qcPolygon::eNonZero);
  requireFinite(geometry.parts);
  return geometry.parts;
}

const char* flawOf(const Geometry& geometry) {
  if (!geometry.closed) return "";
  switch (qf_RingContact(geometry.parts)) {
    case qcRingContact::eCrosses:
      return "crosses";
    case qcRingContact::eOverlaps:
      return "overlaps";
    default:
      return "";
  }
}

std::vector<std::span<const qcVector<2>>> ringsOf(const std::vector<qcRings>& parts) {
  std::vector<std::span<const qcVector<2>>> rings;
  for (const qcRings& part : parts) {
    rings.emplace_back(part.outline);
    rings.insert(rings.end(), part.holes.begin(), part.holes.end());
  }
  return rings;
}

std::string Nominals::add(const Feature& feature) {
  const auto name = [this](Names& names, const std::string& text) {
    Named& named = names.try_emplace(text, Named{all_.size(), 0}).first->second;
    ++named.count;
  };
  if (feature.label) name(labels_, toText(*feature.label));
  if (feature.id) name(ids_, *feature.id);
  all_.push_back(nominalOf(feature));
  return all_.back().problem;
}

std::size_t Nominals::placeOf(const Feature& feature) const {
  if (all_.size() == 1) return 0;
  if (!feature.label && !feature.id)
    throw FeatureError("has no label and no id to find its nominal by");
  std::string missing;
  const auto find = [&](const Names& names, const char* kind,
                        const std::string& text) -> std::optional<std::size_t> {
    const auto named = names.find(text);
    if (named != names.end() && named->second.count == 1) return named->second.first;
    missing += missing.empty() ? "" : ", ";
    missing += named == names.end() ? "no nominal has " : "several nominals have ";
    missing.append(kind).append(" ").append(text);
    return std::nullopt;
  };
  if (feature.label) {
    if (const auto place = find(labels_, "label", toText(*feature.label))) return *place;
  }
  if (feature.id) {
    if (const auto place = find(ids_, "id", *feature.id)) return *place;
  }
  throw FeatureError(missing);
}

const Nominal& Nominals::counterpartOf(const Feature& feature) const {
  const Nominal& nominal = all_.at(placeOf(feature));
  if (!nominal.problem.empty())
    throw FeatureError("its nominal, feature " + std::to_string(nominal.number) +
                       ", cannot be used: " + nominal.problem);
  return nominal;
}

}  // namespace tool
