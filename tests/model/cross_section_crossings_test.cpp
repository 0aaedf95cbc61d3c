#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/model/model_builders.h"
#include "vorn/model/x_section.h"
#include "vorn/platform/code_page_932.h"

// Where the design surface of a cross section meets the existing ground.

namespace {

using model_test::CodesOf;
using model_test::Each;
using model_test::FormOf;
using model_test::GroundOf;
using model_test::PointAt;
using model_test::PointOn;
using testing::ElementsAre;
using testing::IsEmpty;

using ComponentType = VornComposedPnt::ComponentType;
using DataType = VornComposedPnt::DataType;
using PntType = VornComposedPnt::PntType;
/// (height, distance from the centre line).
using Position = std::pair<double, double>;

constexpr std::string_view kFill = u8"盛土工"_cp932;
constexpr std::string_view kSubgrade = u8"路床"_cp932;
constexpr VornLocation kCenter = VornLocation::Center;
constexpr VornLocation kLeft = VornLocation::Left;
constexpr VornLocation kRight = VornLocation::Right;
constexpr VornLocation kNowhere = VornLocation::Unset;
constexpr std::array kSides = {kLeft, kRight};

VornXSection SectionOf(std::initializer_list<VornBuildForm> forms) {
  VornXSection section;
  for (const VornBuildForm& form : forms) section.GetBuildFormArray().Add(form);
  return section;
}

Vorn_ComposedPntArray& PointsOf(VornXSection& section, int form = 0) {
  return section.GetBuildFormArray()[form].GetComposedPntArray();
}

VornComposedPnt CrossingOn(VornLocation side, std::string_view code = "X", std::uint16_t pointType = 0) {
  VornComposedPnt point = PointOn(side, code);
  point.SetSeriesPnt(false);
  point.SetPointType(pointType);
  return point;
}

// --- whether there are crossing points -----------------------------------------------------------------------------

TEST(XSectionIsCrossPoint, NeedsACrossingOnEitherSide) {
  EXPECT_TRUE(SectionOf({FormOf("road", {CrossingOn(kLeft), CrossingOn(kRight)})}).IsCrossPoint());
  EXPECT_FALSE(SectionOf({FormOf("road", {CrossingOn(kLeft), PointOn(kRight)})}).IsCrossPoint());
  EXPECT_FALSE(SectionOf({FormOf("road", {PointOn(kLeft), CrossingOn(kRight)})}).IsCrossPoint());
  EXPECT_FALSE(SectionOf({FormOf("road", {PointOn(kLeft), PointOn(kRight)})}).IsCrossPoint());
  EXPECT_FALSE(VornXSection().IsCrossPoint());
}

TEST(XSectionIsCrossPoint, TakesThemFromAnyForm) {
  EXPECT_TRUE(
      SectionOf({FormOf("a", {CrossingOn(kRight)}), FormOf("b", {}), FormOf("c", {CrossingOn(kLeft)})}).IsCrossPoint());
}

TEST(XSectionIsCrossPoint, NeedsTheSides) {
  EXPECT_FALSE(
      SectionOf({FormOf("road", {CrossingOn(kCenter), CrossingOn(kNowhere), CrossingOn(kLeft)})}).IsCrossPoint());
}

TEST(XSectionIsCrossPoint, GoesByTheSeriesAndNotByTheMark) {
  VornComposedPnt marked = PointOn(kLeft);
  marked.SetPointType(VornComposedPnt::kKePoint | VornComposedPnt::kCrossPoint);
  EXPECT_FALSE(SectionOf({FormOf("road", {marked, CrossingOn(kRight)})}).IsCrossPoint());
}

// --- making the last point the crossing ----------------------------------------------------------------------------

TEST(XSectionChangeCrossPoint, MarksTheLastPointOfTheSide) {
  VornXSection section = SectionOf({FormOf("road", {PointOn(kCenter), PointOn(kLeft), PointOn(kRight), PointOn(kLeft),
                                                    PointOn(kRight), PointOn(kNowhere)})});
  section.ChangeCrossPoint(kLeft);
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetPointType), ElementsAre(0, 0, 0, 3, 0, 0));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSeriesPnt),
              ElementsAre(true, true, true, false, true, true));
  section.ChangeCrossPoint(kRight);
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetPointType), ElementsAre(0, 0, 0, 3, 3, 0));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSeriesPnt),
              ElementsAre(true, true, true, false, false, true));
}

TEST(XSectionChangeCrossPoint, KeepsTheOtherBits) {
  VornXSection section = SectionOf({FormOf("road", {CrossingOn(kLeft, "X", 0x8004)})});
  section.ChangeCrossPoint(kLeft);
  EXPECT_EQ(PointsOf(section)[0].GetPointType(), 0x8007);
}

