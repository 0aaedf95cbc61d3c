#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/model/model_builders.h"
#include "vorn/model/x_section.h"
#include "vorn/platform/code_page_932.h"

// Shifting, mirroring, sorting, removing and clearing a whole cross section.

namespace {

using model_test::CodesOf;
using model_test::Each;
using model_test::FormOf;
using model_test::GroundOf;
using model_test::NamesOf;
using model_test::PointAt;
using model_test::PointOn;
using model_test::TargetOn;
using testing::ElementsAre;

using ControlItem = VornFormCtrlTarget::ControlItem;
using PntType = VornComposedPnt::PntType;
using TargetPntType = VornFormCtrlTarget::TargetPntType;

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr VornLocation kCenter = VornLocation::Center;
constexpr VornLocation kLeft = VornLocation::Left;
constexpr VornLocation kRight = VornLocation::Right;
constexpr VornLocation kNowhere = VornLocation::Unset;

VornXSection SectionOf(std::initializer_list<VornBuildForm> forms) {
  VornXSection section;
  for (const VornBuildForm& form : forms) section.GetBuildFormArray().Add(form);
  return section;
}

Vorn_ComposedPntArray& PointsOf(VornXSection& section, int form = 0) {
  return section.GetBuildFormArray()[form].GetComposedPntArray();
}

std::vector<double> Dists(VornXSection& section, int form = 0) {
  std::vector<double> dists;
  for (const VornComposedPnt& point : PointsOf(section, form)) dists.push_back(point.GetCLDist().Value());
  return dists;
}

// --- shift ---------------------------------------------------------------------------------------------------------

/// Where a point at dist comes to lie when the section's shift changes.
double Shifted(double dist, double oldShift, double newShift) {
  VornXSection section = SectionOf({FormOf("road", {PointAt(kRight, 10.0, dist)})});
  section.SetShiftDist(oldShift);
  section.SetShiftData(0.0, newShift);
  return PointsOf(section)[0].GetCLDist().Value();
}

TEST(XSectionShift, IsOnlyStoredInASectionWithoutForms) {
  VornXSection section;
  section.SetShiftData(1.5, -2.5);
  EXPECT_EQ(section.GetShiftGH(), 1.5);
  EXPECT_EQ(section.GetShiftDist(), -2.5);
}

TEST(XSectionShift, MovesEveryPointOfEveryForm) {
  VornXSection section =
      SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 1.0), PointAt(kLeft, 10.0, -4.0), PointAt(kRight, 10.0, 6.0)}),
                 FormOf("pave", {PointAt(kNowhere, 9.0, 0.5)})});
  section.SetShiftDist(1.0);
  section.SetShiftData(0.0, 3.0);
  EXPECT_THAT(Dists(section), ElementsAre(3.0, -2.0, 8.0));
  EXPECT_THAT(Dists(section, 1), ElementsAre(2.5));
}

TEST(XSectionShift, IsStored) {
  VornXSection section = SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 1.0)})});
  section.SetShiftGH(7.0);
  section.SetShiftDist(8.0);
  section.SetShiftData(1.5, -2.5);
  EXPECT_EQ(section.GetShiftGH(), 1.5);
  EXPECT_EQ(section.GetShiftDist(), -2.5);
}

TEST(XSectionShift, IsGivenDistanceFirst) {
  VornXSection section;
  section.SetShiftData(1.5, -2.5);
  EXPECT_EQ(section.GetShiftData(), (TamWorld2{-2.5, 1.5}));
}

TEST(XSectionShift, IsFreeOfBinaryRounding) { EXPECT_EQ(Shifted(2.3, 0.1, 0.4), 2.6); }

TEST(XSectionShift, LeavesEveryHeight) {
  VornXSection section = SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 1.0), PointAt(kLeft, 12.0, -4.0)})});
  section.SetShiftGH(1.0);
  section.SetShiftData(5.0, 3.0);
  EXPECT_EQ(PointsOf(section)[0].GetGh(), 10.0);
  EXPECT_EQ(PointsOf(section)[1].GetGh(), 12.0);
}

TEST(XSectionShift, LeavesTheInputValues) {
  VornXSection section = SectionOf({FormOf("road", {PointAt(kRight, 10.0, 1.0)})});
  PointsOf(section)[0].SetX(1.0);
  PointsOf(section)[0].SetY(2.0);
  section.SetShiftData(5.0, 3.0);
  EXPECT_EQ(PointsOf(section)[0].GetX(), 1.0);
  EXPECT_EQ(PointsOf(section)[0].GetY(), 2.0);
}

