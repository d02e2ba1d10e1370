// SPDX-License-Identifier: MIT
//
// qcPersistent by itself: change notices, hooks, its record. Marks and pointers are in
// archive_objects_test.cpp, the registry of classes in instantiator_test.cpp.

#include <platform/core/persistent.h>

#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <tests/platform/archive_bytes.h>

namespace {

class Watched : public virtual qcPersistent {
 public:
  void change() { mutating_(); }
  void reInit() override { ++reInits; }
  int reInits = 0;
  unsigned long value = 0;

  static bool visited(const void* object) { return haveVisited(object, 1); }
  static void visit(const void* object) { setVisited(object, 1); }

 protected:
  void dispatchSerialize(qcArchive& archive) override {
    if (haveVisited(this, sizeof(*this))) return;
    archive || value;
    setVisited(this, sizeof(*this));
  }
};

TEST(PersistentTest, ChangesAreCountedWhileTrackingIsOn) {
  Watched object;
  EXPECT_FALSE(object.isTracking());
  object.change();
  EXPECT_EQ(object.changes(), 0U);
  object.isTracking(true);
  object.change();
  object.change();
  EXPECT_EQ(object.changes(), 2U);
}

TEST(PersistentTest, SwitchingTrackingOffKeepsTheCount) {
  Watched object;
  object.isTracking(true);
  object.change();
  object.isTracking(false);
  object.change();
  EXPECT_EQ(object.changes(), 1U);
  object.isTracking(true);
  object.change();
  EXPECT_EQ(object.changes(), 2U);
}

TEST(PersistentTest, ACopyStartsUntracked) {
  Watched object;
  object.isTracking(true);
  object.change();
  const Watched copy(object);
  EXPECT_FALSE(copy.isTracking());
  EXPECT_EQ(copy.changes(), 0U);
}

TEST(PersistentTest, AssignmentKeepsFlagAndCountOfTheTarget) {
  Watched source;
  source.isTracking(true);
  source.change();
  Watched target;
  target = source;
  EXPECT_FALSE(target.isTracking());
  EXPECT_EQ(target.changes(), 0U);
  Watched tracked;
  tracked.isTracking(true);
  tracked = Watched();
  EXPECT_TRUE(tracked.isTracking());
}

TEST(PersistentTest, NothingIsVisitedWhenNoTransferIsUnderWay) {
  const char byte = 0;
  Watched::visit(&byte);
  EXPECT_FALSE(Watched::visited(&byte));
}

TEST(PersistentTest, OwnRecordIsOneVersionByte) {
  class Plain : public qcPersistent {
  } object;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || object; }), "00");
  loadHex("00", [&](qcArchive& archive) { archive || object; });
}

TEST(PersistentTest, AnotherVersionIsRefusedByName) {
  class Plain : public qcPersistent {
  } object;
  try {
    loadHex("01", [&](qcArchive& archive) { archive || object; });
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::UnknownVersion& error) {
    EXPECT_STREQ(error.source(), "qcPersistent");
    EXPECT_EQ(error.line(), 0);
  }
}

TEST(PersistentTest, ReInitIsCalledAfterALoadAndNotAfterAStore) {
  Watched object;
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || object; });
  EXPECT_EQ(object.reInits, 0);
  loadBytes(bytes, [&](qcArchive& archive) { archive || object; });
  EXPECT_EQ(object.reInits, 1);
}

TEST(PersistentTest, LoadSimpleTransfersTheRecordEvenOfAVisitedObject) {
  Watched object;
  object.value = 5;
  EXPECT_EQ(storedHex([&](qcArchive& archive) {
              archive || object;
              object.loadSimple(archive);
              archive || object;
            }),
            "05 00 00 00 05 00 00 00");
  loadHex("06000000 07000000", [&](qcArchive& archive) {
    archive || object;
    object.loadSimple(archive);
  });
  EXPECT_EQ(object.value, 7U);
  EXPECT_EQ(object.reInits, 1);
}

}  // namespace