TEST(XSectionChangeCrossPoint, TakesEveryFormThatHasTheSide) {
  VornXSection section = SectionOf(
      {FormOf("a", {PointOn(kRight)}), FormOf("b", {PointOn(kLeft)}), FormOf("c", {}), FormOf("d", {PointOn(kRight)})});
  section.ChangeCrossPoint(kRight);
  EXPECT_FALSE(PointsOf(section, 0)[0].GetSeriesPnt());
  EXPECT_FALSE(PointsOf(section, 3)[0].GetSeriesPnt());
}

TEST(XSectionChangeCrossPoint, LeavesAFormWithoutTheSide) {
  VornXSection section = SectionOf({FormOf("road", {PointOn(kCenter), PointOn(kLeft)})});
  section.ChangeCrossPoint(kRight);
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetPointType), ElementsAre(0, 0));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSeriesPnt), ElementsAre(true, true));
}

// --- taking crossings back -----------------------------------------------------------------------------------------

constexpr std::uint16_t kMarked = VornComposedPnt::kKePoint | VornComposedPnt::kCrossPoint;

TEST(XSectionRemoveCrossPoint, MakesAKePointOrdinary) {
  VornXSection section = SectionOf({FormOf("road", {CrossingOn(kLeft, "A-12", kMarked | 0x4)})});
  section.RemoveCrossPoint(kLeft);
  ASSERT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("12"));
  EXPECT_TRUE(PointsOf(section)[0].GetSeriesPnt());
  EXPECT_EQ(PointsOf(section)[0].GetPointType(), VornComposedPnt::kKePoint | 0x4);
}

TEST(XSectionRemoveCrossPoint, MakesAKePointOrdinaryThatIsNotMarkedAsCrossPoint) {
  VornXSection section = SectionOf({FormOf("road", {CrossingOn(kLeft, "A", VornComposedPnt::kKePoint)})});
  section.RemoveCrossPoint(kLeft);
  ASSERT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("A"));
  EXPECT_TRUE(PointsOf(section)[0].GetSeriesPnt());
  EXPECT_EQ(PointsOf(section)[0].GetPointType(), VornComposedPnt::kKePoint);
}

/// The main code of a KE point that was a crossing.
std::string CodeAfter(std::string_view code) {
  VornXSection section = SectionOf({FormOf("road", {CrossingOn(kLeft, code, kMarked)})});
  section.RemoveCrossPoint(kLeft);
  return CodesOf(section.GetBuildFormArray()[0]).at(0);
}

TEST(XSectionRemoveCrossPoint, KeepsTheCodeBehindTheLastHyphen) {
  EXPECT_EQ(CodeAfter("A-B-12"), "12");
  EXPECT_EQ(CodeAfter("-12"), "12");
  EXPECT_EQ(CodeAfter("A-"), "");
  EXPECT_EQ(CodeAfter("A12"), "A12");
  EXPECT_EQ(CodeAfter(""), "");
}

TEST(XSectionRemoveCrossPoint, KeepsTheCodeOfTheSubRole) {
  VornComposedPnt point = CrossingOn(kLeft, "A-12", kMarked);
  point.SetCode("B-34", PntType::Sub);
  VornXSection section = SectionOf({FormOf("road", {point})});
  section.RemoveCrossPoint(kLeft);
  EXPECT_EQ(PointsOf(section)[0].GetCode(PntType::Main), "12");
  EXPECT_EQ(PointsOf(section)[0].GetCode(PntType::Sub), "B-34");
}

TEST(XSectionRemoveCrossPoint, RemovesEveryOtherCrossing) {
  VornXSection section = SectionOf(
      {FormOf("road", {PointOn(kCenter, "C"), CrossingOn(kLeft, "1"), CrossingOn(kLeft, "2"), PointOn(kLeft, "3"),
                       CrossingOn(kLeft, "A-4", kMarked), CrossingOn(kLeft, "5", VornComposedPnt::kCrossPoint)})});
  section.RemoveCrossPoint(kLeft);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "3", "4"));
}

TEST(XSectionRemoveCrossPoint, NumbersNothingAnew) {
  VornXSection section =
      SectionOf({FormOf("road", {PointOn(kLeft, "1"), CrossingOn(kLeft, "2"), PointOn(kLeft, "3")})});
  section.RemoveCrossPoint(kLeft);
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSerialID), ElementsAre(1u, 3u));
  EXPECT_EQ(PointsOf(section).GetNextSerialID(), 4u);
}

