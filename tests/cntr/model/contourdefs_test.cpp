// SPDX-License-Identifier: MIT
//
// The numbers that callers pass as modes, and the exceptions: numbers, texts, records, and how one
// that was carried on the heap is raised again.

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <cntr/contourdefs.h>
#include <cntr/regionst.h>
#include <gtest/gtest.h>
#include <tests/platform/archive_bytes.h>
#include <tests/platform/core/live_count.h>

namespace {

using Defs = qcContourDefs;

TEST(ContourDefsTest, ModesHaveTheNumbersThatCallersPass) {
  EXPECT_EQ(Defs::eFarthestVertexPair, 0);
  EXPECT_EQ(Defs::eFromFirstVertex, 1);
  EXPECT_EQ(Defs::eNoIntersectionRepair, 0);
  EXPECT_EQ(Defs::eOuterHull, 1);
  EXPECT_EQ(Defs::eRegularize, 2);
  EXPECT_EQ(Defs::eDrawContour, 0);
}

TEST(ContourDefsTest, ModesAre32BitsWide) {
  EXPECT_EQ(sizeof(Defs::DrawMode), 4U);
  EXPECT_EQ(sizeof(Defs::DiameterMode), 4U);
  EXPECT_EQ(sizeof(Defs::IntersectionMode), 4U);
}

TEST(ContourDefsTest, CanBeAssignedLikeAnyClassWithoutData) {
  EXPECT_TRUE(std::is_copy_assignable_v<Defs>);
  EXPECT_TRUE(std::is_empty_v<Defs>);
}

/// One of the four exceptions: its name, its number, and the bytes that announce it by pointer.
template <class X>
struct Facts;

template <>
struct Facts<Defs::EmptyContour> {
  static constexpr const char* name = "qcContourDefs::EmptyContour";
  static constexpr const char* nameLength = "1b000000";
  static constexpr long number = 0x10004680;
};
template <>
struct Facts<Defs::EmptyRegionSet> {
  static constexpr const char* name = "qcContourDefs::EmptyRegionSet";
  static constexpr const char* nameLength = "1d000000";
  static constexpr long number = 0x10004682;
};
template <>
struct Facts<Defs::BadParams> {
  static constexpr const char* name = "qcContourDefs::BadParams";
  static constexpr const char* nameLength = "18000000";
  static constexpr long number = 0x10004683;
};
template <>
struct Facts<Defs::RegionCannotBeSetOpen> {
  static constexpr const char* name = "qcContourDefs::RegionCannotBeSetOpen";
  static constexpr const char* nameLength = "24000000";
  static constexpr long number = 0x10004684;
};

template <class X>
class ContourDefsErrorTest : public testing::Test {};

using Concrete = testing::Types<Defs::EmptyContour, Defs::EmptyRegionSet, Defs::BadParams,
                                Defs::RegionCannotBeSetOpen>;
TYPED_TEST_SUITE(ContourDefsErrorTest, Concrete);

TEST(ContourDefsErrorsTest, TheRootIsAbstractAndOnlyForCatching) {
  EXPECT_TRUE(std::is_abstract_v<Defs::Errors>);
  EXPECT_TRUE((std::is_base_of_v<qcExceptionWithString, Defs::Errors>));
  EXPECT_FALSE((std::is_constructible_v<Defs::Errors, std::wstring>));
}

TYPED_TEST(ContourDefsErrorTest, HasItsNumber) {
  EXPECT_EQ(TypeParam().errorNumber(), Facts<TypeParam>::number);
  const qcException& root = TypeParam();
  EXPECT_EQ(root.errorNumber(), Facts<TypeParam>::number);
}

TYPED_TEST(ContourDefsErrorTest, HasAnEmptyMessageUnlessGivenOne) {
  EXPECT_EQ(TypeParam().message(), L"");
  EXPECT_EQ(TypeParam(L"a reason").message(), L"a reason");
}

TYPED_TEST(ContourDefsErrorTest, TakesItsMessageUpToTheFirstNull) {
  EXPECT_EQ(TypeParam(std::wstring(L"short\0er", 8)).message(), L"short");
}

TYPED_TEST(ContourDefsErrorTest, SaysItsClassAndMessageInWhat) {
  EXPECT_STREQ(TypeParam().what(), Facts<TypeParam>::name);
  EXPECT_EQ(TypeParam(L"a reason").what(), std::string(Facts<TypeParam>::name) + ": a reason");
}

TYPED_TEST(ContourDefsErrorTest, CopiesItsMessage) {
  const TypeParam error(L"a reason");
  const TypeParam copy(error);
  EXPECT_EQ(copy.message(), L"a reason");
  TypeParam assigned(L"another");
  assigned = error;
  EXPECT_EQ(assigned.message(), L"a reason");
}

/// What catching a thrown `X` by reference to `Base` shows; "missed" when it is not one.
template <class Base, class X>
std::string caughtAs(const X& error) {
  try {
    throw X(error);
  } catch (const Base& caught) {
    return caught.what();
  } catch (...) {
    return "missed";
  }
}

TYPED_TEST(ContourDefsErrorTest, IsCaughtAsAnyOfItsBases) {
  const TypeParam error(L"a reason");
  const std::string text = error.what();
  EXPECT_EQ(caughtAs<TypeParam>(error), text);
  EXPECT_EQ(caughtAs<Defs::Errors>(error), text);
  EXPECT_EQ(caughtAs<qcExceptionWithString>(error), text);
  EXPECT_EQ(caughtAs<qcException>(error), text);
  EXPECT_EQ(caughtAs<std::exception>(error), text);
}

TYPED_TEST(ContourDefsErrorTest, IsNotCaughtAsAnArchiveError) {
  EXPECT_EQ((caughtAs<qcArchive::Errors>(TypeParam())), "missed");
}

/// An exception that reports its deletion. It overrides nothing else, so that it raises itself as
/// its base.
template <class X>
class Watched : public X {
 public:
  Watched(const std::wstring& message, int& deletions) : X(message), deletions_(deletions) {}
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;
  ~Watched() override { ++deletions_; }

