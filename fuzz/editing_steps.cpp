#include "fuzz/editing_steps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/editing_model.h"
#include "fuzz/target.h"
#include "host/editing/design_editor.h"
#include "host/editing/set_targets.h"

namespace vorn_fuzz {

namespace {

using vorn_host::DesignDocument;
using vorn_host::DesignEditor;

// --- what steps keep -------------------------------------------------------------------------------------------------

/// The shifts of all sections and the positions of all points. Those of a form are in an order of their own: steps may
/// put the points into another one.
std::vector<TamWorld2> ShiftsAndPositions(const DesignDocument& design) {
  std::vector<TamWorld2> positions;
  for (const VornXSections& set : design.sets) {
    for (const VornXSection& section : set.GetXSectionArray()) {
      positions.push_back(section.GetShiftData());
      for (const VornBuildForm& form : section.GetBuildFormArray()) {
        const auto first = static_cast<std::ptrdiff_t>(positions.size());
        for (const VornComposedPnt& point : form.GetComposedPntArray()) positions.push_back(point.Pos());
        std::sort(positions.begin() + first, positions.end(),
                  [](const TamWorld2& a, const TamWorld2& b) { return a.x == b.x ? a.y < b.y : a.x < b.x; });
      }
    }
  }
  return positions;
}

/// A step and its opposite lead back to where the points were.
void RequireSame(const std::vector<TamWorld2>& after, const std::vector<TamWorld2>& before, const char* step) {
  constexpr double kRounding = 1e-9;  // metres
  const auto isSame = [](const TamWorld2& a, const TamWorld2& b) {
    return std::abs(a.x - b.x) <= kRounding && std::abs(a.y - b.y) <= kRounding;
  };
  if (!std::equal(after.begin(), after.end(), before.begin(), before.end(), isSame)) {
    Finding(step, "there and back is elsewhere");
  }
}

/// A step that removes nothing takes the control targets along.
void RequireNoneLost(const DesignEditor& editor, const char* step) {
  const std::vector<std::string> lost = editor.LostTargets();
  if (!lost.empty()) Finding(step, "a control target is lost: " + lost.front());
}

/// Control targets that stood on points stand on points, or went with them.
void RequireNoMoreDangling(const DesignDocument& design, std::size_t before, const char* step) {
  if (vorn_host::DanglingTargets(design).size() > before) Finding(step, "a control target stands on nothing");
}

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

/// Twice leads back, and then once more.
void Mirror(DesignDocument& design, InputReader&) {
  DesignEditor editor(design);
  const std::vector<TamWorld2> before = ShiftsAndPositions(design);
  (void)editor.Mirror();
  (void)editor.Mirror();
  RequireSame(ShiftsAndPositions(design), before, "mirroring");
  (void)editor.Mirror();
  RequireNoneLost(editor, "mirroring");
}

/// There, back, and there again.
void Shift(DesignDocument& design, InputReader& input) {
  const double dist = input.Length();
  const double height = input.Length();
  DesignEditor editor(design);
  const std::vector<TamWorld2> before = ShiftsAndPositions(design);
  (void)editor.Shift(dist, height);
  (void)editor.Shift(-dist, -height);
  RequireSame(ShiftsAndPositions(design), before, "shifting");
  (void)editor.Shift(dist, height);
  RequireNoneLost(editor, "shifting");
}

void Retype(DesignDocument& design, InputReader& input) {
  const CString left = ChooseText(input);
  (void)DesignEditor(design).Retype(left, ChooseText(input));
}

void SortForms(DesignDocument& design, InputReader& input) {
  CStringArray names;
  for (int i = input.Choose(4); i > 0; --i) names.Add(ChooseText(input));
  DesignEditor editor(design);
  (void)editor.SortForms(names);
  RequireNoneLost(editor, "sorting");
}

void RemoveForm(DesignDocument& design, InputReader& input) {
  DesignEditor editor(design);
  const std::size_t dangling = vorn_host::DanglingTargets(design).size();
  (void)editor.RemoveForm(ChooseText(input));
  (void)editor.LostTargets();
  RequireNoMoreDangling(design, dangling, "removing");
}

void RenameForm(DesignDocument& design, InputReader& input) {
  const CString type = ChooseText(input);
  const CString name = ChooseText(input);
  DesignEditor editor(design);
  (void)editor.RenameForm(type, name, ChooseText(input));
  RequireNoneLost(editor, "renaming");
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
  VornXSections* const set = ChooseSet(design, input);
  if (set == nullptr) return;
  const double former = 20.0 * input.Choose(3);
  set->GetFormCtrlTargetArray().ChangeDist(former, input.Length(), input.Choose(2) == 0);
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
  constexpr int kMostSections = 6;
  VornXSections* const set = ChooseSet(design, input);
  VornXSection* const section = set == nullptr ? nullptr : ChooseSection(*set, input);
  if (section == nullptr || set->GetXSectionArray().GetSize() >= kMostSections) return;
  VornXSection copy = *section;
  copy.SetCumulativeDist(input.Length());
  // Of two at one station, reading puts the one behind a change of shape second.
  if (set->GetXSectionArray().Find(copy.GetCumulativeDist().Value()) >= 0) return;
  (void)set->GetXSectionArray().Insert(copy);
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

bool MaySplitForms(int step) { return kSteps[step] == Retype; }

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
