#include "vorn/model/uint_array.h"

#include <algorithm>
#include <unordered_set>

int VornUIntArray::Find(std::uint32_t value) const {
  const auto found = std::find(begin(), end(), value);
  return found == end() ? -1 : static_cast<int>(found - begin());
}

void VornUIntArray::Remove(std::uint32_t value) {
  SetSize(static_cast<int>(std::remove(begin(), end(), value) - begin()));
}

void VornUIntArray::RemoveDup() {
  std::unordered_set<std::uint32_t> seen;
  const auto repeated = [&seen](std::uint32_t value) { return !seen.insert(value).second; };
  SetSize(static_cast<int>(std::remove_if(begin(), end(), repeated) - begin()));
}
