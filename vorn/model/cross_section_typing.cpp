// Splits, joins and retypes the build forms of a cross section.

#include <algorithm>
#include <utility>
#include <vector>

#include "vorn/model/x_section.h"
#include "vorn/types/structure_type.h"

namespace {

using ControlItem = VornFormCtrlTarget::ControlItem;
using TargetPntType = VornFormCtrlTarget::TargetPntType;

/// A target across both sides has no form of its own any more once the form is split. Behind a removed target the next
/// one is not examined: intended, of two adjacent ones the second stays, and a host that counts on it would lose it.
void RemoveLeftRightTargets(Vorn_FormCtrlTargetArray& targets) {
  bool skipNext = false;
  targets.RemoveIf([&](const VornFormCtrlTarget& target) {
    skipNext = !skipNext && target.GetTargetPntType() == TargetPntType::LeftRight;
    return skipNext;
  });
}

/// Takes all points but the left ones out of a form's points; the start point stays, and a copy of it goes along.
Vorn_ComposedPntArray TakeRightPoints(Vorn_ComposedPntArray& points) {
  Vorn_ComposedPntArray taken;
  if (points.IsEmpty()) return taken;
  taken.Reserve(points.GetSize());  // before the first point leaves its place
  taken.Add(points[0]);
  const auto tail = std::stable_partition(points.begin() + 1, points.end(),
                                          [](const VornComposedPnt& point) { return point.IsLeft(); });
  for (auto point = tail; point != points.end(); ++point) taken.Add(std::move(*point));
  points.SetSize(static_cast<int>(tail - points.begin()));
  return taken;
}

/// Takes the targets of the right out of a form's targets; those without a side stay, and copies of them go along.
Vorn_FormCtrlTargetArray TakeRightTargets(Vorn_FormCtrlTargetArray& targets) {
  std::vector<bool> goes;
  goes.reserve(static_cast<std::size_t>(targets.GetSize()));
  Vorn_FormCtrlTargetArray taken;
  taken.Reserve(targets.GetSize());
  for (VornFormCtrlTarget& target : targets) {
    const VornLocation side = target.GetLR();
    goes.push_back(side != VornLocation::Left && side != VornLocation::Unset);
    if (goes.back()) {
      taken.Add(std::move(target));
    } else if (side == VornLocation::Unset) {
      taken.Add(target);
    }
  }
  std::size_t next = 0;
  targets.RemoveIf([&](const VornFormCtrlTarget&) { return goes[next++]; });
  return taken;
}

int CountPlanForms(const Vorn_BuildFormArray& forms) {
  return static_cast<int>(std::count_if(forms.begin(), forms.end(),
                                        [](const VornBuildForm& form) { return VornIsPlan(form.GetXSectType()); }));
}

// What follows works on forms that stand apart: those of the section change when everything that needs memory is done.

VornBuildForm WithTypeAndName(VornBuildForm form, const CString& type) {
  form.SetXSectType(type);
  form.SetName(type, true);
  return form;
}

/// Joins the second form into the first, and leaves it to be removed.
void Join(VornBuildForm& first, VornBuildForm& second) {
  Vorn_ComposedPntArray& points = second.GetComposedPntArray();
  first.GetComposedPntArray().Reserve(first.GetComposedPntArray().GetSize() + points.GetSize());
  first.GetFormCtrlTargetArray().Reserve(first.GetFormCtrlTargetArray().GetSize() +
                                         second.GetFormCtrlTargetArray().GetSize());
  first.SetExportForm(second.GetExportForm());
  if (!points.IsEmpty()) points.RemoveAt(0);
  first.GetComposedPntArray().Append(std::move(points));

  // A height without a side is measured at the centre, where the first form has it already.
  for (VornFormCtrlTarget& target : second.GetFormCtrlTargetArray()) {
    const bool isCenterHeight = target.GetControlItem() == ControlItem::Height && target.GetLR() == VornLocation::Unset;
    if (!isCenterHeight) first.GetFormCtrlTargetArray().Add(std::move(target));
  }
}

/// Puts the halves of a form in the place of the first one.
/// @param rightType type and name of the right half
void Divide(Vorn_BuildFormArray& forms, VornBuildForm left, const CString& rightType) {
  if (forms.IsRoadWL_R()) RemoveLeftRightTargets(left.GetFormCtrlTargetArray());
  Vorn_ComposedPntArray rightPoints = TakeRightPoints(left.GetComposedPntArray());
  Vorn_FormCtrlTargetArray rightTargets = TakeRightTargets(left.GetFormCtrlTargetArray());
  // A copy with its serial, so that both halves bear the same one. The control targets come in behind the renaming and
  // keep naming the first form. Both are intended: hosts get the halves so, and projects hold them so.
  VornBuildForm right = WithTypeAndName(left, rightType);
  right.GetComposedPntArray() = std::move(rightPoints);
  right.GetFormCtrlTargetArray() = std::move(rightTargets);
  forms.InsertAt(1, std::move(right));
  forms[0] = std::move(left);
}

}  // namespace

void VornXSection::MakeOneBuildForm(Vorn_BuildFormArray& forms) {
  if (forms.GetSize() < 2) return;
  Join(forms[0], forms[1]);
  forms.RemoveAt(1);
}

void VornXSection::DevideBuildForm(Vorn_BuildFormArray& forms, const CString& type) { Divide(forms, forms[0], type); }

void VornXSection::ChangeXSectType(const CString& type1, const CString& type2) {
  const bool differ = type1 != type2;
  const int planForms = CountPlanForms(m_buildFormArray);
  if (planForms != 1 && planForms != 2) return;

  // The first two forms, even where the plan-type ones stand elsewhere: intended, hosts keep the surface in front.
  VornBuildForm left = WithTypeAndName(m_buildFormArray[0], type1);
  if (planForms == 1 && differ) return Divide(m_buildFormArray, std::move(left), type2);
  if (planForms == 2 && differ) {
    m_buildFormArray[1] = WithTypeAndName(m_buildFormArray[1], type2);
  } else if (planForms == 2) {
    Join(left, m_buildFormArray[1]);
    m_buildFormArray.RemoveAt(1);
  }
  m_buildFormArray[0] = std::move(left);
}