TEST(XSectionRemoveCrossPoint, LeavesOrdinaryPointsAsTheyAre) {
  VornComposedPnt marked = PointOn(kLeft, "A-1");
  marked.SetPointType(kMarked);
  VornXSection section = SectionOf({FormOf("road", {marked, PointOn(kLeft, "A-2")})});
  section.RemoveCrossPoint(kLeft);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("A-1", "A-2"));
  EXPECT_EQ(PointsOf(section)[0].GetPointType(), kMarked);
}

TEST(XSectionRemoveCrossPoint, TakesOneSideOfEveryForm) {
  const VornBuildForm form =
      FormOf("road", {CrossingOn(kCenter, "C-0"), CrossingOn(kLeft, "1"), CrossingOn(kLeft, "A-2", kMarked),
                      CrossingOn(kRight, "3"), CrossingOn(kRight, "A-4", kMarked), CrossingOn(kNowhere, "5")});
  VornXSection section = SectionOf({form, form});
  section.RemoveCrossPoint(kLeft);
  for (const VornBuildForm& left : section.GetBuildFormArray()) {
    EXPECT_THAT(CodesOf(left), ElementsAre("C-0", "2", "3", "A-4", "5"));
    EXPECT_THAT(Each(left.GetComposedPntArray(), &VornComposedPnt::GetSeriesPnt),
                ElementsAre(false, true, false, false, false));
  }
}

// --- inserting a crossing ------------------------------------------------------------------------------------------

/// Level at 10 m: the centre, and on either side points at 5 m and 9 m in turns.
VornBuildForm LevelForm() {
  return FormOf("road",
                {PointAt(kCenter, 10.0, 0.0, "C"), PointAt(kLeft, 10.0, -5.0, "L1"), PointAt(kLeft, 10.0, -9.0, "L2"),
                 PointAt(kRight, 10.0, 5.0, "R1"), PointAt(kRight, 10.0, 9.0, "R2")});
}

std::vector<std::uint16_t> PointTypes(VornXSection& section, int form = 0) {
  return Each(PointsOf(section, form), &VornComposedPnt::GetPointType);
}

TEST(XSectionInsertPoint, MarksThePointThatLiesThere) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0, -9.0}, kLeft);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "L2", "R1", "R2"));
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 3, 0, 0));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSeriesPnt), ElementsAre(true, true, false, true, true));
}

TEST(XSectionInsertPoint, MarksAPointWithinAMillionth) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0 + 0.9e-6, -9.0}, kLeft);
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 3, 0, 0));
  section.InsertPoint({10.0, -5.0 - 1.1e-6}, kLeft);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "XL", "L2", "R1", "R2"));
}

TEST(XSectionInsertPoint, KeepsTheOtherBitsAndFieldsOfAMarkedPoint) {
  VornXSection section = SectionOf({LevelForm()});
  PointsOf(section)[3].SetPointType(0x8000);
  PointsOf(section)[3].SetExistence(VORN_Existence::False);
  section.InsertPoint({10.0, 5.0}, kRight);
  EXPECT_EQ(PointsOf(section)[3].GetPointType(), 0x8003);
  EXPECT_EQ(PointsOf(section)[3].GetExistence(), VORN_Existence::False);
  EXPECT_EQ(PointsOf(section)[3].GetCode(), "R1");
}

TEST(XSectionInsertPoint, MarksTheStartPointForEitherSide) {
  for (const VornLocation side : kSides) {
    for (const VornLocation startSide : {kCenter, kLeft, kRight, kNowhere}) {
      VornXSection section = SectionOf({LevelForm()});
      PointsOf(section)[0].SetLocation(startSide);
      section.InsertPoint({10.0, 0.0}, side);
      EXPECT_THAT(PointTypes(section), ElementsAre(3, 0, 0, 0, 0));
      EXPECT_FALSE(PointsOf(section)[0].GetSeriesPnt());
    }
  }
}

TEST(XSectionInsertPoint, PassesOverPointsOfTheOtherSide) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0, 9.0}, kLeft);
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 0, 0, 0));
}

TEST(XSectionInsertPoint, InsertsIntoTheSegmentThatPassesThere) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0, -7.0}, kLeft);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "XL", "L2", "R1", "R2"));
  section.InsertPoint({10.0, 7.0}, kRight);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "XL", "L2", "R1", "XR", "R2"));
}

TEST(XSectionInsertPoint, InsertsIntoTheFirstSegment) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0, -2.0}, kLeft);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "XL", "L1", "L2", "R1", "R2"));
}

TEST(XSectionInsertPoint, TakesTheSegmentFromThePointBeforeInTheArrayWhicheverSideThatHas) {
  // R1 stands behind L2: the way from L2 to R1 leads through 7 m on the left.
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0, -7.0}, kRight);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "L2", "XR", "R1", "R2"));
}

