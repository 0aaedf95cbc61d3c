#pragma once

#include "vorn/platform/carray.h"

/// The framework's array with a range test.
template <typename Type, typename ArgType = const Type&>
class KelArray : public CArray<Type, ArgType> {
 public:
  /// Whether 0 <= index < size.
  [[nodiscard]] bool IsRange(int index) const { return index >= 0 && index < this->GetSize(); }
};

/// A plain array of values that archive as themselves, such as lists of identifiers.
template <typename Type>
class KelArraySerial : public KelArray<Type, Type> {};
