// The build forms of a section as a collection: numbering, order, searches, and the computations of every form. What
// becomes of derived forms is tested in derived_forms_test.cpp.

#include "vorn/model/build_form_array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>
#include <vector>

#include "tests/model/editions.h"
#include "tests/model/model_builders.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/exceptions.h"

namespace {

using model_test::Each;
using model_test::FormOf;
using model_test::NamesOf;
using model_test::PointAt;
using model_test::PointWith;
using model_test::TargetOn;
using test_support::EditionScope;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

using ControlItem = VornFormCtrlTarget::ControlItem;
using DataType = VornComposedPnt::DataType;
using TargetPntType = VornFormCtrlTarget::TargetPntType;

constexpr std::uint32_t kNone = 0xFFFFFFFF;
constexpr auto kCenter = VornLocation::Center;
constexpr auto kLeft = VornLocation::Left;
constexpr auto kRight = VornLocation::Right;

VornBuildForm Numbered(std::uint32_t serialID, std::string_view name = "brought") {
  VornBuildForm form = FormOf(name, {});
  form.SetSerialID(serialID);
  return form;
}

/// Forms added one after the other, none of which brings a serial.
Vorn_BuildFormArray FormsNamed(std::initializer_list<std::string_view> names) {
  Vorn_BuildFormArray forms;
  for (const std::string_view name : names) forms.Add(FormOf(name, {}));
  return forms;
}

/// Three forms of which none is the design surface, nor the org surface; the next serial is 10.
Vorn_BuildFormArray FormsWithoutSurface() {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b", "c"});
  forms[0].SetOrgSurface(false);
  for (const int index : {0, 1, 2}) {
    forms[index].SetSerialID(static_cast<std::uint32_t>(7 + index));
    forms.SetSerialID(index, false);
  }
  return forms;
}

std::vector<std::uint32_t> Serials(const Vorn_BuildFormArray& forms) {
  return Each(forms, &VornBuildForm::GetSerialID);
}

std::vector<bool> OrgSurfaces(const Vorn_BuildFormArray& forms) { return Each(forms, &VornBuildForm::IsOrgSurface); }

// --- adding --------------------------------------------------------------------------------------------------------

TEST(BuildFormArray, HandsOutSerialsFromOneOnWhenItIsNew) {
  const Vorn_BuildFormArray forms;
  EXPECT_TRUE(forms.IsEmpty());
  EXPECT_EQ(forms.GetNextSerialID(), 1u);
}

TEST(BuildFormArrayAdd, MakesTheFirstFormTheDesignSurfaceAndTheOrgSurface) {
  const Vorn_BuildFormArray forms = FormsNamed({"a", "b", "c"});
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "c"));
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u, 2u));
  EXPECT_THAT(OrgSurfaces(forms), ElementsAre(true, false, false));
  EXPECT_EQ(forms.GetNextSerialID(), 3u);
}

TEST(BuildFormArrayAdd, ReturnsTheIndexOfTheNewForm) {
  Vorn_BuildFormArray forms;
  const VornBuildForm form;
  for (const int index : {0, 1, 2, 3}) EXPECT_EQ(index < 2 ? forms.Add(form) : forms.Add(VornBuildForm()), index);
}

TEST(BuildFormArrayAdd, AddsACopyAndLeavesTheOriginalAlone) {
  Vorn_BuildFormArray forms;
  const VornBuildForm original = FormOf("road", {PointAt(kCenter, 100.0, 0.0)});
  forms.Add(original);
  EXPECT_EQ(original.GetSerialID(), kNone);
  EXPECT_FALSE(original.IsOrgSurface());
  EXPECT_EQ(forms[0].GetName(), "road");
  EXPECT_EQ(forms[0].GetComposedPntArray().GetSize(), 1);
}

TEST(BuildFormArrayAdd, MakesTheFirstFormTheDesignSurfaceWhateverSerialItBrings) {
  Vorn_BuildFormArray forms;
  forms.Add(Numbered(7));
  EXPECT_THAT(Serials(forms), ElementsAre(0u));
  EXPECT_EQ(forms.GetNextSerialID(), 1u);
}