TEST(XSectionInsertPoint, FillsInTheInsertedPoint) {
  VornXSection section = SectionOf({LevelForm()});
  VornComposedPnt& outer = PointsOf(section)[2];
  outer.SetComponentType(ComponentType::SlopeCut);
  outer.SetComponentType(ComponentType::BermCut);
  outer.SetCtrlFlags(0x55);
  outer.SetPointType(VornComposedPnt::kKePoint);
  outer.SetDataType(DataType::Rate);
  outer.SetX(1.0);
  outer.SetY(2.0);
  outer.SetCode("sub", PntType::Sub);
  outer.SetXSectType(3, PntType::Both);
  outer.SetOrgID(4);
  outer.SetParentID(5);
  outer.SetID(6);
  outer.ElmType(VornComposedPnt::ElementType::Median);
  outer.SetSlopeType(VornComposedPnt::SlopeType::Rate);
  outer.SetRatio(7.0);
  outer.SetPercent(8.0);
  outer.SetTargetIndex(9);
  outer.SetDrawID(10);
  section.InsertPoint({10.0, -7.0}, kLeft);
  const VornComposedPnt& point = PointsOf(section)[2];
  EXPECT_EQ(point.GetCode(), "XL");
  EXPECT_EQ(point.GetGh(), 10.0);
  EXPECT_EQ(point.GetCLDist(), -7.0);
  EXPECT_EQ(point.GetLocation(), kLeft);
  EXPECT_EQ(point.GetComponentType(), ComponentType::BermCut);
  EXPECT_EQ(point.GetCtrlFlags(), 0x55u);
  EXPECT_EQ(point.GetOldCmpType(), ComponentType::Unset);
  EXPECT_EQ(point.GetPointType(), VornComposedPnt::kCrossPoint);
  EXPECT_FALSE(point.GetSeriesPnt());
  EXPECT_EQ(point.GetExistence(), VORN_Existence::True);
  EXPECT_EQ(point.GetDataType(), DataType::WidthHeight);
  // The rest is that of a new point.
  const VornComposedPnt fresh;
  EXPECT_EQ(point.GetX(), fresh.GetX());
  EXPECT_EQ(point.GetY(), fresh.GetY());
  EXPECT_EQ(point.GetRatio(), fresh.GetRatio());
  EXPECT_EQ(point.GetPercent(), fresh.GetPercent());
  EXPECT_EQ(point.GetSlopeType(), fresh.GetSlopeType());
  EXPECT_EQ(point.ElmType(), fresh.ElmType());
  EXPECT_EQ(point.GetCode(PntType::Sub), fresh.GetCode(PntType::Sub));
  EXPECT_EQ(point.GetXSectType(PntType::Main), fresh.GetXSectType(PntType::Main));
  EXPECT_EQ(point.GetXSectType(PntType::Sub), fresh.GetXSectType(PntType::Sub));
  EXPECT_EQ(point.GetOrgID(), fresh.GetOrgID());
  EXPECT_EQ(point.GetParentID(), fresh.GetParentID());
  EXPECT_EQ(point.GetID(), fresh.GetID());
  EXPECT_EQ(point.GetTargetIndex(), fresh.GetTargetIndex());
  EXPECT_EQ(point.GetDrawID(), fresh.GetDrawID());
}

TEST(XSectionInsertPoint, NumbersTheInsertedPoint) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0, -7.0}, kLeft);
  EXPECT_EQ(PointsOf(section)[2].GetSerialID(), 5u);
  EXPECT_EQ(PointsOf(section).GetNextSerialID(), 6u);
}

TEST(XSectionInsertPoint, PutsItWhereItWasTold) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0 + 0.5e-6, -7.0}, kLeft);
  EXPECT_EQ(PointsOf(section)[2].GetGh(), 10.0 + 0.5e-6);
}

TEST(XSectionInsertPoint, LeavesTheNeighboursOfTheInsertedPoint) {
  VornXSection section = SectionOf({LevelForm()});
  section.InsertPoint({10.0, -7.0}, kLeft);
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 2, 0, 0, 0));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSeriesPnt),
              ElementsAre(true, true, false, true, true, true));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSerialID), ElementsAre(0u, 1u, 5u, 2u, 3u, 4u));
}

TEST(XSectionInsertPoint, ChangesOnlyTheFirstFormThatMatches) {
  VornXSection section = SectionOf({FormOf("none", {}), LevelForm(), LevelForm()});
  section.InsertPoint({10.0, -7.0}, kLeft);
  EXPECT_EQ(PointsOf(section, 1).GetSize(), 6);
  EXPECT_EQ(PointsOf(section, 2).GetSize(), 5);
  section.InsertPoint({10.0, -9.0}, kLeft);
  EXPECT_THAT(PointTypes(section, 1), ElementsAre(0, 0, 2, 3, 0, 0));
  EXPECT_THAT(PointTypes(section, 2), ElementsAre(0, 0, 0, 0, 0));
  section.InsertPoint({10.0, 0.0}, kLeft);
  EXPECT_THAT(PointTypes(section, 1), ElementsAre(3, 0, 2, 3, 0, 0));
  EXPECT_THAT(PointTypes(section, 2), ElementsAre(0, 0, 0, 0, 0));
}