TEST(XSectionShift, CutsFractionsToTenPlaces) {
  EXPECT_EQ(Shifted(2.300000000066, 0.0, 0.0), 2.3000000001);
  EXPECT_EQ(Shifted(-2.300000000066, 0.0, 0.0), -2.3000000001);
  EXPECT_EQ(Shifted(-0.300000000066, 0.0, 0.0), -0.3000000001);
  EXPECT_EQ(Shifted(7.5, -0.300000000066, 0.0), 7.8000000001);
}

TEST(XSectionShift, KeepsThePlainDifferenceWhereThatIsLarger) {
  EXPECT_EQ(Shifted(2.300000000064, 0.0, 0.0), 2.300000000064);
  EXPECT_EQ(Shifted(-2.300000000064, 0.0, 0.0), -2.300000000064);
  EXPECT_EQ(Shifted(7.5, 0.300000000066, 0.0), 7.5 - 0.300000000066);
  EXPECT_EQ(Shifted(3.2, 1.5, 0.0), 3.2 - 1.5);
}

TEST(XSectionShift, TakesTheLargerDifferenceOnEitherSide) {
  EXPECT_EQ(Shifted(-2.3, -0.1, 0.0), -2.2);
  EXPECT_EQ(Shifted(0.1, 2.3, 0.0), -2.2);
  EXPECT_EQ(Shifted(-2.3, 0.1, 0.0), -2.4);
  EXPECT_EQ(Shifted(5.25, -3.5, 1.0), 9.75);
}

TEST(XSectionShift, LeavesAPointWithoutADistance) {
  VornXSection section = SectionOf({FormOf("road", {PointAt(kCenter, 10.0, NurReal()), PointAt(kRight, 10.0, 0.0)})});
  section.SetShiftDist(1.0);
  section.SetShiftData(0.0, 3.0);
  EXPECT_FALSE(PointsOf(section)[0].GetCLDist().IsSet());
  EXPECT_EQ(PointsOf(section)[1].GetCLDist(), 2.0);
}

TEST(XSectionShift, MayBeAValueOfTheSection) {
  VornXSection section = SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 1.0), PointAt(kRight, 10.0, 6.0)})});
  section.SetShiftData(5.0, 3.0);
  const VornXSection& values = section;
  section.SetShiftData(values.GetShiftDist(), values.GetShiftGH());
  EXPECT_EQ(section.GetShiftGH(), 3.0);
  EXPECT_EQ(section.GetShiftDist(), 5.0);
  EXPECT_THAT(Dists(section), ElementsAre(6.0, 11.0));
  section.SetShiftData(PointsOf(section)[1].GetCLDist(), PointsOf(section)[0].GetCLDist());
  EXPECT_EQ(section.GetShiftGH(), 11.0);
  EXPECT_EQ(section.GetShiftDist(), 6.0);
  EXPECT_THAT(Dists(section), ElementsAre(7.0, 12.0));
}

// --- existence -----------------------------------------------------------------------------------------------------

VornComposedPnt CrossingOn(VornLocation side, std::string_view code = "X") {
  VornComposedPnt point = PointOn(side, code);
  point.SetSeriesPnt(false);
  return point;
}

std::vector<int> Existences(const Vorn_ComposedPntArray& points) {
  std::vector<int> existences;
  for (const VornComposedPnt& point : points) existences.push_back(static_cast<int>(point.GetExistence()));
  return existences;
}

std::vector<int> ExistencesAfter(VornLocation side, std::initializer_list<VornComposedPnt> points) {
  VornBuildForm form = FormOf("road", points);
  VornXSection::RegulateComposedPnt(form.GetComposedPntArray(), side);
  return Existences(form.GetComposedPntArray());
}

TEST(XSectionExistence, EndsBehindTheFirstCrossing) {
  EXPECT_THAT(ExistencesAfter(kLeft, {PointOn(kLeft), CrossingOn(kLeft), PointOn(kLeft), CrossingOn(kLeft)}),
              ElementsAre(2, 2, 1, 2));
  EXPECT_THAT(ExistencesAfter(kRight, {CrossingOn(kRight), PointOn(kRight), PointOn(kRight)}), ElementsAre(2, 1, 1));
}

TEST(XSectionExistence, IsWholeWithoutACrossing) {
  EXPECT_THAT(ExistencesAfter(kLeft, {PointOn(kLeft), PointOn(kLeft)}), ElementsAre(2, 2));
}

