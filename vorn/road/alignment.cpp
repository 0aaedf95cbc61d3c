#include "vorn/road/alignment.h"

#include <algorithm>

bool VornAlignmentsArray::IsUsedCrsName(const char* name) const {
  const CString wanted(name);
  return !wanted.IsEmpty() && std::any_of(begin(), end(), [&wanted](const VornAlignment& alignment) {
    return alignment.GetCrsName() == wanted;
  });
}
