#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tests/model/model_builders.h"
#include "vorn/model/x_section.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/exceptions.h"

// Splitting, joining and retyping the build forms of a cross section.

namespace {

using model_test::CodesOf;
using model_test::Each;
using model_test::FormOf;
using model_test::NamesOf;
using model_test::PointOn;
using model_test::TargetOn;
using testing::ElementsAre;
using testing::IsEmpty;

using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;

constexpr std::string_view kFill = u8"盛土工"_cp932;
constexpr std::string_view kCut = u8"切土工"_cp932;
constexpr std::string_view kExcavation = u8"掘削工"_cp932;
constexpr std::string_view kSubgrade = u8"路床"_cp932;
constexpr VornLocation kCenter = VornLocation::Center;
constexpr VornLocation kLeft = VornLocation::Left;
constexpr VornLocation kRight = VornLocation::Right;
constexpr VornLocation kNowhere = VornLocation::Unset;

Vorn_BuildFormArray FormsOf(std::initializer_list<VornBuildForm> forms) {
  Vorn_BuildFormArray array;
  for (const VornBuildForm& form : forms) array.Add(form);
  return array;
}

VornBuildForm Typed(std::string_view type, VornBuildForm form) {
  form.SetXSectType(CString(type));
  return form;
}

/// A target that tests know by its scope.
VornFormCtrlTarget Target(std::string_view scope, VornLocation side, ControlItem item = ControlItem::Width,
                          TargetPntType type = TargetPntType::ShoulderToe) {
  VornFormCtrlTarget target = TargetOn("road", type, {"L", "R"});
  target.SetTargetScope(CString(scope));
  target.SetLR(side);
  target.SetControlItem(item);
  return target;
}

VornBuildForm WithTargets(VornBuildForm form, std::initializer_list<VornFormCtrlTarget> targets) {
  for (const VornFormCtrlTarget& target : targets) form.GetFormCtrlTargetArray().Add(target);
  return form;
}

std::vector<std::string> ScopesOf(const VornBuildForm& form) {
  std::vector<std::string> scopes;
  for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray())
    scopes.emplace_back(target.GetTargetScope().View());
  return scopes;
}

/// The form that each target point names.
std::vector<std::string> FormNamesInTargets(const VornBuildForm& form) {
  std::vector<std::string> names;
  for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
    for (const VornFormCtrlTargetPnt& point : target.GetTargetPntArray())
      names.emplace_back(point.GetBuildFormName().View());
  }
  return names;
}

std::vector<std::uint32_t> SerialsOf(const VornBuildForm& form) {
  return Each(form.GetComposedPntArray(), &VornComposedPnt::GetSerialID);
}

std::vector<std::string> TypesOf(const Vorn_BuildFormArray& forms) {
  std::vector<std::string> types;
  for (const VornBuildForm& form : forms) types.emplace_back(form.GetXSectType().View());
  return types;
}

VornBuildForm RoadForm() {
  return FormOf("road", {PointOn(kCenter, "C"), PointOn(kLeft, "L"), PointOn(kRight, "R"), PointOn(kLeft, "L2"),
                         PointOn(kRight, "R2")});
}

// --- joining -------------------------------------------------------------------------------------------------------

TEST(XSectionJoin, LeavesFewerThanTwoForms) {
  Vorn_BuildFormArray forms;
  VornXSection::MakeOneBuildForm(forms);
  EXPECT_TRUE(forms.IsEmpty());
  forms = FormsOf({RoadForm()});
  VornXSection::MakeOneBuildForm(forms);
  ASSERT_EQ(forms.GetSize(), 1);
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C", "L", "R", "L2", "R2"));
}

TEST(XSectionJoin, AppendsThePointsOfTheSecondFormButItsStartPoint) {
  for (const VornLocation start : {kCenter, kLeft, kRight, kNowhere}) {
    Vorn_BuildFormArray forms =
        FormsOf({FormOf("a", {PointOn(kCenter, "C"), PointOn(kLeft, "L")}),
                 FormOf("b", {PointOn(start, "S"), PointOn(kRight, "R"), PointOn(kLeft, "M")})});
    VornXSection::MakeOneBuildForm(forms);
    ASSERT_EQ(forms.GetSize(), 1);
    EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C", "L", "R", "M"));
  }
}

