#include "vorn/types/bld_name_map.h"

#include <algorithm>
#include <utility>

#include "vorn/platform/code_page_932.h"
#include "vorn/platform/counted_archive.h"
#include "vorn/platform/dov_data_table.h"
#include "vorn/platform/sil_string.h"

namespace {

/// Keys are held in full-width characters.
CString Normalised(const CString& key) { return SilString::HanToZen(key); }

void SerializeExtensionTable(CArchive& ar) {
  DovDataTable table;
  table.Serialize(ar);
}

CString ClassOf(const VornBuildForm& form) {
  if (!form.GetXSectType().IsEmpty()) return form.GetXSectType();
  if (form.GetName().Find(u8"盛"_cp932) >= 0) return u8"盛土工"_cp932;
  if (form.GetName().Find(u8"切"_cp932) >= 0) return u8"切土工"_cp932;
  return u8"その他"_cp932;
}

}  // namespace

// --- VornBuildItem, VornBldNameList --------------------------------------------------------------------------------

void VornBuildItem::Serialize(CArchive& ar) {
  SerializeExtensionTable(ar);
  if (ar.IsLoading()) {
    ar >> m_name >> m_color;
  } else {
    ar << m_name << m_color;
  }
}

void VornBldNameList::Serialize(CArchive& ar) {
  SerializeExtensionTable(ar);
  if (ar.IsStoring()) {
    ar << static_cast<std::uint32_t>(GetCount());
    for (VornBuildItem& item : *this) item.Serialize(ar);
    return;
  }
  std::uint32_t count = 0;
  ar >> count;
  for (; count > 0; --count) {
    VornBuildItem item;
    item.Serialize(ar);
    AddTail(std::move(item));
  }
}

bool VornBldNameList::IsExist(const CString& name) const {
  return std::any_of(begin(), end(), [&](const VornBuildItem& item) { return item.GetName() == name; });
}

void VornBldNameList::CheckUsedName(const CString& key, const Vorn_XSectionArray& sections) {
  for (VornBuildItem& item : *this) item.SetUsed(sections.IsUsedBuildName(key, item.GetName()) ? 1 : 0);
}

// --- VornBldNameMap ------------------------------------------------------------------------------------------------

VornBldNameMap VornBldNameMap::m_instance;

void VornBldNameMap::Serialize(CArchive& ar) {
  SerializeExtensionTable(ar);
  if (ar.IsStoring()) {
    ar << static_cast<std::uint32_t>(GetCount());
    for (auto& [key, list] : *this) {
      ar << key;
      list.Serialize(ar);
    }
    return;
  }
  RemoveAll();
  std::uint32_t count = 0;
  ar >> count;
  for (; count > 0; --count) {
    CString key;
    VornBldNameList list;
    ar >> key;
    list.Serialize(ar);
    SetAt(std::move(key), list);
  }
}

std::int32_t VornBldNameMap::Lookup(CString key, VornBldNameList& out) const {
  return CMap::Lookup(Normalised(key), out) ? 1 : 0;
}

VornBldNameList* VornBldNameMap::Get(CString key) { return Find(Normalised(key)); }

void VornBldNameMap::SetAt(CString key, const VornBldNameList& list) { CMap::SetAt(Normalised(key), list); }

bool VornBldNameMap::IsExist(CString key, const CString& name) const {
  const VornBldNameList* list = Find(Normalised(key));
  return list != nullptr && list->IsExist(name);
}

void VornBldNameMap::Set(CString key, const CString& name) {
  VornBldNameList& list = (*this)[Normalised(key)];
  if (list.IsExist(name)) return;
  VornBuildItem item;
  item.SetName(name);
  list.AddTail(std::move(item));
}

void VornBldNameMap::Initiate(Vorn_XSectionArray* sections) {
  m_instance.RemoveAll();
  for (const VornXSection& section : *sections) {
    for (const VornBuildForm& form : section.GetBuildFormArray()) m_instance.Set(ClassOf(form), form.GetName());
  }
}
