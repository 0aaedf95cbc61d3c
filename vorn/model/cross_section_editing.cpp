// Edits a whole cross section at once: shifting, mirroring, sorting, removing and clearing.

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "vorn/model/x_section.h"
#include "vorn/platform/careful_difference.h"

namespace {

using ControlItem = VornFormCtrlTarget::ControlItem;
using PntType = VornComposedPnt::PntType;

/// An unset shift shifts nothing.
double OrZero(const NurReal& value) { return value.IsSet() ? value.Value() : 0.0; }

/// An unset value has no sign to change, and a zero gets none.
NurReal Negated(const NurReal& value) { return value.IsSet() ? NurReal(0.0 - value.Value()) : value; }

}  // namespace

// --- shift ---------------------------------------------------------------------------------------------------------

void VornXSection::SetShiftData(const NurReal& shiftGH, const NurReal& shiftDist) {
  const NurReal newGH = shiftGH;  // either may be a value of this section
  const NurReal newDist = shiftDist;
  const double from = OrZero(m_shiftDist);
  const double to = OrZero(newDist);
  for (VornBuildForm& form : m_buildFormArray) {
    for (VornComposedPnt& point : form.GetComposedPntArray()) {
      const NurReal& dist = point.GetCLDist();
      if (!dist.IsSet()) continue;
      point.SetCLDist(NurCarefulDifference(dist.Value(), from) + to);
    }
  }
  m_shiftGH = newGH;
  m_shiftDist = newDist;
}

// --- existence -----------------------------------------------------------------------------------------------------

void VornXSection::RegulateComposedPnt(Vorn_ComposedPntArray& points, VornLocation side) {
  bool crossed = false;
  for (VornComposedPnt& point : points) {
    if (point.GetLocation() != side) continue;
    const bool isCrossing = !point.GetSeriesPnt();
    crossed = crossed || isCrossing;
    point.SetExistence(crossed && !isCrossing ? VORN_Existence::False : VORN_Existence::True);
  }
}

void VornXSection::RegulateComposedPnt() {
  for (VornBuildForm& form : m_buildFormArray) {
    RegulateComposedPnt(form.GetComposedPntArray(), VornLocation::Left);
    RegulateComposedPnt(form.GetComposedPntArray(), VornLocation::Right);
  }
}

// --- control targets, codes and connections ------------------------------------------------------------------------

void VornXSection::ChangeDist(const double& oldDist, const double& newDist, bool xSectChg) {
  for (VornBuildForm& form : m_buildFormArray) form.GetFormCtrlTargetArray().ChangeDist(oldDist, newDist, xSectChg);
}

void VornXSection::ChangeDistH(const double& oldDist, const double& newDist, bool xSectChg) {
  for (VornBuildForm& form : m_buildFormArray) form.GetFormCtrlTargetArray().ChangeDistH(oldDist, newDist, xSectChg);
}

void VornXSection::RemoveFormH() {
  for (VornBuildForm& form : m_buildFormArray) {
    form.GetFormCtrlTargetArray().RemoveIf([](const VornFormCtrlTarget& target) {
      return target.GetControlItem() == ControlItem::Length || target.GetControlItem() == ControlItem::Area;
    });
  }
}

void VornXSection::ClearConnectInfo(bool clearCode) {
  for (VornBuildForm& form : m_buildFormArray) form.ClearConnectInfo(clearCode);
}

void VornXSection::ClearCode() {
  for (VornBuildForm& form : m_buildFormArray) {
    for (VornComposedPnt& point : form.GetComposedPntArray()) point.SetCode(CString(), PntType::Both);
  }
}

// --- removing and sorting build forms ------------------------------------------------------------------------------

void VornXSection::RemoveBuildForm(const CString& name, CString& newSurfaceName) {
  const CString removedName = name;  // name may be that of one of the forms, or newSurfaceName itself
  newSurfaceName.Empty();
  bool surfaceRemoved = false;
  m_buildFormArray.RemoveIf([&](const VornBuildForm& form) {
    const bool removed = form.GetName() == removedName && !form.IsOrgSurface();
    surfaceRemoved = surfaceRemoved || (removed && form.IsSurface());
    return removed;
  });
  if (!surfaceRemoved) return;

  const auto takeOver = [&](VornBuildForm& form) {
    form.SetSerialID(0);
    newSurfaceName = form.GetName();
  };
  bool tookOver = false;
  for (VornBuildForm& form : m_buildFormArray) {
    if (!form.IsOrgSurface()) continue;
    takeOver(form);
    tookOver = true;
  }
  if (!tookOver && !m_buildFormArray.IsEmpty()) takeOver(m_buildFormArray[0]);
}

