#ifdef _WIN32

#include "host/settings/registry_store.h"

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <system_error>
#include <type_traits>
#include <utility>

#include "host/document/document_error.h"
#include "host/document/text_encoding.h"

namespace vorn_host {

namespace {

struct CloseKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

std::wstring ToUtf16(std::string_view utf8) {
  const auto size = static_cast<int>(utf8.size());
  std::wstring utf16(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, utf16.data(), static_cast<int>(utf16.size()));
  return utf16;
}

std::string FromUtf16(std::wstring_view utf16) {
  const auto size = static_cast<int>(utf16.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, utf16.data(), size, utf8.data(), length, nullptr, nullptr);
  return utf8;
}

std::string MessageOf(LSTATUS status) { return std::system_category().message(static_cast<int>(status)); }

/// Opens a key below another; null, with the status told, when that fails.
Key OpenKey(HKEY parent, const std::wstring& path, REGSAM rights, LSTATUS& status) {
  HKEY key = nullptr;
  status = RegOpenKeyExW(parent, path.c_str(), 0, rights, &key);
  return Key(status == ERROR_SUCCESS ? key : nullptr);
}

/// The kind and the bytes of a value.
struct Data {
  DWORD type = REG_NONE;
  std::vector<std::byte> bytes;
};

std::optional<Data> ReadData(HKEY key, const std::wstring& name) {
  Data data;
  DWORD size = 0;
  LSTATUS status = RegQueryValueExW(key, name.c_str(), nullptr, &data.type, nullptr, &size);
  // Someone else may make the value longer meanwhile.
  while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    data.bytes.resize(size);
    status =
        RegQueryValueExW(key, name.c_str(), nullptr, &data.type, reinterpret_cast<BYTE*>(data.bytes.data()), &size);
    if (status != ERROR_SUCCESS) continue;
    data.bytes.resize(size);
    return data;
  }
  return std::nullopt;
}

std::optional<SettingValue> ValueOf(const Data& data) {
  if (data.type == REG_DWORD && data.bytes.size() == sizeof(std::int32_t)) {
    std::int32_t number = 0;
    std::memcpy(&number, data.bytes.data(), sizeof number);
    return number;
  }
  if (data.type != REG_SZ) return std::nullopt;
  std::wstring text(data.bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), data.bytes.data(), text.size() * sizeof(wchar_t));
  return FromUtf16(std::wstring_view(text).substr(0, text.find(L'\0')));
}

SettingsEntry EntryOf(const SettingsPath& path, std::string name, const Data& data) {
  std::optional<SettingValue> value = ValueOf(data);
  std::string shown = value ? ShownText(*value) : "a value of type " + std::to_string(data.type);
  return {path, std::move(name), std::move(value), std::move(shown)};
}

void Collect(HKEY key, SettingsPath& path, std::vector<SettingsEntry>& entries) {
  constexpr DWORD kLongestValueName = 16384;
  constexpr DWORD kLongestKeyName = 256;
  std::wstring name(kLongestValueName, L'\0');
  DWORD length = kLongestValueName;
  for (DWORD i = 0; RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
       ++i, length = kLongestValueName) {
    const std::wstring valueName = name.substr(0, length);
    const std::optional<Data> data = ReadData(key, valueName);
    if (data) entries.push_back(EntryOf(path, FromUtf16(valueName), *data));
  }
  length = kLongestKeyName;
  for (DWORD i = 0; RegEnumKeyExW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
       ++i, length = kLongestKeyName) {
    const std::wstring keyName = name.substr(0, length);
    LSTATUS status = ERROR_SUCCESS;
    const Key inner = OpenKey(key, keyName, KEY_READ, status);
    if (!inner) continue;
    path.push_back(FromUtf16(keyName));
    Collect(inner.get(), path, entries);
    path.pop_back();
  }
}

LSTATUS Store(HKEY key, const std::wstring& name, std::int32_t number) {
  const auto* bytes = reinterpret_cast<const BYTE*>(&number);
  return RegSetValueExW(key, name.c_str(), 0, REG_DWORD, bytes, sizeof number);
}

