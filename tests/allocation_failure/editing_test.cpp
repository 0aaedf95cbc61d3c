#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <set>
#include <vector>

#include "tests/allocation_failure/full_objects.h"
#include "tests/allocation_failure/old_or_new.h"

// What forms, sections, sets and control targets keep when memory runs out while they are edited.

namespace {

using allocation_test::AllowAllocations;
using allocation_test::ExpectNoAllocation;
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

TEST(ControlTargetsWithoutMemory, FollowTheirSection) {
  Vorn_FormCtrlTargetArray targets = FullForm(kSurface).GetFormCtrlTargetArray();
  targets[0].SetControlItem(VornFormCtrlTarget::ControlItem::Length);
  for (VornFormCtrlTarget& target : targets) {
    for (VornFormCtrlTargetPnt& point : target.GetTargetPntArray()) point.SetBuildFormID(3);
  }
  using Targets = Vorn_FormCtrlTargetArray;
  ExpectNoAllocation(targets, [](Targets& changing) { changing.RegulateDist(30.0); });
  for (const double newDist : {30.0, kNurUnsetReal}) {
    ExpectNoAllocation(targets, [=](Targets& changing) { changing.ChangeDist(20.0, newDist, false); });
    ExpectNoAllocation(targets, [=](Targets& changing) { changing.ChangeDistH(20.0, newDist, false); });
  }
  ExpectNoAllocation(targets, [](Targets& changing) { changing.SwapBuildFormID(0, 3, 4); });
  ExpectNoAllocation(targets, [](Targets& changing) { changing.ChangeID(0, 3, 0, 1, 2, 5); });
  ExpectOldOrNew(targets, [](Targets& changing) { changing.ChangeBuildName(kSurface, 3, kNewName); });
}

// --- build forms -----------------------------------------------------------------------------------------------------

TEST(BuildFormWithoutMemory, IsAsItWas) {
  const VornBuildForm form = FullForm(kSurface);
  ExpectOldOrNew(form, [](VornBuildForm& changing) { changing.SetName(kNewName, true); });
  ExpectOldOrNew(form, [](VornBuildForm& changing) { changing.SetXSectType(kNewName, 5); });
  ExpectOldOrNew(form, [](VornBuildForm& changing) { changing.SetXSectType(kNewName); });
  ExpectOldOrNew(form, [](VornBuildForm& changing) { changing.CalcPointGhDist(12.0); });
  ExpectNoAllocation(form, [](VornBuildForm& changing) {
    NurReal dist, height;
    changing.RegulateComposedPnt(12.0, dist, height);
  });
  ExpectNoAllocation(form, [](VornBuildForm& changing) { changing.ClearConnectInfo(true); });
  VornBuildForm surface = form;
  surface.SetSerialID(0);  // that of the forms which its targets stand on
  ExpectOldOrNew(surface, [](VornBuildForm& changing) { changing.RegulateFormCtrl(kSurface, kNewName); });
}

TEST(BuildFormWithoutMemory, LeavesThePavementsOutline) {
  const VornBuildForm form = FullForm(kSurface);
  NurReal height, left, right;
  allocation_test::FailEachAllocation([&] { height = left = right = 1.0; },
                                      [&] { EXPECT_TRUE(form.QueryPaveInfo(height, left, right)); },
                                      [&] {
                                        EXPECT_EQ(height, NurReal(1.0));
                                        EXPECT_EQ(left, NurReal(1.0));
                                        EXPECT_EQ(right, NurReal(1.0));
                                      });
  EXPECT_EQ(height, NurReal(9.0));
  EXPECT_EQ(left, NurReal(-4.0));
  EXPECT_EQ(right, NurReal(4.0));
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

TEST(BuildFormsWithoutMemory, AreComputedEachOrNot) {
  const Vorn_BuildFormArray forms = FullSection(20.0).GetBuildFormArray();
  using Forms = Vorn_BuildFormArray;
  ExpectOldOrNew(
      forms, [](Forms& changing) { changing.ConvertFormCtrl(20.0); }, Leaves::EachPart);
  ExpectOldOrNew(
      forms, [](Forms& changing) { changing.CalcPointGhDist(12.0); }, Leaves::EachPart);
  ExpectNoAllocation(forms, [](Forms& changing) { changing.RegulateFormDist(30.0); });
  ExpectNoAllocation(forms, [](Forms& changing) {
    NurReal dist, height;
    changing.RegulateComposedPnt(12.0, dist, height);
  });
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

TEST(SectionWithoutMemory, IsShiftedClearedAndRegulated) {
  using ControlItem = VornFormCtrlTarget::ControlItem;
  VornXSection section = FullSection(20.0);
  section.GetBuildFormArray()[0].GetFormCtrlTargetArray()[0].SetControlItem(ControlItem::Length);
  section.InsertPoint({9.25, -3.0}, VornLocation::Left);
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.SetShiftData(1.0, 2.0); });
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.ClearCode(); });
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.ClearConnectInfo(true); });
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.RemoveFormH(); });
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.RegulateComposedPnt(); });
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.ChangeDist(20.0, 30.0, false); });
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.ChangeDistH(20.0, 30.0, false); });
  ExpectNoAllocation(section, [](VornXSection& changing) { changing.ChangeCrossPoint(VornLocation::Right); });
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
}