TEST(BuildFormArrayAdd, KeepsASerialThatAFormBringsAndRaisesTheNextOneAboveIt) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  forms.Add(Numbered(2));  // equal to the next serial
  EXPECT_EQ(forms.GetNextSerialID(), 3u);
  forms.Add(Numbered(7));
  EXPECT_EQ(forms.GetNextSerialID(), 8u);
  forms.Add(Numbered(5));
  EXPECT_EQ(forms.GetNextSerialID(), 8u);
  forms.Add(VornBuildForm());
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u, 2u, 7u, 5u, 8u));
}

TEST(BuildFormArrayAdd, MarksAFormThatJoinsAfterTheSurfaceIsLostButNumbersItAsAnyOther) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms.Add(VornBuildForm());
  forms.Add(Numbered(30));
  EXPECT_THAT(Serials(forms), ElementsAre(7u, 8u, 9u, 10u, 30u));
  EXPECT_THAT(OrgSurfaces(forms), ElementsAre(false, false, false, true, true));
}

TEST(BuildFormArrayAdd, MarksAFormThatBringsTheSurfaceBack) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms.Add(Numbered(0));
  EXPECT_THAT(Serials(forms), ElementsAre(7u, 8u, 9u, 0u));
  EXPECT_THAT(OrgSurfaces(forms), ElementsAre(false, false, false, true));
  forms.Add(VornBuildForm());  // the surface need not stand first
  EXPECT_FALSE(forms[4].IsOrgSurface());
}

TEST(BuildFormArrayAdd, TakesNoMarkAway) {
  Vorn_BuildFormArray forms = FormsNamed({"a"});
  VornBuildForm marked;
  marked.SetOrgSurface(true);
  forms.Add(marked);
  EXPECT_TRUE(forms[1].IsOrgSurface());
}

TEST(BuildFormArrayAdd, StartsWithASurfaceAgainButNotWithTheSerials) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b", "c"});
  forms.RemoveAll();
  EXPECT_EQ(forms.GetNextSerialID(), 3u);
  forms.Add(VornBuildForm());
  forms.Add(VornBuildForm());
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 3u));
}

TEST(BuildFormArrayAdd, AddsAFormOfItsOwn) {
  Vorn_BuildFormArray forms(FormsNamed({"a", "b"}));  // full: the next growth moves the forms
  EXPECT_EQ(forms.Add(forms[0]), 2);
  EXPECT_EQ(forms.Add(forms[1]), 3);
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "a", "b"));
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u, 0u, 1u));
}

// --- inserting -----------------------------------------------------------------------------------------------------

TEST(BuildFormArrayInsertAt, InsertsACopyBeforeTheIndex) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  const VornBuildForm original = FormOf("x", {});
  forms.InsertAt(1, original);
  forms.InsertAt(3, FormOf("y", {}));
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "x", "b", "y"));
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 2u, 1u, 3u));
  EXPECT_EQ(original.GetSerialID(), kNone);
}

TEST(BuildFormArrayInsertAt, MakesAFormTheDesignSurfaceInFrontWhenThereIsNone) {
  for (const std::uint32_t brought : {kNone, 3u, 20u}) {
    Vorn_BuildFormArray forms = FormsWithoutSurface();
    forms.InsertAt(0, Numbered(brought));
    EXPECT_THAT(Serials(forms), ElementsAre(0u, 7u, 8u, 9u));
    EXPECT_EQ(forms.GetNextSerialID(), 10u);
  }
  Vorn_BuildFormArray empty;
  empty.InsertAt(0, Numbered(20));
  EXPECT_THAT(Serials(empty), ElementsAre(0u));
}

TEST(BuildFormArrayInsertAt, NumbersAFormInFrontAsAnyOtherWhenThereIsASurfaceAnywhere) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms[2].SetSerialID(0);
  forms.InsertAt(0, VornBuildForm());
  EXPECT_THAT(Serials(forms), ElementsAre(10u, 7u, 8u, 0u));
}

