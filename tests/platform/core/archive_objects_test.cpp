// SPDX-License-Identifier: MIT
//
// Objects in an archive: by value and through pointers, once and repeatedly, forgotten and deleted.
// Damaged input is in archive_damage_test.cpp.

#include <limits>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <tests/platform/archive_bytes.h>

#include "archive_test_objects.h"
#include "live_count.h"

namespace {

using Node = qcPtrHandle<testNode>;

/// The record of a testNode with this value (two digits), without parent and children.
std::string leafRecord(const std::string& value) {
  return fromHex("00 00" + value + "000000 00000000 00 00000000");
}

std::string derivedRecord(const std::string& number, const std::string& extra) {
  return fromHex("00 00 00" + number + "000000" + extra + "000000");
}

testDerived derived(unsigned long number, unsigned long extra) {
  testDerived object;
  object.number = number;
  object.extra = extra;
  return object;
}

TEST(ByValueTest, StoresTheRecordAndNothingElse) {
  testDerived object = derived(5, 6);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || object; }), derivedRecord("05", "06"));
}

TEST(ByValueTest, TwiceIsWrittenOnce) {
  testDerived object = derived(5, 6);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || object || object; }),
            derivedRecord("05", "06"));
}

TEST(ByValueTest, TwiceIsReadOnce) {
  testDerived object;
  unsigned char next = 0;
  loadBytes(derivedRecord("05", "06") + fromHex("77"),
            [&](qcArchive& archive) { archive || object || object || next; });
  EXPECT_EQ(object.extra, 6U);
  EXPECT_EQ(next, 0x77);
}

TEST(ByValueTest, EqualObjectsAreWrittenEach) {
  testDerived first = derived(5, 6);
  testDerived second = first;
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || first || second; }),
            derivedRecord("05", "06") + derivedRecord("05", "06"));
}

TEST(ByValueTest, ALoopThatStoresALocalVariableStoresAllOfThem) {
  const std::string bytes = storedBytes([](qcArchive& archive) {
    for (unsigned long i = 1; i <= 3; ++i) {
      testDerived local = derived(i, i);
      archive || local;
    }
  });
  EXPECT_EQ(bytes,
            derivedRecord("01", "01") + derivedRecord("02", "02") + derivedRecord("03", "03"));
}

TEST(ByValueTest, AVariableThatIsForgottenIsLoadedAgainAndAgain) {
  const std::string bytes =
      derivedRecord("01", "11") + derivedRecord("02", "12") + derivedRecord("03", "13");
  std::vector<unsigned long> loaded;
  loadBytes(bytes, [&](qcArchive& archive) {
    testDerived variable;
    for (int i = 0; i < 3; ++i) {
      archive || variable;
      archive.forget(variable);
      loaded.push_back(variable.number);
      loaded.push_back(variable.extra);
    }
  });
  EXPECT_EQ(loaded, (std::vector<unsigned long>{1, 0x11, 2, 0x12, 3, 0x13}));
}

TEST(ByValueTest, AVariableThatIsForgottenIsStoredAgain) {
  testDerived variable = derived(1, 1);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) {
              archive || variable;
              archive.forget(variable);
              variable.extra = 2;
              archive || variable;
            }),
            derivedRecord("01", "01") + derivedRecord("01", "02"));
}

TEST(ByValueTest, ForgettingOneObjectKeepsTheOthers) {
  testDerived kept = derived(1, 1);
  testDerived forgotten = derived(2, 2);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) {
              archive || kept || forgotten;
              archive.forget(forgotten);
              archive || kept || forgotten;
            }),
            derivedRecord("01", "01") + derivedRecord("02", "02") + derivedRecord("02", "02"));
}

TEST(ByValueTest, ListsOfObjectsComeBack) {
  std::vector<testDerived> list = {derived(1, 2), derived(3, 4), derived(5, 6)};
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || list; });
  EXPECT_EQ(bytes.size(), 5 + 3 * derivedRecord("00", "00").size());
  std::vector<testDerived> loaded;
  loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
  ASSERT_EQ(loaded.size(), 3U);
  EXPECT_EQ(loaded[2].number, 5U);
  EXPECT_EQ(loaded[2].extra, 6U);
}

