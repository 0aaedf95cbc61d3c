#include "vorn/platform/dov_data_table.h"

#include <type_traits>
#include <utility>

namespace {

using Type = DovDataTable::Type;

/// A key, a type and an empty text.
constexpr std::uint64_t kSmallestEntry = 4 + 1 + 1;

constexpr Type TypeOf(std::int32_t) { return Type::Integer; }
constexpr Type TypeOf(double) { return Type::Real; }
constexpr Type TypeOf(const CString&) { return Type::Text; }

template <typename T>
void StoreEntry(CArchive& ar, std::int32_t key, const T& value) {
  ar << key << static_cast<std::uint8_t>(TypeOf(value)) << value;
}

}  // namespace

void DovDataTable::Serialize(CArchive& ar) { ar.IsStoring() ? Store(ar) : Load(ar); }

template <typename Sink>
void DovDataTable::LoadEntries(CArchive& ar, std::uint32_t count, Sink&& sink) {
  ar.RequireRemaining(count * kSmallestEntry);
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto key = ar.Load<std::int32_t>();
    switch (static_cast<Type>(ar.Load<std::uint8_t>())) {
      case Type::Integer:
        sink(key, ar.Load<std::int32_t>());
        break;
      case Type::Real:
        sink(key, ar.Load<double>());
        break;
      case Type::Text:
        sink(key, ar.Load<CString>());
        break;
      default:
        throw CArchiveException(CArchiveException::badIndex);
    }
  }
}

void DovDataTable::Store(CArchive& ar) const {
  ar << static_cast<std::uint32_t>(m_values.size());
  for (const auto& entry : m_values) {
    std::visit([&](const auto& value) { StoreEntry(ar, entry.first, value); }, entry.second);
  }
}

void DovDataTable::Load(CArchive& ar) {
  DovDataTable loaded;
  LoadEntries(ar, ar.Load<std::uint32_t>(), [&](std::int32_t key, const auto& value) { loaded.SetAt(key, value); });
  *this = std::move(loaded);
}

void DovDataTable::StoreInteger(CArchive& ar, std::int32_t key, std::int32_t value) {
  ar << std::uint32_t{1};
  StoreEntry(ar, key, value);
}

bool DovDataTable::LoadInteger(CArchive& ar, std::int32_t wantedKey, std::int32_t& value) {
  bool found = false;
  std::int32_t wanted = 0;
  LoadEntries(ar, ar.Load<std::uint32_t>(), [&](std::int32_t key, const auto& held) {
    if (key != wantedKey) return;
    // The last value of a key counts, whatever its type.
    if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::int32_t>) {
      found = true;
      wanted = held;
    } else {
      found = false;
    }
  });
  if (found) value = wanted;
  return found;
}

void DovDataTable::ForgetEntries(CArchive& ar, std::uint32_t count) {
  LoadEntries(ar, count, [](std::int32_t, const auto&) {});
}
