#include "vorn/platform/wex_store.h"

#include <utility>

namespace {

CString Folded(std::string_view name) { return CString(name).MakeLower(); }

}  // namespace

bool WexMemoryStore::KeyExists(std::string_view path) const { return m_keys.find(Folded(path)) != m_keys.end(); }

bool WexMemoryStore::CreateKey(std::string_view path) {
  const CString key = Folded(path);
  const std::string_view separator(&kSeparator, 1);
  std::map<CString, Values> created;
  for (int end = key.Find(separator); end >= 0; end = key.Find(separator, end + 1)) created.try_emplace(key.Left(end));
  created.try_emplace(key);
  m_keys.merge(created);  // needs no memory: the keys come together or not at all
  return true;
}

std::optional<std::int32_t> WexMemoryStore::ReadInt(std::string_view path, std::string_view name) const {
  return Read<std::int32_t>(path, name);
}

std::optional<CString> WexMemoryStore::ReadString(std::string_view path, std::string_view name) const {
  return Read<CString>(path, name);
}

bool WexMemoryStore::WriteInt(std::string_view path, std::string_view name, std::int32_t value) {
  return Write(path, name, value);
}

bool WexMemoryStore::WriteString(std::string_view path, std::string_view name, std::string_view value) {
  return Write(path, name, CString(value));
}

template <typename T>
std::optional<T> WexMemoryStore::Read(std::string_view path, std::string_view name) const {
  const auto key = m_keys.find(Folded(path));
  if (key == m_keys.end()) return std::nullopt;
  const auto value = key->second.find(Folded(name));
  if (value == key->second.end() || !std::holds_alternative<T>(value->second)) return std::nullopt;
  return std::get<T>(value->second);
}

bool WexMemoryStore::Write(std::string_view path, std::string_view name, Value value) {
  const auto key = m_keys.find(Folded(path));
  if (key == m_keys.end()) return false;
  key->second.insert_or_assign(Folded(name), std::move(value));
  return true;
}
