#include "vorn/model/build_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/model/editions.h"
#include "tests/model/items.h"
#include "tests/model/model_builders.h"
#include "vorn/model/build_form_array.h"
#include "vorn/platform/code_page_932.h"

namespace {

using model_test::EnabledForm;
using model_test::FormOf;
using model_test::Items;
using model_test::PointOn;
using model_test::PointWith;
using model_test::TargetOn;
using test_support::EditionScope;
using test_support::ReadXml;
using test_support::WriteFailuresOverlooked;
using test_support::WriteXml;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using PntType = VornComposedPnt::PntType;
using TargetPntType = VornFormCtrlTarget::TargetPntType;

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr auto kCenter = VornLocation::Center;
constexpr auto kLeft = VornLocation::Left;
constexpr auto kRight = VornLocation::Right;

static_assert(std::is_nothrow_move_constructible_v<VornBuildForm>);
static_assert(std::is_nothrow_move_assignable_v<VornBuildForm>);
static_assert(std::is_nothrow_move_constructible_v<Vorn_BuildFormArray>);
static_assert(std::is_nothrow_move_assignable_v<Vorn_BuildFormArray>);

// --- fields --------------------------------------------------------------------------------------------------------

TEST(BuildForm, StartsWithItsDefaults) {
  const VornBuildForm form;
  EXPECT_EQ(form.tagName(), "tsf:BuildForm");
  EXPECT_EQ(form.GetOmitFlag(), 0);
  EXPECT_EQ(form.GetName(), "");
  EXPECT_EQ(form.GetExportForm(), 1);
  EXPECT_EQ(form.GetSerialID(), kNone);
  EXPECT_FALSE(form.IsOrgSurface());
  EXPECT_EQ(form.GetXSectTypeID(), 0u);
  for (const VornCrossPointInfo& info : {form.GetCrossLeft(), form.GetCrossRight()}) {
    EXPECT_FALSE(info.GetDist().IsSet());
    EXPECT_EQ(info.IsConnectionAutoLinePrev(), 1);
  }
  EXPECT_EQ(form.GetParentID(), kNone);
  EXPECT_EQ(form.GetPaveSetIdx(), 0);
  EXPECT_EQ(form.GetXSectType(), "");
  EXPECT_TRUE(form.GetComposedPntArray().IsEmpty());
  EXPECT_TRUE(form.GetFormCtrlTargetArray().IsEmpty());
  EXPECT_EQ(form.GetCategory(), TargetPntCategory::None);
  EXPECT_EQ(static_cast<int>(form.GetCategory()), 0);
  EXPECT_EQ(form.GetExport(), 1);
}

VornCrossPointInfo CrossingAt(double dist) {
  VornCrossPointInfo info;
  info.SetDist(dist);
  info.SetDekiPairID(7);
  info.ThDPairIDs().Add(8);
  return info;
}

VornBuildForm FilledForm() {
  VornBuildForm form;
  form.SetOmitFlag(1);
  form.SetName("road", false);
  form.SetExportForm(2);
  form.SetSerialID(3);
  form.SetOrgSurface(true);
  form.SetXSectType("type", 4);
  form.SetCrossLeft(CrossingAt(-5.0));
  form.SetCrossRight(CrossingAt(6.0));
  form.SetParentID(7);
  form.SetPaveSetIdx(200);
  Vorn_ComposedPntArray points;
  points.Add(PointOn(kLeft, "A"));
  form.SetComposedPntArray(points);
  Vorn_FormCtrlTargetArray targets;
  targets.Add(TargetOn("road", TargetPntType::LeftRight, {"A", "B"}));
  form.SetFormCtrlTargetArray(targets);
  form.SetCategory(TargetPntCategory::Structure);
  form.SetExport(9);
  return form;
}

void ExpectFilled(const VornBuildForm& form) {
  EXPECT_EQ(form.GetOmitFlag(), 1);
  EXPECT_EQ(form.GetName(), "road");
  EXPECT_EQ(form.GetExportForm(), 2);
  EXPECT_EQ(form.GetSerialID(), 3u);
  EXPECT_TRUE(form.IsOrgSurface());
  EXPECT_EQ(form.GetXSectType(), "type");
  EXPECT_EQ(form.GetXSectTypeID(), 4u);
  EXPECT_EQ(form.GetCrossLeft().GetDist(), -5.0);
  EXPECT_EQ(form.GetCrossRight().GetDist(), 6.0);
  EXPECT_EQ(form.GetParentID(), 7u);
  EXPECT_EQ(form.GetPaveSetIdx(), 200);
  ASSERT_EQ(form.GetComposedPntArray().GetSize(), 1);
  EXPECT_EQ(form.GetComposedPntArray()[0].GetCode(), "A");
  EXPECT_EQ(form.GetComposedPntArray().GetNextSerialID(), 2u);
  ASSERT_EQ(form.GetFormCtrlTargetArray().GetSize(), 1);
  EXPECT_EQ(form.GetFormCtrlTargetArray()[0].GetTargetScope(), "S");
  EXPECT_EQ(form.GetCategory(), TargetPntCategory::Structure);
  EXPECT_EQ(form.GetExport(), 9);
}

TEST(BuildForm, KeepsWhatItIsGiven) { ExpectFilled(FilledForm()); }

TEST(BuildForm, CopiesAndMovesEveryField) {
  const VornBuildForm original = FilledForm();
  ExpectFilled(VornBuildForm(original));
  VornBuildForm assigned;
  assigned = original;
  ExpectFilled(assigned);
  assigned.GetComposedPntArray()[0].SetCode("changed");
  ExpectFilled(original);
  VornBuildForm copy = original;
  ExpectFilled(VornBuildForm(std::move(copy)));
}

TEST(BuildForm, LendsItsFieldsForChange) {
  VornBuildForm form;
  form.GetExportForm() = 1;
  form.GetSerialID() = 2;
  form.GetCrossLeft().SetDist(3.0);
  form.GetCrossRight().SetDist(4.0);
  form.GetParentID() = 5;
  form.GetPaveSetIdx() = 6;
  form.GetComposedPntArray().Add(PointOn(kLeft, "A"));
  form.GetFormCtrlTargetArray().Add(VornFormCtrlTarget());
  form.GetCategory() = TargetPntCategory::Structure;
  form.GetExport() = 7;
  EXPECT_EQ(std::as_const(form).GetExportForm(), 1);
  EXPECT_EQ(std::as_const(form).GetSerialID(), 2u);
  EXPECT_EQ(std::as_const(form).GetCrossLeft().GetDist(), 3.0);
  EXPECT_EQ(std::as_const(form).GetCrossRight().GetDist(), 4.0);
  EXPECT_EQ(std::as_const(form).GetParentID(), 5u);
  EXPECT_EQ(std::as_const(form).GetPaveSetIdx(), 6);
  EXPECT_EQ(std::as_const(form).GetComposedPntArray().GetSize(), 1);
  EXPECT_EQ(std::as_const(form).GetFormCtrlTargetArray().GetSize(), 1);
  EXPECT_EQ(std::as_const(form).GetCategory(), TargetPntCategory::Structure);
  EXPECT_EQ(std::as_const(form).GetExport(), 7);
}

TEST(BuildForm, StandsOneOrMoreInAnArray) {
  Vorn_BuildFormArray array;
  EXPECT_EQ(array.tagName(), "tsf:BuildForm");
  EXPECT_EQ(array.occurs(), VORN_Occurs::OneOrMore);
  EXPECT_FALSE(array.IsEnable());
  array.Add(EnabledForm("road"));
  EXPECT_TRUE(array.IsEnable());
  array.Add(VornBuildForm());
  EXPECT_FALSE(array.IsEnable());
}

// --- predicates ----------------------------------------------------------------------------------------------------

TEST(BuildForm, IsEnabledWithANameAndValidPointsAndTargets) {
  EXPECT_TRUE(EnabledForm("road").IsEnable());
  EXPECT_FALSE(EnabledForm("").IsEnable());
  EXPECT_FALSE(FormOf("road", {model_test::EnabledPoint(kCenter)}).IsEnable());

  VornBuildForm form = EnabledForm("road");
  form.GetComposedPntArray()[1].SetExistence(VORN_Existence::Unset);
  EXPECT_FALSE(form.IsEnable());

  form = EnabledForm("road");
  form.GetFormCtrlTargetArray().Add(TargetOn("road", TargetPntType::LeftRight, {"A", "B"}));
  EXPECT_TRUE(form.IsEnable());
  form.GetFormCtrlTargetArray().Add(VornFormCtrlTarget());
  EXPECT_FALSE(form.IsEnable());
}

TEST(BuildForm, IsTheDesignSurfaceWithTheSerialZero) {
  VornBuildForm form;
  EXPECT_FALSE(form.IsSurface());
  form.SetSerialID(1);
  EXPECT_FALSE(form.IsSurface());
  form.SetSerialID(0);
  EXPECT_TRUE(form.IsSurface());
}

TEST(BuildForm, IsAStructureInThatCategoryOnly) {
  for (const int category : {-1, 0, 1, 2}) {
    VornBuildForm form;
    form.SetCategory(static_cast<TargetPntCategory>(category));
    EXPECT_EQ(form.IsStructure(), category == 1) << category;
  }
}

TEST(BuildForm, CrossesAnotherFormWithADistanceOnEitherSide) {
  VornBuildForm form;
  EXPECT_FALSE(form.IsCrossPoint());
  form.GetCrossLeft().SetDist(0.0);
  EXPECT_TRUE(form.IsCrossPoint());
  form = VornBuildForm();
  form.GetCrossRight().SetDist(1.0);
  EXPECT_TRUE(form.IsCrossPoint());
}

/// A form with the start point S, the points L1 and L2 on the left, R1 and R2 on the right and U on no side.
VornBuildForm TwoSidedForm() {
  VornBuildForm form =
      FormOf("road", {PointOn(kCenter, "S"), PointOn(kLeft, "L1"), PointOn(kLeft, "L2"), PointOn(kRight, "R1"),
                      PointOn(kRight, "R2"), PointOn(VornLocation::Unset, "U")});
  for (VornComposedPnt& point : form.GetComposedPntArray()) {
    point.SetCLDist(point.IsLeft() ? -1.0 : point.IsRight() ? 1.0 : 0.0);
    point.SetGh(-50.0);
  }
  return form;
}

VornBuildForm TwoSidedForm(std::initializer_list<VornFormCtrlTarget> targets) {
  VornBuildForm form = TwoSidedForm();
  for (const VornFormCtrlTarget& target : targets) form.GetFormCtrlTargetArray().Add(target);
  return form;
}

VornFormCtrlTarget LeftRight(const char* code1, const char* code2) {
  return TargetOn("road", TargetPntType::LeftRight, {code1, code2});
}

class BuildFormInEdition : public model_test::InEdition {};
class BuildFormInEarlyEdition : public model_test::InEdition {};
class BuildFormInLaterEdition : public model_test::InEdition {};

INSTANTIATE_TEST_SUITE_P(, BuildFormInEdition, testing::ValuesIn(model_test::kEditions), model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, BuildFormInEarlyEdition, testing::ValuesIn(model_test::kEarlyEditions),
                         model_test::InEdition::Name);
INSTANTIATE_TEST_SUITE_P(, BuildFormInLaterEdition, testing::ValuesIn(model_test::kLaterEditions),
                         model_test::InEdition::Name);

TEST_P(BuildFormInEdition, IsMeasuredAcrossWhenALeftRightTargetNamesTwoSides) {
  EXPECT_TRUE(TwoSidedForm({LeftRight("L1", "R1")}).IsRoadWL_R());
  EXPECT_TRUE(TwoSidedForm({LeftRight("r1", "l1")}).IsRoadWL_R());
  EXPECT_FALSE(TwoSidedForm({LeftRight("L1", "L2")}).IsRoadWL_R());
  EXPECT_FALSE(TwoSidedForm({}).IsRoadWL_R());
}

TEST_P(BuildFormInEdition, IsNotMeasuredAcrossByATargetOfAnotherType) {
  for (const TargetPntType type :
       {TargetPntType::Unset, TargetPntType::ShoulderToe, TargetPntType::ToeShoulder, TargetPntType::InnerOuter,
        TargetPntType::TargetPnt, TargetPntType::UpperLower, TargetPntType::LowerUpper}) {
    EXPECT_FALSE(TwoSidedForm({TargetOn("road", type, {"L1", "R1"})}).IsRoadWL_R());
    EXPECT_TRUE(TwoSidedForm({TargetOn("road", type, {"L1", "x"}), LeftRight("L1", "R1")}).IsRoadWL_R());
  }
}

TEST_P(BuildFormInEdition, IsMeasuredAcrossByTheFirstLeftRightTargetThatDecides) {
  EXPECT_TRUE(TwoSidedForm({LeftRight("L1", "L2"), LeftRight("L1", "R1")}).IsRoadWL_R());
  EXPECT_FALSE(TwoSidedForm({LeftRight("L1", "x"), LeftRight("L1", "R1")}).IsRoadWL_R());
  EXPECT_FALSE(TwoSidedForm({LeftRight("x", "R1"), LeftRight("L1", "R1")}).IsRoadWL_R());
  EXPECT_FALSE(TwoSidedForm({LeftRight("S", "R1"), LeftRight("L1", "R1")}).IsRoadWL_R());
  EXPECT_TRUE(TwoSidedForm({LeftRight("L1", "R1"), LeftRight("L1", "x")}).IsRoadWL_R());
}

// --- look-ups ------------------------------------------------------------------------------------------------------

TEST(BuildForm, TellsTheSideOfACodeIgnoringCase) {
  const VornBuildForm form = TwoSidedForm();
  EXPECT_EQ(form.GetLRFromCode("L2"), kLeft);
  EXPECT_EQ(form.GetLRFromCode("r1"), kRight);
  EXPECT_EQ(form.GetLRFromCode("U"), VornLocation::Unset);
  EXPECT_EQ(form.GetLRFromCode("x"), VornLocation::Unset);
}

TEST(BuildForm, TellsNoSideOfTheStartPoint) {
  const VornBuildForm form = FormOf("road", {PointOn(kLeft, "A"), PointOn(kRight, "B"), PointOn(kLeft, "B")});
  EXPECT_EQ(form.GetLRFromCode("A"), VornLocation::Unset);
  EXPECT_EQ(form.GetLRFromCode("B"), kRight);
}

TEST(BuildForm, TellsTheSideByTheMainCode) {
  VornBuildForm form = TwoSidedForm();
  form.GetComposedPntArray()[1].SetCode("sub", PntType::Sub);
  EXPECT_EQ(form.GetLRFromCode("sub"), VornLocation::Unset);
}

std::vector<std::string> SlopeCodes(const VornBuildForm& form, VornLocation side) {
  CStringArray codes;
  codes.Add("before");
  form.GetNoriCodeArray(side, codes);
  std::vector<std::string> result;
  for (const CString& code : codes) result.emplace_back(code.GetString());
  return result;
}

TEST_P(BuildFormInEdition, CollectsTheFirstCodesOfSlopeTargetsOnASide) {
  const VornBuildForm form = TwoSidedForm({TargetOn("road", TargetPntType::ShoulderToe, {"L1", "R2"}),
                                           TargetOn("road", TargetPntType::ToeShoulder, {"R1", "L2"}),
                                           TargetOn("road", TargetPntType::InnerOuter, {"L2", "L1"}),
                                           TargetOn("road", TargetPntType::ShoulderToe, {"l1", "x"})});
  EXPECT_THAT(SlopeCodes(form, kLeft), ElementsAre("before", "L1", "L2", "l1"));
  EXPECT_THAT(SlopeCodes(form, kRight), ElementsAre("before", "R1"));
  EXPECT_THAT(SlopeCodes(form, kCenter), ElementsAre("before", "L1", "R1", "L2", "l1"));
  EXPECT_THAT(SlopeCodes(form, VornLocation::Unset), ElementsAre("before"));
}

TEST_P(BuildFormInEdition, CollectsRepeatedSlopeCodesAgain) {
  const VornBuildForm form = TwoSidedForm({TargetOn("road", TargetPntType::ShoulderToe, {"L1", "L2"}),
                                           TargetOn("road", TargetPntType::InnerOuter, {"L1", "L2"})});
  EXPECT_THAT(SlopeCodes(form, kLeft), ElementsAre("before", "L1", "L1"));
}

TEST_P(BuildFormInEdition, CollectsNoSlopeCodesOfOtherTargets) {
  for (const TargetPntType type : {TargetPntType::Unset, TargetPntType::LeftRight, TargetPntType::TargetPnt,
                                   TargetPntType::UpperLower, TargetPntType::LowerUpper}) {
    EXPECT_THAT(SlopeCodes(TwoSidedForm({TargetOn("road", type, {"L1", "L2"})}), kLeft), ElementsAre("before"));
  }
  const VornBuildForm unknown = TwoSidedForm({TargetOn("road", TargetPntType::ShoulderToe, {"x", "L1"})});
  EXPECT_THAT(SlopeCodes(unknown, kLeft), ElementsAre("before"));
}

TEST_P(BuildFormInEdition, CollectsTheSlopeCodeOfTheStartPointToo) {
  const VornBuildForm form = TwoSidedForm({TargetOn("road", TargetPntType::ShoulderToe, {"S", "R1"})});
  EXPECT_THAT(SlopeCodes(form, kRight), ElementsAre("before", "S"));
}

// --- naming and typing ---------------------------------------------------------------------------------------------

/// A form with the serial 3 and target points on it, on another form of that name and on another form.
VornBuildForm FormWithTargets() {
  VornBuildForm form = TwoSidedForm({LeftRight("L1", "R1"), TargetOn("other", TargetPntType::LeftRight, {"a", "b"})});
  form.SetSerialID(3);
  for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
    target.GetTargetPntArray()[0].SetBuildFormID(3);
    target.GetTargetPntArray()[1].SetBuildFormID(4);
  }
  return form;
}

