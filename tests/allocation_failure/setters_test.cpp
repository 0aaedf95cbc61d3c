#include "tests/allocation_failure/setters.h"

#include <gtest/gtest.h>

#include "tests/allocation_failure/full_objects.h"

// What objects of the model keep when memory runs out while they take texts, collections and parts.

namespace {

using allocation_test::ExpectOldOrNew;
using allocation_test::ExpectTaken;
using allocation_test::FullForm;
using allocation_test::FullSection;
using allocation_test::FullSet;
using allocation_test::kNewName;
using allocation_test::kSurface;

const CString kText(kNewName);

TEST(ModelWithoutMemory, TakesTextsOrNot) {
  const VornXSection section = FullSection(20.0);
  ExpectTaken(section, kText, &VornXSection::SetName, &VornXSection::SetDirectionAngle, &VornXSection::SetTargetPntID);
  ExpectTaken(VornXSections(), kText, &VornXSections::SetRefAlign, &VornXSections::SetRefVertical,
              &VornXSections::SetProjectPhase);
  const VornExistingBuildForm& ground = section.GetExistingBuildFormArray()[0];
  ExpectTaken(ground, kText, &VornExistingBuildForm::SetName);
  ExpectTaken(ground.GetComposedPntArray()[0], kText, &VornExistingComposedPnt::SetName);

  const VornFormCtrlTarget target = section.GetBuildFormArray()[0].GetFormCtrlTargetArray()[0];
  ExpectTaken(VornFormCtrlTarget(), kText, &VornFormCtrlTarget::SetCode, &VornFormCtrlTarget::SetTargetScope,
              &VornFormCtrlTarget::SetTargetRegio);
  const VornFormCtrlTargetPnt& point = target.GetTargetPntArray()[0];
  ExpectTaken(point, kText, &VornFormCtrlTargetPnt::SetBuildFormName, &VornFormCtrlTargetPnt::SetCode);
  ExpectOldOrNew(point, [](VornFormCtrlTargetPnt& changing) { changing.Set(30.0, kText, kText, true); });

  ExpectTaken(VornFileInfo(), kText, &VornFileInfo::SetNote);
  ExpectTaken(VornBuildItem(kSurface), kText, &VornBuildItem::SetName);
}

TEST(ModelWithoutMemory, TakesAWorkTypeOrNot) {
  using Type = VornStructureType::Type;
  VornStructureType type;
  ExpectTaken(type, kText, &VornStructureType::SetJobName, &VornStructureType::SetCompany,
              &VornStructureType::SetStationType);
  ExpectOldOrNew(type, [](VornStructureType& changing) { changing.SetType(kText); });
  ExpectOldOrNew(type, [](VornStructureType& changing) { changing.SetType(Type::RiverCoastErosionControl); });
  type.SetJobName(kText);
  allocation_test::ExpectNoAllocation(type, [](VornStructureType& changing) { changing.Initialize(); });
}

TEST(ModelWithoutMemory, TakesCollectionsOrNot) {
  const VornXSections set = FullSet();
  const VornXSection& section = set.GetXSectionArray()[0];
  const VornBuildForm& form = section.GetBuildFormArray()[0];
  ExpectTaken(VornXSections(), set.GetXSectionArray(), &VornXSections::SetXSectionArray);
  ExpectTaken(VornXSections(), set.GetFormCtrlTargetArray(), &VornXSections::SetFormCtrlTargetArray);
  ExpectTaken(VornXSection(), section.GetBuildFormArray(), &VornXSection::SetBuildFormArray);
  ExpectTaken(VornXSection(), section.GetExistingBuildFormArray(), &VornXSection::SetExistingBuildFormArray);
  ExpectTaken(VornBuildForm(), form.GetComposedPntArray(), &VornBuildForm::SetComposedPntArray);
  ExpectTaken(VornBuildForm(), form.GetFormCtrlTargetArray(), &VornBuildForm::SetFormCtrlTargetArray);
  ExpectTaken(VornBuildForm(), form.GetCrossLeft(), &VornBuildForm::SetCrossLeft, &VornBuildForm::SetCrossRight);
  ExpectTaken(VornExistingBuildForm(), section.GetExistingBuildFormArray()[0].GetComposedPntArray(),
              &VornExistingBuildForm::SetComposedPntArray);
}

TEST(ModelWithoutMemory, TakesCollectionsOverOthersOrNot) {
  const VornXSection section = FullSection(20.0);
  Vorn_BuildFormArray forms;
  forms.Add(FullForm(kNewName));
  ExpectTaken(section, forms, &VornXSection::SetBuildFormArray);
  VornExistingBuildFormArray grounds = section.GetExistingBuildFormArray();
  grounds[0].SetName(kText);
  ExpectTaken(section, grounds, &VornXSection::SetExistingBuildFormArray);
  const VornBuildForm& form = section.GetBuildFormArray()[0];
  ExpectTaken(form, forms[0].GetFormCtrlTargetArray(), &VornBuildForm::SetFormCtrlTargetArray);
  Vorn_ComposedPntArray points = form.GetComposedPntArray();
  points[1].SetCode(kText);
  ExpectTaken(form, points, &VornBuildForm::SetComposedPntArray);
}

}  // namespace