TEST(XSectionInsertPoint, LeavesTheSectionWhereNoFormMatches) {
  VornXSection section = SectionOf({LevelForm()});
  for (const VornLocation side : kSides) {
    section.InsertPoint({10.5, -7.0}, side);
    section.InsertPoint({10.0, -9.5}, side);
    section.InsertPoint({10.0, 9.5}, side);
    // The other way round: height and distance are no pair to be swapped.
    section.InsertPoint({-7.0, 10.0}, side);
  }
  EXPECT_EQ(PointsOf(section).GetSize(), 5);
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 0, 0, 0));
}

TEST(XSectionInsertPoint, TakesTheFirstOfAPointAndASegmentInOrder) {
  // The form comes back to where it was: the segment to its third point passes its fourth.
  VornXSection section =
      SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 0.0, "C"), PointAt(kRight, 10.0, 2.0, "1"),
                                 PointAt(kRight, 10.0, 9.0, "2"), PointAt(kRight, 10.0, 5.0, "3")})});
  section.InsertPoint({10.0, 5.0}, kRight);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "1", "XR", "2", "3"));
}

// --- whether the existing ground is in use -------------------------------------------------------------------------

TEST(XSectionIsValidPres, NeedsTheFlagAndPointsOfTheFirstGroundForm) {
  VornXSection section;
  EXPECT_FALSE(section.IsValidPres());
  section.SetExistingFlag(1);
  EXPECT_FALSE(section.IsValidPres());
  section.GetExistingBuildFormArray().Add(GroundOf({{0.0, 0.0}}));
  EXPECT_TRUE(section.IsValidPres());
  section.SetExistingFlag(-1);
  EXPECT_TRUE(section.IsValidPres());
  section.SetExistingFlag(0);
  EXPECT_FALSE(section.IsValidPres());
}

TEST(XSectionIsValidPres, IgnoresThePointsOfFurtherGroundForms) {
  VornXSection section;
  section.SetExistingFlag(1);
  section.GetExistingBuildFormArray().Add(VornExistingBuildForm());
  section.GetExistingBuildFormArray().Add(GroundOf({{0.0, 0.0}, {1.0, 1.0}}));
  EXPECT_FALSE(section.IsValidPres());
}

// --- the crossings with the existing ground ------------------------------------------------------------------------

VornBuildForm PlanForm(std::initializer_list<VornComposedPnt> points) {
  VornBuildForm form = FormOf("road", points);
  form.SetXSectType(CString(kFill));
  return form;
}

/// Rises from the centre at 10 m by one in one to 14 m, 4 m out on either side.
VornBuildForm ValleyForm() {
  return PlanForm({PointAt(kCenter, 10.0, 0.0, "C"), PointAt(kLeft, 14.0, -4.0, "L"), PointAt(kRight, 14.0, 4.0, "R")});
}

VornXSection SectionOver(std::initializer_list<TamWorld2> ground, std::initializer_list<VornBuildForm> forms) {
  VornXSection section = SectionOf(forms);
  section.SetExistingFlag(1);
  section.GetExistingBuildFormArray().Add(GroundOf(ground));
  return section;
}

constexpr std::initializer_list<TamWorld2> kLevelAtTwelve = {{12.0, -20.0}, {12.0, 20.0}};

std::vector<Position> CrossingsOf(const VornXSection& section, VornLocation side) {
  KelPointArray points;
  const int count = section.GetCrossPoint(side, points);
  EXPECT_EQ(count, points.GetSize());
  std::vector<Position> positions;
  for (const TamWorld2& point : points) positions.emplace_back(point.x, point.y);
  return positions;
}

TEST(XSectionGetCrossPoint, GivesHeightAndDistanceOnEitherSide) {
  const VornXSection section = SectionOver(kLevelAtTwelve, {ValleyForm()});
  EXPECT_THAT(CrossingsOf(section, kLeft), ElementsAre(Position{12.0, -2.0}));
  EXPECT_THAT(CrossingsOf(section, kRight), ElementsAre(Position{12.0, 2.0}));
}

