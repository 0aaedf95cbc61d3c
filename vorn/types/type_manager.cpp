#include "vorn/types/type_manager.h"

#include <array>
#include <utility>

#include "vorn/framework/schema.h"
#include "vorn/platform/code_page_932.h"
#include "vorn/platform/sil_string.h"

namespace {

using WorkType = VornStructureType::Type;

using Flags = decltype(VornFormAttr::flags);

/// What may be done with a form of earthwork.
constexpr Flags kEarthwork = {1, 1, 1, 0, 0, 1, 0, 0};
/// Intended: the seventh flag is set where road and river forms set the sixth, so a host can tell the editions' forms
/// apart.
constexpr Flags kEdition20Earthwork = {1, 1, 1, 0, 0, 0, 1, 0};

constexpr std::array kRoadForms = {
    VornFormAttr{u8"路体盛土工"_cp932.data(), kEarthwork},
    VornFormAttr{u8"路床盛土工"_cp932.data(), kEarthwork},
    VornFormAttr{u8"掘削工"_cp932.data(), kEarthwork},
};

constexpr std::array kRiverForms = {
    VornFormAttr{u8"盛土工"_cp932.data(), kEarthwork},
    VornFormAttr{u8"掘削工"_cp932.data(), kEarthwork},
};

constexpr std::array kOtherForms = {
    VornFormAttr{u8"その他"_cp932.data(), {}},
    VornFormAttr{u8"基準面"_cp932.data(), {}},
};

constexpr std::array kEdition20Forms = {
    VornFormAttr{u8"盛土工"_cp932.data(), kEdition20Earthwork},
    VornFormAttr{u8"切土工"_cp932.data(), kEdition20Earthwork},
};

constexpr VornFormAttr kReferenceSurface = {u8"基準面"_cp932.data(), {1, 1, 1, 0, 0, 0, 0, 0}};
constexpr VornFormAttr kUnknown = {u8"不明"_cp932.data(), {}};

template <typename Forms>
void Append(const Forms& forms, VornTypeManager::List& list) {
  list.Reserve(list.GetSize() + static_cast<int>(forms.size()));
  for (const VornFormAttr& form : forms) list.Add(form);
}

}  // namespace

void VornTypeManager::Type(WorkType type, List& list, bool includeOther) const {
  List forms;
  const bool earthwork = type == WorkType::RoadEarthwork || type == WorkType::RiverCoastErosionControl;
  if (VornSchema::Instance().IsVer2()) {
    if (earthwork) Append(kEdition20Forms, forms);
  } else {
    if (type == WorkType::RoadEarthwork) Road(forms);
    if (type == WorkType::RiverCoastErosionControl) River(forms);
    if (type == WorkType::Other || includeOther) Other(forms);
  }
  list = std::move(forms);
}

void VornTypeManager::Road(List& list) const { Append(kRoadForms, list); }

void VornTypeManager::River(List& list) const { Append(kRiverForms, list); }

void VornTypeManager::Other(List& list) const { Append(kOtherForms, list); }

const VornFormAttr* VornTypeManager::FindIn(const List& list, const CString& name) {
  const CString key = SilString::HanToZen(name);
  for (const VornFormAttr& form : list) {
    if (SilString::HanToZen(form.name) == key) return &form;
  }
  return nullptr;
}

bool VornTypeManager::Find(VornFormAttr& attr, WorkType type, const CString& name, bool includeOther,
                           bool allowBase) const {
  List list;
  Type(type, list, includeOther);
  if (const VornFormAttr* form = FindIn(list, name)) {
    attr = *form;
    return true;
  }
  // Intended: where the list holds the reference surface, that one is found first, and it has no flags.
  const bool isBase = allowBase && SilString::HanToZen(name) == kReferenceSurface.name;
  attr = isBase ? kReferenceSurface : kUnknown;
  return isBase;
}

bool VornTypeManager::Find(VornFormAttr& attr, const CString& name) const {
  VornFormAttr found;  // without memory for the second search, the first one's answer is none
  // The forms of other work are among those of either.
  const bool known = Find(found, WorkType::RoadEarthwork, name, true, true) ||
                     Find(found, WorkType::RiverCoastErosionControl, name, false, false);
  attr = found;
  return known;
}