TEST(XSectionJoin, NumbersTheAppendedPointsAnew) {
  Vorn_BuildFormArray forms = FormsOf(
      {FormOf("a", {PointOn(kCenter, "C"), PointOn(kLeft, "1"), PointOn(kLeft, "2")}),
       FormOf("b", {PointOn(kCenter, "S"), PointOn(kRight, "R"), PointOn(kCenter, "C2"), PointOn(kRight, "R2")})});
  forms[1].GetComposedPntArray()[1].SetSerialID(77);
  VornXSection::MakeOneBuildForm(forms);
  EXPECT_THAT(SerialsOf(forms[0]), ElementsAre(0u, 1u, 2u, 3u, 0u, 4u));
  EXPECT_EQ(forms[0].GetComposedPntArray().GetNextSerialID(), 5u);
}

TEST(XSectionJoin, TakesFormsWithoutPoints) {
  Vorn_BuildFormArray forms = FormsOf({FormOf("a", {PointOn(kCenter, "C")}), FormOf("b", {})});
  VornXSection::MakeOneBuildForm(forms);
  ASSERT_EQ(forms.GetSize(), 1);
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C"));
  forms = FormsOf({FormOf("a", {}), FormOf("b", {PointOn(kCenter, "S"), PointOn(kRight, "R")})});
  VornXSection::MakeOneBuildForm(forms);
  ASSERT_EQ(forms.GetSize(), 1);
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("R"));
}

TEST(XSectionJoin, TakesOverTheExportFormOfTheSecondForm) {
  Vorn_BuildFormArray forms = FormsOf({FormOf("a", {}), FormOf("b", {})});
  forms[0].SetExportForm(1);
  forms[0].SetExport(2);
  forms[1].SetExportForm(3);
  forms[1].SetExport(4);
  VornXSection::MakeOneBuildForm(forms);
  EXPECT_EQ(forms[0].GetExportForm(), 3);
  EXPECT_EQ(forms[0].GetExport(), 2);
}

TEST(XSectionJoin, KeepsTheFirstFormOtherwise) {
  Vorn_BuildFormArray forms = FormsOf({Typed(kFill, FormOf("a", {})), Typed(kCut, FormOf("b", {}))});
  VornXSection::MakeOneBuildForm(forms);
  EXPECT_THAT(NamesOf(forms), ElementsAre("a"));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kFill)));
  EXPECT_EQ(forms[0].GetSerialID(), 0u);
  EXPECT_TRUE(forms[0].IsOrgSurface());
}

TEST(XSectionJoin, LeavesTheFormsBehindTheSecond) {
  Vorn_BuildFormArray forms = FormsOf({FormOf("a", {}), FormOf("b", {}), FormOf("c", {}), FormOf("d", {})});
  VornXSection::MakeOneBuildForm(forms);
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "c", "d"));
  EXPECT_THAT(Each(forms, &VornBuildForm::GetSerialID), ElementsAre(0u, 2u, 3u));
}

TEST(XSectionJoin, AppendsTheTargetsOfTheSecondForm) {
  Vorn_BuildFormArray forms =
      FormsOf({WithTargets(RoadForm(), {Target("1", kLeft)}),
               WithTargets(RoadForm(), {Target("2", kRight), Target("3", kLeft), Target("4", kNowhere)})});
  VornXSection::MakeOneBuildForm(forms);
  EXPECT_THAT(ScopesOf(forms[0]), ElementsAre("1", "2", "3", "4"));
  EXPECT_EQ(forms[0].GetFormCtrlTargetArray()[2].GetLR(), kLeft);
  EXPECT_EQ(forms[0].GetFormCtrlTargetArray()[2].GetTargetPntArray().GetSize(), 2);
}

TEST(XSectionJoin, DropsTheTargetsOfTheSecondFormForAHeightWithoutASide) {
  Vorn_BuildFormArray forms = FormsOf(
      {WithTargets(RoadForm(), {Target("1", kNowhere, ControlItem::Height)}),
       WithTargets(RoadForm(), {Target("2", kNowhere, ControlItem::Height), Target("3", kNowhere, ControlItem::Height),
                                Target("4", kCenter, ControlItem::Height), Target("5", kLeft, ControlItem::Height),
                                Target("6", kRight, ControlItem::Height), Target("7", kNowhere, ControlItem::Thickness),
                                Target("8", kNowhere, ControlItem::Height)})});
  VornXSection::MakeOneBuildForm(forms);
  EXPECT_THAT(ScopesOf(forms[0]), ElementsAre("1", "4", "5", "6", "7"));
}

