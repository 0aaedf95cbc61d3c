// Where the points of a build form lie, and which point a code names.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string_view>

#include "tests/model/editions.h"
#include "tests/model/model_builders.h"
#include "vorn/model/build_form.h"
#include "vorn/platform/code_page_932.h"

namespace {

using model_test::FormOf;
using model_test::PointAt;
using model_test::PointOn;
using model_test::PointWith;
using test_support::EditionScope;

using DataType = VornComposedPnt::DataType;
using SlopeType = VornComposedPnt::SlopeType;

constexpr std::string_view kFill = u8"盛土工"_cp932;
constexpr std::array<std::string_view, 3> kNoPlans = {"", u8"路盤"_cp932, u8"盛"_cp932};

constexpr auto kCenter = VornLocation::Center;
constexpr auto kLeft = VornLocation::Left;
constexpr auto kRight = VornLocation::Right;

VornComposedPnt WidthHeight(VornLocation side, double x, double y) {
  return PointWith(side, DataType::WidthHeight, x, y);
}

void Regulate(VornBuildForm& form, NurReal centerHeight = 100.0) {
  NurReal dist;
  NurReal height;
  form.RegulateComposedPnt(centerHeight, dist, height);
  EXPECT_FALSE(dist.IsSet());
  EXPECT_FALSE(height.IsSet());
}

void ExpectPosition(const VornBuildForm& form, int index, double clDist, double gh) {
  const VornComposedPnt& point = form.GetComposedPntArray()[index];
  EXPECT_DOUBLE_EQ(point.GetCLDist().Value(), clDist) << index;
  EXPECT_DOUBLE_EQ(point.GetGh().Value(), gh) << index;
}

void ExpectNoPosition(const VornBuildForm& form, int index) {
  EXPECT_FALSE(form.GetComposedPntArray()[index].GetCLDist().IsSet()) << index;
  EXPECT_FALSE(form.GetComposedPntArray()[index].GetGh().IsSet()) << index;
}

// --- positions as the edition reads the input values -----------------------------------------------------------------

TEST(BuildFormGeometry, ChainsEachSideFromTheStartPoint) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form =
      FormOf("road", {WidthHeight(kCenter, 0.5, 1.0), WidthHeight(kLeft, 2.0, -0.5), WidthHeight(kLeft, 3.0, -0.25),
                      WidthHeight(kRight, 4.0, 0.5), WidthHeight(kRight, 5.0, 0.25)});
  Regulate(form);
  ExpectPosition(form, 0, 0.5, 101.0);
  ExpectPosition(form, 1, -1.5, 100.5);
  ExpectPosition(form, 2, -4.5, 100.25);
  ExpectPosition(form, 3, 4.5, 101.5);
  ExpectPosition(form, 4, 9.5, 101.75);
}

TEST(BuildFormGeometry, StartsAgainAtTheStartPointWhenTheSidesAlternate) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.0, 0.0), WidthHeight(kLeft, 2.0, 1.0),
                                       WidthHeight(kRight, 3.0, 1.0), WidthHeight(kLeft, 4.0, 1.0)});
  Regulate(form);
  ExpectPosition(form, 3, -4.0, 101.0);
}

TEST(BuildFormGeometry, ReadsEachPointByItsOwnDataType) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.0, 0.0), PointWith(kRight, DataType::Percent, 4.0, -2.5),
                                       PointWith(kRight, DataType::Rate, -2.0, 1.5), WidthHeight(kRight, 1.0, 0.5)});
  Regulate(form);
  ExpectPosition(form, 1, 4.0, 99.9);
  ExpectPosition(form, 2, 7.0, 97.9);
  ExpectPosition(form, 3, 8.0, 98.4);
}

TEST(BuildFormGeometry, ReadsEachPointByItsSlopeTypeInEdition20) {
  const EditionScope edition(VornSchema::Version20);
  VornBuildForm form =
      FormOf("road", {WidthHeight(kCenter, 0.0, 0.0), WidthHeight(kRight, 4.0, -2.5), WidthHeight(kRight, -2.0, 1.5)});
  form.GetComposedPntArray()[2].SetSlopeType(SlopeType::Rate);
  Regulate(form);
  ExpectPosition(form, 1, 4.0, 99.9);
  ExpectPosition(form, 2, 7.0, 97.9);
}

