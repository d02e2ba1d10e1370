// SPDX-License-Identifier: MIT
//
// Input that no archive would have written: cut short, with flipped bytes, with lies about sizes,
// classes and ids. Every one must end in an exception of the archive or in a clean load, and leave
// nothing on the heap.

#include <cstdint>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <platform/core/archive.h>
#include <platform/core/random.h>
#include <testing/heap/heap.h>
#include <tests/platform/archive_bytes.h>

#include "archive_test_objects.h"
#include "live_count.h"

/// Registered, but its factory gives nothing.
class testNothing : public virtual qcPersistent {};

namespace {

using Node = qcPtrHandle<testNode>;

const qc_Instantiator nothingMaker(typeid(testNothing), []() -> qcPersistent* { return nullptr; });

/// One of everything that an archive can hold.
struct Everything {
  testBox box;
  Node root;
  Node again;
  qcPtrHandle_const<testOther> other;
  std::vector<qcVector<2>> points;
  std::vector<unsigned long> numbers;
  bool flag = false;
  long number = 0;

  void transfer(qcArchive& archive) {
    archive || box || root || again || other || points || numbers || flag || number;
  }
};

std::string storedEverything() {
  Everything everything;
  everything.root = Node(new testNode(1));
  const Node shared(new testNode(2));
  shared->parent = everything.root.get();
  everything.root->add(shared);
  everything.root->add(Node(new testNode(3)));
  everything.root->children[1]->add(shared);
  everything.again = shared;
  everything.other = qcPtrHandle<testOther>(new testOther);
  everything.points = {{1.0, 2.0}, {3.0, 4.0}};
  everything.numbers = {5, 6};
  everything.flag = true;
  return storedBytes([&](qcArchive& archive) { everything.transfer(archive); });
}

enum class Outcome { eLoaded, eTruncated, eRefused };

/// Loads everything from `bytes`; any outcome that Outcome does not name fails the test.
Outcome load(const std::string& bytes) {
  Everything everything;
  try {
    loadBytes(bytes, [&](qcArchive& archive) { everything.transfer(archive); });
  } catch (const qcArchive::Truncated&) {
    return Outcome::eTruncated;
  } catch (const qcArchive::Errors&) {
    return Outcome::eRefused;
  }
  return Outcome::eLoaded;
}

TEST(ArchiveDamageTest, TheUndamagedBytesLoad) {
  EXPECT_EQ(load(storedEverything()), Outcome::eLoaded);
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(ArchiveDamageTest, EveryShorterInputIsTruncated) {
  const std::string bytes = storedEverything();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_EQ(load(bytes.substr(0, size)), Outcome::eTruncated) << size;
    ASSERT_EQ(LiveCount::alive(), 0) << size;
  }
}

TEST(ArchiveDamageTest, EveryChangedByteLoadsCleanlyOrIsRefused) {
  const std::string bytes = storedEverything();
  int refused = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (int change = 1; change < 256; ++change) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      if (load(damaged) != Outcome::eLoaded) ++refused;
      ASSERT_EQ(LiveCount::alive(), 0) << "byte " << i << " changed by " << change;
    }
  }
  EXPECT_GT(refused, 10000);
}

TEST(ArchiveDamageTest, EveryRepeatedOrMissingByteLoadsCleanlyOrIsRefused) {
  const std::string bytes = storedEverything();
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    load(std::string(bytes).erase(i, 1));
    load(std::string(bytes).insert(i, 1, bytes[i]));
    ASSERT_EQ(LiveCount::alive(), 0) << i;
  }
}

TEST(ArchiveDamageTest, RandomBytesLoadCleanlyOrAreRefused) {
  qcRandomUniform random(20);
  for (int round = 0; round < 20000; ++round) {
    // Mostly small numbers, so that ids and counts are often plausible.
    std::string bytes(40, '\0');
    for (char& byte : bytes) {
      const double limit = random.next(0.0, 1.0) < 0.9 ? 4.0 : 256.0;
      byte = static_cast<char>(qfIFloor(random.next(0.0, limit)));
    }
    load(storedEverything().substr(0, static_cast<std::size_t>(qfIFloor(random.next(0.0, 200.0)))) +
         bytes);
    ASSERT_EQ(LiveCount::alive(), 0) << round;
  }
}

