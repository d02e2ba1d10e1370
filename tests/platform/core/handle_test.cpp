// SPDX-License-Identifier: MIT
//
// Handles and reference counts.

#include <platform/core/handle.h>

#include <memory>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "live_count.h"

namespace {

class Base : public virtual qcRepBase {
 public:
  explicit Base(int value = 0) : value_(value) {}
  int value() const { return value_; }
  void value(int v) { value_ = v; }

 private:
  int value_;
  LiveCount count_;
};

/// Its counted part is at a different address from its own.
class Derived : private std::vector<int>, public Base {
 public:
  using Base::Base;
};

TEST(HandleTest, DefaultIsNull) {
  const qcPtrHandle<Base> handle;
  EXPECT_FALSE(handle);
  EXPECT_EQ(handle.get(), nullptr);
  EXPECT_FALSE(qcPtrHandle_const<Base>());
}

TEST(HandleTest, TheLastHandleDeletesTheObject) {
  {
    qcPtrHandle<Base> first(new Base(5));
    {
      const qcPtrHandle<Base> second = first;
      EXPECT_EQ(second.get(), first.get());
      EXPECT_EQ(LiveCount::alive(), 1);
    }
    EXPECT_EQ(LiveCount::alive(), 1);
    EXPECT_EQ(first->value(), 5);
  }
  EXPECT_EQ(LiveCount::alive(), 0);
}

/// Holds the previous one.
class Link : public virtual qcRepBase {
 public:
  explicit Link(qcPtrHandle<Link> before) : before_(std::move(before)) {}

