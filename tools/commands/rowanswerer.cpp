// SPDX-License-Identifier: MIT

#include <tools/commands/rowanswerer.h>

#include <cntrformats/errors.h>
#include <platform/core/exception.h>
#include <tools/report/message.h>

namespace tool {

using namespace formats;

Answer RowAnswerer::answer(const Origin& origin, Feature feature) const {
  Answer answer;
  const auto fail = [&](const std::string& why) {
    answer.complaint = why;
    answer.rows = rows_->prepare({unanswered(origin, feature, why)});
  };
  try {
    answer.rows = rows_->prepare(rowsOf(origin, feature, answer.complaint));
  } catch (const FeatureError& error) {
    fail(error.what());
  } catch (const qcException& error) {
    fail(messageOf(error));
  }
  return answer;
}

Answer RowAnswerer::answerUnreadable(const Origin& origin, const Feature& feature) const {
  Answer answer;
  answer.rows = rows_->prepare({unanswered(origin, feature, feature.problem)});
  return answer;
}

void printRows(Inputs& inputs, Session& session, RowAnswerer& answerer) {
  inputs.showProgress = !(session.console.outIsTerminal && answerer.isStreaming());
  answerAll(inputs, session, answerer);
  answerer.finish();
}

}  // namespace tool
