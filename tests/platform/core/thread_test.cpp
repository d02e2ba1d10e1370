// SPDX-License-Identifier: MIT
//
// Thread-local slots and thread-exit functions.

#include <platform/core/thread.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

template <class F>
void onNewThread(F function) {
  std::thread(function).join();
}

TEST(ThreadLocalTest, IsNullUntilItIsSet) {
  const qc_ThreadLocal slot;
  EXPECT_EQ(slot.OSValue(), nullptr);
}

TEST(ThreadLocalTest, HoldsWhatWasSetLast) {
  qc_ThreadLocal slot;
  int a = 0;
  int b = 0;
  slot.OSValue(&a);
  slot.OSValue(&b);
  EXPECT_EQ(slot.OSValue(), &b);
  slot.OSValue(nullptr);
  EXPECT_EQ(slot.OSValue(), nullptr);
}

TEST(ThreadLocalTest, SlotsAreIndependent) {
  qc_ThreadLocal first;
  qc_ThreadLocal second;
  int a = 0;
  int b = 0;
  first.OSValue(&a);
  second.OSValue(&b);
  EXPECT_EQ(first.OSValue(), &a);
  EXPECT_EQ(second.OSValue(), &b);
}

TEST(ThreadLocalTest, EachThreadHasItsOwnValue) {
  qc_ThreadLocal slot;
  int mine = 0;
  slot.OSValue(&mine);
  onNewThread([&slot] {
    EXPECT_EQ(slot.OSValue(), nullptr);
    int theirs = 0;
    slot.OSValue(&theirs);
    EXPECT_EQ(slot.OSValue(), &theirs);
  });
  EXPECT_EQ(slot.OSValue(), &mine);
}

TEST(ThreadLocalTest, ANewSlotNeverSeesTheValueOfADestroyedOne) {
  int value = 0;
  for (int i = 0; i < 100; ++i) {
    qc_ThreadLocal slot;
    ASSERT_EQ(slot.OSValue(), nullptr);
    slot.OSValue(&value);
  }
}

TEST(ThreadLocalTest, ASlotDestroyedElsewhereIsNotSeenByALaterOneEither) {
  auto slot = std::make_unique<qc_ThreadLocal>();
  int value = 0;
  slot->OSValue(&value);
  onNewThread([&slot] { slot = std::make_unique<qc_ThreadLocal>(); });
  EXPECT_EQ(slot->OSValue(), nullptr);
}

TEST(ThreadIdTest, NamesTheThread) {
  const qcThreadID mine = qfGetCurrentThreadID();
  EXPECT_TRUE(mine == qfGetCurrentThreadID());
  onNewThread([&mine] { EXPECT_FALSE(mine == qfGetCurrentThreadID()); });
}

/// Appends its number to a list when the thread ends.
struct Note {
  std::vector<int>* list;
  int number;
  static void write(const qcThreadID& /*thread*/, void* context) {
    const auto* const note = static_cast<const Note*>(context);
    note->list->push_back(note->number);
  }
};

TEST(ThreadExitTest, FunctionsRunWhenTheThreadEndsTheLastOneFirst) {
  std::vector<int> list;
  std::vector<Note> notes = {{&list, 0}, {&list, 1}, {&list, 2}};
  onNewThread([&] {
    for (Note& note : notes) qfGetCurrentThreadID().atexit(&Note::write, &note);
    EXPECT_TRUE(list.empty());
  });
  EXPECT_EQ(list, (std::vector<int>{2, 1, 0}));
}

TEST(ThreadExitTest, FunctionsGetTheIdOfTheirThread) {
  qcThreadID seen = qfGetCurrentThreadID();
  std::thread::id expected;
  onNewThread([&] {
    expected = std::this_thread::get_id();
    qfGetCurrentThreadID().atexit(
        [](const qcThreadID& thread, void* context) {
          *static_cast<qcThreadID*>(context) = thread;
        },
        &seen);
  });
  EXPECT_TRUE(seen == qcThreadID(expected));
}

