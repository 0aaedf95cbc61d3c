#include <gtest/gtest.h>

#include "tests/allocation_failure/full_objects.h"
#include "tests/allocation_failure/old_or_new.h"

// What forms, sections, sets and control targets keep when memory runs out while they are edited.

namespace {

using allocation_test::AllowAllocations;
using allocation_test::ExpectOldOrNew;
using allocation_test::FullForm;
using allocation_test::FullPoint;
using allocation_test::FullSection;
using allocation_test::FullSet;
using allocation_test::IsOldOrNewThroughout;
using allocation_test::kFillType;
using allocation_test::kLayer;
using allocation_test::kNewName;
using allocation_test::kSurface;
using allocation_test::Leaves;
using allocation_test::State;
using allocation_test::StateOf;
using PntType = VornComposedPnt::PntType;

// --- control targets -------------------------------------------------------------------------------------------------

TEST(ControlTargetsWithoutMemory, AreAsTheyWere) {
  const Vorn_FormCtrlTargetArray targets = FullForm(kSurface).GetFormCtrlTargetArray();
  using Targets = Vorn_FormCtrlTargetArray;
  ExpectOldOrNew(targets, [](Targets& changing) { changing.ChangeBuildName(kSurface, kNewName); });
  ExpectOldOrNew(targets, [](Targets& changing) { changing.Regulate(); });
  ExpectOldOrNew(targets[3], [](VornFormCtrlTarget& target) { target.RegulatePnt(20.0, nullptr); });
}

// --- build forms -----------------------------------------------------------------------------------------------------

TEST(BuildFormWithoutMemory, IsAsItWas) {
  const VornBuildForm form = FullForm(kSurface);
  ExpectOldOrNew(form, [](VornBuildForm& changing) { changing.SetName(kNewName, true); });
  ExpectOldOrNew(form, [](VornBuildForm& changing) { changing.SetXSectType(kNewName, 5); });
  ExpectOldOrNew(form, [](VornBuildForm& changing) {
    NurReal height = 1.0, left = 2.0, right = 3.0;
    try {
      EXPECT_TRUE(changing.QueryPaveInfo(height, left, right));
    } catch (...) {
      EXPECT_EQ(height, NurReal(1.0));
      throw;
    }
  });
  ExpectOldOrNew(form, [](VornBuildForm& changing) { changing.CalcPointGhDist(12.0); });
}

TEST(BuildFormWithoutMemory, HasNoPointInBetween) {
  const VornBuildForm form = FullForm(kSurface);
  for (const PntType t : {PntType::Main, PntType::Sub, PntType::Both}) {
    ExpectOldOrNew(
        form, [t](VornBuildForm& changing) { changing.SetName(kNewName, 7, t); }, Leaves::EachPart);
  }
  VornBuildForm plain = model_test::FormOf(
      kSurface, {model_test::PointOn(VornLocation::Center), model_test::PointOn(VornLocation::Right)});
  ExpectOldOrNew(
      plain, [](VornBuildForm& changing) { changing.SetXSectTypeID(7); }, Leaves::EachPart);
  ExpectOldOrNew(
      plain, [](VornBuildForm& changing) { changing.SetNameID(7, PntType::Both); }, Leaves::EachPart);
  ExpectOldOrNew(
      form, [](VornBuildForm& changing) { changing.ConvertFormCtrl(20.0); }, Leaves::EachPart);
}

TEST(BuildFormsWithoutMemory, AreSortedOrNot) {
  VornXSection section = FullSection(20.0);
  section.GetBuildFormArray()[0].GetComposedPntArray()[0].SetGh(20.0);
  ExpectOldOrNew(section.GetBuildFormArray(), [](Vorn_BuildFormArray& forms) { forms.Sort(); });
}

// --- derived forms ---------------------------------------------------------------------------------------------------

TEST(DerivedFormsWithoutMemory, AreAsTheyWere) {
  const Vorn_BuildFormArray forms = FullSection(20.0).GetBuildFormArray();
  ExpectOldOrNew(forms, [](Vorn_BuildFormArray& changing) { changing.RemovedComposedPnt(0, 1); });
  ExpectOldOrNew(forms, [](Vorn_BuildFormArray& changing) { changing.CalcPavePointGhDist(1); });
  ExpectOldOrNew(forms, [](Vorn_BuildFormArray& changing) { changing.CalcPavePointGhDist(); });
  Vorn_BuildFormArray loose = forms;
  for (VornComposedPnt& point : loose[1].GetComposedPntArray()) point.SetParentID(0xFFFFFFFF);
  ExpectOldOrNew(loose, [](Vorn_BuildFormArray& changing) { changing.NormalizePaveBuildForm(); });
}

/// Adds a point to the surface; the forms derived from that are to follow.
/// @param dist its distance from the centre line; unset when it is not placed yet
void ExpectDerivedPointsEachOrNone(NurReal dist) {
  Vorn_BuildFormArray forms = FullSection(20.0).GetBuildFormArray();
  VornBuildForm second = forms[1];
  second.SetSerialID(0xFFFFFFFF);
  forms.Add(second);  // derived from the surface as well
  VornComposedPnt added = FullPoint(VornLocation::Left, -1.0, 9.7, "a code that is another one");
  added.SetCLDist(dist);
  forms[0].GetComposedPntArray().InsertAt(1, added);
  const std::uint32_t serial = forms[0].GetComposedPntArray()[1].GetSerialID();

  const State before = StateOf(forms);
  Vorn_BuildFormArray followed = forms;
  followed.AddedComposedPnt(0, serial);
  const State after = StateOf(followed);
  ASSERT_NE(before, after);
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    Vorn_BuildFormArray failing = forms;
    try {
      AllowAllocations(succeeding, [&] { failing.AddedComposedPnt(0, serial); });
      ASSERT_EQ(StateOf(failing), after);
      return;
    } catch (const std::bad_alloc&) {
      ASSERT_TRUE(IsOldOrNewThroughout(StateOf(failing), before, after)) << succeeding;
      failing.RemovedComposedPnt(0, serial);
      failing.AddedComposedPnt(0, serial);
      for (int i = 0; i < forms.GetSize(); ++i) {
        ASSERT_EQ(model_test::CodesOf(failing[i]), model_test::CodesOf(followed[i])) << succeeding;
        ASSERT_EQ(model_test::Each(failing[i].GetComposedPntArray(), &VornComposedPnt::GetParentID),
                  model_test::Each(followed[i].GetComposedPntArray(), &VornComposedPnt::GetParentID));
      }
    }
  }
}