 private:
  int& deletions_;
};

TYPED_TEST(ContourDefsErrorTest, RaisedFromTheHeapLeavesNoObjectBehind) {
  int deletions = 0;
  auto* const carried = new Watched<TypeParam>(L"a reason", deletions);
  EXPECT_THROW(carried->suicideAndRethrow(), TypeParam);
  EXPECT_EQ(deletions, 1);
}

TYPED_TEST(ContourDefsErrorTest, RaisedFromTheHeapIsACopyOfTheSameClass) {
  qcException* const carried = new TypeParam(L"a reason");
  try {
    carried->suicideAndRethrow();
    FAIL() << "nothing was thrown";
  } catch (const Defs::Errors& error) {
    EXPECT_EQ(typeid(error), typeid(TypeParam));
    EXPECT_EQ(error.message(), L"a reason");
    EXPECT_EQ(error.errorNumber(), Facts<TypeParam>::number);
  }
}

/// Nothing but a bare pointer to an object of any class.
class Carrier : public virtual qcPersistent {
 public:
  Carrier() = default;
  explicit Carrier(qcPersistent* carried) : carried_(carried) {}

  qcPersistent* carried() const { return carried_; }

 protected:
  void dispatchSerialize(qcArchive& archive) override { serializePointer(archive, this, carried_); }

 private:
  qcPersistent* carried_ = nullptr;
};

/// The versions of the class, of qcContourDefs::Errors, of qcException and of qcPersistent.
constexpr const char* versionsHex = "00 00 00 00";

template <class X>
std::string bytesByPointer() {
  return fromHex(std::string("01000000 ") + Facts<X>::nameLength + " '" + Facts<X>::name + "' " +
                 versionsHex);
}

TYPED_TEST(ContourDefsErrorTest, IsStoredAsFourVersionBytesWithoutItsMessage) {
  TypeParam error(L"a reason");
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || error; }), versionsHex);
  EXPECT_EQ(error.message(), L"a reason");
}

TYPED_TEST(ContourDefsErrorTest, StoredTwiceIsWrittenOnce) {
  TypeParam error;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || error || error; }), versionsHex);
}

