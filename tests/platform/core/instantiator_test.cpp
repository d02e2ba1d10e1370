// SPDX-License-Identifier: MIT
//
// The names of classes and their registry, as archives use them.

#include <platform/core/persistent.h>

#include <latch>
#include <thread>
#include <typeinfo>
#include <utility>

#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <tests/platform/archive_bytes.h>

/// In no namespace, as the classes of the library are.
template <class... T>
class testGeneric {
 public:
  class Inner {};
};

class testRegisteredTwice : public virtual qcPersistent {
 public:
  int maker = 0;
};

class testNamed : public virtual qcPersistent {};

namespace {

TEST(ClassNameTest, IsTheNameAsWrittenInCpp) {
  EXPECT_EQ(qf_ClassName(typeid(testNamed)), "testNamed");
  EXPECT_EQ(qf_ClassName(typeid(qcArchive::BadFormat)), "qcArchive::BadFormat");
  EXPECT_EQ(qf_ClassName(typeid(testGeneric<testNamed>)), "testGeneric<testNamed>");
  EXPECT_EQ(qf_ClassName(typeid(testGeneric<testNamed>::Inner)), "testGeneric<testNamed>::Inner");
}

TEST(ClassNameTest, HasNoSpaces) {
  EXPECT_EQ(qf_ClassName(typeid(testGeneric<testNamed, testGeneric<testNamed>>)),
            "testGeneric<testNamed,testGeneric<testNamed>>");
}

#if defined(__GLIBCXX__)
/// A type whose raw name is readable already, with the keywords that some compilers put in.
class ReadableType : public std::type_info {
 public:
  explicit ReadableType(const char* name) : std::type_info(name) {}
};

TEST(ClassNameTest, HasNoKeywords) {
  EXPECT_EQ(qf_ClassName(ReadableType("class A<struct B,class C<enum D> >")), "A<B,C<D>>");
  EXPECT_EQ(qf_ClassName(ReadableType("struct subclass ::union U")), "subclass::U");
}
#endif

template <int maker>
qcPersistent* makeRegistered() {
  auto* const object = new testRegisteredTwice;
  object->maker = maker;
  return object;
}

TEST(RegistryTest, RegisteringAgainReplacesTheFactory) {
  const auto makerOfLoadedObject = [] {
    int maker = 0;
    loadHex("01000000 13000000 'testRegisteredTwice' 00", [&](qcArchive& archive) {
      maker = dynamic_cast<testRegisteredTwice&>(*archive.transferShared(nullptr)).maker;
    });
    return maker;
  };
  const qc_Instantiator first(typeid(testRegisteredTwice), &makeRegistered<1>);
  EXPECT_EQ(makerOfLoadedObject(), 1);
  const qc_Instantiator second(typeid(testRegisteredTwice), &makeRegistered<2>);
  EXPECT_EQ(makerOfLoadedObject(), 2);
}

template <int number>
class testNumbered : public virtual qcPersistent {
 public:
  static qcPersistent* make() { return new testNumbered; }
  static void enroll() { const qc_Instantiator registered(typeid(testNumbered), &make); }
  static bool isKnown() {
    testNumbered object;
    return !storedBytes([&](qcArchive& archive) { archive.transferShared(&object); }).empty();
  }
};

/// Each thread registers some of the classes; all of them start together.
template <std::size_t thread, std::size_t... number>
void enrollSome(std::latch& start, std::index_sequence<number...> /*numbers*/) {
  start.count_down();
  while (!start.try_wait()) {
  }
  (testNumbered<static_cast<int>(sizeof...(number) * thread + number)>::enroll(), ...);
}

template <std::size_t... number>
bool areKnown(std::index_sequence<number...> /*numbers*/) {
  return (testNumbered<static_cast<int>(number)>::isKnown() && ...);
}

TEST(RegistryTest, ClassesMayRegisterOnSeveralThreadsAtOnce) {
  std::latch start(2);
  const auto each = std::make_index_sequence<100>();
  std::thread other([&] { enrollSome<1>(start, each); });
  enrollSome<0>(start, each);
  other.join();
  EXPECT_TRUE(areKnown(std::make_index_sequence<200>()));
}

}  // namespace