TEST(HandleRecordTest, NullIsTheIdZero) {
  Node null;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || null; }), "00 00 00 00");
  Node loaded(new testNode(1));
  loadHex("00000000", [&](qcArchive& archive) { archive || loaded; });
  EXPECT_FALSE(loaded);
}

TEST(HandleRecordTest, ANewObjectIsIdNameAndRecord) {
  Node node(new testNode(5));
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || node; }),
            newNode("01") + leafRecord("05"));
}

TEST(HandleRecordTest, TwiceIsWrittenOnce) {
  Node node(new testNode(5));
  Node other(new testNode(6));
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || node || other || node || other; }),
            newNode("01") + leafRecord("05") + newNode("02") + leafRecord("06") +
                fromHex("01000000 02000000"));
}

TEST(HandleRecordTest, TwiceIsReadAsOneObject) {
  Node first;
  qcPtrHandle_const<testNode> second;
  loadBytes(newNode("01") + leafRecord("05") + fromHex("01000000"),
            [&](qcArchive& archive) { archive || first || second; });
  ASSERT_TRUE(first);
  EXPECT_EQ(first->value, 5U);
  EXPECT_EQ(second.get(), first.get());
}

TEST(HandleRecordTest, LoadedObjectsLiveAsLongAsTheirHandles) {
  {
    Node node;
    loadBytes(newNode("01") + leafRecord("05"), [&](qcArchive& archive) { archive || node; });
    EXPECT_EQ(LiveCount::alive(), 1);
    EXPECT_EQ(node->value, 5U);
  }
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(HandleRecordTest, LoadedObjectsLiveAsLongAsTheArchiveWithoutAHandle) {
  loadBytes(newNode("01") + leafRecord("05") + fromHex("01000000"), [](qcArchive& archive) {
    {
      Node node;
      archive || node;
    }
    EXPECT_EQ(LiveCount::alive(), 1);
    Node again;
    archive || again;
    EXPECT_EQ(again->value, 5U);
  });
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(HandleRecordTest, AnObjectOfAnotherClassLoadsAsNullAndIsKeptForOthers) {
  qcPtrHandle<testOther> other;
  qcPtrHandle_const<testOther> constOther;
  Node node;
  loadBytes(newNode("01") + leafRecord("05") + fromHex("01000000 01000000"),
            [&](qcArchive& archive) { archive || other || constOther || node; });
  EXPECT_FALSE(other);
  EXPECT_FALSE(constOther);
  EXPECT_EQ(node->value, 5U);
}

TEST(HandleRecordTest, AnObjectThatNoHandleCouldHoldDiesWithTheArchive) {
  Node node;
  loadHex("01000000 09000000 'testOwner' 05000000 00000000", [&](qcArchive& archive) {
    archive || node;
    EXPECT_EQ(LiveCount::alive(), 1);
  });
  EXPECT_FALSE(node);
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(HandleRecordTest, SharedChildrenComeBackShared) {
  Node root(new testNode(1));
  const Node shared(new testNode(2));
  root->add(shared);
  root->add(shared);
  Node loaded;
  loadBytes(storedBytes([&](qcArchive& archive) { archive || root; }),
            [&](qcArchive& archive) { archive || loaded; });
  ASSERT_EQ(loaded->children.size(), 2U);
  EXPECT_EQ(loaded->children[0]->value, 2U);
  EXPECT_TRUE(loaded->children[0] == loaded->children[1]);
}

TEST(HandleRecordTest, AForgottenObjectIsWrittenAgainUnderANewId) {
  Node node(new testNode(5));
  EXPECT_EQ(
      storedBytes([&](qcArchive& archive) {
        archive || node;
        archive.forget(*node);
        archive || node || node;
      }),
      newNode("01") + leafRecord("05") + newNode("02") + leafRecord("05") + fromHex("02000000"));
}

TEST(HandleRecordTest, ForgettingALoadedObjectKeepsItsId) {
  Node first;
  Node second;
  loadBytes(newNode("01") + leafRecord("05") + fromHex("01000000"), [&](qcArchive& archive) {
    archive || first;
    archive.forget(*first);
    archive || second;
  });
  EXPECT_TRUE(first == second);
}

TEST(HandleRecordTest, ALoopThatStoresNewObjectsStoresAllOfThem) {
  const std::string bytes = storedBytes([](qcArchive& archive) {
    for (unsigned long i = 1; i <= 3; ++i) {
      Node node(new testNode(i));
      archive || node;
    }
  });
  EXPECT_EQ(bytes, newNode("01") + leafRecord("01") + newNode("02") + leafRecord("02") +
                       newNode("03") + leafRecord("03"));
}

TEST(HandleRecordTest, ListsOfHandlesComeBack) {
  std::vector<Node> list = {Node(new testNode(1)), Node(), Node(new testNode(3))};
  list.push_back(list.front());
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || list; });
  EXPECT_EQ(bytes, fromHex("00 04000000") + newNode("01") + leafRecord("01") + fromHex("00000000") +
                       newNode("02") + leafRecord("03") + fromHex("01000000"));
  std::vector<Node> loaded;
  loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
  ASSERT_EQ(loaded.size(), 4U);
  EXPECT_FALSE(loaded[1]);
  EXPECT_EQ(loaded[2]->value, 3U);
  EXPECT_TRUE(loaded[3] == loaded[0]);
}

TEST(BothWaysTest, ByValueAndByHandleAreWrittenInFullOnceForEach) {
  qcPtrHandle<testDerived> object(new testDerived(derived(5, 6)));
  const std::string record = derivedRecord("05", "06");
  const std::string announced = fromHex("01000000 0b000000 'testDerived'");
  EXPECT_EQ(
      storedBytes([&](qcArchive& archive) { archive || *object || object || *object || object; }),
      record + announced + record + fromHex("01000000"));
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || object || *object; }),
            announced + record + record);
}