TEST(BuildFormArrayInsertAt, NumbersAFormElsewhereAsAnyOther) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms.InsertAt(1, VornBuildForm());
  forms.InsertAt(2, Numbered(20));
  forms.InsertAt(5, Numbered(15));
  EXPECT_THAT(Serials(forms), ElementsAre(7u, 10u, 20u, 8u, 9u, 15u));
  EXPECT_EQ(forms.GetNextSerialID(), 21u);
}

TEST(BuildFormArrayInsertAt, MarksNoOrgSurface) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms.InsertAt(2, VornBuildForm());
  forms.InsertAt(0, VornBuildForm());
  Vorn_BuildFormArray empty;
  empty.InsertAt(0, VornBuildForm());
  EXPECT_THAT(OrgSurfaces(forms), testing::Each(false));
  EXPECT_THAT(OrgSurfaces(empty), testing::Each(false));
}

TEST(BuildFormArrayInsertAt, RefusesANegativeIndexAndStaysAsItWas) {
  Vorn_BuildFormArray forms = FormsNamed({"a"});
  EXPECT_THROW(forms.InsertAt(-1, VornBuildForm()), CInvalidArgException);
  EXPECT_THAT(NamesOf(forms), ElementsAre("a"));
  EXPECT_EQ(forms.GetNextSerialID(), 1u);
}

TEST(BuildFormArrayInsertAt, InsertsAFormOfItsOwn) {
  Vorn_BuildFormArray forms(FormsNamed({"a", "b"}));
  forms.InsertAt(0, forms[1]);
  forms.Reserve(10);  // from here on the forms move within their place
  forms.InsertAt(0, forms[1]);
  forms.InsertAt(1, forms[3]);
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "b", "a", "b"));
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u, 1u, 0u, 1u));
}

// --- replacing -----------------------------------------------------------------------------------------------------

TEST(BuildFormArraySetAt, PutsACopyOverTheForm) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b", "c"});
  const VornBuildForm original = FormOf("x", {PointAt(kCenter, 1.0, 0.0)});
  forms.SetAt(1, original);
  forms.SetAt(2, Numbered(8, "y"));
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "x", "y"));
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 3u, 8u));
  EXPECT_EQ(forms[1].GetComposedPntArray().GetSize(), 1);
  EXPECT_EQ(original.GetSerialID(), kNone);
  EXPECT_EQ(forms.GetNextSerialID(), 9u);
}

TEST(BuildFormArraySetAt, MakesTheFirstFormTheDesignSurfaceWhenThereIsNone) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms.SetAt(0, Numbered(20));
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 8u, 9u));
  EXPECT_EQ(forms.GetNextSerialID(), 10u);
  EXPECT_THAT(OrgSurfaces(forms), testing::Each(false));
}

TEST(BuildFormArraySetAt, NumbersAnotherFormAsAnyWhenThereIsNoSurface) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms.SetAt(1, VornBuildForm());
  EXPECT_THAT(Serials(forms), ElementsAre(7u, 10u, 9u));
  EXPECT_THAT(OrgSurfaces(forms), testing::Each(false));
}

TEST(BuildFormArraySetAt, NumbersAFormThatReplacesTheSurfaceAsAnyOther) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  forms.SetAt(0, VornBuildForm());
  EXPECT_THAT(Serials(forms), ElementsAre(2u, 1u));
}

TEST(BuildFormArraySetAt, DoesNothingOutsideTheArray) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  for (const int outside : {-1, 2, 100}) forms.SetAt(outside, Numbered(50, "x"));
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b"));
  EXPECT_EQ(forms.GetNextSerialID(), 2u);
  Vorn_BuildFormArray empty;
  empty.SetAt(0, VornBuildForm());
  EXPECT_TRUE(empty.IsEmpty());
}

TEST(BuildFormArraySetAt, TakesAFormOfItsOwn) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  forms.SetAt(1, forms[1]);
  forms.SetAt(0, forms[1]);
  EXPECT_THAT(NamesOf(forms), ElementsAre("b", "b"));
  EXPECT_THAT(Serials(forms), ElementsAre(1u, 1u));
}

// --- numbering in place --------------------------------------------------------------------------------------------

