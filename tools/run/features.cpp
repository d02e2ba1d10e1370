// SPDX-License-Identifier: MIT

#include <tools/run/features.h>

#include <cstdint>
#include <filesystem>
#include <list>
#include <memory>
#include <system_error>
#include <utility>

#include <platform/core/exception.h>
#include <tools/report/message.h>
#include <tools/run/orderedwork.h>
#include <tools/run/progress.h>

namespace tool {

using namespace formats;

namespace {

/// What all jobs share.
struct Work {
  Session& session;
  Answerer& answerer;
  const std::function<bool(const Feature&)>& isWanted;
  Progress progress;
};

/// The label and the id, where there are any.
std::string nameOf(const Feature& feature) {
  std::string name;
  if (feature.label) name = "label " + toText(*feature.label);
  if (feature.id) name.append(name.empty() ? "" : ", ").append("id ").append(*feature.id);
  return name;
}

/// One feature from its record to its answer.
class FeatureJob : public Job {
 public:
  /// `reached` is the number of bytes in all files up to its end.
  FeatureJob(Work& work, const std::string& file, Record record, std::uint64_t reached)
      : work_(work),
        origin_{file, record.location},
        record_(std::move(record)),
        reached_(reached) {}

  void work() override {
    try {
      Feature feature = record_.decode();
      isWanted_ = work_.isWanted == nullptr || work_.isWanted(feature);
      if (!isWanted_) return;
      name_ = nameOf(feature);
      if (feature.problem.empty()) {
        answer_ = work_.answerer.answer(origin_, std::move(feature));
      } else {
        answer_ = work_.answerer.answerUnreadable(origin_, feature);
        answer_.complaint = feature.problem;
      }
    } catch (const FeatureError& error) {
      answer_.complaint = error.what();
    } catch (const qcException& error) {
      answer_.complaint = messageOf(error);
    }
  }

  void finish() override {
    if (!answer_.complaint.empty()) {
      work_.progress.clear();
      work_.session.diagnostics.badFeature(origin_.file, origin_.location, answer_.complaint,
                                           name_);
    }
    if (isWanted_) work_.answerer.write(std::move(answer_));
    work_.progress.count();
    work_.progress.reach(reached_);
    work_.progress.update();
    if (!work_.session.out) throw StandardOutputError();
  }

 private:
  Work& work_;
  Origin origin_;
  Record record_;
  std::uint64_t reached_;
  bool isWanted_ = true;
  std::string name_;
  Answer answer_;
};

class MembersJob : public Job {
 public:
  MembersJob(Work& work, Members members) : work_(work), members_(std::move(members)) {}
  void work() override {}
  void finish() override { work_.answerer.takeMembers(std::move(members_)); }

 private:
  Work& work_;
  Members members_;
};

/// What is wrong with a file, placed after what could be read of it.
class BadFileJob : public Job {
 public:
  BadFileJob(Work& work, std::string file, std::string what)
      : work_(work), file_(std::move(file)), what_(std::move(what)) {}
  void work() override {}
  void finish() override {
    work_.progress.clear();
    work_.session.diagnostics.badFile(file_, what_);
  }

 private:
  Work& work_;
  std::string file_;
  std::string what_;
};

/// Makes jobs of what is found in one file.
class Jobs : public Sink {
 public:
  /// `before` is the number of bytes that the files before it took.
  Jobs(Work& work, JobQueue& queue, const Input& input, std::uint64_t before)
      : work_(work), queue_(queue), input_(input), before_(before) {}

  void take(Record record) override {
    const std::size_t size = record.size;
    const std::uint64_t reached = before_ + input_.source->taken();
    queue_.add(std::make_unique<FeatureJob>(work_, input_.name, std::move(record), reached), size);
    if (input_.source->isWaiting()) queue_.flush();
  }

  void takeMembers(Members&& members) override {
    queue_.add(std::make_unique<MembersJob>(work_, std::move(members)), 0);
  }

 private:
  Work& work_;
  JobQueue& queue_;
  const Input& input_;
  std::uint64_t before_;
};

/// The total size of the files in bytes; 0 when one of them has an unknown size.
std::uint64_t sizeOf(const std::vector<std::string>& files) {
  std::uint64_t sum = 0;
  for (const std::string& file : files) {
    std::error_code error;
    if (file == "-" || !std::filesystem::is_regular_file(file, error)) return 0;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) return 0;
    sum += size;
  }
  return sum;
}

}  // namespace

void answerAll(Inputs& inputs, Session& session, Answerer& answerer) {
  const bool showProgress = inputs.showProgress && session.console.messagesAreTerminal;
  Work work{session, answerer, inputs.isWanted,
            Progress(session.messages, showProgress, showProgress ? sizeOf(inputs.files) : 0)};
  // The names are needed until the last job is finished.
  std::list<Input> opened;
  std::uint64_t taken = 0;
  const auto readFile = [&](JobQueue& queue, const std::string& file) {
    try {
      opened.push_back(inputs.first ? *std::exchange(inputs.first, std::nullopt)
                                    : openInput(file, inputs.from));
      Jobs jobs(work, queue, opened.back(), taken);
      opened.back().read(inputs.keep, jobs);
      taken += opened.back().source->taken();
    } catch (const FileError& error) {
      queue.add(std::make_unique<BadFileJob>(work, displayName(file), error.what()), 0);
    }
  };
  runInOrder(
      inputs.jobs,
      [&](JobQueue& queue) {
        for (const std::string& file : inputs.files) readFile(queue, file);
      },
      [&] {
        work.progress.update();
        session.out.flush();
      });
  work.progress.clear();
  session.diagnostics.sumUp();
}

}  // namespace tool
