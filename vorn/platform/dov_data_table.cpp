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
void LoadValue(CArchive& ar, DovDataTable& table, std::int32_t key) {
  T value{};
  ar >> value;
  table.SetAt(key, value);
}

void LoadEntry(CArchive& ar, DovDataTable& table) {
  std::int32_t key = 0;
  std::uint8_t type = 0;
  ar >> key >> type;
  switch (static_cast<Type>(type)) {
    case Type::Integer:
      return LoadValue<std::int32_t>(ar, table, key);
    case Type::Real:
      return LoadValue<double>(ar, table, key);
    case Type::Text:
      return LoadValue<CString>(ar, table, key);
  }
  throw CArchiveException(CArchiveException::badIndex);
}

}  // namespace

void DovDataTable::Serialize(CArchive& ar) { ar.IsStoring() ? Store(ar) : Load(ar); }

void DovDataTable::Store(CArchive& ar) const {
  ar << static_cast<std::uint32_t>(m_values.size());
  for (const auto& [key, value] : m_values) {
    ar << key;
    std::visit([&ar](const auto& held) { ar << static_cast<std::uint8_t>(TypeOf(held)) << held; }, value);
  }
}

void DovDataTable::Load(CArchive& ar) {
  std::uint32_t count = 0;
  ar >> count;
  ar.RequireRemaining(count * kSmallestEntry);
  DovDataTable loaded;
  for (std::uint32_t i = 0; i < count; ++i) LoadEntry(ar, loaded);
  *this = std::move(loaded);
}