TEST(XSectionExistence, ConcernsThePointsOfOneSideOnly) {
  EXPECT_THAT(ExistencesAfter(kLeft, {CrossingOn(kCenter), CrossingOn(kRight), CrossingOn(kNowhere), PointOn(kLeft),
                                      PointOn(kRight), CrossingOn(kLeft), PointOn(kLeft)}),
              ElementsAre(-1, -1, -1, 2, -1, 2, 1));
}

TEST(XSectionExistence, ReplacesWhatWasThere) {
  VornComposedPnt gone = PointOn(kLeft);
  gone.SetExistence(VORN_Existence::False);
  VornComposedPnt there = PointOn(kLeft);
  there.SetExistence(VORN_Existence::True);
  EXPECT_THAT(ExistencesAfter(kLeft, {gone, CrossingOn(kLeft), there}), ElementsAre(2, 2, 1));
}

TEST(XSectionExistence, IsDecidedOnBothSidesOfEveryForm) {
  const VornBuildForm form = FormOf("road", {PointOn(kCenter), CrossingOn(kLeft), PointOn(kRight), PointOn(kLeft),
                                             CrossingOn(kRight), PointOn(kRight)});
  VornXSection section = SectionOf({form, form});
  section.RegulateComposedPnt();
  EXPECT_THAT(Existences(PointsOf(section, 0)), ElementsAre(-1, 2, 2, 1, 2, 1));
  EXPECT_THAT(Existences(PointsOf(section, 1)), ElementsAre(-1, 2, 2, 1, 2, 1));
}

// --- control targets, codes and connections ------------------------------------------------------------------------

VornFormCtrlTarget TargetFor(ControlItem item, std::string_view scope = "S") {
  VornFormCtrlTarget target = TargetOn("road", TargetPntType::ShoulderToe, {"P"});
  target.SetControlItem(item);
  target.SetTargetScope(CString(scope));
  return target;
}

/// Two forms, each with a target for a width and one for a length, at station 20.
VornXSection SectionWithTargets() {
  VornBuildForm form;
  form.GetFormCtrlTargetArray().Add(TargetFor(ControlItem::Width));
  form.GetFormCtrlTargetArray().Add(TargetFor(ControlItem::Length));
  return SectionOf({form, form});
}

std::vector<double> Stations(const VornXSection& section) {
  std::vector<double> stations;
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
      const VornFormCtrlTargetPntArray& points = target.GetTargetPntArray();
      stations.push_back(points.IsEmpty() ? -1.0 : points[0].GetCumulativeDist().Value());
    }
  }
  return stations;
}

TEST(XSectionTargets, MoveToAnotherStation) {
  VornXSection section = SectionWithTargets();
  section.ChangeDist(20.0, 30.0, false);
  EXPECT_THAT(Stations(section), ElementsAre(30.0, 20.0, 30.0, 20.0));
}

TEST(XSectionTargets, ForLengthsAndAreasMoveToAnotherStation) {
  VornXSection section = SectionWithTargets();
  section.ChangeDistH(20.0, 30.0, false);
  EXPECT_THAT(Stations(section), ElementsAre(20.0, 30.0, 20.0, 30.0));
}

TEST(XSectionTargets, StayAtOtherStationsAndOtherChangesOfShape) {
  VornXSection section = SectionWithTargets();
  section.ChangeDist(21.0, 30.0, false);
  section.ChangeDist(20.0, 30.0, true);
  section.ChangeDistH(21.0, 30.0, false);
  section.ChangeDistH(20.0, 30.0, true);
  EXPECT_THAT(Stations(section), ElementsAre(20.0, 20.0, 20.0, 20.0));
}

TEST(XSectionTargets, ForLengthsAndAreasAreRemoved) {
  VornBuildForm form;
  Vorn_FormCtrlTargetArray& targets = form.GetFormCtrlTargetArray();
  targets.Add(TargetFor(ControlItem::Length, "1"));
  targets.Add(TargetFor(ControlItem::Area, "2"));
  targets.Add(TargetFor(ControlItem::XSectArea, "3"));
  targets.Add(TargetFor(ControlItem::Length, "4"));
  targets.Add(TargetFor(ControlItem::Unset, "5"));
  targets.Add(TargetFor(static_cast<ControlItem>(8), "6"));
  targets.Add(TargetFor(ControlItem::Area, "7"));
  VornXSection section = SectionOf({form, form});
  section.RemoveFormH();
  for (const VornBuildForm& left : section.GetBuildFormArray()) {
    std::vector<std::string> scopes;
    for (const VornFormCtrlTarget& target : left.GetFormCtrlTargetArray())
      scopes.emplace_back(target.GetTargetScope().View());
    EXPECT_THAT(scopes, ElementsAre("3", "5", "6"));
  }
}

