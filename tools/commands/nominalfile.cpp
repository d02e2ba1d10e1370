// SPDX-License-Identifier: MIT

#include <tools/commands/nominalfile.h>

#include <cntrformats/errors.h>
#include <cntrformats/table/input.h>

namespace tool {

using namespace formats;

namespace {

class Collected : public Sink {
 public:
  Collected(NominalFile& file, Diagnostics& diagnostics) : file_(file), diagnostics_(diagnostics) {}

  void take(Record record) override {
    const std::string problem = file_.nominals.add(record.decode());
    file_.locations.push_back(record.location);
    if (!problem.empty()) diagnostics_.badFeature(file_.name, record.location, problem);
  }

 private:
  NominalFile& file_;
  Diagnostics& diagnostics_;
};

}  // namespace

NominalFile readNominals(const std::string& file, const Format* from, Session& session) {
  NominalFile result;
  const Input input = openInput(file, from);
  result.name = input.name;
  Collected collected(result, session.diagnostics);
  input.read(Keep::eFeature, collected);
  session.diagnostics.sumUp();
  if (result.locations.empty()) throw FileError("holds no features to compare with");
  return result;
}

}  // namespace tool