std::vector<std::string> TargetFormNames(const VornBuildForm& form) {
  std::vector<std::string> names;
  for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) {
      names.emplace_back(point.GetBuildFormName().GetString());
    }
  }
  return names;
}

TEST(BuildFormNaming, RenamesTheFormInItsTargetsWhenAsked) {
  VornBuildForm form = FormWithTargets();
  form.SetName("new", true);
  EXPECT_EQ(form.GetName(), "new");
  EXPECT_THAT(TargetFormNames(form), ElementsAre("new", "road", "other", "other"));
}

TEST(BuildFormNaming, LeavesItsTargetsAloneOtherwise) {
  VornBuildForm form = FormWithTargets();
  form.SetName("new", false);
  EXPECT_EQ(form.GetName(), "new");
  EXPECT_THAT(TargetFormNames(form), ElementsAre("road", "road", "other", "other"));
}

TEST(BuildFormNaming, RenamesTargetPointsThatCarryNameAndSerialExactly) {
  VornBuildForm form = FormWithTargets();
  form.RegulateFormCtrl("Road", "new");
  EXPECT_THAT(TargetFormNames(form), ElementsAre("road", "road", "other", "other"));
  form.RegulateFormCtrl("other", "new");
  EXPECT_THAT(TargetFormNames(form), ElementsAre("road", "road", "new", "other"));
  EXPECT_EQ(form.GetName(), "road");
}