VornXSection ConnectedSection() {
  VornComposedPnt point = PointOn(kRight, "main");
  point.SetCode("sub", PntType::Sub);
  point.SetDekiPairID(3, PntType::Both);
  VornBuildForm form = FormOf("road", {point});
  VornCrossPointInfo crossing;
  crossing.SetDekiPairID(4);
  form.SetCrossLeft(crossing);
  form.SetCrossRight(crossing);
  return SectionOf({form, form});
}

TEST(XSectionConnections, AreForgottenInEveryForm) {
  VornXSection section = ConnectedSection();
  section.ClearConnectInfo(false);
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    const VornComposedPnt& point = form.GetComposedPntArray()[0];
    EXPECT_EQ(point.GetDekiPairID(), kNone);
    EXPECT_EQ(point.GetCode(), "main");
    EXPECT_EQ(point.GetCode(PntType::Sub), "sub");
    EXPECT_EQ(form.GetCrossLeft().GetDekiPairID(), kNone);
    EXPECT_EQ(form.GetCrossRight().GetDekiPairID(), kNone);
  }
}

TEST(XSectionConnections, AreForgottenWithTheCodes) {
  VornXSection section = ConnectedSection();
  section.ClearConnectInfo(true);
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    EXPECT_EQ(form.GetComposedPntArray()[0].GetDekiPairID(), kNone);
    EXPECT_EQ(form.GetComposedPntArray()[0].GetCode(), "");
    EXPECT_EQ(form.GetComposedPntArray()[0].GetCode(PntType::Sub), "");
  }
}

TEST(XSectionCodes, AreClearedInBothRolesOfEveryPoint) {
  VornXSection section = ConnectedSection();
  section.ClearCode();
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    const VornComposedPnt& point = form.GetComposedPntArray()[0];
    EXPECT_EQ(point.GetCode(), "");
    EXPECT_EQ(point.GetCode(PntType::Sub), "");
    EXPECT_EQ(point.GetLastCode(), "");
    EXPECT_EQ(point.GetDekiPairID(), 3u);
  }
}

// --- removing build forms ------------------------------------------------------------------------------------------

VornBuildForm Form(std::string_view name, std::uint32_t serialID, bool orgSurface = false) {
  VornBuildForm form = FormOf(name, {});
  form.SetSerialID(serialID);
  form.SetOrgSurface(orgSurface);
  return form;
}

/// Forms with just the serials and marks that they bring.
VornXSection SectionWith(std::initializer_list<VornBuildForm> forms) {
  VornXSection section;
  section.GetBuildFormArray().SetSize(static_cast<int>(forms.size()));
  int i = 0;
  for (const VornBuildForm& form : forms) section.GetBuildFormArray()[i++] = form;
  return section;
}

std::vector<std::uint32_t> Serials(const VornXSection& section) {
  return Each(section.GetBuildFormArray(), &VornBuildForm::GetSerialID);
}

TEST(XSectionFormRemoval, TakesEveryFormOfTheName) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("b", 2), Form("c", 3), Form("b", 4)});
  CString surface = "before";
  section.RemoveBuildForm("b", surface);
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("a", "c"));
  EXPECT_THAT(Serials(section), ElementsAre(0u, 3u));
  EXPECT_EQ(surface, "");
}

TEST(XSectionFormRemoval, ComparesNamesExactly) {
  VornXSection section = SectionWith({Form("b", 0), Form("B", 1), Form("b ", 2)});
  CString surface = "before";
  section.RemoveBuildForm("B", surface);
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("b", "b "));
}

TEST(XSectionFormRemoval, LeavesOrgSurfacesEvenOfTheName) {
  VornXSection section = SectionWith({Form("b", 0, true), Form("b", 1), Form("b", 2, true)});
  CString surface = "before";
  section.RemoveBuildForm("b", surface);
  EXPECT_THAT(Serials(section), ElementsAre(0u, 2u));
  EXPECT_EQ(surface, "");
}

TEST(XSectionFormRemoval, HandsTheDesignSurfaceToTheOrgSurface) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("c", 2, true)});
  CString surface = "before";
  section.RemoveBuildForm("a", surface);
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("b", "c"));
  EXPECT_THAT(Serials(section), ElementsAre(1u, 0u));
  EXPECT_EQ(surface, "c");
}

TEST(XSectionFormRemoval, HandsTheDesignSurfaceToEveryOrgSurfaceAndNamesTheLast) {
  VornXSection section = SectionWith({Form("c", 1, true), Form("a", 0), Form("d", 2, true), Form("e", 3)});
  CString surface;
  section.RemoveBuildForm("a", surface);
  EXPECT_THAT(Serials(section), ElementsAre(0u, 0u, 3u));
  EXPECT_EQ(surface, "d");
}