TEST(SectionWithoutMemory, LosesItsCrossingsPointByPoint) {
  VornXSection section = FullSection(20.0);
  section.ChangeCrossPoint(VornLocation::Right);
  ExpectOldOrNew(
      section, [](VornXSection& changing) { changing.RemoveCrossPoint(VornLocation::Right); }, Leaves::EachPart);
}

/// A point that was inserted where the design crosses the ground: no design point.
bool IsInsertedCrossing(const VornComposedPnt& point) { return !point.GetSeriesPnt() && !point.IsKePoint(); }

/// A section but for the serials of the crossing points that were inserted and the next serials: some of them may have
/// gone to crossing points that were taken back.
State StateButForCrossingSerials(VornXSection section) {
  for (VornBuildForm& form : section.GetBuildFormArray()) {
    for (VornComposedPnt& point : form.GetComposedPntArray()) {
      if (IsInsertedCrossing(point)) point.SetSerialID(kVornNoID);
    }
  }
  State state = StateOf(section);
  constexpr std::size_t kForms = 0;
  constexpr std::size_t kPoints = 2;
  for (State& form : state.parts[kForms].parts) form.parts[kPoints].own.clear();
  return state;
}

/// A section without the points of its forms.
State StateButForPoints(VornXSection section) {
  for (VornBuildForm& form : section.GetBuildFormArray()) form.SetComposedPntArray({});
  return StateOf(section);
}

std::vector<State> PointStates(const VornBuildForm& form) {
  std::vector<State> states;
  for (const VornComposedPnt& point : form.GetComposedPntArray()) states.push_back(StateOf(point));
  return states;
}

/// No two points of a form bear one serial, nor one that is still to be given away.
void ExpectSerialsOfTheirOwn(const VornXSection& section) {
  for (const VornBuildForm& form : section.GetBuildFormArray()) {
    const Vorn_ComposedPntArray& points = form.GetComposedPntArray();
    std::set<std::uint32_t> serials;
    for (const VornComposedPnt& point : points) {
      EXPECT_TRUE(serials.insert(point.GetSerialID()).second) << point.GetSerialID();
      EXPECT_LT(point.GetSerialID(), points.GetNextSerialID());
    }
  }
}

/// The crossing points of a section while they are recomputed: as they were, taken back, and found again.
struct Recomputing {
  VornXSection before;
  VornXSection takenBack;
  VornXSection found;

  explicit Recomputing(const VornXSection& section) : before(section), takenBack(section), found(section) {
    takenBack.RemoveCrossPoint(VornLocation::Left);
    takenBack.RemoveCrossPoint(VornLocation::Right);
    found.CalcCrossPoint();
  }

  /// Whether every point is one of these, whole, no design point is gone, and nothing else has changed.
  void ExpectNothingElseChanged(const VornXSection& now) const {
    ASSERT_EQ(StateButForPoints(now), StateButForPoints(before));
    for (int i = 0; i < now.GetBuildFormArray().GetSize(); ++i) {
      const VornBuildForm& form = now.GetBuildFormArray()[i];
      std::vector<State> allowed;
      for (const VornXSection* stage : {&before, &takenBack, &found}) {
        for (const State& state : PointStates(stage->GetBuildFormArray()[i])) allowed.push_back(state);
      }
      for (const State& state : PointStates(form)) EXPECT_THAT(allowed, testing::Contains(state));
      EXPECT_EQ(DesignSerials(form), DesignSerials(takenBack.GetBuildFormArray()[i]));
    }
  }

 private:
  static std::vector<std::uint32_t> DesignSerials(const VornBuildForm& form) {
    std::vector<std::uint32_t> serials;
    for (const VornComposedPnt& point : form.GetComposedPntArray()) {
      if (!IsInsertedCrossing(point)) serials.push_back(point.GetSerialID());
    }
    return serials;
  }
};

TEST(SectionWithoutMemory, FindsItsCrossingsWhenAskedAgain) {
  VornXSection section = FullSection(20.0);
  section.InsertPoint({9.25, -3.0}, VornLocation::Left);
  section.ChangeCrossPoint(VornLocation::Right);
  const Recomputing recomputing(section);
  ASSERT_TRUE(recomputing.found.IsCrossPoint());
  ASSERT_NE(StateOf(recomputing.found), StateOf(section));
  ASSERT_GT(allocation_test::AllocationsOf([copy = section]() mutable { copy.CalcCrossPoint(); }), 0u);
  for (std::ptrdiff_t succeeding = 0;; ++succeeding) {
    SCOPED_TRACE(succeeding);
    VornXSection failing = section;
    try {
      AllowAllocations(succeeding, [&] { failing.CalcCrossPoint(); });
      ASSERT_EQ(StateOf(failing), StateOf(recomputing.found));
      return;
    } catch (const std::bad_alloc&) {
      recomputing.ExpectNothingElseChanged(failing);
      failing.CalcCrossPoint();
      ASSERT_EQ(StateButForCrossingSerials(failing), StateButForCrossingSerials(recomputing.found));
      ExpectSerialsOfTheirOwn(failing);
      if (HasFailure()) return;
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
