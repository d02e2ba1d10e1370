// SPDX-License-Identifier: MIT

#include <tools/stream/features.h>

#include <list>

#include <platform/core/exception.h>
#include <tools/progress.h>

namespace tool {

namespace {

/// What the threads share while all features are answered.
struct Work {
  Session& session;
  Answerer& answerer;
  Progress progress;

  void reportFeature(const Origin& origin, const std::string& what) {
    progress.clear();
    session.diagnostics.badFeature(origin.file, origin.location, what);
  }

  void reportFile(const std::string& file, const std::string& what) {
    progress.clear();
    session.diagnostics.badFile(file, what);
  }

  void counted() {
    progress.count();
    progress.update();
    if (!session.out) throw StandardOutputError();
  }
};

Finish answerOrReport(Work& work, const Origin& origin, const Record& record) {
  const auto report = [&work, origin](const char* what) {
    return [&work, origin, text = std::string(what)] { work.reportFeature(origin, text); };
  };
  try {
    return work.answerer.answer(origin, record.decode());
  } catch (const UnreadableFeature& error) {
    return [first = report(error.what()),
            then = work.answerer.answerUnreadable(origin, error.source())] {
      first();
      if (then) then();
    };
  } catch (const FeatureError& error) {
    return report(error.what());
  } catch (const qcException& error) {
    return report(error.what());
  }
}

/// Makes a task of every record of one file.
class RecordQueue : public Sink {
 public:
  RecordQueue(Work& work, TaskQueue& queue, const Input& input)
      : work_(work), queue_(queue), input_(input) {}

  void take(Record record) override {
    const std::size_t size = record.size;
    queue_.add(
        [&work = work_, &name = input_.name, record = std::move(record)] {
          return [&work, finish = answerOrReport(work, {name, record.location}, record)] {
            if (finish) finish();
            work.counted();
          };
        },
        size);
    if (input_.source->isWaiting()) queue_.flush();
  }

  void takeMembers(Json&& members) override {
    queue_.add(
        [&work = work_, members = std::move(members)] {
          return [&work, members = Json(members)]() mutable {
            work.answerer.takeMembers(std::move(members));
          };
        },
        0);
  }

 private:
  Work& work_;
  TaskQueue& queue_;
  const Input& input_;
};

}  // namespace

void answerAll(Inputs& inputs, Session& session, Answerer& answerer) {
  const bool showProgress = inputs.showProgress && session.console.messagesAreTerminal;
  Work work{session, answerer, Progress(session.messages, showProgress)};
  // Names and sources live until the last task is finished.
  std::list<Input> opened;
  const auto readFile = [&](TaskQueue& queue, const std::string& file) {
    try {
      opened.push_back(inputs.first ? *std::exchange(inputs.first, std::nullopt)
                                    : openInput(file, inputs.from));
      RecordQueue records(work, queue, opened.back());
      readRecords(*opened.back().source, opened.back().format, records);
    } catch (const FileError& error) {
      queue.add(
          [&work, name = displayName(file), what = std::string(error.what())] {
            return [&work, name, what] { work.reportFile(name, what); };
          },
          0);
    }
  };
  runInOrder(
      inputs.jobs,
      [&](TaskQueue& queue) {
        for (const std::string& file : inputs.files) readFile(queue, file);
      },
      [&] {
        work.progress.update();
        session.out.flush();
      });
  work.progress.clear();
}

}  // namespace tool