TEST(DerivedFormsWithoutMemory, GetANewPointEachOrNot) {
  ExpectDerivedPointsEachOrNone(-1.0);
  ExpectDerivedPointsEachOrNone(NurReal());
}

// --- sections --------------------------------------------------------------------------------------------------------

TEST(SectionWithoutMemory, IsAsItWas) {
  VornXSection section = FullSection(20.0);
  section.GetBuildFormArray()[0].SetOrgSurface(false);
  section.GetBuildFormArray()[1].SetOrgSurface(true);
  ExpectOldOrNew(section, [](VornXSection& changing) { changing.SetShiftData(1.0, 2.0); });
  ExpectOldOrNew(section, [](VornXSection& changing) { changing.ClearCode(); });
  ExpectOldOrNew(section, [](VornXSection& changing) { changing.ClearConnectInfo(true); });
  ExpectOldOrNew(section, [](VornXSection& changing) { changing.RemoveFormH(); });
  ExpectOldOrNew(section, [](VornXSection& changing) { changing.SwapLR(); });
  ExpectOldOrNew(section, [](VornXSection& changing) {
    CString name = kNewName;
    try {
      changing.RemoveBuildForm(kSurface, name);
      EXPECT_EQ(name, kLayer);
    } catch (...) {
      EXPECT_EQ(name, kNewName);
      throw;
    }
  });
  CStringArray order;
  for (const char* name : {kLayer, kSurface, kLayer}) order.Add(name);
  ExpectOldOrNew(section, [&](VornXSection& changing) { changing.SortBuildForms(order); });
  order.RemoveAll();
  for (const char* name : {kLayer, kLayer, kSurface}) order.Add(name);
  ExpectOldOrNew(section, [&](VornXSection& changing) { changing.SortBuildForms(order); });
}