TEST(XSectionFormRemoval, HandsTheDesignSurfaceToTheFirstFormWithoutAnOrgSurface) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("c", 2)});
  CString surface;
  section.RemoveBuildForm("a", surface);
  EXPECT_THAT(Serials(section), ElementsAre(0u, 2u));
  EXPECT_EQ(surface, "b");
  EXPECT_FALSE(section.GetBuildFormArray()[0].IsOrgSurface());
}

TEST(XSectionFormRemoval, NoticesTheDesignSurfaceAmongSeveral) {
  for (const std::uint32_t surfaceAt : {1u, 2u, 3u}) {
    VornXSection section = SectionWith({Form("b", surfaceAt == 1 ? 0 : 1), Form("b", surfaceAt == 2 ? 0 : 2),
                                        Form("b", surfaceAt == 3 ? 0 : 3), Form("c", 4)});
    CString surface;
    section.RemoveBuildForm("b", surface);
    EXPECT_THAT(Serials(section), ElementsAre(0u)) << surfaceAt;
    EXPECT_EQ(surface, "c") << surfaceAt;
  }
}

TEST(XSectionFormRemoval, LeavesTheSerialsWhenTheDesignSurfaceStays) {
  VornXSection section = SectionWith({Form("a", 5), Form("b", 0), Form("c", 6), Form("d", 7, true)});
  CString surface = "before";
  section.RemoveBuildForm("c", surface);
  EXPECT_THAT(Serials(section), ElementsAre(5u, 0u, 7u));
  EXPECT_EQ(surface, "");
}

TEST(XSectionFormRemoval, MayLeaveNoForm) {
  VornXSection section = SectionWith({Form("a", 0)});
  CString surface = "before";
  section.RemoveBuildForm("a", surface);
  EXPECT_TRUE(section.GetBuildFormArray().IsEmpty());
  EXPECT_EQ(surface, "");
}

TEST(XSectionFormRemoval, EmptiesTheNameOfTheNewSurfaceWhenNothingIsRemoved) {
  VornXSection section = SectionWith({Form("a", 0)});
  CString surface = "before";
  section.RemoveBuildForm("z", surface);
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("a"));
  EXPECT_EQ(surface, "");
}

TEST(XSectionFormRemoval, MayBeToldByTheNameOfAForm) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("a", 2), Form("b", 3)});
  CString surface;
  section.RemoveBuildForm(section.GetBuildFormArray()[0].GetName(), surface);
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("b", "b"));
}

TEST(XSectionFormRemoval, MayGiveTheNewSurfaceIntoTheNameItWasTold) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1)});
  CString name = "a";
  section.RemoveBuildForm(name, name);
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("b"));
  EXPECT_EQ(name, "b");
}

// --- sorting build forms -------------------------------------------------------------------------------------------

CStringArray Names(std::initializer_list<std::string_view> names) {
  CStringArray array;
  for (const std::string_view name : names) array.Add(CString(name));
  return array;
}

TEST(XSectionFormOrder, FollowsTheNames) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("c", 2)});
  section.SortBuildForms(Names({"c", "a", "b"}));
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("c", "a", "b"));
}

TEST(XSectionFormOrder, KeepsTheFormsThemselves) {
  VornXSection section = SectionWith({Form("a", 5), Form("b", 0, true)});
  section.GetBuildFormArray()[0].GetComposedPntArray().Add(PointOn(kRight, "P"));
  section.SortBuildForms(Names({"b", "a"}));
  EXPECT_THAT(Serials(section), ElementsAre(0u, 5u));
  EXPECT_TRUE(section.GetBuildFormArray()[0].IsOrgSurface());
  EXPECT_FALSE(section.GetBuildFormArray()[1].IsOrgSurface());
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[1]), ElementsAre("P"));
}

TEST(XSectionFormOrder, IgnoresCase) {
  VornXSection section = SectionWith({Form("Road", 0), Form("pAVE", 1)});
  section.SortBuildForms(Names({"Pave", "rOAD"}));
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("pAVE", "Road"));
}

TEST(XSectionFormOrder, TellsJapaneseNamesApart) {
  // In code page 932 the two differ in the second byte only, which is "A" in one and "a" in the other.
  constexpr std::string_view kFirst = u8"ア"_cp932;
  constexpr std::string_view kSecond = u8"ヂ"_cp932;
  static_assert(kFirst[1] == 'A' && kSecond[1] == 'a');
  VornXSection section = SectionWith({Form(kFirst, 0), Form(kSecond, 1)});
  section.SortBuildForms(Names({kSecond, kFirst}));
  EXPECT_THAT(Serials(section), ElementsAre(1u, 0u));
}