TEST(BuildFormGeometry, LeavesAStartPointOffTheCenterWhereItIs) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kRight, 1.0, 1.0), WidthHeight(kRight, 2.0, 0.5)});
  form.GetComposedPntArray()[0].SetCLDist(10.0);
  form.GetComposedPntArray()[0].SetGh(50.0);
  Regulate(form);
  ExpectPosition(form, 0, 10.0, 50.0);
  ExpectPosition(form, 1, 12.0, 50.5);
}

TEST(BuildFormGeometry, ReportsTheInputOfTheStartPointForAPlanSurface) {
  const EditionScope edition(VornSchema::Version41);
  constexpr std::array<std::string_view, 6> kPlans = {u8"盛土工"_cp932, u8"切土工"_cp932, u8"掘削"_cp932,
                                                      u8"表層"_cp932,   u8"基準面"_cp932, u8"その他"_cp932};
  for (const std::string_view plan : kPlans) {
    VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.5, 1.5), WidthHeight(kRight, 2.0, 0.5)});
    form.SetXSectType(CString(plan));
    NurReal dist = 7.0;
    NurReal height = 8.0;
    form.RegulateComposedPnt(100.0, dist, height);
    EXPECT_EQ(dist, 0.5);
    EXPECT_EQ(height, 1.5);
  }
}

TEST(BuildFormGeometry, ReportsNothingForAnyOtherSurface) {
  const EditionScope edition(VornSchema::Version41);
  for (const std::string_view other : kNoPlans) {
    VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.5, 1.5), WidthHeight(kRight, 2.0, 0.5)});
    form.SetXSectType(CString(other));
    NurReal dist = 7.0;
    NurReal height = 8.0;
    form.RegulateComposedPnt(100.0, dist, height);
    EXPECT_EQ(dist, 7.0);
    EXPECT_EQ(height, 8.0);
    ExpectPosition(form, 1, 2.5, 102.0);
  }
}

TEST(BuildFormGeometry, ComputesNothingInAnUnrecognisedEdition) {
  const EditionScope edition(VornSchema::VersionUnknown);
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.5, 1.5), WidthHeight(kRight, 2.0, 0.5)});
  form.SetXSectType(CString(kFill));
  Regulate(form);
  for (const VornComposedPnt& point : form.GetComposedPntArray()) EXPECT_FALSE(point.GetCLDist().IsSet());
}

TEST(BuildFormGeometry, ComputesNothingWithoutPoints) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form;
  form.SetXSectType(CString(kFill));
  Regulate(form);
}

TEST(BuildFormGeometry, TakesTheCenterHeightFromTheStartPointItself) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.0, 1.0), WidthHeight(kRight, 2.0, 0.5)});
  VornComposedPnt& start = form.GetComposedPntArray()[0];
  start.SetGh(100.0);
  NurReal dist;
  NurReal height;
  form.RegulateComposedPnt(start.GetGh(), dist, height);
  ExpectPosition(form, 0, 0.0, 101.0);
  ExpectPosition(form, 1, 2.0, 101.5);
}

// --- positions from the centre point outward -------------------------------------------------------------------------

/// A form whose points all have positions that no computation gives.
VornBuildForm PlacedElsewhere(std::initializer_list<VornComposedPnt> points) {
  VornBuildForm form = FormOf("road", points);
  for (VornComposedPnt& point : form.GetComposedPntArray()) {
    point.SetCLDist(77.0);
    point.SetGh(88.0);
  }
  return form;
}

TEST(BuildFormOutward, PlacesBothSidesFromTheCenterPointOutward) {
  VornBuildForm form =
      PlacedElsewhere({WidthHeight(kCenter, 0.5, 1.0), WidthHeight(kLeft, 2.0, -0.5), WidthHeight(kLeft, 3.0, -0.25),
                       WidthHeight(kRight, 4.0, 0.5), WidthHeight(kRight, 5.0, 0.25)});
  form.CalcPointGhDist(100.0);
  ExpectPosition(form, 0, 0.5, 101.0);
  ExpectPosition(form, 1, -1.5, 100.5);
  ExpectPosition(form, 2, -4.5, 100.25);
  ExpectPosition(form, 3, 4.5, 101.5);
  ExpectPosition(form, 4, 9.5, 101.75);
}