template <class T>
void expectTruncatedWithinItsMeans(std::string_view hex) {
  T value{};
  const std::string bytes = fromHex(hex);
  const heap::Watch watch;
  EXPECT_THROW(loadBytes(bytes, [&](qcArchive& archive) { archive || value; }),
               qcArchive::Truncated);
  EXPECT_LT(heap::Watch::largestBlock(), 16384U);
}

TEST(HostileCountTest, AllocatesNoMoreThanTheInputIsWorth) {
  expectTruncatedWithinItsMeans<std::vector<qcVector<2>>>("00 ffffffff 0102030405060708090a");
  expectTruncatedWithinItsMeans<std::vector<unsigned long>>("00 ffffffff 0102030405060708090a");
  expectTruncatedWithinItsMeans<std::vector<double>>("00 ffffffff 0102030405060708090a");
  expectTruncatedWithinItsMeans<std::vector<Node>>("00 ffffffff 0000000000000000");
  expectTruncatedWithinItsMeans<std::vector<testDerived>>("00 ffffffff 0000");
}

/// Says that it has reached its end, and then that nothing more comes.
class EndedBuffer : public std::stringbuf {
 public:
  using std::stringbuf::stringbuf;

 protected:
  std::streamsize showmanyc() override { return -1; }
};

TEST(HostileCountTest, AllocatesLittleForAStreamThatSaysItHasEnded) {
  EndedBuffer buffer(archiveHeader() + fromHex("00 0fffffff"), std::ios::in);
  std::istream stream(&buffer);
  qcStreamArchive archive(stream);
  std::vector<qcVector<2>> points;
  const heap::Watch watch;
  EXPECT_THROW(archive || points, qcArchive::Truncated);
  EXPECT_LT(heap::Watch::largestBlock(), 65536U);
}

TEST(HostileCountTest, ALongListThatEndsEarlyTakesNoMoreThanAFewTimesItsSize) {
  std::string bytes = fromHex("00 ffffffff") + std::string(1600000, '\x01');
  std::istringstream stream(archiveHeader() + bytes);
  qcStreamArchive archive(stream);
  std::vector<qcVector<2>> points;
  const heap::Watch watch;
  EXPECT_THROW(archive || points, qcArchive::Truncated);
  EXPECT_LE(heap::Watch::largestBlock(), 2 * bytes.size());
}

/// Why loading one handle from these bytes is refused.
std::wstring refusal(const std::string& bytes) {
  std::wstring message = L"nothing was refused";
  loadBytes(bytes, [&](qcArchive& archive) {
    Node node;
    try {
      archive || node;
    } catch (const qcArchive::BadFormat& error) {
      message = error.message();
    }
  });
  EXPECT_EQ(LiveCount::alive(), 0);
  return message;
}

TEST(HostilePointerTest, IdsOutOfOrderAreRefused) {
  EXPECT_EQ(refusal(fromHex("02000000 08000000 'testNode'")),
            L"at byte 8: an object has the id 2, the next one is 1");
  EXPECT_EQ(refusal(fromHex("ffffffff")),
            L"at byte 8: an object has the id 4294967295, the next one is 1");
}

TEST(HostilePointerTest, UnknownClassesAreNamed) {
  EXPECT_EQ(refusal(fromHex("01000000 0a000000 'no::such<>'")),
            L"at byte 16: the class \"no::such<>\" is not known");
  EXPECT_EQ(refusal(fromHex("01000000 00000000")), L"at byte 16: the class \"\" is not known");
}

TEST(HostilePointerTest, NamesAreMadeReadable) {
  EXPECT_EQ(refusal(fromHex("01000000 05000000 'a' 00 0a ff 7f")),
            L"at byte 16: the class \"a????\" is not known");
}