TEST(XSectionFormOrder, KeepsFormsOfOneNameInTheirOrder) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("A", 2), Form("b", 3)});
  section.SortBuildForms(Names({"b", "a"}));
  EXPECT_THAT(Serials(section), ElementsAre(1u, 3u, 0u, 2u));
}

TEST(XSectionFormOrder, DropsFormsThatTheListDoesNotName) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("c", 2)});
  section.SortBuildForms(Names({"c", "z", "a"}));
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("c", "a", ""));
  EXPECT_THAT(Serials(section), ElementsAre(2u, 0u, kNone));
  EXPECT_FALSE(section.GetBuildFormArray()[2].IsOrgSurface());
}

TEST(XSectionFormOrder, LeavesAsManyNewFormsWithAnEmptyList) {
  VornXSection section = SectionWith({Form("a", 0, true), Form("b", 1)});
  section.SortBuildForms(CStringArray());
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("", ""));
  EXPECT_THAT(Serials(section), ElementsAre(kNone, kNone));
  EXPECT_FALSE(section.GetBuildFormArray()[0].IsOrgSurface());
}

TEST(XSectionFormOrder, CopiesAFormThatIsNamedTwiceAsFarAsThereIsRoom) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("c", 2)});
  section.SortBuildForms(Names({"b", "b", "a", "c"}));
  EXPECT_THAT(NamesOf(section.GetBuildFormArray()), ElementsAre("b", "b", "a"));
  EXPECT_THAT(Serials(section), ElementsAre(1u, 1u, 0u));
}

TEST(XSectionFormOrder, StopsAmongTheFormsOfOneNameWhenThereIsNoMoreRoom) {
  VornXSection section = SectionWith({Form("a", 0), Form("b", 1), Form("b", 2)});
  section.SortBuildForms(Names({"a", "a", "b"}));
  EXPECT_THAT(Serials(section), ElementsAre(0u, 0u, 1u));
}

TEST(XSectionFormOrder, StartsNumberingOver) {
  VornXSection section = SectionOf({Form("a", kNone), Form("b", kNone), Form("c", 7)});
  ASSERT_EQ(section.GetBuildFormArray().GetNextSerialID(), 8u);
  section.SortBuildForms(Names({"c", "b", "a"}));
  EXPECT_EQ(section.GetBuildFormArray().GetNextSerialID(), 1u);
  EXPECT_THAT(Serials(section), ElementsAre(7u, 1u, 0u));
}

TEST(XSectionFormOrder, LeavesASectionWithoutForms) {
  VornXSection section;
  section.SortBuildForms(Names({"a"}));
  EXPECT_TRUE(section.GetBuildFormArray().IsEmpty());
}

// --- mirror --------------------------------------------------------------------------------------------------------

TEST(XSectionMirror, PutsTheRightPointsToTheLeftAndBeforeTheFormerLeftOnes) {
  VornXSection section =
      SectionOf({FormOf("road", {PointAt(kCenter, 10.0, 0.5, "C"), PointAt(kLeft, 11.0, -2.0, "L1"),
                                 PointAt(kRight, 12.0, 3.0, "R1"), PointAt(kLeft, 13.0, -4.0, "L2")})});
  section.SwapLR();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "R1", "L1", "L2"));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetLocation), ElementsAre(kCenter, kLeft, kRight, kRight));
  EXPECT_THAT(Dists(section), ElementsAre(-0.5, -3.0, 2.0, 4.0));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetGh), ElementsAre(10.0, 12.0, 11.0, 13.0));
}

TEST(XSectionMirror, PutsPointsWithoutASideToTheLeft) {
  VornXSection section = SectionOf({FormOf(
      "road", {PointAt(kLeft, 10.0, -1.0, "L"), PointAt(kNowhere, 10.0, 2.0, "N"), PointAt(kCenter, 10.0, 0.0, "C")})});
  section.SwapLR();
  EXPECT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("N", "C", "L"));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetLocation), ElementsAre(kLeft, kCenter, kRight));
  EXPECT_EQ(PointsOf(section)[0].GetCLDist(), -2.0);
}

TEST(XSectionMirror, NegatesTheInputDistanceOfCentrePointsOnly) {
  VornXSection section = SectionOf({FormOf("road", {PointOn(kCenter), PointOn(kRight), PointOn(kLeft)})});
  for (VornComposedPnt& point : PointsOf(section)) {
    point.SetX(1.5);
    point.SetY(2.5);
  }
  section.SwapLR();
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetX), ElementsAre(-1.5, 1.5, 1.5));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetY), ElementsAre(2.5, 2.5, 2.5));
}