// --- splitting -----------------------------------------------------------------------------------------------------

TEST(XSectionSplit, NeedsAForm) {
  Vorn_BuildFormArray forms;
  EXPECT_THROW(VornXSection::DevideBuildForm(forms, CString(kCut)), CInvalidArgException);
}

TEST(XSectionSplit, LeavesTheLeftPointsAndTakesTheOthers) {
  Vorn_BuildFormArray forms =
      FormsOf({FormOf("road", {PointOn(kCenter, "C"), PointOn(kLeft, "L"), PointOn(kRight, "R"), PointOn(kNowhere, "N"),
                               PointOn(kLeft, "L2"), PointOn(kCenter, "C2"), PointOn(kRight, "R2")})});
  VornXSection::DevideBuildForm(forms, "cut");
  ASSERT_EQ(forms.GetSize(), 2);
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C", "L", "L2"));
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C", "R", "N", "C2", "R2"));
}

TEST(XSectionSplit, LeavesAndCopiesTheStartPointWhateverItsSide) {
  for (const VornLocation start : {kCenter, kLeft, kRight, kNowhere}) {
    Vorn_BuildFormArray forms =
        FormsOf({FormOf("road", {PointOn(start, "S"), PointOn(kRight, "R"), PointOn(kLeft, "L")})});
    VornXSection::DevideBuildForm(forms, "cut");
    EXPECT_THAT(CodesOf(forms[0]), ElementsAre("S", "L"));
    EXPECT_THAT(CodesOf(forms[1]), ElementsAre("S", "R"));
    EXPECT_EQ(forms[0].GetComposedPntArray()[0].GetLocation(), start);
    EXPECT_EQ(forms[1].GetComposedPntArray()[0].GetLocation(), start);
  }
}

TEST(XSectionSplit, KeepsTheSerialsOfPoints) {
  Vorn_BuildFormArray forms = FormsOf({RoadForm()});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(SerialsOf(forms[0]), ElementsAre(0u, 1u, 3u));
  EXPECT_THAT(SerialsOf(forms[1]), ElementsAre(0u, 2u, 4u));
  EXPECT_EQ(forms[0].GetComposedPntArray().GetNextSerialID(), 5u);
  EXPECT_EQ(forms[1].GetComposedPntArray().GetNextSerialID(), 5u);
}

TEST(XSectionSplit, NumbersTheTakenPointsOnTheirOwn) {
  Vorn_BuildFormArray forms = FormsOf(
      {FormOf("road", {PointOn(kCenter, "C"), PointOn(kRight, "R"), PointOn(kLeft, "L"), PointOn(kLeft, "L2")})});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(SerialsOf(forms[1]), ElementsAre(0u, 1u));
  EXPECT_EQ(forms[1].GetComposedPntArray().GetNextSerialID(), 2u);
}

TEST(XSectionSplit, KeepsWhatThePointsHold) {
  Vorn_BuildFormArray forms = FormsOf({RoadForm()});
  VornComposedPnt& right = forms[0].GetComposedPntArray()[2];
  right.SetX(1.5);
  right.SetParentID(7);
  right.SetXSectName("road");
  VornXSection::DevideBuildForm(forms, "cut");
  const VornComposedPnt& taken = forms[1].GetComposedPntArray()[1];
  EXPECT_EQ(taken.GetX(), 1.5);
  EXPECT_EQ(taken.GetParentID(), 7u);
  EXPECT_EQ(taken.GetXSectName(), "road");
  EXPECT_TRUE(taken.IsRight());
}

TEST(XSectionSplit, GivesASecondFormWithoutPointsForAFormWithoutPoints) {
  Vorn_BuildFormArray forms = FormsOf({FormOf("road", {})});
  VornXSection::DevideBuildForm(forms, "cut");
  ASSERT_EQ(forms.GetSize(), 2);
  EXPECT_TRUE(forms[0].GetComposedPntArray().IsEmpty());
  EXPECT_TRUE(forms[1].GetComposedPntArray().IsEmpty());
}

TEST(XSectionSplit, GivesASecondFormOfTheStartPointWithoutRightPoints) {
  Vorn_BuildFormArray forms = FormsOf({FormOf("road", {PointOn(kCenter, "C"), PointOn(kLeft, "L")})});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C", "L"));
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C"));
}