TEST(BuildFormNaming, TakesTheOldNameFromATargetPointItself) {
  VornBuildForm form = FormWithTargets();
  VornFormCtrlTargetPntArray& points = form.GetFormCtrlTargetArray()[0].GetTargetPntArray();
  points[1].SetBuildFormID(3);
  form.RegulateFormCtrl(points[0].GetBuildFormName(), "new");
  EXPECT_THAT(TargetFormNames(form), ElementsAre("new", "new", "other", "other"));
}

class BuildFormNamingInRole : public testing::TestWithParam<PntType> {};

TEST_P(BuildFormNamingInRole, GivesItsPointsTheName) {
  VornBuildForm form = FormWithTargets();
  form.SetName("new", 8, GetParam());
  EXPECT_EQ(form.GetName(), "new");
  EXPECT_THAT(TargetFormNames(form), ElementsAre("new", "road", "other", "other"));
  for (const VornComposedPnt& point : form.GetComposedPntArray()) {
    for (const PntType role : {PntType::Main, PntType::Sub}) {
      const bool named = GetParam() == role || GetParam() == PntType::Both;
      EXPECT_EQ(point.GetXSectName(role), named ? "new" : "");
      EXPECT_EQ(point.GetXSectNameID(role), named ? 8u : 0u);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, BuildFormNamingInRole, testing::Values(PntType::Main, PntType::Sub, PntType::Both),
                         [](const testing::TestParamInfo<PntType>& info) {
                           return info.param == PntType::Main ? "Main" : info.param == PntType::Sub ? "Sub" : "Both";
                         });

TEST(BuildFormNaming, GivesItsPointsTheNameIdentifierInARole) {
  VornBuildForm form = TwoSidedForm();
  form.SetNameID(8, PntType::Main);
  for (const VornComposedPnt& point : form.GetComposedPntArray()) {
    EXPECT_EQ(point.GetXSectNameID(PntType::Main), 8u);
    EXPECT_EQ(point.GetXSectNameID(PntType::Sub), 0u);
    EXPECT_EQ(point.GetXSectName(PntType::Main), "");
  }
  form.SetNameID(9, PntType::Both);
  EXPECT_EQ(form.GetComposedPntArray()[0].GetXSectNameID(PntType::Sub), 9u);
  EXPECT_EQ(form.GetName(), "road");
}

TEST(BuildFormNaming, TakesATypeWithOrWithoutItsIdentifier) {
  VornBuildForm form = TwoSidedForm();
  form.SetXSectType("A", 5);
  EXPECT_EQ(form.GetXSectType(), "A");
  EXPECT_EQ(form.GetXSectTypeID(), 5u);
  form.SetXSectType("B");
  EXPECT_EQ(form.GetXSectType(), "B");
  EXPECT_EQ(form.GetXSectTypeID(), 5u);
  EXPECT_EQ(form.GetComposedPntArray()[0].GetXSectType(PntType::Main), 0u);
}

TEST(BuildFormNaming, GivesItsPointsTheTypeInTheRolesThatShareOne) {
  VornBuildForm form = TwoSidedForm();
  form.GetComposedPntArray()[0].SetXSectType(2, PntType::Both);
  form.GetComposedPntArray()[1].SetXSectType(2, PntType::Main);
  form.GetComposedPntArray()[1].SetXSectType(3, PntType::Sub);
  form.SetXSectTypeID(5);
  EXPECT_EQ(form.GetXSectTypeID(), 5u);
  EXPECT_EQ(form.GetComposedPntArray()[0].GetXSectType(PntType::Main), 5u);
  EXPECT_EQ(form.GetComposedPntArray()[0].GetXSectType(PntType::Sub), 5u);
  EXPECT_EQ(form.GetComposedPntArray()[1].GetXSectType(PntType::Main), 5u);
  EXPECT_EQ(form.GetComposedPntArray()[1].GetXSectType(PntType::Sub), 3u);
  EXPECT_EQ(form.GetComposedPntArray()[2].GetXSectType(PntType::Sub), 5u);
}

TEST(BuildFormNaming, CreatesTheMissingPointsOfItsTargets) {
  const EditionScope edition(VornSchema::Version20);
  VornBuildForm form = TwoSidedForm({LeftRight("L1", "R1"), LeftRight("L2", "R2")});
  for (VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) target.GetTargetPntArray().RemoveAll();
  form.ConvertFormCtrl(25.0);
  for (const int i : {0, 1}) {
    const VornFormCtrlTargetPntArray& points = form.GetFormCtrlTargetArray()[i].GetTargetPntArray();
    ASSERT_EQ(points.GetSize(), 2);
    EXPECT_EQ(points[0].GetCode(), i == 0 ? "L1" : "L2");
    EXPECT_EQ(points[1].GetCode(), i == 0 ? "R1" : "R2");
    EXPECT_EQ(points[0].GetCumulativeDist(), 25.0);
  }
}

TEST(BuildFormNaming, ForgetsTheConnectionsOfItsPointsAndCrossings) {
  for (const bool clearCode : {false, true}) {
    VornBuildForm form = TwoSidedForm();
    form.SetCrossLeft(CrossingAt(-5.0));
    form.SetCrossRight(CrossingAt(6.0));
    for (VornComposedPnt& point : form.GetComposedPntArray()) point.SetDekiPairID(1, PntType::Both);
    form.ClearConnectInfo(clearCode);
    for (const VornComposedPnt& point : form.GetComposedPntArray()) {
      EXPECT_FALSE(point.IsConnect());
      EXPECT_EQ(point.GetCode().IsEmpty(), clearCode);
    }
    for (const VornCrossPointInfo& info : {form.GetCrossLeft(), form.GetCrossRight()}) {
      EXPECT_EQ(info.GetDekiPairID(), kNone);
      EXPECT_THAT(Items(info.ThDPairIDs()), IsEmpty());
      EXPECT_EQ(info.IsConnectionAutoLinePrev(), 0);
      EXPECT_TRUE(info.GetDist().IsSet());
    }
  }
}

// --- XML -----------------------------------------------------------------------------------------------------------

VornBuildForm RoadForm() {
  using DataType = VornComposedPnt::DataType;
  VornComposedPnt center = PointWith(kCenter, DataType::WidthHeight, 0.0, 1.25);
  center.SetCode("C");
  VornComposedPnt right = PointWith(kRight, DataType::Percent, 3.5, -2.0);
  right.SetCode("R1");
  right.SetComponentType(VornComposedPnt::ComponentType::Roadbed);
  right.SetSlopeType(VornComposedPnt::SlopeType::Percent);
  VornBuildForm form = FormOf("road", {center, right});
  form.SetXSectType("type");
  form.GetFormCtrlTargetArray().Add(LeftRight("C", "R1"));
  return form;
}

TEST_P(BuildFormInEarlyEdition, WritesItsTargetsAndNoType) {
  VornBuildForm form = RoadForm();
  EXPECT_EQ(WriteXml(form),
            "<tsf:BuildForm name=\"road\">\n"
            "  <tsf:ComposedPnt code=\"C\" location=\"Center\">0.0000 1.250</tsf:ComposedPnt>\n"
            "  <tsf:ComposedPnt code=\"R1\" location=\"Right\" componentType=\"Roadbed\" slopeType=\"Percent\">"
            "3.5000 -2.000</tsf:ComposedPnt>\n"
            "  <tsf:FormCtrlTarget workType=\"RE_FillWork\" controlItem=\"Width\" targetScope=\"S\" targetRegio=\"R\""
            " targetPntType=\"Left Right\">C R1</tsf:FormCtrlTarget>\n"
            "</tsf:BuildForm>\n");
}

TEST_P(BuildFormInLaterEdition, WritesItsTypeAndNoTargets) {
  VornBuildForm form = RoadForm();
  EXPECT_EQ(WriteXml(form),
            "<tsf:BuildForm name=\"road\" xSectType=\"type\">\n"
            "  <tsf:ComposedPnt code=\"C\" location=\"Center\" dataType=\"WidthHeight\">0.0000 1.2500"
            "</tsf:ComposedPnt>\n"
            "  <tsf:ComposedPnt code=\"R1\" location=\"Right\" componentType=\"Roadbed\" dataType=\"Percent\">"
            "3.5000 -2.000</tsf:ComposedPnt>\n"
            "</tsf:BuildForm>\n");
}

TEST_P(BuildFormInLaterEdition, WritesEmptyTexts) {
  VornBuildForm form = FormOf("", {VornComposedPnt(), VornComposedPnt()});
  EXPECT_THAT(WriteXml(form), testing::StartsWith("<tsf:BuildForm name=\"\" xSectType=\"\">"));
}

TEST_P(BuildFormInEdition, WritesIntoTheNamespaceOfTheEdition) {
  VornBuildForm form = RoadForm();
  const std::string uri = VornSchema::Instance().Tsf().GetString();
  EXPECT_THAT(model_test::WriteXmlWithNamespaces(form), HasSubstr("<tsf:BuildForm xmlns=\"" + uri + "\" name"));
}

TEST_P(BuildFormInEdition, WritesNothingWhenOmitted) {
  VornBuildForm form = RoadForm();
  form.SetOmitFlag(2);
  form.SetExport(0);
  EXPECT_EQ(WriteXml(form), "");
  EXPECT_EQ(form.GetExport(), 0);
}

TEST_P(BuildFormInEdition, WritesNothingWithFewerThanTwoPoints) {
  VornBuildForm form = FormOf("road", {PointOn(kCenter)});
  EXPECT_EQ(WriteXml(form), "");
  form.GetComposedPntArray().RemoveAll();
  EXPECT_EQ(WriteXml(form), "");
}

TEST_P(BuildFormInLaterEdition, WritesNothingWhenItIsNotForExport) {
  VornBuildForm form = RoadForm();
  form.SetExport(0);
  EXPECT_EQ(WriteXml(form), "");
  EXPECT_EQ(form.GetExport(), 0);
}

TEST_P(BuildFormInEarlyEdition, IsWrittenAnywayAndForExportFromThenOn) {
  VornBuildForm form = RoadForm();
  form.SetExport(0);
  EXPECT_NE(WriteXml(form), "");
  EXPECT_EQ(form.GetExport(), 1);
}

TEST_P(BuildFormInEarlyEdition, IsForExportEvenWhenItHasTooFewPoints) {
  VornBuildForm form;
  form.SetExport(0);
  EXPECT_EQ(WriteXml(form), "");
  EXPECT_EQ(form.GetExport(), 1);
}

TEST_P(BuildFormInEdition, IsWrittenWhateverTheExportOfItsOwnKind) {
  VornBuildForm form = RoadForm();
  form.SetExportForm(0);
  EXPECT_NE(WriteXml(form), "");
}

TEST_P(BuildFormInEdition, StopsWritingAtTheFirstFailure) {
  VornBuildForm form = RoadForm();
  EXPECT_THAT(WriteFailuresOverlooked(form), IsEmpty());
}

TEST_P(BuildFormInEdition, ReadsWhatItWrites) {
  VornBuildForm written = RoadForm();
  const std::string xml = WriteXml(written);
  VornBuildForm read;
  ASSERT_TRUE(ReadXml(read, xml));
  EXPECT_EQ(read.GetName(), "road");
  EXPECT_EQ(read.GetComposedPntArray().GetSize(), 2);
  EXPECT_EQ(WriteXml(read), xml);
}

TEST_P(BuildFormInEdition, NumbersThePointsAndTargetsThatItReads) {
  VornBuildForm form;
  ASSERT_TRUE(ReadXml(form,
                      "<tsf:BuildForm><tsf:ComposedPnt location='Center'/><tsf:FormCtrlTarget/>"
                      "<tsf:ComposedPnt location='Left'/><tsf:Unknown><tsf:ComposedPnt/></tsf:Unknown>"
                      "<tsf:FormCtrlTarget/><tsf:ComposedPnt location='Right'/></tsf:BuildForm>"));
  const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
  ASSERT_EQ(points.GetSize(), 3);
  EXPECT_EQ(points[0].GetSerialID(), 0u);
  EXPECT_EQ(points[1].GetSerialID(), 1u);
  EXPECT_EQ(points[2].GetSerialID(), 2u);
  EXPECT_EQ(points[2].GetLocation(), kRight);
  const Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
  ASSERT_EQ(targets.GetSize(), 2);
  EXPECT_EQ(targets[0].GetSerialID(), 0u);
  EXPECT_EQ(targets[1].GetSerialID(), 1u);
}

TEST_P(BuildFormInEdition, ComesBackToItselfWhenItIsRead) {
  test_support::XmlTree tree = test_support::XmlTree::Parse(
      "<tsf:BuildForm><tsf:ComposedPnt/><tsf:Unknown/><tsf:FormCtrlTarget/></tsf:BuildForm>");
  test_support::XmlTreeCursor cursor(tree);
  VornBuildForm form;
  EXPECT_TRUE(form.fromXML(&cursor));
  EXPECT_TRUE(cursor.IsOnRoot());
}

TEST_P(BuildFormInEdition, RefusesAnotherTagAndStaysAsItWas) {
  VornBuildForm form = FilledForm();
  EXPECT_FALSE(ReadXml(form, "<tsf:XSection name='x'><tsf:ComposedPnt/></tsf:XSection>"));
  ExpectFilled(form);
}

TEST_P(BuildFormInEdition, KeepsWhatTheElementDoesNotName) {
  VornBuildForm form = FilledForm();
  ASSERT_TRUE(ReadXml(form, "<tsf:BuildForm Name='x' other='y'/>"));
  ExpectFilled(form);
}

TEST_P(BuildFormInEdition, FailsWhenAChildCannotBeRead) {
  for (const char* child : {"<tsf:ComposedPnt/>", "<tsf:FormCtrlTarget/>"}) {
    test_support::XmlTree tree =
        test_support::XmlTree::Parse(std::string("<tsf:BuildForm>") + child + "</tsf:BuildForm>");
    int refused = 0;
    for (int n = 1; n <= 12; ++n) {
      test_support::XmlTreeCursor cursor(tree);
      cursor.FailAfter(n);
      VornBuildForm form;
      if (!form.fromXML(&cursor)) ++refused;
    }
    // Its own tag, and the child's own tag once the child has been recognised.
    EXPECT_EQ(refused, 2) << child;
  }
}

std::string FormElement(std::initializer_list<std::string_view> pieces) {
  std::string xml = "<tsf:BuildForm ";
  for (const std::string_view piece : pieces) xml += piece;
  return xml + "/>";
}

CString TypeAfterReading(std::initializer_list<std::string_view> attributes) {
  VornBuildForm form;
  form.SetXSectType("former");
  EXPECT_TRUE(ReadXml(form, FormElement(attributes)));
  return form.GetXSectType();
}

constexpr std::string_view kFill = u8"盛土工"_cp932;
constexpr std::string_view kCut = u8"切土工"_cp932;

constexpr std::string_view kExcavation = u8"掘削"_cp932;
constexpr std::string_view kSubgrade = u8"路床"_cp932;

struct NamedType {
  std::string_view name;
  std::string_view type;
};

constexpr std::array kNamedTypes = {
    NamedType{u8"路体盛土"_cp932, kFill},   NamedType{u8"盛"_cp932, kFill}, NamedType{kExcavation, kCut},
    NamedType{u8"切土"_cp932, kCut},        NamedType{u8"削"_cp932, kCut},  NamedType{u8"切土と盛土"_cp932, kFill},
    NamedType{u8"掘削・盛土"_cp932, kFill}, NamedType{kSubgrade, "former"}, NamedType{"", "former"},
};

TEST_P(BuildFormInEarlyEdition, TakesTheKindOfEarthworkFromItsName) {
  for (const auto& [name, type] : kNamedTypes) EXPECT_EQ(TypeAfterReading({"name='", name, "'"}), type) << name;
}

/// Two characters each; the last byte of the first one and the first byte of the second one are those of a character
/// that tells a kind of earthwork.
constexpr std::string_view kStraddlingFill = u8"ヰｷ"_cp932;
constexpr std::string_view kStraddlingCut = u8"ヰﾘ"_cp932;
constexpr std::string_view kStraddlingExcavation = "\x91\x8D\xED\x8D";
constexpr std::array kStraddlingNames = {kStraddlingFill, kStraddlingCut, kStraddlingExcavation};
static_assert(kStraddlingFill.find(u8"盛"_cp932) == 1);
static_assert(kStraddlingCut.find(u8"切"_cp932) == 1);
static_assert(kStraddlingExcavation.find(u8"削"_cp932) == 1);

TEST_P(BuildFormInEarlyEdition, TakesNothingFromBytesAcrossTwoCharactersOfItsName) {
  for (const std::string_view name : kStraddlingNames) {
    EXPECT_EQ(TypeAfterReading({"name='", name, "'"}), "former") << name;
  }
}

TEST_P(BuildFormInEarlyEdition, LooksForEarthworkInAVeryLongNameWithoutDelay) {
  // Half a million places look like the character for a cut, and each lies across two characters.
  std::string name(kStraddlingExcavation.substr(0, 2));
  for (int i = 0; i < 500'000; ++i) name += kStraddlingExcavation.substr(2);
  const std::clock_t start = std::clock();  // the processor's time: other programs may keep it busy
  EXPECT_EQ(TypeAfterReading({"name='", name, "'"}), "former");
  EXPECT_LT(std::clock() - start, CLOCKS_PER_SEC);
}

TEST_P(BuildFormInEarlyEdition, PrefersATypeThatFollowsTheName) {
  EXPECT_EQ(TypeAfterReading({"name='", kExcavation, "' xSectType='given'"}), "given");
  EXPECT_EQ(TypeAfterReading({"xSectType='given' name='", kExcavation, "'"}), kCut);
  EXPECT_EQ(TypeAfterReading({"xSectType='given' name='", kSubgrade, "'"}), "given");
}

TEST_P(BuildFormInLaterEdition, TakesItsTypeFromTheAttributeOnly) {
  EXPECT_EQ(TypeAfterReading({"name='", kExcavation, "'"}), "former");
  EXPECT_EQ(TypeAfterReading({"xSectType='given' name='", kExcavation, "'"}), "given");
}

}  // namespace
