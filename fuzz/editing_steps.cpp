#include "fuzz/editing_steps.h"

#include <iterator>

#include "fuzz/editing_model.h"
#include "host/editing/design_editor.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignEditor;

// --- steps of the editor ---------------------------------------------------------------------------------------------

/// Unset, which takes each section's own height, or a height for all.
NurReal ChooseHeight(InputReader& input) { return input.Choose(2) == 0 ? NurReal() : NurReal(input.Length()); }

void Recalc(DesignDocument& design, InputReader& input) { (void)DesignEditor(design).Recalc(ChooseHeight(input)); }

void RecalcCrossings(DesignDocument& design, InputReader& input) {
  DesignEditor editor(design);
  (void)editor.Recalc(ChooseHeight(input));
  (void)editor.RecalcCrossings();
  (void)editor.LostTargets();
}

void Mirror(DesignDocument& design, InputReader&) { (void)DesignEditor(design).Mirror(); }

void Shift(DesignDocument& design, InputReader& input) {
  const double dist = input.Length();
  (void)DesignEditor(design).Shift(dist, input.Length());
}

void Retype(DesignDocument& design, InputReader& input) {
  const CString left = ChooseText(input);
  (void)DesignEditor(design).Retype(left, ChooseText(input));
}

void SortForms(DesignDocument& design, InputReader& input) {
  CStringArray names;
  for (int i = input.Choose(4); i > 0; --i) names.Add(ChooseText(input));
  (void)DesignEditor(design).SortForms(names);
}

void RemoveForm(DesignDocument& design, InputReader& input) {
  DesignEditor editor(design);
  (void)editor.RemoveForm(ChooseText(input));
  (void)editor.LostTargets();
}

void RenameForm(DesignDocument& design, InputReader& input) {
  const CString type = ChooseText(input);
  const CString name = ChooseText(input);
  (void)DesignEditor(design).RenameForm(type, name, ChooseText(input));
}

void ClearCodes(DesignDocument& design, InputReader&) { (void)DesignEditor(design).ClearCodes(); }

void RegulateTargets(DesignDocument& design, InputReader&) { (void)DesignEditor(design).RegulateTargets(); }

// --- the library's own -----------------------------------------------------------------------------------------------

void SetShift(DesignDocument& design, InputReader& input) {
  VornXSection* const section = ChooseSection(design, input);
  const double height = input.Length();
  if (section != nullptr) section->SetShiftData(height, input.Length());
}

void InsertPoint(DesignDocument& design, InputReader& input) {
  VornXSection* const section = ChooseSection(design, input);
  const double height = input.Length();
  const double dist = input.Length();
  if (section != nullptr) section->InsertPoint({height, dist}, ChooseSide(input));
}

void ChangeCrossPoint(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->ChangeCrossPoint(ChooseSide(input));
}

void RemoveCrossPoint(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->RemoveCrossPoint(ChooseSide(input));
}

void CalcCrossPoint(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->CalcCrossPoint();
}

void SwapLR(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->SwapLR();
}

void RemoveBuildForm(DesignDocument& design, InputReader& input) {
  CString surface;
  if (VornXSection* const section = ChooseSection(design, input)) section->RemoveBuildForm(ChooseText(input), surface);
}

void ClearConnectInfo(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->ClearConnectInfo(input.Choose(2) == 0);
}

void SortByHeight(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->GetBuildFormArray().Sort();
}

void ChangeStation(DesignDocument& design, InputReader& input) {
  if (design.sets.IsEmpty()) return;
  const double former = 20.0 * input.Choose(3);
  design.sets[0].GetFormCtrlTargetArray().ChangeDist(former, input.Length(), input.Choose(2) == 0);
}