LSTATUS Store(HKEY key, const std::wstring& name, const std::string& text) {
  const std::wstring utf16 = ToUtf16(text);
  const auto* bytes = reinterpret_cast<const BYTE*>(utf16.c_str());
  const auto size = static_cast<DWORD>((utf16.size() + 1) * sizeof(wchar_t));  // the NUL is part of the data
  return RegSetValueExW(key, name.c_str(), 0, REG_SZ, bytes, size);
}

}  // namespace

RegistryStore::RegistryStore(std::string rootPath, ProblemHandler report)
    : SettingsStore(std::move(report)), m_rootPath(std::move(rootPath)) {}

std::string RegistryStore::Place() const { return "HKEY_CURRENT_USER\\" + m_rootPath; }

std::vector<SettingsEntry> RegistryStore::Entries() const {
  std::vector<SettingsEntry> entries;
  LSTATUS status = ERROR_SUCCESS;
  const Key root = OpenKey(HKEY_CURRENT_USER, ToUtf16(m_rootPath), KEY_READ, status);
  if (!root && status != ERROR_FILE_NOT_FOUND) throw DocumentError(Place() + ": cannot be read: " + MessageOf(status));
  SettingsPath path;
  if (root) Collect(root.get(), path, entries);
  return entries;
}

std::optional<std::wstring> RegistryStore::FullPath(std::string_view path) const {
  const std::optional<std::string> below = ToStoredText(path);
  if (!below) return std::nullopt;
  return ToUtf16(below->empty() ? m_rootPath : m_rootPath + kSeparator + *below);
}

bool RegistryStore::KeyExists(std::string_view path) const {
  const std::optional<std::wstring> full = FullPath(path);
  LSTATUS status = ERROR_SUCCESS;
  return path.empty() || (full && OpenKey(HKEY_CURRENT_USER, *full, KEY_READ, status) != nullptr);
}

bool RegistryStore::CreateKey(std::string_view path) {
  const std::optional<std::wstring> full = FullPath(path);
  if (!full) return false;
  HKEY key = nullptr;
  const LSTATUS status =
      RegCreateKeyExW(HKEY_CURRENT_USER, full->c_str(), 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr);
  if (status == ERROR_SUCCESS) RegCloseKey(key);
  return Check(status);
}

std::optional<SettingValue> RegistryStore::Read(std::string_view path, std::string_view name) const {
  const std::optional<std::wstring> full = FullPath(path);
  const std::optional<std::string> valueName = ToStoredText(name);
  if (!full || !valueName) return std::nullopt;
  LSTATUS status = ERROR_SUCCESS;
  const Key key = OpenKey(HKEY_CURRENT_USER, *full, KEY_READ, status);
  const std::optional<Data> data = key ? ReadData(key.get(), ToUtf16(*valueName)) : std::nullopt;
  return data ? ValueOf(*data) : std::nullopt;
}

bool RegistryStore::Write(std::string_view path, std::string_view name, const std::optional<SettingValue>& value) {
  // The store itself is a key from the beginning, in the registry only from its first value on.
  if (path.empty() && !CreateKey(path)) return false;
  const std::optional<std::wstring> full = FullPath(path);
  const std::optional<std::string> valueName = ToStoredText(name);
  if (!full || !valueName || !value) return false;
  LSTATUS status = ERROR_SUCCESS;
  const Key key = OpenKey(HKEY_CURRENT_USER, *full, KEY_SET_VALUE, status);
  if (!key) return status != ERROR_FILE_NOT_FOUND && Check(status);
  const std::wstring utf16Name = ToUtf16(*valueName);
  return Check(std::visit([&](const auto& stored) { return Store(key.get(), utf16Name, stored); }, *value));
}

bool RegistryStore::Check(long status) const {
  if (status != ERROR_SUCCESS) Report(Place() + ": cannot be written: " + MessageOf(status));
  return status == ERROR_SUCCESS;
}

}  // namespace vorn_host

#endif  // _WIN32