TEST(BuildFormArraySetSerialID, MakesTheFirstFormTheDesignSurfaceWhenAsked) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms[1].SetSerialID(0);  // even beside another one
  forms.SetSerialID(0, true);
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 0u, 9u));
  EXPECT_EQ(forms.GetNextSerialID(), 10u);
}

TEST(BuildFormArraySetSerialID, NumbersTheFirstFormAsAnyOtherWhenNotAsked) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms[0].SetSerialID(kNone);
  forms.SetSerialID(0, false);
  EXPECT_THAT(Serials(forms), ElementsAre(10u, 8u, 9u));
  EXPECT_EQ(forms.GetNextSerialID(), 11u);
}

TEST(BuildFormArraySetSerialID, NumbersALaterFormAsAnyOtherEvenWhenAsked) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  forms[1].SetSerialID(kNone);
  forms[2].SetSerialID(20);
  for (const int index : {1, 2}) forms.SetSerialID(index, true);
  EXPECT_THAT(Serials(forms), ElementsAre(7u, 10u, 20u));
  EXPECT_EQ(forms.GetNextSerialID(), 21u);
}

TEST(BuildFormArraySetSerialID, RefusesAnIndexOutsideTheArray) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  for (const int outside : {-1, 2}) EXPECT_THROW(forms.SetSerialID(outside, true), CInvalidArgException);
  EXPECT_THROW(Vorn_BuildFormArray().SetSerialID(0, true), CInvalidArgException);
}

TEST(BuildFormArraySetSerialID, IsLeftToTheOwnerOfFormsThatWereRead) {
  test_support::XmlTree tree = test_support::XmlTree::Parse(
      "<root><tsf:BuildForm name='a'/><tsf:BuildForm name='b'/><tsf:BuildForm name='c'/><tsf:Other/></root>");
  test_support::XmlTreeCursor cursor(tree);
  ASSERT_TRUE(cursor.Child());
  Vorn_BuildFormArray forms;
  ASSERT_TRUE(forms.fromXML(&cursor));
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "c"));
  EXPECT_THAT(Serials(forms), testing::Each(kNone));
  for (const int index : {0, 1, 2}) forms.SetSerialID(index, true);
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u, 2u));
}

// --- appending and copying -----------------------------------------------------------------------------------------

TEST(BuildFormArrayAppend, NumbersTheFormsAnewBehindTheNumbersThatAddingGaveThem) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  const Vorn_BuildFormArray other = FormsNamed({"x", "y"});
  EXPECT_EQ(forms.Append(other), 2);
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "x", "y"));
  // The surface of the other array brings 0, which raises nothing; its second form brings 1.
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u, 2u, 3u));
  EXPECT_EQ(forms.GetNextSerialID(), 4u);
  EXPECT_THAT(Serials(other), ElementsAre(0u, 1u));
}

TEST(BuildFormArrayAppend, LeavesGapsBehindFormsWithoutASerial) {
  Vorn_BuildFormArray other = FormsNamed({"x", "y"});
  for (VornBuildForm& form : other) form.SetSerialID(kNone);
  Vorn_BuildFormArray forms = FormsNamed({"a"});
  EXPECT_EQ(forms.Append(other), 1);
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 2u, 4u));
  EXPECT_EQ(forms.GetNextSerialID(), 5u);
}

TEST(BuildFormArrayAppend, LeavesANewArrayWithoutASurfaceButWithTwoOrgSurfaces) {
  Vorn_BuildFormArray other;
  other.SetSize(2);
  Vorn_BuildFormArray forms;
  EXPECT_EQ(forms.Append(other), 0);
  EXPECT_THAT(Serials(forms), ElementsAre(1u, 3u));
  EXPECT_THAT(OrgSurfaces(forms), ElementsAre(true, true));
  EXPECT_EQ(forms.GetNextSerialID(), 4u);
}

TEST(BuildFormArrayAppend, AppendsNothingOfAnEmptyArray) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  EXPECT_EQ(forms.Append(Vorn_BuildFormArray()), 2);
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u));
  EXPECT_EQ(forms.GetNextSerialID(), 2u);
}

