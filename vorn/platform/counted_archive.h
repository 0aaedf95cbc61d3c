#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "vorn/platform/carchive.h"

/// How many elements room is made for before the first is loaded: so few that a promise may be believed, and enough for
/// nearly every array there is. Beyond, the room doubles.
template <typename Item>
inline constexpr auto kFirstCountedRoom = static_cast<std::uint32_t>(std::max<std::size_t>(8, 32768 / sizeof(Item)));

/// Stores or loads the elements of an array behind their 32-bit count; loading replaces what the array held.
///
/// A count that the bytes left cannot back throws end-of-file. Room is made as the elements really come, and never
/// beyond the count: a damaged file cannot make an array outgrow it. When loading throws, the array holds the elements
/// that were loaded whole.
/// @tparam Count      what the count is read as: a signed one below 0 stands for no elements
/// @param  transfer   stores or loads one element
/// @param  leastBytes what the shortest element takes in the archive; 0 when that is not known, but four or more
template <typename Count = std::uint32_t, typename Array, typename Transfer>
void SerializeCounted(CArchive& ar, Array& items, Transfer&& transfer, std::uint32_t leastBytes = 0) {
  static_assert(sizeof(Count) == 4);
  if (ar.IsStoring()) {
    ar << static_cast<Count>(items.GetSize());
    for (auto& item : items) transfer(item);
    return;
  }
  const auto announced = ar.Load<Count>();
  const std::uint32_t count = announced > 0 ? static_cast<std::uint32_t>(announced) : 0;
  ar.RequireRemaining(count * std::uint64_t{leastBytes > 0 ? leastBytes : 4});
  CArchive::RequireInt(count);
  items.RemoveAll();
  constexpr std::uint32_t kFirstRoom = kFirstCountedRoom<std::remove_cvref_t<decltype(*items.GetData())>>;
  std::uint32_t room = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (i == room) {
      room = std::min(count, std::max(2 * room, kFirstRoom));
      // Both the old room and the new one are there while an array grows: the last time it does so less than half of
      // it is read. The bytes for all the rest are there.
      if (leastBytes > 0 && room > count / 2) room = count;
      items.Reserve(static_cast<int>(room));
    }
    auto& item = items.AddDefault();
    try {
      transfer(item);
    } catch (...) {
      items.SetSize(static_cast<int>(i));
      throw;
    }
  }
}