TEST(XSectionGetCrossPoint, AppendsAndCountsWhatItAppended) {
  const VornXSection section = SectionOver(kLevelAtTwelve, {ValleyForm()});
  KelPointArray points;
  points.Add({1.0, 2.0});
  EXPECT_EQ(section.GetCrossPoint(kLeft, points), 1);
  EXPECT_EQ(section.GetCrossPoint(kRight, points), 1);
  ASSERT_EQ(points.GetSize(), 3);
  EXPECT_EQ(points[0], (TamWorld2{1.0, 2.0}));
  EXPECT_EQ(points[1], (TamWorld2{12.0, -2.0}));
  EXPECT_EQ(points[2], (TamWorld2{12.0, 2.0}));
}

TEST(XSectionGetCrossPoint, NeedsTheExistingGroundInUse) {
  VornXSection section = SectionOver(kLevelAtTwelve, {ValleyForm()});
  section.SetExistingFlag(0);
  EXPECT_THAT(CrossingsOf(section, kLeft), IsEmpty());
  section.SetExistingFlag(-1);
  EXPECT_THAT(CrossingsOf(section, kLeft), ElementsAre(Position{12.0, -2.0}));
  section.GetExistingBuildFormArray().RemoveAll();
  EXPECT_THAT(CrossingsOf(section, kLeft), IsEmpty());
}

TEST(XSectionGetCrossPoint, TakesTheFirstGroundFormOnly) {
  VornXSection section = SectionOver({}, {ValleyForm()});
  section.GetExistingBuildFormArray().Add(GroundOf(kLevelAtTwelve));
  EXPECT_THAT(CrossingsOf(section, kLeft), IsEmpty());
  section.GetExistingBuildFormArray()[0] = GroundOf({{13.0, -20.0}, {13.0, 20.0}});
  EXPECT_THAT(CrossingsOf(section, kLeft), ElementsAre(Position{13.0, -3.0}));
}

TEST(XSectionGetCrossPoint, FindsNoneWithASingleGroundPoint) {
  EXPECT_THAT(CrossingsOf(SectionOver({{12.0, -2.0}}, {ValleyForm()}), kLeft), IsEmpty());
}

TEST(XSectionGetCrossPoint, TakesThePlanFormsOnlyInOrder) {
  VornBuildForm subgrade = ValleyForm();
  subgrade.SetXSectType(CString(kSubgrade));
  VornBuildForm untyped = ValleyForm();
  untyped.SetXSectType("");
  const VornBuildForm steeper = PlanForm({PointAt(kCenter, 10.0, 0.0), PointAt(kRight, 14.0, 2.0)});
  const VornXSection section = SectionOver(kLevelAtTwelve, {subgrade, steeper, untyped, PlanForm({}), ValleyForm()});
  EXPECT_THAT(CrossingsOf(section, kRight), ElementsAre(Position{12.0, 1.0}, Position{12.0, 2.0}));
}

TEST(XSectionGetCrossPoint, WalksTheSideFromTheStartPointPastPointsOfTheOther) {
  // Each side zigzags through the ground; the points come in turns, and the ones without a side do not take part.
  const VornXSection section =
      SectionOver(kLevelAtTwelve,
                  {PlanForm({PointAt(kNowhere, 11.0, 0.0), PointAt(kLeft, 13.0, -2.0), PointAt(kRight, 13.0, 4.0),
                             PointAt(kCenter, 99.0, 0.0), PointAt(kRight, 11.0, 8.0), PointAt(kLeft, 11.0, -4.0),
                             PointAt(kNowhere, 99.0, 0.0), PointAt(kLeft, 13.0, -6.0), PointAt(kRight, 13.0, 12.0)})});
  EXPECT_THAT(CrossingsOf(section, kLeft),
              ElementsAre(Position{12.0, -1.0}, Position{12.0, -3.0}, Position{12.0, -5.0}));
  EXPECT_THAT(CrossingsOf(section, kRight),
              ElementsAre(Position{12.0, 2.0}, Position{12.0, 6.0}, Position{12.0, 10.0}));
}

TEST(XSectionGetCrossPoint, GivesOneCrossingOfADesignSegmentTheOneOnTheEarliestGroundSegment) {
  // The ground crosses the way to the right three times, the outermost crossing first.
  const VornXSection section =
      SectionOver({{13.0, 0.0}, {13.0, 10.0}, {11.0, 10.0}, {11.0, 0.0}, {12.0, 0.0}, {12.0, 10.0}}, {ValleyForm()});
  EXPECT_THAT(CrossingsOf(section, kRight), ElementsAre(Position{13.0, 3.0}));
}

TEST(XSectionGetCrossPoint, GivesACrossingAtAPointOnceForEachSegmentThatEndsThere) {
  const VornXSection section =
      SectionOver(kLevelAtTwelve,
                  {PlanForm({PointAt(kCenter, 10.0, 0.0), PointAt(kRight, 12.0, 2.0), PointAt(kRight, 14.0, 4.0)})});
  EXPECT_THAT(CrossingsOf(section, kRight), ElementsAre(Position{12.0, 2.0}, Position{12.0, 2.0}));
}