TEST(XSectionSplit, NamesAndTypesTheSecondForm) {
  Vorn_BuildFormArray forms = FormsOf({Typed(kFill, RoadForm())});
  VornXSection::DevideBuildForm(forms, CString(kCut));
  EXPECT_THAT(NamesOf(forms), ElementsAre("road", std::string(kCut)));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kFill), std::string(kCut)));
}

TEST(XSectionSplit, PutsTheSecondFormBehindTheFirst) {
  Vorn_BuildFormArray forms = FormsOf({RoadForm(), FormOf("pave", {PointOn(kRight, "R")})});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(NamesOf(forms), ElementsAre("road", "cut", "pave"));
  EXPECT_THAT(CodesOf(forms[2]), ElementsAre("R"));
}

TEST(XSectionSplit, GivesBothFormsOneSerial) {
  Vorn_BuildFormArray forms = FormsOf({RoadForm(), FormOf("pave", {})});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(Each(forms, &VornBuildForm::GetSerialID), ElementsAre(0u, 0u, 1u));
  EXPECT_EQ(forms.GetNextSerialID(), 2u);
}

TEST(XSectionSplit, GivesBothFormsOneSerialThatIsNotTheDesignSurfaces) {
  VornBuildForm road = RoadForm();
  road.SetSerialID(5);
  Vorn_BuildFormArray forms;
  forms.SetSize(1);
  forms[0] = road;
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(Each(forms, &VornBuildForm::GetSerialID), ElementsAre(5u, 5u));
  EXPECT_EQ(forms.GetNextSerialID(), 6u);
}

TEST(XSectionSplit, CopiesEveryOtherField) {
  VornBuildForm road = RoadForm();
  road.SetOmitFlag(1);
  road.SetExportForm(2);
  road.SetXSectType(CString(kFill), 3);
  VornCrossPointInfo left;
  left.SetDist(4.0);
  road.SetCrossLeft(left);
  VornCrossPointInfo right;
  right.SetDist(5.0);
  road.SetCrossRight(right);
  road.SetParentID(6);
  road.SetPaveSetIdx(7);
  road.SetCategory(TargetPntCategory::Structure);
  road.SetExport(8);
  Vorn_BuildFormArray forms = FormsOf({road});
  ASSERT_TRUE(forms[0].IsOrgSurface());
  VornXSection::DevideBuildForm(forms, "cut");
  for (const VornBuildForm& form : forms) {
    EXPECT_EQ(form.GetOmitFlag(), 1);
    EXPECT_EQ(form.GetExportForm(), 2);
    EXPECT_EQ(form.GetXSectTypeID(), 3u);
    EXPECT_EQ(form.GetCrossLeft().GetDist(), 4.0);
    EXPECT_EQ(form.GetCrossRight().GetDist(), 5.0);
    EXPECT_EQ(form.GetParentID(), 6u);
    EXPECT_EQ(form.GetPaveSetIdx(), 7);
    EXPECT_EQ(form.GetCategory(), TargetPntCategory::Structure);
    EXPECT_EQ(form.GetExport(), 8);
    EXPECT_TRUE(form.IsOrgSurface());
  }
}

TEST(XSectionSplit, SharesOutTheTargetsBySide) {
  Vorn_BuildFormArray forms =
      FormsOf({WithTargets(RoadForm(), {Target("1", kRight), Target("2", kLeft), Target("3", kNowhere),
                                        Target("4", kCenter), Target("5", kRight), Target("6", kNowhere)})});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(ScopesOf(forms[0]), ElementsAre("2", "3", "6"));
  EXPECT_THAT(ScopesOf(forms[1]), ElementsAre("1", "3", "4", "5", "6"));
}

TEST(XSectionSplit, KeepsWhatTheTargetsHold) {
  Vorn_BuildFormArray forms = FormsOf({WithTargets(RoadForm(), {Target("1", kLeft), Target("2", kRight)})});
  VornXSection::DevideBuildForm(forms, "cut");
  const VornFormCtrlTarget& taken = forms[1].GetFormCtrlTargetArray()[0];
  EXPECT_EQ(taken.GetLR(), kRight);
  EXPECT_EQ(taken.GetSerialID(), 1u);
  EXPECT_EQ(taken.GetControlItem(), ControlItem::Width);
  EXPECT_EQ(taken.GetTargetPntArray().GetSize(), 2);
}