/// Derives a form from the first one: its points hang on the points there.
void Derive(DesignDocument& design, InputReader& input) {
  VornXSection* const section = ChooseSection(design, input);
  if (section == nullptr || section->GetBuildFormArray().IsEmpty()) return;
  Vorn_BuildFormArray& forms = section->GetBuildFormArray();
  VornBuildForm derived = forms[0];
  derived.SetSerialID(0xFFFFFFFF);
  derived.SetParentID(forms[0].GetSerialID());
  derived.SetName(ChooseText(input), false);
  for (VornComposedPnt& point : derived.GetComposedPntArray()) point.SetParentID(point.GetSerialID());
  forms.Add(std::move(derived));
}

void AddToSurface(DesignDocument& design, InputReader& input) {
  VornXSection* const section = ChooseSection(design, input);
  if (section == nullptr || section->GetBuildFormArray().IsEmpty()) return;
  Vorn_BuildFormArray& forms = section->GetBuildFormArray();
  Vorn_ComposedPntArray& points = forms[0].GetComposedPntArray();
  const int index = input.Choose(points.GetSize() + 1);
  points.InsertAt(index, MakePoint(input));
  forms.AddedComposedPnt(0, points[index].GetSerialID());
}

void RemoveFromSurface(DesignDocument& design, InputReader& input) {
  VornXSection* const section = ChooseSection(design, input);
  if (section == nullptr || section->GetBuildFormArray().IsEmpty()) return;
  Vorn_BuildFormArray& forms = section->GetBuildFormArray();
  Vorn_ComposedPntArray& points = forms[0].GetComposedPntArray();
  if (points.IsEmpty()) return;
  const int index = input.Choose(points.GetSize());
  const std::uint32_t serial = points[index].GetSerialID();
  points.RemoveAt(index);
  forms.RemovedComposedPnt(0, serial);
}

void NormalizeDerived(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->GetBuildFormArray().NormalizePaveBuildForm();
}

void CalcDerived(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) section->GetBuildFormArray().CalcPavePointGhDist();
}

void InsertSection(DesignDocument& design, InputReader& input) {
  VornXSection* const section = ChooseSection(design, input);
  if (section == nullptr || design.sets[0].GetXSectionArray().GetSize() > 5) return;
  VornXSection copy = *section;
  copy.SetCumulativeDist(input.Length());
  // Of two at one station, reading puts the one behind a change of shape second.
  if (design.sets[0].GetXSectionArray().Find(copy.GetCumulativeDist().Value()) >= 0) return;
  (void)design.sets[0].GetXSectionArray().Insert(copy);
}

void PlaceFromCentre(DesignDocument& design, InputReader& input) {
  if (VornXSection* const section = ChooseSection(design, input)) {
    section->GetBuildFormArray().CalcPointGhDist(ChooseHeight(input));
  }
}

using Step = void (*)(DesignDocument&, InputReader&);

constexpr Step kSteps[] = {Recalc,
                           RecalcCrossings,
                           Mirror,
                           Shift,
                           Retype,
                           SortForms,
                           RemoveForm,
                           RenameForm,
                           ClearCodes,
                           RegulateTargets,
                           SetShift,
                           InsertPoint,
                           ChangeCrossPoint,
                           RemoveCrossPoint,
                           CalcCrossPoint,
                           SwapLR,
                           RemoveBuildForm,
                           ClearConnectInfo,
                           SortByHeight,
                           ChangeStation,
                           Derive,
                           AddToSurface,
                           RemoveFromSurface,
                           NormalizeDerived,
                           CalcDerived,
                           InsertSection,
                           PlaceFromCentre};

}  // namespace

int StepCount() { return static_cast<int>(std::size(kSteps)); }

bool SharesSerials(int step) { return kSteps[step] == Retype; }

bool TakeStep(int step, DesignDocument& design, InputReader& input) try {
  const vorn_host::EditionScope scope(design.edition);
  kSteps[step](design, input);
  return true;
} catch (const vorn_host::EditError&) {
  return false;
} catch (const CInvalidArgException&) {
  return false;
}

}  // namespace vorn_fuzz