TEST(XSectionMirror, LeavesUnsetDistancesUnset) {
  VornComposedPnt center = PointAt(kCenter, 10.0, NurReal());
  center.SetX(NurReal());
  VornXSection section = SectionOf({FormOf("road", {center, PointAt(kRight, 10.0, NurReal())})});
  VornExistingBuildForm ground = GroundOf({{10.0, kNurUnsetReal}});
  ground.GetComposedPntArray()[0].SetName("L1");
  section.GetExistingBuildFormArray().Add(ground);
  section.SwapLR();
  EXPECT_FALSE(PointsOf(section)[0].GetCLDist().IsSet());
  EXPECT_FALSE(PointsOf(section)[0].GetX().IsSet());
  EXPECT_FALSE(PointsOf(section)[1].GetCLDist().IsSet());
  const VornExistingComposedPnt& groundPoint = section.GetExistingBuildFormArray()[0].GetComposedPntArray()[0];
  EXPECT_FALSE(groundPoint.GetCLDist().IsSet());
  EXPECT_EQ(groundPoint.GetName(), "F1");
}

TEST(XSectionMirror, GivesAllButCentrePointsSerialsThatAreStillFree) {
  VornXSection section = SectionOf(
      {FormOf("road", {PointOn(kCenter, "C"), PointOn(kLeft, "L"), PointOn(kRight, "R"), PointOn(kNowhere, "N")})});
  ASSERT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSerialID), ElementsAre(0u, 1u, 2u, 3u));
  section.SwapLR();
  ASSERT_THAT(CodesOf(section.GetBuildFormArray()[0]), ElementsAre("C", "R", "N", "L"));
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetSerialID), ElementsAre(0u, 4u, 5u, 6u));
  EXPECT_EQ(PointsOf(section).GetNextSerialID(), 7u);
}

TEST(XSectionMirror, LeavesReferencesToSerials) {
  VornXSection section = SectionOf({FormOf("road", {PointOn(kCenter), PointOn(kRight)})});
  PointsOf(section)[1].SetParentID(1);
  PointsOf(section)[1].SetOrgID(2);
  PointsOf(section)[1].SetID(3);
  section.SwapLR();
  EXPECT_EQ(PointsOf(section)[1].GetParentID(), 1u);
  EXPECT_EQ(PointsOf(section)[1].GetOrgID(), 2u);
  EXPECT_EQ(PointsOf(section)[1].GetID(), 3u);
}

TEST(XSectionMirror, TakesEveryForm) {
  const VornBuildForm form = FormOf("road", {PointAt(kCenter, 10.0, 0.0), PointAt(kRight, 10.0, 3.0)});
  VornXSection section = SectionOf({form, VornBuildForm(), form});
  section.SwapLR();
  EXPECT_EQ(PointsOf(section, 0)[1].GetCLDist(), -3.0);
  EXPECT_TRUE(PointsOf(section, 1).IsEmpty());
  EXPECT_EQ(PointsOf(section, 2)[1].GetCLDist(), -3.0);
}

TEST(XSectionMirror, ReversesTheExistingGroundForms) {
  VornXSection section;
  for (const char* name : {"1", "2", "3"}) {
    VornExistingBuildForm form;
    form.SetName(name);
    section.GetExistingBuildFormArray().Add(form);
  }
  section.SwapLR();
  std::vector<std::string> names;
  for (const VornExistingBuildForm& form : section.GetExistingBuildFormArray())
    names.emplace_back(form.GetName().View());
  EXPECT_THAT(names, ElementsAre("3", "2", "1"));
}

TEST(XSectionMirror, ReversesThePointsOfEveryGroundForm) {
  VornXSection section;
  section.GetExistingBuildFormArray().Add(GroundOf({{10.0, -3.0}, {11.0, 0.5}, {12.0, 4.0}}));
  section.GetExistingBuildFormArray().Add(GroundOf({{20.0, 1.0}, {21.0, 2.0}}));
  section.SwapLR();
  const auto positions = [&](int form) {
    std::vector<std::pair<double, double>> result;
    for (const VornExistingComposedPnt& point : section.GetExistingBuildFormArray()[form].GetComposedPntArray())
      result.emplace_back(point.GetGh().Value(), point.GetCLDist().Value());
    return result;
  };
  using Position = std::pair<double, double>;
  EXPECT_THAT(positions(0), ElementsAre(Position{21.0, -2.0}, Position{20.0, -1.0}));
  EXPECT_THAT(positions(1), ElementsAre(Position{12.0, -4.0}, Position{11.0, -0.5}, Position{10.0, 3.0}));
}

