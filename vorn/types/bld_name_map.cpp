#include "vorn/types/bld_name_map.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/sil_string.h"

namespace {

/// Names whose texts stand elsewhere.
using NameSet = std::unordered_set<std::string_view>;

/// Keys are held in full-width characters.
CString Normalised(const CString& key) { return SilString::HanToZen(key); }

VornBuildItem ItemOf(const CString& name) {
  VornBuildItem item;
  item.SetName(name);
  return item;
}

CString ClassOf(const VornBuildForm& form) {
  if (!form.GetXSectType().IsEmpty()) return form.GetXSectType();
  if (form.GetName().Find(u8"盛"_cp932) >= 0) return u8"盛土工"_cp932;
  if (form.GetName().Find(u8"切"_cp932) >= 0) return u8"切土工"_cp932;
  return u8"その他"_cp932;
}

/// All names for which `IsUsedBuildName` holds with a type.
NameSet UsedNames(const CString& type, const Vorn_XSectionArray& sections) {
  NameSet names;
  for (const VornXSection& section : sections) {
    for (const VornBuildForm& form : section.GetBuildFormArray()) {
      if (form.GetXSectType() == type) names.insert(form.GetName().View());
    }
  }
  return names;
}

}  // namespace

// --- VornBldNameList -----------------------------------------------------------------------------------------------

bool VornBldNameList::IsExist(const CString& name) const {
  return std::any_of(begin(), end(), [&](const VornBuildItem& item) { return item.GetName() == name; });
}

void VornBldNameList::CheckUsedName(const CString& key, const Vorn_XSectionArray& sections) {
  const NameSet used = UsedNames(key, sections);
  for (VornBuildItem& item : *this) item.SetUsed(used.count(item.GetName().View()) > 0 ? 1 : 0);
}

// --- VornBldNameMap ------------------------------------------------------------------------------------------------

VornBldNameMap VornBldNameMap::m_instance;

// Keys are taken by value: callers know the map's operations that way.
// NOLINTBEGIN(performance-unnecessary-value-param)

std::int32_t VornBldNameMap::Lookup(CString key, VornBldNameList& out) const {
  return CMap::Lookup(Normalised(key), out) ? 1 : 0;
}

VornBldNameList* VornBldNameMap::Get(CString key) { return Find(Normalised(key)); }

const VornBldNameList* VornBldNameMap::Get(CString key) const { return Find(Normalised(key)); }

VornBldNameList& VornBldNameMap::operator[](const CString& key) { return CMap::operator[](Normalised(key)); }

void VornBldNameMap::SetAt(CString key, const VornBldNameList& list) { CMap::SetAt(Normalised(key), list); }

void VornBldNameMap::SetAt(CString key, VornBldNameList&& list) { CMap::SetAt(Normalised(key), std::move(list)); }

bool VornBldNameMap::RemoveKey(const CString& key) { return CMap::RemoveKey(Normalised(key)); }

bool VornBldNameMap::IsExist(CString key, const CString& name) const {
  const VornBldNameList* list = Find(Normalised(key));
  return list != nullptr && list->IsExist(name);
}

void VornBldNameMap::Set(CString key, const CString& name) {
  const CString normalised = Normalised(key);
  if (VornBldNameList* list = Find(normalised)) {
    if (!list->IsExist(name)) list->AddTail(ItemOf(name));
    return;
  }
  VornBldNameList list;  // in the registry only with its name in it
  list.AddTail(ItemOf(name));
  CMap::SetAt(normalised, std::move(list));
}

// NOLINTEND(performance-unnecessary-value-param)

void VornBldNameMap::Initiate(Vorn_XSectionArray* sections) {
  VornBldNameMap registry;
  std::map<const VornBldNameList*, NameSet> listed;
  const auto add = [&](const VornBuildForm& form) {
    VornBldNameList& list = registry[ClassOf(form)];
    if (listed[&list].insert(form.GetName().View()).second) list.AddTail(ItemOf(form.GetName()));
  };
  if (sections != nullptr) {
    for (const VornXSection& section : *sections) {
      for (const VornBuildForm& form : section.GetBuildFormArray()) add(form);
    }
  }
  m_instance = std::move(registry);
}