TEST(SectionWithoutMemory, IsSplitJoinedAndRetypedOrNot) {
  const VornXSection section = FullSection(20.0);
  ExpectOldOrNew(section,
                 [](VornXSection& changing) { VornXSection::DevideBuildForm(changing.GetBuildFormArray(), kNewName); });
  ExpectOldOrNew(section, [](VornXSection& changing) { VornXSection::MakeOneBuildForm(changing.GetBuildFormArray()); });
  const CString other = CString(kFillType) + " on the right";
  ExpectOldOrNew(section, [&](VornXSection& changing) { changing.ChangeXSectType(other, other); });
  ExpectOldOrNew(section, [&](VornXSection& changing) { changing.ChangeXSectType(kFillType, other); });
  VornXSection two = section;
  two.GetBuildFormArray()[1].SetXSectType(kFillType);
  ExpectOldOrNew(two, [&](VornXSection& changing) { changing.ChangeXSectType(other, other); });
  ExpectOldOrNew(two, [&](VornXSection& changing) { changing.ChangeXSectType(kFillType, other); });
}

TEST(SectionWithoutMemory, HasNoFormInBetween) {
  VornXSection section = FullSection(20.0);
  section.GetBuildFormArray().Add(FullForm(kSurface));
  for (VornBuildForm& form : section.GetBuildFormArray()) form.SetXSectType(kFillType);
  ExpectOldOrNew(
      section, [](VornXSection& changing) { changing.RenameBuildForm(kFillType, kSurface, kNewName); },
      Leaves::EachPart);
}

TEST(SectionWithoutMemory, TakesInACrossingOrNot) {
  const VornXSection section = FullSection(20.0);
  ExpectOldOrNew(section, [](VornXSection& changing) { changing.InsertPoint({9.25, -3.0}, VornLocation::Left); });
  ExpectOldOrNew(section, [](VornXSection& changing) { changing.ChangeCrossPoint(VornLocation::Right); });
}

TEST(SectionWithoutMemory, LosesItsCrossingsPointByPoint) {
  VornXSection section = FullSection(20.0);
  section.ChangeCrossPoint(VornLocation::Right);
  ExpectOldOrNew(
      section, [](VornXSection& changing) { changing.RemoveCrossPoint(VornLocation::Right); }, Leaves::EachPart);
}

TEST(SectionWithoutMemory, FindsItsCrossingsWhenAskedAgain) {
  VornXSection section = FullSection(20.0);
  section.InsertPoint({9.25, -3.0}, VornLocation::Left);
  section.ChangeCrossPoint(VornLocation::Right);
  VornXSection done = section;
  done.CalcCrossPoint();
  ASSERT_NE(StateOf(done), StateOf(section));
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    VornXSection failing = section;
    try {
      AllowAllocations(succeeding, [&] { failing.CalcCrossPoint(); });
      ASSERT_EQ(StateOf(failing), StateOf(done));
      return;
    } catch (const std::bad_alloc&) {
      failing.CalcCrossPoint();
      for (int i = 0; i < section.GetBuildFormArray().GetSize(); ++i) {
        // Serials may have gone to crossing points that were taken back.
        ASSERT_EQ(model_test::CodesOf(failing.GetBuildFormArray()[i]), model_test::CodesOf(done.GetBuildFormArray()[i]))
            << succeeding;
      }
    }
  }
}

// --- sets ------------------------------------------------------------------------------------------------------------

/// Opens the steps that a set takes when it is read and written.
class OpenSet : public VornXSections {
 public:
  OpenSet() : VornXSections(FullSet()) {}
  using VornXSections::ConvFormCtrlTarget;
  using VornXSections::CreateFormCtrlTargetPnt;
  using VornXSections::ReformSelf;
};

TEST(SetWithoutMemory, IsAsItWas) {
  const OpenSet set;
  ExpectOldOrNew(set, [](OpenSet& changing) { changing.ConvFormCtrlTarget(); });
  ExpectOldOrNew(set, [](OpenSet& changing) { changing.ReformSelf(); });
  ExpectOldOrNew(set, [](OpenSet& changing) { changing.ChangeRefAlign("the alignment of the road", kNewName); });
  ExpectOldOrNew(
      set, [](OpenSet& changing) { OpenSet::CreateFormCtrlTargetPnt(changing.GetFormCtrlTargetArray()[0], 30.0); });
  ExpectOldOrNew(set.GetXSectionArray(), [](Vorn_XSectionArray& sections) { sections.SwapLR(); });
  Vorn_XSectionsArray sets;
  sets.Add(FullSet());
  sets.Add(FullSet());
  ExpectOldOrNew(
      sets, [](Vorn_XSectionsArray& changing) { changing.ChangeRefAlign("the alignment of the road", kNewName); },
      Leaves::EachPart);
}

}  // namespace
