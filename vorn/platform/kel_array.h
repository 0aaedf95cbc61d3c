#pragma once

#include <algorithm>

#include "vorn/platform/carray.h"

/// The framework's array with a range test.
template <typename Type, typename ArgType = const Type&>
class KelArray : public CArray<Type, ArgType> {
 public:
  /// Whether 0 <= index < size.
  [[nodiscard]] bool IsRange(int index) const { return index >= 0 && index < this->GetSize(); }

  /// Removes the elements that the predicate holds for, asked once each and in order, in one pass; the others keep
  /// their order. Returns how many were removed.
  template <typename Predicate>
  int RemoveIf(Predicate&& predicate) {
    const auto kept = std::remove_if(this->begin(), this->end(), [&](const Type& item) { return predicate(item); });
    const int removed = static_cast<int>(this->end() - kept);
    this->SetSize(this->GetSize() - removed);
    return removed;
  }
};

/// A plain array of values that archive as themselves, such as lists of identifiers.
template <typename Type>
class KelArraySerial : public KelArray<Type, Type> {};