TEST(XSectionSplit, LeavesTheFormNameInTheTargetsOfBoth) {
  Vorn_BuildFormArray forms = FormsOf({WithTargets(RoadForm(), {Target("1", kRight), Target("2", kNowhere)})});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(FormNamesInTargets(forms[0]), ElementsAre("road", "road"));
  EXPECT_THAT(FormNamesInTargets(forms[1]), ElementsAre("road", "road", "road", "road"));
}

VornFormCtrlTarget AcrossBoth(std::string_view scope, VornLocation side = kLeft) {
  return Target(scope, side, ControlItem::Width, TargetPntType::LeftRight);
}

TEST(XSectionSplit, RemovesTheTargetsAcrossBothSides) {
  Vorn_BuildFormArray forms = FormsOf(
      {WithTargets(RoadForm(), {AcrossBoth("1"), Target("2", kLeft), AcrossBoth("3", kRight), Target("4", kRight)})});
  ASSERT_TRUE(forms.IsRoadWL_R());
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(ScopesOf(forms[0]), ElementsAre("2"));
  EXPECT_THAT(ScopesOf(forms[1]), ElementsAre("4"));
}

TEST(XSectionSplit, DoesNotExamineTheTargetBehindARemovedOne) {
  const auto left = [](std::initializer_list<VornFormCtrlTarget> targets) {
    Vorn_BuildFormArray forms = FormsOf({WithTargets(RoadForm(), targets)});
    VornXSection::DevideBuildForm(forms, "cut");
    return ScopesOf(forms[0]);
  };
  EXPECT_THAT(left({AcrossBoth("1"), AcrossBoth("2")}), ElementsAre("2"));
  EXPECT_THAT(left({AcrossBoth("1"), AcrossBoth("2"), AcrossBoth("3")}), ElementsAre("2"));
  EXPECT_THAT(left({AcrossBoth("1"), AcrossBoth("2"), AcrossBoth("3"), AcrossBoth("4"), Target("5", kLeft)}),
              ElementsAre("2", "4", "5"));
  EXPECT_THAT(left({Target("1", kLeft), AcrossBoth("2"), Target("3", kLeft), AcrossBoth("4")}), ElementsAre("1", "3"));
}

TEST(XSectionSplit, TreatsTheTargetBehindARemovedOneLikeAnyOther) {
  Vorn_BuildFormArray forms =
      FormsOf({WithTargets(RoadForm(), {AcrossBoth("1"), AcrossBoth("2", kNowhere), AcrossBoth("3", kRight)})});
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(ScopesOf(forms[0]), ElementsAre("2"));
  EXPECT_THAT(ScopesOf(forms[1]), ElementsAre("2"));
}

TEST(XSectionSplit, LeavesTargetsAcrossBothSidesThatNameOneSideOnly) {
  VornFormCtrlTarget target = TargetOn("road", TargetPntType::LeftRight, {"L", "L2"});
  target.SetTargetScope("1");
  target.SetLR(kLeft);
  Vorn_BuildFormArray forms = FormsOf({WithTargets(RoadForm(), {target})});
  ASSERT_FALSE(forms.IsRoadWL_R());
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(ScopesOf(forms[0]), ElementsAre("1"));
}

TEST(XSectionSplit, RemovesThemFromTheFirstFormWhicheverFormHasATargetAcrossBothSides) {
  VornFormCtrlTarget oneSided = TargetOn("road", TargetPntType::LeftRight, {"L", "L2"});
  oneSided.SetTargetScope("1");
  oneSided.SetLR(kLeft);
  Vorn_BuildFormArray forms =
      FormsOf({WithTargets(RoadForm(), {oneSided}), WithTargets(RoadForm(), {AcrossBoth("2")})});
  ASSERT_FALSE(forms[0].IsRoadWL_R());
  ASSERT_TRUE(forms.IsRoadWL_R());
  VornXSection::DevideBuildForm(forms, "cut");
  EXPECT_THAT(ScopesOf(forms[0]), IsEmpty());
  EXPECT_THAT(ScopesOf(forms[2]), ElementsAre("2"));
}

