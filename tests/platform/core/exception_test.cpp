// SPDX-License-Identifier: MIT
//
// The exceptions: their texts, carrying them on the heap, and their records.

#include <platform/core/exception.h>

#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <platform/core/thread.h>
#include <tests/platform/archive_bytes.h>

#include "live_count.h"

namespace {

/// An exception that the tests can count.
class CountedException : public qcExceptionWithString {
 public:
  using qcExceptionWithString::qcExceptionWithString;
  void suicideAndRethrow() override { qf_DeleteAndThrowCopy(this); }
  long errorNumber() const override { return 77; }

 private:
  LiveCount count_;
};

TEST(ExceptionTest, WhatNamesTheClass) {
  EXPECT_STREQ(qcException().what(), "qcException");
  EXPECT_STREQ(qcBadPointer().what(), "qcBadPointer");
  EXPECT_STREQ(qcMathError::Singular().what(), "qcMathError::Singular");
  EXPECT_STREQ(qcPel::BadWindow().what(), "qcPel::BadWindow");
  EXPECT_STREQ(qcThreadID::NotCurrentThread().what(), "qcThreadID::NotCurrentThread");
}

TEST(ExceptionTest, WhatAppendsTheMessage) {
  EXPECT_STREQ(qcExceptionWithString(L"too late").what(), "qcExceptionWithString: too late");
  EXPECT_STREQ(qcArchive::BadFormat(L"odd").what(), "qcArchive::BadFormat: odd");
}

TEST(ExceptionTest, WhatOfAnEmptyMessageIsTheClassAlone) {
  EXPECT_STREQ(qcExceptionWithString().what(), "qcExceptionWithString");
  EXPECT_STREQ(qcExceptionWithString(nullptr).what(), "qcExceptionWithString");
}

TEST(ExceptionTest, WhatIsUtf8) {
  const std::pair<const wchar_t*, const char*> cases[] = {
      {L"\u007f", "\x7f"},
      {L"\u0080", "\xc2\x80"},
      {L"Gr\u00f6\u00dfe",
       "Gr\xc3\xb6\xc3\x9f"
       "e"},
      {L"\u07ff", "\xdf\xbf"},
      {L"\u0800", "\xe0\xa0\x80"},
      {L"\u20ac", "\xe2\x82\xac"},
      {L"\uffff", "\xef\xbf\xbf"},
      {L"\U00010000", "\xf0\x90\x80\x80"},
      {L"\U0001f600!", "\xf0\x9f\x98\x80!"},
      {L"\U0010ffff", "\xf4\x8f\xbf\xbf"},
  };
  for (const auto& [wide, utf8] : cases) {
    EXPECT_EQ(qcExceptionWithString(wide).what(), std::string("qcExceptionWithString: ") + utf8);
  }
}

TEST(ExceptionTest, SurrogatePairsAreOneCharacterAndLoneSurrogatesAreReplaced) {
  const auto what = [](std::initializer_list<unsigned> units) {
    std::wstring text;
    for (const unsigned unit : units) text += static_cast<wchar_t>(unit);
    const std::string described = qcExceptionWithString(text.c_str()).what();
    return described.substr(described.find(": ") + 2);
  };
  EXPECT_EQ(what({0xD83D, 0xDE00}), "\xf0\x9f\x98\x80");
  EXPECT_EQ(what({0xD800, 0xDC00}), "\xf0\x90\x80\x80");
  EXPECT_EQ(what({0xDBFF, 0xDFFF}), "\xf4\x8f\xbf\xbf");
  EXPECT_EQ(what({0xD83D}), "\xef\xbf\xbd");
  EXPECT_EQ(what({0xD83D, 'x'}), "\xef\xbf\xbdx");
  EXPECT_EQ(what({0xDE00, 0xD83D}), "\xef\xbf\xbd\xef\xbf\xbd");
  if constexpr (sizeof(wchar_t) > 2) {
    EXPECT_EQ(what({0x110000}), "\xef\xbf\xbd");
  }
}

TEST(ExceptionTest, WhatLivesAsLongAsTheExceptionAndIsMadeOnce) {
  const qcExceptionWithString exception(L"once");
  EXPECT_EQ(exception.what(), exception.what());
}

TEST(ExceptionTest, WhatMayBeAskedOnSeveralThreads) {
  for (int round = 0; round < 50; ++round) {
    const qcExceptionWithString exception(L"shared");
    std::vector<const char*> answers(4);
    std::vector<std::thread> threads;
    for (const char*& answer : answers) {
      threads.emplace_back([&exception, &answer] { answer = exception.what(); });
    }
    for (std::thread& thread : threads) thread.join();
    for (const char* const answer : answers) {
      EXPECT_EQ(answer, exception.what());
      EXPECT_STREQ(answer, "qcExceptionWithString: shared");
    }
  }
}

TEST(ExceptionTest, CopiesAndAssignmentsTakeTheMessage) {
  const qcExceptionWithString first(L"first");
  EXPECT_STREQ(first.what(), "qcExceptionWithString: first");
  const qcExceptionWithString copy(first);
  EXPECT_STREQ(copy.what(), "qcExceptionWithString: first");
  qcExceptionWithString assigned(L"second");
  EXPECT_STREQ(assigned.what(), "qcExceptionWithString: second");
  assigned = first;
  EXPECT_STREQ(assigned.what(), "qcExceptionWithString: first");
  EXPECT_EQ(assigned.message(), L"first");
}

TEST(ExceptionTest, MessageIsTheTextUpToItsTerminatingNull) {
  EXPECT_EQ(qcExceptionWithString(L"ab\0c").message(), L"ab");
  EXPECT_EQ(qcExceptionWithString(nullptr).message(), L"");
}

TEST(ExceptionTest, MessageIsWrittenToAWideStream) {
  std::wostringstream out;
  qcExceptionWithString(L"k\u00fcrzer").message_(out);
  EXPECT_EQ(out.str(), L"k\u00fcrzer");
}

TEST(ExceptionTest, ErrorNumberIsZeroWhereTheClassHasNone) {
  EXPECT_EQ(qcException().errorNumber(), 0);
  EXPECT_EQ(qcArchive::Truncated().errorNumber(), 0);
}

TEST(ExceptionTest, UnknownVersionNamesTheCheck) {
  const qcArchive::UnknownVersion exception("cntr/contour", 904);
  EXPECT_STREQ(exception.source(), "cntr/contour");
  EXPECT_EQ(exception.line(), 904);
  EXPECT_STREQ(exception.what(), "qcArchive::UnknownVersion: cntr/contour line 904");
}

TEST(ExceptionTest, UnknownVersionNamesTheFirstLineToo) {
  EXPECT_STREQ(qcArchive::UnknownVersion("cntr/contour", 1).what(),
               "qcArchive::UnknownVersion: cntr/contour line 1");
}

TEST(ExceptionTest, UnknownVersionWithoutALineNamesTheSourceAlone) {
  EXPECT_STREQ(qcArchive::UnknownVersion("qcPoint", 0).what(),
               "qcArchive::UnknownVersion: qcPoint");
}

TEST(ExceptionTest, UnknownVersionWithoutASourceHasAnEmptyOne) {
  const qcArchive::UnknownVersion exception(nullptr, 0);
  EXPECT_STREQ(exception.source(), "");
  EXPECT_EQ(exception.line(), 0);
}

TEST(ExceptionTest, EveryClassIsCaughtAsItsBases) {
  EXPECT_THROW(throw qcMathError::Singular(), qcMathError::Errors);
  EXPECT_THROW(throw qcPel::BadWindow(), qcPel::Errors);
  EXPECT_THROW(throw qcArchive::UnknownVersion(nullptr, 0), qcArchive::Errors);
  EXPECT_THROW(throw qcArchive::WriteFailed(), qcExceptionWithString);
  EXPECT_THROW(throw qcBadPointer(), qcException);
  EXPECT_THROW(throw qcBadPointer(), std::exception);
}

template <class X>
X* makeOnHeap() {
  if constexpr (std::is_default_constructible_v<X>) {
    return new X;
  } else {
    return new X("source", 5);
  }
}

template <class X>
class EveryExceptionTest : public testing::Test {};

using EveryException =
    testing::Types<qcException, qcExceptionWithString, qcBadPointer, qcMathError::Errors,
                   qcMathError::Singular, qcPel::Errors, qcPel::BadWindow,
                   qcThreadID::NotCurrentThread, qcArchive::Errors, qcArchive::UnknownVersion,
                   qcArchive::BadFormat, qcArchive::Truncated, qcArchive::ValueTooLarge,
                   qcArchive::WriteFailed>;
TYPED_TEST_SUITE(EveryExceptionTest, EveryException);

TYPED_TEST(EveryExceptionTest, SuicideAndRethrowThrowsTheSameClass) {
  qcException* const carried = makeOnHeap<TypeParam>();
  try {
    carried->suicideAndRethrow();
    FAIL() << "nothing was thrown";
  } catch (const qcException& thrown) {
    EXPECT_TRUE(typeid(thrown) == typeid(TypeParam)) << thrown.what();
  }
}

TYPED_TEST(EveryExceptionTest, ComesBackFromAnArchiveAsTheSameClass) {
  const std::unique_ptr<qcException> stored(makeOnHeap<TypeParam>());
  const std::string bytes =
      storedBytes([&](qcArchive& archive) { archive.transferShared(stored.get()); });
  loadBytes(bytes, [](qcArchive& archive) {
    const qcPersistent* const loaded = archive.transferShared(nullptr);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(typeid(*loaded) == typeid(TypeParam));
  });
}

TEST(ExceptionTest, SuicideAndRethrowThrowsACopyAndLeavesNoObjectBehind) {
  qcException* const carried = new CountedException(L"carried");
  ASSERT_EQ(LiveCount::alive(), 1);
  try {
    carried->suicideAndRethrow();
    FAIL() << "nothing was thrown";
  } catch (const CountedException& thrown) {
    EXPECT_EQ(LiveCount::alive(), 1);
    EXPECT_NE(&thrown, carried);
    EXPECT_EQ(thrown.message(), L"carried");
    EXPECT_EQ(thrown.errorNumber(), 77);
  }
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(ExceptionRecordTest, ByValueIsAVersionAndThePersistentRecord) {
  qcException exception;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || exception; }), "00 00");
}