TEST(XSectionGetCrossPoint, PassesOverPointsWithoutAPosition) {
  const VornXSection section = SectionOver(
      {{0.0, -20.0}, {0.0, 20.0}},
      {PlanForm({PointAt(kCenter, -1.0, 0.0), PointAt(kRight, NurReal(), 2.0), PointAt(kRight, 1.0, 3.0)})});
  EXPECT_THAT(CrossingsOf(section, kRight), IsEmpty());
}

TEST(XSectionGetCrossPoint, LeavesTheSection) {
  VornXSection section = SectionOver(kLevelAtTwelve, {ValleyForm()});
  EXPECT_EQ(CrossingsOf(section, kLeft).size(), 1u);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L", "R"));
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 0));
}

// --- recomputing all crossing points -------------------------------------------------------------------------------

std::vector<VORN_Existence> Existences(VornXSection& section, int form = 0) {
  return Each(PointsOf(section, form), &VornComposedPnt::GetExistence);
}

constexpr VORN_Existence kThere = VORN_Existence::True;
constexpr VORN_Existence kGone = VORN_Existence::False;
constexpr VORN_Existence kUndecided = VORN_Existence::Unset;

/// As `ValleyForm`, with two points on either side, so that each has a segment of its own in the array.
VornBuildForm TwoSidedForm() {
  return PlanForm({PointAt(kCenter, 10.0, 0.0, "C"), PointAt(kLeft, 11.0, -1.0, "L1"), PointAt(kLeft, 14.0, -4.0, "L2"),
                   PointAt(kRight, 11.0, 1.0, "R1"), PointAt(kRight, 14.0, 4.0, "R2")});
}

TEST(XSectionCalcCrossPoint, InsertsTheCrossingsOfBothSides) {
  VornXSection section = SectionOver(kLevelAtTwelve, {TwoSidedForm()});
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "XL", "L2", "R1", "XR", "R2"));
  EXPECT_THAT(Existences(section), ElementsAre(kUndecided, kThere, kThere, kGone, kThere, kThere, kGone));
  EXPECT_EQ(PointsOf(section)[2].GetCLDist(), -2.0);
  EXPECT_EQ(PointsOf(section)[5].GetCLDist(), 2.0);
  EXPECT_TRUE(section.IsCrossPoint());
}

TEST(XSectionCalcCrossPoint, InsertsNoCrossingIntoASegmentThatIsNoneOfTheArray) {
  // The right side leads from the centre to R, but the point before R in the array is L.
  VornXSection section = SectionOver(kLevelAtTwelve, {ValleyForm()});
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "XL", "L", "R"));
  EXPECT_THAT(Existences(section), ElementsAre(kUndecided, kThere, kGone, kThere));
}

TEST(XSectionCalcCrossPoint, TakesTheCrossingFarthestFromTheCentreLine) {
  // On either side the form goes through the ground three times, back and forth.
  VornXSection section =
      SectionOver(kLevelAtTwelve, {PlanForm({PointAt(kCenter, 11.0, 0.0, "C"), PointAt(kRight, 13.0, 4.0, "R1"),
                                             PointAt(kRight, 11.0, 12.0, "R2"), PointAt(kRight, 13.0, 8.0, "R3")}),
                                   PlanForm({PointAt(kCenter, 11.0, 0.0, "C"), PointAt(kLeft, 13.0, -4.0, "L1"),
                                             PointAt(kLeft, 11.0, -8.0, "L2"), PointAt(kLeft, 13.0, -12.0, "L3")})});
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "R1", "R2", "XR", "R3"));
  EXPECT_EQ(PointsOf(section, 0)[3].GetCLDist(), 10.0);
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[1]), ElementsAre("C", "L1", "L2", "XL", "L3"));
  EXPECT_EQ(PointsOf(section, 1)[3].GetCLDist(), -10.0);
}

TEST(XSectionCalcCrossPoint, TakesTheFirstOfCrossingsEquallyFar) {
  // A wall 2 m out on the right, which both forms run into.
  VornXSection section = SectionOver({{0.0, 2.0}, {20.0, 2.0}},
                                     {PlanForm({PointAt(kCenter, 11.0, 0.0, "C"), PointAt(kRight, 11.0, 4.0, "R")}),
                                      PlanForm({PointAt(kCenter, 10.0, 0.0, "C"), PointAt(kRight, 10.0, 4.0, "R")})});
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "XR", "R"));
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[1]), ElementsAre("C", "R"));
}

