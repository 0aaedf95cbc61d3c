// Edits a whole cross section at once: shifting, mirroring, sorting, removing and clearing.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "vorn/framework/tolerance.h"
#include "vorn/model/x_section.h"
#include "vorn/platform/careful_difference.h"

namespace {

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
    form.GetFormCtrlTargetArray().RemoveIf([](const VornFormCtrlTarget& target) { return target.SpansSections(); });
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
  const auto goes = [&](const VornBuildForm& form) { return form.GetName() == removedName && !form.IsOrgSurface(); };
  bool surfaceGoes = false;
  bool orgSurfaceStays = false;
  const VornBuildForm* successor = nullptr;
  for (const VornBuildForm& form : m_buildFormArray) {
    if (goes(form)) {
      surfaceGoes = surfaceGoes || form.IsSurface();
    } else if (form.IsOrgSurface() || successor == nullptr) {
      successor = &form;
      orgSurfaceStays = form.IsOrgSurface();
    }
  }
  // From the name on nothing needs memory: no form goes unless another one can take over.
  newSurfaceName = surfaceGoes && successor != nullptr ? CString(successor->GetName()) : CString();
  m_buildFormArray.RemoveIf(goes);
  if (!surfaceGoes) return;
  if (orgSurfaceStays) {
    for (VornBuildForm& form : m_buildFormArray) {
      if (form.IsOrgSurface()) form.SetSerialID(VornBuildForm::kSurfaceSerialID);
    }
  } else if (!m_buildFormArray.IsEmpty()) {
    m_buildFormArray[0].SetSerialID(VornBuildForm::kSurfaceSerialID);
  }
}

namespace {

/// The indices of the forms in the order of the names, ignoring case; those of one name follow each other. A name that
/// comes again brings its forms again, as long as there are no more than before.
std::vector<int> OrderByNames(const Vorn_BuildFormArray& forms, const CStringArray& names) {
  const auto keyOf = [](CString name) { return std::string(name.MakeLower().View()); };
  std::unordered_map<std::string, std::vector<int>> formsByName;
  for (int i = 0; i < forms.GetSize(); ++i) formsByName[keyOf(forms[i].GetName())].push_back(i);
  std::vector<int> order;
  for (const CString& name : names) {
    const auto found = formsByName.find(keyOf(name));
    if (found == formsByName.end()) continue;
    for (const int index : found->second) {
      if (static_cast<int>(order.size()) == forms.GetSize()) return order;
      order.push_back(index);
    }
  }
  return order;
}

}  // namespace

void VornXSection::SortBuildForms(const CStringArray& names) {
  const int count = m_buildFormArray.GetSize();
  const std::vector<int> order = OrderByNames(m_buildFormArray, names);
  const int places = static_cast<int>(order.size());
  const auto formAt = [&](int place) { return order[static_cast<std::size_t>(place)]; };
  std::vector<int> lastPlaces(static_cast<std::size_t>(count), -1);
  for (int place = 0; place < places; ++place) lastPlaces[static_cast<std::size_t>(formAt(place))] = place;
  const auto comesLast = [&](int place) { return lastPlaces[static_cast<std::size_t>(formAt(place))] == place; };

  Vorn_BuildFormArray sorted;
  sorted.SetSize(count);  // without numbering: the new collection starts over
  // The copies before the first form leaves its place.
  for (int place = 0; place < places; ++place) {
    if (!comesLast(place)) sorted[place] = m_buildFormArray[formAt(place)];
  }
  for (int place = 0; place < places; ++place) {
    if (comesLast(place)) sorted[place] = std::move(m_buildFormArray[formAt(place)]);
  }
  m_buildFormArray = std::move(sorted);
}

// --- mirror --------------------------------------------------------------------------------------------------------

namespace {

void MirrorPoints(Vorn_ComposedPntArray& points) {
  for (VornComposedPnt& point : points) {
    point.SetCLDist(Negated(point.GetCLDist()));
    if (point.IsCenter()) {
      point.SetX(Negated(point.GetX()));
    } else {
      point.SetLocation(point.IsLeft() ? VornLocation::Right : VornLocation::Left);
    }
  }
  // In its place, and without memory if there is none: a section half mirrored could not be told from a whole one.
  std::stable_partition(points.begin(), points.end(), [](const VornComposedPnt& point) { return !point.IsRight(); });
  // Numbered anew; parent and org references stay as they are: intended. Old serials would count again for whoever
  // still holds references from before the mirroring.
  for (int i = 0; i < points.GetSize(); ++i) {
    points[i].SetSerialID(kVornNoID);
    points.SetSerialID(i);
  }
}

/// A ground point is named for its side: "F" at the centre line, "L", "R".
void RenameForSide(VornExistingComposedPnt& point) {
  constexpr std::string_view kLetters = "FLR";
  CString& name = point.GetName();
  if (name.IsEmpty() || kLetters.find(name[0]) == std::string_view::npos) return;
  const double dist = point.GetCLDist().Value();
  const char side = dist > 0.0 ? 'R' : 'L';
  name.SetAt(0, std::abs(dist) < kAtCenterLine ? 'F' : side);
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