TEST(BothWaysTest, ByValueAndByHandleAreTwoObjectsWhenTheyAreRead) {
  testDerived byValue;
  qcPtrHandle<testDerived> byHandle;
  loadBytes(derivedRecord("05", "06") + fromHex("01000000 0b000000 'testDerived'") +
                derivedRecord("07", "08"),
            [&](qcArchive& archive) { archive || byValue || byHandle; });
  EXPECT_EQ(byValue.extra, 6U);
  EXPECT_EQ(byHandle->extra, 8U);
}

TEST(BothWaysTest, AMemberIsWrittenWithEachRecordOfItsObject) {
  qcPtrHandle<testBox> box(new testBox);
  box->content = derived(1, 2);
  const std::string record = derivedRecord("01", "02");
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || *box || box || *box; }),
            record + fromHex("01000000 07000000 'testBox'") + record);
}

/// Its record holds, by value, an object that is elsewhere.
class Borrower : public virtual qcPersistent, public virtual qcRepBase {
 public:
  qcPtrHandle<testDerived> borrowed{new testDerived};

 protected:
  void dispatchSerialize(qcArchive& archive) override { archive || *borrowed; }

 private:
  static qcPersistent* make() { return new Borrower; }
  static qc_Instantiator sExemplar;
};
qc_Instantiator Borrower::sExemplar(typeid(Borrower), &Borrower::make);

TEST(BothWaysTest, AnObjectStoredThroughAHandleIsWrittenAgainByValueInsideAnotherRecord) {
  qcPtrHandle<Borrower> borrower(new Borrower);
  *borrower->borrowed = derived(1, 2);
  qcPtrHandle<testDerived> loadedObject;
  qcPtrHandle<Borrower> loadedBorrower;
  loadBytes(storedBytes([&](qcArchive& archive) { archive || borrower->borrowed || borrower; }),
            [&](qcArchive& archive) { archive || loadedObject || loadedBorrower; });
  EXPECT_EQ(loadedObject->extra, 2U);
  EXPECT_EQ(loadedBorrower->borrowed->extra, 2U);
}