TEST(XSectionSplit, MayBeToldByATextOfAPointThatItTakes) {
  Vorn_BuildFormArray forms = FormsOf({RoadForm()});
  VornComposedPnt& right = forms[0].GetComposedPntArray()[2];
  right.SetXSectName("a name that is too long to be kept within the text");
  VornXSection::DevideBuildForm(forms, right.GetXSectName());
  EXPECT_THAT(NamesOf(forms), ElementsAre("road", "a name that is too long to be kept within the text"));
}

TEST(XSectionSplit, MayBeToldByTheNameOrTypeOfAForm) {
  Vorn_BuildFormArray forms = FormsOf({Typed(kFill, RoadForm())});
  VornXSection::DevideBuildForm(forms, forms[0].GetXSectType());
  EXPECT_THAT(NamesOf(forms), ElementsAre("road", std::string(kFill)));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kFill), std::string(kFill)));
  forms = FormsOf({Typed(kFill, RoadForm()), FormOf("pave", {})});
  VornXSection::DevideBuildForm(forms, forms[1].GetName());
  EXPECT_THAT(NamesOf(forms), ElementsAre("road", "pave", "pave"));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kFill), "pave", ""));
}

// --- retyping ------------------------------------------------------------------------------------------------------

VornXSection SectionOf(std::initializer_list<VornBuildForm> forms) {
  VornXSection section;
  section.SetBuildFormArray(FormsOf(forms));
  return section;
}

TEST(XSectionChangeXSectType, RetypesTheOnePlanForm) {
  VornXSection section = SectionOf({WithTargets(Typed(kFill, RoadForm()), {Target("1", kRight)})});
  section.ChangeXSectType(CString(kCut), CString(kCut));
  const Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  EXPECT_THAT(NamesOf(forms), ElementsAre(std::string(kCut)));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kCut)));
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C", "L", "R", "L2", "R2"));
  EXPECT_THAT(FormNamesInTargets(forms[0]), ElementsAre(std::string(kCut), std::string(kCut)));
}

TEST(XSectionChangeXSectType, SplitsTheOnePlanFormForTwoTypes) {
  VornXSection section = SectionOf({WithTargets(Typed(kFill, RoadForm()), {Target("1", kRight), Target("2", kLeft)})});
  section.ChangeXSectType(CString(kCut), CString(kExcavation));
  const Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  EXPECT_THAT(NamesOf(forms), ElementsAre(std::string(kCut), std::string(kExcavation)));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kCut), std::string(kExcavation)));
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C", "L", "L2"));
  EXPECT_THAT(CodesOf(forms[1]), ElementsAre("C", "R", "R2"));
  EXPECT_THAT(FormNamesInTargets(forms[0]), ElementsAre(std::string(kCut), std::string(kCut)));
  EXPECT_THAT(FormNamesInTargets(forms[1]), ElementsAre(std::string(kCut), std::string(kCut)));
}

TEST(XSectionChangeXSectType, ComparesTheTypesExactly) {
  VornXSection section = SectionOf({Typed(kFill, RoadForm())});
  section.ChangeXSectType("a", "A");
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("a", "A"));
}

TEST(XSectionChangeXSectType, RetypesBothOfTwoPlanForms) {
  VornBuildForm second = WithTargets(Typed(kCut, RoadForm()), {Target("1", kRight)});
  second.GetFormCtrlTargetArray()[0].GetTargetPntArray()[0].SetBuildFormID(1);
  VornXSection section = SectionOf({WithTargets(Typed(kFill, RoadForm()), {Target("1", kRight)}), second});
  section.ChangeXSectType(CString(kExcavation), CString(kFill));
  const Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  EXPECT_THAT(NamesOf(forms), ElementsAre(std::string(kExcavation), std::string(kFill)));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kExcavation), std::string(kFill)));
  EXPECT_EQ(forms[0].GetComposedPntArray().GetSize(), 5);
  EXPECT_EQ(forms[1].GetComposedPntArray().GetSize(), 5);
  EXPECT_THAT(FormNamesInTargets(forms[0]), ElementsAre(std::string(kExcavation), std::string(kExcavation)));
  EXPECT_THAT(FormNamesInTargets(forms[1]), ElementsAre(std::string(kFill), "road"));
}

