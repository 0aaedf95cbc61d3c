#include "vorn/model/build_form_array.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

double StartHeight(const VornBuildForm& form) { return form.GetComposedPntArray()[0].GetGh().Value(); }

}  // namespace

// --- numbering -----------------------------------------------------------------------------------------------------

void Vorn_BuildFormArray::Number(VornBuildForm& form, bool asSurface) {
  if (asSurface) {
    form.SetSerialID(VornBuildForm::kSurfaceSerialID);
    m_serials.KeepZero();
  } else {
    m_serials.Number(form);
  }
}

int Vorn_BuildFormArray::Add(const VornBuildForm& form) { return Add(VornBuildForm(form)); }

int Vorn_BuildFormArray::Add(VornBuildForm&& form) { return AddNumbered(std::move(form), HasSurface()); }

int Vorn_BuildFormArray::AddNumbered(VornBuildForm&& form, bool hadSurface) {
  const bool asSurface = IsEmpty();
  const int index = Vorn_Array::Add(std::move(form));
  Number(GetAt(index), asSurface);
  // Also a form that joins an array which has lost its surface, and gets an ordinary serial: intended.
  if (!hadSurface) GetAt(index).SetOrgSurface(true);
  return index;
}

void Vorn_BuildFormArray::InsertAt(int index, const VornBuildForm& form) { InsertAt(index, VornBuildForm(form)); }

void Vorn_BuildFormArray::InsertAt(int index, VornBuildForm&& form) {
  const bool asSurface = index == 0 && !HasSurface();
  Vorn_Array::InsertAt(index, VornBuildForm());
  GetAt(index) = std::move(form);
  Number(GetAt(index), asSurface);
}

void Vorn_BuildFormArray::SetAt(int index, const VornBuildForm& form) {
  if (!IsRange(index)) return;
  const bool asSurface = index == 0 && !HasSurface();
  Vorn_Array::SetAt(index, form);
  Number(GetAt(index), asSurface);
}

int Vorn_BuildFormArray::Append(const Vorn_BuildFormArray& other) {
  const int first = GetSize();
  Vorn_BuildFormArray copies = other;
  Reserve(first + copies.GetSize());  // before the first form is added
  const bool hadSurface = HasSurface();
  for (VornBuildForm& form : copies) {
    // Numbered anew once it is added, the design surface too: intended, so none of them ever counts as the surface.
    const int index = AddNumbered(std::move(form), hadSurface);
    GetAt(index).SetSerialID(m_serials.Take());
  }
  return first;
}

void Vorn_BuildFormArray::SetSerialID(int index, bool asSurface) { Number(GetAt(index), index == 0 && asSurface); }

// --- order and searches --------------------------------------------------------------------------------------------

void Vorn_BuildFormArray::Sort() {
  // A form without points has no height to compare: it would come out anywhere, so it stays. The others are ordered by
  // their exact heights, which is one of the orders that the tolerance allows.
  std::vector<int> places;
  std::vector<VornBuildForm> forms;
  places.reserve(static_cast<std::size_t>(GetSize()));
  forms.reserve(static_cast<std::size_t>(GetSize()));  // before the first form leaves its place
  for (int i = 0; i < GetSize(); ++i) {
    if (GetAt(i).GetComposedPntArray().IsEmpty()) continue;
    places.push_back(i);
    forms.push_back(std::move(GetAt(i)));
  }
  std::stable_sort(forms.begin(), forms.end(),
                   [](const VornBuildForm& a, const VornBuildForm& b) { return StartHeight(a) < StartHeight(b); });
  for (std::size_t i = 0; i < places.size(); ++i) GetAt(places[i]) = std::move(forms[i]);
}

int Vorn_BuildFormArray::Find(std::uint32_t serialID) const {
  return FindFrom(-1, [=](const VornBuildForm& form) { return form.GetSerialID() == serialID; });
}

int Vorn_BuildFormArray::Find(const CString& name, int start) const {
  return FindFrom(start, [&](const VornBuildForm& form) { return form.GetName().CompareNoCase(name.View()) == 0; });
}

int Vorn_BuildFormArray::FindParent(std::uint32_t parentID, int start) const {
  return FindFrom(start, [=](const VornBuildForm& form) { return form.GetParentID() == parentID; });
}

template <typename Matches>
int Vorn_BuildFormArray::FindFrom(int start, Matches&& matches) const {
  const int first = start == -1 ? 0 : start;
  return IsRange(first) ? FindFirst(matches, first) : -1;
}

std::uint32_t Vorn_BuildFormArray::QueryOrgSurfaceID() const {
  const int index = FindFrom(-1, [](const VornBuildForm& form) { return form.IsOrgSurface(); });
  return index < 0 ? kVornNoID : GetAt(index).GetSerialID();
}

bool Vorn_BuildFormArray::IsRoadWL_R() const {
  return std::any_of(begin(), end(), [](const VornBuildForm& form) { return form.IsRoadWL_R(); });
}

// --- the computations of every form --------------------------------------------------------------------------------

void Vorn_BuildFormArray::ConvertFormCtrl(const NurReal& dist) {
  for (VornBuildForm& form : *this) form.ConvertFormCtrl(dist);
}

void Vorn_BuildFormArray::RegulateFormDist(const NurReal& dist) {
  for (VornBuildForm& form : *this) form.GetFormCtrlTargetArray().RegulateDist(dist);
}

void Vorn_BuildFormArray::RegulateComposedPnt(const NurReal& centerHeight, NurReal& dist, NurReal& height) {
  const NurReal start = centerHeight;  // may be one of the outputs, or a height that is about to change
  for (VornBuildForm& form : *this) form.RegulateComposedPnt(start, dist, height);
}

void Vorn_BuildFormArray::CalcPointGhDist(const NurReal& centerHeight) {
  const NurReal start = centerHeight;  // may be a height that is about to change
  for (VornBuildForm& form : *this) {
    if (form.GetParentID() == kVornNoID) form.CalcPointGhDist(start);
  }
}