 private:
  qcPtrHandle<Link> before_;
  LiveCount count_;
};

TEST(HandleTest, ChainsLongerThanTheStackIsDeepAreReleased) {
  constexpr int length = 1000000;
  for (int round = 0; round < 2; ++round) {
    qcPtrHandle<Link> chain;
    for (int i = 0; i < length; ++i) chain = qcPtrHandle<Link>(new Link(std::move(chain)));
    EXPECT_EQ(LiveCount::alive(), length);
    chain = {};
    EXPECT_EQ(LiveCount::alive(), 0) << "chain " << round;
  }
}

/// In a template, where compilers have been seen to leak the object that the assignment replaces.
template <class Handle>
void assignNothing(Handle& handle) {
  handle = {};
}

TEST(HandleTest, AssigningNothingDropsTheOldObject) {
  qcPtrHandle<Base> handle(new Base(1));
  qcPtrHandle_const<Base> constHandle(new Base(2));
  EXPECT_EQ(LiveCount::alive(), 2);
  assignNothing(handle);
  assignNothing(constHandle);
  EXPECT_EQ(LiveCount::alive(), 0);
  EXPECT_FALSE(handle);
  EXPECT_FALSE(constHandle);
}

TEST(HandleTest, AssigningDropsTheOldObject) {
  qcPtrHandle<Base> handle(new Base(1));
  handle = qcPtrHandle<Base>(new Base(2));
  EXPECT_EQ(LiveCount::alive(), 1);
  EXPECT_EQ(handle->value(), 2);
  handle = qcPtrHandle<Base>();
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(HandleTest, AssigningToItselfKeepsTheObject) {
  qcPtrHandle<Base> handle(new Base(1));
  const qcPtrHandle<Base>& same = handle;
  handle = same;
  EXPECT_EQ(handle->value(), 1);
  qcPtrHandle_const<Base> constHandle = handle;
  const qcPtrHandle_const<Base>& sameConst = constHandle;
  constHandle = sameConst;
  handle = qcPtrHandle<Base>();
  EXPECT_EQ(constHandle->value(), 1);
}

TEST(HandleTest, MovingLeavesNull) {
  qcPtrHandle<Base> from(new Base(1));
  qcPtrHandle<Base> to(std::move(from));
  EXPECT_FALSE(from);
  EXPECT_EQ(from.get(), nullptr);
  qcPtrHandle_const<Base> constFrom = to;
  const qcPtrHandle_const<Base> constTo(std::move(constFrom));
  EXPECT_FALSE(constFrom);
  EXPECT_EQ(constTo.get(), to.get());
  EXPECT_EQ(LiveCount::alive(), 1);
}

TEST(HandleTest, SwappingExchangesTheObjects) {
  qcPtrHandle<Base> one(new Derived(1));
  qcPtrHandle<Base> none;
  one.swap(none);
  EXPECT_FALSE(one);
  EXPECT_EQ(none->value(), 1);
  qcPtrHandle_const<Base> two(new Base(2));
  qcPtrHandle_const<Base> shared = none;
  two.swap(shared);
  none = {};
  EXPECT_EQ(two->value(), 1);
  EXPECT_EQ(shared->value(), 2);
  EXPECT_EQ(LiveCount::alive(), 2);
}

TEST(HandleTest, AHandleMayBeMadeAgainFromABarePointer) {
  Base* const object = new Base(1);
  const qcPtrHandle<Base> first(object);
  { const qcPtrHandle<Base> second(object); }
  EXPECT_EQ(first->value(), 1);
}

TEST(HandleTest, DerivedConvertsToBaseAndSharesTheObject) {
  qcPtrHandle<Base> base;
  {
    const qcPtrHandle<Derived> derived(new Derived(3));
    base = derived;
    EXPECT_TRUE(base == qcPtrHandle<Base>(derived));
  }
  EXPECT_EQ(base->value(), 3);
  EXPECT_EQ(LiveCount::alive(), 1);
}

TEST(HandleTest, MutableConvertsToConstAndSharesTheObject) {
  qcPtrHandle_const<Base> reader;
  {
    const qcPtrHandle<Derived> writer(new Derived(3));
    reader = writer;
    writer->value(4);
  }
  EXPECT_EQ(reader->value(), 4);
  EXPECT_EQ((*reader).value(), 4);
}

TEST(HandleTest, NothingElseConverts) {
  EXPECT_FALSE((std::is_convertible_v<qcPtrHandle<Base>, qcPtrHandle<Derived>>));
  EXPECT_FALSE((std::is_convertible_v<qcPtrHandle_const<Base>, qcPtrHandle<Base>>));
  EXPECT_FALSE((std::is_convertible_v<Base*, qcPtrHandle<Base>>));
  EXPECT_FALSE((std::is_convertible_v<qcPtrHandle<Base>, bool>));
}

TEST(HandleTest, ComparesByIdentity) {
  const qcPtrHandle<Base> a(new Base(1));
  const qcPtrHandle<Base> b(new Base(1));
  const qcPtrHandle<Base> alsoA = a;
  EXPECT_TRUE(a == alsoA);
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(a != b);
  EXPECT_TRUE(qcPtrHandle<Base>() == qcPtrHandle<Base>());
}

TEST(HandleTest, NullThrowsBadPointerWhenItIsDereferenced) {
  const qcPtrHandle<Base> handle;
  EXPECT_THROW(handle->value(), qcBadPointer);
  EXPECT_THROW((*handle).value(), qcBadPointer);
  const qcPtrHandle_const<Base> constHandle;
  EXPECT_THROW(constHandle->value(), qcBadPointer);
  EXPECT_THROW((*constHandle).value(), qcBadPointer);
}

TEST(HandleTest, ACopiedObjectHasItsOwnCount) {
  const qcPtrHandle<Base> original(new Base(1));
  const qcPtrHandle<Base> alsoOriginal = original;
  {
    const qcPtrHandle<Base> copy(new Base(*original));
    EXPECT_EQ(LiveCount::alive(), 2);
  }
  EXPECT_EQ(LiveCount::alive(), 1);
}

TEST(HandleTest, AssigningAnObjectKeepsItsCount) {
  const Base value(9);
  {
    const qcPtrHandle<Base> first(new Base(1));
    const qcPtrHandle<Base> second = first;
    *first = value;
    EXPECT_EQ(second->value(), 9);
  }
  EXPECT_EQ(LiveCount::alive(), 1);
}

TEST(HandleTest, CopiesMayBeMadeAndDroppedOnSeveralThreads) {
  auto handle = std::make_unique<qcPtrHandle<Base>>(new Base(1));
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([own = *handle] {
      for (int i = 0; i < 20000; ++i) {
        const qcPtrHandle_const<Base> copy = own;
        if (copy.get() != own.get()) ADD_FAILURE();
      }
    });
  }
  handle.reset();
  for (std::thread& thread : threads) thread.join();
  threads.clear();
  EXPECT_EQ(LiveCount::alive(), 0);
}

}  // namespace