TEST(BuildFormArrayAppend, CanBeAppendedToItself) {
  Vorn_BuildFormArray forms(FormsNamed({"a", "b"}));
  EXPECT_EQ(forms.Append(forms), 2);
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "a", "b"));
  EXPECT_THAT(Serials(forms), ElementsAre(0u, 1u, 2u, 3u));
}

TEST(BuildFormArray, CopiesTheFormsAndTheNextSerial) {
  const Vorn_BuildFormArray original = FormsNamed({"a", "b"});
  Vorn_BuildFormArray copy = FormsNamed({"x", "y", "z"});
  copy = original;
  EXPECT_THAT(NamesOf(copy), ElementsAre("a", "b"));
  EXPECT_THAT(Serials(copy), ElementsAre(0u, 1u));
  EXPECT_EQ(copy.GetNextSerialID(), 2u);
  copy[0].SetName("changed", false);
  EXPECT_EQ(original[0].GetName(), "a");
  const Vorn_BuildFormArray& self = copy;
  copy = self;
  EXPECT_THAT(NamesOf(copy), ElementsAre("changed", "b"));
}

// --- order ---------------------------------------------------------------------------------------------------------

VornBuildForm StartingAt(std::string_view name, NurReal height) {
  return FormOf(name, {PointAt(kCenter, height, 0.0), PointAt(kRight, -1000.0, 2.0)});
}

Vorn_BuildFormArray FormsOf(std::initializer_list<VornBuildForm> list) {
  Vorn_BuildFormArray forms;
  for (const VornBuildForm& form : list) forms.Add(form);
  return forms;
}

TEST(BuildFormArraySort, PutsTheLowestStartPointFirst) {
  Vorn_BuildFormArray forms =
      FormsOf({StartingAt("c", 30.0), StartingAt("a", -10.0), StartingAt("d", 40.0), StartingAt("b", 20.0)});
  forms.Sort();
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "c", "d"));
}

TEST(BuildFormArraySort, TakesTheFormsAlongWholeAndNumbersNothing) {
  Vorn_BuildFormArray forms = FormsOf({StartingAt("b", 20.0), StartingAt("a", 10.0)});
  forms.Sort();
  EXPECT_THAT(Serials(forms), ElementsAre(1u, 0u));
  EXPECT_THAT(OrgSurfaces(forms), ElementsAre(false, true));
  EXPECT_EQ(forms[0].GetComposedPntArray()[0].GetGh(), 10.0);
  EXPECT_EQ(forms[1].GetComposedPntArray().GetSize(), 2);
  EXPECT_EQ(forms.GetNextSerialID(), 2u);
}

TEST(BuildFormArraySort, LeavesFormsWithoutPointsInTheirPlacesAndOrdersTheOthersAcrossThem) {
  Vorn_BuildFormArray forms = FormsOf({FormOf("-0", {}), StartingAt("c", 30.0), FormOf("-2", {}), StartingAt("b", 20.0),
                                       StartingAt("a", 10.0), FormOf("-5", {})});
  forms.Sort();
  EXPECT_THAT(NamesOf(forms), ElementsAre("-0", "a", "-2", "b", "c", "-5"));
}

TEST(BuildFormArraySort, OrdersHeightsThatAreAMicrometreApart) {
  Vorn_BuildFormArray forms = FormsOf({StartingAt("b", 1e-6), StartingAt("a", 0.0)});
  forms.Sort();
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b"));
}

TEST(BuildFormArraySort, LosesNoFormOfOneHeight) {
  Vorn_BuildFormArray forms =
      FormsOf({StartingAt("b", 20.0), StartingAt("c", 20.0000001), StartingAt("a", 10.0), StartingAt("d", 20.0)});
  forms.Sort();
  EXPECT_EQ(forms[0].GetName(), "a");
  EXPECT_THAT(NamesOf(forms), UnorderedElementsAre("a", "b", "c", "d"));
}

TEST(BuildFormArraySort, TakesAStartPointWithoutAHeightForOneAtZero) {
  Vorn_BuildFormArray forms = FormsOf({StartingAt("c", 10.0), StartingAt("b", NurReal()), StartingAt("a", -10.0)});
  forms.Sort();
  EXPECT_THAT(NamesOf(forms), ElementsAre("a", "b", "c"));
}

