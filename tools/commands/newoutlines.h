// SPDX-License-Identifier: MIT
//
// What offset and combine have in common: features get new outlines and keep everything else.

#pragma once

#include <cstddef>
#include <vector>

#include <cntrsets/rings.h>
#include <tools/commands/featurefile.h>
#include <tools/run/features.h>

namespace tool {

/// The message about an open line where outlines are needed.
inline constexpr const char* openLine = "is an open line, which has no area";

/// Writes features with new outlines. Features of which nothing is left are counted but not
/// written; open lines, features that cannot be read and those without an answer are not written
/// either.
class NewOutlines : public FeaturesToFile {
 public:
  NewOutlines(FeatureFile& file, Session& session)
      : FeaturesToFile(file, OutlinesAre::eNew), session_(session) {}

  Answer answer(const Origin& origin, formats::Feature feature) const override;
  void write(Answer answer) override;
  void finish() override;

 protected:
  /// Called on any thread. Throws exceptions of the library when there is no answer.
  virtual std::vector<qcRings> outlinesOf(const std::vector<qcRings>& parts) const = 0;

 private:
  Session& session_;
  std::size_t empty_ = 0;
};

}  // namespace tool