TEST(BuildFormOutward, ChainsEachSideOnWhenTheSidesAlternate) {
  VornBuildForm form =
      PlacedElsewhere({WidthHeight(kLeft, 1.0, 1.0), WidthHeight(kRight, 2.0, 2.0), WidthHeight(kCenter, 0.0, 0.0),
                       WidthHeight(kLeft, 4.0, 4.0), WidthHeight(kRight, 8.0, 8.0)});
  form.CalcPointGhDist(100.0);
  ExpectPosition(form, 0, -1.0, 101.0);
  ExpectPosition(form, 1, 2.0, 102.0);
  ExpectPosition(form, 2, 0.0, 100.0);
  ExpectPosition(form, 3, -5.0, 105.0);
  ExpectPosition(form, 4, 10.0, 110.0);
}

class BuildFormOutwardInEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, BuildFormOutwardInEdition, testing::ValuesIn(model_test::kEditions),
                         model_test::InEdition::Name);

TEST_P(BuildFormOutwardInEdition, ReadsEveryPointAsAWidthAndAHeightDifference) {
  for (const DataType type : {DataType::Unset, DataType::WidthHeight, DataType::Percent, DataType::Rate}) {
    for (const SlopeType slope : {SlopeType::Unset, SlopeType::Percent, SlopeType::Rate}) {
      VornBuildForm form = FormOf("road", {PointWith(kCenter, type, 0.0, 0.0), PointWith(kLeft, type, 4.0, -2.5),
                                           PointWith(kRight, type, -2.0, 1.5)});
      for (VornComposedPnt& point : form.GetComposedPntArray()) point.SetSlopeType(slope);
      form.CalcPointGhDist(100.0);
      ExpectPosition(form, 1, -4.0, 97.5);
      ExpectPosition(form, 2, -2.0, 101.5);
    }
  }
}

TEST(BuildFormOutward, TakesAnUnsetWidthOfTheCenterPointForZero) {
  VornBuildForm form =
      PlacedElsewhere({PointWith(kCenter, DataType::WidthHeight, NurReal(), 1.0), WidthHeight(kLeft, 2.0, 0.5)});
  form.CalcPointGhDist(100.0);
  ExpectPosition(form, 0, 0.0, 101.0);
  ExpectPosition(form, 1, -2.0, 101.5);
  EXPECT_FALSE(form.GetComposedPntArray()[0].GetX().IsSet());
}

TEST(BuildFormOutward, PutsACenterPointWithoutAHeightDifferenceAtTheCenterHeight) {
  VornBuildForm form =
      PlacedElsewhere({PointWith(kCenter, DataType::WidthHeight, 0.5, NurReal()), WidthHeight(kRight, 2.0, 0.5)});
  form.CalcPointGhDist(100.0);
  EXPECT_EQ(form.GetComposedPntArray()[0].GetGh(), 100.0);
  ExpectPosition(form, 1, 2.5, 100.5);
}

TEST(BuildFormOutward, TakesACenterHeightOfZeroForAHeight) {
  VornBuildForm form =
      PlacedElsewhere({PointWith(kCenter, DataType::WidthHeight, 0.5, NurReal()), WidthHeight(kRight, 2.0, 0.5)});
  form.CalcPointGhDist(0.0);
  EXPECT_EQ(form.GetComposedPntArray()[0].GetGh(), 0.0);
  ExpectPosition(form, 1, 2.5, 0.5);
}

TEST(BuildFormOutward, GivesOnlyTheCenterPointItsDistanceWithoutACenterHeight) {
  VornBuildForm form = PlacedElsewhere({WidthHeight(kCenter, 0.5, 1.0), WidthHeight(kLeft, 2.0, 0.5),
                                        WidthHeight(kLeft, 2.0, 0.5), WidthHeight(kRight, 2.0, 0.5)});
  form.CalcPointGhDist(NurReal());
  EXPECT_EQ(form.GetComposedPntArray()[0].GetCLDist(), 0.5);
  EXPECT_FALSE(form.GetComposedPntArray()[0].GetGh().IsSet());
  for (const int side : {1, 2, 3}) ExpectNoPosition(form, side);
}

