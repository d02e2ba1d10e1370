// SPDX-License-Identifier: MIT
//
// cntr combine: set operations on what the outlines of two files fill.

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <cntr/contourdefs.h>
#include <cntrformats/errors.h>
#include <cntrformats/table/input.h>
#include <cntrsets/sets.h>
#include <tools/commands/commands.h>
#include <tools/commands/featurefile.h>
#include <tools/commands/newoutlines.h>
#include <tools/commands/options.h>
#include <tools/report/message.h>

namespace tool {

using namespace formats;

namespace {

using Parts = std::vector<qcRings>;

struct Operation {
  const char* name;
  Parts (*apply)(const Parts& a, const Parts& b);
};

constexpr Operation operations[] = {{"union", qf_Union},
                                    {"intersection", qf_Intersection},
                                    {"difference", qf_Difference},
                                    {"symmetric-difference", qf_SymmetricDifference}};

struct CombineOptions {
  std::string a;
  std::string b;
  std::string from;
  unsigned jobs = 1;
  std::string operation;
  bool each = false;
  OutputOptions output;
};

const Operation& operationOf(const CombineOptions& options) {
  for (const Operation& operation : operations)
    if (options.operation == operation.name) return operation;
  throw CLI::ValidationError("--operation", "names no operation");
}

/// The outlines of all features of a file, in one list.
class Outlines : public Sink {
 public:
  Outlines(std::string file, Diagnostics& diagnostics)
      : file_(std::move(file)), diagnostics_(diagnostics) {}

  void take(Record record) override {
    Feature feature = record.decode();
    std::string problem = feature.problem;
    if (problem.empty() && !feature.geometry.closed) problem = openLine;
    if (!problem.empty()) return diagnostics_.badFeature(file_, record.location, problem);
    std::move(feature.geometry.parts.begin(), feature.geometry.parts.end(),
              std::back_inserter(parts_));
  }

  Parts parts() && { return std::move(parts_); }

 private:
  std::string file_;
  Diagnostics& diagnostics_;
  Parts parts_;
};

/// Nothing for a file that cannot be read, which is reported. `opened` is the file, if it is
/// already open.
Parts outlinesOf(const std::string& file, std::optional<Input> opened, const Format* from,
                 Session& session) {
  Outlines outlines(displayName(file), session.diagnostics);
  try {
    if (!opened) opened = openInput(file, from);
    opened->read(Keep::eFeature, outlines);
  } catch (const FileError& error) {
    session.diagnostics.badFile(displayName(file), error.what());
  }
  return std::move(outlines).parts();
}

/// Combines each feature with all outlines of the other file.
class CombiningEach : public NewOutlines {
 public:
  CombiningEach(const Operation& operation, Parts others, FeatureFile& file, Session& session)
      : NewOutlines(file, session), operation_(operation), others_(std::move(others)) {
    for (const qcRings& other : others_) boxes_.push_back(boxOf(other));
  }

 protected:
  /// Neither operation of --each depends on what lies beyond the box of a feature's outlines.
  Parts outlinesOf(const Parts& parts) const override {
    Parts near;
    for (std::size_t i = 0; i < others_.size(); ++i) {
      if (std::any_of(parts.begin(), parts.end(),
                      [&](const qcRings& part) { return meet(boxOf(part), boxes_[i]); }))
        near.push_back(others_[i]);
    }
    return operation_.apply(parts, near);
  }

 private:
  struct Box {
    qcVector<2> low;
    qcVector<2> high;
  };

  static Box boxOf(const qcRings& rings) {
    Box box{rings.outline.front(), rings.outline.front()};
    for (const qcVector<2>& p : rings.outline) {
      box.low = {std::min(box.low.x(), p.x()), std::min(box.low.y(), p.y())};
      box.high = {std::max(box.high.x(), p.x()), std::max(box.high.y(), p.y())};
    }
    return box;
  }

  static bool meet(const Box& a, const Box& b) {
    return a.low.x() <= b.high.x() && b.low.x() <= a.high.x() && a.low.y() <= b.high.y() &&
           b.low.y() <= a.high.y();
  }