TEST(XSectionCalcCrossPoint, MarksAPointThatLiesOnTheGround) {
  VornXSection section = SectionOver({{14.0, -20.0}, {14.0, 20.0}}, {TwoSidedForm()});
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "L2", "R1", "R2"));
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 3, 0, 3));
}

TEST(XSectionCalcCrossPoint, ReplacesFormerCrossings) {
  VornXSection section = SectionOver(kLevelAtTwelve, {TwoSidedForm()});
  section.CalcCrossPoint();
  section.GetExistingBuildFormArray()[0] = GroundOf({{13.0, -20.0}, {13.0, 20.0}});
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "XL", "L2", "R1", "XR", "R2"));
  EXPECT_EQ(PointsOf(section)[2].GetCLDist(), -3.0);
  EXPECT_EQ(PointsOf(section)[5].GetCLDist(), 3.0);
}

TEST(XSectionCalcCrossPoint, TakesFormerCrossingsBackAndLetsAllPointsExistWhereThereIsNone) {
  VornXSection section = SectionOver(kLevelAtTwelve, {TwoSidedForm()});
  section.CalcCrossPoint();
  section.ChangeCrossPoint(kLeft);
  section.GetExistingBuildFormArray()[0] = GroundOf({{99.0, -20.0}, {99.0, 20.0}});
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "L2", "R1", "R2"));
  EXPECT_THAT(PointTypes(section), ElementsAre(0, 0, 1, 0, 0));
  EXPECT_THAT(Existences(section), ElementsAre(kUndecided, kThere, kThere, kThere, kThere));
}

TEST(XSectionCalcCrossPoint, TakesFormerCrossingsBackWithoutAnExistingGroundToo) {
  VornXSection section = SectionOver(kLevelAtTwelve, {TwoSidedForm()});
  section.CalcCrossPoint();
  section.SetExistingFlag(0);
  section.CalcCrossPoint();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "L1", "L2", "R1", "R2"));
  EXPECT_THAT(Existences(section), ElementsAre(kUndecided, kThere, kThere, kThere, kThere));
}

// --- points without a position -------------------------------------------------------------------------------------

TEST(XSectionInsertPoint, LeavesAStartPointWithoutAPositionAlone) {
  VornXSection section = SectionOf({FormOf("loose", {PointOn(kCenter), PointOn(kRight)}),
                                    FormOf("road", {PointAt(kCenter, 0.0, 0.0), PointAt(kRight, -1.0, 5.0)})});
  section.InsertPoint({0.0, 0.0}, kRight);
  EXPECT_TRUE(PointsOf(section, 0)[0].GetSeriesPnt());
  EXPECT_FALSE(PointsOf(section, 1)[0].GetSeriesPnt());
}

TEST(XSectionInsertPoint, FindsNoSegmentBesideAPointWithoutAPosition) {
  VornComposedPnt halfPlaced = PointOn(kRight);
  halfPlaced.SetCLDist(5.0);
  VornXSection section =
      SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 0.0), halfPlaced, PointAt(kRight, 10.0, 10.0)})});
  section.InsertPoint({4.0, 3.0}, kRight);
  section.InsertPoint({5.0, 7.5}, kRight);
  EXPECT_EQ(PointsOf(section).GetSize(), 3);
}

TEST(XSectionInsertPoint, FindsNoSegmentBesideAPointOfWhichOnlyTheHeightIsKnown) {
  VornComposedPnt halfPlaced = PointOn(kRight);
  halfPlaced.SetGh(5.0);
  VornXSection section =
      SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 0.0), halfPlaced, PointAt(kRight, 10.0, 10.0)})});
  section.InsertPoint({7.5, 0.0}, kRight);
  section.InsertPoint({7.5, 5.0}, kRight);
  EXPECT_EQ(PointsOf(section).GetSize(), 3);
  EXPECT_TRUE(PointsOf(section)[1].GetSeriesPnt());
}

TEST(XSectionCalcCrossPoint, InsertsTheLeftCrossingFirst) {
  VornXSection section = SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 0.0), PointAt(kRight, 0.0, 10.0),
                                                    PointAt(kLeft, 10.0, -5.0), PointAt(kLeft, 0.0, -15.0)})});
  section.GetBuildFormArray()[0].SetXSectType(CString(kFill));
  section.GetExistingBuildFormArray().Add(GroundOf({{5.0, -20.0}, {5.0, 20.0}}));
  section.SetExistingFlag(1);
  section.CalcCrossPoint();
  const Vorn_ComposedPntArray& points = PointsOf(section);
  ASSERT_GE(points.Find("XL"), 0);
  ASSERT_GE(points.Find("XR"), 0);
  EXPECT_LT(points[points.Find("XL")].GetSerialID(), points[points.Find("XR")].GetSerialID());
}

}  // namespace