TEST(BuildFormOutward, GivesAPointThatLacksAValueNoPositionAndGoesOnFromTheLastThatHasOne) {
  for (const VornLocation side : {kLeft, kRight}) {
    const double outward = side == kLeft ? -1.0 : 1.0;
    VornBuildForm form = PlacedElsewhere(
        {WidthHeight(kCenter, 0.0, 0.0), WidthHeight(side, 1.0, 1.0),
         PointWith(side, DataType::WidthHeight, NurReal(), 2.0), PointWith(side, DataType::WidthHeight, 2.0, NurReal()),
         PointWith(side, DataType::WidthHeight, NurReal(), NurReal()), WidthHeight(side, 4.0, 4.0)});
    form.CalcPointGhDist(100.0);
    for (const int incomplete : {2, 3, 4}) ExpectNoPosition(form, incomplete);
    ExpectPosition(form, 5, outward * 5.0, 105.0);
  }
}

TEST(BuildFormOutward, StartsTheRightSideAtTheCenterPointAgain) {
  VornBuildForm form =
      PlacedElsewhere({WidthHeight(kCenter, 0.25, 0.0), WidthHeight(kLeft, 1.0, 5.0),
                       PointWith(kLeft, DataType::WidthHeight, NurReal(), NurReal()), WidthHeight(kRight, 1.0, 3.0)});
  form.CalcPointGhDist(100.0);
  ExpectPosition(form, 3, 1.25, 103.0);
}

TEST(BuildFormOutward, ChangesNothingWithoutACenterPoint) {
  VornBuildForm form = PlacedElsewhere({WidthHeight(kLeft, 1.0, 1.0), WidthHeight(kRight, 1.0, 1.0)});
  form.CalcPointGhDist(100.0);
  for (const int index : {0, 1}) ExpectPosition(form, index, 77.0, 88.0);
}

TEST(BuildFormOutward, ComputesNothingWithoutPoints) {
  VornBuildForm form;
  form.CalcPointGhDist(100.0);
  EXPECT_TRUE(form.GetComposedPntArray().IsEmpty());
}

TEST(BuildFormOutward, TakesTheLastCenterPointAndLeavesTheOthersAlone) {
  VornBuildForm form =
      PlacedElsewhere({WidthHeight(kCenter, 1.0, 1.0), WidthHeight(kLeft, 1.0, 1.0), WidthHeight(kCenter, 3.0, 3.0)});
  form.CalcPointGhDist(100.0);
  ExpectPosition(form, 0, 77.0, 88.0);
  ExpectPosition(form, 1, 2.0, 104.0);
  ExpectPosition(form, 2, 3.0, 103.0);
}

TEST(BuildFormOutward, PlacesThePointsBeforeOneWithoutASideOnly) {
  VornBuildForm form = PlacedElsewhere({WidthHeight(kCenter, 0.0, 0.0), WidthHeight(kLeft, 1.0, 1.0),
                                        WidthHeight(VornLocation::Unset, 1.0, 1.0), WidthHeight(kRight, 1.0, 1.0)});
  form.CalcPointGhDist(100.0);
  ExpectPosition(form, 0, 0.0, 100.0);
  ExpectPosition(form, 1, -1.0, 101.0);
  for (const int index : {2, 3}) ExpectPosition(form, index, 77.0, 88.0);
}

TEST(BuildFormOutward, ChangesNothingBehindAPointWithoutASideBeforeTheCenterPoint) {
  VornBuildForm form = PlacedElsewhere(
      {WidthHeight(VornLocation::Unset, 1.0, 1.0), WidthHeight(kCenter, 0.0, 0.0), WidthHeight(kRight, 1.0, 1.0)});
  form.CalcPointGhDist(100.0);
  for (const int index : {0, 1, 2}) ExpectPosition(form, index, 77.0, 88.0);
}

TEST(BuildFormOutward, TakesTheCenterHeightFromTheCenterPointItself) {
  VornBuildForm form = PlacedElsewhere({WidthHeight(kCenter, 0.0, 1.0), WidthHeight(kRight, 2.0, 0.5)});
  form.CalcPointGhDist(form.GetComposedPntArray()[0].GetGh());
  ExpectPosition(form, 0, 0.0, 89.0);
  ExpectPosition(form, 1, 2.0, 89.5);
}

// --- between codes and positions -------------------------------------------------------------------------------------