TYPED_TEST(ContourDefsErrorTest, IsAnnouncedByItsNameWhenStoredByPointer) {
  TypeParam error(L"a reason");
  Carrier carrier(&error);
  EXPECT_EQ(storedBytes([&](qcArchive& archive) { archive || carrier; }),
            bytesByPointer<TypeParam>());
}

TYPED_TEST(ContourDefsErrorTest, ReadBackByValueHasItsNumberAndNoMessage) {
  TypeParam error(L"an older reason");
  EXPECT_EQ(error.what(), std::string(Facts<TypeParam>::name) + ": an older reason");
  loadHex(versionsHex, [&](qcArchive& archive) { archive || error; });
  EXPECT_EQ(error.errorNumber(), Facts<TypeParam>::number);
  EXPECT_EQ(error.message(), L"");
  EXPECT_STREQ(error.what(), Facts<TypeParam>::name);
}

TYPED_TEST(ContourDefsErrorTest, ReadBackByPointerHasItsClassAndNumberAndNoMessage) {
  Carrier carrier;
  loadBytes(bytesByPointer<TypeParam>(), [&](qcArchive& archive) { archive || carrier; });
  const std::unique_ptr<qcPersistent> loaded(carrier.carried());
  ASSERT_NE(loaded, nullptr);
  const auto& error = dynamic_cast<const Defs::Errors&>(*loaded);
  EXPECT_EQ(typeid(error), typeid(TypeParam));
  EXPECT_EQ(error.errorNumber(), Facts<TypeParam>::number);
  EXPECT_EQ(error.message(), L"");
}

TYPED_TEST(ContourDefsErrorTest, ReadBackByPointerCanBeRaisedAgain) {
  Carrier carrier;
  loadBytes(bytesByPointer<TypeParam>(), [&](qcArchive& archive) { archive || carrier; });
  auto* const error = dynamic_cast<qcException*>(carrier.carried());
  ASSERT_NE(error, nullptr);
  EXPECT_THROW(error->suicideAndRethrow(), TypeParam);
}

/// An exception that counts itself.
template <class X>
class Counted : public X {
 public:
  using X::X;

 private:
  LiveCount count_;
};

TYPED_TEST(ContourDefsErrorTest, DeletesItselfWhenItIsRaisedAgain) {
  auto* const error = new Counted<TypeParam>(L"a reason");
  EXPECT_EQ(LiveCount::alive(), 1);
  EXPECT_THROW(error->suicideAndRethrow(), TypeParam);
  EXPECT_EQ(LiveCount::alive(), 0);
}

/// "class line": the check that refused the bytes.
template <class X>
std::string errorRefusal(const std::string& bytes) {
  X error;
  try {
    loadBytes(bytes, [&](qcArchive& archive) { archive || error; });
  } catch (const qcArchive::UnknownVersion& refused) {
    return std::string(refused.source()) + " " + std::to_string(refused.line());
  }
  return "loaded";
}

TYPED_TEST(ContourDefsErrorTest, RefusesEveryOtherVersionNamingItsClassAndLine0) {
  for (int version = 1; version < 256; ++version) {
    const std::string bytes = static_cast<char>(version) + std::string(3, '\0');
    EXPECT_EQ(errorRefusal<TypeParam>(bytes), std::string(Facts<TypeParam>::name) + " 0")
        << version;
  }
}

TYPED_TEST(ContourDefsErrorTest, RefusesOtherVersionsOfItsBasesNamingThem) {
  EXPECT_EQ(errorRefusal<TypeParam>(fromHex("00 01 00 00")), "qcContourDefs::Errors 0");
  EXPECT_EQ(errorRefusal<TypeParam>(fromHex("00 00 01 00")), "qcException 0");
  EXPECT_EQ(errorRefusal<TypeParam>(fromHex("00 00 00 01")), "qcPersistent 0");
}

TYPED_TEST(ContourDefsErrorTest, CutShortIsTruncated) {
  for (std::size_t size = 0; size < 4; ++size) {
    TypeParam error;
    const std::string bytes(size, '\0');
    EXPECT_THROW(loadBytes(bytes, [&](qcArchive& archive) { archive || error; }),
                 qcArchive::Truncated)
        << size;
  }
}

