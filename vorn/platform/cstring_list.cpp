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
  for (; count > 0; --count) {
    CString text;
    ar >> text;
    AddTail(std::move(text));
  }
}