TEST(BuildFormGeometry, FindsThePositionOfACodeHeightFirst) {
  VornBuildForm form = FormOf("road", {PointOn(kCenter, "C"), PointOn(kLeft, "AB"), PointOn(kRight, "ab")});
  for (int i = 0; i < 3; ++i) {
    form.GetComposedPntArray()[i].SetCLDist(i);
    form.GetComposedPntArray()[i].SetGh(100.0 + i);
  }
  TamWorld2 pos;
  EXPECT_TRUE(form.GetPntFromCode("ab", pos));
  EXPECT_EQ(pos, (TamWorld2{101.0, 1.0}));
  EXPECT_TRUE(form.GetPntFromCode("c", pos));
  EXPECT_EQ(pos, (TamWorld2{100.0, 0.0}));
}

TEST(BuildFormGeometry, LeavesThePositionUntouchedWithoutThatCode) {
  VornBuildForm form = FormOf("road", {PointOn(kCenter, "C")});
  form.GetComposedPntArray()[0].SetCode("sub", VornComposedPnt::PntType::Sub);
  TamWorld2 pos{1.0, 2.0};
  EXPECT_FALSE(form.GetPntFromCode("x", pos));
  EXPECT_FALSE(form.GetPntFromCode("sub", pos));
  EXPECT_EQ(pos, (TamWorld2{1.0, 2.0}));
}

TEST(BuildFormGeometry, FindsNoPositionWithoutPoints) {
  TamWorld2 pos{1.0, 2.0};
  EXPECT_FALSE(VornBuildForm().GetPntFromCode("", pos));
  EXPECT_EQ(pos, (TamWorld2{1.0, 2.0}));
}

TEST(BuildFormGeometry, FindsTheCodeAtAPositionHeightFirst) {
  const VornBuildForm form = FormOf(
      "road", {PointAt(kCenter, 100.0, 0.0, "C"), PointAt(kLeft, 101.0, -2.0, "L"), PointAt(kRight, -2.0, 101.0, "R")});
  CString code;
  EXPECT_TRUE(form.GetCodeFromPnt({101.0, -2.0}, code));
  EXPECT_EQ(code, "L");
  EXPECT_TRUE(form.GetCodeFromPnt({-2.0, 101.0}, code));
  EXPECT_EQ(code, "R");
}

TEST(BuildFormGeometry, FindsTheMainCodeOfTheFirstPointAtAPosition) {
  VornBuildForm form = FormOf("road", {PointAt(kCenter, 100.0, 0.0, "C"), PointAt(kRight, 101.0, 2.0, "first"),
                                       PointAt(kRight, 101.0, 2.0, "second")});
  form.GetComposedPntArray()[1].SetCode("sub", VornComposedPnt::PntType::Sub);
  CString code;
  EXPECT_TRUE(form.GetCodeFromPnt({101.0, 2.0}, code));
  EXPECT_EQ(code, "first");
}

TEST(BuildFormGeometry, FindsACodeUpToATinyLengthAway) {
  const VornBuildForm form = FormOf("road", {PointAt(kCenter, 0.0, 0.0, "C")});
  const double beyond = std::nextafter(kTamTinyLength, 1.0);
  for (const double sign : {-1.0, 1.0}) {
    CString code;
    EXPECT_TRUE(form.GetCodeFromPnt({sign * kTamTinyLength, -sign * kTamTinyLength}, code));
    EXPECT_EQ(code, "C");
    EXPECT_FALSE(form.GetCodeFromPnt({sign * beyond, 0.0}, code));
    EXPECT_FALSE(form.GetCodeFromPnt({0.0, sign * beyond}, code));
  }
}

TEST(BuildFormGeometry, LeavesTheCodeUntouchedWithoutAPointThere) {
  const VornBuildForm form = FormOf("road", {PointAt(kCenter, 100.0, 0.0, "C"), PointAt(kRight, 101.0, 2.0, "R")});
  CString code = "kept";
  EXPECT_FALSE(form.GetCodeFromPnt({100.0, 2.0}, code));
  EXPECT_FALSE(form.GetCodeFromPnt({101.0, 0.0}, code));
  EXPECT_FALSE(form.GetCodeFromPnt({101.0, -2.0}, code));
  EXPECT_FALSE(VornBuildForm().GetCodeFromPnt({0.0, 0.0}, code));
  EXPECT_EQ(code, "kept");
}

// --- what pavement is laid on ----------------------------------------------------------------------------------------