TEST(ExceptionRecordTest, ByPointerIsIdNameAndRecord) {
  qcMathError::Singular exception;
  const std::string bytes =
      storedBytes([&](qcArchive& archive) { archive.transferShared(&exception); });
  EXPECT_EQ(bytes, fromHex("01000000 15000000 'qcMathError::Singular' 00 00"));
}

TEST(ExceptionRecordTest, TheMessageIsNotStored) {
  qcExceptionWithString stored(L"stays here");
  qcExceptionWithString loaded(L"older");
  EXPECT_STREQ(loaded.what(), "qcExceptionWithString: older");
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || stored; });
  loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(stored.message(), L"stays here");
  EXPECT_EQ(loaded.message(), L"");
  EXPECT_STREQ(loaded.what(), "qcExceptionWithString");
  loadBytes(storedBytes([&](qcArchive& archive) { archive.transferShared(&stored); }),
            [](qcArchive& archive) {
              const auto* const back =
                  dynamic_cast<qcExceptionWithString*>(archive.transferShared(nullptr));
              ASSERT_NE(back, nullptr);
              EXPECT_EQ(back->message(), L"");
            });
}

TEST(ExceptionRecordTest, AnotherVersionIsRefusedByName) {
  qcException exception;
  try {
    loadHex("01 00", [&](qcArchive& archive) { archive || exception; });
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::UnknownVersion& error) {
    EXPECT_STREQ(error.source(), "qcException");
    EXPECT_EQ(error.line(), 0);
  }
}

}  // namespace
