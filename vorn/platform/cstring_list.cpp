#include "vorn/platform/cstring_list.h"

#include <cstdint>
#include <utility>

void CStringList::Serialize(CArchive& ar) {
  if (ar.IsStoring()) {
    ar.WriteCount(static_cast<std::uint32_t>(GetCount()));
    for (const CString& text : *this) ar << text;
    return;
  }
  std::uint32_t count = ar.ReadCount();
  ar.RequireRemaining(count);  // the shortest text takes a byte
  CArchive::RequireInt(static_cast<std::uint32_t>(GetCount()) + std::uint64_t{count});
  CStringList loaded;
  for (; count > 0; --count) {
    CString text;
    ar >> text;
    loaded.AddTail(std::move(text));
  }
  AddTail(std::move(loaded));
}
