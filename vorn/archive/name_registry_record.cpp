// The archive records of the build-name registry, the same in every store version.

#include <cstdint>
#include <utility>

#include "vorn/archive/archive_record.h"
#include "vorn/platform/carray.h"
#include "vorn/platform/counted_archive.h"
#include "vorn/types/bld_name_map.h"

namespace {

/// A class of work with its names, as it stands in the archive.
struct NameClass {
  CString key;
  VornBldNameList names;

  void Serialize(CArchive& ar) {
    ArchiveRecord record(ar);
    record.Field(key);
    record.Field(names);
  }
};

/// Elements behind their count, in an array of their own: what they go into changes only when all of them were read.
template <typename Element>
CArray<Element> LoadCounted(CArchive& ar) {
  CArray<Element> elements;
  SerializeCounted(ar, elements, [&](Element& element) { element.Serialize(ar); });
  return elements;
}

}  // namespace

void VornBuildItem::Serialize(CArchive& ar) {
  ArchiveRecord record(ar);
  record.ExtensionTable();
  record.Field(m_name);
  record.Field(m_color);
}

void VornBldNameList::Serialize(CArchive& ar) {
  ArchiveRecord(ar).ExtensionTable();
  if (ar.IsLoading()) {
    VornBldNameList loaded;
    for (VornBuildItem& item : LoadCounted<VornBuildItem>(ar)) loaded.AddTail(std::move(item));
    AddTail(std::move(loaded));
    return;
  }
  ar << static_cast<std::uint32_t>(GetCount());
  for (VornBuildItem& item : *this) item.Serialize(ar);
}

void VornBldNameMap::Serialize(CArchive& ar) {
  ArchiveRecord(ar).ExtensionTable();
  if (ar.IsLoading()) {
    VornBldNameMap loaded;
    for (NameClass& one : LoadCounted<NameClass>(ar)) loaded.SetAt(std::move(one.key), std::move(one.names));
    *this = std::move(loaded);
    return;
  }
  ar << static_cast<std::uint32_t>(GetCount());
  for (auto& [key, names] : *this) {
    ar << key;
    names.Serialize(ar);
  }
}
