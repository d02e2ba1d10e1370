// SPDX-License-Identifier: MIT
//
// What an archive remembers: marks by owner and mode, ids, and who owns what has been loaded.

#include <platform/core/internal/archive_memory.h>

#include <memory>

#include <gtest/gtest.h>
#include <platform/core/archive.h>

namespace {

constexpr qc_TransferMode allModes[] = {qc_TransferMode::eByValue, qc_TransferMode::ePointer,
                                        qc_TransferMode::eByValueInPointer};

/// Counts how many of its kind are alive.
class Owned : public qcPersistent {
 public:
  Owned() { ++alive; }
  ~Owned() override { --alive; }
  static inline int alive = 0;

 protected:
  void dispatchSerialize(qcArchive& /*archive*/) override {}
};

class Counted : public qcRepBase, public Owned {};

TEST(ArchiveMemoryTest, AMarkIsThatOfItsOwnerAddressSizeAndMode) {
  qc_ArchiveMemory memory;
  Owned owner;
  Owned other;
  const qc_VisitedMark mark{&owner, 8, qc_TransferMode::ePointer};
  EXPECT_FALSE(memory.isMarked(owner, mark));
  memory.mark(owner, mark);
  EXPECT_TRUE(memory.isMarked(owner, mark));
  EXPECT_FALSE(memory.isMarked(other, mark));
  EXPECT_FALSE(memory.isMarked(owner, {&other, 8, qc_TransferMode::ePointer}));
  EXPECT_FALSE(memory.isMarked(owner, {&owner, 9, qc_TransferMode::ePointer}));
  EXPECT_FALSE(memory.isMarked(owner, {&owner, 8, qc_TransferMode::eByValue}));
}

TEST(ArchiveMemoryTest, MarksOfOneModeAreForgottenAlone) {
  qc_ArchiveMemory memory;
  Owned owner;
  for (const qc_TransferMode mode : allModes) memory.mark(owner, {&owner, 8, mode});
  memory.forgetMarks(owner, qc_TransferMode::ePointer);
  EXPECT_TRUE(memory.isMarked(owner, {&owner, 8, qc_TransferMode::eByValue}));
  EXPECT_FALSE(memory.isMarked(owner, {&owner, 8, qc_TransferMode::ePointer}));
  EXPECT_TRUE(memory.isMarked(owner, {&owner, 8, qc_TransferMode::eByValueInPointer}));
  memory.forgetMarks(owner);
  for (const qc_TransferMode mode : allModes)
    EXPECT_FALSE(memory.isMarked(owner, {&owner, 8, mode}));
}

TEST(ArchiveMemoryTest, ForgettingMarksOfWhatHasNoneIsNoHarm) {
  qc_ArchiveMemory memory;
  Owned owner;
  Owned other;
  memory.mark(owner, {&owner, 8, qc_TransferMode::eByValue});
  memory.forgetMarks(other);
  memory.forgetMarks(other, qc_TransferMode::eByValue);
  EXPECT_TRUE(memory.isMarked(owner, {&owner, 8, qc_TransferMode::eByValue}));
}

TEST(ArchiveMemoryTest, IdsCountFromOneInTheOrderOfObjects) {
  qc_ArchiveMemory memory;
  Owned first;
  Owned second;
  EXPECT_EQ(memory.nextId(), 1U);
  EXPECT_EQ(memory.idOf(first), 0U);
  memory.add(qc_KnownObject(first));
  memory.add(qc_KnownObject(second));
  EXPECT_EQ(memory.idOf(first), 1U);
  EXPECT_EQ(memory.idOf(second), 2U);
  EXPECT_EQ(memory.nextId(), 3U);
  EXPECT_EQ(memory.known(2).object, &second);
}

TEST(ArchiveMemoryTest, AnObjectWhoseIdIsForgottenGetsAnotherAndTheOldOneStillRefersToIt) {
  qc_ArchiveMemory memory;
  Owned object;
  memory.add(qc_KnownObject(object));
  memory.forgetId(object);
  EXPECT_EQ(memory.idOf(object), 0U);
  EXPECT_EQ(memory.known(1).object, &object);
  memory.add(qc_KnownObject(object));
  EXPECT_EQ(memory.idOf(object), 2U);
}

TEST(ArchiveMemoryTest, TheIdOfADeadObjectRefersToNothing) {
  qc_ArchiveMemory memory;
  Owned object;
  Owned stranger;
  memory.add(qc_KnownObject(object));
  memory.mark(object, {&object, 8, qc_TransferMode::eByValue});
  memory.objectDied(stranger);
  EXPECT_EQ(memory.known(1).object, &object);
  memory.objectDied(object);
  EXPECT_EQ(memory.known(1).object, nullptr);
  EXPECT_EQ(memory.idOf(object), 0U);
  EXPECT_FALSE(memory.isMarked(object, {&object, 8, qc_TransferMode::eByValue}));
  EXPECT_EQ(memory.nextId(), 2U);
}

TEST(ArchiveMemoryTest, WhatWasLoadedLivesAsLongAsTheMemory) {
  {
    qc_ArchiveMemory memory;
    memory.add(qc_KnownObject(std::make_unique<Owned>()));
    EXPECT_EQ(Owned::alive, 1);
  }
  EXPECT_EQ(Owned::alive, 0);
}

TEST(ArchiveMemoryTest, WhatWasLoadedAndHasDiedIsNotDestroyedAgain) {
  qc_ArchiveMemory memory;
  auto* object = new Owned;
  memory.add(qc_KnownObject(std::unique_ptr<qcPersistent>(object)));
  memory.objectDied(*object);
  delete object;
  EXPECT_EQ(Owned::alive, 0);
}

TEST(ArchiveMemoryTest, ACountedObjectLivesAsLongAsTheMemoryOrAHandle) {
  qcPtrHandle<Counted> handle;
  {
    qc_ArchiveMemory memory;
    memory.add(qc_KnownObject(std::make_unique<Counted>()));
    EXPECT_EQ(memory.known(1).owned, nullptr);
    handle = qcPtrHandle<Counted>(dynamic_cast<Counted*>(memory.known(1).object));
    memory.add(qc_KnownObject(std::make_unique<Counted>()));
    EXPECT_EQ(Owned::alive, 2);
  }
  EXPECT_EQ(Owned::alive, 1);
  handle = nullptr;
  EXPECT_EQ(Owned::alive, 0);
}

TEST(KnownObjectTest, IsUnderWayUntilItsLevelsAreKnown) {
  Owned object;
  qc_KnownObject known(object);
  EXPECT_TRUE(known.isUnderWay());
  known.levels = 1;
  EXPECT_FALSE(known.isUnderWay());
}

}  // namespace
