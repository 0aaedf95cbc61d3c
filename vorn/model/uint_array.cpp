#include "vorn/model/uint_array.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

int VornUIntArray::Find(std::uint32_t value) const {
  return FindFirst([=](std::uint32_t other) { return other == value; });
}

void VornUIntArray::Remove(std::uint32_t value) {
  SetSize(static_cast<int>(std::remove(begin(), end(), value) - begin()));
}

void VornUIntArray::RemoveDup() {
  std::unordered_set<std::uint32_t> seen;
  VornUIntArray kept;
  for (const std::uint32_t value : *this) {
    if (seen.insert(value).second) kept.Add(value);
  }
  *this = std::move(kept);
}
