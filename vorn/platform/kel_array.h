#pragma once

#include <algorithm>
#include <utility>

#include "vorn/platform/carray.h"
#include "vorn/platform/counted_archive.h"

/// The framework's array with a range test.
template <typename Type, typename ArgType = const Type&>
class KelArray : public CArray<Type, ArgType> {
 public:
  /// Whether 0 <= index < size.
  [[nodiscard]] bool IsRange(int index) const { return index >= 0 && index < this->GetSize(); }

  /// Appends a new element and fills it in its place. When `fill` gives false or throws, the element is taken away
  /// again.
  template <typename Fill>
  bool AddFilled(Fill&& fill) {
    const int index = this->GetSize();
    Type& item = this->AddDefault();
    try {
      if (fill(item)) return true;
    } catch (...) {
      this->SetSize(index);
      throw;
    }
    this->SetSize(index);
    return false;
  }

  /// Index of the first element, from `start` on, that matches; -1 when there is none.
  template <typename Matches>
  [[nodiscard]] int FindFirst(Matches&& matches, int start = 0) const {
    const auto found = std::find_if(this->begin() + start, this->end(), matches);
    return found == this->end() ? -1 : static_cast<int>(found - this->begin());
  }

  /// Removes the elements that the predicate holds for, asked once each and in order, in one pass; the others keep
  /// their order. Returns how many were removed. A predicate that throws leaves the elements, some of them moved.
  template <typename Predicate>
  int RemoveIf(Predicate&& predicate) {
    return RemoveIndices([&](int index) { return predicate(std::as_const(this->GetData()[index])); });
  }
  /// As `RemoveIf`, of the elements whose index the predicate holds for.
  template <typename Predicate>
  int RemoveIndices(Predicate&& predicate) {
    int kept = 0;
    const int size = this->GetSize();
    for (int i = 0; i < size; ++i) {
      if (predicate(i)) continue;
      if (kept != i) this->GetData()[kept] = std::move(this->GetData()[i]);
      ++kept;
    }
    this->SetSize(kept);
    return size - kept;
  }
};

/// A plain array of values that archive as themselves, such as lists of identifiers.
template <typename Type>
class KelArraySerial : public KelArray<Type, Type> {
 public:
  /// The 32-bit count, then the values, 32 bits each.
  void Serialize(CArchive& ar) {
    static_assert(sizeof(Type) == 4);
    SerializeCounted(ar, *this, [&](Type& value) { ar.IsLoading() ? ar >> value : ar << value; });
  }
};