TEST(BuildFormPave, TellsTheLeftmostHeightAndBothOuterDistances) {
  const VornBuildForm form =
      FormOf("road", {PointAt(kCenter, 100.0, 0.0), PointAt(kLeft, 101.0, -2.0), PointAt(kRight, 102.0, 3.0),
                      PointAt(kLeft, 103.0, -4.0), PointAt(kRight, 104.0, 5.0), PointAt(kRight, 105.0, 6.0)});
  NurReal height;
  NurReal left;
  NurReal right;
  EXPECT_TRUE(form.QueryPaveInfo(height, left, right));
  EXPECT_EQ(height, 103.0);
  EXPECT_EQ(left, -4.0);
  EXPECT_EQ(right, 6.0);
}

TEST(BuildFormPave, RunsFromTheInnermostToTheOutermostPointWithOnlyRightPoints) {
  const VornBuildForm form =
      FormOf("road", {PointAt(kRight, 100.0, 1.0), PointAt(kRight, 101.0, 2.0), PointAt(kRight, 102.0, 3.0)});
  NurReal height;
  NurReal left;
  NurReal right;
  EXPECT_TRUE(form.QueryPaveInfo(height, left, right));
  EXPECT_EQ(height, 100.0);
  EXPECT_EQ(left, 1.0);
  EXPECT_EQ(right, 3.0);
}

TEST(BuildFormPave, EndsAtItsOnlyPointOnBothSides) {
  const VornBuildForm form = FormOf("road", {PointAt(kCenter, 100.0, 1.0)});
  NurReal height;
  NurReal left;
  NurReal right;
  EXPECT_TRUE(form.QueryPaveInfo(height, left, right));
  EXPECT_EQ(height, 100.0);
  EXPECT_EQ(left, 1.0);
  EXPECT_EQ(right, 1.0);
}

TEST(BuildFormPave, TellsAPointWithoutAPositionAsUnset) {
  const VornBuildForm form = FormOf("road", {PointOn(kCenter), PointAt(kRight, 102.0, 3.0)});
  NurReal height = 1.0;
  NurReal left = 2.0;
  NurReal right = 4.0;
  EXPECT_TRUE(form.QueryPaveInfo(height, left, right));
  EXPECT_FALSE(height.IsSet());
  EXPECT_FALSE(left.IsSet());
  EXPECT_EQ(right, 3.0);
}

TEST(BuildFormPave, UnsetsEverythingWithoutPoints) {
  NurReal height = 1.0;
  NurReal left = 2.0;
  NurReal right = 3.0;
  EXPECT_FALSE(VornBuildForm().QueryPaveInfo(height, left, right));
  EXPECT_FALSE(height.IsSet());
  EXPECT_FALSE(left.IsSet());
  EXPECT_FALSE(right.IsSet());
}

VornBuildForm StartingAt(NurReal height) {
  return FormOf("road", {PointAt(kCenter, height, 0.0), PointAt(kRight, 200.0, 2.0)});
}

TEST(BuildFormSurface, LiesAtTheHeightOfItsStartPoint) {
  const VornBuildForm form = StartingAt(100.25);
  EXPECT_TRUE(form.IsSurface(100.25));
  EXPECT_FALSE(form.IsSurface(100.26));
  EXPECT_FALSE(form.IsSurface(100.24));
  EXPECT_FALSE(form.IsSurface(200.0));
}

TEST(BuildFormSurface, ComparesHeightsInWholeMillimetres) {
  EXPECT_TRUE(StartingAt(100.0).IsSurface(100.0004));
  EXPECT_TRUE(StartingAt(100.0).IsSurface(99.9996));
  EXPECT_TRUE(StartingAt(100.0004).IsSurface(99.9996));
  EXPECT_FALSE(StartingAt(100.0004).IsSurface(100.0006));
  EXPECT_FALSE(StartingAt(100.0).IsSurface(100.001));
  EXPECT_FALSE(StartingAt(100.0).IsSurface(99.999));
}

TEST(BuildFormSurface, RoundsHalfAMillimetreAwayFromZero) {
  EXPECT_TRUE(StartingAt(1.0005).IsSurface(1.001));
  EXPECT_FALSE(StartingAt(1.0005).IsSurface(1.0));
  EXPECT_TRUE(StartingAt(-1.001).IsSurface(-1.0005));
  EXPECT_FALSE(StartingAt(-1.0).IsSurface(-1.0005));
}

TEST(BuildFormSurface, LiesNowhereWithoutPoints) {
  EXPECT_FALSE(VornBuildForm().IsSurface(0.0));
  EXPECT_FALSE(VornBuildForm().IsSurface(NurReal()));
}