TEST(BuildFormArraySort, SortsNothingInAnEmptyArray) {
  Vorn_BuildFormArray forms;
  forms.Sort();
  EXPECT_TRUE(forms.IsEmpty());
}

// --- searches ------------------------------------------------------------------------------------------------------

TEST(BuildFormArrayFind, FindsTheFirstFormWithTheSerial) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b", "c", "d"});
  forms[2].SetSerialID(7);
  forms[3].SetSerialID(7);
  EXPECT_EQ(forms.Find(7u), 2);
  EXPECT_EQ(forms.Find(7), 2);
  EXPECT_EQ(forms.Find(0u), 0);
  EXPECT_EQ(forms.Find(0), 0);
  EXPECT_EQ(forms.Find(3u), -1);
  EXPECT_EQ(forms.Find(-1), -1);
  EXPECT_EQ(Vorn_BuildFormArray().Find(0u), -1);
}

TEST(BuildFormArrayFind, FindsANameIgnoringCase) {
  const Vorn_BuildFormArray forms = FormsNamed({"pave", "ROAD", "road"});
  EXPECT_EQ(forms.Find("Road", -1), 1);
  EXPECT_EQ(forms.Find("PAVE", -1), 0);
  EXPECT_EQ(forms.Find("roa", -1), -1);
  EXPECT_EQ(forms.Find("", -1), -1);
}

TEST(BuildFormArrayFind, FindsANameFromTheStartOn) {
  const Vorn_BuildFormArray forms = FormsNamed({"a", "b", "a", "b"});
  EXPECT_EQ(forms.Find("a", 0), 0);
  EXPECT_EQ(forms.Find("a", 1), 2);
  EXPECT_EQ(forms.Find("a", 2), 2);
  EXPECT_EQ(forms.Find("a", 3), -1);
  EXPECT_EQ(forms.Find("b", 3), 3);
}

TEST(BuildFormArrayFind, FindsNoNameFromOutsideTheArray) {
  const Vorn_BuildFormArray forms = FormsNamed({"a", "a"});
  for (const int outside : {-2, 2, 100}) EXPECT_EQ(forms.Find("a", outside), -1) << outside;
  EXPECT_EQ(Vorn_BuildFormArray().Find("a", -1), -1);
  EXPECT_EQ(Vorn_BuildFormArray().Find("a", 0), -1);
}

TEST(BuildFormArrayFind, FindsADerivedFormFromTheStartOn) {
  Vorn_BuildFormArray forms = FormsNamed({"a", "b", "c", "d"});
  for (const int index : {1, 3}) forms[index].SetParentID(5);
  EXPECT_EQ(forms.FindParent(5, -1), 1);
  EXPECT_EQ(forms.FindParent(5, 0), 1);
  EXPECT_EQ(forms.FindParent(5, 1), 1);
  EXPECT_EQ(forms.FindParent(5, 2), 3);
  EXPECT_EQ(forms.FindParent(5, 4), -1);
  EXPECT_EQ(forms.FindParent(5, -2), -1);
  EXPECT_EQ(forms.FindParent(6, -1), -1);
  EXPECT_EQ(forms.FindParent(kNone, -1), 0);
  EXPECT_EQ(Vorn_BuildFormArray().FindParent(5, -1), -1);
}

TEST(BuildFormArrayFind, TellsTheSerialOfTheFirstOrgSurface) {
  Vorn_BuildFormArray forms = FormsWithoutSurface();
  EXPECT_EQ(forms.QueryOrgSurfaceID(), kNone);
  EXPECT_EQ(Vorn_BuildFormArray().QueryOrgSurfaceID(), kNone);
  for (const int index : {1, 2}) forms[index].SetOrgSurface(true);
  EXPECT_EQ(forms.QueryOrgSurfaceID(), 8u);
  EXPECT_EQ(FormsNamed({"a"}).QueryOrgSurfaceID(), 0u);
}

