// SPDX-License-Identifier: MIT
//
// Calls as programs write them: values that convert, lists in braces, null handles, and what must
// not compile because it would mean something else.

#include <string>
#include <vector>

#include <cntr/inertia.h>
#include <cntrtmpl/regionsett.h>
#include <gtest/gtest.h>
#include <platform/core/random.h>

namespace {

using Points = std::vector<qcVector<2>>;
using Data = std::vector<qcEdgelet>;
using ContourT = qcContourT<qcEdgelet>;
using RegionT = qcRegionT<qcEdgelet>;
using SetT = qcRegionSetT<qcEdgelet>;
using Handle = qcPtrHandle_const<qcRegion>;
constexpr auto keep = qcContourDefs::eNoIntersectionRepair;

Points square(double x, double y, double side) {
  return {{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}};
}

Data squareData() { return {{{0, 0}, 1, qcAngle8(0)}, {{4, 0}, 2, qcAngle8(64)}}; }

qcPtrHandle<qcRegion> newSquare(double x, double y, double side) {
  return qcPtrHandle<qcRegion>(new qcRegion(square(x, y, side), keep));
}

// What can be called with which arguments.
template <class T, class... Arguments>
concept TakesInParentheses = requires(Arguments... arguments) {
  T(arguments...);
};
template <class Shape>
concept GivesEdgeNumbers = requires(const Shape& shape, qcLineSeg segment, std::vector<int> edges) {
  shape.intersections(segment, edges, true);
};
template <class Shape>
concept AnswersSegments = requires(const Shape& shape, qcLineSeg segment) {
  shape.intersections(segment, true);
  shape.intersections(shape);
};
template <class H>
concept TakesZero = requires(H handle) {
  handle = 0;
};

static_assert(!GivesEdgeNumbers<qcContour> && AnswersSegments<qcContour>);
static_assert(!GivesEdgeNumbers<qcRegion> && AnswersSegments<qcRegion>);
static_assert(!GivesEdgeNumbers<ContourT> && AnswersSegments<ContourT>);
static_assert(!GivesEdgeNumbers<RegionT> && AnswersSegments<RegionT>);

static_assert(TakesInParentheses<RegionT, Data, unsigned long>);
static_assert(TakesInParentheses<RegionT, Data, int>);
static_assert(!TakesInParentheses<RegionT, Data, qcContourDefs::IntersectionMode>);
static_assert(!TakesInParentheses<RegionT, ContourT, qcContourDefs::IntersectionMode>);
static_assert(!TakesInParentheses<RegionT, Data, qcPtrHandle_const<qc2XformBase>,
                                  qcContourDefs::IntersectionMode>);

static_assert(!TakesZero<Handle> && !TakesZero<qcPtrHandle<qcRegion>>);
static_assert(!std::is_convertible_v<qcRegion*, Handle>);

TEST(CallsTest, ExceptionsAreMadeFromTexts) {
  const qcContourDefs::BadParams fromText = std::wstring(L"a reason");
  EXPECT_EQ(fromText.message(), L"a reason");
  const qcExceptionWithString fromLiteral = L"another";
  EXPECT_EQ(fromLiteral.message(), L"another");
}

TEST(CallsTest, PixelsAreVectors) {
  const qcVector<2> position = qcPair<long>(3, 4);
  EXPECT_EQ(position, qcVector<2>(3, 4));
  EXPECT_EQ(qcVector<2>(1, 1) + qcPair<long>(3, 4), qcVector<2>(4, 5));
}

TEST(CallsTest, CirclesAreEllipses) {
  const qcEllipse ellipse = qcCircle({1, 2}, 3);
  EXPECT_EQ(ellipse.geom(), (qcEllipse::qcEllipseGeom{{1, 2}, 3, 3, qcRadian(), qcRadian()}));
}

TEST(CallsTest, RandomGeneratorsAreMadeFromTheirSeeds) {
  qcRandomUniform generator = 1L;
  qcRandomUniform same(1);
  EXPECT_EQ(generator.next(0.0, 1.0), same.next(0.0, 1.0));
}

qc_InertiaData body(double area) { return {area, {1, 2}, qcMatrix<2>()}; }

TEST(CallsTest, MomentsAreListedInBraces) {
  const qc_InertiaData data = {4.0, {1, 2}, qcMatrix<2>(1, 0, 0, 2)};
  EXPECT_EQ(data.area(), 4.0);
  EXPECT_EQ(data.inertiaMatrix(), qcMatrix<2>(1, 0, 0, 2));
  EXPECT_EQ(body(-1.0).centerOfMass(), qcVector<2>(1, 2));
  EXPECT_EQ(qc_InertiaData(5.0).centerOfMass(), qcVector<2>(0, 0));
}

TEST(CallsTest, DataAreContours) {
  const ContourT contour = squareData();
  EXPECT_EQ(contour.data(), squareData());
}

TEST(CallsTest, ListsOfHandlesAreSetsWithData) {
  const qcPtrHandle<RegionT> region(new RegionT(squareData(), 5));
  const SetT fromHandles = std::vector{region};
  const SetT fromConstHandles = std::vector<qcPtrHandle_const<RegionT>>{region};
  const SetT fromBraces({region});
  const SetT fromNothing({});
  EXPECT_EQ(fromHandles.regionsT().at(0), region);
  EXPECT_EQ(fromConstHandles.regionsT().at(0), region);
  EXPECT_EQ(fromBraces.regionsT().at(0), region);
  EXPECT_TRUE(fromNothing.regionsT().empty());
  EXPECT_EQ(SetT(fromBraces).regionsT().size(), 1U);
}

TEST(CallsTest, RegionsTakeVerticesInBraces) {
  const qcRegion triangle({{0, 0}, {4, 0}, {0, 4}}, keep);
  EXPECT_EQ(triangle.points(), (Points{{0, 0}, {4, 0}, {0, 4}}));
  EXPECT_TRUE(qcRegion({}, keep).points().empty());
  const qcRegion repaired({{0, 0}, {4, 4}, {4, 0}, {0, 4}}, qcContourDefs::eRegularize);
  EXPECT_FALSE(repaired.isSelfIntersecting());
}

TEST(CallsTest, RegionsTakeHolesInBraces) {
  const qcPtrHandle<qcRegion> changing = newSquare(1, 1, 1);
  const Handle fixed = newSquare(3, 3, 1);
  qcRegion region(square(0, 0, 10), keep);
  region.holes({changing});
  EXPECT_EQ(region.holes(), std::vector<Handle>{changing});
  region.holes({changing, fixed});
  EXPECT_EQ(region.holes(), (std::vector<Handle>{changing, fixed}));
  EXPECT_THROW(region.holes({newSquare(-1, 1, 2)}), qcContourDefs::BadParams);
  EXPECT_EQ(region.holes().size(), 2U);
  region.holes({});
  EXPECT_TRUE(region.holes().empty());
}

TEST(CallsTest, SetsTakeRegionsInBraces) {
  const qcPtrHandle<qcRegion> changing = newSquare(0, 0, 2);
  const Handle fixed = newSquare(1, 1, 2);
  const qcRegionSet kept({changing, fixed}, keep);
  EXPECT_EQ(kept.regions(), (std::vector<Handle>{changing, fixed}));
  qcRegionSet set({changing, fixed}, qcContourDefs::eOuterHull);
  EXPECT_EQ(set.regions().size(), 1U);
  set.regions({fixed}, keep);
  EXPECT_EQ(set.regions(), std::vector<Handle>{fixed});
  set.regions({}, keep);
  EXPECT_TRUE(set.regions().empty());
  EXPECT_TRUE(qcRegionSet({}, keep).regions().empty());
}

TEST(CallsTest, HandlesAreNullFromNullptr) {
  qcPtrHandle<qcRegion> changing = newSquare(0, 0, 2);
  Handle fixed = changing;
  EXPECT_FALSE(changing == nullptr);
  changing = nullptr;
  EXPECT_TRUE(changing == nullptr);
  fixed = nullptr;
  EXPECT_EQ(fixed.get(), nullptr);
  const Handle made = nullptr;
  EXPECT_FALSE(made);
  const ContourT contour(squareData(), nullptr);
  EXPECT_EQ(contour.dataFromPointsXform()->mapPoint({1, 2}), qcVector<2>(1, 2));
}

/// A class of a program's own: its vertices are given to the virtual base as well.
class Plate : public qcRegion {
 public:
  Plate(const Points& outline, double thickness)
      : qcContour(outline, true, 0), qcRegion(outline, keep), thickness_(thickness) {}

  double volume() const { return area(true) * thickness_; }

 private:
  double thickness_;
};

/// The same for a region with data: made from data it gets its points from them, made from a
/// contour it must be given them.
class Part : public RegionT {
 public:
  explicit Part(const Data& data) : qcContour({}, true, 0), RegionT(data, 1) {}
  explicit Part(const ContourT& contour) : qcContour(contour), RegionT(contour, 2) {}
};

TEST(CallsTest, ClassesDerivedFromRegionsKeepTheirVertices) {
  const Plate plate(square(0, 0, 4), 0.5);
  EXPECT_EQ(plate.volume(), 8.0);
  EXPECT_EQ(Plate(plate).volume(), 8.0);
  EXPECT_EQ(Part(squareData()).points().size(), 2U);
  EXPECT_EQ(Part(ContourT(squareData())).points().size(), 2U);
}

}  // namespace