// --- what counts as what ---------------------------------------------------------------------------------------------

class BuildFormPlan : public model_test::InEdition {};

TEST_P(BuildFormPlan, ReportsTheInputOfItsStartPoint) {
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.5, 1.5), WidthHeight(kRight, 2.0, 0.5)});
  form.SetXSectType(kFill);
  NurReal dist;
  NurReal height;
  form.RegulateComposedPnt(100.0, dist, height);
  EXPECT_EQ(dist, 0.5);
  EXPECT_EQ(height, 1.5);
}

INSTANTIATE_TEST_SUITE_P(Editions, BuildFormPlan,
                         testing::Values(model_test::kEdition20, model_test::kEdition40, model_test::kEdition41,
                                         model_test::kEditionMaff),
                         model_test::InEdition::Name);

TEST(BuildFormGeometry, ReportsTheInputAndNotThePositionOfAStartPointOffTheCenter) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kRight, 0.5, 1.5), WidthHeight(kRight, 2.0, 0.5)});
  form.SetXSectType(kFill);
  form.GetComposedPntArray()[0].SetCLDist(10.0);
  form.GetComposedPntArray()[0].SetGh(50.0);
  NurReal dist;
  NurReal height;
  form.RegulateComposedPnt(100.0, dist, height);
  EXPECT_EQ(dist, 0.5);
  EXPECT_EQ(height, 1.5);
}

TEST(BuildFormGeometry, ReportsInputThatIsUnsetAsUnset) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form =
      FormOf("road", {PointWith(kCenter, DataType::WidthHeight, NurReal(), NurReal()), WidthHeight(kRight, 2.0, 0.5)});
  form.SetXSectType(kFill);
  NurReal dist = 7.0;
  NurReal height = 8.0;
  form.RegulateComposedPnt(100.0, dist, height);
  EXPECT_FALSE(dist.IsSet());
  EXPECT_FALSE(height.IsSet());
}

TEST(BuildFormGeometry, PlacesAFormOfOnePoint) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.5, 1.0)});
  Regulate(form);
  ExpectPosition(form, 0, 0.5, 101.0);
  form.CalcPointGhDist(200.0);
  ExpectPosition(form, 0, 0.5, 201.0);
}

TEST(BuildFormGeometry, ChainsARunOfPointsWithoutASide) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 0.0, 0.0), WidthHeight(VornLocation::Unset, 2.0, 1.0),
                                       WidthHeight(VornLocation::Unset, 3.0, 1.0)});
  Regulate(form);
  ExpectPosition(form, 2, 5.0, 102.0);
}

TEST(BuildFormGeometry, ChainsARunOfCenterPointsBehindASide) {
  const EditionScope edition(VornSchema::Version41);
  VornBuildForm form = FormOf("road", {WidthHeight(kCenter, 1.0, 0.0), WidthHeight(kLeft, 2.0, 1.0),
                                       WidthHeight(kCenter, 3.0, 1.0), WidthHeight(kCenter, 4.0, 1.0)});
  Regulate(form);
  ExpectPosition(form, 2, 4.0, 101.0);
  ExpectPosition(form, 3, 8.0, 102.0);
}

TEST(BuildFormGeometry, FindsAPointWithoutAPositionAtZero) {
  const VornBuildForm form = FormOf("road", {PointOn(kRight, "loose"), PointAt(kRight, 0.0, 0.0)});
  CString code;
  EXPECT_TRUE(form.GetCodeFromPnt({0.0, 0.0}, code));
  EXPECT_EQ(code, "loose");
}

TEST(BuildFormGeometry, FindsThePositionOfAPointWithoutOneAsUnset) {
  const VornBuildForm form = FormOf("road", {PointOn(kRight, "loose")});
  TamWorld2 pos{1.0, 2.0};
  EXPECT_TRUE(form.GetPntFromCode("loose", pos));
  EXPECT_TRUE(KelIsShoki(pos.x));
  EXPECT_TRUE(KelIsShoki(pos.y));
}

TEST(BuildFormSurface, LiesAtZeroWithoutAHeight) {
  const VornBuildForm loose = FormOf("road", {PointOn(kCenter)});
  EXPECT_TRUE(loose.IsSurface(0.0));
  EXPECT_TRUE(loose.IsSurface(NurReal()));
  EXPECT_FALSE(loose.IsSurface(1.0));
}

}  // namespace