/// A form with a point on each side and a target across it or along one side.
VornBuildForm MeasuredForm(bool across) {
  VornBuildForm form = FormOf("road", {PointAt(kCenter, 0.0, 0.0, "C"), PointAt(kLeft, 0.0, -1.0, "L1"),
                                       PointAt(kLeft, 0.0, -2.0, "L2"), PointAt(kRight, 0.0, 1.0, "R1")});
  form.GetFormCtrlTargetArray().Add(TargetOn("road", TargetPntType::LeftRight, {"L1", across ? "R1" : "L2"}));
  return form;
}

TEST(BuildFormArrayFind, IsMeasuredAcrossWhenAnyFormIs) {
  const EditionScope edition(VornSchema::Version41);
  EXPECT_TRUE(FormsOf({MeasuredForm(true), MeasuredForm(false)}).IsRoadWL_R());
  EXPECT_TRUE(FormsOf({MeasuredForm(false), MeasuredForm(false), MeasuredForm(true)}).IsRoadWL_R());
  EXPECT_FALSE(FormsOf({MeasuredForm(false), MeasuredForm(false)}).IsRoadWL_R());
  EXPECT_FALSE(Vorn_BuildFormArray().IsRoadWL_R());
}

// --- the computations of every form --------------------------------------------------------------------------------

VornFormCtrlTarget PointlessTarget(ControlItem item) {
  VornFormCtrlTarget target;
  target.SetControlItem(item);
  target.SetCode("L1 R1");
  return target;
}

TEST(BuildFormArrayTargets, GetTheirMissingPointsInEveryForm) {
  const EditionScope edition(VornSchema::Version20);
  Vorn_BuildFormArray forms = FormsNamed({"a", "b"});
  for (VornBuildForm& form : forms) {
    for (int i = 0; i < 2; ++i) form.GetFormCtrlTargetArray().Add(PointlessTarget(ControlItem::Width));
  }
  forms.ConvertFormCtrl(25.0);
  for (const VornBuildForm& form : forms) {
    for (const VornFormCtrlTarget& target : form.GetFormCtrlTargetArray()) {
      ASSERT_EQ(target.GetTargetPntArray().GetSize(), 2);
      EXPECT_EQ(target.GetTargetPntArray()[0].GetCumulativeDist(), 25.0);
      EXPECT_EQ(target.GetTargetPntArray()[1].GetCode(), "R1");
    }
  }
}

TEST(BuildFormArrayTargets, GetTheStationInEveryForm) {
  const EditionScope edition(VornSchema::Version41);
  Vorn_BuildFormArray forms = FormsOf({MeasuredForm(true), MeasuredForm(false)});
  VornFormCtrlTarget length = TargetOn("road", TargetPntType::TargetPnt, {"L1"});
  length.SetControlItem(ControlItem::Length);
  forms[1].GetFormCtrlTargetArray().Add(length);
  forms.RegulateFormDist(25.0);
  for (const VornBuildForm& form : forms) {
    for (const VornFormCtrlTargetPnt& point : form.GetFormCtrlTargetArray()[0].GetTargetPntArray()) {
      EXPECT_EQ(point.GetCumulativeDist(), 25.0);
    }
  }
  EXPECT_EQ(forms[1].GetFormCtrlTargetArray()[1].GetTargetPntArray()[0].GetCumulativeDist(), 20.0);
}

/// A form whose points have input values and no positions yet.
VornBuildForm UnplacedForm(std::string_view type, double dist, double height) {
  VornBuildForm form = FormOf("road", {PointWith(kCenter, DataType::WidthHeight, dist, height),
                                       PointWith(kRight, DataType::WidthHeight, 2.0, 0.5)});
  form.SetXSectType(CString(type));
  return form;
}

std::vector<double> OuterHeights(const Vorn_BuildFormArray& forms) {
  std::vector<double> heights;
  for (const VornBuildForm& form : forms) heights.push_back(form.GetComposedPntArray()[1].GetGh().Value());
  return heights;
}

constexpr std::string_view kPlan = u8"盛土工"_cp932;
constexpr std::string_view kNoPlan = u8"路盤"_cp932;

