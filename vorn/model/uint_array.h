#pragma once

#include <cstdint>

#include "vorn/platform/kel_array.h"

/// A list of unsigned 32-bit identifiers.
class VornUIntArray : public KelArraySerial<std::uint32_t> {
 public:
  /// Index of the first equal element; -1 when there is none.
  [[nodiscard]] int Find(std::uint32_t value) const;
  /// Removes every equal element.
  void Remove(std::uint32_t value);
  /// Drops repeated values, keeping the first of each.
  void RemoveDup();
};