/// Its record holds an object that is elsewhere, even if that has been transferred before.
class Insisting : public virtual qcPersistent, public virtual qcRepBase {
 public:
  qcPtrHandle<testDerived> borrowed{new testDerived};

 protected:
  void dispatchSerialize(qcArchive& archive) override { borrowed->loadSimple(archive); }

 private:
  static qcPersistent* make() { return new Insisting; }
  static qc_Instantiator sExemplar;
};
qc_Instantiator Insisting::sExemplar(typeid(Insisting), &Insisting::make);

TEST(BothWaysTest, AnObjectThatIsTransferredAnewInsideAnotherRecordIsStillDoneByValue) {
  qcPtrHandle<Insisting> insisting(new Insisting);
  testDerived& object = *insisting->borrowed;
  const std::string once = storedBytes([&](qcArchive& archive) { archive || object || insisting; });
  EXPECT_GT(once.size(), 2 * derivedRecord("00", "00").size());
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || object || insisting || object; }),
            once);
}

TEST(RawPointerTest, AParentUnderWayIsItsId) {
  Node parent(new testNode(1));
  const Node child(new testNode(2));
  parent->add(child);
  child->parent = parent.get();
  const std::string bytes = storedBytes([&](qcArchive& archive) { archive || parent; });
  EXPECT_EQ(bytes, newNode("01") + fromHex("00 00 01000000 00000000 00 01000000") + newNode("02") +
                       fromHex("00 00 02000000 01000000 00 00000000"));
  Node loaded;
  loadBytes(bytes, [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded->children[0]->parent, loaded.get());
}

TEST(RawPointerTest, ALoadedObjectBelongsToWhoeverReceivesItFirst) {
  qcPersistent* pointer = nullptr;
  loadHex("01000000 09000000 'testOwner' 05000000 00000000",
          [&](qcArchive& archive) { testAccess::transferPointer(archive, pointer); });
  const std::unique_ptr<qcPersistent> owner(pointer);
  EXPECT_EQ(LiveCount::alive(), 1);
  EXPECT_EQ(dynamic_cast<testOwner&>(*owner).value, 5U);
}

TEST(RawPointerTest, OwnersInOwnersComeBack) {
  auto stored = std::make_unique<testOwner>(1);
  stored->child = std::make_unique<testOwner>(2);
  stored->child->child = std::make_unique<testOwner>(3);
  qcPersistent* pointer = stored.get();
  const std::string bytes =
      storedBytes([&](qcArchive& archive) { testAccess::transferPointer(archive, pointer); });
  stored.reset();
  loadBytes(bytes, [&](qcArchive& archive) { testAccess::transferPointer(archive, pointer); });
  const std::unique_ptr<testOwner> loaded(dynamic_cast<testOwner*>(pointer));
  EXPECT_EQ(loaded->child->child->value, 3U);
  EXPECT_EQ(LiveCount::alive(), 3);
}

TEST(RawPointerTest, ACountedObjectIsKeptByTheArchive) {
  Node node;
  loadBytes(newNode("01") + leafRecord("05"), [&](qcArchive& archive) {
    qcPersistent* pointer = nullptr;
    testAccess::transferPointer(archive, pointer);
    node = Node(dynamic_cast<testNode*>(pointer));
  });
  EXPECT_EQ(node->value, 5U);
}

TEST(RawPointerTest, AnObjectThatDiedIsNotFoundAgain) {
  loadHex("01000000 09000000 'testOwner' 05000000 00000000 01000000", [](qcArchive& archive) {
    qcPersistent* pointer = nullptr;
    testAccess::transferPointer(archive, pointer);
    delete pointer;
    EXPECT_EQ(LiveCount::alive(), 0);
    pointer = nullptr;
    EXPECT_THROW(testAccess::transferPointer(archive, pointer), qcArchive::BadFormat);
    EXPECT_EQ(pointer, nullptr);
  });
}

TEST(RawPointerTest, AnObjectThatDiedIsNotFoundAgainEvenIfItWasForgotten) {
  loadHex("01000000 09000000 'testOwner' 05000000 00000000 01000000", [](qcArchive& archive) {
    qcPersistent* pointer = nullptr;
    testAccess::transferPointer(archive, pointer);
    archive.forget(*pointer);
    delete pointer;
    EXPECT_THROW(testAccess::transferPointer(archive, pointer), qcArchive::BadFormat);
  });
}

TEST(RawPointerTest, AnObjectThatItsReceiverDeletedIsNotDeletedAgain) {
  loadHex("01000000 09000000 'testOwner' 05000000 00000000",
          [](qcArchive& archive) { delete archive.transferShared(nullptr); });
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(RefusalTest, AHandleThatLeadsBackIntoItsObjectIsNotStored) {
  Node node(new testNode(1));
  node->add(node);
  storedBytes([&](qcArchive& archive) { EXPECT_THROW(archive || node, qcArchive::BadFormat); });
  node->children.clear();
}

TEST(RefusalTest, ALongerRingIsNotStoredEither) {
  Node first(new testNode(1));
  const Node second(new testNode(2));
  first->add(second);
  second->add(first);
  storedBytes([&](qcArchive& archive) { EXPECT_THROW(archive || first, qcArchive::BadFormat); });
  first->children.clear();
}

class Unregistered : public virtual qcPersistent {};

TEST(RefusalTest, AnUnregisteredClassIsNotStored) {
  Unregistered object;
  unsigned char next = 7;
  EXPECT_EQ(storedHex([&](qcArchive& archive) {
              EXPECT_THROW(archive.transferShared(&object), qcArchive::BadFormat);
              archive || next;
            }),
            "07");
}

template <class... T>
class Lengthy : public virtual qcPersistent {
 public:
  static qcPersistent* make() { return new Lengthy; }
};

TEST(RefusalTest, AClassWithANameOfMoreThan255BytesIsNotStored) {
  using L = Lengthy<testDerived, testDerived, testDerived, testDerived>;
  Lengthy<L, L, L, L, L> object;
  ASSERT_GT(qf_ClassName(typeid(object)).size(), 255U);
  const qc_Instantiator registered(typeid(object), &Lengthy<L, L, L, L, L>::make);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) {
              EXPECT_THROW(archive.transferShared(&object), qcArchive::BadFormat);
            }),
            "");
}