TEST(XSectionChangeXSectType, JoinsTwoPlanFormsForOneType) {
  VornXSection section =
      SectionOf({Typed(kFill, FormOf("a", {PointOn(kCenter, "C"), PointOn(kLeft, "L")})),
                 Typed(kCut, FormOf("b", {PointOn(kCenter, "C"), PointOn(kRight, "R")})), FormOf("c", {})});
  section.ChangeXSectType(CString(kExcavation), CString(kExcavation));
  const Vorn_BuildFormArray& forms = section.GetBuildFormArray();
  EXPECT_THAT(NamesOf(forms), ElementsAre(std::string(kExcavation), "c"));
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kExcavation), ""));
  EXPECT_THAT(CodesOf(forms[0]), ElementsAre("C", "L", "R"));
}

TEST(XSectionChangeXSectType, TakesTheFirstFormsEvenWhereThosePlanFormsAreOthers) {
  VornXSection one = SectionOf({Typed(kSubgrade, FormOf("a", {})), Typed(kFill, FormOf("b", {}))});
  one.ChangeXSectType(CString(kCut), CString(kCut));
  EXPECT_THAT(TypesOf(one.GetBuildFormArray()), ElementsAre(std::string(kCut), std::string(kFill)));
  VornXSection two =
      SectionOf({Typed(kSubgrade, FormOf("a", {})), Typed(kFill, FormOf("b", {})), Typed(kFill, FormOf("c", {}))});
  two.ChangeXSectType(CString(kCut), CString(kExcavation));
  EXPECT_THAT(NamesOf(two.GetBuildFormArray()), ElementsAre(std::string(kCut), std::string(kExcavation), "c"));
  EXPECT_THAT(TypesOf(two.GetBuildFormArray()),
              ElementsAre(std::string(kCut), std::string(kExcavation), std::string(kFill)));
}

TEST(XSectionChangeXSectType, LeavesASectionWithAnyOtherNumberOfPlanForms) {
  VornXSection none = SectionOf({Typed(kSubgrade, FormOf("a", {}))});
  none.ChangeXSectType(CString(kCut), CString(kExcavation));
  EXPECT_THAT(NamesOf(none.GetBuildFormArray()), ElementsAre("a"));
  EXPECT_THAT(TypesOf(none.GetBuildFormArray()), ElementsAre(std::string(kSubgrade)));
  const VornBuildForm plan = Typed(kFill, FormOf("a", {}));
  VornXSection three = SectionOf({plan, plan, plan});
  three.ChangeXSectType(CString(kCut), CString(kExcavation));
  three.ChangeXSectType(CString(kCut), CString(kCut));
  EXPECT_THAT(NamesOf(three.GetBuildFormArray()), ElementsAre("a", "a", "a"));
  EXPECT_THAT(TypesOf(three.GetBuildFormArray()),
              ElementsAre(std::string(kFill), std::string(kFill), std::string(kFill)));
  VornXSection empty;
  empty.ChangeXSectType(CString(kCut), CString(kExcavation));
  EXPECT_TRUE(empty.GetBuildFormArray().IsEmpty());
}

TEST(XSectionChangeXSectType, MayBeToldByTheNamesAndTypesOfItsForms) {
  VornXSection one = SectionOf({Typed(kFill, FormOf("a", {}))});
  const VornBuildForm& form = one.GetBuildFormArray()[0];
  one.ChangeXSectType(form.GetName(), form.GetXSectType());
  EXPECT_THAT(NamesOf(one.GetBuildFormArray()), ElementsAre("a", std::string(kFill)));

  VornXSection two = SectionOf({Typed(kFill, FormOf("a", {})), Typed(kCut, FormOf("b", {}))});
  const Vorn_BuildFormArray& forms = two.GetBuildFormArray();
  two.ChangeXSectType(forms[1].GetXSectType(), forms[0].GetXSectType());
  EXPECT_THAT(TypesOf(forms), ElementsAre(std::string(kCut), std::string(kFill)));
  two.ChangeXSectType(forms[1].GetName(), forms[1].GetName());
  EXPECT_THAT(NamesOf(forms), ElementsAre(std::string(kFill)));
}

TEST(XSectionDevide, NumbersTheRightHalfOfAFormWithoutASerial) {
  Vorn_BuildFormArray forms;
  forms.SetSize(1);
  ASSERT_EQ(forms[0].GetSerialID(), 0xFFFFFFFF);
  VornXSection::DevideBuildForm(forms, "right");
  EXPECT_EQ(forms[0].GetSerialID(), 0xFFFFFFFF);
  EXPECT_EQ(forms[1].GetSerialID(), 1U);
}

}  // namespace