/// Loads a carrier; true when it loads, false when the archive refuses. Anything else throws.
bool loadsCarrier(const std::string& bytes) {
  Carrier carrier;
  try {
    loadBytes(bytes, [&](qcArchive& archive) { archive || carrier; });
  } catch (const qcArchive::Errors&) {
    return false;
  }
  const std::unique_ptr<qcPersistent> received(carrier.carried());
  return true;
}

TYPED_TEST(ContourDefsErrorTest, CutShortByPointerIsRefused) {
  const std::string bytes = bytesByPointer<TypeParam>();
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(loadsCarrier(bytes.substr(0, size))) << size;
  }
  EXPECT_TRUE(loadsCarrier(bytes));
}

TYPED_TEST(ContourDefsErrorTest, WithAnyByteOfItsIdNameOrRecordChangedIsRefusedOrNull) {
  const std::string bytes = bytesByPointer<TypeParam>();
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (int change = 1; change < 256; ++change) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      const bool isNullPointer = i == 0 && change == 1;
      EXPECT_EQ(loadsCarrier(damaged), isNullPointer) << "byte " << i << " changed by " << change;
    }
  }
}

/// Hands a version to the record of a class, as a class derived from it would.
template <class X>
class Derived : public X {
 public:
  void serializeVersion(qcArchive& archive, unsigned char version) {
    X::serialize_(archive, version);
  }
};

TYPED_TEST(ContourDefsErrorTest, ChecksTheVersionThatADerivedClassHandsDown) {
  Derived<TypeParam> error;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { error.serializeVersion(archive, 0); }), "00 00 00");
  try {
    storedBytes([&](qcArchive& archive) { error.serializeVersion(archive, 1); });
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::UnknownVersion& refused) {
    EXPECT_STREQ(refused.source(), Facts<TypeParam>::name);
    EXPECT_EQ(refused.line(), 0);
  }
}

/// A class derived from the root of this library's exceptions.
class RootProbe : public Defs::Errors {
 public:
  RootProbe() : Errors(L"") {}
  long errorNumber() const override { return 0; }
  void suicideAndRethrow() override { qf_DeleteAndThrowCopy(this); }
  using Errors::serialize_;
};

TEST(ContourDefsErrorsTest, TheRootChecksTheVersionThatADerivedClassHandsDown) {
  RootProbe error;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { error.serialize_(archive, 0); }), "00 00");
  try {
    storedBytes([&](qcArchive& archive) { error.serialize_(archive, 1); });
    FAIL() << "nothing was thrown";
  } catch (const qcArchive::UnknownVersion& refused) {
    EXPECT_STREQ(refused.source(), "qcContourDefs::Errors");
    EXPECT_EQ(refused.line(), 0);
  }
}

/// A class whose record holds that of the root twice over.
class TwiceRooted : public RootProbe {
 protected:
  void dispatchSerialize(qcArchive& archive) override {
    Errors::dispatchSerialize(archive);
    Errors::dispatchSerialize(archive);
  }
};

TEST(ContourDefsErrorsTest, TheRecordOfTheRootIsWrittenOnce) {
  TwiceRooted error;
  EXPECT_EQ(storedHex([&](qcArchive& archive) { archive || error; }), "00 00 00");
}

/// The number of the exception that `ask` throws; 0 when it throws none.
template <class Ask>
long numberThrownBy(Ask ask) {
  try {
    ask();
  } catch (const Defs::Errors& error) {
    return error.errorNumber();
  }
  return 0;
}

TEST(ContourDefsErrorsTest, AreThrownByTheShapesWithTheirNumbers) {
  const qcRegionSet emptySet(std::vector<qcPtrHandle_const<qcRegion>>(),
                             Defs::eNoIntersectionRepair);
  EXPECT_EQ(numberThrownBy([] { qcContour({}, true, 0).meanPosition(); }), 0x10004680);
  EXPECT_EQ(numberThrownBy([] { qcRegion().area(false); }), 0x10004680);
  EXPECT_EQ(numberThrownBy([&] { emptySet.centerOfMass(false); }), 0x10004682);
  EXPECT_EQ(numberThrownBy([] { qcContour({}, true, 0).cachedVectorSize(-1); }), 0x10004683);
  EXPECT_EQ(numberThrownBy([] { qcRegion().isClosed(false); }), 0x10004684);
}

}  // namespace
