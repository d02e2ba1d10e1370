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

/// The label and the id, if there are any.
std::string nameOf(const Feature& feature) {
  std::string name;
  if (feature.label) name = "label " + toText(*feature.label);
  if (feature.id) name.append(name.empty() ? "" : ", ").append("id ").append(*feature.id);
  return name;
}

/// The outcome for a feature, or for several in a row with nothing to report.
struct Outcome {
  Location location;
  std::string name;
  Answer answer;
};

/// Features are answered many at a time, so that small ones have little overhead.
constexpr std::size_t mostFeaturesInJob = 64;
constexpr std::size_t mostBytesInJob = std::size_t{1} << 16U;

/// A few features of a file from their records to their answers.
class FeaturesJob : public Job {
 public:
  FeaturesJob(Work& work, const std::string& file) : work_(work), file_(file) {}

  void add(Record&& record) {
    size_ += record.size;
    records_.push_back(std::move(record));
  }

  /// `reached` is the number of bytes in all files up to the end of the last feature.
  void end(std::uint64_t reached) { reached_ = reached; }

  bool isEmpty() const { return records_.empty(); }
  bool isFull() const { return records_.size() >= mostFeaturesInJob || size_ >= mostBytesInJob; }

  /// Releases the records, whose memory is then free again before it is this job's turn to finish.
  void work() override {
    for (const Record& record : std::exchange(records_, {})) {
      answer(record);
      ++answered_;
    }
  }

  void finish() override {
    for (Outcome& outcome : outcomes_) {
      if (!outcome.answer.complaint.empty()) {
        work_.progress.clear();
        work_.session.diagnostics.badFeature(file_, outcome.location, outcome.answer.complaint,
                                             outcome.name);
      }
      work_.answerer.write(std::move(outcome.answer));
    }
    work_.progress.count(answered_);
    work_.progress.reach(reached_);
    work_.progress.update();
    if (!work_.session.out) throw StandardOutputError();
  }

 private:
  void answer(const Record& record) {
    const Origin origin{file_, record.location};
    Outcome outcome{record.location, {}, {}};
    try {
      Feature feature = record.decode();
      if (work_.isWanted != nullptr && !work_.isWanted(feature)) return;
      outcome.name = nameOf(feature);
      if (feature.problem.empty()) {
        outcome.answer = work_.answerer.answer(origin, std::move(feature));
      } else {
        outcome.answer = work_.answerer.answerUnreadable(origin, feature);
        outcome.answer.complaint = feature.problem;
      }
    } catch (const FeatureError& error) {
      outcome.answer.complaint = error.what();
    } catch (const qcException& error) {
      outcome.answer.complaint = messageOf(error);
    }
    take(std::move(outcome));
  }

  /// Outcomes with nothing to report are merged into the one before.
  void take(Outcome&& outcome) {
    const bool areRowsAlone = outcome.answer.complaint.empty() && !outcome.answer.feature &&
                              !outcome.answer.rows.isEmpty();
    if (areRowsAlone && !outcomes_.empty() && !outcomes_.back().answer.feature) {
      outcomes_.back().answer.rows.append(std::move(outcome.answer.rows));
    } else {
      outcomes_.push_back(std::move(outcome));
    }
  }

  Work& work_;
  const std::string& file_;
  std::vector<Record> records_;
  std::size_t size_ = 0;
  std::uint64_t reached_ = 0;
  std::size_t answered_ = 0;
  std::vector<Outcome> outcomes_;
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

/// Reports what is wrong with a file, after what could be read of it.
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

/// Makes jobs from what is found in one file.
class Jobs : public Sink {
 public:
  /// `before` is the number of bytes that the files before it took.
  Jobs(Work& work, JobQueue& queue, const Input& input, std::uint64_t before)
      : work_(work), queue_(queue), input_(input), before_(before) {}

  void take(Record record) override {
    job_->add(std::move(record));
    if (job_->isFull()) pause();
  }

  void pause() override {
    if (job_->isEmpty()) return;
    job_->end(before_ + input_.source->taken());
    queue_.add(std::exchange(job_, newJob()));
  }

  void takeMembers(Members&& members) override {
    pause();
    queue_.add(std::make_unique<MembersJob>(work_, std::move(members)));
  }

 private:
  std::unique_ptr<FeaturesJob> newJob() {
    return std::make_unique<FeaturesJob>(work_, input_.name);
  }

  Work& work_;
  JobQueue& queue_;
  const Input& input_;
  std::uint64_t before_;
  std::unique_ptr<FeaturesJob> job_ = newJob();
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
  const auto readInto = [&](JobQueue& queue, const Input& input) {
    Jobs jobs(work, queue, input, taken);
    try {
      input.read(inputs.keep, jobs);
    } catch (...) {
      jobs.pause();
      throw;
    }
    jobs.pause();
    taken += input.source->taken();
  };
  const auto readFile = [&](JobQueue& queue, const std::string& file) {
    try {
      opened.push_back(inputs.first ? *std::exchange(inputs.first, std::nullopt)
                                    : openInput(file, inputs.from));
      readInto(queue, opened.back());
    } catch (const FileError& error) {
      queue.add(std::make_unique<BadFileJob>(work, displayName(file), error.what()));
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