TEST(BuildFormArrayPositions, AreRecomputedInEveryFormAndReportTheLastPlanSurface) {
  const EditionScope edition(VornSchema::Version41);
  Vorn_BuildFormArray forms =
      FormsOf({UnplacedForm(kPlan, 0.25, 1.0), UnplacedForm(kPlan, 0.5, 2.0), UnplacedForm(kNoPlan, 0.75, 3.0)});
  forms[2].SetParentID(0);
  NurReal dist;
  NurReal height;
  forms.RegulateComposedPnt(100.0, dist, height);
  EXPECT_THAT(OuterHeights(forms), ElementsAre(101.5, 102.5, 103.5));
  EXPECT_EQ(dist, 0.5);
  EXPECT_EQ(height, 2.0);
}

TEST(BuildFormArrayPositions, ReportNothingWithoutAPlanSurface) {
  const EditionScope edition(VornSchema::Version41);
  Vorn_BuildFormArray forms = FormsOf({UnplacedForm(kNoPlan, 0.25, 1.0)});
  NurReal dist = 7.0;
  NurReal height = 8.0;
  forms.RegulateComposedPnt(100.0, dist, height);
  EXPECT_EQ(dist, 7.0);
  EXPECT_EQ(height, 8.0);
}

TEST(BuildFormArrayPositions, AreRecomputedAtOneCenterHeightWhenThatReceivesTheReportedHeight) {
  const EditionScope edition(VornSchema::Version41);
  Vorn_BuildFormArray forms = FormsOf({UnplacedForm(kPlan, 0.0, 1.0), UnplacedForm(kPlan, 0.0, 2.0)});
  NurReal dist;
  NurReal height = 100.0;
  forms.RegulateComposedPnt(height, dist, height);
  EXPECT_THAT(OuterHeights(forms), ElementsAre(101.5, 102.5));
  EXPECT_EQ(height, 2.0);
}

TEST(BuildFormArrayPositions, AreRecomputedFromTheCenterOutwardInFormsThatAreNotDerived) {
  Vorn_BuildFormArray forms = FormsOf({UnplacedForm(kPlan, 0.25, 1.0), UnplacedForm(kNoPlan, 0.5, 2.0),
                                       UnplacedForm(kNoPlan, 0.75, 3.0), UnplacedForm(kNoPlan, 0.75, 4.0)});
  forms[1].SetParentID(0);
  forms[3].SetParentID(99);
  forms.CalcPointGhDist(100.0);
  EXPECT_THAT(OuterHeights(forms), ElementsAre(101.5, kNurUnsetReal, 103.5, kNurUnsetReal));
}

TEST(BuildFormArrayPositions, AreRecomputedAtTheCenterHeightThatAPointOfTheirsHad) {
  Vorn_BuildFormArray forms = FormsOf({UnplacedForm(kPlan, 0.0, 1.0), UnplacedForm(kPlan, 0.0, 2.0)});
  NurReal& height = forms[0].GetComposedPntArray()[0].GetGh();
  height = 100.0;
  forms.CalcPointGhDist(height);
  EXPECT_THAT(OuterHeights(forms), ElementsAre(101.5, 102.5));
}

TEST(BuildFormArrayNumbering, GoesOnBehindACopy) {
  Vorn_BuildFormArray forms;
  for (int i = 0; i < 3; ++i) forms.Add(VornBuildForm());
  Vorn_BuildFormArray copy;
  copy.Copy(forms);
  EXPECT_EQ(copy[copy.Add(VornBuildForm())].GetSerialID(), 3U);
}

TEST(BuildFormArrayNumbering, LeavesTheEmptyFormsBeforeOneInsertedBehindTheEnd) {
  Vorn_BuildFormArray forms;
  forms.InsertAt(2, VornBuildForm());
  ASSERT_EQ(forms.GetSize(), 3);
  EXPECT_EQ(forms[0].GetSerialID(), 0xFFFFFFFF);
  EXPECT_EQ(forms[1].GetSerialID(), 0xFFFFFFFF);
  EXPECT_EQ(forms[2].GetSerialID(), 1U);
}

}  // namespace