  const Operation& operation_;
  Parts others_;
  std::vector<Box> boxes_;
};

void combineEach(const CombineOptions& options, const Format& format, Inputs& inputs,
                 Session& session) {
  Parts others = outlinesOf(options.b, std::nullopt, inputs.from, session);
  if (session.diagnostics.status() >= eUnusable) return;
  writeFeatures(inputs, options.output, format, Rings::eAsTheyWere, session,
                [&](FeatureFile& file) {
                  return std::make_unique<CombiningEach>(operationOf(options), std::move(others),
                                                         file, session);
                });
}

void combineAll(const CombineOptions& options, const Format& format, Inputs& inputs,
                Session& session) {
  const Parts a =
      outlinesOf(options.a, std::exchange(inputs.first, std::nullopt), inputs.from, session);
  const Parts b = outlinesOf(options.b, std::nullopt, inputs.from, session);
  if (session.diagnostics.status() >= eUnusable) return;
  Feature feature;
  feature.geometry.parts = operationOf(options).apply(a, b);
  feature.geometry.multiple = feature.geometry.parts.size() > 1;
  FeatureFile file(session, options.output.file, format, Rings::eAsTheyWere, 1);
  if (feature.geometry.parts.empty()) {
    session.diagnostics.warning(file.name(), "nothing is left, and no feature is written");
  } else {
    file.write(file.prepare({options.a, {}}, std::move(feature)));
  }
  file.complete();
}

void combine(const CombineOptions& options, Session& session) {
  Inputs inputs;
  inputs.files = {options.a};
  inputs.from = formatNamed(options.from);
  inputs.jobs = options.jobs;
  const Format& format = outputFormat(options.output, inputs);
  try {
    if (options.each) {
      combineEach(options, format, inputs, session);
    } else {
      combineAll(options, format, inputs, session);
    }
  } catch (const FileError& error) {
    session.diagnostics.badFile(options.output.file, error.what());
  } catch (const qcContourDefs::Errors& error) {
    session.diagnostics.badFile(displayName(options.a) + " and " + displayName(options.b),
                                messageOf(error));
  }
}

void check(const CombineOptions& options) {
  if (options.a == "-" && options.b == "-")
    throw CLI::ValidationError("B", "only one of the two files can be standard input");
  if (options.each && options.operation != "intersection" && options.operation != "difference")
    throw CLI::ValidationError("--each", "goes with intersection and difference alone");
}

constexpr const char* combineHelp =
    "Operations, on what the outlines fill (by the rule nonzero, see\n"
    "'cntr repair --help'):\n"
    "  union                 what the outlines of A or of B fill\n"
    "  intersection          what both fill\n"
    "  difference            what those of A fill and those of B do not\n"
    "  symmetric-difference  what those of one file fill and those of the other\n"
    "                        do not\n\n"
    "All outlines of A are taken together, and all of B: the result is one feature\n"
    "without label, id and properties. With --each, each feature of A is combined\n"
    "with all outlines of B and keeps its label, id and properties: use it to cut\n"
    "features to a region of interest, or to remove a mask. Features are never\n"
    "paired, and their order does not matter.\n\n"
    "Results have the normal form that 'cntr repair --help' describes. Features of\n"
    "which nothing is left are not written; their number is reported on standard\n"
    "error. Open lines and features that cannot be read are reported there and left\n"
    "out, and the exit status is 1.\n\n"
    "Examples:\n"
    "  cntr combine samples/coins.geojson samples/cell.geojson --operation union -o all.geojson\n"
    "  cntr combine samples/coins.geojson samples/cell.geojson --operation difference --each -o "
    "clear.geojson";

}  // namespace

void addCombine(CLI::App& app, Session& session) {
  const auto options = std::make_shared<CombineOptions>();
  CLI::App& command = *app.add_subcommand("combine", "Unite, intersect or subtract outlines");
  command.add_option("A", options->a, "A file of outlines; - is standard input")
      ->required()
      ->type_name("");
  command.add_option("B", options->b, "The other file; - is standard input")
      ->required()
      ->type_name("");
  std::vector<std::string> names;
  for (const Operation& operation : operations) names.emplace_back(operation.name);
  command.add_option("--operation", options->operation, "The operation, see below")
      ->required()
      ->check(CLI::IsMember(names));
  command.add_flag("--each", options->each,
                   "Combine each feature of A by itself (intersection\n"
                   "and difference only)");
  addFrom(command, options->from);
  addJobs(command, options->jobs);
  addOutput(command, options->output);
  command.footer(combineHelp);
  command.callback([options, &session] {
    check(*options);
    combine(*options, session);
  });
}

}  // namespace tool
