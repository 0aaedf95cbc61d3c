// Where the points of a build form lie, and which point a code names.

#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "tests/model/editions.h"
#include "tests/model/model_builders.h"
#include "vorn/model/build_form.h"
#include "vorn/platform/code_page_932.h"

namespace {

using model_test::FormOf;
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

}  // namespace