/// A chain of handles: the first node holds the second, and so on.
Node chain(int length) {
  Node head;
  for (int i = 0; i < length; ++i) {
    Node next(new testNode(static_cast<unsigned long>(i)));
    if (head) next->add(head);
    head = next;
  }
  return head;
}

int lengthOf(Node node) {
  int length = 0;
  for (; node; ++length) node = node->children.empty() ? Node() : node->children[0];
  return length;
}

TEST(NestingTest, AChainOf256ComesBack) {
  for (const int length : {200, qcArchive::maxNesting}) {
    Node stored = chain(length);
    Node loaded;
    loadBytes(storedBytes([&](qcArchive& archive) { archive || stored; }),
              [&](qcArchive& archive) { archive || loaded; });
    EXPECT_EQ(lengthOf(loaded), length);
  }
}

TEST(NestingTest, AChainOf257IsNotStored) {
  Node stored = chain(qcArchive::maxNesting + 1);
  storedBytes([&](qcArchive& archive) { EXPECT_THROW(archive || stored, qcArchive::BadFormat); });
}

TEST(NestingTest, AChainIsMeasuredEvenWhenItIsStoredFromItsEnd) {
  std::vector<Node> list;
  for (int i = 0; i <= qcArchive::maxNesting; ++i) {
    list.emplace_back(new testNode);
    if (i > 0) list.back()->add(list[static_cast<std::size_t>(i) - 1]);
  }
  storedBytes([&](qcArchive& archive) { EXPECT_THROW(archive || list, qcArchive::BadFormat); });
  list.pop_back();
  std::vector<Node> loaded;
  loadBytes(storedBytes([&](qcArchive& archive) { archive || list; }),
            [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(lengthOf(loaded.back()), qcArchive::maxNesting);
}

/// The nodes of a chain, the first one first.
std::vector<Node> nodesOf(Node node) {
  std::vector<Node> nodes;
  for (; node; node = node->children.empty() ? Node() : node->children[0]) nodes.push_back(node);
  return nodes;
}

TEST(NestingTest, WhatHangsBelowAnObjectThatIsMetAgainCounts) {
  Node below = chain(200);
  Node above = chain(qcArchive::maxNesting - 200);
  nodesOf(above).back()->add(below);
  Node loadedBelow;
  Node loadedAbove;
  loadBytes(storedBytes([&](qcArchive& archive) { archive || below || above; }),
            [&](qcArchive& archive) { archive || loadedBelow || loadedAbove; });
  EXPECT_EQ(lengthOf(loadedAbove), qcArchive::maxNesting);

  Node oneMore(new testNode);
  oneMore->add(above);
  storedBytes([&](qcArchive& archive) {
    archive || below;
    EXPECT_THROW(archive || oneMore, qcArchive::BadFormat);
  });
}

TEST(NestingTest, ObjectsByValueCount) {
  Node stored = chain(qcArchive::maxNesting);
  storedBytes([&](qcArchive& archive) { archive || *stored; });
  stored = chain(qcArchive::maxNesting + 1);
  storedBytes([&](qcArchive& archive) { EXPECT_THROW(archive || *stored, qcArchive::BadFormat); });
}

/// An object that contains itself by value, as no object should.
class Abyss : public virtual qcPersistent {
 protected:
  void dispatchSerialize(qcArchive& archive) override { archive || *this; }
};

TEST(NestingTest, AnObjectThatContainsItselfIsRefused) {
  Abyss abyss;
  storedBytes([&](qcArchive& archive) { EXPECT_THROW(archive || abyss, qcArchive::BadFormat); });
  loadHex("", [&](qcArchive& archive) { EXPECT_THROW(archive || abyss, qcArchive::BadFormat); });
}

TEST(NestingTest, EndsWithEachObject) {
  std::vector<Node> list(1000);
  for (Node& node : list) node = Node(new testNode);
  std::vector<Node> loaded;
  loadBytes(storedBytes([&](qcArchive& archive) { archive || list; }),
            [&](qcArchive& archive) { archive || loaded; });
  EXPECT_EQ(loaded.size(), list.size());
}

TEST(SeveralArchivesTest, EachRemembersForItself) {
  testDerived object = derived(1, 2);
  std::ostringstream firstStream;
  std::ostringstream secondStream;
  qcStreamArchive first(firstStream);
  qcStreamArchive second(secondStream);
  first || object || object;
  second || object;
  EXPECT_EQ(firstStream.str(), archiveHeader() + derivedRecord("01", "02"));
  EXPECT_EQ(secondStream.str(), firstStream.str());
}

TEST(SeveralArchivesTest, AnObjectThatDiesIsForgottenByAllOfThem) {
  std::ostringstream streams[3];
  qcStreamArchive first(streams[0]);
  auto second = std::make_unique<qcStreamArchive>(streams[1]);
  qcStreamArchive third(streams[2]);
  const auto storeLocal = [&](unsigned long value) {
    testDerived local = derived(value, value);
    first || local;
    if (second != nullptr) *second || local;
    third || local;
  };
  storeLocal(1);
  storeLocal(2);
  second.reset();
  storeLocal(3);
  storeLocal(4);
  const std::string two = archiveHeader() + derivedRecord("01", "01") + derivedRecord("02", "02");
  EXPECT_EQ(streams[0].str(), two + derivedRecord("03", "03") + derivedRecord("04", "04"));
  EXPECT_EQ(streams[1].str(), two);
  EXPECT_EQ(streams[2].str(), streams[0].str());
}

/// Stores an object in an archive of its own while it is itself being stored.
class Nesting : public virtual qcPersistent {
 public:
  testDerived* inner = nullptr;
  std::string innerBytes;

 protected:
  void dispatchSerialize(qcArchive& archive) override {
    if (haveVisited(this, sizeof(*this))) return;
    unsigned char byte = 0x33;
    archive || byte || *inner;
    innerBytes = storedBytes([this](qcArchive& other) { other || *inner || *inner; });
    archive || *inner;
    setVisited(this, sizeof(*this));
  }
};

TEST(SeveralArchivesTest, AnArchiveInsideAnArchiveKeepsToItself) {
  testDerived inner = derived(1, 2);
  Nesting nesting;
  nesting.inner = &inner;
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || nesting || nesting || inner; }),
            "\x33" + derivedRecord("01", "02"));
  EXPECT_EQ(nesting.innerBytes, derivedRecord("01", "02"));
}