TEST(ThreadExitTest, FunctionsMayReadAndSetSlots) {
  struct Context {
    qc_ThreadLocal slot;
    void* read = nullptr;
    void* readAfterSetting = nullptr;
  } context;
  onNewThread([&context] {
    context.slot.OSValue(&context);
    const auto readAndClear = [](const qcThreadID& /*thread*/, void* pointer) {
      auto& c = *static_cast<Context*>(pointer);
      c.read = c.slot.OSValue();
      c.slot.OSValue(&c.read);
      c.readAfterSetting = c.slot.OSValue();
    };
    qfGetCurrentThreadID().atexit(readAndClear, &context);
  });
  EXPECT_EQ(context.read, &context);
  EXPECT_EQ(context.readAfterSetting, &context.read);
}

TEST(ThreadExitTest, FunctionsMayRegisterMore) {
  std::vector<int> list;
  std::vector<Note> notes = {{&list, 0}, {&list, 1}};
  struct Context {
    std::vector<int>* list;
    Note* more;
  } context{&list, &notes[1]};
  onNewThread([&] {
    qfGetCurrentThreadID().atexit(&Note::write, notes.data());
    const auto registerMore = [](const qcThreadID& thread, void* pointer) {
      const auto& c = *static_cast<Context*>(pointer);
      c.list->push_back(7);
      thread.atexit(&Note::write, c.more);
    };
    qfGetCurrentThreadID().atexit(registerMore, &context);
  });
  EXPECT_EQ(list, (std::vector<int>{7, 1, 0}));
}

TEST(ThreadExitTest, OtherThreadsAreRefused) {
  const qcThreadID mine = qfGetCurrentThreadID();
  onNewThread(
      [&mine] { EXPECT_THROW(mine.atexit(&Note::write, nullptr), qcThreadID::NotCurrentThread); });
}

/// A thread_local object that dies after the thread's slots and exit functions, because it was made
/// before them.
struct LateWitness {
  qc_ThreadLocal* slot = nullptr;
  bool* wasNull = nullptr;
  std::vector<int>* list = nullptr;
  Note note{};
  ~LateWitness() {
    if (slot == nullptr) return;
    const bool nullBefore = slot->OSValue() == nullptr;
    slot->OSValue(this);
    *wasNull = nullBefore && slot->OSValue() == nullptr;
    note = {list, 9};
    qfGetCurrentThreadID().atexit(&Note::write, &note);
  }
};

LateWitness& lateWitness() {
  thread_local LateWitness witness;
  return witness;
}

TEST(ThreadExitTest, AfterwardsSlotsAreNullAndNothingIsSetOrRun) {
  qc_ThreadLocal slot;
  bool wasNull = false;
  std::vector<int> list;
  onNewThread([&] {
    LateWitness& witness = lateWitness();
    witness.slot = &slot;
    witness.wasNull = &wasNull;
    witness.list = &list;
    slot.OSValue(&slot);
  });
  EXPECT_TRUE(wasNull);
  EXPECT_TRUE(list.empty());
}

TEST(ThreadExitTest, ThousandsOfShortThreadsLeaveNothingBehind) {
  static std::atomic<int> alive{0};
  qc_ThreadLocal slot;
  for (int i = 0; i < 3000; ++i) {
    onNewThread([&slot] {
      ASSERT_EQ(slot.OSValue(), nullptr);
      slot.OSValue(new int(++alive));
      const auto deleteValue = [](const qcThreadID& /*thread*/, void* context) {
        auto& s = *static_cast<qc_ThreadLocal*>(context);
        delete static_cast<int*>(s.OSValue());
        s.OSValue(nullptr);
        --alive;
      };
      qfGetCurrentThreadID().atexit(deleteValue, &slot);
    });
  }
  EXPECT_EQ(alive, 0);
}

TEST(ThreadExitTest, ThreadsAtTheSameTimeKeepApart) {
  constexpr int threadCount = 8;
  qc_ThreadLocal slot;
  std::atomic<int> wrong{0};
  std::atomic<int> ended{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < threadCount; ++t) {
    threads.emplace_back([&] {
      int mine = 0;
      slot.OSValue(&mine);
      for (int i = 0; i < 1000; ++i) {
        const qc_ThreadLocal own;
        if (slot.OSValue() != &mine || own.OSValue() != nullptr) ++wrong;
      }
      qfGetCurrentThreadID().atexit(
          [](const qcThreadID& /*thread*/, void* context) {
            ++*static_cast<std::atomic<int>*>(context);
          },
          &ended);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(ended, threadCount);
}

}  // namespace