TEST(HostilePointerTest, NamesOfMoreThan255BytesAreRefused) {
  const std::string name(256, 'x');
  EXPECT_EQ(refusal(fromHex("01000000 00010000") + name),
            L"at byte 12: the name of a class is too long");
  EXPECT_EQ(refusal(fromHex("01000000 ff000000") + name),
            L"at byte 16: the class \"" + std::wstring(255, L'x') + L"\" is not known");
}

TEST(HostilePointerTest, AClassThatGivesNoObjectIsNamed) {
  EXPECT_EQ(refusal(fromHex("01000000 0b000000 'testNothing'")),
            L"at byte 16: the class \"testNothing\" gave no object");
}

TEST(HostilePointerTest, AHandleThatLeadsBackIntoItsObjectIsRefused) {
  EXPECT_EQ(refusal(newNode("01") + fromHex("00 00 01000000 00000000 00 01000000 01000000")),
            L"at byte 39: a handle leads back into an object that contains it");
}

TEST(HostilePointerTest, ALongerRingIsRefused) {
  EXPECT_EQ(refusal(newNode("01") + fromHex("00 00 01000000 00000000 00 01000000") + newNode("02") +
                    fromHex("00 00 01000000 00000000 00 01000000 01000000")),
            L"at byte 70: a handle leads back into an object that contains it");
}

/// The bytes of a chain of handles; `id` is that of its head.
std::string chainBytes(unsigned length, const std::string& className) {
  std::string bytes;
  for (unsigned id = 1; id <= length; ++id) {
    unsigned long number = id;
    auto nameLength = static_cast<unsigned long>(className.size());
    bytes += storedBytes([&](qcArchive& archive) { archive || number || nameLength; }) + className;
    bytes += fromHex("00 00 00000000 00000000 00");
    bytes += fromHex(id < length ? "01000000" : "00000000");
  }
  return bytes;
}

TEST(HostileNestingTest, TwoHundredLevelsLoad) {
  Node node;
  loadBytes(chainBytes(200, "testNode"), [&](qcArchive& archive) { archive || node; });
  EXPECT_EQ(LiveCount::alive(), 200);
}

TEST(HostileNestingTest, TheDeepestLevelIs256) {
  Node node;
  loadBytes(chainBytes(256, "testNode"), [&](qcArchive& archive) { archive || node; });
  EXPECT_TRUE(node);
  node = Node();
  EXPECT_NE(refusal(chainBytes(257, "testNode")).find(L"nested too deep"), std::wstring::npos);
  EXPECT_NE(refusal(chainBytes(100000, "testNode")).find(L"nested too deep"), std::wstring::npos);
}

TEST(HostileNestingTest, ObjectsOfAWrongClassCount) {
  qcPtrHandle<testOther> other;
  const auto load = [&](unsigned length) {
    loadBytes(chainBytes(length, "testNode"), [&](qcArchive& archive) { archive || other; });
  };
  load(256);
  EXPECT_FALSE(other);
  EXPECT_THROW(load(257), qcArchive::BadFormat);
  EXPECT_EQ(LiveCount::alive(), 0);
}

TEST(HostileNestingTest, AChainThatIsBuiltFromItsEndIsRefusedToo) {
  std::string bytes = fromHex("00 a0860100");
  for (unsigned long id = 1; id <= 100000; ++id) {
    unsigned long number = id;
    unsigned long before = id - 1;
    bytes += storedBytes([&](qcArchive& archive) { archive || number; });
    bytes += fromHex("08000000 'testNode' 00 00 00000000 00000000 00 01000000");
    bytes += storedBytes([&](qcArchive& archive) { archive || before; });
  }
  std::vector<Node> list;
  EXPECT_THROW(loadBytes(bytes, [&](qcArchive& archive) { archive || list; }),
               qcArchive::BadFormat);
  list.clear();
  EXPECT_EQ(LiveCount::alive(), 0);
}

}  // namespace