/// The name of a ground point after the mirroring that puts it at newDist.
std::string MirroredName(std::string_view name, double newDist) {
  VornXSection section;
  section.GetExistingBuildFormArray().Add(GroundOf({{10.0, -newDist}}));
  VornExistingComposedPntArray& points = section.GetExistingBuildFormArray()[0].GetComposedPntArray();
  points[0].SetName(CString(name));
  section.SwapLR();
  EXPECT_EQ(points[0].GetCLDist(), newDist);
  return std::string(points[0].GetName().View());
}

TEST(XSectionMirror, NamesGroundPointsForTheirNewSide) {
  for (const char* name : {"L5", "R5", "F5"}) {
    EXPECT_EQ(MirroredName(name, 3.0), "R5");
    EXPECT_EQ(MirroredName(name, -3.0), "L5");
    EXPECT_EQ(MirroredName(name, 0.0), "F5");
  }
  EXPECT_EQ(MirroredName("L", 3.0), "R");
  EXPECT_EQ(MirroredName("LLR", 3.0), "RLR");
}

TEST(XSectionMirror, TakesLessThanAMillionthForTheCentre) {
  EXPECT_EQ(MirroredName("L5", 0.9e-6), "F5");
  EXPECT_EQ(MirroredName("L5", -0.9e-6), "F5");
  EXPECT_EQ(MirroredName("L5", 1e-6), "R5");
  EXPECT_EQ(MirroredName("L5", -1e-6), "L5");
}

TEST(XSectionMirror, LeavesOtherNamesOfGroundPoints) {
  EXPECT_EQ(MirroredName("", 3.0), "");
  EXPECT_EQ(MirroredName("C5", 3.0), "C5");
  EXPECT_EQ(MirroredName("l5", 3.0), "l5");
  EXPECT_EQ(MirroredName("5L", 3.0), "5L");
}

TEST(XSectionMirror, DoneTwiceRestoresWhatLies) {
  VornXSection section = SectionOf(
      {FormOf("road", {PointAt(kCenter, 10.0, 0.5), PointAt(kLeft, 11.0, -2.0), PointAt(kRight, 12.0, 3.0)})});
  section.SwapLR();
  section.SwapLR();
  EXPECT_THAT(Each(PointsOf(section), &VornComposedPnt::GetLocation), ElementsAre(kCenter, kLeft, kRight));
  EXPECT_THAT(Dists(section), ElementsAre(0.5, -2.0, 3.0));
}

TEST(XSectionArrayMirror, TakesEverySection) {
  Vorn_XSectionArray sections;
  sections.Add(SectionOf({FormOf("road", {PointAt(kRight, 10.0, 3.0)})}));
  sections.Add(SectionOf({FormOf("road", {PointAt(kRight, 10.0, 4.0)})}));
  sections.SwapLR();
  EXPECT_EQ(PointsOf(sections[0])[0].GetCLDist(), -3.0);
  EXPECT_EQ(PointsOf(sections[1])[0].GetCLDist(), -4.0);
}

TEST(XSectionShift, TakesAnUnsetShiftForNone) {
  VornXSection section;
  section.GetBuildFormArray().Add(FormOf("road", {PointAt(kCenter, 10.0, 0.0), PointAt(kRight, 9.0, 4.0)}));
  section.SetShiftData(NurReal(), NurReal());
  EXPECT_EQ(section.GetBuildFormArray()[0].GetComposedPntArray()[0].GetCLDist(), 0.0);
  EXPECT_FALSE(section.GetShiftDist().IsSet());
  section.SetShiftData(0.0, 1.0);
  EXPECT_EQ(section.GetBuildFormArray()[0].GetComposedPntArray()[0].GetCLDist(), 1.0);
  EXPECT_EQ(section.GetBuildFormArray()[0].GetComposedPntArray()[1].GetCLDist(), 5.0);
}

TEST(XSectionSwapLR, GivesAZeroNoSign) {
  VornXSection section;
  section.GetBuildFormArray().Add(FormOf("road", {PointAt(kCenter, 10.0, 0.0), PointAt(kRight, 9.0, 4.0)}));
  section.SwapLR();
  const VornComposedPnt& center = section.GetBuildFormArray()[0].GetComposedPntArray()[0];
  EXPECT_FALSE(std::signbit(center.GetCLDist().Value()));
  EXPECT_FALSE(std::signbit(center.GetX().Value()));
}

}  // namespace