TEST(SeveralArchivesTest, ThreadsKeepApart) {
  testDerived object = derived(1, 2);
  std::ostringstream stream;
  qcStreamArchive archive(stream);
  archive || object;
  std::thread([&] {
    EXPECT_EQ(storedBytes([&](qcArchive& other) { other || object; }), derivedRecord("01", "02"));
  }).join();
  archive || object;
  EXPECT_EQ(stream.str(), archiveHeader() + derivedRecord("01", "02"));
}

/// Transfers some bytes, then fails.
class Failing : public virtual qcPersistent {
 public:
  explicit Failing(int bytesBefore) : bytesBefore_(bytesBefore) {}

 protected:
  void dispatchSerialize(qcArchive& archive) override {
    unsigned char byte = 1;
    for (int i = 0; i < bytesBefore_; ++i) archive || byte;
    throw std::runtime_error("no");
  }

 private:
  int bytesBefore_;
};

TEST(FailureTest, LeavesNoTransferUnderWay) {
  Failing object(1);
  testDerived other;
  storedBytes([&](qcArchive& archive) {
    archive || other;
    EXPECT_THROW(archive || object, std::runtime_error);
    EXPECT_FALSE(testAccess::isVisited(&other, sizeof(other)));
  });
}

TEST(FailureTest, AfterHalfAnObjectAStoringArchiveTakesNothingMore) {
  Failing object(1);
  unsigned char next = 7;
  Node null;
  EXPECT_EQ(storedHex([&](qcArchive& archive) {
              EXPECT_THROW(archive || object, std::runtime_error);
              EXPECT_THROW(archive || next, qcArchive::WriteFailed);
              EXPECT_THROW(archive || null, qcArchive::WriteFailed);
            }),
            "01");
}

