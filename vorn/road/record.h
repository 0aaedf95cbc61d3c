#pragma once

#include <algorithm>
#include <bitset>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "vorn/platform/carchive.h"
#include "vorn/platform/kel_array.h"

/// Base of the road and survey records: values, to be copied and moved, that a host may derive from.
class VornRecord {
 public:
  virtual ~VornRecord() = default;

 protected:
  VornRecord() = default;
  VornRecord(const VornRecord&) = default;
  VornRecord(VornRecord&&) noexcept = default;
  VornRecord& operator=(const VornRecord&) = default;
  VornRecord& operator=(VornRecord&&) noexcept = default;
};

/// A value that tells whether it says the same as another.
template <typename Type>
concept VornComparable = requires(const Type& item) {
  { item.Compare(item) } -> std::same_as<bool>;
};

/// A value with an archive record, which takes these arguments besides the archive.
template <typename Type, typename... Arguments>
concept VornArchivable = requires(Type& item, CArchive& ar, const Arguments&... arguments) {
  item.Serialize(ar, arguments...);
};

/// An array of road or survey records. An index outside it throws `CInvalidArgException`.
template <typename Type>
class VornRecordArray : public KelArray<Type> {
 public:
  /// The signed 32-bit count, then every element's own record. Loading replaces what the array held; a count below 1
  /// leaves it empty. `CArchiveException` leaves the elements that were read.
  /// @param arguments what the elements' records take besides the archive, above all the store version
  template <typename... Arguments>
  void Serialize(CArchive& ar, const Arguments&... arguments) requires VornArchivable<Type, Arguments...> {
    const auto transfer = [&](Type& item) { item.Serialize(ar, arguments...); };
    SerializeCounted<std::int32_t>(ar, *this, transfer, Type::kLeastArchiveBytes);
  }

  /// Whether both arrays have as many elements, and they compare equal pair by pair.
  [[nodiscard]] bool Compare(const VornRecordArray& other) const requires VornComparable<Type> {
    return std::equal(this->begin(), this->end(), other.begin(), other.end(),
                      [](const Type& a, const Type& b) { return a.Compare(b); });
  }
};

/// An array of survey points, which are told apart by their 16-bit numbers.
template <typename Type>
class VornNumberedArray : public VornRecordArray<Type> {
 public:
  /// Index of the first point of that number; -1 when there is none.
  [[nodiscard]] int Find(std::uint16_t number) const {
    return this->FindFirst([=](const Type& point) { return point.GetNumber() == number; });
  }

  /// Appends copies of another array's points in their order, of each number only the first, and none of a number that
  /// is here already: what is here stays as it is. Returns the resulting count. O(n) in both arrays.
  int Composition(const VornNumberedArray& other) {
    std::bitset<std::numeric_limits<std::uint16_t>::max() + std::size_t{1}> present;
    KelArray<Type> added;
    for (const Type& point : *this) present.set(point.GetNumber());
    for (const Type& point : other) {
      if (present.test(point.GetNumber())) continue;
      present.set(point.GetNumber());
      added.Add(point);
    }
    this->Reserve(this->GetSize() + added.GetSize());
    for (Type& point : added) this->Add(std::move(point));
    return this->GetSize();
  }
};