void VornXSection::SortBuildForms(const CStringArray& names) {
  const auto keyOf = [](CString name) { return std::string(name.MakeLower().View()); };
  std::unordered_map<std::string, std::vector<int>> formsByName;
  const int count = m_buildFormArray.GetSize();
  for (int i = 0; i < count; ++i) formsByName[keyOf(m_buildFormArray[i].GetName())].push_back(i);

  std::vector<int> order;
  std::vector<int> uses(static_cast<std::size_t>(count), 0);
  for (const CString& name : names) {
    const auto found = formsByName.find(keyOf(name));
    if (found == formsByName.end()) continue;
    for (const int index : found->second) {
      if (static_cast<int>(order.size()) == count) break;
      order.push_back(index);
      ++uses[static_cast<std::size_t>(index)];
    }
  }

  Vorn_BuildFormArray sorted;
  sorted.SetSize(count);  // without numbering: the new collection starts over
  int place = 0;
  for (const int index : order) {
    VornBuildForm& form = m_buildFormArray[index];
    if (--uses[static_cast<std::size_t>(index)] == 0) {
      sorted[place++] = std::move(form);
    } else {
      sorted[place++] = form;
    }
  }
  m_buildFormArray = std::move(sorted);
}

// --- mirror --------------------------------------------------------------------------------------------------------

namespace {

void MirrorPoints(Vorn_ComposedPntArray& points) {
  Vorn_ComposedPntArray centerAndLeft;
  Vorn_ComposedPntArray right;
  centerAndLeft.Reserve(points.GetSize());  // before the first point leaves its place
  right.Reserve(points.GetSize());
  for (VornComposedPnt& point : points) {
    point.SetCLDist(Negated(point.GetCLDist()));
    if (point.IsCenter()) {
      point.SetX(Negated(point.GetX()));
      centerAndLeft.Add(std::move(point));
    } else if (point.IsLeft()) {
      point.SetLocation(VornLocation::Right);
      right.Add(std::move(point));
    } else {
      point.SetLocation(VornLocation::Left);
      centerAndLeft.Add(std::move(point));
    }
  }
  // `Append` numbers anew and leaves parent and org references as they are: intended. Old serials would count again for
  // whoever still holds references from before the mirroring.
  points.RemoveAll();
  points.Append(std::move(centerAndLeft));
  points.Append(std::move(right));
}

/// A ground point is named for its side: "F" at the centre line, "L", "R".
void RenameForSide(VornExistingComposedPnt& point) {
  constexpr double kAtCenter = 1e-6;
  constexpr std::string_view kLetters = "FLR";
  CString& name = point.GetName();
  if (name.IsEmpty() || kLetters.find(name[0]) == std::string_view::npos) return;
  const double dist = point.GetCLDist().Value();
  const char side = dist > 0.0 ? 'R' : 'L';
  name.SetAt(0, std::abs(dist) < kAtCenter ? 'F' : side);
}

void MirrorGround(VornExistingComposedPntArray& points) {
  std::reverse(points.begin(), points.end());
  for (VornExistingComposedPnt& point : points) {
    point.SetCLDist(Negated(point.GetCLDist()));
    RenameForSide(point);
  }
}

}  // namespace

void VornXSection::SwapLR() {
  for (VornBuildForm& form : m_buildFormArray) MirrorPoints(form.GetComposedPntArray());
  std::reverse(m_existingBuildFormArray.begin(), m_existingBuildFormArray.end());
  for (VornExistingBuildForm& ground : m_existingBuildFormArray) MirrorGround(ground.GetComposedPntArray());
}

void Vorn_XSectionArray::SwapLR() {
  for (VornXSection& section : *this) section.SwapLR();
}