TEST(FailureTest, AnObjectThatFailsBeforeItsFirstByteDoesNoHarm) {
  Failing object(0);
  unsigned char next = 7;
  EXPECT_EQ(storedHex([&](qcArchive& archive) {
              EXPECT_THROW(archive || object, std::runtime_error);
              archive || next;
            }),
            "07");
}

TEST(FailureTest, AnObjectThatIsRefusedInsideAnotherOneLeavesThatHalf) {
  Node outer(new testNode(1));
  outer->value = std::numeric_limits<unsigned long>::max();
  if (!std::in_range<std::uint32_t>(outer->value)) {
    unsigned char next = 7;
    storedBytes([&](qcArchive& archive) {
      EXPECT_THROW(archive || outer, qcArchive::ValueTooLarge);
      EXPECT_THROW(archive || next, qcArchive::WriteFailed);
    });
  }
}

TEST(FailureTest, ObjectsOfAFailedLoadDieWithTheArchive) {
  Node node;
  loadBytes(newNode("01") + fromHex("00 00 01000000 00000000 00 02000000") + newNode("02") +
                leafRecord("02") + fromHex("63000000"),
            [&](qcArchive& archive) { EXPECT_THROW(archive || node, qcArchive::BadFormat); });
  EXPECT_FALSE(node);
  EXPECT_EQ(LiveCount::alive(), 0);
}

}  // namespace
